// Default values of pins: what a typed string means for each category, and which pins must be wired instead.
#include "EdGraphSchema_K2.h"
#include "K2Node_CallFunction.h"

#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphPin.h"
#include "Engine/Blueprint.h"
#include "Math/Color.h"
#include "Math/Transform.h"
#include "Misc/DefaultValueHelper.h"
#include "Misc/PackageName.h"
#include "UObject/Class.h"
#include "UObject/UObjectGlobals.h"

#define LOCTEXT_NAMESPACE "KismetSchema"

namespace UE::BlueprintGraph::Private
{
	UBlueprint* FindOwningBlueprint(const UObject* Object);
}

bool UEdGraphSchema_K2::IsAutoCreateRefTerm(const UEdGraphPin* Pin)
{
	// Only function calls carry AutoCreateRefTerm: a comma list of the parameters that get a value when unwired.
	const UK2Node_CallFunction* Call = Pin ? Cast<UK2Node_CallFunction>(Pin->GetOwningNodeUnchecked()) : nullptr;
	const UFunction* Function = Call ? Call->GetTargetFunction() : nullptr;
	if (!Function)
	{
		return false;
	}
	const FString* Names = Function->FindMetaData(FBlueprintMetadata::MD_AutoCreateRefTerm);
	if (!Names)
	{
		return false;
	}
	TArray<FString> Parameters;
	Names->ParseIntoArray(Parameters, TEXT(","), true);
	for (FString& Parameter : Parameters)
	{
		Parameter.TrimStartAndEndInline();
		if (Parameter == Pin->PinName.ToString())
		{
			return true;
		}
	}
	return false;
}

FString UEdGraphSchema_K2::IsPinDefaultValid(const UEdGraphPin* Pin, const FString& NewDefaultValue, UObject* NewDefaultObject, const FText& InNewDefaultText) const
{
	if (!Pin)
	{
		return TEXT("No pin");
	}
	FFormatNamedArguments Args;
	Args.Add(TEXT("PinName"), Pin->GetDisplayName());

	const UBlueprint* Blueprint = UE::BlueprintGraph::Private::FindOwningBlueprint(Pin->GetOwningNodeUnchecked());
	// Interfaces only declare functions: nothing in them runs, so nothing needs wiring.
	if ((!Blueprint || Blueprint->BlueprintType != BPTYPE_Interface) && !IsAutoCreateRefTerm(Pin))
	{
		// A function result's inputs are its outputs; left unwired they return an empty value.
		const UEdGraphNode* Node = Pin->GetOwningNodeUnchecked();
		const bool bIsFunctionOutput = Node && Node->GetClass()->GetName() == TEXT("K2Node_FunctionResult") && Pin->Direction == EGPD_Input;
		if (!bIsFunctionOutput)
		{
			if (Pin->PinType.IsArray())
			{
				return FText::Format(LOCTEXT("BadArrayDefaultVal", "Array inputs (like '{PinName}') must have an input wired into them (try connecting a MakeArray node)."), Args).ToString();
			}
			if (Pin->PinType.IsSet())
			{
				return FText::Format(LOCTEXT("BadSetDefaultVal", "Set inputs (like '{PinName}') must have an input wired into them (try connecting a MakeSet node)."), Args).ToString();
			}
			if (Pin->PinType.IsMap())
			{
				return FText::Format(LOCTEXT("BadMapDefaultVal", "Map inputs (like '{PinName}') must have an input wired into them (try connecting a MakeMap node)."), Args).ToString();
			}
			if (Pin->PinType.bIsReference)
			{
				Args.Add(TEXT("ActionName"), Node ? Node->GetNodeTitle(ENodeTitleType::ListView) : FText::GetEmpty());
				return FText::Format(LOCTEXT("BadRefDefaultVal", "'{PinName}' in action '{ActionName}' must have an input wired into it (\"by ref\" params expect a valid input to operate on)."), Args).ToString();
			}
		}
	}

	FString Message;
	DefaultValueSimpleValidation(Pin->PinType, Pin->PinName, NewDefaultValue, NewDefaultObject, InNewDefaultText, &Message);
	return Message;
}

