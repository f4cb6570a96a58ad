#pragma once

#include "CoreTypes.h"
#include "Containers/Array.h"
#include "Containers/Map.h"
#include "Containers/UnrealString.h"
#include "Misc/Optional.h"

#include <memory>
#include <type_traits>
#include <utility>

class FName;
class FTextFormat;
class FFormatArgumentValue;

/** How much of a difference FText comparisons notice; the headless editor compares code units. */
enum class ETextComparisonLevel
{
	Default,
	Primary,
	Secondary,
	Tertiary,
	Quaternary,
	Quinary,
};

enum ERoundingMode
{
	HalfToEven,
	HalfFromZero,
	HalfToZero,
	FromZero,
	ToZero,
	ToNegativeInfinity,
	ToPositiveInfinity,
};

/** How AsNumber writes a number; the defaults are the engine's (grouping, 0 to 3 fractional digits). */
struct FNumberFormattingOptions
{
	bool AlwaysSign = false;
	bool UseGrouping = true;
	ERoundingMode RoundingMode = HalfToEven;
	int32 MinimumIntegralDigits = 1;
	int32 MaximumIntegralDigits = 324;
	int32 MinimumFractionalDigits = 0;
	int32 MaximumFractionalDigits = 3;

	FNumberFormattingOptions& SetAlwaysSign(bool bValue) { AlwaysSign = bValue; return *this; }
	FNumberFormattingOptions& SetUseGrouping(bool bValue) { UseGrouping = bValue; return *this; }
	FNumberFormattingOptions& SetRoundingMode(ERoundingMode Value) { RoundingMode = Value; return *this; }
	FNumberFormattingOptions& SetMinimumIntegralDigits(int32 Value) { MinimumIntegralDigits = Value; return *this; }
	FNumberFormattingOptions& SetMaximumIntegralDigits(int32 Value) { MaximumIntegralDigits = Value; return *this; }
	FNumberFormattingOptions& SetMinimumFractionalDigits(int32 Value) { MinimumFractionalDigits = Value; return *this; }
	FNumberFormattingOptions& SetMaximumFractionalDigits(int32 Value) { MaximumFractionalDigits = Value; return *this; }

	static const FNumberFormattingOptions& DefaultWithGrouping();
	static const FNumberFormattingOptions& DefaultNoGrouping();
};

using FFormatNamedArguments = TMap<FString, FFormatArgumentValue>;
using FFormatOrderedArguments = TArray<FFormatArgumentValue>;

/**
 * Display text, as the engine's FText: immutable, cheap to copy (copies share one string), and
 * remembering how it was made. Texts from LOCTEXT/NSLOCTEXT keep their namespace and key (see
 * FTextInspector) so they can be written back the way the editor writes them; there is one
 * culture, English, which is what AsNumber and Format use.
 */
class FText
{
public:
	FText() = default;

	static const FText& GetEmpty();

	/** Culture-invariant text holding String. */
	static FText FromString(const FString& String);
	static FText FromString(FString&& String);
	static FText FromName(const FName& Name);
	static FText AsCultureInvariant(const FString& String);
	static FText AsCultureInvariant(FString&& String);
	static FText AsCultureInvariant(FText Text);
	/** What LOCTEXT and NSLOCTEXT expand to: the literal, with its namespace and key kept. */
	static FText AsLocalizable_Advanced(const TCHAR* Namespace, const TCHAR* Key, const TCHAR* String);

	/** The number in the English culture: grouping commas, at most 3 fractional digits by default. */
	static FText AsNumber(int32 Value, const FNumberFormattingOptions* Options = nullptr);
	static FText AsNumber(uint32 Value, const FNumberFormattingOptions* Options = nullptr);
	static FText AsNumber(int64 Value, const FNumberFormattingOptions* Options = nullptr);
	static FText AsNumber(uint64 Value, const FNumberFormattingOptions* Options = nullptr);
	static FText AsNumber(float Value, const FNumberFormattingOptions* Options = nullptr);
	static FText AsNumber(double Value, const FNumberFormattingOptions* Options = nullptr);

