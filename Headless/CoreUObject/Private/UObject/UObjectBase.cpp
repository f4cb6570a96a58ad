#include "UObject/UObjectBase.h"
#include "UObject/UObjectBaseUtility.h"
#include "UObject/UObjectArray.h"
#include "UObject/UObjectHash.h"
#include "UObject/UObjectIterator.h"
#include "UObject/Object.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/WeakObjectPtr.h"
#include "ObjectRegistry.h"

#include <cstdio>
#include <cstring>
#include <new>
#include <unordered_map>
#include <unordered_set>

/** Gives the object system's own code access to the fields UObjectBase keeps private. */
struct FObjectRegistrationAccess
{
	static int32& Index(UObjectBase* Object) { return Object->InternalIndex; }
	static FName& Name(UObjectBase* Object) { return Object->NamePrivate; }
	static UObject*& Outer(UObjectBase* Object) { return Object->OuterPrivate; }
	static UClass*& Class(UObjectBase* Object) { return Object->ClassPrivate; }
	static EObjectFlags& Flags(UObjectBase* Object) { return Object->ObjectFlags; }
};

namespace UE::CoreUObject::Private
{
	namespace
	{
		uint64 NameKey(FName Name)
		{
			return (uint64(Name.GetComparisonIndex()) << 32) | uint32(Name.GetNumber());
		}

		/**
		 * Every object ever made has a slot, in creation order; freed slots stay empty, so iterating the
		 * array is iterating in creation order. The hashes hold slot indices, also in creation order.
		 */
		class FObjectRegistry
		{
		public:
			static FObjectRegistry& Get()
			{
				static FObjectRegistry Registry;
				return Registry;
			}

			TArray<FUObjectItem> Items;
			int32 NumAlive = 0;
			int32 NextSerialNumber = 1;
			std::unordered_map<uint64, TArray<int32>> ByName;
			std::unordered_map<const UObjectBase*, TArray<int32>> ByOuter;
			/** Open unregistration batches, and the lists that hold slots freed during them. */
			int32 BatchDepth = 0;
			std::unordered_set<uint64> StaleNameLists;
			std::unordered_set<const UObjectBase*> StaleOuterLists;

			void AddToHashes(int32 Index, FName Name, const UObjectBase* Outer)
			{
				ByName[NameKey(Name)].Add(Index);
				ByOuter[Outer].Add(Index);
			}

			static void RemoveIndex(TArray<int32>& List, int32 Index)
			{
				// Keeps the rest in creation order.
				const int32 Position = List.Find(Index);
				if (Position != INDEX_NONE)
				{
					List.RemoveAt(Position);
				}
			}

			/** Drops the freed slots from the lists that hold them and forgets lists left empty. */
			template <typename MapType, typename KeySetType>
			void RemoveFreedSlots(MapType& Map, KeySetType& StaleKeys)
			{
				for (const auto& Key : StaleKeys)
				{
					auto It = Map.find(Key);
					if (It == Map.end())
					{
						continue;
					}
					It->second.RemoveAll([this](int32 Index) { return Items[Index].Object == nullptr; });
					if (It->second.IsEmpty())
					{
						Map.erase(It);
					}
				}
				StaleKeys.clear();
			}

			void RemoveFromHashes(int32 Index, FName Name, const UObjectBase* Outer)
			{
				auto NameIt = ByName.find(NameKey(Name));
				if (NameIt != ByName.end())
				{
					RemoveIndex(NameIt->second, Index);
					if (NameIt->second.IsEmpty())
					{
						ByName.erase(NameIt);
					}
				}
				auto OuterIt = ByOuter.find(Outer);
				if (OuterIt != ByOuter.end())
				{
					RemoveIndex(OuterIt->second, Index);
					if (OuterIt->second.IsEmpty())
					{
						ByOuter.erase(OuterIt);
					}
				}
			}
		};

		thread_local TArray<FObjectInitializer*> GInitializerStack;

