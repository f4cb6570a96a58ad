#include "CoreMinimal.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode_Comment.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UnrealType.h"

#include <gtest/gtest.h>

namespace
{
	UEdGraphNode_Comment* NewComment()
	{
		UPackage* Package = CreatePackage(TEXT("/Game/Tests/CommentNode"));
		UEdGraph* Graph = NewObject<UEdGraph>(Package, TEXT("Graph"));
		return NewObject<UEdGraphNode_Comment>(Graph);
	}
}

TEST(CommentNode, StartsAsTheEditorsDefaultBox)
{
	const UEdGraphNode_Comment* Comment = NewComment();
	EXPECT_EQ(Comment->NodeWidth, 400);
	EXPECT_EQ(Comment->NodeHeight, 100);
	EXPECT_EQ(Comment->FontSize, 18);
	EXPECT_EQ(Comment->MoveMode, ECommentBoxMode::GroupMovement);
	EXPECT_TRUE(Comment->GetCanRenameNode());
	EXPECT_TRUE(Comment->Pins.IsEmpty());
}

TEST(CommentNode, TitlesNameTheKindInMenusAndTheTextOnTheCanvas)
{
	UEdGraphNode_Comment* Comment = NewComment();
	Comment->PostPlacedNewNode();
	EXPECT_EQ(Comment->GetNodeTitle(ENodeTitleType::FullTitle).ToString(), TEXT("Comment"));
	Comment->OnRenameNode(TEXT("Movement logic"));
	EXPECT_EQ(Comment->NodeComment, TEXT("Movement logic"));
	EXPECT_EQ(Comment->GetNodeTitle(ENodeTitleType::FullTitle).ToString(), TEXT("Movement logic"));
	EXPECT_EQ(Comment->GetNodeTitle(ENodeTitleType::MenuTitle).ToString(), TEXT("Add Comment..."));
	EXPECT_EQ(Comment->GetNodeTitle(ENodeTitleType::ListView).ToString(), TEXT("Comment"));
}

TEST(CommentNode, BoundsCoverTheRectangleAndContainOnlyNodesInside)
{
	UEdGraphNode_Comment* Comment = NewComment();
	Comment->SetBounds(-100.5f, 20.f, 300.f, 220.25f);
	EXPECT_EQ(Comment->NodePosX, -101);
	EXPECT_EQ(Comment->NodePosY, 20);
	EXPECT_EQ(Comment->NodeWidth, 401);
	EXPECT_EQ(Comment->NodeHeight, 201);

	UEdGraphNode* Inside = NewObject<UEdGraphNode>(Comment->GetOuter());
	Inside->NodePosX = 0;
	Inside->NodePosY = 100;
	UEdGraphNode* Outside = NewObject<UEdGraphNode>(Comment->GetOuter());
	Outside->NodePosX = 301;
	Outside->NodePosY = 100;
	EXPECT_TRUE(Comment->ContainsNodePosition(Inside));
	EXPECT_FALSE(Comment->ContainsNodePosition(Outside));
	EXPECT_FALSE(Comment->ContainsNodePosition(Comment));
}

TEST(CommentNode, ReflectsWhatASavedBoxMustKeep)
{
	const UClass* Class = UEdGraphNode_Comment::StaticClass();
	for (const char* Name : {"CommentColor", "FontSize", "MoveMode", "CommentDepth", "NodeComment", "NodeWidth"})
	{
		EXPECT_NE(Class->FindPropertyByName(FName(Name)), nullptr) << Name;
	}
	UEdGraphNode_Comment* Comment = NewComment();
	Comment->CommentColor = FLinearColor(0.5f, 0.25f, 1.f, 1.f);
	const FProperty* Color = Class->FindPropertyByName(TEXT("CommentColor"));
	FString Text;
	Color->ExportText_Direct(Text, Color->ContainerPtrToValuePtr<void>(Comment), nullptr, nullptr, PPF_None);
	EXPECT_EQ(Text, TEXT("(R=0.500000,G=0.250000,B=1.000000,A=1.000000)"));
}
