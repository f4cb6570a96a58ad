#include "Containers/UnrealString.h"

#include "Containers/Array.h"
#include "Containers/StringConv.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <vector>

namespace
{
	int32 SafeStrlen(const TCHAR* Str)
	{
		return Str ? FCString::Strlen(Str) : 0;
	}

	bool CharsEqual(TCHAR A, TCHAR B, ESearchCase::Type SearchCase)
	{
		return SearchCase == ESearchCase::CaseSensitive ? A == B : FChar::ToLower(A) == FChar::ToLower(B);
	}

	/**
	 * Four UTF-16 code units in one word, each in 'A'..'Z' given its lower-case bit: exactly the
	 * folding of FChar::ToLower, for four units at once. Per unit, bit 15 of Low + 0x7FBF says
	 * "at least 'A'" and bit 15 of Low + 0x7FA5 "beyond 'Z'" (Low is the unit without its top bit,
	 * so no sum carries into the next unit); a unit with its top bit set is never a letter.
	 */
	FORCEINLINE uint64 FoldAsciiUpper4(uint64 Word)
	{
		constexpr uint64 LowBits = 0x7FFF7FFF7FFF7FFFull;
		constexpr uint64 TopBits = 0x8000800080008000ull;
		const uint64 Low = Word & LowBits;
		const uint64 AtLeastA = Low + 0x7FBF7FBF7FBF7FBFull;
		const uint64 BeyondZ = Low + 0x7FA57FA57FA57FA5ull;
		const uint64 Upper = AtLeastA & ~BeyondZ & ~Word & TopBits;
		return Word | (Upper >> 10);
	}

	bool RangeEquals(const TCHAR* A, const TCHAR* B, int32 Count, ESearchCase::Type SearchCase)
	{
		if (SearchCase == ESearchCase::CaseSensitive)
		{
			return std::memcmp(A, B, static_cast<size_t>(Count) * sizeof(TCHAR)) == 0;
		}
		int32 Index = 0;
		for (; Index + 4 <= Count; Index += 4)
		{
			uint64 WordA;
			uint64 WordB;
			std::memcpy(&WordA, A + Index, sizeof(WordA));
			std::memcpy(&WordB, B + Index, sizeof(WordB));
			if (WordA != WordB && FoldAsciiUpper4(WordA) != FoldAsciiUpper4(WordB))
			{
				return false;
			}
		}
		for (; Index < Count; ++Index)
		{
			if (!CharsEqual(A[Index], B[Index], SearchCase))
			{
				return false;
			}
		}
		return true;
	}

	/** First occurrence of Find within [Str, Str + StrLen), honouring case; null when absent. */
	const TCHAR* SearchRange(const TCHAR* Str, int32 StrLen, const TCHAR* Find, int32 FindLen, ESearchCase::Type SearchCase)
	{
		return SearchCase == ESearchCase::IgnoreCase ? FCString::Strnistr(Str, StrLen, Find, FindLen) : FCString::Strnstr(Str, StrLen, Find, FindLen);
	}
}

// Construction ---------------------------------------------------------------------------------

FString::FString(const FString& Other, int32 ExtraSlack)
{
	Data.reserve(Other.Data.size() + static_cast<SIZE_T>(ExtraSlack > 0 ? ExtraSlack : 0));
	Data.append(Other.Data);
}

FString::FString(FString&& Other, int32 ExtraSlack)
	: Data(std::move(Other.Data))
{
	if (ExtraSlack > 0)
	{
		Data.reserve(Data.size() + static_cast<SIZE_T>(ExtraSlack));
	}
}

FString::FString(const TCHAR* Str)
{
	if (Str)
	{
		Data.assign(Str);
	}
}

FString::FString(const ANSICHAR* Str)
{
	if (Str)
	{
		StringConv::AppendBytesAsUtf16(Data, Str, static_cast<int32>(std::strlen(Str)));
	}
}

FString::FString(const UTF8CHAR* Str)
{
	if (Str)
	{
		const char* Bytes = reinterpret_cast<const char*>(Str);
		StringConv::AppendUtf8AsUtf16(Data, Bytes, static_cast<int32>(std::strlen(Bytes)));
	}
}

FString::FString(int32 Len, const TCHAR* Str)
{
	if (Str && Len > 0)
	{
		Data.assign(Str, static_cast<SIZE_T>(Len));
	}
}

FString::FString(int32 Len, const ANSICHAR* Str)
{
	if (Str && Len > 0)
	{
		StringConv::AppendBytesAsUtf16(Data, Str, Len);
	}
}

FString FString::ConstructFromPtrSize(const TCHAR* Str, int32 Size)
{
	FString Result;
	if (Str && Size > 0)
	{
		Result.Data.assign(Str, static_cast<SIZE_T>(Size));
	}
	return Result;
}

FString FString::ConstructFromPtrSize(const ANSICHAR* Str, int32 Size)
{
	FString Result;
	StringConv::AppendBytesAsUtf16(Result.Data, Str, Size);
	return Result;
}

FString FString::ConstructFromPtrSize(const UTF8CHAR* Str, int32 Size)
{
	FString Result;
	StringConv::AppendUtf8AsUtf16(Result.Data, reinterpret_cast<const char*>(Str), Size);
	return Result;
}

FString FString::ConstructWithSlack(const TCHAR* Str, int32 ExtraSlack)
{
	return ConstructFromPtrSizeWithSlack(Str, SafeStrlen(Str), ExtraSlack);
}

