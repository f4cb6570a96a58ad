#include "Internationalization/Text.h"

#include "UObject/NameTypes.h"

#include <charconv>
#include <cmath>
#include <string>

namespace
{
	/**
	 * The digits of a non-negative number rounded to MaxFrac fractional digits, in plain decimal
	 * ("1234.5"). Half-to-even rounding is exact on the binary value (what printf does); the other
	 * modes scale, round and scale back.
	 */
	std::string RoundedDecimal(double Magnitude, int32 MaxFrac, ERoundingMode Mode, bool bNegative)
	{
		if (Mode != HalfToEven)
		{
			const double Scale = std::pow(10.0, MaxFrac);
			double Scaled = Magnitude * Scale;
			// Work on the signed value so directed modes go the right way.
			const double Signed = bNegative ? -Scaled : Scaled;
			double Rounded = Signed;
			switch (Mode)
			{
			case HalfFromZero: Rounded = std::round(Signed); break;
			case HalfToZero:
			{
				const double Floor = std::floor(std::fabs(Signed));
				const double Fraction = std::fabs(Signed) - Floor;
				Rounded = std::copysign(Fraction > 0.5 ? Floor + 1 : Floor, Signed);
				break;
			}
			case FromZero: Rounded = std::copysign(std::ceil(std::fabs(Signed)), Signed); break;
			case ToZero: Rounded = std::trunc(Signed); break;
			case ToNegativeInfinity: Rounded = std::floor(Signed); break;
			case ToPositiveInfinity: Rounded = std::ceil(Signed); break;
			default: break;
			}
			Scaled = std::fabs(Rounded);
			if (std::isfinite(Scaled / Scale))
			{
				Magnitude = Scaled / Scale;
			}
		}
		char Buffer[400];
		const std::to_chars_result Result = std::to_chars(Buffer, Buffer + sizeof(Buffer), Magnitude, std::chars_format::fixed, MaxFrac);
		return std::string(Buffer, Result.ec == std::errc() ? static_cast<SIZE_T>(Result.ptr - Buffer) : 0);
	}

	/** Applies grouping, digit counts and sign to the plain decimal text of a number. */
	FString ComposeNumber(std::string Digits, bool bNegative, const FNumberFormattingOptions& Options)
	{
		std::string Integral = Digits;
		std::string Fraction;
		if (const SIZE_T Dot = Digits.find('.'); Dot != std::string::npos)
		{
			Integral = Digits.substr(0, Dot);
			Fraction = Digits.substr(Dot + 1);
		}
		const int32 MinFrac = Options.MinimumFractionalDigits < 0 ? 0 : Options.MinimumFractionalDigits;
		while (static_cast<int32>(Fraction.size()) > MinFrac && !Fraction.empty() && Fraction.back() == '0')
		{
			Fraction.pop_back();
		}
		while (static_cast<int32>(Fraction.size()) < MinFrac)
		{
			Fraction.push_back('0');
		}
		const int32 MinIntegral = Options.MinimumIntegralDigits < 0 ? 0 : (Options.MinimumIntegralDigits > 324 ? 324 : Options.MinimumIntegralDigits);
		while (static_cast<int32>(Integral.size()) < MinIntegral)
		{
			Integral.insert(Integral.begin(), '0');
		}
		if (Options.MaximumIntegralDigits >= 0 && static_cast<int32>(Integral.size()) > Options.MaximumIntegralDigits)
		{
			Integral.erase(0, Integral.size() - static_cast<SIZE_T>(Options.MaximumIntegralDigits));
		}
		const bool bAllZero = Integral.find_first_not_of('0') == std::string::npos && Fraction.find_first_not_of('0') == std::string::npos;

		FString Out;
		if (bNegative && !bAllZero)
		{
			Out.AppendChar(TCHAR('-'));
		}
		else if (Options.AlwaysSign)
		{
			Out.AppendChar(TCHAR('+'));
		}
		const int32 IntegralLen = static_cast<int32>(Integral.size());
		for (int32 Index = 0; Index < IntegralLen; ++Index)
		{
			Out.AppendChar(static_cast<TCHAR>(Integral[static_cast<SIZE_T>(Index)]));
			const int32 Remaining = IntegralLen - 1 - Index;
			if (Options.UseGrouping && Remaining > 0 && Remaining % 3 == 0)
			{
				Out.AppendChar(TCHAR(','));
			}
		}
		if (!Fraction.empty())
		{
			Out.AppendChar(TCHAR('.'));
			for (const char Digit : Fraction)
			{
				Out.AppendChar(static_cast<TCHAR>(Digit));
			}
		}
		return Out;
	}

