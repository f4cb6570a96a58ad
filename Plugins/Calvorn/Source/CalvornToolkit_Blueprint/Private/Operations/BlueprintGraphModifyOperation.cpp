#include "Operations/BlueprintGraphModifyOperation.h"

#include "AssetOperationBase.h"
#include "BlueprintNodeFormatter.h"
#include "BlueprintReadUtils.h"
#include "BlueprintUtils.h"
#include "CalvornSettings.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphPin.h"
#include "Engine/Blueprint.h"
#include "HAL/PlatformTime.h"
#include "K2Node_CustomEvent.h"
#include "K2Node_Event.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Kismet2/KismetEditorUtilities.h"
#include "OperationDurationScope.h"
#include "Operations/BlueprintGraphCreateOperation.h"
#include "Populate/ContextActionMenu.h"
#include "Populate/DependencyGating.h"
#include "Populate/GraphModificationRecords.h"
#include "Populate/LocalVariableUtils.h"
#include "Populate/PinConnectionUtils.h"
#include "Populate/PopulateSession.h"
#include "Populate/PopulateTelemetry.h"
#include "Populate/SpawnDispatcher.h"
#include "Templates/Casts.h"
#include "ToolInfo.h"
#include "ToolResult.h"

namespace
{
	using namespace Calvorn;

	/** The names whose read-backs a call tracks; arrays rather than sets so the read-backs come in the order things were touched. */
	struct FTouchedNames
	{
		TArray<FString> EventNames;
		TArray<FString> FloatingNodeNames;
		TArray<FString> FunctionNames;
		TArray<FString> DelegateNames;
	};

	/** Everything one call knows between its phases. */
	struct FPopulateCall
	{
		FString Path;
		FString GraphName;
		bool bEventRoute = false;
		bool bInFunctionGraphs = false;
		const TArray<TSharedPtr<FJsonValue>>* Nodes = nullptr;
		const TArray<TSharedPtr<FJsonValue>>* Connections = nullptr;
		UBlueprint* Blueprint = nullptr;
		UEdGraph* Graph = nullptr;

		int32 NodeRecordCount = 0;
		int32 NodesCreatedCount = 0;
		int32 ConnectionsSucceededCount = 0;
		UEdGraphNode* LastCreatedNode = nullptr;
		/** Every node this call created, guid or not: connections to other nodes count those as modified. */
		TSet<UEdGraphNode*> CreatedNodeSet;
		FTouchedNames Touched;
	};

	int32 NumEntries(const TArray<TSharedPtr<FJsonValue>>* Array)
	{
		return Array ? Array->Num() : 0;
	}

	FString GetFullTitle(const UEdGraphNode* Node)
	{
		return Node ? Node->GetNodeTitle(ENodeTitleType::FullTitle).ToString() : FString();
	}

	TSharedPtr<FJsonObject> AsObject(const TSharedPtr<FJsonValue>& Value)
	{
		const TSharedPtr<FJsonObject>* Object = nullptr;
		if (Value.IsValid() && Value->TryGetObject(Object) && Object && Object->IsValid())
		{
			return *Object;
		}
		return nullptr;
	}

	/** Whether the node is an event of either kind: these head their own flows and are never reported as attached. */
	bool IsEventOrCustomEvent(const UEdGraphNode* Node)
	{
		return Node && (Node->IsA<UK2Node_Event>() || Node->IsA<UK2Node_CustomEvent>());
	}

	/**
	 * On the event route a node is read back through the events that reach it; a node no event reaches is read
	 * back by its own title as a floating node.
	 */
	void ClassifyEventGraphNode(const UEdGraphNode* Node, FTouchedNames& Touched)
	{
		const TArray<const UEdGraphNode*> Events = FBlueprintReadUtils::FindEventsReachingNode(Node);
		if (Events.Num() == 0)
		{
			Touched.FloatingNodeNames.AddUnique(GetFullTitle(Node));
			return;
		}
		for (const UEdGraphNode* Event : Events)
		{
			Touched.EventNames.AddUnique(GetFullTitle(Event));
		}
	}

