#include "UObject/UObjectGlobals.h"
#include "UObject/Object.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/UnrealType.h"
#include "UObject/UObjectHash.h"
#include "UObject/UObjectIterator.h"
#include "ObjectRegistry.h"

#include <cstring>

#include <map>
#include <utility>

using namespace UE::CoreUObject::Private;

/** Lets the construction code read and fill the initializer's private state. */
struct FObjectConstructionAccess
{
	static FName& Name(FObjectInitializer& Initializer) { return Initializer.Name; }
	static UObject*& Outer(FObjectInitializer& Initializer) { return Initializer.Outer; }
	static const UClass*& Class(FObjectInitializer& Initializer) { return Initializer.Class; }
	static EObjectFlags& Flags(FObjectInitializer& Initializer) { return Initializer.Flags; }
	static UObject*& Archetype(FObjectInitializer& Initializer) { return Initializer.ObjectArchetype; }
	static bool& CopyTransients(FObjectInitializer& Initializer) { return Initializer.bCopyTransientsFromClassDefaults; }
};

namespace UE::CoreUObject::Private
{
	void ApplyInitializerToObject(FObjectInitializer& Initializer, UObjectBase* Object)
	{
		SetObjectName(Object, FObjectConstructionAccess::Name(Initializer));
		SetObjectOuter(Object, FObjectConstructionAccess::Outer(Initializer));
		SetObjectClass(Object, const_cast<UClass*>(FObjectConstructionAccess::Class(Initializer)));
		// The flags were set by the UObjectBase member initialiser to none; take the requested ones.
		SetObjectFlags(Object, FObjectConstructionAccess::Flags(Initializer) | RF_NeedInitialization);
	}

	namespace
	{
		bool ContainsPathDelimiter(const FString& Name)
		{
			int32 Index;
			return Name.FindChar(TEXT('.'), Index) || Name.FindChar(TEXT(':'), Index);
		}

		/** Counters of MakeUniqueObjectName, by (outer, class) object index: never by address, so names repeat across runs. */
		std::map<std::pair<int64, int64>, int32>& GetNameSuffixCounters()
		{
			static std::map<std::pair<int64, int64>, int32> Counters;
			return Counters;
		}

		int64 IndexKey(const UObjectBase* Object)
		{
			return Object ? (int64)Object->GetUniqueID() : -1;
		}

		/** True when any object (garbage included) named Name lives directly in Outer. */
		bool IsNameTaken(UObject* Outer, FName Name)
		{
			bool bTaken = false;
			ForEachObjectNamed(Name, [&](UObject* Object) {
				if (Object->GetOuter() == Outer)
				{
					bTaken = true;
					return false;
				}
				return true;
			}, true);
			return bTaken;
		}

		/** True for a class whose instances need values copied from an archetype (not only C++ constructor defaults). */
		bool NeedsArchetypeValues(const UClass* Class)
		{
			return !Class->HasAnyClassFlags(CLASS_Native) || Class->GetPropertiesSize() > Class->GetNativeSize();
		}

		/**
		 * A data-defined property must lie beyond the C++ part of every object it can be part of. One added to a
		 * native class that has a native subclass would overlap the subclass's C++ members; such a class is refused.
		 */
		bool HasOverlappingDataProperties(const UClass* Class, FString& OutProperty)
		{
			const int32 NativeSize = Class->GetNativeSize();
			for (const FProperty* Property = Class->PropertyLink; Property; Property = Property->PropertyLinkNext)
			{
				if (!Property->HasNativeOffset() && Property->GetOffset_ForInternal() < NativeSize)
				{
					OutProperty = Property->GetPathName();
					return true;
				}
			}
			return false;
		}

		/** Splits "A.B:C" into segments, returning false on empty segments. */
		bool SplitObjectPath(const FString& Path, TArray<FString>& OutSegments)
		{
			OutSegments.Reset();
			FString Current;
			for (TCHAR Char : Path)
			{
				if (Char == TEXT('.') || Char == TEXT(':'))
				{
					if (Current.IsEmpty())
					{
						return false;
					}
					OutSegments.Add(Current);
					Current.Reset();
				}
				else
				{
					Current.AppendChar(Char);
				}
			}
			if (Current.IsEmpty())
			{
				return false;
			}
			OutSegments.Add(Current);
			return true;
		}

		/** Reduces "Class'/Path.Obj'" and "\"/Path.Obj\"" to the bare path. */
		FString StripExportTextDecoration(const FString& InPath)
		{
			FString Path = InPath.TrimStartAndEnd();
			if (Path.Len() >= 2 && Path[0] == TEXT('"') && Path[Path.Len() - 1] == TEXT('"'))
			{
				Path = Path.Mid(1, Path.Len() - 2);
			}
			int32 QuoteIndex;
			if (Path.FindChar(TEXT('\''), QuoteIndex) && Path.Len() >= 2 && Path[Path.Len() - 1] == TEXT('\'') && QuoteIndex < Path.Len() - 1)
			{
				Path = Path.Mid(QuoteIndex + 1, Path.Len() - QuoteIndex - 2);
			}
			return Path;
		}
	}
}

