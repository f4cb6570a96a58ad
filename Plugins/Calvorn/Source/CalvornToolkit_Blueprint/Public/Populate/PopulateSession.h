#pragma once

#include "CoreMinimal.h"

class UEdGraphNode;

/** One node a populate call created, in creation order. */
struct CALVORNTOOLKIT_BLUEPRINT_API FCreatedNodeEntry
{
	FString RequestGuid;
	UEdGraphNode* Node = nullptr;
	FString ClassName;
	FString NodeTitle;
};

/**
 * The state of one bp_populate_graph call, on the stack of its Execute. Nothing of it outlives the call,
 * so a request id means something only within the request that gave it.
 */
struct CALVORNTOOLKIT_BLUEPRINT_API FPopulateSession
{
	/** Request guid (the client's "node_guid") to the node made for it; keys compare without case. */
	TMap<FString, UEdGraphNode*> CreatedNodes;
	/** Existing nodes that connections of this call touched. */
	TSet<UEdGraphNode*> ModifiedNodes;
	/** Request guids (at least one character) whose node failed to spawn. */
	TSet<FString> FailedNodes;
	/** The blocked-connection texts. */
	TArray<FString> BlockedOperations;
	TArray<FCreatedNodeEntry> CreatedEntries;
};
