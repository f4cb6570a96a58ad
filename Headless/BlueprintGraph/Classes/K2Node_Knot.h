#pragma once

#include "CoreMinimal.h"
#include "K2Node.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/** A reroute node: one wildcard input passed through to one output, typed by what it is wired to. */
class UK2Node_Knot : public UK2Node
{
	DECLARE_CLASS(UK2Node_Knot, UK2Node, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual bool IsNodePure() const override { return true; }
	UE_API virtual bool ShouldOverridePinNames() const override { return true; }
	UE_API virtual FText GetPinNameOverride(const UEdGraphPin& Pin) const override;
	UE_API virtual void OnRenameNode(const FString& NewName) override;
	UE_API virtual void NotifyPinConnectionListChanged(UEdGraphPin* Pin) override;
	UE_API virtual void PostReconstructNode() override;

	/** The pin on the other side of the knot. */
	UE_API UEdGraphPin* GetPassThroughPin(const UEdGraphPin* FromPin) const;

	UEdGraphPin* GetInputPin() const { return Pins.Num() > 0 ? Pins[0] : nullptr; }
	UEdGraphPin* GetOutputPin() const { return Pins.Num() > 1 ? Pins[1] : nullptr; }

private:
	/** Gives both pins the type of the first typed link found on either side, or makes them wildcards again. */
	void PropagatePinType();
	/** Copies the type of the first link on one side to both pins and passes it on along a chain of knots. */
	void PropagatePinTypeFromDirection(bool bFromInput);

	bool bRecursionGuard = false;
};

#undef UE_API
