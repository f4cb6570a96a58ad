#include "Containers/UnrealString.h"

#include "Containers/StringConv.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string>

// The runtime half of FString::Printf. The compile-time check has already matched every
// specifier with an argument of the right kind; this side still treats each argument by what it
// is, so even a format assembled some other way prints something sensible and never reads
// outside its arguments.

namespace
{
	using UE::Core::Private::FormatString::EArgKind;
	using UE::Core::Private::FormatString::FArg;

	// Widths and precisions beyond this are clamped: they only arise from hostile input.
	constexpr int32 MaxFieldWidth = 4096;

	struct FSpec
	{
		bool bLeft = false;
		bool bPlus = false;
		bool bSpace = false;
		bool bAlternate = false;
		bool bZero = false;
		int32 Width = 0;
		int32 Precision = -1;
		int32 ShortCount = 0;
		TCHAR Conversion = 0;
	};

	void AppendAscii(std::u16string& Out, const char* Text, SIZE_T Length)
	{
		for (SIZE_T Index = 0; Index < Length; ++Index)
		{
			Out.push_back(static_cast<char16_t>(static_cast<unsigned char>(Text[Index])));
		}
	}

	/** Writes Sign + Prefix + Body padded to Spec.Width; zero padding goes between prefix and body. */
	void EmitPadded(std::u16string& Out, const FSpec& Spec, std::u16string_view Prefix, std::u16string_view Body, bool bAllowZeroPad)
	{
		const int32 Length = static_cast<int32>(Prefix.size() + Body.size());
		const int32 Padding = Spec.Width > Length ? Spec.Width - Length : 0;
		if (Spec.bLeft)
		{
			Out.append(Prefix);
			Out.append(Body);
			Out.append(static_cast<SIZE_T>(Padding), u' ');
		}
		else if (Spec.bZero && bAllowZeroPad)
		{
			Out.append(Prefix);
			Out.append(static_cast<SIZE_T>(Padding), u'0');
			Out.append(Body);
		}
		else
		{
			Out.append(static_cast<SIZE_T>(Padding), u' ');
			Out.append(Prefix);
			Out.append(Body);
		}
	}

	int64 AsSigned(const FArg& Arg)
	{
		switch (Arg.Kind)
		{
		case EArgKind::SignedInt:
			return Arg.Signed;
		case EArgKind::UnsignedInt:
			// Read the bits at the argument's own width, as printf reads an unsigned value given to %d.
			switch (Arg.Size)
			{
			case 1: return static_cast<int8>(Arg.Unsigned);
			case 2: return static_cast<int16>(Arg.Unsigned);
			case 4: return static_cast<int32>(Arg.Unsigned);
			default: return static_cast<int64>(Arg.Unsigned);
			}
		case EArgKind::Float:
			if (std::isfinite(Arg.Float) && std::fabs(Arg.Float) < 9.2e18)
			{
				return static_cast<int64>(Arg.Float);
			}
			return 0;
		default:
			return 0;
		}
	}

	uint64 AsUnsigned(const FArg& Arg)
	{
		switch (Arg.Kind)
		{
		case EArgKind::UnsignedInt:
			return Arg.Unsigned;
		case EArgKind::SignedInt:
			// Two's complement at the argument's width: (int32)-1 prints as ffffffff with %x.
			switch (Arg.Size)
			{
			case 1: return static_cast<uint8>(Arg.Signed);
			case 2: return static_cast<uint16>(Arg.Signed);
			case 4: return static_cast<uint32>(Arg.Signed);
			default: return static_cast<uint64>(Arg.Signed);
			}
		case EArgKind::Float:
			return static_cast<uint64>(AsSigned(Arg));
		case EArgKind::Pointer:
		case EArgKind::TCharPointer:
		case EArgKind::AnsiPointer:
		case EArgKind::Utf8Pointer:
			return static_cast<uint64>(reinterpret_cast<UPTRINT>(Arg.Pointer));
		default:
			return 0;
		}
	}

	double AsDouble(const FArg& Arg)
	{
		switch (Arg.Kind)
		{
		case EArgKind::Float: return Arg.Float;
		case EArgKind::SignedInt: return static_cast<double>(Arg.Signed);
		case EArgKind::UnsignedInt: return static_cast<double>(Arg.Unsigned);
		default: return 0.0;
		}
	}

