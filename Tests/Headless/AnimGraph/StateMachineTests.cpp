#include <gtest/gtest.h>

#include "CoreMinimal.h"
#include "AnimGraphNode_Base.h"
#include "AnimGraphNode_StateMachineBase.h"
#include "AnimStateNode.h"
#include "AnimStateTransitionNode.h"
#include "AnimationGraph.h"
#include "AnimationGraphSchema.h"
#include "AnimationStateGraph.h"
#include "AnimationStateMachineGraph.h"
#include "AnimationStateMachineSchema.h"
#include "AnimationTransitionGraph.h"
#include "Animation/AnimBlueprint.h"
#include "Animation/AnimInstance.h"
#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "HAL/PlatformMisc.h"
#include "Headless/Projects/TempProjectFolder.h"
#include "Kismet2/CompilerResultsLog.h"
#include "Kismet2/KismetEditorUtilities.h"
#include "GameFramework/Actor.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "Misc/PackageName.h"
#include "UObject/Package.h"
#include "UObject/SavePackage.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"

namespace
{
	template <typename NodeType>
	NodeType* Place(UEdGraph* Graph, int32 X = 0, int32 Y = 0)
	{
		FGraphNodeCreator<NodeType> Creator(*Graph);
		NodeType* Node = Creator.CreateNode(false);
		Node->NodePosX = X;
		Node->NodePosY = Y;
		Creator.Finalize();
		return Node;
	}

	/** An Animation Blueprint with its anim graph and one state machine node in it. */
	struct FAnimFixture
	{
		UAnimBlueprint* Blueprint = nullptr;
		UAnimationGraph* AnimGraph = nullptr;
		UAnimGraphNode_StateMachine* Machine = nullptr;

		explicit FAnimFixture(const TCHAR* PackageName)
		{
			FPlatformMisc::SeedGuidGenerator(7);
			UPackage* Package = CreatePackage(PackageName);
			Blueprint = NewObject<UAnimBlueprint>(Package, *FPackageName::GetShortName(PackageName), RF_Public | RF_Standalone | RF_Transactional);
			Blueprint->ParentClass = UAnimInstance::StaticClass();
			AnimGraph = NewObject<UAnimationGraph>(Blueprint, TEXT("AnimGraph"), RF_Transactional);
			AnimGraph->Schema = UAnimationGraphSchema::StaticClass();
			AnimGraph->GetSchema()->CreateDefaultNodesForGraph(*AnimGraph);
			Blueprint->FunctionGraphs.Add(AnimGraph);
			Machine = Place<UAnimGraphNode_StateMachine>(AnimGraph, -300, 0);
		}

		UAnimationStateMachineGraph* MachineGraph() const { return Machine->EditorStateMachineGraph; }
	};

	UAnimStateNode* AddState(UEdGraph* Graph, const TCHAR* Name, int32 X = 0)
	{
		UAnimStateNode* State = Place<UAnimStateNode>(Graph, X, 0);
		if (Name)
		{
			State->OnRenameNode(Name);
		}
		return State;
	}

	/** Wires From to To the way the editor does when a user drags between two states. */
	UAnimStateTransitionNode* Connect(UAnimStateNodeBase* From, UAnimStateNodeBase* To)
	{
		const int32 Before = From->GetGraph()->Nodes.Num();
		EXPECT_TRUE(From->GetSchema()->TryCreateConnection(From->GetOutputPin(), To->GetInputPin()));
		EXPECT_EQ(From->GetGraph()->Nodes.Num(), Before + 1);
		return Cast<UAnimStateTransitionNode>(From->GetGraph()->Nodes.Last());
	}
}

TEST(AnimGraph, AnimGraphEndsInOutputPoseWithAPoseInput)
{
	FAnimFixture Anim(TEXT("/Game/Anim/ABP_Pose"));
	UEdGraphNode* Root = Anim.AnimGraph->Nodes[0];
	ASSERT_TRUE(Root->IsA<UAnimGraphNode_Root>());
	EXPECT_EQ(U8(Root->GetNodeTitle(ENodeTitleType::FullTitle).ToString()), "Output Pose");
	ASSERT_EQ(Root->Pins.Num(), 1);
	EXPECT_EQ(U8(Root->Pins[0]->PinName.ToString()), "Result");
	EXPECT_EQ(Root->Pins[0]->Direction, EGPD_Input);
	EXPECT_TRUE(UAnimationGraphSchema::IsPosePin(Root->Pins[0]->PinType));
	EXPECT_EQ(U8(Root->Pins[0]->PinType.PinSubCategoryObject->GetPathName()), "/Script/Engine.PoseLink");
	// The machine's pose output links to the final pose under the K2 rules.
	UEdGraphPin* Pose = Anim.Machine->FindPin(TEXT("Pose"));
	ASSERT_NE(Pose, nullptr);
	EXPECT_TRUE(Anim.AnimGraph->GetSchema()->TryCreateConnection(Pose, Root->Pins[0]));
	EXPECT_EQ(Root->Pins[0]->LinkedTo.Num(), 1);
}

