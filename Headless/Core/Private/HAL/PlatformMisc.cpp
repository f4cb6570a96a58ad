#include "HAL/PlatformMisc.h"

#include "Misc/Guid.h"

#include <mutex>
#include <random>

namespace
{
	/** xoshiro256**: small, fast, and identical on every platform for a given seed. */
	class FGuidGenerator
	{
	public:
		void Seed(uint64 Value)
		{
			// splitmix64 spreads one 64-bit seed over the 256-bit state, never all zeros.
			for (uint64& Word : State)
			{
				Value += 0x9E3779B97F4A7C15ull;
				uint64 Mixed = Value;
				Mixed = (Mixed ^ (Mixed >> 30)) * 0xBF58476D1CE4E5B9ull;
				Mixed = (Mixed ^ (Mixed >> 27)) * 0x94D049BB133111EBull;
				Word = Mixed ^ (Mixed >> 31);
			}
			bSeeded = true;
		}

		uint64 Next()
		{
			if (!bSeeded)
			{
				std::random_device Device;
				Seed((static_cast<uint64>(Device()) << 32) ^ static_cast<uint64>(Device()));
			}
			const uint64 Result = RotateLeft(State[1] * 5, 7) * 9;
			const uint64 Shifted = State[1] << 17;
			State[2] ^= State[0];
			State[3] ^= State[1];
			State[1] ^= State[2];
			State[0] ^= State[3];
			State[2] ^= Shifted;
			State[3] = RotateLeft(State[3], 45);
			return Result;
		}

		std::mutex Mutex;

	private:
		static uint64 RotateLeft(uint64 Value, int Shift) { return (Value << Shift) | (Value >> (64 - Shift)); }

		uint64 State[4] = {};
		bool bSeeded = false;
	};

	FGuidGenerator& GetGuidGenerator()
	{
		static FGuidGenerator Generator;
		return Generator;
	}
}

void FPlatformMisc::CreateGuid(FGuid& Result)
{
	FGuidGenerator& Generator = GetGuidGenerator();
	std::lock_guard<std::mutex> Lock(Generator.Mutex);
	do
	{
		const uint64 High = Generator.Next();
		const uint64 Low = Generator.Next();
		Result = FGuid(static_cast<uint32>(High >> 32), static_cast<uint32>(High), static_cast<uint32>(Low >> 32), static_cast<uint32>(Low));
	} while (!Result.IsValid());
}

void FPlatformMisc::SeedGuidGenerator(uint64 Seed)
{
	FGuidGenerator& Generator = GetGuidGenerator();
	std::lock_guard<std::mutex> Lock(Generator.Mutex);
	Generator.Seed(Seed);
}