		/**
		 * Calls Visitor for each live slot in List, on a copy of the list (the visitor may make, rename or free
		 * objects); short lists, the common case, are copied to the stack.
		 */
		void VisitSlots(const TArray<int32>& List, TFunctionRef<bool(UObject*)> Visitor, bool bIncludeGarbage)
		{
			FObjectRegistry& Registry = FObjectRegistry::Get();
			constexpr int32 StackCapacity = 16;
			int32 StackCopy[StackCapacity];
			TArray<int32> HeapCopy;
			const int32 Num = List.Num();
			const int32* Slots = StackCopy;
			if (Num <= StackCapacity)
			{
				std::memcpy(StackCopy, List.GetData(), sizeof(int32) * Num);
			}
			else
			{
				HeapCopy = List;
				Slots = HeapCopy.GetData();
			}
			for (int32 Position = 0; Position < Num; ++Position)
			{
				const FUObjectItem& Item = Registry.Items[Slots[Position]];
				if (Item.Object && (bIncludeGarbage || !Item.IsGarbage()))
				{
					if (!Visitor((UObject*)Item.Object))
					{
						return;
					}
				}
			}
		}
	}

	void LogError(const FString& Message)
	{
		std::fprintf(stderr, "Error: %s\n", FStringToUTF8(Message).c_str());
	}

	void LogWarning(const FString& Message)
	{
		std::fprintf(stderr, "Warning: %s\n", FStringToUTF8(Message).c_str());
	}

	void RegisterObject(UObjectBase* Object)
	{
		FObjectRegistry& Registry = FObjectRegistry::Get();
		const int32 Index = Registry.Items.Num();
		FUObjectItem& Item = Registry.Items.AddDefaulted_GetRef();
		Item.Object = Object;
		Item.SerialNumber = Registry.NextSerialNumber++;
		FObjectRegistrationAccess::Index(Object) = Index;
		++Registry.NumAlive;
		Registry.AddToHashes(Index, Object->GetFName(), Object->GetOuter());
	}

	void UnregisterObject(UObjectBase* Object)
	{
		FObjectRegistry& Registry = FObjectRegistry::Get();
		const int32 Index = FObjectRegistrationAccess::Index(Object);
		if (!Registry.Items.IsValidIndex(Index) || Registry.Items[Index].Object != Object)
		{
			return;
		}
		if (Registry.BatchDepth > 0)
		{
			Registry.StaleNameLists.insert(NameKey(Object->GetFName()));
			Registry.StaleOuterLists.insert(Object->GetOuter());
		}
		else
		{
			Registry.RemoveFromHashes(Index, Object->GetFName(), Object->GetOuter());
		}
		FUObjectItem& Item = Registry.Items[Index];
		Item.Object = nullptr;
		Item.Flags = EInternalObjectFlags::None;
		--Registry.NumAlive;
		FObjectRegistrationAccess::Index(Object) = INDEX_NONE;
	}

	void BeginUnregisterBatch()
	{
		++FObjectRegistry::Get().BatchDepth;
	}

	void EndUnregisterBatch()
	{
		FObjectRegistry& Registry = FObjectRegistry::Get();
		check(Registry.BatchDepth > 0);
		if (--Registry.BatchDepth == 0)
		{
			Registry.RemoveFreedSlots(Registry.ByName, Registry.StaleNameLists);
			Registry.RemoveFreedSlots(Registry.ByOuter, Registry.StaleOuterLists);
		}
	}

	void RehashObject(UObjectBase* Object, FName NewName, UObject* NewOuter)
	{
		FObjectRegistry& Registry = FObjectRegistry::Get();
		const int32 Index = FObjectRegistrationAccess::Index(Object);
		const bool bRegistered = Registry.Items.IsValidIndex(Index) && Registry.Items[Index].Object == Object;
		if (bRegistered)
		{
			Registry.RemoveFromHashes(Index, Object->GetFName(), Object->GetOuter());
		}
		FObjectRegistrationAccess::Name(Object) = NewName;
		FObjectRegistrationAccess::Outer(Object) = NewOuter;
		if (bRegistered)
		{
			Registry.AddToHashes(Index, NewName, NewOuter);
		}
	}

	FUObjectItem* GetObjectItem(int32 Index)
	{
		FObjectRegistry& Registry = FObjectRegistry::Get();
		return Registry.Items.IsValidIndex(Index) ? &Registry.Items[Index] : nullptr;
	}

	void ForEachObjectNamed(FName Name, TFunctionRef<bool(UObject*)> Visitor, bool bIncludeGarbage)
	{
		FObjectRegistry& Registry = FObjectRegistry::Get();
		auto It = Registry.ByName.find(NameKey(Name));
		if (It == Registry.ByName.end())
		{
			return;
		}
		VisitSlots(It->second, Visitor, bIncludeGarbage);
	}