bool UEdGraphSchema_K2::DefaultValueSimpleValidation(const FEdGraphPinType& PinType, const FName PinName, const FString& NewDefaultValue, TObjectPtr<UObject> NewDefaultObject, const FText& InText, FString* OutMsg) const
{
	auto Fail = [OutMsg](const FString& Message)
	{
		if (OutMsg)
		{
			*OutMsg = Message;
		}
		return false;
	};
	const FName Category = PinType.PinCategory;
	const UObject* SubCategoryObject = PinType.PinSubCategoryObject.Get();
	const FString PinNameString = PinName.ToString();

	if (PinType.IsContainer())
	{
		// Containers take no literal; IsPinDefaultValid asks for a wire.
		return true;
	}
	if (Category == PC_Boolean || Category == PC_Name || Category == PC_String || Category == PC_FieldPath)
	{
		// Any text reads as one of these (a bool is true only for the words that mean true).
		return true;
	}
	if (Category == PC_Byte)
	{
		if (const UEnum* Enum = Cast<UEnum>(SubCategoryObject))
		{
			if (NewDefaultValue == TEXT("(INVALID)") || Enum->GetIndexByNameString(NewDefaultValue) == INDEX_NONE)
			{
				return Fail(FString::Printf(TEXT("'%s' is not a valid enumerant of '<%s>'"), *NewDefaultValue, *Enum->GetName()));
			}
		}
		else if (!NewDefaultValue.IsEmpty())
		{
			int32 Value = 0;
			if (!FDefaultValueHelper::ParseInt(NewDefaultValue, Value))
			{
				return Fail(TEXT("Expected a valid unsigned number for a byte property"));
			}
			if (Value < 0 || Value > 255)
			{
				return Fail(TEXT("Expected a value between 0 and 255 for a byte property"));
			}
		}
		return true;
	}
	if (Category == PC_Class)
	{
		if (!NewDefaultValue.IsEmpty())
		{
			return Fail(FString::Printf(TEXT("String NewDefaultValue '%s' specified on class pin '%s'"), *NewDefaultValue, *PinNameString));
		}
		if (NewDefaultObject)
		{
			const UClass* DefaultClass = Cast<UClass>(NewDefaultObject.Get());
			if (!DefaultClass)
			{
				return Fail(FString::Printf(TEXT("Literal on pin %s is not a class."), *PinNameString));
			}
			const UClass* PinClass = Cast<UClass>(SubCategoryObject);
			if (!PinClass)
			{
				return Fail(FString::Printf(TEXT("Failed to find class for pin %s"), *PinNameString));
			}
			if (!DefaultClass->IsChildOf(PinClass))
			{
				return Fail(FString::Printf(TEXT("%s isn't a valid subclass of %s (specified on pin %s)"), *NewDefaultObject->GetPathName(), *PinClass->GetName(), *PinNameString));
			}
		}
		return true;
	}
	if (Category == PC_Real)
	{
		if (!NewDefaultValue.IsEmpty() && !FDefaultValueHelper::IsStringValidFloat(NewDefaultValue))
		{
			return Fail(TEXT("Expected a valid number for a real property"));
		}
		return true;
	}
	if (Category == PC_Int)
	{
		if (!NewDefaultValue.IsEmpty() && !FDefaultValueHelper::IsStringValidInteger(NewDefaultValue))
		{
			return Fail(TEXT("Expected a valid number for an integer property"));
		}
		return true;
	}
	if (Category == PC_Int64)
	{
		int64 Value = 0;
		if (!NewDefaultValue.IsEmpty() && !FDefaultValueHelper::ParseInt64(NewDefaultValue, Value))
		{
			return Fail(TEXT("Expected a valid number for an integer64 property"));
		}
		return true;
	}
	if (Category == PC_Object || Category == PC_Interface)
	{
		if (!SubCategoryObject && PinType.PinSubCategory != PSC_Self)
		{
			return Fail(FString::Printf(TEXT("PinSubCategoryObject on pin '%s' is NULL and PinSubCategory is '%s' not 'self'"), *PinNameString, *PinType.PinSubCategory.ToString()));
		}
		if (SubCategoryObject && !PinType.PinSubCategory.IsNone())
		{
			return Fail(FString::Printf(TEXT("PinSubCategoryObject on pin '%s' is non-NULL but PinSubCategory is '%s', should be empty"), *PinNameString, *PinType.PinSubCategory.ToString()));
		}
		// Objects are set through DefaultObject; a string ("self" included) is not a value here.
		if (!NewDefaultValue.IsEmpty())
		{
			return Fail(FString::Printf(TEXT("String NewDefaultValue '%s' specified on object pin '%s'"), *NewDefaultValue, *PinNameString));
		}
		const UClass* PinClass = Cast<UClass>(SubCategoryObject);
		if (NewDefaultObject && PinClass && !NewDefaultObject->GetClass()->IsChildOf(PinClass))
		{
			if (Category != PC_Interface || !NewDefaultObject->GetClass()->ImplementsInterface(PinClass))
			{
				return Fail(FString::Printf(TEXT("%s isn't a %s (specified on pin %s)"), *NewDefaultObject->GetPathName(), *PinClass->GetName(), *PinNameString));
			}
		}
		return true;
	}
	if (Category == PC_SoftObject || Category == PC_SoftClass)
	{
		if (NewDefaultObject)
		{
			return Fail(FString::Printf(TEXT("NewDefaultObject '%s' specified on object pin '%s'"), *NewDefaultObject->GetPathName(), *PinNameString));
		}
		FText Reason;
		if (!NewDefaultValue.IsEmpty() && !FPackageName::IsValidObjectPath(NewDefaultValue, &Reason))
		{
			return Fail(FString::Printf(TEXT("Soft Reference '%s' is invalid format for object pin '%s': %s"), *NewDefaultValue, *PinNameString, *Reason.ToString()));
		}
		return true;
	}
	if (Category == PC_Text)
	{
		if (InText.IsTransient())
		{
			return Fail(TEXT("Invalid text literal, text is transient!"));
		}
		return true;
	}
	if (Category == PC_Struct)
	{
		if (!PinType.PinSubCategory.IsNone())
		{
			return Fail(FString::Printf(TEXT("Invalid PinSubCategory value '%s' (it should be empty)"), *PinType.PinSubCategory.ToString()));
		}
		const UScriptStruct* Struct = Cast<UScriptStruct>(SubCategoryObject);
		if (!Struct)
		{
			return Fail(FString::Printf(TEXT("No struct specified for pin '%s'"), *PinNameString));
		}
		if (NewDefaultValue.IsEmpty())
		{
			return true;
		}
		if (Struct == TBaseStructure<FVector>::Get())
		{
			return FDefaultValueHelper::IsStringValidVector(NewDefaultValue) ? true : Fail(TEXT("Invalid value for an FVector"));
		}
		if (Struct == TBaseStructure<FRotator>::Get())
		{
			return FDefaultValueHelper::IsStringValidRotator(NewDefaultValue) ? true : Fail(TEXT("Invalid value for an FRotator"));
		}
		if (Struct == TBaseStructure<FTransform>::Get())
		{
			FTransform Transform;
			return Transform.InitFromString(NewDefaultValue) ? true : Fail(TEXT("Invalid value for an FTransform"));
		}
		if (Struct == TBaseStructure<FLinearColor>::Get())
		{
			FLinearColor Color;
			return Color.InitFromString(NewDefaultValue) ? true : Fail(TEXT("Invalid value for an FLinearColor"));
		}
		// Other structs are read by their properties when the graph is compiled.
		return true;
	}
	if (Category == PC_Delegate || Category == PC_MCDelegate)
	{
		if (!NewDefaultValue.IsEmpty() && NewDefaultValue != TEXT("(null).None"))
		{
			return Fail(FString::Printf(TEXT("Unsupported value %s for delegate pin %s, only empty delegates are supported"), *NewDefaultValue, *PinNameString));
		}
		return true;
	}
	return Fail(FString::Printf(TEXT("Unsupported type %s on pin %s"), *TypeToText(PinType).ToString(), *PinNameString));
}

