#include "Headless/UnrealEd/EditorTestUtils.h"

#include "Animation/WidgetAnimation.h"
#include "Blueprint/UserWidget.h"
#include "Blueprint/WidgetTree.h"
#include "Components/Button.h"
#include "Components/CanvasPanel.h"
#include "Components/CanvasPanelSlot.h"
#include "Components/Image.h"
#include "Components/ProgressBar.h"
#include "Components/ScrollBox.h"
#include "Components/SpinBox.h"
#include "Components/TextBlock.h"
#include "Components/VerticalBox.h"
#include "Components/VerticalBoxSlot.h"
#include "MovieScene.h"
#include "Templates/WidgetTemplateClass.h"
#include "UObject/UnrealType.h"
#include "WidgetBlueprint.h"

using namespace EditorTest;

namespace
{
	class FWidgetCompile : public FEditorFixture
	{
	protected:
		FWidgetCompile() : FEditorFixture(TEXT("WidgetCompileTests")) {}

		UWidgetBlueprint* MakeWidgetBlueprint(const TCHAR* Name)
		{
			return Cast<UWidgetBlueprint>(Create(UUserWidget::StaticClass(), Name));
		}

		/** A canvas holding a title, a bar and a list box of two items; the bar is no variable. */
		UWidgetBlueprint* MakeHud(const TCHAR* Name)
		{
			UWidgetBlueprint* Blueprint = MakeWidgetBlueprint(Name);
			if (!Blueprint)
			{
				return nullptr;
			}
			UWidgetTree* Tree = Blueprint->WidgetTree;
			UCanvasPanel* Root = Tree->ConstructWidget<UCanvasPanel>(UCanvasPanel::StaticClass(), TEXT("Root"));
			Tree->RootWidget = Root;
			UTextBlock* Title = Tree->ConstructWidget<UTextBlock>(UTextBlock::StaticClass(), TEXT("Title"));
			Title->SetText(FText::FromString(TEXT("Score")));
			UCanvasPanelSlot* TitleSlot = Root->AddChildToCanvas(Title);
			TitleSlot->SetPosition(FVector2D(24.0, 16.0));
			TitleSlot->SetAnchors(FAnchors(0.5f, 0.0f));
			TitleSlot->SetZOrder(3);
			UProgressBar* Bar = Tree->ConstructWidget<UProgressBar>(UProgressBar::StaticClass(), TEXT("Health"));
			Bar->SetPercent(0.75f);
			Bar->bIsVariable = false;
			Root->AddChildToCanvas(Bar);
			UVerticalBox* List = Tree->ConstructWidget<UVerticalBox>(UVerticalBox::StaticClass(), TEXT("List"));
			Root->AddChild(List);
			UVerticalBoxSlot* First = List->AddChildToVerticalBox(Tree->ConstructWidget<UImage>(UImage::StaticClass(), TEXT("Icon")));
			First->SetPadding(FMargin(2.0f, 4.0f));
			First->SetSize(FSlateChildSize(ESlateSizeRule::Fill));
			First->SetHorizontalAlignment(HAlign_Center);
			List->AddChildToVerticalBox(Tree->ConstructWidget<USpinBox>(USpinBox::StaticClass(), TEXT("Amount")));

			UWidgetAnimation* Animation = NewObject<UWidgetAnimation>(Blueprint, TEXT("Intro"), RF_Transactional);
			Animation->SetDisplayLabel(TEXT("Intro Fade"));
			Animation->GetMovieScene()->SetPlaybackRange(FFrameNumber(0), 24000);
			Blueprint->Animations.Add(Animation);
			return Blueprint;
		}

		static const FProperty* Member(const UBlueprint* Blueprint, const TCHAR* Name)
		{
			return Blueprint->GeneratedClass ? Blueprint->GeneratedClass->FindPropertyByName(Name) : nullptr;
		}
	};
}

