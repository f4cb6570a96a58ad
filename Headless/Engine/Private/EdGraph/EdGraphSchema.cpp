#include "EdGraph/EdGraphSchema.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphPin.h"

IMPLEMENT_CLASS(UEdGraphSchema)

FEdGraphSchemaAction::FEdGraphSchemaAction() = default;

FEdGraphSchemaAction::FEdGraphSchemaAction(FText InNodeCategory, FText InMenuDesc, FText InToolTip, const int32 InGrouping, FText InKeywords, int32 InSectionID)
	: Grouping(InGrouping)
	, SectionID(InSectionID)
{
	UpdateSearchData(MoveTemp(InMenuDesc), MoveTemp(InToolTip), MoveTemp(InNodeCategory), MoveTemp(InKeywords));
}

void FEdGraphSchemaAction::UpdateSearchData(FText NewMenuDescription, FText NewToolTipDescription, FText NewCategory, FText NewKeywords)
{
	MenuDescription = MoveTemp(NewMenuDescription);
	TooltipDescription = MoveTemp(NewToolTipDescription);
	Category = MoveTemp(NewCategory);
	Keywords = MoveTemp(NewKeywords);

	// One lower-case haystack, so a menu search is a single substring test per entry.
	FullSearchText = MenuDescription.ToString();
	if (!Keywords.IsEmpty())
	{
		FullSearchText += TEXT(" ");
		FullSearchText += Keywords.ToString();
	}
	if (!Category.IsEmpty())
	{
		FullSearchText += TEXT(" ");
		FullSearchText += Category.ToString();
	}
	FullSearchText = FullSearchText.ToLower();
}

void FEdGraphSchemaAction::SetCategory(FText NewCategory)
{
	UpdateSearchData(MenuDescription, TooltipDescription, MoveTemp(NewCategory), Keywords);
}

UEdGraphNode* FEdGraphSchemaAction::PerformAction(UEdGraph* ParentGraph, TArray<UEdGraphPin*>& FromPins, const FVector2f& Location, bool bSelectNewNode)
{
	// Several dragged pins: make the node from the first, then wire the rest to it.
	UEdGraphNode* NewNode = PerformAction(ParentGraph, FromPins.Num() > 0 ? FromPins[0] : nullptr, Location, bSelectNewNode);
	if (NewNode)
	{
		for (int32 Index = 1; Index < FromPins.Num(); ++Index)
		{
			NewNode->AutowireNewNode(FromPins[Index]);
		}
	}
	return NewNode;
}

const FPinConnectionResponse UEdGraphSchema::CanCreateConnection(const UEdGraphPin* A, const UEdGraphPin* B) const
{
	if (!A || !B)
	{
		return FPinConnectionResponse(CONNECT_RESPONSE_DISALLOW, TEXT("A pin is missing"));
	}
	if (A->GetOwningNodeUnchecked() == B->GetOwningNodeUnchecked())
	{
		return FPinConnectionResponse(CONNECT_RESPONSE_DISALLOW, TEXT("Both are on the same node"));
	}
	if (A->Direction == B->Direction)
	{
		return FPinConnectionResponse(CONNECT_RESPONSE_DISALLOW, TEXT("Directions are not compatible"));
	}
	return FPinConnectionResponse(CONNECT_RESPONSE_MAKE, FString());
}

bool UEdGraphSchema::TryCreateConnection(UEdGraphPin* PinA, UEdGraphPin* PinB) const
{
	if (!PinA || !PinB)
	{
		return false;
	}
	const FPinConnectionResponse Response = CanCreateConnection(PinA, PinB);
	bool bModified = false;

	switch (Response.Response)
	{
	case CONNECT_RESPONSE_MAKE:
		PinA->Modify();
		PinB->Modify();
		PinA->MakeLinkTo(PinB);
		bModified = true;
		break;

	case CONNECT_RESPONSE_BREAK_OTHERS_A:
		PinA->Modify();
		PinB->Modify();
		PinA->BreakAllPinLinks(true);
		PinA->MakeLinkTo(PinB);
		bModified = true;
		break;

	case CONNECT_RESPONSE_BREAK_OTHERS_B:
		PinA->Modify();
		PinB->Modify();
		PinB->BreakAllPinLinks(true);
		PinA->MakeLinkTo(PinB);
		bModified = true;
		break;

	case CONNECT_RESPONSE_BREAK_OTHERS_AB:
		PinA->Modify();
		PinB->Modify();
		PinA->BreakAllPinLinks(true);
		PinB->BreakAllPinLinks(true);
		PinA->MakeLinkTo(PinB);
		bModified = true;
		break;

	case CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE:
		bModified = CreateAutomaticConversionNodeAndConnections(PinA, PinB);
		break;

	case CONNECT_RESPONSE_MAKE_WITH_PROMOTION:
		bModified = CreatePromotedConnection(PinA, PinB);
		break;

	case CONNECT_RESPONSE_DISALLOW:
	default:
		break;
	}

	if (bModified)
	{
		PinA->GetOwningNode()->PinConnectionListChanged(PinA);
		PinB->GetOwningNode()->PinConnectionListChanged(PinB);
	}
	return bModified;
}