	void NoteTouchedNode(const UEdGraphNode* Node, FPopulateCall& Call)
	{
		if (Call.bEventRoute)
		{
			ClassifyEventGraphNode(Node, Call.Touched);
		}
		else if (Call.bInFunctionGraphs)
		{
			Call.Touched.FunctionNames.AddUnique(Call.GraphName);
		}
		else
		{
			Call.Touched.DelegateNames.AddUnique(Call.GraphName);
		}
	}

	// ---- Phases 1 to 7: the request, the Blueprint and the graph ---------------------------------

	bool ReadRequest(const FJsonObject& Json, FPopulateCall& Call, FToolResult& Result)
	{
		if (!Json.TryGetStringField(ToolInfo::FieldName_Path, Call.Path))
		{
			Result.AddErrorMessage(FString::Printf(TEXT("Missing required field '%s'"), ToolInfo::FieldName_Path));
			return false;
		}
		if (!Json.TryGetStringField(TEXT("graph_name"), Call.GraphName))
		{
			Result.AddErrorMessage(TEXT("Missing required field 'graph_name'"));
			return false;
		}
		FString GraphType = TEXT("function");
		Json.TryGetStringField(TEXT("graph_type"), GraphType);
		Call.bEventRoute = GraphType.Equals(TEXT("event"), ESearchCase::IgnoreCase) || Call.GraphName.Equals(TEXT("EventGraph"), ESearchCase::IgnoreCase);

		if (!Json.TryGetArrayField(TEXT("nodes"), Call.Nodes))
		{
			Call.Nodes = nullptr;
		}
		if (!Json.TryGetArrayField(TEXT("connections"), Call.Connections))
		{
			Call.Connections = nullptr;
		}

		// Function creation moved to bp_create_graph; a request still carrying the key is told where to go, not half-served.
		if (Json.Values.Contains(TEXT("functions")))
		{
			Result.AddErrorMessage(TEXT("'functions' array is no longer supported in bp_populate_graph. Use bp_create_graph for function/delegate creation."));
			return false;
		}
		if (NumEntries(Call.Nodes) == 0 && NumEntries(Call.Connections) == 0)
		{
			Result.AddErrorMessage(TEXT("No operations specified - must provide 'nodes' or 'connections' array"));
			return false;
		}
		return true;
	}

	bool LoadTargetBlueprint(FPopulateCall& Call, FToolResult& Result)
	{
		Call.Blueprint = FBlueprintUtils::LoadBlueprint(Call.Path, Result);
		if (!Call.Blueprint)
		{
			// No test fixture module exists headless to create a missing Blueprint; the load has said why it failed.
			Result.AddErrorMessage(FString::Printf(TEXT("Blueprint not found: %s"), *Call.Path));
			return false;
		}
		FString CheckOutError;
		if (!FAssetOperationBase::CheckOutAssetForModify(Call.Path, CheckOutError))
		{
			Result.AddErrorMessage(FString::Printf(TEXT("Cannot modify Blueprint - source control checkout failed:\n%s"), *CheckOutError));
			return false;
		}
		return true;
	}

	bool FindTargetGraph(FPopulateCall& Call, FToolResult& Result)
	{
		if (Call.bEventRoute)
		{
			Call.Graph = FBlueprintGraphCreateOperation::EnsureEventGraph(Call.Blueprint, Call.GraphName, Result);
			if (!Call.Graph)
			{
				return false;
			}
			Call.GraphName = Call.Graph->GetName();
		}
		else
		{
			TArray<UEdGraph*> Graphs;
			Call.Blueprint->GetAllGraphs(Graphs);
			for (UEdGraph* Candidate : Graphs)
			{
				if (Candidate && Candidate->GetName().Equals(Call.GraphName, ESearchCase::IgnoreCase))
				{
					Call.Graph = Candidate;
					break;
				}
			}
			if (!Call.Graph)
			{
				Result.AddErrorMessage(FString::Printf(TEXT("Graph '%s' not found in blueprint"), *Call.GraphName));
				return false;
			}
		}
		Call.bInFunctionGraphs = Call.Blueprint->FunctionGraphs.Contains(Call.Graph);
		Call.Blueprint->SetFlags(RF_Transactional);
		Call.Graph->SetFlags(RF_Transactional);
		Call.Blueprint->Modify();
		Call.Graph->Modify();
		return true;
	}

