#include "NodesATestUtils.h"

#include "Engine/BlueprintGeneratedClass.h"
#include "K2Node_ComponentBoundEvent.h"
#include "K2Node_CustomEvent.h"
#include "K2Node_Event.h"
#include "EdGraph/EdGraphSchema.h"
#include "K2Node_FunctionEntry.h"
#include "K2Node_FunctionResult.h"
#include "UObject/UnrealType.h"

using namespace NodesATest;

namespace
{
	const TCHAR* const ActorPath = TEXT("/Script/Engine.Actor");

	FEdGraphPinType PinType(FName Category, FName SubCategory = NAME_None, UObject* SubCategoryObject = nullptr)
	{
		FEdGraphPinType Type;
		Type.PinCategory = Category;
		Type.PinSubCategory = SubCategory;
		Type.PinSubCategoryObject = SubCategoryObject;
		return Type;
	}

	class NodesAEvents : public FBlueprintFixture
	{
	protected:
		UK2Node_Event* PlaceOverride(const TCHAR* ClassPath, const TCHAR* FunctionName)
		{
			UClass* Class = FindClass(ClassPath);
			return Place<UK2Node_Event>(EventGraph, [Class, FunctionName](UK2Node_Event& Node)
			{
				Node.EventReference.SetExternalMember(FName(FunctionName), Class);
				Node.bOverrideFunction = true;
			});
		}
	};
}

TEST_F(NodesAEvents, OverridesShowTheirSignatureAndTitle)
{
	MakeBlueprint(FindClass(ActorPath));
	const struct
	{
		const TCHAR* Function;
		std::string Pins;
		std::string Title;
	} Cases[] = {
		{TEXT("ReceiveBeginPlay"), "OutputDelegate:out:delegate, then:out:exec", "Event BeginPlay"},
		{TEXT("ReceiveTick"), "OutputDelegate:out:delegate, then:out:exec, DeltaSeconds:out:real/float", "Event Tick"},
	};
	for (const auto& Case : Cases)
	{
		SCOPED_TRACE(U8(FString(Case.Function)));
		UK2Node_Event* Event = PlaceOverride(ActorPath, Case.Function);
		EXPECT_EQ(DescribePins(Event), Case.Pins);
		EXPECT_EQ(U8(Event->GetNodeTitle(ENodeTitleType::FullTitle)), Case.Title);
		EXPECT_EQ(U8(Event->GetNodeTitle(ENodeTitleType::ListView)), Case.Title);
		EXPECT_EQ(U8(Event->GetFunctionName()), U8(FString(Case.Function)));
		EXPECT_FALSE(Event->IsNodePure());
		EXPECT_TRUE(Event->GetClass()->ImplementsInterface(UK2Node_EventNodeInterface::StaticClass()));
		TSharedPtr<FEdGraphSchemaAction> Action = Event->GetEventNodeAction(FText::FromString(TEXT("Events")));
		ASSERT_TRUE(Action.IsValid());
		EXPECT_EQ(U8(Action->GetMenuDescription()), Case.Title);
		// The delegate output names the event's signature, so it can be bound elsewhere.
		const UEdGraphPin* Delegate = Event->GetDelegatePin();
		ASSERT_NE(Delegate, nullptr);
		EXPECT_EQ(U8(Delegate->PinType.PinSubCategoryMemberReference.MemberName), U8(FString(Case.Function)));
		FCompilerResultsLog Log;
		Event->ValidateNodeDuringCompilation(Log);
		EXPECT_EQ(Log.NumErrors + Log.NumWarnings, 0) << Messages(Log);
	}
}