TEST(AnimGraph, StateMachineOwnsANamedGraphStartingAtItsEntry)
{
	FAnimFixture Anim(TEXT("/Game/Anim/ABP_Machine"));
	UAnimationStateMachineGraph* Graph = Anim.MachineGraph();
	ASSERT_NE(Graph, nullptr);
	EXPECT_EQ(U8(Anim.Machine->GetStateMachineName()), "New State Machine");
	EXPECT_EQ(U8(Anim.Machine->GetNodeTitle(ENodeTitleType::FullTitle).ToString()), "New State Machine\nState Machine");
	EXPECT_EQ(U8(Anim.Machine->GetNodeTitle(ENodeTitleType::ListView).ToString()), "New State Machine");
	EXPECT_TRUE(Anim.AnimGraph->SubGraphs.Contains(Graph));
	EXPECT_EQ(Graph->OwnerAnimGraphNode.Get(), Anim.Machine);
	ASSERT_NE(Graph->EntryNode.Get(), nullptr);
	EXPECT_EQ(Graph->Nodes.Num(), 1);
	EXPECT_EQ(U8(Graph->EntryNode->GetNodeTitle(ENodeTitleType::FullTitle).ToString()), "New State Machine");
	ASSERT_EQ(Graph->EntryNode->Pins.Num(), 1);
	EXPECT_EQ(U8(Graph->EntryNode->Pins[0]->PinName.ToString()), "Entry");

	UAnimGraphNode_StateMachine* Second = Place<UAnimGraphNode_StateMachine>(Anim.AnimGraph);
	EXPECT_EQ(U8(Second->GetStateMachineName()), "New State Machine_1");
	Second->OnRenameNode(TEXT("Locomotion"));
	EXPECT_EQ(U8(Second->GetStateMachineName()), "Locomotion");
	Second->OnRenameNode(TEXT("New State Machine"));
	EXPECT_EQ(U8(Second->GetStateMachineName()), "New State Machine_1");
}

TEST(AnimGraph, StateNamesStayUniqueWithinAMachine)
{
	FAnimFixture Anim(TEXT("/Game/Anim/ABP_Names"));
	UAnimStateNode* First = AddState(Anim.MachineGraph(), nullptr);
	UAnimStateNode* Second = AddState(Anim.MachineGraph(), nullptr);
	UAnimStateConduitNode* Conduit = Place<UAnimStateConduitNode>(Anim.MachineGraph());
	UAnimStateAliasNode* Alias = Place<UAnimStateAliasNode>(Anim.MachineGraph());
	EXPECT_EQ(U8(First->GetStateName()), "State");
	EXPECT_EQ(U8(Second->GetStateName()), "State_1");
	EXPECT_EQ(U8(Conduit->GetStateName()), "Conduit");
	EXPECT_EQ(U8(Alias->GetStateName()), "Alias");

	First->OnRenameNode(TEXT("Idle"));
	Second->OnRenameNode(TEXT("Idle"));
	EXPECT_EQ(U8(First->GetStateName()), "Idle");
	EXPECT_EQ(U8(Second->GetStateName()), "Idle_1");
	EXPECT_EQ(U8(Second->GetNodeTitle(ENodeTitleType::FullTitle).ToString()), "Idle_1");
	Alias->OnRenameNode(TEXT("Idle"));
	EXPECT_EQ(U8(Alias->GetStateName()), "Idle_2");

	// A state's name is its pose graph's name, and that graph ends in the state's result.
	UAnimationStateGraph* StateGraph = Cast<UAnimationStateGraph>(First->BoundGraph);
	ASSERT_NE(StateGraph, nullptr);
	EXPECT_EQ(U8(StateGraph->GetName()), "Idle");
	ASSERT_NE(First->GetResultNodeInsideState(), nullptr);
	EXPECT_EQ(U8(First->GetResultNodeInsideState()->GetNodeTitle(ENodeTitleType::FullTitle).ToString()), "Output Animation Pose");
	EXPECT_NE(First->GetPoseSinkPinInsideState(), nullptr);
	EXPECT_TRUE(Anim.MachineGraph()->SubGraphs.Contains(StateGraph));
}