FString FString::ConstructFromPtrSizeWithSlack(const TCHAR* Str, int32 Size, int32 ExtraSlack)
{
	FString Result;
	Result.Reserve(Size + (ExtraSlack > 0 ? ExtraSlack : 0));
	if (Str && Size > 0)
	{
		Result.Data.append(Str, static_cast<SIZE_T>(Size));
	}
	return Result;
}

FString& FString::operator=(const TCHAR* Str)
{
	if (!Str)
	{
		Data.clear();
	}
	else if (Str < Data.data() || Str > Data.data() + Data.size())
	{
		Data.assign(Str);
	}
	else
	{
		// Assigning from inside ourselves: copy first so the source survives the reallocation.
		std::u16string Copy(Str);
		Data.swap(Copy);
	}
	return *this;
}

void FString::Empty(int32 Slack)
{
	Data.clear();
	if (Slack > 0)
	{
		Data.reserve(static_cast<SIZE_T>(Slack));
	}
	else
	{
		Data.shrink_to_fit();
	}
}

void FString::Reset(int32 NewReservedSize)
{
	Data.clear();
	if (NewReservedSize > 0)
	{
		Data.reserve(static_cast<SIZE_T>(NewReservedSize));
	}
}

void FString::Reserve(int32 CharacterCount)
{
	if (CharacterCount > 0)
	{
		Data.reserve(static_cast<SIZE_T>(CharacterCount));
	}
}

// Appending ------------------------------------------------------------------------------------

void FString::AppendChars(const TCHAR* Str, int32 Count)
{
	if (Str && Count > 0)
	{
		Data.append(Str, static_cast<SIZE_T>(Count));
	}
}

void FString::AppendChars(const ANSICHAR* Str, int32 Count)
{
	StringConv::AppendBytesAsUtf16(Data, Str, Count);
}

void FString::AppendChars(const UTF8CHAR* Str, int32 Count)
{
	StringConv::AppendUtf8AsUtf16(Data, reinterpret_cast<const char*>(Str), Count);
}

FString& FString::Append(const TCHAR* Str)
{
	if (Str)
	{
		Data.append(Str);
	}
	return *this;
}

FString& FString::Append(const ANSICHAR* Str)
{
	if (Str)
	{
		StringConv::AppendBytesAsUtf16(Data, Str, static_cast<int32>(std::strlen(Str)));
	}
	return *this;
}

void FString::AppendInt(int32 InNum)
{
	TCHAR Buffer[16];
	int32 At = 16;
	// Work in int64 so that the most negative int32 needs no special case.
	int64 Value = InNum;
	const bool bNegative = Value < 0;
	if (bNegative)
	{
		Value = -Value;
	}
	do
	{
		Buffer[--At] = static_cast<TCHAR>(TCHAR('0') + static_cast<int32>(Value % 10));
		Value /= 10;
	} while (Value != 0);
	if (bNegative)
	{
		Buffer[--At] = TCHAR('-');
	}
	Data.append(Buffer + At, static_cast<SIZE_T>(16 - At));
}

void FString::InsertAt(int32 Index, TCHAR Character)
{
	if (Character != 0)
	{
		Data.insert(Data.begin() + Clamp(Index, 0, Len()), Character);
	}
}

void FString::InsertAt(int32 Index, const FString& Characters)
{
	if (!Characters.IsEmpty())
	{
		Data.insert(static_cast<SIZE_T>(Clamp(Index, 0, Len())), Characters.Data);
	}
}

void FString::RemoveAt(int32 Index, int32 Count, bool bAllowShrinking)
{
	const int32 Start = Clamp(Index, 0, Len());
	const int32 Remove = Clamp(Count, 0, Len() - Start);
	if (Remove > 0)
	{
		Data.erase(static_cast<SIZE_T>(Start), static_cast<SIZE_T>(Remove));
	}
}

bool FString::RemoveFromStart(const TCHAR* InPrefix, ESearchCase::Type SearchCase)
{
	return RemoveFromStart(InPrefix, SafeStrlen(InPrefix), SearchCase);
}

bool FString::RemoveFromStart(const FString& InPrefix, ESearchCase::Type SearchCase)
{
	return RemoveFromStart(*InPrefix, InPrefix.Len(), SearchCase);
}

bool FString::RemoveFromStart(const TCHAR* InPrefix, int32 InPrefixLen, ESearchCase::Type SearchCase)
{
	if (InPrefixLen > 0 && StartsWith(InPrefix, InPrefixLen, SearchCase))
	{
		RemoveAt(0, InPrefixLen);
		return true;
	}
	return false;
}

bool FString::RemoveFromEnd(const TCHAR* InSuffix, ESearchCase::Type SearchCase)
{
	return RemoveFromEnd(InSuffix, SafeStrlen(InSuffix), SearchCase);
}

bool FString::RemoveFromEnd(const FString& InSuffix, ESearchCase::Type SearchCase)
{
	return RemoveFromEnd(*InSuffix, InSuffix.Len(), SearchCase);
}

bool FString::RemoveFromEnd(const TCHAR* InSuffix, int32 InSuffixLen, ESearchCase::Type SearchCase)
{
	if (InSuffixLen > 0 && EndsWith(InSuffix, InSuffixLen, SearchCase))
	{
		RemoveAt(Len() - InSuffixLen, InSuffixLen);
		return true;
	}
	return false;
}

