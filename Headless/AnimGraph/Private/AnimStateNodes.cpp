#include "AnimStateNode.h"
#include "AnimStateNodeBase.h"
#include "AnimStateTransitionNode.h"

#include "AnimGraphNode_Base.h"
#include "AnimGraphPrivate.h"
#include "AnimationGraphSchema.h"
#include "AnimationStateGraph.h"
#include "AnimationStateMachineGraph.h"
#include "AnimationStateMachineSchema.h"
#include "AnimationTransitionGraph.h"
#include "Animation/AnimBlueprint.h"
#include "EdGraph/EdGraph.h"
#include "Kismet2/CompilerResultsLog.h"
#include "UObject/UnrealType.h"

IMPLEMENT_CLASS(UAnimStateNodeBase)
IMPLEMENT_CLASS(UAnimStateEntryNode)
IMPLEMENT_CLASS(UAnimStateNode,
	UE_NATIVE_PROPERTY(FObjectProperty, BoundGraph, CPF_TObjectPtr, UEdGraph::StaticClass());
	UE_NATIVE_PROPERTY(FBoolProperty, bAlwaysResetOnEntry, CPF_None, 0, (uint32)sizeof(bool), true);
)
IMPLEMENT_CLASS(UAnimStateConduitNode,
	UE_NATIVE_PROPERTY(FObjectProperty, BoundGraph, CPF_TObjectPtr, UEdGraph::StaticClass());
)
IMPLEMENT_CLASS(UAnimStateAliasNode,
	UE_NATIVE_PROPERTY(FBoolProperty, bGlobalAlias, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FStrProperty, StateAliasName, CPF_None);
)
IMPLEMENT_CLASS(UAnimStateTransitionNode,
	UE_NATIVE_PROPERTY(FObjectProperty, BoundGraph, CPF_TObjectPtr, UEdGraph::StaticClass());
	UE_NATIVE_PROPERTY(FIntProperty, PriorityOrder, CPF_None);
	UE_NATIVE_PROPERTY(FFloatProperty, CrossfadeDuration, CPF_None);
	UE_NATIVE_PROPERTY(FBoolProperty, Bidirectional, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bDisabled, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bAutomaticRuleBasedOnSequencePlayerInState, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FFloatProperty, AutomaticRuleTriggerTime, CPF_None);
	UE_NATIVE_PROPERTY(FStrProperty, SharedRulesName, CPF_None);
)

using UE::AnimGraph::Private::MakeUniqueStateName;

namespace
{
	UEdGraphPin* PinAt(const TArray<UEdGraphPin*>& Pins, int32 Index)
	{
		return Pins.IsValidIndex(Index) ? Pins[Index] : nullptr;
	}

	void CreateTransitionPins(UEdGraphNode* Node)
	{
		Node->CreatePin(EGPD_Input, UAnimationStateMachineSchema::PC_Transition, TEXT("In"));
		Node->CreatePin(EGPD_Output, UAnimationStateMachineSchema::PC_Transition, TEXT("Out"));
	}

	/** A node placed by dragging from a state's pin gets a transition from that state. */
	void AutowireFromState(UEdGraphNode* Node, UEdGraphPin* FromPin, UEdGraphPin* InputPin)
	{
		if (FromPin && InputPin && Node->GetSchema() && Node->GetSchema()->TryCreateConnection(FromPin, InputPin))
		{
			FromPin->GetOwningNode()->NodeConnectionListChanged();
		}
	}
}

// UAnimStateNodeBase

UAnimStateNodeBase::UAnimStateNodeBase() = default;

void UAnimStateNodeBase::OnRenameNode(const FString& NewName)
{
	if (UEdGraph* Bound = GetBoundGraph(); Bound && !NewName.IsEmpty())
	{
		Bound->Rename(*MakeUniqueStateName(GetGraph(), this, NewName), this);
	}
}

bool UAnimStateNodeBase::CanCreateUnderSpecifiedSchema(const UEdGraphSchema* Schema) const
{
	return Schema && Schema->IsA<UAnimationStateMachineSchema>();
}