TEST_F(NodesAEvents, AnEventWithoutSignatureFailsToCompile)
{
	MakeBlueprint(FindClass(ActorPath));
	UK2Node_Event* Event = PlaceOverride(ActorPath, TEXT("ReceiveSomethingElse"));
	EXPECT_EQ(DescribePins(Event), "OutputDelegate:out:delegate, then:out:exec");
	EXPECT_EQ(U8(Event->GetNodeTitle(ENodeTitleType::FullTitle)), "Event ReceiveSomethingElse");
	FCompilerResultsLog Log;
	Event->ValidateNodeDuringCompilation(Log);
	EXPECT_EQ(Log.NumErrors, 1);
	EXPECT_EQ(Messages(Log).rfind("Missing Event 'ReceiveSomethingElse' for ", 0), 0u) << Messages(Log);
}

TEST_F(NodesAEvents, CustomEventsTakeUserPinsAndSurviveSaving)
{
	MakeBlueprint(FindClass(ActorPath));
	UK2Node_CustomEvent* Custom = Place<UK2Node_CustomEvent>(EventGraph, [](UK2Node_CustomEvent& Node) { Node.CustomFunctionName = TEXT("OnDoorOpened"); });
	EXPECT_TRUE(Custom->bIsEditable);
	EXPECT_TRUE(Custom->GetCanRenameNode());
	ASSERT_NE(Custom->CreateUserDefinedPin(TEXT("Amount"), PinType(UEdGraphSchema_K2::PC_Real, UEdGraphSchema_K2::PC_Double), EGPD_Output), nullptr);
	// A second pin of the same name gets a number.
	UEdGraphPin* Second = Custom->CreateUserDefinedPin(TEXT("Amount"), PinType(UEdGraphSchema_K2::PC_Boolean), EGPD_Output);
	ASSERT_NE(Second, nullptr);
	EXPECT_EQ(U8(Second->PinName), "Amount_0");
	// Events hand values out only, and carry one exec output.
	FText Why;
	EXPECT_FALSE(Custom->CanCreateUserDefinedPin(PinType(UEdGraphSchema_K2::PC_Int), EGPD_Input, Why));
	EXPECT_EQ(U8(Why), "Cannot add input pins to custom event node!");
	EXPECT_EQ(Custom->CreateUserDefinedPin(TEXT("Go"), PinType(UEdGraphSchema_K2::PC_Exec), EGPD_Output), nullptr);
	EXPECT_EQ(Custom->UserDefinedPins.Num(), 2);

	EXPECT_EQ(DescribePins(Custom), "OutputDelegate:out:delegate, then:out:exec, Amount:out:real/double, Amount_0:out:bool");
	EXPECT_EQ(U8(Custom->GetNodeTitle(ENodeTitleType::FullTitle)), "OnDoorOpened\nCustom Event");
	EXPECT_EQ(U8(Custom->GetNodeTitle(ENodeTitleType::EditableTitle)), "OnDoorOpened");
	// A replicated event names where it runs right after its name.
	Custom->FunctionFlags |= FUNC_Net | FUNC_NetServer | FUNC_NetReliable;
	EXPECT_EQ(U8(Custom->GetNodeTitle(ENodeTitleType::FullTitle)), "OnDoorOpenedRELIABLE Replicated From Client\nExecutes On Server\nCustom Event");
	Custom->FunctionFlags &= ~(FUNC_Net | FUNC_NetServer | FUNC_NetReliable);
	Custom->OnRenameNode(TEXT("OnDoorShut"));
	EXPECT_EQ(U8(Custom->GetFunctionName()), "OnDoorShut");

	const std::string Pins = DescribePins(Custom);
	FString FirstBytes;
	ASSERT_NE(SaveAndReload(&FirstBytes), nullptr);
	ASSERT_EQ(EventGraph->Nodes.Num(), 1);
	UK2Node_CustomEvent* Loaded = Cast<UK2Node_CustomEvent>(EventGraph->Nodes[0]);
	ASSERT_NE(Loaded, nullptr);
	EXPECT_EQ(U8(Loaded->CustomFunctionName), "OnDoorShut");
	ASSERT_EQ(Loaded->UserDefinedPins.Num(), 2);
	EXPECT_EQ(U8(Loaded->UserDefinedPins[0]->PinName), "Amount");
	EXPECT_EQ(Loaded->UserDefinedPins[0]->PinType, PinType(UEdGraphSchema_K2::PC_Real, UEdGraphSchema_K2::PC_Double));
	EXPECT_EQ(Loaded->UserDefinedPins[1]->DesiredPinDirection.GetValue(), EGPD_Output);
	EXPECT_EQ(DescribePins(Loaded), Pins);
	EXPECT_EQ(SaveAgainBytes(), FirstBytes);

	// Pins are rebuilt from the declarations, and removing one takes its pin away.
	Loaded->ReconstructNode();
	EXPECT_EQ(DescribePins(Loaded), Pins);
	Loaded->RemoveUserDefinedPinByName(TEXT("Amount"));
	EXPECT_EQ(DescribePins(Loaded), "OutputDelegate:out:delegate, then:out:exec, Amount_0:out:bool");
	EXPECT_FALSE(Loaded->UserDefinedPinExists(TEXT("Amount")));
}

