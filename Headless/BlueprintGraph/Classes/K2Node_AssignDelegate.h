#pragma once

#include "CoreMinimal.h"
#include "K2Node_AddDelegate.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/** Binds a new custom event to a dispatcher in one step ("Assign OnDoorOpened"). */
class UK2Node_AssignDelegate : public UK2Node_AddDelegate
{
	DECLARE_CLASS(UK2Node_AssignDelegate, UK2Node_AddDelegate, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_AssignDelegate();

	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetMenuCategory() const override;
	/** Places a custom event of the dispatcher's signature beside the node and binds it. */
	UE_API virtual void PostPlacedNewNode() override;
};

#undef UE_API
