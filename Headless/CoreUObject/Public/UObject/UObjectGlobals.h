#pragma once

#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"
#include "UObject/TopLevelAssetPath.h"

class UObject;
class UClass;
class UPackage;
class UFunction;
class FProperty;
class FOutputDevice;
class FLinkerInstancingContext;
class FArchive;
struct FTopLevelAssetPath;

/** Options of FindFirstObject and StaticFindFirstObject. */
enum class EFindFirstObjectOptions
{
	None = 0,
	/** Only an object whose class is exactly the given class. */
	ExactClass = 1 << 1,
	/** Prefer a native (C++ or script package) object when several match a short name. */
	NativeFirst = 1 << 2,
	/** Fail (null) when more than one object matches a short name. */
	EnsureIfAmbiguous = 1 << 3,
};
ENUM_CLASS_FLAGS(EFindFirstObjectOptions)

/** The package named PackageName, made (with PKG_NewlyCreated) when it does not exist. Null for an invalid name. */
COREUOBJECT_API UPackage* CreatePackage(const TCHAR* PackageName);

/** The package for objects that are never saved ("/Engine/Transient"). */
COREUOBJECT_API UPackage* GetTransientPackage();

/** Everything StaticConstructObject_Internal needs to make an object. */
struct COREUOBJECT_API FStaticConstructObjectParameters
{
	/** The class of the object to make; required. */
	const UClass* Class = nullptr;
	/** The outer; null means the transient package. */
	UObject* Outer = nullptr;
	/** The name; NAME_None makes a unique one from the class name. */
	FName Name;
	EObjectFlags SetFlags = RF_NoFlags;
	EInternalObjectFlags InternalSetFlags = EInternalObjectFlags::None;
	/** Copy property values from the template even for native classes. */
	bool bCopyTransientsFromClassDefaults = false;
	/** Assert rather than fail when an object of that name already exists. */
	bool bAssumeTemplateIsArchetype = false;
	/** The object to take property values from; null means the class default object. */
	UObject* Template = nullptr;

	explicit FStaticConstructObjectParameters(const UClass* InClass);
};

/**
 * What a class constructor sees of the object being made. Object classes may take it in their
 * constructor (UMyClass(const FObjectInitializer& ObjectInitializer)) as in the engine.
 */
class COREUOBJECT_API FObjectInitializer
{
public:
	FObjectInitializer(UObject* InObj, const FStaticConstructObjectParameters& StaticConstructParams);

	UObject* GetObj() const { return Obj; }
	UClass* GetClass() const;
	/** The object property values come from (class default object or template). */
	UObject* GetArchetype() const { return ObjectArchetype; }

	template <class TReturnType>
	TReturnType* CreateDefaultSubobject(UObject* Outer, FName SubobjectName, bool bTransient = false) const
	{
		UClass* ReturnType = TReturnType::StaticClass();
		return static_cast<TReturnType*>(CreateDefaultSubobject(Outer, SubobjectName, ReturnType, ReturnType, true, bTransient));
	}
	UObject* CreateDefaultSubobject(UObject* Outer, FName SubobjectFName, const UClass* ReturnType, const UClass* ClassToCreateByDefault, bool bIsRequired, bool bIsTransient) const;

	/** The initializer of the construction in progress; checks that there is one. */
	static FObjectInitializer& Get();

private:
	friend struct FObjectConstructionAccess;

	UObject* Obj = nullptr;
	UObject* ObjectArchetype = nullptr;
	const UClass* Class = nullptr;
	FName Name;
	UObject* Outer = nullptr;
	EObjectFlags Flags = RF_NoFlags;
	bool bCopyTransientsFromClassDefaults = false;
};

/**
 * Makes an object of Params.Class. Allocates the class's full property size, runs the nearest C++
 * class constructor, initialises every property that lies beyond the C++ part, copies property values
 * from the template (or, for classes that are not native, from the class default object), then calls
 * PostInitProperties. Returns null (with an error in the log) for an abstract class, an invalid name,
 * or a name already taken in the outer by an object of another class.
 */
COREUOBJECT_API UObject* StaticConstructObject_Internal(const FStaticConstructObjectParameters& Params);

/** Makes an object of Class inside Outer (the transient package when null). */
template <class T>
T* NewObject(UObject* Outer, const UClass* Class, FName Name = NAME_None, EObjectFlags Flags = RF_NoFlags, UObject* Template = nullptr,
	bool bCopyTransientsFromClassDefaults = false, FLinkerInstancingContext* InInstanceGraph = nullptr, UPackage* InExternalPackage = nullptr)
{
	FStaticConstructObjectParameters Params(Class);
	Params.Outer = Outer;
	Params.Name = Name;
	Params.SetFlags = Flags;
	Params.Template = Template;
	Params.bCopyTransientsFromClassDefaults = bCopyTransientsFromClassDefaults;
	return static_cast<T*>(StaticConstructObject_Internal(Params));
}

