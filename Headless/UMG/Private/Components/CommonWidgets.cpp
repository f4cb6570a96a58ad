#include "Components/CircularThrobber.h"
#include "Components/ComboBoxString.h"
#include "Components/EditableText.h"
#include "Components/EditableTextBox.h"
#include "Components/Image.h"
#include "Components/ListView.h"
#include "Components/MultiLineEditableTextBox.h"
#include "Components/ProgressBar.h"
#include "Components/RichTextBlock.h"
#include "Components/Slider.h"
#include "Components/Spacer.h"
#include "Components/SpinBox.h"
#include "Components/TextBlock.h"
#include "Components/Throbber.h"
#include "Blueprint/UserWidget.h"
#include "Templates/Casts.h"
#include "UObject/EnumProperty.h"
#include "UObject/Package.h"
#include "UObject/TextProperty.h"
#include "UObject/UnrealType.h"
#include "WidgetEventSignatures.h"

namespace UE::UMG::Private
{
	namespace
	{
		constexpr EObjectFlags FieldFlags = RF_Public | RF_MarkAsNative | RF_Transient;

		FProperty* MakeParam(UFunction* Signature, const FEventParam& Param)
		{
			const FName Name(Param.Name);
			FProperty* Property = nullptr;
			EPropertyFlags Flags = CPF_Parm;
			switch (Param.Kind)
			{
			case FEventParam::EKind::Float:
				Property = new FFloatProperty(Signature, Name, FieldFlags);
				break;
			case FEventParam::EKind::Bool:
				Property = new FBoolProperty(Signature, Name, FieldFlags);
				break;
			case FEventParam::EKind::String:
				Property = new FStrProperty(Signature, Name, FieldFlags);
				break;
			case FEventParam::EKind::ConstText:
				// A text passed by const reference, as event handlers receive it.
				Property = new FTextProperty(Signature, Name, FieldFlags);
				Flags |= CPF_ConstParm | CPF_OutParm | CPF_ReferenceParm;
				break;
			case FEventParam::EKind::Object:
			{
				FObjectProperty* Object = new FObjectProperty(Signature, Name, FieldFlags);
				Object->SetPropertyClass(Param.Type ? CastChecked<UClass>(Param.Type) : UObject::StaticClass());
				Property = Object;
				break;
			}
			case FEventParam::EKind::Enum:
			{
				FByteProperty* Byte = new FByteProperty(Signature, Name, FieldFlags);
				Byte->Enum = CastChecked<UEnum>(Param.Type);
				Property = Byte;
				break;
			}
			}
			Property->SetPropertyFlags(Flags);
			return Property;
		}
	}

	UFunction* EventSignature(const TCHAR* Name, std::initializer_list<FEventParam> Params)
	{
		static TMap<FString, UFunction*> Signatures;
		if (UFunction** Found = Signatures.Find(Name))
		{
			return *Found;
		}
		UPackage* Package = CreatePackage(TEXT("/Script/UMG"));
		UFunction* Signature = NewObject<UFunction>(Package, UDelegateFunction::StaticClass(), FName(FString(Name) + TEXT("__DelegateSignature")), FieldFlags);
		check(Signature);
		Signature->AddToRoot();
		EFunctionFlags Flags = FUNC_Public | FUNC_Delegate | FUNC_MulticastDelegate;
		TArray<FProperty*> Properties;
		for (const FEventParam& Param : Params)
		{
			FProperty* Property = MakeParam(Signature, Param);
			if (Property->HasAnyPropertyFlags(CPF_OutParm))
			{
				Flags |= FUNC_HasOutParms;
			}
			Properties.Add(Property);
		}
		// AddCppProperty puts each parameter first, so the last goes in first.
		for (int32 Index = Properties.Num() - 1; Index >= 0; --Index)
		{
			Signature->AddCppProperty(Properties[Index]);
		}
		Signature->FunctionFlags = Flags;
		Signature->Bind();
		Signature->StaticLink(true);
		Signatures.Add(Name, Signature);
		return Signature;
	}

	UFunction* FloatEventSignature(const TCHAR* Name, const TCHAR* ParamName)
	{
		return EventSignature(Name, {{ParamName, FEventParam::EKind::Float}});
	}

