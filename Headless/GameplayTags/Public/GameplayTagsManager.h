#pragma once

#include "CoreMinimal.h"
#include "GameplayTagContainer.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

/**
 * The project's tag dictionary, read from Config/DefaultGameplayTags.ini and the .ini files of Config/Tags in the engine's ini
 * form (+GameplayTagList=(Tag="A.B",DevComment="...")). Every parent of a declared tag is a tag too.
 */
class UGameplayTagsManager : public UObject
{
	DECLARE_CLASS(UGameplayTagsManager, UObject, CLASS_None, CASTCLASS_None, TEXT("/Script/GameplayTags"), GAMEPLAYTAGS_API)

public:
	UGameplayTagsManager() = default;

	GAMEPLAYTAGS_API static UGameplayTagsManager& Get();

	/** The tag, or an invalid one when the dictionary lacks it. */
	GAMEPLAYTAGS_API FGameplayTag RequestGameplayTag(FName TagName, bool ErrorIfNotFound = true) const;
	/** Every tag of the dictionary, parents included, sorted by name. */
	GAMEPLAYTAGS_API void RequestAllGameplayTags(FGameplayTagContainer& TagContainer, bool OnlyIncludeDictionaryTags) const;
	/** The developer comment a tag was declared with, if any. */
	GAMEPLAYTAGS_API FString GetTagDevComment(FName TagName) const;

	/**
	 * Whether a string can name a tag; when not, OutError says why and OutFixedString holds the nearest valid
	 * string (empty when none).
	 */
	GAMEPLAYTAGS_API bool IsValidGameplayTagString(const FString& TagString, FText* OutError = nullptr, FString* OutFixedString = nullptr) const;

	/** Reads the dictionary again from the current project's Config folder. */
	GAMEPLAYTAGS_API void LoadGameplayTagTables();
	/** Adds a tag (and its parents) as native code would; returns it. */
	GAMEPLAYTAGS_API FGameplayTag AddNativeGameplayTag(FName TagName, const FString& TagDevComment = FString());

private:
	void EnsureLoaded() const;
	void AddTagWithParents(const FString& Tag, const FString& DevComment);
	void AddTagsFromFile(const FString& Filename, const TCHAR* Section);

	TMap<FName, FString> Tags;
	/** The Config folder the dictionary was read from; a different project reads it again. */
	mutable FString LoadedFrom;
	mutable bool bLoaded = false;
};
