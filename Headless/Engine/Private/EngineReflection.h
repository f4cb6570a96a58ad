#pragma once

#include "CoreMinimal.h"
#include "UObject/UnrealType.h"
#include "UObject/EnumProperty.h"
#include <cstring>
#include <new>

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

	/** Gives an enum property reflected with UE_NATIVE_PROPERTY its one-byte underlying type. */
	inline FEnumProperty* WithEnumUnderlyingByte(FEnumProperty* Enum)
	{
		Enum->AddCppProperty(new FByteProperty(Enum, TEXT("UnderlyingType"), RF_Public | RF_MarkAsNative | RF_Transient));
		return Enum;
	}

	/** Gives an enum property reflected with UE_NATIVE_PROPERTY its four-byte underlying type. */
	inline FEnumProperty* WithEnumUnderlyingInt(FEnumProperty* Enum)
	{
		Enum->AddCppProperty(new FIntProperty(Enum, TEXT("UnderlyingType"), RF_Public | RF_MarkAsNative | RF_Transient));
		return Enum;
	}

	/**
	 * Reflects a one-bit member of T, which has no address: SetBit raises it on a default value and the
	 * byte and mask that changed are where it lives.
	 */
	template <typename T>
	FBoolProperty* AddNativeBitfield(UStruct* Owner, const TCHAR* Name, void (*SetBit)(T&), EPropertyFlags Flags = CPF_None)
	{
		alignas(T) uint8 BlankBytes[sizeof(T)];
		alignas(T) uint8 MarkedBytes[sizeof(T)];
		std::memset(BlankBytes, 0, sizeof(T));
		std::memset(MarkedBytes, 0, sizeof(T));
		T* Blank = new (BlankBytes) T();
		T* Marked = new (MarkedBytes) T();
		SetBit(*Marked);
		int32 Offset = INDEX_NONE;
		uint8 Mask = 0;
		for (int32 Index = 0; Index < int32(sizeof(T)); ++Index)
		{
			if (BlankBytes[Index] != MarkedBytes[Index])
			{
				Offset = Index;
				Mask = uint8(BlankBytes[Index] ^ MarkedBytes[Index]);
				break;
			}
		}
		Blank->~T();
		Marked->~T();
		checkf(Offset != INDEX_NONE, TEXT("setting %s changed no byte"), Name);
		return ::UE::CoreUObject::Private::AddNativeProperty(Owner,
			new FBoolProperty(Owner, FName(Name), RF_Public | RF_MarkAsNative | RF_Transient, Offset, Flags, Mask, 1, false));
	}
}
