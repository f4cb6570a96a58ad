#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraph/EdGraphSchema.h"
#include "Math/UnrealMathUtility.h"
#include "UObject/UnrealType.h"
#include "Templates/Casts.h"

IMPLEMENT_CLASS(UEdGraphNode,
	UE_NATIVE_PROPERTY(FIntProperty, NodePosX, CPF_None);
	UE_NATIVE_PROPERTY(FIntProperty, NodePosY, CPF_None);
	UE_NATIVE_PROPERTY(FIntProperty, NodeWidth, CPF_None);
	UE_NATIVE_PROPERTY(FIntProperty, NodeHeight, CPF_None);
	UE_NATIVE_PROPERTY(FByteProperty, AdvancedPinDisplay, CPF_None, (UEnum*)nullptr);
	UE_NATIVE_PROPERTY(FByteProperty, EnabledState, CPF_None, (UEnum*)nullptr);
	UE_NATIVE_PROPERTY(FBoolProperty, bUserSetEnabledState, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bCanRenameNode, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bCommentBubblePinned, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bCommentBubbleVisible, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bCommentBubbleMakeVisible, CPF_Transient, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bHasCompilerMessage, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FStrProperty, NodeComment, CPF_None);
	UE_NATIVE_PROPERTY(FIntProperty, ErrorType, CPF_None);
	UE_NATIVE_PROPERTY(FStrProperty, ErrorMsg, CPF_None);
	UE_NATIVE_PROPERTY(FStructProperty, NodeGuid, CPF_None, TBaseStructure<FGuid>::Get());
)

UEdGraphNode::UEdGraphNode() = default;

UEdGraphNode::~UEdGraphNode()
{
	// Links into other nodes were broken when the node was removed; anything left would dangle.
	for (UEdGraphPin* Pin : Pins)
	{
		for (UEdGraphPin* Other : Pin->LinkedTo)
		{
			Other->LinkedTo.Remove(Pin);
		}
		UEdGraphPin::DestroyImpl(Pin);
	}
	Pins.Reset();
}

UEdGraphPin* UEdGraphNode::CreatePin(EEdGraphPinDirection Dir, const FEdGraphPinType& InPinType, const FName PinName, int32 Index)
{
	UEdGraphPin* NewPin = UEdGraphPin::CreatePin(this);
	NewPin->PinName = PinName;
	NewPin->Direction = Dir;
	NewPin->PinType = InPinType;
	Modify(false);
	if (Pins.IsValidIndex(Index))
	{
		Pins.Insert(NewPin, Index);
	}
	else
	{
		Pins.Add(NewPin);
	}
	return NewPin;
}

UEdGraphPin* UEdGraphNode::CreatePin(EEdGraphPinDirection Dir, const FName PinCategory, const FName PinName, const FCreatePinParams& PinParams)
{
	return CreatePin(Dir, PinCategory, NAME_None, nullptr, PinName, PinParams);
}

UEdGraphPin* UEdGraphNode::CreatePin(EEdGraphPinDirection Dir, const FName PinCategory, const FName PinSubCategory, const FName PinName, const FCreatePinParams& PinParams)
{
	return CreatePin(Dir, PinCategory, PinSubCategory, nullptr, PinName, PinParams);
}

UEdGraphPin* UEdGraphNode::CreatePin(EEdGraphPinDirection Dir, const FName PinCategory, UObject* PinSubCategoryObject, const FName PinName, const FCreatePinParams& PinParams)
{
	return CreatePin(Dir, PinCategory, NAME_None, PinSubCategoryObject, PinName, PinParams);
}

UEdGraphPin* UEdGraphNode::CreatePin(EEdGraphPinDirection Dir, const FName PinCategory, const FName PinSubCategory, UObject* PinSubCategoryObject, const FName PinName, const FCreatePinParams& PinParams)
{
	FEdGraphPinType PinType(PinCategory, PinSubCategory, PinSubCategoryObject, PinParams.ContainerType, PinParams.bIsReference, PinParams.ValueTerminalType);
	PinType.bIsConst = PinParams.bIsConst;
	return CreatePin(Dir, PinType, PinName, PinParams.Index);
}

UEdGraphPin* UEdGraphNode::FindPin(const FName PinName, const EEdGraphPinDirection Direction) const
{
	for (UEdGraphPin* Pin : Pins)
	{
		if ((Direction == EGPD_MAX || Direction == Pin->Direction) && Pin->PinName == PinName)
		{
			return Pin;
		}
	}
	return nullptr;
}

