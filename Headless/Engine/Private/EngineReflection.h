#pragma once

#include "CoreMinimal.h"
#include "UObject/UnrealType.h"

namespace UE::Engine::Private
{
	/** Gives an array property reflected with UE_NATIVE_PROPERTY its element: an object reference of ElementClass. */
	inline FArrayProperty* WithObjectElements(FArrayProperty* Array, UClass* ElementClass)
	{
		Array->AddCppProperty(new FObjectProperty(Array, Array->GetFName(), RF_Public | RF_MarkAsNative | RF_Transient, 0, CPF_TObjectPtr, ElementClass));
		return Array;
	}

	/** Gives an array property its element: a string. */
	inline FArrayProperty* WithStringElements(FArrayProperty* Array)
	{
		Array->AddCppProperty(new FStrProperty(Array, Array->GetFName(), RF_Public | RF_MarkAsNative | RF_Transient));
		return Array;
	}
}