void UEdGraphSchema::BreakNodeLinks(UEdGraphNode& TargetNode) const
{
	TargetNode.Modify();
	for (UEdGraphPin* Pin : TargetNode.Pins)
	{
		BreakPinLinks(*Pin, false);
	}
	TargetNode.NodeConnectionListChanged();
}

void UEdGraphSchema::BreakPinLinks(UEdGraphPin& TargetPin, bool bSendsNodeNotifcation) const
{
	const TArray<UEdGraphPin*> Others = TargetPin.LinkedTo;
	UEdGraphNode* OwningNode = TargetPin.GetOwningNodeUnchecked();
	TargetPin.BreakAllPinLinks(false);

	// The far ends always hear of it; this pin's node only when asked.
	TArray<UEdGraphNode*> OtherNodes;
	for (UEdGraphPin* Other : Others)
	{
		if (UEdGraphNode* OtherNode = Other->GetOwningNodeUnchecked())
		{
			OtherNode->PinConnectionListChanged(Other);
			OtherNodes.AddUnique(OtherNode);
		}
	}
	for (UEdGraphNode* OtherNode : OtherNodes)
	{
		OtherNode->NodeConnectionListChanged();
	}
	if (OwningNode && Others.Num() > 0)
	{
		OwningNode->PinConnectionListChanged(&TargetPin);
		if (bSendsNodeNotifcation)
		{
			OwningNode->NodeConnectionListChanged();
		}
	}
}

void UEdGraphSchema::BreakSinglePinLink(UEdGraphPin* SourcePin, UEdGraphPin* TargetPin) const
{
	if (!SourcePin || !TargetPin || !SourcePin->LinkedTo.Contains(TargetPin))
	{
		return;
	}
	SourcePin->BreakLinkTo(TargetPin);
	SourcePin->GetOwningNode()->PinConnectionListChanged(SourcePin);
	TargetPin->GetOwningNode()->PinConnectionListChanged(TargetPin);
}

FString UEdGraphSchema::IsCurrentPinDefaultValid(const UEdGraphPin* Pin) const
{
	if (!Pin)
	{
		return FString();
	}
	return IsPinDefaultValid(Pin, Pin->DefaultValue, Pin->DefaultObject, Pin->DefaultTextValue);
}

void UEdGraphSchema::TrySetDefaultValue(UEdGraphPin& Pin, const FString& NewDefaultValue, bool bMarkAsModified) const
{
	const FString Error = IsPinDefaultValid(&Pin, NewDefaultValue, nullptr, FText());
	if (!Error.IsEmpty())
	{
		return;
	}
	if (bMarkAsModified)
	{
		Pin.Modify();
	}
	Pin.DefaultValue = NewDefaultValue;
	if (UEdGraphNode* Node = Pin.GetOwningNodeUnchecked())
	{
		Node->PinDefaultValueChanged(&Pin);
	}
}

void UEdGraphSchema::TrySetDefaultObject(UEdGraphPin& Pin, UObject* NewDefaultObject, bool bMarkAsModified) const
{
	const FString Error = IsPinDefaultValid(&Pin, FString(), NewDefaultObject, FText());
	if (!Error.IsEmpty())
	{
		return;
	}
	if (bMarkAsModified)
	{
		Pin.Modify();
	}
	Pin.DefaultObject = NewDefaultObject;
	if (UEdGraphNode* Node = Pin.GetOwningNodeUnchecked())
	{
		Node->PinDefaultValueChanged(&Pin);
	}
}