template <class T>
T* NewObject(UObject* Outer = (UObject*)GetTransientPackage())
{
	static_assert(std::is_same_v<typename T::ThisClass, T>, "This class lacks DECLARE_CLASS: StaticClass() would name its super class.");
	return NewObject<T>(Outer, T::StaticClass());
}

template <class T>
T* NewObject(UObject* Outer, FName Name, EObjectFlags Flags = RF_NoFlags, UObject* Template = nullptr, bool bCopyTransientsFromClassDefaults = false,
	FLinkerInstancingContext* InInstanceGraph = nullptr)
{
	static_assert(std::is_same_v<typename T::ThisClass, T>, "This class lacks DECLARE_CLASS: StaticClass() would name its super class.");
	return NewObject<T>(Outer, T::StaticClass(), Name, Flags, Template, bCopyTransientsFromClassDefaults);
}

/** Parameters of DuplicateObject. */
struct COREUOBJECT_API FObjectDuplicationParameters
{
	UObject* SourceObject = nullptr;
	UObject* DestOuter = nullptr;
	FName DestName;
	EObjectFlags FlagMask = RF_AllFlags;
	EObjectFlags ApplyFlags = RF_NoFlags;
	UClass* DestClass = nullptr;
	/** Filled with every source object and its copy. */
	TMap<UObject*, UObject*>* CreatedObjects = nullptr;

	FObjectDuplicationParameters(UObject* InSourceObject, UObject* InDestOuter);
};

/**
 * Copies an object and every object inside it (its subobjects), with references between them redirected
 * to the copies. Property values are copied; references to objects outside the source stay as they are.
 */
COREUOBJECT_API UObject* StaticDuplicateObjectEx(FObjectDuplicationParameters& Parameters);
COREUOBJECT_API UObject* StaticDuplicateObject(const UObject* SourceObject, UObject* DestOuter, const FName DestName = NAME_None,
	EObjectFlags FlagMask = RF_AllFlags, UClass* DestClass = nullptr);
COREUOBJECT_API UObject* DuplicateObject_Internal(UClass* Class, const UObject* SourceObject, UObject* DestOuter, const FName DestName = NAME_None);

template <class T>
T* DuplicateObject(T const* SourceObject, UObject* Outer, const FName Name = NAME_None)
{
	if (SourceObject == nullptr)
	{
		return nullptr;
	}
	if (Outer == nullptr)
	{
		Outer = (UObject*)GetTransientPackage();
	}
	return static_cast<T*>(DuplicateObject_Internal(T::StaticClass(), (const UObject*)SourceObject, Outer, Name));
}

/**
 * Finds an object by path. With an Outer, Name is a name (or dotted sub-path) inside it; without, Name
 * is a full path ("/Game/A/B.B", "/Game/A/B.B:Sub", "/Script/Engine.Actor") or, for packages, a package
 * name. Class filters (null accepts any; bExactClass requires that class exactly). Garbage is never found.
 */
COREUOBJECT_API UObject* StaticFindObject(UClass* Class, UObject* InOuter, const TCHAR* Name, bool bExactClass = false);
COREUOBJECT_API UObject* StaticFindObject(UClass* Class, FTopLevelAssetPath ObjectPath, bool bExactClass = false);
COREUOBJECT_API UObject* StaticFindObjectChecked(UClass* Class, UObject* InOuter, const TCHAR* Name, bool bExactClass = false);
COREUOBJECT_API UObject* StaticFindObjectSafe(UClass* Class, UObject* InOuter, const TCHAR* Name, bool bExactClass = false);

/**
 * The object named InName directly inside InOuter (any outer when InOuter is null and bAnyPackage).
 * O(1) through the name hash. ExclusiveFlags rejects objects with any of those flags.
 */
COREUOBJECT_API UObject* StaticFindObjectFast(UClass* Class, UObject* InOuter, FName InName, bool bExactClass = false,
	EObjectFlags ExclusiveFlags = RF_NoFlags, EInternalObjectFlags ExclusiveInternalFlags = EInternalObjectFlags::None);

/**
 * The first object (in creation order) of Class named Name: a full path, or a short name searched
 * in every package. Ambiguous short names take the first match (or fail with EnsureIfAmbiguous).
 */
COREUOBJECT_API UObject* StaticFindFirstObject(UClass* Class, const TCHAR* Name, EFindFirstObjectOptions Options = EFindFirstObjectOptions::None);

