#pragma once

#include "CoreMinimal.h"

class FJsonValue;
class UEdGraph;
class UEdGraphNode;
struct FConnectionModificationRecord;
struct FPopulateSession;

namespace Calvorn
{
	class FToolResult;
}

/**
 * Resolves the two ends of one requested connection: a node created in this call under the client's id, or
 * one that already stands in the graph under that real guid. An end that resolves to nothing is reported as
 * blocked, so a failed node shows up as the reason instead of a pin error.
 */
class CALVORNTOOLKIT_BLUEPRINT_API FConnectionEndpointResolver
{
public:
	FConnectionEndpointResolver(FPopulateSession& InSession, UEdGraph* InGraph, const FConnectionModificationRecord& InConnection, Calvorn::FToolResult& InResult);

	/** The node, or null after appending the blocked text to the session and adding it as a warning. SideLabel: "Source" or "Target". */
	UEdGraphNode* ResolveEndpoint(const FString& NodeGuid, const TCHAR* SideLabel);

private:
	FPopulateSession& Session;
	UEdGraph* Graph;
	const FConnectionModificationRecord& Connection;
	Calvorn::FToolResult& Result;
};

class CALVORNTOOLKIT_BLUEPRINT_API FDependencyGating
{
public:
	/**
	 * After all connections were tried: every created node that got fewer links than the parsed "add"
	 * connections asked of it goes into "half_connected_nodes". Nodes that failed or existed before are
	 * not audited.
	 */
	static void AuditHalfConnections(const TArray<TSharedPtr<FJsonValue>>& Connections, const FPopulateSession& Session, Calvorn::FToolResult& Result);
};
