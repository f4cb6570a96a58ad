#pragma once

#include "CoreMinimal.h"
#include "Templates/SharedPointer.h"
#include "UObject/Interface.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif

struct FEdGraphSchemaAction;

/** Marks node classes that are events, so that lists of a Blueprint's events can offer them. */
class UK2Node_EventNodeInterface : public UInterface
{
	DECLARE_CLASS(UK2Node_EventNodeInterface, UInterface, CLASS_Abstract | CLASS_Interface, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), BLUEPRINTGRAPH_API)
};

/** The native side of UK2Node_EventNodeInterface. */
class IK2Node_EventNodeInterface
{
public:
	using UClassType = UK2Node_EventNodeInterface;

	virtual ~IK2Node_EventNodeInterface() = default;

	/** The action that stands for this event in a list under ActionCategory (selecting it finds the node). */
	virtual TSharedPtr<FEdGraphSchemaAction> GetEventNodeAction(const FText& ActionCategory) = 0;
};