	void FormatInteger(std::u16string& Out, const FSpec& Spec, const FArg& Arg)
	{
		const TCHAR Conversion = Spec.Conversion;
		const bool bSigned = Conversion == u'd' || Conversion == u'i';
		uint64 Magnitude = 0;
		bool bNegative = false;
		if (bSigned)
		{
			int64 Value = AsSigned(Arg);
			if (Spec.ShortCount == 1)
			{
				Value = static_cast<int16>(Value);
			}
			else if (Spec.ShortCount >= 2)
			{
				Value = static_cast<int8>(Value);
			}
			bNegative = Value < 0;
			Magnitude = bNegative ? (~static_cast<uint64>(Value) + 1) : static_cast<uint64>(Value);
		}
		else
		{
			Magnitude = AsUnsigned(Arg);
			if (Spec.ShortCount == 1)
			{
				Magnitude = static_cast<uint16>(Magnitude);
			}
			else if (Spec.ShortCount >= 2)
			{
				Magnitude = static_cast<uint8>(Magnitude);
			}
		}

		const int32 Base = (Conversion == u'x' || Conversion == u'X') ? 16 : (Conversion == u'o' ? 8 : 10);
		const char* Digits = Conversion == u'X' ? "0123456789ABCDEF" : "0123456789abcdef";
		const bool bWasZero = Magnitude == 0;
		char16_t Buffer[80];
		int32 At = 80;
		if (!(Magnitude == 0 && Spec.Precision == 0))
		{
			do
			{
				Buffer[--At] = static_cast<char16_t>(Digits[Magnitude % static_cast<uint64>(Base)]);
				Magnitude /= static_cast<uint64>(Base);
			} while (Magnitude != 0);
		}
		int32 NumDigits = 80 - At;
		const int32 MinDigits = Spec.Precision > 0 ? (Spec.Precision < 64 ? Spec.Precision : 64) : 0;
		while (NumDigits < MinDigits)
		{
			Buffer[--At] = u'0';
			++NumDigits;
		}
		if (Spec.bAlternate && Base == 8 && Buffer[At] != u'0')
		{
			Buffer[--At] = u'0';
		}

		char16_t Prefix[3] = {};
		int32 PrefixLen = 0;
		if (bSigned)
		{
			if (bNegative)
			{
				Prefix[PrefixLen++] = u'-';
			}
			else if (Spec.bPlus)
			{
				Prefix[PrefixLen++] = u'+';
			}
			else if (Spec.bSpace)
			{
				Prefix[PrefixLen++] = u' ';
			}
		}
		else if (Spec.bAlternate && Base == 16 && !bWasZero)
		{
			Prefix[PrefixLen++] = u'0';
			Prefix[PrefixLen++] = Conversion == u'X' ? u'X' : u'x';
		}
		// printf ignores the 0 flag once a precision is given for an integer.
		EmitPadded(Out, Spec, std::u16string_view(Prefix, static_cast<SIZE_T>(PrefixLen)), std::u16string_view(Buffer + At, static_cast<SIZE_T>(80 - At)), Spec.Precision < 0);
	}

	void FormatFloat(std::u16string& Out, const FSpec& Spec, double Value)
	{
		const TCHAR Conversion = Spec.Conversion;
		const bool bUpper = Conversion == u'F' || Conversion == u'E' || Conversion == u'G' || Conversion == u'A';
		const bool bNegative = std::signbit(Value);
		const double Magnitude = std::fabs(Value);

		std::string Body;
		if (std::isnan(Value))
		{
			Body = "nan";
		}
		else if (std::isinf(Value))
		{
			Body = "inf";
		}
		else if (Spec.bAlternate && Conversion != u'a' && Conversion != u'A')
		{
			// '#' keeps the point and the zeros; the C library spells that out. Only digits,
			// '.', 'e' and signs come back, so the locale's decimal point is not a concern here
			// beyond what "C" gives by default.
			char Format[16];
			std::snprintf(Format, sizeof(Format), "%%#.%d%c", Spec.Precision < 0 ? 6 : Spec.Precision, static_cast<char>(Conversion | 0x20));
			char Buffer[1100];
			const int Written = std::snprintf(Buffer, sizeof(Buffer), Format, Magnitude);
			Body.assign(Buffer, Written > 0 ? static_cast<SIZE_T>(Written < static_cast<int>(sizeof(Buffer)) ? Written : static_cast<int>(sizeof(Buffer)) - 1) : 0);
		}
		else
		{
			const int32 Precision = Spec.Precision < 0 ? 6 : (Spec.Precision > 1000 ? 1000 : Spec.Precision);
			std::chars_format Format = std::chars_format::fixed;
			switch (Conversion)
			{
			case u'e': case u'E': Format = std::chars_format::scientific; break;
			case u'g': case u'G': Format = std::chars_format::general; break;
			case u'a': case u'A': Format = std::chars_format::hex; break;
			default: break;
			}
			// Large enough for any double in fixed notation with the clamped precision.
			char Buffer[1400];
			std::to_chars_result Result;
			if ((Conversion == u'a' || Conversion == u'A') && Spec.Precision < 0)
			{
				Result = std::to_chars(Buffer, Buffer + sizeof(Buffer), Magnitude, Format);
			}
			else
			{
				Result = std::to_chars(Buffer, Buffer + sizeof(Buffer), Magnitude, Format, (Format == std::chars_format::general && Precision == 0) ? 1 : Precision);
			}
			Body.assign(Buffer, Result.ec == std::errc() ? static_cast<SIZE_T>(Result.ptr - Buffer) : 0);
			if (Format == std::chars_format::hex)
			{
				Body.insert(0, "0x");
			}
		}
		if (bUpper)
		{
			for (char& Char : Body)
			{
				Char = (Char >= 'a' && Char <= 'z') ? static_cast<char>(Char - 32) : Char;
			}
		}

		char16_t Prefix[1] = {};
		SIZE_T PrefixLen = 0;
		if (bNegative)
		{
			Prefix[PrefixLen++] = u'-';
		}
		else if (Spec.bPlus)
		{
			Prefix[PrefixLen++] = u'+';
		}
		else if (Spec.bSpace)
		{
			Prefix[PrefixLen++] = u' ';
		}
		std::u16string WideBody;
		AppendAscii(WideBody, Body.data(), Body.size());
		EmitPadded(Out, Spec, std::u16string_view(Prefix, PrefixLen), WideBody, std::isfinite(Value));
	}

