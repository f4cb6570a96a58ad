#pragma once

#include "CoreMinimal.h"
#include "K2Node_GetEnumeratorName.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/** "Enum to String": the display name of the entry an enum value holds, inserted for an enum wired into a string. */
class UK2Node_GetEnumeratorNameAsString : public UK2Node_GetEnumeratorName
{
	DECLARE_CLASS(UK2Node_GetEnumeratorNameAsString, UK2Node_GetEnumeratorName, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_GetEnumeratorNameAsString();

	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetMenuCategory() const override;
	UE_API virtual FName GetFunctionName() const override;
};

#undef UE_API