// Construction

FStaticConstructObjectParameters::FStaticConstructObjectParameters(const UClass* InClass)
	: Class(InClass)
{
}

FObjectInitializer::FObjectInitializer(UObject* InObj, const FStaticConstructObjectParameters& StaticConstructParams)
	: Obj(InObj), ObjectArchetype(StaticConstructParams.Template), Class(StaticConstructParams.Class), Name(StaticConstructParams.Name),
	  Outer(StaticConstructParams.Outer), Flags(StaticConstructParams.SetFlags), bCopyTransientsFromClassDefaults(StaticConstructParams.bCopyTransientsFromClassDefaults)
{
}

UClass* FObjectInitializer::GetClass() const
{
	return const_cast<UClass*>(Class);
}

FObjectInitializer& FObjectInitializer::Get()
{
	FObjectInitializer* Initializer = GetTopInitializer();
	checkf(Initializer, TEXT("FObjectInitializer::Get() called outside of an object's construction"));
	return *Initializer;
}

UObject* FObjectInitializer::CreateDefaultSubobject(UObject* InOuter, FName SubobjectFName, const UClass* ReturnType, const UClass* ClassToCreateByDefault,
	bool bIsRequired, bool bIsTransient) const
{
	if (!InOuter || !ClassToCreateByDefault || SubobjectFName.IsNone())
	{
		LogError(TEXT("CreateDefaultSubobject needs an outer, a class and a name"));
		return nullptr;
	}
	if (ReturnType && !ClassToCreateByDefault->IsChildOf(ReturnType))
	{
		LogError(FString::Printf(TEXT("CreateDefaultSubobject: %s is not a %s"), *ClassToCreateByDefault->GetName(), *ReturnType->GetName()));
		return nullptr;
	}
	if (UObject* Existing = StaticFindObjectFast(nullptr, InOuter, SubobjectFName))
	{
		return Existing->IsA(ClassToCreateByDefault) ? Existing : nullptr;
	}
	EObjectFlags SubobjectFlags = (InOuter->GetMaskedFlags(RF_PropagateToSubObjects)) | RF_DefaultSubObject;
	if (InOuter->HasAnyFlags(RF_ClassDefaultObject | RF_ArchetypeObject))
	{
		SubobjectFlags |= RF_ArchetypeObject;
	}
	if (bIsTransient)
	{
		SubobjectFlags |= RF_Transient;
	}
	FStaticConstructObjectParameters Params(ClassToCreateByDefault);
	Params.Outer = InOuter;
	Params.Name = SubobjectFName;
	Params.SetFlags = SubobjectFlags;
	return StaticConstructObject_Internal(Params);
}

