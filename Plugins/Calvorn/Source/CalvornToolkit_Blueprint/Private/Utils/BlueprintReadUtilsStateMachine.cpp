#include "BlueprintReadUtils.h"
#include "BlueprintReadUtilsPrivate.h"

#include "AnimGraphNode_StateMachineBase.h"
#include "AnimStateNode.h"
#include "AnimStateNodeBase.h"
#include "AnimStateTransitionNode.h"
#include "AnimationStateMachineGraph.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphPin.h"
#include "K2Node_Composite.h"

using namespace UE::CalvornBlueprint::ReadPrivate;

namespace
{
	/** The place keys that every element of a state machine's walk starts with. */
	void WriteNodePlace(FJsonObject& Info, const UEdGraphNode& Node)
	{
		Info.SetStringField(TEXT("class_name"), Node.GetClass()->GetName());
		Info.SetStringField(TEXT("node_guid"), FBlueprintReadUtils::GetShortGuid(Node.NodeGuid));
		Info.SetNumberField(TEXT("pos_x"), Node.NodePosX);
		Info.SetNumberField(TEXT("pos_y"), Node.NodePosY);
	}

	void WriteAliasedStates(FJsonObject& Info, const UAnimStateAliasNode& Alias)
	{
		TArray<TSharedPtr<FJsonValue>> States;
		for (const TWeakObjectPtr<UAnimStateNodeBase>& Weak : Alias.GetAliasedStates())
		{
			const UAnimStateNodeBase* State = Weak.Get();
			if (!State)
			{
				continue;
			}
			TSharedPtr<FJsonObject> Element = MakeShared<FJsonObject>();
			Element->SetStringField(TEXT("state_name"), State->GetStateName());
			Element->SetStringField(TEXT("state_guid"), FBlueprintReadUtils::GetShortGuid(State->NodeGuid));
			Element->SetStringField(TEXT("state_class"), State->GetClass()->GetName());
			States.Add(MakeValue(Element));
		}
		if (States.Num() > 0)
		{
			Info.SetArrayField(TEXT("aliased_states"), MoveTemp(States));
		}
	}

	/** The states a transition links, by its pins: what feeds its input is where it starts, what its output feeds where it leads. */
	void WriteTransitionStates(FJsonObject& Info, const UAnimStateTransitionNode& Transition)
	{
		TArray<TSharedPtr<FJsonValue>> FromStates;
		TArray<TSharedPtr<FJsonValue>> ToStates;
		for (const UEdGraphPin* Pin : Transition.Pins)
		{
			if (!Pin)
			{
				continue;
			}
			for (const UEdGraphPin* Linked : Pin->LinkedTo)
			{
				const UAnimStateNodeBase* State = Linked ? Cast<UAnimStateNodeBase>(Linked->GetOwningNodeUnchecked()) : nullptr;
				if (State)
				{
					(Pin->Direction == EGPD_Input ? FromStates : ToStates).Add(MakeValue(State->GetStateName()));
				}
			}
		}
		if (FromStates.Num() > 0)
		{
			Info.SetArrayField(TEXT("from_states"), MoveTemp(FromStates));
		}
		if (ToStates.Num() > 0)
		{
			Info.SetArrayField(TEXT("to_states"), MoveTemp(ToStates));
		}
	}

