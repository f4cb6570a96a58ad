#pragma once

// Named UnrealString.h, as in the engine, so it never shadows the C library's <string.h>.

#include "CoreTypes.h"
#include "Containers/ContainersFwd.h"
#include "Containers/StringConv.h"
#include "Misc/Char.h"
#include "Misc/CString.h"
#include "Misc/FormatStringSan.h"
#include "Templates/TypeHash.h"

#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

struct FStringFormatArg;
class FString;
using FStringFormatNamedArguments = TMap<FString, FStringFormatArg>;
using FStringFormatOrderedArguments = TArray<FStringFormatArg>;

/**
 * A dynamically sized UTF-16 string with the engine's FString behaviour.
 *
 * The rules that make FString differ from a std::u16string are kept: operator==, operator< and
 * GetTypeHash ignore ASCII case (so FString keys of a TMap collide by case, as in the editor),
 * Find/Contains/StartsWith/EndsWith/Replace default to IgnoreCase while Equals/Compare default to
 * CaseSensitive, substring functions clamp their arguments instead of failing, and operator*
 * never returns null.
 *
 * Characters are stored in a std::u16string, whose terminator gives operator* for free and whose
 * small-string buffer spares an allocation for the many short names and keys the tools build.
 */
class FString
{
public:
	using ElementType = TCHAR;
	using FmtCharType = TCHAR;

private:
	std::u16string Data;

public:
	FString() = default;
	FString(FString&&) = default;
	FString(const FString&) = default;
	FString& operator=(FString&&) = default;
	FString& operator=(const FString&) = default;

	/** A copy of Other with room for ExtraSlack more characters. */
	FString(const FString& Other, int32 ExtraSlack);
	FString(FString&& Other, int32 ExtraSlack);

	/** From a null-terminated string; null gives an empty string. */
	FString(const TCHAR* Str);
	/** Each byte becomes one character (Latin-1); for UTF-8 text use UTF8_TO_TCHAR or a UTF8CHAR pointer. */
	FString(const ANSICHAR* Str);
	/** Decodes UTF-8; malformed sequences become U+FFFD. */
	FString(const UTF8CHAR* Str);

	/** The first Len characters of Str (the engine's older counted constructor). */
	FString(int32 Len, const TCHAR* Str);
	FString(int32 Len, const ANSICHAR* Str);

	explicit FString(std::u16string_view View) : Data(View) {}
	explicit FString(std::u16string&& Str) : Data(std::move(Str)) {}

	/** From a buffer of Size characters; embedded zeros are kept. */
	static FString ConstructFromPtrSize(const TCHAR* Str, int32 Size);
	static FString ConstructFromPtrSize(const ANSICHAR* Str, int32 Size);
	static FString ConstructFromPtrSize(const UTF8CHAR* Str, int32 Size);
	static FString ConstructWithSlack(const TCHAR* Str, int32 ExtraSlack);
	static FString ConstructFromPtrSizeWithSlack(const TCHAR* Str, int32 Size, int32 ExtraSlack);

	FString& operator=(const TCHAR* Str);
	FString& operator=(std::u16string_view View)
	{
		Data.assign(View);
		return *this;
	}

	// Character access --------------------------------------------------------------------------

	TCHAR& operator[](int32 Index)
	{
		checkf(IsValidIndex(Index), TEXT("String index out of bounds: Index %i from a string with a length of %i"), Index, Len());
		return Data[static_cast<SIZE_T>(Index)];
	}

	const TCHAR& operator[](int32 Index) const
	{
		checkf(IsValidIndex(Index), TEXT("String index out of bounds: Index %i from a string with a length of %i"), Index, Len());
		return Data[static_cast<SIZE_T>(Index)];
	}

	/** The characters, terminated; never null, "" when empty. */
	const TCHAR* operator*() const { return Data.c_str(); }

	TCHAR* begin() { return Data.data(); }
	TCHAR* end() { return Data.data() + Data.size(); }
	const TCHAR* begin() const { return Data.data(); }
	const TCHAR* end() const { return Data.data() + Data.size(); }

	/** Headless convenience: the characters as a view, without a copy. */
	std::u16string_view View() const { return std::u16string_view(Data); }
	/** Headless convenience: the underlying storage, for code that hands text to std APIs. */
	const std::u16string& GetStdString() const { return Data; }

