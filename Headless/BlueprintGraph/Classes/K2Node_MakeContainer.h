#pragma once

#include "CoreMinimal.h"
#include "K2Node.h"
#include "K2Node_AddPinInterface.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/** Base of the nodes that build a container from loose inputs "[0]", "[1]"...: one wildcard type for all. */
class UK2Node_MakeContainer : public UK2Node, public IK2Node_AddPinInterface
{
	DECLARE_CLASS(UK2Node_MakeContainer, UK2Node, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	/** How many element inputs the node has. */
	int32 NumInputs = 1;

	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual bool IsNodePure() const override { return true; }
	UE_API virtual void ReallocatePinsDuringReconstruction(TArray<UEdGraphPin*>& OldPins) override;
	UE_API virtual void PostReconstructNode() override;
	UE_API virtual void NotifyPinConnectionListChanged(UEdGraphPin* Pin) override;

	//~ IK2Node_AddPinInterface
	UE_API virtual void AddInputPin() override;
	UE_API virtual bool CanAddPin() const override;
	UE_API virtual void RemoveInputPin(UEdGraphPin* Pin) override;
	UE_API virtual bool CanRemovePin(const UEdGraphPin* Pin) const override;

	UE_API UEdGraphPin* GetOutputPin() const;
	/** The name of element input Index: "[Index]". */
	UE_API FName GetPinName(const int32 PinIndex) const;
	virtual FName GetOutputPinName() const { return NAME_None; }

	/** Gives every element the output's element type, keeping values that still fit. */
	UE_API void PropagatePinType();

protected:
	EPinContainerType ContainerType = EPinContainerType::None;

private:
	void SyncPinNames();
};

/** "Make Array": an array of its inputs, in order. */
class UK2Node_MakeArray : public UK2Node_MakeContainer
{
	DECLARE_CLASS(UK2Node_MakeArray, UK2Node_MakeContainer, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_MakeArray();

	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual FText GetMenuCategory() const override;
	UE_API virtual FText GetKeywords() const override;
	UE_API virtual FName GetOutputPinName() const override;
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;

	/** For a node made to convert one value into an array: fixes the types from that value. */
	UE_API void SetElementType(const FEdGraphPinType& ElementType);
};

#undef UE_API
