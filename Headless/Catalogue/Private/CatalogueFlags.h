#pragma once

#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"
#include "UObject/Script.h"

namespace UE::Catalogue::Private
{
	/** The flag called Name (without its prefix) in each family; false when there is no such flag. */
	bool FindPropertyFlag(const char* Name, EPropertyFlags& OutFlag);
	bool FindFunctionFlag(const char* Name, EFunctionFlags& OutFlag);
	bool FindClassFlag(const char* Name, EClassFlags& OutFlag);
	bool FindStructFlag(const char* Name, EStructFlags& OutFlag);
}