UObject* StaticConstructObject_Internal(const FStaticConstructObjectParameters& InParams)
{
	EnsureCompiledInTypesRegistered();

	const UClass* Class = InParams.Class;
	if (!Class)
	{
		LogError(TEXT("NewObject: no class given"));
		return nullptr;
	}
	const bool bIsCDO = (InParams.SetFlags & RF_ClassDefaultObject) != 0;
	if (Class->HasAnyClassFlags(CLASS_Abstract) && !bIsCDO)
	{
		LogError(FString::Printf(TEXT("NewObject: class %s is abstract; objects of it cannot be made"), *Class->GetPathName()));
		return nullptr;
	}
	if (!Class->ClassConstructor)
	{
		LogError(FString::Printf(TEXT("NewObject: class %s has no C++ constructor; give it a super class and call Bind() first"), *Class->GetPathName()));
		return nullptr;
	}
	if (Class->GetPropertiesSize() < Class->GetNativeSize() || Class->GetPropertiesSize() <= 0)
	{
		LogError(FString::Printf(TEXT("NewObject: class %s is not linked; call StaticLink() first"), *Class->GetPathName()));
		return nullptr;
	}

	FString OverlappingProperty;
	if (HasOverlappingDataProperties(Class, OverlappingProperty))
	{
		LogError(FString::Printf(TEXT("NewObject: %s was added to a native class but lies inside the C++ part of %s; give the native class that member in C++"),
			*OverlappingProperty, *Class->GetName()));
		return nullptr;
	}

	const bool bIsPackage = Class->IsChildOf(UPackage::StaticClass());
	UObject* Outer = InParams.Outer;
	if (bIsPackage && Outer)
	{
		LogError(FString::Printf(TEXT("NewObject: a package cannot be made inside %s"), *Outer->GetPathName()));
		return nullptr;
	}
	if (!Outer && !bIsPackage)
	{
		Outer = GetTransientPackage();
	}
	// Default objects and archetypes live where their class or template puts them, whatever the class's Within.
	const bool bDefaultsOrArchetype = (InParams.SetFlags & (RF_ClassDefaultObject | RF_ArchetypeObject)) != 0;
	if (Outer && Class->ClassWithin && !bDefaultsOrArchetype && !Outer->IsA(Class->ClassWithin))
	{
		LogError(FString::Printf(TEXT("NewObject: objects of class %s must live inside a %s, not in %s"), *Class->GetName(), *Class->ClassWithin->GetName(),
			*Outer->GetFullName()));
		return nullptr;
	}

	FName Name = InParams.Name;
	if (Name.IsNone())
	{
		Name = MakeUniqueObjectName(Outer, Class);
	}
	else
	{
		const FString NameString = Name.ToString();
		if (ContainsPathDelimiter(NameString))
		{
			LogError(FString::Printf(TEXT("NewObject: the name '%s' contains '.' or ':', which separate the parts of an object path"), *NameString));
			return nullptr;
		}
		if (bIsPackage && !NameString.StartsWith(TEXT("/")))
		{
			LogError(FString::Printf(TEXT("NewObject: package name '%s' must start with '/'"), *NameString));
			return nullptr;
		}
		if (UObject* Existing = StaticFindObjectFast(nullptr, Outer, Name))
		{
			LogError(FString::Printf(TEXT("NewObject: %s already exists; pick another name (MakeUniqueObjectName)"), *Existing->GetFullName()));
			return nullptr;
		}
	}

	UObject* Archetype = InParams.Template;
	if (!Archetype)
	{
		if (bIsCDO)
		{
			Archetype = Class->GetArchetypeForCDO();
		}
		else if (NeedsArchetypeValues(Class))
		{
			Archetype = Class->GetDefaultObject();
		}
	}
	if (Archetype && Archetype->GetClass() && !Class->IsChildOf(Archetype->GetClass()) && !Archetype->GetClass()->IsChildOf(Class))
	{
		LogError(FString::Printf(TEXT("NewObject: template %s does not share a class chain with %s"), *Archetype->GetFullName(), *Class->GetName()));
		return nullptr;
	}

	FStaticConstructObjectParameters Params(InParams);
	Params.Outer = Outer;
	Params.Name = Name;
	Params.Template = Archetype;

	const SIZE_T Size = (SIZE_T)Class->GetPropertiesSize();
	void* Memory = AllocateObjectMemory(Size, ObjectAlignment);
	UObject* Object = (UObject*)Memory;
	FObjectInitializer Initializer(Object, Params);
	PushInitializer(&Initializer);
	Class->ClassConstructor(Initializer);

	// Values beyond the C++ part (data-defined properties) start from their type's initial value (the memory
	// starts zeroed, which is already that value for zero-constructed types).
	for (FProperty* Property = Class->PropertyLink; Property; Property = Property->PropertyLinkNext)
	{
		if (!Property->HasNativeOffset() && !Property->HasAnyPropertyFlags(CPF_ZeroConstructor))
		{
			Property->InitializeValue_InContainer(Object);
		}
	}

	// Then defaults from the archetype: every property for data-defined classes or explicit templates, the
	// data-defined ones only for native classes (whose constructor already set the C++ members).
	if (Archetype)
	{
		const bool bCopyNative = InParams.Template != nullptr || !Class->HasAnyClassFlags(CLASS_Native) || InParams.bCopyTransientsFromClassDefaults;
		const UClass* ArchetypeClass = Archetype->GetClass();
		// Usually the archetype is of the class itself (its default object), which has every property.
		const bool bArchetypeHasAll = ArchetypeClass->IsChildOf(Class);
		for (FProperty* Property = Class->PropertyLink; Property; Property = Property->PropertyLinkNext)
		{
			if (!bCopyNative && Property->HasNativeOffset())
			{
				continue;
			}
			const UStruct* Owner = bArchetypeHasAll ? nullptr : Property->GetOwnerStruct();
			if (bArchetypeHasAll || (Owner && ArchetypeClass->IsChildOf(Owner)))
			{
				if (Property->HasAnyPropertyFlags(CPF_IsPlainOldData))
				{
					const int32 Offset = Property->GetOffset_ForInternal();
					std::memcpy((uint8*)Object + Offset, (const uint8*)Archetype + Offset, (SIZE_T)Property->GetSize());
				}
				else
				{
					Property->CopyCompleteValue_InContainer(Object, Archetype);
				}
			}
		}
	}

	Object->ClearFlags(RF_NeedInitialization);
	PopInitializer();
	Object->PostInitProperties();
	return Object;
}

// Names

FName MakeUniqueObjectName(UObject* Parent, const UClass* Class, FName InBaseName)
{
	check(Class);
	EnsureCompiledInTypesRegistered();
	FName BaseName = InBaseName;
	if (BaseName.IsNone())
	{
		if (Class->IsChildOf(UPackage::StaticClass()))
		{
			BaseName = FName(TEXT("/Temp/Untitled"));
		}
		else
		{
			FString ClassName = Class->GetName();
			// Objects of a Blueprint class are named after the Blueprint, without the generated "_C".
			if (Class->HasAnyClassFlags(CLASS_CompiledFromBlueprint))
			{
				ClassName.RemoveFromEnd(TEXT("_C"), ESearchCase::CaseSensitive);
			}
			BaseName = FName(*ClassName);
		}
	}

	int32& Counter = GetNameSuffixCounters()[{ IndexKey(Parent), IndexKey(Class) }];
	FName TestName;
	do
	{
		++Counter;
		// Counter is the internal number: 1 prints as "_0".
		TestName = FName(BaseName, Counter);
	} while (IsNameTaken(Parent, TestName));
	return TestName;
}

