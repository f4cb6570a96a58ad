#pragma once

#include "UObject/Object.h"
#include "UObject/Class.h"

namespace UE::CoreUObject::Private
{
	/** Number of slots in the global object array (live and freed). */
	COREUOBJECT_API int32 GetObjectArrayNum();
	/** The object in slot Index, or null when the slot is free. */
	COREUOBJECT_API UObject* GetObjectAtIndex(int32 Index);
	/** Registers pending native classes, structs and enums so iteration sees them. */
	COREUOBJECT_API void EnsureCompiledInTypesRegistered();

	/**
	 * Queues a function run once, in registration order, right after the compiled-in types are registered
	 * and before the lookup that triggered their registration goes on (a data-defined type library, for
	 * instance). The function may make objects and look them up.
	 */
	struct COREUOBJECT_API FRegisterCompiledInCallback
	{
		explicit FRegisterCompiledInCallback(void (*Callback)());
	};
}

/** Walks every live object (not garbage), in creation order. */
class COREUOBJECT_API FObjectIterator
{
public:
	explicit FObjectIterator(UClass* InClass = UObject::StaticClass(), bool bOnlyGCedObjects = false, EObjectFlags AdditionalExclusionFlags = RF_NoFlags,
		EInternalObjectFlags InInternalExclusionFlags = EInternalObjectFlags::None);

	explicit operator bool() const { return Object != nullptr; }
	bool operator!() const { return Object == nullptr; }
	FObjectIterator& operator++()
	{
		Advance();
		return *this;
	}
	UObject* operator*() const { return Object; }
	UObject* operator->() const { return Object; }

protected:
	void Advance();

	UClass* Class;
	EObjectFlags ExclusionFlags;
	int32 Index = -1;
	UObject* Object = nullptr;
};

/** Walks every live object of class T (subclasses included), in creation order. */
template <class T>
class TObjectIterator : public FObjectIterator
{
public:
	explicit TObjectIterator(EObjectFlags AdditionalExclusionFlags = RF_ClassDefaultObject, bool bIncludeDerivedClasses = true,
		EInternalObjectFlags InInternalExclusionFlags = EInternalObjectFlags::None)
		: FObjectIterator(T::StaticClass(), false, AdditionalExclusionFlags, InInternalExclusionFlags), bDerived(bIncludeDerivedClasses)
	{
		SkipExactMismatch();
	}

	TObjectIterator& operator++()
	{
		Advance();
		SkipExactMismatch();
		return *this;
	}
	T* operator*() const { return (T*)Object; }
	T* operator->() const { return (T*)Object; }

private:
	void SkipExactMismatch()
	{
		while (!bDerived && Object && Object->GetClass() != Class)
		{
			Advance();
		}
	}

	bool bDerived;
};

/** TObjectIterator under the name the engine gives its thread-safe variant (one thread here). */
using FThreadSafeObjectIterator = FObjectIterator;
