#pragma once

#include "CoreMinimal.h"
#include "K2Node_Variable.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/** Writes a variable ("Set Health"); its unlabeled output hands the new value on. */
class UK2Node_VariableSet : public UK2Node_Variable
{
	DECLARE_CLASS(UK2Node_VariableSet, UK2Node_Variable, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_VariableSet();

	// UEdGraphNode interface
	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	virtual bool ShouldOverridePinNames() const override { return true; }
	UE_API virtual FText GetPinNameOverride(const UEdGraphPin& Pin) const override;
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;
	// End of UEdGraphNode interface

	/** The name of the pass-through output. */
	UE_API FName GetVariableOutputPinName() const;

	/** True when the variable is a Blueprint variable with a RepNotify function that takes nothing. */
	UE_API bool HasLocalRepNotify() const;
	UE_API FName GetRepNotifyName() const;
	UE_API bool IsNetProperty() const;
	/** True when setting the variable broadcasts a field notification. */
	UE_API bool IsFieldNotifyProperty() const;
};

#undef UE_API