	FEnumProperty* WithByteUnderlying(FEnumProperty* Enum)
	{
		Enum->AddCppProperty(new FByteProperty(Enum, TEXT("UnderlyingType"), FieldFlags));
		return Enum;
	}

	FArrayProperty* WithFloatElements(FArrayProperty* Array)
	{
		Array->AddCppProperty(new FFloatProperty(Array, Array->GetFName(), FieldFlags));
		return Array;
	}

	FArrayProperty* WithStringElements(FArrayProperty* Array)
	{
		Array->AddCppProperty(new FStrProperty(Array, Array->GetFName(), FieldFlags));
		return Array;
	}

	FArrayProperty* WithObjectElements(FArrayProperty* Array, UClass* Class)
	{
		Array->AddCppProperty(new FObjectProperty(Array, Array->GetFName(), FieldFlags, 0, CPF_TObjectPtr, Class));
		return Array;
	}
}

using namespace UE::UMG::Private;

namespace
{
	constexpr EPropertyFlags SettingFlags = CPF_Edit | CPF_BlueprintVisible;
	constexpr EPropertyFlags EventFlags = CPF_BlueprintAssignable;

	UFunction* TextChangedSignature(const TCHAR* Name)
	{
		return EventSignature(Name, {{TEXT("Text"), FEventParam::EKind::ConstText}});
	}

	UFunction* TextCommittedSignature(const TCHAR* Name)
	{
		return EventSignature(Name, {{TEXT("Text"), FEventParam::EKind::ConstText}, {TEXT("CommitMethod"), FEventParam::EKind::Enum, StaticEnum<ETextCommit::Type>()}});
	}

	UFunction* ListItemSignature()
	{
		return EventSignature(TEXT("SimpleListItemEventDynamic"), {{TEXT("Item"), FEventParam::EKind::Object}});
	}

	FText Category(const TCHAR* Name)
	{
		return FText::FromString(Name);
	}

	void SetEntries(UEnum* Enum, std::initializer_list<const TCHAR*> Names)
	{
		TArray<TPair<FName, int64>> Entries;
		int64 Value = 0;
		for (const TCHAR* Name : Names)
		{
			Entries.Emplace(FName(Name), Value++);
		}
		Enum->SetEnums(Entries, UEnum::ECppForm::Namespaced, EEnumFlags::None, true);
		Enum->SetMetaData(TEXT("BlueprintType"), TEXT("true"));
	}
}

template <> UEnum* StaticEnum<EProgressBarFillType::Type>()
{
	static UEnum* PrivateStaticEnum = nullptr;
	if (!PrivateStaticEnum)
	{
		::UE::CoreUObject::Private::ConstructNativeEnum(PrivateStaticEnum, TEXT("/Script/UMG"), TEXT("EProgressBarFillType"), TEXT("EProgressBarFillType::Type"),
			[](UEnum* Enum)
			{
				SetEntries(Enum, {TEXT("EProgressBarFillType::LeftToRight"), TEXT("EProgressBarFillType::RightToLeft"), TEXT("EProgressBarFillType::FillFromCenter"),
					TEXT("EProgressBarFillType::FillFromCenterHorizontal"), TEXT("EProgressBarFillType::FillFromCenterVertical"), TEXT("EProgressBarFillType::TopToBottom"),
					TEXT("EProgressBarFillType::BottomToTop")});
			});
	}
	return PrivateStaticEnum;
}
static ::UE::CoreUObject::Private::FRegisterCompiledInType Z_CompiledInEnum_EProgressBarFillType([]() -> UObject* { return StaticEnum<EProgressBarFillType::Type>(); });

IMPLEMENT_CLASS(UImage)
IMPLEMENT_CLASS(UEditableTextBox)
IMPLEMENT_CLASS(USlider)

