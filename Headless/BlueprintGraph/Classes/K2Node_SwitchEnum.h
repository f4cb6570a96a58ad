#pragma once

#include "CoreMinimal.h"
#include "K2Node_Switch.h"
#include "UObject/ObjectPtr.h"

#define UE_API BLUEPRINTGRAPH_API

class UEnum;

/** "Switch on <Enum>": one output per visible entry of the enum, no default output. */
class UK2Node_SwitchEnum : public UK2Node_Switch
{
	DECLARE_CLASS(UK2Node_SwitchEnum, UK2Node_Switch, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_SwitchEnum();

	TObjectPtr<UEnum> Enum;
	TArray<FName> EnumEntries;
	TArray<FText> EnumFriendlyNames;

	UE_API void SetEnum(UEnum* InEnum);

	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual bool IsConnectionDisallowed(const UEdGraphPin* MyPin, const UEdGraphPin* OtherPin, FString& OutReason) const override;
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;
	UE_API virtual FEdGraphPinType GetPinType() const override;
	/** Shows a hidden (advanced) entry output again. */
	UE_API virtual void AddPinToSwitchNode() override;
	/** Hides an entry output among the advanced pins: an enum switch always has all its entries. */
	UE_API virtual void RemovePinFromSwitchNode(UEdGraphPin* TargetPin) override;

protected:
	UE_API virtual void CreateSelectionPin() override;
	UE_API virtual void CreateCasePins() override;
};

#undef UE_API
