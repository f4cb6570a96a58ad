#pragma once

#include "CoreMinimal.h"
#include "EdGraph/EdGraphNode.h"
#include "Math/Color.h"
#include "UObject/ObjectMacros.h"

/** What happens to the nodes inside a comment box when the box is moved. */
namespace ECommentBoxMode
{
	enum Type : int
	{
		/** Nodes fully inside the box move with it. */
		GroupMovement,
		/** The box moves alone. */
		NoGroupMovement
	};
}

/** Objects a comment box encloses, as the editor tracks them while dragging. */
typedef TArray<UObject*> FCommentNodeSet;

/** A resizable comment box: no pins, a title taken from NodeComment, and a rectangle others are laid out around. */
class UEdGraphNode_Comment : public UEdGraphNode
{
	DECLARE_CLASS(UEdGraphNode_Comment, UEdGraphNode, CLASS_None, CASTCLASS_None, TEXT("/Script/UnrealEd"), UNREALED_API)

public:
	UNREALED_API UEdGraphNode_Comment();

	FLinearColor CommentColor = FLinearColor::White;
	int32 FontSize = 18;
	bool bCommentBubbleVisible_InDetailsPanel = false;
	bool bColorCommentBubble = false;
	bool bGroupMovement_DEPRECATED = false;
	TEnumAsByte<ECommentBoxMode::Type> MoveMode = ECommentBoxMode::GroupMovement;
	/** Drawing order among overlapping comments; -1 until the editor assigns one. */
	int32 CommentDepth = -1;

	UNREALED_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UNREALED_API virtual FText GetTooltipText() const override;
	UNREALED_API virtual FText GetKeywords() const override;
	UNREALED_API virtual void OnRenameNode(const FString& NewName) override;
	UNREALED_API virtual void PostPlacedNewNode() override;
	virtual bool ShouldOverridePinNames() const override { return true; }

	/** Places the box so it covers the rectangle from (Left, Top) to (Right, Bottom). */
	UNREALED_API void SetBounds(float Left, float Top, float Right, float Bottom);
	/** True when the node's position lies inside this box. Position only: a node's drawn size is unknown here. */
	UNREALED_API bool ContainsNodePosition(const UEdGraphNode* Node) const;

	UNREALED_API void AddNodeUnderComment(UObject* Object);
	UNREALED_API void ClearNodesUnderComment();
	UNREALED_API void SetNodesUnderComment(const FCommentNodeSet& InNodesUnderComment);
	const FCommentNodeSet& GetNodesUnderComment() const { return NodesUnderComment; }

private:
	/** Filled while the editor drags the box; never saved. */
	FCommentNodeSet NodesUnderComment;
};
