#pragma once

#include "CoreMinimal.h"
#include "K2Node.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/**
 * "Resolve Soft Reference" / "Make Soft Reference": turns a soft object or class reference into a hard one, or a
 * hard one into a soft one. Both pins are wildcards until the input is wired; the wired type decides the direction.
 */
class UK2Node_ConvertAsset : public UK2Node
{
	DECLARE_CLASS(UK2Node_ConvertAsset, UK2Node, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_ConvertAsset();

	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual FText GetKeywords() const override;

	virtual bool IsNodePure() const override { return true; }
	virtual bool ShouldDrawCompact() const override { return true; }
	UE_API virtual FText GetCompactNodeTitle() const override;
	UE_API virtual FText GetMenuCategory() const override;
	UE_API virtual bool IsConnectionDisallowed(const UEdGraphPin* MyPin, const UEdGraphPin* OtherPin, FString& OutReason) const override;
	UE_API virtual void NotifyPinConnectionListChanged(UEdGraphPin* Pin) override;
	UE_API virtual void PostReconstructNode() override;

	UE_API UEdGraphPin* GetInputPin() const;
	UE_API UEdGraphPin* GetOutputPin() const;
	/** The class of what is wired into the input; null when nothing is. */
	UE_API UClass* GetTargetClass() const;
	/** Whether the wired reference is to a class (soft or hard). */
	UE_API bool IsClassType() const;
	/** Whether a hard reference is wired in, so the node makes a soft one. */
	UE_API bool IsConvertToSoft() const;

private:
	/** Types both pins after what is wired into the input, and drops output links the new type cannot keep. */
	void RefreshPinTypes();
};

#undef UE_API