	void ForEachObjectWithOuterDirect(const UObjectBase* Outer, TFunctionRef<bool(UObject*)> Visitor, bool bIncludeGarbage)
	{
		FObjectRegistry& Registry = FObjectRegistry::Get();
		auto It = Registry.ByOuter.find(Outer);
		if (It == Registry.ByOuter.end())
		{
			return;
		}
		VisitSlots(It->second, Visitor, bIncludeGarbage);
	}

	void* AllocateObjectMemory(SIZE_T Size, SIZE_T Alignment)
	{
		void* Memory = ::operator new(Size, std::align_val_t(Alignment));
		std::memset(Memory, 0, Size);
		return Memory;
	}

	void FreeObjectMemory(void* Memory, SIZE_T Alignment)
	{
		::operator delete(Memory, std::align_val_t(Alignment));
	}

	FObjectInitializer* GetTopInitializer()
	{
		return GInitializerStack.IsEmpty() ? nullptr : GInitializerStack.Last();
	}

	void PushInitializer(FObjectInitializer* Initializer)
	{
		GInitializerStack.Add(Initializer);
	}

	void PopInitializer()
	{
		GInitializerStack.Pop();
	}

	void SetObjectName(UObjectBase* Object, FName Name)
	{
		FObjectRegistrationAccess::Name(Object) = Name;
	}

	void SetObjectOuter(UObjectBase* Object, UObject* Outer)
	{
		FObjectRegistrationAccess::Outer(Object) = Outer;
	}

	void SetObjectClass(UObjectBase* Object, UClass* Class)
	{
		FObjectRegistrationAccess::Class(Object) = Class;
	}

	void SetObjectFlags(UObjectBase* Object, EObjectFlags Flags)
	{
		FObjectRegistrationAccess::Flags(Object) = Flags;
	}

	void SetInternalFlags(UObjectBase* Object, EInternalObjectFlags Flags, bool bSet)
	{
		if (FUObjectItem* Item = GUObjectArray.ObjectToObjectItem(Object))
		{
			Item->Flags = bSet ? (Item->Flags | Flags) : (Item->Flags & ~Flags);
		}
	}

	int32 GetObjectArrayNum()
	{
		return FObjectRegistry::Get().Items.Num();
	}

	UObject* GetObjectAtIndex(int32 Index)
	{
		FUObjectItem* Item = GetObjectItem(Index);
		return Item ? (UObject*)Item->Object : nullptr;
	}
}

using namespace UE::CoreUObject::Private;

// The object array

FUObjectArray GUObjectArray;

int32 FUObjectArray::GetObjectArrayNum() const
{
	return UE::CoreUObject::Private::GetObjectArrayNum();
}

int32 FUObjectArray::GetObjectArrayNumMinusAvailable() const
{
	return FObjectRegistry::Get().NumAlive;
}

FUObjectItem* FUObjectArray::IndexToObject(int32 Index)
{
	return GetObjectItem(Index);
}

FUObjectItem* FUObjectArray::ObjectToObjectItem(const UObjectBase* Object)
{
	if (!Object)
	{
		return nullptr;
	}
	FUObjectItem* Item = GetObjectItem(ObjectToIndex(Object));
	return Item && Item->Object == Object ? Item : nullptr;
}

int32 FUObjectArray::ObjectToIndex(const UObjectBase* Object) const
{
	return Object ? (int32)Object->GetUniqueID() : INDEX_NONE;
}

bool FUObjectArray::IsValid(const UObjectBase* Object) const
{
	return const_cast<FUObjectArray*>(this)->ObjectToObjectItem(Object) != nullptr;
}

// UObjectBase

UObjectBase::UObjectBase()
{
	FObjectInitializer* Initializer = GetTopInitializer();
	// Compared as addresses: this object is not a UObject yet.
	checkf(Initializer && (const void*)Initializer->GetObj() == (const void*)this,
		TEXT("Objects must be made with NewObject (or StaticConstructObject_Internal), never constructed directly"));
	// The construction in progress says who this object is; register it at once so the rest of its
	// constructor (default subobjects) can find it by path.
	ApplyInitializerToObject(*Initializer, this);
	RegisterObject(this);
}

UObjectBase::UObjectBase(EObjectFlags InFlags)
	: ObjectFlags(InFlags)
{
}

UObjectBase::~UObjectBase()
{
	UnregisterObject(this);
}

