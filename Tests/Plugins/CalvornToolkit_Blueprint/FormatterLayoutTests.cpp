// Layouts worked by hand from the rules: rows of exec flow, branches below, pure inputs up and to the left, columns
// for the rest, grid snapping with halves upward, alignment to anchors, and bounded steps out of obstacles. Heights
// are fixed per node (100 unless given) so every coordinate below follows from the rules alone.

#include <cmath>
#include <limits>

#include "FormatterTestScene.h"
#include "EdGraph/EdGraphNode_Comment.h"

IMPLEMENT_CLASS(UFormatterTestGraph)
IMPLEMENT_CLASS(UFormatterTestNode)

TEST(FormatterLayout, NothingToPlaceChangesNothingAndNotifiesNobody)
{
	FFormatterScene Scene;
	UFormatterTestNode* A = Scene.Node(13, 17);
	UFormatterTestNode* B = Scene.Node(-40, 90);
	Scene.Then(A, B);
	Scene.ResetCounters();

	Scene.Format({});
	Scene.Format({nullptr, nullptr});
	FBlueprintNodeFormatter::FormatNodes(nullptr, {A, B});
	FBlueprintNodeFormatter::FormatNodes(nullptr, {});

	EXPECT_NODE_AT(A, 13, 17);
	EXPECT_NODE_AT(B, -40, 90);
	EXPECT_EQ(Scene.Graph->ModifyCalls, 0);
	EXPECT_EQ(A->ModifyCalls + B->ModifyCalls, 0);
	EXPECT_EQ(Scene.Notifications, 0);

	// A graph without nodes stops before it looks at the allow list.
	FFormatterScene Empty;
	Empty.ResetCounters();
	Empty.Format({A});
	EXPECT_EQ(Empty.Graph->ModifyCalls, 0);
	EXPECT_EQ(Empty.Notifications, 0);
	EXPECT_NODE_AT(A, 13, 17);
}

TEST(FormatterLayout, AForeignAllowedNodeMovesNothingButStillWrites)
{
	// An allowed node of another graph has no record: it keeps the allow set non-empty, so the graph is modified and
	// notified, but every node of the graph is an anchor and the foreign node itself is never placed.
	FFormatterScene Scene;
	FFormatterScene Other;
	UFormatterTestNode* Anchor = Scene.Node(37, 41);
	UFormatterTestNode* Foreign = Other.Node(5, 5);
	Scene.ResetCounters();
	Other.ResetCounters();

	Scene.Format({Foreign});

	EXPECT_NODE_AT(Anchor, 37, 41);
	EXPECT_NODE_AT(Foreign, 5, 5);
	EXPECT_EQ(Scene.Graph->ModifyCalls, 1);
	EXPECT_EQ(Scene.Notifications, 1);
	EXPECT_EQ(Anchor->ModifyCalls, 0);
	EXPECT_EQ(Foreign->ModifyCalls, 0);
}

TEST(FormatterLayout, RemainingNodesGoBelowAnchorsAtTheirMeanX)
{
	{
		// Bottom of the anchor 200, so the column starts at 400; X is the anchor's. Y 400 clears its box (0,0)-(500,300).
		FFormatterScene Scene;
		UFormatterTestNode* Anchor = Scene.Node(100, 100);
		UFormatterTestNode* Loose = Scene.Node(0, 0);
		Scene.ResetCounters();
		Scene.Format({Loose});
		EXPECT_NODE_AT(Anchor, 100, 100);
		EXPECT_NODE_AT(Loose, 100, 400);
		// Only the moved node is modified, once; the graph once, and one argument-free notification.
		EXPECT_EQ(Loose->ModifyCalls, 1);
		EXPECT_EQ(Anchor->ModifyCalls, 0);
		EXPECT_EQ(Scene.Graph->ModifyCalls, 1);
		EXPECT_EQ(Scene.Notifications, 1);
	}
	{
		// The mean, not the first or last anchor.
		FFormatterScene Scene;
		Scene.Node(0, 0);
		Scene.Node(1000, 0);
		UFormatterTestNode* Loose = Scene.Node(0, 0);
		Scene.Format({Loose});
		EXPECT_NODE_AT(Loose, 500, 300);
	}
}

