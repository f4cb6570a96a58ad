#include <gtest/gtest.h>

#include "CoreMinimal.h"
#include "GameplayTagContainer.h"
#include "GameplayTagsManager.h"
#include "Headless/Projects/TempProjectFolder.h"
#include "UObject/UnrealType.h"

namespace
{
	/** A project declaring tags in both places the editor reads them from. */
	struct FTaggedProject
	{
		FTempProjectFolder Project{TEXT("Tagged")};

		FTaggedProject()
		{
			Project.WriteFile(TEXT("Config/DefaultGameplayTags.ini"),
				TEXT("[/Script/GameplayTags.GameplayTagsSettings]\n")
				TEXT("ImportTagsFromConfig=True\n")
				TEXT("+GameplayTagList=(Tag=\"Ability.Attack.Melee\",DevComment=\"Close range\")\n")
				TEXT("+GameplayTagList=(Tag=\"Status.Stunned\",DevComment=\"\")\n")
				TEXT("+GameplayTagList=(Tag=\"Bad Tag,\",DevComment=\"\")\n"));
			Project.WriteFile(TEXT("Config/Tags/Weapons.ini"),
				TEXT("[/Script/GameplayTags.GameplayTagsList]\n")
				TEXT("GameplayTagList=(Tag=\"Weapon.Rifle\",DevComment=\"\")\n"));
			Project.Open();
		}
	};
}

TEST(GameplayTags, DictionaryComesFromTheProjectsConfigWithEveryParent)
{
	FTaggedProject Tagged;
	FGameplayTagContainer All;
	UGameplayTagsManager::Get().RequestAllGameplayTags(All, true);
	EXPECT_EQ(All.ToStringSimple(), FString(TEXT("Ability, Ability.Attack, Ability.Attack.Melee, Status, Status.Stunned, Weapon, Weapon.Rifle")));
	EXPECT_EQ(UGameplayTagsManager::Get().GetTagDevComment(TEXT("Ability.Attack.Melee")), FString(TEXT("Close range")));

	EXPECT_TRUE(FGameplayTag::RequestGameplayTag(TEXT("Weapon.Rifle")).IsValid());
	EXPECT_TRUE(FGameplayTag::RequestGameplayTag(TEXT("ability.attack")).IsValid());
	EXPECT_EQ(FGameplayTag::RequestGameplayTag(TEXT("ability.attack")).ToString(), FString(TEXT("Ability.Attack")));
	EXPECT_FALSE(FGameplayTag::RequestGameplayTag(TEXT("Ability.Defend"), false).IsValid());
	EXPECT_FALSE(FGameplayTag::RequestGameplayTag(TEXT("Bad Tag,"), false).IsValid());
}

TEST(GameplayTags, MatchingFollowsTheHierarchy)
{
	FTaggedProject Tagged;
	const FGameplayTag Melee = FGameplayTag::RequestGameplayTag(TEXT("Ability.Attack.Melee"));
	const FGameplayTag Attack = FGameplayTag::RequestGameplayTag(TEXT("Ability.Attack"));
	const FGameplayTag Ability = FGameplayTag::RequestGameplayTag(TEXT("Ability"));
	EXPECT_TRUE(Melee.MatchesTag(Attack));
	EXPECT_TRUE(Melee.MatchesTag(Ability));
	EXPECT_FALSE(Attack.MatchesTag(Melee));
	EXPECT_FALSE(Melee.MatchesTag(FGameplayTag()));
	EXPECT_FALSE(Melee.MatchesTagExact(Attack));
	EXPECT_EQ(Melee.RequestDirectParent(), Attack);
	EXPECT_FALSE(Ability.RequestDirectParent().IsValid());

	FGameplayTagContainer Container;
	Container.AddTag(Melee);
	Container.AddTag(Melee);
	Container.AddTag(FGameplayTag());
	EXPECT_EQ(Container.Num(), 1);
	EXPECT_TRUE(Container.HasTag(Ability));
	EXPECT_FALSE(Container.HasTagExact(Ability));
	EXPECT_TRUE(Container.RemoveTag(Melee));
	EXPECT_TRUE(Container.IsEmpty());
}

TEST(GameplayTags, TagStringsAreCheckedAndFixed)
{
	struct FCase { const TCHAR* Text; bool bValid; const TCHAR* Fixed; };
	const FCase Cases[] = {
		{TEXT("Ability.Attack"), true, TEXT("Ability.Attack")},
		{TEXT(""), false, TEXT("")},
		{TEXT(" Ability"), false, TEXT("Ability")},
		{TEXT(".Ability."), false, TEXT("Ability")},
		{TEXT("Ability..Attack"), false, TEXT("Ability.Attack")},
		{TEXT("Ability,Attack"), false, TEXT("Ability_Attack")},
	};
	for (const FCase& Case : Cases)
	{
		FText Error;
		FString Fixed;
		EXPECT_EQ(UGameplayTagsManager::Get().IsValidGameplayTagString(Case.Text, &Error, &Fixed), Case.bValid) << TCHAR_TO_UTF8(Case.Text);
		EXPECT_EQ(Fixed, FString(Case.Fixed)) << TCHAR_TO_UTF8(Case.Text);
		EXPECT_EQ(Error.IsEmpty(), Case.bValid);
	}
}

TEST(GameplayTags, TagTextIsTheStructsExportText)
{
	FTaggedProject Tagged;
	const FGameplayTag Stunned = FGameplayTag::RequestGameplayTag(TEXT("Status.Stunned"));
	FStructProperty* Property = new FStructProperty(FFieldVariant(), TEXT("Tag"), RF_NoFlags, 0, CPF_None, FGameplayTag::StaticStruct());
	FString Text;
	Property->ExportText_Direct(Text, &Stunned, nullptr, nullptr, PPF_None);
	EXPECT_EQ(Text, FString(TEXT("(TagName=\"Status.Stunned\")")));
	FGameplayTag Imported;
	EXPECT_NE(Property->ImportText_Direct(TEXT("(TagName=\"Weapon.Rifle\")"), &Imported, nullptr, PPF_None), nullptr);
	EXPECT_EQ(Imported.ToString(), FString(TEXT("Weapon.Rifle")));
	delete Property;
	EXPECT_EQ(FGameplayTag::StaticStruct()->GetPathName(), FString(TEXT("/Script/GameplayTags.GameplayTag")));
}
