#include "Headless/UnrealEd/EditorTestUtils.h"

#include "Editor.h"
#include "Engine/TimelineTemplate.h"
#include "GameFramework/Actor.h"
#include "K2Node_Event.h"
#include "K2Node_FunctionEntry.h"
#include "K2Node_FunctionResult.h"
#include "K2Node_VariableGet.h"
#include "Kismet2/Kismet2NameValidators.h"
#include "Subsystems/AssetEditorSubsystem.h"
#include "UObject/UnrealType.h"

using namespace EditorTest;

namespace
{
	class FEditorUtils : public FEditorFixture
	{
	protected:
		UBlueprint* MakeActorBlueprint(const TCHAR* Name = TEXT("BP_Actor"))
		{
			UBlueprint* Blueprint = Create(AActor::StaticClass(), Name);
			EXPECT_NE(Blueprint, nullptr);
			return Blueprint;
		}
	};

	FString DescribeEvents(const UEdGraph* Graph)
	{
		FString Result;
		for (const UEdGraphNode* Node : Graph->Nodes)
		{
			if (const UK2Node_Event* Event = Cast<UK2Node_Event>(Node))
			{
				Result += FString::Printf(TEXT("%s@%d%s;"), *Event->EventReference.GetMemberName().ToString(), Event->NodePosY,
					Event->EnabledState == ENodeEnabledState::Disabled ? TEXT(" disabled") : TEXT(""));
			}
		}
		return Result;
	}
}

TEST_F(FEditorUtils, CreateBlueprintLaysOutAnActorBlueprintAsTheEditorDoes)
{
	UBlueprint* Blueprint = MakeActorBlueprint();
	ASSERT_NE(Blueprint, nullptr);
	EXPECT_EQ(Blueprint->ParentClass.Get(), AActor::StaticClass());
	EXPECT_EQ(Blueprint->BlueprintType, BPTYPE_Normal);
	ASSERT_NE(Blueprint->GeneratedClass.Get(), nullptr);
	EXPECT_EQ(U8(Blueprint->GeneratedClass->GetName()), "BP_Actor_C");
	EXPECT_EQ(Blueprint->GeneratedClass->GetSuperClass(), AActor::StaticClass());
	EXPECT_EQ(Blueprint->GeneratedClass->ClassGeneratedBy, Blueprint);
	EXPECT_EQ(UBlueprint::GetBlueprintFromClass(Blueprint->GeneratedClass), Blueprint);
	ASSERT_NE(Blueprint->SimpleConstructionScript.Get(), nullptr);

	ASSERT_EQ(Blueprint->FunctionGraphs.Num(), 1);
	UEdGraph* Construction = Blueprint->FunctionGraphs[0];
	EXPECT_EQ(U8(Construction->GetName()), "UserConstructionScript");
	EXPECT_FALSE(Construction->bAllowDeletion);
	ASSERT_EQ(Construction->Nodes.Num(), 1);
	const UK2Node_FunctionEntry* Entry = Cast<UK2Node_FunctionEntry>(Construction->Nodes[0]);
	ASSERT_NE(Entry, nullptr);
	EXPECT_EQ(U8(Entry->FunctionReference.GetMemberName()), "UserConstructionScript");

	ASSERT_EQ(Blueprint->UbergraphPages.Num(), 1);
	UEdGraph* EventGraph = Blueprint->UbergraphPages[0];
	EXPECT_EQ(FBlueprintEditorUtils::FindEventGraph(Blueprint), EventGraph);
	EXPECT_FALSE(EventGraph->bAllowDeletion);
	EXPECT_EQ(U8(DescribeEvents(EventGraph)), "ReceiveBeginPlay@0 disabled;ReceiveActorBeginOverlap@200 disabled;ReceiveTick@400 disabled;");
	const UK2Node_Event* BeginPlay = Cast<UK2Node_Event>(EventGraph->Nodes[0]);
	EXPECT_TRUE(BeginPlay->bOverrideFunction);
	EXPECT_TRUE(BeginPlay->bCommentBubbleVisible);
	EXPECT_EQ(U8(BeginPlay->NodeComment), "This node is disabled and will not be called.\nDrag off pins to build functionality.");
	EXPECT_TRUE(FBlueprintEditorUtils::IsDataOnlyBlueprint(Blueprint));
}

