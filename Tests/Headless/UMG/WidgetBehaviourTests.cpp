#include "Animation/WidgetAnimation.h"
#include "Blueprint/WidgetTree.h"
#include "Components/Border.h"
#include "Components/BorderSlot.h"
#include "Components/Button.h"
#include "Components/CanvasPanel.h"
#include "Components/CanvasPanelSlot.h"
#include "Components/CheckBox.h"
#include "Components/ComboBoxString.h"
#include "Components/EditableText.h"
#include "Components/EditableTextBox.h"
#include "Components/Image.h"
#include "Components/ListView.h"
#include "Components/MultiLineEditableTextBox.h"
#include "Components/ScrollBox.h"
#include "Components/Slider.h"
#include "Components/SpinBox.h"
#include "Components/TextBlock.h"
#include "Components/WidgetSwitcher.h"
#include "CoreMinimal.h"
#include "Headless/Core/StringTestUtils.h"
#include "Modules/ModuleManager.h"
#include "MovieScene.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/FieldIterator.h"
#include "UObject/UnrealType.h"

#include <gtest/gtest.h>

namespace
{
	UWidgetTree* NewTree()
	{
		FModuleManager::Get().LoadModuleChecked(TEXT("Catalogue"));
		return NewObject<UWidgetTree>(CreatePackage(TEXT("/Game/Tests/Behaviour")), NAME_None);
	}

	/** "Name:Kind,Name:Kind" of a signature's parameters, with "&" for a const reference. */
	std::string Parameters(const UFunction* Signature)
	{
		std::string Result;
		for (TFieldIterator<FProperty> It(Signature); It && It->HasAnyPropertyFlags(CPF_Parm); ++It)
		{
			Result += Result.empty() ? "" : ",";
			Result += U8(It->GetName()) + ":" + U8(It->GetCPPType());
			if (It->HasAnyPropertyFlags(CPF_ReferenceParm))
			{
				Result += "&";
			}
		}
		return Result;
	}
}

TEST(UMGEvents, WidgetsOfferTheEngineEventsAsAssignableMulticastDelegates)
{
	struct FCase
	{
		UClass* Class;
		const TCHAR* Event;
		const char* Parameters;
	};
	const FCase Cases[] = {
		// From the catalogue, on the native classes it completes.
		{UButton::StaticClass(), TEXT("OnClicked"), ""},
		{UButton::StaticClass(), TEXT("OnPressed"), ""},
		{UButton::StaticClass(), TEXT("OnReleased"), ""},
		{UButton::StaticClass(), TEXT("OnHovered"), ""},
		{UButton::StaticClass(), TEXT("OnUnhovered"), ""},
		{UCheckBox::StaticClass(), TEXT("OnCheckStateChanged"), "bIsChecked:bool"},
		{USlider::StaticClass(), TEXT("OnValueChanged"), "Value:float"},
		{UEditableTextBox::StaticClass(), TEXT("OnTextChanged"), "Text:FText&"},
		{UEditableTextBox::StaticClass(), TEXT("OnTextCommitted"), "Text:FText&,CommitMethod:TEnumAsByte<ETextCommit::Type>"},
		// Declared here.
		{UEditableText::StaticClass(), TEXT("OnTextChanged"), "Text:FText&"},
		{UEditableText::StaticClass(), TEXT("OnTextCommitted"), "Text:FText&,CommitMethod:TEnumAsByte<ETextCommit::Type>"},
		{UMultiLineEditableTextBox::StaticClass(), TEXT("OnTextCommitted"), "Text:FText&,CommitMethod:TEnumAsByte<ETextCommit::Type>"},
		{USpinBox::StaticClass(), TEXT("OnValueChanged"), "InValue:float"},
		{USpinBox::StaticClass(), TEXT("OnValueCommitted"), "InValue:float,CommitMethod:TEnumAsByte<ETextCommit::Type>"},
		{USpinBox::StaticClass(), TEXT("OnBeginSliderMovement"), ""},
		{UComboBoxString::StaticClass(), TEXT("OnSelectionChanged"), "SelectedItem:FString,SelectionType:TEnumAsByte<ESelectInfo::Type>"},
		{UScrollBox::StaticClass(), TEXT("OnUserScrolled"), "CurrentOffset:float"},
		{UListView::StaticClass(), TEXT("BP_OnItemClicked"), "Item:UObject*"},
		{UListView::StaticClass(), TEXT("BP_OnItemSelectionChanged"), "Item:UObject*,bIsSelected:bool"},
	};
	NewTree();
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(U8(Case.Class->GetName()) + "." + U8(FString(Case.Event)));
		const FMulticastDelegateProperty* Event = CastField<FMulticastDelegateProperty>(Case.Class->FindPropertyByName(Case.Event));
		ASSERT_NE(Event, nullptr);
		EXPECT_TRUE(Event->HasAllPropertyFlags(CPF_BlueprintAssignable));
		ASSERT_NE(Event->SignatureFunction, nullptr);
		EXPECT_TRUE(Event->SignatureFunction->HasAnyFunctionFlags(FUNC_MulticastDelegate));
		EXPECT_TRUE(Event->SignatureFunction->GetName().EndsWith(TEXT("__DelegateSignature")));
		EXPECT_EQ(Parameters(Event->SignatureFunction), Case.Parameters);
	}
	// Events of the same type share one signature.
	const FMulticastDelegateProperty* Changed = CastField<FMulticastDelegateProperty>(USpinBox::StaticClass()->FindPropertyByName(TEXT("OnValueChanged")));
	const FMulticastDelegateProperty* Ended = CastField<FMulticastDelegateProperty>(USpinBox::StaticClass()->FindPropertyByName(TEXT("OnEndSliderMovement")));
	ASSERT_NE(Ended, nullptr);
	EXPECT_EQ(Changed->SignatureFunction, Ended->SignatureFunction);
}

