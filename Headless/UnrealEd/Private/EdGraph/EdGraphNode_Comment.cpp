#include "EdGraph/EdGraphNode_Comment.h"

#include "UObject/UnrealType.h"

IMPLEMENT_CLASS(UEdGraphNode_Comment,
	UE_NATIVE_PROPERTY(FStructProperty, CommentColor, CPF_None, TBaseStructure<FLinearColor>::Get());
	UE_NATIVE_PROPERTY(FIntProperty, FontSize, CPF_None);
	UE_NATIVE_PROPERTY(FBoolProperty, bCommentBubbleVisible_InDetailsPanel, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bColorCommentBubble, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FByteProperty, MoveMode, CPF_None, (UEnum*)nullptr);
	UE_NATIVE_PROPERTY(FIntProperty, CommentDepth, CPF_None);
)

namespace
{
	// A fresh box in the editor is this size until the user drags it.
	constexpr int32 DefaultCommentWidth = 400;
	constexpr int32 DefaultCommentHeight = 100;
}

UEdGraphNode_Comment::UEdGraphNode_Comment()
{
	NodeWidth = DefaultCommentWidth;
	NodeHeight = DefaultCommentHeight;
	bCanRenameNode = true;
}

FText UEdGraphNode_Comment::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	// Menus and lists name the kind of node; on the canvas the box shows what the user wrote.
	if (TitleType == ENodeTitleType::MenuTitle)
	{
		return FText::FromString(TEXT("Add Comment..."));
	}
	if (TitleType == ENodeTitleType::ListView)
	{
		return FText::FromString(TEXT("Comment"));
	}
	return FText::FromString(NodeComment);
}

FText UEdGraphNode_Comment::GetTooltipText() const
{
	return FText::FromString(TEXT("A box that groups nodes under a text; moving it moves the nodes inside."));
}

FText UEdGraphNode_Comment::GetKeywords() const
{
	return FText::FromString(TEXT("Comment Note Box Group"));
}

void UEdGraphNode_Comment::OnRenameNode(const FString& NewName)
{
	NodeComment = NewName;
}

void UEdGraphNode_Comment::PostPlacedNewNode()
{
	if (NodeComment.IsEmpty())
	{
		NodeComment = TEXT("Comment");
	}
}

void UEdGraphNode_Comment::SetBounds(float Left, float Top, float Right, float Bottom)
{
	NodePosX = FMath::FloorToInt32(Left);
	NodePosY = FMath::FloorToInt32(Top);
	NodeWidth = FMath::CeilToInt32(Right - Left);
	NodeHeight = FMath::CeilToInt32(Bottom - Top);
}

bool UEdGraphNode_Comment::ContainsNodePosition(const UEdGraphNode* Node) const
{
	return Node && Node != this
		&& Node->NodePosX >= NodePosX && Node->NodePosX <= NodePosX + NodeWidth
		&& Node->NodePosY >= NodePosY && Node->NodePosY <= NodePosY + NodeHeight;
}

void UEdGraphNode_Comment::AddNodeUnderComment(UObject* Object)
{
	if (Object && Object != this)
	{
		NodesUnderComment.AddUnique(Object);
	}
}

void UEdGraphNode_Comment::ClearNodesUnderComment()
{
	NodesUnderComment.Reset();
}

void UEdGraphNode_Comment::SetNodesUnderComment(const FCommentNodeSet& InNodesUnderComment)
{
	NodesUnderComment = InNodesUnderComment;
}