TEST_F(FEditorUtils, CreateBlueprintRefusesWhatTheEditorRefuses)
{
	// The name is taken in that package.
	ASSERT_NE(MakeActorBlueprint(TEXT("BP_Twice")), nullptr);
	EXPECT_EQ(Create(AActor::StaticClass(), TEXT("BP_Twice")), nullptr);
	EXPECT_EQ(Create(nullptr, TEXT("BP_NoParent")), nullptr);
	// A graph class is no Blueprint base.
	EXPECT_EQ(Create(UEdGraph::StaticClass(), TEXT("BP_Graph")), nullptr);

	struct FCase
	{
		UClass* Class;
		bool bExpected;
	};
	const FCase Cases[] = {
		{ AActor::StaticClass(), true },
		{ UObject::StaticClass(), true },
		{ FindClass(TEXT("/Script/Engine.ActorComponent")), true },
		{ FindClass(TEXT("/Script/UMG.UserWidget")), true },
		{ UEdGraph::StaticClass(), false },
		{ nullptr, false },
	};
	for (const FCase& Case : Cases)
	{
		EXPECT_EQ(FKismetEditorUtilities::CanCreateBlueprintOfClass(Case.Class), Case.bExpected) << (Case.Class ? U8(Case.Class->GetName()) : "null");
	}
	UBlueprint* Parent = MakeActorBlueprint(TEXT("BP_Parent"));
	EXPECT_TRUE(FKismetEditorUtilities::CanCreateBlueprintOfClass(Parent->GeneratedClass));
}

TEST_F(FEditorUtils, NonActorBlueprintsGetNoConstructionScriptAndComponentsTheirOwnEvents)
{
	UBlueprint* Object = Create(UObject::StaticClass(), TEXT("BP_Object"));
	ASSERT_NE(Object, nullptr);
	EXPECT_EQ(Object->FunctionGraphs.Num(), 0);
	EXPECT_EQ(Object->SimpleConstructionScript.Get(), nullptr);
	EXPECT_EQ(U8(DescribeEvents(Object->UbergraphPages[0])), "");

	UBlueprint* Component = Create(FindClass(TEXT("/Script/Engine.ActorComponent")), TEXT("BP_Component"));
	ASSERT_NE(Component, nullptr);
	EXPECT_EQ(U8(DescribeEvents(Component->UbergraphPages[0])), "ReceiveBeginPlay@0 disabled;ReceiveTick@200 disabled;");

	UBlueprint* Library = Create(FindClass(TEXT("/Script/Engine.BlueprintFunctionLibrary")), TEXT("BP_Library"), BPTYPE_FunctionLibrary);
	ASSERT_NE(Library, nullptr);
	EXPECT_EQ(Library->UbergraphPages.Num(), 0);
}

