#include "Misc/ConfigCacheIni.h"

#include "Misc/CString.h"
#include "Misc/FileHelper.h"
#include "Misc/Paths.h"

namespace
{
	/** The value of an ini line: quotes removed, with their two escapes, when the whole value is quoted. */
	FString UnquoteValue(const FString& RawValue)
	{
		const int32 Length = RawValue.Len();
		if (Length < 2 || RawValue[0] != TEXT('"') || RawValue[Length - 1] != TEXT('"'))
		{
			return RawValue;
		}
		FString Value;
		Value.Reserve(Length - 2);
		for (int32 Index = 1; Index < Length - 1; ++Index)
		{
			const TCHAR Char = RawValue[Index];
			if (Char == TEXT('\\') && Index + 1 < Length - 1 && (RawValue[Index + 1] == TEXT('"') || RawValue[Index + 1] == TEXT('\\')))
			{
				Value.AppendChar(RawValue[++Index]);
				continue;
			}
			Value.AppendChar(Char);
		}
		return Value;
	}
}

FConfigFile::FSection& FConfigFile::FindOrAddSection(const FString& SectionName)
{
	for (FSection& Section : Sections)
	{
		if (Section.Name == SectionName)
		{
			return Section;
		}
	}
	FSection& Section = Sections.AddDefaulted_GetRef();
	Section.Name = SectionName;
	return Section;
}

void FConfigFile::ProcessInputFileContents(const FString& Contents)
{
	TArray<FString> Lines;
	Contents.ParseIntoArrayLines(Lines, /*bCullEmpty*/ true);

	FSection* Current = nullptr;
	for (FString Line : Lines)
	{
		Line.TrimStartAndEndInline();
		// A byte order mark reaches here only when the file was decoded without removing it.
		if (Line.Len() > 0 && Line[0] == 0xFEFF)
		{
			Line.RightChopInline(1);
		}
		if (Line.IsEmpty() || Line[0] == TEXT(';') || Line[0] == TEXT('#'))
		{
			continue;
		}
		if (Line[0] == TEXT('['))
		{
			const int32 Close = Line.Find(TEXT("]"), ESearchCase::CaseSensitive);
			if (Close > 1)
			{
				Current = &FindOrAddSection(Line.Mid(1, Close - 1).TrimStartAndEnd());
			}
			else
			{
				Current = nullptr;
			}
			continue;
		}
		int32 Equals = INDEX_NONE;
		if (!Current || !Line.FindChar(TEXT('='), Equals))
		{
			continue;
		}
		FString Key = Line.Left(Equals).TrimStartAndEnd();
		const FString Value = UnquoteValue(Line.Mid(Equals + 1).TrimStartAndEnd());

		TCHAR Operation = 0;
		if (!Key.IsEmpty() && (Key[0] == TEXT('+') || Key[0] == TEXT('.') || Key[0] == TEXT('-') || Key[0] == TEXT('!')))
		{
			Operation = Key[0];
			Key.RightChopInline(1);
			Key.TrimStartInline();
		}
		if (Key.IsEmpty())
		{
			continue;
		}

		TArray<FEntry>& Entries = Current->Entries;
		switch (Operation)
		{
		case TEXT('!'):
			Entries.RemoveAll([&Key](const FEntry& Entry) { return Entry.Key == Key; });
			break;
		case TEXT('-'):
			Entries.RemoveAll([&Key, &Value](const FEntry& Entry) { return Entry.Key == Key && Entry.Value.Equals(Value, ESearchCase::CaseSensitive); });
			break;
		case TEXT('+'):
			if (!Entries.ContainsByPredicate([&Key, &Value](const FEntry& Entry) { return Entry.Key == Key && Entry.Value.Equals(Value, ESearchCase::CaseSensitive); }))
			{
				Entries.Add(FEntry{Key, Value});
			}
			break;
		case TEXT('.'):
			Entries.Add(FEntry{Key, Value});
			break;
		default:
		{
			// A plain line sets the key: a later line of the same key replaces an earlier one.
			FEntry* Existing = Entries.FindByPredicate([&Key](const FEntry& Entry) { return Entry.Key == Key; });
			if (Existing)
			{
				Existing->Value = Value;
				Entries.RemoveAll([&Key, Existing](const FEntry& Entry) { return Entry.Key == Key && &Entry != Existing; });
			}
			else
			{
				Entries.Add(FEntry{Key, Value});
			}
			break;
		}
		}
	}
}

const FConfigFile::FSection* FConfigFile::FindSection(const FString& SectionName) const
{
	return Sections.FindByPredicate([&SectionName](const FSection& Section) { return Section.Name == SectionName; });
}

const FString* FConfigFile::FindValue(const FString& SectionName, const FString& Key) const
{
	const FSection* Section = FindSection(SectionName);
	if (!Section)
	{
		return nullptr;
	}
	const FEntry* Entry = Section->Entries.FindByPredicate([&Key](const FEntry& Candidate) { return Candidate.Key == Key; });
	return Entry ? &Entry->Value : nullptr;
}

void FConfigFile::GetValues(const FString& SectionName, const FString& Key, TArray<FString>& OutValues) const
{
	if (const FSection* Section = FindSection(SectionName))
	{
		for (const FEntry& Entry : Section->Entries)
		{
			if (Entry.Key == Key)
			{
				OutValues.Add(Entry.Value);
			}
		}
	}
}

