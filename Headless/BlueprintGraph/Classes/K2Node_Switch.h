#pragma once

#include "CoreMinimal.h"
#include "K2Node.h"
#include "Templates/SubclassOf.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/**
 * Base of the switch nodes: an exec input, a selection value and one exec output per case, plus an optional
 * "Default" output. Cases compare through FunctionName of FunctionClass, held by a hidden input named after it.
 */
class UK2Node_Switch : public UK2Node
{
	DECLARE_CLASS(UK2Node_Switch, UK2Node, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_Switch();

	/** Whether the node has a "Default" output taken when no case matches. */
	bool bHasDefaultPin = true;
	/** The comparison function, a member of FunctionClass. */
	FName FunctionName;
	TSubclassOf<UObject> FunctionClass;

	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetMenuCategory() const override;

	/** Adds a case output with the next free name. */
	UE_API virtual void AddPinToSwitchNode();
	/** Removes a case output (or the default output, which rebuilds the node without it). */
	UE_API virtual void RemovePinFromSwitchNode(UEdGraphPin* TargetPin);
	/** Whether the output may be removed: at least one output stays. */
	UE_API virtual bool CanRemoveExecutionPin(UEdGraphPin* TargetPin) const;

	/** Turns the default output on or off, keeping the links of the other pins. */
	UE_API void SetHasDefaultPin(bool bInHasDefaultPin);

	/** The type a selection value must have. */
	virtual FEdGraphPinType GetPinType() const { return FEdGraphPinType(); }
	/** The name of case output Index. */
	UE_API virtual FName GetPinNameGivenIndex(int32 Index) const;

	UE_API UEdGraphPin* GetSelectionPin() const;
	UE_API UEdGraphPin* GetFunctionPin() const;
	UE_API UEdGraphPin* GetDefaultPin() const;
	UE_API static FName GetSelectionPinName();

	/** The text a case compares with. */
	UE_API virtual FString GetExportTextForPin(const UEdGraphPin* Pin) const;

protected:
	virtual void CreateSelectionPin() {}
	virtual void CreateCasePins() {}
	virtual FName GetUniquePinName() { return NAME_None; }
	/** Forgets a case output that is being removed (its name list entry, say). */
	virtual void RemovePin(UEdGraphPin* TargetPin) {}

	UE_API void CreateFunctionPin();
};

#undef UE_API