TEST(AnimGraph, WiringStatesMakesATransitionBetweenThem)
{
	FAnimFixture Anim(TEXT("/Game/Anim/ABP_Wires"));
	UAnimationStateMachineGraph* Graph = Anim.MachineGraph();
	UAnimStateNode* Idle = AddState(Graph, TEXT("Idle"), 0);
	UAnimStateNode* Walk = AddState(Graph, TEXT("Walk"), 401);
	const UAnimationStateMachineSchema* Schema = CastChecked<UAnimationStateMachineSchema>(Graph->GetSchema());

	EXPECT_EQ(Schema->CanCreateConnection(Idle->GetOutputPin(), Walk->GetInputPin()).Response, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE);
	UAnimStateTransitionNode* Transition = Connect(Idle, Walk);
	ASSERT_NE(Transition, nullptr);
	EXPECT_EQ(Transition->GetPreviousState(), Idle);
	EXPECT_EQ(Transition->GetNextState(), Walk);
	EXPECT_EQ(U8(Transition->GetNodeTitle(ENodeTitleType::FullTitle).ToString()), "Idle to Walk");
	EXPECT_EQ(Transition->NodePosX, 200);
	EXPECT_TRUE(Transition->GetInputPin()->bHidden && Transition->GetOutputPin()->bHidden);
	EXPECT_EQ(Transition->PriorityOrder, 1);
	EXPECT_FALSE(Transition->Bidirectional);

	// The rule graph's result takes the "can enter" boolean.
	UAnimationTransitionGraph* Rule = Cast<UAnimationTransitionGraph>(Transition->BoundGraph);
	ASSERT_NE(Rule, nullptr);
	ASSERT_NE(Rule->GetResultNode(), nullptr);
	const UEdGraphPin* CanEnter = Rule->GetResultNode()->FindPin(TEXT("bCanEnterTransition"));
	ASSERT_NE(CanEnter, nullptr);
	EXPECT_EQ(CanEnter->PinType.PinCategory, UEdGraphSchema_K2::PC_Boolean);

	// Going back makes a second transition; both leave their source state.
	UAnimStateTransitionNode* Back = Connect(Walk, Idle);
	TArray<UAnimStateTransitionNode*> FromIdle;
	Idle->GetTransitionList(FromIdle);
	ASSERT_EQ(FromIdle.Num(), 1);
	EXPECT_EQ(FromIdle[0], Transition);
	Back->PriorityOrder = 0;
	Back->Bidirectional = true;
	FromIdle.Reset();
	Idle->GetTransitionList(FromIdle, true);
	ASSERT_EQ(FromIdle.Num(), 2);
	EXPECT_EQ(FromIdle[0], Back);
}