bool UObjectBase::IsValidLowLevel() const
{
	return ClassPrivate != nullptr && GUObjectArray.IsValid(this);
}

bool UObjectBase::IsValidLowLevelFast(bool bRecursive) const
{
	return IsValidLowLevel() && (!bRecursive || ((const UObjectBase*)ClassPrivate)->IsValidLowLevelFast(false));
}

void UObjectBase::LowLevelRename(FName NewName, UObject* NewOuter)
{
	RehashObject(this, NewName, NewOuter ? NewOuter : OuterPrivate);
}

// UObjectBaseUtility

void UObjectBaseUtility::MarkAsGarbage()
{
	if (IsRooted())
	{
		LogWarning(FString::Printf(TEXT("MarkAsGarbage on %s, which is in the root set: it stays alive until removed from the root"), *GetFullName()));
	}
	SetFlags(RF_MirroredGarbage);
	SetInternalFlags(this, EInternalObjectFlags::Garbage, true);
}

void UObjectBaseUtility::ClearGarbage()
{
	ClearFlags(RF_MirroredGarbage);
	SetInternalFlags(this, EInternalObjectFlags::Garbage, false);
}

void UObjectBaseUtility::AddToRoot()
{
	SetInternalFlags(this, EInternalObjectFlags::RootSet, true);
}

void UObjectBaseUtility::RemoveFromRoot()
{
	SetInternalFlags(this, EInternalObjectFlags::RootSet, false);
}

bool UObjectBaseUtility::HasAnyInternalFlags(EInternalObjectFlags FlagsToCheck) const
{
	const FUObjectItem* Item = GUObjectArray.ObjectToObjectItem(this);
	return Item && Item->HasAnyFlags(FlagsToCheck);
}

EInternalObjectFlags UObjectBaseUtility::GetInternalFlags() const
{
	const FUObjectItem* Item = GUObjectArray.ObjectToObjectItem(this);
	return Item ? Item->Flags : EInternalObjectFlags::None;
}

bool UObjectBaseUtility::IsTemplate(EObjectFlags TemplateTypes) const
{
	for (const UObjectBaseUtility* TestOuter = this; TestOuter; TestOuter = TestOuter->GetOuter())
	{
		if (TestOuter->HasAnyFlags(TemplateTypes))
		{
			return true;
		}
	}
	return false;
}

void UObjectBaseUtility::GetPathName(const UObject* StopOuter, FString& ResultString) const
{
	if (this == (const UObjectBaseUtility*)StopOuter)
	{
		ResultString += TEXT("None");
		return;
	}
	const UObject* ObjOuter = GetOuter();
	if (ObjOuter && ObjOuter != StopOuter)
	{
		ObjOuter->GetPathName(StopOuter, ResultString);
		// ':' marks the step from a top-level object (an asset) to its subobjects; '.' every other step.
		const UObject* OuterOuter = ObjOuter->GetOuter();
		const bool bOuterIsPackage = ObjOuter->IsA(UPackage::StaticClass());
		const bool bOuterOuterIsPackage = OuterOuter && OuterOuter->IsA(UPackage::StaticClass());
		ResultString += (!bOuterIsPackage && bOuterOuterIsPackage) ? TEXT(":") : TEXT(".");
	}
	AppendName(ResultString);
}

FString UObjectBaseUtility::GetPathName(const UObject* StopOuter) const
{
	FString Result;
	GetPathName(StopOuter, Result);
	return Result;
}

FString UObjectBaseUtility::GetFullName(const UObject* StopOuter, EObjectFullNameFlags Flags) const
{
	FString Result;
	if (EnumHasAnyFlags(Flags, EObjectFullNameFlags::IncludeClassPackage))
	{
		Result = GetClass()->GetPathName();
	}
	else
	{
		Result = GetClass()->GetName();
	}
	Result += TEXT(" ");
	GetPathName(StopOuter, Result);
	return Result;
}

FString UObjectBaseUtility::GetFullGroupName(bool bStartWithOuter) const
{
	const UObjectBaseUtility* Obj = bStartWithOuter ? GetOuter() : this;
	return Obj ? Obj->GetPathName((const UObject*)GetOutermost()) : FString();
}

UPackage* UObjectBaseUtility::GetPackage() const
{
	const UObjectBaseUtility* Top = this;
	while (const UObject* Outer = Top->GetOuter())
	{
		Top = Outer;
	}
	return Top->IsA(UPackage::StaticClass()) ? (UPackage*)Top : nullptr;
}

