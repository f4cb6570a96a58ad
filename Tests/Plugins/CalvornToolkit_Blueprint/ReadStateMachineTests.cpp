#include "ReadTestSupport.h"

#include "AnimGraphNode_StateMachineBase.h"
#include "AnimStateNode.h"
#include "AnimStateTransitionNode.h"
#include "AnimationGraph.h"
#include "AnimationGraphSchema.h"
#include "AnimationStateMachineGraph.h"
#include "Animation/AnimBlueprint.h"
#include "Animation/AnimInstance.h"
#include "BlueprintReadUtils.h"
#include "Misc/PackageName.h"

using namespace ReadTests;

namespace
{
	const TCHAR* const FunctionTool = TEXT("read_blueprint_function");

	template <typename NodeType>
	NodeType* PlaceAnimNode(UEdGraph* Graph, int32 X = 0, int32 Y = 0)
	{
		FGraphNodeCreator<NodeType> Creator(*Graph);
		NodeType* Node = Creator.CreateNode(false);
		Node->NodePosX = X;
		Node->NodePosY = Y;
		Creator.Finalize();
		return Node;
	}

	/**
	 * An Animation Blueprint whose anim graph holds one state machine: states Idle and Walk, a conduit, an alias
	 * standing for both states, and the transitions Idle -> Walk and Walk -> conduit.
	 */
	class ReadStateMachine : public FReadFixture
	{
	protected:
		ReadStateMachine()
		{
			const TCHAR* PackageName = TEXT("/Game/Readers/ABP_Walker");
			PackageNames.Add(PackageName);
			UPackage* Package = CreatePackage(PackageName);
			Blueprint = NewObject<UAnimBlueprint>(Package, *FPackageName::GetShortName(PackageName), RF_Public | RF_Standalone | RF_Transactional);
			Blueprint->ParentClass = UAnimInstance::StaticClass();
			AnimGraph = NewObject<UAnimationGraph>(Blueprint, TEXT("AnimGraph"), RF_Transactional);
			AnimGraph->Schema = UAnimationGraphSchema::StaticClass();
			AnimGraph->GetSchema()->CreateDefaultNodesForGraph(*AnimGraph);
			Blueprint->FunctionGraphs.Add(AnimGraph);
			Machine = PlaceAnimNode<UAnimGraphNode_StateMachine>(AnimGraph, -300, 0);
			UEdGraph* Graph = Machine->EditorStateMachineGraph;

			Idle = PlaceAnimNode<UAnimStateNode>(Graph, 100, 0);
			Idle->OnRenameNode(TEXT("Idle"));
			Walk = PlaceAnimNode<UAnimStateNode>(Graph, 400, 0);
			Walk->OnRenameNode(TEXT("Walk"));
			Conduit = PlaceAnimNode<UAnimStateConduitNode>(Graph, 700, 0);
			Alias = PlaceAnimNode<UAnimStateAliasNode>(Graph, 100, 300);
			Alias->OnRenameNode(TEXT("Moving"));
			Alias->GetAliasedStates().Add(Idle);
			Alias->GetAliasedStates().Add(Walk);
			IdleToWalk = Connect(Idle, Walk);
			WalkToConduit = Connect(Walk, Conduit);
		}

		static UAnimStateTransitionNode* Connect(UAnimStateNodeBase* From, UAnimStateNodeBase* To)
		{
			EXPECT_TRUE(From->GetSchema()->TryCreateConnection(From->GetOutputPin(), To->GetInputPin()));
			return Cast<UAnimStateTransitionNode>(From->GetGraph()->Nodes.Last());
		}

		TSharedPtr<FJsonObject> MachineProperties(int32 Depth = 0)
		{
			TSet<const UEdGraph*> Visited;
			return Obj(FBlueprintReadUtils::ReadNodeInfo(Machine, Request(FunctionTool), Depth, Visited), TEXT("properties"));
		}

		UAnimBlueprint* Blueprint = nullptr;
		UAnimationGraph* AnimGraph = nullptr;
		UAnimGraphNode_StateMachine* Machine = nullptr;
		UAnimStateNode* Idle = nullptr;
		UAnimStateNode* Walk = nullptr;
		UAnimStateConduitNode* Conduit = nullptr;
		UAnimStateAliasNode* Alias = nullptr;
		UAnimStateTransitionNode* IdleToWalk = nullptr;
		UAnimStateTransitionNode* WalkToConduit = nullptr;
	};

