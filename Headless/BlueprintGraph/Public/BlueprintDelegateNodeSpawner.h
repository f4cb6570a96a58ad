#pragma once

#include "CoreMinimal.h"
#include "BlueprintFieldNodeSpawner.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class FMulticastDelegateProperty;
class UK2Node_BaseMCDelegate;

/** Places a node working on one event dispatcher: bind, unbind, unbind all, call or assign. */
class UBlueprintDelegateNodeSpawner : public UBlueprintFieldNodeSpawner
{
	DECLARE_CLASS(UBlueprintDelegateNodeSpawner, UBlueprintFieldNodeSpawner, CLASS_Transient, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	/** Null without a property, an owner class or a dispatcher node class. */
	static UE_API UBlueprintDelegateNodeSpawner* Create(TSubclassOf<UK2Node_BaseMCDelegate> NodeClass, const FMulticastDelegateProperty* Property, UObject* Outer = nullptr);

	/** The dispatcher, looked up again in its class so a recompiled Blueprint is followed. */
	UE_API FMulticastDelegateProperty* GetDelegateProperty() const;
	FName GetDelegateName() const { return DelegateName; }

	UE_API virtual UClass* GetOwnerClass() const override;
	UE_API virtual UEdGraphNode* Invoke(UEdGraph* ParentGraph, const FBindingSet& Bindings, const FVector2D Location) const override;

private:
	TWeakObjectPtr<UClass> DelegateOwnerClass;
	FName DelegateName;
};

#undef UE_API
