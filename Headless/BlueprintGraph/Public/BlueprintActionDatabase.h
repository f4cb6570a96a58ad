#pragma once

#include "CoreMinimal.h"
#include "Containers/Map.h"
#include "Containers/Set.h"
#include "Delegates/Delegate.h"
#include "Templates/SubclassOf.h"
#include "UObject/WeakObjectPtr.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class FBlueprintActionDatabaseRegistrar;
class UBlueprintNodeSpawner;
class UBlueprint;
class UClass;
class UEdGraphNode;
class UObject;

/**
 * Every node the Blueprint editor can place, as spawners filed by the class or asset they come from. Built the
 * first time it is asked for, from the classes in memory (the engine's catalogue), the node families and the
 * Blueprints loaded so far; a Blueprint whose members change is refreshed on its own.
 */
class FBlueprintActionDatabase
{
public:
	typedef TArray<UBlueprintNodeSpawner*> FActionList;
	typedef TMap<const UObject*, FActionList> FActionRegistry;

	static UE_API FBlueprintActionDatabase& Get();

	/** Throws everything away and builds it again. */
	UE_API void RefreshAll();
	/** Rebuilds the actions of one class's members (functions, variables, dispatchers, events). */
	UE_API void RefreshClassActions(UClass* Class);
	/** Rebuilds the actions a Blueprint contributes (its variables, functions, dispatchers); call after it changed. */
	UE_API void RefreshAssetActions(UObject* AssetObject);
	/** Forgets the actions of a Blueprint that is going away. */
	UE_API void ClearAssetActions(UObject* AssetObject);

	/** Fills a registrar with the actions of one node class that is not a Blueprint node. */
	DECLARE_DELEGATE_OneParam(FMakeNodeSpecificActions, FBlueprintActionDatabaseRegistrar&);

	/**
	 * Hands the database the actions of a node class that is no Blueprint node and lives in a module above this
	 * one (the comment box belongs to the editor module). Blueprint nodes give theirs through
	 * UK2Node::GetMenuActions instead. The actions are filed under the node class, made now if the database is
	 * built and again on every full build; registering the class again replaces its delegate.
	 */
	static UE_API void RegisterNodeSpecificActions(TSubclassOf<UEdGraphNode> NodeClass, FMakeNodeSpecificActions MakeActions);

	/** Every action, by key, in registration order. */
	UE_API const FActionRegistry& GetAllActions();
	UE_API int32 GetNumActions() const;

	/** Milliseconds the last full build took. */
	double GetLastBuildTimeMs() const { return LastBuildTimeMs; }

private:
	FBlueprintActionDatabase() = default;
	friend class FBlueprintActionDatabaseRegistrar;
	friend struct FBlueprintActionMenuBuilder;

	/**
	 * Registers the Blueprint, and the Blueprints it derives from, when their members differ from what was
	 * registered: nothing tells the database when a Blueprint gains a variable or is compiled, so a menu checks
	 * the Blueprints it is built for.
	 */
	void RefreshAssetActionsIfChanged(UBlueprint* Blueprint);
	/** Registers the Blueprints made or loaded since the last build, so other Blueprints' menus see them. */
	void RegisterUnknownBlueprints();
	static FString MakeMemberSignature(const UBlueprint* Blueprint);

	/** The one database, built or not. */
	static FBlueprintActionDatabase& GetUnbuilt();
	void EnsureBuilt();
	void RegisterAllNodeFamilies(FBlueprintActionDatabaseRegistrar& Registrar);
	/** What each node class says of itself: Blueprint nodes through GetMenuActions, others through their delegate. */
	void RegisterNodeSpecificActions(UClass* NodeClass, FBlueprintActionDatabaseRegistrar& Registrar);
	void RegisterHandedInNodeActions(FBlueprintActionDatabaseRegistrar& Registrar);
	void AddAction(const UObject* Key, UBlueprintNodeSpawner* Action);
	void ReleaseActions(FActionList& Actions);

	FActionRegistry ActionRegistry;
	/** Each key's liveness, so a key whose object was destroyed is dropped without being touched. */
	TMap<const UObject*, TWeakObjectPtr<UObject>> KeyWatch;
	TSet<UBlueprintNodeSpawner*> Registered;
	/** What each registered Blueprint declared when its actions were made. */
	TMap<const UObject*, FString> AssetSignatures;
	/** Node classes from modules above this one, in the order they were handed in, with their actions' maker. */
	TArray<TPair<TWeakObjectPtr<UClass>, FMakeNodeSpecificActions>> HandedInNodeActions;
	bool bBuilt = false;
	/** How many object slots existed when RegisterUnknownBlueprints last looked. */
	int32 NumObjectsLastLooked = -1;
	double LastBuildTimeMs = 0.0;
};

#undef UE_API