TEST(UMGWidgetRules, WidgetsKeepTheirValuesWithinTheEngineLimits)
{
	UWidgetTree* Tree = NewTree();

	// A border's padding and alignment are its content slot's.
	UBorder* Frame = Tree->ConstructWidget<UBorder>();
	Frame->SetPadding(FMargin(8.0f));
	UBorderSlot* FrameSlot = Cast<UBorderSlot>(Frame->AddChild(Tree->ConstructWidget<UImage>()));
	ASSERT_NE(FrameSlot, nullptr);
	EXPECT_EQ(FrameSlot->Padding, FMargin(8.0f));
	Frame->SetHorizontalAlignment(HAlign_Right);
	Frame->SetVerticalAlignment(VAlign_Bottom);
	EXPECT_EQ(FrameSlot->HorizontalAlignment, HAlign_Right);
	EXPECT_EQ(FrameSlot->VerticalAlignment, VAlign_Bottom);

	// A switcher shows one of the children it has.
	UWidgetSwitcher* Switcher = Tree->ConstructWidget<UWidgetSwitcher>();
	EXPECT_EQ(Switcher->GetActiveWidget(), nullptr);
	UWidget* PageA = Tree->ConstructWidget<UImage>();
	UWidget* PageB = Tree->ConstructWidget<UImage>();
	Switcher->AddChild(PageA);
	Switcher->AddChild(PageB);
	Switcher->SetActiveWidgetIndex(7);
	EXPECT_EQ(Switcher->GetActiveWidgetIndex(), 1);
	EXPECT_EQ(Switcher->GetActiveWidget(), PageB);
	Switcher->SetActiveWidget(PageA);
	EXPECT_EQ(Switcher->GetActiveWidgetIndex(), 0);
	Switcher->SetActiveWidget(Frame);
	EXPECT_EQ(Switcher->GetActiveWidgetIndex(), 0);

	// A spin box clamps to the limits that are on, and only to those.
	USpinBox* Spin = Tree->ConstructWidget<USpinBox>();
	Spin->SetValue(-40.0f);
	EXPECT_EQ(Spin->GetValue(), -40.0f);
	Spin->SetMinValue(0.0f);
	Spin->SetMaxValue(10.0f);
	Spin->SetValue(12.5f);
	EXPECT_EQ(Spin->GetValue(), 10.0f);
	Spin->ClearMaxValue();
	Spin->SetValue(12.5f);
	EXPECT_EQ(Spin->GetValue(), 12.5f);

	// A canvas slot's position and size are its offsets.
	UCanvasPanel* Canvas = Tree->ConstructWidget<UCanvasPanel>();
	UCanvasPanelSlot* CanvasSlot = Canvas->AddChildToCanvas(Tree->ConstructWidget<UTextBlock>());
	ASSERT_NE(CanvasSlot, nullptr);
	EXPECT_EQ(CanvasSlot->GetSize(), FVector2D(100.0, 30.0));
	CanvasSlot->SetPosition(FVector2D(12.0, 34.0));
	CanvasSlot->SetSize(FVector2D(200.0, 50.0));
	EXPECT_EQ(CanvasSlot->GetOffsets(), FMargin(12.0f, 34.0f, 200.0f, 50.0f));
	CanvasSlot->SetAnchors(FAnchors(0.0f, 0.0f, 1.0f, 0.0f));
	EXPECT_TRUE(CanvasSlot->GetAnchors().IsStretchedHorizontal());
	EXPECT_FALSE(CanvasSlot->GetAnchors().IsStretchedVertical());
}

