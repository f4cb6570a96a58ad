#pragma once

#include "CoreTypes.h"

#include <type_traits>
#include <utility>

template <typename T>
FORCEINLINE constexpr std::remove_reference_t<T>&& MoveTemp(T&& Obj) noexcept
{
	static_assert(!std::is_const_v<std::remove_reference_t<T>>, "MoveTemp of a const object copies instead of moving");
	return static_cast<std::remove_reference_t<T>&&>(Obj);
}

template <typename T>
FORCEINLINE constexpr T&& Forward(std::remove_reference_t<T>& Obj) noexcept
{
	return static_cast<T&&>(Obj);
}

template <typename T>
FORCEINLINE constexpr T&& Forward(std::remove_reference_t<T>&& Obj) noexcept
{
	return static_cast<T&&>(Obj);
}

template <typename T>
FORCEINLINE void Swap(T& A, T& B)
{
	T Temp = MoveTemp(A);
	A = MoveTemp(B);
	B = MoveTemp(Temp);
}

template <typename T, typename U = T>
FORCEINLINE T Exchange(T& Value, U&& NewValue)
{
	T Old = MoveTemp(Value);
	Value = Forward<U>(NewValue);
	return Old;
}

template <typename T>
FORCEINLINE const T& AsConst(T& Ref)
{
	return Ref;
}

// The engine's UE_NONCOPYABLE spelling for classes that own engine objects.
#define UE_NONCOPYABLE(TypeName) \
	TypeName(TypeName&&) = delete; \
	TypeName(const TypeName&) = delete; \
	TypeName& operator=(const TypeName&) = delete; \
	TypeName& operator=(TypeName&&) = delete;

class FNoncopyable
{
protected:
	FNoncopyable() = default;
	~FNoncopyable() = default;

private:
	FNoncopyable(const FNoncopyable&) = delete;
	FNoncopyable& operator=(const FNoncopyable&) = delete;
};

template <typename T>
struct TGuardValue : private FNoncopyable
{
	TGuardValue(T& InRef, const T& NewValue)
		: Ref(InRef), OldValue(InRef)
	{
		Ref = NewValue;
	}
	~TGuardValue() { Ref = OldValue; }

private:
	T& Ref;
	T OldValue;
};
