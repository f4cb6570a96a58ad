#pragma once

#include "CoreMinimal.h"

class UBlueprint;
class UEdGraph;
class UEdGraphNode;
struct FNodeModificationRecord;

namespace Calvorn
{
	class FToolResult;
}

/**
 * Override and custom events, made straight through the schema. An override may exist once per Blueprint,
 * so a repeated request reuses it instead of failing: a client can send the same request twice without harm.
 */
class CALVORNTOOLKIT_BLUEPRINT_API FEventNodeSpawner
{
public:
	/** True with OutNode (new or reused). False with OutError holding the plain reason; the message is already in Result. */
	static bool SpawnEventNode(UBlueprint* Blueprint, UEdGraph* Graph, const FNodeModificationRecord& Record, Calvorn::FToolResult& Result, UEdGraphNode*& OutNode, FString& OutError);

	/** "true", "1" or "yes" without case. */
	[[nodiscard]] static bool IsTruthyText(const FString& Text);

	/** The event name of a request, cleaned: trimmed, blanks removed, ".", "(" and ")" made "_". */
	[[nodiscard]] static FString CleanEventName(const FString& Name);
};
