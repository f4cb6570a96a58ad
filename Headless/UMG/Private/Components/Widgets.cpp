#include "Components/PanelSlot.h"
#include "Components/PanelWidget.h"
#include "Components/Visual.h"
#include "Components/Widget.h"
#include "UObject/Package.h"
#include "Templates/Casts.h"
#include "UObject/UnrealType.h"
#include "UObject/UObjectGlobals.h"

IMPLEMENT_CLASS(UVisual)

IMPLEMENT_CLASS(UPanelSlot,
	UE_NATIVE_PROPERTY(FObjectProperty, Parent, CPF_TObjectPtr, UPanelWidget::StaticClass());
	UE_NATIVE_PROPERTY(FObjectProperty, Content, CPF_TObjectPtr, UWidget::StaticClass());
)

namespace
{
	FArrayProperty* WithSlotElements(FArrayProperty* Array)
	{
		Array->AddCppProperty(new FObjectProperty(Array, Array->GetFName(), RF_Public | RF_MarkAsNative | RF_Transient, 0, CPF_TObjectPtr | CPF_InstancedReference, UPanelSlot::StaticClass()));
		return Array;
	}
}

IMPLEMENT_CLASS(UWidget,
	UE_NATIVE_PROPERTY(FObjectProperty, Slot, CPF_TObjectPtr | CPF_InstancedReference, UPanelSlot::StaticClass());
	UE_NATIVE_PROPERTY(FBoolProperty, bIsVariable, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bIsEnabled, CPF_Edit | CPF_BlueprintVisible, 0, (uint32)sizeof(bool), true);
)

IMPLEMENT_CLASS(UPanelWidget,
	WithSlotElements(UE_NATIVE_PROPERTY(FArrayProperty, Slots, CPF_None));
)

UVisual::UVisual() = default;
UPanelSlot::UPanelSlot() = default;
UWidget::UWidget() = default;
UPanelWidget::UPanelWidget() = default;

UPanelWidget* UWidget::GetParent() const
{
	return Slot ? Slot->Parent.Get() : nullptr;
}

bool UWidget::RemoveFromParent()
{
	UPanelWidget* Parent = GetParent();
	return Parent && Parent->RemoveChild(this);
}

FString UWidget::GetDisplayLabel() const
{
	return DisplayLabel.IsEmpty() ? GetName() : DisplayLabel;
}

int32 UPanelWidget::GetChildrenCount() const
{
	return Slots.Num();
}

UWidget* UPanelWidget::GetChildAt(int32 Index) const
{
	return Slots.IsValidIndex(Index) && Slots[Index] ? Slots[Index]->Content.Get() : nullptr;
}

TArray<UWidget*> UPanelWidget::GetAllChildren() const
{
	TArray<UWidget*> Children;
	for (const UPanelSlot* PanelSlot : Slots)
	{
		if (PanelSlot && PanelSlot->Content)
		{
			Children.Add(PanelSlot->Content);
		}
	}
	return Children;
}

int32 UPanelWidget::GetChildIndex(const UWidget* Content) const
{
	for (int32 Index = 0; Index < Slots.Num(); ++Index)
	{
		if (Content && Slots[Index] && Slots[Index]->Content == Content)
		{
			return Index;
		}
	}
	return INDEX_NONE;
}

bool UPanelWidget::HasChild(UWidget* Content) const
{
	return GetChildIndex(Content) != INDEX_NONE;
}

bool UPanelWidget::CanHaveMultipleChildren() const
{
	// Content widgets (borders, buttons, size boxes...) hold a single child.
	static UClass* const ContentWidget = FindObject<UClass>(FTopLevelAssetPath(TEXT("/Script/UMG.ContentWidget")));
	return bCanHaveMultipleChildren && !(ContentWidget && GetClass()->IsChildOf(ContentWidget));
}

bool UPanelWidget::CanAddMoreChildren() const
{
	return CanHaveMultipleChildren() || Slots.Num() == 0;
}

UClass* UPanelWidget::GetSlotClass() const
{
	// Each panel kind of the engine has a slot kind named after it (CanvasPanel -> CanvasPanelSlot).
	for (const UClass* Class = GetClass(); Class && Class != UPanelWidget::StaticClass(); Class = Class->GetSuperClass())
	{
		const FString SlotPath = Class->GetOutermost()->GetName() + TEXT(".") + Class->GetName() + TEXT("Slot");
		if (UClass* SlotClass = FindObject<UClass>(FTopLevelAssetPath(*SlotPath)))
		{
			if (SlotClass->IsChildOf(UPanelSlot::StaticClass()))
			{
				return SlotClass;
			}
		}
	}
	return UPanelSlot::StaticClass();
}

UPanelSlot* UPanelWidget::AddChild(UWidget* Content)
{
	return InsertChildAt(Slots.Num(), Content);
}

UPanelSlot* UPanelWidget::InsertChildAt(int32 Index, UWidget* Content)
{
	if (!Content || Content == this || !CanAddMoreChildren())
	{
		return nullptr;
	}
	// A panel cannot hold its own ancestor.
	for (const UPanelWidget* Ancestor = this; Ancestor; Ancestor = Ancestor->GetParent())
	{
		if (Ancestor == Content)
		{
			return nullptr;
		}
	}
	Content->RemoveFromParent();
	UPanelSlot* NewSlot = NewObject<UPanelSlot>(this, GetSlotClass(), NAME_None, RF_Transactional);
	NewSlot->Parent = this;
	NewSlot->Content = Content;
	Content->Slot = NewSlot;
	Slots.Insert(TObjectPtr<UPanelSlot>(NewSlot), FMath::Clamp(Index, 0, Slots.Num()));
	return NewSlot;
}

bool UPanelWidget::RemoveChildAt(int32 Index)
{
	if (!Slots.IsValidIndex(Index))
	{
		return false;
	}
	UPanelSlot* PanelSlot = Slots[Index];
	Slots.RemoveAt(Index);
	if (PanelSlot)
	{
		if (PanelSlot->Content && PanelSlot->Content->Slot.Get() == PanelSlot)
		{
			PanelSlot->Content->Slot = nullptr;
		}
		PanelSlot->Parent = nullptr;
		PanelSlot->Content = nullptr;
		PanelSlot->MarkAsGarbage();
	}
	return true;
}

bool UPanelWidget::RemoveChild(UWidget* Content)
{
	return RemoveChildAt(GetChildIndex(Content));
}

void UPanelWidget::ClearChildren()
{
	while (Slots.Num() > 0)
	{
		RemoveChildAt(Slots.Num() - 1);
	}
}