void FString::PathAppend(const TCHAR* Str, int32 StrLength)
{
	const bool bEndsWithSeparator = !Data.empty() && (Data.back() == TCHAR('/') || Data.back() == TCHAR('\\'));
	if (StrLength <= 0 || !Str)
	{
		if (!Data.empty() && !bEndsWithSeparator)
		{
			Data.push_back(TCHAR('/'));
		}
		return;
	}
	if (!Data.empty() && !bEndsWithSeparator && Str[0] != TCHAR('/'))
	{
		Data.push_back(TCHAR('/'));
	}
	Data.append(Str, static_cast<SIZE_T>(StrLength));
}

FString& FString::operator/=(const TCHAR* Str)
{
	PathAppend(Str, SafeStrlen(Str));
	return *this;
}

FString operator/(const FString& Lhs, const TCHAR* Rhs)
{
	const int32 RhsLen = SafeStrlen(Rhs);
	FString Result(Lhs, RhsLen + 1);
	Result.PathAppend(Rhs, RhsLen);
	return Result;
}

FString operator/(FString&& Lhs, const TCHAR* Rhs)
{
	const int32 RhsLen = SafeStrlen(Rhs);
	FString Result(std::move(Lhs), RhsLen + 1);
	Result.PathAppend(Rhs, RhsLen);
	return Result;
}

FString operator/(const FString& Lhs, const FString& Rhs)
{
	FString Result(Lhs, Rhs.Len() + 1);
	Result.PathAppend(*Rhs, Rhs.Len());
	return Result;
}

FString operator/(FString&& Lhs, const FString& Rhs)
{
	FString Result(std::move(Lhs), Rhs.Len() + 1);
	Result.PathAppend(*Rhs, Rhs.Len());
	return Result;
}

FString operator/(const TCHAR* Lhs, const FString& Rhs)
{
	FString Result(FString(Lhs), Rhs.Len() + 1);
	Result.PathAppend(*Rhs, Rhs.Len());
	return Result;
}

// Concatenation --------------------------------------------------------------------------------

FString operator+(const FString& Lhs, const FString& Rhs)
{
	FString Result(Lhs, Rhs.Len());
	Result.Data.append(Rhs.Data);
	return Result;
}

FString operator+(FString&& Lhs, const FString& Rhs)
{
	FString Result(std::move(Lhs));
	Result.Data.append(Rhs.Data);
	return Result;
}

FString operator+(const FString& Lhs, FString&& Rhs)
{
	FString Result(std::move(Rhs));
	Result.Data.insert(0, Lhs.Data);
	return Result;
}

FString operator+(FString&& Lhs, FString&& Rhs)
{
	FString Result(std::move(Lhs));
	Result.Data.append(Rhs.Data);
	return Result;
}

FString operator+(const TCHAR* Lhs, const FString& Rhs)
{
	const int32 LhsLen = SafeStrlen(Lhs);
	FString Result;
	Result.Data.reserve(static_cast<SIZE_T>(LhsLen + Rhs.Len()));
	Result.AppendChars(Lhs, LhsLen);
	Result.Data.append(Rhs.Data);
	return Result;
}

FString operator+(const TCHAR* Lhs, FString&& Rhs)
{
	FString Result(std::move(Rhs));
	if (Lhs)
	{
		Result.Data.insert(0, Lhs);
	}
	return Result;
}

FString operator+(const FString& Lhs, const TCHAR* Rhs)
{
	const int32 RhsLen = SafeStrlen(Rhs);
	FString Result(Lhs, RhsLen);
	Result.AppendChars(Rhs, RhsLen);
	return Result;
}

FString operator+(FString&& Lhs, const TCHAR* Rhs)
{
	FString Result(std::move(Lhs));
	Result.Append(Rhs);
	return Result;
}

// Comparison and search ------------------------------------------------------------------------

bool FString::Equals(const FString& Other, ESearchCase::Type SearchCase) const
{
	if (Data.size() != Other.Data.size())
	{
		return false;
	}
	if (SearchCase == ESearchCase::CaseSensitive)
	{
		return Data == Other.Data;
	}
	return RangeEquals(Data.data(), Other.Data.data(), Len(), ESearchCase::IgnoreCase);
}

int32 FString::Compare(const FString& Other, ESearchCase::Type SearchCase) const
{
	return SearchCase == ESearchCase::CaseSensitive ? FCString::Strcmp(**this, *Other) : FCString::Stricmp(**this, *Other);
}

int32 FString::Find(const TCHAR* SubStr, int32 SubStrLen, ESearchCase::Type SearchCase, ESearchDir::Type SearchDir, int32 StartPosition) const
{
	if (SubStrLen < 0 || (!SubStr && SubStrLen > 0))
	{
		return INDEX_NONE;
	}

	if (SearchDir == ESearchDir::FromStart)
	{
		const TCHAR* Start = Data.data();
		int32 Remaining = Len();
		if (StartPosition != INDEX_NONE && Remaining > 0)
		{
			const int32 Skip = Clamp(StartPosition, 0, Remaining - 1);
			Start += Skip;
			Remaining -= Skip;
		}
		const TCHAR* Found = SearchRange(Start, Remaining, SubStr, SubStrLen, SearchCase);
		return Found ? static_cast<int32>(Found - Data.data()) : INDEX_NONE;
	}

	// From the end: a match must finish by StartPosition, as the engine counts it.
	const int32 SearchLength = SubStrLen > 1 ? SubStrLen : 1;
	if (StartPosition == INDEX_NONE || StartPosition >= Len())
	{
		StartPosition = Len();
	}
	for (int32 Index = StartPosition - SearchLength; Index >= 0; --Index)
	{
		if (Index + SubStrLen <= Len() && RangeEquals(Data.data() + Index, SubStr, SubStrLen, SearchCase))
		{
			return Index;
		}
	}
	return INDEX_NONE;
}

