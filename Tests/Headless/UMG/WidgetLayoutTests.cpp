#include "Blueprint/WidgetTree.h"
#include "Components/Border.h"
#include "Components/BorderSlot.h"
#include "Components/Button.h"
#include "Components/ButtonSlot.h"
#include "Components/CanvasPanel.h"
#include "Components/CanvasPanelSlot.h"
#include "Components/CheckBox.h"
#include "Components/ComboBoxString.h"
#include "Components/GridPanel.h"
#include "Components/GridSlot.h"
#include "Components/HorizontalBox.h"
#include "Components/HorizontalBoxSlot.h"
#include "Components/Image.h"
#include "Components/Overlay.h"
#include "Components/OverlaySlot.h"
#include "Components/ScaleBox.h"
#include "Components/ScaleBoxSlot.h"
#include "Components/ScrollBox.h"
#include "Components/ScrollBoxSlot.h"
#include "Components/SizeBox.h"
#include "Components/SizeBoxSlot.h"
#include "Components/SpinBox.h"
#include "Components/TextBlock.h"
#include "Components/UniformGridPanel.h"
#include "Components/UniformGridSlot.h"
#include "Components/VerticalBox.h"
#include "Components/VerticalBoxSlot.h"
#include "Components/WidgetSwitcher.h"
#include "Components/WidgetSwitcherSlot.h"
#include "Components/WrapBox.h"
#include "Components/WrapBoxSlot.h"
#include "CoreMinimal.h"
#include "Headless/Core/StringTestUtils.h"
#include "Modules/ModuleManager.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UnrealType.h"

#include <gtest/gtest.h>

namespace
{
	UWidgetTree* NewTree()
	{
		FModuleManager::Get().LoadModuleChecked(TEXT("Catalogue"));
		return NewObject<UWidgetTree>(CreatePackage(TEXT("/Game/Tests/Layout")), NAME_None);
	}

	/** The property's value as the editor writes it, or "<no property>". */
	std::string Text(const UObject* Object, const TCHAR* PropertyName)
	{
		const FProperty* Property = Object->GetClass()->FindPropertyByName(PropertyName);
		if (!Property)
		{
			return "<no property>";
		}
		FString Value;
		Property->ExportTextItem_Direct(Value, Property->ContainerPtrToValuePtr<void>(Object), nullptr, const_cast<UObject*>(Object), PPF_None);
		return U8(Value);
	}

	/** Imports Value; "<refused>" when the property does not take it, else the value exported again. */
	std::string RoundTrip(UObject* Object, const TCHAR* PropertyName, const TCHAR* Value)
	{
		const FProperty* Property = Object->GetClass()->FindPropertyByName(PropertyName);
		if (!Property)
		{
			return "<no property>";
		}
		if (!Property->ImportText_Direct(Value, Property->ContainerPtrToValuePtr<void>(Object), Object, PPF_None))
		{
			return "<refused>";
		}
		return Text(Object, PropertyName);
	}
}

TEST(UMGLayout, EachPanelPlacesItsChildrenInSlotsOfItsKindWithTheEngineDefaults)
{
	struct FCase
	{
		UClass* Panel;
		UClass* Slot;
		const TCHAR* Property;
		const char* Default;
	};
	// Members of a struct at zero are left out of its text, as the editor writes it without defaults to compare with.
	const FCase Cases[] = {
		{UCanvasPanel::StaticClass(), UCanvasPanelSlot::StaticClass(), TEXT("LayoutData"),
			"(Offsets=(Right=100.000000,Bottom=30.000000))"},
		{UHorizontalBox::StaticClass(), UHorizontalBoxSlot::StaticClass(), TEXT("Size"), "(Value=1.000000)"},
		{UVerticalBox::StaticClass(), UVerticalBoxSlot::StaticClass(), TEXT("HorizontalAlignment"), "HAlign_Fill"},
		{UScrollBox::StaticClass(), UScrollBoxSlot::StaticClass(), TEXT("VerticalAlignment"), "VAlign_Fill"},
		{UOverlay::StaticClass(), UOverlaySlot::StaticClass(), TEXT("HorizontalAlignment"), "HAlign_Left"},
		{UBorder::StaticClass(), UBorderSlot::StaticClass(), TEXT("Padding"), "(Left=4.000000,Top=2.000000,Right=4.000000,Bottom=2.000000)"},
		{UButton::StaticClass(), UButtonSlot::StaticClass(), TEXT("VerticalAlignment"), "VAlign_Center"},
		{UGridPanel::StaticClass(), UGridSlot::StaticClass(), TEXT("RowSpan"), "1"},
		{UUniformGridPanel::StaticClass(), UUniformGridSlot::StaticClass(), TEXT("VerticalAlignment"), "VAlign_Top"},
		{UWrapBox::StaticClass(), UWrapBoxSlot::StaticClass(), TEXT("bForceNewLine"), "False"},
		{USizeBox::StaticClass(), USizeBoxSlot::StaticClass(), TEXT("Padding"), "()"},
		{UScaleBox::StaticClass(), UScaleBoxSlot::StaticClass(), TEXT("HorizontalAlignment"), "HAlign_Center"},
		{UWidgetSwitcher::StaticClass(), UWidgetSwitcherSlot::StaticClass(), TEXT("HorizontalAlignment"), "HAlign_Fill"},
		// A check box has no slot kind of its own.
		{UCheckBox::StaticClass(), UPanelSlot::StaticClass(), TEXT("Content"), ""},
	};
	UWidgetTree* Tree = NewTree();
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(U8(Case.Panel->GetName()));
		UPanelWidget* Panel = Tree->ConstructWidget<UPanelWidget>(Case.Panel);
		ASSERT_NE(Panel, nullptr);
		UWidget* Child = Tree->ConstructWidget<UTextBlock>();
		UPanelSlot* PanelSlot = Panel->AddChild(Child);
		ASSERT_NE(PanelSlot, nullptr);
		EXPECT_EQ(PanelSlot->GetClass(), Case.Slot);
		EXPECT_EQ(PanelSlot->GetOuter(), Panel);
		EXPECT_EQ(Child->GetParent(), Panel);
		if (Case.Default[0])
		{
			EXPECT_EQ(Text(PanelSlot, Case.Property), Case.Default);
		}
	}
	// The catalogue knows the engine's slot kinds as the same classes.
	EXPECT_EQ(FindObject<UClass>(nullptr, TEXT("/Script/UMG.CanvasPanelSlot")), UCanvasPanelSlot::StaticClass());
	EXPECT_EQ(FindObject<UClass>(nullptr, TEXT("/Script/UMG.ContentWidget")), UContentWidget::StaticClass());
}

