#pragma once

#include "CoreMinimal.h"
#include "UObject/SoftObjectPath.h"
#include "UObject/WeakObjectPtr.h"

class UObject;
class UClass;

/** The untyped value of a soft reference: the path, and the object once it is found in memory. */
struct COREUOBJECT_API FSoftObjectPtr
{
	FSoftObjectPtr() = default;
	FSoftObjectPtr(std::nullptr_t) {}
	explicit FSoftObjectPtr(const FSoftObjectPath& InPath) : ObjectPath(InPath) {}
	FSoftObjectPtr(const UObject* Object) { *this = Object; }

	FSoftObjectPtr& operator=(const UObject* Object);
	FSoftObjectPtr& operator=(const FSoftObjectPath& InPath);

	/** The object when it is in memory, else null (nothing is loaded). */
	UObject* Get() const;
	/** The object, loading its package if needed. */
	UObject* LoadSynchronous() const;

	const FSoftObjectPath& ToSoftObjectPath() const { return ObjectPath; }
	const FSoftObjectPath& GetUniqueID() const { return ObjectPath; }
	FString ToString() const { return ObjectPath.ToString(); }
	FString GetLongPackageName() const { return ObjectPath.GetLongPackageName(); }
	FString GetAssetName() const { return ObjectPath.GetAssetName(); }

	bool IsValid() const { return Get() != nullptr; }
	bool IsNull() const { return ObjectPath.IsNull(); }
	/** Set to a path whose object is not in memory. */
	bool IsPending() const { return !IsNull() && Get() == nullptr; }
	void Reset();

	bool operator==(const FSoftObjectPtr& Other) const { return ObjectPath == Other.ObjectPath; }
	bool operator!=(const FSoftObjectPtr& Other) const { return !(*this == Other); }
	friend uint32 GetTypeHash(const FSoftObjectPtr& Ptr) { return GetTypeHash(Ptr.ObjectPath); }

private:
	FSoftObjectPath ObjectPath;
	mutable FWeakObjectPtr WeakPtr;
};

/** A soft reference to an object of type T. */
template <class T = UObject>
struct TSoftObjectPtr
{
	TSoftObjectPtr() = default;
	TSoftObjectPtr(std::nullptr_t) {}
	explicit TSoftObjectPtr(const FSoftObjectPath& Path) : SoftPtr(Path) {}
	TSoftObjectPtr(const T* Object) : SoftPtr((const UObject*)Object) {}

	TSoftObjectPtr& operator=(const T* Object)
	{
		SoftPtr = (const UObject*)Object;
		return *this;
	}

	T* Get() const { return (T*)SoftPtr.Get(); }
	T* LoadSynchronous() const { return (T*)SoftPtr.LoadSynchronous(); }
	T* operator->() const { return Get(); }
	const FSoftObjectPath& ToSoftObjectPath() const { return SoftPtr.ToSoftObjectPath(); }
	FString ToString() const { return SoftPtr.ToString(); }
	FString GetLongPackageName() const { return SoftPtr.GetLongPackageName(); }
	FString GetAssetName() const { return SoftPtr.GetAssetName(); }
	bool IsValid() const { return SoftPtr.IsValid(); }
	bool IsNull() const { return SoftPtr.IsNull(); }
	bool IsPending() const { return SoftPtr.IsPending(); }
	void Reset() { SoftPtr.Reset(); }
	explicit operator bool() const { return IsValid(); }

	friend bool operator==(const TSoftObjectPtr& A, const TSoftObjectPtr& B) { return A.SoftPtr == B.SoftPtr; }
	friend bool operator!=(const TSoftObjectPtr& A, const TSoftObjectPtr& B) { return A.SoftPtr != B.SoftPtr; }
	friend uint32 GetTypeHash(const TSoftObjectPtr& Ptr) { return GetTypeHash(Ptr.SoftPtr); }

private:
	FSoftObjectPtr SoftPtr;
};

/** A soft reference to a class derived from T. */
template <class T = UObject>
struct TSoftClassPtr
{
	TSoftClassPtr() = default;
	TSoftClassPtr(std::nullptr_t) {}
	explicit TSoftClassPtr(const FSoftObjectPath& Path) : SoftPtr(Path) {}
	TSoftClassPtr(const UClass* Class) : SoftPtr((const UObject*)Class) {}

	UClass* Get() const { return (UClass*)SoftPtr.Get(); }
	UClass* LoadSynchronous() const { return (UClass*)SoftPtr.LoadSynchronous(); }
	const FSoftObjectPath& ToSoftObjectPath() const { return SoftPtr.ToSoftObjectPath(); }
	FString ToString() const { return SoftPtr.ToString(); }
	FString GetLongPackageName() const { return SoftPtr.GetLongPackageName(); }
	FString GetAssetName() const { return SoftPtr.GetAssetName(); }
	bool IsValid() const { return SoftPtr.IsValid(); }
	bool IsNull() const { return SoftPtr.IsNull(); }
	bool IsPending() const { return SoftPtr.IsPending(); }
	void Reset() { SoftPtr.Reset(); }
	explicit operator bool() const { return IsValid(); }

	friend bool operator==(const TSoftClassPtr& A, const TSoftClassPtr& B) { return A.SoftPtr == B.SoftPtr; }
	friend bool operator!=(const TSoftClassPtr& A, const TSoftClassPtr& B) { return A.SoftPtr != B.SoftPtr; }

private:
	FSoftObjectPtr SoftPtr;
};
