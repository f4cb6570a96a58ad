#pragma once

#include "CoreMinimal.h"
#include "K2Node.h"

class UAnimBlueprint;

/** Base of the nodes of pose graphs: pure nodes whose pose pins carry FPoseLink. */
class UAnimGraphNode_Base : public UK2Node
{
	DECLARE_CLASS(UAnimGraphNode_Base, UK2Node, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/AnimGraph"), ANIMGRAPH_API)

public:
	ANIMGRAPH_API UAnimGraphNode_Base();

	virtual bool IsNodePure() const override { return true; }
	ANIMGRAPH_API virtual FText GetMenuCategory() const override;
	ANIMGRAPH_API virtual bool CanCreateUnderSpecifiedSchema(const UEdGraphSchema* Schema) const override;

	/** The Animation Blueprint the node belongs to, if any. */
	ANIMGRAPH_API UAnimBlueprint* GetAnimBlueprint() const;

protected:
	/** Adds a local-space pose pin. */
	ANIMGRAPH_API UEdGraphPin* CreatePosePin(EEdGraphPinDirection Direction, const FName PinName);
};

/** The anim graph's final node, "Output Pose". */
class UAnimGraphNode_Root : public UAnimGraphNode_Base
{
	DECLARE_CLASS(UAnimGraphNode_Root, UAnimGraphNode_Base, CLASS_None, CASTCLASS_None, TEXT("/Script/AnimGraph"), ANIMGRAPH_API)

public:
	/** The graph's name as the animation system knows it; "AnimGraph" for the main graph. */
	FName Name;

	ANIMGRAPH_API virtual void AllocateDefaultPins() override;
	ANIMGRAPH_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	ANIMGRAPH_API virtual FText GetTooltipText() const override;
	virtual bool CanUserDeleteNode() const override { return false; }
	virtual bool CanDuplicateNode() const override { return false; }
};

/** The final node inside a state, "Output Animation Pose". */
class UAnimGraphNode_StateResult : public UAnimGraphNode_Root
{
	DECLARE_CLASS(UAnimGraphNode_StateResult, UAnimGraphNode_Root, CLASS_None, CASTCLASS_None, TEXT("/Script/AnimGraph"), ANIMGRAPH_API)

public:
	ANIMGRAPH_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	ANIMGRAPH_API virtual FText GetTooltipText() const override;
};

/** The final node of a transition's rule graph: its boolean input decides whether the transition is taken. */
class UAnimGraphNode_TransitionResult : public UAnimGraphNode_Base
{
	DECLARE_CLASS(UAnimGraphNode_TransitionResult, UAnimGraphNode_Base, CLASS_None, CASTCLASS_None, TEXT("/Script/AnimGraph"), ANIMGRAPH_API)

public:
	ANIMGRAPH_API static const FName PN_CanEnterTransition;

	ANIMGRAPH_API virtual void AllocateDefaultPins() override;
	ANIMGRAPH_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	ANIMGRAPH_API virtual FText GetTooltipText() const override;
	ANIMGRAPH_API virtual bool CanCreateUnderSpecifiedSchema(const UEdGraphSchema* Schema) const override;
	virtual bool CanUserDeleteNode() const override { return false; }
	virtual bool CanDuplicateNode() const override { return false; }
};