TEST_F(FEditorUtils, NameValidatorJudgesNamesWithTheEditorsTexts)
{
	UBlueprint* Blueprint = MakeActorBlueprint();
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Health"), PinType(UEdGraphSchema_K2::PC_Int)));
	AddFunction(Blueprint, TEXT("Heal"));
	FKismetNameValidator Validator(Blueprint, TEXT("Armor"));
	struct FCase
	{
		const TCHAR* Name;
		EValidatorResult Expected;
		const char* Text;
	};
	const FCase Cases[] = {
		{ TEXT("Speed"), EValidatorResult::Ok, "" },
		{ TEXT("With Space"), EValidatorResult::Ok, "" },
		{ TEXT(""), EValidatorResult::EmptyName, "Name cannot be empty." },
		{ TEXT("Health"), EValidatorResult::AlreadyInUse, "Name is already in use." },
		{ TEXT("health"), EValidatorResult::AlreadyInUse, "Name is already in use." },
		{ TEXT("Heal"), EValidatorResult::AlreadyInUse, "Name is already in use." },
		{ TEXT("EventGraph"), EValidatorResult::AlreadyInUse, "Name is already in use." },
		{ TEXT("UserConstructionScript"), EValidatorResult::AlreadyInUse, "Name is already in use." },
		{ TEXT("Armor"), EValidatorResult::Ok, "" },
		{ TEXT("Bad.Name"), EValidatorResult::ContainsInvalidCharacters, nullptr },
		{ TEXT("a(b)"), EValidatorResult::ContainsInvalidCharacters, nullptr },
	};
	for (const FCase& Case : Cases)
	{
		const EValidatorResult Result = Validator.IsValid(FString(Case.Name));
		EXPECT_EQ(Result, Case.Expected) << U8(FString(Case.Name));
		if (Case.Text)
		{
			EXPECT_EQ(U8(INameValidatorInterface::GetErrorText(Case.Name, Result)), Case.Text) << U8(FString(Case.Name));
		}
	}
	// Length: up to 100 characters is fine, more is too long.
	EXPECT_EQ(Validator.IsValid(FString::ChrN(100, TEXT('a'))), EValidatorResult::Ok);
	EXPECT_EQ(Validator.IsValid(FString::ChrN(101, TEXT('a'))), EValidatorResult::TooLong);
	EXPECT_EQ(U8(INameValidatorInterface::GetErrorText(TEXT("x"), EValidatorResult::TooLong)), "Names must have fewer than 100 characters!");
	EXPECT_EQ(U8(INameValidatorInterface::GetErrorText(TEXT("x"), EValidatorResult::LocallyInUse)), "Conflicts with another object in the same scope!");
	EXPECT_EQ(U8(INameValidatorInterface::GetErrorText(TEXT("x"), EValidatorResult::ExistingName)), "Name cannot be the same as the existing name.");
	// The invalid-character text names the character at fault.
	EXPECT_NE(U8(INameValidatorInterface::GetErrorText(TEXT("Bad.Name"), EValidatorResult::ContainsInvalidCharacters)).find("."), std::string::npos);
}

TEST_F(FEditorUtils, UniqueKismetNamesCountFromZeroAndRepairInvalidCharacters)
{
	UBlueprint* Blueprint = MakeActorBlueprint();
	EXPECT_EQ(U8(FBlueprintEditorUtils::FindUniqueKismetName(Blueprint, TEXT("Speed"))), "Speed");
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Speed"), PinType(UEdGraphSchema_K2::PC_Real, nullptr, UEdGraphSchema_K2::PC_Double)));
	EXPECT_EQ(U8(FBlueprintEditorUtils::FindUniqueKismetName(Blueprint, TEXT("Speed"))), "Speed_0");
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Speed_0"), PinType(UEdGraphSchema_K2::PC_Int)));
	EXPECT_EQ(U8(FBlueprintEditorUtils::FindUniqueKismetName(Blueprint, TEXT("Speed"))), "Speed_1");
	EXPECT_EQ(U8(FBlueprintEditorUtils::FindUniqueKismetName(Blueprint, TEXT("My.Var(1)"))), "My_Var_1_");
	EXPECT_EQ(U8(FBlueprintEditorUtils::FindUniqueKismetName(Blueprint, TEXT("EventGraph"))), "EventGraph_0");
}

