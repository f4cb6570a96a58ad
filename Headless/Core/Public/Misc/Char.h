#pragma once

#include "CoreTypes.h"

#include <type_traits>

/**
 * Character classification and case mapping, with the engine's TChar names.
 *
 * Case mapping folds only A-Z and a-z, as the engine's does: it keeps every comparison, hash and
 * ToUpper/ToLower independent of the process locale, so names read back exactly as the editor
 * would show them. Classification is fixed too (no locale): digits are 0-9, letters are ASCII
 * letters, whitespace is the ASCII set plus the Unicode space and line separators.
 */
template <typename CharType>
struct TChar
{
	static constexpr CharType ToUpper(CharType Char)
	{
		return (Char >= CharType('a') && Char <= CharType('z')) ? CharType(Char - ('a' - 'A')) : Char;
	}

	static constexpr CharType ToLower(CharType Char)
	{
		return (Char >= CharType('A') && Char <= CharType('Z')) ? CharType(Char + ('a' - 'A')) : Char;
	}

	static constexpr bool IsUpper(CharType Char) { return Char >= CharType('A') && Char <= CharType('Z'); }
	static constexpr bool IsLower(CharType Char) { return Char >= CharType('a') && Char <= CharType('z'); }
	static constexpr bool IsAlpha(CharType Char) { return IsUpper(Char) || IsLower(Char); }
	static constexpr bool IsDigit(CharType Char) { return Char >= CharType('0') && Char <= CharType('9'); }
	static constexpr bool IsAlnum(CharType Char) { return IsAlpha(Char) || IsDigit(Char); }
	static constexpr bool IsOctDigit(CharType Char) { return Char >= CharType('0') && Char <= CharType('7'); }
	static constexpr bool IsUnderscore(CharType Char) { return Char == CharType('_'); }
	static constexpr bool IsLinebreak(CharType Char)
	{
		const uint32 Code = static_cast<uint32>(static_cast<std::make_unsigned_t<CharType>>(Char));
		return (Code >= 0x0A && Code <= 0x0D) || Code == 0x85 || Code == 0x2028 || Code == 0x2029;
	}

	static constexpr bool IsHexDigit(CharType Char)
	{
		return IsDigit(Char) || (Char >= CharType('a') && Char <= CharType('f')) || (Char >= CharType('A') && Char <= CharType('F'));
	}

	static constexpr bool IsPunct(CharType Char)
	{
		const uint32 Code = static_cast<uint32>(static_cast<std::make_unsigned_t<CharType>>(Char));
		return (Code >= 0x21 && Code <= 0x2F) || (Code >= 0x3A && Code <= 0x40) || (Code >= 0x5B && Code <= 0x60) || (Code >= 0x7B && Code <= 0x7E);
	}

	static constexpr bool IsPrint(CharType Char)
	{
		const uint32 Code = static_cast<uint32>(static_cast<std::make_unsigned_t<CharType>>(Char));
		return Code >= 0x20 && Code != 0x7F && !(Code >= 0x80 && Code < 0xA0);
	}

	static constexpr bool IsWhitespace(CharType Char)
	{
		const uint32 Code = static_cast<uint32>(static_cast<std::make_unsigned_t<CharType>>(Char));
		if (Code < 0x80)
		{
			return Code == ' ' || (Code >= 0x09 && Code <= 0x0D);
		}
		// Unicode separators that the C library's wide classification treats as space; the
		// no-break spaces (U+00A0, U+2007, U+202F) are deliberately not whitespace.
		return Code == 0x1680 || (Code >= 0x2000 && Code <= 0x2006) || (Code >= 0x2008 && Code <= 0x200A)
			|| Code == 0x2028 || Code == 0x2029 || Code == 0x205F || Code == 0x3000 || Code == 0x85;
	}

	/** Numeric value of a decimal digit; the caller checks IsDigit first. */
	static constexpr int32 ConvertCharDigitToInt(CharType Char) { return static_cast<int32>(Char) - static_cast<int32>('0'); }
};

using FChar = TChar<TCHAR>;
using FCharWide = TChar<WIDECHAR>;
using FCharAnsi = TChar<ANSICHAR>;
