#pragma once

#include "CoreMinimal.h"
#include "EdGraph/EdGraphSchema.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class UK2Node;

/** A menu entry that places a copy of a template node. */
struct FEdGraphSchemaAction_K2NewNode : public FEdGraphSchemaAction
{
	static FName StaticGetTypeId() { static const FName Type(TEXT("FEdGraphSchemaAction_K2NewNode")); return Type; }
	virtual FName GetTypeId() const override { return StaticGetTypeId(); }

	FEdGraphSchemaAction_K2NewNode() = default;
	FEdGraphSchemaAction_K2NewNode(FText InNodeCategory, FText InMenuDesc, FText InToolTip, const int32 InGrouping, FText InKeywords = FText())
		: FEdGraphSchemaAction(MoveTemp(InNodeCategory), MoveTemp(InMenuDesc), MoveTemp(InToolTip), InGrouping, MoveTemp(InKeywords))
	{
	}

	/** The node copied into the graph; its outer is a temporary owner, never a Blueprint. */
	UK2Node* NodeTemplate = nullptr;
	/** Whether the editor should jump to the new node. */
	bool bGotoNode = false;

	UE_API virtual UEdGraphNode* PerformAction(UEdGraph* ParentGraph, UEdGraphPin* FromPin, const FVector2f& Location, bool bSelectNewNode = true) override;
	UE_API virtual UEdGraphNode* PerformAction(UEdGraph* ParentGraph, TArray<UEdGraphPin*>& FromPins, const FVector2f& Location, bool bSelectNewNode = true) override;

	/** Copies InNodeTemplate into ParentGraph at Location, gives it a guid and pins, and wires it to the pins. */
	static UE_API UK2Node* CreateNode(UEdGraph* ParentGraph, TArray<UEdGraphPin*>& FromPins, const FVector2f& Location, UK2Node* InNodeTemplate, bool bSelectNewNode = true);

	/** Places a copy of InTemplateNode in ParentGraph. */
	template <typename NodeType>
	static NodeType* SpawnNodeFromTemplate(UEdGraph* ParentGraph, NodeType* InTemplateNode, const FVector2f& Location, bool bSelectNewNode = true)
	{
		TArray<UEdGraphPin*> NoPins;
		return static_cast<NodeType*>(CreateNode(ParentGraph, NoPins, Location, InTemplateNode, bSelectNewNode));
	}
};

#undef UE_API
