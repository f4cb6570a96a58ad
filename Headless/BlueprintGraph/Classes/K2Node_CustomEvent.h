#pragma once

#include "CoreMinimal.h"
#include "K2Node_Event.h"
#include "Math/Vector2D.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/** An event the user declares and names, with the parameters the user gives it. */
class UK2Node_CustomEvent : public UK2Node_Event
{
	DECLARE_CLASS(UK2Node_CustomEvent, UK2Node_Event, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_CustomEvent();

	FString DeprecationMessage;
	bool bIsDeprecated = false;
	/** The event can be run from the editor's details panel. */
	bool bCallInEditor = false;

	// UEdGraphNode interface
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual void OnRenameNode(const FString& NewName) override;
	UE_API virtual void ReconstructNode() override;
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;
	// End of UEdGraphNode interface

	// UK2Node_EditablePinBase interface
	UE_API virtual UEdGraphPin* CreatePinFromUserDefinition(const TSharedPtr<FUserPinInfo> NewPinInfo) override;
	UE_API virtual bool CanCreateUserDefinedPin(const FEdGraphPinType& InPinType, EEdGraphPinDirection InDesiredDirection, FText& OutErrorMessage) override;
	// End of UK2Node_EditablePinBase interface

	/** Whether the event re-implements a custom event of a parent Blueprint. */
	UE_API bool IsOverride() const;

	/** The replication flags the event's function gets (a parent's custom event decides for an override). */
	UE_API uint32 GetNetFlags() const;

	/** Gives the event the parameters of a delegate signature, as when it is made from a delegate pin. */
	UE_API void SetDelegateSignature(const UFunction* DelegateSignature);

	/**
	 * Places a custom event named Name in ParentGraph at GraphPosition, with one parameter per input of Function
	 * (a delegate signature, to bind the event to). Null without a graph or function.
	 */
	static UE_API UK2Node_CustomEvent* CreateFromFunction(FVector2D GraphPosition, UEdGraph* ParentGraph, const FString& Name, const UFunction* Function, bool bSelectNewNode = true);

	/** Names the node after its custom function name with the first free "_N" suffix from StartIndex. */
	UE_API void RenameCustomEventCloseToName(int32 StartIndex = 1);
};

#undef UE_API
