#pragma once

#include "CoreMinimal.h"
#include "UObject/Class.h"
#include "UObject/TextProperty.h"
#include "UObject/UnrealType.h"

// Element kinds for array members reflected with UE_NATIVE_PROPERTY: the array property is made first and
// its inner property, named like the array as the header tool names it, comes after.
namespace UE::BlueprintGraph::Private
{
	constexpr EObjectFlags ReflectedFieldFlags = RF_Public | RF_MarkAsNative | RF_Transient;

	inline FArrayProperty* WithNameElements(FArrayProperty* Array)
	{
		Array->AddCppProperty(new FNameProperty(Array, Array->GetFName(), ReflectedFieldFlags));
		return Array;
	}

	inline FArrayProperty* WithTextElements(FArrayProperty* Array)
	{
		Array->AddCppProperty(new FTextProperty(Array, Array->GetFName(), ReflectedFieldFlags));
		return Array;
	}

	inline FArrayProperty* WithStructElements(FArrayProperty* Array, UScriptStruct* Struct)
	{
		Array->AddCppProperty(new FStructProperty(Array, Array->GetFName(), ReflectedFieldFlags, 0, CPF_None, Struct));
		return Array;
	}
}
