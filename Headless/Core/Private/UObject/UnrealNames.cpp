#include "UObject/NameTypes.h"

#include "Internationalization/Text.h"

#include <deque>
#include <mutex>
#include <unordered_map>

namespace
{
	/** One spelling of one base text. Entries never move once made, so views into them stay valid. */
	struct FNameEntry
	{
		std::u16string Text;
		uint32 ComparisonIndex = 0;
	};

	struct FCaseSensitiveHash
	{
		SIZE_T operator()(std::u16string_view Text) const { return std::hash<std::u16string_view>()(Text); }
	};

	struct FIgnoreCaseHash
	{
		SIZE_T operator()(std::u16string_view Text) const { return FString::HashIgnoreCase(Text.data(), static_cast<int32>(Text.size())); }
	};

	struct FIgnoreCaseEqual
	{
		bool operator()(std::u16string_view A, std::u16string_view B) const
		{
			if (A.size() != B.size())
			{
				return false;
			}
			for (SIZE_T Index = 0; Index < A.size(); ++Index)
			{
				if (FChar::ToLower(A[Index]) != FChar::ToLower(B[Index]))
				{
					return false;
				}
			}
			return true;
		}
	};

	/**
	 * The global table. Spellings map to display entries; case-folded texts map to the entry that
	 * first registered them, whose index is the comparison index every spelling shares.
	 */
	class FNameTable
	{
	public:
		FNameTable()
		{
			// Entry 0 is "None", so FName(TEXT("None")) and FName() are the same name.
			Add(u"None");
		}

		static FNameTable& Get()
		{
			static FNameTable Table;
			return Table;
		}

		/** Looks Text up (adding it when bAdd); false when it is absent and not added. */
		bool FindOrAdd(std::u16string_view Text, bool bAdd, uint32& OutComparison, uint32& OutDisplay)
		{
			std::lock_guard<std::mutex> Lock(Mutex);
			if (const auto Found = BySpelling.find(Text); Found != BySpelling.end())
			{
				OutDisplay = Found->second;
				OutComparison = Entries[Found->second].ComparisonIndex;
				return true;
			}
			if (!bAdd)
			{
				if (const auto Folded = ByFoldedText.find(Text); Folded != ByFoldedText.end())
				{
					// Same name in another spelling: answer with the first spelling rather than add one.
					OutComparison = Folded->second;
					OutDisplay = Folded->second;
					return true;
				}
				return false;
			}
			OutDisplay = Add(Text);
			OutComparison = Entries[OutDisplay].ComparisonIndex;
			return true;
		}

		const std::u16string& GetText(uint32 Index)
		{
			std::lock_guard<std::mutex> Lock(Mutex);
			return Entries[Index].Text;
		}

	private:
		uint32 Add(std::u16string_view Text)
		{
			const uint32 Index = static_cast<uint32>(Entries.size());
			FNameEntry& Entry = Entries.emplace_back();
			Entry.Text.assign(Text);
			const std::u16string_view Stored(Entry.Text);
			const auto Folded = ByFoldedText.try_emplace(Stored, Index).first;
			Entry.ComparisonIndex = Folded->second;
			BySpelling.emplace(Stored, Index);
			return Index;
		}

		std::mutex Mutex;
		std::deque<FNameEntry> Entries;
		std::unordered_map<std::u16string_view, uint32, FCaseSensitiveHash> BySpelling;
		std::unordered_map<std::u16string_view, uint32, FIgnoreCaseHash, FIgnoreCaseEqual> ByFoldedText;
	};

	/**
	 * Splits a trailing "_<digits>" off Name as the engine does: at least one digit, no leading
	 * zero unless the number is 0 itself, something before the '_', and a value that fits an
	 * int32 once incremented. Returns the internal number, or NAME_NO_NUMBER_INTERNAL.
	 */
	int32 SplitNumber(const TCHAR* Name, int32& InOutLen)
	{
		const int32 Len = InOutLen;
		int32 Digits = 0;
		while (Digits < Len && FChar::IsDigit(Name[Len - 1 - Digits]))
		{
			++Digits;
		}
		const int32 FirstDigit = Len - Digits;
		if (Digits == 0 || Digits > 10 || FirstDigit < 2 || Name[FirstDigit - 1] != TCHAR('_'))
		{
			return NAME_NO_NUMBER_INTERNAL;
		}
		if (Digits > 1 && Name[FirstDigit] == TCHAR('0'))
		{
			return NAME_NO_NUMBER_INTERNAL;
		}
		int64 Value = 0;
		for (int32 Index = FirstDigit; Index < Len; ++Index)
		{
			Value = Value * 10 + (Name[Index] - TCHAR('0'));
		}
		if (Value >= 0x7fffffff)
		{
			return NAME_NO_NUMBER_INTERNAL;
		}
		InOutLen = FirstDigit - 1;
		return NAME_EXTERNAL_TO_INTERNAL(static_cast<int32>(Value));
	}