TEST_F(NodesAEvents, FunctionGraphsHaveAnEntryAndAReturnNode)
{
	MakeBlueprint(FindClass(ActorPath));
	UEdGraph* Function = AddFunctionGraph(TEXT("OpenDoor"));
	UK2Node_FunctionEntry* Entry = Place<UK2Node_FunctionEntry>(Function, [](UK2Node_FunctionEntry& Node)
	{
		Node.FunctionReference.SetExternalMember(TEXT("OpenDoor"), nullptr);
		Node.bIsEditable = true;
	});
	UK2Node_FunctionResult* Result = Place<UK2Node_FunctionResult>(Function, [](UK2Node_FunctionResult& Node)
	{
		Node.FunctionReference.SetExternalMember(TEXT("OpenDoor"), nullptr);
		Node.bIsEditable = true;
	});
	ASSERT_NE(Entry->CreateUserDefinedPin(TEXT("Speed"), PinType(UEdGraphSchema_K2::PC_Real, UEdGraphSchema_K2::PC_Double), EGPD_Output), nullptr);
	ASSERT_NE(Result->CreateUserDefinedPin(TEXT("Success"), PinType(UEdGraphSchema_K2::PC_Boolean), EGPD_Input), nullptr);
	FText Why;
	EXPECT_FALSE(Entry->CanCreateUserDefinedPin(PinType(UEdGraphSchema_K2::PC_Int), EGPD_Input, Why));
	EXPECT_EQ(U8(Why), "Cannot add input pins to function entry node!");
	EXPECT_FALSE(Result->CanCreateUserDefinedPin(PinType(UEdGraphSchema_K2::PC_Int), EGPD_Output, Why));

	EXPECT_EQ(DescribePins(Entry), "then:out:exec, Speed:out:real/double");
	EXPECT_EQ(DescribePins(Result), "execute:in:exec, Success:in:bool");
	EXPECT_EQ(U8(Result->FindPinChecked(TEXT("Success"))->DefaultValue), "false");
	EXPECT_EQ(U8(Entry->GetNodeTitle(ENodeTitleType::FullTitle)), "OpenDoor");
	EXPECT_EQ(U8(Result->GetNodeTitle(ENodeTitleType::FullTitle)), "Return Node");
	EXPECT_EQ(U8(Entry->GetFunctionName()), "OpenDoor");
	EXPECT_FALSE(Entry->CanUserDeleteNode());
	EXPECT_TRUE(Result->CanUserDeleteNode());

	Entry->MetaData.Category = FText::FromString(TEXT("Doors"));
	Entry->MetaData.SetMetaData(TEXT("DeterminesOutputType"), FString(TEXT("Speed")));
	Entry->AddExtraFlags(FUNC_BlueprintPure | FUNC_Const);
	FBPVariableDescription Local;
	Local.VarName = TEXT("Steps");
	Local.VarGuid = FGuid::NewGuid();
	Local.VarType = PinType(UEdGraphSchema_K2::PC_Int);
	Local.DefaultValue = TEXT("3");
	Entry->LocalVariables.Add(Local);

	FString FirstBytes;
	ASSERT_NE(SaveAndReload(&FirstBytes), nullptr);
	ASSERT_EQ(Blueprint->FunctionGraphs.Num(), 1);
	UEdGraph* LoadedGraph = Blueprint->FunctionGraphs[0];
	ASSERT_EQ(LoadedGraph->Nodes.Num(), 2);
	UK2Node_FunctionEntry* LoadedEntry = Cast<UK2Node_FunctionEntry>(LoadedGraph->Nodes[0]);
	UK2Node_FunctionResult* LoadedResult = Cast<UK2Node_FunctionResult>(LoadedGraph->Nodes[1]);
	ASSERT_TRUE(LoadedEntry && LoadedResult);
	EXPECT_EQ(U8(LoadedEntry->MetaData.Category), "Doors");
	ASSERT_NE(LoadedEntry->MetaData.FindMetaData(TEXT("DeterminesOutputType")), nullptr);
	EXPECT_TRUE(LoadedEntry->HasAllExtraFlags(FUNC_BlueprintPure | FUNC_Const));
	ASSERT_NE(LoadedEntry->FindLocalVariable(TEXT("Steps")), nullptr);
	EXPECT_EQ(U8(LoadedEntry->FindLocalVariable(TEXT("Steps"))->DefaultValue), "3");
	EXPECT_TRUE(LoadedEntry->bIsEditable);
	EXPECT_EQ(DescribePins(LoadedEntry), "then:out:exec, Speed:out:real/double");
	EXPECT_EQ(DescribePins(LoadedResult), "execute:in:exec, Success:in:bool");
	EXPECT_EQ(SaveAgainBytes(), FirstBytes);
}