void UAnimStateNodeBase::PostLoad()
{
	Super::PostLoad();
	// Graphs saved before their node was linked into the parent's sub-graphs are put back there.
	if (UEdGraph* Bound = GetBoundGraph())
	{
		if (UEdGraph* ParentGraph = GetGraph())
		{
			ParentGraph->SubGraphs.AddUnique(Bound);
		}
	}
}

void UAnimStateNodeBase::GetTransitionList(TArray<UAnimStateTransitionNode*>& OutTransitions, bool bWantSortedList) const
{
	if (UEdGraphPin* Output = GetOutputPin())
	{
		for (UEdGraphPin* Linked : Output->LinkedTo)
		{
			if (UAnimStateTransitionNode* Transition = Linked ? Cast<UAnimStateTransitionNode>(Linked->GetOwningNode()) : nullptr)
			{
				OutTransitions.Add(Transition);
			}
		}
	}
	// Bidirectional transitions that end here also leave from here.
	if (UEdGraphPin* Input = GetInputPin())
	{
		for (UEdGraphPin* Linked : Input->LinkedTo)
		{
			UAnimStateTransitionNode* Transition = Linked ? Cast<UAnimStateTransitionNode>(Linked->GetOwningNode()) : nullptr;
			if (Transition && Transition->Bidirectional)
			{
				OutTransitions.Add(Transition);
			}
		}
	}
	if (bWantSortedList)
	{
		OutTransitions.StableSort([](const UAnimStateTransitionNode* A, const UAnimStateTransitionNode* B)
		{
			return A->PriorityOrder < B->PriorityOrder;
		});
	}
}

UAnimBlueprint* UAnimStateNodeBase::GetAnimBlueprint() const
{
	for (UObject* Outer = GetOuter(); Outer; Outer = Outer->GetOuter())
	{
		if (UAnimBlueprint* Blueprint = Cast<UAnimBlueprint>(Outer))
		{
			return Blueprint;
		}
	}
	return nullptr;
}

UEdGraph* UAnimStateNodeBase::CreateBoundGraph(UClass* GraphClass, UClass* SchemaClass, const FString& Suggestion)
{
	const FString Name = Suggestion.IsEmpty() ? FString() : MakeUniqueStateName(GetGraph(), this, Suggestion);
	UEdGraph* Bound = UE::AnimGraph::Private::CreateGraph(this, Name.IsEmpty() ? FName() : FName(*Name), GraphClass, SchemaClass);
	Bound->GetSchema()->CreateDefaultNodesForGraph(*Bound);
	if (UEdGraph* ParentGraph = GetGraph())
	{
		ParentGraph->SubGraphs.AddUnique(Bound);
	}
	return Bound;
}

void UAnimStateNodeBase::RemoveBoundGraph(UEdGraph* Graph)
{
	if (!Graph)
	{
		return;
	}
	if (UEdGraph* ParentGraph = GetGraph())
	{
		ParentGraph->SubGraphs.Remove(Graph);
	}
	Graph->MarkAsGarbage();
}

// UAnimStateEntryNode

void UAnimStateEntryNode::AllocateDefaultPins()
{
	CreatePin(EGPD_Output, UAnimationStateMachineSchema::PC_Exec, TEXT("Entry"));
}

FText UAnimStateEntryNode::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	const UEdGraph* Graph = GetGraph();
	return FText::FromString(Graph ? Graph->GetName() : FString(TEXT("Entry")));
}

FText UAnimStateEntryNode::GetTooltipText() const
{
	return FText::FromString(TEXT("Where the state machine starts."));
}

UEdGraphNode* UAnimStateEntryNode::GetOutputNode() const
{
	const UEdGraphPin* Entry = PinAt(Pins, 0);
	return Entry && Entry->LinkedTo.Num() > 0 && Entry->LinkedTo[0] ? Entry->LinkedTo[0]->GetOwningNode() : nullptr;
}