	FString FormatInteger(uint64 Magnitude, bool bNegative, const FNumberFormattingOptions& Options)
	{
		char Buffer[32];
		const std::to_chars_result Result = std::to_chars(Buffer, Buffer + sizeof(Buffer), Magnitude);
		return ComposeNumber(std::string(Buffer, Result.ptr), bNegative, Options);
	}

	FString FormatDouble(double Value, const FNumberFormattingOptions& Options)
	{
		if (std::isnan(Value))
		{
			return FString(TEXT("NaN"));
		}
		const bool bNegative = std::signbit(Value);
		if (std::isinf(Value))
		{
			return FString(bNegative ? TEXT("-Infinity") : TEXT("Infinity"));
		}
		int32 MaxFrac = Options.MaximumFractionalDigits < 0 ? 0 : (Options.MaximumFractionalDigits > 40 ? 40 : Options.MaximumFractionalDigits);
		if (MaxFrac < Options.MinimumFractionalDigits)
		{
			MaxFrac = Options.MinimumFractionalDigits > 40 ? 40 : Options.MinimumFractionalDigits;
		}
		return ComposeNumber(RoundedDecimal(std::fabs(Value), MaxFrac, Options.RoundingMode, bNegative), bNegative, Options);
	}

	const FNumberFormattingOptions& OptionsOrDefault(const FNumberFormattingOptions* Options)
	{
		return Options ? *Options : FNumberFormattingOptions::DefaultWithGrouping();
	}

	const FString& EmptyString()
	{
		static const FString Empty;
		return Empty;
	}
}

const FNumberFormattingOptions& FNumberFormattingOptions::DefaultWithGrouping()
{
	static const FNumberFormattingOptions Options = FNumberFormattingOptions().SetUseGrouping(true);
	return Options;
}

const FNumberFormattingOptions& FNumberFormattingOptions::DefaultNoGrouping()
{
	static const FNumberFormattingOptions Options = FNumberFormattingOptions().SetUseGrouping(false);
	return Options;
}

FText::FText(FString&& Display, EFlags Flags)
{
	auto NewData = std::make_shared<FData>();
	NewData->Display = std::move(Display);
	NewData->Flags = Flags;
	Data = std::move(NewData);
}

const FText& FText::GetEmpty()
{
	static const FText Empty;
	return Empty;
}

// This is the editor: the engine marks texts made from strings culture invariant only outside it
// (GIsEditor false), so here they stay plain, and export as plain strings.
FText FText::FromString(const FString& String)
{
	return FText(FString(String), EFlags::None);
}

FText FText::FromString(FString&& String)
{
	return FText(std::move(String), EFlags::None);
}

FText FText::FromName(const FName& Name)
{
	return FromString(Name.ToString());
}

FText FText::AsCultureInvariant(const FString& String)
{
	return FText(FString(String), EFlags::CultureInvariant);
}

FText FText::AsCultureInvariant(FString&& String)
{
	return FText(std::move(String), EFlags::CultureInvariant);
}

FText FText::AsCultureInvariant(FText Text)
{
	if (Text.IsCultureInvariant())
	{
		return Text;
	}
	return FText(FString(Text.ToString()), EFlags::CultureInvariant);
}

FText FText::AsLocalizable_Advanced(const TCHAR* Namespace, const TCHAR* Key, const TCHAR* String)
{
	auto NewData = std::make_shared<FData>();
	NewData->Display = FString(String);
	NewData->Namespace = FString(Namespace);
	NewData->Key = FString(Key);
	NewData->Flags = EFlags::Localized;
	FText Result;
	Result.Data = std::move(NewData);
	return Result;
}

FText FText::AsNumber(int32 Value, const FNumberFormattingOptions* Options)
{
	return AsNumber(static_cast<int64>(Value), Options);
}

