#pragma once

#include "CoreMinimal.h"
#include "EdGraph/EdGraph.h"

/** The graph of an Animation Blueprint that produces its final pose ("AnimGraph"), and the graphs inside states. */
class UAnimationGraph : public UEdGraph
{
	DECLARE_CLASS(UAnimationGraph, UEdGraph, CLASS_None, CASTCLASS_None, TEXT("/Script/AnimGraph"), ANIMGRAPH_API)

public:
	ANIMGRAPH_API UAnimationGraph();
	/** Which blend-layer group the graph belongs to; "None" for the main anim graph. */
	FName BlendOptions;
};
