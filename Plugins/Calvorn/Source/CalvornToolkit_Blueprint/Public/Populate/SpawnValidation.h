#pragma once

#include "CoreMinimal.h"
#include "Math/Vector2D.h"

class UBlueprint;
class UEdGraph;
class UEdGraphNode;
struct FCamMatch;
struct FNodeModificationRecord;

namespace Calvorn
{
	class FToolResult;
}

/**
 * Checks a node the deterministic or fuzzy route just placed, and either completes it (position, expression,
 * signature pins, delegate binding) or removes it again with the reason, so a plausible but wrong match never
 * stays in the graph.
 */
class CALVORNTOOLKIT_BLUEPRINT_API FSpawnValidation
{
public:
	/** The node, or null after it was removed and the refusal reported. Candidates is empty on the deterministic route. */
	static UEdGraphNode* ValidateSpawnedNode(UEdGraphNode* Node, const FNodeModificationRecord& Record, UEdGraph* Graph, UBlueprint* Blueprint, const FVector2D& Position, const TArray<FCamMatch>& Candidates, Calvorn::FToolResult& Result);

	/** Whether the Blueprint has the variable (own, inherited from its parent class, or a widget marked as variable); OutError names what exists. */
	static bool ValidateVariableExists(UBlueprint* Blueprint, const FString& Name, FString& OutError);

	/** Whether a node of CreatedClass may stand for a request of RequestedClass. */
	[[nodiscard]] static bool IsEquivalentNodeClass(const FString& RequestedClass, const FString& CreatedClass);
};
