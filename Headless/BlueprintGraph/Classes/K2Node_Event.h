#pragma once

#include "CoreMinimal.h"
#include "Engine/MemberReference.h"
#include "K2Node_EditablePinBase.h"
#include "K2Node_EventNodeInterface.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/** Where a graph starts running: an implementation of an event the class declares ("Event BeginPlay"). */
class UK2Node_Event : public UK2Node_EditablePinBase, public IK2Node_EventNodeInterface
{
	DECLARE_CLASS(UK2Node_Event, UK2Node_EditablePinBase, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_Event();

	/** The name of the delegate output, which binds the event elsewhere. */
	static UE_API const FName DelegateOutputName;

	/** The event function this node implements. */
	FMemberReference EventReference;

	/** Implements an inherited or interface event rather than declaring one of its own. */
	bool bOverrideFunction = false;

	/** Made by the compiler or another node, not placed by the user. */
	bool bInternalEvent = false;

	/** The name of the event the node declares (custom events), used instead of the reference's name. */
	FName CustomFunctionName;

	/** Flags of the function the event becomes (replication, access). */
	uint32 FunctionFlags = 0;

	// UEdGraphNode interface
	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual FText GetKeywords() const override;
	UE_API virtual void PostReconstructNode() override;
	UE_API virtual void PinConnectionListChanged(UEdGraphPin* Pin) override;
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;
	UE_API virtual FString GetDocumentationLink() const override;
	// End of UEdGraphNode interface

	// UK2Node interface
	virtual bool NodeCausesStructuralBlueprintChange() const override { return true; }
	// End of UK2Node interface

	/** The name of the function the event compiles to. */
	UE_API FName GetFunctionName() const;

	/** The signature the event follows, resolved against the node's Blueprint; null if it is gone. */
	UE_API UFunction* FindEventSignatureFunction() const;

	/** Points the delegate output at the event's signature. */
	UE_API void UpdateDelegatePin(bool bSilent = false);

	UEdGraphPin* GetDelegatePin() const { return FindPin(DelegateOutputName); }

	/** After a reparenting, re-points an override at the class that now declares the event. */
	UE_API void FixupEventReference(bool bForce = false);

	// IK2Node_EventNodeInterface
	UE_API virtual TSharedPtr<FEdGraphSchemaAction> GetEventNodeAction(const FText& ActionCategory) override;

	/** The replication text of a title ("Replicated To All (if server)"); bCalling for a call, else for the event. */
	static UE_API FText GetLocalizedNetString(uint32 NetFlags, bool bCalling);
};

#undef UE_API
