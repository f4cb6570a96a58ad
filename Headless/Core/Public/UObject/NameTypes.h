#pragma once

#include "CoreTypes.h"
#include "Containers/UnrealString.h"

class FText;

/** Names known before any other is made. NAME_None is the empty name and the default FName. */
enum EName : uint32
{
	NAME_None = 0,
};

/** How FName::IsEqual compares the text. */
enum class ENameCase : uint8
{
	CaseSensitive,
	IgnoreCase,
};

/** Whether an FName constructor may add its text to the name table. */
enum EFindName
{
	/** Only look the name up; an unknown text gives NAME_None. */
	FNAME_Find,
	/** Look the name up and add it when absent. */
	FNAME_Add,
};

/** The number part of a name that has none. */
#define NAME_NO_NUMBER_INTERNAL 0
#define NAME_NO_NUMBER INDEX_NONE
#define NAME_EXTERNAL_TO_INTERNAL(x) ((x) + 1)
#define NAME_INTERNAL_TO_EXTERNAL(x) ((x) - 1)

/** Characters the engine does not allow in names, object names and long package names. */
#define INVALID_NAME_CHARACTERS TEXT("\"' ,\n\r\t")
#define INVALID_OBJECTNAME_CHARACTERS TEXT("\"' ,/.:|&!~\n\r\t@#(){}[]=;^%$`")
#define INVALID_LONGPACKAGE_CHARACTERS TEXT("\\:*?\"<>|' ,.&!~\n\r\t@#")

/**
 * A name from the global name table: cheap to copy, compare and hash.
 *
 * As in the engine, names compare without regard to ASCII case while each FName keeps the
 * spelling it was made with: FName("Foo") == FName("FOO"), yet each prints as it was written.
 * A trailing "_<digits>" (no leading zero, under 2^31) is stored as a number apart from the
 * base text, so "Node_12" and "node_12" are the same name and "Node_012" is a plain name.
 *
 * The table only grows; lookups hash once and are O(1) on average.
 */
class FName
{
public:
	/** NAME_None. */
	constexpr FName() = default;
	FName(EName Name) : FName(Name, NAME_NO_NUMBER_INTERNAL) {}
	FName(EName Name, int32 InNumber);

	/** The name of Text; null or "" gives NAME_None. */
	FName(const TCHAR* Name, EFindName FindType = FNAME_Add);
	FName(const ANSICHAR* Name, EFindName FindType = FNAME_Add);
	FName(const FString& Name, EFindName FindType = FNAME_Add);
	FName(int32 Len, const TCHAR* Name, EFindName FindType = FNAME_Add);
	/** The base text Name with an explicit internal number (0 for none); Name is not split. */
	FName(const TCHAR* Name, int32 InNumber);
	/** As above, but with bSplitName a "_<digits>" suffix is split off when InNumber is 0. */
	FName(const TCHAR* Name, int32 InNumber, bool bSplitName);
	/** Other's base text with a different internal number. */
	FName(const FName& Other, int32 InNumber) : ComparisonIndex(Other.ComparisonIndex), DisplayIndex(Other.DisplayIndex), Number(InNumber) {}

	FString ToString() const;
	void ToString(FString& Out) const;
	/** Appends the name to Out. */
	void AppendString(FString& Out) const;
	/** The base text, without the "_<number>" suffix. */
	FString GetPlainNameString() const;
	/** Length of ToString() without building it. */
	int32 GetStringLength() const;

	bool IsNone() const { return ComparisonIndex == 0 && Number == NAME_NO_NUMBER_INTERNAL; }
	bool IsValid() const { return true; }

	int32 GetNumber() const { return Number; }
	void SetNumber(int32 NewNumber) { Number = NewNumber; }
	uint32 GetComparisonIndex() const { return ComparisonIndex; }
	uint32 GetDisplayIndex() const { return DisplayIndex; }

	/**
	 * IgnoreCase is operator==; CaseSensitive also requires the same spelling. bCompareNumber
	 * false compares the base texts only.
	 */
	bool IsEqual(const FName& Other, ENameCase CompareMethod = ENameCase::IgnoreCase, bool bCompareNumber = true) const
	{
		const bool bSameText = CompareMethod == ENameCase::IgnoreCase ? ComparisonIndex == Other.ComparisonIndex : DisplayIndex == Other.DisplayIndex;
		return bSameText && (!bCompareNumber || Number == Other.Number);
	}
	/** Headless spelling of IsEqual with the defaults: case-insensitive, number included. */
	bool Equals(const FName& Other) const { return *this == Other; }
	bool Equals(const TCHAR* Other) const { return EqualsText(Other); }

