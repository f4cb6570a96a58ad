#pragma once

#include "CoreMinimal.h"
#include "EdGraph/EdGraph.h"

class UAnimStateEntryNode;
class UAnimGraphNode_StateMachineBase;

/** The graph of states and transitions behind a state machine node. */
class UAnimationStateMachineGraph : public UEdGraph
{
	DECLARE_CLASS(UAnimationStateMachineGraph, UEdGraph, CLASS_None, CASTCLASS_None, TEXT("/Script/AnimGraph"), ANIMGRAPH_API)

public:
	ANIMGRAPH_API UAnimationStateMachineGraph();

	/** The node the machine starts from; its single link names the initial state. */
	TObjectPtr<UAnimStateEntryNode> EntryNode;
	/** The node in the outer anim graph that owns this machine. */
	TObjectPtr<UAnimGraphNode_StateMachineBase> OwnerAnimGraphNode;
};