TEST_F(FWidgetCompile, VariableWidgetsAndAnimationsBecomeMembersOfTheCompiledClass)
{
	UWidgetBlueprint* Blueprint = MakeHud(TEXT("WBP_Hud"));
	ASSERT_NE(Blueprint, nullptr);
	FCompilerResultsLog Log;
	FKismetEditorUtilities::CompileBlueprint(Blueprint, EBlueprintCompileOptions::None, &Log);
	EXPECT_EQ(Log.NumErrors, 0) << Messages(Log);

	struct FCase
	{
		const TCHAR* Name;
		UClass* Class;
	};
	const FCase Members[] = {
		{TEXT("Root"), UCanvasPanel::StaticClass()}, {TEXT("Title"), UTextBlock::StaticClass()}, {TEXT("List"), UVerticalBox::StaticClass()},
		{TEXT("Icon"), UImage::StaticClass()}, {TEXT("Amount"), USpinBox::StaticClass()}, {TEXT("Intro"), UWidgetAnimation::StaticClass()},
	};
	for (const FCase& Case : Members)
	{
		SCOPED_TRACE(U8(FString(Case.Name)));
		const FObjectProperty* Property = CastField<FObjectProperty>(Member(Blueprint, Case.Name));
		ASSERT_NE(Property, nullptr);
		EXPECT_EQ(Property->PropertyClass, Case.Class);
		EXPECT_TRUE(Property->HasAllPropertyFlags(CPF_BlueprintVisible | CPF_BlueprintReadOnly));
	}
	EXPECT_EQ(Member(Blueprint, TEXT("Health")), nullptr) << "a widget that is no variable is no member";
	EXPECT_TRUE(Member(Blueprint, TEXT("Intro"))->HasAnyPropertyFlags(CPF_Transient));
	EXPECT_EQ(U8(*Member(Blueprint, TEXT("Title"))->FindMetaData(TEXT("Category"))), "WBP_Hud");
	EXPECT_EQ(U8(*Member(Blueprint, TEXT("Intro"))->FindMetaData(TEXT("Category"))), "Animations");

	// Turning a widget into a variable makes it a member at the next compile.
	Blueprint->WidgetTree->FindWidget(TEXT("Health"))->bIsVariable = true;
	FKismetEditorUtilities::CompileBlueprint(Blueprint);
	EXPECT_NE(Member(Blueprint, TEXT("Health")), nullptr);
}

TEST_F(FWidgetCompile, AWidgetVariableNamedLikeAnotherMemberIsACompileError)
{
	UWidgetBlueprint* Blueprint = MakeHud(TEXT("WBP_Clash"));
	ASSERT_NE(Blueprint, nullptr);
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Title"), PinType(UEdGraphSchema_K2::PC_Int)));
	Blueprint->WidgetTree->FindWidget(TEXT("Title"))->bIsVariable = true;
	FCompilerResultsLog Log;
	FKismetEditorUtilities::CompileBlueprint(Blueprint, EBlueprintCompileOptions::None, &Log);
	EXPECT_EQ(Log.NumErrors, 1) << Messages(Log);
	EXPECT_NE(Messages(Log).find("The widget Title has the name of another member of"), std::string::npos) << Messages(Log);
	// The Blueprint's own variable keeps the name.
	EXPECT_NE(CastField<FIntProperty>(Member(Blueprint, TEXT("Title"))), nullptr);

	// An animation may not take a widget's name either.
	UWidgetBlueprint* Second = MakeHud(TEXT("WBP_Clash2"));
	Second->Animations.Add(NewObject<UWidgetAnimation>(Second, TEXT("List")));
	FCompilerResultsLog SecondLog;
	FKismetEditorUtilities::CompileBlueprint(Second, EBlueprintCompileOptions::None, &SecondLog);
	EXPECT_NE(Messages(SecondLog).find("The animation List has the name of another member of"), std::string::npos) << Messages(SecondLog);
}

