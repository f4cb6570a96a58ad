#pragma once

#include "CoreMinimal.h"
#include "BlueprintNodeBinder.h"
#include "EdGraph/EdGraphSchema.h"
#include "UObject/WeakObjectPtr.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class UBlueprintNodeSpawner;
struct FBlueprintActionUiSpec;

/** A menu entry that places a node through a database spawner. */
struct FBlueprintActionMenuItem : public FEdGraphSchemaAction
{
	static FName StaticGetTypeId() { static const FName Type(TEXT("FBlueprintActionMenuItem")); return Type; }
	virtual FName GetTypeId() const override { return StaticGetTypeId(); }

	UE_API FBlueprintActionMenuItem(const UBlueprintNodeSpawner* Action, const FBlueprintActionUiSpec& UiDef, const IBlueprintNodeBinder::FBindingSet& Bindings = IBlueprintNodeBinder::FBindingSet(), FText NodeCategory = FText(), int32 MenuGrouping = 0);

	/** Places the node at Location and, given a pin, wires it to the new node as the editor does. */
	UE_API virtual UEdGraphNode* PerformAction(UEdGraph* ParentGraph, UEdGraphPin* FromPin, const FVector2f& Location, bool bSelectNewNode = true) override;
	using FEdGraphSchemaAction::PerformAction;

	/** The spawner behind the entry; null once it has been released. */
	UE_API const UBlueprintNodeSpawner* GetRawAction() const;

	/** Adds more objects to bind the node to. */
	UE_API void AppendBindings(const IBlueprintNodeBinder::FBindingSet& BindingSet);

private:
	TWeakObjectPtr<UBlueprintNodeSpawner> Action;
	IBlueprintNodeBinder::FBindingSet Bindings;
};

#undef UE_API