	// ---- Phases 9 and 11: local variables -------------------------------------------------------

	bool ApplyRequestedLocalVariables(const TArray<FLocalVariableRequest>& Requests, FPopulateCall& Call, FToolResult& Result)
	{
		FLocalVariableOutcome Outcome;
		if (!FLocalVariableUtils::ApplyLocalVariables(Call.Blueprint, Call.Graph, Requests, Outcome, Result))
		{
			return false;
		}
		if (Requests.Num() > 0)
		{
			TSharedPtr<FJsonObject> Telemetry = FPopulateTelemetry::GetOrCreateTelemetry(Result);
			Telemetry->SetNumberField(TEXT("local_variables_added"), Outcome.Added);
			Telemetry->SetNumberField(TEXT("local_variables_modified"), Outcome.Modified);
			Telemetry->SetNumberField(TEXT("local_variables_removed"), Outcome.Removed);
			if (Outcome.Failures.Num() > 0)
			{
				TArray<TSharedPtr<FJsonValue>> Failures;
				for (const FString& Failure : Outcome.Failures)
				{
					Failures.Add(MakeShared<FJsonValueString>(Failure));
				}
				Telemetry->SetArrayField(TEXT("local_variable_failures"), Failures);
			}
			Result.SetData(TEXT("telemetry"), Telemetry);
		}
		return true;
	}

	// ---- Phases 12 to 14: nodes -----------------------------------------------------------------

	void ApplyPinValues(UEdGraphNode* Node, const FNodeModificationRecord& Record, FToolResult& Result)
	{
		for (const FPinModificationRecord& PinRecord : Record.Pins)
		{
			if (PinRecord.Action != EPopulateAction::Modify || PinRecord.Value.IsEmpty())
			{
				continue;
			}
			if (UEdGraphPin* Pin = FPinConnectionUtils::FindPinFuzzy(Node, PinRecord.PinName, EGPD_Input, &Result))
			{
				FPinConnectionUtils::SetPinValue(Pin, PinRecord.Value, Result);
			}
		}
	}

	/** Spawns one record; the node, or null after noting the failure. */
	UEdGraphNode* SpawnRecord(FNodeModificationRecord& Record, const FContextActionMenu& Menu, FPopulateSession& Session, FPopulateCall& Call, FToolResult& Result)
	{
		UEdGraphNode* Node = FSpawnDispatcher::SpawnNode(Call.Graph, Record, Call.Blueprint, Menu, Result, &Session.CreatedNodes);
		if (!Node)
		{
			if (!Record.RequestGuid.IsEmpty())
			{
				Session.FailedNodes.Add(Record.RequestGuid);
			}
			return nullptr;
		}
		if (!Record.RequestGuid.IsEmpty())
		{
			Session.CreatedNodes.Add(Record.RequestGuid, Node);
		}
		Session.CreatedEntries.Add(FCreatedNodeEntry{Record.RequestGuid, Node, Node->GetClass()->GetName(), GetFullTitle(Node)});
		Call.CreatedNodeSet.Add(Node);
		++Call.NodesCreatedCount;
		Call.LastCreatedNode = Node;
		ApplyPinValues(Node, Record, Result);
		return Node;
	}

	void SpawnNodes(TArray<FNodeModificationRecord>& Records, const FContextActionMenu& Menu, FPopulateSession& Session, FPopulateCall& Call, FToolResult& Result)
	{
		// Custom events first, whatever their place in the request, so calls to them bind within the same request.
		TArray<FNodeModificationRecord*> CustomEventRecords;
		TArray<FNodeModificationRecord*> OtherRecords;
		for (FNodeModificationRecord& Record : Records)
		{
			const bool bCustomEvent = Record.Action == EPopulateAction::Add && Record.ClassName.Equals(TEXT("K2Node_CustomEvent"), ESearchCase::IgnoreCase);
			(bCustomEvent ? CustomEventRecords : OtherRecords).Add(&Record);
		}

		for (FNodeModificationRecord* Record : CustomEventRecords)
		{
			UEdGraphNode* Node = SpawnRecord(*Record, Menu, Session, Call, Result);
			if (Node && Node->IsA<UK2Node_Event>())
			{
				Call.Touched.EventNames.AddUnique(GetFullTitle(Node));
			}
		}
		for (FNodeModificationRecord* Record : OtherRecords)
		{
			// "modify" and "remove" on nodes belong to the graph editing tools; here they only count as not created.
			if (Record->Action != EPopulateAction::Add)
			{
				continue;
			}
			if (UEdGraphNode* Node = SpawnRecord(*Record, Menu, Session, Call, Result))
			{
				NoteTouchedNode(Node, Call);
			}
		}
	}

