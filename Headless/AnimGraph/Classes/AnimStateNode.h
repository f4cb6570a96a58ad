#pragma once

#include "CoreMinimal.h"
#include "AnimStateNodeBase.h"

class UAnimGraphNode_StateResult;

/** A state: a pose graph the machine plays while it is in the state. */
class UAnimStateNode : public UAnimStateNodeBase
{
	DECLARE_CLASS(UAnimStateNode, UAnimStateNodeBase, CLASS_None, CASTCLASS_None, TEXT("/Script/AnimGraph"), ANIMGRAPH_API)

public:
	ANIMGRAPH_API UAnimStateNode();

	/** The state's pose graph, named after the state. */
	TObjectPtr<UEdGraph> BoundGraph;
	bool bAlwaysResetOnEntry = false;

	ANIMGRAPH_API virtual void AllocateDefaultPins() override;
	ANIMGRAPH_API virtual void AutowireNewNode(UEdGraphPin* FromPin) override;
	ANIMGRAPH_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	ANIMGRAPH_API virtual FText GetTooltipText() const override;
	ANIMGRAPH_API virtual void PostPlacedNewNode() override;
	ANIMGRAPH_API virtual void DestroyNode() override;

	ANIMGRAPH_API virtual FString GetStateName() const override;
	ANIMGRAPH_API virtual UEdGraphPin* GetInputPin() const override;
	ANIMGRAPH_API virtual UEdGraphPin* GetOutputPin() const override;
	virtual UEdGraph* GetBoundGraph() const override { return BoundGraph; }
	virtual void ClearBoundGraph() override { BoundGraph = nullptr; }

	/** The "Result" pin of the state's result node. */
	ANIMGRAPH_API UEdGraphPin* GetPoseSinkPinInsideState() const;
	ANIMGRAPH_API UAnimGraphNode_StateResult* GetResultNodeInsideState() const;
};

/** A conduit: a state that holds no pose, only a rule deciding whether the machine may pass through. */
class UAnimStateConduitNode : public UAnimStateNodeBase
{
	DECLARE_CLASS(UAnimStateConduitNode, UAnimStateNodeBase, CLASS_None, CASTCLASS_None, TEXT("/Script/AnimGraph"), ANIMGRAPH_API)

public:
	ANIMGRAPH_API UAnimStateConduitNode();

	TObjectPtr<UEdGraph> BoundGraph;

	ANIMGRAPH_API virtual void AllocateDefaultPins() override;
	ANIMGRAPH_API virtual void AutowireNewNode(UEdGraphPin* FromPin) override;
	ANIMGRAPH_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	ANIMGRAPH_API virtual FText GetTooltipText() const override;
	ANIMGRAPH_API virtual void PostPlacedNewNode() override;
	ANIMGRAPH_API virtual void DestroyNode() override;
	ANIMGRAPH_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;

	ANIMGRAPH_API virtual FString GetStateName() const override;
	ANIMGRAPH_API virtual UEdGraphPin* GetInputPin() const override;
	ANIMGRAPH_API virtual UEdGraphPin* GetOutputPin() const override;
	virtual UEdGraph* GetBoundGraph() const override { return BoundGraph; }
	virtual void ClearBoundGraph() override { BoundGraph = nullptr; }
};

/** An alias: stands for a set of states (or all of them) so that one transition can leave any of them. */
class UAnimStateAliasNode : public UAnimStateNodeBase
{
	DECLARE_CLASS(UAnimStateAliasNode, UAnimStateNodeBase, CLASS_None, CASTCLASS_None, TEXT("/Script/AnimGraph"), ANIMGRAPH_API)

public:
	ANIMGRAPH_API UAnimStateAliasNode();

	/** Stands for every state of the machine when set. */
	bool bGlobalAlias = false;
	FString StateAliasName;

	ANIMGRAPH_API virtual void AllocateDefaultPins() override;
	ANIMGRAPH_API virtual void AutowireNewNode(UEdGraphPin* FromPin) override;
	ANIMGRAPH_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	ANIMGRAPH_API virtual FText GetTooltipText() const override;
	ANIMGRAPH_API virtual void PostPlacedNewNode() override;
	ANIMGRAPH_API virtual void OnRenameNode(const FString& NewName) override;
	ANIMGRAPH_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;

	ANIMGRAPH_API virtual FString GetStateName() const override;
	ANIMGRAPH_API virtual UEdGraphPin* GetInputPin() const override;
	ANIMGRAPH_API virtual UEdGraphPin* GetOutputPin() const override;

	/** The states the alias stands for; entries whose state was deleted do not resolve. */
	ANIMGRAPH_API const TSet<TWeakObjectPtr<UAnimStateNodeBase>>& GetAliasedStates() const;
	ANIMGRAPH_API TSet<TWeakObjectPtr<UAnimStateNodeBase>>& GetAliasedStates();
	/** The single state aliased when exactly one resolves and the alias is not global. */
	ANIMGRAPH_API UAnimStateNodeBase* GetAliasedState() const;

private:
	TSet<TWeakObjectPtr<UAnimStateNodeBase>> AliasedStateNodes;
};
