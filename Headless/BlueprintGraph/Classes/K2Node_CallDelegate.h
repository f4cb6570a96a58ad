#pragma once

#include "CoreMinimal.h"
#include "K2Node_BaseMCDelegate.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/** Calls every event bound to a dispatcher ("Call OnDoorOpened"), with the dispatcher's parameters as inputs. */
class UK2Node_CallDelegate : public UK2Node_BaseMCDelegate
{
	DECLARE_CLASS(UK2Node_CallDelegate, UK2Node_BaseMCDelegate, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_CallDelegate();

	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;

	/** One input per parameter of Function; false if a parameter has no pin type. */
	UE_API bool CreatePinsForFunctionInputs(const UFunction* Function);
};

#undef UE_API