TEST_F(NodesAEvents, EntriesFollowInheritedSignaturesAndLibrariesGetAWorldContext)
{
	MakeBlueprint(FindClass(ActorPath));
	UEdGraph* Function = AddFunctionGraph(TEXT("ReceiveTick"));
	UClass* Actor = FindClass(ActorPath);
	UK2Node_FunctionEntry* Entry = Place<UK2Node_FunctionEntry>(Function, [Actor](UK2Node_FunctionEntry& Node) { Node.FunctionReference.SetExternalMember(TEXT("ReceiveTick"), Actor); });
	EXPECT_EQ(DescribePins(Entry), "then:out:exec, DeltaSeconds:out:real/float");
	FText Why;
	EXPECT_FALSE(Entry->CanCreateUserDefinedPin(PinType(UEdGraphSchema_K2::PC_Int), EGPD_Output, Why));
	EXPECT_EQ(U8(Why), "Cannot edit this node!");

	Unload(Blueprint->GetPackage());
	MakeBlueprint(FindClass(TEXT("/Script/Engine.BlueprintFunctionLibrary")), TEXT("BPL_Doors"));
	Blueprint->BlueprintType = BPTYPE_FunctionLibrary;
	UEdGraph* LibraryFunction = AddFunctionGraph(TEXT("CountDoors"));
	UK2Node_FunctionEntry* LibraryEntry = Place<UK2Node_FunctionEntry>(LibraryFunction, [](UK2Node_FunctionEntry& Node)
	{
		Node.FunctionReference.SetExternalMember(TEXT("CountDoors"), nullptr);
		Node.bIsEditable = true;
	});
	EXPECT_EQ(DescribePins(LibraryEntry), "then:out:exec, __WorldContext:out:object (hidden)");
	EXPECT_EQ(LibraryEntry->GetAutoWorldContextPin(), LibraryEntry->FindPin(TEXT("__WorldContext")));
}

