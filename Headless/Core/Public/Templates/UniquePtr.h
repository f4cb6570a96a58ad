#pragma once

#include "Templates/UnrealTemplate.h"

#include <memory>

template <typename T, typename Deleter = std::default_delete<T>>
class TUniquePtr : public std::unique_ptr<T, Deleter>
{
	using Super = std::unique_ptr<T, Deleter>;

public:
	using Super::Super;
	TUniquePtr() = default;
	TUniquePtr(Super&& Other) noexcept : Super(MoveTemp(Other)) {}

	template <typename U, typename E>
	TUniquePtr(TUniquePtr<U, E>&& Other) noexcept : Super(MoveTemp(static_cast<std::unique_ptr<U, E>&>(Other))) {}

	T* Get() const { return Super::get(); }
	bool IsValid() const { return Super::get() != nullptr; }
	T* Release() { return Super::release(); }
	void Reset(T* NewPtr = nullptr) { Super::reset(NewPtr); }
};

template <typename T, typename... ArgTypes>
TUniquePtr<T> MakeUnique(ArgTypes&&... Args)
{
	return TUniquePtr<T>(new T(Forward<ArgTypes>(Args)...));
}
