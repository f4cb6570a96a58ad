#pragma once

#include "CoreMinimal.h"
#include "K2Node.h"
#include "K2Node_AddPinInterface.h"
#include "UObject/ObjectPtr.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class UEnum;

/**
 * "Select": returns the option the index picks. The index is a wildcard until wired; an enum index gives one
 * option per visible entry, a bool index the options False and True. Options and result share one type.
 */
class UK2Node_Select : public UK2Node, public IK2Node_AddPinInterface
{
	DECLARE_CLASS(UK2Node_Select, UK2Node, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_Select();

	/** How many option pins the node has (enums decide it themselves). */
	int32 NumOptionPins = 2;
	/** The type of the index pin. */
	FEdGraphPinType IndexPinType;
	/** The enum the index is, if it is one. */
	TObjectPtr<UEnum> Enum;
	/** The option pin names of the enum's visible entries. */
	TArray<FName> EnumEntries;
	/** The display names of those entries. */
	TArray<FText> EnumEntryFriendlyNames;
	/** Set when the pins must be rebuilt once the connection changes are over. */
	bool bReconstructNode = false;

	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual FText GetMenuCategory() const override;
	UE_API virtual bool IsNodePure() const override { return true; }
	UE_API virtual void ReallocatePinsDuringReconstruction(TArray<UEdGraphPin*>& OldPins) override;
	UE_API virtual void PostReconstructNode() override;
	UE_API virtual void NotifyPinConnectionListChanged(UEdGraphPin* Pin) override;
	UE_API virtual void NodeConnectionListChanged() override;
	UE_API virtual void PinTypeChanged(UEdGraphPin* Pin) override;

	//~ IK2Node_AddPinInterface
	UE_API virtual void AddInputPin() override;
	UE_API virtual bool CanAddPin() const override;

	/** Removes the last option (the node is rebuilt with one option fewer). */
	UE_API void RemoveOptionPinToNode();
	UE_API bool CanRemoveOptionPinToNode() const;

	UE_API UEdGraphPin* GetReturnValuePin() const;
	UE_API UEdGraphPin* GetIndexPin() const;
	UE_API void GetOptionPins(TArray<UEdGraphPin*>& OptionPins) const;

	/** Makes the index an enum of this type (or clears it) and lists its entries. */
	UE_API void SetEnum(UEnum* InEnum, bool bForceRegenerate = false);
	UEnum* GetEnum() const { return Enum; }

	/** Whether the index or the shared option type may be changed by hand (nothing wired to them). */
	UE_API bool CanChangePinType(UEdGraphPin* Pin) const;
	/** Applies a new type set on a pin by hand. */
	UE_API void ChangePinType(UEdGraphPin* Pin);

private:
	void OnPinTypeChanged(UEdGraphPin* Pin);

	bool bReconstructForPinTypeChange = false;
};

#undef UE_API
