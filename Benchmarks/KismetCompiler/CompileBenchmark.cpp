// Full compiles of 50 Blueprints of 200 nodes each (function calls wired in chains, with pure math nodes
// feeding them, ten member variables and two functions per Blueprint). The figure that matters is the time
// per Blueprint ("ms_per_blueprint", and "cpu_ms_per_blueprint" for the processor time, steadier on a shared
// machine); the target is under 20 ms. Each compile rebuilds every node, as the editor does. The project lives in a temporary folder
// removed at exit.

#include "CompileBenchmarkBlueprints.h"
#include "HAL/PlatformMisc.h"
#include "Kismet2/CompilerResultsLog.h"
#include "Kismet2/KismetEditorUtilities.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <ctime>

namespace
{
	using namespace UE::Benchmarks::Compile;

	void BM_CompileBlueprints(benchmark::State& State)
	{
		FBenchProject& Project = FBenchProject::Get();
		if (!Project.IsOpen())
		{
			State.SkipWithError(TCHAR_TO_UTF8(*Project.GetError()));
			return;
		}
		FPlatformMisc::SeedGuidGenerator(3);
		static TArray<UBlueprint*> Blueprints;
		if (Blueprints.Num() == 0)
		{
			for (int32 Index = 0; Index < NumBlueprints; ++Index)
			{
				if (UBlueprint* Blueprint = MakeBlueprint(Index))
				{
					Blueprints.Add(Blueprint);
				}
			}
		}
		if (Blueprints.Num() != NumBlueprints)
		{
			State.SkipWithError("cannot make the Blueprints");
			return;
		}
		int32 Errors = 0;
		int32 Nodes = 0;
		int64 Compiles = 0;
		const auto Start = std::chrono::steady_clock::now();
		const std::clock_t CpuStart = std::clock();
		for (auto _ : State)
		{
			Compiles += NumBlueprints;
			for (UBlueprint* Blueprint : Blueprints)
			{
				FCompilerResultsLog Log;
				FKismetEditorUtilities::CompileBlueprint(Blueprint, EBlueprintCompileOptions::SkipGarbageCollection, &Log);
				Errors += Log.NumErrors;
			}
		}
		const double ElapsedMs = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - Start).count();
		const double CpuMs = 1000.0 * double(std::clock() - CpuStart) / CLOCKS_PER_SEC;
		for (const UBlueprint* Blueprint : Blueprints)
		{
			TArray<UEdGraph*> Graphs;
			Blueprint->GetAllGraphs(Graphs);
			for (const UEdGraph* Graph : Graphs)
			{
				Nodes += Graph->Nodes.Num();
			}
		}
		if (Errors > 0)
		{
			State.SkipWithError("the bench Blueprints do not compile cleanly");
			return;
		}
		State.counters["blueprints"] = NumBlueprints;
		State.counters["nodes_per_blueprint"] = double(Nodes) / NumBlueprints;
		// Wall time suffers when the machine is shared; processor time is the steadier figure.
		State.counters["ms_per_blueprint"] = Compiles > 0 ? ElapsedMs / double(Compiles) : 0.0;
		State.counters["cpu_ms_per_blueprint"] = Compiles > 0 ? CpuMs / double(Compiles) : 0.0;
	}
	BENCHMARK(BM_CompileBlueprints)->Unit(benchmark::kMillisecond);
}

BENCHMARK_MAIN();