template <class T>
T* FindObject(UObject* Outer, const TCHAR* Name, bool bExactClass = false)
{
	return (T*)StaticFindObject(T::StaticClass(), Outer, Name, bExactClass);
}

template <class T>
T* FindObject(FTopLevelAssetPath InPath, bool bExactClass = false)
{
	return (T*)StaticFindObject(T::StaticClass(), InPath, bExactClass);
}

template <class T>
T* FindObjectChecked(UObject* Outer, const TCHAR* Name, bool bExactClass = false)
{
	return (T*)StaticFindObjectChecked(T::StaticClass(), Outer, Name, bExactClass);
}

template <class T>
T* FindObjectFast(UObject* Outer, FName Name, bool bExactClass = false, EObjectFlags ExclusiveFlags = RF_NoFlags)
{
	return (T*)StaticFindObjectFast(T::StaticClass(), Outer, Name, bExactClass, ExclusiveFlags);
}

template <class T>
T* FindFirstObject(const TCHAR* Name, EFindFirstObjectOptions Options = EFindFirstObjectOptions::None)
{
	return (T*)StaticFindFirstObject(T::StaticClass(), Name, Options);
}

template <class T>
T* FindFirstObjectSafe(const TCHAR* Name, EFindFirstObjectOptions Options = EFindFirstObjectOptions::None)
{
	return FindFirstObject<T>(Name, Options);
}

/**
 * Finds an object by path, loading its package when it is not in memory. Class filters; null (and an
 * error unless LOAD_NoWarn/LOAD_Quiet) when neither finding nor loading works.
 */
COREUOBJECT_API UObject* StaticLoadObject(UClass* Class, UObject* InOuter, const TCHAR* Name, const TCHAR* Filename = nullptr,
	uint32 LoadFlags = LOAD_None, void* Sandbox = nullptr, bool bAllowObjectReconciliation = true, const FLinkerInstancingContext* InstancingContext = nullptr);
COREUOBJECT_API UClass* StaticLoadClass(UClass* BaseClass, UObject* InOuter, const TCHAR* Name, const TCHAR* Filename = nullptr,
	uint32 LoadFlags = LOAD_None, void* Sandbox = nullptr);

template <class T>
T* LoadObject(UObject* Outer, const TCHAR* Name, const TCHAR* Filename = nullptr, uint32 LoadFlags = LOAD_None, void* Sandbox = nullptr)
{
	return (T*)StaticLoadObject(T::StaticClass(), Outer, Name, Filename, LoadFlags, Sandbox);
}

template <class T>
UClass* LoadClass(UObject* Outer, const TCHAR* Name, const TCHAR* Filename = nullptr, uint32 LoadFlags = LOAD_None, void* Sandbox = nullptr)
{
	return StaticLoadClass(T::StaticClass(), Outer, Name, Filename, LoadFlags, Sandbox);
}

/**
 * Loads the package named InLongPackageNameOrFilename (a long package name such as "/Game/A/B"), or
 * returns it when already loaded. Null, with the reason in the log, when it cannot be loaded.
 * Implemented with the package files (Private/UObject/LoadPackage.cpp).
 */
COREUOBJECT_API UPackage* LoadPackage(UPackage* InOuter, const TCHAR* InLongPackageNameOrFilename, uint32 LoadFlags, FArchive* InReaderOverride = nullptr,
	const FLinkerInstancingContext* InstancingContext = nullptr);

/**
 * A name not used in Parent: "<BaseName>_<N>" with N counting up per base name, as the engine does.
 * BaseName defaults to the class name (a Blueprint-generated class loses its "_C").
 */
COREUOBJECT_API FName MakeUniqueObjectName(UObject* Parent, const UClass* Class, FName InBaseName = NAME_None);

/**
 * Frees every object that is marked as garbage and not rooted (objects inside a freed object go with it).
 * Objects that are not garbage stay, referenced or not: there is no reachability analysis.
 */
COREUOBJECT_API void CollectGarbage(EObjectFlags KeepFlags, bool bPerformFullPurge = true);

/** The class default object of T. */
template <class T>
const T* GetDefault();
template <class T>
T* GetMutableDefault();

/** Splits "/Game/A.B:C" style text into an outer object (found or, with bCreate, made as packages) and the last name. */
COREUOBJECT_API bool ResolveName(UObject*& Outer, FString& ObjectsName, bool Create, bool Throw, uint32 LoadFlags = LOAD_None,
	const FLinkerInstancingContext* InstancingContext = nullptr);

/** True if Name can name an object (none of INVALID_OBJECTNAME_CHARACTERS); the reason otherwise. */
COREUOBJECT_API bool IsValidObjectName(const FName& Name, FText& OutReason);
