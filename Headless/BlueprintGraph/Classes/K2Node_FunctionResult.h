#pragma once

#include "CoreMinimal.h"
#include "K2Node_FunctionTerminator.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/** The return node of a function graph: "execute" and the function's outputs as inputs. */
class UK2Node_FunctionResult : public UK2Node_FunctionTerminator
{
	DECLARE_CLASS(UK2Node_FunctionResult, UK2Node_FunctionTerminator, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_FunctionResult();

	// UEdGraphNode interface
	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	/** A function may have several return nodes; all but the last may be deleted. */
	virtual bool CanUserDeleteNode() const override { return true; }
	virtual bool CanDuplicateNode() const override { return true; }
	// End of UEdGraphNode interface

	// UK2Node_EditablePinBase interface
	UE_API virtual UEdGraphPin* CreatePinFromUserDefinition(const TSharedPtr<FUserPinInfo> NewPinInfo) override;
	UE_API virtual bool CanCreateUserDefinedPin(const FEdGraphPinType& InPinType, EEdGraphPinDirection InDesiredDirection, FText& OutErrorMessage) override;
	virtual bool CanUseRef() const override { return false; }
	// End of UK2Node_EditablePinBase interface

	/** The other return nodes of the same graph. */
	UE_API TArray<UK2Node_FunctionResult*> GetAllResultNodes() const;
};

#undef UE_API
