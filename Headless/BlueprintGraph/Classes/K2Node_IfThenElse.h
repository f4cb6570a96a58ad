#pragma once

#include "CoreMinimal.h"
#include "K2Node.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/** "Branch": continues on True or False depending on a condition. */
class UK2Node_IfThenElse : public UK2Node
{
	DECLARE_CLASS(UK2Node_IfThenElse, UK2Node, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual FText GetKeywords() const override;
	UE_API virtual FText GetMenuCategory() const override;

	UE_API UEdGraphPin* GetElsePin() const;
	UE_API UEdGraphPin* GetConditionPin() const;
};

#undef UE_API