TEST(FormatterLayout, AnchorFedChainContinuesTheAnchorRow)
{
	struct FCase
	{
		int32 AnchorPins;
		int32 ExpectedX;
	};
	// 300 wide: 0 + 300 + 200. With 7 pins the anchor is 450 wide: 650, which snaps to 660.
	for (const FCase& Case : {FCase{1, 500}, FCase{7, 660}})
	{
		FFormatterScene Scene;
		UFormatterTestNode* Anchor = Scene.Node(0, 0);
		UFormatterTestNode* Child = Scene.Node(-300, 900);
		Scene.Then(Anchor, Child);
		for (int32 Extra = 1; Extra < Case.AnchorPins; ++Extra)
		{
			Scene.NewPin(Anchor, EGPD_Output, UEdGraphSchema_K2::PC_Int);
		}
		Scene.Format({Child});
		EXPECT_NODE_AT(Anchor, 0, 0);
		EXPECT_NODE_AT(Child, Case.ExpectedX, 0) << Case.AnchorPins << " anchor pins";
	}
}

TEST(FormatterLayout, SeedingSkipsFeedersWithoutARecord)
{
	// The first feeder lives in another graph; the anchor after it seeds the row: 1000 + 300 + 200, Y 40.
	FFormatterScene Scene;
	FFormatterScene Other;
	UFormatterTestNode* Foreign = Other.Node(-5000, -5000);
	UFormatterTestNode* Anchor = Scene.Node(1000, 40);
	UFormatterTestNode* Child = Scene.Node(0, 0);
	Scene.Then(Foreign, Child);
	Scene.Then(Anchor, Child);
	Scene.Format({Child});
	EXPECT_NODE_AT(Child, 1500, 40);
	EXPECT_NODE_AT(Foreign, -5000, -5000);
}

TEST(FormatterLayout, CommentsBlockTheirRealRectangle)
{
	struct FCase
	{
		int32 CommentHeight;
		int32 ExpectedY;
	};
	// The comment is also an anchor with the assumed size (bottom 100), so the column starts at Y 300. A 200-high
	// comment's box ends at 230 and 300 is free; a 400-high one ends at 430: steps to 400, then 500.
	for (const FCase& Case : {FCase{200, 300}, FCase{400, 500}})
	{
		FFormatterScene Scene;
		UEdGraphNode_Comment* Comment = Scene.Add<UEdGraphNode_Comment>(0, 0);
		Comment->NodeWidth = 400;
		Comment->NodeHeight = Case.CommentHeight;
		UFormatterTestNode* Loose = Scene.Node(0, 0);
		Scene.Format({Loose});
		EXPECT_NODE_AT(Comment, 0, 0);
		EXPECT_NODE_AT(Loose, 0, Case.ExpectedY) << "comment height " << Case.CommentHeight;
	}
}

TEST(FormatterLayout, VeryWideCommentsAndTouchingEdgesStillBlock)
{
	// S seeds K at (500,0). A comment 40000 wide (box (-20030,20)-(20030,90)) crosses K's place: one step to 100
	// clears it. A second comment whose box starts exactly at K's right edge (800) touches it from Y 100 on.
	{
		FFormatterScene Scene;
		UFormatterTestNode* S = Scene.Node(0, 0);
		UEdGraphNode_Comment* Band = Scene.Add<UEdGraphNode_Comment>(-20000, 50);
		Band->NodeWidth = 40000;
		Band->NodeHeight = 10;
		UFormatterTestNode* K = Scene.Node(0, 0);
		Scene.Then(S, K);
		Scene.Format({K});
		EXPECT_NODE_AT(K, 500, 100);
	}
	{
		// The touching box is (800,100)-(1130,430): K steps from 100 through 400 to 500, free below it.
		FFormatterScene Scene;
		UFormatterTestNode* S = Scene.Node(0, 0);
		UEdGraphNode_Comment* Band = Scene.Add<UEdGraphNode_Comment>(-20000, 50);
		Band->NodeWidth = 40000;
		Band->NodeHeight = 10;
		UEdGraphNode_Comment* Edge = Scene.Add<UEdGraphNode_Comment>(830, 130);
		Edge->NodeWidth = 270;
		Edge->NodeHeight = 270;
		UFormatterTestNode* K = Scene.Node(0, 0);
		Scene.Then(S, K);
		Scene.Format({K});
		EXPECT_NODE_AT(K, 500, 500);
	}
}