bool IsValidObjectName(const FName& Name, FText& OutReason)
{
	return FName::IsValidXName(Name, INVALID_OBJECTNAME_CHARACTERS, &OutReason);
}

// Finding

UObject* StaticFindObjectFast(UClass* Class, UObject* InOuter, FName InName, bool bExactClass, EObjectFlags ExclusiveFlags,
	EInternalObjectFlags ExclusiveInternalFlags)
{
	EnsureCompiledInTypesRegistered();
	if (InName.IsNone())
	{
		return nullptr;
	}
	UObject* Result = nullptr;
	ForEachObjectNamed(InName, [&](UObject* Object) {
		if (Object->GetOuter() != InOuter || Object->HasAnyFlags(ExclusiveFlags))
		{
			return true;
		}
		if (ExclusiveInternalFlags != EInternalObjectFlags::None && Object->HasAnyInternalFlags(ExclusiveInternalFlags))
		{
			return true;
		}
		if (Class && !(bExactClass ? Object->GetClass() == Class : Object->IsA(Class)))
		{
			return true;
		}
		Result = Object;
		return false;
	});
	return Result;
}

namespace
{
	/** Walks Segments from Outer; the last segment is matched with Class. */
	UObject* FindBySegments(UClass* Class, UObject* Outer, const TArray<FString>& Segments, bool bExactClass)
	{
		for (int32 Index = 0; Index < Segments.Num(); ++Index)
		{
			const bool bLast = Index == Segments.Num() - 1;
			const FName SegmentName(*Segments[Index], FNAME_Find);
			if (SegmentName.IsNone())
			{
				return nullptr;
			}
			Outer = StaticFindObjectFast(bLast ? Class : nullptr, Outer, SegmentName, bLast && bExactClass);
			if (!Outer)
			{
				return nullptr;
			}
		}
		return Outer;
	}
}

namespace
{
	/** A path that needs no trimming or unquoting: no surrounding white space, no quotes. */
	bool IsBarePath(const TCHAR* Path, int32& OutLen)
	{
		if (FChar::IsWhitespace(*Path) || *Path == TEXT('"'))
		{
			return false;
		}
		const TCHAR* Char = Path;
		for (; *Char; ++Char)
		{
			if (*Char == TEXT('\'') || *Char == TEXT('"'))
			{
				return false;
			}
		}
		OutLen = int32(Char - Path);
		return !FChar::IsWhitespace(Char[-1]);
	}

	/** FindBySegments on "A.B:C" read in place (no copies of the segments). */
	UObject* FindByBarePath(UClass* Class, UObject* Outer, const TCHAR* Path, int32 Len, bool bExactClass)
	{
		int32 Start = 0;
		for (int32 Index = 0; Index <= Len; ++Index)
		{
			const bool bLast = Index == Len;
			if (!bLast && Path[Index] != TEXT('.') && Path[Index] != TEXT(':'))
			{
				continue;
			}
			if (Index == Start)
			{
				return nullptr;
			}
			const FName SegmentName(Index - Start, Path + Start, FNAME_Find);
			if (SegmentName.IsNone())
			{
				return nullptr;
			}
			Outer = StaticFindObjectFast(bLast ? Class : nullptr, Outer, SegmentName, bLast && bExactClass);
			if (!Outer)
			{
				return nullptr;
			}
			Start = Index + 1;
		}
		return Outer;
	}
}

UObject* StaticFindObject(UClass* Class, UObject* InOuter, const TCHAR* InName, bool bExactClass)
{
	// First: the path's segments are looked up as existing names, which queued registrations may still have to add.
	EnsureCompiledInTypesRegistered();
	if (!InName || !*InName)
	{
		return nullptr;
	}
	int32 BareLen = 0;
	if (IsBarePath(InName, BareLen))
	{
		return FindByBarePath(Class, InOuter, InName, BareLen, bExactClass);
	}
	const FString Path = StripExportTextDecoration(FString(InName));
	if (Path.IsEmpty() || Path == TEXT("None"))
	{
		return nullptr;
	}
	TArray<FString> Segments;
	if (!SplitObjectPath(Path, Segments))
	{
		return nullptr;
	}
	return FindBySegments(Class, InOuter, Segments, bExactClass);
}

UObject* StaticFindObject(UClass* Class, FTopLevelAssetPath ObjectPath, bool bExactClass)
{
	EnsureCompiledInTypesRegistered();
	if (ObjectPath.IsNull())
	{
		return nullptr;
	}
	UObject* Package = StaticFindObjectFast(UPackage::StaticClass(), nullptr, ObjectPath.GetPackageName());
	if (!Package)
	{
		return nullptr;
	}
	if (ObjectPath.GetAssetName().IsNone())
	{
		return (!Class || Package->IsA(Class)) ? Package : nullptr;
	}
	return StaticFindObjectFast(Class, Package, ObjectPath.GetAssetName(), bExactClass);
}

