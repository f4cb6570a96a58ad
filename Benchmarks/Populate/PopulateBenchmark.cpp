// bp_populate_graph with one request of 100 nodes and 150 connections on an Actor Blueprint's event graph, through
// the tool executor with the whole catalogue, as an agent sends it. Each iteration fills a fresh Blueprint.
// Counters: "total_ms" (the whole call: menu, spawning, wiring, layout, save, read-back), "cam_build_ms",
// "fuzzy_node_ms" (mean spawn time of the 30 nodes found through the menu), "save_ms" (saving the populated
// Blueprint once more, which is what the call's save costs). Target: the whole call under 50 ms.

#include "../Common/BenchmarkTools.h"

#include "AssetOperationBase.h"
#include "BlueprintUtils.h"
#include "Engine/Blueprint.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "HAL/PlatformMisc.h"
#include "ToolCommand.h"
#include "ToolResult.h"

#include <benchmark/benchmark.h>

#include <chrono>

namespace
{
	constexpr int32 NumChains = 10;

	FString Node(const FString& Guid, const FString& Body)
	{
		return FString::Printf(TEXT("{\"node_guid\": \"%s\", %s}"), *Guid, *Body);
	}

	FString Link(const FString& Source, const TCHAR* SourcePin, const FString& Target, const TCHAR* TargetPin)
	{
		return FString::Printf(TEXT("{\"action\": \"add\", \"source_node_guid\": \"%s\", \"source_pin_name\": \"%s\", \"target_node_guid\": \"%s\", \"target_pin_name\": \"%s\"}"),
			*Source, SourcePin, *Target, TargetPin);
	}

	FString Call(const TCHAR* Class, const TCHAR* Function)
	{
		return FString::Printf(TEXT("\"class_name\": \"K2Node_CallFunction\", \"target_class\": \"%s\", \"target_function\": \"%s\""), Class, Function);
	}

	/**
	 * Ten chains of ten nodes: a custom event, four deterministic calls with their pure helpers, and three nodes
	 * found through the menu; fifteen links each, exec and data.
	 */
	FString MakeRequest(const FString& Path)
	{
		TArray<FString> Nodes;
		TArray<FString> Links;
		for (int32 Chain = 0; Chain < NumChains; ++Chain)
		{
			auto Id = [Chain](const TCHAR* Name) { return FString::Printf(TEXT("%s%d"), Name, Chain); };
			Nodes.Add(Node(Id(TEXT("Event")), FString::Printf(TEXT("\"class_name\": \"K2Node_CustomEvent\", \"node_metadata\": {\"event_name\": \"Step%d\"}"), Chain)));
			Nodes.Add(Node(Id(TEXT("PrintA")), Call(TEXT("KismetSystemLibrary"), TEXT("PrintString"))));
			Nodes.Add(Node(Id(TEXT("Branch")), TEXT("\"menu_title\": \"Branch\"")));
			Nodes.Add(Node(Id(TEXT("PrintB")), Call(TEXT("KismetSystemLibrary"), TEXT("PrintString"))));
			Nodes.Add(Node(Id(TEXT("PrintC")), Call(TEXT("KismetSystemLibrary"), TEXT("PrintString"))));
			Nodes.Add(Node(Id(TEXT("Location")), TEXT("\"menu_title\": \"Get Actor Location\"")));
			Nodes.Add(Node(Id(TEXT("Length")), Call(TEXT("KismetMathLibrary"), TEXT("VSize"))));
			Nodes.Add(Node(Id(TEXT("Greater")), Call(TEXT("KismetMathLibrary"), TEXT("Greater_DoubleDouble"))));
			Nodes.Add(Node(Id(TEXT("Text")), Call(TEXT("KismetStringLibrary"), TEXT("Conv_DoubleToString"))));
			Nodes.Add(Node(Id(TEXT("PrintD")), TEXT("\"menu_title\": \"Print String\"")));

			Links.Add(Link(Id(TEXT("Event")), TEXT("then"), Id(TEXT("PrintA")), TEXT("execute")));
			Links.Add(Link(Id(TEXT("PrintA")), TEXT("then"), Id(TEXT("Branch")), TEXT("execute")));
			Links.Add(Link(Id(TEXT("Branch")), TEXT("true"), Id(TEXT("PrintB")), TEXT("execute")));
			Links.Add(Link(Id(TEXT("Branch")), TEXT("false"), Id(TEXT("PrintC")), TEXT("execute")));
			Links.Add(Link(Id(TEXT("PrintB")), TEXT("then"), Id(TEXT("PrintD")), TEXT("execute")));
			Links.Add(Link(Id(TEXT("PrintC")), TEXT("then"), Id(TEXT("PrintD")), TEXT("execute")));
			Links.Add(Link(Id(TEXT("Location")), TEXT("Return Value"), Id(TEXT("Length")), TEXT("A")));
			Links.Add(Link(Id(TEXT("Length")), TEXT("Return Value"), Id(TEXT("Greater")), TEXT("A")));
			Links.Add(Link(Id(TEXT("Length")), TEXT("Return Value"), Id(TEXT("Greater")), TEXT("B")));
			Links.Add(Link(Id(TEXT("Greater")), TEXT("Return Value"), Id(TEXT("Branch")), TEXT("Condition")));
			Links.Add(Link(Id(TEXT("Length")), TEXT("Return Value"), Id(TEXT("Text")), TEXT("InDouble")));
			Links.Add(Link(Id(TEXT("Text")), TEXT("Return Value"), Id(TEXT("PrintA")), TEXT("InString")));
			Links.Add(Link(Id(TEXT("Text")), TEXT("Return Value"), Id(TEXT("PrintB")), TEXT("InString")));
			Links.Add(Link(Id(TEXT("Text")), TEXT("Return Value"), Id(TEXT("PrintC")), TEXT("InString")));
			Links.Add(Link(Id(TEXT("Text")), TEXT("Return Value"), Id(TEXT("PrintD")), TEXT("InString")));
		}
		return FString::Printf(TEXT("{\"path\": \"%s\", \"graph_name\": \"EventGraph\", \"nodes\": [%s], \"connections\": [%s]}"),
			*Path, *FString::Join(Nodes, TEXT(",")), *FString::Join(Links, TEXT(",")));
	}