TEST(FormatterLayout, AnAllowedCommentBlocksWhereItStoodAndAllowedNodesMayOverlap)
{
	// No anchors: the column starts at 200. The comment steps out of its own old box (ends at 430) to 500; the next
	// node is requested at 200 + 100 + 200 = 500, is clear of the old box, and lands on the comment.
	FFormatterScene Scene;
	UEdGraphNode_Comment* Comment = Scene.Add<UEdGraphNode_Comment>(0, 0);
	Comment->NodeWidth = 400;
	Comment->NodeHeight = 400;
	UFormatterTestNode* Loose = Scene.Node(0, 0);
	Scene.Format({Comment, Loose});
	EXPECT_NODE_AT(Comment, 0, 500);
	EXPECT_NODE_AT(Loose, 0, 500);
}

TEST(FormatterLayout, ChainsRunLeftToRightFromTheOrigin)
{
	FFormatterScene Scene;
	UFormatterTestNode* A = Scene.Node(100, 100);
	UFormatterTestNode* B = Scene.Node(250, 100);
	Scene.Then(A, B);
	Scene.Format({A, B});
	EXPECT_NODE_AT(A, 0, 0);
	EXPECT_NODE_AT(B, 500, 0);

	// A wide node pushes its successor further: 450 + 200 = 650, snapped to 660.
	FFormatterScene Wide;
	UFormatterTestNode* W = Wide.Node(0, 0);
	UFormatterTestNode* Next = Wide.Node(0, 0);
	Wide.Then(W, Next);
	for (int32 Extra = 0; Extra < 6; ++Extra)
	{
		Wide.NewPin(W, EGPD_Output, UEdGraphSchema_K2::PC_Int);
	}
	Wide.Format({W, Next});
	EXPECT_NODE_AT(W, 0, 0);
	EXPECT_NODE_AT(Next, 660, 0);
}

TEST(FormatterLayout, BranchesStackBelowAndMergesKeepTheFirstPlace)
{
	// A.Then -> B (150 high), A.Else -> C; B -> D (400 high); C -> D and C -> E. F is a second root.
	// A (0,0). B on A's row (500,0); C requested at 0 + 150 + 200 = 350, which snaps up to 360.
	// D is placed from B (dequeued first) at (1000,0). From C, D is already placed: the next row becomes
	// 400 + 0 + 200 = 600, so E goes to (1000,600) rather than C's row. The chain's bottom is 600 + 100 + 200 = 900,
	// so F starts at 1100.
	FFormatterScene Scene;
	UFormatterTestNode* A = Scene.Node(7, 7);
	UFormatterTestNode* B = Scene.Node(7, 7, 150.0f);
	UFormatterTestNode* C = Scene.Node(7, 7);
	UFormatterTestNode* D = Scene.Node(7, 7, 400.0f);
	UFormatterTestNode* E = Scene.Node(7, 7);
	UFormatterTestNode* F = Scene.Node(7, 7);
	Scene.Then(A, B);
	Scene.Then(A, C);
	Scene.Then(B, D);
	Scene.Then(C, D);
	Scene.Then(C, E);
	Scene.NewPin(F, EGPD_Output, UEdGraphSchema_K2::PC_Exec);
	// The allow list's order does not matter: the graph's order does.
	Scene.Format({F, E, D, C, B, A});
	EXPECT_NODE_AT(A, 0, 0);
	EXPECT_NODE_AT(B, 500, 0);
	EXPECT_NODE_AT(C, 500, 360);
	EXPECT_NODE_AT(D, 1000, 0);
	EXPECT_NODE_AT(E, 1000, 600);
	EXPECT_NODE_AT(F, 0, 1100);
}

