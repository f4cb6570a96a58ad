#pragma once

// Internals shared by the object system's source files: the global object array with its name and
// outer hashes, the construction context, compiled-in type registration, and error reporting.

#include "UObject/Object.h"
#include "UObject/UObjectArray.h"

class FObjectInitializer;
class FOutputDevice;

namespace UE::CoreUObject::Private
{
	/** Reports a problem of the object system (stderr; the caller returns a failure). */
	void LogError(const FString& Message);
	void LogWarning(const FString& Message);
	/** Sends an import error to ErrorText when given, else to the log. */
	void ReportImportError(FOutputDevice* ErrorText, const FString& Message);

	/** Puts an object into the array and the hashes (name, outer). */
	void RegisterObject(UObjectBase* Object);
	/** Takes an object out of the hashes and frees its slot (the slot is never reused). */
	void UnregisterObject(UObjectBase* Object);
	/**
	 * Between these, objects leaving the array leave the name and outer hashes together when the batch ends, one
	 * pass per affected list instead of one search per object (freeing many objects of one outer stays linear).
	 */
	void BeginUnregisterBatch();
	void EndUnregisterBatch();
	/** Moves an object to a new name/outer in the hashes. */
	void RehashObject(UObjectBase* Object, FName NewName, UObject* NewOuter);
	FUObjectItem* GetObjectItem(int32 Index);

	/** Calls Visitor for each live object (garbage included when bIncludeGarbage) named Name, in creation order. */
	void ForEachObjectNamed(FName Name, TFunctionRef<bool(UObject*)> Visitor, bool bIncludeGarbage = false);
	/** Calls Visitor for each live object directly inside Outer, in creation order. */
	void ForEachObjectWithOuterDirect(const UObjectBase* Outer, TFunctionRef<bool(UObject*)> Visitor, bool bIncludeGarbage = false);

	/** Memory for an object: zeroed, aligned; freed with FreeObjectMemory. */
	void* AllocateObjectMemory(SIZE_T Size, SIZE_T Alignment);
	void FreeObjectMemory(void* Memory, SIZE_T Alignment);

	/** Gives a new object the name, outer, class and flags of the construction in progress. */
	void ApplyInitializerToObject(FObjectInitializer& Initializer, UObjectBase* Object);
	/** The initializer of the innermost construction in progress, or null. */
	FObjectInitializer* GetTopInitializer();
	void PushInitializer(FObjectInitializer* Initializer);
	void PopInitializer();

	/** True while compiled-in types are being registered (lookups then skip registration). */
	bool IsRegisteringCompiledInTypes();
	/** Runs the deferred part of a native type's registration: outer package, object array. */
	void DeferRegistration(UObject* Object, const TCHAR* PackageName);
	/** Depth of nested native type construction; deferred registrations run when it returns to 0. */
	struct FNativeConstructionScope
	{
		FNativeConstructionScope();
		~FNativeConstructionScope();
	};

	/** Sets the fields UObjectBase keeps private, for native type registration and renames. */
	void SetObjectName(UObjectBase* Object, FName Name);
	void SetObjectOuter(UObjectBase* Object, UObject* Outer);
	void SetObjectClass(UObjectBase* Object, UClass* Class);
	/** Sets the object flags outright (usable while the object is still being constructed). */
	void SetObjectFlags(UObjectBase* Object, EObjectFlags Flags);
	void SetInternalFlags(UObjectBase* Object, EInternalObjectFlags Flags, bool bSet);

	/** Frees one object (no checks): destructor, data-defined property values, memory. */
	void DestroyObject(UObject* Object);
}

class FProperty;
class UStruct;

namespace UE::CoreUObject::Private
{
	/** Allocation alignment of every object; a class needing more is refused when linked. */
	inline constexpr SIZE_T ObjectAlignment = 16;

	/**
	 * Calls Visitor with every hard object reference held by the value of Property at Value (object and
	 * class properties, interface properties, and those inside structs, arrays, sets and maps), so it can
	 * read or replace them.
	 */
	void ForEachObjectReference(const FProperty* Property, void* Value, TFunctionRef<void(UObject*& Reference)> Visitor);
	/** The same for every property of Struct in the struct value (or object) at Container. */
	void ForEachObjectReferenceInStruct(const UStruct* Struct, void* Container, TFunctionRef<void(UObject*& Reference)> Visitor);
	/** Calls Visitor with the types a property refers to (its class, struct, enum, signature function...). */
	void ForEachTypeReference(const FProperty* Property, TFunctionRef<void(UObject* Type)> Visitor);
}
