// An Animation Blueprint whose state machine has 50 states and 100 transitions (each state to the next and to the one
// after, wired the way the editor wires two states a user drags between): building the machine, compiling the
// Blueprint, saving its package and loading it back (which compiles it again, as the editor does on load). Each step
// is timed on its own, in milliseconds. The project lives in a temporary folder removed at exit.

#include "../Common/BenchmarkPackages.h"
#include "../Common/BenchmarkProject.h"
#include "AnimGraphNode_StateMachineBase.h"
#include "AnimStateNode.h"
#include "AnimStateNodeBase.h"
#include "AnimStateTransitionNode.h"
#include "AnimationStateMachineGraph.h"
#include "Animation/AnimBlueprint.h"
#include "Animation/AnimInstance.h"
#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "HAL/FileManager.h"
#include "HAL/PlatformMisc.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Kismet2/CompilerResultsLog.h"
#include "Kismet2/KismetEditorUtilities.h"
#include "Misc/PackageName.h"
#include "UObject/Package.h"
#include "UObject/SavePackage.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"

#include <benchmark/benchmark.h>

namespace
{
	constexpr int32 NumStates = 50;
	const TCHAR* const PackageName = TEXT("/Game/Bench/ABP_StateBench");
	const TCHAR* const AssetName = TEXT("ABP_StateBench");
	using UE::Benchmarks::FBenchProject;
	using UE::Benchmarks::ForgetPackage;
	using UE::Benchmarks::PackageFile;
	using UE::Benchmarks::SaveAssetPackage;
	using UE::Benchmarks::TimePackageLoads;

	template <typename NodeType>
	NodeType* Place(UEdGraph* Graph, int32 X, int32 Y)
	{
		FGraphNodeCreator<NodeType> Creator(*Graph);
		NodeType* Node = Creator.CreateNode(false);
		Node->NodePosX = X;
		Node->NodePosY = Y;
		Creator.Finalize();
		return Node;
	}

	void UnloadBench()
	{
		ForgetPackage(PackageName);
	}

	UAnimBlueprint* MakeBlueprint()
	{
		UPackage* Package = CreatePackage(PackageName);
		return Cast<UAnimBlueprint>(FKismetEditorUtilities::CreateBlueprint(UAnimInstance::StaticClass(), Package, AssetName, BPTYPE_Normal,
			UAnimBlueprint::StaticClass(), UBlueprintGeneratedClass::StaticClass()));
	}

	UEdGraph* FindAnimGraph(UAnimBlueprint& Blueprint)
	{
		for (UEdGraph* Graph : Blueprint.FunctionGraphs)
		{
			if (Graph && Graph->GetFName() == UEdGraphSchema_K2::GN_AnimGraph)
			{
				return Graph;
			}
		}
		return nullptr;
	}

	/** The state machine of the benchmark; returns the transitions made, or -1 when the graph refused a wire. */
	int32 BuildStateMachine(UAnimBlueprint& Blueprint)
	{
		UEdGraph* AnimGraph = FindAnimGraph(Blueprint);
		if (!AnimGraph)
		{
			return -1;
		}
		UAnimGraphNode_StateMachine* Machine = Place<UAnimGraphNode_StateMachine>(AnimGraph, -300, 0);
		UAnimationStateMachineGraph* Graph = Machine->EditorStateMachineGraph;
		TArray<UAnimStateNode*> States;
		for (int32 Index = 0; Index < NumStates; ++Index)
		{
			UAnimStateNode* State = Place<UAnimStateNode>(Graph, (Index % 10) * 400, (Index / 10) * 300);
			State->OnRenameNode(FString::Printf(TEXT("State%d"), Index));
			States.Add(State);
		}
		if (!Graph->EntryNode || !Graph->GetSchema()->TryCreateConnection(Graph->EntryNode->Pins[0], States[0]->GetInputPin()))
		{
			return -1;
		}
		int32 Transitions = 0;
		for (int32 Index = 0; Index < NumStates; ++Index)
		{
			for (const int32 Step : {1, 2})
			{
				UAnimStateNode* From = States[Index];
				UAnimStateNode* To = States[(Index + Step) % NumStates];
				if (!Graph->GetSchema()->TryCreateConnection(From->GetOutputPin(), To->GetInputPin()))
				{
					return -1;
				}
				++Transitions;
			}
		}
		FBlueprintEditorUtils::MarkBlueprintAsStructurallyModified(&Blueprint);
		return Transitions;
	}