	int32 Len() const { return static_cast<int32>(Data.size()); }
	bool IsEmpty() const { return Data.empty(); }
	bool IsValidIndex(int32 Index) const { return Index >= 0 && Index < Len(); }
	SIZE_T GetAllocatedSize() const { return Data.capacity() * sizeof(TCHAR); }

	void Empty() { std::u16string().swap(Data); }
	void Empty(int32 Slack);
	void Reset(int32 NewReservedSize = 0);
	void Shrink() { Data.shrink_to_fit(); }
	void Reserve(int32 CharacterCount);

	// Appending ---------------------------------------------------------------------------------

	void AppendChars(const TCHAR* Str, int32 Count);
	void AppendChars(const ANSICHAR* Str, int32 Count);
	void AppendChars(const UTF8CHAR* Str, int32 Count);

	FString& Append(const TCHAR* Str, int32 Count)
	{
		AppendChars(Str, Count);
		return *this;
	}
	FString& Append(const ANSICHAR* Str, int32 Count)
	{
		AppendChars(Str, Count);
		return *this;
	}
	FString& Append(const TCHAR* Str);
	FString& Append(const ANSICHAR* Str);
	FString& Append(const FString& Str)
	{
		Data.append(Str.Data);
		return *this;
	}
	FString& Append(std::u16string_view Str)
	{
		Data.append(Str);
		return *this;
	}

	/** Appends one character; a zero character is ignored, as the engine does. */
	FString& AppendChar(TCHAR InChar)
	{
		if (InChar != 0)
		{
			Data.push_back(InChar);
		}
		return *this;
	}

	FString& operator+=(const TCHAR* Str) { return Append(Str); }
	FString& operator+=(const ANSICHAR* Str) { return Append(Str); }
	FString& operator+=(const FString& Str) { return Append(Str); }
	FString& operator+=(std::u16string_view Str) { return Append(Str); }
	FString& operator+=(TCHAR Char) { return AppendChar(Char); }
	FString& operator+=(ANSICHAR Char) { return AppendChar(static_cast<TCHAR>(static_cast<unsigned char>(Char))); }

	void AppendInt(int32 InNum);

	void InsertAt(int32 Index, TCHAR Character);
	void InsertAt(int32 Index, const FString& Characters);

	/** Removes Count characters from Index; both are clamped to the string. */
	void RemoveAt(int32 Index, int32 Count = 1, bool bAllowShrinking = true);

	bool RemoveFromStart(const TCHAR* InPrefix, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase);
	bool RemoveFromStart(const FString& InPrefix, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase);
	bool RemoveFromStart(const TCHAR* InPrefix, int32 InPrefixLen, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase);
	bool RemoveFromEnd(const TCHAR* InSuffix, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase);
	bool RemoveFromEnd(const FString& InSuffix, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase);
	bool RemoveFromEnd(const TCHAR* InSuffix, int32 InSuffixLen, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase);

	/** Appends Str with exactly one '/' between this and it (none when either side supplies one). */
	void PathAppend(const TCHAR* Str, int32 StrLength);
	FString& operator/=(const TCHAR* Str);
	FString& operator/=(const FString& Str)
	{
		PathAppend(*Str, Str.Len());
		return *this;
	}
	friend FString operator/(const FString& Lhs, const TCHAR* Rhs);
	friend FString operator/(FString&& Lhs, const TCHAR* Rhs);
	friend FString operator/(const FString& Lhs, const FString& Rhs);
	friend FString operator/(FString&& Lhs, const FString& Rhs);
	friend FString operator/(const TCHAR* Lhs, const FString& Rhs);

	// Concatenation -----------------------------------------------------------------------------

	friend FString operator+(const FString& Lhs, const FString& Rhs);
	friend FString operator+(FString&& Lhs, const FString& Rhs);
	friend FString operator+(const FString& Lhs, FString&& Rhs);
	friend FString operator+(FString&& Lhs, FString&& Rhs);
	friend FString operator+(const TCHAR* Lhs, const FString& Rhs);
	friend FString operator+(const TCHAR* Lhs, FString&& Rhs);
	friend FString operator+(const FString& Lhs, const TCHAR* Rhs);
	friend FString operator+(FString&& Lhs, const TCHAR* Rhs);

