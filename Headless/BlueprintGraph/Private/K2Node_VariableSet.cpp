#include "K2Node_VariableSet.h"

#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "Kismet2/CompilerResultsLog.h"
#include "UObject/UnrealType.h"

#define LOCTEXT_NAMESPACE "K2Node"

IMPLEMENT_CLASS(UK2Node_VariableSet)

UK2Node_VariableSet::UK2Node_VariableSet()
{
}

FName UK2Node_VariableSet::GetVariableOutputPinName() const
{
	return FName(TEXT("Output_Get"));
}

void UK2Node_VariableSet::AllocateDefaultPins()
{
	CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Exec, UEdGraphSchema_K2::PN_Execute);
	CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Exec, UEdGraphSchema_K2::PN_Then);
	if (!GetVarName().IsNone())
	{
		if (CreatePinForVariable(EGPD_Input))
		{
			CreatePinForSelf();
		}
		if (CreatePinForVariable(EGPD_Output, GetVariableOutputPinName()))
		{
			FindPin(GetVariableOutputPinName())->PinToolTip = LOCTEXT("SetPinOutputTooltip", "Retrieves the value of the variable, can use instead of a separate Get node").ToString();
		}
	}
	Super::AllocateDefaultPins();
}

bool UK2Node_VariableSet::HasLocalRepNotify() const
{
	// Only a Blueprint's own notify function runs on set: native ones are meant for clients receiving the value.
	const FProperty* Property = GetPropertyForVariable();
	if (!Property || Property->RepNotifyFunc.IsNone())
	{
		return false;
	}
	const UClass* SourceClass = Property->GetOwnerClass();
	if (!SourceClass || (!SourceClass->ClassGeneratedBy && !UBlueprint::GetBlueprintFromClass(SourceClass)))
	{
		return false;
	}
	const UFunction* Function = SourceClass->FindFunctionByName(Property->RepNotifyFunc);
	return Function && Function->NumParms == 0 && !Function->GetReturnProperty();
}

FName UK2Node_VariableSet::GetRepNotifyName() const
{
	const FProperty* Property = GetPropertyForVariable();
	return Property ? Property->RepNotifyFunc : NAME_None;
}

bool UK2Node_VariableSet::IsNetProperty() const
{
	const FProperty* Property = GetPropertyForVariable();
	return Property && Property->HasAnyPropertyFlags(CPF_Net);
}

bool UK2Node_VariableSet::IsFieldNotifyProperty() const
{
	const FProperty* Property = GetPropertyForVariable();
	return Property && Property->HasMetaData(FBlueprintMetadata::MD_FieldNotify);
}

FText UK2Node_VariableSet::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	const UEdGraphSchema_K2* K2Schema = GetDefault<UEdGraphSchema_K2>();
	FName InputPinName;
	int32 NumInputs = 0;
	for (const UEdGraphPin* Pin : Pins)
	{
		if (Pin->Direction == EGPD_Input && !K2Schema->IsMetaPin(*Pin))
		{
			++NumInputs;
			InputPinName = Pin->PinName;
		}
	}
	const bool bNotify = HasLocalRepNotify();
	const bool bBroadcast = IsFieldNotifyProperty();
	if (NumInputs != 1)
	{
		if (bNotify && bBroadcast)
		{
			return LOCTEXT("SetWithNotifyWithBroadcast", "Set with Notify and Broadcast");
		}
		if (bNotify)
		{
			return LOCTEXT("SetWithNotify", "Set with Notify");
		}
		if (bBroadcast)
		{
			return LOCTEXT("SetWithBroadcast", "Set with Broadcast");
		}
		return LOCTEXT("Set", "Set");
	}
	FFormatNamedArguments Args;
	Args.Add(TEXT("PinName"), FText::FromName(InputPinName));
	if (bNotify && bBroadcast)
	{
		return FText::Format(LOCTEXT("SetWithNotifyWithBroadcastPinName", "Set with Notify and Broadcast {PinName}"), Args);
	}
	if (bNotify)
	{
		return FText::Format(LOCTEXT("SetWithNotifyPinName", "Set with Notify {PinName}"), Args);
	}
	if (bBroadcast)
	{
		return FText::Format(LOCTEXT("SetWithBroadcastPinName", "Set with Broadcast {PinName}"), Args);
	}
	return FText::Format(LOCTEXT("SetPinName", "Set {PinName}"), Args);
}

FText UK2Node_VariableSet::GetTooltipText() const
{
	FFormatNamedArguments Args;
	Args.Add(TEXT("VarName"), FText::FromName(GetVarName()));
	if (HasLocalRepNotify())
	{
		Args.Add(TEXT("ReplicationNotifyName"), FText::FromName(GetRepNotifyName()));
		return FText::Format(LOCTEXT("SetVariableWithRepNotify_Tooltip", "Set the value of variable {VarName} and call {ReplicationNotifyName}"), Args);
	}
	return FText::Format(LOCTEXT("SetVariableTooltip", "Set the value of variable {VarName}"), Args);
}

FText UK2Node_VariableSet::GetPinNameOverride(const UEdGraphPin& Pin) const
{
	// The pass-through output and the exec pins go unlabeled.
	if (!Pin.ParentPin && (Pin.Direction == EGPD_Output || Pin.PinType.PinCategory == UEdGraphSchema_K2::PC_Exec))
	{
		return FText::GetEmpty();
	}
	return !Pin.PinFriendlyName.IsEmpty() ? Pin.PinFriendlyName : FText::FromName(Pin.PinName);
}

void UK2Node_VariableSet::ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const
{
	Super::ValidateNodeDuringCompilation(MessageLog);
	const FProperty* Property = GetPropertyForVariable();
	if (!Property || VariableReference.IsLocalScope())
	{
		return;
	}
	// Blueprints may only write what is visible to them and not read-only.
	const bool bWritable = Property->HasAnyPropertyFlags(CPF_BlueprintVisible) && !Property->HasAnyPropertyFlags(CPF_BlueprintReadOnly);
	if (!bWritable)
	{
		const UObject* Owner = Property->GetOwnerUObject();
		FFormatNamedArguments Args;
		Args.Add(TEXT("VariableName"), FText::AsCultureInvariant(Owner ? FString::Printf(TEXT("%s.%s"), *Owner->GetName(), *Property->GetName()) : Property->GetName()));
		MessageLog.Error(*FText::Format(LOCTEXT("UnableToSet_NotWritable", "{VariableName} is not blueprint writable. @@"), Args).ToString(), this);
	}
}

#undef LOCTEXT_NAMESPACE
