#include "Misc/Guid.h"

#include "HAL/PlatformMisc.h"

namespace
{
	constexpr char Base64Alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
	constexpr char Base36Alphabet[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";

	using uint128 = unsigned __int128;

	void BigEndianBytes(const FGuid& Guid, uint8 (&Bytes)[16])
	{
		for (int32 Part = 0; Part < 4; ++Part)
		{
			const uint32 Value = Guid[Part];
			Bytes[Part * 4 + 0] = static_cast<uint8>(Value >> 24);
			Bytes[Part * 4 + 1] = static_cast<uint8>(Value >> 16);
			Bytes[Part * 4 + 2] = static_cast<uint8>(Value >> 8);
			Bytes[Part * 4 + 3] = static_cast<uint8>(Value);
		}
	}

	int32 Base64Value(TCHAR Char)
	{
		for (int32 Index = 0; Index < 64; ++Index)
		{
			if (Char == static_cast<TCHAR>(Base64Alphabet[Index]))
			{
				return Index;
			}
		}
		return -1;
	}

	uint32 HexValue(const TCHAR* Digits, int32 Count)
	{
		uint32 Value = 0;
		for (int32 Index = 0; Index < Count; ++Index)
		{
			Value = (Value << 4) | TCharToNibble(Digits[Index]);
		}
		return Value;
	}

	/** The 32 hex digits of the hyphenated forms, or false when a separator is out of place. */
	bool CollectHyphenated(const FString& Text, int32 Offset, FString& OutDigits)
	{
		const int32 Hyphens[] = { 8, 13, 18, 23 };
		for (const int32 Hyphen : Hyphens)
		{
			if (Text[Offset + Hyphen] != TCHAR('-'))
			{
				return false;
			}
		}
		OutDigits = Text.Mid(Offset, 8) + Text.Mid(Offset + 9, 4) + Text.Mid(Offset + 14, 4) + Text.Mid(Offset + 19, 4) + Text.Mid(Offset + 24, 12);
		return true;
	}
}

FGuid::FGuid(const FString& InGuidStr)
{
	if (!Parse(InGuidStr, *this))
	{
		Invalidate();
	}
}

uint32& FGuid::operator[](int32 Index)
{
	checkf(Index >= 0 && Index < 4, TEXT("FGuid component index %d outside 0..3"), Index);
	switch (Index)
	{
	case 0: return A;
	case 1: return B;
	case 2: return C;
	default: return D;
	}
}

const uint32& FGuid::operator[](int32 Index) const
{
	return const_cast<FGuid&>(*this)[Index];
}

void FGuid::AppendString(FString& Out, EGuidFormats Format) const
{
	switch (Format)
	{
	case EGuidFormats::DigitsLower:
		Out.Appendf(TEXT("%08x%08x%08x%08x"), A, B, C, D);
		return;
	case EGuidFormats::DigitsWithHyphens:
		Out.Appendf(TEXT("%08X-%04X-%04X-%04X-%04X%08X"), A, B >> 16, B & 0xFFFF, C >> 16, C & 0xFFFF, D);
		return;
	case EGuidFormats::DigitsWithHyphensLower:
		Out.Appendf(TEXT("%08x-%04x-%04x-%04x-%04x%08x"), A, B >> 16, B & 0xFFFF, C >> 16, C & 0xFFFF, D);
		return;
	case EGuidFormats::DigitsWithHyphensInBraces:
		Out.Appendf(TEXT("{%08X-%04X-%04X-%04X-%04X%08X}"), A, B >> 16, B & 0xFFFF, C >> 16, C & 0xFFFF, D);
		return;
	case EGuidFormats::DigitsWithHyphensInParentheses:
		Out.Appendf(TEXT("(%08X-%04X-%04X-%04X-%04X%08X)"), A, B >> 16, B & 0xFFFF, C >> 16, C & 0xFFFF, D);
		return;
	case EGuidFormats::HexValuesInBraces:
		Out.Appendf(TEXT("{0x%08X,0x%04X,0x%04X,{0x%02X,0x%02X,0x%02X,0x%02X,0x%02X,0x%02X,0x%02X,0x%02X}}"),
			A, B >> 16, B & 0xFFFF, C >> 24, (C >> 16) & 0xFF, (C >> 8) & 0xFF, C & 0xFF, D >> 24, (D >> 16) & 0xFF, (D >> 8) & 0xFF, D & 0xFF);
		return;
	case EGuidFormats::UniqueObjectGuid:
		Out.Appendf(TEXT("%08X-%08X-%08X-%08X"), A, B, C, D);
		return;
	case EGuidFormats::Short:
	{
		// Base64 of the big-endian bytes, URL-safe, with the two padding characters dropped.
		uint8 Bytes[16];
		BigEndianBytes(*this, Bytes);
		Out.Reserve(Out.Len() + 22);
		for (int32 Index = 0; Index < 16; Index += 3)
		{
			const uint32 Group = (static_cast<uint32>(Bytes[Index]) << 16)
				| (Index + 1 < 16 ? static_cast<uint32>(Bytes[Index + 1]) << 8 : 0u)
				| (Index + 2 < 16 ? static_cast<uint32>(Bytes[Index + 2]) : 0u);
			const int32 Emitted = Index + 2 < 16 ? 4 : 2;
			for (int32 Sextet = 0; Sextet < Emitted; ++Sextet)
			{
				Out.AppendChar(static_cast<TCHAR>(Base64Alphabet[(Group >> (18 - 6 * Sextet)) & 63]));
			}
		}
		return;
	}
	case EGuidFormats::Base36Encoded:
	{
		uint128 Value = (static_cast<uint128>(A) << 96) | (static_cast<uint128>(B) << 64) | (static_cast<uint128>(C) << 32) | static_cast<uint128>(D);
		TCHAR Digits[25];
		for (int32 Index = 24; Index >= 0; --Index)
		{
			Digits[Index] = static_cast<TCHAR>(Base36Alphabet[static_cast<int32>(Value % 36)]);
			Value /= 36;
		}
		Out.AppendChars(Digits, 25);
		return;
	}
	case EGuidFormats::Digits:
	default:
		Out.Appendf(TEXT("%08X%08X%08X%08X"), A, B, C, D);
		return;
	}
}

FGuid FGuid::NewGuid()
{
	FGuid Result;
	FPlatformMisc::CreateGuid(Result);
	return Result;
}

FGuid FGuid::Combine(const FGuid& GuidA, const FGuid& GuidB)
{
	return FGuid(HashCombine(GuidA.A, GuidB.A), HashCombine(GuidA.B, GuidB.B), HashCombine(GuidA.C, GuidB.C), HashCombine(GuidA.D, GuidB.D));
}

bool FGuid::Parse(const TCHAR* GuidString, FGuid& OutGuid)
{
	return Parse(FString(GuidString), OutGuid);
}

bool FGuid::Parse(const FString& GuidString, FGuid& OutGuid)
{
	switch (GuidString.Len())
	{
	case 32: return ParseExact(GuidString, EGuidFormats::Digits, OutGuid);
	case 36: return ParseExact(GuidString, EGuidFormats::DigitsWithHyphens, OutGuid);
	case 38:
		return ParseExact(GuidString, GuidString[0] == TCHAR('{') ? EGuidFormats::DigitsWithHyphensInBraces : EGuidFormats::DigitsWithHyphensInParentheses, OutGuid);
	case 68: return ParseExact(GuidString, EGuidFormats::HexValuesInBraces, OutGuid);
	case 35: return ParseExact(GuidString, EGuidFormats::UniqueObjectGuid, OutGuid);
	case 22: return ParseExact(GuidString, EGuidFormats::Short, OutGuid);
	case 25: return ParseExact(GuidString, EGuidFormats::Base36Encoded, OutGuid);
	default: return false;
	}
}

bool FGuid::ParseExact(const TCHAR* GuidString, EGuidFormats Format, FGuid& OutGuid)
{
	return ParseExact(FString(GuidString), Format, OutGuid);
}

bool FGuid::ParseExact(const FString& GuidString, EGuidFormats Format, FGuid& OutGuid)
{
	const int32 Length = GuidString.Len();

	if (Format == EGuidFormats::Short)
	{
		if (Length != 22)
		{
			return false;
		}
		uint8 Bytes[16] = {};
		uint32 Bits = 0;
		int32 BitCount = 0;
		int32 Written = 0;
		for (int32 Index = 0; Index < 22; ++Index)
		{
			const int32 Value = Base64Value(GuidString[Index]);
			if (Value < 0)
			{
				return false;
			}
			Bits = (Bits << 6) | static_cast<uint32>(Value);
			BitCount += 6;
			if (BitCount >= 8)
			{
				BitCount -= 8;
				if (Written < 16)
				{
					Bytes[Written++] = static_cast<uint8>(Bits >> BitCount);
				}
				Bits &= (1u << BitCount) - 1;
			}
		}
		OutGuid = FGuid(
			(uint32(Bytes[0]) << 24) | (uint32(Bytes[1]) << 16) | (uint32(Bytes[2]) << 8) | Bytes[3],
			(uint32(Bytes[4]) << 24) | (uint32(Bytes[5]) << 16) | (uint32(Bytes[6]) << 8) | Bytes[7],
			(uint32(Bytes[8]) << 24) | (uint32(Bytes[9]) << 16) | (uint32(Bytes[10]) << 8) | Bytes[11],
			(uint32(Bytes[12]) << 24) | (uint32(Bytes[13]) << 16) | (uint32(Bytes[14]) << 8) | Bytes[15]);
		return true;
	}

	if (Format == EGuidFormats::Base36Encoded)
	{
		if (Length != 25)
		{
			return false;
		}
		// Arithmetic wraps at 128 bits, as the engine's 128-bit integer does for out-of-range text.
		uint128 Value = 0;
		for (int32 Index = 0; Index < 25; ++Index)
		{
			const TCHAR Char = GuidString[Index];
			uint32 Digit;
			if (Char >= TCHAR('0') && Char <= TCHAR('9'))
			{
				Digit = static_cast<uint32>(Char - TCHAR('0'));
			}
			else if (Char >= TCHAR('A') && Char <= TCHAR('Z'))
			{
				Digit = static_cast<uint32>(Char - TCHAR('A')) + 10;
			}
			else
			{
				return false;
			}
			Value = Value * 36 + Digit;
		}
		OutGuid = FGuid(static_cast<uint32>(Value >> 96), static_cast<uint32>(Value >> 64), static_cast<uint32>(Value >> 32), static_cast<uint32>(Value));
		return true;
	}

	FString Digits;
	switch (Format)
	{
	case EGuidFormats::Digits:
	case EGuidFormats::DigitsLower:
		if (Length != 32)
		{
			return false;
		}
		Digits = GuidString;
		break;
	case EGuidFormats::DigitsWithHyphens:
	case EGuidFormats::DigitsWithHyphensLower:
		if (Length != 36 || !CollectHyphenated(GuidString, 0, Digits))
		{
			return false;
		}
		break;
	case EGuidFormats::DigitsWithHyphensInBraces:
	case EGuidFormats::DigitsWithHyphensInParentheses:
	{
		const bool bBraces = Format == EGuidFormats::DigitsWithHyphensInBraces;
		if (Length != 38 || GuidString[0] != (bBraces ? TCHAR('{') : TCHAR('(')) || GuidString[37] != (bBraces ? TCHAR('}') : TCHAR(')'))
			|| !CollectHyphenated(GuidString, 1, Digits))
		{
			return false;
		}
		break;
	}
	case EGuidFormats::HexValuesInBraces:
	{
		if (Length != 68)
		{
			return false;
		}
		// Every fixed character of "{0x........,0x....,0x....,{0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..}}".
		static const char* const Template = "{0x........,0x....,0x....,{0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..}}";
		for (int32 Index = 0; Index < 68; ++Index)
		{
			if (Template[Index] != '.' && GuidString[Index] != static_cast<TCHAR>(Template[Index]))
			{
				return false;
			}
		}
		Digits = GuidString.Mid(3, 8) + GuidString.Mid(14, 4) + GuidString.Mid(21, 4);
		const int32 ByteStarts[] = { 29, 34, 39, 44, 49, 54, 59, 64 };
		for (const int32 Start : ByteStarts)
		{
			Digits += GuidString.Mid(Start, 2);
		}
		break;
	}
	case EGuidFormats::UniqueObjectGuid:
		if (Length != 35 || GuidString[8] != TCHAR('-') || GuidString[17] != TCHAR('-') || GuidString[26] != TCHAR('-'))
		{
			return false;
		}
		Digits = GuidString.Mid(0, 8) + GuidString.Mid(9, 8) + GuidString.Mid(18, 8) + GuidString.Mid(27, 8);
		break;
	default:
		return false;
	}

	if (Digits.Len() != 32)
	{
		return false;
	}
	for (const TCHAR Char : Digits)
	{
		if (!FChar::IsHexDigit(Char))
		{
			return false;
		}
	}
	const TCHAR* Text = *Digits;
	OutGuid = FGuid(HexValue(Text, 8), HexValue(Text + 8, 8), HexValue(Text + 16, 8), HexValue(Text + 24, 8));
	return true;
}
