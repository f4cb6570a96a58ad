#include "EdGraph/EdGraphPin.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphSchema.h"

FEdGraphTerminalType FEdGraphTerminalType::FromPinType(const FEdGraphPinType& PinType)
{
	FEdGraphTerminalType Terminal;
	Terminal.TerminalCategory = PinType.PinCategory;
	Terminal.TerminalSubCategory = PinType.PinSubCategory;
	Terminal.TerminalSubCategoryObject = PinType.PinSubCategoryObject;
	Terminal.bTerminalIsConst = PinType.bIsConst;
	Terminal.bTerminalIsWeakPointer = PinType.bIsWeakPointer;
	Terminal.bTerminalIsUObjectWrapper = PinType.bIsUObjectWrapper;
	return Terminal;
}

bool FEdGraphPinType::operator==(const FEdGraphPinType& Other) const
{
	// bIsUObjectWrapper and the float precision flag only describe how the type was spelled, not what it is.
	return PinCategory == Other.PinCategory
		&& PinSubCategory == Other.PinSubCategory
		&& PinSubCategoryObject == Other.PinSubCategoryObject
		&& PinValueType == Other.PinValueType
		&& ContainerType == Other.ContainerType
		&& bIsReference == Other.bIsReference
		&& bIsWeakPointer == Other.bIsWeakPointer
		&& PinSubCategoryMemberReference == Other.PinSubCategoryMemberReference
		&& bIsConst == Other.bIsConst;
}

void FEdGraphPinType::ResetToDefaults()
{
	*this = FEdGraphPinType();
}

FEdGraphPinType FEdGraphPinType::GetPinTypeForTerminalType(const FEdGraphTerminalType& TerminalType)
{
	FEdGraphPinType PinType;
	PinType.PinCategory = TerminalType.TerminalCategory;
	PinType.PinSubCategory = TerminalType.TerminalSubCategory;
	PinType.PinSubCategoryObject = TerminalType.TerminalSubCategoryObject;
	PinType.bIsConst = TerminalType.bTerminalIsConst;
	PinType.bIsWeakPointer = TerminalType.bTerminalIsWeakPointer;
	PinType.bIsUObjectWrapper = TerminalType.bTerminalIsUObjectWrapper;
	return PinType;
}

FEdGraphPinType FEdGraphPinType::GetTerminalTypeForContainer(const FEdGraphPinType& ContainerType)
{
	check(ContainerType.IsContainer());
	FEdGraphPinType Element = ContainerType;
	Element.ContainerType = EPinContainerType::None;
	Element.PinValueType = FEdGraphTerminalType();
	return Element;
}

FCreatePinParams::FCreatePinParams(const FEdGraphPinType& PinType)
	: ContainerType(PinType.ContainerType)
	, bIsReference(PinType.bIsReference)
	, bIsConst(PinType.bIsConst)
	, Index(INDEX_NONE)
	, ValueTerminalType(PinType.PinValueType)
{
}

UEdGraphPin::UEdGraphPin(UEdGraphNode* InOwningNode)
	: bHidden(false)
	, bNotConnectable(false)
	, bDefaultValueIsReadOnly(false)
	, bDefaultValueIsIgnored(false)
	, bAdvancedView(false)
	, bDeprecated(false)
	, bDisplayAsMutableRef(false)
	, bAllowFriendlyName(true)
	, bOrphanedPin(false)
	, bWasTrashed(false)
	, OwningNode(InOwningNode)
{
}

UEdGraphPin::~UEdGraphPin() = default;

UEdGraphPin* UEdGraphPin::CreatePin(UEdGraphNode* InOwningNode)
{
	check(InOwningNode);
	UEdGraphPin* Pin = new UEdGraphPin(InOwningNode);
	Pin->PinId = FGuid::NewGuid();
	return Pin;
}

void UEdGraphPin::DestroyImpl(UEdGraphPin* Pin)
{
	delete Pin;
}

void UEdGraphPin::MakeLinkTo(UEdGraphPin* ToPin, bool bAlwaysMarkDirty)
{
	if (!ToPin || ToPin == this || LinkedTo.Contains(ToPin))
	{
		return;
	}
	Modify(bAlwaysMarkDirty);
	ToPin->Modify(bAlwaysMarkDirty);
	LinkedTo.Add(ToPin);
	ToPin->LinkedTo.Add(this);
}

void UEdGraphPin::BreakLinkTo(UEdGraphPin* ToPin, bool bAlwaysMarkDirty)
{
	if (!ToPin)
	{
		return;
	}
	const bool bWasLinked = LinkedTo.Contains(ToPin) || ToPin->LinkedTo.Contains(this);
	if (!bWasLinked)
	{
		return;
	}
	Modify(bAlwaysMarkDirty);
	ToPin->Modify(bAlwaysMarkDirty);
	LinkedTo.Remove(ToPin);
	ToPin->LinkedTo.Remove(this);
}

