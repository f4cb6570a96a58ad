#pragma once

#include "CoreMinimal.h"
#include "K2Node_Switch.h"

#define UE_API BLUEPRINTGRAPH_API

/** "Switch on Int": outputs named by consecutive integers from StartIndex. */
class UK2Node_SwitchInteger : public UK2Node_Switch
{
	DECLARE_CLASS(UK2Node_SwitchInteger, UK2Node_Switch, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_SwitchInteger();

	/** The value the first case stands for. */
	int32 StartIndex = 0;

	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual void ReallocatePinsDuringReconstruction(TArray<UEdGraphPin*>& OldPins) override;
	UE_API virtual void ReconstructNode() override;
	UE_API virtual bool CanRemoveExecutionPin(UEdGraphPin* TargetPin) const override;
	UE_API virtual FEdGraphPinType GetPinType() const override;
	UE_API virtual FName GetPinNameGivenIndex(int32 Index) const override;

	/** Changes the first case's value and renames the cases. */
	UE_API void SetStartIndex(int32 InStartIndex);

protected:
	UE_API virtual void CreateSelectionPin() override;
	UE_API virtual void CreateCasePins() override;
	UE_API virtual FName GetUniquePinName() override;
	UE_API virtual void RemovePin(UEdGraphPin* TargetPin) override;

private:
	int32 PendingCaseCount = 0;
};

#undef UE_API