IMPLEMENT_CLASS(UTextLayoutWidget,
	UE_NATIVE_PROPERTY(FBoolProperty, AutoWrapText, SettingFlags, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FFloatProperty, WrapTextAt, SettingFlags);
	UE_NATIVE_PROPERTY(FStructProperty, Margin, SettingFlags | CPF_AdvancedDisplay, FMargin::StaticStruct());
	UE_NATIVE_PROPERTY(FFloatProperty, LineHeightPercentage, SettingFlags | CPF_AdvancedDisplay);
	UE_NATIVE_PROPERTY(FBoolProperty, ApplyLineHeightToBottomLine, SettingFlags | CPF_AdvancedDisplay, 0, (uint32)sizeof(bool), true);
)

IMPLEMENT_CLASS(UTextBlock,
	UE_NATIVE_PROPERTY(FTextProperty, Text, SettingFlags);
)

IMPLEMENT_CLASS(URichTextBlock,
	UE_NATIVE_PROPERTY(FTextProperty, Text, SettingFlags);
	UE_NATIVE_PROPERTY(FBoolProperty, bOverrideDefaultStyle, SettingFlags, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FFloatProperty, MinDesiredWidth, SettingFlags);
)

IMPLEMENT_CLASS(UEditableText,
	UE_NATIVE_PROPERTY(FTextProperty, Text, SettingFlags);
	UE_NATIVE_PROPERTY(FTextProperty, HintText, SettingFlags);
	UE_NATIVE_PROPERTY(FBoolProperty, IsReadOnly, SettingFlags, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, IsPassword, SettingFlags, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FFloatProperty, MinimumDesiredWidth, SettingFlags);
	UE_NATIVE_PROPERTY(FBoolProperty, IsCaretMovedWhenGainFocus, SettingFlags | CPF_AdvancedDisplay, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, SelectAllTextWhenFocused, SettingFlags | CPF_AdvancedDisplay, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, RevertTextOnEscape, SettingFlags | CPF_AdvancedDisplay, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, ClearKeyboardFocusOnCommit, SettingFlags | CPF_AdvancedDisplay, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, SelectAllTextOnCommit, SettingFlags | CPF_AdvancedDisplay, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FMulticastInlineDelegateProperty, OnTextChanged, EventFlags, TextChangedSignature(TEXT("OnEditableTextChangedEvent")));
	UE_NATIVE_PROPERTY(FMulticastInlineDelegateProperty, OnTextCommitted, EventFlags, TextCommittedSignature(TEXT("OnEditableTextCommittedEvent")));
)

IMPLEMENT_CLASS(UMultiLineEditableTextBox,
	UE_NATIVE_PROPERTY(FTextProperty, Text, SettingFlags);
	UE_NATIVE_PROPERTY(FTextProperty, HintText, SettingFlags);
	UE_NATIVE_PROPERTY(FBoolProperty, bIsReadOnly, SettingFlags, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, AllowContextMenu, SettingFlags | CPF_AdvancedDisplay, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FMulticastInlineDelegateProperty, OnTextChanged, EventFlags, TextChangedSignature(TEXT("OnMultiLineEditableTextBoxChangedEvent")));
	UE_NATIVE_PROPERTY(FMulticastInlineDelegateProperty, OnTextCommitted, EventFlags, TextCommittedSignature(TEXT("OnMultiLineEditableTextBoxCommittedEvent")));
)

IMPLEMENT_CLASS(UProgressBar,
	UE_NATIVE_PROPERTY(FFloatProperty, Percent, SettingFlags);
	UE_NATIVE_PROPERTY(FByteProperty, BarFillType, SettingFlags, StaticEnum<EProgressBarFillType::Type>());
	UE_NATIVE_PROPERTY(FBoolProperty, bIsMarquee, SettingFlags, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FStructProperty, FillColorAndOpacity, SettingFlags, TBaseStructure<FLinearColor>::Get());
)

IMPLEMENT_CLASS(UComboBoxString,
	WithStringElements(UE_NATIVE_PROPERTY(FArrayProperty, DefaultOptions, CPF_Edit));
	UE_NATIVE_PROPERTY(FStrProperty, SelectedOption, CPF_Edit);
	UE_NATIVE_PROPERTY(FFloatProperty, MaxListHeight, SettingFlags);
	UE_NATIVE_PROPERTY(FBoolProperty, HasDownArrow, SettingFlags, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, EnableGamepadNavigationMode, SettingFlags, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bIsFocusable, SettingFlags, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FMulticastInlineDelegateProperty, OnSelectionChanged, EventFlags,
		EventSignature(TEXT("OnSelectionChangedEvent"), {{TEXT("SelectedItem"), FEventParam::EKind::String}, {TEXT("SelectionType"), FEventParam::EKind::Enum, StaticEnum<ESelectInfo::Type>()}}));
	UE_NATIVE_PROPERTY(FMulticastInlineDelegateProperty, OnOpening, EventFlags, EventSignature(TEXT("OnOpeningEvent"), {}));
)