UObject* UObjectBaseUtility::GetOutermostObject() const
{
	const UObjectBaseUtility* Top = this;
	while (const UObject* Outer = Top->GetOuter())
	{
		if (Outer->IsA(UPackage::StaticClass()))
		{
			break;
		}
		Top = Outer;
	}
	return (UObject*)Top;
}

UObject* UObjectBaseUtility::GetTypedOuter(UClass* Target) const
{
	for (UObject* NextOuter = GetOuter(); NextOuter; NextOuter = NextOuter->GetOuter())
	{
		if (NextOuter->IsA(Target))
		{
			return NextOuter;
		}
	}
	return nullptr;
}

bool UObjectBaseUtility::IsInOuter(const UObject* SomeOuter) const
{
	for (const UObject* It = GetOuter(); It; It = It->GetOuter())
	{
		if (It == SomeOuter)
		{
			return true;
		}
	}
	return SomeOuter == nullptr;
}

bool UObjectBaseUtility::IsIn(const UObject* SomeOuter) const
{
	if (SomeOuter && SomeOuter->IsA(UPackage::StaticClass()))
	{
		return IsInPackage((const UPackage*)SomeOuter);
	}
	return IsInOuter(SomeOuter);
}

bool UObjectBaseUtility::IsInPackage(const UPackage* SomePackage) const
{
	return SomePackage != (const UPackage*)this && GetPackage() == SomePackage;
}

bool UObjectBaseUtility::MarkPackageDirty() const
{
	if (HasAnyFlags(RF_Transient))
	{
		return false;
	}
	UPackage* Package = GetPackage();
	if (!Package || Package->HasAnyFlags(RF_Transient) || Package->HasAnyPackageFlags(PKG_CompiledIn))
	{
		return false;
	}
	const bool bWasDirty = Package->IsDirty();
	if (!bWasDirty)
	{
		Package->SetDirtyFlag(true);
	}
	UPackage::PackageMarkedDirtyEvent.Broadcast(Package, bWasDirty);
	return true;
}

bool UObjectBaseUtility::IsA(const UClass* SomeBase) const
{
	const UClass* ThisClass = GetClass();
	return SomeBase && ThisClass && ThisClass->IsChildOf(SomeBase);
}

void* UObjectBaseUtility::GetInterfaceAddress(UClass* InterfaceClass)
{
	if (!InterfaceClass || !InterfaceClass->HasAnyClassFlags(CLASS_Interface))
	{
		return nullptr;
	}
	const bool bNativeInterface = InterfaceClass->HasAnyClassFlags(CLASS_Native);
	for (const UClass* CurrentClass = GetClass(); CurrentClass; CurrentClass = CurrentClass->GetSuperClass())
	{
		for (const FImplementedInterface& Implemented : CurrentClass->Interfaces)
		{
			if (Implemented.Class && Implemented.Class->IsChildOf(InterfaceClass))
			{
				if (!bNativeInterface)
				{
					return this;
				}
				// A Blueprint implementation has no native part to point at.
				return Implemented.bImplementedByK2 ? nullptr : (uint8*)this + Implemented.PointerOffset;
			}
		}
	}
	return nullptr;
}

bool UObjectBaseUtility::IsNative() const
{
	const UClass* Class = GetClass();
	return Class && Class->HasAnyClassFlags(CLASS_Native);
}

bool IsValid(const UObjectBaseUtility* Test)
{
	return Test && !Test->HasAnyFlags(RF_MirroredGarbage);
}

