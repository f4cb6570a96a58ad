#pragma once

#include "CoreTypes.h"
#include "Containers/UnrealString.h"
#include "Templates/TypeHash.h"

/** Text forms of an FGuid, as the engine names them (A, B, C, D are written most significant first). */
enum class EGuidFormats
{
	/** 32 uppercase hex digits: "00000000000000000000000000000000". */
	Digits,
	/** 32 lowercase hex digits. */
	DigitsLower,
	/** "00000000-0000-0000-0000-000000000000". */
	DigitsWithHyphens,
	/** The hyphenated form in lowercase. */
	DigitsWithHyphensLower,
	/** "{00000000-0000-0000-0000-000000000000}". */
	DigitsWithHyphensInBraces,
	/** "(00000000-0000-0000-0000-000000000000)". */
	DigitsWithHyphensInParentheses,
	/** "{0x00000000,0x0000,0x0000,{0x00,0x00,0x00,0x00,0x00,0x00,0x00,0x00}}". */
	HexValuesInBraces,
	/** "00000000-00000000-00000000-00000000". */
	UniqueObjectGuid,
	/** 22 characters of URL-safe base64 ('-' and '_'), without padding. */
	Short,
	/** 25 characters of base 36 (0-9, A-Z). */
	Base36Encoded,
};

/** A 128-bit globally unique identifier. All zeros means "no GUID" (IsValid is false). */
struct FGuid
{
	uint32 A = 0;
	uint32 B = 0;
	uint32 C = 0;
	uint32 D = 0;

	constexpr FGuid() = default;
	constexpr FGuid(uint32 InA, uint32 InB, uint32 InC, uint32 InD) : A(InA), B(InB), C(InC), D(InD) {}

	/** Parses any form that Parse accepts; an unreadable text gives the invalid (all-zero) GUID. */
	explicit FGuid(const FString& InGuidStr);

	friend bool operator==(const FGuid& X, const FGuid& Y) { return ((X.A ^ Y.A) | (X.B ^ Y.B) | (X.C ^ Y.C) | (X.D ^ Y.D)) == 0; }
	friend bool operator!=(const FGuid& X, const FGuid& Y) { return !(X == Y); }
	/** Orders by A, then B, C, D. */
	friend bool operator<(const FGuid& X, const FGuid& Y)
	{
		return X.A != Y.A ? X.A < Y.A : (X.B != Y.B ? X.B < Y.B : (X.C != Y.C ? X.C < Y.C : X.D < Y.D));
	}

	/** Component 0..3 (A..D). */
	uint32& operator[](int32 Index);
	const uint32& operator[](int32 Index) const;

	bool IsValid() const { return (A | B | C | D) != 0; }
	void Invalidate() { A = B = C = D = 0; }

	void AppendString(FString& Out, EGuidFormats Format = EGuidFormats::Digits) const;
	FString ToString(EGuidFormats Format = EGuidFormats::Digits) const
	{
		FString Result;
		AppendString(Result, Format);
		return Result;
	}

	/** A fresh random GUID from FPlatformMisc::CreateGuid. */
	static FGuid NewGuid();

	/** Combines two GUIDs into a third, deterministically. */
	static FGuid Combine(const FGuid& GuidA, const FGuid& GuidB);

	/**
	 * Reads a GUID in any of the formats, told apart by length (32, 36, 38, 68, 35, 22 or 25
	 * characters). False, with OutGuid untouched, when the text is not one of them.
	 */
	static bool Parse(const FString& GuidString, FGuid& OutGuid);
	static bool Parse(const TCHAR* GuidString, FGuid& OutGuid);
	/** Reads a GUID in exactly the given format. */
	static bool ParseExact(const FString& GuidString, EGuidFormats Format, FGuid& OutGuid);
	static bool ParseExact(const TCHAR* GuidString, EGuidFormats Format, FGuid& OutGuid);

	friend uint32 GetTypeHash(const FGuid& Guid)
	{
		return HashCombineFast(HashCombineFast(Guid.A, Guid.B), HashCombineFast(Guid.C, Guid.D));
	}
};

inline FString LexToString(const FGuid& Value)
{
	return Value.ToString();
}

/** Parses Buffer; an unreadable text leaves an invalid GUID. */
inline void LexFromString(FGuid& Result, const TCHAR* Buffer)
{
	if (!FGuid::Parse(Buffer, Result))
	{
		Result.Invalidate();
	}
}
