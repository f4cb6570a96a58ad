#include "Misc/CString.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace UE::Core::Private::CStringParse
{
	template <typename CharType>
	const CharType* SkipWhitespace(const CharType* Cursor)
	{
		while (*Cursor && TChar<CharType>::IsWhitespace(*Cursor) && static_cast<uint32>(*Cursor) < 0x80)
		{
			++Cursor;
		}
		return Cursor;
	}

	template <typename CharType>
	int32 DigitValue(CharType Char)
	{
		if (Char >= CharType('0') && Char <= CharType('9'))
		{
			return static_cast<int32>(Char - CharType('0'));
		}
		if (Char >= CharType('a') && Char <= CharType('z'))
		{
			return static_cast<int32>(Char - CharType('a')) + 10;
		}
		if (Char >= CharType('A') && Char <= CharType('Z'))
		{
			return static_cast<int32>(Char - CharType('A')) + 10;
		}
		return 99;
	}

	/** The strtoull grammar: magnitude saturated at uint64 max, sign and where parsing stopped reported apart. */
	template <typename CharType>
	struct FIntegerScan
	{
		uint64 Magnitude = 0;
		bool bNegative = false;
		bool bOverflow = false;
		const CharType* End = nullptr;
	};

	template <typename CharType>
	FIntegerScan<CharType> ScanInteger(const CharType* Start, int32 Base)
	{
		FIntegerScan<CharType> Scan;
		Scan.End = Start;
		if (Base < 0 || Base == 1 || Base > 36)
		{
			return Scan;
		}

		const CharType* Cursor = SkipWhitespace(Start);
		if (*Cursor == CharType('-') || *Cursor == CharType('+'))
		{
			Scan.bNegative = *Cursor == CharType('-');
			++Cursor;
		}

		const bool bHexPrefix = Cursor[0] == CharType('0') && (Cursor[1] == CharType('x') || Cursor[1] == CharType('X')) && DigitValue(Cursor[2]) < 16;
		if ((Base == 0 || Base == 16) && bHexPrefix)
		{
			Cursor += 2;
			Base = 16;
		}
		else if (Base == 0)
		{
			Base = Cursor[0] == CharType('0') ? 8 : 10;
		}

		const CharType* DigitsStart = Cursor;
		for (; DigitValue(*Cursor) < Base; ++Cursor)
		{
			const uint64 Digit = static_cast<uint64>(DigitValue(*Cursor));
			if (Scan.Magnitude > (std::numeric_limits<uint64>::max() - Digit) / static_cast<uint64>(Base))
			{
				Scan.bOverflow = true;
				Scan.Magnitude = std::numeric_limits<uint64>::max();
			}
			else if (!Scan.bOverflow)
			{
				Scan.Magnitude = Scan.Magnitude * static_cast<uint64>(Base) + Digit;
			}
		}
		if (Cursor != DigitsStart)
		{
			Scan.End = Cursor;
		}
		return Scan;
	}

	template <typename SignedType, typename CharType>
	SignedType ToSaturatedSigned(const FIntegerScan<CharType>& Scan)
	{
		constexpr uint64 MaxPositive = static_cast<uint64>(std::numeric_limits<SignedType>::max());
		if (Scan.bNegative)
		{
			if (Scan.Magnitude > MaxPositive)
			{
				return std::numeric_limits<SignedType>::min();
			}
			return static_cast<SignedType>(-static_cast<int64>(Scan.Magnitude));
		}
		return Scan.Magnitude > MaxPositive ? std::numeric_limits<SignedType>::max() : static_cast<SignedType>(Scan.Magnitude);
	}

	template <typename CharType>
	void SetEnd(CharType** End, const CharType* Where)
	{
		if (End)
		{
			*End = const_cast<CharType*>(Where);
		}
	}

	/**
	 * The strtod grammar without the locale: optional sign, decimal or 0x-hex mantissa, exponent,
	 * "inf"/"infinity"/"nan". Out-of-range values become infinity or zero, as strtod gives them.
	 */
	template <typename CharType>
	double ScanDouble(const CharType* Start, const CharType** OutEnd)
	{
		*OutEnd = Start;
		const CharType* Cursor = SkipWhitespace(Start);

		// Copy the plausible characters to a narrow buffer; anything beyond ASCII ends the number.
		char Buffer[512];
		int32 Length = 0;
		while (Length < static_cast<int32>(sizeof(Buffer)) - 1)
		{
			const uint32 Code = static_cast<uint32>(static_cast<std::make_unsigned_t<CharType>>(Cursor[Length]));
			const bool bPlausible = (Code >= '0' && Code <= '9') || (Code >= 'a' && Code <= 'z') || (Code >= 'A' && Code <= 'Z')
				|| Code == '.' || Code == '+' || Code == '-' || Code == '(' || Code == ')' || Code == '_';
			if (Code == 0 || !bPlausible)
			{
				break;
			}
			Buffer[Length++] = static_cast<char>(Code);
		}
		Buffer[Length] = 0;

		const char* Begin = Buffer;
		const char* const BufferEnd = Buffer + Length;
		bool bNegative = false;
		if (Begin < BufferEnd && (*Begin == '+' || *Begin == '-'))
		{
			bNegative = *Begin == '-';
			++Begin;
		}
		if (Begin < BufferEnd && (*Begin == '+' || *Begin == '-'))
		{
			return 0.0;
		}

		std::chars_format Format = std::chars_format::general;
		const char* Mantissa = Begin;
		if (BufferEnd - Begin > 2 && Begin[0] == '0' && (Begin[1] == 'x' || Begin[1] == 'X') && DigitValue(Begin[2]) < 16)
		{
			Format = std::chars_format::hex;
			Mantissa = Begin + 2;
		}
		else if (BufferEnd - Begin > 2 && Begin[0] == '0' && (Begin[1] == 'x' || Begin[1] == 'X') && Begin[2] == '.' && BufferEnd - Begin > 3 && DigitValue(Begin[3]) < 16)
		{
			Format = std::chars_format::hex;
			Mantissa = Begin + 2;
		}

		double Value = 0.0;
		const std::from_chars_result Result = std::from_chars(Mantissa, BufferEnd, Value, Format);
		if (Result.ptr == Mantissa)
		{
			if (Format == std::chars_format::hex)
			{
				// "0x" with nothing usable after it reads as the number 0, ending after the '0'.
				*OutEnd = Cursor + (Begin - Buffer) + 1;
				return bNegative ? -0.0 : 0.0;
			}
			return 0.0;
		}
		if (Result.ec == std::errc::result_out_of_range)
		{
			// Decide between overflow and underflow from the digits: a negative exponent or an
			// all-zero integer part means the value is too small, anything else too large.
			bool bTooSmall = false;
			const char* Exponent = nullptr;
			for (const char* Scan = Mantissa; Scan < Result.ptr; ++Scan)
			{
				if ((Format == std::chars_format::general && (*Scan == 'e' || *Scan == 'E')) || (Format == std::chars_format::hex && (*Scan == 'p' || *Scan == 'P')))
				{
					Exponent = Scan + 1;
					break;
				}
			}
			if (Exponent)
			{
				bTooSmall = *Exponent == '-';
			}
			else
			{
				bTooSmall = true;
				for (const char* Scan = Mantissa; Scan < Result.ptr && *Scan != '.'; ++Scan)
				{
					if (*Scan != '0')
					{
						bTooSmall = false;
						break;
					}
				}
			}
			Value = bTooSmall ? 0.0 : std::numeric_limits<double>::infinity();
		}
		*OutEnd = Cursor + (Result.ptr - Buffer);
		return bNegative ? -Value : Value;
	}
}

