// Neighbour collection and the allow list the editing tools hand to the formatter: one hop over every pin, input
// nodes linked to each other counted as neighbours, nothing depending on the order of sets.

#include "FormatterTestScene.h"

namespace
{
	TArray<UEdGraphNode*> Sorted(const TSet<UEdGraphNode*>& Nodes, const TArray<UEdGraphNode*>& GraphOrder)
	{
		TArray<UEdGraphNode*> Result;
		for (UEdGraphNode* Node : GraphOrder)
		{
			if (Nodes.Contains(Node))
			{
				Result.Add(Node);
			}
		}
		EXPECT_EQ(Result.Num(), Nodes.Num()) << "a neighbour outside the graph";
		return Result;
	}
}

TEST(FormatterNeighbors, OneHopOverExecAndDataInBothDirections)
{
	// 1 -> 2 -> 3 by exec; 2 also feeds 4 and is fed by 5 through data; 6 hangs off 3 and is two hops away.
	FFormatterScene Scene;
	UFormatterTestNode* N1 = Scene.Node(0, 0);
	UFormatterTestNode* N2 = Scene.Node(0, 0);
	UFormatterTestNode* N3 = Scene.Node(0, 0);
	UFormatterTestNode* N4 = Scene.Node(0, 0);
	UFormatterTestNode* N5 = Scene.Node(0, 0);
	UFormatterTestNode* N6 = Scene.Node(0, 0);
	Scene.Then(N1, N2);
	Scene.Then(N2, N3);
	Scene.Then(N3, N6);
	TArray<UEdGraphNode*> Order = {N1, N2, N3, N4, N5, N6};

	const TSet<UEdGraphNode*> ExecOnly = FBlueprintNodeFormatter::CollectNeighborNodes({N2}, {});
	EXPECT_EQ(Sorted(ExecOnly, Order), (TArray<UEdGraphNode*>{N1, N3}));

	Scene.Feeds(N2, N4);
	Scene.Feeds(N5, N2);
	const TSet<UEdGraphNode*> WithData = FBlueprintNodeFormatter::CollectNeighborNodes({nullptr, N2, nullptr}, {});
	EXPECT_EQ(Sorted(WithData, Order), (TArray<UEdGraphNode*>{N1, N3, N4, N5}));

	// Excluded nodes are left out wherever they are met.
	const TSet<UEdGraphNode*> Excluding = FBlueprintNodeFormatter::CollectNeighborNodes({N2}, {N1, N5});
	EXPECT_EQ(Sorted(Excluding, Order), (TArray<UEdGraphNode*>{N3, N4}));
}

TEST(FormatterNeighbors, InputNodesLinkedToEachOtherAreTheirOwnNeighbours)
{
	FFormatterScene Scene;
	UFormatterTestNode* A = Scene.Node(0, 0);
	UFormatterTestNode* B = Scene.Node(0, 0);
	Scene.Then(A, B);

	const TSet<UEdGraphNode*> Neighbors = FBlueprintNodeFormatter::CollectNeighborNodes({A, B}, {});
	EXPECT_EQ(Neighbors.Num(), 2);
	EXPECT_TRUE(Neighbors.Contains(A));
	EXPECT_TRUE(Neighbors.Contains(B));

	int32 NeighborCount = -1;
	const TArray<UEdGraphNode*> AllowList = FBlueprintNodeFormatter::BuildAllowList({A, B}, NeighborCount);
	EXPECT_EQ(NeighborCount, 2);
	EXPECT_EQ(AllowList, (TArray<UEdGraphNode*>{A, B}));
}

TEST(FormatterNeighbors, AllowListKeepsTouchedNodesFirstWithoutDuplicatesOrNulls)
{
	// Touched: C (twice) and E, with a null between. Neighbours: B (of C) and F (of E), D (linked to both).
	FFormatterScene Scene;
	UFormatterTestNode* A = Scene.Node(0, 0);
	UFormatterTestNode* B = Scene.Node(0, 0);
	UFormatterTestNode* C = Scene.Node(0, 0);
	UFormatterTestNode* D = Scene.Node(0, 0);
	UFormatterTestNode* E = Scene.Node(0, 0);
	UFormatterTestNode* F = Scene.Node(0, 0);
	Scene.Then(A, B);
	Scene.Then(B, C);
	Scene.Then(C, D);
	Scene.Then(D, E);
	Scene.Feeds(F, E);

	int32 NeighborCount = -1;
	const TArray<UEdGraphNode*> AllowList = FBlueprintNodeFormatter::BuildAllowList({C, nullptr, E, C}, NeighborCount);
	EXPECT_EQ(NeighborCount, 3);
	ASSERT_EQ(AllowList.Num(), 5);
	EXPECT_EQ(AllowList[0], C);
	EXPECT_EQ(AllowList[1], E);
	EXPECT_EQ(Sorted(TSet<UEdGraphNode*>(AllowList), {A, B, C, D, E, F}), (TArray<UEdGraphNode*>{B, C, D, E, F}));

	int32 NoneCount = -1;
	EXPECT_EQ(FBlueprintNodeFormatter::BuildAllowList({nullptr}, NoneCount).Num(), 0);
	EXPECT_EQ(NoneCount, 0);
}

TEST(FormatterNeighbors, NullPinsAndLinksAreSkipped)
{
	FFormatterScene Scene;
	UFormatterTestNode* A = Scene.Node(0, 0);
	UFormatterTestNode* B = Scene.Node(0, 0);
	Scene.Then(A, B);
	UEdGraphPin* Out = A->Pins[0];
	A->Pins.Insert(nullptr, 0);
	Out->LinkedTo.Insert(nullptr, 0);

	const TSet<UEdGraphNode*> Neighbors = FBlueprintNodeFormatter::CollectNeighborNodes({A}, {});
	// The layout walks the same pins: a null pin or link must not stop B from following A.
	Scene.Format({A, B});

	Out->LinkedTo.RemoveAt(0);
	A->Pins.RemoveAt(0);
	EXPECT_EQ(Neighbors.Num(), 1);
	EXPECT_TRUE(Neighbors.Contains(B));
	EXPECT_NODE_AT(A, 0, 0);
	EXPECT_NODE_AT(B, 500, 0);
}