TEST(UMGWidgetRules, AComboBoxStartsFromTheDesignersOptionsAndSelectsOnlyOptionsItHas)
{
	UWidgetTree* Tree = NewTree();
	UComboBoxString* Combo = Tree->ConstructWidget<UComboBoxString>();
	EXPECT_EQ(Combo->GetOptionCount(), 0);
	EXPECT_EQ(Combo->GetSelectedIndex(), INDEX_NONE);
	Combo->DefaultOptions = {TEXT("Low"), TEXT("High")};
	Combo->SelectedOption = TEXT("High");
	Combo->PostLoad();
	EXPECT_EQ(Combo->GetOptionCount(), 2);
	EXPECT_EQ(U8(Combo->GetSelectedOption()), "High");
	EXPECT_EQ(Combo->GetSelectedIndex(), 1);
	Combo->SetSelectedOption(TEXT("high"));
	EXPECT_EQ(U8(Combo->GetSelectedOption()), "High") << "options compare exactly";
	Combo->AddOption(TEXT("Epic"));
	Combo->SetSelectedIndex(2);
	EXPECT_EQ(U8(Combo->GetSelectedOption()), "Epic");
	EXPECT_EQ(U8(Combo->GetOptionAtIndex(9)), "");
	EXPECT_TRUE(Combo->RemoveOption(TEXT("Epic")));
	EXPECT_EQ(Combo->GetSelectedIndex(), INDEX_NONE);
	EXPECT_FALSE(Combo->RemoveOption(TEXT("Epic")));
	Combo->ClearOptions();
	EXPECT_EQ(Combo->GetOptionCount(), 0);
}

TEST(UMGAnimations, AnAnimationOwnsAMovieSceneWithAPlaybackRange)
{
	UWidgetTree* Tree = NewTree();
	UWidgetAnimation* Animation = NewObject<UWidgetAnimation>(Tree->GetOuter(), TEXT("FadeIn"));
	ASSERT_NE(Animation, nullptr);
	UMovieScene* Scene = Animation->GetMovieScene();
	ASSERT_NE(Scene, nullptr);
	EXPECT_EQ(Scene->GetOuter(), Animation);
	EXPECT_TRUE(Scene->GetPlaybackRange().IsEmpty());
	EXPECT_EQ(U8(Animation->GetDisplayName().ToString()), "FadeIn");
	Animation->SetDisplayLabel(TEXT("Fade In"));
	EXPECT_EQ(U8(Animation->GetDisplayName().ToString()), "Fade In");

	// 24000 ticks a second: half a second to two seconds.
	Scene->SetPlaybackRange(FFrameNumber(12000), 36000);
	EXPECT_EQ(Scene->GetPlaybackRange().GetLowerBoundValue().Value, 12000);
	EXPECT_EQ(Scene->GetPlaybackRange().GetUpperBoundValue().Value, 48000);
	EXPECT_TRUE(Scene->GetPlaybackRange().Contains(FFrameNumber(12000)));
	EXPECT_FALSE(Scene->GetPlaybackRange().Contains(FFrameNumber(48000)));
	EXPECT_FLOAT_EQ(Animation->GetStartTime(), 0.5f);
	EXPECT_FLOAT_EQ(Animation->GetEndTime(), 2.0f);
	// Ranges that cannot be played leave the range as it was.
	Scene->SetPlaybackRange(FFrameNumber(0), -10);
	Scene->SetPlaybackRange(TRange<FFrameNumber>::All());
	EXPECT_EQ(Scene->GetPlaybackRange().GetUpperBoundValue().Value, 48000);

	const FProperty* Range = UMovieScene::StaticClass()->FindPropertyByName(TEXT("PlaybackRange"));
	ASSERT_NE(Range, nullptr);
	FString Text;
	Range->ExportTextItem_Direct(Text, Range->ContainerPtrToValuePtr<void>(Scene), nullptr, Scene, PPF_None);
	EXPECT_EQ(U8(Text), "(Value=(LowerBound=(Type=Inclusive,Value=(Value=12000)),UpperBound=(Value=(Value=48000))))");
	// The catalogue's movie scene classes are these.
	EXPECT_EQ(FindObject<UClass>(nullptr, TEXT("/Script/MovieScene.MovieSceneSequence")), UMovieSceneSequence::StaticClass());
}
