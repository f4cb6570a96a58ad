#pragma once

#include "CoreMinimal.h"
#include "BlueprintNodeSpawner.h"
#include "UObject/WeakObjectPtr.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class UField;

/** A spawner whose node wraps one reflected member (a function, a struct, a class). */
class UBlueprintFieldNodeSpawner : public UBlueprintNodeSpawner
{
	DECLARE_CLASS(UBlueprintFieldNodeSpawner, UBlueprintNodeSpawner, CLASS_Transient, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	/** Sets a node up from the field; called before CustomizeNodeDelegate. */
	DECLARE_DELEGATE_TwoParams(FSetNodeFieldDelegate, UEdGraphNode*, UField*);

	static UE_API UBlueprintFieldNodeSpawner* Create(TSubclassOf<UEdGraphNode> NodeClass, UField* Field, UObject* Outer = nullptr);

	/** The wrapped member; null once it has been destroyed. */
	UE_API UField* GetField() const;
	UE_API void SetField(UField* InField);
	/** The class the member belongs to (the authoritative class for Blueprint members); null for a global field. */
	UE_API virtual UClass* GetOwnerClass() const;

	FSetNodeFieldDelegate SetNodeFieldDelegate;

	UE_API virtual UEdGraphNode* Invoke(UEdGraph* ParentGraph, const FBindingSet& Bindings, const FVector2D Location) const override;

private:
	TWeakObjectPtr<UField> Field;
};

#undef UE_API
