#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"
#include "UObject/ObjectPtr.h"

/** The object that runs an animation Blueprint's graphs. The catalogue adds the engine's functions. */
class UAnimInstance : public UObject
{
	DECLARE_CLASS(UAnimInstance, UObject, CLASS_None, CASTCLASS_None, TEXT("/Script/Engine"), ENGINE_API)

public:
	ENGINE_API UAnimInstance();
};
