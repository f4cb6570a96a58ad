#include "Blueprint/WidgetTree.h"
#include "Components/CanvasPanel.h"
#include "Components/CanvasPanelSlot.h"
#include "Components/CircularThrobber.h"
#include "Components/HorizontalBox.h"
#include "Components/HorizontalBoxSlot.h"
#include "Components/Image.h"
#include "Components/ListView.h"
#include "Components/SizeBox.h"
#include "Components/TextBlock.h"
#include "Components/Throbber.h"
#include "Components/VerticalBox.h"
#include "CoreMinimal.h"
#include "Headless/Core/StringTestUtils.h"
#include "Math/Range.h"
#include "Misc/FrameRate.h"
#include "Modules/ModuleManager.h"
#include "MovieScene.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UnrealType.h"

#include <gtest/gtest.h>

namespace
{
	UWidgetTree* NewTree()
	{
		FModuleManager::Get().LoadModuleChecked(TEXT("Catalogue"));
		return NewObject<UWidgetTree>(CreatePackage(TEXT("/Game/Tests/Editing")), NAME_None);
	}

	std::string Children(const UPanelWidget* Panel)
	{
		std::string Result;
		for (int32 Index = 0; Index < Panel->GetChildrenCount(); ++Index)
		{
			Result += U8(Panel->GetChildAt(Index)->GetName()) + ";";
		}
		return Result;
	}
}

TEST(UMGPanelEditing, ChildrenMoveAndAreReplacedWithoutLosingTheirSlotLayout)
{
	UWidgetTree* Tree = NewTree();
	UHorizontalBox* Row = Tree->ConstructWidget<UHorizontalBox>(UHorizontalBox::StaticClass(), TEXT("Row"));
	Tree->RootWidget = Row;
	UWidget* A = Tree->ConstructWidget<UImage>(UImage::StaticClass(), TEXT("A"));
	UWidget* B = Tree->ConstructWidget<UImage>(UImage::StaticClass(), TEXT("B"));
	UWidget* C = Tree->ConstructWidget<UImage>(UImage::StaticClass(), TEXT("C"));
	Row->AddChild(A);
	UHorizontalBoxSlot* BSlot = Row->AddChildToHorizontalBox(B);
	Row->AddChild(C);
	BSlot->SetPadding(FMargin(6.0f));

	Row->ShiftChild(0, B);
	EXPECT_EQ(Children(Row), "B;A;C;");
	EXPECT_EQ(B->Slot, BSlot);
	EXPECT_EQ(BSlot->Padding, FMargin(6.0f));
	Row->ShiftChild(99, B);
	EXPECT_EQ(Children(Row), "A;C;B;");
	Row->ShiftChild(0, Tree->ConstructWidget<UImage>());
	EXPECT_EQ(Children(Row), "A;C;B;") << "a widget that is not a child does not move";

	// The newcomer takes the slot and its padding; the widget it replaces leaves the tree.
	UWidget* D = Tree->ConstructWidget<UImage>(UImage::StaticClass(), TEXT("D"));
	EXPECT_TRUE(Row->ReplaceChildAt(2, D));
	EXPECT_EQ(Children(Row), "A;C;D;");
	EXPECT_EQ(D->Slot, BSlot);
	EXPECT_EQ(B->GetParent(), nullptr);
	EXPECT_EQ(Tree->FindWidget(TEXT("B")), nullptr);
	EXPECT_FALSE(Row->ReplaceChildAt(5, B));
	EXPECT_FALSE(Row->ReplaceChildAt(0, nullptr));
	EXPECT_FALSE(Row->ReplaceChildAt(0, Row)) << "a panel cannot hold itself";

	// Moving a child to another panel takes it, with a slot of the new panel's kind.
	UVerticalBox* Column = Tree->ConstructWidget<UVerticalBox>(UVerticalBox::StaticClass(), TEXT("Column"));
	Row->AddChild(Column);
	Column->AddChild(A);
	EXPECT_EQ(Children(Row), "C;D;Column;");
	EXPECT_EQ(A->GetParent(), Column);
	EXPECT_NE(Cast<UPanelSlot>(A->Slot), nullptr);
	EXPECT_EQ(Cast<UHorizontalBoxSlot>(A->Slot), nullptr);
	EXPECT_EQ(Column->AddChild(Row), nullptr) << "a panel cannot hold its ancestor";

	TArray<UWidget*> All;
	Tree->GetAllWidgets(All);
	EXPECT_EQ(All.Num(), 5);
	EXPECT_TRUE(Tree->RemoveWidget(Column));
	EXPECT_EQ(Tree->FindWidget(TEXT("A")), nullptr) << "removing a panel takes its children out of the tree";
	EXPECT_EQ(A->GetParent(), Column) << "they stay in the removed panel";
	EXPECT_FALSE(Row->RemoveChildAt(7));
}

