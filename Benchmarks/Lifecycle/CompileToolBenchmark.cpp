// compile_blueprint on 50 saved Blueprints of 200 nodes each, in one call through the tool executor, as an agent
// makes it: every Blueprint is loaded, compiled and saved. The figure is the time per Blueprint
// ("ms_per_blueprint", and "cpu_ms_per_blueprint", steadier on a shared machine); the target is under 20 ms.

#include "../Common/BenchmarkTools.h"
#include "CompileBenchmarkBlueprints.h"
#include "Dom/JsonObject.h"
#include "HAL/PlatformMisc.h"
#include "Misc/PackageName.h"
#include "ToolCommand.h"
#include "ToolResult.h"
#include "UObject/SavePackage.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <ctime>

namespace
{
	using namespace UE::Benchmarks::Compile;

	/** The saved Blueprints' paths, as the tool's request lists them; empty when they could not be made. */
	const TArray<FString>& SavedBlueprintPaths()
	{
		static TArray<FString> Paths = []
		{
			TArray<FString> Result;
			FPlatformMisc::SeedGuidGenerator(5);
			for (int32 Index = 0; Index < NumBlueprints; ++Index)
			{
				UBlueprint* Blueprint = MakeBlueprint(Index);
				if (!Blueprint)
				{
					return TArray<FString>();
				}
				UPackage* Package = Blueprint->GetPackage();
				const FString Filename = FPackageName::LongPackageNameToFilename(Package->GetName(), FPackageName::GetAssetPackageExtension());
				if (!UPackage::Save(Package, Blueprint, *Filename, FSavePackageArgs()).IsSuccessful())
				{
					return TArray<FString>();
				}
				Result.Add(Package->GetName());
			}
			return Result;
		}();
		return Paths;
	}

	void BM_CompileToolCall(benchmark::State& State)
	{
		TSharedPtr<Calvorn::IToolExecutor> Executor = UE::Benchmarks::StartTools(State);
		if (!Executor.IsValid())
		{
			return;
		}
		const TArray<FString>& Paths = SavedBlueprintPaths();
		if (Paths.Num() != NumBlueprints)
		{
			State.SkipWithError("cannot save the Blueprints");
			return;
		}
		FString Request = TEXT("{\"blueprint_paths\":[");
		for (int32 Index = 0; Index < Paths.Num(); ++Index)
		{
			Request += FString::Printf(TEXT("%s\"%s\""), Index ? TEXT(",") : TEXT(""), *Paths[Index]);
		}
		Request += TEXT("]}");

		int64 Compiles = 0;
		bool bAllCompiled = true;
		const auto Start = std::chrono::steady_clock::now();
		const std::clock_t CpuStart = std::clock();
		for (auto _ : State)
		{
			const Calvorn::FToolResult Result = Executor->ExecuteCommand(Calvorn::FToolCommand(TEXT("bench"), TEXT("compile_blueprint"), Request));
			bAllCompiled &= Result.GetErrorMessages().Num() == 0;
			Compiles += NumBlueprints;
		}
		const double ElapsedMs = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - Start).count();
		const double CpuMs = 1000.0 * double(std::clock() - CpuStart) / CLOCKS_PER_SEC;
		if (!bAllCompiled)
		{
			State.SkipWithError("the tool reported errors");
			return;
		}
		State.counters["blueprints_per_call"] = NumBlueprints;
		State.counters["ms_per_blueprint"] = Compiles > 0 ? ElapsedMs / double(Compiles) : 0.0;
		State.counters["cpu_ms_per_blueprint"] = Compiles > 0 ? CpuMs / double(Compiles) : 0.0;
	}
	BENCHMARK(BM_CompileToolCall)->Unit(benchmark::kMillisecond);
}

BENCHMARK_MAIN();
