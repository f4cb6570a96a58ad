#pragma once

#include "CoreMinimal.h"
#include "AnimStateNodeBase.h"

/** A transition between two states, with the rule graph that decides when it is taken. */
class UAnimStateTransitionNode : public UAnimStateNodeBase
{
	DECLARE_CLASS(UAnimStateTransitionNode, UAnimStateNodeBase, CLASS_None, CASTCLASS_None, TEXT("/Script/AnimGraph"), ANIMGRAPH_API)

public:
	ANIMGRAPH_API UAnimStateTransitionNode();

	/** The rule graph; its result node's boolean says whether the transition may be taken. */
	TObjectPtr<UEdGraph> BoundGraph;
	/** Lower numbers are checked first among the transitions leaving a state. */
	int32 PriorityOrder = 1;
	float CrossfadeDuration = 0.2f;
	/** Whether the transition may be taken in both directions. */
	bool Bidirectional = false;
	bool bDisabled = false;
	bool bAutomaticRuleBasedOnSequencePlayerInState = false;
	float AutomaticRuleTriggerTime = -1.f;
	FString SharedRulesName;

	ANIMGRAPH_API virtual void AllocateDefaultPins() override;
	ANIMGRAPH_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	ANIMGRAPH_API virtual FText GetTooltipText() const override;
	/** Makes the rule graph. */
	ANIMGRAPH_API virtual void PostPlacedNewNode() override;
	ANIMGRAPH_API virtual void DestroyNode() override;
	/** A transition that lost one of its ends removes itself: it only exists between two nodes. */
	ANIMGRAPH_API virtual void PinConnectionListChanged(UEdGraphPin* Pin) override;
	ANIMGRAPH_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;

	ANIMGRAPH_API virtual FString GetStateName() const override;
	ANIMGRAPH_API virtual UEdGraphPin* GetInputPin() const override;
	ANIMGRAPH_API virtual UEdGraphPin* GetOutputPin() const override;
	virtual UEdGraph* GetBoundGraph() const override { return BoundGraph; }
	virtual void ClearBoundGraph() override { BoundGraph = nullptr; }

	ANIMGRAPH_API UAnimStateNodeBase* GetPreviousState() const;
	ANIMGRAPH_API UAnimStateNodeBase* GetNextState() const;
	/** Links the transition from PreviousState's output to NextState's input. */
	ANIMGRAPH_API void CreateConnections(UAnimStateNodeBase* PreviousState, UAnimStateNodeBase* NextState);
};