	int32 CountTransitions(const UAnimBlueprint& Blueprint)
	{
		TArray<UEdGraph*> Graphs;
		Blueprint.GetAllGraphs(Graphs);
		int32 Count = 0;
		for (const UEdGraph* Graph : Graphs)
		{
			for (const UEdGraphNode* Node : Graph->Nodes)
			{
				Count += Node && Node->IsA<UAnimStateTransitionNode>() ? 1 : 0;
			}
		}
		return Count;
	}

	bool CheckProject(benchmark::State& State)
	{
		FBenchProject& Project = FBenchProject::Get();
		if (!Project.IsOpen())
		{
			State.SkipWithError(TCHAR_TO_UTF8(*Project.GetError()));
			return false;
		}
		FModuleManager::Get().LoadModule(TEXT("AnimGraph"));
		FPlatformMisc::SeedGuidGenerator(1);
		return true;
	}

	bool Compile(UAnimBlueprint* Blueprint)
	{
		FCompilerResultsLog Log;
		Log.bSilentMode = true;
		FKismetEditorUtilities::CompileBlueprint(Blueprint, EBlueprintCompileOptions::None, &Log);
		return Log.NumErrors == 0;
	}

	/** A fresh Blueprint with the whole machine, compiled; null after reporting why it could not be made. */
	UAnimBlueprint* MakeCompiledBlueprint(benchmark::State& State)
	{
		UnloadBench();
		UAnimBlueprint* Blueprint = MakeBlueprint();
		if (!Blueprint || BuildStateMachine(*Blueprint) != 2 * NumStates || !Compile(Blueprint))
		{
			State.SkipWithError("the Animation Blueprint could not be built and compiled");
			return nullptr;
		}
		return Blueprint;
	}

	void BM_BuildStateMachine(benchmark::State& State)
	{
		if (!CheckProject(State))
		{
			return;
		}
		int32 Transitions = 0;
		for (auto _ : State)
		{
			State.PauseTiming();
			UnloadBench();
			UAnimBlueprint* Blueprint = MakeBlueprint();
			State.ResumeTiming();
			Transitions = Blueprint ? BuildStateMachine(*Blueprint) : -1;
		}
		if (Transitions != 2 * NumStates)
		{
			State.SkipWithError("the state machine was not built whole");
			return;
		}
		State.counters["states"] = NumStates;
		State.counters["transitions"] = Transitions;
	}
	BENCHMARK(BM_BuildStateMachine)->Unit(benchmark::kMillisecond);

	void BM_CompileAnimBlueprint(benchmark::State& State)
	{
		if (!CheckProject(State))
		{
			return;
		}
		UAnimBlueprint* Blueprint = MakeCompiledBlueprint(State);
		if (!Blueprint)
		{
			return;
		}
		for (auto _ : State)
		{
			if (!Compile(Blueprint))
			{
				State.SkipWithError("the Animation Blueprint does not compile");
				return;
			}
		}
	}
	BENCHMARK(BM_CompileAnimBlueprint)->Unit(benchmark::kMillisecond);

	void BM_SaveAnimBlueprint(benchmark::State& State)
	{
		if (!CheckProject(State))
		{
			return;
		}
		UAnimBlueprint* Blueprint = MakeCompiledBlueprint(State);
		if (!Blueprint)
		{
			return;
		}
		for (auto _ : State)
		{
			if (!SaveAssetPackage(State, Blueprint))
			{
				return;
			}
		}
		State.counters["bytes"] = double(IFileManager::Get().FileSize(*PackageFile(PackageName)));
	}
	BENCHMARK(BM_SaveAnimBlueprint)->Unit(benchmark::kMillisecond);

	void BM_LoadAnimBlueprint(benchmark::State& State)
	{
		if (!CheckProject(State))
		{
			return;
		}
		UAnimBlueprint* Blueprint = MakeCompiledBlueprint(State);
		if (!Blueprint)
		{
			return;
		}
		if (!SaveAssetPackage(State, Blueprint))
		{
			return;
		}
		const int32 Transitions = TimePackageLoads(State, PackageName, [](UPackage* Package) {
			const UAnimBlueprint* Loaded = FindObject<UAnimBlueprint>(Package, AssetName);
			return Loaded ? CountTransitions(*Loaded) : 0;
		});
		if (Transitions < 0)
		{
			return;
		}
		if (Transitions != 2 * NumStates)
		{
			State.SkipWithError("the loaded machine does not have every transition");
			return;
		}
		State.counters["transitions"] = Transitions;
	}
	BENCHMARK(BM_LoadAnimBlueprint)->Unit(benchmark::kMillisecond);
}

BENCHMARK_MAIN();
