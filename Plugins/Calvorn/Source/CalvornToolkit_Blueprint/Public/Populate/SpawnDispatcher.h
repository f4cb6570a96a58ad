#pragma once

#include "CoreMinimal.h"

class UBlueprint;
class UClass;
class UEdGraph;
class UEdGraphNode;
struct FContextActionMenu;
struct FNodeModificationRecord;

namespace Calvorn
{
	class FToolResult;
}

/**
 * Turns one node request into one node of the graph, or into a reported failure, by a waterfall of routes
 * chosen from the request alone: member variable, event, parent function call, deterministic, fuzzy. A
 * route that fails never falls through to a later one, so a client always learns why its chosen route failed.
 */
class CALVORNTOOLKIT_BLUEPRINT_API FSpawnDispatcher
{
public:
	/**
	 * The node, placed in the graph and validated where its route asks for it; null after the failure was
	 * reported. SessionNodes (may be null) maps the client's ids of this call to the nodes made for them.
	 */
	static UEdGraphNode* SpawnNode(UEdGraph* Graph, FNodeModificationRecord& Record, UBlueprint* Blueprint, const FContextActionMenu& Menu, Calvorn::FToolResult& Result, const TMap<FString, UEdGraphNode*>* SessionNodes);

	/** Whether the request goes by the event route: K2Node_Event / K2Node_CustomEvent (exact) or metadata "event_name". */
	[[nodiscard]] static bool IsEventRequest(const FNodeModificationRecord& Record);

	/**
	 * A class by path without reporting anything: refused paths and unknown assets give null; a registered
	 * asset is loaded; otherwise the object is looked up by path, then by its short name.
	 */
	static UClass* LoadClassQuietly(const FString& ClassPath);

	/**
	 * Reports a class path that did not load, with a suggestion when one is found ("/Script/" text naming a
	 * Blueprint, or a "/Game/" path naming a native class): "[Failure] Class '%s' not found..." as a recorded
	 * validation failure and a warning.
	 */
	static void SuggestClassPath(const FString& ClassPath, Calvorn::FToolResult& Result);
};
