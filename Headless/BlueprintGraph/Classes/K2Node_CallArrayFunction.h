#pragma once

#include "CoreMinimal.h"
#include "K2Node_CallFunction.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/** An array pin of an array function and the hidden pin that carries its property, if the function names one. */
struct FArrayPropertyPinCombo
{
	UEdGraphPin* ArrayPin = nullptr;
	UEdGraphPin* ArrayPropPin = nullptr;
};

/**
 * A call of an array library function ("Add", "Length"...): its array and the parameters that depend on the
 * array's element type are wildcards until something is wired to one of them, and then all take that type.
 */
class UK2Node_CallArrayFunction : public UK2Node_CallFunction
{
	DECLARE_CLASS(UK2Node_CallArrayFunction, UK2Node_CallFunction, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_CallArrayFunction();

	// UEdGraphNode interface
	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual void PostReconstructNode() override;
	// End of UEdGraphNode interface

	// UK2Node interface
	UE_API virtual void NotifyPinConnectionListChanged(UEdGraphPin* Pin) override;
	virtual bool DoesInputWildcardPinAcceptArray(const UEdGraphPin* Pin) const override { return false; }
	// End of UK2Node interface

	/** The array the function works on (the first ArrayParm). */
	UE_API UEdGraphPin* GetTargetArrayPin() const;

	/** Every array parameter with its property pin. */
	UE_API void GetArrayPins(TArray<FArrayPropertyPinCombo>& OutArrayPinInfo) const;

	/** The parameters whose type follows the array's element type (ArrayTypeDependentParams). */
	UE_API void GetArrayTypeDependentPins(TArray<UEdGraphPin*>& OutPins) const;

	/** Gives the array and its dependent pins the element type of SourcePin. */
	UE_API void PropagateArrayTypeInfo(const UEdGraphPin* SourcePin);

	/** True for functions whose pins this node class types (ArrayParm metadata). */
	static UE_API bool IsWildcardProperty(const UFunction* InArrayFunction, const FProperty* InProperty);
};

#undef UE_API