void UEdGraphSchema_K2::GetPinDefaultValuesFromString(const FEdGraphPinType& PinType, UObject* OwningObject, const FString& NewValue, FString& UseDefaultValue, TObjectPtr<UObject>& UseDefaultObject, FText& UseDefaultText, bool bPreserveTextIdentity) const
{
	UseDefaultValue.Reset();
	UseDefaultObject = nullptr;
	UseDefaultText = FText::GetEmpty();

	if (PinType.PinCategory == PC_Object || PinType.PinCategory == PC_Class || PinType.PinCategory == PC_Interface)
	{
		// Hard references are held as objects, found by path (a class pin may name a loaded class).
		if (!NewValue.IsEmpty() && NewValue != TEXT("None"))
		{
			UseDefaultObject = StaticFindObject(UObject::StaticClass(), nullptr, *NewValue);
			if (!UseDefaultObject)
			{
				// Keep the text so validation reports what was asked for.
				UseDefaultValue = NewValue;
			}
		}
	}
	else if (PinType.PinCategory == PC_Text)
	{
		UseDefaultText = FText::FromString(NewValue);
	}
	else
	{
		UseDefaultValue = NewValue;
		// Reals are kept as typed, bools as the engine's words.
		if (PinType.PinCategory == PC_Boolean && !NewValue.IsEmpty())
		{
			UseDefaultValue = NewValue.ToBool() ? TEXT("true") : TEXT("false");
		}
	}
}

