#pragma once

#include "CoreTypes.h"

/**
 * Monotonic clock for measuring intervals. Readings only mean something relative to each
 * other: never show them to a user or let them decide an observable result.
 */
struct FPlatformTime
{
	/** Seconds since an arbitrary fixed point, from a steady clock. */
	[[nodiscard]] static CORE_API double Seconds();
	/** Clock ticks truncated to 32 bits; they wrap, so compare only nearby readings. */
	[[nodiscard]] static CORE_API uint32 Cycles();
	/** Clock ticks since an arbitrary fixed point. */
	[[nodiscard]] static CORE_API uint64 Cycles64();
	[[nodiscard]] static CORE_API double GetSecondsPerCycle();
	[[nodiscard]] static CORE_API double GetSecondsPerCycle64();

	[[nodiscard]] static double ToSeconds(uint32 Cycles) { return GetSecondsPerCycle() * double(Cycles); }
	[[nodiscard]] static double ToMilliseconds(uint32 Cycles) { return ToSeconds(Cycles) * 1000.0; }
	[[nodiscard]] static double ToSeconds64(uint64 Cycles) { return GetSecondsPerCycle64() * double(Cycles); }
	[[nodiscard]] static double ToMilliseconds64(uint64 Cycles) { return ToSeconds64(Cycles) * 1000.0; }
};