UObject* StaticFindObjectChecked(UClass* Class, UObject* InOuter, const TCHAR* Name, bool bExactClass)
{
	UObject* Result = StaticFindObject(Class, InOuter, Name, bExactClass);
	checkf(Result, TEXT("Failed to find object '%s %s.%s'"), Class ? *Class->GetName() : TEXT("None"), InOuter ? *InOuter->GetPathName() : TEXT("None"), Name);
	return Result;
}

UObject* StaticFindObjectSafe(UClass* Class, UObject* InOuter, const TCHAR* Name, bool bExactClass)
{
	return StaticFindObject(Class, InOuter, Name, bExactClass);
}

UObject* StaticFindFirstObject(UClass* Class, const TCHAR* Name, EFindFirstObjectOptions Options)
{
	if (!Name || !*Name)
	{
		return nullptr;
	}
	const FString Path = StripExportTextDecoration(FString(Name));
	const bool bExactClass = EnumHasAnyFlags(Options, EFindFirstObjectOptions::ExactClass);
	int32 DelimiterIndex;
	if (Path.StartsWith(TEXT("/")) || Path.FindChar(TEXT('.'), DelimiterIndex) || Path.FindChar(TEXT(':'), DelimiterIndex))
	{
		return StaticFindObject(Class, nullptr, *Path, bExactClass);
	}

	EnsureCompiledInTypesRegistered();
	const FName ShortName(*Path, FNAME_Find);
	if (ShortName.IsNone())
	{
		return nullptr;
	}
	TArray<UObject*> Matches;
	ForEachObjectNamed(ShortName, [&](UObject* Object) {
		if (!Class || (bExactClass ? Object->GetClass() == Class : Object->IsA(Class)))
		{
			Matches.Add(Object);
		}
		return true;
	});
	if (Matches.IsEmpty())
	{
		return nullptr;
	}
	UObject* Result = Matches[0];
	if (EnumHasAnyFlags(Options, EFindFirstObjectOptions::NativeFirst))
	{
		for (UObject* Match : Matches)
		{
			UPackage* Package = Match->GetPackage();
			if (Package && Package->HasAnyPackageFlags(PKG_CompiledIn))
			{
				Result = Match;
				break;
			}
		}
	}
	if (Matches.Num() > 1 && EnumHasAnyFlags(Options, EFindFirstObjectOptions::EnsureIfAmbiguous))
	{
		FString Candidates;
		for (UObject* Match : Matches)
		{
			Candidates += FString::Printf(TEXT(" %s"), *Match->GetPathName());
		}
		LogWarning(FString::Printf(TEXT("'%s' is ambiguous (%d objects):%s; using %s"), *Path, Matches.Num(), *Candidates, *Result->GetPathName()));
	}
	return Result;
}

bool ResolveName(UObject*& InOutOuter, FString& InOutName, bool bCreate, bool bThrow, uint32 LoadFlags, const FLinkerInstancingContext* InstancingContext)
{
	FString Path = StripExportTextDecoration(InOutName);
	TArray<FString> Segments;
	if (!SplitObjectPath(Path, Segments))
	{
		return false;
	}
	for (int32 Index = 0; Index < Segments.Num() - 1; ++Index)
	{
		UObject* Next = StaticFindObjectFast(nullptr, InOutOuter, FName(*Segments[Index]));
		if (!Next && InOutOuter == nullptr && bCreate)
		{
			Next = CreatePackage(*Segments[Index]);
		}
		if (!Next)
		{
			if (bThrow)
			{
				LogError(FString::Printf(TEXT("Cannot resolve '%s': '%s' not found"), *InOutName, *Segments[Index]));
			}
			return false;
		}
		InOutOuter = Next;
	}
	InOutName = Segments.Last();
	return true;
}

// Loading

// LoadPackage is defined by the package loader (Private/UObject/LoadPackage.cpp).

