#pragma once

#include "CoreMinimal.h"
#include "BlueprintNodeSpawner.h"
#include "UObject/WeakObjectPtr.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class FMulticastDelegateProperty;
class UBlueprint;
class UK2Node_Event;

/**
 * Places an event bound to a delegate of one particular component ("Add On Component Hit"). The database holds one
 * per delegate of every component class; the menu binds it to the components of the Blueprint it is built for, and
 * without a binding it places nothing. A component is named by its construction script node, or, for a component
 * the parent class makes, by its template.
 */
class UBlueprintBoundEventNodeSpawner : public UBlueprintNodeSpawner
{
	DECLARE_CLASS(UBlueprintBoundEventNodeSpawner, UBlueprintNodeSpawner, CLASS_Transient, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	/** Null without a delegate, an owner class or an event node class. */
	static UE_API UBlueprintBoundEventNodeSpawner* Create(TSubclassOf<UK2Node_Event> NodeClass, FMulticastDelegateProperty* EventDelegate, UObject* Outer = nullptr);

	/** The delegate, looked up again in its class; null once the class no longer has it. */
	UE_API FMulticastDelegateProperty* GetEventDelegate() const;
	/** The authoritative class declaring the delegate. */
	UClass* GetDelegateOwnerClass() const { return DelegateOwnerClass.Get(); }

	/** Whether Binding names a component whose class has the delegate. */
	UE_API virtual bool IsBindingCompatible(const UObject* Binding) const;

	/**
	 * The component variable Binding names and the class of that component: a construction script node gives its
	 * variable, a component template the property of its owner's class that holds it. False for anything else.
	 */
	static UE_API bool ResolveComponentBinding(const UObject* Binding, FName& OutVariableName, UClass*& OutComponentClass);

	/** The event already bound to this delegate of the bound component in the Blueprint, if any. */
	UE_API UK2Node_Event* FindPreExistingEvent(UBlueprint* Blueprint, const FBindingSet& Bindings) const;

	/** Places the bound event, or gives back the one the Blueprint already has; null without a binding. */
	UE_API virtual UEdGraphNode* Invoke(UEdGraph* ParentGraph, const FBindingSet& Bindings, const FVector2D Location) const override;

private:
	TWeakObjectPtr<UClass> DelegateOwnerClass;
	FName DelegateName;
};

#undef UE_API
