#include <gtest/gtest.h>

#include "BlueprintActionDatabase.h"
#include "BlueprintActionFilter.h"
#include "BlueprintActionMenuBuilder.h"
#include "BlueprintActionMenuItem.h"
#include "BlueprintNodeSpawner.h"
#include "CoreMinimal.h"
#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "GameplayTagsK2Node_SwitchGameplayTag.h"
#include "Headless/Core/StringTestUtils.h"
#include "Headless/Projects/TempProjectFolder.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"

// The tag switches live above the Blueprint graph module; the action database still offers them because every
// Blueprint node class files its own entries.

namespace
{
	struct FMenuEntry
	{
		FString Title;
		FString Category;
		FString NodeClass;
		TSharedPtr<FEdGraphSchemaAction> Action;
	};

	TArray<FMenuEntry> BuildMenu(UEdGraph* Graph)
	{
		FBlueprintActionFilter Filter;
		Filter.Context.Graphs.Add(Graph);
		FBlueprintActionMenuBuilder Menu;
		Menu.AddMenuSection(Filter);
		Menu.RebuildActionList();
		TArray<FMenuEntry> Entries;
		for (int32 Index = 0; Index < Menu.GetNumActions(); ++Index)
		{
			TSharedPtr<FEdGraphSchemaAction> Action = Menu.GetSchemaAction(Index);
			if (!Action.IsValid() || Action->GetTypeId() != FBlueprintActionMenuItem::StaticGetTypeId())
			{
				continue;
			}
			const UBlueprintNodeSpawner* Spawner = static_cast<FBlueprintActionMenuItem*>(Action.Get())->GetRawAction();
			FMenuEntry Entry;
			Entry.Title = Action->GetMenuDescription().ToString();
			Entry.Category = Action->GetCategory().ToString();
			Entry.NodeClass = Spawner && Spawner->NodeClass.Get() ? Spawner->NodeClass->GetName() : FString();
			Entry.Action = Action;
			Entries.Add(MoveTemp(Entry));
		}
		return Entries;
	}

	const FMenuEntry* FindEntry(const TArray<FMenuEntry>& Entries, const TCHAR* Title)
	{
		for (const FMenuEntry& Entry : Entries)
		{
			if (Entry.Title == Title)
			{
				return &Entry;
			}
		}
		return nullptr;
	}

	UEdGraph* MakeGraph(const TCHAR* PackageName, TSubclassOf<UEdGraphSchema> Schema)
	{
		UEdGraph* Graph = NewObject<UEdGraph>(CreatePackage(PackageName), TEXT("EventGraph"));
		Graph->Schema = Schema;
		return Graph;
	}
}

TEST(SwitchGameplayTagMenu, BothSwitchesAreOfferedAndPlaced)
{
	FTempProjectFolder Project(TEXT("TagSwitchMenu"));
	Project.WriteFile(TEXT("Config/DefaultGameplayTags.ini"), TEXT("[/Script/GameplayTags.GameplayTagsSettings]\n+GameplayTagList=(Tag=\"State.Idle\",DevComment=\"\")\n"));
	Project.Open();
	UEdGraph* Graph = MakeGraph(TEXT("/Game/Tags/TagSwitchMenu"), UEdGraphSchema_K2::StaticClass());
	const TArray<FMenuEntry> Entries = BuildMenu(Graph);

	struct FCase
	{
		const TCHAR* Title;
		const TCHAR* NodeClass;
		const UScriptStruct* Selection;
	};
	const FCase Cases[] = {
		{TEXT("Switch on Gameplay Tag"), TEXT("GameplayTagsK2Node_SwitchGameplayTag"), FGameplayTag::StaticStruct()},
		{TEXT("Switch on Gameplay Tag Container"), TEXT("GameplayTagsK2Node_SwitchGameplayTagContainer"), FGameplayTagContainer::StaticStruct()},
	};
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(U8(FString(Case.Title)));
		int32 Count = 0;
		for (const FMenuEntry& Entry : Entries)
		{
			Count += Entry.Title == Case.Title ? 1 : 0;
		}
		// The container switch derives from the tag switch and must not bring a second copy of its parent's entry.
		EXPECT_EQ(Count, 1);
		const FMenuEntry* Entry = FindEntry(Entries, Case.Title);
		ASSERT_NE(Entry, nullptr);
		EXPECT_EQ(Entry->NodeClass, FString(Case.NodeClass));
		EXPECT_EQ(Entry->Category, FString(TEXT("Utilities|Flow Control|Switch")));

		UEdGraphNode* Node = Entry->Action->PerformAction(Graph, nullptr, FVector2f(128.0f, 64.0f));
		ASSERT_NE(Node, nullptr);
		EXPECT_EQ(Node->GetClass()->GetName(), FString(Case.NodeClass));
		EXPECT_TRUE(Graph->Nodes.Contains(Node));
		EXPECT_EQ(Node->NodePosX, 128);
		const UEdGraphPin* Selection = Node->FindPin(FName(TEXT("Selection")));
		ASSERT_NE(Selection, nullptr);
		EXPECT_EQ(Selection->PinType.PinSubCategoryObject.Get(), Case.Selection);
	}
}

TEST(SwitchGameplayTagMenu, GraphsOfOtherSchemasDoNotGetThem)
{
	FTempProjectFolder Project(TEXT("TagSwitchMenuPlain"));
	Project.Open();
	UEdGraph* Plain = MakeGraph(TEXT("/Game/Tags/TagSwitchPlain"), UEdGraphSchema::StaticClass());
	EXPECT_EQ(FindEntry(BuildMenu(Plain), TEXT("Switch on Gameplay Tag")), nullptr);
	// The database itself still holds the entry under the node's class.
	const FBlueprintActionDatabase::FActionList* Actions = FBlueprintActionDatabase::Get().GetAllActions().Find(UGameplayTagsK2Node_SwitchGameplayTag::StaticClass());
	ASSERT_NE(Actions, nullptr);
	ASSERT_EQ(Actions->Num(), 1);
	EXPECT_EQ((*Actions)[0]->NodeClass.Get(), UGameplayTagsK2Node_SwitchGameplayTag::StaticClass());
}