UObject* StaticLoadObject(UClass* Class, UObject* InOuter, const TCHAR* InName, const TCHAR* Filename, uint32 LoadFlags, void* Sandbox,
	bool bAllowObjectReconciliation, const FLinkerInstancingContext* InstancingContext)
{
	const bool bQuiet = (LoadFlags & (LOAD_NoWarn | LOAD_Quiet)) != 0;
	if (!InName || !*InName)
	{
		if (!bQuiet)
		{
			LogError(TEXT("LoadObject: empty name"));
		}
		return nullptr;
	}
	if (UObject* Found = StaticFindObject(Class, InOuter, InName))
	{
		return Found;
	}

	FString Path = StripExportTextDecoration(FString(InName));
	if (!InOuter && Path.StartsWith(TEXT("/")))
	{
		int32 DotIndex;
		int32 ColonIndex;
		const bool bHasDot = Path.FindChar(TEXT('.'), DotIndex);
		const bool bHasColon = Path.FindChar(TEXT(':'), ColonIndex);
		int32 PackageEnd = Path.Len();
		if (bHasDot)
		{
			PackageEnd = DotIndex;
		}
		if (bHasColon && ColonIndex < PackageEnd)
		{
			PackageEnd = ColonIndex;
		}
		const FString PackageName = Path.Left(PackageEnd);
		if (!bHasDot && !bHasColon)
		{
			// "/Game/Folder/Asset" names the asset named like its package.
			int32 SlashIndex;
			Path.FindLastChar(TEXT('/'), SlashIndex);
			Path = PackageName + TEXT(".") + Path.RightChop(SlashIndex + 1);
		}
		if (LoadPackage(nullptr, *PackageName, LoadFlags))
		{
			if (UObject* Loaded = StaticFindObject(Class, nullptr, *Path))
			{
				return Loaded;
			}
		}
	}
	if (!bQuiet)
	{
		LogWarning(FString::Printf(TEXT("Failed to find object '%s %s'"), Class ? *Class->GetName() : TEXT("Object"), InName));
	}
	return nullptr;
}

UClass* StaticLoadClass(UClass* BaseClass, UObject* InOuter, const TCHAR* Name, const TCHAR* Filename, uint32 LoadFlags, void* Sandbox)
{
	UClass* Class = (UClass*)StaticLoadObject(UClass::StaticClass(), InOuter, Name, Filename, LoadFlags, Sandbox);
	if (Class && BaseClass && !Class->IsChildOf(BaseClass))
	{
		LogError(FString::Printf(TEXT("LoadClass: %s is not a child class of %s"), *Class->GetPathName(), *BaseClass->GetPathName()));
		return nullptr;
	}
	return Class;
}

// Packages

UPackage* CreatePackage(const TCHAR* PackageName)
{
	EnsureCompiledInTypesRegistered();
	FString Name = PackageName ? FString(PackageName) : FString();
	if (Name.IsEmpty())
	{
		Name = MakeUniqueObjectName(nullptr, UPackage::StaticClass()).ToString();
	}
	if (!Name.StartsWith(TEXT("/")) || ContainsPathDelimiter(Name) || Name.Contains(TEXT("//")) || Name.Len() < 2)
	{
		LogError(FString::Printf(TEXT("CreatePackage: '%s' is not a long package name (\"/Root/Path/Name\")"), *Name));
		return nullptr;
	}
	const FName PackageFName(*Name);
	if (UObject* Existing = StaticFindObjectFast(UPackage::StaticClass(), nullptr, PackageFName))
	{
		return (UPackage*)Existing;
	}
	UPackage* Package = NewObject<UPackage>(nullptr, UPackage::StaticClass(), PackageFName, RF_Public);
	if (Package && !Name.StartsWith(TEXT("/Script/")))
	{
		Package->SetPackageFlags(PKG_NewlyCreated);
	}
	return Package;
}

UPackage* GetTransientPackage()
{
	static UPackage* TransientPackage = nullptr;
	if (!TransientPackage)
	{
		TransientPackage = NewObject<UPackage>(nullptr, UPackage::StaticClass(), FName(TEXT("/Engine/Transient")), RF_Transient | RF_Public);
		TransientPackage->AddToRoot();
	}
	return TransientPackage;
}

// Garbage

namespace UE::CoreUObject::Private
{
	void DestroyObject(UObject* Object)
	{
		if (UClass* Class = Object->GetClass())
		{
			for (FProperty* Property = Class->DestructorLink; Property; Property = Property->DestructorLinkNext)
			{
				if (!Property->HasNativeOffset())
				{
					Property->DestroyValue_InContainer(Object);
				}
			}
		}
		Object->~UObject();
		FreeObjectMemory(Object, ObjectAlignment);
	}
}

