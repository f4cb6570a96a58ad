#pragma once

#include "CoreMinimal.h"
#include "UObject/NameTypes.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif

class UEdGraphPin;

/**
 * Nodes whose inputs the user can add to (the "Add pin" button). A plain C++ mixin here: find it on a node
 * with dynamic_cast<IK2Node_AddPinInterface*>.
 */
class IK2Node_AddPinInterface
{
public:
	virtual ~IK2Node_AddPinInterface() = default;

	/** Adds one more input pin. */
	virtual void AddInputPin() = 0;

	/** Whether another input may be added now. */
	virtual bool CanAddPin() const { return true; }

	/** Whether the given added pin may be removed. */
	virtual bool CanRemovePin(const UEdGraphPin* Pin) const { return true; }

	/** Removes an added pin. */
	virtual void RemoveInputPin(UEdGraphPin* Pin) {}

	/** The name the editor gives the additional input at PinIndex: "A", "B", "C"... */
	static BLUEPRINTGRAPH_API FName GetNameForAdditionalPin(int32 PinIndex);

	/** The most inputs any such node may have. */
	static constexpr int32 MaxInputPins = 64;
};
