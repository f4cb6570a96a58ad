#include "Misc/DefaultValueHelper.h"

#include "Math/Color.h"
#include "Math/Rotator.h"
#include "Math/Vector.h"
#include "Math/Vector2D.h"
#include "Misc/Char.h"
#include "Misc/CString.h"
#include "Misc/ParseValue.h"

#include <limits>

namespace
{
	bool IsBlank(TCHAR Char)
	{
		return FChar::IsWhitespace(Char) || FChar::IsLinebreak(Char) || Char == TEXT('\r');
	}

	/** Moves Start past blanks; true when something is left before End. */
	bool SkipBlanks(const TCHAR*& Start, const TCHAR* End)
	{
		while (Start < End && IsBlank(*Start))
		{
			++Start;
		}
		return Start < End;
	}

	bool IsValidInteger(const TCHAR* Start, const TCHAR* End, int32& OutBase)
	{
		if (!SkipBlanks(Start, End))
		{
			return false;
		}
		if (*Start == TEXT('-') || *Start == TEXT('+'))
		{
			++Start;
		}
		if (!SkipBlanks(Start, End))
		{
			return false;
		}

		bool bDigitFound = false;
		OutBase = 10;
		if (*Start == TEXT('0'))
		{
			++Start;
			bDigitFound = true;
			OutBase = 8;
			if (Start < End && (*Start == TEXT('x') || *Start == TEXT('X')))
			{
				++Start;
				bDigitFound = false;
				OutBase = 16;
			}
		}
		while (Start < End && (OutBase == 16 ? FChar::IsHexDigit(*Start) : FChar::IsDigit(*Start)))
		{
			++Start;
			bDigitFound = true;
		}
		return !SkipBlanks(Start, End) && bDigitFound;
	}

	/** Parses text already accepted by IsValidInteger; out-of-range values saturate. */
	int64 ParseValidInteger(const FString& Text, int32 Base)
	{
		const TCHAR* Cursor = *Text;
		while (IsBlank(*Cursor))
		{
			++Cursor;
		}
		const bool bNegative = *Cursor == TEXT('-');
		if (*Cursor == TEXT('-') || *Cursor == TEXT('+'))
		{
			++Cursor;
		}
		while (IsBlank(*Cursor))
		{
			++Cursor;
		}
		if (Base == 16)
		{
			Cursor += 2; // "0x"
		}
		uint64 Magnitude = 0;
		bool bOverflow = false;
		for (; *Cursor; ++Cursor)
		{
			const TCHAR Char = *Cursor;
			int32 Digit = 0;
			if (Char >= TEXT('0') && Char <= TEXT('9'))
			{
				Digit = Char - TEXT('0');
			}
			else if (Char >= TEXT('a') && Char <= TEXT('f'))
			{
				Digit = Char - TEXT('a') + 10;
			}
			else if (Char >= TEXT('A') && Char <= TEXT('F'))
			{
				Digit = Char - TEXT('A') + 10;
			}
			else
			{
				break;
			}
			if (Digit >= Base)
			{
				break;
			}
			if (Magnitude > (std::numeric_limits<uint64>::max() - uint64(Digit)) / uint64(Base))
			{
				bOverflow = true;
				break;
			}
			Magnitude = Magnitude * uint64(Base) + uint64(Digit);
		}
		constexpr uint64 Limit = uint64(std::numeric_limits<int64>::max());
		if (bOverflow || Magnitude > Limit + (bNegative ? 1u : 0u))
		{
			return bNegative ? std::numeric_limits<int64>::min() : std::numeric_limits<int64>::max();
		}
		return bNegative ? int64(0u - Magnitude) : int64(Magnitude);
	}

	/** The blank-free text and the positions of its first commas; returns the number of commas. */
	int32 SplitAtCommas(const FString& Text, int32* OutCommaPositions, int32 MaxPositions)
	{
		int32 Count = 0;
		for (int32 Index = 0; Index < Text.Len(); ++Index)
		{
			if (Text[Index] == TEXT(','))
			{
				if (Count < MaxPositions)
				{
					OutCommaPositions[Count] = Index;
				}
				++Count;
			}
		}
		return Count;
	}

	bool IsFloatPart(const FString& Text, int32 Begin, int32 End)
	{
		return UE::Core::Private::IsStringValidFloat(*Text + Begin, *Text + End);
	}

	bool IsIntegerPart(const FString& Text, int32 Begin, int32 End)
	{
		int32 Base = 10;
		return IsValidInteger(*Text + Begin, *Text + End, Base);
	}

	double DoubleAt(const FString& Text, int32 Begin)
	{
		return FCString::Atod(*Text + Begin);
	}

