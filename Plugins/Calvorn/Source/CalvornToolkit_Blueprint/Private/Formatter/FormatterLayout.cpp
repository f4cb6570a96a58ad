#include "FormatterLayout.h"

#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphNode_Comment.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraphSchema_K2.h"
#include "Math/NumericLimits.h"
#include "Math/UnrealMathUtility.h"

#include <algorithm>

namespace UE::BlueprintNodeFormatter
{
	namespace
	{
		bool IsPureForLayout(const UEdGraphNode* Node)
		{
			// A test on pins alone: a node without exec pins hangs off its consumer whatever its flags say.
			for (const UEdGraphPin* Pin : Node->Pins)
			{
				if (IsExecPin(Pin))
				{
					return false;
				}
			}
			return true;
		}

		FBox2D PaddedBox(double X, double Y, double Width, double Height, double Margin)
		{
			return FBox2D(FVector2D(X - Margin, Y - Margin), FVector2D(X + Width + Margin, Y + Height + Margin));
		}

		constexpr double ObstacleCellSize = 512.0;
		/** A box or rectangle spanning more cells than this is tested directly instead. */
		constexpr int64 MaxCellsPerRectangle = 64;
		/** Beyond this magnitude cell numbers would not fit their key. */
		constexpr double MaxBucketedCoordinate = 1.0e12;

		bool CellRange(double MinValue, double MaxValue, int64& OutFirst, int64& OutLast)
		{
			if (!(FMath::Abs(MinValue) < MaxBucketedCoordinate) || !(FMath::Abs(MaxValue) < MaxBucketedCoordinate) || MinValue > MaxValue)
			{
				return false;
			}
			OutFirst = int64(FMath::FloorToDouble(MinValue / ObstacleCellSize));
			OutLast = int64(FMath::FloorToDouble(MaxValue / ObstacleCellSize));
			return true;
		}

		uint64 CellKey(int64 CellX, int64 CellY)
		{
			return (uint64(uint32(int32(CellX))) << 32) | uint64(uint32(int32(CellY)));
		}

		bool RectangleTouchesBox(const FVector2D& Position, const FVector2D& Size, const FBox2D& Box)
		{
			return Position.X + Size.X >= Box.Min.X && Position.X <= Box.Max.X
				&& Position.Y + Size.Y >= Box.Min.Y && Position.Y <= Box.Max.Y;
		}

		/** Marks a record placed at Position and the node visited. */
		void CommitPlacement(FFormatterContext& Context, FFormatterNodeInfo& Record, const FVector2D& Position)
		{
			Record.Position = Position;
			Record.bPlaced = true;
			Context.Visited.Add(Record.Node);
		}
	}

	bool IsExecPin(const UEdGraphPin* Pin)
	{
		return Pin && Pin->PinType.PinCategory == UEdGraphSchema_K2::PC_Exec;
	}

	bool PrepareFormatterContext(FFormatterContext& Context, const TArray<UEdGraphNode*>& AllowList, TArray<FFormatterNodeInfo>& Records)
	{
		for (UEdGraphNode* Node : AllowList)
		{
			if (Node)
			{
				Context.AllowedNodes.Add(Node);
			}
		}
		if (Context.AllowedNodes.Num() == 0)
		{
			return false;
		}

		Context.NodeInfos.Reserve(Records.Num());
		for (FFormatterNodeInfo& Record : Records)
		{
			Record.Position = FVector2D(double(Record.Node->NodePosX), double(Record.Node->NodePosY));
			Context.NodeInfos.Add(Record.Node, &Record);
		}

		for (FFormatterNodeInfo& Record : Records)
		{
			if (Context.AllowedNodes.Contains(Record.Node))
			{
				continue;
			}
			Context.AnchorXs.Add(float(Record.Position.X));
			Context.AnchorYs.Add(float(Record.Position.Y));
			Record.bPlaced = true;
			Context.AnchorBoxes.Add(PaddedBox(Record.Position.X, Record.Position.Y, Record.Size.X, Record.Size.Y, AnchorMargin));
		}

		// A comment blocks the rectangle it really covers, including one that is itself about to move: the box is
		// taken from where it stands now. As an anchor it also has the assumed size of every other node.
		for (const FFormatterNodeInfo& Record : Records)
		{
			if (const UEdGraphNode_Comment* Comment = Cast<UEdGraphNode_Comment>(Record.Node))
			{
				Context.CommentBoxes.Add(PaddedBox(double(Comment->NodePosX), double(Comment->NodePosY),
					double(Comment->NodeWidth), double(Comment->NodeHeight), CommentMargin));
			}
		}

		Context.AnchorXIndex.Build(Context.AnchorXs);
		Context.AnchorYIndex.Build(Context.AnchorYs);
		Context.Obstacles.Add(Context.AnchorBoxes);
		Context.Obstacles.Add(Context.CommentBoxes);
		return true;
	}