TEST_F(NodesAEvents, ComponentBoundEventsNameTheDelegateAndComponent)
{
	MakeBlueprint(FindClass(ActorPath), TEXT("BP_Door"));
	UClass* Primitive = FindClass(TEXT("/Script/Engine.PrimitiveComponent"));
	ASSERT_NE(Primitive, nullptr);
	FMulticastDelegateProperty* Overlap = CastField<FMulticastDelegateProperty>(Primitive->FindPropertyByName(TEXT("OnComponentBeginOverlap")));
	ASSERT_NE(Overlap, nullptr);
	// The component variable the compiler would make for a "Trigger" component.
	FObjectProperty* Component = new FObjectProperty(FindClass(ActorPath), TEXT("Trigger"), RF_Public | RF_Transient);

	UK2Node_ComponentBoundEvent* Bound = Place<UK2Node_ComponentBoundEvent>(EventGraph, [Component, Overlap](UK2Node_ComponentBoundEvent& Node)
	{
		Node.InitializeComponentBoundEventParams(Component, Overlap);
	});
	delete Component;

	EXPECT_EQ(DescribePins(Bound),
		"OutputDelegate:out:delegate, then:out:exec, OverlappedComponent:out:object, OtherActor:out:object, OtherComp:out:object, "
		"OtherBodyIndex:out:int, bFromSweep:out:bool, SweepResult:out:struct");
	EXPECT_EQ(U8(Bound->GetNodeTitle(ENodeTitleType::FullTitle)), "On Component Begin Overlap (Trigger)");
	EXPECT_EQ(Bound->DelegateOwnerClass.Get(), Primitive);
	EXPECT_FALSE(Bound->bOverrideFunction);
	EXPECT_TRUE(Bound->bInternalEvent);
	EXPECT_EQ(U8(Bound->CustomFunctionName), "BndEvt__BP_Door_Trigger_" + U8(Bound->GetName()) + "_ComponentBeginOverlapSignature__DelegateSignature");
	EXPECT_EQ(Bound->GetTargetDelegateProperty(), Overlap);
	// The Blueprint's class has no "Trigger" component variable (yet): the compiler is told.
	EXPECT_FALSE(Bound->IsDelegateValid());
	FCompilerResultsLog Log;
	Bound->ValidateNodeDuringCompilation(Log);
	EXPECT_EQ(Log.NumWarnings, 1);
	EXPECT_NE(Messages(Log).find("does not have a valid matching component!"), std::string::npos) << Messages(Log);

	FString FirstBytes;
	ASSERT_NE(SaveAndReload(&FirstBytes), nullptr);
	UK2Node_ComponentBoundEvent* Loaded = Cast<UK2Node_ComponentBoundEvent>(EventGraph->Nodes[0]);
	ASSERT_NE(Loaded, nullptr);
	EXPECT_EQ(U8(Loaded->GetNodeTitle(ENodeTitleType::FullTitle)), "On Component Begin Overlap (Trigger)");
	Loaded->ReconstructNode();
	EXPECT_EQ(Loaded->Pins.Num(), 8);
	EXPECT_EQ(SaveAgainBytes(), FirstBytes);
}

