#pragma once

#include "CoreMinimal.h"

class UObject;

/**
 * A reference that does not keep its object alive and reads as null once the object is gone or marked
 * as garbage. It remembers the object's index and serial number in the object array, so a new object
 * in the same slot is never mistaken for the old one.
 */
struct COREUOBJECT_API FWeakObjectPtr
{
	FWeakObjectPtr() = default;
	FWeakObjectPtr(std::nullptr_t) {}
	FWeakObjectPtr(const UObject* Object) { *this = Object; }

	FWeakObjectPtr& operator=(const UObject* Object);

	void Reset()
	{
		ObjectIndex = INDEX_NONE;
		ObjectSerialNumber = 0;
	}

	/** The object, or null when it was freed or (unless bEvenIfGarbage) marked as garbage. */
	UObject* Get(bool bEvenIfGarbage = false) const;
	/** True while Get() would return an object. */
	bool IsValid(bool bEvenIfGarbage = false) const { return Get(bEvenIfGarbage) != nullptr; }
	/** True if this once pointed at an object that is no longer valid. */
	bool IsStale(bool bIncludingGarbage = true) const;
	/** True when set to nothing. */
	bool IsExplicitlyNull() const { return ObjectIndex == INDEX_NONE; }
	bool HasSameIndexAndSerialNumber(const FWeakObjectPtr& Other) const
	{
		return ObjectIndex == Other.ObjectIndex && ObjectSerialNumber == Other.ObjectSerialNumber;
	}

	bool operator==(const FWeakObjectPtr& Other) const;
	bool operator!=(const FWeakObjectPtr& Other) const { return !(*this == Other); }

	friend uint32 GetTypeHash(const FWeakObjectPtr& Ptr) { return HashCombine(uint32(Ptr.ObjectIndex), uint32(Ptr.ObjectSerialNumber)); }

private:
	int32 ObjectIndex = INDEX_NONE;
	int32 ObjectSerialNumber = 0;
};

/** A typed FWeakObjectPtr. */
template <class T>
struct TWeakObjectPtr
{
	TWeakObjectPtr() = default;
	TWeakObjectPtr(std::nullptr_t) {}
	template <class U, typename = std::enable_if_t<std::is_convertible_v<U*, T*>>>
	TWeakObjectPtr(const U* Object) : WeakPtr((const UObject*)const_cast<std::remove_const_t<U>*>(Object)) {}
	template <class U, typename = std::enable_if_t<std::is_convertible_v<U*, T*>>>
	TWeakObjectPtr(const TWeakObjectPtr<U>& Other) : WeakPtr(Other.GetWeakPtr()) {}

	template <class U, typename = std::enable_if_t<std::is_convertible_v<U*, T*>>>
	TWeakObjectPtr& operator=(const U* Object)
	{
		WeakPtr = (const UObject*)const_cast<std::remove_const_t<U>*>(Object);
		return *this;
	}

	void Reset() { WeakPtr.Reset(); }
	T* Get(bool bEvenIfGarbage = false) const { return (T*)WeakPtr.Get(bEvenIfGarbage); }
	T* operator->() const { return Get(); }
	T& operator*() const { return *Get(); }
	bool IsValid(bool bEvenIfGarbage = false) const { return WeakPtr.IsValid(bEvenIfGarbage); }
	bool IsStale(bool bIncludingGarbage = true) const { return WeakPtr.IsStale(bIncludingGarbage); }
	bool IsExplicitlyNull() const { return WeakPtr.IsExplicitlyNull(); }
	explicit operator bool() const { return IsValid(); }

	const FWeakObjectPtr& GetWeakPtr() const { return WeakPtr; }

	friend bool operator==(const TWeakObjectPtr& A, const TWeakObjectPtr& B) { return A.WeakPtr == B.WeakPtr; }
	friend bool operator!=(const TWeakObjectPtr& A, const TWeakObjectPtr& B) { return A.WeakPtr != B.WeakPtr; }
	friend bool operator==(const TWeakObjectPtr& A, const T* B) { return A.Get(true) == B; }
	friend bool operator!=(const TWeakObjectPtr& A, const T* B) { return A.Get(true) != B; }
	friend uint32 GetTypeHash(const TWeakObjectPtr& Ptr) { return GetTypeHash(Ptr.WeakPtr); }

private:
	FWeakObjectPtr WeakPtr;
};

template <class T>
TWeakObjectPtr<T> MakeWeakObjectPtr(T* Object)
{
	return TWeakObjectPtr<T>(Object);
}
