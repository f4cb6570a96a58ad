#pragma once

#include "UObject/Object.h"
#include "UObject/Class.h"
#include "UObject/ObjectPtr.h"

#include <type_traits>

namespace UE::CoreUObject::Private
{
	template <typename T>
	using TNonConst = std::remove_cv_t<T>;

	/** True for a class with a reflected UClass (it has StaticClass through DECLARE_CLASS). */
	template <typename T>
	constexpr bool TIsUObjectType = std::is_base_of_v<UObjectBaseUtility, T>;

	/** For native interfaces (IMyInterface): the UClass of the interface. */
	template <typename T>
	UClass* GetInterfaceClass()
	{
		return T::UClassType::StaticClass();
	}
}

/**
 * Src as a To when it is one (or implements the interface To), else null. Null in, null out. For
 * UObject types the check follows the class chain, so it is right for data-defined classes too.
 */
template <typename To, typename From>
To* Cast(From* Src)
{
	using ToType = UE::CoreUObject::Private::TNonConst<To>;
	if (Src == nullptr)
	{
		return nullptr;
	}
	const UObject* Object = (const UObject*)Src;
	if constexpr (UE::CoreUObject::Private::TIsUObjectType<ToType>)
	{
		static_assert(std::is_same_v<typename ToType::ThisClass, ToType>, "This class lacks DECLARE_CLASS: StaticClass() would name its super class.");
		return Object->IsA(ToType::StaticClass()) ? (To*)Src : nullptr;
	}
	else
	{
		// A native interface: the address of its part inside the object.
		return (To*)const_cast<UObject*>(Object)->GetInterfaceAddress(UE::CoreUObject::Private::GetInterfaceClass<ToType>());
	}
}

template <typename To, typename From>
To* Cast(const TObjectPtr<From>& Src)
{
	return Cast<To>(Src.Get());
}

/** Src as a To only when its class is exactly To's. */
template <typename To, typename From>
To* ExactCast(From* Src)
{
	return Src && ((const UObject*)Src)->GetClass() == UE::CoreUObject::Private::TNonConst<To>::StaticClass() ? (To*)Src : nullptr;
}

/** How CastChecked treats null. */
enum class ECastCheckedType : uint8
{
	NullAllowed,
	NullChecked
};

/** Cast that stops the process when Src is not a To (or, with NullChecked, is null). */
template <typename To, typename From>
To* CastChecked(From* Src, ECastCheckedType CheckType = ECastCheckedType::NullChecked)
{
	if (Src == nullptr)
	{
		checkf(CheckType == ECastCheckedType::NullAllowed, TEXT("Cast of nullptr failed"));
		return nullptr;
	}
	To* Result = Cast<To>(Src);
	checkf(Result != nullptr, TEXT("Cast of %s failed"), *((const UObject*)Src)->GetFullName());
	return Result;
}

template <typename To, typename From>
To* CastChecked(const TObjectPtr<From>& Src, ECastCheckedType CheckType = ECastCheckedType::NullChecked)
{
	return CastChecked<To>(Src.Get(), CheckType);
}