void CollectGarbage(EObjectFlags KeepFlags, bool bPerformFullPurge)
{
	const int32 Num = GUObjectArray.GetObjectArrayNum();
	TArray<uint8> Dies;
	Dies.SetNumZeroed(Num);

	auto ItemAt = [](int32 Index) { return GUObjectArray.IndexToObject(Index); };
	auto IndexOf = [](const UObjectBase* Object) { return Object ? (int32)Object->GetUniqueID() : INDEX_NONE; };

	// Garbage that is not kept, and everything inside it.
	bool bChanged = true;
	for (int32 Index = 0; Index < Num; ++Index)
	{
		FUObjectItem* Item = ItemAt(Index);
		if (Item && Item->Object && Item->IsGarbage() && !Item->IsRootSet() && !((UObject*)Item->Object)->HasAnyFlags(KeepFlags))
		{
			Dies[Index] = 1;
		}
	}
	while (bChanged)
	{
		bChanged = false;
		for (int32 Index = 0; Index < Num; ++Index)
		{
			FUObjectItem* Item = ItemAt(Index);
			if (!Item || !Item->Object || Dies[Index] || Item->IsRootSet())
			{
				continue;
			}
			UObject* Object = (UObject*)Item->Object;
			const int32 OuterIndex = IndexOf(Object->GetOuter());
			if (OuterIndex != INDEX_NONE && Dies[OuterIndex])
			{
				Dies[Index] = 1;
				bChanged = true;
			}
		}
	}

	// A class's default object goes with the class.
	for (int32 Index = 0; Index < Num; ++Index)
	{
		FUObjectItem* Item = ItemAt(Index);
		if (Item && Item->Object && Dies[Index] && ((UObject*)Item->Object)->IsA(UClass::StaticClass()))
		{
			const int32 CDOIndex = IndexOf(((UClass*)Item->Object)->GetDefaultObject(false));
			if (CDOIndex != INDEX_NONE)
			{
				Dies[CDOIndex] = 1;
			}
		}
	}

	// A surviving object keeps alive its outers, its class (with the class's default object, super
	// classes, functions and the types its properties name), so nothing that lives points at freed memory.
	struct FKeeper
	{
		TArray<uint8>& Dies;
		bool bChanged = false;

		void Keep(UObject* Object)
		{
			if (!Object)
			{
				return;
			}
			const int32 Index = (int32)Object->GetUniqueID();
			if (!Dies.IsValidIndex(Index) || !Dies[Index])
			{
				return;
			}
			Dies[Index] = 0;
			bChanged = true;
		}

		void KeepDependencies(UObject* Object)
		{
			Keep(Object->GetOuter());
			Keep(Object->GetClass());
			if (!Object->IsA(UStruct::StaticClass()))
			{
				return;
			}
			UStruct* Struct = (UStruct*)Object;
			Keep(Struct->GetSuperStruct());
			for (UField* Child = Struct->Children; Child; Child = Child->Next)
			{
				Keep(Child);
			}
			for (FField* Field = Struct->ChildProperties; Field; Field = Field->Next)
			{
				if (FProperty* Property = CastField<FProperty>(Field))
				{
					ForEachTypeReference(Property, [this](UObject* Type) { Keep(Type); });
				}
			}
			if (Object->IsA(UClass::StaticClass()))
			{
				UClass* Class = (UClass*)Object;
				Keep(Class->GetDefaultObject(false));
				Keep(Class->ClassWithin);
				for (const FImplementedInterface& Interface : Class->Interfaces)
				{
					Keep(Interface.Class);
				}
			}
		}
	};
	FKeeper Keeper{ Dies };
	do
	{
		Keeper.bChanged = false;
		for (int32 Index = 0; Index < Num; ++Index)
		{
			FUObjectItem* Item = ItemAt(Index);
			if (Item && Item->Object && !Dies[Index])
			{
				Keeper.KeepDependencies((UObject*)Item->Object);
			}
		}
	} while (Keeper.bChanged);

	TSet<UObject*> Dying;
	for (int32 Index = 0; Index < Num; ++Index)
	{
		if (Dies[Index])
		{
			Dying.Add((UObject*)ItemAt(Index)->Object);
		}
	}
	if (Dying.IsEmpty())
	{
		return;
	}

	// Surviving references to freed objects become null, as the engine's collector clears them.
	for (int32 Index = 0; Index < Num; ++Index)
	{
		FUObjectItem* Item = ItemAt(Index);
		if (!Item || !Item->Object || Dies[Index])
		{
			continue;
		}
		UObject* Object = (UObject*)Item->Object;
		if (UClass* Class = Object->GetClass())
		{
			ForEachObjectReferenceInStruct(Class, Object, [&Dying](UObject*& Reference) {
				if (Reference && Dying.Contains(Reference))
				{
					Reference = nullptr;
				}
			});
		}
	}

	for (int32 Index = 0; Index < Num; ++Index)
	{
		if (Dies[Index])
		{
			UObject* Object = (UObject*)ItemAt(Index)->Object;
			SetInternalFlags(Object, EInternalObjectFlags::Unreachable, true);
			Object->ConditionalBeginDestroy();
		}
	}
	for (int32 Index = 0; Index < Num; ++Index)
	{
		if (Dies[Index])
		{
			((UObject*)ItemAt(Index)->Object)->ConditionalFinishDestroy();
		}
	}
	// Newest first: instances go before their classes, inner objects before their outers.
	BeginUnregisterBatch();
	for (int32 Index = Num - 1; Index >= 0; --Index)
	{
		if (Dies[Index])
		{
			DestroyObject((UObject*)ItemAt(Index)->Object);
		}
	}
	EndUnregisterBatch();
}

// Duplication

FObjectDuplicationParameters::FObjectDuplicationParameters(UObject* InSourceObject, UObject* InDestOuter)
	: SourceObject(InSourceObject), DestOuter(InDestOuter)
{
}

