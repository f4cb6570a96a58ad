#include "Populate/DependencyGating.h"

#include "BlueprintMatchingUtils.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphPin.h"
#include "Populate/GraphModificationRecords.h"
#include "Populate/PopulateSession.h"
#include "Populate/PopulateTelemetry.h"
#include "ToolResult.h"

FConnectionEndpointResolver::FConnectionEndpointResolver(FPopulateSession& InSession, UEdGraph* InGraph, const FConnectionModificationRecord& InConnection, Calvorn::FToolResult& InResult)
	: Session(InSession)
	, Graph(InGraph)
	, Connection(InConnection)
	, Result(InResult)
{
}

UEdGraphNode* FConnectionEndpointResolver::ResolveEndpoint(const FString& NodeGuid, const TCHAR* SideLabel)
{
	if (UEdGraphNode* const* Created = Session.CreatedNodes.Find(NodeGuid))
	{
		if (*Created)
		{
			return *Created;
		}
	}
	// A real guid from an earlier call (or a read) names a node that already stands in the graph.
	if (UEdGraphNode* Existing = FBlueprintMatchingUtils::FindNodeByGuid(Graph, NodeGuid))
	{
		return Existing;
	}

	const FString Text = FString::Printf(TEXT("Connection blocked: %s node '%s' not found (%s.%s -> %s.%s)"),
		SideLabel, *NodeGuid,
		*Connection.SourceNodeGuid, *Connection.SourcePinName, *Connection.TargetNodeGuid, *Connection.TargetPinName);
	Session.BlockedOperations.Add(Text);
	Result.AddWarningMessage(Text);
	return nullptr;
}

void FDependencyGating::AuditHalfConnections(const TArray<TSharedPtr<FJsonValue>>& Connections, const FPopulateSession& Session, Calvorn::FToolResult& Result)
{
	if (Connections.Num() == 0)
	{
		return;
	}

	// Links asked of each node, in the order the guids first appear, so the report reads like the request.
	TArray<FString> Order;
	TMap<FString, int32> Expected;
	auto Expect = [&Order, &Expected](const FString& Guid)
	{
		if (int32* Count = Expected.Find(Guid))
		{
			++*Count;
			return;
		}
		Expected.Add(Guid, 1);
		Order.Add(Guid);
	};
	for (const TSharedPtr<FJsonValue>& Value : Connections)
	{
		const TSharedPtr<FJsonObject>* Object = nullptr;
		if (!Value.IsValid() || !Value->TryGetObject(Object) || !Object)
		{
			continue;
		}
		FConnectionModificationRecord Record;
		if (!FGraphModificationParser::ParseConnection(*Object, Record) || Record.Action != EConnectionAction::Add)
		{
			continue;
		}
		Expect(Record.SourceNodeGuid);
		Expect(Record.TargetNodeGuid);
	}

	for (const FString& Guid : Order)
	{
		// Only nodes made by this call are audited: a failed node has no links to count, and an existing one had links before.
		UEdGraphNode* const* Created = Session.CreatedNodes.Find(Guid);
		if (!Created || !*Created)
		{
			continue;
		}
		int32 ActualCount = 0;
		for (const UEdGraphPin* Pin : (*Created)->Pins)
		{
			if (Pin)
			{
				ActualCount += Pin->LinkedTo.Num();
			}
		}
		const int32 ExpectedCount = Expected.FindChecked(Guid);
		if (ActualCount >= ExpectedCount)
		{
			continue;
		}
		FPopulateTelemetry::RecordHalfConnected(Result, Guid, (*Created)->GetNodeTitle(ENodeTitleType::FullTitle).ToString(), ExpectedCount, ActualCount);
	}
}
