#pragma once

#include "CoreMinimal.h"
#include "UObject/WeakObjectPtr.h"

class UObject;
class UFunction;

/** A delegate bound by name to a function of an object, as reflected delegate properties hold. */
class COREUOBJECT_API FScriptDelegate
{
public:
	FScriptDelegate() = default;

	void BindUFunction(UObject* InObject, const FName& InFunctionName);
	/** The object is alive and its class has the function. */
	bool IsBound() const;
	bool IsBoundToObject(const void* InUserObject) const;
	/** As IsBoundToObject, also while the object is marked as garbage. */
	bool IsBoundToObjectEvenIfUnreachable(const void* InUserObject) const;
	/** Has no function name or its object is gone for good: a multicast delegate drops such entries. */
	bool IsCompactable() const;
	void Unbind();
	void Clear() { Unbind(); }

	UObject* GetUObject() const { return Object.Get(); }
	UObject* GetUObjectEvenIfUnreachable() const { return Object.Get(true); }
	FName GetFunctionName() const { return FunctionName; }

	/** "<ObjectPath>.<FunctionName>" when bound, "<Unbound>" otherwise. */
	template <class UObjectTemplate = UObject>
	FString ToString() const { return ToStringInternal(); }

	/** Calls the function on the object through UObject::ProcessEvent; check IsBound() first. */
	template <class UObjectTemplate = UObject>
	void ProcessDelegate(void* Parameters) const { ProcessDelegateInternal(Parameters); }

	bool operator==(const FScriptDelegate& Other) const { return Object == Other.Object && FunctionName == Other.FunctionName; }
	bool operator!=(const FScriptDelegate& Other) const { return !(*this == Other); }
	friend uint32 GetTypeHash(const FScriptDelegate& Delegate) { return HashCombine(GetTypeHash(Delegate.Object), GetTypeHash(Delegate.FunctionName)); }

private:
	FString ToStringInternal() const;
	void ProcessDelegateInternal(void* Parameters) const;

	FWeakObjectPtr Object;
	FName FunctionName;
};

/**
 * A list of FScriptDelegates, called together. As in the engine, adding and removing drop entries whose object is
 * gone, and removal may reorder the remaining entries.
 */
class COREUOBJECT_API FMulticastScriptDelegate
{
public:
	using FInvocationList = TArray<FScriptDelegate>;

	FMulticastScriptDelegate() = default;

	bool IsBound() const { return InvocationList.Num() > 0; }
	bool Contains(const FScriptDelegate& InDelegate) const;
	bool Contains(const UObject* InObject, FName InFunctionName) const;
	void Add(const FScriptDelegate& InDelegate);
	void AddUnique(const FScriptDelegate& InDelegate);
	void Remove(const FScriptDelegate& InDelegate);
	void Remove(const UObject* InObject, FName InFunctionName);
	void RemoveAll(const UObject* Object);
	void Clear() { InvocationList.Empty(); }
	/** "[<Delegate>, <Delegate>]" when anything is bound, "<Unbound>" otherwise. */
	template <class UObjectTemplate = UObject>
	FString ToString() const { return ToStringInternal(); }
	/** Calls every bound entry, dropping entries whose object is gone. */
	template <class UObjectTemplate = UObject>
	void ProcessMulticastDelegate(void* Parameters) const { ProcessMulticastDelegateInternal(Parameters); }
	/** The objects of the entries, in order, leaving out entries whose object is gone. */
	TArray<UObject*> GetAllObjects() const;
	const FInvocationList& GetInvocationList() const { return InvocationList; }

	bool operator==(const FMulticastScriptDelegate& Other) const { return InvocationList == Other.InvocationList; }
	bool operator!=(const FMulticastScriptDelegate& Other) const { return !(*this == Other); }

private:
	FString ToStringInternal() const;
	void ProcessMulticastDelegateInternal(void* Parameters) const;
	void CompactInvocationList() const;

	/** Mutable so that calling, which is const, can drop stale entries, as in the engine. */
	mutable FInvocationList InvocationList;
};

/** The in-object part of a sparse multicast delegate: whether anything is bound (the bindings live elsewhere). */
struct FSparseDelegate
{
	bool IsBound() const { return bIsBound; }
	bool operator==(const FSparseDelegate& Other) const { return bIsBound == Other.bIsBound; }

	bool bIsBound = false;
};