TEST_F(FWidgetCompile, ATreeWithLayoutAndAnimationsSavesLoadsAndCompilesTheSame)
{
	UWidgetBlueprint* Blueprint = MakeHud(TEXT("WBP_Saved"));
	ASSERT_NE(Blueprint, nullptr);
	FString FirstBytes;
	UWidgetBlueprint* Loaded = Cast<UWidgetBlueprint>(SaveAndReload(Blueprint, &FirstBytes));
	ASSERT_NE(Loaded, nullptr);
	UWidgetTree* Tree = Loaded->WidgetTree;
	ASSERT_NE(Tree, nullptr);

	TArray<UWidget*> Widgets;
	Tree->GetAllWidgets(Widgets);
	FString Order;
	for (const UWidget* Widget : Widgets)
	{
		Order += Widget->GetName() + TEXT(";");
	}
	EXPECT_EQ(U8(Order), "Root;Title;Health;List;Icon;Amount;");

	UTextBlock* Title = Tree->FindWidget<UTextBlock>(TEXT("Title"));
	ASSERT_NE(Title, nullptr);
	EXPECT_EQ(U8(Title->GetText().ToString()), "Score");
	const UCanvasPanelSlot* TitleSlot = Cast<UCanvasPanelSlot>(Title->Slot);
	ASSERT_NE(TitleSlot, nullptr);
	EXPECT_EQ(TitleSlot->GetPosition(), FVector2D(24.0, 16.0));
	EXPECT_EQ(TitleSlot->GetSize(), FVector2D(100.0, 30.0));
	EXPECT_EQ(TitleSlot->GetAnchors(), FAnchors(0.5f, 0.0f));
	EXPECT_EQ(TitleSlot->GetZOrder(), 3);
	const UProgressBar* Health = Tree->FindWidget<UProgressBar>(TEXT("Health"));
	ASSERT_NE(Health, nullptr);
	EXPECT_EQ(Health->GetPercent(), 0.75f);
	EXPECT_FALSE(Health->bIsVariable);
	const UVerticalBoxSlot* IconSlot = Cast<UVerticalBoxSlot>(Tree->FindWidget(TEXT("Icon"))->Slot);
	ASSERT_NE(IconSlot, nullptr);
	EXPECT_EQ(IconSlot->Padding, FMargin(2.0f, 4.0f));
	EXPECT_EQ(IconSlot->Size.SizeRule, ESlateSizeRule::Fill);
	EXPECT_EQ(IconSlot->HorizontalAlignment, HAlign_Center);
	EXPECT_EQ(IconSlot->Parent, Tree->FindWidget(TEXT("List")));

	ASSERT_EQ(Loaded->Animations.Num(), 1);
	const UWidgetAnimation* Intro = Loaded->Animations[0];
	ASSERT_NE(Intro, nullptr);
	EXPECT_EQ(U8(Intro->GetDisplayLabel()), "Intro Fade");
	ASSERT_NE(Intro->GetMovieScene(), nullptr);
	EXPECT_EQ(Intro->GetMovieScene()->GetPlaybackRange(), TRange<FFrameNumber>(FFrameNumber(0), FFrameNumber(24000)));
	EXPECT_FLOAT_EQ(Intro->GetEndTime(), 1.0f);

	// The loaded Blueprint was compiled on load with its widget members, and saves to the same bytes.
	EXPECT_NE(Member(Loaded, TEXT("Amount")), nullptr);
	EXPECT_NE(Member(Loaded, TEXT("Intro")), nullptr);
	ASSERT_TRUE(UPackage::Save(Loaded->GetPackage(), Loaded, *FileOf(Loaded), FSavePackageArgs()).IsSuccessful());
	FString SecondBytes;
	FFileHelper::LoadFileToString(SecondBytes, *FileOf(Loaded));
	EXPECT_EQ(U8(FirstBytes), U8(SecondBytes));
}