TEST_F(NodesAEvents, AnEntryNamingItsCompiledFunctionMakesEachParameterOnce)
{
	MakeBlueprint(FindClass(ActorPath));
	// The compiled function of the graph already has the parameter the user declared.
	UBlueprintGeneratedClass* Skeleton = NewObject<UBlueprintGeneratedClass>(Blueprint->GetPackage(), TEXT("SKEL_BP_Test_C"), RF_Public | RF_Transient);
	Skeleton->SetSuperStruct(Blueprint->ParentClass);
	Skeleton->ClassGeneratedBy = Blueprint;
	static_cast<UClass*>(Skeleton)->ClassGeneratedBy = Blueprint;
	UFunction* OpenDoor = NewObject<UFunction>(Skeleton, TEXT("OpenDoor"), RF_Public | RF_Transient);
	FDoubleProperty* Speed = new FDoubleProperty(OpenDoor, TEXT("Speed"), RF_Public | RF_MarkAsNative | RF_Transient);
	Speed->SetPropertyFlags(CPF_Parm);
	OpenDoor->AddCppProperty(Speed);
	OpenDoor->Bind();
	OpenDoor->StaticLink(true);
	Skeleton->AddFunctionToFunctionMap(OpenDoor, OpenDoor->GetFName());
	Skeleton->Bind();
	Skeleton->StaticLink(true);
	Blueprint->SkeletonGeneratedClass = Skeleton;

	UEdGraph* Function = AddFunctionGraph(TEXT("OpenDoor"));
	UK2Node_FunctionEntry* Entry = Place<UK2Node_FunctionEntry>(Function, [](UK2Node_FunctionEntry& Node)
	{
		Node.FunctionReference.SetSelfMember(TEXT("OpenDoor"));
		Node.bIsEditable = true;
		TSharedPtr<FUserPinInfo> Declared = MakeShared<FUserPinInfo>();
		Declared->PinName = TEXT("Speed");
		Declared->PinType = PinType(UEdGraphSchema_K2::PC_Real, UEdGraphSchema_K2::PC_Double);
		Declared->DesiredPinDirection = EGPD_Output;
		Node.UserDefinedPins.Add(Declared);
	});
	EXPECT_EQ(Entry->FindSignatureFunction(), OpenDoor);
	EXPECT_EQ(DescribePins(Entry), "then:out:exec, Speed:out:real/double");
	Entry->ReconstructNode();
	EXPECT_EQ(DescribePins(Entry), "then:out:exec, Speed:out:real/double");
}

TEST_F(NodesAEvents, PinsThatVanishStayAsOrphansWhileWired)
{
	MakeBlueprint(FindClass(ActorPath));
	UK2Node_CustomEvent* Custom = Place<UK2Node_CustomEvent>(EventGraph, [](UK2Node_CustomEvent& Node) { Node.CustomFunctionName = TEXT("OnKnock"); });
	Custom->CreateUserDefinedPin(TEXT("Loudness"), PinType(UEdGraphSchema_K2::PC_Real, UEdGraphSchema_K2::PC_Double), EGPD_Output);
	Custom->CreateUserDefinedPin(TEXT("Count"), PinType(UEdGraphSchema_K2::PC_Int), EGPD_Output);
	UK2Node_FunctionResult* Sink = Place<UK2Node_FunctionResult>(EventGraph, [](UK2Node_FunctionResult& Node) { Node.bIsEditable = true; });
	UEdGraphPin* SinkLoudness = Sink->CreateUserDefinedPin(TEXT("In"), PinType(UEdGraphSchema_K2::PC_Real, UEdGraphSchema_K2::PC_Double), EGPD_Input);
	ASSERT_TRUE(GetDefault<UEdGraphSchema_K2>()->TryCreateConnection(Custom->FindPinChecked(TEXT("Loudness")), SinkLoudness));

	// The declarations go away behind the node's back; reconstruction decides what becomes of their pins.
	Custom->UserDefinedPins.Reset();
	Custom->ReconstructNode();
	EXPECT_EQ(DescribePins(Custom), "OutputDelegate:out:delegate, then:out:exec, Loudness:out:real/double");
	UEdGraphPin* Orphan = Custom->FindPinChecked(TEXT("Loudness"));
	EXPECT_TRUE(Orphan->bOrphanedPin);
	ASSERT_EQ(Orphan->LinkedTo.Num(), 1);
	EXPECT_EQ(Orphan->LinkedTo[0], SinkLoudness);

	// Unwired, the orphan has nothing left to keep.
	GetDefault<UEdGraphSchema_K2>()->BreakPinLinks(*Orphan, true);
	EXPECT_EQ(Custom->FindPin(TEXT("Loudness")), nullptr);
	EXPECT_EQ(DescribePins(Custom), "OutputDelegate:out:delegate, then:out:exec");
}