	const std::vector<std::string> BoundGraphKeys = {"bound_graph_name", "bound_graph_class", "bound_graph", "bound_graph_depth"};

	std::vector<std::string> Concat(std::vector<std::string> A, const std::vector<std::string>& B)
	{
		A.insert(A.end(), B.begin(), B.end());
		return A;
	}
}

TEST_F(ReadStateMachine, AMachineNodeListsItsStatesTransitionsAndGraph)
{
	ASSERT_NE(IdleToWalk, nullptr);
	ASSERT_NE(WalkToConduit, nullptr);
	const TSharedPtr<FJsonObject> Properties = MachineProperties();
	EXPECT_EQ(Keys(Properties), (std::vector<std::string>{"state_machine_graph", "state_machine_graph_path", "states_info", "transitions_info", "editor_state_machine_graph"}));
	EXPECT_EQ(Str(Properties, TEXT("state_machine_graph")), U8(Machine->EditorStateMachineGraph->GetName()));
	EXPECT_EQ(Str(Properties, TEXT("state_machine_graph_path")), U8(Machine->EditorStateMachineGraph->GetPathName()));

	const TArray<TSharedPtr<FJsonObject>> States = Objects(Properties, TEXT("states_info"));
	ASSERT_EQ(States.Num(), 4);
	EXPECT_EQ(Column(Properties, TEXT("states_info"), TEXT("class_name")), (std::vector<std::string>{"AnimStateNode", "AnimStateNode", "AnimStateConduitNode", "AnimStateAliasNode"}));

	EXPECT_EQ(Keys(States[0]), Concat({"class_name", "node_guid", "pos_x", "pos_y", "state_name"}, BoundGraphKeys));
	EXPECT_EQ(Str(States[0], TEXT("state_name")), "Idle");
	EXPECT_EQ(Str(States[0], TEXT("node_guid")), ShortGuidOf(Idle));
	EXPECT_EQ(States[0]->GetNumberField(TEXT("pos_x")), 100);
	EXPECT_EQ(Str(States[0], TEXT("bound_graph_name")), U8(Idle->BoundGraph->GetName()));
	EXPECT_EQ(States[0]->GetNumberField(TEXT("bound_graph_depth")), 1);
	EXPECT_EQ(Obj(States[0], TEXT("bound_graph"))->GetNumberField(TEXT("hierarchy_depth")), 1);

	EXPECT_EQ(Keys(States[2]), Concat({"class_name", "node_guid", "pos_x", "pos_y"}, BoundGraphKeys));
	EXPECT_EQ(Keys(States[3]), (std::vector<std::string>{"class_name", "node_guid", "pos_x", "pos_y", "aliased_states"}));
	const TArray<TSharedPtr<FJsonObject>> Aliased = Objects(States[3], TEXT("aliased_states"));
	ASSERT_EQ(Aliased.Num(), 2);
	EXPECT_EQ(Keys(Aliased[0]), (std::vector<std::string>{"state_name", "state_guid", "state_class"}));
	EXPECT_EQ(Str(Aliased[0], TEXT("state_name")), "Idle");
	EXPECT_EQ(Str(Aliased[0], TEXT("state_guid")), ShortGuidOf(Idle));
	EXPECT_EQ(Str(Aliased[1], TEXT("state_class")), "AnimStateNode");

	// The summary of a transition has no graph of its own; the transition node in the graph below has.
	const TArray<TSharedPtr<FJsonObject>> Transitions = Objects(Properties, TEXT("transitions_info"));
	ASSERT_EQ(Transitions.Num(), 2);
	EXPECT_EQ(Keys(Transitions[0]), (std::vector<std::string>{"class_name", "node_guid", "pos_x", "pos_y", "bidirectional", "priority_order", "from_states", "to_states"}));
	EXPECT_EQ(Strings(Transitions[0], TEXT("from_states")), (std::vector<std::string>{"Idle"}));
	EXPECT_EQ(Strings(Transitions[0], TEXT("to_states")), (std::vector<std::string>{"Walk"}));
	EXPECT_EQ(Strings(Transitions[1], TEXT("to_states")), (std::vector<std::string>{U8(Conduit->GetStateName())}));
	EXPECT_FALSE(Transitions[0]->GetBoolField(TEXT("bidirectional")));
	EXPECT_EQ(Transitions[0]->GetNumberField(TEXT("priority_order")), IdleToWalk->PriorityOrder);

	const TSharedPtr<FJsonObject> Graph = Obj(Properties, TEXT("editor_state_machine_graph"));
	EXPECT_EQ(Keys(Graph), (std::vector<std::string>{"name", "class", "schema", "hierarchy_depth", "graph_path", "nodes", "state_machine_info"}));
	EXPECT_EQ(Str(Graph, TEXT("class")), "AnimationStateMachineGraph");
	EXPECT_EQ(Graph->GetNumberField(TEXT("hierarchy_depth")), 1);
	EXPECT_EQ(Str(Obj(Graph, TEXT("state_machine_info")), TEXT("entry_node_title")), U8(Machine->EditorStateMachineGraph->EntryNode->GetNodeTitle(ENodeTitleType::FullTitle).ToString()));
}

