#pragma once

#include "CoreMinimal.h"

class FJsonObject;
class UBlueprint;
class UObject;
class UPackage;
class USCS_Node;

namespace Calvorn
{
	class FToolResult;
}

/**
 * The one door through which operations reach Blueprint assets: finding and loading them by any
 * path a client may write, naming, checking out, saving, and the safe load of any object a request
 * names by path.
 */
class CALVORNTOOLKIT_BLUEPRINT_API FBlueprintUtils
{
public:
	/**
	 * The Blueprint at a path, loaded if need be. Animation Blueprints are looked for first, then
	 * Widget Blueprints, then any Blueprint, so that the most specific kind is what comes back. The
	 * path may be an object path, a package name, a generated class path ("BP_X_C") or the asset's
	 * unique name. Null, with the error "Failed to find or load blueprint: <path>", when none matches.
	 */
	static UBlueprint* LoadBlueprint(const FString& Path, Calvorn::FToolResult& Result);

	/** Whether LoadBlueprint would find a Blueprint at the path (which it may load to tell). */
	[[nodiscard]] static bool BlueprintExists(const FString& Path);

	/** The asset's name from its path ("/Game/A/BP_Door.BP_Door" gives "BP_Door"). */
	[[nodiscard]] static FString GetBlueprintName(const FString& Path);

	[[nodiscard]] static UPackage* GetBlueprintPackage(UBlueprint* Blueprint);

	/** Marks the Blueprint's package as changed. */
	static void MarkBlueprintDirty(UBlueprint* Blueprint);

	/** Saves the Blueprint's package to its file; true when it was written. */
	static bool SaveBlueprint(UBlueprint* Blueprint);

	/** "Blueprint: <name>\nPath: <path>\nParent Class: <class>\nBlueprint Type: <type>". */
	[[nodiscard]] static FString GetBlueprintDescription(UBlueprint* Blueprint);

	/**
	 * Whether Name is free for a new member variable of the Blueprint. Each refusal is a warning naming
	 * what holds the name already (a variable, a function, a component, a property of the parent class),
	 * or the editor's reason for a name it does not accept (too long, invalid characters, in use).
	 */
	static bool VerifyBlueprintVariableName(UBlueprint* Blueprint, const FString& Name, Calvorn::FToolResult& Result);

	/** Every node of the Blueprint's construction script, depth first (a node, then its children); empty without one. */
	[[nodiscard]] static TArray<USCS_Node*> GetBlueprintComponentsFromSCS(UBlueprint* Blueprint);

	/**
	 * Whether the Blueprint at Path may be changed (its file exists and is writable). False with the
	 * error "Failed to check out blueprint for modification: <path>\n<reason>" otherwise.
	 */
	static bool CheckOutBlueprint(const FString& Path, Calvorn::FToolResult& Result);

	/**
	 * Records a changed or new Blueprint with source control; a refusal is only a warning, as the change
	 * itself stands.
	 */
	static void AddBlueprintToSourceControl(const FString& Path, Calvorn::FToolResult& Result);

	/**
	 * Creates and saves a Blueprint asset at Path ("/Game/Folder/BP_Name") deriving from the parent that
	 * ParentClass describes: {"type": "blueprint", "parent_path": <a Blueprint asset>} or {"type": <any
	 * other word>, "parent_path": <a native class: "/Script/Engine.Actor", "Actor", "AActor">}. The kind of
	 * asset follows the parent (Animation Blueprint for anim instances, Widget Blueprint for user widgets,
	 * a plain Blueprint otherwise, which covers Behavior Tree tasks). The new asset is registered and
	 * saved at once. Null with an error when the parent is missing or unsuitable, or the path is taken.
	 */
	static UBlueprint* CreateBlueprint(const FString& Path, TSharedPtr<FJsonObject> ParentClass, Calvorn::FToolResult& Result);

	/**
	 * Compiles the Blueprint with the editor's compiler and returns its verdict: true when it compiled
	 * without errors. Each error and warning the compiler raised is added to OutErrors / OutWarnings as
	 * its text.
	 */
	static bool CompileBlueprintWithResults(UBlueprint* Blueprint, bool bSkipGarbageCollection, TArray<FString>& OutErrors, TArray<FString>& OutWarnings);

	/**
	 * Any object a request names by path, loaded only when the path is well formed and the asset
	 * registry knows its package. Each refusal is a warning ("Empty object path provided", "Invalid asset
	 * path format: <path>", "Asset not found in registry: <path>", "Failed to load or find object: <path>")
	 * and gives null.
	 */
	static UObject* LoadObjectSafely(const FString& ObjectPath, Calvorn::FToolResult& Result);
};