bool FString::FindChar(TCHAR InChar, int32& OutIndex) const
{
	const SIZE_T Found = Data.find(InChar);
	OutIndex = Found == std::u16string::npos ? INDEX_NONE : static_cast<int32>(Found);
	return OutIndex != INDEX_NONE;
}

bool FString::FindLastChar(TCHAR InChar, int32& OutIndex) const
{
	const SIZE_T Found = Data.rfind(InChar);
	OutIndex = Found == std::u16string::npos ? INDEX_NONE : static_cast<int32>(Found);
	return OutIndex != INDEX_NONE;
}

bool FString::StartsWith(const TCHAR* InPrefix, int32 InPrefixLen, ESearchCase::Type SearchCase) const
{
	return InPrefix && InPrefixLen > 0 && Len() >= InPrefixLen && RangeEquals(Data.data(), InPrefix, InPrefixLen, SearchCase);
}

bool FString::EndsWith(const TCHAR* InSuffix, int32 InSuffixLen, ESearchCase::Type SearchCase) const
{
	return InSuffix && InSuffixLen > 0 && Len() >= InSuffixLen && RangeEquals(Data.data() + (Len() - InSuffixLen), InSuffix, InSuffixLen, SearchCase);
}

bool FString::MatchesWildcard(const TCHAR* Wildcard, int32 WildcardLen, ESearchCase::Type SearchCase) const
{
	if (!Wildcard || WildcardLen <= 0)
	{
		return IsEmpty();
	}
	// Dynamic programming over the pattern: Matched[j] says whether the pattern read so far can
	// match the first j characters. Linear memory, and no exponential backtracking on many '*'.
	const int32 TargetLen = Len();
	std::vector<uint8> Matched(static_cast<SIZE_T>(TargetLen) + 1, 0);
	std::vector<uint8> Next(Matched.size(), 0);
	Matched[0] = 1;
	for (int32 PatternIndex = 0; PatternIndex < WildcardLen; ++PatternIndex)
	{
		const TCHAR PatternChar = Wildcard[PatternIndex];
		if (PatternChar == TCHAR('*'))
		{
			uint8 Any = 0;
			for (int32 Index = 0; Index <= TargetLen; ++Index)
			{
				Any |= Matched[static_cast<SIZE_T>(Index)];
				Next[static_cast<SIZE_T>(Index)] = Any;
			}
		}
		else if (PatternChar == TCHAR('?'))
		{
			// The engine lets '?' match one character or none.
			for (int32 Index = 0; Index <= TargetLen; ++Index)
			{
				Next[static_cast<SIZE_T>(Index)] = Matched[static_cast<SIZE_T>(Index)] | (Index > 0 ? Matched[static_cast<SIZE_T>(Index - 1)] : uint8(0));
			}
		}
		else
		{
			Next[0] = 0;
			for (int32 Index = 1; Index <= TargetLen; ++Index)
			{
				Next[static_cast<SIZE_T>(Index)] = Matched[static_cast<SIZE_T>(Index - 1)] && CharsEqual(Data[static_cast<SIZE_T>(Index - 1)], PatternChar, SearchCase);
			}
		}
		Matched.swap(Next);
	}
	return Matched[static_cast<SIZE_T>(TargetLen)] != 0;
}

// Substrings -----------------------------------------------------------------------------------

FString FString::Mid(int32 Start, int32 Count) const &
{
	if (Count < 0)
	{
		return FString();
	}
	const int32 Length = Len();
	const int32 RequestedStart = Start;
	Start = Clamp(Start, 0, Length);
	const int64 RequestedEnd = static_cast<int64>(Count) + RequestedStart;
	const int32 End = static_cast<int32>(RequestedEnd < Start ? Start : (RequestedEnd > Length ? Length : RequestedEnd));
	return ConstructFromPtrSize(Data.data() + Start, End - Start);
}

void FString::MidInline(int32 Start, int32 Count, bool bAllowShrinking)
{
	if (Count < 0)
	{
		Data.clear();
		return;
	}
	const int32 Length = Len();
	const int32 First = Clamp(Start, 0, Length);
	const int64 RequestedEnd = static_cast<int64>(Count) + Start;
	const int32 End = static_cast<int32>(RequestedEnd < First ? First : (RequestedEnd > Length ? Length : RequestedEnd));
	Data.resize(static_cast<SIZE_T>(End));
	Data.erase(0, static_cast<SIZE_T>(First));
}

bool FString::Split(const FString& InS, FString* LeftS, FString* RightS, ESearchCase::Type SearchCase, ESearchDir::Type SearchDir) const
{
	const int32 Position = Find(InS, SearchCase, SearchDir);
	if (Position < 0)
	{
		return false;
	}
	// Compute both halves before writing either, so an output may alias this string.
	FString LeftPart = Left(Position);
	FString RightPart = Mid(Position + InS.Len());
	if (LeftS)
	{
		*LeftS = std::move(LeftPart);
	}
	if (RightS)
	{
		*RightS = std::move(RightPart);
	}
	return true;
}

// Transformations ------------------------------------------------------------------------------

FString FString::ToUpper() const &
{
	FString Result(*this);
	Result.ToUpperInline();
	return Result;
}