TEST_F(FEditorUtils, AddMemberVariableGivesTheEditorsDefaults)
{
	UBlueprint* Blueprint = MakeActorBlueprint();
	UClass* Actor = AActor::StaticClass();
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("bIsReady"), PinType(UEdGraphSchema_K2::PC_Boolean), TEXT("true")));
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Target"), PinType(UEdGraphSchema_K2::PC_Object, Actor)));
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("MaxHealth"), PinType(UEdGraphSchema_K2::PC_Real, nullptr, UEdGraphSchema_K2::PC_Double)));
	// The same name twice, an empty name, and a name the parent class has are refused.
	EXPECT_FALSE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("bIsReady"), PinType(UEdGraphSchema_K2::PC_Int)));
	EXPECT_FALSE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, NAME_None, PinType(UEdGraphSchema_K2::PC_Int)));
	ASSERT_EQ(Blueprint->NewVariables.Num(), 3);

	const FBPVariableDescription& Ready = Blueprint->NewVariables[0];
	EXPECT_EQ(U8(Ready.FriendlyName), "Is Ready");
	EXPECT_EQ(U8(Ready.Category), "Default");
	EXPECT_EQ(U8(Ready.DefaultValue), "true");
	EXPECT_TRUE(Ready.VarGuid.IsValid());
	EXPECT_EQ(Ready.PropertyFlags, uint64(CPF_Edit | CPF_BlueprintVisible | CPF_DisableEditOnInstance));
	EXPECT_EQ(U8(Ready.GetMetaData(TEXT("MultiLine"))), "true");
	EXPECT_EQ(U8(Blueprint->NewVariables[2].FriendlyName), "Max Health");
	// An actor reference has no default on the class.
	EXPECT_EQ(Blueprint->NewVariables[1].PropertyFlags, uint64(CPF_Edit | CPF_BlueprintVisible | CPF_DisableEditOnInstance | CPF_DisableEditOnTemplate));

	EXPECT_EQ(FBlueprintEditorUtils::FindNewVariableIndex(Blueprint, TEXT("Target")), 1);
	EXPECT_EQ(FBlueprintEditorUtils::FindNewVariableIndex(Blueprint, TEXT("Nope")), INDEX_NONE);
	EXPECT_EQ(FBlueprintEditorUtils::FindMemberVariableGuidByName(Blueprint, TEXT("Target")), Blueprint->NewVariables[1].VarGuid);
	EXPECT_FALSE(FBlueprintEditorUtils::FindMemberVariableGuidByName(Blueprint, TEXT("Nope")).IsValid());
	EXPECT_EQ(U8(FBlueprintEditorUtils::FindMemberVariableNameByGuid(Blueprint, Blueprint->NewVariables[2].VarGuid)), "MaxHealth");

	FBlueprintEditorUtils::RemoveMemberVariable(Blueprint, TEXT("Target"));
	EXPECT_EQ(Blueprint->NewVariables.Num(), 2);
	EXPECT_EQ(FBlueprintEditorUtils::FindNewVariableIndex(Blueprint, TEXT("Target")), INDEX_NONE);
	EXPECT_EQ(U8(Blueprint->NewVariables[1].VarName), "MaxHealth");
}

TEST_F(FEditorUtils, VariableFlagsAndMetadataAreSetAndCleared)
{
	UBlueprint* Blueprint = MakeActorBlueprint();
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Score"), PinType(UEdGraphSchema_K2::PC_Int)));
	auto Flags = [&] { return Blueprint->NewVariables[0].PropertyFlags; };

	FBlueprintEditorUtils::SetBlueprintOnlyEditableFlag(Blueprint, TEXT("Score"), false);
	EXPECT_FALSE(Flags() & CPF_DisableEditOnInstance);
	FBlueprintEditorUtils::SetBlueprintOnlyEditableFlag(Blueprint, TEXT("Score"), true);
	EXPECT_TRUE(Flags() & CPF_DisableEditOnInstance);
	FBlueprintEditorUtils::SetBlueprintPropertyReadOnlyFlag(Blueprint, TEXT("Score"), true);
	EXPECT_TRUE(Flags() & CPF_BlueprintReadOnly);
	FBlueprintEditorUtils::SetVariableSaveGameFlag(Blueprint, TEXT("Score"), true);
	EXPECT_TRUE(Flags() & CPF_SaveGame);
	FBlueprintEditorUtils::SetVariableSaveGameFlag(Blueprint, TEXT("Score"), false);
	EXPECT_FALSE(Flags() & CPF_SaveGame);

	FBlueprintEditorUtils::SetBlueprintVariableMetaData(Blueprint, TEXT("Score"), nullptr, FBlueprintMetadata::MD_Tooltip, TEXT("Points so far"));
	FString Value;
	EXPECT_TRUE(FBlueprintEditorUtils::GetBlueprintVariableMetaData(Blueprint, TEXT("Score"), nullptr, FBlueprintMetadata::MD_Tooltip, Value));
	EXPECT_EQ(U8(Value), "Points so far");
	FBlueprintEditorUtils::RemoveBlueprintVariableMetaData(Blueprint, TEXT("Score"), nullptr, FBlueprintMetadata::MD_Tooltip);
	EXPECT_FALSE(FBlueprintEditorUtils::GetBlueprintVariableMetaData(Blueprint, TEXT("Score"), nullptr, FBlueprintMetadata::MD_Tooltip, Value));

	FBlueprintEditorUtils::SetBlueprintVariableCategory(Blueprint, TEXT("Score"), nullptr, FText::FromString(TEXT("Stats")));
	EXPECT_EQ(U8(Blueprint->NewVariables[0].Category), "Stats");
	FBlueprintEditorUtils::SetBlueprintVariableCategory(Blueprint, TEXT("Score"), nullptr, FText());
	EXPECT_EQ(U8(Blueprint->NewVariables[0].Category), "Default");

	// Unknown names change nothing.
	FBlueprintEditorUtils::SetVariableSaveGameFlag(Blueprint, TEXT("Unknown"), true);
	EXPECT_FALSE(Flags() & CPF_SaveGame);
}

