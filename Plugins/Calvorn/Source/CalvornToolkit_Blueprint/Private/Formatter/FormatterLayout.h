#pragma once

// The placing stages of FBlueprintNodeFormatter::FormatNodes, over records of one call.
//
// Positions and sizes are doubles; the running cursors (X, Y, bottoms) are floats, and a value computed from a
// position is narrowed to float where it becomes a cursor. Those narrowings are part of the layout: changing them
// moves nodes by fractions that the grid then rounds differently.

#include "CoreMinimal.h"
#include "Containers/Array.h"
#include "Containers/Map.h"
#include "Containers/Set.h"
#include "Math/Box2D.h"
#include "Math/Vector2D.h"

class UEdGraphNode;
class UEdGraphPin;

namespace UE::BlueprintNodeFormatter
{
	// Every value is fixed: a layout that changes with settings would not give the same picture every time.
	inline constexpr double NarrowNodeWidth = 300.0;
	inline constexpr double WideNodeWidth = 450.0;
	/** Nodes with more pins than this are assumed wide. */
	inline constexpr int32 NarrowNodeMaxPins = 6;
	inline constexpr double FallbackNodeHeight = 100.0;
	inline constexpr float GridSize = 20.0f;
	inline constexpr float AlignThreshold = 10.0f;
	inline constexpr double AnchorMargin = 100.0;
	inline constexpr double CommentMargin = 30.0;
	/** Between an exec node's right edge and its successor. */
	inline constexpr double ExecHorizontalGap = 200.0;
	/** Between exec branches, between roots, and between the nodes of a column. */
	inline constexpr double VerticalGap = 200.0;
	/** From the consumer's X to its pure inputs' X. */
	inline constexpr double PureInputOffsetX = 250.0;
	/** How far above its consumer the first pure input of an exec node starts. */
	inline constexpr double FirstPureInputRise = 200.0;
	inline constexpr double PureInputGap = 100.0;
	/** Inputs of inputs sit closer together. */
	inline constexpr double NestedPureInputGap = 20.0;
	inline constexpr double CollisionStep = 100.0;
	inline constexpr int32 MaxCollisionSteps = 8;
	/** Absolute Y beyond which the remaining nodes open a new column. */
	inline constexpr float ColumnHeightLimit = 2000.0f;

	/** One node of the graph as the layout sees it. */
	struct FFormatterNodeInfo
	{
		UEdGraphNode* Node = nullptr;
		/** Assumed width and height. */
		FVector2D Size = FVector2D(NarrowNodeWidth, FallbackNodeHeight);
		/** Working position; the node's own position is written only at the end. */
		FVector2D Position = FVector2D(0.0, 0.0);
		/** Has a final position: moved here, or an anchor that never moves. */
		bool bPlaced = false;
	};

	/**
	 * The anchor coordinates of one axis, sorted by value so that alignment looks only at the anchors within reach.
	 *
	 * Align gives what walking the coordinates in their original order gives: starting from the value narrowed to
	 * float and a limit equal to the threshold, every coordinate whose float distance from the value is not above
	 * the limit becomes the answer and lowers the limit to its distance. So the nearest coordinate within the
	 * threshold wins, the last one in the original order among equally near ones, and without one the value stays.
	 * An aligned coordinate need not be on the grid.
	 */
	class FAnchorCoordinateIndex
	{
	public:
		void Build(const TArray<float>& Coordinates);
		double Align(double Value, float Threshold) const;

	private:
		struct FEntry
		{
			float Value;
			/** Position in the original order, which breaks ties between equally near anchors. */
			int32 Order;
		};
		TArray<FEntry> Sorted;
	};

	/**
	 * Boxes bucketed by grid cell, so that a collision test looks only at the boxes near the rectangle. Intersects
	 * answers exactly what IntersectsAny answers over all the boxes; boxes and rectangles too large for the buckets
	 * are tested one by one.
	 */
	class FObstacleIndex
	{
	public:
		void Add(const TArray<FBox2D>& InBoxes);
		bool Intersects(const FVector2D& Position, const FVector2D& Size) const;

	private:
		TArray<FBox2D> Boxes;
		TArray<int32> Oversized;
		TMap<uint64, TArray<int32>> Cells;
	};

	/** State of one FormatNodes call. */
	struct FFormatterContext
	{
		TSet<UEdGraphNode*> AllowedNodes;
		TMap<UEdGraphNode*, FFormatterNodeInfo*> NodeInfos;
		/** Coordinates of anchors, in record order: placement snaps to them. */
		TArray<float> AnchorXs;
		TArray<float> AnchorYs;
		/** Padded boxes of anchors and of comments: placement steps down out of them. */
		TArray<FBox2D> AnchorBoxes;
		TArray<FBox2D> CommentBoxes;
		float Grid = GridSize;
		float Threshold = AlignThreshold;
		/** The same anchors and boxes, indexed for placement. */
		FAnchorCoordinateIndex AnchorXIndex;
		FAnchorCoordinateIndex AnchorYIndex;
		FObstacleIndex Obstacles;
		/** Nodes that already have their place in this call. */
		TSet<UEdGraphNode*> Visited;

		FFormatterNodeInfo* FindRecord(UEdGraphNode* Node) const
		{
			FFormatterNodeInfo* const* Found = NodeInfos.Find(Node);
			return Found ? *Found : nullptr;
		}
	};

	bool IsExecPin(const UEdGraphPin* Pin);

	/** Fills the context from the allow list and the records. False when the allow list holds no node. */
	bool PrepareFormatterContext(FFormatterContext& Context, const TArray<UEdGraphNode*>& AllowList, TArray<FFormatterNodeInfo>& Records);

	/** Allowed nodes with exec pins that no allowed node feeds through exec, in record order. */
	TArray<FFormatterNodeInfo*> CollectExecRoots(const FFormatterContext& Context, TArray<FFormatterNodeInfo>& Records);

	/** Places Node at (X, Y) and what its exec outputs reach, breadth first. Returns the bottom of the chain. */
	float PlaceExecChain(FFormatterContext& Context, UEdGraphNode* Node, float X, float Y);

	/** Places the pure nodes feeding Node's data inputs, up and to the left. Returns the bottom they reach. */
	float PlacePureInputs(FFormatterContext& Context, UEdGraphNode* Node, const FVector2D& NodePosition, int32 Depth);

	/** Places every allowed node not yet placed in columns below BottomOfPlaced. */
	void PlaceRemainingNodes(FFormatterContext& Context, TArray<FFormatterNodeInfo>& Records, float BottomOfPlaced);

	/** Snaps a requested position to the grid and the anchors, then steps it down out of obstacles. */
	FVector2D ResolvePlacement(const FFormatterContext& Context, const FVector2D& Requested, const FVector2D& Size);

	/** The nearest multiple of Grid, halves upward; the value itself when Grid is not positive. */
	double SnapToGrid(double Value, float Grid);
	/** True when the rectangle at Position of Size touches or overlaps any box. */
	bool IntersectsAny(const FVector2D& Position, const FVector2D& Size, const TArray<FBox2D>& Boxes);

	/** A node coordinate from a layout position: truncated toward zero, held inside int32. */
	int32 TruncateToNodeCoordinate(double Value);
}
