#pragma once

#include "CoreTypes.h"

struct FGuid;

/**
 * Platform services with the engine's names. Only what the headless editor needs lives here.
 */
struct FPlatformMisc
{
	/**
	 * Fills Result with a new random GUID, never all zeros. The numbers come from one process-wide
	 * xoshiro256** generator: seeded with SeedGuidGenerator it gives the same sequence on every
	 * platform; unseeded it starts from std::random_device.
	 */
	CORE_API static void CreateGuid(FGuid& Result);

	/**
	 * Headless only: restarts the GUID sequence from Seed, so that node and pin GUIDs in tests and
	 * golden files are reproducible.
	 */
	CORE_API static void SeedGuidGenerator(uint64 Seed);
};
