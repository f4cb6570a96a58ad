#include "K2Node_VariableGet.h"

#include "BlueprintNodeStatics.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "Kismet2/CompilerResultsLog.h"
#include "UObject/UnrealType.h"

#define LOCTEXT_NAMESPACE "K2Node"

using namespace UE::BlueprintGraph::Private;

IMPLEMENT_NATIVE_ENUM(EGetNodeVariation, TEXT("/Script/BlueprintGraph"),
	TArray<TPair<FName, int64>> Entries;
	Entries.Emplace(TEXT("EGetNodeVariation::Pure"), int64(EGetNodeVariation::Pure));
	Entries.Emplace(TEXT("EGetNodeVariation::Branch"), int64(EGetNodeVariation::Branch));
	Entries.Emplace(TEXT("EGetNodeVariation::ValidatedObject"), int64(EGetNodeVariation::ValidatedObject));
	Enum->SetEnums(Entries, UEnum::ECppForm::EnumClass, EEnumFlags::None, true);
)

IMPLEMENT_CLASS(UK2Node_VariableGet,
	WithUnderlying<FByteProperty>(UE_NATIVE_PROPERTY(FEnumProperty, CurrentVariation, CPF_None, StaticEnum<EGetNodeVariation>()));
)

namespace
{
	/** The impure form a value of this type supports: bools branch, object and class references check validity. */
	EGetNodeVariation SupportedVariation(const FEdGraphPinType& PinType)
	{
		if (PinType.IsContainer())
		{
			return EGetNodeVariation::Pure;
		}
		if (PinType.PinCategory == UEdGraphSchema_K2::PC_Boolean)
		{
			return EGetNodeVariation::Branch;
		}
		if (PinType.PinCategory == UEdGraphSchema_K2::PC_Object || PinType.PinCategory == UEdGraphSchema_K2::PC_Class
			|| PinType.PinCategory == UEdGraphSchema_K2::PC_SoftObject || PinType.PinCategory == UEdGraphSchema_K2::PC_SoftClass)
		{
			return EGetNodeVariation::ValidatedObject;
		}
		return EGetNodeVariation::Pure;
	}

	FText BaseTooltip(FName VarName)
	{
		FFormatNamedArguments Args;
		Args.Add(TEXT("VarName"), FText::FromName(VarName));
		return FText::Format(LOCTEXT("GetVariableTooltip", "Read the value of variable {VarName}"), Args);
	}
}

UK2Node_VariableGet::UK2Node_VariableGet()
{
}

void UK2Node_VariableGet::CreateImpurePins()
{
	if (CurrentVariation == EGetNodeVariation::Pure)
	{
		return;
	}
	FEdGraphPinType PinType;
	if (const FProperty* Property = GetPropertyForVariable())
	{
		GetDefault<UEdGraphSchema_K2>()->ConvertPropertyToPinType(Property, PinType);
	}
	// The variable's type may have changed since the node was made impure.
	CurrentVariation = SupportedVariation(PinType);
	if (CurrentVariation == EGetNodeVariation::Pure)
	{
		return;
	}
	CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Exec, UEdGraphSchema_K2::PN_Execute);
	UEdGraphPin* ValidPin = CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Exec, UEdGraphSchema_K2::PN_Then);
	UEdGraphPin* InvalidPin = CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Exec, UEdGraphSchema_K2::PN_Else);
	if (CurrentVariation == EGetNodeVariation::Branch)
	{
		ValidPin->PinFriendlyName = LOCTEXT("True", "True");
		InvalidPin->PinFriendlyName = LOCTEXT("False", "False");
	}
	else
	{
		ValidPin->PinFriendlyName = LOCTEXT("Valid", "Is Valid");
		InvalidPin->PinFriendlyName = LOCTEXT("Invalid", "Is Not Valid");
	}
}

void UK2Node_VariableGet::AllocateDefaultPins()
{
	if (!GetVarName().IsNone())
	{
		CreateImpurePins();
		if (CreatePinForVariable(EGPD_Output))
		{
			CreatePinForSelf();
		}
	}
	Super::AllocateDefaultPins();
}

void UK2Node_VariableGet::SetPurity(bool bNewPurity)
{
	const UEdGraphPin* ValuePin = GetValuePin();
	if (!ValuePin)
	{
		return;
	}
	const EGetNodeVariation Desired = bNewPurity ? EGetNodeVariation::Pure : SupportedVariation(ValuePin->PinType);
	if (Desired != CurrentVariation)
	{
		Modify();
		CurrentVariation = Desired;
		ReconstructNode();
	}
}

