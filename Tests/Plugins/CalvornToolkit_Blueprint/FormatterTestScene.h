#pragma once

// Graphs for the formatter suites: nodes that carry exactly the pins a test links, heights the test chooses, and a
// graph that counts the calls the writing phase makes.

#include <gtest/gtest.h>

#include "CoreMinimal.h"
#include "BlueprintNodeFormatter.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraphSchema_K2.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"

/** A graph that counts Modify calls. */
class UFormatterTestGraph : public UEdGraph
{
	DECLARE_CLASS(UFormatterTestGraph, UEdGraph, CLASS_None, CASTCLASS_None, TEXT("/Script/CalvornToolkitBlueprintTests"), NO_API)

public:
	int32 ModifyCalls = 0;

	virtual bool Modify(bool bAlwaysMarkDirty = true) override
	{
		++ModifyCalls;
		return Super::Modify(bAlwaysMarkDirty);
	}
};

/** A node without pins of its own that counts Modify calls; tests add the pins they link. */
class UFormatterTestNode : public UEdGraphNode
{
	DECLARE_CLASS(UFormatterTestNode, UEdGraphNode, CLASS_None, CASTCLASS_None, TEXT("/Script/CalvornToolkitBlueprintTests"), NO_API)

public:
	int32 ModifyCalls = 0;

	virtual bool Modify(bool bAlwaysMarkDirty = true) override
	{
		++ModifyCalls;
		return Super::Modify(bAlwaysMarkDirty);
	}
};

/** One graph under construction, with the heights its nodes are measured at (100 unless set). */
struct FFormatterScene
{
	UFormatterTestGraph* Graph = nullptr;
	TMap<UEdGraphNode*, float> Heights;
	int32 Notifications = 0;

	FFormatterScene()
	{
		Graph = NewObject<UFormatterTestGraph>(GetTransientPackage(), NAME_None);
		Graph->AddOnGraphChangedHandler(UEdGraph::FOnGraphChanged::FDelegate::CreateLambda([this](const FEdGraphEditAction& Action)
		{
			if (Action.Action == GRAPHACTION_Default && Action.Nodes.Num() == 0)
			{
				++Notifications;
			}
		}));
	}

	UFormatterTestNode* Node(int32 X, int32 Y, float Height = 100.0f)
	{
		UFormatterTestNode* New = static_cast<UFormatterTestNode*>(Graph->CreateNode(UFormatterTestNode::StaticClass(), false));
		New->NodePosX = X;
		New->NodePosY = Y;
		Heights.Add(New, Height);
		return New;
	}

	template <typename NodeType>
	NodeType* Add(int32 X, int32 Y, float Height = 100.0f)
	{
		NodeType* New = static_cast<NodeType*>(Graph->CreateNode(NodeType::StaticClass(), false));
		New->NodePosX = X;
		New->NodePosY = Y;
		Heights.Add(New, Height);
		return New;
	}

	static UEdGraphPin* ExecIn(UEdGraphNode* Node)
	{
		if (UEdGraphPin* Existing = Node->FindPin(TEXT("execute"), EGPD_Input))
		{
			return Existing;
		}
		return Node->CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Exec, TEXT("execute"));
	}

	static UEdGraphPin* NewPin(UEdGraphNode* Node, EEdGraphPinDirection Direction, FName Category)
	{
		const FName Name(*FString::Printf(TEXT("%s_%d"), Direction == EGPD_Input ? TEXT("in") : TEXT("out"), Node->Pins.Num()));
		return Node->CreatePin(Direction, Category, Name);
	}

	/** A new exec output of From linked to the exec input of To. */
	static void Then(UEdGraphNode* From, UEdGraphNode* To)
	{
		NewPin(From, EGPD_Output, UEdGraphSchema_K2::PC_Exec)->MakeLinkTo(ExecIn(To));
	}

	/** A new data output of Source linked to a new data input of Consumer. */
	static void Feeds(UEdGraphNode* Source, UEdGraphNode* Consumer)
	{
		NewPin(Source, EGPD_Output, UEdGraphSchema_K2::PC_Float)->MakeLinkTo(NewPin(Consumer, EGPD_Input, UEdGraphSchema_K2::PC_Float));
	}

	void Format(const TArray<UEdGraphNode*>& AllowList)
	{
		FBlueprintNodeFormatter::FormatNodes(Graph, AllowList, [this](UEdGraphNode* Node) { return Heights.FindRef(Node, 100.0f); });
	}

	void ResetCounters()
	{
		Graph->ModifyCalls = 0;
		for (UEdGraphNode* Node : Graph->Nodes)
		{
			if (UFormatterTestNode* TestNode = Cast<UFormatterTestNode>(Node))
			{
				TestNode->ModifyCalls = 0;
			}
		}
		Notifications = 0;
	}
};

/** Whether a node stands exactly at (X, Y), saying where it is when not. */
inline ::testing::AssertionResult IsNodeAt(const UEdGraphNode* Node, int32 X, int32 Y)
{
	if (Node->NodePosX == X && Node->NodePosY == Y)
	{
		return ::testing::AssertionSuccess();
	}
	return ::testing::AssertionFailure() << "at (" << Node->NodePosX << ", " << Node->NodePosY << "), expected (" << X << ", " << Y << ")";
}

#define EXPECT_NODE_AT(Node, X, Y) EXPECT_TRUE(IsNodeAt((Node), (X), (Y))) << #Node << " "