	// ---- Phases 15 and 16: connections and their audit -------------------------------------------

	void MakeConnections(FPopulateSession& Session, FPopulateCall& Call, FToolResult& Result)
	{
		if (!Call.Connections)
		{
			return;
		}
		for (const TSharedPtr<FJsonValue>& Value : *Call.Connections)
		{
			FConnectionModificationRecord Connection;
			if (!FGraphModificationParser::ParseConnection(AsObject(Value), Connection) || Connection.Action != EConnectionAction::Add)
			{
				continue;
			}
			// Both ends are resolved even when the first fails, so each missing node is named.
			FConnectionEndpointResolver Resolver(Session, Call.Graph, Connection, Result);
			UEdGraphNode* SourceNode = Resolver.ResolveEndpoint(Connection.SourceNodeGuid, TEXT("Source"));
			UEdGraphNode* TargetNode = Resolver.ResolveEndpoint(Connection.TargetNodeGuid, TEXT("Target"));
			if (!SourceNode || !TargetNode)
			{
				continue;
			}
			if (!FPinConnectionUtils::ConnectPins(Call.Graph, SourceNode, Connection.SourcePinName, TargetNode, Connection.TargetPinName, Result))
			{
				continue;
			}
			++Call.ConnectionsSucceededCount;
			for (UEdGraphNode* Endpoint : {SourceNode, TargetNode})
			{
				if (!Call.CreatedNodeSet.Contains(Endpoint))
				{
					Session.ModifiedNodes.Add(Endpoint);
				}
			}
			NoteTouchedNode(SourceNode, Call);
			if (Call.bEventRoute)
			{
				NoteTouchedNode(TargetNode, Call);
			}
		}
	}

	void WriteSessionSummary(const FPopulateSession& Session, const FPopulateCall& Call, FToolResult& Result)
	{
		if (!FPopulateTelemetry::HasTelemetry(Result))
		{
			return;
		}
		TSharedPtr<FJsonObject> Telemetry = FPopulateTelemetry::GetOrCreateTelemetry(Result);
		TSharedPtr<FJsonObject> Summary = MakeShared<FJsonObject>();
		Summary->SetNumberField(TEXT("nodes_created"), Call.NodesCreatedCount);
		Summary->SetNumberField(TEXT("nodes_failed"), Session.FailedNodes.Num());
		Summary->SetNumberField(TEXT("connections_attempted"), NumEntries(Call.Connections));
		Summary->SetNumberField(TEXT("connections_successful"), Call.ConnectionsSucceededCount);
		Summary->SetNumberField(TEXT("connections_blocked"), Session.BlockedOperations.Num());
		Telemetry->SetObjectField(TEXT("session_summary"), Summary);
		if (Session.BlockedOperations.Num() > 0)
		{
			TArray<TSharedPtr<FJsonValue>> Blocked;
			for (const FString& Text : Session.BlockedOperations)
			{
				Blocked.Add(MakeShared<FJsonValueString>(Text));
			}
			Telemetry->SetArrayField(TEXT("blocked_operations"), Blocked);
		}
		Result.SetData(TEXT("telemetry"), Telemetry);
	}

	// ---- Phase 17: layout -------------------------------------------------------------------------

