#pragma once

#include "CoreMinimal.h"
#include "EdGraph/EdGraphSchema.h"

/** A menu entry that places its template node (a state, conduit, alias or entry) in a state machine graph. */
struct FEdGraphSchemaAction_NewStateNode : public FEdGraphSchemaAction
{
	FEdGraphSchemaAction_NewStateNode() = default;
	FEdGraphSchemaAction_NewStateNode(FText InNodeCategory, FText InMenuDesc, FText InToolTip, const int32 InGrouping)
		: FEdGraphSchemaAction(MoveTemp(InNodeCategory), MoveTemp(InMenuDesc), MoveTemp(InToolTip), InGrouping)
	{
	}

	/** The node placed; it moves into the graph, so an action places once. */
	UEdGraphNode* NodeTemplate = nullptr;

	ANIMGRAPH_API virtual UEdGraphNode* PerformAction(UEdGraph* ParentGraph, UEdGraphPin* FromPin, const FVector2f& Location, bool bSelectNewNode = true) override;
};

/** The state machine menu's comment entry. */
struct FEdGraphSchemaAction_NewStateComment : public FEdGraphSchemaAction
{
	FEdGraphSchemaAction_NewStateComment() = default;
	FEdGraphSchemaAction_NewStateComment(FText InNodeCategory, FText InMenuDesc, FText InToolTip, const int32 InGrouping)
		: FEdGraphSchemaAction(MoveTemp(InNodeCategory), MoveTemp(InMenuDesc), MoveTemp(InToolTip), InGrouping)
	{
	}

	ANIMGRAPH_API virtual UEdGraphNode* PerformAction(UEdGraph* ParentGraph, UEdGraphPin* FromPin, const FVector2f& Location, bool bSelectNewNode = true) override;
};

/**
 * The rules of a state machine graph: states link through transition nodes, the entry links to one state,
 * and wiring two states makes the transition between them.
 */
class UAnimationStateMachineSchema : public UEdGraphSchema
{
	DECLARE_CLASS(UAnimationStateMachineSchema, UEdGraphSchema, CLASS_None, CASTCLASS_None, TEXT("/Script/AnimGraph"), ANIMGRAPH_API)

public:
	/** The category of the entry node's pin. */
	ANIMGRAPH_API static const FName PC_Exec;
	/** The category of the pins of states, conduits, aliases and transitions. */
	ANIMGRAPH_API static const FName PC_Transition;

	ANIMGRAPH_API virtual void CreateDefaultNodesForGraph(UEdGraph& Graph) const override;
	ANIMGRAPH_API virtual const FPinConnectionResponse CanCreateConnection(const UEdGraphPin* PinA, const UEdGraphPin* PinB) const override;
	ANIMGRAPH_API virtual bool TryCreateConnection(UEdGraphPin* PinA, UEdGraphPin* PinB) const override;
	ANIMGRAPH_API virtual bool CreateAutomaticConversionNodeAndConnections(UEdGraphPin* PinA, UEdGraphPin* PinB) const override;
	ANIMGRAPH_API virtual EGraphType GetGraphType(const UEdGraph* TestEdGraph) const override;
	/** States, aliases, conduits, an entry point when the graph has none, and a comment when not dragging a pin. */
	ANIMGRAPH_API virtual void GetGraphContextActions(FGraphContextMenuBuilder& ContextMenuBuilder) const override;
};