	TArray<FFormatterNodeInfo*> CollectExecRoots(const FFormatterContext& Context, TArray<FFormatterNodeInfo>& Records)
	{
		TArray<FFormatterNodeInfo*> Roots;
		for (FFormatterNodeInfo& Record : Records)
		{
			if (!Context.AllowedNodes.Contains(Record.Node))
			{
				continue;
			}
			bool bHasExecPins = false;
			bool bFedByAllowedNode = false;
			for (const UEdGraphPin* Pin : Record.Node->Pins)
			{
				if (!IsExecPin(Pin))
				{
					continue;
				}
				bHasExecPins = true;
				if (Pin->Direction != EGPD_Input)
				{
					continue;
				}
				for (const UEdGraphPin* LinkedPin : Pin->LinkedTo)
				{
					UEdGraphNode* Owner = LinkedPin ? LinkedPin->GetOwningNodeUnchecked() : nullptr;
					if (Owner && Context.AllowedNodes.Contains(Owner))
					{
						bFedByAllowedNode = true;
						break;
					}
				}
				if (bFedByAllowedNode)
				{
					break;
				}
			}
			if (bHasExecPins && !bFedByAllowedNode)
			{
				Roots.Add(&Record);
			}
		}
		return Roots;
	}

	float PlaceExecChain(FFormatterContext& Context, UEdGraphNode* Node, float X, float Y)
	{
		if (!Node || Context.Visited.Contains(Node) || !Context.AllowedNodes.Contains(Node))
		{
			return Y;
		}
		FFormatterNodeInfo* Start = Context.FindRecord(Node);
		if (!Start)
		{
			return Y;
		}
		CommitPlacement(Context, *Start, ResolvePlacement(Context, FVector2D(double(X), double(Y)), Start->Size));
		PlacePureInputs(Context, Node, Start->Position, 0);

		// Breadth first: a node with several predecessors takes its place from the first one dequeued.
		TArray<FFormatterNodeInfo*> Queue;
		Queue.Add(Start);
		float Bottom = float(Start->Position.Y + Start->Size.Y);
		for (int32 Head = 0; Head < Queue.Num(); ++Head)
		{
			const FFormatterNodeInfo* Current = Queue[Head];
			const float NextX = float(Current->Position.X + Current->Size.X + ExecHorizontalGap);
			float RowY = float(Current->Position.Y);
			for (const UEdGraphPin* Pin : Current->Node->Pins)
			{
				if (!IsExecPin(Pin) || Pin->Direction != EGPD_Output)
				{
					continue;
				}
				for (const UEdGraphPin* LinkedPin : Pin->LinkedTo)
				{
					UEdGraphNode* Owner = LinkedPin ? LinkedPin->GetOwningNodeUnchecked() : nullptr;
					if (!Owner || !Context.AllowedNodes.Contains(Owner))
					{
						continue;
					}
					FFormatterNodeInfo* Next = Context.FindRecord(Owner);
					if (!Next)
					{
						continue;
					}
					if (Context.Visited.Contains(Owner))
					{
						// Already placed (a merge, or a loop back): only keep the next branch clear of it.
						RowY = FMath::Max(RowY, float(Next->Size.Y + Next->Position.Y + VerticalGap));
						Bottom = FMath::Max(Bottom, RowY);
						continue;
					}
					CommitPlacement(Context, *Next, ResolvePlacement(Context, FVector2D(double(NextX), double(RowY)), Next->Size));
					PlacePureInputs(Context, Owner, Next->Position, 0);
					Queue.Add(Next);
					// The next branch goes below the requested row, not below where collisions pushed this one.
					RowY = float(Next->Size.Y + VerticalGap + RowY);
					Bottom = FMath::Max(Bottom, RowY);
				}
			}
		}
		return Bottom;
	}