	/**
	 * Replaces "{0}"-style (ordered) or "{Name}"-style (named) arguments in Fmt. A backtick escapes
	 * the next brace or backtick; an argument that is not supplied stays as written.
	 */
	static FText Format(const FTextFormat& Fmt, const FFormatNamedArguments& InArguments);
	static FText Format(const FTextFormat& Fmt, const FFormatOrderedArguments& InArguments);

	template <typename... ArgTypes, typename = std::enable_if_t<(sizeof...(ArgTypes) > 0) && (std::is_constructible_v<FFormatArgumentValue, ArgTypes&&> && ...)>>
	static FText Format(const FTextFormat& Fmt, ArgTypes&&... Args);

	/** FormatNamed(Fmt, TEXT("Name"), Value, TEXT("Other"), Value2, ...). */
	template <typename... ArgTypes>
	static FText FormatNamed(const FTextFormat& Fmt, ArgTypes&&... Args);

	template <typename... ArgTypes>
	static FText FormatOrdered(const FTextFormat& Fmt, ArgTypes&&... Args)
	{
		return Format(Fmt, std::forward<ArgTypes>(Args)...);
	}

	static FText Join(const FText& Delimiter, const TArray<FText>& Args);
	static FText Join(const FText& Delimiter, const FFormatOrderedArguments& Args);

	static FText TrimPreceding(const FText& Text);
	static FText TrimTrailing(const FText& Text);
	static FText TrimPrecedingAndTrailing(const FText& Text);

	/** The display string. */
	const FString& ToString() const;
	/** The source string (the same, with one culture). */
	FString BuildSourceString() const { return ToString(); }

	bool IsEmpty() const { return ToString().IsEmpty(); }
	bool IsEmptyOrWhitespace() const;
	bool IsNumeric() const { return ToString().IsNumeric(); }
	bool IsTransient() const;
	bool IsCultureInvariant() const;
	bool IsFromStringTable() const { return false; }
	bool ShouldGatherForLocalization() const;

	FText ToLower() const;
	FText ToUpper() const;

	/** Same characters (case matters). */
	bool EqualTo(const FText& Other, ETextComparisonLevel ComparisonLevel = ETextComparisonLevel::Default) const;
	bool EqualToCaseIgnored(const FText& Other) const;
	int32 CompareTo(const FText& Other, ETextComparisonLevel ComparisonLevel = ETextComparisonLevel::Default) const;
	int32 CompareToCaseIgnored(const FText& Other) const;
	/** The same text object (a copy of it), or both empty. */
	bool IdenticalTo(const FText& Other) const;

private:
	friend class FTextInspector;

	enum class EFlags : uint8
	{
		None = 0,
		CultureInvariant = 1,
		Transient = 2,
		Localized = 4,
	};

	struct FData
	{
		FString Display;
		FString Namespace;
		FString Key;
		EFlags Flags = EFlags::None;
	};

	FText(FString&& Display, EFlags Flags);

	static FText FormatImpl(const FTextFormat& Fmt, const FFormatNamedArguments* Named, const FFormatOrderedArguments* Ordered);

	std::shared_ptr<const FData> Data;
};

/** The pattern of FText::Format; made from any FText. */
class FTextFormat
{
public:
	FTextFormat() = default;
	FTextFormat(const FText& InText) : SourceText(InText) {}
	static FTextFormat FromString(const FString& InString) { return FTextFormat(FText::FromString(InString)); }

	const FText& GetSourceText() const { return SourceText; }
	bool IsValid() const { return true; }

private:
	FText SourceText;
};

enum class EFormatArgumentType : uint8
{
	Int,
	UInt,
	Float,
	Double,
	Text,
};

