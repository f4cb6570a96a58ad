#include "K2Node.h"

#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"

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

#undef LOCTEXT_NAMESPACE