	float PlacePureInputs(FFormatterContext& Context, UEdGraphNode* Node, const FVector2D& NodePosition, int32 Depth)
	{
		if (!Node)
		{
			return float(NodePosition.Y);
		}

		// Depth first, as a recursion over the inputs would go, but on an explicit stack: a long chain of pure nodes
		// must not exhaust the thread's stack.
		struct FInputWalk
		{
			UEdGraphNode* Consumer;
			int32 Depth;
			float X;
			float NextY;
			float Bottom;
			double Gap;
			int32 PinIndex = 0;
			int32 LinkIndex = 0;
			/** The input placed last, whose own inputs are being walked above this entry. */
			const FFormatterNodeInfo* PendingInput = nullptr;
		};
		auto StartWalk = [](UEdGraphNode* Consumer, const FVector2D& Position, int32 WalkDepth)
		{
			FInputWalk Walk;
			Walk.Consumer = Consumer;
			Walk.Depth = WalkDepth;
			Walk.X = float(Position.X - PureInputOffsetX);
			Walk.NextY = WalkDepth > 0 ? float(Position.Y) : float(Position.Y - FirstPureInputRise);
			Walk.Bottom = float(Position.Y);
			Walk.Gap = WalkDepth > 0 ? NestedPureInputGap : PureInputGap;
			return Walk;
		};

		TArray<FInputWalk> Stack;
		Stack.Add(StartWalk(Node, NodePosition, Depth));
		float Result = 0.0f;
		while (Stack.Num() > 0)
		{
			FFormatterNodeInfo* Placed = nullptr;
			{
				FInputWalk& Walk = Stack.Last();
				const TArray<UEdGraphPin*>& Pins = Walk.Consumer->Pins;
				while (!Placed && Walk.PinIndex < Pins.Num())
				{
					const UEdGraphPin* Pin = Pins[Walk.PinIndex];
					if (!Pin || Pin->Direction != EGPD_Input || IsExecPin(Pin) || Walk.LinkIndex >= Pin->LinkedTo.Num())
					{
						++Walk.PinIndex;
						Walk.LinkIndex = 0;
						continue;
					}
					const UEdGraphPin* LinkedPin = Pin->LinkedTo[Walk.LinkIndex++];
					UEdGraphNode* Owner = LinkedPin ? LinkedPin->GetOwningNodeUnchecked() : nullptr;
					if (!Owner || Context.Visited.Contains(Owner) || !Context.AllowedNodes.Contains(Owner) || !IsPureForLayout(Owner))
					{
						continue;
					}
					FFormatterNodeInfo* Input = Context.FindRecord(Owner);
					if (!Input)
					{
						continue;
					}
					CommitPlacement(Context, *Input, ResolvePlacement(Context, FVector2D(double(Walk.X), double(Walk.NextY)), Input->Size));
					Walk.PendingInput = Input;
					Placed = Input;
				}
			}
			if (Placed)
			{
				const int32 ChildDepth = Stack.Last().Depth + 1;
				Stack.Add(StartWalk(Placed->Node, Placed->Position, ChildDepth));
				continue;
			}

			// This consumer's inputs are all placed: its bottom goes to the consumer below it on the stack.
			Result = Stack.Last().Bottom;
			Stack.Pop();
			if (Stack.Num() > 0)
			{
				FInputWalk& Parent = Stack.Last();
				Parent.NextY = FMath::Max(float(Parent.NextY + Parent.PendingInput->Size.Y + Parent.Gap), Result);
				Parent.Bottom = FMath::Max(Parent.NextY, Parent.Bottom);
			}
		}
		return Result;
	}

