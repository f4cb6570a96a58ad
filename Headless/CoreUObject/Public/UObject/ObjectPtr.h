#pragma once

#include "CoreMinimal.h"

#include <type_traits>

class UObject;

/**
 * A reference to an object held in a reflected member, as the engine writes UPROPERTY object fields.
 * Headless objects are always resident, so it is a plain pointer with the engine's interface.
 */
template <typename T>
class TObjectPtr
{
public:
	using ElementType = T;

	TObjectPtr() = default;
	TObjectPtr(std::nullptr_t) {}
	TObjectPtr(T* InObject) : Object(InObject) {}
	template <typename U, typename = std::enable_if_t<std::is_convertible_v<U*, T*>>>
	TObjectPtr(const TObjectPtr<U>& Other) : Object(Other.Get()) {}

	TObjectPtr& operator=(T* InObject)
	{
		Object = InObject;
		return *this;
	}
	TObjectPtr& operator=(std::nullptr_t)
	{
		Object = nullptr;
		return *this;
	}

	T* Get() const { return Object; }
	operator T*() const { return Object; }
	template <typename U, typename = std::enable_if_t<std::is_convertible_v<T*, U*> && !std::is_same_v<U, T>>>
	explicit operator U*() const { return Object; }
	T* operator->() const { return Object; }
	T& operator*() const { return *Object; }
	explicit operator bool() const { return Object != nullptr; }
	bool operator!() const { return Object == nullptr; }

	/** Headless objects are always resolved. */
	bool IsResolved() const { return true; }
	bool IsNull() const { return Object == nullptr; }

	friend bool operator==(const TObjectPtr& A, const TObjectPtr& B) { return A.Object == B.Object; }
	friend bool operator!=(const TObjectPtr& A, const TObjectPtr& B) { return A.Object != B.Object; }
	template <typename U>
	friend bool operator==(const TObjectPtr& A, const U* B) { return A.Object == B; }
	template <typename U>
	friend bool operator!=(const TObjectPtr& A, const U* B) { return A.Object != B; }
	friend bool operator==(const TObjectPtr& A, std::nullptr_t) { return A.Object == nullptr; }
	friend bool operator!=(const TObjectPtr& A, std::nullptr_t) { return A.Object != nullptr; }

	friend uint32 GetTypeHash(const TObjectPtr& Ptr) { return PointerHash(Ptr.Object); }

private:
	T* Object = nullptr;
};

static_assert(sizeof(TObjectPtr<UObject>) == sizeof(UObject*), "TObjectPtr must be laid out as a raw pointer: reflected fields rely on it");

template <typename T>
T* ToRawPtr(const TObjectPtr<T>& Ptr)
{
	return Ptr.Get();
}

template <typename T>
T* ToRawPtr(T* Ptr)
{
	return Ptr;
}

template <typename T>
TObjectPtr<T> MakeObjectPtrUnsafe(UObject* Object)
{
	return TObjectPtr<T>((T*)Object);
}
