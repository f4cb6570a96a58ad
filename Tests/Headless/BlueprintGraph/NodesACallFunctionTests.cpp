#include "NodesATestUtils.h"

#include "K2Node_CallFunction.h"
#include "K2Node_CallParentFunction.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "UObject/UnrealType.h"

using namespace NodesATest;

namespace
{
	const TCHAR* const ActorPath = TEXT("/Script/Engine.Actor");
	const TCHAR* const ObjectPath = TEXT("/Script/CoreUObject.Object");
	const TCHAR* const SystemLibraryPath = TEXT("/Script/Engine.KismetSystemLibrary");

	struct FCallCase
	{
		const TCHAR* ParentClass;
		const TCHAR* FunctionClass;
		const TCHAR* Function;
		std::string Pins;
		std::string FullTitle;
		std::string ListTitle;
		bool bPure;
	};

	class NodesACallFunction : public FBlueprintFixture
	{
	protected:
		UK2Node_CallFunction* PlaceCall(const TCHAR* FunctionClass, const TCHAR* FunctionName)
		{
			UFunction* Function = FindFunction(FunctionClass, FunctionName);
			EXPECT_NE(Function, nullptr) << U8(FString(FunctionName));
			return Place<UK2Node_CallFunction>(EventGraph, [Function](UK2Node_CallFunction& Node) { Node.SetFromFunction(Function); });
		}
	};
}

TEST_F(NodesACallFunction, AllocatesThePinsAndTitlesTheEditorShows)
{
	const FCallCase Cases[] = {
		{ActorPath, SystemLibraryPath, TEXT("PrintString"),
			"execute:in:exec, then:out:exec, self:in:object (hidden), WorldContextObject:in:object (hidden), InString:in:string, "
			"bPrintToScreen:in:bool, bPrintToLog:in:bool, TextColor:in:struct, Duration:in:real/float, Key:in:name",
			"Print String", "Print String", false},
		// A Blueprint whose objects know no world must pass one in.
		{ObjectPath, SystemLibraryPath, TEXT("PrintString"),
			"execute:in:exec, then:out:exec, self:in:object (hidden), WorldContextObject:in:object, InString:in:string, "
			"bPrintToScreen:in:bool, bPrintToLog:in:bool, TextColor:in:struct, Duration:in:real/float, Key:in:name",
			"Print String", "Print String", false},
		{ActorPath, SystemLibraryPath, TEXT("Delay"),
			"execute:in:exec, then:out:exec, self:in:object (hidden), WorldContextObject:in:object (hidden), Duration:in:real/float, LatentInfo:in:struct (hidden)",
			"Delay", "Delay", false},
		{ActorPath, SystemLibraryPath, TEXT("IsValid"),
			"self:in:object (hidden), Object:in:object, ReturnValue:out:bool", "Is Valid", "Is Valid", true},
		// Const member functions keep their target visible even when pure.
		{ActorPath, ActorPath, TEXT("K2_GetActorLocation"),
			"self:in:object, ReturnValue:out:struct", "Get Actor Location\nTarget is Actor", "Get Actor Location", true},
		{ActorPath, ActorPath, TEXT("K2_SetActorLocation"),
			"execute:in:exec, then:out:exec, self:in:object, NewLocation:in:struct, bSweep:in:bool, SweepHitResult:out:struct, bTeleport:in:bool, ReturnValue:out:bool",
			"Set Actor Location\nTarget is Actor", "Set Actor Location", false},
		// An enum input expanded into one exec input per entry; the latent output reads "Completed".
		{ActorPath, SystemLibraryPath, TEXT("MoveComponentTo"),
			"Move:in:exec, Stop:in:exec, Return:in:exec, then:out:exec, self:in:object (hidden), Component:in:object, "
			"TargetRelativeLocation:in:struct, TargetRelativeRotation:in:struct, bEaseOut:in:bool, bEaseIn:in:bool, OverTime:in:real/float, "
			"bForceShortestRotationPath:in:bool, MoveAction:in:byte (hidden), LatentInfo:in:struct (hidden)",
			"Move Component To", "Move Component To", false},
		// A bool return expanded into True and False outputs, made before the single exec input.
		{ActorPath, SystemLibraryPath, TEXT("IsObjectOfSoftClass"),
			"True:out:exec, False:out:exec, execute:in:exec, self:in:object (hidden), Object:in:object, SoftClass:in:softclass, ReturnValue:out:bool (hidden)",
			"IsA ( soft )", "IsA ( soft )", false},
	};
	for (const FCallCase& Case : Cases)
	{
		SCOPED_TRACE(U8(FString(Case.Function)) + " in a Blueprint of " + U8(FString(Case.ParentClass)));
		MakeBlueprint(FindClass(Case.ParentClass));
		UK2Node_CallFunction* Node = PlaceCall(Case.FunctionClass, Case.Function);
		ASSERT_NE(Node->GetTargetFunction(), nullptr);
		EXPECT_EQ(DescribePins(Node), Case.Pins);
		EXPECT_EQ(U8(Node->GetNodeTitle(ENodeTitleType::FullTitle)), Case.FullTitle);
		EXPECT_EQ(U8(Node->GetNodeTitle(ENodeTitleType::ListView)), Case.ListTitle);
		EXPECT_EQ(Node->IsNodePure(), Case.bPure);
		EXPECT_EQ(U8(Node->FindPinChecked(UEdGraphSchema_K2::PN_Self)->PinFriendlyName), "Target");
		Unload(Blueprint->GetPackage());
	}
}

