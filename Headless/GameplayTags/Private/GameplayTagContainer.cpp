#include "GameplayTagContainer.h"

#include "GameplayTagsManager.h"
#include "UObject/UnrealType.h"

IMPLEMENT_SCRIPT_STRUCT(FGameplayTag, TEXT("/Script/GameplayTags"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FNameProperty, TagName, CPF_Edit);
)

IMPLEMENT_SCRIPT_STRUCT(FGameplayTagContainer, TEXT("/Script/GameplayTags"), STRUCT_NoFlags,
	{
		FArrayProperty* Tags = UE_NATIVE_PROPERTY(FArrayProperty, GameplayTags, CPF_Edit);
		Tags->AddCppProperty(new FStructProperty(Tags, Tags->GetFName(), RF_Public | RF_MarkAsNative | RF_Transient, 0, CPF_None, FGameplayTag::StaticStruct()));
	}
)

const FGameplayTag FGameplayTag::EmptyTag;
const FGameplayTagContainer FGameplayTagContainer::EmptyContainer;

FGameplayTag FGameplayTag::RequestGameplayTag(const FName& TagName, bool ErrorIfNotFound)
{
	return UGameplayTagsManager::Get().RequestGameplayTag(TagName, ErrorIfNotFound);
}

bool FGameplayTag::MatchesTag(const FGameplayTag& Other) const
{
	if (!IsValid() || !Other.IsValid())
	{
		return false;
	}
	if (TagName == Other.TagName)
	{
		return true;
	}
	const FString Mine = TagName.ToString();
	const FString Theirs = Other.TagName.ToString();
	return Mine.Len() > Theirs.Len() && Mine.StartsWith(Theirs) && Mine[Theirs.Len()] == TEXT('.');
}

FGameplayTag FGameplayTag::RequestDirectParent() const
{
	const FString Name = TagName.ToString();
	int32 Dot = INDEX_NONE;
	if (!Name.FindLastChar(TEXT('.'), Dot))
	{
		return FGameplayTag();
	}
	return FGameplayTag(FName(*Name.Left(Dot)));
}

void FGameplayTagContainer::AddTag(const FGameplayTag& TagToAdd)
{
	if (TagToAdd.IsValid())
	{
		GameplayTags.AddUnique(TagToAdd);
	}
}

bool FGameplayTagContainer::RemoveTag(const FGameplayTag& TagToRemove)
{
	return GameplayTags.Remove(TagToRemove) > 0;
}

bool FGameplayTagContainer::HasTag(const FGameplayTag& TagToCheck) const
{
	return GameplayTags.ContainsByPredicate([&TagToCheck](const FGameplayTag& Tag) { return Tag.MatchesTag(TagToCheck); });
}

bool FGameplayTagContainer::HasAny(const FGameplayTagContainer& Other) const
{
	return Other.GameplayTags.ContainsByPredicate([this](const FGameplayTag& Tag) { return HasTag(Tag); });
}

bool FGameplayTagContainer::HasAll(const FGameplayTagContainer& Other) const
{
	return !Other.GameplayTags.ContainsByPredicate([this](const FGameplayTag& Tag) { return !HasTag(Tag); });
}

FString FGameplayTagContainer::ToStringSimple() const
{
	FString Result;
	for (const FGameplayTag& Tag : GameplayTags)
	{
		if (!Result.IsEmpty())
		{
			Result += TEXT(", ");
		}
		Result += Tag.ToString();
	}
	return Result;
}