TEST(AnimGraph, SchemaRefusesWhatAStateMachineCannotHold)
{
	FAnimFixture Anim(TEXT("/Game/Anim/ABP_Refusals"));
	UAnimationStateMachineGraph* Graph = Anim.MachineGraph();
	UAnimStateNode* Idle = AddState(Graph, TEXT("Idle"));
	UAnimStateNode* Walk = AddState(Graph, TEXT("Walk"));
	UAnimStateNode* Run = AddState(Graph, TEXT("Run"));
	UAnimStateTransitionNode* IdleToWalk = Connect(Idle, Walk);
	UAnimStateTransitionNode* WalkToRun = Connect(Walk, Run);
	const UEdGraphSchema* Schema = Graph->GetSchema();

	struct FCase { UEdGraphPin* A; UEdGraphPin* B; ECanCreateConnectionResponse Response; const char* Message; };
	const FCase Cases[] = {
		{Idle->GetOutputPin(), Idle->GetInputPin(), CONNECT_RESPONSE_DISALLOW, "Both are on the same node"},
		{IdleToWalk->GetOutputPin(), WalkToRun->GetInputPin(), CONNECT_RESPONSE_DISALLOW, "Cannot wire a transition to a transition"},
		{Idle->GetOutputPin(), Graph->EntryNode->Pins[0], CONNECT_RESPONSE_DISALLOW, "Entry must connect to a state node"},
		// Transitions are state-like nodes too, so the entry may point at one, as in the editor.
		{Graph->EntryNode->Pins[0], IdleToWalk->GetInputPin(), CONNECT_RESPONSE_BREAK_OTHERS_A, ""},
		{Graph->EntryNode->Pins[0], Idle->GetInputPin(), CONNECT_RESPONSE_BREAK_OTHERS_A, ""},
		{IdleToWalk->GetOutputPin(), Run->GetInputPin(), CONNECT_RESPONSE_BREAK_OTHERS_A, ""},
		{Run->GetOutputPin(), IdleToWalk->GetInputPin(), CONNECT_RESPONSE_BREAK_OTHERS_B, ""},
	};
	for (const FCase& Case : Cases)
	{
		const FPinConnectionResponse Response = Schema->CanCreateConnection(Case.A, Case.B);
		EXPECT_EQ(Response.Response, Case.Response) << Case.Message;
		EXPECT_EQ(U8(Response.Message.ToString()), Case.Message);
	}

	// The entry leads to one state at a time.
	UEdGraphPin* Entry = Graph->EntryNode->Pins[0];
	EXPECT_TRUE(Schema->TryCreateConnection(Entry, Idle->GetInputPin()));
	EXPECT_TRUE(Schema->TryCreateConnection(Entry, Walk->GetInputPin()));
	ASSERT_EQ(Entry->LinkedTo.Num(), 1);
	EXPECT_EQ(Graph->EntryNode->GetOutputNode(), Walk);
}

TEST(AnimGraph, TransitionThatLosesAnEndRemovesItself)
{
	FAnimFixture Anim(TEXT("/Game/Anim/ABP_Orphan"));
	UAnimationStateMachineGraph* Graph = Anim.MachineGraph();
	UAnimStateNode* Idle = AddState(Graph, TEXT("Idle"));
	UAnimStateNode* Walk = AddState(Graph, TEXT("Walk"));
	UAnimStateTransitionNode* Transition = Connect(Idle, Walk);
	UEdGraph* Rule = Transition->BoundGraph;
	ASSERT_TRUE(Graph->SubGraphs.Contains(Rule));

	Graph->GetSchema()->BreakPinLinks(*Walk->GetInputPin(), true);
	EXPECT_FALSE(Graph->Nodes.Contains(Transition));
	EXPECT_FALSE(Graph->SubGraphs.Contains(Rule));
	EXPECT_EQ(Idle->GetOutputPin()->LinkedTo.Num(), 0);
}

TEST(AnimGraph, AliasResolvesOnlyStatesThatStillExist)
{
	FAnimFixture Anim(TEXT("/Game/Anim/ABP_Alias"));
	UAnimationStateMachineGraph* Graph = Anim.MachineGraph();
	UAnimStateNode* Idle = AddState(Graph, TEXT("Idle"));
	UAnimStateNode* Walk = AddState(Graph, TEXT("Walk"));
	UAnimStateAliasNode* Alias = Place<UAnimStateAliasNode>(Graph);
	Alias->GetAliasedStates().Add(Idle);
	EXPECT_EQ(Alias->GetAliasedState(), Idle);
	Alias->GetAliasedStates().Add(Walk);
	EXPECT_EQ(Alias->GetAliasedState(), nullptr);
	Walk->DestroyNode();
	CollectGarbage(RF_NoFlags);
	EXPECT_EQ(Alias->GetAliasedState(), Idle);
	Alias->bGlobalAlias = true;
	EXPECT_EQ(Alias->GetAliasedState(), nullptr);
}

