#pragma once

// The families of menu actions, each registered from its own file in a fixed order so the menu reads the same
// in every run.

#include "CoreMinimal.h"

class FBlueprintActionDatabaseRegistrar;
class UBlueprint;
class UClass;

namespace UE::BlueprintGraph::ActionDatabase
{
	/** Calls, events, variables and dispatchers of one class's own members, filed under the class. */
	void RegisterClassMemberActions(UClass* Class, FBlueprintActionDatabaseRegistrar& Registrar);
	/** What a Blueprint adds: its variables, components, functions, dispatchers and the cast to its class. */
	void RegisterBlueprintActions(UBlueprint* Blueprint, FBlueprintActionDatabaseRegistrar& Registrar);
	/** Branch, Sequence, Select, the switches and the standard macros. */
	void RegisterFlowControlActions(FBlueprintActionDatabaseRegistrar& Registrar);
	/** Casts, struct make and break, object construction and actor spawning. */
	void RegisterTypeActions(FBlueprintActionDatabaseRegistrar& Registrar);
	/** Self, custom events, create event, arrays, reroute nodes and math expressions. */
	void RegisterUtilityActions(FBlueprintActionDatabaseRegistrar& Registrar);

	/** Whether Blueprints may hold variables of the class (BlueprintType or Blueprintable up its hierarchy). */
	bool IsBlueprintTypeClass(const UClass* Class);
	/** Whether the class was made by a Blueprint (a skeleton or generated class), not the engine. */
	bool IsBlueprintMadeClass(const UClass* Class);
}