FText FText::AsNumber(uint32 Value, const FNumberFormattingOptions* Options)
{
	return AsNumber(static_cast<uint64>(Value), Options);
}

FText FText::AsNumber(int64 Value, const FNumberFormattingOptions* Options)
{
	const bool bNegative = Value < 0;
	const uint64 Magnitude = bNegative ? (~static_cast<uint64>(Value) + 1) : static_cast<uint64>(Value);
	return FText(FormatInteger(Magnitude, bNegative, OptionsOrDefault(Options)), EFlags::Transient);
}

FText FText::AsNumber(uint64 Value, const FNumberFormattingOptions* Options)
{
	return FText(FormatInteger(Value, false, OptionsOrDefault(Options)), EFlags::Transient);
}

FText FText::AsNumber(float Value, const FNumberFormattingOptions* Options)
{
	return AsNumber(static_cast<double>(Value), Options);
}

FText FText::AsNumber(double Value, const FNumberFormattingOptions* Options)
{
	return FText(FormatDouble(Value, OptionsOrDefault(Options)), EFlags::Transient);
}

FString FFormatArgumentValue::ToFormattedString() const
{
	const FNumberFormattingOptions& Options = FNumberFormattingOptions::DefaultWithGrouping();
	switch (Type)
	{
	case EFormatArgumentType::Int:
		return FText::AsNumber(Value.Int).ToString();
	case EFormatArgumentType::UInt:
		return FText::AsNumber(Value.UInt).ToString();
	case EFormatArgumentType::Float:
		return FormatDouble(static_cast<double>(Value.Float), Options);
	case EFormatArgumentType::Double:
		return FormatDouble(Value.Double, Options);
	case EFormatArgumentType::Text:
	default:
		return TextValue.ToString();
	}
}

FText FText::Format(const FTextFormat& Fmt, const FFormatNamedArguments& InArguments)
{
	return FormatImpl(Fmt, &InArguments, nullptr);
}

FText FText::Format(const FTextFormat& Fmt, const FFormatOrderedArguments& InArguments)
{
	return FormatImpl(Fmt, nullptr, &InArguments);
}

FText FText::FormatImpl(const FTextFormat& Fmt, const FFormatNamedArguments* Named, const FFormatOrderedArguments* Ordered)
{
	const FString& Pattern = Fmt.GetSourceText().ToString();
	const int32 Length = Pattern.Len();
	FString Out;
	Out.Reserve(Length);
	int32 Index = 0;
	while (Index < Length)
	{
		const TCHAR Char = Pattern[Index];
		if (Char == TCHAR('`') && Index + 1 < Length
			&& (Pattern[Index + 1] == TCHAR('{') || Pattern[Index + 1] == TCHAR('}') || Pattern[Index + 1] == TCHAR('`')))
		{
			Out.AppendChar(Pattern[Index + 1]);
			Index += 2;
			continue;
		}
		if (Char != TCHAR('{'))
		{
			Out.AppendChar(Char);
			++Index;
			continue;
		}

		int32 Close = INDEX_NONE;
		for (int32 Scan = Index + 1; Scan < Length; ++Scan)
		{
			if (Pattern[Scan] == TCHAR('}'))
			{
				Close = Scan;
				break;
			}
			if (Pattern[Scan] == TCHAR('{'))
			{
				break;
			}
		}
		if (Close == INDEX_NONE)
		{
			// An unclosed brace is ordinary text.
			Out.AppendChar(Char);
			++Index;
			continue;
		}

		const FString ArgumentName = Pattern.Mid(Index + 1, Close - Index - 1);
		const FFormatArgumentValue* Value = nullptr;
		if (Named)
		{
			Value = Named->Find(ArgumentName);
		}
		else if (Ordered && !ArgumentName.IsEmpty())
		{
			bool bAllDigits = ArgumentName.Len() <= 9;
			for (const TCHAR Digit : ArgumentName)
			{
				bAllDigits = bAllDigits && FChar::IsDigit(Digit);
			}
			if (bAllDigits)
			{
				const int32 ArgumentIndex = FCString::Atoi(*ArgumentName);
				if (Ordered->IsValidIndex(ArgumentIndex))
				{
					Value = &(*Ordered)[ArgumentIndex];
				}
			}
		}

		if (Value)
		{
			Out += Value->ToFormattedString();
		}
		else
		{
			Out.Append(*Pattern + Index, Close - Index + 1);
		}
		Index = Close + 1;
	}
	return FText(std::move(Out), EFlags::None);
}