FString LexToString(EObjectFlags Flags)
{
	static const TCHAR* const Names[32] = {
		TEXT("RF_Public"), TEXT("RF_Standalone"), TEXT("RF_MarkAsNative"), TEXT("RF_Transactional"),
		TEXT("RF_ClassDefaultObject"), TEXT("RF_ArchetypeObject"), TEXT("RF_Transient"), TEXT("RF_MarkAsRootSet"),
		TEXT("RF_TagGarbageTemp"), TEXT("RF_NeedInitialization"), TEXT("RF_NeedLoad"), TEXT("RF_KeepForCooker"),
		TEXT("RF_NeedPostLoad"), TEXT("RF_NeedPostLoadSubobjects"), TEXT("RF_NewerVersionExists"), TEXT("RF_BeginDestroyed"),
		TEXT("RF_FinishDestroyed"), TEXT("RF_BeingRegenerated"), TEXT("RF_DefaultSubObject"), TEXT("RF_WasLoaded"),
		TEXT("RF_TextExportTransient"), TEXT("RF_LoadCompleted"), TEXT("RF_InheritableComponentTemplate"), TEXT("RF_DuplicateTransient"),
		TEXT("RF_StrongRefOnFrame"), TEXT("RF_NonPIEDuplicateTransient"), TEXT("RF_ImmutableDefaultObject"), TEXT("RF_WillBeLoaded"),
		TEXT("RF_HasExternalPackage"), TEXT("RF_MigratingAsset"), TEXT("RF_MirroredGarbage"), TEXT("RF_AllocatedInSharedPage"),
	};
	if (Flags == RF_NoFlags)
	{
		return TEXT("RF_NoFlags");
	}
	FString Result;
	for (int32 Bit = 0; Bit < 32; ++Bit)
	{
		if ((uint32)Flags & (1u << Bit))
		{
			if (!Result.IsEmpty())
			{
				Result += TEXT(" | ");
			}
			Result += Names[Bit];
		}
	}
	return Result;
}

// Weak pointers

FWeakObjectPtr& FWeakObjectPtr::operator=(const UObject* Object)
{
	const FUObjectItem* Item = GUObjectArray.ObjectToObjectItem((const UObjectBase*)Object);
	if (Item)
	{
		ObjectIndex = (int32)((const UObjectBase*)Object)->GetUniqueID();
		ObjectSerialNumber = Item->SerialNumber;
	}
	else
	{
		Reset();
	}
	return *this;
}

UObject* FWeakObjectPtr::Get(bool bEvenIfGarbage) const
{
	const FUObjectItem* Item = GetObjectItem(ObjectIndex);
	if (!Item || !Item->Object || Item->SerialNumber != ObjectSerialNumber)
	{
		return nullptr;
	}
	if (!bEvenIfGarbage && Item->IsGarbage())
	{
		return nullptr;
	}
	return (UObject*)Item->Object;
}

bool FWeakObjectPtr::IsStale(bool bIncludingGarbage) const
{
	return ObjectIndex != INDEX_NONE && Get(!bIncludingGarbage) == nullptr;
}

bool FWeakObjectPtr::operator==(const FWeakObjectPtr& Other) const
{
	// Two pointers to objects that are gone are equal, as in the engine.
	const bool bValid = IsValid(true);
	const bool bOtherValid = Other.IsValid(true);
	if (!bValid && !bOtherValid)
	{
		return true;
	}
	return HasSameIndexAndSerialNumber(Other);
}

// Iteration and lookups by class and outer

FObjectIterator::FObjectIterator(UClass* InClass, bool bOnlyGCedObjects, EObjectFlags AdditionalExclusionFlags, EInternalObjectFlags InInternalExclusionFlags)
	: Class(InClass), ExclusionFlags(AdditionalExclusionFlags)
{
	EnsureCompiledInTypesRegistered();
	Advance();
}

void FObjectIterator::Advance()
{
	const int32 Num = GetObjectArrayNum();
	while (++Index < Num)
	{
		const FUObjectItem* Item = GetObjectItem(Index);
		if (!Item->Object || Item->IsGarbage())
		{
			continue;
		}
		UObject* Candidate = (UObject*)Item->Object;
		if (Candidate->HasAnyFlags(ExclusionFlags) || !Candidate->GetClass())
		{
			continue;
		}
		if (Class && !Candidate->IsA(Class))
		{
			continue;
		}
		Object = Candidate;
		return;
	}
	Object = nullptr;
}

void ForEachObjectOfClass(const UClass* ClassToLookFor, TFunctionRef<void(UObject*)> Operation, bool bIncludeDerivedClasses, EObjectFlags ExcludeFlags,
	EInternalObjectFlags ExclusionInternalFlags)
{
	EnsureCompiledInTypesRegistered();
	const int32 Num = GetObjectArrayNum();
	for (int32 Index = 0; Index < Num; ++Index)
	{
		const FUObjectItem* Item = GetObjectItem(Index);
		if (!Item || !Item->Object || Item->IsGarbage() || Item->HasAnyFlags(ExclusionInternalFlags))
		{
			continue;
		}
		UObject* Object = (UObject*)Item->Object;
		if (Object->HasAnyFlags(ExcludeFlags) || !Object->GetClass())
		{
			continue;
		}
		if (bIncludeDerivedClasses ? Object->IsA(ClassToLookFor) : Object->GetClass() == ClassToLookFor)
		{
			Operation(Object);
		}
	}
}

