#include "Components/Border.h"
#include "Components/Button.h"
#include "Components/CanvasPanel.h"
#include "Components/CheckBox.h"
#include "Components/GridPanel.h"
#include "Components/HorizontalBox.h"
#include "Components/Overlay.h"
#include "Components/ScaleBox.h"
#include "Components/ScrollBox.h"
#include "Components/SizeBox.h"
#include "Components/UniformGridPanel.h"
#include "Components/VerticalBox.h"
#include "Components/WidgetSwitcher.h"
#include "Components/WrapBox.h"
#include "Templates/Casts.h"
#include "UObject/EnumProperty.h"
#include "UObject/UnrealType.h"
#include "WidgetEventSignatures.h"

using namespace UE::UMG::Private;

namespace
{
	constexpr EPropertyFlags SettingFlags = CPF_Edit | CPF_BlueprintVisible;

	FText PanelCategory()
	{
		return FText::FromString(TEXT("Panel"));
	}

	FText CommonCategory()
	{
		return FText::FromString(TEXT("Common"));
	}
}

IMPLEMENT_CLASS(UCanvasPanel)
IMPLEMENT_CLASS(UHorizontalBox)
IMPLEMENT_CLASS(UVerticalBox)
IMPLEMENT_CLASS(UOverlay)

IMPLEMENT_CLASS(UGridPanel,
	WithFloatElements(UE_NATIVE_PROPERTY(FArrayProperty, ColumnFill, SettingFlags));
	WithFloatElements(UE_NATIVE_PROPERTY(FArrayProperty, RowFill, SettingFlags));
)

IMPLEMENT_CLASS(UUniformGridPanel,
	UE_NATIVE_PROPERTY(FStructProperty, SlotPadding, SettingFlags, FMargin::StaticStruct());
	UE_NATIVE_PROPERTY(FFloatProperty, MinDesiredSlotWidth, SettingFlags);
	UE_NATIVE_PROPERTY(FFloatProperty, MinDesiredSlotHeight, SettingFlags);
)

IMPLEMENT_CLASS(UWrapBox,
	UE_NATIVE_PROPERTY(FStructProperty, InnerSlotPadding, SettingFlags, TBaseStructure<FVector2D>::Get());
	UE_NATIVE_PROPERTY(FFloatProperty, WrapSize, SettingFlags);
	UE_NATIVE_PROPERTY(FBoolProperty, bExplicitWrapSize, SettingFlags, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FByteProperty, HorizontalAlignment, SettingFlags, StaticEnum<EHorizontalAlignment>());
	UE_NATIVE_PROPERTY(FByteProperty, Orientation, SettingFlags, StaticEnum<EOrientation>());
)

IMPLEMENT_CLASS(UScrollBox,
	UE_NATIVE_PROPERTY(FByteProperty, Orientation, SettingFlags, StaticEnum<EOrientation>());
	WithByteUnderlying(UE_NATIVE_PROPERTY(FEnumProperty, ScrollBarVisibility, SettingFlags, StaticEnum<ESlateVisibility>()));
	UE_NATIVE_PROPERTY(FBoolProperty, AlwaysShowScrollbar, SettingFlags, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, AllowOverscroll, SettingFlags, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FMulticastInlineDelegateProperty, OnUserScrolled, CPF_BlueprintAssignable, FloatEventSignature(TEXT("OnUserScrolledEvent"), TEXT("CurrentOffset")));
)

IMPLEMENT_CLASS(UWidgetSwitcher,
	UE_NATIVE_PROPERTY(FIntProperty, ActiveWidgetIndex, SettingFlags);
)

IMPLEMENT_CLASS(UBorder,
	UE_NATIVE_PROPERTY(FByteProperty, HorizontalAlignment, SettingFlags, StaticEnum<EHorizontalAlignment>());
	UE_NATIVE_PROPERTY(FByteProperty, VerticalAlignment, SettingFlags, StaticEnum<EVerticalAlignment>());
	UE_NATIVE_PROPERTY(FStructProperty, Padding, SettingFlags, FMargin::StaticStruct());
	UE_NATIVE_PROPERTY(FStructProperty, ContentColorAndOpacity, SettingFlags, TBaseStructure<FLinearColor>::Get());
	UE_NATIVE_PROPERTY(FStructProperty, BrushColor, SettingFlags, TBaseStructure<FLinearColor>::Get());
	UE_NATIVE_PROPERTY(FBoolProperty, bShowEffectWhenDisabled, SettingFlags, 0, (uint32)sizeof(bool), true);
)

IMPLEMENT_CLASS(UButton)
IMPLEMENT_CLASS(UCheckBox)

