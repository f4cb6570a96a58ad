#pragma once

#include "CoreMinimal.h"
#include "Containers/Set.h"
#include "Delegates/Delegate.h"
#include "Math/Vector2D.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"
#include "UObject/ObjectPtr.h"
#include "Templates/SubclassOf.h"
#include "Templates/Casts.h"
#include "EdGraph/EdGraphNode.h"

class UEdGraphSchema;

/** What happened to a graph, for NotifyGraphChanged listeners. */
enum EEdGraphActionType : int
{
	GRAPHACTION_Default = 0,
	GRAPHACTION_AddNode = 0x1 << 0,
	GRAPHACTION_SelectNode = 0x1 << 1,
	GRAPHACTION_RemoveNode = 0x1 << 2,
	GRAPHACTION_EditNode = 0x1 << 3,
};

struct FEdGraphEditAction
{
	/** A combination of EEdGraphActionType bits. */
	int32 Action = GRAPHACTION_Default;
	UEdGraph* Graph = nullptr;
	TSet<const UEdGraphNode*> Nodes;
	bool bUserInvoked = false;

	FEdGraphEditAction() = default;
	FEdGraphEditAction(EEdGraphActionType InAction, UEdGraph* InGraph, UEdGraphNode* InNode, bool bInUserInvoked)
		: Action(InAction)
		, Graph(InGraph)
		, bUserInvoked(bInUserInvoked)
	{
		if (InNode)
		{
			Nodes.Add(InNode);
		}
	}
};

/** A graph: nodes under the rules of a schema. */
class UEdGraph : public UObject
{
	DECLARE_CLASS(UEdGraph, UObject, CLASS_None, CASTCLASS_None, TEXT("/Script/Engine"), ENGINE_API)

public:
	DECLARE_MULTICAST_DELEGATE_OneParam(FOnGraphChanged, const FEdGraphEditAction&);

	ENGINE_API UEdGraph();

	/** The class of the schema that rules this graph. */
	TSubclassOf<UEdGraphSchema> Schema;
	TArray<TObjectPtr<UEdGraphNode>> Nodes;
	bool bEditable = true;
	/** Whether the user may delete the graph. */
	bool bAllowDeletion = true;
	bool bAllowRenaming = true;
	FGuid GraphGuid;
	/** The guid of the interface function this graph implements, if any. */
	FGuid InterfaceGuid;

	/** The schema's default object, or null when no schema class is set. */
	ENGINE_API const UEdGraphSchema* GetSchema() const;

	/** A node of the class, added to the graph (no guid and no pins yet: see FGraphNodeCreator). */
	ENGINE_API UEdGraphNode* CreateNode(TSubclassOf<UEdGraphNode> NewNodeClass, bool bFromUI, bool bSelectNewNode);
	UEdGraphNode* CreateNode(TSubclassOf<UEdGraphNode> NewNodeClass, bool bSelectNewNode = true) { return CreateNode(NewNodeClass, false, bSelectNewNode); }
	UEdGraphNode* CreateUserInvokedNode(TSubclassOf<UEdGraphNode> NewNodeClass, bool bSelectNewNode = true) { return CreateNode(NewNodeClass, true, bSelectNewNode); }

	/** A node made during compilation, never selected. */
	template <typename NodeClass>
	NodeClass* CreateIntermediateNode()
	{
		NodeClass* Node = static_cast<NodeClass*>(CreateNode(NodeClass::StaticClass(), false, false));
		Node->SetFlags(RF_Transient);
		Node->CreateNewGuid();
		return Node;
	}

	/** Puts a node (whose outer is this graph) into Nodes and tells the listeners. */
	ENGINE_API void AddNode(UEdGraphNode* NodeToAdd, bool bUserAction = false, bool bSelectNewNode = true);
	/** Takes the node out of Nodes (breaking its links unless told not to) and tells the listeners. False if absent. */
	ENGINE_API bool RemoveNode(UEdGraphNode* NodeToRemove, bool bBreakAllLinks = true);

	ENGINE_API virtual void NotifyGraphChanged();
	ENGINE_API virtual void NotifyGraphChanged(const FEdGraphEditAction& Action);
	/** Same as NotifyGraphChanged, for changes that do not alter the graph's structure. */
	ENGINE_API void NotifyNodeChanged(const UEdGraphNode* Node);

	ENGINE_API FDelegateHandle AddOnGraphChangedHandler(const FOnGraphChanged::FDelegate& InHandler);
	ENGINE_API void RemoveOnGraphChangedHandler(FDelegateHandle Handle);

	/** Left of every node and below the lowest one: (min X, max Y + 256); (0, 256) when empty. */
	ENGINE_API FVector2D GetGoodPlaceForNewNode();

	template <class MinRequiredType>
	void GetNodesOfClass(TArray<MinRequiredType*>& OutNodes) const
	{
		for (UEdGraphNode* Node : Nodes)
		{
			if (MinRequiredType* Typed = Cast<MinRequiredType>(Node))
			{
				OutNodes.Add(Typed);
			}
		}
	}

	template <class MinRequiredType, class ArrayClassType>
	void GetNodesOfClassEx(TArray<ArrayClassType*>& OutNodes) const
	{
		for (UEdGraphNode* Node : Nodes)
		{
			if (MinRequiredType* Typed = Cast<MinRequiredType>(Node))
			{
				OutNodes.Add(Typed);
			}
		}
	}

	/** The graphs nested in this graph's nodes (composite and state machine graphs). */
	TArray<TObjectPtr<UEdGraph>> SubGraphs;
	ENGINE_API void GetAllChildrenGraphs(TArray<UEdGraph*>& Graphs) const;

private:
	FOnGraphChanged OnGraphChanged;
};

/**
 * Makes a node in the order the editor does: create it, let the caller set it up, then Finalize gives
 * it a guid, lets it react to being placed and allocates its pins.
 */
template <typename NodeType>
struct FGraphNodeCreator
{
public:
	explicit FGraphNodeCreator(UEdGraph& InGraph)
		: Node(nullptr)
		, Graph(InGraph)
		, bPlaced(false)
	{
	}

	NodeType* CreateNode(bool bSelectNewNode = true)
	{
		Node = static_cast<NodeType*>(Graph.CreateNode(NodeType::StaticClass(), false, bSelectNewNode));
		return Node;
	}

	NodeType* CreateUserInvokedNode(bool bSelectNewNode = true)
	{
		Node = static_cast<NodeType*>(Graph.CreateNode(NodeType::StaticClass(), true, bSelectNewNode));
		return Node;
	}

	void Finalize()
	{
		check(!bPlaced);
		check(Node);
		Node->CreateNewGuid();
		Node->PostPlacedNewNode();
		bPlaced = true;
		if (Node->Pins.Num() == 0)
		{
			Node->AllocateDefaultPins();
		}
	}

	~FGraphNodeCreator()
	{
		checkf(!Node || bPlaced, TEXT("FGraphNodeCreator: a node was created but Finalize was never called"));
	}

private:
	FGraphNodeCreator(const FGraphNodeCreator&) = delete;
	FGraphNodeCreator& operator=(const FGraphNodeCreator&) = delete;

	NodeType* Node;
	UEdGraph& Graph;
	bool bPlaced;
};