IMPLEMENT_CLASS(USpinBox,
	UE_NATIVE_PROPERTY(FFloatProperty, Value, SettingFlags);
	UE_NATIVE_PROPERTY(FFloatProperty, MinValue, SettingFlags);
	UE_NATIVE_PROPERTY(FFloatProperty, MaxValue, SettingFlags);
	UE_NATIVE_PROPERTY(FFloatProperty, MinSliderValue, SettingFlags);
	UE_NATIVE_PROPERTY(FFloatProperty, MaxSliderValue, SettingFlags);
	UE_NATIVE_PROPERTY(FIntProperty, MinFractionalDigits, SettingFlags);
	UE_NATIVE_PROPERTY(FIntProperty, MaxFractionalDigits, SettingFlags);
	UE_NATIVE_PROPERTY(FBoolProperty, bAlwaysUsesDeltaSnap, SettingFlags, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FFloatProperty, Delta, SettingFlags);
	UE_NATIVE_PROPERTY(FFloatProperty, SliderExponent, SettingFlags);
	UE_NATIVE_PROPERTY(FFloatProperty, MinDesiredWidth, SettingFlags);
	UE_NATIVE_PROPERTY(FBoolProperty, ClearKeyboardFocusOnCommit, SettingFlags, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, SelectAllTextOnCommit, SettingFlags, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bOverride_MinValue, CPF_Edit, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bOverride_MaxValue, CPF_Edit, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bOverride_MinSliderValue, CPF_Edit, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bOverride_MaxSliderValue, CPF_Edit, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FMulticastInlineDelegateProperty, OnValueChanged, EventFlags, FloatEventSignature(TEXT("OnSpinBoxValueChangedEvent"), TEXT("InValue")));
	UE_NATIVE_PROPERTY(FMulticastInlineDelegateProperty, OnValueCommitted, EventFlags,
		EventSignature(TEXT("OnSpinBoxValueCommittedEvent"), {{TEXT("InValue"), FEventParam::EKind::Float}, {TEXT("CommitMethod"), FEventParam::EKind::Enum, StaticEnum<ETextCommit::Type>()}}));
	UE_NATIVE_PROPERTY(FMulticastInlineDelegateProperty, OnBeginSliderMovement, EventFlags, EventSignature(TEXT("OnSpinBoxBeginSliderMovement"), {}));
	UE_NATIVE_PROPERTY(FMulticastInlineDelegateProperty, OnEndSliderMovement, EventFlags, FloatEventSignature(TEXT("OnSpinBoxValueChangedEvent"), TEXT("InValue")));
)

IMPLEMENT_CLASS(USpacer,
	UE_NATIVE_PROPERTY(FStructProperty, Size, SettingFlags, TBaseStructure<FVector2D>::Get());
)

IMPLEMENT_CLASS(UCircularThrobber,
	UE_NATIVE_PROPERTY(FIntProperty, NumberOfPieces, SettingFlags);
	UE_NATIVE_PROPERTY(FFloatProperty, Period, SettingFlags);
	UE_NATIVE_PROPERTY(FFloatProperty, Radius, SettingFlags);
	UE_NATIVE_PROPERTY(FBoolProperty, bEnableRadius, CPF_Edit, 0, (uint32)sizeof(bool), true);
)

IMPLEMENT_CLASS(UThrobber,
	UE_NATIVE_PROPERTY(FIntProperty, NumberOfPieces, SettingFlags);
	UE_NATIVE_PROPERTY(FBoolProperty, bAnimateHorizontally, SettingFlags, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bAnimateVertically, SettingFlags, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bAnimateOpacity, SettingFlags, 0, (uint32)sizeof(bool), true);
)