	void LayOutTouchedNodes(const FPopulateSession& Session, const FPopulateCall& Call, FToolResult& Result)
	{
		TArray<UEdGraphNode*> Touched;
		for (const FCreatedNodeEntry& Entry : Session.CreatedEntries)
		{
			Touched.AddUnique(Entry.Node);
		}
		// Modified nodes in graph order, so the layout never depends on where the set put them.
		for (UEdGraphNode* Node : Call.Graph->Nodes)
		{
			if (Node && Session.ModifiedNodes.Contains(Node))
			{
				Touched.AddUnique(Node);
			}
		}
		if (Touched.Num() == 0)
		{
			return;
		}
		int32 NeighborCount = 0;
		const TArray<UEdGraphNode*> AllowList = FBlueprintNodeFormatter::BuildAllowList(Touched, NeighborCount);
		const double Start = FPlatformTime::Seconds();
		FBlueprintNodeFormatter::FormatNodes(Call.Graph, AllowList);
		const double FormatMilliseconds = (FPlatformTime::Seconds() - Start) * 1000.0;

		if (FPopulateTelemetry::HasTelemetry(Result))
		{
			TSharedPtr<FJsonObject> Telemetry = FPopulateTelemetry::GetOrCreateTelemetry(Result);
			Telemetry->SetNumberField(TEXT("format_time_ms"), FormatMilliseconds);
			Telemetry->SetNumberField(TEXT("nodes_formatted"), AllowList.Num());
			Telemetry->SetNumberField(TEXT("nodes_created"), Session.CreatedEntries.Num());
			Telemetry->SetNumberField(TEXT("nodes_existing_modified"), Session.ModifiedNodes.Num());
			Telemetry->SetNumberField(TEXT("neighbors_included"), NeighborCount);
			Result.SetData(TEXT("telemetry"), Telemetry);
		}
	}

	// ---- Phases 18 and 24: what was created -------------------------------------------------------

	TSharedPtr<FJsonObject> DescribeCreatedNode(const FCreatedNodeEntry& Entry)
	{
		TSharedPtr<FJsonObject> Item = MakeShared<FJsonObject>();
		Item->SetStringField(TEXT("request_guid"), Entry.RequestGuid);
		Item->SetStringField(TEXT("node_guid"), Entry.Node->NodeGuid.ToString(EGuidFormats::Digits));
		Item->SetStringField(TEXT("class_name"), Entry.ClassName);
		Item->SetStringField(TEXT("node_title"), Entry.NodeTitle);
		return Item;
	}

	FString WrapList(const TCHAR* Key, const TArray<TSharedPtr<FJsonValue>>& Items)
	{
		TSharedPtr<FJsonObject> Wrapper = MakeShared<FJsonObject>();
		Wrapper->SetArrayField(Key, Items);
		return FAssetOperationBase::SerializeJson(Wrapper);
	}

	void ReportCreatedNodes(const FPopulateSession& Session, const FPopulateCall& Call, FToolResult& Result)
	{
		if (Session.CreatedEntries.Num() == 0)
		{
			return;
		}
		TArray<TSharedPtr<FJsonValue>> Items;
		if (!Call.bEventRoute)
		{
			for (const FCreatedNodeEntry& Entry : Session.CreatedEntries)
			{
				Items.Add(MakeShared<FJsonValueObject>(DescribeCreatedNode(Entry)));
			}
			Result.SetData(TEXT("created_nodes"), WrapList(TEXT("nodes"), Items));
			return;
		}
		// In an event graph a node is reported with the events whose flows it joined; one no event reaches is left out.
		for (const FCreatedNodeEntry& Entry : Session.CreatedEntries)
		{
			if (IsEventOrCustomEvent(Entry.Node))
			{
				continue;
			}
			const TArray<const UEdGraphNode*> Events = FBlueprintReadUtils::FindEventsReachingNode(Entry.Node);
			if (Events.Num() == 0)
			{
				continue;
			}
			TSharedPtr<FJsonObject> Item = DescribeCreatedNode(Entry);
			TArray<TSharedPtr<FJsonValue>> EventTitles;
			for (const UEdGraphNode* Event : Events)
			{
				EventTitles.Add(MakeShared<FJsonValueString>(GetFullTitle(Event)));
			}
			Item->SetArrayField(TEXT("attached_to_events"), EventTitles);
			Items.Add(MakeShared<FJsonValueObject>(Item));
		}
		Result.SetData(TEXT("nodes_attached_to_events"), WrapList(TEXT("nodes"), Items));
	}