TEST_F(FEditorUtils, FunctionGraphsGetAnEditableEntryAndResultsOnDemand)
{
	UBlueprint* Blueprint = MakeActorBlueprint();
	UEdGraph* Graph = AddFunction(Blueprint, TEXT("Heal"));
	ASSERT_NE(Graph, nullptr);
	EXPECT_TRUE(Blueprint->FunctionGraphs.Contains(Graph));
	ASSERT_EQ(Graph->Nodes.Num(), 1);
	UK2Node_FunctionEntry* Entry = Cast<UK2Node_FunctionEntry>(Graph->Nodes[0]);
	ASSERT_NE(Entry, nullptr);
	EXPECT_TRUE(Entry->bIsEditable);
	EXPECT_EQ(Entry->GetFunctionFlags(), int32(FUNC_BlueprintCallable | FUNC_BlueprintEvent | FUNC_Public));
	EXPECT_NE(FBlueprintEditorUtils::GetGraphFunctionMetaData(Graph), nullptr);
	EXPECT_EQ(FBlueprintEditorUtils::GetGraphFunctionMetaData(Blueprint->UbergraphPages[0]), nullptr);

	Entry->NodePosX = 100;
	UK2Node_FunctionResult* Result = FBlueprintEditorUtils::FindOrCreateFunctionResultNode(Entry);
	ASSERT_NE(Result, nullptr);
	EXPECT_EQ(Result->NodePosX, 100 + Entry->NodeWidth + 256);
	EXPECT_EQ(Result->NodePosY, Entry->NodePosY);
	EXPECT_EQ(FBlueprintEditorUtils::FindOrCreateFunctionResultNode(Entry), Result);
	EXPECT_EQ(Graph->Nodes.Num(), 2);

	TSet<FName> Names;
	FBlueprintEditorUtils::GetAllGraphNames(Blueprint, Names);
	EXPECT_TRUE(Names.Contains(TEXT("Heal")));
	EXPECT_TRUE(Names.Contains(TEXT("EventGraph")));
	EXPECT_TRUE(Names.Contains(TEXT("UserConstructionScript")));

	// A second graph of the same name is numbered rather than replacing the first.
	UEdGraph* Again = FBlueprintEditorUtils::CreateNewGraph(Blueprint, TEXT("Heal"), UEdGraph::StaticClass(), UEdGraphSchema_K2::StaticClass());
	EXPECT_NE(U8(Again->GetName()), "Heal");

	FBlueprintEditorUtils::RemoveGraph(Blueprint, Graph);
	EXPECT_FALSE(Blueprint->FunctionGraphs.Contains(Graph));
	EXPECT_EQ(U8(FBlueprintEditorUtils::FindUniqueKismetName(Blueprint, TEXT("Heal"))), "Heal");
}