// UAnimStateNode

UAnimStateNode::UAnimStateNode()
{
	bCanRenameNode = true;
}

void UAnimStateNode::AllocateDefaultPins()
{
	CreateTransitionPins(this);
}

void UAnimStateNode::AutowireNewNode(UEdGraphPin* FromPin)
{
	Super::AutowireNewNode(FromPin);
	AutowireFromState(this, FromPin, GetInputPin());
}

FText UAnimStateNode::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	return FText::FromString(GetStateName());
}

FText UAnimStateNode::GetTooltipText() const
{
	return FText::FromString(TEXT("A state of the machine, with the pose it plays."));
}

void UAnimStateNode::PostPlacedNewNode()
{
	if (!BoundGraph)
	{
		BoundGraph = CreateBoundGraph(UAnimationStateGraph::StaticClass(), UAnimationStateGraphSchema::StaticClass(), TEXT("State"));
	}
}

void UAnimStateNode::DestroyNode()
{
	UEdGraph* Bound = BoundGraph;
	BoundGraph = nullptr;
	RemoveBoundGraph(Bound);
	Super::DestroyNode();
}

FString UAnimStateNode::GetStateName() const
{
	return BoundGraph ? BoundGraph->GetName() : FString(TEXT("(null)"));
}

UEdGraphPin* UAnimStateNode::GetInputPin() const
{
	return PinAt(Pins, 0);
}

UEdGraphPin* UAnimStateNode::GetOutputPin() const
{
	return PinAt(Pins, 1);
}

UEdGraphPin* UAnimStateNode::GetPoseSinkPinInsideState() const
{
	const UAnimGraphNode_StateResult* Result = GetResultNodeInsideState();
	return Result ? Result->FindPin(UAnimationGraphSchema::PN_Result) : nullptr;
}

UAnimGraphNode_StateResult* UAnimStateNode::GetResultNodeInsideState() const
{
	const UAnimationStateGraph* StateGraph = Cast<UAnimationStateGraph>(BoundGraph);
	return StateGraph ? StateGraph->GetResultNode() : nullptr;
}

// UAnimStateConduitNode

UAnimStateConduitNode::UAnimStateConduitNode()
{
	bCanRenameNode = true;
}

void UAnimStateConduitNode::AllocateDefaultPins()
{
	CreateTransitionPins(this);
}

void UAnimStateConduitNode::AutowireNewNode(UEdGraphPin* FromPin)
{
	Super::AutowireNewNode(FromPin);
	AutowireFromState(this, FromPin, GetInputPin());
}

FText UAnimStateConduitNode::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	return FText::FromString(GetStateName());
}

FText UAnimStateConduitNode::GetTooltipText() const
{
	return FText::FromString(TEXT("A conduit: a rule the machine passes through without playing a pose."));
}

void UAnimStateConduitNode::PostPlacedNewNode()
{
	if (!BoundGraph)
	{
		BoundGraph = CreateBoundGraph(UAnimationTransitionGraph::StaticClass(), UAnimationConduitGraphSchema::StaticClass(), TEXT("Conduit"));
	}
}

void UAnimStateConduitNode::DestroyNode()
{
	UEdGraph* Bound = BoundGraph;
	BoundGraph = nullptr;
	RemoveBoundGraph(Bound);
	Super::DestroyNode();
}

void UAnimStateConduitNode::ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const
{
	const UAnimationTransitionGraph* RuleGraph = Cast<UAnimationTransitionGraph>(BoundGraph);
	const UAnimGraphNode_TransitionResult* Result = RuleGraph ? RuleGraph->GetResultNode() : nullptr;
	const UEdGraphPin* CanEnter = Result ? Result->FindPin(UAnimGraphNode_TransitionResult::PN_CanEnterTransition) : nullptr;
	if (CanEnter && CanEnter->LinkedTo.Num() == 0 && CanEnter->DefaultValue != TEXT("true"))
	{
		MessageLog.Warning(TEXT("@@ will never be taken, please connect something to @@"), this, CanEnter);
	}
}

