// A 2,000-node event graph in a Blueprint: building it, wiring it through the K2 schema, saving its package,
// loading it back and rebuilding every node's pins. Each step is timed on its own; the target is under 100 ms
// per step. The project lives in a temporary folder removed at exit.

#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "GameFramework/Actor.h"
#include "HAL/FileManager.h"
#include "HAL/PlatformMisc.h"
#include "../Common/BenchmarkPackages.h"
#include "../Common/BenchmarkProject.h"
#include "K2Node_CallFunction.h"
#include "K2Node_DynamicCast.h"
#include "K2Node_ExecutionSequence.h"
#include "K2Node_IfThenElse.h"
#include "K2Node_Knot.h"
#include "K2Node_MacroInstance.h"
#include "K2Node_MakeArray.h"
#include "K2Node_MathExpression.h"
#include "K2Node_PromotableOperator.h"
#include "K2Node_Select.h"
#include "K2Node_SwitchInteger.h"
#include "Misc/FileHelper.h"
#include "Misc/PackageName.h"
#include "Misc/Paths.h"
#include "Modules/ModuleManager.h"
#include "UObject/Package.h"
#include "UObject/SavePackage.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace
{
	constexpr int32 NumNodes = 2000;
	const TCHAR* const PackageName = TEXT("/Game/Bench/BP_GraphBench");
	using UE::Benchmarks::FBenchProject;
	using UE::Benchmarks::ForgetPackage;
	using UE::Benchmarks::PackageFile;
	using UE::Benchmarks::SaveAssetPackage;
	using UE::Benchmarks::TimePackageLoads;


	UFunction* LibraryFunction(const TCHAR* Library, const TCHAR* Function)
	{
		UClass* Class = FindObject<UClass>(nullptr, *FString::Printf(TEXT("/Script/Engine.%s"), Library));
		return Class ? Class->FindFunctionByName(FName(Function)) : nullptr;
	}

	template <typename T, typename SetupType>
	T* PlaceNode(UEdGraph& Graph, int32 Index, SetupType&& Setup)
	{
		T* Node = static_cast<T*>(Graph.CreateNode(T::StaticClass(), false, false));
		Node->NodePosX = (Index % 40) * 320;
		Node->NodePosY = (Index / 40) * 240;
		Setup(*Node);
		Node->CreateNewGuid();
		Node->PostPlacedNewNode();
		if (Node->Pins.Num() == 0)
		{
			Node->AllocateDefaultPins();
		}
		return Node;
	}

	/** A Blueprint with an empty event graph in the bench package. */
	UBlueprint* MakeBlueprint()
	{
		UPackage* Package = CreatePackage(PackageName);
		UBlueprint* Blueprint = NewObject<UBlueprint>(Package, TEXT("BP_GraphBench"), RF_Public | RF_Standalone | RF_Transactional);
		Blueprint->ParentClass = AActor::StaticClass();
		UEdGraph* Graph = NewObject<UEdGraph>(Blueprint, TEXT("EventGraph"), RF_Transactional);
		Graph->Schema = UEdGraphSchema_K2::StaticClass();
		Blueprint->UbergraphPages.Add(Graph);
		return Blueprint;
	}

	/** Ten kinds of node in turn: flow control, switches, casts, a macro, wildcard nodes, calls and operators. */
	void FillGraph(UEdGraph& Graph)
	{
		UFunction* PrintString = LibraryFunction(TEXT("KismetSystemLibrary"), TEXT("PrintString"));
		UFunction* AddDoubles = LibraryFunction(TEXT("KismetMathLibrary"), TEXT("Add_DoubleDouble"));
		UClass* Pawn = FindObject<UClass>(nullptr, TEXT("/Script/Engine.Pawn"));
		UEdGraph* ForLoop = UE::BlueprintGraph::FindStandardMacro(TEXT("ForLoop"));
		for (int32 Index = 0; Index < NumNodes; ++Index)
		{
			switch (Index % 10)
			{
			case 0: PlaceNode<UK2Node_IfThenElse>(Graph, Index, [](UK2Node_IfThenElse&) {}); break;
			case 1: PlaceNode<UK2Node_ExecutionSequence>(Graph, Index, [](UK2Node_ExecutionSequence&) {}); break;
			case 2: PlaceNode<UK2Node_SwitchInteger>(Graph, Index, [](UK2Node_SwitchInteger&) {})->AddPinToSwitchNode(); break;
			case 3: PlaceNode<UK2Node_DynamicCast>(Graph, Index, [Pawn](UK2Node_DynamicCast& Node) { Node.TargetType = Pawn; }); break;
			case 4: PlaceNode<UK2Node_MacroInstance>(Graph, Index, [ForLoop](UK2Node_MacroInstance& Node) { Node.SetMacroGraph(ForLoop); }); break;
			case 5: PlaceNode<UK2Node_Select>(Graph, Index, [](UK2Node_Select&) {}); break;
			case 6: PlaceNode<UK2Node_MakeArray>(Graph, Index, [](UK2Node_MakeArray&) {}); break;
			case 7: PlaceNode<UK2Node_Knot>(Graph, Index, [](UK2Node_Knot&) {}); break;
			case 8: PlaceNode<UK2Node_CallFunction>(Graph, Index, [PrintString](UK2Node_CallFunction& Node) { Node.SetFromFunction(PrintString); }); break;
			default: PlaceNode<UK2Node_PromotableOperator>(Graph, Index, [AddDoubles](UK2Node_PromotableOperator& Node) { Node.SetFromFunction(AddDoubles); }); break;
			}
		}
	}

	UEdGraphPin* FirstPin(const UEdGraphNode* Node, EEdGraphPinDirection Direction, bool bExec)
	{
		for (UEdGraphPin* Pin : Node->Pins)
		{
			if (Pin->Direction == Direction && !Pin->bHidden && UEdGraphSchema_K2::IsExecPin(*Pin) == bExec)
			{
				return Pin;
			}
		}
		return nullptr;
	}

	/** One execution chain through every impure node, and a chain of sums and reroutes; returns the links made. */
	int32 WireGraph(UEdGraph& Graph)
	{
		const UEdGraphSchema_K2* Schema = GetDefault<UEdGraphSchema_K2>();
		int32 Links = 0;
		UEdGraphPin* PendingExec = nullptr;
		UEdGraphNode* PreviousSum = nullptr;
		UEdGraphNode* PreviousKnot = nullptr;
		for (UEdGraphNode* Node : Graph.Nodes)
		{
			if (UEdGraphPin* ExecIn = FirstPin(Node, EGPD_Input, true))
			{
				if (PendingExec && Schema->TryCreateConnection(PendingExec, ExecIn))
				{
					++Links;
				}
				PendingExec = FirstPin(Node, EGPD_Output, true);
			}
			if (Node->IsA<UK2Node_PromotableOperator>())
			{
				if (PreviousSum && Schema->TryCreateConnection(FirstPin(PreviousSum, EGPD_Output, false), Node->FindPin(TEXT("A"))))
				{
					++Links;
				}
				PreviousSum = Node;
			}
			else if (Node->IsA<UK2Node_Knot>())
			{
				if (PreviousKnot && Schema->TryCreateConnection(FirstPin(PreviousKnot, EGPD_Output, false), FirstPin(Node, EGPD_Input, false)))
				{
					++Links;
				}
				PreviousKnot = Node;
			}
		}
		return Links;
	}

	/** Forgets the bench package and its file, so that each run starts from nothing. */
	void UnloadBench()
	{
		ForgetPackage(PackageName);
	}

	bool CheckProject(benchmark::State& State)
	{
		FBenchProject& Project = FBenchProject::Get();
		if (!Project.IsOpen())
		{
			State.SkipWithError(TCHAR_TO_UTF8(*Project.GetError()));
			return false;
		}
		FPlatformMisc::SeedGuidGenerator(1);
		return true;
	}

	void BM_BuildGraph(benchmark::State& State)
	{
		if (!CheckProject(State))
		{
			return;
		}
		int32 Pins = 0;
		for (auto _ : State)
		{
			State.PauseTiming();
			UnloadBench();
			UBlueprint* Blueprint = MakeBlueprint();
			State.ResumeTiming();
			FillGraph(*Blueprint->UbergraphPages[0]);
			State.PauseTiming();
			Pins = 0;
			for (const UEdGraphNode* Node : Blueprint->UbergraphPages[0]->Nodes)
			{
				Pins += Node->Pins.Num();
			}
			State.ResumeTiming();
		}
		State.counters["nodes"] = NumNodes;
		State.counters["pins"] = Pins;
	}
	BENCHMARK(BM_BuildGraph)->Unit(benchmark::kMillisecond);

	void BM_ConnectGraph(benchmark::State& State)
	{
		if (!CheckProject(State))
		{
			return;
		}
		int32 Links = 0;
		for (auto _ : State)
		{
			State.PauseTiming();
			UnloadBench();
			UBlueprint* Blueprint = MakeBlueprint();
			FillGraph(*Blueprint->UbergraphPages[0]);
			State.ResumeTiming();
			Links = WireGraph(*Blueprint->UbergraphPages[0]);
		}
		State.counters["links"] = Links;
	}
	BENCHMARK(BM_ConnectGraph)->Unit(benchmark::kMillisecond);

	void BM_SaveGraph(benchmark::State& State)
	{
		if (!CheckProject(State))
		{
			return;
		}
		UnloadBench();
		UBlueprint* Blueprint = MakeBlueprint();
		FillGraph(*Blueprint->UbergraphPages[0]);
		WireGraph(*Blueprint->UbergraphPages[0]);
		for (auto _ : State)
		{
			if (!SaveAssetPackage(State, Blueprint))
			{
				return;
			}
		}
		const int64 Bytes = IFileManager::Get().FileSize(*PackageFile(PackageName));
		State.counters["bytes"] = double(Bytes);
		State.counters["bytes_per_node"] = double(Bytes) / NumNodes;
	}
	BENCHMARK(BM_SaveGraph)->Unit(benchmark::kMillisecond);

	void BM_LoadGraph(benchmark::State& State)
	{
		if (!CheckProject(State))
		{
			return;
		}
		UnloadBench();
		UBlueprint* Blueprint = MakeBlueprint();
		FillGraph(*Blueprint->UbergraphPages[0]);
		WireGraph(*Blueprint->UbergraphPages[0]);
		if (!SaveAssetPackage(State, Blueprint))
		{
			return;
		}
		const int32 Loaded = TimePackageLoads(State, PackageName, [](UPackage* Package) {
			UBlueprint* LoadedBlueprint = FindObject<UBlueprint>(Package, TEXT("BP_GraphBench"));
			return LoadedBlueprint ? LoadedBlueprint->UbergraphPages[0]->Nodes.Num() : 0;
		});
		if (Loaded < 0)
		{
			return;
		}
		if (Loaded != NumNodes)
		{
			State.SkipWithError("the loaded graph does not have every node");
		}
		State.counters["nodes"] = Loaded;
	}
	BENCHMARK(BM_LoadGraph)->Unit(benchmark::kMillisecond);

	void BM_ReconstructGraph(benchmark::State& State)
	{
		if (!CheckProject(State))
		{
			return;
		}
		UnloadBench();
		UBlueprint* Blueprint = MakeBlueprint();
		UEdGraph* Graph = Blueprint->UbergraphPages[0];
		FillGraph(*Graph);
		const int32 Links = WireGraph(*Graph);
		for (auto _ : State)
		{
			for (UEdGraphNode* Node : Graph->Nodes)
			{
				Node->ReconstructNode();
			}
		}
		// The wires must survive the rebuild.
		int32 LinksAfter = 0;
		for (const UEdGraphNode* Node : Graph->Nodes)
		{
			for (const UEdGraphPin* Pin : Node->Pins)
			{
				LinksAfter += Pin->Direction == EGPD_Output ? Pin->LinkedTo.Num() : 0;
			}
		}
		if (LinksAfter < Links)
		{
			State.SkipWithError("reconstruction lost links");
		}
		State.counters["links"] = LinksAfter;
	}
	BENCHMARK(BM_ReconstructGraph)->Unit(benchmark::kMillisecond);

	/**
	 * 100 math expression nodes given a formula of six calls and six inputs: each is parsed, resolved against the
	 * function libraries and built into its bound graph, as the populate tool does for a requested expression.
	 */
	void BM_MathExpressions(benchmark::State& State)
	{
		constexpr int32 NumExpressions = 100;
		if (!CheckProject(State))
		{
			return;
		}
		int32 InnerNodes = 0;
		for (auto _ : State)
		{
			State.PauseTiming();
			UnloadBench();
			UBlueprint* Blueprint = MakeBlueprint();
			UEdGraph* Graph = Blueprint->UbergraphPages[0];
			State.ResumeTiming();
			InnerNodes = 0;
			for (int32 Index = 0; Index < NumExpressions; ++Index)
			{
				UK2Node_MathExpression* Node = PlaceNode<UK2Node_MathExpression>(*Graph, Index, [](UK2Node_MathExpression&) {});
				Node->OnRenameNode(TEXT("sin(a) * 2 + cos(b) / (c - 1) + min(d, e) * pow(f, 2)"));
				if (Node->bHasCompilerMessage)
				{
					State.SkipWithError(TCHAR_TO_UTF8(*Node->ErrorMsg));
					return;
				}
				InnerNodes += Node->BoundGraph->Nodes.Num();
			}
		}
		State.counters["expressions"] = NumExpressions;
		State.counters["inner_nodes"] = InnerNodes;
	}
	BENCHMARK(BM_MathExpressions)->Unit(benchmark::kMillisecond);
}

BENCHMARK_MAIN();