	/** One element of "states_info", or null when the node is no state-like node. */
	TSharedPtr<FJsonObject> ReadStateElement(const UEdGraphNode* Node, const TSharedPtr<FJsonObject>& Options, int32 Depth, const TSet<const UEdGraph*>& VisitedGraphs)
	{
		TSharedPtr<FJsonObject> Element = MakeShared<FJsonObject>();
		if (const UAnimGraphNode_StateMachine* Nested = Cast<UAnimGraphNode_StateMachine>(Node))
		{
			Element->SetStringField(TEXT("class_name"), Nested->GetClass()->GetName());
			Element->SetStringField(TEXT("state_machine_name"), GetNodeTitleString(Nested, ENodeTitleType::FullTitle));
			Element->SetStringField(TEXT("node_guid"), FBlueprintReadUtils::GetShortGuid(Nested->NodeGuid));
			Element->SetNumberField(TEXT("pos_x"), Nested->NodePosX);
			Element->SetNumberField(TEXT("pos_y"), Nested->NodePosY);
			if (const UEdGraph* NestedGraph = Nested->EditorStateMachineGraph)
			{
				Element->SetStringField(TEXT("state_machine_graph_name"), NestedGraph->GetName());
				Element->SetStringField(TEXT("state_machine_graph_path"), NestedGraph->GetPathName());
				Element->SetObjectField(TEXT("nested_state_machine_graph"), ReadNestedGraph(NestedGraph, Options, Depth, VisitedGraphs));
			}
		}
		else if (const UAnimStateNode* State = Cast<UAnimStateNode>(Node))
		{
			WriteNodePlace(*Element, *State);
			Element->SetStringField(TEXT("state_name"), State->GetStateName());
			WriteBoundGraphBlock(*Element, State->BoundGraph, Options, Depth, VisitedGraphs);
		}
		else if (const UAnimStateConduitNode* Conduit = Cast<UAnimStateConduitNode>(Node))
		{
			WriteNodePlace(*Element, *Conduit);
			WriteBoundGraphBlock(*Element, Conduit->BoundGraph, Options, Depth, VisitedGraphs);
		}
		else if (const UAnimStateAliasNode* Alias = Cast<UAnimStateAliasNode>(Node))
		{
			WriteNodePlace(*Element, *Alias);
			WriteAliasedStates(*Element, *Alias);
		}
		else
		{
			return nullptr;
		}
		return Element;
	}

	void WriteStateMachineProperties(FJsonObject& Properties, const UAnimGraphNode_StateMachine& Machine, const TSharedPtr<FJsonObject>& Options, int32 Depth, const TSet<const UEdGraph*>& VisitedGraphs)
	{
		const UAnimationStateMachineGraph* Graph = Machine.EditorStateMachineGraph;
		if (!Graph)
		{
			return;
		}
		Properties.SetStringField(TEXT("state_machine_graph"), Graph->GetName());
		Properties.SetStringField(TEXT("state_machine_graph_path"), Graph->GetPathName());

		TArray<TSharedPtr<FJsonValue>> States;
		TArray<TSharedPtr<FJsonValue>> Transitions;
		TArray<TSharedPtr<FJsonValue>> Composites;
		for (const UEdGraphNode* Node : Graph->Nodes)
		{
			if (!Node)
			{
				continue;
			}
			if (TSharedPtr<FJsonObject> State = ReadStateElement(Node, Options, Depth, VisitedGraphs))
			{
				States.Add(MakeValue(State));
			}
			else if (const UAnimStateTransitionNode* Transition = Cast<UAnimStateTransitionNode>(Node))
			{
				TSharedPtr<FJsonObject> Element = MakeShared<FJsonObject>();
				WriteNodePlace(*Element, *Transition);
				Element->SetBoolField(TEXT("bidirectional"), Transition->Bidirectional);
				Element->SetNumberField(TEXT("priority_order"), Transition->PriorityOrder);
				WriteTransitionStates(*Element, *Transition);
				Transitions.Add(MakeValue(Element));
			}
			// The composite test looks at the machine node itself, which is never a composite, so nothing is
			// ever listed here; clients rely on the key's absence, so the test stays as it is.
			else if (const UK2Node_Composite* Composite = Cast<UK2Node_Composite>(&Machine))
			{
				TSharedPtr<FJsonObject> Element = MakeShared<FJsonObject>();
				WriteNodePlace(*Element, *Composite);
				WriteBoundGraphBlock(*Element, Composite->BoundGraph, Options, Depth, VisitedGraphs);
				Composites.Add(MakeValue(Element));
			}
		}
		if (States.Num() > 0)
		{
			Properties.SetArrayField(TEXT("states_info"), MoveTemp(States));
		}
		if (Transitions.Num() > 0)
		{
			Properties.SetArrayField(TEXT("transitions_info"), MoveTemp(Transitions));
		}
		if (Composites.Num() > 0)
		{
			Properties.SetArrayField(TEXT("composites_info"), MoveTemp(Composites));
		}
		Properties.SetObjectField(TEXT("editor_state_machine_graph"), ReadNestedGraph(Graph, Options, Depth, VisitedGraphs));
	}
}

