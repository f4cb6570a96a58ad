#pragma once

#include "CoreMinimal.h"
#include "K2Node.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class UFunction;

/** Makes a delegate from a function or event of an object ("Create Event"), for binding to a dispatcher. */
class UK2Node_CreateDelegate : public UK2Node
{
	DECLARE_CLASS(UK2Node_CreateDelegate, UK2Node, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_CreateDelegate();

	/** The function or event the delegate calls. */
	FName SelectedFunctionName;
	FGuid SelectedFunctionGuid;

	// UEdGraphNode interface
	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual void PinConnectionListChanged(UEdGraphPin* Pin) override;
	UE_API virtual void PinTypeChanged(UEdGraphPin* Pin) override;
	UE_API virtual void NodeConnectionListChanged() override;
	UE_API virtual void PostReconstructNode() override;
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;
	// End of UEdGraphNode interface

	// UK2Node interface
	virtual bool IsNodePure() const override { return true; }
	UE_API virtual FText GetMenuCategory() const override;
	// End of UK2Node interface

	/** Whether the node names a bindable function matching the signature of what its output is wired to; OutMsg says why not. */
	UE_API bool IsValid(FString* OutMsg = nullptr, bool bDontUseSkeletalClassForSelf = false) const;

	/** Reports what IsValid finds wrong as a compiler error ("Signature Error: ..."). */
	UE_API void ValidationAfterFunctionsAreCreated(FCompilerResultsLog& MessageLog, bool bFullCompile) const;

	/** Re-resolves the selected function after something changed, forgetting it when it no longer fits. */
	UE_API void HandleAnyChange(bool bForceModify = false);
	/** As HandleAnyChange; OutGraph and OutBlueprint are set when the selection changed, else null. */
	UE_API void HandleAnyChange(UEdGraph*& OutGraph, UBlueprint*& OutBlueprint);
	UE_API void HandleAnyChangeWithoutNotifying();

	/** The signature the delegate must have: that of the delegate pin it is wired to, or null. */
	UE_API UFunction* GetDelegateSignature() const;

	/** The class whose function is selected: the class of the object wired to "self", or the Blueprint's own. */
	UE_API UClass* GetScopeClass(bool bDontUseSkeletalClassForSelf = false) const;

	UE_API FName GetFunctionName() const;
	UE_API UEdGraphPin* GetDelegateOutPin() const;
	UE_API UEdGraphPin* GetObjectInPin() const;

	/** Selects the function or event by name. */
	UE_API void SetFunction(FName Name);
};

#undef UE_API
