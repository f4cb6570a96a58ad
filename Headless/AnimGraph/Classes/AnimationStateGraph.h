#pragma once

#include "CoreMinimal.h"
#include "AnimationGraph.h"

class UAnimGraphNode_StateResult;

/** The pose graph inside one state of a state machine. */
class UAnimationStateGraph : public UAnimationGraph
{
	DECLARE_CLASS(UAnimationStateGraph, UAnimationGraph, CLASS_None, CASTCLASS_None, TEXT("/Script/AnimGraph"), ANIMGRAPH_API)

public:
	ANIMGRAPH_API UAnimationStateGraph();
	/** The "Output Animation Pose" node the state's pose flows into. */
	TObjectPtr<UAnimGraphNode_StateResult> MyResultNode;

	ANIMGRAPH_API UAnimGraphNode_StateResult* GetResultNode() const;
};
