#pragma once

#include "CoreMinimal.h"

class UBlueprint;
class UClass;
class UEdGraph;
class UEdGraphNode;
class UFunction;
struct FNodeModificationRecord;

namespace Calvorn
{
	class FToolResult;
}

/**
 * Creates a node from an exact description (class and function, or a cast target) with no menu search:
 * strict, and tolerant only in how a class may be named (short name, engine prefix, script path, Blueprint
 * path, content plugin root, bare Blueprint name).
 */
class CALVORNTOOLKIT_BLUEPRINT_API FDeterministicSpawner
{
public:
	/**
	 * True with OutNode holding a node that passed the checks. False when the request is not deterministic
	 * (silently) or the reason was recorded as a validation failure (internal faults also as errors).
	 */
	static bool TrySpawnDeterministicNode(UEdGraph* Graph, const FNodeModificationRecord& Record, UBlueprint* Blueprint, Calvorn::FToolResult& Result, UEdGraphNode*& OutNode);

	/**
	 * The generated class of the one Blueprint asset (subclass kinds excluded) whose name the text gives.
	 * Null with OutError empty for none; null with the ambiguity in OutError for several.
	 */
	static UClass* FindBlueprintClassByName(const FString& Name, FString& OutResolvedPath, FString& OutError);

	/** The function of that name (without case) on the class and its parents; overloads are told apart by MenuTitle. */
	static bool FindFunctionWithOverloadHandling(UClass* Class, const FString& FunctionName, const FString& MenuTitle, UFunction*& OutFunction);

	/**
	 * The class a request names, by every spelling the spawner accepts, with the method ("direct_path",
	 * "blueprint_path", "asset_registry", "reflection_search") and the path that resolved. Null with
	 * OutCandidates holding what was tried, and OutError set only for an ambiguous Blueprint name.
	 */
	static UClass* ResolveClass(const FString& ClassText, FString& OutMethod, FString& OutResolvedPath, TArray<FString>& OutCandidates, FString& OutError);
};