void UEdGraphSchema::TrySetDefaultText(UEdGraphPin& InPin, const FText& InNewDefaultText, bool bMarkAsModified) const
{
	const FString Error = IsPinDefaultValid(&InPin, FString(), nullptr, InNewDefaultText);
	if (!Error.IsEmpty())
	{
		return;
	}
	if (bMarkAsModified)
	{
		InPin.Modify();
	}
	InPin.DefaultTextValue = InNewDefaultText;
	if (UEdGraphNode* Node = InPin.GetOwningNodeUnchecked())
	{
		Node->PinDefaultValueChanged(&InPin);
	}
}

bool UEdGraphSchema::DoesDefaultValueMatchAutogenerated(const UEdGraphPin& InPin) const
{
	return InPin.GetDefaultAsString().Equals(InPin.AutogeneratedDefaultValue, ESearchCase::IgnoreCase);
}

void UEdGraphSchema::SetPinAutogeneratedDefaultValue(UEdGraphPin* Pin, const FString& NewValue) const
{
	Pin->AutogeneratedDefaultValue = NewValue;
	ResetPinToAutogeneratedDefaultValue(Pin, false);
}

void UEdGraphSchema::SetPinAutogeneratedDefaultValueBasedOnType(UEdGraphPin* Pin) const
{
	// The base schema knows no types; only a value-less pin is consistent here.
	SetPinAutogeneratedDefaultValue(Pin, FString());
}

void UEdGraphSchema::ResetPinToAutogeneratedDefaultValue(UEdGraphPin* Pin, bool bCallModifyCallbacks) const
{
	if (Pin->bOrphanedPin)
	{
		// An orphan exists only to keep a value; resetting it removes its reason to exist.
		if (UEdGraphNode* Node = Pin->GetOwningNodeUnchecked())
		{
			Node->PinConnectionListChanged(Pin);
		}
		return;
	}
	Pin->DefaultValue = Pin->AutogeneratedDefaultValue;
	Pin->DefaultObject = nullptr;
	Pin->DefaultTextValue = FText();
	if (bCallModifyCallbacks)
	{
		if (UEdGraphNode* Node = Pin->GetOwningNodeUnchecked())
		{
			Node->PinDefaultValueChanged(Pin);
		}
	}
}

EGraphType UEdGraphSchema::GetGraphType(const UEdGraph* TestEdGraph) const
{
	return GT_Function;
}

FText UEdGraphSchema::GetPinDisplayName(const UEdGraphPin* Pin) const
{
	check(Pin);
	return Pin->PinFriendlyName.IsEmpty() ? FText::FromName(Pin->PinName) : Pin->PinFriendlyName;
}

void UEdGraphSchema::ReconstructNode(UEdGraphNode& TargetNode, bool bIsBatchRequest) const
{
	TargetNode.ReconstructNode();
}

bool UEdGraphSchema::CategorizePinsByDirection(UEdGraphPin* PinA, UEdGraphPin* PinB, UEdGraphPin*& OutInputPin, UEdGraphPin*& OutOutputPin)
{
	const UEdGraphPin* Input = nullptr;
	const UEdGraphPin* Output = nullptr;
	if (!CategorizePinsByDirection(static_cast<const UEdGraphPin*>(PinA), static_cast<const UEdGraphPin*>(PinB), Input, Output))
	{
		return false;
	}
	OutInputPin = const_cast<UEdGraphPin*>(Input);
	OutOutputPin = const_cast<UEdGraphPin*>(Output);
	return true;
}

bool UEdGraphSchema::CategorizePinsByDirection(const UEdGraphPin* PinA, const UEdGraphPin* PinB, const UEdGraphPin*& OutInputPin, const UEdGraphPin*& OutOutputPin)
{
	if (!PinA || !PinB)
	{
		return false;
	}
	if (PinA->Direction == EGPD_Input && PinB->Direction == EGPD_Output)
	{
		OutInputPin = PinA;
		OutOutputPin = PinB;
		return true;
	}
	if (PinA->Direction == EGPD_Output && PinB->Direction == EGPD_Input)
	{
		OutInputPin = PinB;
		OutOutputPin = PinA;
		return true;
	}
	return false;
}
