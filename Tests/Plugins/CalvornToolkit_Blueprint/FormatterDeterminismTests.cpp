// The same graph gives the same picture: in this process whatever the allow list's order, the addresses of the
// objects or what was formatted before, and in every other process, checked against positions recorded once.

#include <string>

#include "FormatterTestScene.h"
#include "EdGraph/EdGraphNode_Comment.h"
#include "Math/IntPoint.h"

namespace
{
	/**
	 * Anchors with varied heights and an irregular spread, two comments, an anchor-fed chain with a branch, a merge,
	 * shared and nested pure inputs, a free cluster with a wide node, an exec cycle, loose nodes and a lone pure node.
	 */
	TArray<UEdGraphNode*> BuildMixedScene(FFormatterScene& Scene)
	{
		TArray<UEdGraphNode*> Anchors;
		for (int32 Index = 0; Index < 12; ++Index)
		{
			Anchors.Add(Scene.Node((Index % 4) * 700 - 300 + (Index * 37) % 23, (Index / 4) * 400 + (Index * 53) % 31, 80.0f + 15.0f * Index));
		}
		UEdGraphNode_Comment* Box = Scene.Add<UEdGraphNode_Comment>(-200, 1300);
		Box->NodeWidth = 900;
		Box->NodeHeight = 300;
		UEdGraphNode_Comment* Note = Scene.Add<UEdGraphNode_Comment>(1500, -400);
		Note->NodeWidth = 300;
		Note->NodeHeight = 250;

		TArray<UEdGraphNode*> Allowed;
		auto New = [&Scene, &Allowed](float Height = 100.0f)
		{
			UFormatterTestNode* Node = Scene.Node(Allowed.Num() * 11, -Allowed.Num() * 7, Height);
			Allowed.Add(Node);
			return Node;
		};
		UFormatterTestNode* C1 = New();
		UFormatterTestNode* C2 = New(140.0f);
		UFormatterTestNode* C3 = New();
		UFormatterTestNode* C4 = New(90.0f);
		UFormatterTestNode* C5 = New();
		UFormatterTestNode* P1 = New(60.0f);
		UFormatterTestNode* P2 = New();
		UFormatterTestNode* P3 = New(45.0f);
		UFormatterTestNode* P4 = New();
		UFormatterTestNode* D1 = New();
		UFormatterTestNode* D2 = New(220.0f);
		UFormatterTestNode* D3 = New();
		UFormatterTestNode* Y1 = New();
		UFormatterTestNode* Y2 = New();
		for (int32 Index = 0; Index < 4; ++Index)
		{
			New(70.0f + 20.0f * Index);
		}
		UFormatterTestNode* Lone = New();

		Scene.Then(Anchors[5], C1);
		Scene.Then(C1, C2);
		Scene.Then(C2, C3);
		Scene.Then(C2, C4);
		Scene.Then(C4, C5);
		Scene.Then(C3, C5);
		Scene.Then(C5, Anchors[9]);
		Scene.Feeds(P1, C2);
		Scene.Feeds(P2, C2);
		Scene.Feeds(P3, P1);
		Scene.Feeds(P4, C5);
		Scene.Feeds(P4, C3);
		Scene.Feeds(Anchors[2], C4);
		Scene.Then(D1, D2);
		Scene.Then(D2, D3);
		for (int32 Extra = 0; Extra < 5; ++Extra)
		{
			Scene.NewPin(D2, EGPD_Input, UEdGraphSchema_K2::PC_Int);
		}
		Scene.Then(Y1, Y2);
		Scene.Then(Y2, Y1);
		Scene.Feeds(Lone, Anchors[7]);
		return Allowed;
	}

	TArray<FIntPoint> PositionsOf(const UEdGraph* Graph)
	{
		TArray<FIntPoint> Positions;
		for (const UEdGraphNode* Node : Graph->Nodes)
		{
			Positions.Add(FIntPoint(Node->NodePosX, Node->NodePosY));
		}
		return Positions;
	}

	std::string Describe(const TArray<FIntPoint>& Positions)
	{
		std::string Text;
		for (const FIntPoint& Position : Positions)
		{
			Text += "{" + std::to_string(Position.X) + ", " + std::to_string(Position.Y) + "}, ";
		}
		return Text;
	}
}

TEST(FormatterDeterminism, MixedSceneMatchesTheRecordedLayout)
{
	FFormatterScene Scene;
	const TArray<UEdGraphNode*> Allowed = BuildMixedScene(Scene);
	Scene.Format(Allowed);

	// Anchors and comments first (unchanged), then the allowed nodes in creation order. C1, the first, is seeded at
	// (901,417) by its anchor, snapped to (900,420), pulled to the anchor row 417, and then takes all eight steps
	// out of two anchors' boxes to 1220.
	const TArray<FIntPoint> Expected = {
		{-300, 0}, {414, 22}, {1105, 13}, {1819, 4}, {-290, 426}, {401, 417}, {1115, 408}, {1806, 430},
		{-280, 821}, {411, 812}, {1102, 803}, {1816, 825}, {-200, 1300}, {1500, -400},
		{900, 1220}, {1400, 1220}, {1900, 1220}, {1900, 1520}, {2400, 1220},
		{1160, 1220}, {1160, 1280}, {920, 1220}, {1660, 1220},
		{0, 2020}, {500, 2020}, {1160, 2020},
		{940, 2440}, {1440, 2440}, {1940, 2440}, {2440, 2440}, {2940, 2440}, {3440, 2440}, {3940, 2440},
	};
	const TArray<FIntPoint> Actual = PositionsOf(Scene.Graph);
	EXPECT_EQ(Actual, Expected) << Describe(Actual);
}

TEST(FormatterDeterminism, OrderAddressesAndRepetitionDoNotMatter)
{
	FFormatterScene First;
	const TArray<UEdGraphNode*> FirstAllowed = BuildMixedScene(First);
	First.Format(FirstAllowed);
	const TArray<FIntPoint> Reference = PositionsOf(First.Graph);

	// A second copy built after unrelated objects, so its nodes live at other addresses, formatted with the allow
	// list reversed and padded with nulls and duplicates.
	for (int32 Index = 0; Index < 37; ++Index)
	{
		NewObject<UFormatterTestNode>(GetTransientPackage(), NAME_None);
	}
	FFormatterScene Second;
	TArray<UEdGraphNode*> SecondAllowed = BuildMixedScene(Second);
	TArray<UEdGraphNode*> Shuffled;
	for (int32 Index = SecondAllowed.Num() - 1; Index >= 0; --Index)
	{
		Shuffled.Add(SecondAllowed[Index]);
		Shuffled.Add(Index % 3 == 0 ? nullptr : SecondAllowed[Index]);
	}
	Second.Format(Shuffled);
	EXPECT_EQ(PositionsOf(Second.Graph), Reference) << Describe(PositionsOf(Second.Graph));

	// Formatting the result again moves nothing: allowed nodes are placed from the anchors, not from where they were.
	Second.Format(SecondAllowed);
	EXPECT_EQ(PositionsOf(Second.Graph), Reference) << Describe(PositionsOf(Second.Graph));
}