FString UAnimStateConduitNode::GetStateName() const
{
	return BoundGraph ? BoundGraph->GetName() : FString(TEXT("(null)"));
}

UEdGraphPin* UAnimStateConduitNode::GetInputPin() const
{
	return PinAt(Pins, 0);
}

UEdGraphPin* UAnimStateConduitNode::GetOutputPin() const
{
	return PinAt(Pins, 1);
}

// UAnimStateAliasNode

UAnimStateAliasNode::UAnimStateAliasNode()
{
	bCanRenameNode = true;
	StateAliasName = TEXT("Alias");
}

void UAnimStateAliasNode::AllocateDefaultPins()
{
	CreateTransitionPins(this);
}

void UAnimStateAliasNode::AutowireNewNode(UEdGraphPin* FromPin)
{
	Super::AutowireNewNode(FromPin);
	AutowireFromState(this, FromPin, GetInputPin());
}

FText UAnimStateAliasNode::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	return FText::FromString(GetStateName());
}

FText UAnimStateAliasNode::GetTooltipText() const
{
	return FText::FromString(TEXT("Stands for other states, so that one transition can leave any of them."));
}

void UAnimStateAliasNode::PostPlacedNewNode()
{
	StateAliasName = MakeUniqueStateName(GetGraph(), this, StateAliasName);
}

void UAnimStateAliasNode::OnRenameNode(const FString& NewName)
{
	if (!NewName.IsEmpty())
	{
		StateAliasName = MakeUniqueStateName(GetGraph(), this, NewName);
	}
}

void UAnimStateAliasNode::ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const
{
	if (const UEdGraphPin* Input = GetInputPin(); Input && Input->LinkedTo.Num() > 0)
	{
		if (!GetAliasedState())
		{
			MessageLog.Error(TEXT("@@ has incoming transitions but does not alias exactly one state"), this);
		}
	}
}

FString UAnimStateAliasNode::GetStateName() const
{
	return StateAliasName;
}

UEdGraphPin* UAnimStateAliasNode::GetInputPin() const
{
	return PinAt(Pins, 0);
}

UEdGraphPin* UAnimStateAliasNode::GetOutputPin() const
{
	return PinAt(Pins, 1);
}

const TSet<TWeakObjectPtr<UAnimStateNodeBase>>& UAnimStateAliasNode::GetAliasedStates() const
{
	return AliasedStateNodes;
}

TSet<TWeakObjectPtr<UAnimStateNodeBase>>& UAnimStateAliasNode::GetAliasedStates()
{
	return AliasedStateNodes;
}

UAnimStateNodeBase* UAnimStateAliasNode::GetAliasedState() const
{
	if (bGlobalAlias)
	{
		return nullptr;
	}
	UAnimStateNodeBase* Single = nullptr;
	for (const TWeakObjectPtr<UAnimStateNodeBase>& Weak : AliasedStateNodes)
	{
		if (UAnimStateNodeBase* State = Weak.Get())
		{
			if (Single)
			{
				return nullptr;
			}
			Single = State;
		}
	}
	return Single;
}

// UAnimStateTransitionNode

UAnimStateTransitionNode::UAnimStateTransitionNode() = default;

void UAnimStateTransitionNode::AllocateDefaultPins()
{
	// A transition is drawn as an arrow between its states; its pins are never shown.
	UEdGraphPin* In = CreatePin(EGPD_Input, UAnimationStateMachineSchema::PC_Transition, TEXT("In"));
	In->bHidden = true;
	UEdGraphPin* Out = CreatePin(EGPD_Output, UAnimationStateMachineSchema::PC_Transition, TEXT("Out"));
	Out->bHidden = true;
}

