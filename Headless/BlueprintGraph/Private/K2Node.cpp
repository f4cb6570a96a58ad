#include "K2Node.h"

#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "UObject/UnrealType.h"
#include "UObject/FieldIterator.h"

#define LOCTEXT_NAMESPACE "K2Node"

IMPLEMENT_CLASS(UK2Node)

UK2Node::UK2Node()
{
}

FText UK2Node::GetMenuCategory() const
{
	return FText::GetEmpty();
}

UBlueprint* UK2Node::GetBlueprint() const
{
	for (UObject* Outer = GetOuter(); Outer; Outer = Outer->GetOuter())
	{
		if (UBlueprint* Blueprint = Cast<UBlueprint>(Outer))
		{
			return Blueprint;
		}
	}
	return nullptr;
}

UClass* UK2Node::GetBlueprintClassFromNode() const
{
	const UBlueprint* Blueprint = GetBlueprint();
	if (!Blueprint)
	{
		return nullptr;
	}
	if (Blueprint->SkeletonGeneratedClass)
	{
		return Blueprint->SkeletonGeneratedClass;
	}
	return Blueprint->GeneratedClass ? Blueprint->GeneratedClass.Get() : Blueprint->ParentClass.Get();
}

bool UK2Node::HasExecPins() const
{
	for (const UEdGraphPin* Pin : Pins)
	{
		if (Pin && Pin->PinType.PinCategory == UEdGraphSchema_K2::PC_Exec)
		{
			return true;
		}
	}
	return false;
}

UEdGraphPin* UK2Node::GetExecPin() const
{
	UEdGraphPin* Pin = FindPin(UEdGraphSchema_K2::PN_Execute);
	return (Pin && Pin->Direction == EGPD_Input) ? Pin : nullptr;
}

UEdGraphPin* UK2Node::GetThenPin() const
{
	UEdGraphPin* Pin = FindPin(UEdGraphSchema_K2::PN_Then);
	return (Pin && Pin->Direction == EGPD_Output) ? Pin : nullptr;
}

const UEdGraphSchema_K2* UK2Node::GetK2Schema() const
{
	return GetDefault<UEdGraphSchema_K2>();
}

void UK2Node::ReallocatePinsDuringReconstruction(TArray<UEdGraphPin*>& OldPins)
{
	AllocateDefaultPins();
}

bool UK2Node::CreatePinsForFunctionEntryExit(const UFunction* Function, bool bForFunctionEntry)
{
	if (!Function)
	{
		return false;
	}
	const UEdGraphSchema_K2* K2Schema = GetDefault<UEdGraphSchema_K2>();
	bool bAllPinsGood = true;
	for (TFieldIterator<FProperty> It(Function); It && It->HasAnyPropertyFlags(CPF_Parm); ++It)
	{
		const FProperty* Param = *It;
		// What the function takes comes out of its entry; what it hands back goes into its exit.
		const bool bIsFunctionInput = !Param->HasAnyPropertyFlags(CPF_OutParm) || Param->HasAnyPropertyFlags(CPF_ReferenceParm);
		if (bIsFunctionInput != bForFunctionEntry)
		{
			continue;
		}
		UEdGraphPin* Pin = CreatePin(bForFunctionEntry ? EGPD_Output : EGPD_Input, NAME_None, Param->GetFName());
		const bool bPinGood = K2Schema->ConvertPropertyToPinType(Param, Pin->PinType);
		bAllPinsGood = bAllPinsGood && bPinGood;
		if (bPinGood)
		{
			if (const FString* DisplayName = Param->FindMetaData(TEXT("DisplayName")); DisplayName && !DisplayName->IsEmpty())
			{
				Pin->PinFriendlyName = FText::AsCultureInvariant(*DisplayName);
			}
			Pin->bAdvancedView = Param->HasAllPropertyFlags(CPF_AdvancedDisplay);
			if (Pin->bAdvancedView && AdvancedPinDisplay == ENodeAdvancedPins::NoPins)
			{
				AdvancedPinDisplay = ENodeAdvancedPins::Hidden;
			}
		}
	}
	return bAllPinsGood;
}

#undef LOCTEXT_NAMESPACE
