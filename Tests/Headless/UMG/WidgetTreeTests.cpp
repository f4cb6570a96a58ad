#include "Blueprint/UserWidget.h"
#include "Blueprint/WidgetTree.h"
#include "Components/PanelSlot.h"
#include "Components/PanelWidget.h"
#include "Components/Widget.h"
#include "CoreMinimal.h"
#include "Modules/ModuleManager.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"

#include <gtest/gtest.h>

/** A panel of many children whose slot kind is found by the engine's naming rule. */
class UTestGrid : public UPanelWidget
{
	DECLARE_CLASS(UTestGrid, UPanelWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMGTests"), NO_API)
};
IMPLEMENT_CLASS(UTestGrid)

class UTestGridSlot : public UPanelSlot
{
	DECLARE_CLASS(UTestGridSlot, UPanelSlot, CLASS_None, CASTCLASS_None, TEXT("/Script/UMGTests"), NO_API)
};
IMPLEMENT_CLASS(UTestGridSlot)

/** A panel without a slot kind of its own. */
class UTestStack : public UPanelWidget
{
	DECLARE_CLASS(UTestStack, UPanelWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMGTests"), NO_API)
};
IMPLEMENT_CLASS(UTestStack)

namespace
{
	UClass* Widget(const TCHAR* Name)
	{
		FModuleManager::Get().LoadModuleChecked(TEXT("Catalogue"));
		return FindObject<UClass>(nullptr, *(FString(TEXT("/Script/UMG.")) + Name));
	}

	UWidgetTree* NewTree()
	{
		UPackage* Package = CreatePackage(TEXT("/Game/Tests/Widgets"));
		return NewObject<UWidgetTree>(Package, NAME_None);
	}

	FString Names(const TArray<UWidget*>& Widgets)
	{
		FString Result;
		for (const UWidget* Widget : Widgets)
		{
			Result += Widget->GetName() + TEXT(";");
		}
		return Result;
	}
}

TEST(UMGWidgets, TheCatalogueCompletesTheNativeWidgetClasses)
{
	UClass* UserWidget = Widget(TEXT("UserWidget"));
	ASSERT_EQ(UserWidget, UUserWidget::StaticClass());
	EXPECT_EQ(Widget(TEXT("Widget")), UWidget::StaticClass());
	EXPECT_EQ(Widget(TEXT("PanelWidget")), UPanelWidget::StaticClass());
	// Functions the engine declares come from the catalogue.
	EXPECT_NE(UserWidget->FindFunctionByName(TEXT("Construct")), nullptr);
	EXPECT_NE(UserWidget->FindFunctionByName(TEXT("AddToViewport")), nullptr);
	// Data-defined panels, slots and widgets sit on the native classes.
	ASSERT_NE(Widget(TEXT("Button")), nullptr);
	EXPECT_TRUE(Widget(TEXT("Button"))->IsChildOf(UPanelWidget::StaticClass()));
	ASSERT_NE(Widget(TEXT("CanvasPanelSlot")), nullptr);
	EXPECT_TRUE(Widget(TEXT("CanvasPanelSlot"))->IsChildOf(UPanelSlot::StaticClass()));
	ASSERT_NE(Widget(TEXT("TextBlock")), nullptr);
	EXPECT_TRUE(Widget(TEXT("TextBlock"))->IsChildOf(UWidget::StaticClass()));
}

TEST(UMGWidgets, PanelsHoldChildrenThroughSlotsOfTheirKind)
{
	UWidgetTree* Tree = NewTree();
	UPanelWidget* Canvas = Tree->ConstructWidget<UPanelWidget>(UTestGrid::StaticClass(), TEXT("Root"));
	ASSERT_NE(Canvas, nullptr);
	Tree->RootWidget = Canvas;
	UWidget* Title = Tree->ConstructWidget(Widget(TEXT("TextBlock")), TEXT("Title"));
	UWidget* Image = Tree->ConstructWidget(Widget(TEXT("Image")), TEXT("Icon"));
	ASSERT_NE(Title, nullptr);
	ASSERT_NE(Image, nullptr);
	// Abstract classes, non-widgets and taken names are refused.
	EXPECT_EQ(Tree->ConstructWidget(UWidget::StaticClass(), TEXT("Abstract")), nullptr);
	EXPECT_EQ(Tree->ConstructWidget(Widget(TEXT("TextBlock")), TEXT("Title")), nullptr);

	UPanelSlot* TitleSlot = Canvas->AddChild(Title);
	ASSERT_NE(TitleSlot, nullptr);
	EXPECT_EQ(TitleSlot->GetClass(), UTestGridSlot::StaticClass());
	EXPECT_EQ(Title->Slot, TitleSlot);
	EXPECT_EQ(Title->GetParent(), Canvas);
	EXPECT_EQ(TitleSlot->Content, Title);
	Canvas->InsertChildAt(0, Image);
	EXPECT_EQ(Canvas->GetChildrenCount(), 2);
	EXPECT_EQ(Canvas->GetChildAt(0), Image);
	EXPECT_EQ(Canvas->GetChildIndex(Title), 1);
	EXPECT_EQ(Canvas->GetChildAt(5), nullptr);

	TArray<UWidget*> All;
	Tree->GetAllWidgets(All);
	EXPECT_EQ(Names(All), TEXT("Root;Icon;Title;"));
	EXPECT_EQ(Tree->FindWidget(TEXT("Title")), Title);
	EXPECT_EQ(Tree->FindWidget(TEXT("Missing")), nullptr);
	int32 Index = INDEX_NONE;
	EXPECT_EQ(UWidgetTree::FindWidgetParent(Title, Index), Canvas);
	EXPECT_EQ(Index, 1);

	// A panel cannot hold its own ancestor, and moving a child takes it from its old panel.
	UPanelWidget* Box = Tree->ConstructWidget<UPanelWidget>(UTestStack::StaticClass(), TEXT("Box"));
	Canvas->AddChild(Box);
	EXPECT_EQ(Box->AddChild(Canvas), nullptr);
	Box->AddChild(Title);
	EXPECT_EQ(Title->GetParent(), Box);
	EXPECT_FALSE(Canvas->HasChild(Title));
	EXPECT_EQ(Title->Slot->GetClass(), UPanelSlot::StaticClass());

	EXPECT_TRUE(Tree->RemoveWidget(Title));
	EXPECT_EQ(Title->GetParent(), nullptr);
	EXPECT_FALSE(Tree->RemoveWidget(Title));
	Canvas->ClearChildren();
	EXPECT_EQ(Canvas->GetChildrenCount(), 0);
	EXPECT_TRUE(Tree->RemoveWidget(Canvas));
	EXPECT_EQ(Tree->RootWidget, nullptr);
}

TEST(UMGWidgets, ContentPanelsTakeOneChild)
{
	UWidgetTree* Tree = NewTree();
	UClass* Button = Widget(TEXT("Button"));
	ASSERT_NE(Button, nullptr);
	UPanelWidget* Frame = Tree->ConstructWidget<UPanelWidget>(Button, TEXT("Frame"));
	ASSERT_NE(Frame, nullptr);
	ASSERT_NE(Frame->AddChild(Tree->ConstructWidget(Widget(TEXT("TextBlock")), TEXT("A"))), nullptr);
	EXPECT_EQ(Frame->AddChild(Tree->ConstructWidget(Widget(TEXT("TextBlock")), TEXT("B"))), nullptr);
}
