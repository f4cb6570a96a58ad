#pragma once

#include "CoreMinimal.h"
#include "BlueprintFieldNodeSpawner.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class UFunction;
class UK2Node_CallFunction;

/**
 * Places a call of one function. The node class follows the function: a promotable math operator gets a
 * promotable operator node (one shared spawner per operator), a commutative pure operator its own node,
 * everything else a plain call.
 */
class UBlueprintFunctionNodeSpawner : public UBlueprintFieldNodeSpawner
{
	DECLARE_CLASS(UBlueprintFunctionNodeSpawner, UBlueprintFieldNodeSpawner, CLASS_Transient, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	/** A spawner for a call of Function; null for a null function. */
	static UE_API UBlueprintFunctionNodeSpawner* Create(const UFunction* Function, UObject* Outer = nullptr);
	static UE_API UBlueprintFunctionNodeSpawner* Create(TSubclassOf<UK2Node_CallFunction> NodeClass, const UFunction* Function, UObject* Outer = nullptr);

	UE_API const UFunction* GetFunction() const;

	UE_API virtual FBlueprintActionUiSpec GetUiSpec(const FBlueprintActionContext& Context, const FBindingSet& Bindings) const override;
	UE_API virtual UEdGraphNode* Invoke(UEdGraph* ParentGraph, const FBindingSet& Bindings, const FVector2D Location) const override;

	/** Whether the function is one of the math operators that a single promotable node offers. */
	static UE_API bool IsPromotableOperatorFunction(const UFunction* Function);
	/** The menu name of a promotable operator ("Add", "Greater Equal"). */
	static UE_API FText GetUserFacingOperatorName(FName OpName);
};

#undef UE_API
