#pragma once

#include "CoreMinimal.h"
#include "AnimGraphNode_Base.h"

class UAnimationStateMachineGraph;

/** A node of the anim graph that runs a state machine; the machine's states live in its own graph. */
class UAnimGraphNode_StateMachineBase : public UAnimGraphNode_Base
{
	DECLARE_CLASS(UAnimGraphNode_StateMachineBase, UAnimGraphNode_Base, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/AnimGraph"), ANIMGRAPH_API)

public:
	/** The graph of states and transitions; its name is the machine's name. */
	TObjectPtr<UAnimationStateMachineGraph> EditorStateMachineGraph;

	ANIMGRAPH_API virtual void AllocateDefaultPins() override;
	ANIMGRAPH_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	ANIMGRAPH_API virtual FText GetTooltipText() const override;
	ANIMGRAPH_API virtual FText GetMenuCategory() const override;
	/** Makes the machine's graph, with its entry node, named after "New State Machine". */
	ANIMGRAPH_API virtual void PostPlacedNewNode() override;
	ANIMGRAPH_API virtual void DestroyNode() override;
	/** Renames the machine, which is its graph's name. */
	ANIMGRAPH_API virtual void OnRenameNode(const FString& NewName) override;
	ANIMGRAPH_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;

	/** The machine's name, or "(null)" when it has no graph. */
	ANIMGRAPH_API FString GetStateMachineName() const;
	ANIMGRAPH_API TArray<UEdGraph*> GetSubGraphs() const;
};

/** The state machine node of an anim graph. */
class UAnimGraphNode_StateMachine : public UAnimGraphNode_StateMachineBase
{
	DECLARE_CLASS(UAnimGraphNode_StateMachine, UAnimGraphNode_StateMachineBase, CLASS_None, CASTCLASS_None, TEXT("/Script/AnimGraph"), ANIMGRAPH_API)
};