FText UAnimStateTransitionNode::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	if (!SharedRulesName.IsEmpty())
	{
		return FText::FromString(SharedRulesName);
	}
	const UAnimStateNodeBase* Previous = GetPreviousState();
	const UAnimStateNodeBase* Next = GetNextState();
	if (Previous && Next)
	{
		return FText::FromString(FString::Printf(TEXT("%s to %s"), *Previous->GetStateName(), *Next->GetStateName()));
	}
	return FText::FromString(FString::Printf(TEXT("Trans %s"), BoundGraph ? *BoundGraph->GetName() : TEXT("(null)")));
}

FText UAnimStateTransitionNode::GetTooltipText() const
{
	return FText::FromString(TEXT("A transition between two states, taken when its rule holds."));
}

void UAnimStateTransitionNode::PostPlacedNewNode()
{
	if (!BoundGraph)
	{
		BoundGraph = CreateBoundGraph(UAnimationTransitionGraph::StaticClass(), UAnimationTransitionSchema::StaticClass(), FString());
	}
}

void UAnimStateTransitionNode::DestroyNode()
{
	UEdGraph* Bound = BoundGraph;
	BoundGraph = nullptr;
	RemoveBoundGraph(Bound);
	Super::DestroyNode();
}

void UAnimStateTransitionNode::PinConnectionListChanged(UEdGraphPin* Pin)
{
	if (Pin && Pin->LinkedTo.Num() == 0 && IsValid(this))
	{
		DestroyNode();
	}
}

void UAnimStateTransitionNode::ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const
{
	if (!GetPreviousState() || !GetNextState())
	{
		MessageLog.Error(TEXT("@@ is not connected to two states"), this);
		return;
	}
	const UAnimationTransitionGraph* RuleGraph = Cast<UAnimationTransitionGraph>(BoundGraph);
	const UAnimGraphNode_TransitionResult* Result = RuleGraph ? RuleGraph->GetResultNode() : nullptr;
	const UEdGraphPin* CanEnter = Result ? Result->FindPin(UAnimGraphNode_TransitionResult::PN_CanEnterTransition) : nullptr;
	if (CanEnter && !bAutomaticRuleBasedOnSequencePlayerInState && CanEnter->LinkedTo.Num() == 0 && CanEnter->DefaultValue != TEXT("true"))
	{
		MessageLog.Warning(TEXT("@@ will never be taken, please connect something to @@"), this, CanEnter);
	}
}

FString UAnimStateTransitionNode::GetStateName() const
{
	return BoundGraph ? BoundGraph->GetName() : FString(TEXT("(null)"));
}

UEdGraphPin* UAnimStateTransitionNode::GetInputPin() const
{
	return PinAt(Pins, 0);
}

UEdGraphPin* UAnimStateTransitionNode::GetOutputPin() const
{
	return PinAt(Pins, 1);
}

UAnimStateNodeBase* UAnimStateTransitionNode::GetPreviousState() const
{
	const UEdGraphPin* In = GetInputPin();
	return In && In->LinkedTo.Num() > 0 && In->LinkedTo[0] ? Cast<UAnimStateNodeBase>(In->LinkedTo[0]->GetOwningNode()) : nullptr;
}

UAnimStateNodeBase* UAnimStateTransitionNode::GetNextState() const
{
	const UEdGraphPin* Out = GetOutputPin();
	return Out && Out->LinkedTo.Num() > 0 && Out->LinkedTo[0] ? Cast<UAnimStateNodeBase>(Out->LinkedTo[0]->GetOwningNode()) : nullptr;
}

void UAnimStateTransitionNode::CreateConnections(UAnimStateNodeBase* PreviousState, UAnimStateNodeBase* NextState)
{
	UEdGraphPin* In = GetInputPin();
	UEdGraphPin* Out = GetOutputPin();
	if (!In || !Out || !PreviousState || !NextState || !PreviousState->GetOutputPin() || !NextState->GetInputPin())
	{
		return;
	}
	In->BreakAllPinLinks();
	Out->BreakAllPinLinks();
	In->MakeLinkTo(PreviousState->GetOutputPin());
	Out->MakeLinkTo(NextState->GetInputPin());
}