TEST_F(FEditorUtils, LocalVariablesLiveOnTheFunctionEntry)
{
	UBlueprint* Blueprint = MakeActorBlueprint();
	UEdGraph* Graph = AddFunction(Blueprint, TEXT("Compute"));
	EXPECT_TRUE(FBlueprintEditorUtils::AddLocalVariable(Blueprint, Graph, TEXT("Temp"), PinType(UEdGraphSchema_K2::PC_Int), TEXT("3")));
	EXPECT_FALSE(FBlueprintEditorUtils::AddLocalVariable(Blueprint, Graph, TEXT("Temp"), PinType(UEdGraphSchema_K2::PC_Int)));
	// Event graphs have no function entry, so no locals.
	EXPECT_FALSE(FBlueprintEditorUtils::AddLocalVariable(Blueprint, Blueprint->UbergraphPages[0], TEXT("Other"), PinType(UEdGraphSchema_K2::PC_Int)));
	FBPVariableDescription* Local = FBlueprintEditorUtils::FindLocalVariable(Blueprint, Graph, TEXT("Temp"));
	ASSERT_NE(Local, nullptr);
	EXPECT_EQ(U8(Local->DefaultValue), "3");
	EXPECT_TRUE(Local->PropertyFlags & CPF_BlueprintVisible);
	// A member may not take a local's name.
	EXPECT_FALSE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Temp"), PinType(UEdGraphSchema_K2::PC_Int)) &&
		FKismetNameValidator(Blueprint).IsValid(FName(TEXT("Temp"))) == EValidatorResult::Ok);
	FBlueprintEditorUtils::RemoveLocalVariable(Blueprint, Graph, TEXT("Temp"));
	EXPECT_EQ(FBlueprintEditorUtils::FindLocalVariable(Blueprint, Graph, TEXT("Temp")), nullptr);
}

TEST_F(FEditorUtils, TimelinesBelongToActorBlueprintsOnly)
{
	UBlueprint* Blueprint = MakeActorBlueprint();
	UTimelineTemplate* Timeline = FBlueprintEditorUtils::AddNewTimeline(Blueprint, TEXT("Fade"));
	ASSERT_NE(Timeline, nullptr);
	EXPECT_EQ(U8(Timeline->GetName()), "Fade_Template");
	EXPECT_EQ(Timeline->GetOuter(), Blueprint->GeneratedClass.Get());
	EXPECT_EQ(U8(Timeline->GetVariableName()), "Fade");
	EXPECT_EQ(FBlueprintEditorUtils::FindTimelineTemplateByVariableName(Blueprint, TEXT("Fade")), Timeline);
	EXPECT_EQ(FBlueprintEditorUtils::AddNewTimeline(Blueprint, TEXT("Fade")), nullptr);
	EXPECT_EQ(U8(FBlueprintEditorUtils::FindUniqueKismetName(Blueprint, TEXT("Fade"))), "Fade_0");

	EXPECT_TRUE(FBlueprintEditorUtils::RenameTimeline(Blueprint, TEXT("Fade"), TEXT("FadeOut")));
	EXPECT_EQ(U8(Timeline->GetName()), "FadeOut_Template");
	FBlueprintEditorUtils::RemoveTimeline(Blueprint, Timeline);
	EXPECT_EQ(Blueprint->Timelines.Num(), 0);
	EXPECT_EQ(FBlueprintEditorUtils::FindTimelineTemplateByVariableName(Blueprint, TEXT("FadeOut")), nullptr);

	UBlueprint* Object = Create(UObject::StaticClass(), TEXT("BP_NoTimelines"));
	EXPECT_EQ(FBlueprintEditorUtils::AddNewTimeline(Object, TEXT("Fade")), nullptr);
}

