#include "Math/Color.h"

#include "Misc/ParseValue.h"

#include <array>
#include <cmath>

using UE::Core::Private::ParseValue;

namespace
{
	// The conversion tables are built from their curves on first use rather than typed in.
	// Each entry is the nearest float to the curve at Index / 255.
	struct FColorTables
	{
		float SRGBToLinear[256];
		float Pow22ToLinear[256];

		FColorTables()
		{
			for (int32 Index = 0; Index < 256; ++Index)
			{
				const double Encoded = double(Index) / 255.0;
				SRGBToLinear[Index] = float(Encoded > 0.04045 ? std::pow(Encoded * (1.0 / 1.055) + 0.0521327, 2.4) : Encoded * (1.0 / 12.92));
				Pow22ToLinear[Index] = float(std::pow(Encoded, 2.2));
			}
		}
	};

	const FColorTables& GetColorTables()
	{
		static const FColorTables Tables;
		return Tables;
	}

	// Linear [0, 1] to an sRGB byte on the exact curve, rounding to nearest. Values outside the
	// range clamp first and NaN becomes 0.
	uint8 LinearToSRGBByte(float Linear)
	{
		const double Clamped = double(FLinearColor::Clamp01NansTo0(Linear));
		const double Encoded = Clamped <= 0.0031308 ? Clamped * 12.92 : 1.055 * std::pow(Clamped, 1.0 / 2.4) - 0.055;
		return uint8(FMath::Clamp(int32(Encoded * 255.0 + 0.5), 0, 255));
	}

	uint8 QuantizeUnit(float Value, float Bias)
	{
		return uint8(Bias + FLinearColor::Clamp01NansTo0(Value) * 255.f);
	}

	// A character that is not a hex digit reads as 0, as the engine's FParse::HexDigit does.
	int32 HexDigitValue(TCHAR Char)
	{
		if (Char >= TEXT('0') && Char <= TEXT('9'))
		{
			return Char - TEXT('0');
		}
		if (Char >= TEXT('a') && Char <= TEXT('f'))
		{
			return Char - TEXT('a') + 10;
		}
		if (Char >= TEXT('A') && Char <= TEXT('F'))
		{
			return Char - TEXT('A') + 10;
		}
		return 0;
	}

	uint8 HexPair(const FString& Text, int32 Index)
	{
		return uint8((HexDigitValue(Text[Index]) << 4) + HexDigitValue(Text[Index + 1]));
	}
}

const FLinearColor FLinearColor::White(1.f, 1.f, 1.f);
const FLinearColor FLinearColor::Gray(0.5f, 0.5f, 0.5f);
const FLinearColor FLinearColor::Black(0, 0, 0);
const FLinearColor FLinearColor::Transparent(0, 0, 0, 0);
const FLinearColor FLinearColor::Red(1.f, 0, 0);
const FLinearColor FLinearColor::Green(0, 1.f, 0);
const FLinearColor FLinearColor::Blue(0, 0, 1.f);
const FLinearColor FLinearColor::Yellow(1.f, 1.f, 0);

const FColor FColor::White(255, 255, 255);
const FColor FColor::Black(0, 0, 0);
const FColor FColor::Transparent(0, 0, 0, 0);
const FColor FColor::Red(255, 0, 0);
const FColor FColor::Green(0, 255, 0);
const FColor FColor::Blue(0, 0, 255);
const FColor FColor::Yellow(255, 255, 0);
const FColor FColor::Cyan(0, 255, 255);
const FColor FColor::Magenta(255, 0, 255);
const FColor FColor::Orange(243, 156, 18);
const FColor FColor::Purple(169, 7, 228);
const FColor FColor::Turquoise(26, 188, 156);
const FColor FColor::Silver(189, 195, 199);
const FColor FColor::Emerald(46, 204, 113);

FLinearColor::FLinearColor(const FColor& Color)
{
	const FColorTables& Tables = GetColorTables();
	R = Tables.SRGBToLinear[Color.R];
	G = Tables.SRGBToLinear[Color.G];
	B = Tables.SRGBToLinear[Color.B];
	A = float(Color.A) * (1.0f / 255.0f);
}

FLinearColor FLinearColor::FromPow22Color(const FColor& Color)
{
	const FColorTables& Tables = GetColorTables();
	return FLinearColor(Tables.Pow22ToLinear[Color.R], Tables.Pow22ToLinear[Color.G], Tables.Pow22ToLinear[Color.B], float(Color.A) * (1.0f / 255.0f));
}

FColor FLinearColor::QuantizeRound() const
{
	return FColor(QuantizeUnit(R, 0.5f), QuantizeUnit(G, 0.5f), QuantizeUnit(B, 0.5f), QuantizeUnit(A, 0.5f));
}

FColor FLinearColor::QuantizeFloor() const
{
	return FColor(QuantizeUnit(R, 0.0f), QuantizeUnit(G, 0.0f), QuantizeUnit(B, 0.0f), QuantizeUnit(A, 0.0f));
}

FColor FLinearColor::ToFColorSRGB() const
{
	return FColor(LinearToSRGBByte(R), LinearToSRGBByte(G), LinearToSRGBByte(B), QuantizeUnit(A, 0.5f));
}

