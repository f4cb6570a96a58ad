#pragma once

#include "UObject/Object.h"

/** Every live object of ClassToLookFor (and its subclasses when bIncludeDerivedClasses), in creation order. */
COREUOBJECT_API void GetObjectsOfClass(const UClass* ClassToLookFor, TArray<UObject*>& Results, bool bIncludeDerivedClasses = true,
	EObjectFlags ExcludeFlags = RF_ClassDefaultObject, EInternalObjectFlags ExclusionInternalFlags = EInternalObjectFlags::None);
COREUOBJECT_API void ForEachObjectOfClass(const UClass* ClassToLookFor, TFunctionRef<void(UObject*)> Operation, bool bIncludeDerivedClasses = true,
	EObjectFlags ExcludeFlags = RF_ClassDefaultObject, EInternalObjectFlags ExclusionInternalFlags = EInternalObjectFlags::None);

/** The live objects whose outer is Outer (and, with bIncludeNestedObjects, everything inside them), in creation order. */
COREUOBJECT_API void GetObjectsWithOuter(const UObject* Outer, TArray<UObject*>& Results, bool bIncludeNestedObjects = true,
	EObjectFlags ExclusionFlags = RF_NoFlags, EInternalObjectFlags ExclusionInternalFlags = EInternalObjectFlags::None);
COREUOBJECT_API void ForEachObjectWithOuter(const UObject* Outer, TFunctionRef<void(UObject*)> Operation, bool bIncludeNestedObjects = true,
	EObjectFlags ExclusionFlags = RF_NoFlags, EInternalObjectFlags ExclusionInternalFlags = EInternalObjectFlags::None);
/** The object named ObjectName directly inside Outer, or null. */
COREUOBJECT_API UObject* FindObjectWithOuter(const UObject* Outer, const UClass* ClassToLookFor = nullptr, FName NameToLookFor = NAME_None);

/** The live objects inside Package (at any depth). */
COREUOBJECT_API void GetObjectsWithPackage(const UPackage* Package, TArray<UObject*>& Results, bool bIncludeNestedObjects = true,
	EObjectFlags ExclusionFlags = RF_NoFlags, EInternalObjectFlags ExclusionInternalFlags = EInternalObjectFlags::None);
COREUOBJECT_API void ForEachObjectWithPackage(const UPackage* Package, TFunctionRef<bool(UObject*)> Operation, bool bIncludeNestedObjects = true,
	EObjectFlags ExclusionFlags = RF_NoFlags, EInternalObjectFlags ExclusionInternalFlags = EInternalObjectFlags::None);

/** Every class deriving from ClassToLookFor (not itself), in creation order; only direct children unless bRecursive. */
COREUOBJECT_API void GetDerivedClasses(const UClass* ClassToLookFor, TArray<UClass*>& Results, bool bRecursive = true);
