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
	UE_API virtual FText GetTooltipText() const override;
	/** A function may have several return nodes; an inherited signature's last one stays. */
	UE_API virtual bool CanUserDeleteNode() const override;
	virtual bool CanDuplicateNode() const override { return true; }
	/** Takes the signature of the function's entry and the user outputs of an existing return node. */
	UE_API virtual void PostPlacedNewNode() override;
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;
	// End of UEdGraphNode interface

	// UK2Node_EditablePinBase interface
	UE_API virtual UEdGraphPin* CreatePinFromUserDefinition(const TSharedPtr<FUserPinInfo> NewPinInfo) override;
	UE_API virtual bool CanCreateUserDefinedPin(const FEdGraphPinType& InPinType, EEdGraphPinDirection InDesiredDirection, FText& OutErrorMessage) override;
	virtual bool CanUseRef() const override { return false; }
	// End of UK2Node_EditablePinBase interface

	/** The other return nodes of the same graph. */
	UE_API TArray<UK2Node_FunctionResult*> GetAllResultNodes() const;

	/** Adopts the entry node's function reference and editability (dropping user pins an inherited signature forbids). */
	UE_API void SyncWithEntryNode();
	/** Matches this node's user-defined pins to those of another return node of the graph. */
	UE_API void SyncWithPrimaryResultNode();
	/** Records every value pin as a user-defined pin when the node is editable. */
	UE_API void MakePinsEditable();
};

#undef UE_API
