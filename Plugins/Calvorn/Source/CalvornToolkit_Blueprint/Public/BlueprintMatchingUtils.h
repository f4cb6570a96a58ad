#pragma once

#include "CoreMinimal.h"

class UEdGraph;
class UEdGraphNode;

/** Finding what a request names in a graph. */
class CALVORNTOOLKIT_BLUEPRINT_API FBlueprintMatchingUtils
{
public:
	/**
	 * The node of the graph under a real guid: the full 32 digits (any of the guid's text forms) or the short
	 * 7-digit form the readers print, without case. Null for an empty text or no node.
	 */
	static UEdGraphNode* FindNodeByGuid(const UEdGraph* Graph, const FString& Guid);
};