FString FString::ToUpper() &&
{
	ToUpperInline();
	return std::move(*this);
}

void FString::ToUpperInline()
{
	for (TCHAR& Char : Data)
	{
		Char = FChar::ToUpper(Char);
	}
}

FString FString::ToLower() const &
{
	FString Result(*this);
	Result.ToLowerInline();
	return Result;
}

FString FString::ToLower() &&
{
	ToLowerInline();
	return std::move(*this);
}

void FString::ToLowerInline()
{
	for (TCHAR& Char : Data)
	{
		Char = FChar::ToLower(Char);
	}
}

FString FString::LeftPad(int32 ChCount) const
{
	const int32 Pad = ChCount - Len();
	return Pad > 0 ? ChrN(Pad, TCHAR(' ')) + *this : *this;
}

FString FString::RightPad(int32 ChCount) const
{
	const int32 Pad = ChCount - Len();
	return Pad > 0 ? *this + ChrN(Pad, TCHAR(' ')) : *this;
}

bool FString::IsNumeric() const
{
	return !IsEmpty() && FCString::IsNumeric(**this);
}

void FString::RemoveSpacesInline()
{
	std::erase(Data, TCHAR(' '));
}

void FString::TrimStartAndEndInline()
{
	TrimEndInline();
	TrimStartInline();
}

FString FString::TrimStartAndEnd() const &
{
	FString Result(*this);
	Result.TrimStartAndEndInline();
	return Result;
}

FString FString::TrimStartAndEnd() &&
{
	TrimStartAndEndInline();
	return std::move(*this);
}

void FString::TrimStartInline()
{
	int32 Position = 0;
	while (Position < Len() && FChar::IsWhitespace(Data[static_cast<SIZE_T>(Position)]))
	{
		++Position;
	}
	RemoveAt(0, Position);
}

FString FString::TrimStart() const &
{
	FString Result(*this);
	Result.TrimStartInline();
	return Result;
}

FString FString::TrimStart() &&
{
	TrimStartInline();
	return std::move(*this);
}

void FString::TrimEndInline()
{
	int32 End = Len();
	while (End > 0 && FChar::IsWhitespace(Data[static_cast<SIZE_T>(End - 1)]))
	{
		--End;
	}
	Data.resize(static_cast<SIZE_T>(End));
}

FString FString::TrimEnd() const &
{
	FString Result(*this);
	Result.TrimEndInline();
	return Result;
}

FString FString::TrimEnd() &&
{
	TrimEndInline();
	return std::move(*this);
}

void FString::TrimToNullTerminator()
{
	const SIZE_T Terminator = Data.find(TCHAR(0));
	if (Terminator != std::u16string::npos)
	{
		Data.resize(Terminator);
	}
}

void FString::TrimCharInline(TCHAR CharacterToTrim, bool* bCharRemoved)
{
	bool bRemoved = false;
	int32 Start = 0;
	int32 Count = Len();
	if (Count > 0)
	{
		if (Data.front() == CharacterToTrim)
		{
			++Start;
			--Count;
			bRemoved = true;
		}
		if (Len() > 1 && Data.back() == CharacterToTrim)
		{
			--Count;
			bRemoved = true;
		}
	}
	if (bCharRemoved)
	{
		*bCharRemoved = bRemoved;
	}
	MidInline(Start, Count);
}

void FString::TrimQuotesInline(bool* bQuotesRemoved)
{
	TrimCharInline(TCHAR('"'), bQuotesRemoved);
}

FString FString::TrimQuotes(bool* bQuotesRemoved) const &
{
	FString Result(*this);
	Result.TrimQuotesInline(bQuotesRemoved);
	return Result;
}

FString FString::TrimQuotes(bool* bQuotesRemoved) &&
{
	TrimQuotesInline(bQuotesRemoved);
	return std::move(*this);
}

FString FString::TrimChar(TCHAR CharacterToTrim, bool* bCharRemoved) const &
{
	FString Result(*this);
	Result.TrimCharInline(CharacterToTrim, bCharRemoved);
	return Result;
}

FString FString::TrimChar(TCHAR CharacterToTrim, bool* bCharRemoved) &&
{
	TrimCharInline(CharacterToTrim, bCharRemoved);
	return std::move(*this);
}

int32 FString::ParseIntoArray(TArray<FString>& OutArray, const TCHAR* pchDelim, bool bInCullEmpty) const
{
	OutArray.Reset();
	const int32 DelimLen = SafeStrlen(pchDelim);
	if (DelimLen == 0)
	{
		return 0;
	}
	const TCHAR* const Start = Data.data();
	const int32 Length = Len();
	int32 TokenStart = 0;
	for (;;)
	{
		const TCHAR* Found = FCString::Strnistr(Start + TokenStart, Length - TokenStart, pchDelim, DelimLen);
		const int32 TokenEnd = Found ? static_cast<int32>(Found - Start) : Length;
		if (!bInCullEmpty || TokenEnd > TokenStart)
		{
			OutArray.Add(ConstructFromPtrSize(Start + TokenStart, TokenEnd - TokenStart));
		}
		if (!Found)
		{
			break;
		}
		TokenStart = TokenEnd + DelimLen;
	}
	return OutArray.Num();
}