void FConfigFile::SetValue(const FString& SectionName, const FString& Key, const FString& Value)
{
	TArray<FEntry>& Entries = FindOrAddSection(SectionName).Entries;
	Entries.RemoveAll([&Key](const FEntry& Entry) { return Entry.Key == Key; });
	Entries.Add(FEntry{Key, Value});
}

FConfigCacheIni::FCachedFile& FConfigCacheIni::FindOrLoad(const FString& Filename)
{
	for (FCachedFile& Cached : Files)
	{
		// File names are compared as the file system does: exactly.
		if (Cached.Filename.Equals(Filename, ESearchCase::CaseSensitive))
		{
			return Cached;
		}
	}
	FCachedFile& Cached = Files.AddDefaulted_GetRef();
	Cached.Filename = Filename;
	FString Contents;
	if (FPaths::FileExists(Filename) && FFileHelper::LoadFileToString(Contents, *Filename))
	{
		Cached.bExists = true;
		Cached.File.ProcessInputFileContents(Contents);
	}
	return Cached;
}

FConfigFile* FConfigCacheIni::Find(const FString& Filename)
{
	FCachedFile& Cached = FindOrLoad(Filename);
	return Cached.bExists ? &Cached.File : nullptr;
}

bool FConfigCacheIni::LoadFile(const FString& Filename)
{
	UnloadFile(Filename);
	return Find(Filename) != nullptr;
}

void FConfigCacheIni::UnloadFile(const FString& Filename)
{
	Files.RemoveAll([&Filename](const FCachedFile& Cached) { return Cached.Filename.Equals(Filename, ESearchCase::CaseSensitive); });
}

bool FConfigCacheIni::DoesSectionExist(const TCHAR* Section, const FString& Filename)
{
	const FConfigFile* File = Find(Filename);
	return File && File->FindSection(Section) != nullptr;
}

bool FConfigCacheIni::GetString(const TCHAR* Section, const TCHAR* Key, FString& Value, const FString& Filename)
{
	const FConfigFile* File = Find(Filename);
	const FString* Found = File ? File->FindValue(Section, Key) : nullptr;
	if (!Found)
	{
		return false;
	}
	Value = *Found;
	return true;
}

bool FConfigCacheIni::GetBool(const TCHAR* Section, const TCHAR* Key, bool& Value, const FString& Filename)
{
	FString Text;
	if (!GetString(Section, Key, Text, Filename))
	{
		return false;
	}
	Value = FCString::ToBool(*Text);
	return true;
}

bool FConfigCacheIni::GetInt(const TCHAR* Section, const TCHAR* Key, int32& Value, const FString& Filename)
{
	FString Text;
	if (!GetString(Section, Key, Text, Filename))
	{
		return false;
	}
	Value = FCString::Atoi(*Text);
	return true;
}

bool FConfigCacheIni::GetFloat(const TCHAR* Section, const TCHAR* Key, float& Value, const FString& Filename)
{
	FString Text;
	if (!GetString(Section, Key, Text, Filename))
	{
		return false;
	}
	Value = FCString::Atof(*Text);
	return true;
}

bool FConfigCacheIni::GetDouble(const TCHAR* Section, const TCHAR* Key, double& Value, const FString& Filename)
{
	FString Text;
	if (!GetString(Section, Key, Text, Filename))
	{
		return false;
	}
	Value = FCString::Atod(*Text);
	return true;
}

int32 FConfigCacheIni::GetArray(const TCHAR* Section, const TCHAR* Key, TArray<FString>& Out, const FString& Filename)
{
	Out.Reset();
	if (const FConfigFile* File = Find(Filename))
	{
		File->GetValues(Section, Key, Out);
	}
	return Out.Num();
}

bool FConfigCacheIni::GetSection(const TCHAR* Section, TArray<FString>& Result, const FString& Filename)
{
	Result.Reset();
	const FConfigFile* File = Find(Filename);
	const FConfigFile::FSection* Found = File ? File->FindSection(Section) : nullptr;
	if (!Found)
	{
		return false;
	}
	for (const FConfigFile::FEntry& Entry : Found->Entries)
	{
		Result.Add(Entry.Key + TEXT("=") + Entry.Value);
	}
	return true;
}

void FConfigCacheIni::SetString(const TCHAR* Section, const TCHAR* Key, const TCHAR* Value, const FString& Filename)
{
	FCachedFile& Cached = FindOrLoad(Filename);
	Cached.bExists = true;
	Cached.File.SetValue(Section, Key, Value);
}

void FConfigCacheIni::SetBool(const TCHAR* Section, const TCHAR* Key, bool Value, const FString& Filename)
{
	SetString(Section, Key, Value ? TEXT("True") : TEXT("False"), Filename);
}

void FConfigCacheIni::SetInt(const TCHAR* Section, const TCHAR* Key, int32 Value, const FString& Filename)
{
	SetString(Section, Key, *FString::Printf(TEXT("%d"), Value), Filename);
}

namespace
{
	FConfigCacheIni& GetConfigCache()
	{
		static FConfigCacheIni Cache;
		return Cache;
	}
}

FConfigCacheIni* GConfig = &GetConfigCache();