	void PlaceRemainingNodes(FFormatterContext& Context, TArray<FFormatterNodeInfo>& Records, float BottomOfPlaced)
	{
		const float StartY = float(BottomOfPlaced + VerticalGap);
		float Y = StartY;
		float ColumnWidth = 0.0f;
		float X = 0.0f;
		if (Context.AnchorXs.Num() > 0)
		{
			float Sum = 0.0f;
			for (const float AnchorX : Context.AnchorXs)
			{
				Sum += AnchorX;
			}
			X = Sum / float(Context.AnchorXs.Num());
		}

		for (FFormatterNodeInfo& Record : Records)
		{
			if (Context.Visited.Contains(Record.Node) || !Context.AllowedNodes.Contains(Record.Node))
			{
				continue;
			}
			// The limit is an absolute Y: once the first row starts below it, every node opens its own column.
			if (Y > ColumnHeightLimit)
			{
				X = float(X + ColumnWidth + VerticalGap);
				Y = StartY;
				ColumnWidth = 0.0f;
			}
			CommitPlacement(Context, Record, ResolvePlacement(Context, FVector2D(double(X), double(Y)), Record.Size));
			Y = float(Record.Size.Y + VerticalGap + Y);
			ColumnWidth = FMath::Max(ColumnWidth, float(Record.Size.X));
		}
	}

	FVector2D ResolvePlacement(const FFormatterContext& Context, const FVector2D& Requested, const FVector2D& Size)
	{
		FVector2D Position(SnapToGrid(Requested.X, Context.Grid), SnapToGrid(Requested.Y, Context.Grid));
		Position.X = Context.AnchorXIndex.Align(Position.X, Context.Threshold);
		Position.Y = Context.AnchorYIndex.Align(Position.Y, Context.Threshold);
		// A bounded search: a node may end inside a tall obstacle rather than far from where it belongs.
		for (int32 Step = 0; Step < MaxCollisionSteps; ++Step)
		{
			if (!Context.Obstacles.Intersects(Position, Size))
			{
				break;
			}
			Position.Y += CollisionStep;
			Position.X = SnapToGrid(Position.X, Context.Grid);
			Position.Y = SnapToGrid(Position.Y, Context.Grid);
		}
		return Position;
	}

	double SnapToGrid(double Value, float Grid)
	{
		if (Grid <= 0.0f)
		{
			return Value;
		}
		// Nearest multiple, halves upward.
		const double Step = double(Grid);
		return FMath::FloorToDouble((Value + Step * 0.5) / Step) * Step;
	}

	bool IntersectsAny(const FVector2D& Position, const FVector2D& Size, const TArray<FBox2D>& Boxes)
	{
		for (const FBox2D& Box : Boxes)
		{
			if (RectangleTouchesBox(Position, Size, Box))
			{
				return true;
			}
		}
		return false;
	}

	void FAnchorCoordinateIndex::Build(const TArray<float>& Coordinates)
	{
		Sorted.Reset(Coordinates.Num());
		for (int32 Order = 0; Order < Coordinates.Num(); ++Order)
		{
			Sorted.Add(FEntry{Coordinates[Order], Order});
		}
		Sorted.Sort([](const FEntry& A, const FEntry& B) { return A.Value < B.Value || (A.Value == B.Value && A.Order < B.Order); });
	}

