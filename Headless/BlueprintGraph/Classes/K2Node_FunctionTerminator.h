#pragma once

#include "CoreMinimal.h"
#include "Engine/MemberReference.h"
#include "K2Node_EditablePinBase.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/** Base of the entry and result nodes of a function graph. */
class UK2Node_FunctionTerminator : public UK2Node_EditablePinBase
{
	DECLARE_CLASS(UK2Node_FunctionTerminator, UK2Node_EditablePinBase, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_FunctionTerminator();

	/**
	 * The function whose signature the node follows: an inherited or interface function it implements. A function
	 * the user declares names no class here; its parameters are the node's user-defined pins.
	 */
	FMemberReference FunctionReference;

	// UEdGraphNode interface
	virtual bool CanDuplicateNode() const override { return false; }
	virtual bool CanUserDeleteNode() const override { return false; }
	// End of UEdGraphNode interface

	// UK2Node_EditablePinBase interface
	UE_API virtual bool CanCreateUserDefinedPin(const FEdGraphPinType& InPinType, EEdGraphPinDirection InDesiredDirection, FText& OutErrorMessage) override;
	virtual bool CanUseRef() const override { return true; }
	// End of UK2Node_EditablePinBase interface

	/** The function of the signature, resolved against the node's Blueprint, or null. */
	UE_API UFunction* FindSignatureFunction() const;

	/** The name of the graph's function. */
	UE_API virtual FName GetFunctionName() const;

protected:
	/** A user pin made from a declaration, in Direction, with its default value. */
	UE_API UEdGraphPin* CreateUserPin(const TSharedPtr<FUserPinInfo>& NewPinInfo, EEdGraphPinDirection Direction);
};

#undef UE_API