	template <typename CharType, typename = std::enable_if_t<std::is_same_v<CharType, TCHAR> || std::is_same_v<CharType, ANSICHAR>>>
	friend FString operator+(const FString& Lhs, CharType Rhs)
	{
		FString Result(Lhs, 1);
		Result += Rhs;
		return Result;
	}

	template <typename CharType, typename = std::enable_if_t<std::is_same_v<CharType, TCHAR> || std::is_same_v<CharType, ANSICHAR>>>
	friend FString operator+(FString&& Lhs, CharType Rhs)
	{
		FString Result(std::move(Lhs));
		Result += Rhs;
		return Result;
	}

	// Comparison --------------------------------------------------------------------------------

	/** Case-insensitive, as the engine's operator== is. */
	friend bool operator==(const FString& Lhs, const FString& Rhs) { return Lhs.Equals(Rhs, ESearchCase::IgnoreCase); }
	friend bool operator==(const FString& Lhs, const TCHAR* Rhs) { return FCString::Stricmp(*Lhs, Rhs ? Rhs : u"") == 0; }
	friend bool operator==(const TCHAR* Lhs, const FString& Rhs) { return FCString::Stricmp(Lhs ? Lhs : u"", *Rhs) == 0; }
	friend bool operator!=(const FString& Lhs, const FString& Rhs) { return !(Lhs == Rhs); }
	friend bool operator!=(const FString& Lhs, const TCHAR* Rhs) { return !(Lhs == Rhs); }
	friend bool operator!=(const TCHAR* Lhs, const FString& Rhs) { return !(Lhs == Rhs); }

	/** Case-insensitive lexical order, as the engine's operator< is. */
	friend bool operator<(const FString& Lhs, const FString& Rhs) { return FCString::Stricmp(*Lhs, *Rhs) < 0; }
	friend bool operator<(const FString& Lhs, const TCHAR* Rhs) { return FCString::Stricmp(*Lhs, Rhs) < 0; }
	friend bool operator<(const TCHAR* Lhs, const FString& Rhs) { return FCString::Stricmp(Lhs, *Rhs) < 0; }
	friend bool operator>(const FString& Lhs, const FString& Rhs) { return FCString::Stricmp(*Lhs, *Rhs) > 0; }
	friend bool operator<=(const FString& Lhs, const FString& Rhs) { return FCString::Stricmp(*Lhs, *Rhs) <= 0; }
	friend bool operator>=(const FString& Lhs, const FString& Rhs) { return FCString::Stricmp(*Lhs, *Rhs) >= 0; }

	/** Exact equality by default; IgnoreCase folds ASCII letters. */
	bool Equals(const FString& Other, ESearchCase::Type SearchCase = ESearchCase::CaseSensitive) const;
	/** Negative, zero or positive; CaseSensitive by default, as in the engine. */
	int32 Compare(const FString& Other, ESearchCase::Type SearchCase = ESearchCase::CaseSensitive) const;

	// Searching ---------------------------------------------------------------------------------

	/**
	 * Index of SubStr, or INDEX_NONE. FromStart begins at StartPosition (clamped into the string);
	 * FromEnd looks at matches that end at or before StartPosition, so a match must begin at
	 * StartPosition - Len(SubStr) or earlier. An empty SubStr is found at the clamped start.
	 */
	int32 Find(const TCHAR* SubStr, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase,
		ESearchDir::Type SearchDir = ESearchDir::FromStart, int32 StartPosition = INDEX_NONE) const
	{
		return SubStr ? Find(SubStr, FCString::Strlen(SubStr), SearchCase, SearchDir, StartPosition) : INDEX_NONE;
	}
	int32 Find(const FString& SubStr, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase,
		ESearchDir::Type SearchDir = ESearchDir::FromStart, int32 StartPosition = INDEX_NONE) const
	{
		return Find(*SubStr, SubStr.Len(), SearchCase, SearchDir, StartPosition);
	}
	int32 Find(const TCHAR* SubStr, int32 SubStrLen, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase,
		ESearchDir::Type SearchDir = ESearchDir::FromStart, int32 StartPosition = INDEX_NONE) const;