FColor FLinearColor::ToFColor(const bool bSRGB) const
{
	return bSRGB ? ToFColorSRGB() : QuantizeRound();
}

FLinearColor FLinearColor::LinearRGBToHSV() const
{
	const float RGBMin = FMath::Min3(R, G, B);
	const float RGBMax = FMath::Max3(R, G, B);
	const float RGBRange = RGBMax - RGBMin;
	if (RGBMax <= 0.f)
	{
		return FLinearColor(0.f, 0.f, 0.f, A);
	}

	float Hue = 0.0f;
	if (RGBMax != RGBMin)
	{
		if (RGBMax == R)
		{
			Hue = FMath::Fmod((((G - B) / RGBRange) * 60.0f) + 360.0f, 360.0f);
		}
		else if (RGBMax == G)
		{
			Hue = (((B - R) / RGBRange) * 60.0f) + 120.0f;
		}
		else
		{
			Hue = (((R - G) / RGBRange) * 60.0f) + 240.0f;
		}
	}
	return FLinearColor(Hue, RGBRange / RGBMax, RGBMax, A);
}

FLinearColor FLinearColor::HSVToLinearRGB() const
{
	float Hue = std::fmod(R, 360.f);
	if (Hue < 0.f || !FMath::IsFinite(Hue))
	{
		Hue = FMath::IsFinite(Hue) ? Hue + 360.f : 0.f;
	}
	const float Saturation = FMath::Clamp(G, 0.f, 1.f);
	const float Value = B;

	const float HDiv60 = Hue / 60.0f;
	const int32 Sector = FMath::Clamp(int32(HDiv60), 0, 5);
	const float Fraction = HDiv60 - float(int32(HDiv60));

	const float P = Value * (1.0f - Saturation);
	const float Q = Value * (1.0f - (Fraction * Saturation));
	const float T = Value * (1.0f - ((1.0f - Fraction) * Saturation));
	switch (Sector)
	{
	case 0: return FLinearColor(Value, T, P, A);
	case 1: return FLinearColor(Q, Value, P, A);
	case 2: return FLinearColor(P, Value, T, A);
	case 3: return FLinearColor(P, Q, Value, A);
	case 4: return FLinearColor(T, P, Value, A);
	default: return FLinearColor(Value, P, Q, A);
	}
}

FLinearColor FLinearColor::MakeFromHSV8(uint8 H, uint8 S, uint8 V)
{
	return FLinearColor(float(H) * (360.0f / 256.0f), float(S) / 255.0f, float(V) / 255.0f).HSVToLinearRGB();
}

FString FLinearColor::ToString() const
{
	return FString::Printf(TEXT("(R=%f,G=%f,B=%f,A=%f)"), double(R), double(G), double(B), double(A));
}

bool FLinearColor::InitFromString(const FString& InSourceString)
{
	R = G = B = 0.f;
	A = 1.f;
	const bool bSuccessful = ParseValue(*InSourceString, TEXT("R="), R) && ParseValue(*InSourceString, TEXT("G="), G)
		&& ParseValue(*InSourceString, TEXT("B="), B);
	// Alpha is optional and does not decide success.
	ParseValue(*InSourceString, TEXT("A="), A);
	return bSuccessful;
}

FColor FColor::FromHex(const FString& HexString)
{
	const int32 Start = (!HexString.IsEmpty() && HexString[0] == TEXT('#')) ? 1 : 0;
	const int32 DigitCount = HexString.Len() - Start;
	if (DigitCount == 3)
	{
		const int32 RValue = HexDigitValue(HexString[Start]);
		const int32 GValue = HexDigitValue(HexString[Start + 1]);
		const int32 BValue = HexDigitValue(HexString[Start + 2]);
		return FColor(uint8((RValue << 4) + RValue), uint8((GValue << 4) + GValue), uint8((BValue << 4) + BValue), 255);
	}
	if (DigitCount == 6)
	{
		return FColor(HexPair(HexString, Start), HexPair(HexString, Start + 2), HexPair(HexString, Start + 4), 255);
	}
	if (DigitCount == 8)
	{
		return FColor(HexPair(HexString, Start), HexPair(HexString, Start + 2), HexPair(HexString, Start + 4), HexPair(HexString, Start + 6));
	}
	return FColor(ForceInitToZero);
}

FString FColor::ToHex() const
{
	return FString::Printf(TEXT("%02X%02X%02X%02X"), int32(R), int32(G), int32(B), int32(A));
}

FString FColor::ToString() const
{
	return FString::Printf(TEXT("(R=%i,G=%i,B=%i,A=%i)"), int32(R), int32(G), int32(B), int32(A));
}

bool FColor::InitFromString(const FString& InSourceString)
{
	R = G = B = 0;
	A = 255;
	const bool bSuccessful = ParseValue(*InSourceString, TEXT("R="), R) && ParseValue(*InSourceString, TEXT("G="), G)
		&& ParseValue(*InSourceString, TEXT("B="), B);
	ParseValue(*InSourceString, TEXT("A="), A);
	return bSuccessful;
}