UEdGraphPin* UEdGraphNode::FindPinChecked(const FName PinName, const EEdGraphPinDirection Direction) const
{
	UEdGraphPin* Pin = FindPin(PinName, Direction);
	checkf(Pin, TEXT("Node %s has no pin %s"), *GetName(), *PinName.ToString());
	return Pin;
}

UEdGraphPin* UEdGraphNode::FindPinById(const FGuid PinId) const
{
	for (UEdGraphPin* Pin : Pins)
	{
		if (Pin->PinId == PinId)
		{
			return Pin;
		}
	}
	return nullptr;
}

UEdGraphPin* UEdGraphNode::FindPinByIdChecked(const FGuid PinId) const
{
	UEdGraphPin* Pin = FindPinById(PinId);
	checkf(Pin, TEXT("Node %s has no pin with id %s"), *GetName(), *PinId.ToString());
	return Pin;
}

bool UEdGraphNode::RemovePin(UEdGraphPin* Pin)
{
	if (!Pin || !Pins.Contains(Pin))
	{
		return false;
	}
	Modify();
	// Sub-pins go first, so that the pin never outlives a child that points at it.
	const TArray<UEdGraphPin*> Children = Pin->SubPins;
	for (UEdGraphPin* Child : Children)
	{
		RemovePin(Child);
	}
	Pins.Remove(Pin);
	Pin->MarkAsGarbage();
	UEdGraphPin::DestroyImpl(Pin);
	return true;
}

UEdGraphPin* UEdGraphNode::GetPinAt(int32 Index) const
{
	return Pins.IsValidIndex(Index) ? Pins[Index] : nullptr;
}

int32 UEdGraphNode::GetPinIndex(UEdGraphPin* Pin) const
{
	int32 Index = 0;
	for (UEdGraphPin* Candidate : Pins)
	{
		if (Candidate == Pin)
		{
			return Index;
		}
		if (Pin && Candidate->Direction == Pin->Direction)
		{
			++Index;
		}
	}
	return INDEX_NONE;
}

void UEdGraphNode::BreakAllNodeLinks()
{
	// Other nodes are told once each, in pin order, after every link is gone.
	TArray<UEdGraphNode*> TouchedNodes;
	for (UEdGraphPin* Pin : Pins)
	{
		const TArray<UEdGraphPin*> Others = Pin->LinkedTo;
		for (UEdGraphPin* Other : Others)
		{
			Pin->BreakLinkTo(Other);
			if (UEdGraphNode* OtherNode = Other->GetOwningNodeUnchecked())
			{
				OtherNode->PinConnectionListChanged(Other);
				TouchedNodes.AddUnique(OtherNode);
			}
		}
	}
	for (UEdGraphNode* OtherNode : TouchedNodes)
	{
		OtherNode->NodeConnectionListChanged();
	}
}

UEdGraph* UEdGraphNode::GetGraph() const
{
	return Cast<UEdGraph>(GetOuter());
}

const UEdGraphSchema* UEdGraphNode::GetSchema() const
{
	const UEdGraph* Graph = GetGraph();
	return Graph ? Graph->GetSchema() : nullptr;
}

void UEdGraphNode::CreateNewGuid()
{
	NodeGuid = FGuid::NewGuid();
}

void UEdGraphNode::SnapToGrid(uint32 GridSnapSize)
{
	if (GridSnapSize == 0)
	{
		return;
	}
	const double Step = double(GridSnapSize);
	NodePosX = int32(GridSnapSize) * FMath::RoundToInt32(double(NodePosX) / Step);
	NodePosY = int32(GridSnapSize) * FMath::RoundToInt32(double(NodePosY) / Step);
}

FText UEdGraphNode::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	return FText::FromString(GetClass()->GetName());
}

FText UEdGraphNode::GetTooltipText() const
{
	const UClass* Class = GetClass();
	if (Class->HasMetaData(TEXT("ToolTip")))
	{
		return FText::FromString(Class->GetMetaData(TEXT("ToolTip")));
	}
	return FText();
}

FText UEdGraphNode::GetKeywords() const
{
	const UClass* Class = GetClass();
	if (Class->HasMetaData(TEXT("Keywords")))
	{
		return FText::FromString(Class->GetMetaData(TEXT("Keywords")));
	}
	return FText();
}

FText UEdGraphNode::GetPinDisplayName(const UEdGraphPin* Pin) const
{
	if (const UEdGraphSchema* Schema = GetSchema())
	{
		return Schema->GetPinDisplayName(Pin);
	}
	return Pin->PinFriendlyName.IsEmpty() ? FText::FromName(Pin->PinName) : Pin->PinFriendlyName;
}

bool UEdGraphNode::ShouldKeepOrphanPin(const UEdGraphPin& OldPin) const
{
	return OldPin.LinkedTo.Num() > 0 || !OldPin.DoesDefaultValueMatchAutogenerated();
}

