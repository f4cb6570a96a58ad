#include "BlueprintReadUtils.h"
#include "BlueprintReadUtilsPrivate.h"

#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphNode_Comment.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraphSchema_K2.h"
#include "K2Node_ComponentBoundEvent.h"
#include "K2Node_EventNodeInterface.h"
#include "ToolInfo.h"

using namespace UE::CalvornBlueprint::ReadPrivate;

const TCHAR* const FBlueprintReadUtils::UnattachedFlowName = TEXT("nodes_not_attached_to_an_event");

namespace
{
	bool IsEventNode(const UEdGraphNode* Node)
	{
		return Node->GetInterfaceAddress(UK2Node_EventNodeInterface::StaticClass()) != nullptr
			|| Node->IsA<UK2Node_ComponentBoundEvent>();
	}

	/**
	 * The nodes an event reaches, breadth first from the event. Execution inputs are never walked back,
	 * so a flow takes what it runs and the data those nodes read, not what merely runs before them; another
	 * event ends the walk, as its chain is its own flow.
	 */
	void CollectFlow(const UEdGraphNode* EventNode, TArray<const UEdGraphNode*>& OutFlow)
	{
		TSet<const UEdGraphNode*> Visited;
		Visited.Add(EventNode);
		OutFlow.Add(EventNode);

		// The flow list doubles as the queue: nodes are appended once and taken in the order they came.
		for (int32 Next = 0; Next < OutFlow.Num(); ++Next)
		{
			const UEdGraphNode* Node = OutFlow[Next];
			for (const UEdGraphPin* Pin : Node->Pins)
			{
				if (!Pin || (Pin->Direction == EGPD_Input && Pin->PinType.PinCategory == UEdGraphSchema_K2::PC_Exec))
				{
					continue;
				}
				for (const UEdGraphPin* Linked : Pin->LinkedTo)
				{
					const UEdGraphNode* LinkedNode = Linked ? Linked->GetOwningNodeUnchecked() : nullptr;
					if (!LinkedNode || IsEventNode(LinkedNode))
					{
						continue;
					}
					bool bAlreadyVisited = false;
					Visited.Add(LinkedNode, &bAlreadyVisited);
					if (!bAlreadyVisited)
					{
						OutFlow.Add(LinkedNode);
					}
				}
			}
		}
	}

	/** The nodes of a flow, each read at the top level with its pins. */
	TArray<TSharedPtr<FJsonValue>> ReadFlowNodes(const TArray<const UEdGraphNode*>& FlowNodes, const TSharedPtr<FJsonObject>& Options)
	{
		TSet<const UEdGraphNode*> FlowSet;
		FlowSet.Reserve(FlowNodes.Num());
		for (const UEdGraphNode* Node : FlowNodes)
		{
			FlowSet.Add(Node);
		}

		TArray<TSharedPtr<FJsonValue>> NodeValues;
		NodeValues.Reserve(FlowNodes.Num());
		for (const UEdGraphNode* Node : FlowNodes)
		{
			if (!Node)
			{
				continue;
			}
			TSet<const UEdGraph*> FreshPath;
			if (TSharedPtr<FJsonObject> NodeObject = ReadNodeWithPins(Node, Options, 0, FreshPath, &FlowSet))
			{
				NodeValues.Add(MakeValue(NodeObject));
			}
		}
		return NodeValues;
	}

	/** The requested event names of an event read, each with the number of flows it matched. */
	void ReadEventFilter(const TSharedPtr<FJsonObject>& Options, TMap<FString, int32>& OutRequested)
	{
		const TArray<TSharedPtr<FJsonValue>>* Events = nullptr;
		if (!Options->TryGetArrayField(Calvorn::ToolInfo::FieldName_Events, Events))
		{
			return;
		}
		for (const TSharedPtr<FJsonValue>& Entry : *Events)
		{
			const TSharedPtr<FJsonObject>* EventObject = nullptr;
			if (!Entry.IsValid() || !Entry->TryGetObject(EventObject) || !EventObject->IsValid())
			{
				continue;
			}
			const TSharedPtr<FJsonValue> Name = (*EventObject)->TryGetField(Calvorn::ToolInfo::FieldName_EventName);
			if (Name.IsValid() && Name->Type == EJson::String)
			{
				OutRequested.FindOrAdd(Name->AsString(), 0);
			}
		}
	}
}