TEST(AnimGraph, CompileChecksNameTheMachinesProblems)
{
	FAnimFixture Anim(TEXT("/Game/Anim/ABP_Checks"));
	UAnimationStateMachineGraph* Graph = Anim.MachineGraph();
	{
		FCompilerResultsLog Log;
		Anim.Machine->ValidateNodeDuringCompilation(Log);
		EXPECT_EQ(Log.NumErrors, 0);
		ASSERT_EQ(Log.NumWarnings, 1);
		EXPECT_EQ(U8(Log.Messages[0]->ToText().ToString()), "There was no entry state connection in New State Machine");
	}
	UAnimStateConduitNode* Conduit = Place<UAnimStateConduitNode>(Graph);
	Graph->GetSchema()->TryCreateConnection(Graph->EntryNode->Pins[0], Conduit->GetInputPin());
	{
		FCompilerResultsLog Log;
		Anim.Machine->ValidateNodeDuringCompilation(Log);
		EXPECT_EQ(Log.NumErrors, 1);
	}
	UAnimStateNode* Idle = AddState(Graph, TEXT("Idle"));
	UAnimStateNode* Walk = AddState(Graph, TEXT("Walk"));
	Graph->GetSchema()->TryCreateConnection(Graph->EntryNode->Pins[0], Idle->GetInputPin());
	UAnimStateTransitionNode* Transition = Connect(Idle, Walk);
	{
		// A rule left unconnected and false can never fire; the conduit's rule likewise.
		FCompilerResultsLog Log;
		Anim.Machine->ValidateNodeDuringCompilation(Log);
		EXPECT_EQ(Log.NumErrors, 0);
		EXPECT_EQ(Log.NumWarnings, 2);
	}
	Cast<UAnimationTransitionGraph>(Transition->BoundGraph)->GetResultNode()->FindPin(TEXT("bCanEnterTransition"))->DefaultValue = TEXT("true");
	{
		FCompilerResultsLog Log;
		Anim.Machine->ValidateNodeDuringCompilation(Log);
		EXPECT_EQ(Log.NumWarnings, 1);
	}
}

TEST(AnimGraph, StateMachineSurvivesSaveAndLoad)
{
	FTempProjectFolder Project(TEXT("Animations"));
	Project.Open();
	const TCHAR* PackageName = TEXT("/Game/Anim/ABP_Saved");
	FString Filename;
	{
		FAnimFixture Anim(PackageName);
		Anim.Machine->OnRenameNode(TEXT("Locomotion"));
		UAnimationStateMachineGraph* Graph = Anim.MachineGraph();
		UAnimStateNode* Idle = AddState(Graph, TEXT("Idle"));
		UAnimStateNode* Walk = AddState(Graph, TEXT("Walk"), 400);
		Graph->GetSchema()->TryCreateConnection(Graph->EntryNode->Pins[0], Idle->GetInputPin());
		UAnimStateTransitionNode* Transition = Connect(Idle, Walk);
		Transition->PriorityOrder = 3;
		Transition->Bidirectional = true;
		UAnimStateAliasNode* Alias = Place<UAnimStateAliasNode>(Graph);
		Alias->OnRenameNode(TEXT("AnyMove"));

		Filename = FPackageName::LongPackageNameToFilename(PackageName, TEXT(".uasset"));
		ASSERT_TRUE(UPackage::Save(Anim.Blueprint->GetPackage(), Anim.Blueprint, *Filename, FSavePackageArgs()).IsSuccessful());
		TArray<UObject*> Inner;
		GetObjectsWithOuter(Anim.Blueprint->GetPackage(), Inner, true);
		for (UObject* Object : Inner)
		{
			Object->MarkAsGarbage();
		}
		Anim.Blueprint->GetPackage()->MarkAsGarbage();
		CollectGarbage(RF_NoFlags);
	}

	UPackage* Package = LoadPackage(nullptr, PackageName, LOAD_None);
	ASSERT_NE(Package, nullptr);
	UAnimBlueprint* Blueprint = FindObject<UAnimBlueprint>(Package, TEXT("ABP_Saved"));
	ASSERT_NE(Blueprint, nullptr);
	ASSERT_EQ(Blueprint->FunctionGraphs.Num(), 1);
	UEdGraph* AnimGraph = Blueprint->FunctionGraphs[0];
	UAnimGraphNode_StateMachine* Machine = nullptr;
	for (UEdGraphNode* Node : AnimGraph->Nodes)
	{
		Machine = Machine ? Machine : Cast<UAnimGraphNode_StateMachine>(Node);
	}
	ASSERT_NE(Machine, nullptr);
	EXPECT_EQ(U8(Machine->GetStateMachineName()), "Locomotion");
	UAnimationStateMachineGraph* Graph = Machine->EditorStateMachineGraph;
	ASSERT_NE(Graph, nullptr);
	ASSERT_NE(Graph->EntryNode.Get(), nullptr);
	UAnimStateNodeBase* Initial = Cast<UAnimStateNodeBase>(Graph->EntryNode->GetOutputNode());
	ASSERT_NE(Initial, nullptr);
	EXPECT_EQ(U8(Initial->GetStateName()), "Idle");
	UAnimStateTransitionNode* Transition = nullptr;
	UAnimStateAliasNode* Alias = nullptr;
	for (UEdGraphNode* Node : Graph->Nodes)
	{
		Transition = Transition ? Transition : Cast<UAnimStateTransitionNode>(Node);
		Alias = Alias ? Alias : Cast<UAnimStateAliasNode>(Node);
	}
	ASSERT_NE(Transition, nullptr);
	EXPECT_EQ(U8(Transition->GetNodeTitle(ENodeTitleType::FullTitle).ToString()), "Idle to Walk");
	EXPECT_EQ(Transition->PriorityOrder, 3);
	EXPECT_TRUE(Transition->Bidirectional);
	ASSERT_NE(Alias, nullptr);
	EXPECT_EQ(U8(Alias->GetStateName()), "AnyMove");
}

