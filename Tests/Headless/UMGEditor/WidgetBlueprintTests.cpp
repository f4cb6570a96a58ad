#include "Headless/UnrealEd/EditorTestUtils.h"

#include "Blueprint/UserWidget.h"
#include "Blueprint/WidgetTree.h"
#include "Components/PanelWidget.h"
#include "K2Node_Event.h"
#include "WidgetBlueprint.h"

using namespace EditorTest;

namespace
{
	class FWidgetBlueprints : public FEditorFixture
	{
	protected:
		FWidgetBlueprints() : FEditorFixture(TEXT("WidgetTests")) {}

		UWidgetBlueprint* MakeWidgetBlueprint(const TCHAR* Name)
		{
			return Cast<UWidgetBlueprint>(Create(UUserWidget::StaticClass(), Name));
		}
	};
}

TEST_F(FWidgetBlueprints, UserWidgetParentsMakeWidgetBlueprintsWithATreeAndTheirEvents)
{
	UWidgetBlueprint* Blueprint = MakeWidgetBlueprint(TEXT("WBP_Menu"));
	ASSERT_NE(Blueprint, nullptr);
	ASSERT_NE(Blueprint->WidgetTree.Get(), nullptr);
	EXPECT_EQ(Blueprint->WidgetTree->GetOuter(), Blueprint);
	EXPECT_EQ(Blueprint->WidgetTree->RootWidget, nullptr);
	EXPECT_EQ(Blueprint->FunctionGraphs.Num(), 0);
	ASSERT_EQ(Blueprint->UbergraphPages.Num(), 1);
	FString Events;
	for (const UEdGraphNode* Node : Blueprint->UbergraphPages[0]->Nodes)
	{
		if (const UK2Node_Event* Event = Cast<UK2Node_Event>(Node))
		{
			Events += FString::Printf(TEXT("%s@%d;"), *Event->EventReference.GetMemberName().ToString(), Event->NodePosY);
		}
	}
	EXPECT_EQ(U8(Events), "PreConstruct@0;Construct@200;Tick@400;");
	// Other parents keep the ordinary kind.
	UBlueprint* Plain = Create(UObject::StaticClass(), TEXT("BP_Plain"));
	ASSERT_NE(Plain, nullptr);
	EXPECT_EQ(Plain->GetClass(), UBlueprint::StaticClass());
}

TEST_F(FWidgetBlueprints, TheTreeSavesAndLoadsWithTheBlueprint)
{
	UWidgetBlueprint* Blueprint = MakeWidgetBlueprint(TEXT("WBP_Saved"));
	ASSERT_NE(Blueprint, nullptr);
	UClass* Button = FindClass(TEXT("/Script/UMG.Button"));
	UClass* TextBlock = FindClass(TEXT("/Script/UMG.TextBlock"));
	UPanelWidget* Root = Blueprint->WidgetTree->ConstructWidget<UPanelWidget>(Button, TEXT("StartButton"));
	ASSERT_NE(Root, nullptr);
	Blueprint->WidgetTree->RootWidget = Root;
	UWidget* Label = Blueprint->WidgetTree->ConstructWidget(TextBlock, TEXT("StartLabel"));
	ASSERT_NE(Root->AddChild(Label), nullptr);
	Label->bIsVariable = false;

	FString FirstBytes;
	UWidgetBlueprint* Loaded = Cast<UWidgetBlueprint>(SaveAndReload(Blueprint, &FirstBytes));
	ASSERT_NE(Loaded, nullptr);
	ASSERT_NE(Loaded->WidgetTree.Get(), nullptr);
	UPanelWidget* LoadedRoot = Cast<UPanelWidget>(Loaded->WidgetTree->RootWidget);
	ASSERT_NE(LoadedRoot, nullptr);
	EXPECT_EQ(U8(LoadedRoot->GetName()), "StartButton");
	ASSERT_EQ(LoadedRoot->GetChildrenCount(), 1);
	UWidget* LoadedLabel = LoadedRoot->GetChildAt(0);
	ASSERT_NE(LoadedLabel, nullptr);
	EXPECT_EQ(U8(LoadedLabel->GetName()), "StartLabel");
	EXPECT_EQ(LoadedLabel->GetParent(), LoadedRoot);
	EXPECT_FALSE(LoadedLabel->bIsVariable);
	EXPECT_EQ(Loaded->WidgetTree->FindWidget(TEXT("StartLabel")), LoadedLabel);
	// Saving what was loaded writes the same file.
	ASSERT_TRUE(UPackage::Save(Loaded->GetPackage(), Loaded, *FileOf(Loaded), FSavePackageArgs()).IsSuccessful());
	FString SecondBytes;
	FFileHelper::LoadFileToString(SecondBytes, *FileOf(Loaded));
	EXPECT_EQ(U8(FirstBytes), U8(SecondBytes));
}

TEST_F(FWidgetBlueprints, NestingAWidgetBlueprintInItselfIsACircle)
{
	UWidgetBlueprint* Outer = MakeWidgetBlueprint(TEXT("WBP_Outer"));
	UWidgetBlueprint* Inner = MakeWidgetBlueprint(TEXT("WBP_Inner"));
	ASSERT_NE(Outer, nullptr);
	ASSERT_NE(Inner, nullptr);
	UUserWidget* OuterInstance = NewObject<UUserWidget>(Inner->WidgetTree, Outer->GeneratedClass, TEXT("OuterInside"));
	Inner->WidgetTree->RootWidget = OuterInstance;
	// Inner holds Outer, so Outer may not hold Inner; Inner may not hold itself.
	UUserWidget* InnerInstance = NewObject<UUserWidget>(GetTransientPackage(), Inner->GeneratedClass);
	EXPECT_FALSE(Outer->IsWidgetFreeFromCircularReferences(InnerInstance));
	EXPECT_FALSE(Inner->IsWidgetFreeFromCircularReferences(InnerInstance));
	UUserWidget* OfItself = NewObject<UUserWidget>(GetTransientPackage(), Outer->GeneratedClass);
	ASSERT_NE(OfItself, nullptr);
	ASSERT_EQ(UBlueprint::GetBlueprintFromClass(OfItself->GetClass()), Outer);
	EXPECT_TRUE(Outer->IsWidgetFreeFromCircularReferences(nullptr));
	EXPECT_FALSE(Outer->IsWidgetFreeFromCircularReferences(OfItself));
	UWidgetBlueprint* Third = MakeWidgetBlueprint(TEXT("WBP_Third"));
	EXPECT_TRUE(Third->IsWidgetFreeFromCircularReferences(InnerInstance));
}

TEST_F(FWidgetBlueprints, AddingAMemberOfAWidgetsNameHidesTheWidgetVariable)
{
	UWidgetBlueprint* Blueprint = MakeWidgetBlueprint(TEXT("WBP_Vars"));
	UWidget* Title = Blueprint->WidgetTree->ConstructWidget(FindClass(TEXT("/Script/UMG.TextBlock")), TEXT("Title"));
	Blueprint->WidgetTree->RootWidget = Title;
	EXPECT_TRUE(Title->bIsVariable);
	Blueprint->OnVariableAdded(TEXT("Other"));
	EXPECT_TRUE(Title->bIsVariable);
	Blueprint->OnVariableAdded(TEXT("Title"));
	EXPECT_FALSE(Title->bIsVariable);
}
