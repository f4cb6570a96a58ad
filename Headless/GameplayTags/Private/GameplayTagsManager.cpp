#include "GameplayTagsManager.h"

#include "HAL/FileManager.h"
#include "Misc/ConfigCacheIni.h"
#include "Misc/Paths.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"

IMPLEMENT_CLASS(UGameplayTagsManager)

namespace
{
	const TCHAR* const SettingsSection = TEXT("/Script/GameplayTags.GameplayTagsSettings");
	const TCHAR* const TagListSection = TEXT("/Script/GameplayTags.GameplayTagsList");
	/** Characters a tag may never hold: the separators of the ini entries themselves, and white space. */
	const TCHAR* const InvalidTagCharacters = TEXT("\",\r\n\t");

	/** The value of Field="..." inside an ini struct entry such as (Tag="A.B",DevComment="x"). */
	FString ReadQuotedField(const FString& Entry, const TCHAR* Field)
	{
		const FString Key = FString(Field) + TEXT("=\"");
		const int32 Start = Entry.Find(Key);
		if (Start == INDEX_NONE)
		{
			return FString();
		}
		const int32 ValueStart = Start + Key.Len();
		FString Value;
		for (int32 Index = ValueStart; Index < Entry.Len() && Entry[Index] != TEXT('"'); ++Index)
		{
			Value.AppendChar(Entry[Index]);
		}
		return Value;
	}
}

UGameplayTagsManager& UGameplayTagsManager::Get()
{
	static UGameplayTagsManager* Manager = []
	{
		UGameplayTagsManager* New = NewObject<UGameplayTagsManager>(GetTransientPackage(), TEXT("GameplayTagsManager"));
		New->AddToRoot();
		return New;
	}();
	return *Manager;
}

void UGameplayTagsManager::EnsureLoaded() const
{
	const FString ConfigDir = FPaths::ProjectConfigDir();
	if (!bLoaded || LoadedFrom != ConfigDir)
	{
		const_cast<UGameplayTagsManager*>(this)->LoadGameplayTagTables();
	}
}

void UGameplayTagsManager::LoadGameplayTagTables()
{
	Tags.Reset();
	LoadedFrom = FPaths::ProjectConfigDir();
	bLoaded = true;
	if (LoadedFrom.IsEmpty())
	{
		return;
	}
	AddTagsFromFile(FPaths::Combine(LoadedFrom, TEXT("DefaultGameplayTags.ini")), SettingsSection);
	TArray<FString> TagFiles;
	IFileManager::Get().FindFiles(TagFiles, *FPaths::Combine(LoadedFrom, TEXT("Tags"), TEXT("*.ini")), true, false);
	TagFiles.Sort();
	for (const FString& File : TagFiles)
	{
		AddTagsFromFile(FPaths::Combine(LoadedFrom, TEXT("Tags"), File), TagListSection);
	}
	Tags.KeySort([](const FName& A, const FName& B) { return A.ToString() < B.ToString(); });
}

void UGameplayTagsManager::AddTagsFromFile(const FString& Filename, const TCHAR* Section)
{
	if (!IFileManager::Get().FileExists(*Filename))
	{
		return;
	}
	FConfigCacheIni Config;
	if (!Config.LoadFile(Filename))
	{
		return;
	}
	TArray<FString> Entries;
	Config.GetArray(Section, TEXT("GameplayTagList"), Entries, Filename);
	for (const FString& Entry : Entries)
	{
		const FString Tag = ReadQuotedField(Entry, TEXT("Tag"));
		if (IsValidGameplayTagString(Tag))
		{
			AddTagWithParents(Tag, ReadQuotedField(Entry, TEXT("DevComment")));
		}
	}
}

void UGameplayTagsManager::AddTagWithParents(const FString& Tag, const FString& DevComment)
{
	Tags.Add(FName(*Tag), DevComment);
	for (int32 Index = Tag.Len() - 1; Index > 0; --Index)
	{
		if (Tag[Index] == TEXT('.'))
		{
			const FName Parent(*Tag.Left(Index));
			if (!Tags.Contains(Parent))
			{
				Tags.Add(Parent, FString());
			}
		}
	}
}

FGameplayTag UGameplayTagsManager::RequestGameplayTag(FName TagName, bool ErrorIfNotFound) const
{
	EnsureLoaded();
	// Tag names compare without case, as FName does; the dictionary's spelling is the one returned.
	for (const TPair<FName, FString>& Entry : Tags)
	{
		if (Entry.Key == TagName)
		{
			return FGameplayTag(Entry.Key);
		}
	}
	return FGameplayTag();
}

void UGameplayTagsManager::RequestAllGameplayTags(FGameplayTagContainer& TagContainer, bool OnlyIncludeDictionaryTags) const
{
	EnsureLoaded();
	for (const TPair<FName, FString>& Entry : Tags)
	{
		TagContainer.AddTag(FGameplayTag(Entry.Key));
	}
}

FString UGameplayTagsManager::GetTagDevComment(FName TagName) const
{
	EnsureLoaded();
	const FString* Comment = Tags.Find(TagName);
	return Comment ? *Comment : FString();
}

FGameplayTag UGameplayTagsManager::AddNativeGameplayTag(FName TagName, const FString& TagDevComment)
{
	EnsureLoaded();
	const FString Tag = TagName.ToString();
	if (!IsValidGameplayTagString(Tag))
	{
		return FGameplayTag();
	}
	AddTagWithParents(Tag, TagDevComment);
	return FGameplayTag(TagName);
}

bool UGameplayTagsManager::IsValidGameplayTagString(const FString& TagString, FText* OutError, FString* OutFixedString) const
{
	FString Fixed = TagString;
	FString Error;
	if (TagString.IsEmpty())
	{
		Error = TEXT("Tag is empty");
	}
	for (const TCHAR* Invalid = InvalidTagCharacters; *Invalid; ++Invalid)
	{
		if (Fixed.Contains(FString::Chr(*Invalid)))
		{
			Error = Error.IsEmpty() ? FString::Printf(TEXT("Tag has an invalid character in it")) : Error;
			Fixed.ReplaceInline(*FString::Chr(*Invalid), TEXT("_"));
		}
	}
	Fixed.TrimStartAndEndInline();
	if (Error.IsEmpty() && Fixed != TagString)
	{
		Error = TEXT("Tag starts or ends with a space");
	}
	while (Fixed.StartsWith(TEXT(".")))
	{
		Error = Error.IsEmpty() ? FString(TEXT("Tag starts with .")) : Error;
		Fixed.RightChopInline(1);
	}
	while (Fixed.EndsWith(TEXT(".")))
	{
		Error = Error.IsEmpty() ? FString(TEXT("Tag ends with .")) : Error;
		Fixed.LeftChopInline(1);
	}
	while (Fixed.Contains(TEXT("..")))
	{
		Error = Error.IsEmpty() ? FString(TEXT("Tag has an empty part (..)")) : Error;
		Fixed.ReplaceInline(TEXT(".."), TEXT("."));
	}
	if (OutError)
	{
		*OutError = FText::FromString(Error);
	}
	if (OutFixedString)
	{
		*OutFixedString = Fixed;
	}
	return Error.IsEmpty();
}