	void ReportCreatedNodesSummary(const FPopulateSession& Session, FToolResult& Result)
	{
		if (Session.CreatedEntries.Num() == 0)
		{
			return;
		}
		TArray<TSharedPtr<FJsonValue>> Items;
		for (const FCreatedNodeEntry& Entry : Session.CreatedEntries)
		{
			Items.Add(MakeShared<FJsonValueObject>(DescribeCreatedNode(Entry)));
		}
		Result.SetData(TEXT("created_nodes_summary"), WrapList(TEXT("items"), Items));
	}

	// ---- Phase 21: read-backs ---------------------------------------------------------------------

	TSharedPtr<FJsonObject> MakeReadParameters(const FString& Path)
	{
		TSharedPtr<FJsonObject> Parameters = MakeShared<FJsonObject>();
		Parameters->SetStringField(ToolInfo::FieldName_Path, Path);
		return Parameters;
	}

	TArray<TSharedPtr<FJsonValue>> MakeStringArray(const TArray<FString>& Names)
	{
		TArray<TSharedPtr<FJsonValue>> Values;
		for (const FString& Name : Names)
		{
			Values.Add(MakeShared<FJsonValueString>(Name));
		}
		return Values;
	}

	void TrackReadBacks(const FPopulateCall& Call, FToolResult& Result)
	{
		const FTouchedNames& Touched = Call.Touched;
		if (Touched.EventNames.Num() > 0 || Touched.FloatingNodeNames.Num() > 0)
		{
			TArray<TSharedPtr<FJsonValue>> Events;
			for (const FString& Name : Touched.FloatingNodeNames)
			{
				TSharedPtr<FJsonObject> Entry = MakeShared<FJsonObject>();
				Entry->SetStringField(ToolInfo::FieldName_GraphName, Call.GraphName);
				Entry->SetStringField(ToolInfo::FieldName_FloatingNodeName, Name);
				Events.Add(MakeShared<FJsonValueObject>(Entry));
			}
			for (const FString& Name : Touched.EventNames)
			{
				TSharedPtr<FJsonObject> Entry = MakeShared<FJsonObject>();
				Entry->SetStringField(ToolInfo::FieldName_GraphName, Call.GraphName);
				Entry->SetStringField(ToolInfo::FieldName_EventName, Name);
				Events.Add(MakeShared<FJsonValueObject>(Entry));
			}
			TSharedPtr<FJsonObject> Parameters = MakeReadParameters(Call.Path);
			Parameters->SetArrayField(ToolInfo::FieldName_Events, Events);
			Result.TrackModification(ToolInfo::ToolName_ReadBlueprintEvent, Parameters);
		}
		if (Touched.FunctionNames.Num() > 0)
		{
			TSharedPtr<FJsonObject> Parameters = MakeReadParameters(Call.Path);
			Parameters->SetArrayField(ToolInfo::FieldName_FunctionName, MakeStringArray(Touched.FunctionNames));
			Result.TrackModification(ToolInfo::ToolName_ReadBlueprintFunction, Parameters);
		}
		if (Touched.DelegateNames.Num() > 0)
		{
			TSharedPtr<FJsonObject> Parameters = MakeReadParameters(Call.Path);
			Parameters->SetArrayField(ToolInfo::FieldName_DelegateName, MakeStringArray(Touched.DelegateNames));
			Result.TrackModification(ToolInfo::ToolName_ReadBlueprintDelegate, Parameters);
		}
	}

	// ---- Phases 22 to 25: the answer and the save --------------------------------------------------

