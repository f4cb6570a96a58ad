#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"
#include "UObject/ObjectPtr.h"

/** The base of classes holding static functions callable from any Blueprint. */
class UBlueprintFunctionLibrary : public UObject
{
	DECLARE_CLASS(UBlueprintFunctionLibrary, UObject, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/Engine"), ENGINE_API)
};
