#pragma once

#include "CoreMinimal.h"
#include "BlueprintNodeSpawner.h"
#include "UObject/WeakObjectPtr.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class UBlueprint;
class UFunction;
class UK2Node_Event;

/**
 * Places an event: an override of an implementable event, or a custom event. A Blueprint has at most one node
 * per event, so invoking the spawner where the event already exists gives that node back instead.
 */
class UBlueprintEventNodeSpawner : public UBlueprintNodeSpawner
{
	DECLARE_CLASS(UBlueprintEventNodeSpawner, UBlueprintNodeSpawner, CLASS_Transient, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	/** "Event <Name>" for an event the parent class lets Blueprints implement; null for a null function. */
	static UE_API UBlueprintEventNodeSpawner* Create(const UFunction* EventFunc, UObject* Outer = nullptr);
	/** A custom event; with no name, the "Add Custom Event..." entry that makes a fresh one. */
	static UE_API UBlueprintEventNodeSpawner* Create(TSubclassOf<UK2Node_Event> NodeClass, FName CustomEventName, UObject* Outer = nullptr);

	UE_API const UFunction* GetEventFunction() const;
	bool IsForCustomEvent() const { return !EventFunc.IsValid() && !bHadEventFunc; }

	/** The node of this event already in the Blueprint, if any. */
	UE_API UK2Node_Event* FindPreExistingEvent(UBlueprint* Blueprint, const FBindingSet& Bindings) const;

	UE_API virtual UEdGraphNode* Invoke(UEdGraph* ParentGraph, const FBindingSet& Bindings, const FVector2D Location) const override;

private:
	TWeakObjectPtr<UFunction> EventFunc;
	bool bHadEventFunc = false;
	FName CustomEventName;
};

#undef UE_API