TEST(UMGPanelEditing, SettersKeepWidgetsWithinTheirLimits)
{
	UWidgetTree* Tree = NewTree();
	struct FCase
	{
		int32 Requested;
		int32 Expected;
	};
	const FCase Pieces[] = {{0, 1}, {-3, 1}, {5, 5}, {25, 25}, {40, 25}};
	UCircularThrobber* Circular = Tree->ConstructWidget<UCircularThrobber>();
	UThrobber* Row = Tree->ConstructWidget<UThrobber>();
	for (const FCase& Case : Pieces)
	{
		Circular->SetNumberOfPieces(Case.Requested);
		Row->SetNumberOfPieces(Case.Requested);
		EXPECT_EQ(Circular->NumberOfPieces, Case.Expected) << Case.Requested;
		EXPECT_EQ(Row->NumberOfPieces, Case.Expected) << Case.Requested;
	}

	// A size box override counts from the moment it is set until it is cleared.
	USizeBox* Box = Tree->ConstructWidget<USizeBox>();
	EXPECT_FALSE(Box->bOverride_WidthOverride);
	Box->SetWidthOverride(120.0f);
	EXPECT_TRUE(Box->bOverride_WidthOverride);
	EXPECT_EQ(Box->WidthOverride, 120.0f);
	Box->ClearWidthOverride();
	EXPECT_FALSE(Box->bOverride_WidthOverride);

	// A list holds each item once, in order.
	UListView* List = Tree->ConstructWidget<UListView>();
	UObject* First = NewObject<UTextBlock>(Tree);
	UObject* Second = NewObject<UTextBlock>(Tree);
	List->SetListItems({First, Second, First, nullptr});
	EXPECT_EQ(List->GetNumItems(), 2);
	EXPECT_EQ(List->GetIndexForItem(Second), 1);
	List->RemoveItem(First);
	EXPECT_EQ(List->GetItemAt(0), Second);
	EXPECT_EQ(List->GetItemAt(1), nullptr);
}

TEST(UMGEnums, EnumValuesReadByShortOrFullName)
{
	struct FCase
	{
		const TCHAR* Property;
		const TCHAR* Input;
		const char* Expected;
	};
	const FCase Cases[] = {
		{TEXT("Size"), TEXT("(SizeRule=Fill)"), "(Value=1.000000,SizeRule=Fill)"},
		{TEXT("Size"), TEXT("(SizeRule=ESlateSizeRule::Fill)"), "(Value=1.000000,SizeRule=Fill)"},
		{TEXT("HorizontalAlignment"), TEXT("HAlign_Center"), "HAlign_Center"},
		{TEXT("VerticalAlignment"), TEXT("VAlign_Top"), "VAlign_Top"},
		{TEXT("VerticalAlignment"), TEXT("HAlign_Left"), "<refused>"},
	};
	UWidgetTree* Tree = NewTree();
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(U8(FString(Case.Input)));
		UHorizontalBoxSlot* BoxSlot = NewObject<UHorizontalBoxSlot>(Tree);
		const FProperty* Property = BoxSlot->GetClass()->FindPropertyByName(Case.Property);
		ASSERT_NE(Property, nullptr);
		void* Value = Property->ContainerPtrToValuePtr<void>(BoxSlot);
		if (!Property->ImportText_Direct(Case.Input, Value, BoxSlot, PPF_None))
		{
			EXPECT_STREQ("<refused>", Case.Expected);
			continue;
		}
		FString Text;
		Property->ExportTextItem_Direct(Text, Value, nullptr, BoxSlot, PPF_None);
		EXPECT_EQ(U8(Text), Case.Expected);
	}
}

TEST(MovieSceneRanges, RangesFollowTheirBounds)
{
	using FRange = TRange<FFrameNumber>;
	using FBound = TRangeBound<FFrameNumber>;
	struct FCase
	{
		FRange Range;
		int32 Frame;
		bool bContains;
		bool bEmpty;
	};
	const FCase Cases[] = {
		{FRange(FFrameNumber(0), FFrameNumber(10)), 0, true, false},
		{FRange(FFrameNumber(0), FFrameNumber(10)), 10, false, false},
		{FRange(FFrameNumber(0), FFrameNumber(10)), -1, false, false},
		{FRange(FFrameNumber(5)), 5, true, false},
		{FRange(FBound::Exclusive(FFrameNumber(5)), FBound::Exclusive(FFrameNumber(5))), 5, false, true},
		{FRange(FFrameNumber(8), FFrameNumber(3)), 5, false, true},
		{FRange::All(), -100000, true, false},
		{FRange(FBound::Open(), FBound::Inclusive(FFrameNumber(4))), 4, true, false},
		{FRange::Empty(), 0, false, true},
	};
	for (int32 Index = 0; Index < int32(UE_ARRAY_COUNT(Cases)); ++Index)
	{
		EXPECT_EQ(Cases[Index].Range.Contains(FFrameNumber(Cases[Index].Frame)), Cases[Index].bContains) << "case " << Index;
		EXPECT_EQ(Cases[Index].Range.IsEmpty(), Cases[Index].bEmpty) << "case " << Index;
	}

	const FFrameRate Thirty(30, 1);
	EXPECT_EQ(Thirty.AsFrameNumber(1.0).Value, 30);
	EXPECT_EQ(Thirty.AsFrameNumber(0.999).Value, 29);
	EXPECT_EQ(Thirty.AsFrameNumber(-0.01).Value, -1);
	EXPECT_DOUBLE_EQ(FFrameRate(30000, 1001).AsSeconds(FFrameNumber(30000)), 1001.0);

	UMovieScene* Scene = NewObject<UMovieScene>(CreatePackage(TEXT("/Game/Tests/Scenes")), NAME_None);
	EXPECT_EQ(Scene->GetTickResolution(), FFrameRate(24000, 1));
	Scene->SetDisplayRate(FFrameRate(0, 1));
	Scene->SetDisplayRate(FFrameRate(20, 0));
	EXPECT_EQ(Scene->GetDisplayRate(), FFrameRate(30, 1)) << "a rate of no frames is refused";
	Scene->SetDisplayRate(FFrameRate(20, 1));
	EXPECT_EQ(Scene->GetDisplayRate(), FFrameRate(20, 1));
}
