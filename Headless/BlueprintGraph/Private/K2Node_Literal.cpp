#include "K2Node_Literal.h"

#include "BlueprintNodeStatics.h"
#include "EdGraphSchema_K2.h"
#include "GameFramework/Actor.h"

#define LOCTEXT_NAMESPACE "K2Node"

IMPLEMENT_CLASS(UK2Node_Literal,
	UE_NATIVE_PROPERTY(FObjectProperty, ObjectRef, CPF_TObjectPtr, UObject::StaticClass());
)

UK2Node_Literal::UK2Node_Literal()
{
}

void UK2Node_Literal::AllocateDefaultPins()
{
	CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Object, FName(TEXT("Value")));
	// The pin is then typed and named after the object, if there is one.
	SetObjectRef(ObjectRef);
}

UEdGraphPin* UK2Node_Literal::GetValuePin() const
{
	return Pins.Num() > 0 ? Pins[0] : nullptr;
}

void UK2Node_Literal::SetObjectRef(UObject* NewValue)
{
	UEdGraphPin* ValuePin = GetValuePin();
	if (NewValue)
	{
		ObjectRef = NewValue;
		if (ValuePin)
		{
			ValuePin->Modify();
			ValuePin->PinType.PinCategory = UEdGraphSchema_K2::PC_Object;
			ValuePin->PinType.PinSubCategory = NAME_None;
			ValuePin->PinType.PinSubCategoryObject = UE::BlueprintGraph::Private::GetAuthoritativeClass(NewValue->GetClass());
		}
	}
	if (ValuePin)
	{
		ValuePin->PinFriendlyName = GetNodeTitle(ENodeTitleType::FullTitle);
		ValuePin->PinName = FName(*ValuePin->PinFriendlyName.ToString());
	}
}

void UK2Node_Literal::PostReconstructNode()
{
	// Without its object, the output keeps the most derived class among what it is wired to.
	UEdGraphPin* ValuePin = GetValuePin();
	if (ValuePin && !ObjectRef && ValuePin->LinkedTo.Num() > 0)
	{
		UClass* PinSubtype = nullptr;
		for (const UEdGraphPin* Linked : ValuePin->LinkedTo)
		{
			UClass* TestType = Cast<UClass>(Linked->PinType.PinSubCategoryObject.Get());
			if (!TestType)
			{
				Super::PostReconstructNode();
				return;
			}
			if (!PinSubtype || (PinSubtype != TestType && TestType->IsChildOf(PinSubtype)))
			{
				PinSubtype = TestType;
			}
		}
		ValuePin->PinType = ValuePin->LinkedTo[0]->PinType;
		ValuePin->PinType.PinSubCategoryObject = PinSubtype;
	}
	Super::PostReconstructNode();
}

FText UK2Node_Literal::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	if (!ObjectRef)
	{
		return LOCTEXT("Unknown", "Unknown");
	}
	return FText::FromString(ObjectRef->GetName());
}

FText UK2Node_Literal::GetTooltipText() const
{
	return LOCTEXT("Literal_Tooltip", "Stores a reference to an actor in the level");
}

AActor* UK2Node_Literal::GetReferencedLevelActor() const
{
	return Cast<AActor>(ObjectRef.Get());
}

#undef LOCTEXT_NAMESPACE