int32 FString::ParseIntoArray(TArray<FString>& OutArray, const TCHAR* const* DelimArray, int32 NumDelims, bool bInCullEmpty) const
{
	OutArray.Reset();
	const TCHAR* const Start = Data.data();
	const int32 Length = Len();
	int32 SubstringBegin = 0;
	for (int32 Index = 0; Index < Length;)
	{
		int32 MatchedLength = 0;
		for (int32 DelimIndex = 0; DelimArray && DelimIndex < NumDelims; ++DelimIndex)
		{
			const TCHAR* Delim = DelimArray[DelimIndex];
			const int32 DelimLen = SafeStrlen(Delim);
			// An empty delimiter would match everywhere without consuming anything.
			if (DelimLen > 0 && DelimLen <= Length - Index && RangeEquals(Start + Index, Delim, DelimLen, ESearchCase::CaseSensitive))
			{
				MatchedLength = DelimLen;
				break;
			}
		}
		if (MatchedLength > 0)
		{
			if (!bInCullEmpty || Index > SubstringBegin)
			{
				OutArray.Add(ConstructFromPtrSize(Start + SubstringBegin, Index - SubstringBegin));
			}
			SubstringBegin = Index + MatchedLength;
			Index = SubstringBegin;
		}
		else
		{
			++Index;
		}
	}
	if (!bInCullEmpty || Length > SubstringBegin)
	{
		OutArray.Add(ConstructFromPtrSize(Start + SubstringBegin, Length - SubstringBegin));
	}
	return OutArray.Num();
}

int32 FString::ParseIntoArrayWS(TArray<FString>& OutArray, const TCHAR* pchExtraDelim, bool bInCullEmpty) const
{
	const TCHAR* Delims[] = { TEXT(" "), TEXT("\t"), TEXT("\r"), TEXT("\n"), TEXT("") };
	int32 NumDelims = 4;
	if (pchExtraDelim && *pchExtraDelim)
	{
		Delims[NumDelims++] = pchExtraDelim;
	}
	return ParseIntoArray(OutArray, Delims, NumDelims, bInCullEmpty);
}

int32 FString::ParseIntoArrayLines(TArray<FString>& OutArray, bool bInCullEmpty) const
{
	static const TCHAR* const LineEndings[] = { TEXT("\r\n"), TEXT("\r"), TEXT("\n") };
	return ParseIntoArray(OutArray, LineEndings, 3, bInCullEmpty);
}

int32 FString::CullArray(TArray<FString>* InOutArray)
{
	if (!InOutArray)
	{
		return 0;
	}
	InOutArray->RemoveAll([](const FString& Element) { return Element.IsEmpty(); });
	return InOutArray->Num();
}

FString FString::Reverse() const &
{
	FString Result(*this);
	Result.ReverseString();
	return Result;
}

FString FString::Reverse() &&
{
	ReverseString();
	return std::move(*this);
}

void FString::ReverseString()
{
	std::reverse(Data.begin(), Data.end());
}

FString FString::Replace(const TCHAR* From, const TCHAR* To, ESearchCase::Type SearchCase) const &
{
	FString Result(*this);
	Result.ReplaceInline(From, To, SearchCase);
	return Result;
}

FString FString::Replace(const TCHAR* From, const TCHAR* To, ESearchCase::Type SearchCase) &&
{
	ReplaceInline(From, To, SearchCase);
	return std::move(*this);
}

int32 FString::ReplaceInline(const TCHAR* SearchText, const TCHAR* ReplacementText, ESearchCase::Type SearchCase)
{
	if (IsEmpty() || !SearchText || !*SearchText || !ReplacementText)
	{
		return 0;
	}
	// Replacing a text by itself changes nothing; the engine reports no replacements then.
	if (SearchCase == ESearchCase::CaseSensitive && FCString::Strcmp(SearchText, ReplacementText) == 0)
	{
		return 0;
	}

	const int32 FromLen = FCString::Strlen(SearchText);
	const int32 ToLen = FCString::Strlen(ReplacementText);
	const TCHAR* const Source = Data.data();
	const int32 Length = Len();

	const TCHAR* Found = SearchRange(Source, Length, SearchText, FromLen, SearchCase);
	if (!Found)
	{
		return 0;
	}

	int32 Count = 0;
	std::u16string Result;
	Result.reserve(Data.size() + (ToLen > FromLen ? static_cast<SIZE_T>(ToLen - FromLen) * 4 : 0));
	int32 Copied = 0;
	while (Found)
	{
		const int32 At = static_cast<int32>(Found - Source);
		Result.append(Source + Copied, static_cast<SIZE_T>(At - Copied));
		Result.append(ReplacementText, static_cast<SIZE_T>(ToLen));
		Copied = At + FromLen;
		++Count;
		Found = SearchRange(Source + Copied, Length - Copied, SearchText, FromLen, SearchCase);
	}
	Result.append(Source + Copied, static_cast<SIZE_T>(Length - Copied));
	Data.swap(Result);
	return Count;
}

void FString::ReplaceCharInline(TCHAR From, TCHAR To, ESearchCase::Type SearchCase)
{
	if (SearchCase == ESearchCase::IgnoreCase && FChar::IsAlpha(From))
	{
		const TCHAR Lower = FChar::ToLower(From);
		for (TCHAR& Char : Data)
		{
			if (FChar::ToLower(Char) == Lower)
			{
				Char = To;
			}
		}
	}
	else
	{
		for (TCHAR& Char : Data)
		{
			if (Char == From)
			{
				Char = To;
			}
		}
	}
}

FString FString::ReplaceQuotesWithEscapedQuotes() const &
{
	return FString(*this).ReplaceQuotesWithEscapedQuotes();
}