	double FAnchorCoordinateIndex::Align(double Value, float Threshold) const
	{
		const float Requested = float(Value);
		if (FMath::IsNaN(Requested) || Sorted.Num() == 0)
		{
			return double(Requested);
		}
		// The in-order walk ends on the nearest anchor within the threshold, the last of several equally near ones.
		// Candidates are taken from a slightly wider window than the threshold so that no rounding of the float
		// distance can leave one out; the distance itself is computed exactly as the walk computes it.
		const double Window = double(Threshold) + 1.0 + FMath::Abs(double(Requested)) * 1e-6;
		const double Low = double(Requested) - Window;
		const double High = double(Requested) + Window;
		const FEntry* First = std::lower_bound(Sorted.GetData(), Sorted.GetData() + Sorted.Num(), Low,
			[](const FEntry& Entry, double Bound) { return double(Entry.Value) < Bound; });
		const FEntry* End = Sorted.GetData() + Sorted.Num();
		const FEntry* Best = nullptr;
		float BestDistance = 0.0f;
		for (const FEntry* Entry = First; Entry != End && double(Entry->Value) <= High; ++Entry)
		{
			const float Distance = FMath::Abs(Requested - Entry->Value);
			if (!(Distance <= Threshold))
			{
				continue;
			}
			if (!Best || Distance < BestDistance || (Distance == BestDistance && Entry->Order > Best->Order))
			{
				Best = Entry;
				BestDistance = Distance;
			}
		}
		return double(Best ? Best->Value : Requested);
	}

	void FObstacleIndex::Add(const TArray<FBox2D>& InBoxes)
	{
		for (const FBox2D& Box : InBoxes)
		{
			const int32 BoxIndex = Boxes.Add(Box);
			int64 FirstX = 0, LastX = 0, FirstY = 0, LastY = 0;
			if (!CellRange(Box.Min.X, Box.Max.X, FirstX, LastX) || !CellRange(Box.Min.Y, Box.Max.Y, FirstY, LastY)
				|| (LastX - FirstX + 1) * (LastY - FirstY + 1) > MaxCellsPerRectangle)
			{
				Oversized.Add(BoxIndex);
				continue;
			}
			for (int64 CellX = FirstX; CellX <= LastX; ++CellX)
			{
				for (int64 CellY = FirstY; CellY <= LastY; ++CellY)
				{
					Cells.FindOrAdd(CellKey(CellX, CellY)).Add(BoxIndex);
				}
			}
		}
	}

	bool FObstacleIndex::Intersects(const FVector2D& Position, const FVector2D& Size) const
	{
		for (const int32 BoxIndex : Oversized)
		{
			if (RectangleTouchesBox(Position, Size, Boxes[BoxIndex]))
			{
				return true;
			}
		}
		// The rectangle's cells, computed from the same sums the test compares: a box that touches the rectangle
		// shares the cell of the touching coordinate.
		int64 FirstX = 0, LastX = 0, FirstY = 0, LastY = 0;
		if (!CellRange(Position.X, Position.X + Size.X, FirstX, LastX) || !CellRange(Position.Y, Position.Y + Size.Y, FirstY, LastY)
			|| (LastX - FirstX + 1) * (LastY - FirstY + 1) > MaxCellsPerRectangle)
		{
			return IntersectsAny(Position, Size, Boxes);
		}
		for (int64 CellX = FirstX; CellX <= LastX; ++CellX)
		{
			for (int64 CellY = FirstY; CellY <= LastY; ++CellY)
			{
				if (const TArray<int32>* InCell = Cells.Find(CellKey(CellX, CellY)))
				{
					for (const int32 BoxIndex : *InCell)
					{
						if (RectangleTouchesBox(Position, Size, Boxes[BoxIndex]))
						{
							return true;
						}
					}
				}
			}
		}
		return false;
	}

	int32 TruncateToNodeCoordinate(double Value)
	{
		// Only a non-finite height estimate can lead here with a value outside int32; casting it would be undefined.
		if (FMath::IsNaN(Value))
		{
			return 0;
		}
		const double Clamped = FMath::Clamp(Value, double(MIN_int32), double(MAX_int32));
		return int32(Clamped);
	}
}
