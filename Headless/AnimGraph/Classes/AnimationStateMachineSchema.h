#pragma once

#include "CoreMinimal.h"
#include "EdGraph/EdGraphSchema.h"

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
};
