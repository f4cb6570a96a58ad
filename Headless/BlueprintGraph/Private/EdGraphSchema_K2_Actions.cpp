#include "EdGraphSchema_K2_Actions.h"
#include "EdGraph/EdGraph.h"
#include "K2Node.h"
#include "UObject/UObjectGlobals.h"

UK2Node* FEdGraphSchemaAction_K2NewNode::CreateNode(UEdGraph* ParentGraph, TArray<UEdGraphPin*>& FromPins, const FVector2f& Location, UK2Node* InNodeTemplate, bool bSelectNewNode)
{
	if (!ParentGraph || !InNodeTemplate)
	{
		return nullptr;
	}
	// The copy takes every setting of the template; pins and guid are its own.
	UK2Node* NewNode = Cast<UK2Node>(StaticDuplicateObject(InNodeTemplate, ParentGraph));
	if (!NewNode)
	{
		return nullptr;
	}
	NewNode->ClearFlags(RF_Transient);
	NewNode->SetFlags(RF_Transactional);
	// Pins are not copied with the node's settings; any pointers that came along are the template's own.
	NewNode->Pins.Empty();
	NewNode->CreateNewGuid();
	NewNode->NodePosX = static_cast<int32>(Location.X);
	NewNode->NodePosY = static_cast<int32>(Location.Y);
	NewNode->PostPlacedNewNode();
	NewNode->AllocateDefaultPins();
	ParentGraph->AddNode(NewNode, /*bUserAction=*/true, bSelectNewNode);

	for (UEdGraphPin* FromPin : FromPins)
	{
		if (FromPin)
		{
			NewNode->AutowireNewNode(FromPin);
		}
	}
	return NewNode;
}

UEdGraphNode* FEdGraphSchemaAction_K2NewNode::CreateNode(UEdGraph* ParentGraph, TArray<UEdGraphPin*>& FromPins, const FVector2D Location, TFunctionRef<UK2Node*(UEdGraph*)> ConstructionFn, TFunctionRef<void(UK2Node*)> InitializerFn, EK2NewNodeFlags Options)
{
	if (!ParentGraph)
	{
		return nullptr;
	}
	ParentGraph->Modify();
	UK2Node* NewNode = ConstructionFn(ParentGraph);
	if (!NewNode)
	{
		return nullptr;
	}
	// The caller's settings (the member a node refers to, its name) must be in place before the pins are made from them.
	InitializerFn(NewNode);
	if (ParentGraph->HasAnyFlags(RF_Transactional))
	{
		NewNode->SetFlags(RF_Transactional);
	}
	ParentGraph->AddNode(NewNode, /*bUserAction=*/true, EnumHasAnyFlags(Options, EK2NewNodeFlags::SelectNewNode));
	NewNode->CreateNewGuid();
	NewNode->PostPlacedNewNode();
	NewNode->AllocateDefaultPins();
	NewNode->NodePosX = static_cast<int32>(Location.X);
	NewNode->NodePosY = static_cast<int32>(Location.Y);

	for (UEdGraphPin* FromPin : FromPins)
	{
		if (FromPin)
		{
			NewNode->AutowireNewNode(FromPin);
		}
	}
	// Messages from placing belong to no compile; the next compile raises its own.
	NewNode->ErrorMsg.Empty();
	NewNode->bHasCompilerMessage = false;
	return NewNode;
}

UEdGraphNode* FEdGraphSchemaAction_K2NewNode::PerformAction(UEdGraph* ParentGraph, UEdGraphPin* FromPin, const FVector2f& Location, bool bSelectNewNode)
{
	TArray<UEdGraphPin*> FromPins;
	if (FromPin)
	{
		FromPins.Add(FromPin);
	}
	return CreateNode(ParentGraph, FromPins, Location, NodeTemplate, bSelectNewNode);
}

UEdGraphNode* FEdGraphSchemaAction_K2NewNode::PerformAction(UEdGraph* ParentGraph, TArray<UEdGraphPin*>& FromPins, const FVector2f& Location, bool bSelectNewNode)
{
	return CreateNode(ParentGraph, FromPins, Location, NodeTemplate, bSelectNewNode);
}