void UEdGraphSchema_K2::TrySetDefaultValue(UEdGraphPin& Pin, const FString& NewDefaultValue, bool bMarkAsModified) const
{
	FString UseValue;
	TObjectPtr<UObject> UseObject;
	FText UseText;
	GetPinDefaultValuesFromString(Pin.PinType, Pin.GetOwningNodeUnchecked(), NewDefaultValue, UseValue, UseObject, UseText);
	if (!IsPinDefaultValid(&Pin, UseValue, UseObject, UseText).IsEmpty())
	{
		return;
	}
	Pin.DefaultValue = UseValue;
	Pin.DefaultObject = UseObject;
	Pin.DefaultTextValue = UseText;
	if (UEdGraphNode* Node = Pin.GetOwningNodeUnchecked())
	{
		Node->PinDefaultValueChanged(&Pin);
	}
}

void UEdGraphSchema_K2::TrySetDefaultObject(UEdGraphPin& Pin, UObject* NewDefaultObject, bool bMarkAsModified) const
{
	if (!IsPinDefaultValid(&Pin, FString(), NewDefaultObject, FText::GetEmpty()).IsEmpty())
	{
		return;
	}
	Pin.DefaultObject = NewDefaultObject;
	Pin.DefaultValue.Reset();
	if (UEdGraphNode* Node = Pin.GetOwningNodeUnchecked())
	{
		Node->PinDefaultValueChanged(&Pin);
	}
}

void UEdGraphSchema_K2::TrySetDefaultText(UEdGraphPin& InPin, const FText& InNewDefaultText, bool bMarkAsModified) const
{
	if (!IsPinDefaultValid(&InPin, FString(), nullptr, InNewDefaultText).IsEmpty())
	{
		return;
	}
	InPin.DefaultTextValue = InNewDefaultText;
	if (UEdGraphNode* Node = InPin.GetOwningNodeUnchecked())
	{
		Node->PinDefaultValueChanged(&InPin);
	}
}

bool UEdGraphSchema_K2::DoesDefaultValueMatchAutogenerated(const UEdGraphPin& InPin) const
{
	if (InPin.PinType.PinCategory == PC_Text)
	{
		return InPin.DefaultTextValue.ToString() == InPin.AutogeneratedDefaultValue;
	}
	if (InPin.PinType.PinCategory == PC_Object || InPin.PinType.PinCategory == PC_Class || InPin.PinType.PinCategory == PC_Interface)
	{
		const FString ObjectPath = InPin.DefaultObject ? InPin.DefaultObject->GetPathName() : FString();
		return ObjectPath == InPin.AutogeneratedDefaultValue || (ObjectPath.IsEmpty() && InPin.AutogeneratedDefaultValue == TEXT("None"));
	}
	// Numbers compare by value, so "1" matches an autogenerated "1.000000".
	if (InPin.PinType.PinCategory == PC_Real && !InPin.DefaultValue.IsEmpty() && !InPin.AutogeneratedDefaultValue.IsEmpty())
	{
		double Current = 0.0;
		double Generated = 0.0;
		if (FDefaultValueHelper::ParseDouble(InPin.DefaultValue, Current) && FDefaultValueHelper::ParseDouble(InPin.AutogeneratedDefaultValue, Generated))
		{
			return Current == Generated;
		}
	}
	if (InPin.PinType.PinCategory == PC_Boolean)
	{
		return InPin.DefaultValue.ToBool() == InPin.AutogeneratedDefaultValue.ToBool();
	}
	return InPin.DefaultValue.Equals(InPin.AutogeneratedDefaultValue, ESearchCase::IgnoreCase);
}