TEST_F(FWidgetCompile, PaletteTemplatesMakeWidgetsOfTheirClassUnderTheClassCategory)
{
	struct FCase
	{
		UClass* Class;
		const char* Category;
	};
	const FCase Cases[] = {
		{UButton::StaticClass(), "Common"}, {UTextBlock::StaticClass(), "Common"}, {UCanvasPanel::StaticClass(), "Panel"},
		{UScrollBox::StaticClass(), "Panel"}, {USpinBox::StaticClass(), "Input"}, {UProgressBar::StaticClass(), "Common"},
	};
	UWidgetBlueprint* Blueprint = MakeWidgetBlueprint(TEXT("WBP_Palette"));
	ASSERT_NE(Blueprint, nullptr);
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(U8(Case.Class->GetName()));
		FWidgetTemplateClass Template(Case.Class);
		EXPECT_EQ(U8(Template.GetCategory()), Case.Category);
		EXPECT_EQ(U8(Template.Name), U8(Case.Class->GetDisplayNameText()));
		UWidget* First = Template.Create(Blueprint->WidgetTree);
		UWidget* Second = Template.Create(Blueprint->WidgetTree);
		ASSERT_NE(First, nullptr);
		ASSERT_NE(Second, nullptr);
		EXPECT_EQ(First->GetClass(), Case.Class);
		EXPECT_EQ(First->GetOuter(), Blueprint->WidgetTree);
		EXPECT_NE(First->GetFName(), Second->GetFName());
	}
	// A text block from the palette starts with a text; one made in code starts empty.
	UTextBlock* FromPalette = Cast<UTextBlock>(FWidgetTemplateClass(UTextBlock::StaticClass()).Create(Blueprint->WidgetTree));
	ASSERT_NE(FromPalette, nullptr);
	EXPECT_EQ(U8(FromPalette->GetText()), "Text Block");
	EXPECT_TRUE(Blueprint->WidgetTree->ConstructWidget<UTextBlock>()->GetText().IsEmpty());
	FWidgetTemplateClass Abstract(UWidget::StaticClass());
	EXPECT_EQ(Abstract.Create(Blueprint->WidgetTree), nullptr);
	EXPECT_EQ(FWidgetTemplateClass(UButton::StaticClass()).Create(nullptr), nullptr);
}

TEST_F(FWidgetCompile, ThePackageWritesLayoutInTheEngineTextAndLeavesDefaultsOut)
{
	UWidgetBlueprint* Blueprint = MakeHud(TEXT("WBP_Text"));
	ASSERT_NE(Blueprint, nullptr);
	FString Bytes;
	ASSERT_NE(SaveAndReload(Blueprint, &Bytes), nullptr);
	const std::string File = U8(Bytes);
	EXPECT_NE(File.find("(Offsets=(Left=24.000000,Top=16.000000,Right=100.000000,Bottom=30.000000),Anchors=(Minimum=(X=0.500000,Y=0.000000),Maximum=(X=0.500000,Y=0.000000)))"), std::string::npos) << File;
	EXPECT_NE(File.find("(Left=2.000000,Top=4.000000,Right=2.000000,Bottom=4.000000)"), std::string::npos);
	EXPECT_NE(File.find("HAlign_Center"), std::string::npos);
	// A slot left at its kind's defaults writes none of its layout.
	EXPECT_EQ(File.find("VAlign_Fill"), std::string::npos);
	EXPECT_EQ(File.find("\"RenderOpacity\""), std::string::npos);
}

TEST_F(FWidgetCompile, AMemberVariableOfAWidgetsNameTakesTheNameFromTheWidget)
{
	UWidgetBlueprint* Blueprint = MakeHud(TEXT("WBP_Rename"));
	ASSERT_NE(Blueprint, nullptr);
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Amount"), PinType(UEdGraphSchema_K2::PC_Real, nullptr, UEdGraphSchema_K2::PC_Double)));
	Blueprint->OnVariableAdded(TEXT("Amount"));
	FCompilerResultsLog Log;
	FKismetEditorUtilities::CompileBlueprint(Blueprint, EBlueprintCompileOptions::None, &Log);
	EXPECT_EQ(Log.NumErrors, 0) << Messages(Log);
	EXPECT_NE(CastField<FDoubleProperty>(Member(Blueprint, TEXT("Amount"))), nullptr);
	EXPECT_NE(Member(Blueprint, TEXT("Icon")), nullptr);
}