TEST_F(ReadStateMachine, NodesInsideTheMachineGraphCarryTheirKindsInfo)
{
	TSet<const UEdGraph*> Visited;
	auto PropertiesOf = [&Visited](const UEdGraphNode* Node)
	{
		return Obj(FBlueprintReadUtils::ReadNodeInfo(Node, Request(FunctionTool), 2, Visited), TEXT("properties"));
	};
	const TSharedPtr<FJsonObject> State = Obj(PropertiesOf(Idle), TEXT("anim_state_info"));
	EXPECT_EQ(Keys(State), Concat({"state_name"}, BoundGraphKeys));
	EXPECT_EQ(State->GetNumberField(TEXT("bound_graph_depth")), 3);

	EXPECT_EQ(Keys(Obj(PropertiesOf(Conduit), TEXT("anim_conduit_info"))), Concat({"class_name", "node_guid", "pos_x", "pos_y"}, BoundGraphKeys));
	EXPECT_EQ(Keys(Obj(PropertiesOf(Alias), TEXT("anim_alias_info"))), (std::vector<std::string>{"class_name", "node_guid", "pos_x", "pos_y", "aliased_states"}));

	const TSharedPtr<FJsonObject> Transition = Obj(PropertiesOf(IdleToWalk), TEXT("transition_info"));
	EXPECT_EQ(Keys(Transition), Concat(Concat({"bidirectional", "priority_order"}, BoundGraphKeys), {"from_states", "to_states"}));
	EXPECT_EQ(Strings(Transition, TEXT("from_states")), (std::vector<std::string>{"Idle"}));

	// An alias that stands for nothing (or for states that are gone) lists none.
	Alias->GetAliasedStates().Empty();
	EXPECT_EQ(Keys(Obj(PropertiesOf(Alias), TEXT("anim_alias_info"))), (std::vector<std::string>{"class_name", "node_guid", "pos_x", "pos_y"}));
	EXPECT_EQ(Visited.Num(), 0);
}

TEST_F(ReadStateMachine, LimitsAndMissingPartsOfAMachine)
{
	// At depth ten the graphs one level down stand as errors, with the depth they would have had.
	const TSharedPtr<FJsonObject> Deep = MachineProperties(10);
	const TSharedPtr<FJsonObject> FirstState = Objects(Deep, TEXT("states_info"))[0];
	EXPECT_EQ(FirstState->GetNumberField(TEXT("bound_graph_depth")), 11);
	EXPECT_EQ(Str(Obj(FirstState, TEXT("bound_graph")), TEXT("error")), "Maximum recursion depth exceeded");
	EXPECT_EQ(Str(Obj(Deep, TEXT("editor_state_machine_graph")), TEXT("error")), "Maximum recursion depth exceeded");

	// A schema read of the machine's graph names it only.
	const TSharedPtr<FJsonObject> Schema = FBlueprintReadUtils::ReadEdGraph(Machine->EditorStateMachineGraph, Request(TEXT("read_blueprint_schema")));
	EXPECT_EQ(Keys(Schema), (std::vector<std::string>{"name", "class", "schema", "hierarchy_depth", "graph_path"}));

	Machine->EditorStateMachineGraph->EntryNode = nullptr;
	const TSharedPtr<FJsonObject> NoEntry = FBlueprintReadUtils::ReadEdGraph(Machine->EditorStateMachineGraph, Request(FunctionTool));
	ASSERT_TRUE(Obj(NoEntry, TEXT("state_machine_info")).IsValid());
	EXPECT_EQ(Keys(Obj(NoEntry, TEXT("state_machine_info"))), std::vector<std::string>{});

	Machine->EditorStateMachineGraph = nullptr;
	EXPECT_EQ(Keys(MachineProperties()), std::vector<std::string>{});
}