TSharedPtr<FJsonObject> FBlueprintReadUtils::ReadEventGraph(const UEdGraph* Graph, TSharedPtr<FJsonObject> Options, bool bFilterByNodes, const TSet<FString>& NodeGuids)
{
	TSharedPtr<FJsonObject> GraphObject = MakeShared<FJsonObject>();
	if (!Graph)
	{
		GraphObject->SetStringField(TEXT("error"), TEXT("Invalid graph provided"));
		return GraphObject;
	}
	FString ReadTool;
	if (!TryGetReadTool(Options, ReadTool))
	{
		return GraphObject;
	}
	const bool bEventRead = ReadTool.Equals(Calvorn::ToolInfo::ToolName_ReadBlueprintEvent, ESearchCase::IgnoreCase);
	const bool bFinalizeRead = IsFinalizeRead(Options);

	GraphObject->SetStringField(TEXT("name"), Graph->GetName());
	GraphObject->SetStringField(TEXT("class"), Graph->GetClass()->GetName());
	GraphObject->SetStringField(TEXT("schema"), GetSchemaClassName(Graph));

	// Every event's flow, in graph order.
	TArray<TPair<const UEdGraphNode*, TArray<const UEdGraphNode*>>> Flows;
	for (const UEdGraphNode* Node : Graph->Nodes)
	{
		if (Node && IsEventNode(Node))
		{
			TPair<const UEdGraphNode*, TArray<const UEdGraphNode*>>& Flow = Flows.Emplace_GetRef();
			Flow.Key = Node;
			CollectFlow(Node, Flow.Value);
		}
	}

	TMap<FString, int32> RequestedEvents;
	if (bEventRead)
	{
		ReadEventFilter(Options, RequestedEvents);
	}

	TSet<const UEdGraphNode*> AttachedNodes;
	TArray<TSharedPtr<FJsonValue>> FlowValues;
	for (const TPair<const UEdGraphNode*, TArray<const UEdGraphNode*>>& Flow : Flows)
	{
		// Attached whether or not the flow is written: a node of a filtered-out flow is not loose.
		for (const UEdGraphNode* Node : Flow.Value)
		{
			AttachedNodes.Add(Node);
		}

		if (bFilterByNodes)
		{
			const bool bHoldsNode = Flow.Value.IndexOfByPredicate([&NodeGuids](const UEdGraphNode* Node)
			{
				return NodeGuids.Contains(GetShortGuid(Node->NodeGuid));
			}) != INDEX_NONE;
			if (!bHoldsNode)
			{
				continue;
			}
		}

		const FString EventTitle = GetNodeTitleString(Flow.Key, ENodeTitleType::FullTitle);
		if (bEventRead)
		{
			// Either text may hold the other, so "BeginPlay" finds "Event BeginPlay" and a title finds itself.
			int32* MatchedCount = nullptr;
			for (TPair<FString, int32>& Requested : RequestedEvents)
			{
				if (Requested.Key.Contains(EventTitle, ESearchCase::IgnoreCase) || EventTitle.Contains(Requested.Key, ESearchCase::IgnoreCase))
				{
					MatchedCount = &Requested.Value;
					break;
				}
			}
			if (!MatchedCount)
			{
				continue;
			}
			++*MatchedCount;
		}

		TSharedPtr<FJsonObject> FlowObject = MakeShared<FJsonObject>();
		FlowObject->SetStringField(TEXT("event_type"), Flow.Key->GetClass()->GetName());
		FlowObject->SetStringField(TEXT("event_title"), EventTitle);
		if (bEventRead)
		{
			FlowObject->SetArrayField(TEXT("nodes"), ReadFlowNodes(Flow.Value, Options));
		}
		FlowValues.Add(MakeValue(FlowObject));
	}

	if (bEventRead)
	{
		for (const TPair<FString, int32>& Requested : RequestedEvents)
		{
			if (Requested.Value >= 1 || Requested.Key.Equals(UnattachedFlowName, ESearchCase::IgnoreCase))
			{
				continue;
			}
			TSharedPtr<FJsonObject> Status = MakeShared<FJsonObject>();
			Status->SetStringField(TEXT("event_title"), Requested.Key);
			Status->SetStringField(TEXT("status"), GetMissingStatusWord(bFinalizeRead));
			FlowValues.Add(MakeValue(Status));
		}
	}

	TArray<const UEdGraphNode*> LooseNodes;
	for (const UEdGraphNode* Node : Graph->Nodes)
	{
		if (Node && !Node->IsA<UEdGraphNode_Comment>() && !AttachedNodes.Contains(Node))
		{
			LooseNodes.Add(Node);
		}
	}
	TSharedPtr<FJsonObject> LooseFlow = MakeShared<FJsonObject>();
	LooseFlow->SetStringField(TEXT("event_type"), UnattachedFlowName);
	LooseFlow->SetStringField(TEXT("event_title"), UnattachedFlowName);
	LooseFlow->SetArrayField(TEXT("nodes"), ReadFlowNodes(LooseNodes, Options));
	FlowValues.Add(MakeValue(LooseFlow));

	GraphObject->SetArrayField(TEXT("event_flows"), MoveTemp(FlowValues));
	return GraphObject;
}

TArray<const UEdGraphNode*> FBlueprintReadUtils::FindEventsReachingNode(const UEdGraphNode* Node)
{
	TArray<const UEdGraphNode*> Events;
	const UEdGraph* Graph = Node ? Node->GetGraph() : nullptr;
	if (!Graph)
	{
		return Events;
	}
	TArray<const UEdGraphNode*> Flow;
	for (const UEdGraphNode* Candidate : Graph->Nodes)
	{
		if (!Candidate || !IsEventNode(Candidate))
		{
			continue;
		}
		Flow.Reset();
		CollectFlow(Candidate, Flow);
		if (Flow.Contains(Node))
		{
			Events.Add(Candidate);
		}
	}
	return Events;
}
