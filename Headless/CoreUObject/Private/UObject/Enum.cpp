#include "UObject/Class.h"
#include "UObject/UObjectHash.h"
#include "ObjectRegistry.h"

using namespace UE::CoreUObject::Private;

IMPLEMENT_CLASS(UEnum)

UEnum::UEnum(const FObjectInitializer& ObjectInitializer)
	: UField()
{
}

bool UEnum::SetEnums(TArray<TPair<FName, int64>>& InNames, ECppForm InCppForm, EEnumFlags InFlags, bool bAddMaxKeyIfMissing)
{
	for (int32 Index = 0; Index < InNames.Num(); ++Index)
	{
		for (int32 Other = 0; Other < Index; ++Other)
		{
			if (InNames[Index].Key == InNames[Other].Key)
			{
				LogError(FString::Printf(TEXT("SetEnums on %s: the name %s appears twice"), *GetPathName(), *InNames[Index].Key.ToString()));
				return false;
			}
		}
	}
	Names = InNames;
	CppForm = InCppForm;
	EnumFlags = InFlags;
	if (bAddMaxKeyIfMissing && !ContainsExistingMax())
	{
		const FName MaxEnumItem(*GenerateFullEnumName(*(GenerateEnumPrefix() + TEXT("_MAX"))));
		Names.Emplace(MaxEnumItem, GetMaxEnumValue() + 1);
	}
	return true;
}

FName UEnum::GetNameByIndex(int32 Index) const
{
	return Names.IsValidIndex(Index) ? Names[Index].Key : FName();
}

FName UEnum::GetNameByValue(int64 InValue) const
{
	return GetNameByIndex(GetIndexByValue(InValue));
}

FString UEnum::GetNameStringByIndex(int32 InIndex) const
{
	if (!Names.IsValidIndex(InIndex))
	{
		return FString();
	}
	const FString EntryName = Names[InIndex].Key.ToString();
	if (CppForm == ECppForm::Regular)
	{
		return EntryName;
	}
	const int32 ScopeIndex = EntryName.Find(TEXT("::"), ESearchCase::CaseSensitive);
	return ScopeIndex != INDEX_NONE ? EntryName.Mid(ScopeIndex + 2) : EntryName;
}

FString UEnum::GetNameStringByValue(int64 InValue) const
{
	return GetNameStringByIndex(GetIndexByValue(InValue));
}

int64 UEnum::GetValueByIndex(int32 Index) const
{
	return Names.IsValidIndex(Index) ? Names[Index].Value : (int64)INDEX_NONE;
}

int32 UEnum::GetIndexByName(FName InName, EGetByNameFlags Flags) const
{
	const ENameCase Comparison = EnumHasAnyFlags(Flags, EGetByNameFlags::CaseSensitive) ? ENameCase::CaseSensitive : ENameCase::IgnoreCase;
	for (int32 Index = 0; Index < Names.Num(); ++Index)
	{
		if (Names[Index].Key.IsEqual(InName, Comparison))
		{
			return Index;
		}
	}
	return InName.IsNone() ? INDEX_NONE : GetIndexByNameString(InName.ToString(), Flags);
}

int32 UEnum::GetIndexByNameString(const FString& SearchString, EGetByNameFlags Flags) const
{
	const ESearchCase::Type Comparison = EnumHasAnyFlags(Flags, EGetByNameFlags::CaseSensitive) ? ESearchCase::CaseSensitive : ESearchCase::IgnoreCase;
	// Accept "A" for "EFoo::A" and the reverse.
	const int32 ScopeIndex = SearchString.Find(TEXT("::"), ESearchCase::CaseSensitive);
	const FString OtherForm = ScopeIndex == INDEX_NONE ? GenerateFullEnumName(*SearchString) : SearchString.RightChop(ScopeIndex + 2);
	for (int32 Index = 0; Index < Names.Num(); ++Index)
	{
		const FString EntryName = Names[Index].Key.ToString();
		if (EntryName.Equals(SearchString, Comparison) || EntryName.Equals(OtherForm, Comparison))
		{
			return Index;
		}
		if (EnumHasAnyFlags(Flags, EGetByNameFlags::CheckAuthoredName) && GetAuthoredNameStringByIndex(Index).Equals(SearchString, Comparison))
		{
			return Index;
		}
	}
	if (EnumHasAnyFlags(Flags, EGetByNameFlags::ErrorIfNotFound))
	{
		LogWarning(FString::Printf(TEXT("Enum %s has no entry named %s"), *GetName(), *SearchString));
	}
	return INDEX_NONE;
}

int64 UEnum::GetValueByName(FName InName, EGetByNameFlags Flags) const
{
	const int32 Index = GetIndexByName(InName, Flags);
	return Index == INDEX_NONE ? (int64)INDEX_NONE : Names[Index].Value;
}

int64 UEnum::GetValueByNameString(const FString& SearchString, EGetByNameFlags Flags) const
{
	const int32 Index = GetIndexByNameString(SearchString, Flags);
	return Index == INDEX_NONE ? (int64)INDEX_NONE : Names[Index].Value;
}

int32 UEnum::GetIndexByValue(int64 InValue) const
{
	for (int32 Index = 0; Index < Names.Num(); ++Index)
	{
		if (Names[Index].Value == InValue)
		{
			return Index;
		}
	}
	return INDEX_NONE;
}

FText UEnum::GetDisplayNameTextByIndex(int32 InIndex) const
{
	const FString RawName = GetNameStringByIndex(InIndex);
	if (RawName.IsEmpty())
	{
		return FText::GetEmpty();
	}
	if (HasMetaData(TEXT("DisplayName"), InIndex))
	{
		return FText::FromString(GetMetaData(TEXT("DisplayName"), InIndex));
	}
	return FText::FromString(FName::NameToDisplayString(RawName, false));
}

