#pragma once

#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"

class UClass;
class UObject;
class UPackage;

/**
 * The lowest level of every object: its flags, index in the global object array, class, name and
 * outer. The object system fills these in when it constructs an object (see StaticConstructObject_Internal);
 * C++ constructors of object classes never set them.
 */
class COREUOBJECT_API UObjectBase
{
	friend class UObjectBaseUtility;
	friend struct FObjectRegistrationAccess;

protected:
	/** Takes name, outer, class and flags from the construction in progress. */
	UObjectBase();

	/** For the classes the object system builds before it can construct objects (intrinsic UClass objects). */
	UObjectBase(EObjectFlags InFlags);

public:
	virtual ~UObjectBase();

	UObjectBase(const UObjectBase&) = delete;
	UObjectBase& operator=(const UObjectBase&) = delete;

	/** True when the pointer is in the object array with a class and a consistent index. */
	bool IsValidLowLevel() const;
	bool IsValidLowLevelFast(bool bRecursive = true) const;

	/** The object's index in the global object array; unique among live objects. */
	uint32 GetUniqueID() const { return static_cast<uint32>(InternalIndex); }
	UClass* GetClass() const { return ClassPrivate; }
	UObject* GetOuter() const { return OuterPrivate; }
	FName GetFName() const { return NamePrivate; }
	EObjectFlags GetFlags() const { return ObjectFlags; }

	/**
	 * Changes name and/or outer without any checks or notifications, keeping the name hash right.
	 * Prefer UObject::Rename.
	 */
	void LowLevelRename(FName NewName, UObject* NewOuter = nullptr);

protected:
	void SetFlagsTo(EObjectFlags NewFlags) { ObjectFlags = NewFlags; }

private:
	EObjectFlags ObjectFlags = RF_NoFlags;
	int32 InternalIndex = INDEX_NONE;
	UClass* ClassPrivate = nullptr;
	FName NamePrivate;
	UObject* OuterPrivate = nullptr;
};
