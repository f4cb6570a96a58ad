#pragma once

#include "CoreMinimal.h"
#include "Engine/MemberReference.h"
#include "K2Node.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class FMulticastDelegateProperty;
class UFunction;

/** Base of the nodes that act on an event dispatcher (a multicast delegate property): bind, unbind, clear, call. */
class UK2Node_BaseMCDelegate : public UK2Node
{
	DECLARE_CLASS(UK2Node_BaseMCDelegate, UK2Node, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_BaseMCDelegate();

	/** The dispatcher the node acts on. */
	FMemberReference DelegateReference;

	// UEdGraphNode interface
	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;
	UE_API virtual FString GetDocumentationLink() const override;
	// End of UEdGraphNode interface

	// UK2Node interface
	virtual bool IsNodePure() const override { return false; }
	virtual bool AllowMultipleSelfs(bool bInputAsArray) const override { return true; }
	UE_API virtual FText GetMenuCategory() const override;
	// End of UK2Node interface

	/** The signature of the dispatcher, from the skeleton class of a Blueprint dispatcher unless told otherwise. */
	UE_API UFunction* GetDelegateSignature(bool bForceNotFromSkelClass = false) const;

	/** The "Delegate" input of bind and unbind nodes. */
	UE_API UEdGraphPin* GetDelegatePin() const;

	/** True when only the server may call or bind the dispatcher. */
	UE_API bool IsAuthorityOnly() const;

	/** Points the node at Property: on self, or on objects of OwnerClass (the property's class by default). */
	UE_API void SetFromProperty(const FProperty* Property, bool bSelfContext, UClass* OwnerClass);

	UE_API FProperty* GetProperty() const;
	FName GetPropertyName() const { return DelegateReference.GetMemberName(); }
	/** The dispatcher's display name, or its name when it cannot be found. */
	UE_API FText GetPropertyDisplayName() const;

	/** The name of the delegate input of bind and unbind nodes. */
	static UE_API const FName DelegatePinName;
};

#undef UE_API
