#pragma once

#include "CoreMinimal.h"
#include "Containers/Set.h"

class UObject;

/** Something a menu action can tie its node to (a component, a level actor). */
class IBlueprintNodeBinder
{
public:
	/** The objects a node is bound to when it is spawned; empty for an unbound action. */
	typedef TSet<UObject*> FBindingSet;

	virtual ~IBlueprintNodeBinder() = default;
};