FString FString::ReplaceQuotesWithEscapedQuotes() &&
{
	if (Data.find(TCHAR('"')) == std::u16string::npos)
	{
		return std::move(*this);
	}
	std::u16string Result;
	Result.reserve(Data.size() + 8);
	bool bEscaped = false;
	for (const TCHAR Char : Data)
	{
		if (bEscaped)
		{
			bEscaped = false;
		}
		else if (Char == TCHAR('\\'))
		{
			bEscaped = true;
		}
		else if (Char == TCHAR('"'))
		{
			Result.push_back(TCHAR('\\'));
		}
		Result.push_back(Char);
	}
	return FString(std::move(Result));
}

namespace
{
	// Backslash first on the way out, last on the way back, so nothing is escaped twice.
	const TCHAR* const EscapePairs[6][2] = {
		{ TEXT("\\"), TEXT("\\\\") },
		{ TEXT("\n"), TEXT("\\n") },
		{ TEXT("\r"), TEXT("\\r") },
		{ TEXT("\t"), TEXT("\\t") },
		{ TEXT("\'"), TEXT("\\'") },
		{ TEXT("\""), TEXT("\\\"") },
	};
}

void FString::ReplaceCharWithEscapedCharInline(const TArray<TCHAR>* Chars)
{
	if (IsEmpty() || (Chars && Chars->Num() == 0))
	{
		return;
	}
	for (int32 Pair = 0; Pair < 6; ++Pair)
	{
		if (!Chars || Chars->Contains(EscapePairs[Pair][0][0]))
		{
			ReplaceInline(EscapePairs[Pair][0], EscapePairs[Pair][1]);
		}
	}
}

void FString::ReplaceEscapedCharWithCharInline(const TArray<TCHAR>* Chars)
{
	if (IsEmpty() || (Chars && Chars->Num() == 0))
	{
		return;
	}
	for (int32 Pair = 5; Pair >= 0; --Pair)
	{
		if (!Chars || Chars->Contains(EscapePairs[Pair][0][0]))
		{
			ReplaceInline(EscapePairs[Pair][1], EscapePairs[Pair][0]);
		}
	}
}

void FString::ConvertTabsToSpacesInline(int32 InSpacesPerTab)
{
	if (InSpacesPerTab <= 0)
	{
		return;
	}
	int32 TabIndex;
	while ((TabIndex = Find(TEXT("\t"), ESearchCase::CaseSensitive)) != INDEX_NONE)
	{
		FString RightSide = Mid(TabIndex + 1);
		LeftInline(TabIndex);
		// The column counts from the line's '\n' itself, as the engine counts it.
		int32 LineBegin = Find(TEXT("\n"), ESearchCase::CaseSensitive, ESearchDir::FromEnd, TabIndex);
		if (LineBegin == INDEX_NONE)
		{
			LineBegin = 0;
		}
		const int32 CharactersOnLine = Len() - LineBegin;
		const int32 NumSpaces = InSpacesPerTab - (CharactersOnLine % InSpacesPerTab);
		Data.append(static_cast<SIZE_T>(NumSpaces), TCHAR(' '));
		Data.append(RightSide.Data);
	}
}

// Construction helpers -------------------------------------------------------------------------

FString FString::Chr(TCHAR Ch)
{
	FString Result;
	Result.AppendChar(Ch);
	return Result;
}

FString FString::ChrN(int32 NumCharacters, TCHAR Char)
{
	FString Result;
	if (NumCharacters > 0 && Char != 0)
	{
		Result.Data.assign(static_cast<SIZE_T>(NumCharacters), Char);
	}
	return Result;
}

FString FString::FromInt(int32 Num)
{
	FString Result;
	Result.AppendInt(Num);
	return Result;
}

FString FString::FormatAsNumber(int32 InNumber)
{
	const FString Number = FromInt(InNumber);
	FString Result;
	int32 Digits = 0;
	for (int32 Index = Number.Len() - 1; Index >= 0; --Index)
	{
		Result.Data.push_back(Number.Data[static_cast<SIZE_T>(Index)]);
		if (++Digits == 3 && Index > 0 && FChar::IsDigit(Number.Data[static_cast<SIZE_T>(Index - 1)]))
		{
			Result.Data.push_back(TCHAR(','));
			Digits = 0;
		}
	}
	Result.ReverseString();
	return Result;
}

namespace UE::Core::Private
{
	void StripNegativeZero(double& InFloat)
	{
		// Adding zero turns -0.0 into +0.0 and leaves every other value alone.
		InFloat += 0.0;
	}
}

FString FString::SanitizeFloat(double InFloat, int32 InMinFractionalDigits)
{
	UE::Core::Private::StripNegativeZero(InFloat);

	FString Text = Printf(TEXT("%f"), InFloat);
	if (!Text.IsNumeric())
	{
		// inf and nan stay as "%f" wrote them.
		return Text;
	}

	const SIZE_T Dot = Text.Data.find(TCHAR('.'));
	if (Dot == std::u16string::npos)
	{
		return Text;
	}
	SIZE_T Keep = Text.Data.size();
	while (Keep > Dot + 1 && Text.Data[Keep - 1] == TCHAR('0'))
	{
		--Keep;
	}
	if (Keep == Dot + 1)
	{
		Keep = Dot;
	}
	Text.Data.resize(Keep);

	if (InMinFractionalDigits > 0)
	{
		if (Keep == Dot)
		{
			Text.Data.push_back(TCHAR('.'));
		}
		const int32 FractionalDigits = static_cast<int32>(Text.Data.size() - Dot - 1);
		if (FractionalDigits < InMinFractionalDigits)
		{
			Text.Data.append(static_cast<SIZE_T>(InMinFractionalDigits - FractionalDigits), TCHAR('0'));
		}
	}
	return Text;
}