TEST(UMGLayout, ContentWidgetsHoldOneChildAndPanelsMany)
{
	struct FCase
	{
		UClass* Panel;
		bool bMultiple;
	};
	const FCase Cases[] = {
		{UBorder::StaticClass(), false}, {UButton::StaticClass(), false}, {UCheckBox::StaticClass(), false},
		{USizeBox::StaticClass(), false}, {UScaleBox::StaticClass(), false}, {UCanvasPanel::StaticClass(), true},
		{UVerticalBox::StaticClass(), true}, {UHorizontalBox::StaticClass(), true}, {UOverlay::StaticClass(), true},
		{UGridPanel::StaticClass(), true}, {UUniformGridPanel::StaticClass(), true}, {UWrapBox::StaticClass(), true},
		{UScrollBox::StaticClass(), true}, {UWidgetSwitcher::StaticClass(), true},
	};
	UWidgetTree* Tree = NewTree();
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(U8(Case.Panel->GetName()));
		UPanelWidget* Panel = Tree->ConstructWidget<UPanelWidget>(Case.Panel);
		ASSERT_NE(Panel, nullptr);
		EXPECT_EQ(Panel->CanHaveMultipleChildren(), Case.bMultiple);
		EXPECT_TRUE(Panel->CanAddMoreChildren());
		ASSERT_NE(Panel->AddChild(Tree->ConstructWidget<UImage>()), nullptr);
		EXPECT_EQ(Panel->CanAddMoreChildren(), Case.bMultiple);
		EXPECT_EQ(Panel->AddChild(Tree->ConstructWidget<UImage>()) != nullptr, Case.bMultiple);
		EXPECT_EQ(Panel->InsertChildAt(0, Tree->ConstructWidget<UImage>()) != nullptr, Case.bMultiple);
		EXPECT_EQ(Panel->GetChildrenCount(), Case.bMultiple ? 3 : 1);
	}

	// Setting a content widget's content replaces the child; the old one is left without a parent.
	UBorder* Frame = Tree->ConstructWidget<UBorder>();
	UWidget* First = Tree->ConstructWidget<UImage>();
	UWidget* Second = Tree->ConstructWidget<UImage>();
	ASSERT_NE(Frame->SetContent(First), nullptr);
	ASSERT_NE(Frame->SetContent(Second), nullptr);
	EXPECT_EQ(Frame->GetContent(), Second);
	EXPECT_EQ(First->GetParent(), nullptr);
	EXPECT_EQ(First->Slot, nullptr);
	EXPECT_EQ(Frame->SetContent(nullptr), nullptr);
	EXPECT_EQ(Frame->GetChildrenCount(), 0);
}