namespace
{
	bool IsSameSlot(const UEdGraphPin& NewPin, const UEdGraphPin& OldPin)
	{
		if (NewPin.Direction != OldPin.Direction)
		{
			return false;
		}
		if (NewPin.PersistentGuid.IsValid() && NewPin.PersistentGuid == OldPin.PersistentGuid)
		{
			return true;
		}
		return NewPin.PinName == OldPin.PinName;
	}
}

void UEdGraphNode::ReconstructNode()
{
	Modify();

	TArray<UEdGraphPin*> OldPins = MoveTemp(Pins);
	Pins.Reset();
	AllocateDefaultPins();
	RestoreOldPins(OldPins);

	PostReconstructNode();
}

void UEdGraphNode::RestoreOldPins(TArray<UEdGraphPin*>& OldPins)
{
	// Match the new pins to the old ones; split pins carry their sub-pins across with them.
	TArray<UEdGraphPin*> Matched;
	TArray<UEdGraphPin*> NewPins = Pins;
	for (UEdGraphPin* NewPin : NewPins)
	{
		UEdGraphPin* OldPin = nullptr;
		for (UEdGraphPin* Candidate : OldPins)
		{
			if (!Candidate->ParentPin && !Matched.Contains(Candidate) && IsSameSlot(*NewPin, *Candidate))
			{
				OldPin = Candidate;
				break;
			}
		}
		if (!OldPin)
		{
			continue;
		}
		Matched.Add(OldPin);

		// A value the user never touched follows the new node's default, not the old one.
		const FString NewAutogenerated = NewPin->AutogeneratedDefaultValue;
		const FString NewDefault = NewPin->DefaultValue;
		const bool bKeepOldValue = !OldPin->DoesDefaultValueMatchAutogenerated() && !NewPin->bDefaultValueIsReadOnly;
		NewPin->MovePersistentDataFromOldPin(*OldPin);
		if (!bKeepOldValue)
		{
			NewPin->DefaultValue = NewDefault;
			NewPin->DefaultObject = nullptr;
			NewPin->DefaultTextValue = FText();
		}
		NewPin->AutogeneratedDefaultValue = NewAutogenerated;

		if (NewPin->SubPins.Num() > 0)
		{
			NewPin->bHidden = true;
			int32 InsertAt = Pins.Find(NewPin) + 1;
			for (UEdGraphPin* SubPin : NewPin->SubPins)
			{
				Matched.Add(SubPin);
				Pins.Insert(SubPin, InsertAt++);
			}
		}
	}

	// What did not survive is kept as an orphan while it still carries links or a value, else freed.
	// Sub-pins follow their parent's fate, so only top-level pins are decided here.
	TArray<UEdGraphPin*> Doomed;
	for (UEdGraphPin* OldPin : OldPins)
	{
		if (Matched.Contains(OldPin) || OldPin->ParentPin)
		{
			continue;
		}
		if (!bDisableOrphanPinSaving && ShouldKeepOrphanPin(*OldPin))
		{
			OldPin->bOrphanedPin = true;
			Pins.Add(OldPin);
			Pins.Append(OldPin->SubPins);
			continue;
		}
		Doomed.Append(OldPin->SubPins);
		Doomed.Add(OldPin);
	}
	for (UEdGraphPin* Pin : Doomed)
	{
		Pin->BreakAllPinLinks();
	}
	for (UEdGraphPin* Pin : Doomed)
	{
		UEdGraphPin::DestroyImpl(Pin);
	}
}

void UEdGraphNode::DestroyNode()
{
	if (UEdGraph* Graph = GetGraph())
	{
		Graph->RemoveNode(this, true);
	}
	else
	{
		BreakAllNodeLinks();
	}
	MarkAsGarbage();
}

void UEdGraphNode::AutowireNewNode(UEdGraphPin* FromPin)
{
	const UEdGraphSchema* Schema = GetSchema();
	if (!FromPin || !Schema)
	{
		return;
	}
	for (UEdGraphPin* Pin : Pins)
	{
		if (Pin->bHidden || Pin->bNotConnectable)
		{
			continue;
		}
		if (Schema->CanCreateConnection(FromPin, Pin).Response != CONNECT_RESPONSE_DISALLOW)
		{
			if (Schema->TryCreateConnection(FromPin, Pin))
			{
				FromPin->GetOwningNode()->NodeConnectionListChanged();
				NodeConnectionListChanged();
			}
			break;
		}
	}
}

void UEdGraphNode::PostLoad()
{
	Super::PostLoad();
}
