#pragma once

#include "CoreMinimal.h"
#include "K2Node_StructOperation.h"

#define UE_API BLUEPRINTGRAPH_API

/** "Break <Struct>": one output per member a Blueprint can read. */
class UK2Node_BreakStruct : public UK2Node_StructMemberGet
{
	DECLARE_CLASS(UK2Node_BreakStruct, UK2Node_StructMemberGet, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	bool bMadeAfterOverridePinRemoval = false;

	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual FText GetMenuCategory() const override;
	UE_API virtual bool IsNodePure() const override { return true; }
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;

	/** Whether a Break node may be built for the struct (Blueprint-visible and without a native break function). */
	static UE_API bool CanBeBroken(const UScriptStruct* Struct, bool bForInternalUse = false);
	static UE_API bool CanBeExposed(const FProperty* Property);
};

#undef UE_API