TEST_F(NodesACallFunction, TakesDefaultsFromMetadataAndMarksAdvancedPins)
{
	MakeBlueprint(FindClass(ActorPath));
	UK2Node_CallFunction* Print = PlaceCall(SystemLibraryPath, TEXT("PrintString"));
	const struct
	{
		const TCHAR* Pin;
		const char* Default;
		bool bAdvanced;
	} Expected[] = {
		{TEXT("InString"), "Hello", false},
		{TEXT("bPrintToScreen"), "true", true},
		{TEXT("bPrintToLog"), "true", true},
		{TEXT("TextColor"), "(R=0.000000,G=0.660000,B=1.000000,A=1.000000)", true},
		{TEXT("Duration"), "2.000000", true},
		{TEXT("Key"), "None", true},
	};
	for (const auto& Row : Expected)
	{
		SCOPED_TRACE(U8(FString(Row.Pin)));
		const UEdGraphPin* Pin = Print->FindPinChecked(Row.Pin);
		EXPECT_EQ(U8(Pin->DefaultValue), Row.Default);
		EXPECT_EQ(U8(Pin->AutogeneratedDefaultValue), Row.Default);
		EXPECT_EQ(bool(Pin->bAdvancedView), Row.bAdvanced);
	}
	EXPECT_EQ(Print->AdvancedPinDisplay, ENodeAdvancedPins::Hidden);
	// A static call is made on the library's default object.
	UClass* Library = FindClass(SystemLibraryPath);
	EXPECT_EQ(Print->FindPinChecked(TEXT("self"))->DefaultObject.Get(), Library->GetDefaultObject());
	EXPECT_EQ(Print->FindPinChecked(TEXT("self"))->PinType.PinSubCategoryObject.Get(), Library);

	UK2Node_CallFunction* Delay = PlaceCall(SystemLibraryPath, TEXT("Delay"));
	EXPECT_EQ(U8(Delay->FindPinChecked(TEXT("Duration"))->DefaultValue), "0.2");
	EXPECT_EQ(U8(Delay->FindPinChecked(TEXT("then"))->PinFriendlyName), "Completed");
	EXPECT_TRUE(Delay->IsLatentFunction());
	EXPECT_TRUE(U8(Delay->GetTooltipText()).find("Latent. This node will complete at a later time.") != std::string::npos);
	EXPECT_EQ(U8(Delay->GetMenuCategory()), "Utilities|Flow Control");
	EXPECT_EQ(U8(Delay->GetKeywords()), "Delay sleep");

	UK2Node_CallFunction* SetLocation = PlaceCall(ActorPath, TEXT("K2_SetActorLocation"));
	EXPECT_EQ(SetLocation->FindPinChecked(TEXT("self"))->PinType.PinSubCategoryObject.Get(), FindClass(ActorPath));
	EXPECT_EQ(U8(SetLocation->GetKeywords()), "K2_SetActorLocation position");
	EXPECT_EQ(U8(SetLocation->GetMenuCategory()), "Transformation");
	EXPECT_EQ(U8(SetLocation->FindPinChecked(TEXT("bSweep"))->DefaultValue), "false");
}

