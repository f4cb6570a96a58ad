#pragma once

// The tools as an agent reaches them, for the benchmarks that time whole tool calls: the benchmark project open,
// the tool modules started, and the executor that runs a command.

#include "BenchmarkProject.h"
#include "CalvornToolkitModule.h"
#include "IToolExecutor.h"
#include "Modules/ModuleManager.h"

#include <benchmark/benchmark.h>

namespace UE::Benchmarks
{
	/** The executor with the Blueprint tools registered; null after telling the benchmark why not. */
	inline TSharedPtr<Calvorn::IToolExecutor> StartTools(benchmark::State& State)
	{
		FBenchProject& Project = FBenchProject::Get();
		if (!Project.IsOpen())
		{
			State.SkipWithError(TCHAR_TO_UTF8(*Project.GetError()));
			return nullptr;
		}
		for (const TCHAR* Module : {TEXT("CalvornToolkit"), TEXT("CalvornToolkit_Blueprint")})
		{
			FModuleManager::Get().LoadModule(FName(Module));
		}
		TSharedPtr<Calvorn::IToolExecutor> Executor = FCalvornToolkitModule::GetToolExecutor();
		if (!Executor.IsValid())
		{
			State.SkipWithError("cannot start the tools");
		}
		return Executor;
	}
}
