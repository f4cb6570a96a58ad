#pragma once

#include "CoreMinimal.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class UBlueprintNodeSpawner;
class UObject;

/**
 * Handed to each family of actions while the database is (re)built: actions are filed under a key, a class or
 * an asset, and only keys being refreshed accept new actions.
 */
class FBlueprintActionDatabaseRegistrar
{
public:
	/** Files Action under ActionKey; false (and nothing filed) for a null action or a key not being refreshed. */
	UE_API bool AddBlueprintAction(const UObject* ActionKey, UBlueprintNodeSpawner* Action);
	/** Files Action under the class of node it places, as node classes file their own entries. */
	UE_API bool AddBlueprintAction(UBlueprintNodeSpawner* Action);
	/** Whether actions for this key are being (re)built now. */
	UE_API bool IsOpenForRegistration(const UObject* ActionKey) const;

private:
	friend class FBlueprintActionDatabase;
	/** Null: every key is open (the full build). */
	const UObject* OnlyKey = nullptr;
	class FBlueprintActionDatabase* Database = nullptr;
	int32 NumAdded = 0;
};

#undef UE_API