TEST_F(FEditorUtils, KindsOfBlueprintAreToldApart)
{
	UBlueprint* Actor = MakeActorBlueprint();
	UBlueprint* Object = Create(UObject::StaticClass(), TEXT("BP_Plain"));
	EXPECT_TRUE(FBlueprintEditorUtils::IsActorBased(Actor));
	EXPECT_FALSE(FBlueprintEditorUtils::IsActorBased(Object));
	EXPECT_TRUE(FBlueprintEditorUtils::SupportsConstructionScript(Actor));
	EXPECT_FALSE(FBlueprintEditorUtils::SupportsConstructionScript(Object));
	EXPECT_TRUE(FBlueprintEditorUtils::DoesSupportEventGraphs(Object));
	EXPECT_FALSE(FBlueprintEditorUtils::IsEditorUtilityBlueprint(Actor));
	EXPECT_TRUE(FBlueprintEditorUtils::IsEventGraph(Actor->UbergraphPages[0]));
	EXPECT_FALSE(FBlueprintEditorUtils::IsEventGraph(Actor->FunctionGraphs[0]));
	EXPECT_EQ(FBlueprintEditorUtils::FindBlueprintForGraph(Actor->UbergraphPages[0]), Actor);
	EXPECT_EQ(FBlueprintEditorUtils::FindBlueprintForNode(Actor->UbergraphPages[0]->Nodes[0]), Actor);
	EXPECT_EQ(FBlueprintEditorUtils::FindBlueprintForNode(nullptr), nullptr);
	EXPECT_EQ(U8(FBlueprintEditorUtils::GetFriendlyClassDisplayName(Actor->GeneratedClass)), "BP_Actor");
}

TEST_F(FEditorUtils, RemoveNodeTakesItOutOfItsGraph)
{
	UBlueprint* Blueprint = MakeActorBlueprint();
	UEdGraph* EventGraph = Blueprint->UbergraphPages[0];
	UEdGraphNode* Tick = EventGraph->Nodes[2];
	FBlueprintEditorUtils::RemoveNode(Blueprint, Tick);
	EXPECT_EQ(EventGraph->Nodes.Num(), 2);
	EXPECT_FALSE(EventGraph->Nodes.Contains(Tick));
	EXPECT_EQ(FBlueprintEditorUtils::FindOverrideForFunction(Blueprint, AActor::StaticClass(), TEXT("ReceiveTick")), nullptr);
	EXPECT_NE(FBlueprintEditorUtils::FindOverrideForFunction(Blueprint, AActor::StaticClass(), TEXT("ReceiveBeginPlay")), nullptr);
}

TEST_F(FEditorUtils, OverrideClassesComeFromTheParent)
{
	UBlueprint* Blueprint = MakeActorBlueprint();
	UFunction* Function = nullptr;
	EXPECT_EQ(FBlueprintEditorUtils::GetOverrideFunctionClass(Blueprint, TEXT("ReceiveBeginPlay"), &Function), AActor::StaticClass());
	ASSERT_NE(Function, nullptr);
	EXPECT_EQ(U8(Function->GetName()), "ReceiveBeginPlay");
	EXPECT_EQ(FBlueprintEditorUtils::GetOverrideFunctionClass(Blueprint, TEXT("NoSuchFunction"), &Function), nullptr);
	EXPECT_EQ(Function, nullptr);
}

TEST_F(FEditorUtils, NoEditorOpensHeadlessButFocusRequestsAreRecorded)
{
	UBlueprint* Blueprint = MakeActorBlueprint();
	UAssetEditorSubsystem* Subsystem = GEditor->GetEditorSubsystem<UAssetEditorSubsystem>();
	ASSERT_NE(Subsystem, nullptr);
	EXPECT_EQ(Subsystem, GEditor->GetEditorSubsystem<UAssetEditorSubsystem>());
	EXPECT_EQ(Subsystem->FindEditorForAsset(Blueprint, true), nullptr);
	EXPECT_FALSE(Subsystem->OpenEditorForAsset(Blueprint));
	EXPECT_TRUE(GIsEditor);
	EXPECT_FALSE(IsGarbageCollecting());

	FKismetEditorUtilities::BringKismetToFocusAttentionOnObject(Blueprint->UbergraphPages[0]);
	FKismetEditorUtilities::BringKismetToFocusAttentionOnObject(nullptr);
	ASSERT_EQ(FKismetEditorUtilities::GetRecordedFocusRequests().Num(), 1);
	EXPECT_EQ(FKismetEditorUtilities::GetRecordedFocusRequests()[0].Get(), Blueprint->UbergraphPages[0].Get());
}

