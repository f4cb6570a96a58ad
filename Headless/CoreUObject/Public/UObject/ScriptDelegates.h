#pragma once

#include "CoreMinimal.h"
#include "UObject/WeakObjectPtr.h"

class UObject;

/** A delegate bound by name to a function of an object, as reflected delegate properties hold. */
class COREUOBJECT_API FScriptDelegate
{
public:
	FScriptDelegate() = default;

	void BindUFunction(UObject* InObject, const FName& InFunctionName);
	bool IsBound() const;
	bool IsBoundToObject(const void* InUserObject) const;
	/** Bound to an object that has since gone. */
	bool IsBoundToObjectEvenIfUnreachable(const void* InUserObject) const { return IsBoundToObject(InUserObject); }
	void Unbind();
	void Clear() { Unbind(); }

	UObject* GetUObject() const { return Object.Get(); }
	FName GetFunctionName() const { return FunctionName; }

	/** "<ObjectPath>.<FunctionName>", or "(null)" when unbound. */
	template <class UObjectTemplate = UObject>
	FString ToString() const { return ToStringInternal(); }

	bool operator==(const FScriptDelegate& Other) const { return Object == Other.Object && FunctionName == Other.FunctionName; }
	bool operator!=(const FScriptDelegate& Other) const { return !(*this == Other); }
	friend uint32 GetTypeHash(const FScriptDelegate& Delegate) { return HashCombine(GetTypeHash(Delegate.Object), GetTypeHash(Delegate.FunctionName)); }

private:
	FString ToStringInternal() const;

	FWeakObjectPtr Object;
	FName FunctionName;
};

/** A list of FScriptDelegates, called together. */
class COREUOBJECT_API FMulticastScriptDelegate
{
public:
	FMulticastScriptDelegate() = default;

	bool IsBound() const { return InvocationList.Num() > 0; }
	bool Contains(const FScriptDelegate& InDelegate) const { return InvocationList.Contains(InDelegate); }
	bool Contains(const UObject* InObject, FName InFunctionName) const;
	void Add(const FScriptDelegate& InDelegate);
	void AddUnique(const FScriptDelegate& InDelegate);
	void Remove(const FScriptDelegate& InDelegate);
	void Remove(const UObject* InObject, FName InFunctionName);
	void RemoveAll(const UObject* Object);
	void Clear() { InvocationList.Empty(); }
	/** "(<ObjectPath>.<FunctionName>,...)", "()" when empty... see the .cpp for the exact form. */
	template <class UObjectTemplate = UObject>
	FString ToString() const { return ToStringInternal(); }
	TArray<UObject*> GetAllObjects() const;
	const TArray<FScriptDelegate>& GetInvocationList() const { return InvocationList; }

	bool operator==(const FMulticastScriptDelegate& Other) const { return InvocationList == Other.InvocationList; }
	bool operator!=(const FMulticastScriptDelegate& Other) const { return !(*this == Other); }

private:
	FString ToStringInternal() const;

	TArray<FScriptDelegate> InvocationList;
};

/** The in-object part of a sparse multicast delegate: whether anything is bound (the bindings live elsewhere). */
struct FSparseDelegate
{
	bool IsBound() const { return bIsBound; }
	bool operator==(const FSparseDelegate& Other) const { return bIsBound == Other.bIsBound; }

	bool bIsBound = false;
};