bool FString::ToBool() const
{
	return FCString::ToBool(**this);
}

FString FString::FromHexBlob(const uint8* SrcBuffer, uint32 SrcSize)
{
	FString Result;
	if (SrcBuffer)
	{
		BytesToHex(SrcBuffer, static_cast<int32>(SrcSize), Result);
	}
	return Result;
}

bool FString::ToHexBlob(const FString& Source, uint8* DestBuffer, uint32 DestSize)
{
	if (!DestBuffer || DestSize < static_cast<uint32>(Source.Len() / 2) || (Source.Len() % 2) != 0)
	{
		return false;
	}
	for (int32 Index = 0, Write = 0; Index < Source.Len(); Index += 2, ++Write)
	{
		const TCHAR Pair[3] = { Source.Data[static_cast<SIZE_T>(Index)], Source.Data[static_cast<SIZE_T>(Index + 1)], 0 };
		DestBuffer[Write] = static_cast<uint8>(FCString::Strtoi(Pair, nullptr, 16));
	}
	return true;
}

uint32 FString::HashIgnoreCase(const TCHAR* Str, int32 Len)
{
	// Four code units per step, folded as operator== folds them, so strings equal under operator==
	// hash alike. The last step reads the last four units even when that overlaps the step before,
	// which spares a branchy tail; strings under four units are gathered by hand.
	constexpr uint64 Multiplier = 0x9E3779B97F4A7C15ull;
	uint64 Hash = (static_cast<uint64>(static_cast<uint32>(Len)) + 1) * Multiplier;
	auto Step = [&Hash](uint64 Word)
	{
		Hash = (Hash ^ FoldAsciiUpper4(Word)) * Multiplier;
		Hash ^= Hash >> 32;
	};
	if (Len >= 4)
	{
		uint64 Word;
		for (int32 Index = 0; Index + 4 < Len; Index += 4)
		{
			std::memcpy(&Word, Str + Index, sizeof(Word));
			Step(Word);
		}
		std::memcpy(&Word, Str + Len - 4, sizeof(Word));
		Step(Word);
	}
	else if (Len > 0)
	{
		uint64 Word = Str[0];
		if (Len > 1)
		{
			Word |= static_cast<uint64>(Str[1]) << 16;
			if (Len > 2)
			{
				Word |= static_cast<uint64>(Str[2]) << 32;
			}
		}
		Step(Word);
	}
	// Containers pick buckets with the low bits, so let every input bit reach them.
	Hash ^= Hash >> 29;
	Hash *= 0xBF58476D1CE4E5B9ull;
	Hash ^= Hash >> 32;
	return static_cast<uint32>(Hash);
}

FString UTF8ToFString(std::string_view Utf8)
{
	std::u16string Converted;
	StringConv::AppendUtf8AsUtf16(Converted, Utf8.data(), static_cast<int32>(Utf8.size()));
	return FString(std::move(Converted));
}

std::string FStringToUTF8(const FString& Str)
{
	std::string Converted;
	StringConv::AppendUtf16AsUtf8(Converted, *Str, Str.Len());
	return Converted;
}

// Hex helpers ----------------------------------------------------------------------------------

void BytesToHex(const uint8* Bytes, int32 NumBytes, FString& Out)
{
	Out.Reserve(Out.Len() + NumBytes * 2);
	for (int32 Index = 0; Index < NumBytes; ++Index)
	{
		ByteToHex(Bytes[Index], Out);
	}
}

void BytesToHexLower(const uint8* Bytes, int32 NumBytes, FString& Out)
{
	static constexpr TCHAR Digits[] = u"0123456789abcdef";
	Out.Reserve(Out.Len() + NumBytes * 2);
	for (int32 Index = 0; Index < NumBytes; ++Index)
	{
		Out.AppendChar(Digits[Bytes[Index] >> 4]);
		Out.AppendChar(Digits[Bytes[Index] & 15]);
	}
}

int32 HexToBytes(const FString& HexString, uint8* OutBytes)
{
	const int32 Length = HexString.Len();
	int32 Written = 0;
	int32 Index = 0;
	if (Length % 2 == 1)
	{
		OutBytes[Written++] = TCharToNibble(HexString[0]);
		Index = 1;
	}
	for (; Index < Length; Index += 2)
	{
		OutBytes[Written++] = static_cast<uint8>((TCharToNibble(HexString[Index]) << 4) + TCharToNibble(HexString[Index + 1]));
	}
	return Written;
}

int32 FindMatchingClosingParenthesis(const FString& TargetString, int32 StartSearch)
{
	if (StartSearch < 0 || StartSearch > TargetString.Len())
	{
		return INDEX_NONE;
	}
	const int32 Length = TargetString.Len();
	int32 Index = StartSearch;
	while (Index < Length && TargetString[Index] != TCHAR('('))
	{
		++Index;
	}
	if (Index >= Length)
	{
		return INDEX_NONE;
	}
	int32 Depth = 0;
	for (; Index < Length; ++Index)
	{
		if (TargetString[Index] == TCHAR('('))
		{
			++Depth;
		}
		else if (TargetString[Index] == TCHAR(')') && --Depth == 0)
		{
			return Index;
		}
	}
	return INDEX_NONE;
}