	void Summarize(const FPopulateCall& Call, FToolResult& Result)
	{
		const int32 ConnectionCount = NumEntries(Call.Connections);
		const int32 NodesFailed = Call.NodeRecordCount - Call.NodesCreatedCount;
		const int32 ConnectionsFailed = ConnectionCount - Call.ConnectionsSucceededCount;
		// A partial batch is still a success message: the item failures stand beside it as "[Failure]" warnings.
		if (NodesFailed <= 0 && ConnectionsFailed <= 0)
		{
			Result.AddSuccessMessage(FString::Printf(TEXT("Created %d nodes and %d connections in graph '%s'"), Call.NodesCreatedCount, Call.ConnectionsSucceededCount, *Call.GraphName));
		}
		else
		{
			Result.AddSuccessMessage(FString::Printf(TEXT("Created %d/%d nodes and %d/%d connections in graph '%s' (%d node(s) failed, %d connection(s) failed)"),
				Call.NodesCreatedCount, Call.NodeRecordCount, Call.ConnectionsSucceededCount, ConnectionCount, *Call.GraphName, NodesFailed, ConnectionsFailed));
		}
		Result.SetData(TEXT("nodes_created"), FString::FromInt(Call.NodesCreatedCount));
		Result.SetData(TEXT("nodes_failed"), FString::FromInt(NodesFailed));
		Result.SetData(TEXT("connections_created"), FString::FromInt(Call.ConnectionsSucceededCount));
		Result.SetData(TEXT("connections_failed"), FString::FromInt(ConnectionsFailed));
	}
}

void FBlueprintGraphModifyOperation::Execute(const FJsonObject& Json, Calvorn::FToolResult& Result)
{
	Calvorn::FOperationDurationScope DurationScope(Result);

	FPopulateCall Call;
	if (!ReadRequest(Json, Call, Result) || !LoadTargetBlueprint(Call, Result) || !FindTargetGraph(Call, Result))
	{
		return;
	}

	// The menu is the costly step: built once for the whole batch, and only when there are nodes to find in it.
	FContextActionMenu Menu;
	if (NumEntries(Call.Nodes) > 0)
	{
		Menu = FContextActionMenuService::BuildContextActionMenu(Call.Blueprint, Call.Graph, Result);
	}

	TArray<FLocalVariableRequest> LocalVariables;
	const TSharedPtr<FJsonObject>* LocalVariablesJson = nullptr;
	if (Json.TryGetObjectField(TEXT("local_variables"), LocalVariablesJson) && !FLocalVariableUtils::ParseLocalVariables(*LocalVariablesJson, LocalVariables, Result))
	{
		return;
	}

	TArray<FNodeModificationRecord> NodeRecords;
	if (Call.Nodes)
	{
		for (const TSharedPtr<FJsonValue>& Value : *Call.Nodes)
		{
			FNodeModificationRecord Record;
			if (FGraphModificationParser::ParseNode(AsObject(Value), Record))
			{
				NodeRecords.Add(MoveTemp(Record));
			}
		}
	}
	Call.NodeRecordCount = NodeRecords.Num();

	// Local variables come before the nodes, so a variable node of this request can name one it declares.
	if (!ApplyRequestedLocalVariables(LocalVariables, Call, Result))
	{
		return;
	}

	FPopulateSession Session;
	SpawnNodes(NodeRecords, Menu, Session, Call, Result);
	MakeConnections(Session, Call, Result);

	if (NumEntries(Call.Connections) > 0)
	{
		FDependencyGating::AuditHalfConnections(*Call.Connections, Session, Result);
	}
	WriteSessionSummary(Session, Call, Result);
	LayOutTouchedNodes(Session, Call, Result);
	ReportCreatedNodes(Session, Call, Result);

	// An error anywhere leaves the changes in memory but keeps them off disk.
	if (Result.GetErrorMessages().Num() > 0)
	{
		return;
	}

	FBlueprintEditorUtils::MarkBlueprintAsStructurallyModified(Call.Blueprint);
	if (Call.LastCreatedNode && GetDefault<UCalvornSettings>()->bFocusOnNewNodes)
	{
		FKismetEditorUtilities::BringKismetToFocusAttentionOnObject(Call.LastCreatedNode, false);
	}
	TrackReadBacks(Call, Result);
	Summarize(Call, Result);
	ReportCreatedNodesSummary(Session, Result);

	Call.Blueprint->MarkPackageDirty();
	Call.Blueprint->PostEditChange();
	Call.Blueprint->MarkPackageDirty();
	Call.Blueprint->PostEditChange();
	if (FAssetOperationBase::SaveAsset(Call.Blueprint, Result))
	{
		Result.FinalizeModifications();
	}
}