IMPLEMENT_CLASS(USizeBox,
	UE_NATIVE_PROPERTY(FFloatProperty, WidthOverride, SettingFlags);
	UE_NATIVE_PROPERTY(FFloatProperty, HeightOverride, SettingFlags);
	UE_NATIVE_PROPERTY(FFloatProperty, MinDesiredWidth, SettingFlags);
	UE_NATIVE_PROPERTY(FFloatProperty, MinDesiredHeight, SettingFlags);
	UE_NATIVE_PROPERTY(FFloatProperty, MaxDesiredWidth, SettingFlags);
	UE_NATIVE_PROPERTY(FFloatProperty, MaxDesiredHeight, SettingFlags);
	UE_NATIVE_PROPERTY(FFloatProperty, MinAspectRatio, SettingFlags);
	UE_NATIVE_PROPERTY(FFloatProperty, MaxAspectRatio, SettingFlags);
	UE_NATIVE_PROPERTY(FBoolProperty, bOverride_WidthOverride, CPF_Edit, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bOverride_HeightOverride, CPF_Edit, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bOverride_MinDesiredWidth, CPF_Edit, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bOverride_MinDesiredHeight, CPF_Edit, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bOverride_MaxDesiredWidth, CPF_Edit, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bOverride_MaxDesiredHeight, CPF_Edit, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bOverride_MinAspectRatio, CPF_Edit, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bOverride_MaxAspectRatio, CPF_Edit, 0, (uint32)sizeof(bool), true);
)

IMPLEMENT_CLASS(UScaleBox,
	UE_NATIVE_PROPERTY(FFloatProperty, UserSpecifiedScale, SettingFlags);
	UE_NATIVE_PROPERTY(FBoolProperty, IgnoreInheritedScale, SettingFlags, 0, (uint32)sizeof(bool), true);
)

UCanvasPanel::UCanvasPanel() = default;
UHorizontalBox::UHorizontalBox() = default;
UVerticalBox::UVerticalBox() = default;
UOverlay::UOverlay() = default;
UGridPanel::UGridPanel() = default;
UUniformGridPanel::UUniformGridPanel() = default;
UWrapBox::UWrapBox() = default;
UScrollBox::UScrollBox() = default;
UWidgetSwitcher::UWidgetSwitcher() = default;
UBorder::UBorder() = default;
UButton::UButton() = default;
UCheckBox::UCheckBox() = default;
USizeBox::USizeBox() = default;
UScaleBox::UScaleBox() = default;

UClass* UCanvasPanel::GetSlotClass() const { return UCanvasPanelSlot::StaticClass(); }
UClass* UHorizontalBox::GetSlotClass() const { return UHorizontalBoxSlot::StaticClass(); }
UClass* UVerticalBox::GetSlotClass() const { return UVerticalBoxSlot::StaticClass(); }
UClass* UOverlay::GetSlotClass() const { return UOverlaySlot::StaticClass(); }
UClass* UGridPanel::GetSlotClass() const { return UGridSlot::StaticClass(); }
UClass* UUniformGridPanel::GetSlotClass() const { return UUniformGridSlot::StaticClass(); }
UClass* UWrapBox::GetSlotClass() const { return UWrapBoxSlot::StaticClass(); }
UClass* UScrollBox::GetSlotClass() const { return UScrollBoxSlot::StaticClass(); }
UClass* UWidgetSwitcher::GetSlotClass() const { return UWidgetSwitcherSlot::StaticClass(); }
UClass* UBorder::GetSlotClass() const { return UBorderSlot::StaticClass(); }
UClass* UButton::GetSlotClass() const { return UButtonSlot::StaticClass(); }
UClass* USizeBox::GetSlotClass() const { return USizeBoxSlot::StaticClass(); }
UClass* UScaleBox::GetSlotClass() const { return UScaleBoxSlot::StaticClass(); }

const FText UCanvasPanel::GetPaletteCategory() { return PanelCategory(); }
const FText UHorizontalBox::GetPaletteCategory() { return PanelCategory(); }
const FText UVerticalBox::GetPaletteCategory() { return PanelCategory(); }
const FText UOverlay::GetPaletteCategory() { return PanelCategory(); }
const FText UGridPanel::GetPaletteCategory() { return PanelCategory(); }
const FText UUniformGridPanel::GetPaletteCategory() { return PanelCategory(); }
const FText UWrapBox::GetPaletteCategory() { return PanelCategory(); }
const FText UScrollBox::GetPaletteCategory() { return PanelCategory(); }
const FText UWidgetSwitcher::GetPaletteCategory() { return PanelCategory(); }
const FText USizeBox::GetPaletteCategory() { return PanelCategory(); }
const FText UScaleBox::GetPaletteCategory() { return PanelCategory(); }
const FText UBorder::GetPaletteCategory() { return CommonCategory(); }
const FText UButton::GetPaletteCategory() { return CommonCategory(); }
const FText UCheckBox::GetPaletteCategory() { return CommonCategory(); }

