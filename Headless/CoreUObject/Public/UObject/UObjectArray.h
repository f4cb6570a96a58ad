#pragma once

#include "UObject/UObjectBase.h"

/** One slot of the global object array. */
struct COREUOBJECT_API FUObjectItem
{
	UObjectBase* Object = nullptr;
	EInternalObjectFlags Flags = EInternalObjectFlags::None;
	/** Changes every time the slot gets a new object, so weak pointers to a freed object stay stale. */
	int32 SerialNumber = 0;

	bool HasAnyFlags(EInternalObjectFlags InFlags) const { return (Flags & InFlags) != EInternalObjectFlags::None; }
	bool IsGarbage() const { return HasAnyFlags(EInternalObjectFlags::Garbage); }
	bool IsRootSet() const { return HasAnyFlags(EInternalObjectFlags::RootSet); }
};

/** The global array of every object; an object's index never changes while it lives. */
class COREUOBJECT_API FUObjectArray
{
public:
	/** Slots in use or freed. */
	int32 GetObjectArrayNum() const;
	/** Objects alive now. */
	int32 GetObjectArrayNumMinusAvailable() const;
	/** The slot, or null out of range. */
	FUObjectItem* IndexToObject(int32 Index);
	FUObjectItem* ObjectToObjectItem(const UObjectBase* Object);
	int32 ObjectToIndex(const UObjectBase* Object) const;
	bool IsValid(const UObjectBase* Object) const;
};

/** The object array, as the engine names it. */
extern COREUOBJECT_API FUObjectArray GUObjectArray;
