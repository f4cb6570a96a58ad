#pragma once

#include "CoreMinimal.h"
#include "EdGraph/EdGraphNode.h"

class UAnimStateTransitionNode;
class UAnimBlueprint;

/** Base of what a state machine graph holds: states, conduits, aliases and transitions. */
class UAnimStateNodeBase : public UEdGraphNode
{
	DECLARE_CLASS(UAnimStateNodeBase, UEdGraphNode, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/AnimGraph"), ANIMGRAPH_API)

public:
	ANIMGRAPH_API UAnimStateNodeBase();

	/** The name shown for the node; a state's name is its bound graph's name. */
	virtual FString GetStateName() const { return TEXT("BaseState"); }
	virtual UEdGraphPin* GetInputPin() const { return nullptr; }
	virtual UEdGraphPin* GetOutputPin() const { return nullptr; }
	/** The graph behind the node (a state's pose graph, a transition's or conduit's rule graph), if any. */
	virtual UEdGraph* GetBoundGraph() const { return nullptr; }
	virtual void ClearBoundGraph() {}

	/** Renames the bound graph, keeping names unique among the machine's states. */
	ANIMGRAPH_API virtual void OnRenameNode(const FString& NewName) override;
	ANIMGRAPH_API virtual bool CanCreateUnderSpecifiedSchema(const UEdGraphSchema* Schema) const override;
	ANIMGRAPH_API virtual void PostLoad() override;

	/** The transitions leaving (or, with bWantSortedList false, touching) this node, in priority order when sorted. */
	ANIMGRAPH_API void GetTransitionList(TArray<UAnimStateTransitionNode*>& OutTransitions, bool bWantSortedList = false) const;

	ANIMGRAPH_API UAnimBlueprint* GetAnimBlueprint() const;

protected:
	/** Makes the bound graph, names it from Suggestion among the machine's states, and fills its default nodes. */
	ANIMGRAPH_API UEdGraph* CreateBoundGraph(UClass* GraphClass, UClass* SchemaClass, const FString& Suggestion);
	/** Removes the bound graph from the machine graph's sub-graphs and marks it as garbage. */
	ANIMGRAPH_API void RemoveBoundGraph(UEdGraph* Graph);
};

/** The node a state machine starts from. */
class UAnimStateEntryNode : public UEdGraphNode
{
	DECLARE_CLASS(UAnimStateEntryNode, UEdGraphNode, CLASS_None, CASTCLASS_None, TEXT("/Script/AnimGraph"), ANIMGRAPH_API)

public:
	ANIMGRAPH_API virtual void AllocateDefaultPins() override;
	ANIMGRAPH_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	ANIMGRAPH_API virtual FText GetTooltipText() const override;
	virtual bool CanUserDeleteNode() const override { return false; }
	/** The state the entry leads to, if linked. */
	ANIMGRAPH_API UEdGraphNode* GetOutputNode() const;
};
