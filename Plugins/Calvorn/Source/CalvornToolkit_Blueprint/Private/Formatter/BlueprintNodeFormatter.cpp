#include "BlueprintNodeFormatter.h"

#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphNode_Comment.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraphSchema_K2.h"
#include "FormatterLayout.h"

TSet<UEdGraphNode*> FBlueprintNodeFormatter::CollectNeighborNodes(const TArray<UEdGraphNode*>& Nodes, const TSet<UEdGraphNode*>& ExcludedNodes)
{
	TSet<UEdGraphNode*> Neighbors;
	for (UEdGraphNode* Node : Nodes)
	{
		if (!Node)
		{
			continue;
		}
		for (UEdGraphPin* Pin : Node->Pins)
		{
			if (!Pin)
			{
				continue;
			}
			for (UEdGraphPin* LinkedPin : Pin->LinkedTo)
			{
				UEdGraphNode* Owner = LinkedPin ? LinkedPin->GetOwningNodeUnchecked() : nullptr;
				if (Owner && !ExcludedNodes.Contains(Owner))
				{
					Neighbors.Add(Owner);
				}
			}
		}
	}
	return Neighbors;
}

TArray<UEdGraphNode*> FBlueprintNodeFormatter::BuildAllowList(const TArray<UEdGraphNode*>& TouchedNodes, int32& OutNeighborCount)
{
	TSet<UEdGraphNode*> Allowed;
	for (UEdGraphNode* Node : TouchedNodes)
	{
		if (Node)
		{
			Allowed.Add(Node);
		}
	}
	const TSet<UEdGraphNode*> Neighbors = CollectNeighborNodes(Allowed.Array(), TSet<UEdGraphNode*>());
	OutNeighborCount = Neighbors.Num();
	for (UEdGraphNode* Neighbor : Neighbors)
	{
		Allowed.Add(Neighbor);
	}
	return Allowed.Array();
}

void FBlueprintNodeFormatter::FormatNodes(UEdGraph* Graph, const TArray<UEdGraphNode*>& AllowList)
{
	FormatNodes(Graph, AllowList, [](UEdGraphNode* Node) { return UEdGraphSchema_K2::EstimateNodeHeight(Node); });
}

void FBlueprintNodeFormatter::FormatNodes(UEdGraph* Graph, const TArray<UEdGraphNode*>& AllowList, TFunctionRef<float(UEdGraphNode*)> EstimateNodeHeight)
{
	using namespace UE::BlueprintNodeFormatter;

	if (!Graph)
	{
		return;
	}

	// Measuring. The records never grow after this loop, so the context may point into them.
	TArray<FFormatterNodeInfo> Records;
	Records.Reserve(Graph->Nodes.Num());
	for (UEdGraphNode* Node : Graph->Nodes)
	{
		if (Node)
		{
			FFormatterNodeInfo& Record = Records.AddDefaulted_GetRef();
			Record.Node = Node;
		}
	}
	if (Records.Num() == 0)
	{
		return;
	}
	for (FFormatterNodeInfo& Record : Records)
	{
		const float Height = EstimateNodeHeight(Record.Node);
		// Written as a negation so that a NaN estimate also falls back.
		Record.Size.Y = !(Height > 0.0f) ? FallbackNodeHeight : double(Height);
		Record.Size.X = Record.Node->Pins.Num() > NarrowNodeMaxPins ? WideNodeWidth : NarrowNodeWidth;
	}

	FFormatterContext Context;
	if (!PrepareFormatterContext(Context, AllowList, Records))
	{
		return;
	}

	// Placing, in the records only: the graph is untouched until every position is known.
	const TArray<FFormatterNodeInfo*> Roots = CollectExecRoots(Context, Records);
	float RowY = 0.0f;
	for (FFormatterNodeInfo* Root : Roots)
	{
		if (Context.Visited.Contains(Root->Node))
		{
			continue;
		}
		float RowX = 0.0f;
		// A chain that an anchor feeds continues that anchor's row, to its right.
		bool bSeeded = false;
		for (UEdGraphPin* ExecInput : Root->Node->Pins)
		{
			if (!IsExecPin(ExecInput) || ExecInput->Direction != EGPD_Input)
			{
				continue;
			}
			for (UEdGraphPin* LinkedPin : ExecInput->LinkedTo)
			{
				UEdGraphNode* Owner = LinkedPin ? LinkedPin->GetOwningNodeUnchecked() : nullptr;
				if (!Owner || Context.AllowedNodes.Contains(Owner))
				{
					continue;
				}
				if (const FFormatterNodeInfo* AnchorRecord = Context.FindRecord(Owner))
				{
					RowX = float(AnchorRecord->Position.X + AnchorRecord->Size.X + ExecHorizontalGap);
					RowY = float(AnchorRecord->Position.Y);
					bSeeded = true;
					break;
				}
			}
			if (bSeeded)
			{
				break;
			}
		}
		RowY = PlaceExecChain(Context, Root->Node, RowX, RowY) + float(VerticalGap);
	}

	float BottomOfPlaced = 0.0f;
	for (const FFormatterNodeInfo& Record : Records)
	{
		if (Record.bPlaced)
		{
			BottomOfPlaced = FMath::Max(BottomOfPlaced, float(Record.Position.Y + Record.Size.Y));
		}
	}
	PlaceRemainingNodes(Context, Records, BottomOfPlaced);

	// Writing.
	Graph->Modify();
	for (const FFormatterNodeInfo& Record : Records)
	{
		if (Record.bPlaced && Context.AllowedNodes.Contains(Record.Node))
		{
			Record.Node->Modify();
			Record.Node->NodePosX = TruncateToNodeCoordinate(Record.Position.X);
			Record.Node->NodePosY = TruncateToNodeCoordinate(Record.Position.Y);
		}
	}
	Graph->NotifyGraphChanged();
}