void GetObjectsOfClass(const UClass* ClassToLookFor, TArray<UObject*>& Results, bool bIncludeDerivedClasses, EObjectFlags ExcludeFlags,
	EInternalObjectFlags ExclusionInternalFlags)
{
	ForEachObjectOfClass(ClassToLookFor, [&Results](UObject* Object) { Results.Add(Object); }, bIncludeDerivedClasses, ExcludeFlags, ExclusionInternalFlags);
}

namespace
{
	void VisitObjectsWithOuter(const UObject* Outer, TFunctionRef<bool(UObject*)> Operation, bool bIncludeNestedObjects, EObjectFlags ExclusionFlags,
		EInternalObjectFlags ExclusionInternalFlags, bool& bStop)
	{
		ForEachObjectWithOuterDirect(Outer, [&](UObject* Object) {
			if (Object->HasAnyFlags(ExclusionFlags) || Object->HasAnyInternalFlags(ExclusionInternalFlags))
			{
				return true;
			}
			if (!Operation(Object))
			{
				bStop = true;
				return false;
			}
			if (bIncludeNestedObjects)
			{
				VisitObjectsWithOuter(Object, Operation, true, ExclusionFlags, ExclusionInternalFlags, bStop);
			}
			return !bStop;
		});
	}
}

void ForEachObjectWithOuter(const UObject* Outer, TFunctionRef<void(UObject*)> Operation, bool bIncludeNestedObjects, EObjectFlags ExclusionFlags,
	EInternalObjectFlags ExclusionInternalFlags)
{
	if (!Outer)
	{
		return;
	}
	bool bStop = false;
	VisitObjectsWithOuter(Outer, [&Operation](UObject* Object) { Operation(Object); return true; }, bIncludeNestedObjects, ExclusionFlags, ExclusionInternalFlags, bStop);
}

void GetObjectsWithOuter(const UObject* Outer, TArray<UObject*>& Results, bool bIncludeNestedObjects, EObjectFlags ExclusionFlags,
	EInternalObjectFlags ExclusionInternalFlags)
{
	ForEachObjectWithOuter(Outer, [&Results](UObject* Object) { Results.Add(Object); }, bIncludeNestedObjects, ExclusionFlags, ExclusionInternalFlags);
}

UObject* FindObjectWithOuter(const UObject* Outer, const UClass* ClassToLookFor, FName NameToLookFor)
{
	UObject* Result = nullptr;
	if (!Outer)
	{
		return nullptr;
	}
	ForEachObjectWithOuterDirect(Outer, [&](UObject* Object) {
		if ((!ClassToLookFor || Object->IsA(ClassToLookFor)) && (NameToLookFor.IsNone() || Object->GetFName() == NameToLookFor))
		{
			Result = Object;
			return false;
		}
		return true;
	});
	return Result;
}

void GetObjectsWithPackage(const UPackage* Package, TArray<UObject*>& Results, bool bIncludeNestedObjects, EObjectFlags ExclusionFlags,
	EInternalObjectFlags ExclusionInternalFlags)
{
	GetObjectsWithOuter((const UObject*)Package, Results, bIncludeNestedObjects, ExclusionFlags, ExclusionInternalFlags);
}

void ForEachObjectWithPackage(const UPackage* Package, TFunctionRef<bool(UObject*)> Operation, bool bIncludeNestedObjects, EObjectFlags ExclusionFlags,
	EInternalObjectFlags ExclusionInternalFlags)
{
	if (!Package)
	{
		return;
	}
	bool bStop = false;
	VisitObjectsWithOuter((const UObject*)Package, Operation, bIncludeNestedObjects, ExclusionFlags, ExclusionInternalFlags, bStop);
}

void GetDerivedClasses(const UClass* ClassToLookFor, TArray<UClass*>& Results, bool bRecursive)
{
	ForEachObjectOfClass(UClass::StaticClass(), [&](UObject* Object) {
		UClass* Class = (UClass*)Object;
		if (Class == ClassToLookFor)
		{
			return;
		}
		if (bRecursive ? Class->IsChildOf(ClassToLookFor) : Class->GetSuperClass() == ClassToLookFor)
		{
			Results.Add(Class);
		}
	}, true, RF_NoFlags);
}
