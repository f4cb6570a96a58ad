#pragma once

#include "CoreMinimal.h"
#include "K2Node_Variable.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/** The forms a variable getter can take: pure, or impure with branches on the value. */
enum class EGetNodeVariation : uint8
{
	/** No exec pins. */
	Pure,
	/** A bool read that branches: True / False. */
	Branch,
	/** An object or class read that branches on validity: Is Valid / Is Not Valid. */
	ValidatedObject,
};

/** Reads a variable ("Get Health"). */
class UK2Node_VariableGet : public UK2Node_Variable
{
	DECLARE_CLASS(UK2Node_VariableGet, UK2Node_Variable, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_VariableGet();

	// UEdGraphNode interface
	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	/** Reports reads of members that Blueprints may not see, or private members of another class. */
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;
	// End of UEdGraphNode interface

	// UK2Node interface
	virtual bool IsNodePure() const override { return CurrentVariation == EGetNodeVariation::Pure; }
	virtual bool ShouldDrawCompact() const override { return IsNodePure(); }
	// End of UK2Node interface

	/** Makes the node pure, or impure in the form its type supports (nothing changes for types without one). */
	UE_API void SetPurity(bool bNewPurity);

	EGetNodeVariation GetCurrentVariation() const { return CurrentVariation; }

	/** "Read the value of variable X", with the property's own tooltip when it has one. */
	static UE_API FText GetPropertyTooltip(const FProperty* VariableProperty);

private:
	/** Creates the exec pins of an impure form, settling CurrentVariation on what the variable's type supports. */
	void CreateImpurePins();

	EGetNodeVariation CurrentVariation = EGetNodeVariation::Pure;
};

#undef UE_API