	template <typename T>
	bool ParseVectorImpl(const FString& Source, UE::Math::TVector<T>& OutVal)
	{
		const FString Text = FDefaultValueHelper::RemoveWhitespaces(Source);
		int32 Commas[2] = {};
		if (Text.IsEmpty() || SplitAtCommas(Text, Commas, 2) != 2)
		{
			return false;
		}
		if (!IsFloatPart(Text, 0, Commas[0]) || !IsFloatPart(Text, Commas[0] + 1, Commas[1]) || !IsFloatPart(Text, Commas[1] + 1, Text.Len()))
		{
			return OutVal.InitFromString(Source);
		}
		OutVal = UE::Math::TVector<T>(T(DoubleAt(Text, 0)), T(DoubleAt(Text, Commas[0] + 1)), T(DoubleAt(Text, Commas[1] + 1)));
		return true;
	}

	template <typename T>
	bool ParseVector2DImpl(const FString& Source, UE::Math::TVector2<T>& OutVal)
	{
		const FString Text = FDefaultValueHelper::RemoveWhitespaces(Source);
		int32 Comma = 0;
		if (Text.IsEmpty() || SplitAtCommas(Text, &Comma, 1) == 0)
		{
			return false;
		}
		// Only the first comma splits; a second one makes the second part a non-number.
		if (!IsFloatPart(Text, 0, Comma) || !IsFloatPart(Text, Comma + 1, Text.Len()))
		{
			return OutVal.InitFromString(Source);
		}
		OutVal = UE::Math::TVector2<T>(T(DoubleAt(Text, 0)), T(DoubleAt(Text, Comma + 1)));
		return true;
	}

	template <typename T>
	bool ParseRotatorImpl(const FString& Source, UE::Math::TRotator<T>& OutVal)
	{
		UE::Math::TVector<T> AsVector;
		if (ParseVectorImpl(Source, AsVector))
		{
			OutVal = UE::Math::TRotator<T>(AsVector.X, AsVector.Y, AsVector.Z);
			return true;
		}
		if (OutVal.InitFromString(Source))
		{
			return true;
		}
		using UE::Core::Private::ParseValue;
		UE::Math::TRotator<T> Named = UE::Math::TRotator<T>::ZeroRotator;
		if (ParseValue(*Source, TEXT("Pitch="), Named.Pitch) && ParseValue(*Source, TEXT("Yaw="), Named.Yaw)
			&& ParseValue(*Source, TEXT("Roll="), Named.Roll))
		{
			OutVal = Named;
			return true;
		}
		return false;
	}
}

bool FDefaultValueHelper::Is(const FString& Source, const TCHAR* CompareStr)
{
	if (!CompareStr)
	{
		return false;
	}
	const TCHAR* Start = *Source;
	const TCHAR* End = Start + Source.Len();
	if (!SkipBlanks(Start, End))
	{
		return false;
	}
	const int32 CompareLen = FCString::Strlen(CompareStr);
	if (End - Start < CompareLen || FCString::Strncmp(Start, CompareStr, SIZE_T(CompareLen)) != 0)
	{
		return false;
	}
	Start += CompareLen;
	return !SkipBlanks(Start, End);
}

FString FDefaultValueHelper::RemoveWhitespaces(const FString& Source)
{
	FString Result;
	Result.Reserve(Source.Len());
	for (const TCHAR Char : Source)
	{
		if (!IsBlank(Char))
		{
			Result.AppendChar(Char);
		}
	}
	return Result;
}

bool FDefaultValueHelper::HasWhitespaces(const FString& Source)
{
	for (const TCHAR Char : Source)
	{
		if (IsBlank(Char))
		{
			return true;
		}
	}
	return false;
}

FString FDefaultValueHelper::GetUnqualifiedEnumValue(const FString& Source)
{
	const int32 Separator = Source.Find(TEXT("::"), ESearchCase::CaseSensitive);
	return Separator == INDEX_NONE ? Source : Source.RightChop(Separator + 2);
}

bool FDefaultValueHelper::IsStringValidInteger(const FString& Source)
{
	int32 Base = 10;
	return !Source.IsEmpty() && IsValidInteger(*Source, *Source + Source.Len(), Base);
}

bool FDefaultValueHelper::IsStringValidFloat(const FString& Source)
{
	return !Source.IsEmpty() && UE::Core::Private::IsStringValidFloat(*Source, *Source + Source.Len());
}

bool FDefaultValueHelper::IsStringValidVector(const FString& Source)
{
	FVector3d Unused;
	return ParseVector(Source, Unused);
}

bool FDefaultValueHelper::IsStringValidRotator(const FString& Source)
{
	// The engine checks rotators with the vector rule.
	return IsStringValidVector(Source);
}

bool FDefaultValueHelper::IsStringValidLinearColor(const FString& Source)
{
	FLinearColor Unused;
	return ParseLinearColor(Source, Unused);
}

bool FDefaultValueHelper::ParseInt(const FString& Source, int32& OutVal)
{
	int32 Base = 10;
	if (Source.IsEmpty() || !IsValidInteger(*Source, *Source + Source.Len(), Base))
	{
		return false;
	}
	const int64 Wide = ParseValidInteger(RemoveWhitespaces(Source), Base);
	OutVal = int32(FMath::Clamp<int64>(Wide, std::numeric_limits<int32>::min(), std::numeric_limits<int32>::max()));
	return true;
}