	Calvorn::FToolResult Run(Calvorn::IToolExecutor& Executor, const TCHAR* Tool, const FString& Request)
	{
		return Executor.ExecuteCommand(Calvorn::FToolCommand(TEXT("bench"), Tool, Request));
	}

	/** The mean of "duration_ms" over the latency entries of nodes found through the menu (their ids have no chain-free name). */
	double MeanFuzzyLatency(const TSharedPtr<FJsonObject>& Telemetry)
	{
		const TArray<TSharedPtr<FJsonValue>>* Entries = nullptr;
		if (!Telemetry.IsValid() || !Telemetry->TryGetArrayField(TEXT("node_creation_latency_ms"), Entries))
		{
			return 0.0;
		}
		double Sum = 0.0;
		int32 Count = 0;
		for (const TSharedPtr<FJsonValue>& Entry : *Entries)
		{
			const TSharedPtr<FJsonObject> Object = Entry->AsObject();
			const FString Id = Object->GetStringField(TEXT("node_id"));
			if (Id.StartsWith(TEXT("Branch")) || Id.StartsWith(TEXT("Location")) || Id.StartsWith(TEXT("PrintD")))
			{
				Sum += Object->GetNumberField(TEXT("duration_ms"));
				++Count;
			}
		}
		return Count > 0 ? Sum / Count : 0.0;
	}

	void BM_PopulateHundredNodes(benchmark::State& State)
	{
		TSharedPtr<Calvorn::IToolExecutor> Executor = UE::Benchmarks::StartTools(State);
		if (!Executor.IsValid())
		{
			return;
		}
		FPlatformMisc::SeedGuidGenerator(7);

		double TotalMs = 0.0;
		double CamMs = 0.0;
		double FuzzyMs = 0.0;
		double SaveMs = 0.0;
		int64 Calls = 0;
		int32 Index = 0;
		for (auto _ : State)
		{
			State.PauseTiming();
			const FString Path = FString::Printf(TEXT("/Game/Bench/BP_Populate%d"), Index++);
			const Calvorn::FToolResult Created = Run(*Executor, TEXT("bp_create_asset"),
				FString::Printf(TEXT("{\"path\": \"%s\", \"blueprint_parent_class\": {\"type\": \"native\", \"parent_path\": \"/Script/Engine.Actor\"}}"), *Path));
			const FString Request = MakeRequest(Path);
			State.ResumeTiming();

			const auto Start = std::chrono::steady_clock::now();
			const Calvorn::FToolResult Result = Run(*Executor, TEXT("bp_populate_graph"), Request);
			TotalMs += std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - Start).count();

			State.PauseTiming();
			const TSharedPtr<FJsonObject>* Telemetry = nullptr;
			FString NodesCreated;
			FString ConnectionsCreated;
			Result.GetDatas()->TryGetStringField(TEXT("nodes_created"), NodesCreated);
			Result.GetDatas()->TryGetStringField(TEXT("connections_created"), ConnectionsCreated);
			if (Created.HasFailed() || Result.HasFailed() || NodesCreated != TEXT("100") || ConnectionsCreated != TEXT("150")
				|| !Result.GetDatas()->TryGetObjectField(TEXT("telemetry"), Telemetry))
			{
				FString Messages;
				for (const FString& Message : Result.GetErrorMessages())
				{
					Messages += Message + TEXT("\n");
				}
				for (const FString& Message : Result.GetWarningMessages())
				{
					Messages += Message + TEXT("\n");
				}
				State.SkipWithError(TCHAR_TO_UTF8(*(TEXT("the request did not come through whole:\n") + Messages)));
				State.ResumeTiming();
				break;
			}
			CamMs += (*Telemetry)->GetNumberField(TEXT("cam_build_time_ms"));
			FuzzyMs += MeanFuzzyLatency(*Telemetry);

			Calvorn::FToolResult SaveResult;
			UBlueprint* Blueprint = FBlueprintUtils::LoadBlueprint(Path, SaveResult);
			const auto SaveStart = std::chrono::steady_clock::now();
			FAssetOperationBase::SaveAsset(Blueprint, SaveResult);
			SaveMs += std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - SaveStart).count();
			++Calls;
			State.ResumeTiming();
		}
		if (Calls > 0)
		{
			State.counters["total_ms"] = TotalMs / double(Calls);
			State.counters["cam_build_ms"] = CamMs / double(Calls);
			State.counters["fuzzy_node_ms"] = FuzzyMs / double(Calls);
			State.counters["save_ms"] = SaveMs / double(Calls);
		}
	}
	BENCHMARK(BM_PopulateHundredNodes)->Unit(benchmark::kMillisecond)->Iterations(20);
}

BENCHMARK_MAIN();