TEST(FormatterLayout, TheNextBranchFollowsTheRequestedRowNotTheCollidedOne)
{
	// The anchor's box (400,-100)-(900,200) pushes B from (500,0) down to 300. C is requested from B's requested row:
	// 0 + 100 + 200 = 300, free of the box, so it lands on B; nothing separates allowed nodes.
	FFormatterScene Scene;
	UFormatterTestNode* Anchor = Scene.Node(500, 0);
	UFormatterTestNode* A = Scene.Node(0, 0);
	UFormatterTestNode* B = Scene.Node(0, 0);
	UFormatterTestNode* C = Scene.Node(0, 0);
	Scene.Then(A, B);
	Scene.Then(A, C);
	Scene.Format({A, B, C});
	EXPECT_NODE_AT(Anchor, 500, 0);
	EXPECT_NODE_AT(A, 0, 0);
	EXPECT_NODE_AT(B, 500, 300);
	EXPECT_NODE_AT(C, 500, 300);
}

TEST(FormatterLayout, HeightsNotAboveZeroCountAsOneHundred)
{
	// C goes below B: with B counted as 100 high, at 100 + 200 = 300.
	for (const float Height : {0.0f, -5.0f, std::numeric_limits<float>::quiet_NaN()})
	{
		FFormatterScene Scene;
		UFormatterTestNode* A = Scene.Node(0, 0);
		UFormatterTestNode* B = Scene.Node(0, 0, Height);
		UFormatterTestNode* C = Scene.Node(0, 0);
		Scene.Then(A, B);
		Scene.Then(A, C);
		Scene.Format({A, B, C});
		EXPECT_NODE_AT(B, 500, 0);
		EXPECT_NODE_AT(C, 500, 300) << "height " << Height;
	}
}

TEST(FormatterLayout, PureInputsHangUpAndLeftOfTheirConsumer)
{
	// A -> K puts K at (500,0). Its inputs start at X 250 (snaps up to 260) and Y -200. P1's own input Q, at depth 1,
	// is requested at (260 - 250, -200) = (10,-200), which snaps to (20,-200). Q is 300 high: the bottom under P1
	// becomes -200 + 300 + 20 = 120, which pushes P2 from 0 down to 120.
	FFormatterScene Scene;
	UFormatterTestNode* A = Scene.Node(0, 0);
	UFormatterTestNode* K = Scene.Node(0, 0);
	UFormatterTestNode* P1 = Scene.Node(0, 0);
	UFormatterTestNode* P2 = Scene.Node(0, 0);
	UFormatterTestNode* Q = Scene.Node(0, 0, 300.0f);
	Scene.Then(A, K);
	Scene.Feeds(P1, K);
	Scene.Feeds(P2, K);
	Scene.Feeds(Q, P1);
	Scene.Format({A, K, P1, P2, Q});
	EXPECT_NODE_AT(A, 0, 0);
	EXPECT_NODE_AT(K, 500, 0);
	EXPECT_NODE_AT(P1, 260, -200);
	EXPECT_NODE_AT(Q, 20, -200);
	EXPECT_NODE_AT(P2, 260, 120);
}

TEST(FormatterLayout, APureInputFollowsItsFirstConsumerAndImpureProvidersAreNotPulled)
{
	// P feeds K and K2: it is placed for K at (260,-200) and stays there when K2 (1000,0) is placed. E feeds K too
	// but has an exec pin: it is not a pure input, so it is a root of its own, below the first chain (bottom 300).
	FFormatterScene Scene;
	UFormatterTestNode* A = Scene.Node(0, 0);
	UFormatterTestNode* K = Scene.Node(0, 0);
	UFormatterTestNode* K2 = Scene.Node(0, 0);
	UFormatterTestNode* P = Scene.Node(0, 0);
	UFormatterTestNode* E = Scene.Node(0, 0);
	Scene.Then(A, K);
	Scene.Then(K, K2);
	Scene.Feeds(P, K);
	Scene.Feeds(P, K2);
	Scene.Feeds(E, K);
	Scene.NewPin(E, EGPD_Output, UEdGraphSchema_K2::PC_Exec);
	Scene.Format({A, K, K2, P, E});
	EXPECT_NODE_AT(A, 0, 0);
	EXPECT_NODE_AT(K, 500, 0);
	EXPECT_NODE_AT(P, 260, -200);
	EXPECT_NODE_AT(K2, 1000, 0);
	EXPECT_NODE_AT(E, 0, 500);
}

