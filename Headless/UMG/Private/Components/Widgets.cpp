#include "Components/ContentWidget.h"
#include "Components/PanelSlot.h"
#include "Components/PanelWidget.h"
#include "Components/Visual.h"
#include "Components/Widget.h"
#include "UObject/Package.h"
#include "Templates/Casts.h"
#include "UObject/EnumProperty.h"
#include "UObject/TextProperty.h"
#include "UObject/UnrealType.h"
#include "UObject/UObjectGlobals.h"

IMPLEMENT_CLASS(UVisual)

IMPLEMENT_CLASS(UPanelSlot,
	UE_NATIVE_PROPERTY(FObjectProperty, Parent, CPF_TObjectPtr, UPanelWidget::StaticClass());
	UE_NATIVE_PROPERTY(FObjectProperty, Content, CPF_TObjectPtr, UWidget::StaticClass());
)

namespace
{
	FEnumProperty* WithByteUnderlying(FEnumProperty* Enum)
	{
		Enum->AddCppProperty(new FByteProperty(Enum, TEXT("UnderlyingType"), RF_Public | RF_MarkAsNative | RF_Transient));
		return Enum;
	}

	FArrayProperty* WithSlotElements(FArrayProperty* Array)
	{
		Array->AddCppProperty(new FObjectProperty(Array, Array->GetFName(), RF_Public | RF_MarkAsNative | RF_Transient, 0, CPF_TObjectPtr | CPF_InstancedReference, UPanelSlot::StaticClass()));
		return Array;
	}
}

IMPLEMENT_CLASS(UWidget,
	UE_NATIVE_PROPERTY(FObjectProperty, Slot, CPF_TObjectPtr | CPF_InstancedReference, UPanelSlot::StaticClass());
	UE_NATIVE_PROPERTY(FTextProperty, ToolTipText, CPF_Edit | CPF_BlueprintVisible);
	UE_NATIVE_PROPERTY(FObjectProperty, ToolTipWidget, CPF_Edit | CPF_BlueprintVisible | CPF_EditConst | CPF_AdvancedDisplay | CPF_TObjectPtr | CPF_UObjectWrapper, UWidget::StaticClass());
	UE_NATIVE_PROPERTY(FStructProperty, RenderTransform, CPF_Edit | CPF_BlueprintVisible, FWidgetTransform::StaticStruct());
	UE_NATIVE_PROPERTY(FStructProperty, RenderTransformPivot, CPF_Edit | CPF_BlueprintVisible, TBaseStructure<FVector2D>::Get());
	UE_NATIVE_PROPERTY(FBoolProperty, bIsVariable, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bIsEnabled, CPF_Edit | CPF_BlueprintVisible, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bIsVolatile, CPF_Edit | CPF_BlueprintVisible | CPF_BlueprintReadOnly, 0, (uint32)sizeof(bool), true);
	WithByteUnderlying(UE_NATIVE_PROPERTY(FEnumProperty, Visibility, CPF_Edit | CPF_BlueprintVisible, StaticEnum<ESlateVisibility>()));
	UE_NATIVE_PROPERTY(FFloatProperty, RenderOpacity, CPF_Edit | CPF_BlueprintVisible);
	UE_NATIVE_PROPERTY(FStrProperty, DisplayLabel, CPF_None);
)

IMPLEMENT_CLASS(UContentWidget)

IMPLEMENT_CLASS(UPanelWidget,
	WithSlotElements(UE_NATIVE_PROPERTY(FArrayProperty, Slots, CPF_None));
)

UVisual::UVisual() = default;
UPanelSlot::UPanelSlot() = default;
UWidget::UWidget() = default;
UPanelWidget::UPanelWidget() = default;

UContentWidget::UContentWidget()
{
	bCanHaveMultipleChildren = false;
}

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

bool UWidget::IsVisible() const
{
	return Visibility == ESlateVisibility::Visible || Visibility == ESlateVisibility::HitTestInvisible || Visibility == ESlateVisibility::SelfHitTestInvisible;
}

void UWidget::SetRenderOpacity(float InOpacity)
{
	RenderOpacity = FMath::Clamp(InOpacity, 0.0f, 1.0f);
}

const FText UWidget::GetPaletteCategory()
{
	return FText::FromString(TEXT("Uncategorized"));
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
	return bCanHaveMultipleChildren;
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
	OnSlotAdded(NewSlot);
	return NewSlot;
}

void UPanelWidget::ShiftChild(int32 Index, UWidget* Child)
{
	const int32 CurrentIndex = GetChildIndex(Child);
	if (CurrentIndex == INDEX_NONE)
	{
		return;
	}
	TObjectPtr<UPanelSlot> Moved = Slots[CurrentIndex];
	Slots.RemoveAt(CurrentIndex);
	Slots.Insert(Moved, FMath::Clamp(Index, 0, Slots.Num()));
}

bool UPanelWidget::ReplaceChildAt(int32 Index, UWidget* Content)
{
	if (!Slots.IsValidIndex(Index) || !Slots[Index] || !Content)
	{
		return false;
	}
	UPanelSlot* PanelSlot = Slots[Index];
	if (PanelSlot->Content.Get() == Content)
	{
		return true;
	}
	// The newcomer may not be this panel or one of its ancestors.
	for (const UPanelWidget* Ancestor = this; Ancestor; Ancestor = Ancestor->GetParent())
	{
		if (Ancestor == Content)
		{
			return false;
		}
	}
	Content->RemoveFromParent();
	if (PanelSlot->Content && PanelSlot->Content->Slot.Get() == PanelSlot)
	{
		PanelSlot->Content->Slot = nullptr;
	}
	PanelSlot->Content = Content;
	Content->Slot = PanelSlot;
	return true;
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
		OnSlotRemoved(PanelSlot);
		PanelSlot->Parent = nullptr;
		PanelSlot->Content = nullptr;
		PanelSlot->MarkAsGarbage();
	}
	return true;
}

UPanelSlot* UContentWidget::GetContentSlot() const
{
	return Slots.Num() > 0 ? Slots[0].Get() : nullptr;
}

UWidget* UContentWidget::GetContent() const
{
	return GetChildAt(0);
}

UPanelSlot* UContentWidget::SetContent(UWidget* Content)
{
	if (Content && Content == GetContent())
	{
		return GetContentSlot();
	}
	ClearChildren();
	return Content ? AddChild(Content) : nullptr;
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
