#pragma once

#include "CoreTypes.h"
#include "Misc/Char.h"

/** Whether a text comparison or search folds ASCII case. */
namespace ESearchCase
{
	enum Type
	{
		/** Case matters: "Foo" and "foo" differ. */
		CaseSensitive,
		/** A-Z and a-z compare equal. */
		IgnoreCase,
	};
}

/** Where a search begins. */
namespace ESearchDir
{
	enum Type
	{
		FromStart,
		FromEnd,
	};
}

/**
 * Operations on null-terminated character strings, with the engine's names (FCString for TCHAR,
 * FCStringAnsi for ANSICHAR). Case-insensitive forms fold ASCII letters only; comparisons order by
 * the lower-cased code unit, as the engine's Stricmp does.
 *
 * The number parsers never read past the terminator and never overflow: integer results saturate
 * at the limits of their type (as MSVC's runtime does), and floating-point parsing ignores the
 * process locale.
 */
template <typename T>
struct TCString
{
	using CharType = T;

	static int32 Strlen(const CharType* String)
	{
		const CharType* Cursor = String;
		while (*Cursor)
		{
			++Cursor;
		}
		return static_cast<int32>(Cursor - String);
	}

	/** Length of String, looking at no more than MaxLen characters. */
	static int32 Strnlen(const CharType* String, int32 MaxLen)
	{
		int32 Length = 0;
		while (Length < MaxLen && String[Length])
		{
			++Length;
		}
		return Length;
	}

	static int32 Strcmp(const CharType* A, const CharType* B)
	{
		for (;; ++A, ++B)
		{
			const int32 Diff = static_cast<int32>(Unsigned(*A)) - static_cast<int32>(Unsigned(*B));
			if (Diff != 0 || *A == 0)
			{
				return Diff;
			}
		}
	}

	static int32 Strncmp(const CharType* A, const CharType* B, SIZE_T Count)
	{
		for (; Count > 0; --Count, ++A, ++B)
		{
			const int32 Diff = static_cast<int32>(Unsigned(*A)) - static_cast<int32>(Unsigned(*B));
			if (Diff != 0 || *A == 0)
			{
				return Diff;
			}
		}
		return 0;
	}

	static int32 Stricmp(const CharType* A, const CharType* B)
	{
		for (;; ++A, ++B)
		{
			const int32 Diff = FoldedDiff(*A, *B);
			if (Diff != 0 || *A == 0)
			{
				return Diff;
			}
		}
	}

	static int32 Strnicmp(const CharType* A, const CharType* B, SIZE_T Count)
	{
		for (; Count > 0; --Count, ++A, ++B)
		{
			const int32 Diff = FoldedDiff(*A, *B);
			if (Diff != 0 || *A == 0)
			{
				return Diff;
			}
		}
		return 0;
	}

	static const CharType* Strchr(const CharType* String, CharType Char)
	{
		for (; *String; ++String)
		{
			if (*String == Char)
			{
				return String;
			}
		}
		return Char == 0 ? String : nullptr;
	}

	static const CharType* Strrchr(const CharType* String, CharType Char)
	{
		const CharType* Last = nullptr;
		for (; *String; ++String)
		{
			if (*String == Char)
			{
				Last = String;
			}
		}
		return Char == 0 ? String : Last;
	}

	/** First occurrence of Find in String; an empty Find matches at String. */
	static const CharType* Strstr(const CharType* String, const CharType* Find)
	{
		return Strnstr(String, Strlen(String), Find, Strlen(Find));
	}
	static CharType* Strstr(CharType* String, const CharType* Find)
	{
		return const_cast<CharType*>(Strstr(const_cast<const CharType*>(String), Find));
	}

	static const CharType* Stristr(const CharType* String, const CharType* Find)
	{
		return Strnistr(String, Strlen(String), Find, Strlen(Find));
	}
	static CharType* Stristr(CharType* String, const CharType* Find)
	{
		return const_cast<CharType*>(Stristr(const_cast<const CharType*>(String), Find));
	}

