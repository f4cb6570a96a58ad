#pragma once

#include "CoreMinimal.h"

class UObject;
class UClass;

/** The value of an interface property: the object and a pointer to its native interface part (null if none). */
class COREUOBJECT_API FScriptInterface
{
public:
	FScriptInterface() = default;
	FScriptInterface(UObject* InObjectPointer, void* InInterfacePointer = nullptr) : ObjectPointer(InObjectPointer), InterfacePointer(InInterfacePointer) {}

	UObject* GetObject() const { return ObjectPointer; }
	UObject*& GetObjectRef() { return ObjectPointer; }
	void* GetInterface() const { return ObjectPointer ? InterfacePointer : nullptr; }
	void SetObject(UObject* InObjectPointer)
	{
		ObjectPointer = InObjectPointer;
		if (ObjectPointer == nullptr)
		{
			InterfacePointer = nullptr;
		}
	}
	void SetInterface(void* InInterfacePointer) { InterfacePointer = InInterfacePointer; }

	explicit operator bool() const { return GetInterface() != nullptr || GetObject() != nullptr; }
	bool operator==(const FScriptInterface& Other) const { return ObjectPointer == Other.ObjectPointer && GetInterface() == Other.GetInterface(); }
	bool operator!=(const FScriptInterface& Other) const { return !(*this == Other); }
	friend uint32 GetTypeHash(const FScriptInterface& Interface) { return PointerHash(Interface.ObjectPointer); }

private:
	UObject* ObjectPointer = nullptr;
	void* InterfacePointer = nullptr;
};

/** An FScriptInterface for the native interface InterfaceType (IMyInterface). */
template <class InterfaceType>
class TScriptInterface : public FScriptInterface
{
public:
	TScriptInterface() = default;
	TScriptInterface(std::nullptr_t) {}
	template <class ObjectType>
	TScriptInterface(ObjectType* SourceObject)
	{
		SetObject((UObject*)SourceObject);
		if constexpr (std::is_convertible_v<ObjectType*, InterfaceType*>)
		{
			SetInterface(static_cast<InterfaceType*>(SourceObject));
		}
	}

	InterfaceType* operator->() const { return (InterfaceType*)GetInterface(); }
	InterfaceType& operator*() const { return *(InterfaceType*)GetInterface(); }
	explicit operator bool() const { return GetObject() != nullptr; }
};