	/** Case-insensitive, including the number. */
	friend bool operator==(const FName& A, const FName& B) { return A.ComparisonIndex == B.ComparisonIndex && A.Number == B.Number; }
	friend bool operator!=(const FName& A, const FName& B) { return !(A == B); }
	friend bool operator==(const FName& A, EName B) { return A == FName(B); }
	friend bool operator!=(const FName& A, EName B) { return !(A == FName(B)); }
	/** Compares with text, ignoring case, without adding the text to the table. */
	friend bool operator==(const FName& A, const TCHAR* B) { return A.EqualsText(B); }
	friend bool operator!=(const FName& A, const TCHAR* B) { return !A.EqualsText(B); }
	friend bool operator==(const TCHAR* A, const FName& B) { return B.EqualsText(A); }
	friend bool operator!=(const TCHAR* A, const FName& B) { return !B.EqualsText(A); }

	/** Case-insensitive text order; equal base texts order by number. */
	int32 Compare(const FName& Other) const;
	/** Alphabetical order, ignoring case: stable across runs and platforms. */
	bool LexicalLess(const FName& Other) const { return Compare(Other) < 0; }
	/** Table order: quick, stable within one run, not alphabetical. */
	bool FastLess(const FName& Other) const
	{
		return ComparisonIndex != Other.ComparisonIndex ? ComparisonIndex < Other.ComparisonIndex : Number < Other.Number;
	}
	friend bool operator<(const FName& A, const FName& B) { return A.LexicalLess(B); }

	friend uint32 GetTypeHash(const FName& Name) { return Name.ComparisonIndex * 0x9E3779B1u + static_cast<uint32>(Name.Number); }

	/**
	 * The name as the editor shows it: words split at case changes and underscores ("bIsHidden" with
	 * bIsBool -> "Is Hidden", "DrawScale3D" -> "Draw Scale 3D"), each word capitalised except short
	 * joining words such as "in", "to" or "the" in the middle ("TimeToLive" -> "Time to Live").
	 */
	static FString NameToDisplayString(const FString& InDisplayName, const bool bIsBool);

	/**
	 * True when Name holds none of InvalidChars (an empty name or set passes). Otherwise false,
	 * with "<ErrorCtx> may not contain the following characters: <the offending ones>" in
	 * OutReason when given; ErrorCtx defaults to "Name".
	 */
	static bool IsValidXName(const FString& Name, const FString& InvalidChars, FText* OutReason = nullptr, const FText* InErrorCtx = nullptr);
	static bool IsValidXName(const TCHAR* Name, const FString& InvalidChars, FText* OutReason = nullptr, const FText* InErrorCtx = nullptr)
	{
		return IsValidXName(FString(Name), InvalidChars, OutReason, InErrorCtx);
	}
	static bool IsValidXName(const FName& Name, const FString& InvalidChars, FText* OutReason = nullptr, const FText* InErrorCtx = nullptr)
	{
		return IsValidXName(Name.ToString(), InvalidChars, OutReason, InErrorCtx);
	}
	bool IsValidXName(const FString& InvalidChars, FText* OutReason = nullptr, const FText* InErrorCtx = nullptr) const
	{
		return IsValidXName(*this, InvalidChars, OutReason, InErrorCtx);
	}

private:
	bool EqualsText(const TCHAR* Text) const;
	void Init(const TCHAR* Name, int32 Len, int32 InNumber, bool bSplitNumber, EFindName FindType);

	uint32 ComparisonIndex = 0;
	uint32 DisplayIndex = 0;
	int32 Number = NAME_NO_NUMBER_INTERNAL;
};

inline FString LexToString(const FName& Name)
{
	return Name.ToString();
}

inline void LexFromString(FName& Name, const TCHAR* Str)
{
	Name = FName(Str);
}

/** Orders names alphabetically (ignoring case), for Sort. */
struct FNameLexicalLess
{
	bool operator()(const FName& A, const FName& B) const { return A.LexicalLess(B); }
};

/** Orders names by table index, for Sort where only a stable order matters. */
struct FNameFastLess
{
	bool operator()(const FName& A, const FName& B) const { return A.FastLess(B); }
};
