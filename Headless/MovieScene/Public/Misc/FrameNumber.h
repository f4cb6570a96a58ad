#pragma once

#include "CoreMinimal.h"

class UScriptStruct;

/** A whole frame on a sequence's tick resolution. */
struct FFrameNumber
{
	static UScriptStruct* StaticStruct();

	constexpr FFrameNumber() = default;
	constexpr FFrameNumber(int32 InValue) : Value(InValue) {}

	friend constexpr bool operator==(FFrameNumber A, FFrameNumber B) { return A.Value == B.Value; }
	friend constexpr bool operator!=(FFrameNumber A, FFrameNumber B) { return A.Value != B.Value; }
	friend constexpr bool operator<(FFrameNumber A, FFrameNumber B) { return A.Value < B.Value; }
	friend constexpr bool operator<=(FFrameNumber A, FFrameNumber B) { return A.Value <= B.Value; }
	friend constexpr bool operator>(FFrameNumber A, FFrameNumber B) { return A.Value > B.Value; }
	friend constexpr bool operator>=(FFrameNumber A, FFrameNumber B) { return A.Value >= B.Value; }
	friend constexpr FFrameNumber operator+(FFrameNumber A, FFrameNumber B) { return FFrameNumber(A.Value + B.Value); }
	friend constexpr FFrameNumber operator-(FFrameNumber A, FFrameNumber B) { return FFrameNumber(A.Value - B.Value); }

	int32 Value = 0;
};