	const TCHAR* const NoneText = TEXT("None");
}

FName::FName(EName Name, int32 InNumber)
	: ComparisonIndex(static_cast<uint32>(Name))
	, DisplayIndex(static_cast<uint32>(Name))
	, Number(InNumber)
{
}

FName::FName(const TCHAR* Name, EFindName FindType)
{
	Init(Name, Name ? FCString::Strlen(Name) : 0, NAME_NO_NUMBER_INTERNAL, true, FindType);
}

FName::FName(const ANSICHAR* Name, EFindName FindType)
{
	const FString Wide(Name);
	Init(*Wide, Wide.Len(), NAME_NO_NUMBER_INTERNAL, true, FindType);
}

FName::FName(const FString& Name, EFindName FindType)
{
	Init(*Name, Name.Len(), NAME_NO_NUMBER_INTERNAL, true, FindType);
}

FName::FName(int32 Len, const TCHAR* Name, EFindName FindType)
{
	Init(Name, Name && Len > 0 ? FCString::Strnlen(Name, Len) : 0, NAME_NO_NUMBER_INTERNAL, true, FindType);
}

FName::FName(const TCHAR* Name, int32 InNumber)
{
	Init(Name, Name ? FCString::Strlen(Name) : 0, InNumber, false, FNAME_Add);
}

FName::FName(const TCHAR* Name, int32 InNumber, bool bSplitName)
{
	Init(Name, Name ? FCString::Strlen(Name) : 0, InNumber, bSplitName && InNumber == NAME_NO_NUMBER_INTERNAL, FNAME_Add);
}

void FName::Init(const TCHAR* Name, int32 Len, int32 InNumber, bool bSplitNumber, EFindName FindType)
{
	ComparisonIndex = 0;
	DisplayIndex = 0;
	Number = NAME_NO_NUMBER_INTERNAL;
	if (!Name || Len <= 0)
	{
		return;
	}
	if (bSplitNumber)
	{
		InNumber = SplitNumber(Name, Len);
	}
	uint32 Comparison = 0;
	uint32 Display = 0;
	if (FNameTable::Get().FindOrAdd(std::u16string_view(Name, static_cast<SIZE_T>(Len)), FindType == FNAME_Add, Comparison, Display))
	{
		ComparisonIndex = Comparison;
		DisplayIndex = Display;
		Number = InNumber;
	}
}

void FName::AppendString(FString& Out) const
{
	Out.Append(std::u16string_view(FNameTable::Get().GetText(DisplayIndex)));
	if (Number != NAME_NO_NUMBER_INTERNAL)
	{
		Out.AppendChar(TCHAR('_'));
		Out.Appendf(TEXT("%d"), NAME_INTERNAL_TO_EXTERNAL(Number));
	}
}

FString FName::ToString() const
{
	FString Result;
	AppendString(Result);
	return Result;
}

void FName::ToString(FString& Out) const
{
	Out.Reset();
	AppendString(Out);
}

FString FName::GetPlainNameString() const
{
	return FString(std::u16string_view(FNameTable::Get().GetText(DisplayIndex)));
}

int32 FName::GetStringLength() const
{
	int32 Length = static_cast<int32>(FNameTable::Get().GetText(DisplayIndex).size());
	if (Number != NAME_NO_NUMBER_INTERNAL)
	{
		Length += 1 + FString::FromInt(NAME_INTERNAL_TO_EXTERNAL(Number)).Len();
	}
	return Length;
}

bool FName::EqualsText(const TCHAR* Text) const
{
	if (!Text || !*Text)
	{
		return IsNone();
	}
	// Look the text up without adding it: a text the table has never seen names nothing.
	const FName Other(Text, FNAME_Find);
	if (Other.IsNone() && FCString::Stricmp(Text, NoneText) != 0)
	{
		return false;
	}
	return *this == Other;
}

int32 FName::Compare(const FName& Other) const
{
	if (ComparisonIndex != Other.ComparisonIndex)
	{
		FNameTable& Table = FNameTable::Get();
		const int32 TextOrder = FCString::Stricmp(Table.GetText(DisplayIndex).c_str(), Table.GetText(Other.DisplayIndex).c_str());
		if (TextOrder != 0)
		{
			return TextOrder;
		}
	}
	return Number - Other.Number;
}

