#pragma once

#include "CoreMinimal.h"
#include "K2Node_AddPinInterface.h"
#include "K2Node_CallFunction.h"

#define UE_API BLUEPRINTGRAPH_API

/**
 * The older math node of a binary function marked CommutativeAssociativeBinaryOperator: the call's pins (A, B,
 * ReturnValue) and as many more inputs of A's type as the user adds ("C", "D"...).
 */
class UK2Node_CommutativeAssociativeBinaryOperator : public UK2Node_CallFunction, public IK2Node_AddPinInterface
{
	DECLARE_CLASS(UK2Node_CommutativeAssociativeBinaryOperator, UK2Node_CallFunction, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	/** Inputs added after A and B. */
	int32 NumAdditionalInputs = 0;

	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;

	//~ IK2Node_AddPinInterface
	UE_API virtual void AddInputPin() override;
	UE_API virtual bool CanAddPin() const override;
	UE_API virtual bool CanRemovePin(const UEdGraphPin* Pin) const override;
	UE_API virtual void RemoveInputPin(UEdGraphPin* Pin) override;

	/** The node's only output, the result. */
	UE_API UEdGraphPin* FindOutPin() const;
	/** The node's "self" pin (the library's object, hidden). */
	UE_API UEdGraphPin* FindSelfPin() const;

private:
	/** The type of the function's first operand, which every added input shares. */
	bool GetOperandType(FEdGraphPinType& OutType) const;
	void AddInputPinInner(int32 AdditionalPinIndex);
};

#undef UE_API