FText UK2Node_VariableGet::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	// A node reading one value is titled after it; the exec outputs of the impure forms count too.
	FName OutputPinName;
	int32 NumOutputs = 0;
	for (const UEdGraphPin* Pin : Pins)
	{
		if (Pin->Direction == EGPD_Output)
		{
			++NumOutputs;
			OutputPinName = Pin->PinName;
		}
	}
	if (NumOutputs != 1)
	{
		return LOCTEXT("Get", "Get");
	}
	FFormatNamedArguments Args;
	Args.Add(TEXT("PinName"), FText::FromName(OutputPinName));
	return FText::Format(LOCTEXT("GetPinName", "Get {PinName}"), Args);
}

FText UK2Node_VariableGet::GetPropertyTooltip(const FProperty* VariableProperty)
{
	if (!VariableProperty)
	{
		return BaseTooltip(NAME_None);
	}
	const FName VarName = VariableProperty->GetFName();
	FText SubTooltip;
	const UClass* SourceClass = VariableProperty->GetOwnerClass();
	if (const UBlueprint* Blueprint = SourceClass ? UBlueprint::GetBlueprintFromClass(SourceClass) : nullptr)
	{
		for (const FBPVariableDescription& Variable : Blueprint->NewVariables)
		{
			if (Variable.VarName == VarName && Variable.HasMetaData(FBlueprintMetadata::MD_Tooltip))
			{
				SubTooltip = FText::FromString(Variable.GetMetaData(FBlueprintMetadata::MD_Tooltip));
			}
		}
	}
	else if (VariableProperty->HasMetaData(FBlueprintMetadata::MD_Tooltip))
	{
		SubTooltip = VariableProperty->GetToolTipText();
	}
	if (SubTooltip.IsEmpty())
	{
		return BaseTooltip(VarName);
	}
	FFormatNamedArguments Args;
	Args.Add(TEXT("VarName"), FText::FromName(VarName));
	Args.Add(TEXT("PropertyTooltip"), SubTooltip);
	return FText::Format(LOCTEXT("GetVariableProperty_Tooltip", "Read the value of variable {VarName}\n{PropertyTooltip}"), Args);
}

FText UK2Node_VariableGet::GetTooltipText() const
{
	if (const FProperty* Property = GetPropertyForVariable())
	{
		return GetPropertyTooltip(Property);
	}
	return BaseTooltip(GetVarName());
}

void UK2Node_VariableGet::ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const
{
	Super::ValidateNodeDuringCompilation(MessageLog);
	// A function's own locals are always readable inside it.
	if (VariableReference.IsLocalScope())
	{
		return;
	}
	const FProperty* Property = GetPropertyForVariable();
	if (!Property)
	{
		return;
	}
	const bool bVisible = Property->HasAnyPropertyFlags(CPF_BlueprintVisible);
	bool bForeignPrivate = false;
	if (bVisible && Property->HasMetaData(FBlueprintMetadata::MD_Private) && Property->GetBoolMetaData(FBlueprintMetadata::MD_Private))
	{
		const UClass* OwnerClass = Property->GetOwnerClass();
		bForeignPrivate = !OwnerClass || OwnerClass->ClassGeneratedBy != GetBlueprint();
	}
	if (bVisible && !bForeignPrivate)
	{
		return;
	}
	const UObject* Owner = Property->GetOwnerUObject();
	FFormatNamedArguments Args;
	Args.Add(TEXT("VariableName"), FText::AsCultureInvariant(Owner ? FString::Printf(TEXT("%s.%s"), *Owner->GetName(), *Property->GetName()) : Property->GetName()));
	if (!bVisible)
	{
		MessageLog.Error(*FText::Format(LOCTEXT("UnableToGet_NotVisible", "{VariableName} is not blueprint visible (BlueprintReadOnly or BlueprintReadWrite). Please fix mark up or cease accessing as this will be made an error in a future release. @@"), Args).ToString(), this);
	}
	else
	{
		MessageLog.Error(*FText::Format(LOCTEXT("UnableToGet_ReadOnly", "{VariableName} is private and not accessible in this context. Please fix mark up or cease accessing as this will be an error in a future release. @@"), Args).ToString(), this);
	}
}

#undef LOCTEXT_NAMESPACE
