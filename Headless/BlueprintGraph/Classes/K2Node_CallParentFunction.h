#pragma once

#include "CoreMinimal.h"
#include "K2Node_CallFunction.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/** Calls the parent class's version of the function being overridden ("Parent: BeginPlay"). */
class UK2Node_CallParentFunction : public UK2Node_CallFunction
{
	DECLARE_CLASS(UK2Node_CallParentFunction, UK2Node_CallFunction, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_CallParentFunction();

	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual void AllocateDefaultPins() override;
	/** Always names the parent class: the call must not become a call of this Blueprint's own override. */
	UE_API virtual void SetFromFunction(const UFunction* Function) override;
};

#undef UE_API
