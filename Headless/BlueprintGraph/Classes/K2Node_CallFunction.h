#pragma once

#include "CoreMinimal.h"
#include "Engine/MemberReference.h"
#include "K2Node.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class UFunction;

/** Whether the user forced a call node pure or impure, or left it as the function says. */
enum class ENodePurityOverride : int8
{
	Unset = 0,
	Pure,
	Impure
};

/** A call of a function: one pin per parameter, exec pins unless pure, and "self" (shown as Target). */
class UK2Node_CallFunction : public UK2Node
{
	DECLARE_CLASS(UK2Node_CallFunction, UK2Node, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_CallFunction();

	/** The function is BlueprintPure, so the node is pure unless the user overrides it. */
	bool bDefaultsToPureFunc = false;

	/** An ExpandEnumAsExecs/ExpandBoolAsExecs parameter turns into exec pins. */
	bool bWantsEnumToExecExpansion = false;

	/** The function to call. */
	FMemberReference FunctionReference;

	// UEdGraphNode interface
	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual FText GetKeywords() const override;
	UE_API virtual void PostReconstructNode() override;
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;
	UE_API virtual FString GetDocumentationLink() const override;
	UE_API virtual void PinDefaultValueChanged(UEdGraphPin* Pin) override;
	// End of UEdGraphNode interface

	// UK2Node interface
	UE_API virtual bool IsNodePure() const override;
	UE_API virtual bool AllowMultipleSelfs(bool bInputAsArray) const override;
	UE_API virtual bool ShouldDrawCompact() const override;
	UE_API virtual FText GetCompactNodeTitle() const override;
	UE_API virtual FText GetMenuCategory() const override;
	UE_API virtual bool ShouldShowNodeProperties() const override;
	UE_API virtual void NotifyPinConnectionListChanged(UEdGraphPin* Pin) override;
	/** Internal-use parameters take no wire, and a wildcard parameter never takes an exec wire. */
	UE_API virtual bool IsConnectionDisallowed(const UEdGraphPin* MyPin, const UEdGraphPin* OtherPin, FString& OutReason) const override;
	// End of UK2Node interface

	/** The function this node calls, resolved against the node's Blueprint; null when it no longer exists. */
	UE_API UFunction* GetTargetFunction() const;

	UE_API UEdGraphPin* GetReturnValuePin() const;

	/** True if the function completes later (Latent metadata). */
	UE_API bool IsLatentFunction() const;

	/** Creates the "self" input for a call of Function. */
	UE_API virtual UEdGraphPin* CreateSelfPin(const UFunction* Function);

	/** Creates every pin a call of Function needs; false if a parameter has no pin type. */
	UE_API bool CreatePinsForFunctionCall(const UFunction* Function);

	/** Creates the exec pins: execute and then, or one per entry of an expanded enum or bool. */
	UE_API void CreateExecPinsForFunctionCall(const UFunction* Function);

	UE_API FName GetFunctionName() const;

	/** Lets subclasses adjust each parameter pin as it is made. */
	virtual void PostParameterPinCreated(UEdGraphPin* Pin) {}

	/** The function's name as titles show it. */
	static UE_API FText GetUserFacingFunctionName(const UFunction* Function, ENodeTitleType::Type NodeTitleType = ENodeTitleType::EditableTitle);
	static UE_API FString GetDefaultTooltipForFunction(const UFunction* Function);
	/** The action-menu category of the function, below BaseCategory. */
	static UE_API FText GetDefaultCategoryForFunction(const UFunction* Function, const FText& BaseCategory);
	/** The words the action menu matches: the function's name, its compact title and its Keywords metadata. */
	static UE_API FText GetKeywordsForFunction(const UFunction* Function);
	static UE_API bool ShouldDrawCompact(const UFunction* Function);
	/** The compact title, with the programmer's operators replaced by the usual signs (* becomes ×). */
	static UE_API FString GetCompactNodeTitle(const UFunction* Function);
	static UE_API void GetExpandEnumPinNames(const UFunction* Function, TArray<FName>& EnumNamesToCheck);
	/** A call can take an array of targets when it is impure, not latent and returns nothing. */
	static UE_API bool CanFunctionSupportMultipleTargets(const UFunction* Function);

	/** "Target is X", shown under the title when the target pin is visible. */
	UE_API virtual FText GetFunctionContextString() const;

	/** Points the node at Function (purity, enum expansion and the reference); pins are made later. */
	UE_API virtual void SetFromFunction(const UFunction* Function);

	/** Parameters marked required (UPARAM(Required)), which must be linked. */
	static UE_API TSet<FName> GetRequiredParamNames(const UFunction* ForFunction);

	/**
	 * Gives the pins of each SetParam group, and a MapParam map with its key and value pins, the type of the first
	 * of them that is wired or holds a value; with none, they are wildcards again.
	 */
	UE_API void ConformContainerPins();

	/** CustomStructureParam pins take the type of what they are wired to, or are wildcards (SinglePin: just that one). */
	UE_API void UpdateCustomStructurePins(UEdGraphPin* SinglePin = nullptr);

	/** The class input named by DeterminesOutputType metadata, or null. */
	UE_API UEdGraphPin* GetTypePickerPin() const;

	/** Gives the outputs DeterminesOutputType governs the class picked on the type picker pin. */
	UE_API void ConformDynamicOutputs();

	ENodePurityOverride GetNodePurityOverride() const { return NodePurityOverride; }
	/** Forces the node pure or impure (only a function with outputs can be made pure); reconstructs the node. */
	UE_API void SetNodePurityOverride(ENodePurityOverride NewOverride);

protected:
	UE_API virtual bool CanToggleNodePurity() const;
	UE_API void ValidateRequiredPins(const UFunction* Function, FCompilerResultsLog& MessageLog) const;
	UE_API bool FunctionHasOutputs() const;
	UE_API bool AreExecPinsVisible() const;

private:
	UE_API void DetermineWantsEnumToExecExpansion(const UFunction* Function);

	ENodePurityOverride NodePurityOverride = ENodePurityOverride::Unset;

	/** Why enum expansion failed while pins were made; reported when the node is validated. */
	FString PendingExpansionWarning;
};

#undef UE_API