	/** Search within a counted range (embedded terminators are ordinary characters here). */
	static const CharType* Strnstr(const CharType* String, int32 StringLen, const CharType* Find, int32 FindLen)
	{
		if (FindLen <= 0)
		{
			return String;
		}
		const CharType First = Find[0];
		for (int32 Index = 0; Index + FindLen <= StringLen; ++Index)
		{
			if (String[Index] == First && EqualRange(String + Index + 1, Find + 1, FindLen - 1))
			{
				return String + Index;
			}
		}
		return nullptr;
	}

	static const CharType* Strnistr(const CharType* String, int32 StringLen, const CharType* Find, int32 FindLen)
	{
		if (FindLen <= 0)
		{
			return String;
		}
		const CharType First = TChar<CharType>::ToLower(Find[0]);
		for (int32 Index = 0; Index + FindLen <= StringLen; ++Index)
		{
			if (TChar<CharType>::ToLower(String[Index]) == First && EqualRangeIgnoreCase(String + Index + 1, Find + 1, FindLen - 1))
			{
				return String + Index;
			}
		}
		return nullptr;
	}

	/** Copies at most DestCount-1 characters and always terminates (when DestCount > 0). */
	static CharType* Strncpy(CharType* Dest, const CharType* Src, int32 DestCount)
	{
		if (DestCount <= 0)
		{
			return Dest;
		}
		int32 Index = 0;
		for (; Index < DestCount - 1 && Src[Index]; ++Index)
		{
			Dest[Index] = Src[Index];
		}
		Dest[Index] = 0;
		return Dest;
	}

	/** Optional '+' or '-', then digits with at most one '.'; "" and "-" pass, as in the engine. */
	static bool IsNumeric(const CharType* String)
	{
		if (*String == CharType('-') || *String == CharType('+'))
		{
			++String;
		}
		bool bSeenDot = false;
		for (; *String; ++String)
		{
			if (*String == CharType('.'))
			{
				if (bSeenDot)
				{
					return false;
				}
				bSeenDot = true;
			}
			else if (!TChar<CharType>::IsDigit(*String))
			{
				return false;
			}
		}
		return true;
	}

	/** True when every character is 7-bit. */
	static bool IsPureAnsi(const CharType* String)
	{
		for (; *String; ++String)
		{
			if (Unsigned(*String) > 0x7F)
			{
				return false;
			}
		}
		return true;
	}

	CORE_API static int32 Atoi(const CharType* String);
	CORE_API static int64 Atoi64(const CharType* String);
	CORE_API static float Atof(const CharType* String);
	CORE_API static double Atod(const CharType* String);
	CORE_API static int32 Strtoi(const CharType* Start, CharType** End, int32 Base);
	CORE_API static int64 Strtoi64(const CharType* Start, CharType** End, int32 Base);
	CORE_API static uint64 Strtoui64(const CharType* Start, CharType** End, int32 Base);
	CORE_API static float Strtof(const CharType* Start, CharType** End);
	CORE_API static double Strtod(const CharType* Start, CharType** End);

	/** "True", "Yes", "On" (any case) and non-zero numbers are true; everything else is false. */
	CORE_API static bool ToBool(const CharType* String);

private:
	static constexpr uint32 Unsigned(CharType Char)
	{
		return static_cast<uint32>(static_cast<std::make_unsigned_t<CharType>>(Char));
	}

	static constexpr int32 FoldedDiff(CharType A, CharType B)
	{
		return static_cast<int32>(Unsigned(TChar<CharType>::ToLower(A))) - static_cast<int32>(Unsigned(TChar<CharType>::ToLower(B)));
	}

	static bool EqualRange(const CharType* A, const CharType* B, int32 Count)
	{
		for (int32 Index = 0; Index < Count; ++Index)
		{
			if (A[Index] != B[Index])
			{
				return false;
			}
		}
		return true;
	}

	static bool EqualRangeIgnoreCase(const CharType* A, const CharType* B, int32 Count)
	{
		for (int32 Index = 0; Index < Count; ++Index)
		{
			if (TChar<CharType>::ToLower(A[Index]) != TChar<CharType>::ToLower(B[Index]))
			{
				return false;
			}
		}
		return true;
	}
};

using FCString = TCString<TCHAR>;
using FCStringAnsi = TCString<ANSICHAR>;
using FCStringWide = TCString<WIDECHAR>;
