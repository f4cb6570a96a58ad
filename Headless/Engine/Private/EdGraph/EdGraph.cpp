#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraph/EdGraphSchema.h"
#include "UObject/UnrealType.h"
#include "EngineReflection.h"

using namespace UE::Engine::Private;

IMPLEMENT_CLASS(UEdGraph,
	UE_NATIVE_PROPERTY(FClassProperty, Schema, CPF_None, UEdGraphSchema::StaticClass());
	WithObjectElements(UE_NATIVE_PROPERTY(FArrayProperty, Nodes, CPF_None), UEdGraphNode::StaticClass());
	UE_NATIVE_PROPERTY(FBoolProperty, bEditable, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bAllowDeletion, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bAllowRenaming, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FStructProperty, GraphGuid, CPF_None, TBaseStructure<FGuid>::Get());
	UE_NATIVE_PROPERTY(FStructProperty, InterfaceGuid, CPF_None, TBaseStructure<FGuid>::Get());
	WithObjectElements(UE_NATIVE_PROPERTY(FArrayProperty, SubGraphs, CPF_None), UEdGraph::StaticClass());
)

UEdGraph::UEdGraph() = default;

const UEdGraphSchema* UEdGraph::GetSchema() const
{
	if (!Schema)
	{
		return nullptr;
	}
	return static_cast<const UEdGraphSchema*>(Schema->GetDefaultObject());
}

UEdGraphNode* UEdGraph::CreateNode(TSubclassOf<UEdGraphNode> NewNodeClass, bool bFromUI, bool bSelectNewNode)
{
	checkf(NewNodeClass.Get(), TEXT("UEdGraph::CreateNode needs a node class"));
	UEdGraphNode* NewNode = NewObject<UEdGraphNode>(this, NewNodeClass.Get(), NAME_None, RF_Transactional);
	AddNode(NewNode, bFromUI, bSelectNewNode);
	return NewNode;
}

void UEdGraph::AddNode(UEdGraphNode* NodeToAdd, bool bUserAction, bool bSelectNewNode)
{
	check(NodeToAdd);
	checkf(NodeToAdd->GetOuter() == this, TEXT("A node must live inside the graph it is added to"));
	Modify();
	Nodes.Add(NodeToAdd);

	FEdGraphEditAction Action(GRAPHACTION_AddNode, this, NodeToAdd, bUserAction);
	if (bSelectNewNode)
	{
		Action.Action |= GRAPHACTION_SelectNode;
	}
	NotifyGraphChanged(Action);
}

bool UEdGraph::RemoveNode(UEdGraphNode* NodeToRemove, bool bBreakAllLinks)
{
	if (!NodeToRemove)
	{
		return false;
	}
	Modify();
	const int32 NumRemoved = Nodes.Remove(NodeToRemove);
	if (bBreakAllLinks)
	{
		NodeToRemove->BreakAllNodeLinks();
	}
	FEdGraphEditAction Action(GRAPHACTION_RemoveNode, this, NodeToRemove, false);
	NotifyGraphChanged(Action);
	return NumRemoved > 0;
}

void UEdGraph::NotifyGraphChanged()
{
	NotifyGraphChanged(FEdGraphEditAction());
}

void UEdGraph::NotifyGraphChanged(const FEdGraphEditAction& Action)
{
	OnGraphChanged.Broadcast(Action);
}

void UEdGraph::NotifyNodeChanged(const UEdGraphNode* Node)
{
	FEdGraphEditAction Action;
	Action.Action = GRAPHACTION_EditNode;
	Action.Graph = this;
	Action.Nodes.Add(Node);
	NotifyGraphChanged(Action);
}

FDelegateHandle UEdGraph::AddOnGraphChangedHandler(const FOnGraphChanged::FDelegate& InHandler)
{
	return OnGraphChanged.Add(InHandler);
}

void UEdGraph::RemoveOnGraphChangedHandler(FDelegateHandle Handle)
{
	OnGraphChanged.Remove(Handle);
}

FVector2D UEdGraph::GetGoodPlaceForNewNode()
{
	// Under the lowest node, lined up with the leftmost one.
	bool bAny = false;
	int32 MinX = 0;
	int32 MaxY = 0;
	for (const UEdGraphNode* Node : Nodes)
	{
		if (!Node)
		{
			continue;
		}
		MinX = bAny ? FMath::Min(MinX, Node->NodePosX) : Node->NodePosX;
		MaxY = bAny ? FMath::Max(MaxY, Node->NodePosY) : Node->NodePosY;
		bAny = true;
	}
	return FVector2D(double(MinX), double(MaxY) + 256.0);
}

void UEdGraph::GetAllChildrenGraphs(TArray<UEdGraph*>& Graphs) const
{
	for (UEdGraph* SubGraph : SubGraphs)
	{
		if (SubGraph)
		{
			Graphs.Add(SubGraph);
			SubGraph->GetAllChildrenGraphs(Graphs);
		}
	}
}
