#pragma once

#include "CoreMinimal.h"
#include "K2Node.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/** The array "GET" node: the item at an index, by reference where the type allows, else a copy. */
class UK2Node_GetArrayItem : public UK2Node
{
	DECLARE_CLASS(UK2Node_GetArrayItem, UK2Node, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	/** Whether the item should come back by reference (object types always come back as copies). */
	bool bReturnByRefDesired = true;

	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual FText GetMenuCategory() const override;
	UE_API virtual bool IsNodePure() const override { return true; }
	UE_API virtual bool ShouldDrawCompact() const override { return true; }
	UE_API virtual void PostReconstructNode() override;
	UE_API virtual void NotifyPinConnectionListChanged(UEdGraphPin* Pin) override;
	UE_API virtual bool IsConnectionDisallowed(const UEdGraphPin* MyPin, const UEdGraphPin* OtherPin, FString& OutReason) const override;

	UEdGraphPin* GetTargetArrayPin() const { return Pins.Num() > 0 ? Pins[0] : nullptr; }
	UEdGraphPin* GetIndexPin() const { return Pins.Num() > 1 ? Pins[1] : nullptr; }
	UEdGraphPin* GetResultPin() const { return Pins.Num() > 2 ? Pins[2] : nullptr; }

	/** Whether the node returns a reference now (desired, and the element type allows it). */
	UE_API bool IsSetToReturnRef() const;
	UE_API void SetDesiredReturnType(bool bAsReference);

private:
	void PropagatePinType(const FEdGraphPinType& InType);
};

#undef UE_API