bool FName::IsValidXName(const FString& Name, const FString& InvalidChars, FText* OutReason, const FText* InErrorCtx)
{
	if (Name.IsEmpty() || InvalidChars.IsEmpty())
	{
		return true;
	}
	FString Matched;
	for (const TCHAR Char : InvalidChars)
	{
		int32 Unused;
		if (Name.FindChar(Char, Unused) && !Matched.FindChar(Char, Unused))
		{
			Matched.AppendChar(Char);
		}
	}
	if (Matched.IsEmpty())
	{
		return true;
	}
	if (OutReason)
	{
		const FString Context = InErrorCtx ? InErrorCtx->ToString() : FString(TEXT("Name"));
		*OutReason = FText::FromString(FString::Printf(TEXT("%s may not contain the following characters: %s"), *Context, *Matched));
	}
	return false;
}

namespace
{
	/** Short words written in lower case when they start a word after the first one. */
	bool StartsWithJoiningWord(const FString& Text, int32 Index)
	{
		struct FJoiningWord
		{
			const TCHAR* Text;
			int32 Length;
		};
		static constexpr FJoiningWord JoiningWords[] = {
			{TEXT("In"), 2}, {TEXT("As"), 2}, {TEXT("To"), 2}, {TEXT("Or"), 2}, {TEXT("At"), 2}, {TEXT("On"), 2}, {TEXT("If"), 2}, {TEXT("Be"), 2},
			{TEXT("By"), 2}, {TEXT("The"), 3}, {TEXT("For"), 3}, {TEXT("And"), 3}, {TEXT("With"), 4}, {TEXT("When"), 4}, {TEXT("From"), 4},
		};
		const int32 Remaining = Text.Len() - Index;
		const TCHAR First = Text[Index];
		for (const FJoiningWord& Word : JoiningWords)
		{
			// Titles are made for every node a tool reads: the first letter rules out most words at once.
			// The word must be followed by something that does not continue it ("In" is not the start of "Instance"),
			// and must not end the text.
			if (Word.Text[0] == First && Remaining > Word.Length && !FChar::IsLower(Text[Index + Word.Length]) && FCString::Strncmp(*Text + Index, Word.Text, Word.Length) == 0)
			{
				return true;
			}
		}
		return false;
	}
}

FString FName::NameToDisplayString(const FString& InDisplayName, const bool bIsBool)
{
	FString Result;
	Result.Reserve(InDisplayName.Len() + 8);

	// Runs of capitals and digits stay together ("3D", "HUD"); a lower-case letter ends the run.
	bool bInRun = false;
	bool bAfterSpace = false;
	bool bAfterOpenParen = false;
	bool bAfterNumber = false;
	bool bAfterMinus = false;

	for (int32 Index = 0; Index < InDisplayName.Len(); ++Index)
	{
		TCHAR Char = InDisplayName[Index];
		const bool bLower = FChar::IsLower(Char);
		const bool bUpper = FChar::IsUpper(Char);
		const bool bDigit = FChar::IsDigit(Char);

		// A bool's leading 'b' goes ("bVisible" -> "Visible"), unless the text does not follow that convention.
		if (Index == 0 && bIsBool && Char == TEXT('b') && InDisplayName.Len() > 1 && FChar::IsUpper(InDisplayName[1]))
		{
			continue;
		}

		// A new word starts at a capital or a digit, except inside numbers ("-1.5") and after '('.
		if ((bUpper || (bDigit && !bAfterMinus)) && !bInRun && !bAfterOpenParen && !bAfterNumber)
		{
			if (!bAfterSpace && !Result.IsEmpty())
			{
				Result += TEXT(' ');
				bAfterSpace = true;
			}
			bInRun = true;
		}
		if (bLower)
		{
			bInRun = false;
		}
		if (Char == TEXT('_'))
		{
			Char = TEXT(' ');
			bInRun = true;
		}

		if (Result.IsEmpty())
		{
			Char = FChar::ToUpper(Char);
		}
		else if (!bDigit && (bAfterSpace || bAfterOpenParen))
		{
			Char = StartsWithJoiningWord(InDisplayName, Index) ? FChar::ToLower(Char) : FChar::ToUpper(Char);
		}

		bAfterSpace = Char == TEXT(' ');
		bAfterOpenParen = Char == TEXT('(');
		bAfterMinus = Char == TEXT('-');
		bAfterNumber = bDigit || (bAfterNumber && (bAfterMinus || Char == TEXT('.')));
		Result += Char;
	}
	return Result;
}
