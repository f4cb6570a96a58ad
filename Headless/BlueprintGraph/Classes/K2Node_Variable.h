#pragma once

#include "CoreMinimal.h"
#include "Engine/MemberReference.h"
#include "K2Node.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

struct FBPVariableDescription;

/** Whether a variable node may read its variable from self. */
enum class ESelfContextInfo : uint8
{
	Unspecified,
	NotSelfContext,
};

/** Base of the nodes that read or write a variable (a member of a class or a local variable of a function). */
class UK2Node_Variable : public UK2Node
{
	DECLARE_CLASS(UK2Node_Variable, UK2Node, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_Variable();

	/** The variable the node reads or writes. */
	FMemberReference VariableReference;

	/** Whether self may hold the variable. */
	ESelfContextInfo SelfContextInfo = ESelfContextInfo::Unspecified;

	// UEdGraphNode interface
	UE_API virtual void ReconstructNode() override;
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;
	UE_API virtual FString GetDocumentationLink() const override;
	// End of UEdGraphNode interface

	// UK2Node interface
	virtual bool NodeCausesStructuralBlueprintChange() const override { return false; }
	// End of UK2Node interface

	/** Points the node at Property: read from self, or from objects of OwnerClass (the property's class by default). */
	UE_API void SetFromProperty(const FProperty* Property, bool bSelfContext, UClass* OwnerClass);

	FName GetVarName() const { return VariableReference.GetMemberName(); }
	FString GetVarNameString() const { return GetVarName().ToString(); }
	FText GetVarNameText() const { return FText::FromName(GetVarName()); }

	/** The class the variable belongs to: the Blueprint's class for self variables. */
	UE_API UClass* GetVariableSourceClass() const;

	/** The property of the variable, or null when it cannot be found. */
	UE_API FProperty* GetPropertyForVariable() const;

	/** The pin carrying the variable's value (an output on a getter, the input on a setter). */
	UE_API UEdGraphPin* GetValuePin() const;

	/** The Blueprint's description of the variable (a member or a local variable), if a Blueprint declares it. */
	UE_API const FBPVariableDescription* GetBlueprintVarDescription() const;

	/** Reports a variable of another object read without a target. */
	UE_API void CheckForErrors(const UEdGraphSchema_K2* Schema, FCompilerResultsLog& MessageLog);

	/** Follows a rename of the variable in InBlueprint: the reference and the value pin take the new name. */
	UE_API void HandleVariableRenamed(UBlueprint* InBlueprint, UClass* InVariableClass, UEdGraph* InGraph, const FName& InOldVarName, const FName& InNewVarName);

	/** True if the node uses the variable InVarName (of InScope, when given). */
	UE_API bool ReferencesVariable(const FName& InVarName, const UStruct* InScope) const;

protected:
	/** Creates the value pin of the variable; false when the variable cannot be found. */
	UE_API bool CreatePinForVariable(EEdGraphPinDirection Direction, FName InPinName = NAME_None);

	/** Creates "self" (shown as Target), hidden when the variable is read from self. */
	UE_API void CreatePinForSelf();
};

#undef UE_API