namespace UE::CalvornBlueprint::ReadPrivate
{
	bool WriteAnimationNodeProperties(FJsonObject& Properties, const UEdGraphNode* Node, const TSharedPtr<FJsonObject>& Options, int32 Depth, TSet<const UEdGraph*>& VisitedGraphs)
	{
		if (const UAnimGraphNode_StateMachine* Machine = Cast<UAnimGraphNode_StateMachine>(Node))
		{
			WriteStateMachineProperties(Properties, *Machine, Options, Depth, VisitedGraphs);
		}
		else if (const UAnimStateNode* State = Cast<UAnimStateNode>(Node))
		{
			TSharedPtr<FJsonObject> Info = MakeShared<FJsonObject>();
			Info->SetStringField(TEXT("state_name"), State->GetStateName());
			WriteBoundGraphBlock(*Info, State->BoundGraph, Options, Depth, VisitedGraphs);
			Properties.SetObjectField(TEXT("anim_state_info"), Info);
		}
		else if (const UAnimStateConduitNode* Conduit = Cast<UAnimStateConduitNode>(Node))
		{
			TSharedPtr<FJsonObject> Info = MakeShared<FJsonObject>();
			WriteNodePlace(*Info, *Conduit);
			WriteBoundGraphBlock(*Info, Conduit->BoundGraph, Options, Depth, VisitedGraphs);
			Properties.SetObjectField(TEXT("anim_conduit_info"), Info);
		}
		else if (const UAnimStateAliasNode* Alias = Cast<UAnimStateAliasNode>(Node))
		{
			TSharedPtr<FJsonObject> Info = MakeShared<FJsonObject>();
			WriteNodePlace(*Info, *Alias);
			WriteAliasedStates(*Info, *Alias);
			Properties.SetObjectField(TEXT("anim_alias_info"), Info);
		}
		else if (const UAnimStateTransitionNode* Transition = Cast<UAnimStateTransitionNode>(Node))
		{
			TSharedPtr<FJsonObject> Info = MakeShared<FJsonObject>();
			Info->SetBoolField(TEXT("bidirectional"), Transition->Bidirectional);
			Info->SetNumberField(TEXT("priority_order"), Transition->PriorityOrder);
			WriteBoundGraphBlock(*Info, Transition->BoundGraph, Options, Depth, VisitedGraphs);
			WriteTransitionStates(*Info, *Transition);
			Properties.SetObjectField(TEXT("transition_info"), Info);
		}
		else
		{
			return false;
		}
		return true;
	}

	void WriteStateMachineGraphInfo(FJsonObject& GraphObject, const UEdGraph* Graph)
	{
		const UAnimationStateMachineGraph* MachineGraph = Cast<UAnimationStateMachineGraph>(Graph);
		if (!MachineGraph)
		{
			return;
		}
		TSharedPtr<FJsonObject> Info = MakeShared<FJsonObject>();
		if (const UEdGraphNode* Entry = MachineGraph->EntryNode)
		{
			Info->SetStringField(TEXT("entry_node_title"), GetNodeTitleString(Entry, ENodeTitleType::FullTitle));
		}
		GraphObject.SetObjectField(TEXT("state_machine_info"), Info);
	}
}