TEST_F(NodesACallFunction, ReportsAMissingFunctionWithTheEditorsTexts)
{
	MakeBlueprint(FindClass(ActorPath));
	UClass* Library = FindClass(SystemLibraryPath);
	UK2Node_CallFunction* Node = Place<UK2Node_CallFunction>(EventGraph, [Library](UK2Node_CallFunction& Call) { Call.FunctionReference.SetExternalMember(TEXT("PrintStrung"), Library); });
	EXPECT_EQ(Node->Pins.Num(), 0);
	EXPECT_EQ(Node->GetTargetFunction(), nullptr);
	EXPECT_EQ(U8(Node->GetNodeTitle(ENodeTitleType::FullTitle)), "Print Strung");
	EXPECT_EQ(U8(Node->GetTooltipText()), "Call unknown function PrintStrung - missing from KismetSystemLibrary");

	FCompilerResultsLog Log;
	Node->ValidateNodeDuringCompilation(Log);
	EXPECT_EQ(Log.NumErrors, 1);
	const std::string Text = Messages(Log);
	EXPECT_EQ(Text.rfind("Could not find a function named \"PrintStrung\" in 'KismetSystemLibrary'.\nMake sure 'KismetSystemLibrary' has been compiled for ", 0), 0u) << Text;

	// A sound call raises nothing.
	FCompilerResultsLog CleanLog;
	UK2Node_CallFunction* Print = PlaceCall(SystemLibraryPath, TEXT("PrintString"));
	Print->ValidateNodeDuringCompilation(CleanLog);
	EXPECT_EQ(CleanLog.NumErrors + CleanLog.NumWarnings, 0) << Messages(CleanLog);
}

TEST_F(NodesACallFunction, WarnsWhenAWorldlessBlueprintCallsWithoutContext)
{
	MakeBlueprint(FindClass(ObjectPath));
	UK2Node_CallFunction* Delay = PlaceCall(SystemLibraryPath, TEXT("Delay"));
	FCompilerResultsLog Log;
	Delay->ValidateNodeDuringCompilation(Log);
	EXPECT_EQ(Log.NumWarnings, 1);
	EXPECT_NE(Messages(Log).find("is unsafe to call from blueprints of class"), std::string::npos) << Messages(Log);

	// PrintString may run without a world.
	FCompilerResultsLog PrintLog;
	PlaceCall(SystemLibraryPath, TEXT("PrintString"))->ValidateNodeDuringCompilation(PrintLog);
	EXPECT_EQ(PrintLog.NumWarnings, 0) << Messages(PrintLog);
}

TEST_F(NodesACallFunction, PurityOverrideTogglesExecPins)
{
	MakeBlueprint(FindClass(ActorPath));
	UK2Node_CallFunction* Get = PlaceCall(ActorPath, TEXT("K2_GetActorLocation"));
	EXPECT_TRUE(Get->bDefaultsToPureFunc);
	Get->SetNodePurityOverride(ENodePurityOverride::Impure);
	EXPECT_FALSE(Get->IsNodePure());
	EXPECT_EQ(DescribePins(Get), "execute:in:exec, then:out:exec, self:in:object, ReturnValue:out:struct");

	// Nothing comes out of DestroyActor, so it cannot be made pure.
	UK2Node_CallFunction* Destroy = PlaceCall(ActorPath, TEXT("K2_DestroyActor"));
	Destroy->SetNodePurityOverride(ENodePurityOverride::Pure);
	EXPECT_FALSE(Destroy->IsNodePure());
	EXPECT_EQ(Destroy->GetNodePurityOverride(), ENodePurityOverride::Unset);
}