IMPLEMENT_CLASS(UListViewBase,
	UE_NATIVE_PROPERTY(FClassProperty, EntryWidgetClass, CPF_Edit | CPF_UObjectWrapper, UUserWidget::StaticClass());
)

IMPLEMENT_CLASS(UListView,
	UE_NATIVE_PROPERTY(FByteProperty, Orientation, SettingFlags, StaticEnum<EOrientation>());
	UE_NATIVE_PROPERTY(FFloatProperty, EntrySpacing, SettingFlags);
	UE_NATIVE_PROPERTY(FBoolProperty, bClearSelectionOnClick, SettingFlags, 0, (uint32)sizeof(bool), true);
	WithObjectElements(UE_NATIVE_PROPERTY(FArrayProperty, ListItems, CPF_Transient), UObject::StaticClass());
	UE_NATIVE_PROPERTY(FMulticastInlineDelegateProperty, BP_OnItemClicked, EventFlags, ListItemSignature());
	UE_NATIVE_PROPERTY(FMulticastInlineDelegateProperty, BP_OnItemDoubleClicked, EventFlags, ListItemSignature());
	UE_NATIVE_PROPERTY(FMulticastInlineDelegateProperty, BP_OnItemIsHoveredChanged, EventFlags,
		EventSignature(TEXT("OnItemIsHoveredChangedDynamic"), {{TEXT("Item"), FEventParam::EKind::Object}, {TEXT("bIsHovered"), FEventParam::EKind::Bool}}));
	UE_NATIVE_PROPERTY(FMulticastInlineDelegateProperty, BP_OnItemSelectionChanged, EventFlags,
		EventSignature(TEXT("OnItemSelectionChangedDynamic"), {{TEXT("Item"), FEventParam::EKind::Object}, {TEXT("bIsSelected"), FEventParam::EKind::Bool}}));
)

UImage::UImage() = default;
UEditableTextBox::UEditableTextBox() = default;
USlider::USlider() = default;
UTextLayoutWidget::UTextLayoutWidget() = default;
UTextBlock::UTextBlock() = default;
URichTextBlock::URichTextBlock() = default;
UEditableText::UEditableText() = default;
UMultiLineEditableTextBox::UMultiLineEditableTextBox() = default;
UProgressBar::UProgressBar() = default;
UComboBoxString::UComboBoxString() = default;
USpinBox::USpinBox() = default;
USpacer::USpacer() = default;
UCircularThrobber::UCircularThrobber() = default;
UThrobber::UThrobber() = default;
UListViewBase::UListViewBase() = default;
UListView::UListView() = default;

const FText UImage::GetPaletteCategory() { return Category(TEXT("Common")); }
const FText UTextBlock::GetPaletteCategory() { return Category(TEXT("Common")); }
const FText URichTextBlock::GetPaletteCategory() { return Category(TEXT("Common")); }
const FText USlider::GetPaletteCategory() { return Category(TEXT("Common")); }
const FText UProgressBar::GetPaletteCategory() { return Category(TEXT("Common")); }
const FText UEditableText::GetPaletteCategory() { return Category(TEXT("Input")); }
const FText UEditableTextBox::GetPaletteCategory() { return Category(TEXT("Input")); }
const FText UMultiLineEditableTextBox::GetPaletteCategory() { return Category(TEXT("Input")); }
const FText UComboBoxString::GetPaletteCategory() { return Category(TEXT("Input")); }
const FText USpinBox::GetPaletteCategory() { return Category(TEXT("Input")); }
const FText USpacer::GetPaletteCategory() { return Category(TEXT("Primitive")); }
const FText UCircularThrobber::GetPaletteCategory() { return Category(TEXT("Primitive")); }
const FText UThrobber::GetPaletteCategory() { return Category(TEXT("Primitive")); }
const FText UListView::GetPaletteCategory() { return Category(TEXT("Lists")); }

void UTextBlock::OnCreationFromPalette()
{
	Text = FText::FromString(TEXT("Text Block"));
}

void UComboBoxString::PostInitProperties()
{
	UWidget::PostInitProperties();
	ResetOptionsFromDefaults();
}