FText UEnum::GetDisplayNameTextByValue(int64 InValue) const
{
	return GetDisplayNameTextByIndex(GetIndexByValue(InValue));
}

bool UEnum::FindDisplayNameTextByValue(FText& OutText, int64 InValue) const
{
	const int32 Index = GetIndexByValue(InValue);
	if (Index == INDEX_NONE)
	{
		return false;
	}
	OutText = GetDisplayNameTextByIndex(Index);
	return true;
}

FText UEnum::GetToolTipTextByIndex(int32 NameIndex) const
{
	return FText::FromString(GetMetaData(TEXT("ToolTip"), NameIndex));
}

int64 UEnum::GetMaxEnumValue() const
{
	if (Names.IsEmpty())
	{
		return 0;
	}
	int64 MaxValue = Names[0].Value;
	for (const TPair<FName, int64>& Entry : Names)
	{
		MaxValue = FMath::Max(MaxValue, Entry.Value);
	}
	return MaxValue;
}

bool UEnum::IsValidEnumValue(int64 InValue) const
{
	return GetIndexByValue(InValue) != INDEX_NONE;
}

bool UEnum::IsValidEnumName(FName InName) const
{
	return GetIndexByName(InName) != INDEX_NONE;
}

bool UEnum::ContainsExistingMax() const
{
	if (GetIndexByName(FName(*GenerateFullEnumName(TEXT("MAX"))), EGetByNameFlags::CheckAuthoredName) != INDEX_NONE)
	{
		return true;
	}
	return GetIndexByName(FName(*GenerateFullEnumName(*(GenerateEnumPrefix() + TEXT("_MAX")))), EGetByNameFlags::CheckAuthoredName) != INDEX_NONE;
}

FString UEnum::GenerateFullEnumName(const TCHAR* InEnumName) const
{
	if (CppForm == ECppForm::Regular || IsFullEnumName(InEnumName))
	{
		return FString(InEnumName);
	}
	return FString::Printf(TEXT("%s::%s"), *GetName(), InEnumName);
}

FString UEnum::GenerateEnumPrefix() const
{
	FString Prefix;
	if (!Names.IsEmpty())
	{
		// The longest prefix shared by every entry, cut back to its last underscore.
		Prefix = Names[0].Key.ToString();
		for (int32 Index = 1; Index < Names.Num(); ++Index)
		{
			const FString Entry = Names[Index].Key.ToString();
			int32 Common = 0;
			while (Common < Prefix.Len() && Common < Entry.Len() && Prefix[Common] == Entry[Common])
			{
				++Common;
			}
			Prefix.LeftInline(Common);
		}
		const int32 UnderscoreIndex = Prefix.Find(TEXT("_"), ESearchCase::CaseSensitive, ESearchDir::FromEnd);
		if (UnderscoreIndex > 0)
		{
			Prefix.LeftInline(UnderscoreIndex);
		}
		else
		{
			Prefix.Empty();
		}
	}
	return Prefix.IsEmpty() ? GetName() : Prefix;
}

bool UEnum::IsFullEnumName(const TCHAR* InEnumName)
{
	return InEnumName && FString(InEnumName).Contains(TEXT("::"), ESearchCase::CaseSensitive);
}

int64 UEnum::ParseEnum(const TCHAR*& Str)
{
	FString Token;
	const TCHAR* Cursor = Str;
	while (*Cursor && (FChar::IsAlnum(*Cursor) || *Cursor == TEXT('_') || (Cursor[0] == TEXT(':') && Cursor[1] == TEXT(':'))))
	{
		if (*Cursor == TEXT(':'))
		{
			Token += TEXT("::");
			Cursor += 2;
		}
		else
		{
			Token += *Cursor++;
		}
	}
	if (Token.IsEmpty())
	{
		return INDEX_NONE;
	}
	const FName TokenName(*Token, FNAME_Find);
	if (TokenName.IsNone())
	{
		return INDEX_NONE;
	}
	int64 Result = INDEX_NONE;
	ForEachObjectOfClass(UEnum::StaticClass(), [&](UObject* Object) {
		if (Result == INDEX_NONE)
		{
			const UEnum* Enum = (const UEnum*)Object;
			for (const TPair<FName, int64>& Entry : Enum->Names)
			{
				if (Entry.Key == TokenName)
				{
					Result = Entry.Value;
					break;
				}
			}
		}
	}, true, RF_NoFlags);
	if (Result != INDEX_NONE)
	{
		Str = Cursor;
	}
	return Result;
}

FString UEnum::MetaDataKey(const TCHAR* Key, int32 NameIndex) const
{
	return NameIndex == INDEX_NONE ? FString(Key) : GetNameStringByIndex(NameIndex) + TEXT(".") + Key;
}

bool UEnum::HasMetaData(const TCHAR* Key, int32 NameIndex) const
{
	return UField::FindMetaData(FName(*MetaDataKey(Key, NameIndex), FNAME_Find)) != nullptr;
}

FString UEnum::GetMetaData(const TCHAR* Key, int32 NameIndex, bool bAllowRemap) const
{
	const FString* Value = UField::FindMetaData(FName(*MetaDataKey(Key, NameIndex), FNAME_Find));
	return Value ? *Value : FString();
}

void UEnum::SetMetaData(const TCHAR* Key, const TCHAR* InValue, int32 NameIndex)
{
	UField::SetMetaData(FName(*MetaDataKey(Key, NameIndex)), InValue);
}

void UEnum::RemoveMetaData(const TCHAR* Key, int32 NameIndex)
{
	UField::RemoveMetaData(FName(*MetaDataKey(Key, NameIndex), FNAME_Find));
}
