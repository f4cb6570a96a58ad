#pragma once

#include "CoreMinimal.h"
#include "K2Node.h"
#include "UObject/ObjectPtr.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class UEnum;

/**
 * "Byte to Enum X": a byte read as an entry of Enum. The safe form (the one the menu and the schema make) maps a
 * value outside the enum to a valid entry; the schema inserts it when a plain byte is wired into an enum input.
 */
class UK2Node_CastByteToEnum : public UK2Node
{
	DECLARE_CLASS(UK2Node_CastByteToEnum, UK2Node, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_CastByteToEnum();

	TObjectPtr<UEnum> Enum;
	/** Whether the value is checked against the enum's entries. */
	bool bSafe = false;

	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;

	UE_API virtual FText GetCompactNodeTitle() const override;
	virtual bool ShouldDrawCompact() const override { return true; }
	virtual bool IsNodePure() const override { return true; }
	UE_API virtual bool IsConnectionDisallowed(const UEdGraphPin* MyPin, const UEdGraphPin* OtherPin, FString& OutReason) const override;
	UE_API virtual FText GetMenuCategory() const override;

	/** The library function the safe form validates with (KismetNodeHelperLibrary). */
	UE_API FName GetFunctionName() const;

	/** "Byte", the input. */
	static UE_API const FName ByteInputPinName;
};

#undef UE_API
