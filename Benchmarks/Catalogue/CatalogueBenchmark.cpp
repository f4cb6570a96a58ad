// Start-up cost of the engine catalogue: turning the embedded data into reflection objects
// (target: under 50 ms), and the lookups tools make against it afterwards.
//
//   CatalogueBenchmark [google-benchmark flags]
//
// Registration happens once per process, on the first lookup, so it is reported by a single
// iteration timed by the catalogue itself; the lookups are measured as usual.

#include "CoreMinimal.h"
#include "Catalogue/EngineCatalogue.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"

#include <benchmark/benchmark.h>

#include <cstdio>

namespace
{
	void BM_RegisterEngineCatalogue(benchmark::State& State)
	{
		// The program's first lookup registers the compiled-in types and then the catalogue, once per
		// process; the catalogue times its own part, which is what this reports.
		for (auto _ : State)
		{
			benchmark::DoNotOptimize(FindObject<UClass>(nullptr, TEXT("/Script/CoreUObject.Object")));
			FString Error;
			if (!UE::Catalogue::RegisterEngineCatalogue(&Error))
			{
				State.SkipWithError(FStringToUTF8(Error).c_str());
				return;
			}
			State.SetIterationTime(UE::Catalogue::GetCatalogueStats().Seconds);
		}
		const UE::Catalogue::FCatalogueStats& Stats = UE::Catalogue::GetCatalogueStats();
		State.counters["classes"] = Stats.NumClasses;
		State.counters["functions"] = Stats.NumFunctions;
		State.counters["properties"] = Stats.NumProperties;
		std::printf("catalogue start-up: %.2f ms for %d classes, %d functions, %d properties (target 50 ms)\n",
			Stats.Seconds * 1000.0, Stats.NumClasses, Stats.NumFunctions, Stats.NumProperties);
	}
	BENCHMARK(BM_RegisterEngineCatalogue)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

	void BM_FindClassByPath(benchmark::State& State)
	{
		UE::Catalogue::RegisterEngineCatalogue();
		const TCHAR* const Paths[] = { TEXT("/Script/Engine.Actor"), TEXT("/Script/Engine.CharacterMovementComponent"),
			TEXT("/Script/UMG.UserWidget"), TEXT("/Script/Engine.KismetSystemLibrary") };
		int32 Index = 0;
		for (auto _ : State)
		{
			benchmark::DoNotOptimize(FindObject<UClass>(nullptr, Paths[Index++ & 3]));
		}
	}
	BENCHMARK(BM_FindClassByPath);

	void BM_FindClassByShortName(benchmark::State& State)
	{
		UE::Catalogue::RegisterEngineCatalogue();
		const TCHAR* const Names[] = { TEXT("Actor"), TEXT("characterMOVEMENTcomponent"), TEXT("UserWidget"), TEXT("KismetSystemLibrary") };
		int32 Index = 0;
		for (auto _ : State)
		{
			benchmark::DoNotOptimize(FindFirstObject<UClass>(Names[Index++ & 3]));
		}
	}
	BENCHMARK(BM_FindClassByShortName);

	void BM_FindFunctionByName(benchmark::State& State)
	{
		UE::Catalogue::RegisterEngineCatalogue();
		UClass* Character = FindObject<UClass>(nullptr, TEXT("/Script/Engine.Character"));
		const FName Names[] = { FName(TEXT("Jump")), FName(TEXT("K2_GetActorLocation")), FName(TEXT("GetController")), FName(TEXT("Missing")) };
		int32 Index = 0;
		for (auto _ : State)
		{
			benchmark::DoNotOptimize(Character->FindFunctionByName(Names[Index++ & 3]));
		}
	}
	BENCHMARK(BM_FindFunctionByName);

	void BM_NewObjectOfCatalogueClass(benchmark::State& State)
	{
		UE::Catalogue::RegisterEngineCatalogue();
		UClass* Movement = FindObject<UClass>(nullptr, TEXT("/Script/Engine.CharacterMovementComponent"));
		for (auto _ : State)
		{
			UObject* Object = NewObject<UObject>(GetTransientPackage(), Movement);
			benchmark::DoNotOptimize(Object);
			Object->MarkAsGarbage();
		}
		CollectGarbage(RF_NoFlags);
	}
	BENCHMARK(BM_NewObjectOfCatalogueClass);
}

BENCHMARK_MAIN();
