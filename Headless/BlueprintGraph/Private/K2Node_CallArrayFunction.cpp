#include "K2Node_CallArrayFunction.h"

#include "EdGraphSchema_K2.h"
#include "UObject/UnrealType.h"

IMPLEMENT_CLASS(UK2Node_CallArrayFunction)

namespace
{
	/** The comma-separated entries of a metadata value, trimmed. */
	TArray<FString> MetadataList(const UFunction* Function, const FName& Key)
	{
		TArray<FString> Entries;
		if (Function)
		{
			Function->GetMetaData(Key).ParseIntoArray(Entries, TEXT(","), true);
		}
		for (FString& Entry : Entries)
		{
			Entry.TrimStartAndEndInline();
		}
		return Entries;
	}

	void SetTerminalType(FEdGraphPinType& Target, const FEdGraphPinType& Source)
	{
		Target.PinCategory = Source.PinCategory;
		Target.PinSubCategory = Source.PinSubCategory;
		Target.PinSubCategoryObject = Source.PinSubCategoryObject;
	}
}

UK2Node_CallArrayFunction::UK2Node_CallArrayFunction()
{
}

UEdGraphPin* UK2Node_CallArrayFunction::GetTargetArrayPin() const
{
	TArray<FArrayPropertyPinCombo> ArrayPins;
	GetArrayPins(ArrayPins);
	return ArrayPins.Num() > 0 ? ArrayPins[0].ArrayPin : nullptr;
}

void UK2Node_CallArrayFunction::GetArrayPins(TArray<FArrayPropertyPinCombo>& OutArrayPinInfo) const
{
	OutArrayPinInfo.Reset();
	// "ArrayParm" lists the array parameters; "Array|Property" also names the pin carrying the array's property.
	for (const FString& Entry : MetadataList(GetTargetFunction(), FBlueprintMetadata::MD_ArrayParam))
	{
		TArray<FString> Parts;
		Entry.ParseIntoArray(Parts, TEXT("|"), true);
		if (Parts.Num() == 0)
		{
			continue;
		}
		FArrayPropertyPinCombo Combo;
		Combo.ArrayPin = FindPin(Parts[0].TrimStartAndEnd());
		if (Parts.Num() > 1)
		{
			Combo.ArrayPropPin = FindPin(Parts[1].TrimStartAndEnd());
		}
		if (Combo.ArrayPin)
		{
			OutArrayPinInfo.Add(Combo);
		}
	}
}

void UK2Node_CallArrayFunction::GetArrayTypeDependentPins(TArray<UEdGraphPin*>& OutPins) const
{
	OutPins.Reset();
	for (const FString& Name : MetadataList(GetTargetFunction(), FBlueprintMetadata::MD_ArrayDependentParam))
	{
		if (UEdGraphPin* Pin = FindPin(Name))
		{
			OutPins.Add(Pin);
		}
	}
}

bool UK2Node_CallArrayFunction::IsWildcardProperty(const UFunction* InArrayFunction, const FProperty* InProperty)
{
	if (!InArrayFunction || !InProperty)
	{
		return false;
	}
	for (const FName& Key : {FBlueprintMetadata::MD_ArrayParam, FBlueprintMetadata::MD_ArrayDependentParam})
	{
		for (const FString& Entry : MetadataList(InArrayFunction, Key))
		{
			TArray<FString> Parts;
			Entry.ParseIntoArray(Parts, TEXT("|"), true);
			if (Parts.Num() > 0 && Parts[0].TrimStartAndEnd() == InProperty->GetName())
			{
				return true;
			}
		}
	}
	return false;
}

void UK2Node_CallArrayFunction::AllocateDefaultPins()
{
	Super::AllocateDefaultPins();

	// The array is whatever array is wired in, passed by reference.
	if (UEdGraphPin* TargetArrayPin = GetTargetArrayPin())
	{
		TargetArrayPin->PinType.ContainerType = EPinContainerType::Array;
		TargetArrayPin->PinType.bIsReference = true;
		TargetArrayPin->PinType.PinCategory = UEdGraphSchema_K2::PC_Wildcard;
		TargetArrayPin->PinType.PinSubCategory = NAME_None;
		TargetArrayPin->PinType.PinSubCategoryObject = nullptr;
	}
	TArray<FArrayPropertyPinCombo> ArrayPins;
	GetArrayPins(ArrayPins);
	for (const FArrayPropertyPinCombo& Combo : ArrayPins)
	{
		if (Combo.ArrayPropPin)
		{
			// The compiler fills it from the array that is wired in.
			Combo.ArrayPropPin->bHidden = true;
			Combo.ArrayPropPin->bNotConnectable = true;
			Combo.ArrayPropPin->bDefaultValueIsReadOnly = true;
		}
	}
}

