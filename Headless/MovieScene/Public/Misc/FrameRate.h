#pragma once

#include "CoreMinimal.h"
#include "Misc/FrameNumber.h"

class UScriptStruct;

/** Frames per second as a fraction (30000/1001 for NTSC). */
struct FFrameRate
{
	static UScriptStruct* StaticStruct();

	constexpr FFrameRate() = default;
	constexpr FFrameRate(uint32 InNumerator, uint32 InDenominator) : Numerator(int32(InNumerator)), Denominator(int32(InDenominator)) {}

	bool IsValid() const { return Denominator > 0; }
	/** Seconds per frame. */
	double AsInterval() const { return double(Denominator) / double(Numerator); }
	double AsDecimal() const { return double(Numerator) / double(Denominator); }
	/** Seconds at the start of a frame. */
	double AsSeconds(FFrameNumber Frame) const { return double(Frame.Value) * AsInterval(); }
	/** The frame a time falls in, rounding down. */
	FFrameNumber AsFrameNumber(double TimeInSeconds) const;

	friend bool operator==(const FFrameRate& A, const FFrameRate& B) { return A.Numerator == B.Numerator && A.Denominator == B.Denominator; }
	friend bool operator!=(const FFrameRate& A, const FFrameRate& B) { return !(A == B); }

	int32 Numerator = 60000;
	int32 Denominator = 1;
};
