#pragma once

#include "UObject/Class.h"

/** A UClass* restricted to T and its subclasses: assigning another class leaves it null. */
template <class T>
class TSubclassOf
{
public:
	TSubclassOf() = default;
	TSubclassOf(std::nullptr_t) {}
	TSubclassOf(UClass* From) : Class(Filter(From)) {}
	template <class U, typename = std::enable_if_t<std::is_base_of_v<T, U>>>
	TSubclassOf(const TSubclassOf<U>& Other) : Class(*Other) {}

	TSubclassOf& operator=(UClass* From)
	{
		Class = Filter(From);
		return *this;
	}

	UClass* operator*() const { return Class; }
	UClass* Get() const { return Class; }
	UClass* operator->() const { return Class; }
	operator UClass*() const { return Class; }
	/** The class default object as a T. */
	T* GetDefaultObject() const { return Class ? (T*)Class->GetDefaultObject() : nullptr; }

	friend bool operator==(const TSubclassOf& A, const TSubclassOf& B) { return A.Class == B.Class; }
	friend uint32 GetTypeHash(const TSubclassOf& Value) { return PointerHash(Value.Class); }

private:
	static UClass* Filter(UClass* From) { return From && From->IsChildOf(T::StaticClass()) ? From : nullptr; }

	UClass* Class = nullptr;
};
