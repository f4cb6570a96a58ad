#pragma once

#include "CoreMinimal.h"
#include "K2Node_StructOperation.h"

#define UE_API BLUEPRINTGRAPH_API

/** "Make <Struct>": a struct value from one input per member, each starting at the struct's default. */
class UK2Node_MakeStruct : public UK2Node_StructMemberSet
{
	DECLARE_CLASS(UK2Node_MakeStruct, UK2Node_StructMemberSet, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	/** Set on nodes made after members stopped being hideable one by one; kept for saved files. */
	bool bMadeAfterOverridePinRemoval = false;

	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual FText GetMenuCategory() const override;
	UE_API virtual bool IsNodePure() const override { return true; }
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;

	/** Whether a Make node may be built for the struct (Blueprint-visible and without a native make function). */
	static UE_API bool CanBeMade(const UScriptStruct* Struct, bool bForInternalUse = false);
	/** Whether the member gets an input. */
	static UE_API bool CanBeExposed(const FProperty* Property);
};

#undef UE_API
