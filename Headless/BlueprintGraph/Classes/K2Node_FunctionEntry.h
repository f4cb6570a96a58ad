#pragma once

#include "CoreMinimal.h"
#include "Engine/Blueprint.h"
#include "K2Node_FunctionTerminator.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/** The entry of a function graph: "then" and the function's inputs as outputs. */
class UK2Node_FunctionEntry : public UK2Node_FunctionTerminator
{
	DECLARE_CLASS(UK2Node_FunctionEntry, UK2Node_FunctionTerminator, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_FunctionEntry();

	/** When set, the compiled function takes this name instead of the signature's. */
	FName CustomGeneratedFunctionName;

	/** The user's metadata for the function (category, tooltip, keywords...). */
	FKismetUserDeclaredFunctionMetadata MetaData;

	/** The function's local variables. */
	TArray<FBPVariableDescription> LocalVariables;

	/** Whether a const override may not change the object. */
	bool bEnforceConstCorrectness = true;

	// UEdGraphNode interface
	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual bool GetCanRenameNode() const override;
	// End of UEdGraphNode interface

	// UK2Node_EditablePinBase interface
	UE_API virtual UEdGraphPin* CreatePinFromUserDefinition(const TSharedPtr<FUserPinInfo> NewPinInfo) override;
	UE_API virtual bool CanCreateUserDefinedPin(const FEdGraphPinType& InPinType, EEdGraphPinDirection InDesiredDirection, FText& OutErrorMessage) override;
	// End of UK2Node_EditablePinBase interface

	UE_API virtual FName GetFunctionName() const override;

	/** The flags the compiled function gets on top of the usual ones (FUNC_BlueprintPure, FUNC_Const, access...). */
	int32 GetExtraFlags() const { return ExtraFlags; }
	int32 GetFunctionFlags() const { return ExtraFlags; }
	void SetExtraFlags(int32 InFlags) { ExtraFlags = InFlags; }
	void AddExtraFlags(int32 InFlags) { ExtraFlags |= InFlags; }
	void ClearExtraFlags(int32 InFlags) { ExtraFlags &= ~InFlags; }
	bool HasAnyExtraFlags(int32 InFlags) const { return (ExtraFlags & InFlags) != 0; }
	bool HasAllExtraFlags(int32 InFlags) const { return (ExtraFlags & InFlags) == InFlags; }

	/** The hidden world context output of a static function of a function library, if the node has one. */
	UE_API UEdGraphPin* GetAutoWorldContextPin() const;

	/** The name of the world context output that function libraries' entries get. */
	static UE_API const FName& GetWorldContextPinName();

	/** A local variable by name, or null. */
	UE_API FBPVariableDescription* FindLocalVariable(FName VarName);

private:
	int32 ExtraFlags = 0;
};

#undef UE_API
