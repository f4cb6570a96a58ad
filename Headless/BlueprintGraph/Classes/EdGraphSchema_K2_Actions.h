#pragma once

#include "CoreMinimal.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphSchema.h"
#include "Misc/EnumClassFlags.h"
#include "Templates/Casts.h"
#include "Templates/Function.h"
#include "UObject/UObjectGlobals.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class UK2Node;

/** How a node placed through FEdGraphSchemaAction_K2NewNode is shown to the user. */
enum class EK2NewNodeFlags : uint8
{
	None = 0x0,
	SelectNewNode = 0x1,
	GotoNewNode = 0x2,
};
ENUM_CLASS_FLAGS(EK2NewNodeFlags)

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

	/**
	 * Places a node that ConstructionFn makes (with ParentGraph as its outer) and InitializerFn configures before it
	 * is added, given a guid and its pins; the node is then positioned at Location and wired to FromPins.
	 */
	static UE_API UEdGraphNode* CreateNode(UEdGraph* ParentGraph, TArray<UEdGraphPin*>& FromPins, const FVector2D Location, TFunctionRef<UK2Node*(UEdGraph*)> ConstructionFn, TFunctionRef<void(UK2Node*)> InitializerFn, EK2NewNodeFlags Options);

	/** Places a new node of NodeType, set up by InitializerFn before its pins exist. */
	template <typename NodeType>
	static NodeType* SpawnNode(UEdGraph* ParentGraph, const FVector2D Location, EK2NewNodeFlags Options, TFunctionRef<void(NodeType*)> InitializerFn)
	{
		UClass* NodeClass = NodeType::StaticClass();
		TArray<UEdGraphPin*> NoPins;
		return Cast<NodeType>(CreateNode(
			ParentGraph, NoPins, Location,
			[NodeClass](UEdGraph* InParentGraph) -> UK2Node* { return NewObject<UK2Node>(InParentGraph, NodeClass); },
			[&InitializerFn](UK2Node* NewNode) { InitializerFn(static_cast<NodeType*>(NewNode)); },
			Options));
	}

	template <typename NodeType>
	static NodeType* SpawnNode(UEdGraph* ParentGraph, const FVector2D Location, EK2NewNodeFlags Options)
	{
		return SpawnNode<NodeType>(ParentGraph, Location, Options, [](NodeType*) {});
	}

	/** Places a copy of InTemplateNode in ParentGraph. */
	template <typename NodeType>
	static NodeType* SpawnNodeFromTemplate(UEdGraph* ParentGraph, NodeType* InTemplateNode, const FVector2f& Location, bool bSelectNewNode = true)
	{
		TArray<UEdGraphPin*> NoPins;
		return static_cast<NodeType*>(CreateNode(ParentGraph, NoPins, Location, InTemplateNode, bSelectNewNode));
	}
};

#undef UE_API