void UEdGraphSchema_K2::ResetPinToAutogeneratedDefaultValue(UEdGraphPin* Pin, bool bCallModifyCallbacks) const
{
	if (!Pin)
	{
		return;
	}
	GetPinDefaultValuesFromString(Pin->PinType, Pin->GetOwningNodeUnchecked(), Pin->AutogeneratedDefaultValue, Pin->DefaultValue, Pin->DefaultObject, Pin->DefaultTextValue);
	if (bCallModifyCallbacks)
	{
		if (UEdGraphNode* Node = Pin->GetOwningNodeUnchecked())
		{
			Node->PinDefaultValueChanged(Pin);
		}
	}
}

void UEdGraphSchema_K2::SetPinAutogeneratedDefaultValue(UEdGraphPin* Pin, const FString& NewValue) const
{
	if (!Pin)
	{
		return;
	}
	Pin->AutogeneratedDefaultValue = NewValue;
	ResetPinToAutogeneratedDefaultValue(Pin, false);
}

void UEdGraphSchema_K2::SetPinAutogeneratedDefaultValueBasedOnType(UEdGraphPin* Pin) const
{
	if (!Pin)
	{
		return;
	}
	FString Value;
	const FEdGraphPinType& Type = Pin->PinType;
	if (!Type.IsContainer())
	{
		if (Type.PinCategory == PC_Int || Type.PinCategory == PC_Int64)
		{
			Value = TEXT("0");
		}
		else if (Type.PinCategory == PC_Byte)
		{
			const UEnum* Enum = Cast<UEnum>(Type.PinSubCategoryObject.Get());
			// An enum pin starts at its first entry (the hidden _MAX is never a default).
			Value = Enum ? (Enum->NumEnums() > 0 ? Enum->GetNameStringByIndex(0) : FString()) : TEXT("0");
		}
		else if (Type.PinCategory == PC_Real)
		{
			Value = TEXT("0.0");
		}
		else if (Type.PinCategory == PC_Boolean)
		{
			Value = TEXT("false");
		}
		else if (Type.PinCategory == PC_Name)
		{
			Value = TEXT("None");
		}
		else if (Type.PinCategory == PC_Struct
			&& (Type.PinSubCategoryObject.Get() == TBaseStructure<FVector>::Get() || Type.PinSubCategoryObject.Get() == TBaseStructure<FRotator>::Get()))
		{
			Value = TEXT("0, 0, 0");
		}
	}
	SetPinAutogeneratedDefaultValue(Pin, Value);
}

bool UEdGraphSchema_K2::ShouldHidePinDefaultValue(UEdGraphPin* Pin) const
{
	if (!Pin)
	{
		return true;
	}
	if (Pin->bDefaultValueIsIgnored || Pin->PinType.IsContainer() || Pin->PinType.PinCategory == PC_Exec || Pin->PinType.PinCategory == PC_Wildcard
		|| (Pin->PinType.bIsReference && !IsAutoCreateRefTerm(Pin)))
	{
		return true;
	}
	// A self pin defaults to the object running the graph; there is nothing to type.
	if (Pin->PinName == PN_Self && Pin->LinkedTo.Num() == 0)
	{
		return true;
	}
	return false;
}

FText UEdGraphSchema_K2::GetPinDisplayName(const UEdGraphPin* Pin) const
{
	FText Name = UEdGraphSchema::GetPinDisplayName(Pin);
	// Exec pins named execute and then show no label.
	if (Pin && Pin->PinType.PinCategory == PC_Exec)
	{
		const FString Text = Name.ToString();
		if (Text == PN_Execute.ToString() || Text == PN_Then.ToString())
		{
			return FText::GetEmpty();
		}
	}
	return Name;
}

#undef LOCTEXT_NAMESPACE
