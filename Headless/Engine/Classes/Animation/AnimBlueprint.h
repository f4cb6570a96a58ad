#pragma once

#include "CoreMinimal.h"
#include "UObject/SoftObjectPath.h"
#include "Engine/Blueprint.h"

/** A Blueprint whose class derives from UAnimInstance. Its anim graph comes with the animation editor. */
class UAnimBlueprint : public UBlueprint
{
	DECLARE_CLASS(UAnimBlueprint, UBlueprint, CLASS_None, CASTCLASS_None, TEXT("/Script/Engine"), ENGINE_API)

public:
	ENGINE_API UAnimBlueprint();

	/** The skeleton the Blueprint animates, by path (skeleton assets are not modelled). */
	FSoftObjectPath TargetSkeleton;
	/** Whether the Blueprint is a template usable with any skeleton. */
	bool bIsTemplate = false;
};