TEST(FormatterLayout, ExecCyclesHaveNoRootAndFallToTheColumn)
{
	FFormatterScene Scene;
	UFormatterTestNode* A = Scene.Node(300, 300);
	UFormatterTestNode* B = Scene.Node(600, 300);
	Scene.Then(A, B);
	Scene.Then(B, A);
	Scene.Format({B, A});
	EXPECT_NODE_AT(A, 0, 200);
	EXPECT_NODE_AT(B, 0, 500);
}

TEST(FormatterLayout, ColumnsWrapPastTheHeightLimit)
{
	// Twelve loose nodes: Y 200, 500, ..., 2000 (seven), then a new column at X = 0 + widest + 200.
	for (const bool bWideThird : {false, true})
	{
		FFormatterScene Scene;
		TArray<UEdGraphNode*> Loose;
		for (int32 Index = 0; Index < 12; ++Index)
		{
			Loose.Add(Scene.Node(Index * 10, Index * 10));
		}
		if (bWideThird)
		{
			for (int32 Extra = 0; Extra < 7; ++Extra)
			{
				Scene.NewPin(Loose[2], EGPD_Input, UEdGraphSchema_K2::PC_Int);
			}
		}
		Scene.Format(Loose);
		// 300 + 200 = 500; with a 450-wide node in the first column 650, which snaps to 660.
		const int32 SecondColumnX = bWideThird ? 660 : 500;
		for (int32 Index = 0; Index < 12; ++Index)
		{
			const int32 ExpectedX = Index < 7 ? 0 : SecondColumnX;
			const int32 ExpectedY = 200 + 300 * (Index < 7 ? Index : Index - 7);
			EXPECT_NODE_AT(Loose[Index], ExpectedX, ExpectedY) << "node " << Index << (bWideThird ? " (wide third)" : "");
		}
	}
}

TEST(FormatterLayout, AColumnStartingBelowTheLimitGivesEachNodeItsOwnColumn)
{
	// The anchor's bottom is 2100, so the column starts at 2300, already beyond 2000: every node opens a column.
	FFormatterScene Scene;
	Scene.Node(0, 2000);
	UFormatterTestNode* N1 = Scene.Node(0, 0);
	UFormatterTestNode* N2 = Scene.Node(0, 0);
	UFormatterTestNode* N3 = Scene.Node(0, 0);
	Scene.Format({N1, N2, N3});
	EXPECT_NODE_AT(N1, 200, 2300);
	EXPECT_NODE_AT(N2, 700, 2300);
	EXPECT_NODE_AT(N3, 1200, 2300);
}

TEST(FormatterLayout, CollisionStepsStopAfterEight)
{
	// S seeds K at (0,0), inside T's box (-100,-100)-(400,1100): eight steps of 100 leave it at 800, still inside.
	FFormatterScene Scene;
	UFormatterTestNode* S = Scene.Node(-500, 0);
	Scene.Node(0, 0, 1000.0f);
	UFormatterTestNode* K = Scene.Node(0, 0);
	Scene.Then(S, K);
	Scene.Format({K});
	EXPECT_NODE_AT(K, 0, 800);
}

TEST(FormatterLayout, AlignmentPullsToNearbyAnchorsOffTheGrid)
{
	{
		// Seeded at Y 107, snapped to 100, pulled back to the anchor's 107.
		FFormatterScene Scene;
		UFormatterTestNode* S = Scene.Node(-500, 107);
		UFormatterTestNode* K = Scene.Node(0, 0);
		Scene.Then(S, K);
		Scene.Format({K});
		EXPECT_NODE_AT(K, 0, 107);
	}
	// Anchors at X -10 and 10 are both 10 from the requested 0: the later one in graph order wins.
	for (const bool bMinusFirst : {true, false})
	{
		FFormatterScene Scene;
		UFormatterTestNode* S = Scene.Node(-500, 0);
		Scene.Node(bMinusFirst ? -10 : 10, 3000);
		Scene.Node(bMinusFirst ? 10 : -10, 3000);
		UFormatterTestNode* K = Scene.Node(0, 0);
		Scene.Then(S, K);
		Scene.Format({K});
		EXPECT_NODE_AT(K, bMinusFirst ? 10 : -10, 0);
	}
}