	bool Contains(const TCHAR* SubStr, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase, ESearchDir::Type SearchDir = ESearchDir::FromStart) const
	{
		return Find(SubStr, SearchCase, SearchDir) != INDEX_NONE;
	}
	bool Contains(const FString& SubStr, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase, ESearchDir::Type SearchDir = ESearchDir::FromStart) const
	{
		return Find(SubStr, SearchCase, SearchDir) != INDEX_NONE;
	}
	bool Contains(const TCHAR* SubStr, int32 SubStrLen, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase, ESearchDir::Type SearchDir = ESearchDir::FromStart) const
	{
		return Find(SubStr, SubStrLen, SearchCase, SearchDir) != INDEX_NONE;
	}

	bool FindChar(TCHAR InChar, int32& OutIndex) const;
	bool FindLastChar(TCHAR InChar, int32& OutIndex) const;

	/** Last index among the first Count characters whose character satisfies Pred, or INDEX_NONE. */
	template <typename Predicate>
	int32 FindLastCharByPredicate(Predicate Pred, int32 Count) const
	{
		checkf(Count >= 0 && Count <= Len(), TEXT("FindLastCharByPredicate count %d outside 0..%d"), Count, Len());
		for (int32 Index = Count - 1; Index >= 0; --Index)
		{
			if (Pred(Data[static_cast<SIZE_T>(Index)]))
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}

	template <typename Predicate>
	int32 FindLastCharByPredicate(Predicate Pred) const
	{
		return FindLastCharByPredicate(Pred, Len());
	}

	bool StartsWith(const TCHAR* InPrefix, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const
	{
		return StartsWith(InPrefix, InPrefix ? FCString::Strlen(InPrefix) : 0, SearchCase);
	}
	bool StartsWith(const FString& InPrefix, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const
	{
		return StartsWith(*InPrefix, InPrefix.Len(), SearchCase);
	}
	/** False for an empty prefix, as in the engine. */
	bool StartsWith(const TCHAR* InPrefix, int32 InPrefixLen, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const;

	bool EndsWith(const TCHAR* InSuffix, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const
	{
		return EndsWith(InSuffix, InSuffix ? FCString::Strlen(InSuffix) : 0, SearchCase);
	}
	bool EndsWith(const FString& InSuffix, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const
	{
		return EndsWith(*InSuffix, InSuffix.Len(), SearchCase);
	}
	/** False for an empty suffix, as in the engine. */
	bool EndsWith(const TCHAR* InSuffix, int32 InSuffixLen, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const;

	/** '*' matches any run, '?' one character or none. */
	bool MatchesWildcard(const TCHAR* Wildcard, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const
	{
		return MatchesWildcard(Wildcard, Wildcard ? FCString::Strlen(Wildcard) : 0, SearchCase);
	}
	bool MatchesWildcard(const FString& Wildcard, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const
	{
		return MatchesWildcard(*Wildcard, Wildcard.Len(), SearchCase);
	}
	bool MatchesWildcard(const TCHAR* Wildcard, int32 WildcardLen, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const;

	// Substrings (every count and position is clamped into the string) ----------------------------

	FString Left(int32 Count) const & { return ConstructFromPtrSize(**this, Clamp(Count, 0, Len())); }
	FString Left(int32 Count) &&
	{
		LeftInline(Count);
		return std::move(*this);
	}
	void LeftInline(int32 Count, bool bAllowShrinking = true) { Data.resize(static_cast<SIZE_T>(Clamp(Count, 0, Len()))); }

	FString LeftChop(int32 Count) const & { return ConstructFromPtrSize(**this, Clamp(Len() - Count, 0, Len())); }
	FString LeftChop(int32 Count) &&
	{
		LeftChopInline(Count);
		return std::move(*this);
	}
	void LeftChopInline(int32 Count, bool bAllowShrinking = true) { Data.resize(static_cast<SIZE_T>(Clamp(Len() - Count, 0, Len()))); }

	FString Right(int32 Count) const &
	{
		const int32 Keep = Clamp(Count, 0, Len());
		return ConstructFromPtrSize(**this + (Len() - Keep), Keep);
	}
	FString Right(int32 Count) &&
	{
		RightInline(Count);
		return std::move(*this);
	}
	void RightInline(int32 Count, bool bAllowShrinking = true) { RemoveAt(0, Len() - Clamp(Count, 0, Len())); }

	FString RightChop(int32 Count) const &
	{
		const int32 Skip = Clamp(Count, 0, Len());
		return ConstructFromPtrSize(**this + Skip, Len() - Skip);
	}
	FString RightChop(int32 Count) &&
	{
		RightChopInline(Count);
		return std::move(*this);
	}
	void RightChopInline(int32 Count, bool bAllowShrinking = true) { RemoveAt(0, Clamp(Count, 0, Len())); }

	/**
	 * Count characters from Start. The range is clamped as the engine clamps it: a negative Start
	 * shortens the range (Mid(-2, 5) gives the first 3 characters), a negative Count gives "".
	 */
	FString Mid(int32 Start, int32 Count) const &;
	FString Mid(int32 Start, int32 Count) &&
	{
		MidInline(Start, Count);
		return std::move(*this);
	}
	FString Mid(int32 Start) const & { return RightChop(Start); }
	FString Mid(int32 Start) && { return std::move(*this).RightChop(Start); }
	void MidInline(int32 Start, int32 Count = 0x7fffffff, bool bAllowShrinking = true);

	// Transformations ---------------------------------------------------------------------------

	/** Splits at the first (or last) InStr; false and outputs untouched when it is absent. */
	bool Split(const FString& InS, FString* LeftS, FString* RightS, ESearchCase::Type SearchCase,
		ESearchDir::Type SearchDir = ESearchDir::FromStart) const;
	bool Split(const FString& InS, FString* LeftS, FString* RightS) const
	{
		return Split(InS, LeftS, RightS, ESearchCase::IgnoreCase);
	}

	FString ToUpper() const &;
	FString ToUpper() &&;
	void ToUpperInline();
	FString ToLower() const &;
	FString ToLower() &&;
	void ToLowerInline();

	FString LeftPad(int32 ChCount) const;
	FString RightPad(int32 ChCount) const;

	/** Optional sign, then digits with at most one '.'; empty is not numeric, "-" and "." are. */
	bool IsNumeric() const;

	void RemoveSpacesInline();

	void TrimStartAndEndInline();
	FString TrimStartAndEnd() const &;
	FString TrimStartAndEnd() &&;
	void TrimStartInline();
	FString TrimStart() const &;
	FString TrimStart() &&;
	void TrimEndInline();
	FString TrimEnd() const &;
	FString TrimEnd() &&;
	void TrimToNullTerminator();

	void TrimQuotesInline(bool* bQuotesRemoved = nullptr);
	FString TrimQuotes(bool* bQuotesRemoved = nullptr) const &;
	FString TrimQuotes(bool* bQuotesRemoved = nullptr) &&;
	void TrimCharInline(TCHAR CharacterToTrim, bool* bCharRemoved);
	FString TrimChar(TCHAR CharacterToTrim, bool* bCharRemoved = nullptr) const &;
	FString TrimChar(TCHAR CharacterToTrim, bool* bCharRemoved = nullptr) &&;

	/**
	 * Splits at every pchDelim (matched ignoring case, as the engine does) into OutArray, which is
	 * reset first. An empty delimiter gives an empty array. Returns the number of pieces.
	 */
	int32 ParseIntoArray(TArray<FString>& OutArray, const TCHAR* pchDelim, bool bInCullEmpty = true) const;
	/** Splits at any of the delimiters (matched case-sensitively, the first listed wins at a position). */
	int32 ParseIntoArray(TArray<FString>& OutArray, const TCHAR* const* DelimArray, int32 NumDelims, bool bInCullEmpty = true) const;
	/** Splits at spaces, tabs and line breaks, and at pchExtraDelim if given. */
	int32 ParseIntoArrayWS(TArray<FString>& OutArray, const TCHAR* pchExtraDelim = nullptr, bool bInCullEmpty = true) const;
	/** Splits at "\r\n", "\r" and "\n". */
	int32 ParseIntoArrayLines(TArray<FString>& OutArray, bool bInCullEmpty = true) const;
	static int32 CullArray(TArray<FString>* InOutArray);

	FString Reverse() const &;
	FString Reverse() &&;
	void ReverseString();

	/** A copy with every From replaced by To; From is matched ignoring case unless told otherwise. */
	FString Replace(const TCHAR* From, const TCHAR* To, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const &;
	FString Replace(const TCHAR* From, const TCHAR* To, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) &&;
	/** Replaces in place and returns how many occurrences were replaced. */
	int32 ReplaceInline(const TCHAR* SearchText, const TCHAR* ReplacementText, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase);
	void ReplaceCharInline(TCHAR From, TCHAR To, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase);

	/** Escapes every '"' not already escaped by a backslash. */
	FString ReplaceQuotesWithEscapedQuotes() const &;
	FString ReplaceQuotesWithEscapedQuotes() &&;

	/** Turns \\ \n \r \t \' \" into their two-character escapes (or back). */
	void ReplaceCharWithEscapedCharInline(const TArray<TCHAR>* Chars = nullptr);
	FString ReplaceCharWithEscapedChar(const TArray<TCHAR>* Chars = nullptr) const
	{
		FString Result(*this);
		Result.ReplaceCharWithEscapedCharInline(Chars);
		return Result;
	}
	void ReplaceEscapedCharWithCharInline(const TArray<TCHAR>* Chars = nullptr);
	FString ReplaceEscapedCharWithChar(const TArray<TCHAR>* Chars = nullptr) const
	{
		FString Result(*this);
		Result.ReplaceEscapedCharWithCharInline(Chars);
		return Result;
	}

	void ConvertTabsToSpacesInline(int32 InSpacesPerTab);
	FString ConvertTabsToSpaces(int32 InSpacesPerTab) const
	{
		FString Result(*this);
		Result.ConvertTabsToSpacesInline(InSpacesPerTab);
		return Result;
	}

	// Construction helpers ----------------------------------------------------------------------

	/**
	 * printf-style formatting with the engine's specifiers. The format must be a TEXT() literal;
	 * its specifiers are checked against the arguments at compile time (%s takes a const TCHAR*,
	 * so pass *Str for an FString; %hs takes a narrow string). A null string prints "(null)".
	 */
	template <typename... Types>
	static FString Printf(UE::Core::TCheckedFormatString<TCHAR, std::type_identity_t<Types>...> Fmt, Types... Args)
	{
		static_assert(((UE::Core::Private::FormatString::ClassifyArg<Types>() != UE::Core::Private::FormatString::EArgKind::Unsupported) && ...),
			"FString::Printf takes numbers, characters and pointers only: pass *Str for an FString");
		const UE::Core::Private::FormatString::FArg Packed[] = { UE::Core::Private::FormatString::MakeArg<Types>(Args)..., UE::Core::Private::FormatString::FArg() };
		FString Result;
		AppendFormatted(Result, Fmt.FormatString, Packed, static_cast<int32>(sizeof...(Types)));
		return Result;
	}

	/** Printf that appends to this string. */
	template <typename... Types>
	FString& Appendf(UE::Core::TCheckedFormatString<TCHAR, std::type_identity_t<Types>...> Fmt, Types... Args)
	{
		static_assert(((UE::Core::Private::FormatString::ClassifyArg<Types>() != UE::Core::Private::FormatString::EArgKind::Unsupported) && ...),
			"FString::Appendf takes numbers, characters and pointers only: pass *Str for an FString");
		const UE::Core::Private::FormatString::FArg Packed[] = { UE::Core::Private::FormatString::MakeArg<Types>(Args)..., UE::Core::Private::FormatString::FArg() };
		AppendFormatted(*this, Fmt.FormatString, Packed, static_cast<int32>(sizeof...(Types)));
		return *this;
	}

	/** The formatter behind Printf; arguments were already checked against Fmt. */
	static void AppendFormatted(FString& Out, const TCHAR* Fmt, const UE::Core::Private::FormatString::FArg* Args, int32 NumArgs);

	/**
	 * Replaces "{Name}" (named) or "{0}" (ordered) tokens with the arguments (Misc/StringFormatArg.h).
	 * A backtick escapes a brace; a token without an argument stays as written.
	 */
	static FString Format(const TCHAR* InFormatString, const FStringFormatNamedArguments& InNamedArguments);
	static FString Format(const TCHAR* InFormatString, const FStringFormatOrderedArguments& InOrderedArguments);

	static FString Chr(TCHAR Ch);
	static FString ChrN(int32 NumCharacters, TCHAR Char);
	static FString FromInt(int32 Num);
	/** 12345 gives "12,345". */
	static FString FormatAsNumber(int32 InNumber);

	/**
	 * A double as "%f" prints it, without trailing zeros but with at least InMinFractionalDigits
	 * fractional digits: 5 gives "5.0", 1.5 gives "1.5", 1e-7 gives "0.0", -0 gives "0.0".
	 */
	static FString SanitizeFloat(double InFloat, int32 InMinFractionalDigits = 1);

	/** "True", "Yes", "On" and non-zero numbers are true. */
	bool ToBool() const;

	static FString FromHexBlob(const uint8* SrcBuffer, uint32 SrcSize);
	static bool ToHexBlob(const FString& Source, uint8* DestBuffer, uint32 DestSize);

	/** Elements of Range, each appended with +=, with Separator between them. */
	template <typename RangeType>
	static FString Join(const RangeType& Range, const TCHAR* Separator)
	{
		FString Result;
		bool bFirst = true;
		for (const auto& Element : Range)
		{
			if (!bFirst)
			{
				Result += Separator;
			}
			bFirst = false;
			Result += Element;
		}
		return Result;
	}

	template <typename RangeType, typename ProjectionType>
	static FString JoinBy(const RangeType& Range, const TCHAR* Separator, ProjectionType Proj)
	{
		FString Result;
		bool bFirst = true;
		for (const auto& Element : Range)
		{
			if (!bFirst)
			{
				Result += Separator;
			}
			bFirst = false;
			Result += Proj(Element);
		}
		return Result;
	}

	/** Case-insensitive, so strings equal under operator== hash alike. */
	friend uint32 GetTypeHash(const FString& S) { return HashIgnoreCase(*S, S.Len()); }
	static uint32 HashIgnoreCase(const TCHAR* Str, int32 Len);

private:
	static constexpr int32 Clamp(int32 Value, int32 Min, int32 Max) { return Value < Min ? Min : (Value > Max ? Max : Value); }
};

/** UTF-8 from a std::string_view (headless convenience; the engine's route is UTF8_TO_TCHAR). */
FString UTF8ToFString(std::string_view Utf8);
/** The string as UTF-8 (headless convenience; the engine's route is TCHAR_TO_UTF8 or FTCHARToUTF8). */
std::string FStringToUTF8(const FString& Str);

inline const TCHAR* ToCStr(const FString& Str)
{
	return *Str;
}

// Lex: conversions between values and text, as the engine's generic code expects them -----------

template <typename T, typename = std::enable_if_t<std::is_arithmetic_v<T> && !std::is_same_v<std::remove_cv_t<T>, bool>>>
FString LexToString(const T& Value)
{
	using U = std::remove_cv_t<T>;
	if constexpr (std::is_floating_point_v<U>)
	{
		return FString::Printf(TEXT("%f"), static_cast<double>(Value));
	}
	else if constexpr (std::is_signed_v<U>)
	{
		return FString::Printf(TEXT("%lld"), static_cast<long long>(Value));
	}
	else
	{
		return FString::Printf(TEXT("%llu"), static_cast<unsigned long long>(Value));
	}
}

template <typename BoolT, typename = std::enable_if_t<std::is_same_v<BoolT, bool>>, typename = void>
FString LexToString(BoolT Value)
{
	return FString(Value ? TEXT("true") : TEXT("false"));
}

inline FString LexToString(const TCHAR* Ptr)
{
	return FString(Ptr);
}

inline FString LexToString(const FString& Str)
{
	return Str;
}

inline FString LexToString(FString&& Str)
{
	return std::move(Str);
}

/** Floats and doubles through SanitizeFloat, everything else through LexToString. */
template <typename T>
FString LexToSanitizedString(const T& Value)
{
	if constexpr (std::is_floating_point_v<T>)
	{
		return FString::SanitizeFloat(static_cast<double>(Value));
	}
	else
	{
		return LexToString(Value);
	}
}

inline void LexFromString(int8& OutValue, const TCHAR* Buffer) { OutValue = static_cast<int8>(FCString::Atoi(Buffer)); }
inline void LexFromString(int16& OutValue, const TCHAR* Buffer) { OutValue = static_cast<int16>(FCString::Atoi(Buffer)); }
inline void LexFromString(int32& OutValue, const TCHAR* Buffer) { OutValue = FCString::Atoi(Buffer); }
inline void LexFromString(int64& OutValue, const TCHAR* Buffer) { OutValue = FCString::Atoi64(Buffer); }
inline void LexFromString(uint8& OutValue, const TCHAR* Buffer) { OutValue = static_cast<uint8>(FCString::Atoi(Buffer)); }
inline void LexFromString(uint16& OutValue, const TCHAR* Buffer) { OutValue = static_cast<uint16>(FCString::Atoi(Buffer)); }
inline void LexFromString(uint32& OutValue, const TCHAR* Buffer) { OutValue = static_cast<uint32>(FCString::Atoi64(Buffer)); }
inline void LexFromString(uint64& OutValue, const TCHAR* Buffer) { OutValue = FCString::Strtoui64(Buffer, nullptr, 0); }
inline void LexFromString(float& OutValue, const TCHAR* Buffer) { OutValue = FCString::Atof(Buffer); }
inline void LexFromString(double& OutValue, const TCHAR* Buffer) { OutValue = FCString::Atod(Buffer); }
inline void LexFromString(bool& OutValue, const TCHAR* Buffer) { OutValue = FCString::ToBool(Buffer); }
inline void LexFromString(FString& OutValue, const TCHAR* Buffer) { OutValue = Buffer; }

/**
 * Parses Buffer into OutValue and tells whether it really held a number: "" fails, and a zero
 * result only passes when the text shows a zero digit, as in the engine.
 */
template <typename T, typename = std::enable_if_t<std::is_arithmetic_v<T> && !std::is_same_v<T, bool>>>
bool LexTryParseString(T& OutValue, const TCHAR* Buffer)
{
	if (Buffer[0] == 0)
	{
		OutValue = 0;
		return false;
	}
	LexFromString(OutValue, Buffer);
	if (OutValue != 0)
	{
		return true;
	}
	const TCHAR* Cursor = Buffer;
	while (*Cursor && (*Cursor == TCHAR('+') || *Cursor == TCHAR('-') || FChar::IsWhitespace(*Cursor)))
	{
		++Cursor;
	}
	bool bSawZero = false;
	for (; *Cursor && !FChar::IsWhitespace(*Cursor) && (std::is_floating_point_v<T> || *Cursor != TCHAR('.')); ++Cursor)
	{
		bSawZero = bSawZero || *Cursor == TCHAR('0');
		if (!bSawZero && *Cursor != TCHAR('.'))
		{
			return false;
		}
	}
	return bSawZero;
}

inline bool LexTryParseString(bool& OutValue, const TCHAR* Buffer)
{
	LexFromString(OutValue, Buffer);
	return true;
}

// Hex helpers ------------------------------------------------------------------------------------

inline TCHAR NibbleToTChar(uint8 Num)
{
	return Num > 9 ? static_cast<TCHAR>(TCHAR('A') + (Num - 10)) : static_cast<TCHAR>(TCHAR('0') + Num);
}

inline void ByteToHex(uint8 In, FString& Result)
{
	Result += NibbleToTChar(In >> 4);
	Result += NibbleToTChar(In & 15);
}

/** Appends uppercase hex. */
void BytesToHex(const uint8* Bytes, int32 NumBytes, FString& Out);
/** Appends lowercase hex. */
void BytesToHexLower(const uint8* Bytes, int32 NumBytes, FString& Out);

inline FString BytesToHex(const uint8* Bytes, int32 NumBytes)
{
	FString Out;
	BytesToHex(Bytes, NumBytes, Out);
	return Out;
}

inline bool CheckTCharIsHex(const TCHAR Char)
{
	return FChar::IsHexDigit(Char);
}

/** Value of a hex digit; 0 for anything that is not one. */
inline uint8 TCharToNibble(const TCHAR Hex)
{
	if (Hex >= TCHAR('0') && Hex <= TCHAR('9'))
	{
		return static_cast<uint8>(Hex - TCHAR('0'));
	}
	if (Hex >= TCHAR('A') && Hex <= TCHAR('F'))
	{
		return static_cast<uint8>(Hex - TCHAR('A') + 10);
	}
	if (Hex >= TCHAR('a') && Hex <= TCHAR('f'))
	{
		return static_cast<uint8>(Hex - TCHAR('a') + 10);
	}
	return 0;
}

/** Decodes hex pairs into OutBytes (an odd length treats the first digit as a whole byte); returns the byte count. */
int32 HexToBytes(const FString& HexString, uint8* OutBytes);

/** Index of the ')' matching the first '(' at or after StartSearch, or INDEX_NONE. */
int32 FindMatchingClosingParenthesis(const FString& TargetString, int32 StartSearch = 0);

namespace UE::Core::Private
{
	void StripNegativeZero(double& InFloat);
}