	void FormatCharacter(std::u16string& Out, const FSpec& Spec, const FArg& Arg)
	{
		const uint64 Code = AsUnsigned(Arg);
		std::u16string Body;
		if (Code == 0)
		{
			// A NUL would end the string in the engine's buffer; we leave it out instead of
			// keeping an embedded terminator.
		}
		else if (Code < 0x10000)
		{
			Body.push_back(static_cast<char16_t>(Code));
		}
		else if (Code <= 0x10FFFF)
		{
			Body.push_back(static_cast<char16_t>(0xD800 + ((Code - 0x10000) >> 10)));
			Body.push_back(static_cast<char16_t>(0xDC00 + ((Code - 0x10000) & 0x3FF)));
		}
		else
		{
			Body.push_back(u'\xFFFD');
		}
		EmitPadded(Out, Spec, std::u16string_view(), Body, false);
	}

	void FormatString(std::u16string& Out, const FSpec& Spec, const FArg& Arg)
	{
		std::u16string Converted;
		std::u16string_view Body;
		const int32 Limit = Spec.Precision;
		switch (Arg.Kind)
		{
		case EArgKind::TCharPointer:
			if (Arg.TCharString)
			{
				const int32 Length = Limit >= 0 ? FCString::Strnlen(Arg.TCharString, Limit) : FCString::Strlen(Arg.TCharString);
				Body = std::u16string_view(Arg.TCharString, static_cast<SIZE_T>(Length));
			}
			else
			{
				Body = u"(null)";
			}
			break;
		case EArgKind::AnsiPointer:
			if (Arg.AnsiString)
			{
				const int32 Length = Limit >= 0 ? FCStringAnsi::Strnlen(Arg.AnsiString, Limit) : FCStringAnsi::Strlen(Arg.AnsiString);
				StringConv::AppendBytesAsUtf16(Converted, Arg.AnsiString, Length);
				Body = Converted;
			}
			else
			{
				Body = u"(null)";
			}
			break;
		case EArgKind::Utf8Pointer:
			if (Arg.Utf8String)
			{
				const char* Bytes = reinterpret_cast<const char*>(Arg.Utf8String);
				const int32 Length = Limit >= 0 ? FCStringAnsi::Strnlen(Bytes, Limit) : FCStringAnsi::Strlen(Bytes);
				StringConv::AppendUtf8AsUtf16(Converted, Bytes, Length);
				Body = Converted;
			}
			else
			{
				Body = u"(null)";
			}
			break;
		case EArgKind::NullPointer:
		case EArgKind::None:
			Body = u"(null)";
			break;
		default:
		{
			// Not a string at all: show the value rather than reinterpret it.
			FSpec Plain;
			Plain.Conversion = Arg.Kind == EArgKind::Float ? u'g' : (Arg.Kind == EArgKind::UnsignedInt ? u'u' : u'd');
			if (Arg.Kind == EArgKind::Float)
			{
				FormatFloat(Converted, Plain, Arg.Float);
			}
			else
			{
				FormatInteger(Converted, Plain, Arg);
			}
			Body = Converted;
			break;
		}
		}
		EmitPadded(Out, Spec, std::u16string_view(), Body, false);
	}

	void FormatPointer(std::u16string& Out, const FSpec& Spec, const FArg& Arg)
	{
		const uint64 Address = AsUnsigned(Arg);
		if (Address == 0)
		{
			EmitPadded(Out, Spec, std::u16string_view(), u"(nil)", false);
			return;
		}
		FSpec Hex = Spec;
		Hex.Conversion = u'x';
		Hex.bAlternate = true;
		FArg Value;
		Value.Kind = EArgKind::UnsignedInt;
		Value.Size = 8;
		Value.Unsigned = Address;
		FormatInteger(Out, Hex, Value);
	}

