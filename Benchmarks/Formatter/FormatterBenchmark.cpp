// Laying out what one large populate request adds to a busy graph: 200 new nodes (chains with branches and pure
// inputs, nested ones among them) in a graph of 5,000 anchors and 50 comments. The target is under 20 ms per call.
//
// Every chain starts from an anchor inside the anchor field, so most placements collide and take their steps: the
// cost is close to the worst the obstacle search can do. The allow list is assembled as the tools do (the new nodes
// and their neighbours), inside the timed loop.

#include "CoreMinimal.h"
#include "BlueprintNodeFormatter.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphNode_Comment.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraphSchema_K2.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"

#include <benchmark/benchmark.h>

/** A node that carries the pins the benchmark links. */
class UFormatterBenchNode : public UEdGraphNode
{
	DECLARE_CLASS(UFormatterBenchNode, UEdGraphNode, CLASS_None, CASTCLASS_None, TEXT("/Script/FormatterBenchmark"), NO_API)
};

IMPLEMENT_CLASS(UFormatterBenchNode)

namespace
{
	constexpr int32 NumAnchors = 5000;
	constexpr int32 AnchorColumns = 50;
	constexpr int32 NumComments = 50;
	/** Ten new nodes per cluster: five in an exec chain with one branch, four pure inputs, one loose node. */
	constexpr int32 NumClusters = 20;

	UEdGraphPin* AddPin(UEdGraphNode* Node, EEdGraphPinDirection Direction, FName Category)
	{
		const FName Name(*FString::Printf(TEXT("%s_%d"), Direction == EGPD_Input ? TEXT("in") : TEXT("out"), Node->Pins.Num()));
		return Node->CreatePin(Direction, Category, Name);
	}

	void Then(UEdGraphNode* From, UEdGraphNode* To)
	{
		UEdGraphPin* Input = To->FindPin(TEXT("execute"), EGPD_Input);
		if (!Input)
		{
			Input = To->CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Exec, TEXT("execute"));
		}
		AddPin(From, EGPD_Output, UEdGraphSchema_K2::PC_Exec)->MakeLinkTo(Input);
	}

	void Feeds(UEdGraphNode* Source, UEdGraphNode* Consumer)
	{
		AddPin(Source, EGPD_Output, UEdGraphSchema_K2::PC_Float)->MakeLinkTo(AddPin(Consumer, EGPD_Input, UEdGraphSchema_K2::PC_Float));
	}

	struct FBusyGraph
	{
		UEdGraph* Graph = nullptr;
		TArray<UEdGraphNode*> NewNodes;

		static FBusyGraph& Get()
		{
			static FBusyGraph Instance;
			return Instance;
		}

	private:
		UEdGraphNode* Add(int32 X, int32 Y)
		{
			UEdGraphNode* Node = Graph->CreateNode(UFormatterBenchNode::StaticClass(), false);
			Node->NodePosX = X;
			Node->NodePosY = Y;
			return Node;
		}

		FBusyGraph()
		{
			Graph = NewObject<UEdGraph>(GetTransientPackage(), NAME_None);
			TArray<UEdGraphNode*> Anchors;
			for (int32 Index = 0; Index < NumAnchors; ++Index)
			{
				// A field of event-sized nodes with the irregular spacing people leave.
				UEdGraphNode* Anchor = Add((Index % AnchorColumns) * 520 + (Index * 37) % 41, (Index / AnchorColumns) * 260 + (Index * 53) % 29);
				AddPin(Anchor, EGPD_Output, UEdGraphSchema_K2::PC_Exec);
				AddPin(Anchor, EGPD_Input, UEdGraphSchema_K2::PC_Exec);
				Anchors.Add(Anchor);
			}
			for (int32 Index = 0; Index < NumComments; ++Index)
			{
				UEdGraphNode_Comment* Comment = static_cast<UEdGraphNode_Comment*>(Graph->CreateNode(UEdGraphNode_Comment::StaticClass(), false));
				Comment->NodePosX = (Index % 10) * 2600 - 60;
				Comment->NodePosY = (Index / 10) * 5200 - 60;
				Comment->NodeWidth = 1800;
				Comment->NodeHeight = 900;
			}
			for (int32 Cluster = 0; Cluster < NumClusters; ++Cluster)
			{
				UEdGraphNode* Event = Anchors[(Cluster * 241) % NumAnchors];
				TArray<UEdGraphNode*> Chain;
				for (int32 Index = 0; Index < 5; ++Index)
				{
					Chain.Add(Add(0, 0));
				}
				Then(Event, Chain[0]);
				Then(Chain[0], Chain[1]);
				Then(Chain[1], Chain[2]);
				Then(Chain[1], Chain[3]);
				Then(Chain[3], Chain[4]);
				UEdGraphNode* Pure = Add(0, 0);
				UEdGraphNode* Nested = Add(0, 0);
				UEdGraphNode* Shared = Add(0, 0);
				UEdGraphNode* Other = Add(0, 0);
				UEdGraphNode* Loose = Add(0, 0);
				Feeds(Pure, Chain[1]);
				Feeds(Nested, Pure);
				Feeds(Shared, Chain[2]);
				Feeds(Shared, Chain[4]);
				Feeds(Other, Chain[4]);
				NewNodes.Append(Chain);
				NewNodes.Append({Pure, Nested, Shared, Other, Loose});
			}
		}
	};

	void BM_FormatNewNodesInBusyGraph(benchmark::State& State)
	{
		FBusyGraph& Busy = FBusyGraph::Get();
		int32 NeighborCount = 0;
		for (auto _ : State)
		{
			const TArray<UEdGraphNode*> AllowList = FBlueprintNodeFormatter::BuildAllowList(Busy.NewNodes, NeighborCount);
			FBlueprintNodeFormatter::FormatNodes(Busy.Graph, AllowList);
			benchmark::DoNotOptimize(Busy.Graph->Nodes.Last()->NodePosY);
		}
		State.counters["new_nodes"] = double(Busy.NewNodes.Num());
		State.counters["graph_nodes"] = double(Busy.Graph->Nodes.Num());
		State.counters["neighbors"] = double(NeighborCount);
	}
	BENCHMARK(BM_FormatNewNodesInBusyGraph)->Unit(benchmark::kMillisecond);
}

BENCHMARK_MAIN();
