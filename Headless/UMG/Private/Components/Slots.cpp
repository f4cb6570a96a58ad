#include "Components/BorderSlot.h"
#include "Components/ButtonSlot.h"
#include "Components/CanvasPanelSlot.h"
#include "Components/GridSlot.h"
#include "Components/HorizontalBoxSlot.h"
#include "Components/OverlaySlot.h"
#include "Components/ScaleBoxSlot.h"
#include "Components/ScrollBoxSlot.h"
#include "Components/SizeBoxSlot.h"
#include "Components/SlateWrapperTypes.h"
#include "Components/UniformGridSlot.h"
#include "Components/VerticalBoxSlot.h"
#include "Components/WidgetSwitcherSlot.h"
#include "Components/WrapBoxSlot.h"
#include "Slate/WidgetTransform.h"
#include "UObject/EnumProperty.h"
#include "UObject/UnrealType.h"

namespace
{
	constexpr EPropertyFlags LayoutFlags = CPF_Edit | CPF_BlueprintVisible;

	void SetEntries(UEnum* Enum, std::initializer_list<const TCHAR*> Names, UEnum::ECppForm Form)
	{
		TArray<TPair<FName, int64>> Entries;
		int64 Value = 0;
		for (const TCHAR* Name : Names)
		{
			Entries.Emplace(FName(Name), Value++);
		}
		Enum->SetEnums(Entries, Form, EEnumFlags::None, true);
		Enum->SetMetaData(TEXT("BlueprintType"), TEXT("true"));
	}
}

IMPLEMENT_NATIVE_ENUM(ESlateVisibility, TEXT("/Script/UMG"),
	SetEntries(Enum, {TEXT("ESlateVisibility::Visible"), TEXT("ESlateVisibility::Collapsed"), TEXT("ESlateVisibility::Hidden"),
		TEXT("ESlateVisibility::HitTestInvisible"), TEXT("ESlateVisibility::SelfHitTestInvisible")}, UEnum::ECppForm::EnumClass);
)

template <> UEnum* StaticEnum<ESlateSizeRule::Type>()
{
	static UEnum* PrivateStaticEnum = nullptr;
	if (!PrivateStaticEnum)
	{
		::UE::CoreUObject::Private::ConstructNativeEnum(PrivateStaticEnum, TEXT("/Script/UMG"), TEXT("ESlateSizeRule"), TEXT("ESlateSizeRule::Type"),
			[](UEnum* Enum) { SetEntries(Enum, {TEXT("ESlateSizeRule::Automatic"), TEXT("ESlateSizeRule::Fill")}, UEnum::ECppForm::Namespaced); });
	}
	return PrivateStaticEnum;
}
static ::UE::CoreUObject::Private::FRegisterCompiledInType Z_CompiledInEnum_ESlateSizeRule([]() -> UObject* { return StaticEnum<ESlateSizeRule::Type>(); });

IMPLEMENT_SCRIPT_STRUCT(FSlateChildSize, TEXT("/Script/UMG"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FFloatProperty, Value, LayoutFlags);
	UE_NATIVE_PROPERTY(FByteProperty, SizeRule, LayoutFlags, StaticEnum<ESlateSizeRule::Type>());
	Struct->SetMetaData(TEXT("BlueprintType"), TEXT("true"));
)

IMPLEMENT_SCRIPT_STRUCT(FWidgetTransform, TEXT("/Script/UMG"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FStructProperty, Translation, LayoutFlags, TBaseStructure<FVector2D>::Get());
	UE_NATIVE_PROPERTY(FStructProperty, Scale, LayoutFlags, TBaseStructure<FVector2D>::Get());
	UE_NATIVE_PROPERTY(FStructProperty, Shear, LayoutFlags, TBaseStructure<FVector2D>::Get());
	UE_NATIVE_PROPERTY(FFloatProperty, Angle, LayoutFlags);
	Struct->SetMetaData(TEXT("BlueprintType"), TEXT("true"));
)

IMPLEMENT_SCRIPT_STRUCT(FAnchorData, TEXT("/Script/UMG"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FStructProperty, Offsets, LayoutFlags, FMargin::StaticStruct());
	UE_NATIVE_PROPERTY(FStructProperty, Anchors, LayoutFlags, FAnchors::StaticStruct());
	UE_NATIVE_PROPERTY(FStructProperty, Alignment, LayoutFlags, TBaseStructure<FVector2D>::Get());
	Struct->SetMetaData(TEXT("BlueprintType"), TEXT("true"));
)

// The layout members every slot kind reflects, in the engine's order for each kind.
#define UE_SLOT_PADDING() UE_NATIVE_PROPERTY(FStructProperty, Padding, LayoutFlags, FMargin::StaticStruct())
#define UE_SLOT_SIZE() UE_NATIVE_PROPERTY(FStructProperty, Size, LayoutFlags, FSlateChildSize::StaticStruct())
#define UE_SLOT_ALIGNMENT() \
	UE_NATIVE_PROPERTY(FByteProperty, HorizontalAlignment, LayoutFlags, StaticEnum<EHorizontalAlignment>()); \
	UE_NATIVE_PROPERTY(FByteProperty, VerticalAlignment, LayoutFlags, StaticEnum<EVerticalAlignment>())

