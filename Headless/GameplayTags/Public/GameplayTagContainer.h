#pragma once

#include "CoreMinimal.h"

class UScriptStruct;

/** A hierarchical name such as "Ability.Attack.Melee", valid when the project declares it. */
struct FGameplayTag
{
	FGameplayTag() = default;

	GAMEPLAYTAGS_API static UScriptStruct* StaticStruct();

	/** The tag of that name; an invalid tag when the project does not declare it. */
	GAMEPLAYTAGS_API static FGameplayTag RequestGameplayTag(const FName& TagName, bool ErrorIfNotFound = true);
	GAMEPLAYTAGS_API static const FGameplayTag EmptyTag;

	bool IsValid() const { return !TagName.IsNone(); }
	const FName& GetTagName() const { return TagName; }
	FString ToString() const { return TagName.ToString(); }

	/** True when this tag is Other or lies under it ("A.B" matches "A"); an invalid Other matches nothing. */
	GAMEPLAYTAGS_API bool MatchesTag(const FGameplayTag& Other) const;
	bool MatchesTagExact(const FGameplayTag& Other) const { return Other.IsValid() && TagName == Other.TagName; }
	/** "A.B" for "A.B.C"; invalid for a root tag. */
	GAMEPLAYTAGS_API FGameplayTag RequestDirectParent() const;

	bool operator==(const FGameplayTag& Other) const { return TagName == Other.TagName; }
	bool operator!=(const FGameplayTag& Other) const { return TagName != Other.TagName; }
	friend uint32 GetTypeHash(const FGameplayTag& Tag) { return GetTypeHash(Tag.TagName); }

private:
	friend class UGameplayTagsManager;
	explicit FGameplayTag(const FName& InTagName) : TagName(InTagName) {}

	FName TagName;
};

/** A set of tags, in the order they were added. */
struct FGameplayTagContainer
{
	FGameplayTagContainer() = default;
	explicit FGameplayTagContainer(const FGameplayTag& Tag) { AddTag(Tag); }

	GAMEPLAYTAGS_API static UScriptStruct* StaticStruct();
	GAMEPLAYTAGS_API static const FGameplayTagContainer EmptyContainer;

	/** Adds a valid tag that is not there yet. */
	GAMEPLAYTAGS_API void AddTag(const FGameplayTag& TagToAdd);
	/** Adds without checking for duplicates. */
	void AddTagFast(const FGameplayTag& TagToAdd) { GameplayTags.Add(TagToAdd); }
	GAMEPLAYTAGS_API bool RemoveTag(const FGameplayTag& TagToRemove);
	void Reset() { GameplayTags.Reset(); }

	/** True when a tag of the container matches Tag, counting parents ("A.B" in the container has "A"). */
	GAMEPLAYTAGS_API bool HasTag(const FGameplayTag& TagToCheck) const;
	bool HasTagExact(const FGameplayTag& TagToCheck) const { return TagToCheck.IsValid() && GameplayTags.Contains(TagToCheck); }
	GAMEPLAYTAGS_API bool HasAny(const FGameplayTagContainer& Other) const;
	GAMEPLAYTAGS_API bool HasAll(const FGameplayTagContainer& Other) const;

	int32 Num() const { return GameplayTags.Num(); }
	bool IsValid() const { return GameplayTags.Num() > 0; }
	bool IsEmpty() const { return GameplayTags.Num() == 0; }
	const TArray<FGameplayTag>& GetGameplayTagArray() const { return GameplayTags; }
	/** "A.B, C" */
	GAMEPLAYTAGS_API FString ToStringSimple() const;

	bool operator==(const FGameplayTagContainer& Other) const { return GameplayTags == Other.GameplayTags; }

	auto begin() const { return GameplayTags.begin(); }
	auto end() const { return GameplayTags.end(); }

private:
	TArray<FGameplayTag> GameplayTags;
};
