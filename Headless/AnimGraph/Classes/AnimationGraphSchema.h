#pragma once

#include "CoreMinimal.h"
#include "EdGraphSchema_K2.h"

/** The rules of pose graphs: K2 rules, plus pose links that take exactly one source. */
class UAnimationGraphSchema : public UEdGraphSchema_K2
{
	DECLARE_CLASS(UAnimationGraphSchema, UEdGraphSchema_K2, CLASS_None, CASTCLASS_None, TEXT("/Script/AnimGraph"), ANIMGRAPH_API)

public:
	ANIMGRAPH_API UAnimationGraphSchema();

	/** Names of the pose pins and graphs, as the animation editor spells them. */
	ANIMGRAPH_API static const FName PN_Result;
	ANIMGRAPH_API static const FName DefaultEvaluationHandlerName;

	ANIMGRAPH_API virtual void CreateDefaultNodesForGraph(UEdGraph& Graph) const override;
	ANIMGRAPH_API virtual EGraphType GetGraphType(const UEdGraph* TestEdGraph) const override;

	/** True for a pose pin (FPoseLink or FComponentSpacePoseLink). */
	ANIMGRAPH_API static bool IsPosePin(const FEdGraphPinType& PinType);
	ANIMGRAPH_API static bool IsLocalSpacePosePin(const FEdGraphPinType& PinType);
	ANIMGRAPH_API static bool IsComponentSpacePosePin(const FEdGraphPinType& PinType);

	/** The struct a local-space pose pin carries (FPoseLink). */
	ANIMGRAPH_API static UScriptStruct* GetPoseLinkStruct();
	/** The struct a component-space pose pin carries (FComponentSpacePoseLink). */
	ANIMGRAPH_API static UScriptStruct* GetComponentSpacePoseLinkStruct();
};

/** Graph inside a state: like the anim graph, its default node is the state's result. */
class UAnimationStateGraphSchema : public UAnimationGraphSchema
{
	DECLARE_CLASS(UAnimationStateGraphSchema, UAnimationGraphSchema, CLASS_None, CASTCLASS_None, TEXT("/Script/AnimGraph"), ANIMGRAPH_API)

public:
	ANIMGRAPH_API virtual void CreateDefaultNodesForGraph(UEdGraph& Graph) const override;
	ANIMGRAPH_API virtual EGraphType GetGraphType(const UEdGraph* TestEdGraph) const override;
};

/** Rule graph of a transition: K2 rules, with a result node taking the "can enter" boolean. */
class UAnimationTransitionSchema : public UEdGraphSchema_K2
{
	DECLARE_CLASS(UAnimationTransitionSchema, UEdGraphSchema_K2, CLASS_None, CASTCLASS_None, TEXT("/Script/AnimGraph"), ANIMGRAPH_API)

public:
	ANIMGRAPH_API virtual void CreateDefaultNodesForGraph(UEdGraph& Graph) const override;
	ANIMGRAPH_API virtual EGraphType GetGraphType(const UEdGraph* TestEdGraph) const override;
};

/** Rule graph of a conduit: the same rules as a transition's. */
class UAnimationConduitGraphSchema : public UAnimationTransitionSchema
{
	DECLARE_CLASS(UAnimationConduitGraphSchema, UAnimationTransitionSchema, CLASS_None, CASTCLASS_None, TEXT("/Script/AnimGraph"), ANIMGRAPH_API)
};
