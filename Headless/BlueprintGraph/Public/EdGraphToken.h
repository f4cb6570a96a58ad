#pragma once

#include "CoreMinimal.h"
#include "Containers/Array.h"
#include "Logging/TokenizedMessage.h"
#include "Misc/Guid.h"
#include "UObject/WeakObjectPtr.h"

class FCompilerResultsLog;
class FField;
class UEdGraphNode;
class UEdGraphPin;
class UObject;

/** A message token naming a node, a pin or another object of a graph. */
class FEdGraphToken : public IMessageToken
{
public:
	/** Adds a token for the object (mapped back to its source through the log) and records the node it names. */
	UNREALED_API static void Create(const UObject* InObject, FCompilerResultsLog* Log, FTokenizedMessage& OutMessage, TArray<UEdGraphNode*>& OutSourceNodes);
	UNREALED_API static void Create(const UEdGraphPin* InPin, FCompilerResultsLog* Log, FTokenizedMessage& OutMessage, TArray<UEdGraphNode*>& OutSourceNodes);
	/** Plain text in place of the marker. */
	UNREALED_API static void Create(const TCHAR* String, FCompilerResultsLog* Log, FTokenizedMessage& OutMessage, TArray<UEdGraphNode*>& OutSourceNodes);
	/** A property or other field: its display name. */
	UNREALED_API static void Create(const FField* InField, FCompilerResultsLog* Log, FTokenizedMessage& OutMessage, TArray<UEdGraphNode*>& OutSourceNodes);

	virtual EMessageToken::Type GetType() const override { return EMessageToken::EdGraph; }

	/** The node or object named; null once it is gone. */
	UNREALED_API const UObject* GetGraphObject() const;
	/** The pin named, or null when the token names an object. The pin is owned by the node, so it is checked through it. */
	UNREALED_API const UEdGraphPin* GetPin() const;

private:
	FEdGraphToken(const UObject* InObject, const UEdGraphPin* InPin);

	static void CreateInternal(const UObject* InObject, FCompilerResultsLog* Log, FTokenizedMessage& OutMessage, TArray<UEdGraphNode*>& OutSourceNodes, const UEdGraphPin* Pin);

	TWeakObjectPtr<const UObject> ObjectBeingReferenced;
	/** The pin, held by its node and id so that a pin freed by a reconstruction is never reached. */
	TWeakObjectPtr<const UEdGraphNode> PinOwner;
	FGuid PinGuid;
};
