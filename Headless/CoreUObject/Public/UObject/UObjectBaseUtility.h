#pragma once

#include "UObject/UObjectBase.h"

class UPackage;

/** Options of GetFullName. */
enum class EObjectFullNameFlags
{
	None = 0,
	/** Writes the class name without its package ("Class /Game/A.A" rather than "/Script/CoreUObject.Class ..."). */
	IncludeClassPackage = 1,
};
ENUM_CLASS_FLAGS(EObjectFullNameFlags)

/** Queries over UObjectBase that need no virtual dispatch: flags, names, paths, outers, class checks. */
class COREUOBJECT_API UObjectBaseUtility : public UObjectBase
{
protected:
	UObjectBaseUtility() = default;
	UObjectBaseUtility(EObjectFlags InFlags) : UObjectBase(InFlags) {}

public:
	// Flags

	void SetFlags(EObjectFlags NewFlags) { SetFlagsTo(GetFlags() | NewFlags); }
	void ClearFlags(EObjectFlags FlagsToClear) { SetFlagsTo(GetFlags() & ~FlagsToClear); }
	bool HasAnyFlags(EObjectFlags FlagsToCheck) const { return (GetFlags() & FlagsToCheck) != 0; }
	bool HasAllFlags(EObjectFlags FlagsToCheck) const { return (GetFlags() & FlagsToCheck) == FlagsToCheck; }
	EObjectFlags GetMaskedFlags(EObjectFlags Mask = RF_AllFlags) const { return GetFlags() & Mask; }

	/**
	 * Marks the object as garbage: IsValid(Object) becomes false and lookups by name or class no longer
	 * find it. Its memory stays valid until CollectGarbage runs, so raw pointers held during a call never dangle.
	 */
	void MarkAsGarbage();
	/** Undoes MarkAsGarbage. */
	void ClearGarbage();
	bool IsRooted() const { return HasAnyInternalFlags(EInternalObjectFlags::RootSet); }
	/** Keeps the object alive through CollectGarbage even when marked as garbage. */
	void AddToRoot();
	void RemoveFromRoot();
	bool HasAnyInternalFlags(EInternalObjectFlags FlagsToCheck) const;
	EInternalObjectFlags GetInternalFlags() const;
	/** True once CollectGarbage decided to free the object (only seen from BeginDestroy/FinishDestroy). */
	bool IsUnreachable() const { return HasAnyInternalFlags(EInternalObjectFlags::Unreachable); }

	/** True for a class default object or an archetype (TemplateTypes chooses which). */
	bool IsTemplate(EObjectFlags TemplateTypes = RF_ArchetypeObject | RF_ClassDefaultObject) const;

	// Names and paths

	FString GetName() const { return GetFName().ToString(); }
	void GetName(FString& ResultString) const { GetFName().ToString(ResultString); }
	void AppendName(FString& ResultString) const { GetFName().AppendString(ResultString); }

	/**
	 * "/Game/A/B.B" for an asset, "/Game/A/B.B:Inner" for a subobject, "/Game/A/B.B:Inner.Deeper" further down;
	 * the part up to StopOuter (exclusive) is left out. "None" for a null object.
	 */
	FString GetPathName(const UObject* StopOuter = nullptr) const;
	void GetPathName(const UObject* StopOuter, FString& ResultString) const;

	/** "<ClassName> <PathName>", e.g. "Blueprint /Game/A/B.B". */
	FString GetFullName(const UObject* StopOuter = nullptr, EObjectFullNameFlags Flags = EObjectFullNameFlags::None) const;

	/** The path inside the package, joined with '.': "Outer.Inner" (bStartWithOuter leaves the object out). */
	FString GetFullGroupName(bool bStartWithOuter) const;

	// Outers

	/** The package at the root of the outer chain (the object itself when it is a package). */
	UPackage* GetOutermost() const { return GetPackage(); }
	UPackage* GetPackage() const;
	/** The object right under the package. */
	UObject* GetOutermostObject() const;

	UObject* GetTypedOuter(UClass* Target) const;
	template <typename T>
	T* GetTypedOuter() const
	{
		return (T*)GetTypedOuter(T::StaticClass());
	}

	/** True if SomeOuter is anywhere in the outer chain (a package also matches through GetPackage). */
	bool IsIn(const UObject* SomeOuter) const;
	bool IsInOuter(const UObject* SomeOuter) const;
	bool IsInPackage(const UPackage* SomePackage) const;

	/** Marks the object's package dirty, unless it is transient or a script package. */
	bool MarkPackageDirty() const;

	// Class checks

	/** True if the object's class is SomeBase or derives from it. */
	bool IsA(const UClass* SomeBase) const;
	template <typename OtherClassType>
	bool IsA(OtherClassType SomeBase) const
	{
		const UClass* SomeBaseClass = SomeBase;
		return IsA(SomeBaseClass);
	}
	template <class T>
	bool IsA() const
	{
		return IsA(T::StaticClass());
	}

	/** Pointer to the native interface part of the object, or null when the class does not implement it. */
	void* GetInterfaceAddress(UClass* InterfaceClass);
	const void* GetInterfaceAddress(UClass* InterfaceClass) const
	{
		return const_cast<UObjectBaseUtility*>(this)->GetInterfaceAddress(InterfaceClass);
	}

	/** True if the object is native C++ data only (its class is native). */
	bool IsNative() const;
};

/** False for null and for objects marked as garbage, as the engine's IsValid. */
COREUOBJECT_API bool IsValid(const UObjectBaseUtility* Test);
