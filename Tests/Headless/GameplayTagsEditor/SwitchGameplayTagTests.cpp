#include <gtest/gtest.h>

#include "CoreMinimal.h"
#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "GameplayTagsK2Node_SwitchGameplayTag.h"
#include "Headless/Projects/TempProjectFolder.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"

namespace
{
	struct FTagSwitchFixture
	{
		FTempProjectFolder Project{TEXT("TagSwitch")};
		UEdGraph* Graph = nullptr;

		explicit FTagSwitchFixture(const TCHAR* PackageName)
		{
			Project.WriteFile(TEXT("Config/DefaultGameplayTags.ini"),
				TEXT("[/Script/GameplayTags.GameplayTagsSettings]\n+GameplayTagList=(Tag=\"State.Idle\",DevComment=\"\")\n+GameplayTagList=(Tag=\"State.Run\",DevComment=\"\")\n"));
			Project.Open();
			Graph = NewObject<UEdGraph>(CreatePackage(PackageName), TEXT("EventGraph"));
			Graph->Schema = UEdGraphSchema_K2::StaticClass();
		}

		template <typename NodeType>
		NodeType* Place()
		{
			FGraphNodeCreator<NodeType> Creator(*Graph);
			NodeType* Node = Creator.CreateNode(false);
			Creator.Finalize();
			return Node;
		}
	};

	FString PinList(const UEdGraphNode* Node)
	{
		TArray<FString> Names;
		for (const UEdGraphPin* Pin : Node->Pins)
		{
			Names.Add(FString::Printf(TEXT("%s%s%s"), Pin->Direction == EGPD_Input ? TEXT(">") : TEXT("<"), *Pin->PinName.ToString(), Pin->bHidden ? TEXT("(h)") : TEXT("")));
		}
		return FString::Join(Names, TEXT(" "));
	}
}

TEST(SwitchGameplayTag, CasesAreNamedAfterTheirTags)
{
	FTagSwitchFixture Fixture(TEXT("/Game/Tags/TagSwitch"));
	UGameplayTagsK2Node_SwitchGameplayTag* Switch = Fixture.Place<UGameplayTagsK2Node_SwitchGameplayTag>();
	EXPECT_EQ(Switch->GetNodeTitle(ENodeTitleType::FullTitle).ToString(), FString(TEXT("Switch on Gameplay Tag")));
	EXPECT_EQ(PinList(Switch), FString(TEXT("<Default >execute >Selection >NotEqual_TagTag(h)")));
	EXPECT_EQ(Switch->GetSelectionPin()->PinType.PinSubCategoryObject.Get(), FGameplayTag::StaticStruct());

	EXPECT_TRUE(Switch->AddTagCase(FGameplayTag::RequestGameplayTag(TEXT("State.Idle"))));
	EXPECT_FALSE(Switch->AddTagCase(FGameplayTag::RequestGameplayTag(TEXT("State.Idle"))));
	EXPECT_FALSE(Switch->AddTagCase(FGameplayTag::RequestGameplayTag(TEXT("State.Fly"), false)));
	Switch->AddPinToSwitchNode();
	EXPECT_EQ(PinList(Switch), FString(TEXT("<Default >execute >Selection >NotEqual_TagTag(h) <State.Idle <Case_0")));

	// Giving the open case a tag renames its output and keeps its links.
	UEdGraphNode* Target = Fixture.Place<UGameplayTagsK2Node_SwitchGameplayTag>();
	Switch->FindPin(TEXT("Case_0"))->MakeLinkTo(Target->FindPin(TEXT("execute")));
	Switch->PinTags[1] = FGameplayTag::RequestGameplayTag(TEXT("State.Run"));
	Switch->ReconstructNode();
	UEdGraphPin* Run = Switch->FindPin(TEXT("State.Run"));
	ASSERT_NE(Run, nullptr);
	EXPECT_EQ(Run->LinkedTo.Num(), 1);
	EXPECT_EQ(Switch->FindPin(TEXT("Case_0")), nullptr);

	Switch->RemovePinFromSwitchNode(Switch->FindPin(TEXT("State.Idle")));
	EXPECT_EQ(Switch->PinTags.Num(), 1);
	EXPECT_EQ(Switch->PinNames[0], FName(TEXT("State.Run")));
}

TEST(SwitchGameplayTag, ContainerSwitchSelectsOnAContainer)
{
	FTagSwitchFixture Fixture(TEXT("/Game/Tags/ContainerSwitch"));
	UGameplayTagsK2Node_SwitchGameplayTagContainer* Switch = Fixture.Place<UGameplayTagsK2Node_SwitchGameplayTagContainer>();
	EXPECT_EQ(Switch->GetNodeTitle(ENodeTitleType::FullTitle).ToString(), FString(TEXT("Switch on Gameplay Tag Container")));
	EXPECT_EQ(Switch->GetSelectionPin()->PinType.PinSubCategoryObject.Get(), FGameplayTagContainer::StaticStruct());
	EXPECT_EQ(Switch->GetPinType().PinSubCategoryObject.Get(), FGameplayTagContainer::StaticStruct());
	EXPECT_NE(Switch->FindPin(TEXT("HasTag")), nullptr);
}
