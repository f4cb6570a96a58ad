#pragma once

#include "CoreMinimal.h"

class UClass;

namespace UE::BlueprintGraph::Private
{
	/** How the editor names a class to users: a Blueprint's class by its Blueprint, spaced out ("BP Door"). */
	FText GetClassDisplayName(const UClass* Class);

	/** A class's name as titles show it: a Blueprint's class by its Blueprint's name ("BP_Door"). */
	FString GetClassTitleName(const UClass* Class);
}