TEST(FormatterLayout, DisconnectedClustersStackAndPureBottomsOnlyCountForTheColumn)
{
	// Cluster one: A branches to B and B2 (250 high); P (2000 high) feeds B. Its bottom ignores P: B2's row 300 plus
	// 250 + 200 gives 750, so cluster two starts at 950, which snaps up to 960. The column of loose nodes starts
	// below everything placed, P included (-200 + 2000 = 1800), at 2000.
	FFormatterScene Scene;
	UFormatterTestNode* A = Scene.Node(0, 0);
	UFormatterTestNode* B = Scene.Node(0, 0);
	UFormatterTestNode* B2 = Scene.Node(0, 0, 250.0f);
	UFormatterTestNode* P = Scene.Node(0, 0, 2000.0f);
	UFormatterTestNode* C = Scene.Node(0, 0);
	UFormatterTestNode* D = Scene.Node(0, 0);
	UFormatterTestNode* R = Scene.Node(0, 0);
	Scene.Then(A, B);
	Scene.Then(A, B2);
	Scene.Feeds(P, B);
	Scene.Then(C, D);
	Scene.Format({A, B, B2, P, C, D, R});
	EXPECT_NODE_AT(A, 0, 0);
	EXPECT_NODE_AT(B, 500, 0);
	EXPECT_NODE_AT(B2, 500, 300);
	EXPECT_NODE_AT(P, 260, -200);
	EXPECT_NODE_AT(C, 0, 960);
	EXPECT_NODE_AT(D, 500, 960);
	EXPECT_NODE_AT(R, 0, 2000);
}

TEST(FormatterLayout, CursorsAndAnchorCoordinatesAreSinglePrecision)
{
	// 16777217 is not a float: the seeded row and the anchor's aligned Y both become 16777216. The request snaps to
	// 16777220 and aligns back to 16777216, one unit above the anchor it continues.
	FFormatterScene Scene;
	UFormatterTestNode* S = Scene.Node(0, 16777217);
	UFormatterTestNode* K = Scene.Node(0, 0);
	Scene.Then(S, K);
	Scene.Format({K});
	EXPECT_NODE_AT(S, 0, 16777217);
	EXPECT_NODE_AT(K, 500, 16777216);
}

TEST(FormatterLayout, DefaultMeasureIsTheK2Estimate)
{
	// The overload without a measure asks the K2 schema; C's row follows B's estimated height.
	FFormatterScene Scene;
	UFormatterTestNode* A = Scene.Node(0, 0);
	UFormatterTestNode* B = Scene.Node(0, 0);
	UFormatterTestNode* C = Scene.Node(0, 0);
	Scene.Then(A, B);
	Scene.Then(A, C);
	Scene.NewPin(B, EGPD_Input, UEdGraphSchema_K2::PC_Int);
	FBlueprintNodeFormatter::FormatNodes(Scene.Graph, {A, B, C});

	const float Estimate = UEdGraphSchema_K2::EstimateNodeHeight(B);
	const double Height = Estimate > 0.0f ? double(Estimate) : 100.0;
	const int32 ExpectedRow = int32(std::floor((Height + 200.0 + 10.0) / 20.0) * 20.0);
	EXPECT_NODE_AT(B, 500, 0);
	EXPECT_NODE_AT(C, 500, ExpectedRow);
}

TEST(FormatterLayout, ALongPureChainDoesNotExhaustTheStack)
{
	// Each input of an input goes 250 left of its consumer and snaps back 10: 240 per level, on the first row.
	constexpr int32 ChainLength = 150000;
	FFormatterScene Scene;
	UFormatterTestNode* Root = Scene.Node(0, 0);
	Scene.NewPin(Root, EGPD_Output, UEdGraphSchema_K2::PC_Exec);
	TArray<UEdGraphNode*> Allowed = {Root};
	UEdGraphNode* Consumer = Root;
	for (int32 Index = 0; Index < ChainLength; ++Index)
	{
		UFormatterTestNode* Input = Scene.Node(0, 0);
		Scene.Feeds(Input, Consumer);
		Allowed.Add(Input);
		Consumer = Input;
	}
	Scene.Format(Allowed);
	EXPECT_NODE_AT(Root, 0, 0);
	EXPECT_NODE_AT(Allowed[1], -240, -200);
	EXPECT_NODE_AT(Allowed[2], -480, -200);
	EXPECT_NODE_AT(Allowed.Last(), -240 * ChainLength, -200);
}
