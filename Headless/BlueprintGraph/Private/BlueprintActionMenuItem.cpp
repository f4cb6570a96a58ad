#include "BlueprintActionMenuItem.h"
#include "BlueprintNodeSpawner.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode.h"

FBlueprintActionMenuItem::FBlueprintActionMenuItem(const UBlueprintNodeSpawner* InAction, const FBlueprintActionUiSpec& UiDef, const IBlueprintNodeBinder::FBindingSet& InBindings, FText NodeCategory, int32 MenuGrouping)
	: FEdGraphSchemaAction(MoveTemp(NodeCategory), UiDef.MenuName, UiDef.Tooltip, MenuGrouping, UiDef.Keywords)
	, Action(const_cast<UBlueprintNodeSpawner*>(InAction))
	, Bindings(InBindings)
{
}

const UBlueprintNodeSpawner* FBlueprintActionMenuItem::GetRawAction() const
{
	return Action.Get();
}

void FBlueprintActionMenuItem::AppendBindings(const IBlueprintNodeBinder::FBindingSet& BindingSet)
{
	for (UObject* Object : BindingSet)
	{
		Bindings.Add(Object);
	}
}

UEdGraphNode* FBlueprintActionMenuItem::PerformAction(UEdGraph* ParentGraph, UEdGraphPin* FromPin, const FVector2f& Location, bool bSelectNewNode)
{
	const UBlueprintNodeSpawner* Spawner = Action.Get();
	if (!Spawner || !ParentGraph)
	{
		return nullptr;
	}
	const int32 NodesBefore = ParentGraph->Nodes.Num();
	UEdGraphNode* NewNode = Spawner->Invoke(ParentGraph, Bindings, FVector2D(Location.X, Location.Y));
	// An action that found its node already in the graph (an event) hands it back without moving or wiring it.
	const bool bIsNewNode = NewNode && ParentGraph->Nodes.Num() > NodesBefore;
	if (bIsNewNode && FromPin)
	{
		NewNode->AutowireNewNode(FromPin);
	}
	return NewNode;
}