void UComboBoxString::PostLoad()
{
	UWidget::PostLoad();
	ResetOptionsFromDefaults();
}

void UComboBoxString::ResetOptionsFromDefaults()
{
	Options.Reset();
	for (const FString& Option : DefaultOptions)
	{
		AddOption(Option);
	}
	CurrentOption = FindOptionIndex(SelectedOption) != INDEX_NONE ? SelectedOption : FString();
}

void UComboBoxString::AddOption(const FString& Option)
{
	Options.Add(Option);
}

bool UComboBoxString::RemoveOption(const FString& Option)
{
	const int32 Index = FindOptionIndex(Option);
	if (Index == INDEX_NONE)
	{
		return false;
	}
	Options.RemoveAt(Index);
	if (CurrentOption == Option && FindOptionIndex(Option) == INDEX_NONE)
	{
		ClearSelection();
	}
	return true;
}

int32 UComboBoxString::FindOptionIndex(const FString& Option) const
{
	// Options compare exactly: "Low" and "low" are two options.
	for (int32 Index = 0; Index < Options.Num(); ++Index)
	{
		if (Options[Index].Equals(Option, ESearchCase::CaseSensitive))
		{
			return Index;
		}
	}
	return INDEX_NONE;
}

FString UComboBoxString::GetOptionAtIndex(int32 Index) const
{
	return Options.IsValidIndex(Index) ? Options[Index] : FString();
}

void UComboBoxString::ClearOptions()
{
	Options.Reset();
	ClearSelection();
}

void UComboBoxString::ClearSelection()
{
	CurrentOption.Reset();
}

void UComboBoxString::SetSelectedOption(FString Option)
{
	if (FindOptionIndex(Option) != INDEX_NONE)
	{
		CurrentOption = Option;
	}
}

void UComboBoxString::SetSelectedIndex(const int32 Index)
{
	if (Options.IsValidIndex(Index))
	{
		CurrentOption = Options[Index];
	}
}

int32 UComboBoxString::GetSelectedIndex() const
{
	return CurrentOption.IsEmpty() ? INDEX_NONE : FindOptionIndex(CurrentOption);
}

void USpinBox::SetValue(float NewValue)
{
	Value = FMath::Clamp(NewValue, GetMinValue(), GetMaxValue());
}

void USpinBox::SetMinValue(float NewValue)
{
	bOverride_MinValue = true;
	MinValue = NewValue;
}

void USpinBox::ClearMinValue()
{
	bOverride_MinValue = false;
}

void USpinBox::SetMaxValue(float NewValue)
{
	bOverride_MaxValue = true;
	MaxValue = NewValue;
}

void USpinBox::ClearMaxValue()
{
	bOverride_MaxValue = false;
}

void UCircularThrobber::SetNumberOfPieces(int32 InNumberOfPieces)
{
	NumberOfPieces = FMath::Clamp(InNumberOfPieces, 1, 25);
}

void UThrobber::SetNumberOfPieces(int32 InNumberOfPieces)
{
	NumberOfPieces = FMath::Clamp(InNumberOfPieces, 1, 25);
}

void UListView::AddItem(UObject* Item)
{
	if (Item && GetIndexForItem(Item) == INDEX_NONE)
	{
		ListItems.Add(Item);
	}
}

void UListView::RemoveItem(UObject* Item)
{
	const int32 Index = GetIndexForItem(Item);
	if (Index != INDEX_NONE)
	{
		ListItems.RemoveAt(Index);
	}
}

UObject* UListView::GetItemAt(int32 Index) const
{
	return ListItems.IsValidIndex(Index) ? ListItems[Index].Get() : nullptr;
}

int32 UListView::GetIndexForItem(const UObject* Item) const
{
	for (int32 Index = 0; Index < ListItems.Num(); ++Index)
	{
		if (Item && ListItems[Index] == Item)
		{
			return Index;
		}
	}
	return INDEX_NONE;
}

void UListView::SetListItems(const TArray<UObject*>& InListItems)
{
	ListItems.Reset();
	for (UObject* Item : InListItems)
	{
		AddItem(Item);
	}
}