IMPLEMENT_CLASS(UCanvasPanelSlot,
	UE_NATIVE_PROPERTY(FStructProperty, LayoutData, LayoutFlags, FAnchorData::StaticStruct());
	UE_NATIVE_PROPERTY(FBoolProperty, bAutoSize, LayoutFlags, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FIntProperty, ZOrder, LayoutFlags);
)

IMPLEMENT_CLASS(UHorizontalBoxSlot,
	UE_SLOT_PADDING();
	UE_SLOT_SIZE();
	UE_SLOT_ALIGNMENT();
)

IMPLEMENT_CLASS(UVerticalBoxSlot,
	UE_SLOT_PADDING();
	UE_SLOT_SIZE();
	UE_SLOT_ALIGNMENT();
)

IMPLEMENT_CLASS(UScrollBoxSlot,
	UE_SLOT_PADDING();
	UE_SLOT_SIZE();
	UE_SLOT_ALIGNMENT();
)

IMPLEMENT_CLASS(UOverlaySlot,
	UE_SLOT_PADDING();
	UE_SLOT_ALIGNMENT();
)

IMPLEMENT_CLASS(UBorderSlot,
	UE_SLOT_PADDING();
	UE_SLOT_ALIGNMENT();
)

IMPLEMENT_CLASS(UButtonSlot,
	UE_SLOT_PADDING();
	UE_SLOT_ALIGNMENT();
)

IMPLEMENT_CLASS(USizeBoxSlot,
	UE_SLOT_PADDING();
	UE_SLOT_ALIGNMENT();
)

IMPLEMENT_CLASS(UScaleBoxSlot,
	UE_SLOT_ALIGNMENT();
)

IMPLEMENT_CLASS(UWidgetSwitcherSlot,
	UE_SLOT_PADDING();
	UE_SLOT_ALIGNMENT();
)

IMPLEMENT_CLASS(UWrapBoxSlot,
	UE_SLOT_PADDING();
	UE_NATIVE_PROPERTY(FBoolProperty, bFillEmptySpace, LayoutFlags, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FFloatProperty, FillSpanWhenLessThan, LayoutFlags);
	UE_SLOT_ALIGNMENT();
	UE_NATIVE_PROPERTY(FBoolProperty, bForceNewLine, LayoutFlags, 0, (uint32)sizeof(bool), true);
)

IMPLEMENT_CLASS(UGridSlot,
	UE_SLOT_PADDING();
	UE_SLOT_ALIGNMENT();
	UE_NATIVE_PROPERTY(FIntProperty, Row, LayoutFlags);
	UE_NATIVE_PROPERTY(FIntProperty, RowSpan, LayoutFlags);
	UE_NATIVE_PROPERTY(FIntProperty, Column, LayoutFlags);
	UE_NATIVE_PROPERTY(FIntProperty, ColumnSpan, LayoutFlags);
	UE_NATIVE_PROPERTY(FIntProperty, Layer, LayoutFlags);
	UE_NATIVE_PROPERTY(FStructProperty, Nudge, LayoutFlags, TBaseStructure<FVector2D>::Get());
)

IMPLEMENT_CLASS(UUniformGridSlot,
	UE_SLOT_ALIGNMENT();
	UE_NATIVE_PROPERTY(FIntProperty, Row, LayoutFlags);
	UE_NATIVE_PROPERTY(FIntProperty, Column, LayoutFlags);
)

UCanvasPanelSlot::UCanvasPanelSlot()
{
	// A new canvas child sits at the top left, 100 by 30.
	LayoutData.Offsets = FMargin(0.0f, 0.0f, 100.0f, 30.0f);
}

UHorizontalBoxSlot::UHorizontalBoxSlot() = default;
UVerticalBoxSlot::UVerticalBoxSlot() = default;
UScrollBoxSlot::UScrollBoxSlot() = default;
UOverlaySlot::UOverlaySlot() = default;
UBorderSlot::UBorderSlot() = default;
UButtonSlot::UButtonSlot() = default;
USizeBoxSlot::USizeBoxSlot() = default;
UScaleBoxSlot::UScaleBoxSlot() = default;
UWidgetSwitcherSlot::UWidgetSwitcherSlot() = default;
UWrapBoxSlot::UWrapBoxSlot() = default;
UGridSlot::UGridSlot() = default;
UUniformGridSlot::UUniformGridSlot() = default;

void UCanvasPanelSlot::SetPosition(FVector2D InPosition)
{
	LayoutData.Offsets.Left = float(InPosition.X);
	LayoutData.Offsets.Top = float(InPosition.Y);
}

FVector2D UCanvasPanelSlot::GetPosition() const
{
	return FVector2D(LayoutData.Offsets.Left, LayoutData.Offsets.Top);
}

void UCanvasPanelSlot::SetSize(FVector2D InSize)
{
	LayoutData.Offsets.Right = float(InSize.X);
	LayoutData.Offsets.Bottom = float(InSize.Y);
}

FVector2D UCanvasPanelSlot::GetSize() const
{
	return FVector2D(LayoutData.Offsets.Right, LayoutData.Offsets.Bottom);
}