UObject* StaticDuplicateObjectEx(FObjectDuplicationParameters& Parameters)
{
	UObject* Source = Parameters.SourceObject;
	if (!Source)
	{
		return nullptr;
	}
	UObject* DestOuter = Parameters.DestOuter ? Parameters.DestOuter : (UObject*)GetTransientPackage();
	UClass* DestClass = Parameters.DestClass ? Parameters.DestClass : Source->GetClass();
	if (!DestClass->IsChildOf(Source->GetClass()) && !Source->GetClass()->IsChildOf(DestClass))
	{
		LogError(FString::Printf(TEXT("DuplicateObject: %s cannot become a %s"), *Source->GetFullName(), *DestClass->GetName()));
		return nullptr;
	}
	for (const UObject* Check = DestOuter; Check; Check = Check->GetOuter())
	{
		if (Check == Source)
		{
			LogError(FString::Printf(TEXT("DuplicateObject: %s cannot be copied into itself"), *Source->GetFullName()));
			return nullptr;
		}
	}

	// The source and everything inside it, outers before the objects they hold. Objects that refuse
	// duplication (RF_DuplicateTransient) stay behind with everything inside them.
	TArray<UObject*> Sources;
	Sources.Add(Source);
	for (int32 Index = 0; Index < Sources.Num(); ++Index)
	{
		ForEachObjectWithOuterDirect(Sources[Index], [&Sources](UObject* Inner) {
			if (!Inner->HasAnyFlags(RF_DuplicateTransient))
			{
				Sources.Add(Inner);
			}
			return true;
		});
	}

	TMap<UObject*, UObject*> Copies;
	for (UObject* Original : Sources)
	{
		const bool bIsRoot = Original == Source;
		UObject* CopyOuter = bIsRoot ? DestOuter : Copies.FindRef(Original->GetOuter());
		if (!CopyOuter)
		{
			continue;
		}
		const FName CopyName = bIsRoot ? (Parameters.DestName.IsNone() ? MakeUniqueObjectName(DestOuter, DestClass) : Parameters.DestName) : Original->GetFName();
		UObject* Copy = nullptr;
		if (!bIsRoot)
		{
			// The copy's constructor may already have made this subobject (a default subobject).
			UObject* Existing = StaticFindObjectFast(nullptr, CopyOuter, CopyName);
			if (Existing && Existing->GetClass() == Original->GetClass())
			{
				Copy = Existing;
			}
		}
		if (!Copy)
		{
			FStaticConstructObjectParameters Params(bIsRoot ? DestClass : Original->GetClass());
			Params.Outer = CopyOuter;
			Params.Name = CopyName;
			Params.SetFlags = (Original->GetMaskedFlags(Parameters.FlagMask) | Parameters.ApplyFlags) & ~(RF_ClassDefaultObject | RF_MirroredGarbage);
			Copy = StaticConstructObject_Internal(Params);
		}
		if (!Copy)
		{
			LogError(FString::Printf(TEXT("DuplicateObject: could not make the copy of %s"), *Original->GetFullName()));
			return nullptr;
		}
		Copies.Add(Original, Copy);
	}

	for (const TPair<UObject*, UObject*>& Pair : Copies)
	{
		UObject* Original = Pair.Key;
		UObject* Copy = Pair.Value;
		const UClass* SharedClass = Copy->GetClass()->IsChildOf(Original->GetClass()) ? Original->GetClass() : Copy->GetClass();
		for (FProperty* Property = SharedClass->PropertyLink; Property; Property = Property->PropertyLinkNext)
		{
			if (!Property->HasAnyPropertyFlags(CPF_DuplicateTransient))
			{
				Property->CopyCompleteValue_InContainer(Copy, Original);
			}
		}
		// References into the copied objects follow them to their copies.
		ForEachObjectReferenceInStruct(Copy->GetClass(), Copy, [&Copies](UObject*& Reference) {
			if (UObject* const* Redirected = Copies.Find(Reference))
			{
				Reference = *Redirected;
			}
		});
	}
	for (const TPair<UObject*, UObject*>& Pair : Copies)
	{
		Pair.Value->PostDuplicate(false);
	}
	if (Parameters.CreatedObjects)
	{
		*Parameters.CreatedObjects = Copies;
	}
	return Copies.FindRef(Source);
}

UObject* StaticDuplicateObject(const UObject* SourceObject, UObject* DestOuter, const FName DestName, EObjectFlags FlagMask, UClass* DestClass)
{
	FObjectDuplicationParameters Parameters(const_cast<UObject*>(SourceObject), DestOuter);
	Parameters.DestName = DestName;
	Parameters.FlagMask = FlagMask;
	Parameters.DestClass = DestClass;
	return StaticDuplicateObjectEx(Parameters);
}

UObject* DuplicateObject_Internal(UClass* Class, const UObject* SourceObject, UObject* DestOuter, const FName DestName)
{
	UObject* Copy = StaticDuplicateObject(SourceObject, DestOuter, DestName);
	if (Copy && Class && !Copy->IsA(Class))
	{
		LogError(FString::Printf(TEXT("DuplicateObject: the copy of %s is not a %s"), *SourceObject->GetFullName(), *Class->GetName()));
		return nullptr;
	}
	return Copy;
}