TEST_F(NodesACallFunction, SurvivesSaveLoadAndReconstruction)
{
	MakeBlueprint(FindClass(ActorPath));
	UK2Node_CallFunction* Print = PlaceCall(SystemLibraryPath, TEXT("PrintString"));
	Print->FindPinChecked(TEXT("InString"))->DefaultValue = TEXT("Hi there");
	UK2Node_CallFunction* Get = PlaceCall(ActorPath, TEXT("K2_GetActorLocation"));
	Get->SetNodePurityOverride(ENodePurityOverride::Impure);
	UK2Node_CallFunction* Set = PlaceCall(ActorPath, TEXT("K2_SetActorLocation"));
	Print->FindPinChecked(TEXT("then"))->MakeLinkTo(Set->FindPinChecked(TEXT("execute")));
	Get->FindPinChecked(TEXT("ReturnValue"))->MakeLinkTo(Set->FindPinChecked(TEXT("NewLocation")));
	const std::string PrintPins = DescribePins(Print);
	const std::string GetPins = DescribePins(Get);

	FString FirstBytes;
	ASSERT_NE(SaveAndReload(&FirstBytes), nullptr);
	ASSERT_NE(EventGraph, nullptr);
	ASSERT_EQ(EventGraph->Nodes.Num(), 3);
	UK2Node_CallFunction* LoadedPrint = Cast<UK2Node_CallFunction>(EventGraph->Nodes[0]);
	UK2Node_CallFunction* LoadedGet = Cast<UK2Node_CallFunction>(EventGraph->Nodes[1]);
	UK2Node_CallFunction* LoadedSet = Cast<UK2Node_CallFunction>(EventGraph->Nodes[2]);
	ASSERT_TRUE(LoadedPrint && LoadedGet && LoadedSet);
	EXPECT_EQ(LoadedPrint->GetTargetFunction(), FindFunction(SystemLibraryPath, TEXT("PrintString")));
	EXPECT_EQ(LoadedGet->GetNodePurityOverride(), ENodePurityOverride::Impure);
	EXPECT_TRUE(LoadedGet->bDefaultsToPureFunc);
	EXPECT_EQ(DescribePins(LoadedPrint), PrintPins);
	EXPECT_EQ(DescribePins(LoadedGet), GetPins);
	EXPECT_EQ(SaveAgainBytes(), FirstBytes);

	// Reconstruction keeps the user's value and the links.
	LoadedPrint->ReconstructNode();
	LoadedSet->ReconstructNode();
	EXPECT_EQ(DescribePins(LoadedPrint), PrintPins);
	EXPECT_EQ(U8(LoadedPrint->FindPinChecked(TEXT("InString"))->DefaultValue), "Hi there");
	ASSERT_EQ(LoadedPrint->FindPinChecked(TEXT("then"))->LinkedTo.Num(), 1);
	EXPECT_EQ(LoadedPrint->FindPinChecked(TEXT("then"))->LinkedTo[0], LoadedSet->FindPinChecked(TEXT("execute")));
	ASSERT_EQ(LoadedSet->FindPinChecked(TEXT("NewLocation"))->LinkedTo.Num(), 1);
	EXPECT_EQ(LoadedSet->FindPinChecked(TEXT("NewLocation"))->LinkedTo[0], LoadedGet->FindPinChecked(TEXT("ReturnValue")));
}

TEST_F(NodesACallFunction, OutputsFollowThePickedClass)
{
	MakeBlueprint(FindClass(ActorPath));
	const TCHAR* const StaticsPath = TEXT("/Script/Engine.GameplayStatics");
	UK2Node_CallFunction* GetAll = PlaceCall(StaticsPath, TEXT("GetAllActorsOfClass"));
	UEdGraphPin* ActorClass = GetAll->FindPinChecked(TEXT("ActorClass"));
	EXPECT_EQ(GetAll->GetTypePickerPin(), ActorClass);
	EXPECT_EQ(GetAll->FindPinChecked(TEXT("OutActors"))->PinType.PinSubCategoryObject.Get(), FindClass(ActorPath));

	UClass* Pawn = FindClass(TEXT("/Script/Engine.Pawn"));
	ASSERT_NE(Pawn, nullptr);
	GetDefault<UEdGraphSchema_K2>()->TrySetDefaultObject(*ActorClass, Pawn);
	EXPECT_EQ(GetAll->FindPinChecked(TEXT("OutActors"))->PinType.PinSubCategoryObject.Get(), Pawn);
	EXPECT_TRUE(GetAll->FindPinChecked(TEXT("OutActors"))->PinType.IsArray());
	GetAll->ReconstructNode();
	EXPECT_EQ(GetAll->FindPinChecked(TEXT("OutActors"))->PinType.PinSubCategoryObject.Get(), Pawn);

	// Without DynamicOutputParam the return value follows.
	UK2Node_CallFunction* GetOne = PlaceCall(StaticsPath, TEXT("GetActorOfClass"));
	GetDefault<UEdGraphSchema_K2>()->TrySetDefaultObject(*GetOne->FindPinChecked(TEXT("ActorClass")), Pawn);
	EXPECT_EQ(GetOne->GetReturnValuePin()->PinType.PinSubCategoryObject.Get(), Pawn);
}

