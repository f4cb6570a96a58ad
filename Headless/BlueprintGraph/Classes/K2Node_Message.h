#pragma once

#include "CoreMinimal.h"
#include "K2Node_CallFunction.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/**
 * Calls an interface function on any object: the target need not be known to implement the interface, and when it
 * does not, the call does nothing and the outputs keep their defaults. Listed as "<Function> (Message)".
 */
class UK2Node_Message : public UK2Node_CallFunction
{
	DECLARE_CLASS(UK2Node_Message, UK2Node_CallFunction, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_Message();

	// UEdGraphNode interface
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	// End of UEdGraphNode interface

	/** The target is any object, not the interface: the point of a message is that it may not be implemented. */
	UE_API virtual UEdGraphPin* CreateSelfPin(const UFunction* Function) override;
};

#undef UE_API
