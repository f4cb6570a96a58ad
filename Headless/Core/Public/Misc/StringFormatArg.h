#pragma once

#include "CoreTypes.h"
#include "Containers/UnrealString.h"

/** One argument of FString::Format: a number (written as LexToString writes it) or a string. */
struct FStringFormatArg
{
	enum EType
	{
		Int,
		UInt,
		Double,
		String,
		StringLiteral,
	};

	EType Type;
	union
	{
		int64 IntValue;
		uint64 UIntValue;
		double DoubleValue;
		const TCHAR* StringLiteralValue;
	};
	FString StringValue;

	FStringFormatArg(const int32 Value) : Type(Int), IntValue(Value) {}
	FStringFormatArg(const uint32 Value) : Type(UInt), UIntValue(Value) {}
	FStringFormatArg(const int64 Value) : Type(Int), IntValue(Value) {}
	FStringFormatArg(const uint64 Value) : Type(UInt), UIntValue(Value) {}
	FStringFormatArg(const float Value) : Type(Double), DoubleValue(Value) {}
	FStringFormatArg(const double Value) : Type(Double), DoubleValue(Value) {}
	FStringFormatArg(FString Value) : Type(String), IntValue(0), StringValue(std::move(Value)) {}
	FStringFormatArg(const TCHAR* Value) : Type(StringLiteral), StringLiteralValue(Value ? Value : TEXT("")) {}
	FStringFormatArg(const FStringFormatArg& Other) = default;
	FStringFormatArg(FStringFormatArg&& Other) = default;
	FStringFormatArg& operator=(const FStringFormatArg& Other) = default;
	FStringFormatArg& operator=(FStringFormatArg&& Other) = default;

	/** The argument as Format writes it. */
	void AppendTo(FString& Out) const;
};