bool FDefaultValueHelper::ParseInt64(const FString& Source, int64& OutVal)
{
	int32 Base = 10;
	if (Source.IsEmpty() || !IsValidInteger(*Source, *Source + Source.Len(), Base))
	{
		return false;
	}
	OutVal = ParseValidInteger(RemoveWhitespaces(Source), Base);
	return true;
}

bool FDefaultValueHelper::ParseFloat(const FString& Source, float& OutVal)
{
	if (!IsStringValidFloat(Source))
	{
		return false;
	}
	OutVal = FCString::Atof(*RemoveWhitespaces(Source));
	return true;
}

bool FDefaultValueHelper::ParseDouble(const FString& Source, double& OutVal)
{
	if (!IsStringValidFloat(Source))
	{
		return false;
	}
	OutVal = FCString::Atod(*RemoveWhitespaces(Source));
	return true;
}

bool FDefaultValueHelper::ParseBool(const FString& Source, bool& OutVal)
{
	const FString Text = RemoveWhitespaces(Source);
	if (Text.IsEmpty())
	{
		return false;
	}
	if (Text.Equals(TEXT("true"), ESearchCase::IgnoreCase))
	{
		OutVal = true;
		return true;
	}
	if (Text.Equals(TEXT("false"), ESearchCase::IgnoreCase))
	{
		OutVal = false;
		return true;
	}
	int64 Value = 0;
	if (ParseInt64(Source, Value))
	{
		OutVal = Value != 0;
		return true;
	}
	return false;
}

bool FDefaultValueHelper::ParseVector(const FString& Source, FVector3d& OutVal)
{
	return ParseVectorImpl(Source, OutVal);
}

bool FDefaultValueHelper::ParseVector(const FString& Source, FVector3f& OutVal)
{
	return ParseVectorImpl(Source, OutVal);
}

bool FDefaultValueHelper::ParseVector2D(const FString& Source, FVector2d& OutVal)
{
	return ParseVector2DImpl(Source, OutVal);
}

bool FDefaultValueHelper::ParseVector2D(const FString& Source, FVector2f& OutVal)
{
	return ParseVector2DImpl(Source, OutVal);
}

bool FDefaultValueHelper::ParseRotator(const FString& Source, FRotator3d& OutVal)
{
	return ParseRotatorImpl(Source, OutVal);
}

bool FDefaultValueHelper::ParseRotator(const FString& Source, FRotator3f& OutVal)
{
	return ParseRotatorImpl(Source, OutVal);
}

bool FDefaultValueHelper::ParseLinearColor(const FString& Source, FLinearColor& OutVal)
{
	const FString Text = RemoveWhitespaces(Source);
	int32 Commas[3] = {};
	const int32 CommaCount = Text.IsEmpty() ? 0 : SplitAtCommas(Text, Commas, 3);
	if (CommaCount < 2)
	{
		return false;
	}
	const bool bHasAlpha = CommaCount >= 3;
	// An alpha part that is not a number fails outright, before any fallback.
	if (bHasAlpha && !IsFloatPart(Text, Commas[2] + 1, Text.Len()))
	{
		return false;
	}
	const int32 BlueEnd = bHasAlpha ? Commas[2] : Text.Len();
	if (!IsFloatPart(Text, 0, Commas[0]) || !IsFloatPart(Text, Commas[0] + 1, Commas[1]) || !IsFloatPart(Text, Commas[1] + 1, BlueEnd))
	{
		return OutVal.InitFromString(Source);
	}
	const float Alpha = bHasAlpha ? FCString::Atof(*Text + Commas[2] + 1) : 1.0f;
	OutVal = FLinearColor(FCString::Atof(*Text), FCString::Atof(*Text + Commas[0] + 1), FCString::Atof(*Text + Commas[1] + 1), Alpha);
	return true;
}

bool FDefaultValueHelper::ParseColor(const FString& Source, FColor& OutVal)
{
	const FString Text = RemoveWhitespaces(Source);
	int32 Commas[3] = {};
	const int32 CommaCount = Text.IsEmpty() ? 0 : SplitAtCommas(Text, Commas, 3);
	if (CommaCount < 2)
	{
		return false;
	}
	const bool bHasAlpha = CommaCount >= 3;
	if (bHasAlpha && !IsIntegerPart(Text, Commas[2] + 1, Text.Len()))
	{
		return false;
	}
	const int32 BlueEnd = bHasAlpha ? Commas[2] : Text.Len();
	if (!IsIntegerPart(Text, 0, Commas[0]) || !IsIntegerPart(Text, Commas[0] + 1, Commas[1]) || !IsIntegerPart(Text, Commas[1] + 1, BlueEnd))
	{
		return OutVal.InitFromString(Source);
	}
	const uint8 Alpha = bHasAlpha ? uint8(FCString::Atoi(*Text + Commas[2] + 1)) : uint8(255);
	OutVal = FColor(uint8(FCString::Atoi(*Text)), uint8(FCString::Atoi(*Text + Commas[0] + 1)), uint8(FCString::Atoi(*Text + Commas[1] + 1)), Alpha);
	return true;
}
