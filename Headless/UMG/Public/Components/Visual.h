#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

/** The base of widgets and of the slots that place them. */
class UVisual : public UObject
{
	DECLARE_CLASS(UVisual, UObject, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UVisual();
};
