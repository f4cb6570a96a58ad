#include "HAL/PlatformTime.h"

#include <chrono>

namespace
{
	using FSteadyClock = std::chrono::steady_clock;

	// Ticks count from the first reading in the process so the doubles keep full precision.
	const FSteadyClock::time_point& ClockOrigin()
	{
		static const FSteadyClock::time_point Origin = FSteadyClock::now();
		return Origin;
	}

	constexpr double SecondsPerTick = double(FSteadyClock::period::num) / double(FSteadyClock::period::den);
}

double FPlatformTime::Seconds()
{
	return double(Cycles64()) * SecondsPerTick;
}

uint32 FPlatformTime::Cycles()
{
	return uint32(Cycles64());
}

uint64 FPlatformTime::Cycles64()
{
	const FSteadyClock::time_point& Origin = ClockOrigin();
	return uint64((FSteadyClock::now() - Origin).count());
}

double FPlatformTime::GetSecondsPerCycle()
{
	return SecondsPerTick;
}

double FPlatformTime::GetSecondsPerCycle64()
{
	return SecondsPerTick;
}
