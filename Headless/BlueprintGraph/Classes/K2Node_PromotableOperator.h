#pragma once

#include "CoreMinimal.h"
#include "K2Node_AddPinInterface.h"
#include "K2Node_CallFunction.h"

#define UE_API BLUEPRINTGRAPH_API

/**
 * A math operator ("+", "<", ...) whose operand type follows what is wired to it: wildcards until the first
 * link, then the library function of the operator for the widest operand type. Comparisons give a bool;
 * other operators take more inputs ("C", "D"...).
 */
class UK2Node_PromotableOperator : public UK2Node_CallFunction, public IK2Node_AddPinInterface
{
	DECLARE_CLASS(UK2Node_PromotableOperator, UK2Node_CallFunction, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	/** The operator ("Add", "EqualEqual"...), from the function's name. */
	FName OperationName;
	/** Inputs added after A and B. */
	int32 NumAdditionalInputs = 0;

	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual void ReconstructNode() override;
	UE_API virtual void PostReconstructNode() override;
	UE_API virtual void NotifyPinConnectionListChanged(UEdGraphPin* Pin) override;
	UE_API virtual void NodeConnectionListChanged() override;
	UE_API virtual bool IsConnectionDisallowed(const UEdGraphPin* MyPin, const UEdGraphPin* OtherPin, FString& OutReason) const override;
	UE_API virtual void SetFromFunction(const UFunction* Function) override;
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;

	//~ IK2Node_AddPinInterface
	UE_API virtual void AddInputPin() override;
	UE_API virtual bool CanAddPin() const override;
	UE_API virtual bool CanRemovePin(const UEdGraphPin* Pin) const override;
	UE_API virtual void RemoveInputPin(UEdGraphPin* Pin) override;

	UE_API UEdGraphPin* GetOutputPin() const;
	UE_API TArray<UEdGraphPin*> GetInputPins() const;
	UE_API UEdGraphPin* FindTolerancePin() const;
	UE_API UEdGraphPin* GetAdditionalPin(int32 PinIndex) const;

	/** Whether any operand is wired or holds a value of its own. */
	UE_API bool HasAnyConnectionsOrDefaults() const;
	/** Puts every operand and the result back to wildcards. */
	UE_API void ResetNodeToWildcard();

private:
	bool UpdateOpName();
	void AddInputPinImpl(int32 PinIndex);
	bool IsAdditionalPin(const UEdGraphPin& Pin) const;
	bool IsTolerancePin(const UEdGraphPin& Pin) const;
	/** Picks the function for the operand types now wired and types the pins as it takes them. */
	void UpdateFromBestMatchingFunction();
	void UpdatePinsFromFunction(const UFunction* Function);

	/** Additional inputs whose types to restore after a reconstruction through AllocateDefaultPins. */
	int32 PendingReconstruction = 0;
};

#undef UE_API
