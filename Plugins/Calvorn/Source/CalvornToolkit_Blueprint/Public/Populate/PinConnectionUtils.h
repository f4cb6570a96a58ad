#pragma once

#include "CoreMinimal.h"
#include "EdGraph/EdGraphPin.h"

class UEdGraph;
class UEdGraphNode;

namespace Calvorn
{
	class FToolResult;
}

/**
 * Pins as a client names them ("Return Value", "Target", "true"), their default values, and connections
 * made through the graph's schema so that every wire obeys the rules of one drawn by hand.
 */
class CALVORNTOOLKIT_BLUEPRINT_API FPinConnectionUtils
{
public:
	/**
	 * The pin meant by PinName: the alias table first (its pin names in order of preference), then the name
	 * itself without case, both in Direction; then the name in the opposite direction, which counts
	 * "pin_direction_fallbacks" when Result is given. Null for a null node or an empty name, or no hit.
	 */
	static UEdGraphPin* FindPinFuzzy(UEdGraphNode* Node, const FString& PinName, EEdGraphPinDirection Direction, Calvorn::FToolResult* Result);

	/**
	 * Gives an input its default value through the K2 schema. False, silently, for a null pin or an empty
	 * value; false with a warning for a linked pin or a value the schema refuses, which leaves the former
	 * default in place.
	 */
	static bool SetPinValue(UEdGraphPin* Pin, const FString& Value, Calvorn::FToolResult& Result);

	/**
	 * Connects an output of SourceNode to an input of TargetNode, both found by FindPinFuzzy, after the pure
	 * node check and the schema's CanCreateConnection. False with a "[Failure]" warning otherwise.
	 */
	static bool ConnectPins(UEdGraph* Graph, UEdGraphNode* SourceNode, const FString& SourcePinName, UEdGraphNode* TargetNode, const FString& TargetPinName, Calvorn::FToolResult& Result);

	/** "input"/"in" and "output"/"out" without case; anything else, also empty, is input. */
	[[nodiscard]] static EEdGraphPinDirection ParsePinDirection(const FString& Word);

	/** The alias table: lower-case client words to pin names in order of preference. Built once. */
	[[nodiscard]] static const TMap<FString, TArray<FString>>& GetPinAliases();
};