TEST_F(NodesACallFunction, CompactOperatorsShowTheUsualSigns)
{
	MakeBlueprint(FindClass(ActorPath));
	UK2Node_CallFunction* Multiply = PlaceCall(TEXT("/Script/Engine.KismetMathLibrary"), TEXT("Multiply_DoubleDouble"));
	EXPECT_TRUE(Multiply->ShouldDrawCompact());
	EXPECT_EQ(U8(Multiply->GetCompactNodeTitle()), "\xC3\x97");
	EXPECT_EQ(U8(Multiply->GetNodeTitle(ENodeTitleType::FullTitle)), "float * float");
	EXPECT_EQ(U8(Multiply->GetKeywords()), "Multiply_DoubleDouble \xC3\x97 * multiply");
	EXPECT_EQ(DescribePins(Multiply), "self:in:object (hidden), A:in:real/double, B:in:real/double, ReturnValue:out:real/double");
	EXPECT_EQ(U8(Multiply->GetMenuCategory()), "Math|Float");
	// A pure function without outputs to hand back would never run: only calls with outputs may be pure.
	EXPECT_TRUE(Multiply->IsNodePure());
}

TEST_F(NodesACallFunction, WiresMadeThroughTheSchemaResetTypedValuesAndAutowireInserts)
{
	MakeBlueprint(FindClass(ActorPath));
	const UEdGraphSchema_K2* Schema = GetDefault<UEdGraphSchema_K2>();
	UK2Node_CallFunction* Print = PlaceCall(SystemLibraryPath, TEXT("PrintString"));
	UEdGraphPin* InString = Print->FindPinChecked(TEXT("InString"));
	Schema->TrySetDefaultValue(*InString, TEXT("Typed by hand"));
	UK2Node_CallFunction* Name = PlaceCall(SystemLibraryPath, TEXT("GetDisplayName"));
	ASSERT_TRUE(Schema->TryCreateConnection(Name->GetReturnValuePin(), InString));
	// The wire supplies the value now; the typed one goes back to the function's default.
	EXPECT_EQ(U8(InString->DefaultValue), "Hello");

	// A node placed from an exec wire already in use goes in between.
	UK2Node_CallFunction* Delay = PlaceCall(SystemLibraryPath, TEXT("Delay"));
	ASSERT_TRUE(Schema->TryCreateConnection(Print->GetThenPin(), Delay->GetExecPin()));
	UK2Node_CallFunction* Destroy = Place<UK2Node_CallFunction>(EventGraph, [](UK2Node_CallFunction& Node)
	{
		Node.SetFromFunction(FindFunction(ActorPath, TEXT("K2_DestroyActor")));
	});
	Destroy->AutowireNewNode(Print->GetThenPin());
	ASSERT_EQ(Print->GetThenPin()->LinkedTo.Num(), 1);
	EXPECT_EQ(Print->GetThenPin()->LinkedTo[0], Destroy->GetExecPin());
	ASSERT_EQ(Destroy->GetThenPin()->LinkedTo.Num(), 1);
	EXPECT_EQ(Destroy->GetThenPin()->LinkedTo[0], Delay->GetExecPin());
}