TEST_F(NodesAEvents, ExtraReturnNodesFollowTheFirstOne)
{
	MakeBlueprint(FindClass(ActorPath));
	UEdGraph* Function = AddFunctionGraph(TEXT("Measure"));
	Place<UK2Node_FunctionEntry>(Function, [](UK2Node_FunctionEntry& Node)
	{
		Node.FunctionReference.SetExternalMember(TEXT("Measure"), nullptr);
		Node.bIsEditable = true;
	});
	UK2Node_FunctionResult* First = Place<UK2Node_FunctionResult>(Function, [](UK2Node_FunctionResult&) {});
	EXPECT_TRUE(First->bIsEditable);
	EXPECT_EQ(U8(First->FunctionReference.GetMemberName()), "Measure");
	ASSERT_NE(First->CreateUserDefinedPin(TEXT("Length"), PinType(UEdGraphSchema_K2::PC_Int), EGPD_Input), nullptr);
	EXPECT_TRUE(First->CanUserDeleteNode());

	UK2Node_FunctionResult* Second = Place<UK2Node_FunctionResult>(Function, [](UK2Node_FunctionResult&) {});
	EXPECT_EQ(DescribePins(Second), "execute:in:exec, Length:in:int");
	EXPECT_EQ(U8(Second->GetNodeTitle(ENodeTitleType::MenuTitle)), "Add Return Node...");
	EXPECT_EQ(U8(Second->GetTooltipText()), "Ends the function here and hands back its output values.");

	// A stale pin on a later node is dropped and the missing one added when it syncs again.
	ASSERT_NE(Second->CreateUserDefinedPin(TEXT("Extra"), PinType(UEdGraphSchema_K2::PC_Boolean), EGPD_Input), nullptr);
	FCompilerResultsLog Log;
	Second->ValidateNodeDuringCompilation(Log);
	EXPECT_EQ(Messages(Log), "Return nodes don't match each other: Return Node, Return Node\n");
	Second->SyncWithPrimaryResultNode();
	EXPECT_EQ(DescribePins(Second), "execute:in:exec, Length:in:int");
	FCompilerResultsLog Clean;
	Second->ValidateNodeDuringCompilation(Clean);
	EXPECT_EQ(Clean.NumErrors, 0);
}

TEST_F(NodesAEvents, ReturnNodesOfAnInheritedSignatureTakeNoUserPins)
{
	MakeBlueprint(FindClass(ActorPath));
	UEdGraph* Function = AddFunctionGraph(TEXT("Fixed"));
	Place<UK2Node_FunctionEntry>(Function, [](UK2Node_FunctionEntry& Node)
	{
		Node.FunctionReference.SetExternalMember(TEXT("Fixed"), nullptr);
		Node.bIsEditable = false;
	});
	UK2Node_FunctionResult* Result = Place<UK2Node_FunctionResult>(Function, [](UK2Node_FunctionResult& Node)
	{
		Node.bIsEditable = true;
		TSharedPtr<FUserPinInfo> Pasted = MakeShared<FUserPinInfo>();
		Pasted->PinName = TEXT("Leftover");
		Pasted->PinType = PinType(UEdGraphSchema_K2::PC_Int);
		Pasted->DesiredPinDirection = EGPD_Input;
		Node.UserDefinedPins.Add(Pasted);
	});
	EXPECT_FALSE(Result->bIsEditable);
	EXPECT_EQ(Result->UserDefinedPins.Num(), 0);
	EXPECT_EQ(DescribePins(Result), "execute:in:exec");
	// The only return node of a fixed signature stays.
	EXPECT_FALSE(Result->CanUserDeleteNode());
}
