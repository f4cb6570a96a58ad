#include "AnimationStateMachineSchema.h"

#include "AnimStateNode.h"
#include "AnimStateNodeBase.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode_Comment.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"

namespace
{
	// The editor's default grid: placed nodes land on it.
	constexpr uint32 GridSnapSize = 16;

	template <typename NodeType>
	void AddStateAction(FGraphContextMenuBuilder& Builder, const TCHAR* MenuDesc, const TCHAR* Tooltip)
	{
		TSharedPtr<FEdGraphSchemaAction_NewStateNode> Action = MakeShared<FEdGraphSchemaAction_NewStateNode>(
			FText::GetEmpty(), FText::FromString(MenuDesc), FText::FromString(Tooltip), 0);
		UObject* Owner = Builder.OwnerOfTemporaries ? Builder.OwnerOfTemporaries : GetTransientPackage();
		Action->NodeTemplate = NewObject<NodeType>(Owner);
		Builder.AddAction(Action);
	}

	void Place(UEdGraphNode* Node, const FVector2f& Location)
	{
		Node->NodePosX = static_cast<int32>(Location.X);
		Node->NodePosY = static_cast<int32>(Location.Y);
		Node->SnapToGrid(GridSnapSize);
	}
}

UEdGraphNode* FEdGraphSchemaAction_NewStateNode::PerformAction(UEdGraph* ParentGraph, UEdGraphPin* FromPin, const FVector2f& Location, bool bSelectNewNode)
{
	if (!ParentGraph || !NodeTemplate || NodeTemplate->GetOuter() == ParentGraph)
	{
		return nullptr;
	}
	UEdGraphNode* Node = NodeTemplate;
	Node->Rename(nullptr, ParentGraph);
	ParentGraph->AddNode(Node, true, bSelectNewNode);
	Node->CreateNewGuid();
	Node->PostPlacedNewNode();
	Node->AllocateDefaultPins();
	Node->AutowireNewNode(FromPin);
	Place(Node, Location);
	if (UPackage* Package = ParentGraph->GetOutermost())
	{
		Package->MarkPackageDirty();
	}
	return Node;
}

UEdGraphNode* FEdGraphSchemaAction_NewStateComment::PerformAction(UEdGraph* ParentGraph, UEdGraphPin* FromPin, const FVector2f& Location, bool bSelectNewNode)
{
	if (!ParentGraph)
	{
		return nullptr;
	}
	UEdGraphNode_Comment* Comment = NewObject<UEdGraphNode_Comment>(ParentGraph, NAME_None, RF_Transactional);
	ParentGraph->AddNode(Comment, true, bSelectNewNode);
	Comment->CreateNewGuid();
	Comment->PostPlacedNewNode();
	Comment->AllocateDefaultPins();
	Place(Comment, Location);
	return Comment;
}

void UAnimationStateMachineSchema::GetGraphContextActions(FGraphContextMenuBuilder& ContextMenuBuilder) const
{
	AddStateAction<UAnimStateNode>(ContextMenuBuilder, TEXT("Add State"), TEXT("A new state"));
	AddStateAction<UAnimStateAliasNode>(ContextMenuBuilder, TEXT("Add State Alias"), TEXT("A new state alias"));
	AddStateAction<UAnimStateConduitNode>(ContextMenuBuilder, TEXT("Add Conduit"), TEXT("A new conduit"));

	bool bHasEntry = false;
	if (const UEdGraph* Graph = ContextMenuBuilder.CurrentGraph)
	{
		for (const UEdGraphNode* Node : Graph->Nodes)
		{
			bHasEntry |= Node && Node->IsA<UAnimStateEntryNode>();
		}
	}
	if (!bHasEntry)
	{
		AddStateAction<UAnimStateEntryNode>(ContextMenuBuilder, TEXT("Add Entry Point"), TEXT("Where the state machine starts"));
	}

	if (!ContextMenuBuilder.FromPin)
	{
		// Nothing is ever selected headless, so the entry is the plain comment, not "from selection".
		ContextMenuBuilder.AddAction(MakeShared<FEdGraphSchemaAction_NewStateComment>(FText::GetEmpty(), FText::FromString(TEXT("Add Comment")),
			FText::FromString(TEXT("A resizable comment box.")), 0));
	}
}