TEST(AnimGraph, AnimInstanceParentsMakeAnimationBlueprints)
{
	UPackage* Package = CreatePackage(TEXT("/Game/Anim/ABP_Created"));
	UBlueprint* Blueprint = FKismetEditorUtilities::CreateBlueprint(UAnimInstance::StaticClass(), Package, TEXT("ABP_Created"), BPTYPE_Normal,
		UBlueprint::StaticClass(), UBlueprintGeneratedClass::StaticClass());
	ASSERT_NE(Blueprint, nullptr);
	EXPECT_TRUE(Blueprint->IsA<UAnimBlueprint>());
	// It comes with its anim graph, ending in the output pose.
	UEdGraph* AnimGraph = nullptr;
	for (UEdGraph* Graph : Blueprint->FunctionGraphs)
	{
		AnimGraph = Graph->GetFName() == UEdGraphSchema_K2::GN_AnimGraph ? Graph : AnimGraph;
	}
	ASSERT_NE(AnimGraph, nullptr);
	EXPECT_TRUE(AnimGraph->IsA<UAnimationGraph>());
	ASSERT_EQ(AnimGraph->Nodes.Num(), 1);
	EXPECT_TRUE(AnimGraph->Nodes[0]->IsA<UAnimGraphNode_Root>());
	EXPECT_FALSE(AnimGraph->bAllowDeletion);
	UPackage* ActorPackage = CreatePackage(TEXT("/Game/Anim/BP_NotAnim"));
	UBlueprint* Actor = FKismetEditorUtilities::CreateBlueprint(AActor::StaticClass(), ActorPackage, TEXT("BP_NotAnim"), BPTYPE_Normal,
		UBlueprint::StaticClass(), UBlueprintGeneratedClass::StaticClass());
	ASSERT_NE(Actor, nullptr);
	EXPECT_FALSE(Actor->IsA<UAnimBlueprint>());
}

TEST(AnimGraph, StateMachineMenuPlacesStatesAndComments)
{
	FAnimFixture Anim(TEXT("/Game/Anim/ABP_Menu"));
	UAnimationStateMachineGraph* Graph = Anim.MachineGraph();
	FGraphContextMenuBuilder Builder(Graph);
	Graph->GetSchema()->GetGraphContextActions(Builder);
	TArray<FString> Titles;
	for (int32 Index = 0; Index < Builder.GetNumActions(); ++Index)
	{
		Titles.Add(Builder.GetSchemaAction(Index)->GetMenuDescription().ToString());
	}
	// The machine has its entry already, so no entry point is offered.
	EXPECT_EQ(FString::Join(Titles, TEXT("|")), FString(TEXT("Add State|Add State Alias|Add Conduit|Add Comment")));

	UEdGraphNode* State = Builder.GetSchemaAction(0)->PerformAction(Graph, nullptr, FVector2f(100.f, 37.f));
	ASSERT_NE(State, nullptr);
	EXPECT_TRUE(State->IsA<UAnimStateNode>());
	EXPECT_EQ(State->GetGraph(), Graph);
	EXPECT_EQ(State->NodePosY, 32);
	EXPECT_EQ(U8(Cast<UAnimStateNode>(State)->GetStateName()), "State");
	EXPECT_EQ(Builder.GetSchemaAction(0)->PerformAction(Graph, nullptr, FVector2f()), nullptr);
	UEdGraphNode* Comment = Builder.GetSchemaAction(3)->PerformAction(Graph, nullptr, FVector2f());
	ASSERT_NE(Comment, nullptr);
	EXPECT_TRUE(Graph->Nodes.Contains(Comment));
}