using namespace UE::Core::Private::CStringParse;

template <typename T>
int32 TCString<T>::Atoi(const CharType* String)
{
	return Strtoi(String, nullptr, 10);
}

template <typename T>
int64 TCString<T>::Atoi64(const CharType* String)
{
	return Strtoi64(String, nullptr, 10);
}

template <typename T>
float TCString<T>::Atof(const CharType* String)
{
	return static_cast<float>(Atod(String));
}

template <typename T>
double TCString<T>::Atod(const CharType* String)
{
	return Strtod(String, nullptr);
}

template <typename T>
int32 TCString<T>::Strtoi(const CharType* Start, CharType** End, int32 Base)
{
	const FIntegerScan<CharType> Scan = ScanInteger(Start, Base);
	SetEnd(End, Scan.End);
	return ToSaturatedSigned<int32>(Scan);
}

template <typename T>
int64 TCString<T>::Strtoi64(const CharType* Start, CharType** End, int32 Base)
{
	const FIntegerScan<CharType> Scan = ScanInteger(Start, Base);
	SetEnd(End, Scan.End);
	return ToSaturatedSigned<int64>(Scan);
}

template <typename T>
uint64 TCString<T>::Strtoui64(const CharType* Start, CharType** End, int32 Base)
{
	const FIntegerScan<CharType> Scan = ScanInteger(Start, Base);
	SetEnd(End, Scan.End);
	if (Scan.bOverflow)
	{
		return std::numeric_limits<uint64>::max();
	}
	// strtoull negates in unsigned arithmetic: "-1" reads as the largest value.
	return Scan.bNegative ? (~Scan.Magnitude + 1) : Scan.Magnitude;
}

template <typename T>
float TCString<T>::Strtof(const CharType* Start, CharType** End)
{
	return static_cast<float>(Strtod(Start, End));
}

template <typename T>
double TCString<T>::Strtod(const CharType* Start, CharType** End)
{
	const CharType* Stop = Start;
	const double Value = ScanDouble(Start, &Stop);
	SetEnd(End, Stop);
	return Value;
}

template <typename T>
bool TCString<T>::ToBool(const CharType* String)
{
	static constexpr CharType True[] = { 'T', 'r', 'u', 'e', 0 };
	static constexpr CharType Yes[] = { 'Y', 'e', 's', 0 };
	static constexpr CharType On[] = { 'O', 'n', 0 };
	static constexpr CharType False[] = { 'F', 'a', 'l', 's', 'e', 0 };
	static constexpr CharType No[] = { 'N', 'o', 0 };
	static constexpr CharType Off[] = { 'O', 'f', 'f', 0 };
	if (Stricmp(String, True) == 0 || Stricmp(String, Yes) == 0 || Stricmp(String, On) == 0)
	{
		return true;
	}
	if (Stricmp(String, False) == 0 || Stricmp(String, No) == 0 || Stricmp(String, Off) == 0)
	{
		return false;
	}
	return Atoi(String) != 0;
}

template struct TCString<TCHAR>;
template struct TCString<ANSICHAR>;
template struct TCString<UTF8CHAR>;
