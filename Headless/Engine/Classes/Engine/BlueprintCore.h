#pragma once

#include "CoreMinimal.h"
#include "Misc/Guid.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"
#include "UObject/ObjectPtr.h"
#include "Templates/SubclassOf.h"

/** The part of a Blueprint that the runtime sees: the classes it generated. */
class UBlueprintCore : public UObject
{
	DECLARE_CLASS(UBlueprintCore, UObject, CLASS_None, CASTCLASS_None, TEXT("/Script/Engine"), ENGINE_API)

public:
	/** The class the compiler makes first, with signatures only; other Blueprints compile against it. */
	TSubclassOf<UObject> SkeletonGeneratedClass;
	/** The class the Blueprint's instances are. */
	TSubclassOf<UObject> GeneratedClass;
	bool bLegacyNeedToPurgeSkelRefs = true;
	FGuid BlueprintGuid;

	ENGINE_API void GenerateDeterministicGuid();
};
