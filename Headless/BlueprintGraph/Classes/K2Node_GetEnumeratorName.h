#pragma once

#include "CoreMinimal.h"
#include "K2Node.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class UEnum;

/**
 * "Enum to Name": the name of the entry an enum value holds. The Enumerator input takes the type of the enum wired
 * into it; the schema inserts this node when an enum is wired into a name input.
 */
class UK2Node_GetEnumeratorName : public UK2Node
{
	DECLARE_CLASS(UK2Node_GetEnumeratorName, UK2Node, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_GetEnumeratorName();

	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;

	UE_API virtual FText GetCompactNodeTitle() const override;
	virtual bool ShouldDrawCompact() const override { return true; }
	virtual bool IsNodePure() const override { return true; }
	UE_API virtual bool IsConnectionDisallowed(const UEdGraphPin* MyPin, const UEdGraphPin* OtherPin, FString& OutReason) const override;
	UE_API virtual void PostReconstructNode() override;
	UE_API virtual void NotifyPinConnectionListChanged(UEdGraphPin* Pin) override;
	UE_API virtual FText GetMenuCategory() const override;

	/** The enum wired into the Enumerator pin, if any. */
	UE_API UEnum* GetConnectedEnum() const;

	/** The library function the node stands for (KismetNodeHelperLibrary). */
	UE_API virtual FName GetFunctionName() const;

	/** "Enumerator", the input. */
	static UE_API const FName EnumeratorPinName;
};

#undef UE_API
