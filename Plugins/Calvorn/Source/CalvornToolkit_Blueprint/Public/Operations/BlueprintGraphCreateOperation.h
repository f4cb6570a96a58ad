#pragma once

#include "CoreMinimal.h"

class FJsonObject;
class UBlueprint;
class UEdGraph;

namespace Calvorn
{
	class FToolResult;
}

/**
 * Creates or configures function graphs and delegate signature graphs of a Blueprint: their entry and
 * result nodes and the parameters on them, never other nodes. A name the parent class declares as an
 * event becomes an overriding event node in the event graph instead of a function.
 */
class CALVORNTOOLKIT_BLUEPRINT_API FBlueprintGraphCreateOperation
{
public:
	/** What CreateFunctionGraph made of a name. */
	enum class EFunctionGraphOutcome : uint8
	{
		/** Nothing usable: an error is in the result. */
		Failed,
		/** A function graph (new, found, or overriding a parent function) with its entry node. */
		FunctionGraph,
		/** The parent declares the name as an event: an overriding event node stands (or stood) in the event graph. */
		EventOverride,
	};

	static void Execute(const FJsonObject& Json, Calvorn::FToolResult& Result);

	/**
	 * Finds or creates the function graph FunctionName with its entry node, and its result node when
	 * bHasReturn. A new graph overrides the parent's function of that name when there is one.
	 */
	static EFunctionGraphOutcome CreateFunctionGraph(UBlueprint* Blueprint, const FString& FunctionName, UEdGraph*& OutGraph, Calvorn::FToolResult& Result, bool bHasReturn);

	/** Finds or creates the signature graph of the event dispatcher DelegateName, with its variable. */
	static bool CreateDelegateSignatureGraph(UBlueprint* Blueprint, const FString& DelegateName, UEdGraph*& OutGraph, Calvorn::FToolResult& Result);

	/**
	 * Gives the graph the parameters and return value of a function entry ({"parameters": [...],
	 * "return_type": {...}}): inputs on the entry node, outputs and the return value on the result node.
	 */
	static bool ConfigureGraphSignature(UBlueprint* Blueprint, UEdGraph* Graph, const FJsonObject& Entry, Calvorn::FToolResult& Result);

	/** The event graph named GraphName (default "EventGraph"), created when the Blueprint has none of that name. */
	static UEdGraph* EnsureEventGraph(UBlueprint* Blueprint, const FString& GraphName, Calvorn::FToolResult& Result);
};
