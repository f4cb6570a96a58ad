#include "BlueprintMatchingUtils.h"

#include "BlueprintReadUtils.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode.h"
#include "Misc/Guid.h"

namespace
{
	/** The length of the guid prefix the readers print as a node's "node_guid". */
	constexpr int32 ShortGuidLength = 7;
}

UEdGraphNode* FBlueprintMatchingUtils::FindNodeByGuid(const UEdGraph* Graph, const FString& Guid)
{
	const FString Text = Guid.TrimStartAndEnd();
	if (!Graph || Text.IsEmpty())
	{
		return nullptr;
	}

	FGuid FullGuid;
	if (FGuid::Parse(Text, FullGuid))
	{
		for (UEdGraphNode* Node : Graph->Nodes)
		{
			if (Node && Node->NodeGuid == FullGuid)
			{
				return Node;
			}
		}
		return nullptr;
	}

	// The short form is what every read answer shows, so a client that read the graph can name a node by it.
	if (Text.Len() != ShortGuidLength)
	{
		return nullptr;
	}
	for (UEdGraphNode* Node : Graph->Nodes)
	{
		if (Node && FBlueprintReadUtils::GetShortGuid(Node->NodeGuid).Equals(Text, ESearchCase::IgnoreCase))
		{
			return Node;
		}
	}
	return nullptr;
}
