#pragma once

#include "CoreMinimal.h"
#include "EdGraph/EdGraph.h"

class UAnimGraphNode_TransitionResult;

/** The rule graph of a transition or a conduit: it computes whether the transition may be taken. */
class UAnimationTransitionGraph : public UEdGraph
{
	DECLARE_CLASS(UAnimationTransitionGraph, UEdGraph, CLASS_None, CASTCLASS_None, TEXT("/Script/AnimGraph"), ANIMGRAPH_API)

public:
	ANIMGRAPH_API UAnimationTransitionGraph();
	TObjectPtr<UAnimGraphNode_TransitionResult> MyResultNode;

	ANIMGRAPH_API UAnimGraphNode_TransitionResult* GetResultNode() const;
};
