#pragma once

#include "CoreMinimal.h"
#include "K2Node.h"
#include "K2Node_AddPinInterface.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/** Where a pin goes relative to the pin it is inserted next to. */
enum class EPinInsertPosition
{
	Before,
	After
};

/** "Sequence": runs its outputs one after the other, then_0 first. */
class UK2Node_ExecutionSequence : public UK2Node, public IK2Node_AddPinInterface
{
	DECLARE_CLASS(UK2Node_ExecutionSequence, UK2Node, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual FText GetMenuCategory() const override;
	UE_API virtual void ReallocatePinsDuringReconstruction(TArray<UEdGraphPin*>& OldPins) override;
	UE_API virtual void ReconstructNode() override;

	//~ IK2Node_AddPinInterface
	UE_API virtual void AddInputPin() override;

	/** The output "then_<Index>", or null. */
	UE_API UEdGraphPin* GetThenPinGivenIndex(const int32 Index);

	/** Adds an output next to PinToInsertBefore and renumbers the outputs in order. */
	UE_API void InsertPinIntoExecutionNode(UEdGraphPin* PinToInsertBefore, EPinInsertPosition Position);

	/** Removes an output and renumbers the others so the numbers stay compact. */
	UE_API void RemovePinFromExecutionNode(UEdGraphPin* TargetPin);

	/** Whether an output may be removed: a sequence keeps at least two. */
	UE_API bool CanRemoveExecutionPin() const;

	UE_API FName GetPinNameGivenIndex(int32 Index) const;

private:
	UE_API FName GetUniquePinName();

	/** Outputs to allocate when a reconstruction allocates through AllocateDefaultPins. */
	int32 PendingOutputCount = 0;
};

#undef UE_API