void UEdGraphPin::BreakAllPinLinks(bool bNotifyNodes, bool bAlwaysMarkDirty)
{
	// Work on a copy: breaking a link edits this pin's list.
	const TArray<UEdGraphPin*> Others = LinkedTo;
	for (UEdGraphPin* Other : Others)
	{
		BreakLinkTo(Other, bAlwaysMarkDirty);
		if (bNotifyNodes && Other->GetOwningNodeUnchecked())
		{
			Other->GetOwningNode()->PinConnectionListChanged(Other);
		}
	}
	if (bNotifyNodes && Others.Num() > 0 && OwningNode)
	{
		OwningNode->PinConnectionListChanged(this);
	}
}

void UEdGraphPin::CopyPersistentDataFromOldPin(const UEdGraphPin& SourcePin)
{
	PinId = SourcePin.PinId;
	DefaultValue = SourcePin.DefaultValue;
	DefaultObject = SourcePin.DefaultObject;
	DefaultTextValue = SourcePin.DefaultTextValue;
	PersistentGuid = SourcePin.PersistentGuid;
	bHidden = bHidden || (SourcePin.SubPins.Num() > 0 && SourcePin.bHidden);
	for (UEdGraphPin* Other : SourcePin.LinkedTo)
	{
		MakeLinkTo(Other, false);
	}
	SubPins = SourcePin.SubPins;
	for (UEdGraphPin* SubPin : SubPins)
	{
		SubPin->ParentPin = this;
	}
}

void UEdGraphPin::MovePersistentDataFromOldPin(UEdGraphPin& SourcePin)
{
	CopyPersistentDataFromOldPin(SourcePin);
	const TArray<UEdGraphPin*> Others = SourcePin.LinkedTo;
	for (UEdGraphPin* Other : Others)
	{
		SourcePin.BreakLinkTo(Other, false);
	}
	SourcePin.SubPins.Reset();
}

const UEdGraphSchema* UEdGraphPin::GetSchema() const
{
	return OwningNode ? OwningNode->GetSchema() : nullptr;
}

bool UEdGraphPin::HasAnyConnections() const
{
	if (LinkedTo.Num() > 0)
	{
		return true;
	}
	for (const UEdGraphPin* SubPin : SubPins)
	{
		if (SubPin->HasAnyConnections())
		{
			return true;
		}
	}
	return false;
}

FString UEdGraphPin::GetDefaultAsString() const
{
	if (DefaultObject)
	{
		return DefaultObject->GetPathName();
	}
	if (!DefaultTextValue.IsEmpty())
	{
		return DefaultTextValue.ToString();
	}
	return DefaultValue;
}

bool UEdGraphPin::IsDefaultAsStringEmpty() const
{
	return !DefaultObject && DefaultTextValue.IsEmpty() && DefaultValue.IsEmpty();
}

FText UEdGraphPin::GetDefaultAsText() const
{
	if (DefaultObject)
	{
		return FText::FromString(DefaultObject->GetName());
	}
	if (!DefaultTextValue.IsEmpty())
	{
		return DefaultTextValue;
	}
	return FText::FromString(DefaultValue);
}

bool UEdGraphPin::DoesDefaultValueMatchAutogenerated() const
{
	if (const UEdGraphSchema* Schema = GetSchema())
	{
		return Schema->DoesDefaultValueMatchAutogenerated(*this);
	}
	return GetDefaultAsString().Equals(AutogeneratedDefaultValue, ESearchCase::IgnoreCase);
}

FText UEdGraphPin::GetDisplayName() const
{
	if (OwningNode)
	{
		if (OwningNode->ShouldOverridePinNames())
		{
			return OwningNode->GetPinNameOverride(*this);
		}
		return OwningNode->GetPinDisplayName(this);
	}
	return PinFriendlyName.IsEmpty() ? FText::FromName(PinName) : PinFriendlyName;
}

void UEdGraphPin::Modify(bool bAlwaysMarkDirty)
{
	if (OwningNode)
	{
		OwningNode->Modify(bAlwaysMarkDirty);
	}
}

void UEdGraphPin::MarkAsGarbage()
{
	BreakAllPinLinks();
	for (UEdGraphPin* SubPin : SubPins)
	{
		SubPin->ParentPin = nullptr;
	}
	if (ParentPin)
	{
		ParentPin->SubPins.Remove(this);
		ParentPin = nullptr;
	}
	SubPins.Reset();
	bWasTrashed = true;
}