TEST_F(NodesACallFunction, CallsOfTheBlueprintsOwnFunctionsTargetSelf)
{
	MakeBlueprint(FindClass(ActorPath));
	UBlueprintGeneratedClass* Skeleton = NewObject<UBlueprintGeneratedClass>(Blueprint->GetPackage(), TEXT("SKEL_BP_Test_C"), RF_Public | RF_Transient);
	Skeleton->SetSuperStruct(Blueprint->ParentClass);
	Skeleton->ClassGeneratedBy = Blueprint;
	static_cast<UClass*>(Skeleton)->ClassGeneratedBy = Blueprint;
	UFunction* OpenDoor = NewObject<UFunction>(Skeleton, TEXT("OpenDoor"), RF_Public | RF_Transient);
	OpenDoor->FunctionFlags = FUNC_BlueprintCallable | FUNC_BlueprintEvent | FUNC_Public;
	FDoubleProperty* Speed = new FDoubleProperty(OpenDoor, TEXT("Speed"), RF_Public | RF_MarkAsNative | RF_Transient);
	Speed->SetPropertyFlags(CPF_Parm);
	OpenDoor->AddCppProperty(Speed);
	OpenDoor->Bind();
	OpenDoor->StaticLink(true);
	Skeleton->AddFunctionToFunctionMap(OpenDoor, OpenDoor->GetFName());
	Skeleton->Bind();
	Skeleton->StaticLink(true);
	Blueprint->SkeletonGeneratedClass = Skeleton;

	UK2Node_CallFunction* Call = Place<UK2Node_CallFunction>(EventGraph, [OpenDoor](UK2Node_CallFunction& Node) { Node.SetFromFunction(OpenDoor); });
	EXPECT_TRUE(Call->FunctionReference.IsSelfContext());
	EXPECT_EQ(Call->GetTargetFunction(), OpenDoor);
	EXPECT_EQ(DescribePins(Call), "execute:in:exec, then:out:exec, self:in:object/self, Speed:in:real/double");
	EXPECT_EQ(U8(Call->FindPinChecked(TEXT("Speed"))->DefaultValue), "0.0");
	EXPECT_EQ(U8(Call->GetNodeTitle(ENodeTitleType::ListView)), "Open Door");
	FCompilerResultsLog Log;
	Call->ValidateNodeDuringCompilation(Log);
	EXPECT_EQ(Log.NumErrors + Log.NumWarnings, 0) << Messages(Log);

	// The function goes away: the call reports it, naming the Blueprint.
	Skeleton->RemoveFunctionFromFunctionMap(OpenDoor);
	FCompilerResultsLog MissingLog;
	Call->ValidateNodeDuringCompilation(MissingLog);
	EXPECT_EQ(MissingLog.NumErrors, 1);
	EXPECT_EQ(Messages(MissingLog).rfind("Could not find a function named \"OpenDoor\" in 'BP_Test'.", 0), 0u) << Messages(MissingLog);
}

TEST_F(NodesACallFunction, ParentCallsNameTheParentsFunction)
{
	MakeBlueprint(FindClass(ActorPath));
	UFunction* BeginPlay = FindFunction(ActorPath, TEXT("ReceiveBeginPlay"));
	UFunction* Tick = FindFunction(ActorPath, TEXT("ReceiveTick"));
	ASSERT_TRUE(BeginPlay && Tick);
	UK2Node_CallParentFunction* ParentBeginPlay = Place<UK2Node_CallParentFunction>(EventGraph, [BeginPlay](UK2Node_CallParentFunction& Node) { Node.SetFromFunction(BeginPlay); });
	// Never self: the call must reach the parent's version, not this Blueprint's override.
	EXPECT_FALSE(ParentBeginPlay->FunctionReference.IsSelfContext());
	EXPECT_EQ(ParentBeginPlay->FunctionReference.GetMemberParentClass(), FindClass(ActorPath));
	EXPECT_EQ(DescribePins(ParentBeginPlay), "execute:in:exec, then:out:exec, self:in:object (hidden)");
	EXPECT_EQ(U8(ParentBeginPlay->GetNodeTitle(ENodeTitleType::FullTitle)), "Parent: BeginPlay");
	UK2Node_CallParentFunction* ParentTick = Place<UK2Node_CallParentFunction>(EventGraph, [Tick](UK2Node_CallParentFunction& Node) { Node.SetFromFunction(Tick); });
	EXPECT_EQ(DescribePins(ParentTick), "execute:in:exec, then:out:exec, self:in:object (hidden), DeltaSeconds:in:real/float");
	EXPECT_EQ(U8(ParentTick->GetNodeTitle(ENodeTitleType::MenuTitle)), "Parent: Tick");

	FString FirstBytes;
	ASSERT_NE(SaveAndReload(&FirstBytes), nullptr);
	UK2Node_CallParentFunction* Loaded = Cast<UK2Node_CallParentFunction>(EventGraph->Nodes[1]);
	ASSERT_NE(Loaded, nullptr);
	EXPECT_EQ(Loaded->GetTargetFunction(), Tick);
	EXPECT_EQ(SaveAgainBytes(), FirstBytes);
}
