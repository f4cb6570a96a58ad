#pragma once

#include "CoreMinimal.h"
#include "UObject/Class.h"

class FArrayProperty;
class FEnumProperty;

namespace UE::UMG::Private
{
	/** One parameter of a widget event: its name and kind (an enum's parameter is a byte carrying the enum). */
	struct FEventParam
	{
		enum class EKind : uint8
		{
			Float,
			Bool,
			String,
			ConstText,
			Object,
			Enum,
		};

		const TCHAR* Name;
		EKind Kind;
		UObject* Type = nullptr;
	};

	/**
	 * The signature of a multicast widget event, "<Name>__DelegateSignature" in /Script/UMG, made on first use and
	 * shared by every property of that event type.
	 */
	UFunction* EventSignature(const TCHAR* Name, std::initializer_list<FEventParam> Params);
	/** A signature of a single float parameter. */
	UFunction* FloatEventSignature(const TCHAR* Name, const TCHAR* ParamName);

	/** Gives an enum class property reflected with UE_NATIVE_PROPERTY its byte. */
	FEnumProperty* WithByteUnderlying(FEnumProperty* Enum);
	/** Gives an array property reflected with UE_NATIVE_PROPERTY float elements. */
	FArrayProperty* WithFloatElements(FArrayProperty* Array);
	/** Gives an array property reflected with UE_NATIVE_PROPERTY string elements. */
	FArrayProperty* WithStringElements(FArrayProperty* Array);
	/** Gives an array property reflected with UE_NATIVE_PROPERTY object elements of Class. */
	FArrayProperty* WithObjectElements(FArrayProperty* Array, UClass* Class);
}
