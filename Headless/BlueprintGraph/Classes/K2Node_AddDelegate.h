#pragma once

#include "CoreMinimal.h"
#include "K2Node_BaseMCDelegate.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/** Binds an event to a dispatcher ("Bind Event to OnDoorOpened"). */
class UK2Node_AddDelegate : public UK2Node_BaseMCDelegate
{
	DECLARE_CLASS(UK2Node_AddDelegate, UK2Node_BaseMCDelegate, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_AddDelegate();

	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
};

#undef UE_API
