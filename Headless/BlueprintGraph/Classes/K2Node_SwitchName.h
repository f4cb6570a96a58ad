#pragma once

#include "CoreMinimal.h"
#include "K2Node_Switch.h"

#define UE_API BLUEPRINTGRAPH_API

/** "Switch on Name": one output per name in PinNames. */
class UK2Node_SwitchName : public UK2Node_Switch
{
	DECLARE_CLASS(UK2Node_SwitchName, UK2Node_Switch, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_SwitchName();

	TArray<FName> PinNames;

	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual void AddPinToSwitchNode() override;
	UE_API virtual FEdGraphPinType GetPinType() const override;
	UE_API virtual FName GetPinNameGivenIndex(int32 Index) const override;
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;

protected:
	UE_API virtual void CreateSelectionPin() override;
	UE_API virtual void CreateCasePins() override;
	UE_API virtual FName GetUniquePinName() override;
	UE_API virtual void RemovePin(UEdGraphPin* TargetPin) override;
};

#undef UE_API