/** One argument of FText::Format: a number (written as AsNumber writes it) or a text. */
class FFormatArgumentValue
{
public:
	FFormatArgumentValue() : Type(EFormatArgumentType::Int) { Value.Int = 0; }
	FFormatArgumentValue(int32 InValue) : Type(EFormatArgumentType::Int) { Value.Int = InValue; }
	FFormatArgumentValue(int64 InValue) : Type(EFormatArgumentType::Int) { Value.Int = InValue; }
	FFormatArgumentValue(uint32 InValue) : Type(EFormatArgumentType::UInt) { Value.UInt = InValue; }
	FFormatArgumentValue(uint64 InValue) : Type(EFormatArgumentType::UInt) { Value.UInt = InValue; }
	FFormatArgumentValue(float InValue) : Type(EFormatArgumentType::Float) { Value.Float = InValue; }
	FFormatArgumentValue(double InValue) : Type(EFormatArgumentType::Double) { Value.Double = InValue; }
	FFormatArgumentValue(const FText& InValue) : Type(EFormatArgumentType::Text), TextValue(InValue) { Value.Int = 0; }
	FFormatArgumentValue(FText&& InValue) : Type(EFormatArgumentType::Text), TextValue(std::move(InValue)) { Value.Int = 0; }

	EFormatArgumentType GetType() const { return Type; }
	int64 GetIntValue() const { return Value.Int; }
	uint64 GetUIntValue() const { return Value.UInt; }
	float GetFloatValue() const { return Value.Float; }
	double GetDoubleValue() const { return Value.Double; }
	const FText& GetTextValue() const { return TextValue; }

	/** The argument as Format writes it. */
	FString ToFormattedString() const;

private:
	EFormatArgumentType Type;
	union
	{
		int64 Int;
		uint64 UInt;
		float Float;
		double Double;
	} Value;
	FText TextValue;
};

template <typename... ArgTypes, typename>
FText FText::Format(const FTextFormat& Fmt, ArgTypes&&... Args)
{
	FFormatOrderedArguments Ordered;
	Ordered.Reserve(static_cast<int32>(sizeof...(ArgTypes)));
	(Ordered.Add(FFormatArgumentValue(std::forward<ArgTypes>(Args))), ...);
	return Format(Fmt, Ordered);
}

namespace UE::Core::Private
{
	inline void AddNamedFormatArguments(FFormatNamedArguments&) {}

	template <typename NameType, typename ValueType, typename... Rest>
	void AddNamedFormatArguments(FFormatNamedArguments& Out, NameType&& Name, ValueType&& Value, Rest&&... Others)
	{
		Out.Add(FString(std::forward<NameType>(Name)), FFormatArgumentValue(std::forward<ValueType>(Value)));
		AddNamedFormatArguments(Out, std::forward<Rest>(Others)...);
	}
}

template <typename... ArgTypes>
FText FText::FormatNamed(const FTextFormat& Fmt, ArgTypes&&... Args)
{
	static_assert(sizeof...(ArgTypes) % 2 == 0, "FormatNamed takes name and value pairs");
	FFormatNamedArguments Named;
	UE::Core::Private::AddNamedFormatArguments(Named, std::forward<ArgTypes>(Args)...);
	return Format(Fmt, Named);
}

/** Reads what an FText remembers about where it came from. */
class FTextInspector
{
public:
	static TOptional<FString> GetNamespace(const FText& Text);
	static TOptional<FString> GetKey(const FText& Text);
	static const FString* GetSourceString(const FText& Text);
	static const FString& GetDisplayString(const FText& Text) { return Text.ToString(); }
	static bool ShouldGatherForLocalization(const FText& Text) { return Text.ShouldGatherForLocalization(); }
};

inline FString LexToString(const FText& Text)
{
	return Text.ToString();
}

// LOCTEXT needs LOCTEXT_NAMESPACE defined by the including file, as in the engine.
#define LOCTEXT(InKey, InTextLiteral) FText::AsLocalizable_Advanced(TEXT(LOCTEXT_NAMESPACE), TEXT(InKey), TEXT(InTextLiteral))
#define NSLOCTEXT(InNamespace, InKey, InTextLiteral) FText::AsLocalizable_Advanced(TEXT(InNamespace), TEXT(InKey), TEXT(InTextLiteral))
#define INVTEXT(InTextLiteral) FText::AsCultureInvariant(FString(TEXT(InTextLiteral)))