TEST(UMGLayout, LayoutPropertiesReadAndWriteTheEngineText)
{
	struct FCase
	{
		UClass* Class;
		const TCHAR* Property;
		const TCHAR* Input;
		const char* Expected;
	};
	const FCase Cases[] = {
		{UHorizontalBoxSlot::StaticClass(), TEXT("Padding"), TEXT("(Left=1.0,Top=2.0,Right=3.0,Bottom=4.0)"), "(Left=1.000000,Top=2.000000,Right=3.000000,Bottom=4.000000)"},
		{UHorizontalBoxSlot::StaticClass(), TEXT("Padding"), TEXT("(Top=5)"), "(Top=5.000000)"},
		{UHorizontalBoxSlot::StaticClass(), TEXT("Size"), TEXT("(Value=0.5,SizeRule=Fill)"), "(Value=0.500000,SizeRule=Fill)"},
		{UHorizontalBoxSlot::StaticClass(), TEXT("HorizontalAlignment"), TEXT("HAlign_Right"), "HAlign_Right"},
		{UHorizontalBoxSlot::StaticClass(), TEXT("HorizontalAlignment"), TEXT("HAlign_Nowhere"), "<refused>"},
		{UVerticalBoxSlot::StaticClass(), TEXT("VerticalAlignment"), TEXT("VAlign_Bottom"), "VAlign_Bottom"},
		{UCanvasPanelSlot::StaticClass(), TEXT("LayoutData"), TEXT("(Offsets=(Left=10,Top=20,Right=0,Bottom=0),Anchors=(Minimum=(X=0,Y=0),Maximum=(X=1,Y=1)),Alignment=(X=0.5,Y=0.5))"),
			"(Offsets=(Left=10.000000,Top=20.000000),Anchors=(Maximum=(X=1.000000,Y=1.000000)),Alignment=(X=0.500000,Y=0.500000))"},
		{UCanvasPanelSlot::StaticClass(), TEXT("ZOrder"), TEXT("7"), "7"},
		{UCanvasPanelSlot::StaticClass(), TEXT("bAutoSize"), TEXT("True"), "True"},
		{UGridSlot::StaticClass(), TEXT("ColumnSpan"), TEXT("3"), "3"},
		{UGridSlot::StaticClass(), TEXT("Nudge"), TEXT("(X=2,Y=-1)"), "(X=2.000000,Y=-1.000000)"},
		{UTextBlock::StaticClass(), TEXT("Visibility"), TEXT("Collapsed"), "Collapsed"},
		{UTextBlock::StaticClass(), TEXT("Visibility"), TEXT("Sideways"), "<refused>"},
		{UTextBlock::StaticClass(), TEXT("RenderOpacity"), TEXT("0.25"), "0.250000"},
		{UTextBlock::StaticClass(), TEXT("RenderTransform"), TEXT("(Angle=90)"), "(Scale=(X=1.000000,Y=1.000000),Angle=90.000000)"},
		{UTextBlock::StaticClass(), TEXT("Text"), TEXT("\"Start\""), "Start"},
		{UScrollBox::StaticClass(), TEXT("Orientation"), TEXT("Orient_Horizontal"), "Orient_Horizontal"},
		{UWrapBox::StaticClass(), TEXT("InnerSlotPadding"), TEXT("(X=4,Y=4)"), "(X=4.000000,Y=4.000000)"},
	};
	UWidgetTree* Tree = NewTree();
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(U8(Case.Class->GetName()) + "." + U8(FString(Case.Property)) + " <- " + U8(FString(Case.Input)));
		UObject* Object = NewObject<UObject>(Tree, Case.Class);
		EXPECT_EQ(RoundTrip(Object, Case.Property, Case.Input), Case.Expected);
	}
}

TEST(UMGLayout, EveryWidgetHasTheCommonSettingsAtTheEngineDefaults)
{
	UWidgetTree* Tree = NewTree();
	UWidget* Widget = Tree->ConstructWidget<UTextBlock>();
	EXPECT_EQ(Text(Widget, TEXT("Visibility")), "Visible");
	EXPECT_EQ(Text(Widget, TEXT("RenderOpacity")), "1.000000");
	EXPECT_EQ(Text(Widget, TEXT("RenderTransformPivot")), "(X=0.500000,Y=0.500000)");
	EXPECT_EQ(Text(Widget, TEXT("bIsEnabled")), "True");
	EXPECT_EQ(Text(Widget, TEXT("bIsVolatile")), "False");
	EXPECT_EQ(Text(Widget, TEXT("ToolTipText")), "");
	// Members the engine declares on the leaf classes come from the catalogue.
	EXPECT_NE(Text(Widget, TEXT("Font")), "<no property>");
	EXPECT_NE(Text(Tree->ConstructWidget<UButton>(), TEXT("BackgroundColor")), "<no property>");

	Widget->SetRenderOpacity(3.0f);
	EXPECT_EQ(Widget->GetRenderOpacity(), 1.0f);
	Widget->SetRenderOpacity(-1.0f);
	EXPECT_EQ(Widget->GetRenderOpacity(), 0.0f);
	Widget->SetVisibility(ESlateVisibility::Hidden);
	EXPECT_FALSE(Widget->IsVisible());
	Widget->SetVisibility(ESlateVisibility::SelfHitTestInvisible);
	EXPECT_TRUE(Widget->IsVisible());
}