void UK2Node_CallArrayFunction::PostReconstructNode()
{
	Super::PostReconstructNode();
	// Links survive a reconstruction: the pins take the type of whatever they are wired to again.
	TArray<UEdGraphPin*> PinsToCheck;
	GetArrayTypeDependentPins(PinsToCheck);
	PinsToCheck.Insert(GetTargetArrayPin(), 0);
	for (UEdGraphPin* Pin : PinsToCheck)
	{
		if (Pin && Pin->LinkedTo.Num() > 0 && Pin->PinType.PinCategory == UEdGraphSchema_K2::PC_Wildcard)
		{
			SetTerminalType(Pin->PinType, Pin->LinkedTo[0]->PinType);
			PropagateArrayTypeInfo(Pin);
			break;
		}
	}
}

void UK2Node_CallArrayFunction::NotifyPinConnectionListChanged(UEdGraphPin* Pin)
{
	Super::NotifyPinConnectionListChanged(Pin);
	if (!Pin)
	{
		return;
	}
	TArray<UEdGraphPin*> PinsToCheck;
	GetArrayTypeDependentPins(PinsToCheck);
	if (UEdGraphPin* TargetArrayPin = GetTargetArrayPin())
	{
		PinsToCheck.Add(TargetArrayPin);
	}
	if (!PinsToCheck.Contains(Pin))
	{
		return;
	}
	bool bNeedToPropagate = false;
	if (Pin->LinkedTo.Num() > 0)
	{
		// The first wire decides the element type for all of them.
		if (Pin->PinType.PinCategory == UEdGraphSchema_K2::PC_Wildcard)
		{
			SetTerminalType(Pin->PinType, Pin->LinkedTo[0]->PinType);
			bNeedToPropagate = true;
		}
	}
	else
	{
		// With nothing wired to any of them, they are wildcards again.
		bool bAllUnlinked = true;
		for (const UEdGraphPin* Candidate : PinsToCheck)
		{
			bAllUnlinked &= Candidate->LinkedTo.Num() == 0;
		}
		if (bAllUnlinked)
		{
			Pin->PinType.PinCategory = UEdGraphSchema_K2::PC_Wildcard;
			Pin->PinType.PinSubCategory = NAME_None;
			Pin->PinType.PinSubCategoryObject = nullptr;
			bNeedToPropagate = true;
		}
	}
	if (bNeedToPropagate)
	{
		PropagateArrayTypeInfo(Pin);
	}
}

void UK2Node_CallArrayFunction::PropagateArrayTypeInfo(const UEdGraphPin* SourcePin)
{
	if (!SourcePin)
	{
		return;
	}
	const UEdGraphSchema_K2* Schema = GetDefault<UEdGraphSchema_K2>();
	TArray<UEdGraphPin*> DependentPins;
	GetArrayTypeDependentPins(DependentPins);
	DependentPins.Add(GetTargetArrayPin());
	for (UEdGraphPin* Pin : DependentPins)
	{
		if (!Pin || Pin == SourcePin)
		{
			continue;
		}
		// Only the element type travels: an array stays an array, a single value a single value.
		SetTerminalType(Pin->PinType, SourcePin->PinType);
		if (Pin->PinType.PinCategory == UEdGraphSchema_K2::PC_Wildcard || Pin->LinkedTo.Num() == 0)
		{
			Schema->SetPinAutogeneratedDefaultValueBasedOnType(Pin);
		}
		// A wire that no longer fits the new type is broken.
		for (int32 Index = Pin->LinkedTo.Num() - 1; Index >= 0; --Index)
		{
			UEdGraphPin* Linked = Pin->LinkedTo[Index];
			const bool bFits = Pin->Direction == EGPD_Input ? Schema->ArePinsCompatible(Linked, Pin, GetBlueprintClassFromNode())
				: Schema->ArePinsCompatible(Pin, Linked, GetBlueprintClassFromNode());
			if (!bFits)
			{
				Pin->BreakLinkTo(Linked);
			}
		}
	}
}