UCanvasPanelSlot* UCanvasPanel::AddChildToCanvas(UWidget* Content)
{
	return Cast<UCanvasPanelSlot>(AddChild(Content));
}

UHorizontalBoxSlot* UHorizontalBox::AddChildToHorizontalBox(UWidget* Content)
{
	return Cast<UHorizontalBoxSlot>(AddChild(Content));
}

UVerticalBoxSlot* UVerticalBox::AddChildToVerticalBox(UWidget* Content)
{
	return Cast<UVerticalBoxSlot>(AddChild(Content));
}

UOverlaySlot* UOverlay::AddChildToOverlay(UWidget* Content)
{
	return Cast<UOverlaySlot>(AddChild(Content));
}

UWrapBoxSlot* UWrapBox::AddChildToWrapBox(UWidget* Content)
{
	return Cast<UWrapBoxSlot>(AddChild(Content));
}

UGridSlot* UGridPanel::AddChildToGrid(UWidget* Content, int32 InRow, int32 InColumn)
{
	UGridSlot* GridSlot = Cast<UGridSlot>(AddChild(Content));
	if (GridSlot)
	{
		GridSlot->SetRow(InRow);
		GridSlot->SetColumn(InColumn);
	}
	return GridSlot;
}

void UGridPanel::SetColumnFill(int32 ColumnIndex, float Coefficient)
{
	if (ColumnIndex < 0)
	{
		return;
	}
	// Columns before the one named take no share until they are given one.
	while (ColumnFill.Num() <= ColumnIndex)
	{
		ColumnFill.Add(0.0f);
	}
	ColumnFill[ColumnIndex] = Coefficient;
}

void UGridPanel::SetRowFill(int32 RowIndex, float Coefficient)
{
	if (RowIndex < 0)
	{
		return;
	}
	while (RowFill.Num() <= RowIndex)
	{
		RowFill.Add(0.0f);
	}
	RowFill[RowIndex] = Coefficient;
}

UUniformGridSlot* UUniformGridPanel::AddChildToUniformGrid(UWidget* Content, int32 InRow, int32 InColumn)
{
	UUniformGridSlot* GridSlot = Cast<UUniformGridSlot>(AddChild(Content));
	if (GridSlot)
	{
		GridSlot->SetRow(InRow);
		GridSlot->SetColumn(InColumn);
	}
	return GridSlot;
}

int32 UWidgetSwitcher::GetNumWidgets() const
{
	return GetChildrenCount();
}

int32 UWidgetSwitcher::GetActiveWidgetIndex() const
{
	return GetChildrenCount() == 0 ? 0 : FMath::Clamp(ActiveWidgetIndex, 0, GetChildrenCount() - 1);
}

void UWidgetSwitcher::SetActiveWidgetIndex(int32 Index)
{
	ActiveWidgetIndex = GetChildrenCount() == 0 ? 0 : FMath::Clamp(Index, 0, GetChildrenCount() - 1);
}

void UWidgetSwitcher::SetActiveWidget(UWidget* Widget)
{
	const int32 Index = GetChildIndex(Widget);
	if (Index != INDEX_NONE)
	{
		ActiveWidgetIndex = Index;
	}
}

UWidget* UWidgetSwitcher::GetActiveWidget() const
{
	return GetChildAt(GetActiveWidgetIndex());
}

UWidget* UWidgetSwitcher::GetWidgetAtIndex(int32 Index) const
{
	return GetChildAt(Index);
}

void UBorder::OnSlotAdded(UPanelSlot* InSlot)
{
	// The slot starts from the border's own values, which the setters keep it in step with.
	if (UBorderSlot* BorderSlot = Cast<UBorderSlot>(InSlot))
	{
		BorderSlot->Padding = Padding;
		BorderSlot->HorizontalAlignment = HorizontalAlignment;
		BorderSlot->VerticalAlignment = VerticalAlignment;
	}
}

void UBorder::SetPadding(FMargin InPadding)
{
	Padding = InPadding;
	if (UBorderSlot* BorderSlot = Cast<UBorderSlot>(GetContentSlot()))
	{
		BorderSlot->SetPadding(InPadding);
	}
}

void UBorder::SetHorizontalAlignment(EHorizontalAlignment InHorizontalAlignment)
{
	HorizontalAlignment = InHorizontalAlignment;
	if (UBorderSlot* BorderSlot = Cast<UBorderSlot>(GetContentSlot()))
	{
		BorderSlot->SetHorizontalAlignment(InHorizontalAlignment);
	}
}

void UBorder::SetVerticalAlignment(EVerticalAlignment InVerticalAlignment)
{
	VerticalAlignment = InVerticalAlignment;
	if (UBorderSlot* BorderSlot = Cast<UBorderSlot>(GetContentSlot()))
	{
		BorderSlot->SetVerticalAlignment(InVerticalAlignment);
	}
}