	int32 ReadNumber(const TCHAR*& Cursor)
	{
		int64 Value = 0;
		while (*Cursor >= u'0' && *Cursor <= u'9')
		{
			Value = Value * 10 + (*Cursor - u'0');
			if (Value > MaxFieldWidth)
			{
				Value = MaxFieldWidth;
			}
			++Cursor;
		}
		return static_cast<int32>(Value);
	}
}

void FString::AppendFormatted(FString& Out, const TCHAR* Fmt, const FArg* Args, int32 NumArgs)
{
	if (!Fmt)
	{
		return;
	}
	std::u16string& Result = Out.Data;
	int32 NextArg = 0;
	auto TakeArg = [&]() -> FArg
	{
		return NextArg < NumArgs ? Args[NextArg++] : FArg();
	};

	const TCHAR* Cursor = Fmt;
	while (*Cursor)
	{
		const TCHAR* Literal = Cursor;
		while (*Cursor && *Cursor != u'%')
		{
			++Cursor;
		}
		Result.append(Literal, static_cast<SIZE_T>(Cursor - Literal));
		if (!*Cursor)
		{
			break;
		}

		const TCHAR* SpecStart = Cursor++;
		if (*Cursor == u'%')
		{
			Result.push_back(u'%');
			++Cursor;
			continue;
		}

		FSpec Spec;
		for (;; ++Cursor)
		{
			if (*Cursor == u'-') { Spec.bLeft = true; }
			else if (*Cursor == u'+') { Spec.bPlus = true; }
			else if (*Cursor == u' ') { Spec.bSpace = true; }
			else if (*Cursor == u'#') { Spec.bAlternate = true; }
			else if (*Cursor == u'0') { Spec.bZero = true; }
			else { break; }
		}
		if (*Cursor == u'*')
		{
			const int64 Width = AsSigned(TakeArg());
			if (Width < 0)
			{
				Spec.bLeft = true;
				Spec.Width = static_cast<int32>(-Width > MaxFieldWidth ? MaxFieldWidth : -Width);
			}
			else
			{
				Spec.Width = static_cast<int32>(Width > MaxFieldWidth ? MaxFieldWidth : Width);
			}
			++Cursor;
		}
		else
		{
			Spec.Width = ReadNumber(Cursor);
		}
		if (*Cursor == u'.')
		{
			++Cursor;
			if (*Cursor == u'*')
			{
				const int64 Precision = AsSigned(TakeArg());
				// A negative precision from '*' counts as none, as in C.
				Spec.Precision = Precision < 0 ? -1 : static_cast<int32>(Precision > MaxFieldWidth ? MaxFieldWidth : Precision);
				++Cursor;
			}
			else
			{
				Spec.Precision = ReadNumber(Cursor);
			}
		}
		for (;;)
		{
			if (*Cursor == u'h')
			{
				++Spec.ShortCount;
				++Cursor;
			}
			else if (*Cursor == u'l' || *Cursor == u'L' || *Cursor == u'z' || *Cursor == u'j' || *Cursor == u't' || *Cursor == u'q')
			{
				++Cursor;
			}
			else if (*Cursor == u'I' && ((Cursor[1] == u'6' && Cursor[2] == u'4') || (Cursor[1] == u'3' && Cursor[2] == u'2')))
			{
				Cursor += 3;
			}
			else
			{
				break;
			}
		}

		Spec.Conversion = *Cursor;
		if (!Spec.Conversion)
		{
			// A dangling specifier is printed as written.
			Result.append(SpecStart, static_cast<SIZE_T>(Cursor - SpecStart));
			break;
		}
		++Cursor;

		switch (Spec.Conversion)
		{
		case u'd': case u'i': case u'u': case u'o': case u'x': case u'X':
			FormatInteger(Result, Spec, TakeArg());
			break;
		case u'f': case u'F': case u'e': case u'E': case u'g': case u'G': case u'a': case u'A':
			FormatFloat(Result, Spec, AsDouble(TakeArg()));
			break;
		case u'c': case u'C':
			FormatCharacter(Result, Spec, TakeArg());
			break;
		case u's': case u'S':
			FormatString(Result, Spec, TakeArg());
			break;
		case u'p':
			FormatPointer(Result, Spec, TakeArg());
			break;
		case u'n':
			TakeArg();
			break;
		default:
			// Unknown conversions are copied through untouched.
			Result.append(SpecStart, static_cast<SIZE_T>(Cursor - SpecStart));
			break;
		}
	}
}
