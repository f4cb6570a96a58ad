#include "FormatterLayout.h"

#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphNode_Comment.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraphSchema_K2.h"
#include "Math/NumericLimits.h"
#include "Math/UnrealMathUtility.h"

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
		const float X = float(NodePosition.X - PureInputOffsetX);
		float NextY = Depth > 0 ? float(NodePosition.Y) : float(NodePosition.Y - FirstPureInputRise);
		float Bottom = float(NodePosition.Y);
		const double Gap = Depth > 0 ? NestedPureInputGap : PureInputGap;
		for (const UEdGraphPin* Pin : Node->Pins)
		{
			if (!Pin || Pin->Direction != EGPD_Input || IsExecPin(Pin))
			{
				continue;
			}
			for (const UEdGraphPin* LinkedPin : Pin->LinkedTo)
			{
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
				CommitPlacement(Context, *Input, ResolvePlacement(Context, FVector2D(double(X), double(NextY)), Input->Size));
				const float ChildBottom = PlacePureInputs(Context, Owner, Input->Position, Depth + 1);
				NextY = FMath::Max(float(NextY + Input->Size.Y + Gap), ChildBottom);
				Bottom = FMath::Max(NextY, Bottom);
			}
		}
		return Bottom;
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
		Position.X = AlignToAnchors(Position.X, Context.AnchorXs, Context.Threshold);
		Position.Y = AlignToAnchors(Position.Y, Context.AnchorYs, Context.Threshold);
		// A bounded search: a node may end inside a tall obstacle rather than far from where it belongs.
		for (int32 Step = 0; Step < MaxCollisionSteps; ++Step)
		{
			if (!IntersectsAny(Position, Size, Context.AnchorBoxes) && !IntersectsAny(Position, Size, Context.CommentBoxes))
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

	double AlignToAnchors(double Value, const TArray<float>& AnchorCoordinates, float Threshold)
	{
		const float Requested = float(Value);
		float Best = Requested;
		float Limit = Threshold;
		for (const float Anchor : AnchorCoordinates)
		{
			// Measured from the request each time, so the last of equally near anchors wins.
			const float Distance = FMath::Abs(Requested - Anchor);
			if (Distance <= Limit)
			{
				Limit = Distance;
				Best = Anchor;
			}
		}
		return double(Best);
	}

	bool IntersectsAny(const FVector2D& Position, const FVector2D& Size, const TArray<FBox2D>& Boxes)
	{
		for (const FBox2D& Box : Boxes)
		{
			if (Position.X + Size.X >= Box.Min.X && Position.X <= Box.Max.X
				&& Position.Y + Size.Y >= Box.Min.Y && Position.Y <= Box.Max.Y)
			{
				return true;
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