TEST_F(FEditorUtils, VariableNodesFollowTheirVariable)
{
	UBlueprint* Blueprint = MakeActorBlueprint();
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Score"), PinType(UEdGraphSchema_K2::PC_Int)));
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Lives"), PinType(UEdGraphSchema_K2::PC_Int)));
	UEdGraph* Graph = Blueprint->UbergraphPages[0];
	auto PlaceGet = [&](const TCHAR* Name)
	{
		UK2Node_VariableGet* Node = static_cast<UK2Node_VariableGet*>(Graph->CreateNode(UK2Node_VariableGet::StaticClass(), false, false));
		Node->VariableReference.SetSelfMember(FName(Name));
		Node->CreateNewGuid();
		Node->AllocateDefaultPins();
		return Node;
	};
	UK2Node_VariableGet* ScoreGet = PlaceGet(TEXT("Score"));
	UK2Node_VariableGet* LivesGet = PlaceGet(TEXT("Lives"));
	EXPECT_TRUE(FBlueprintEditorUtils::IsVariableUsed(Blueprint, TEXT("Score")));
	EXPECT_FALSE(FBlueprintEditorUtils::IsVariableUsed(Blueprint, TEXT("Health")));

	FBlueprintEditorUtils::RenameMemberVariable(Blueprint, TEXT("Lives"), TEXT("Tries"));
	EXPECT_EQ(U8(LivesGet->GetVarName()), "Tries");
	EXPECT_EQ(U8(Blueprint->NewVariables[1].FriendlyName), "Tries");

	FBlueprintEditorUtils::RemoveMemberVariable(Blueprint, TEXT("Score"));
	EXPECT_FALSE(Graph->Nodes.Contains(ScoreGet));
	EXPECT_TRUE(Graph->Nodes.Contains(LivesGet));
	EXPECT_FALSE(FBlueprintEditorUtils::IsVariableUsed(Blueprint, TEXT("Score")));
}

#if __has_include("K2Node_Tunnel.h")
#include "K2Node_Tunnel.h"

TEST_F(FEditorUtils, MacroGraphsGetTheirEntryAndExitTunnels)
{
	UBlueprint* Blueprint = MakeActorBlueprint();
	UEdGraph* Macro = FBlueprintEditorUtils::CreateNewGraph(Blueprint, TEXT("MyMacro"), UEdGraph::StaticClass(), UEdGraphSchema_K2::StaticClass());
	FBlueprintEditorUtils::AddMacroGraph(Blueprint, Macro, true, nullptr);
	EXPECT_TRUE(Blueprint->MacroGraphs.Contains(Macro));
	ASSERT_EQ(Macro->Nodes.Num(), 2);
	const UK2Node_Tunnel* Entry = Cast<UK2Node_Tunnel>(Macro->Nodes[0]);
	const UK2Node_Tunnel* Exit = Cast<UK2Node_Tunnel>(Macro->Nodes[1]);
	ASSERT_NE(Entry, nullptr);
	ASSERT_NE(Exit, nullptr);
	EXPECT_TRUE(Entry->bCanHaveOutputs);
	EXPECT_FALSE(Entry->bCanHaveInputs);
	EXPECT_TRUE(Exit->bCanHaveInputs);
	EXPECT_EQ(Exit->NodePosX, 240);
	// Adding it again changes nothing; removing it frees its name.
	FBlueprintEditorUtils::AddMacroGraph(Blueprint, Macro, true, nullptr);
	EXPECT_EQ(Macro->Nodes.Num(), 2);
	FBlueprintEditorUtils::RemoveGraph(Blueprint, Macro);
	EXPECT_FALSE(Blueprint->MacroGraphs.Contains(Macro));
	EXPECT_EQ(U8(FBlueprintEditorUtils::FindUniqueKismetName(Blueprint, TEXT("MyMacro"))), "MyMacro");
}
#endif