FText FText::Join(const FText& Delimiter, const TArray<FText>& Args)
{
	FString Out;
	for (int32 Index = 0; Index < Args.Num(); ++Index)
	{
		if (Index > 0)
		{
			Out += Delimiter.ToString();
		}
		Out += Args[Index].ToString();
	}
	return FText(std::move(Out), EFlags::None);
}

FText FText::Join(const FText& Delimiter, const FFormatOrderedArguments& Args)
{
	FString Out;
	for (int32 Index = 0; Index < Args.Num(); ++Index)
	{
		if (Index > 0)
		{
			Out += Delimiter.ToString();
		}
		Out += Args[Index].ToFormattedString();
	}
	return FText(std::move(Out), EFlags::None);
}

FText FText::TrimPreceding(const FText& Text)
{
	return FText(Text.ToString().TrimStart(), EFlags::None);
}

FText FText::TrimTrailing(const FText& Text)
{
	return FText(Text.ToString().TrimEnd(), EFlags::None);
}

FText FText::TrimPrecedingAndTrailing(const FText& Text)
{
	return FText(Text.ToString().TrimStartAndEnd(), EFlags::None);
}

const FString& FText::ToString() const
{
	return Data ? Data->Display : EmptyString();
}

bool FText::IsEmptyOrWhitespace() const
{
	for (const TCHAR Char : ToString())
	{
		if (!FChar::IsWhitespace(Char))
		{
			return false;
		}
	}
	return true;
}

bool FText::IsTransient() const
{
	return Data && (static_cast<uint8>(Data->Flags) & static_cast<uint8>(EFlags::Transient)) != 0;
}

bool FText::IsCultureInvariant() const
{
	return Data && (static_cast<uint8>(Data->Flags) & static_cast<uint8>(EFlags::CultureInvariant)) != 0;
}

bool FText::ShouldGatherForLocalization() const
{
	return Data && (static_cast<uint8>(Data->Flags) & static_cast<uint8>(EFlags::Localized)) != 0 && !Data->Display.IsEmpty();
}

FText FText::ToLower() const
{
	return FText(ToString().ToLower(), EFlags::Transient);
}

FText FText::ToUpper() const
{
	return FText(ToString().ToUpper(), EFlags::Transient);
}

bool FText::EqualTo(const FText& Other, ETextComparisonLevel ComparisonLevel) const
{
	return ToString().Equals(Other.ToString(), ESearchCase::CaseSensitive);
}

bool FText::EqualToCaseIgnored(const FText& Other) const
{
	return ToString().Equals(Other.ToString(), ESearchCase::IgnoreCase);
}

int32 FText::CompareTo(const FText& Other, ETextComparisonLevel ComparisonLevel) const
{
	return ToString().Compare(Other.ToString(), ESearchCase::CaseSensitive);
}

int32 FText::CompareToCaseIgnored(const FText& Other) const
{
	return ToString().Compare(Other.ToString(), ESearchCase::IgnoreCase);
}

bool FText::IdenticalTo(const FText& Other) const
{
	return Data == Other.Data || (IsEmpty() && Other.IsEmpty());
}

TOptional<FString> FTextInspector::GetNamespace(const FText& Text)
{
	if (Text.Data && (static_cast<uint8>(Text.Data->Flags) & static_cast<uint8>(FText::EFlags::Localized)) != 0)
	{
		return Text.Data->Namespace;
	}
	return TOptional<FString>();
}

TOptional<FString> FTextInspector::GetKey(const FText& Text)
{
	if (Text.Data && (static_cast<uint8>(Text.Data->Flags) & static_cast<uint8>(FText::EFlags::Localized)) != 0)
	{
		return Text.Data->Key;
	}
	return TOptional<FString>();
}

const FString* FTextInspector::GetSourceString(const FText& Text)
{
	return &Text.ToString();
}
