#include "UObject/Class.h"
#include "UObject/UnrealType.h"
#include "UObject/Package.h"
#include "UObject/Interface.h"
#include "UObject/UObjectIterator.h"
#include "UObject/TopLevelAssetPath.h"
#include "Misc/CString.h"
#include "ObjectRegistry.h"

using namespace UE::CoreUObject::Private;

// Registration of compiled-in types

namespace
{
	struct FCompiledInRegistry
	{
		static FCompiledInRegistry& Get()
		{
			static FCompiledInRegistry Registry;
			return Registry;
		}

		/** Functions that build a compiled-in type on first call (StaticClass, StaticStruct...), not yet called. */
		TArray<UObject* (*)()> PendingTypes;
		/** Functions run once after the compiled-in types are registered. */
		TArray<void (*)()> PendingCallbacks;
		/** Types built but not yet given their package and slot in the object array. */
		TArray<TPair<UObject*, const TCHAR*>> Deferred;
		int32 Depth = 0;
		/** Set while queued callbacks run: their own lookups register new types but do not start the callbacks again. */
		bool bRunningCallbacks = false;
	};

	void ProcessDeferredRegistrations()
	{
		FCompiledInRegistry& Registry = FCompiledInRegistry::Get();
		while (!Registry.Deferred.IsEmpty())
		{
			const TPair<UObject*, const TCHAR*> Entry = Registry.Deferred[0];
			Registry.Deferred.RemoveAt(0);
			UObject* Object = Entry.Key;
			UPackage* Package = (UPackage*)StaticFindObjectFast(UPackage::StaticClass(), nullptr, FName(Entry.Value));
			if (!Package)
			{
				Package = NewObject<UPackage>(nullptr, UPackage::StaticClass(), FName(Entry.Value), RF_Public | RF_Standalone);
			}
			Package->SetPackageFlags(PKG_CompiledIn);
			SetObjectOuter(Object, Package);
			RegisterObject(Object);
			SetInternalFlags(Object, EInternalObjectFlags::RootSet | EInternalObjectFlags::Native, true);
		}
	}

	/** Restores declaration order after properties were prepended by AddCppProperty. */
	void ReverseChildProperties(UStruct* Struct)
	{
		FField* Reversed = nullptr;
		FField* Field = Struct->ChildProperties;
		while (Field)
		{
			FField* Next = Field->Next;
			Field->Next = Reversed;
			Reversed = Field;
			Field = Next;
		}
		Struct->ChildProperties = Reversed;
	}

	int32 AlignUp(int32 Value, int32 Alignment)
	{
		return Alignment > 1 ? (Value + Alignment - 1) / Alignment * Alignment : Value;
	}

	/** True when a value of the property holds hard object references. */
	bool ContainsObjectReference(const FProperty* Property)
	{
		if (CastField<FObjectProperty>(Property) || CastField<FInterfaceProperty>(Property))
		{
			return true;
		}
		if (const FStructProperty* StructProperty = CastField<FStructProperty>(Property))
		{
			return StructProperty->Struct && StructProperty->Struct->RefLink != nullptr;
		}
		if (const FArrayProperty* ArrayProperty = CastField<FArrayProperty>(Property))
		{
			return ArrayProperty->Inner && ContainsObjectReference(ArrayProperty->Inner);
		}
		if (const FSetProperty* SetProperty = CastField<FSetProperty>(Property))
		{
			return SetProperty->ElementProp && ContainsObjectReference(SetProperty->ElementProp);
		}
		if (const FMapProperty* MapProperty = CastField<FMapProperty>(Property))
		{
			return (MapProperty->KeyProp && ContainsObjectReference(MapProperty->KeyProp)) || (MapProperty->ValueProp && ContainsObjectReference(MapProperty->ValueProp));
		}
		return false;
	}
}

namespace UE::CoreUObject::Private
{
	FNativeConstructionScope::FNativeConstructionScope()
	{
		++FCompiledInRegistry::Get().Depth;
	}

	FNativeConstructionScope::~FNativeConstructionScope()
	{
		FCompiledInRegistry& Registry = FCompiledInRegistry::Get();
		if (Registry.Depth == 1)
		{
			// Still counted as busy while giving packages to the types built in this scope.
			ProcessDeferredRegistrations();
		}
		--Registry.Depth;
	}

	bool IsRegisteringCompiledInTypes()
	{
		return FCompiledInRegistry::Get().Depth > 0;
	}

	void DeferRegistration(UObject* Object, const TCHAR* PackageName)
	{
		FCompiledInRegistry::Get().Deferred.Add(TPair<UObject*, const TCHAR*>(Object, PackageName));
	}

	void EnsureCompiledInTypesRegistered()
	{
		FCompiledInRegistry& Registry = FCompiledInRegistry::Get();
		if (Registry.Depth > 0)
		{
			return;
		}
		if (!Registry.PendingTypes.IsEmpty() || !Registry.Deferred.IsEmpty())
		{
			// Closing the scope gives the types built in it their package and slot, so they are findable after.
			FNativeConstructionScope Scope;
			while (!Registry.PendingTypes.IsEmpty())
			{
				UObject* (*Register)() = Registry.PendingTypes[0];
				Registry.PendingTypes.RemoveAt(0);
				Register();
			}
		}
		if (Registry.bRunningCallbacks || Registry.PendingCallbacks.IsEmpty())
		{
			return;
		}
		// Outside any construction scope, so what a callback builds or looks up is registered at once; each
		// callback is taken off the queue before it runs, and one queued by a callback runs after it.
		Registry.bRunningCallbacks = true;
		while (!Registry.PendingCallbacks.IsEmpty())
		{
			void (*Callback)() = Registry.PendingCallbacks[0];
			Registry.PendingCallbacks.RemoveAt(0);
			Callback();
		}
		Registry.bRunningCallbacks = false;
	}

	FRegisterCompiledInCallback::FRegisterCompiledInCallback(void (*Callback)())
	{
		FCompiledInRegistry::Get().PendingCallbacks.Add(Callback);
	}

	FRegisterCompiledInClass::FRegisterCompiledInClass(UClass* (*StaticClassFn)())
	{
		FCompiledInRegistry::Get().PendingTypes.Add((UObject* (*)())StaticClassFn);
	}

	FRegisterCompiledInType::FRegisterCompiledInType(UObject* (*RegisterFn)())
	{
		FCompiledInRegistry::Get().PendingTypes.Add(RegisterFn);
	}

	void GetPrivateStaticClassBody(const TCHAR* PackageName, const TCHAR* Name, UClass*& ReturnClass, void (*RegisterNativeFunc)(UClass*), uint32 InSize,
		uint32 InAlignment, EClassFlags InClassFlags, EClassCastFlags InClassCastFlags, const TCHAR* InConfigName,
		void (*InClassConstructor)(const FObjectInitializer&), UClass* (*InSuperClassFn)(), UClass* (*InWithinClassFn)())
	{
		FNativeConstructionScope Scope;
		checkf(InAlignment <= ObjectAlignment, TEXT("Class %s needs %u-byte alignment; objects are aligned to %u"), Name, InAlignment, (uint32)ObjectAlignment);
		void* Memory = AllocateObjectMemory(sizeof(UClass), ObjectAlignment);
		// The pointer is published before anything else runs, so classes that name this one (its own
		// members, UClass's class) get it back instead of recursing.
		ReturnClass = new ((EInternal*)Memory) UClass(EC_StaticConstructor, FName(Name), InSize, InAlignment, InClassFlags | CLASS_Native, InClassCastFlags,
			InConfigName, RF_Public | RF_Standalone | RF_Transient | RF_MarkAsNative | RF_MarkAsRootSet, InClassConstructor);

		UClass* SuperClass = InSuperClassFn();
		if (SuperClass && SuperClass != ReturnClass)
		{
			ReturnClass->SetSuperStruct(SuperClass);
			ReturnClass->ClassCastFlags |= SuperClass->ClassCastFlags;
			ReturnClass->ClassFlags |= SuperClass->ClassFlags & CLASS_Inherit;
		}
		UClass* WithinClass = InWithinClassFn();
		ReturnClass->ClassWithin = WithinClass;

		RegisterNativeFunc(ReturnClass);
		ReverseChildProperties(ReturnClass);
		ReturnClass->Bind();
		ReturnClass->StaticLink(true);
		SetObjectClass(ReturnClass, UClass::StaticClass());
		DeferRegistration(ReturnClass, PackageName);
	}

	void ConstructNativeScriptStruct(UScriptStruct*& OutStruct, const TCHAR* PackageName, const TCHAR* Name, UScriptStruct::ICppStructOps* CppStructOps,
		EStructFlags Flags, UScriptStruct* (*SuperStructFn)(), void (*InitFn)(UScriptStruct*))
	{
		FNativeConstructionScope Scope;
		UPackage* Package = CreatePackage(PackageName);
		checkf(Package, TEXT("Cannot make the script package %s"), PackageName);
		Package->SetPackageFlags(PKG_CompiledIn);
		Package->ClearPackageFlags(PKG_NewlyCreated);
		UScriptStruct* Struct = NewObject<UScriptStruct>(Package, UScriptStruct::StaticClass(), FName(Name), RF_Public | RF_Transient | RF_MarkAsNative);
		checkf(Struct, TEXT("Cannot make the script struct %s.%s"), PackageName, Name);
		OutStruct = Struct;
		Struct->AddToRoot();
		Struct->StructFlags = Flags | STRUCT_Native;
		if (SuperStructFn)
		{
			Struct->SetSuperStruct(SuperStructFn());
		}
		Struct->SetCppStructOps(CppStructOps);
		InitFn(Struct);
		ReverseChildProperties(Struct);
		Struct->StaticLink(true);
	}

	void ConstructNativeEnum(UEnum*& OutEnum, const TCHAR* PackageName, const TCHAR* Name, const TCHAR* CppType, void (*InitFn)(UEnum*))
	{
		FNativeConstructionScope Scope;
		UPackage* Package = CreatePackage(PackageName);
		checkf(Package, TEXT("Cannot make the script package %s"), PackageName);
		Package->SetPackageFlags(PKG_CompiledIn);
		Package->ClearPackageFlags(PKG_NewlyCreated);
		UEnum* Enum = NewObject<UEnum>(Package, UEnum::StaticClass(), FName(Name), RF_Public | RF_Transient | RF_MarkAsNative);
		checkf(Enum, TEXT("Cannot make the enum %s.%s"), PackageName, Name);
		OutEnum = Enum;
		Enum->AddToRoot();
		Enum->CppType = CppType;
		InitFn(Enum);
	}
}

// UField

IMPLEMENT_CLASS(UField)

UField::UField(EStaticConstructor, EObjectFlags InFlags)
	: UObject(EC_StaticConstructor, InFlags)
{
}

UField::~UField()
{
}

void UField::AddCppProperty(FProperty* Property)
{
	LogError(FString::Printf(TEXT("AddCppProperty: %s cannot hold properties"), *GetFullName()));
}

UClass* UField::GetOwnerClass() const
{
	for (const UObject* Object = this; Object; Object = Object->GetOuter())
	{
		if (Object->IsA(UClass::StaticClass()))
		{
			return (UClass*)Object;
		}
	}
	return nullptr;
}

UStruct* UField::GetOwnerStruct() const
{
	for (const UObject* Object = this; Object; Object = Object->GetOuter())
	{
		if (Object->IsA(UStruct::StaticClass()))
		{
			return (UStruct*)Object;
		}
	}
	return nullptr;
}

FText UField::GetDisplayNameText() const
{
	if (const FString* DisplayName = FindMetaData(TEXT("DisplayName")))
	{
		return FText::FromString(*DisplayName);
	}
	return FText::FromString(FName::NameToDisplayString(GetName(), false));
}

FText UField::GetToolTipText(bool bShortTooltip) const
{
	const FString* ToolTip = MetaData.FindToolTip(bShortTooltip);
	if (!ToolTip)
	{
		return FText::FromString(FName::NameToDisplayString(GetName(), false));
	}
	return FText::FromString(*ToolTip);
}

// UStruct

IMPLEMENT_CLASS(UStruct)

UStruct::UStruct(UStruct* InSuperStruct, SIZE_T ParamsSize, SIZE_T Alignment)
	: PropertiesSize((int32)ParamsSize), MinAlignment(Alignment ? (int32)Alignment : 1), SuperStruct(InSuperStruct)
{
}

UStruct::UStruct(const FObjectInitializer& ObjectInitializer, UStruct* InSuperStruct, SIZE_T ParamsSize, SIZE_T Alignment)
	: PropertiesSize((int32)ParamsSize), MinAlignment(Alignment ? (int32)Alignment : 1), SuperStruct(InSuperStruct)
{
}

UStruct::UStruct(EStaticConstructor, int32 InSize, int32 InAlignment, EObjectFlags InFlags)
	: UField(EC_StaticConstructor, InFlags), PropertiesSize(InSize), MinAlignment(InAlignment)
{
	SetNativeLayout(InSize, InAlignment);
}

UStruct::~UStruct()
{
	FField* Field = ChildProperties;
	while (Field)
	{
		FField* Next = Field->Next;
		delete Field;
		Field = Next;
	}
	ChildProperties = nullptr;
}

void UStruct::SetNativeLayout(int32 InNativeSize, int32 InNativeAlignment)
{
	NativeSize = InNativeSize;
	NativeAlignment = InNativeAlignment > 0 ? InNativeAlignment : 1;
	bHasNativeLayout = true;
}

void UStruct::SetSuperStruct(UStruct* NewSuperStruct)
{
	SuperStruct = NewSuperStruct;
	if (!bHasNativeLayout)
	{
		NativeSize = NewSuperStruct ? NewSuperStruct->GetNativeSize() : 0;
	}
}

bool UStruct::IsChildOf(const UStruct* SomeBase) const
{
	if (!SomeBase)
	{
		return false;
	}
	for (const UStruct* Struct = this; Struct; Struct = Struct->GetSuperStruct())
	{
		if (Struct == SomeBase)
		{
			return true;
		}
	}
	return false;
}

int32 UStruct::GetStructureSize() const
{
	return AlignUp(PropertiesSize, MinAlignment);
}

void UStruct::AddCppProperty(FProperty* Property)
{
	if (!Property)
	{
		return;
	}
	Property->Next = ChildProperties;
	ChildProperties = Property;
}

void UStruct::StaticLink(bool bRelinkExistingProperties)
{
	Link(bRelinkExistingProperties);
}

int32 UStruct::GetLinkStartOffset() const
{
	const UStruct* InheritanceSuper = GetInheritanceSuper();
	int32 Start = InheritanceSuper ? InheritanceSuper->GetPropertiesSize() : 0;
	if (NativeSize > Start && GetInheritanceSuper() == GetSuperStruct())
	{
		Start = NativeSize;
	}
	return Start;
}

void UStruct::Link(bool bRelinkExistingProperties)
{
	const UStruct* InheritanceSuper = GetInheritanceSuper();
	int32 Size = GetLinkStartOffset();
	int32 Alignment = InheritanceSuper ? InheritanceSuper->GetMinAlignment() : 1;
	if (bHasNativeLayout)
	{
		Alignment = FMath::Max(Alignment, NativeAlignment);
	}

	// Sizes of inner properties first (struct sizes, container inners), then the properties whose place
	// is already known, then the rest one after the other, each aligned for its type.
	for (FField* Field = ChildProperties; Field; Field = Field->Next)
	{
		if (FProperty* Property = CastField<FProperty>(Field))
		{
			Property->LinkInternal();
			Alignment = FMath::Max(Alignment, Property->GetMinAlignment());
			if (Property->HasNativeOffset() || (Property->bOffsetAssigned && !bRelinkExistingProperties))
			{
				Size = FMath::Max(Size, Property->GetOffset_ForInternal() + Property->GetSize());
			}
		}
	}
	for (FField* Field = ChildProperties; Field; Field = Field->Next)
	{
		if (FProperty* Property = CastField<FProperty>(Field))
		{
			if (Property->HasNativeOffset() || (Property->bOffsetAssigned && !bRelinkExistingProperties))
			{
				continue;
			}
			const int32 Offset = AlignUp(Size, Property->GetMinAlignment());
			Property->SetOffset_Internal(Offset);
			Property->bOffsetAssigned = true;
			Size = Offset + Property->GetSize();
		}
	}
	PropertiesSize = Size;
	MinAlignment = Alignment;

	// The link lists: this struct's properties in declaration order, then the inherited ones.
	FProperty** PropertyLinkTail = &PropertyLink;
	FProperty** RefLinkTail = &RefLink;
	FProperty** DestructorLinkTail = &DestructorLink;
	FProperty** PostConstructLinkTail = &PostConstructLink;
	for (FField* Field = ChildProperties; Field; Field = Field->Next)
	{
		if (FProperty* Property = CastField<FProperty>(Field))
		{
			*PropertyLinkTail = Property;
			PropertyLinkTail = &Property->PropertyLinkNext;
			if (ContainsObjectReference(Property))
			{
				*RefLinkTail = Property;
				RefLinkTail = &Property->NextRef;
			}
			if (!Property->HasAnyPropertyFlags(CPF_NoDestructor))
			{
				*DestructorLinkTail = Property;
				DestructorLinkTail = &Property->DestructorLinkNext;
			}
			if (!Property->HasAnyPropertyFlags(CPF_ZeroConstructor))
			{
				*PostConstructLinkTail = Property;
				PostConstructLinkTail = &Property->PostConstructLinkNext;
			}
		}
	}
	*PropertyLinkTail = InheritanceSuper ? InheritanceSuper->PropertyLink : nullptr;
	*RefLinkTail = InheritanceSuper ? InheritanceSuper->RefLink : nullptr;
	*DestructorLinkTail = InheritanceSuper ? InheritanceSuper->DestructorLink : nullptr;
	*PostConstructLinkTail = InheritanceSuper ? InheritanceSuper->PostConstructLink : nullptr;
}

FProperty* UStruct::FindPropertyByName(FName InName) const
{
	if (InName.IsNone())
	{
		return nullptr;
	}
	for (const UStruct* Struct = this; Struct; Struct = Struct->GetSuperStruct())
	{
		for (FField* Field = Struct->ChildProperties; Field; Field = Field->Next)
		{
			if (Field->GetFName() == InName)
			{
				if (FProperty* Property = CastField<FProperty>(Field))
				{
					return Property;
				}
			}
		}
	}
	return nullptr;
}

void UStruct::InitializeStruct(void* Dest, int32 ArrayDim) const
{
	const int32 Stride = GetStructureSize();
	for (int32 Index = 0; Index < ArrayDim; ++Index)
	{
		uint8* Value = (uint8*)Dest + (SIZE_T)Index * Stride;
		for (FProperty* Property = PropertyLink; Property; Property = Property->PropertyLinkNext)
		{
			Property->InitializeValue_InContainer(Value);
		}
	}
}

void UStruct::DestroyStruct(void* Dest, int32 ArrayDim) const
{
	const int32 Stride = GetStructureSize();
	for (int32 Index = 0; Index < ArrayDim; ++Index)
	{
		uint8* Value = (uint8*)Dest + (SIZE_T)Index * Stride;
		for (FProperty* Property = DestructorLink; Property; Property = Property->DestructorLinkNext)
		{
			Property->DestroyValue_InContainer(Value);
		}
	}
}

FTopLevelAssetPath UStruct::GetStructPathName() const
{
	return FTopLevelAssetPath(this);
}

FString UStruct::GetAuthoredNameForField(const FField* Field) const
{
	return Field ? Field->GetName() : FString();
}

// UScriptStruct

IMPLEMENT_CLASS(UScriptStruct)

UScriptStruct::UScriptStruct(const FObjectInitializer& ObjectInitializer, UScriptStruct* InSuperStruct, ICppStructOps* InCppStructOps, EStructFlags InStructFlags,
	SIZE_T ExplicitSize, SIZE_T ExplicitAlignment)
	: UStruct(ObjectInitializer, InSuperStruct, ExplicitSize, ExplicitAlignment), StructFlags(InStructFlags)
{
	if (InCppStructOps)
	{
		SetCppStructOps(InCppStructOps);
	}
}

UScriptStruct::~UScriptStruct()
{
	delete CppStructOps;
}

void UScriptStruct::SetCppStructOps(ICppStructOps* InCppStructOps)
{
	if (CppStructOps != InCppStructOps)
	{
		delete CppStructOps;
	}
	CppStructOps = InCppStructOps;
	if (!CppStructOps)
	{
		return;
	}
	SetNativeLayout(CppStructOps->GetSize(), CppStructOps->GetAlignment());
	EStructFlags Computed = STRUCT_NoFlags;
	if (CppStructOps->IsPlainOldData())
	{
		Computed |= STRUCT_IsPlainOldData | STRUCT_NoDestructor;
	}
	else
	{
		Computed |= STRUCT_CopyNative;
		if (!CppStructOps->HasDestructor())
		{
			Computed |= STRUCT_NoDestructor;
		}
	}
	if (CppStructOps->HasIdentical())
	{
		Computed |= STRUCT_IdenticalNative;
	}
	if (CppStructOps->HasExportTextItem())
	{
		Computed |= STRUCT_ExportTextItemNative;
	}
	if (CppStructOps->HasImportTextItem())
	{
		Computed |= STRUCT_ImportTextItemNative;
	}
	StructFlags = (StructFlags & ~STRUCT_ComputedFlags) | Computed;
}

void UScriptStruct::Link(bool bRelinkExistingProperties)
{
	UStruct::Link(bRelinkExistingProperties);
	if (PropertiesSize == 0)
	{
		// An empty struct still takes a byte, as in C++.
		PropertiesSize = 1;
	}
	if (!CppStructOps)
	{
		EStructFlags Computed = STRUCT_ZeroConstructor | STRUCT_NoDestructor | STRUCT_IsPlainOldData;
		for (FProperty* Property = PropertyLink; Property; Property = Property->PropertyLinkNext)
		{
			if (!Property->HasAnyPropertyFlags(CPF_ZeroConstructor))
			{
				Computed &= ~STRUCT_ZeroConstructor;
			}
			if (!Property->HasAnyPropertyFlags(CPF_NoDestructor))
			{
				Computed &= ~STRUCT_NoDestructor;
			}
			if (!Property->HasAnyPropertyFlags(CPF_IsPlainOldData))
			{
				Computed &= ~STRUCT_IsPlainOldData;
			}
		}
		StructFlags = (StructFlags & ~(STRUCT_ZeroConstructor | STRUCT_NoDestructor | STRUCT_IsPlainOldData)) | Computed;
	}
}

void UScriptStruct::InitializeStruct(void* Dest, int32 ArrayDim) const
{
	const int32 Stride = GetStructureSize();
	const int32 InitializedSize = CppStructOps ? CppStructOps->GetSize() : 0;
	for (int32 Index = 0; Index < ArrayDim; ++Index)
	{
		uint8* Value = (uint8*)Dest + (SIZE_T)Index * Stride;
		if (CppStructOps)
		{
			CppStructOps->Construct(Value);
		}
		for (FProperty* Property = PropertyLink; Property; Property = Property->PropertyLinkNext)
		{
			if (!Property->IsInContainer(InitializedSize))
			{
				Property->InitializeValue_InContainer(Value);
			}
		}
	}
}

void UScriptStruct::DestroyStruct(void* Dest, int32 ArrayDim) const
{
	const int32 Stride = GetStructureSize();
	const int32 DestroyedSize = CppStructOps ? CppStructOps->GetSize() : 0;
	for (int32 Index = 0; Index < ArrayDim; ++Index)
	{
		uint8* Value = (uint8*)Dest + (SIZE_T)Index * Stride;
		for (FProperty* Property = DestructorLink; Property; Property = Property->DestructorLinkNext)
		{
			if (!Property->IsInContainer(DestroyedSize))
			{
				Property->DestroyValue_InContainer(Value);
			}
		}
		if (CppStructOps && CppStructOps->HasDestructor())
		{
			CppStructOps->Destruct(Value);
		}
	}
}

void UScriptStruct::CopyScriptStruct(void* Dest, const void* Src, int32 ArrayDim) const
{
	if (Dest == Src)
	{
		return;
	}
	const int32 Stride = GetStructureSize();
	const int32 NativeCopiedSize = CppStructOps ? CppStructOps->GetSize() : 0;
	if (CppStructOps)
	{
		CppStructOps->Copy(Dest, Src, ArrayDim);
	}
	for (int32 Index = 0; Index < ArrayDim; ++Index)
	{
		for (FProperty* Property = PropertyLink; Property; Property = Property->PropertyLinkNext)
		{
			if (!Property->IsInContainer(NativeCopiedSize))
			{
				Property->CopyCompleteValue_InContainer((uint8*)Dest + (SIZE_T)Index * Stride, (const uint8*)Src + (SIZE_T)Index * Stride);
			}
		}
	}
}

bool UScriptStruct::CompareScriptStruct(const void* A, const void* B, uint32 PortFlags) const
{
	if (!B)
	{
		return false;
	}
	if (CppStructOps && CppStructOps->HasIdentical())
	{
		bool bResult = false;
		if (CppStructOps->Identical(A, B, PortFlags, bResult))
		{
			return bResult;
		}
	}
	for (FProperty* Property = PropertyLink; Property; Property = Property->PropertyLinkNext)
	{
		for (int32 Index = 0; Index < Property->GetArrayDim(); ++Index)
		{
			if (!Property->Identical_InContainer(A, B, Index, PortFlags))
			{
				return false;
			}
		}
	}
	return true;
}

uint32 UScriptStruct::GetStructTypeHash(const void* Src) const
{
	return CppStructOps && CppStructOps->HasGetTypeHash() ? CppStructOps->GetStructTypeHash(Src) : 0;
}

FString UScriptStruct::GetStructCPPName() const
{
	return FString::Printf(TEXT("F%s"), *GetName());
}

// UClass

IMPLEMENT_CLASS(UClass)

UClass::UClass(const FObjectInitializer& ObjectInitializer)
	: UStruct(ObjectInitializer, nullptr)
{
}

UClass::UClass(const FObjectInitializer& ObjectInitializer, UClass* InSuperClass)
	: UStruct(ObjectInitializer, InSuperClass)
{
	if (InSuperClass)
	{
		SetSuperStruct(InSuperClass);
	}
}

UClass::UClass(EStaticConstructor, FName InName, uint32 InSize, uint32 InAlignment, EClassFlags InClassFlags, EClassCastFlags InClassCastFlags,
	const TCHAR* InClassConfigName, EObjectFlags InFlags, ClassConstructorType InClassConstructor)
	: UStruct(EC_StaticConstructor, (int32)InSize, (int32)InAlignment, InFlags), ClassConstructor(InClassConstructor), ClassFlags(InClassFlags),
	  ClassCastFlags(InClassCastFlags), ClassConfigName(InClassConfigName)
{
	SetObjectName(this, InName);
}

UClass::~UClass()
{
}

void UClass::SetSuperStruct(UStruct* NewSuperStruct)
{
	UStruct::SetSuperStruct(NewSuperStruct);
	if (!bHasNativeLayout)
	{
		// A data-defined class is made by its nearest C++ ancestor.
		UClass* NewSuperClass = (UClass*)NewSuperStruct;
		ClassConstructor = NewSuperClass ? NewSuperClass->ClassConstructor : nullptr;
	}
}

void UClass::Bind()
{
	UStruct::Bind();
	UClass* SuperClass = GetSuperClass();
	if (SuperClass)
	{
		if (!ClassConstructor)
		{
			ClassConstructor = SuperClass->ClassConstructor;
		}
		ClassCastFlags |= SuperClass->ClassCastFlags;
		if (!bHasNativeLayout)
		{
			NativeSize = SuperClass->GetNativeSize();
		}
	}
	if (!ClassWithin)
	{
		ClassWithin = SuperClass ? SuperClass->ClassWithin : UObject::StaticClass();
	}
}

void UClass::Link(bool bRelinkExistingProperties)
{
	UStruct::Link(bRelinkExistingProperties);
	if (MinAlignment > (int32)ObjectAlignment)
	{
		LogError(FString::Printf(TEXT("Class %s needs %d-byte alignment; objects are aligned to %d"), *GetPathName(), MinAlignment, (int32)ObjectAlignment));
		MinAlignment = (int32)ObjectAlignment;
	}
}

const TCHAR* UClass::GetPrefixCPP() const
{
	for (const UClass* Class = this; Class; Class = Class->GetSuperClass())
	{
		if (Class->GetFName() == TEXT("Actor"))
		{
			return HasAnyClassFlags(CLASS_Deprecated) ? TEXT("ADEPRECATED_") : TEXT("A");
		}
	}
	return HasAnyClassFlags(CLASS_Deprecated) ? TEXT("UDEPRECATED_") : TEXT("U");
}

FName UClass::GetDefaultObjectName() const
{
	return FName(*(FString(DEFAULT_OBJECT_PREFIX) + GetName()));
}

UObject* UClass::GetArchetypeForCDO() const
{
	UClass* SuperClass = GetSuperClass();
	return SuperClass ? SuperClass->GetDefaultObject() : nullptr;
}

UObject* UClass::GetDefaultObject(bool bCreateIfNeeded) const
{
	if (!ClassDefaultObject && bCreateIfNeeded)
	{
		EnsureCompiledInTypesRegistered();
		const_cast<UClass*>(this)->CreateDefaultObject();
	}
	return ClassDefaultObject;
}

UObject* UClass::CreateDefaultObject()
{
	static TArray<const UClass*> ClassesInConstruction;
	if (ClassDefaultObject || ClassesInConstruction.Contains(this))
	{
		return ClassDefaultObject;
	}
	ClassesInConstruction.Add(this);
	// The super class's default object comes first: it is this one's archetype.
	GetArchetypeForCDO();
	FStaticConstructObjectParameters Params(this);
	Params.Outer = GetOuter();
	Params.Name = GetDefaultObjectName();
	Params.SetFlags = RF_Public | RF_ClassDefaultObject | RF_ArchetypeObject;
	UObject* NewDefaultObject = Params.Outer ? StaticConstructObject_Internal(Params) : nullptr;
	ClassesInConstruction.Remove(this);
	if (!NewDefaultObject)
	{
		LogError(FString::Printf(TEXT("Cannot make the default object of class %s"), *GetPathName()));
		return nullptr;
	}
	ClassDefaultObject = NewDefaultObject;
	return ClassDefaultObject;
}

void UClass::PurgeClassDefaultObject()
{
	if (ClassDefaultObject)
	{
		ClassDefaultObject->MarkAsGarbage();
		// Keep the old object findable by nobody: a new default object takes the name.
		ClassDefaultObject->LowLevelRename(MakeUniqueObjectName(ClassDefaultObject->GetOuter(), this, FName(*(GetDefaultObjectName().ToString() + TEXT("_Purged")))));
		ClassDefaultObject = nullptr;
	}
}

UFunction* UClass::FindFunctionByName(FName InName, EIncludeSuperFlag::Type IncludeSuper) const
{
	if (UFunction* const* Found = FuncMap.Find(InName))
	{
		return *Found;
	}
	if (IncludeSuper == EIncludeSuperFlag::ExcludeSuper)
	{
		return nullptr;
	}
	for (const FImplementedInterface& Interface : Interfaces)
	{
		if (Interface.Class)
		{
			if (UFunction* Result = Interface.Class->FindFunctionByName(InName))
			{
				return Result;
			}
		}
	}
	UClass* SuperClass = GetSuperClass();
	return SuperClass ? SuperClass->FindFunctionByName(InName) : nullptr;
}

void UClass::AddFunctionToFunctionMap(UFunction* Function, FName FuncName)
{
	if (Function)
	{
		FuncMap.Add(FuncName, Function);
	}
}

void UClass::RemoveFunctionFromFunctionMap(UFunction* Function)
{
	if (Function)
	{
		FuncMap.Remove(Function->GetFName());
	}
}

bool UClass::ImplementsInterface(const UClass* SomeInterface) const
{
	if (!SomeInterface || !SomeInterface->HasAnyClassFlags(CLASS_Interface) || SomeInterface == UInterface::StaticClass())
	{
		return false;
	}
	for (const UClass* CurrentClass = this; CurrentClass; CurrentClass = CurrentClass->GetSuperClass())
	{
		for (const FImplementedInterface& Interface : CurrentClass->Interfaces)
		{
			if (Interface.Class && Interface.Class->IsChildOf(SomeInterface))
			{
				return true;
			}
		}
	}
	return false;
}

UObject* UClass::TryFindTypeSlow(UClass* TypeClass, const FString& InPathNameOrShortName, EFindFirstObjectOptions Options)
{
	const FString Name = InPathNameOrShortName.TrimStartAndEnd();
	if (Name.IsEmpty())
	{
		return nullptr;
	}
	int32 Index;
	if (Name.StartsWith(TEXT("/")) || Name.FindChar(TEXT('.'), Index))
	{
		return StaticFindObject(TypeClass, nullptr, *Name, EnumHasAnyFlags(Options, EFindFirstObjectOptions::ExactClass));
	}
	return StaticFindFirstObject(TypeClass, *Name, Options);
}

FTopLevelAssetPath UClass::TryConvertShortTypeNameToPathName(UClass* TypeClass, const FString& InShortTypeName, EFindFirstObjectOptions Options)
{
	UObject* Found = TryFindTypeSlow(TypeClass, InShortTypeName, Options);
	return Found ? FTopLevelAssetPath(Found) : FTopLevelAssetPath();
}

// UFunction

IMPLEMENT_CLASS(UFunction)

UFunction::UFunction(const FObjectInitializer& ObjectInitializer)
	: UStruct(ObjectInitializer, nullptr)
{
}

UFunction::UFunction(const FObjectInitializer& ObjectInitializer, UFunction* InSuperFunction, EFunctionFlags InFunctionFlags, SIZE_T ParamsSize)
	: UStruct(ObjectInitializer, InSuperFunction, ParamsSize), FunctionFlags(InFunctionFlags)
{
}

void UFunction::Bind()
{
}

void UFunction::Link(bool bRelinkExistingProperties)
{
	UStruct::Link(bRelinkExistingProperties);
	InitializeDerivedMembers();
}

void UFunction::InitializeDerivedMembers()
{
	NumParms = 0;
	ParmsSize = 0;
	ReturnValueOffset = 0xFFFF;
	FirstPropertyToInit = nullptr;
	for (FProperty* Property = PropertyLink; Property; Property = Property->PropertyLinkNext)
	{
		if (!Property->HasAnyPropertyFlags(CPF_Parm))
		{
			continue;
		}
		++NumParms;
		ParmsSize = (uint16)(Property->GetOffset_ForUFunction() + Property->GetSize());
		if (Property->HasAnyPropertyFlags(CPF_ReturnParm))
		{
			ReturnValueOffset = (uint16)Property->GetOffset_ForUFunction();
		}
	}
	ParmsSize = (uint16)FMath::Max<int32>(ParmsSize, PropertiesSize > 0 ? AlignUp(PropertiesSize, MinAlignment) : 0);
}

FProperty* UFunction::GetReturnProperty() const
{
	for (FField* Field = ChildProperties; Field; Field = Field->Next)
	{
		if (FProperty* Property = CastField<FProperty>(Field))
		{
			if (Property->HasAnyPropertyFlags(CPF_ReturnParm))
			{
				return Property;
			}
		}
	}
	return nullptr;
}

UClass* UFunction::GetOwnerClass() const
{
	return GetTypedOuter<UClass>();
}

uint64 UFunction::GetDefaultIgnoredSignatureCompatibilityFlags()
{
	return CPF_PersistentInstance | CPF_ExportObject | CPF_InstancedReference | CPF_ContainsInstancedReference | CPF_ComputedFlags | CPF_ConstParm
		| CPF_UObjectWrapper | CPF_TObjectPtr | CPF_NativeAccessSpecifiers | CPF_AdvancedDisplay | CPF_BlueprintVisible | CPF_BlueprintReadOnly;
}

bool UFunction::IsSignatureCompatibleWith(const UFunction* OtherFunction) const
{
	return IsSignatureCompatibleWith(OtherFunction, GetDefaultIgnoredSignatureCompatibilityFlags());
}

bool UFunction::IsSignatureCompatibleWith(const UFunction* OtherFunction, uint64 IgnoreFlags) const
{
	if (this == OtherFunction)
	{
		return true;
	}
	if (!OtherFunction)
	{
		return false;
	}
	auto NextParm = [](FField* Field) -> FProperty* {
		for (; Field; Field = Field->Next)
		{
			FProperty* Property = CastField<FProperty>(Field);
			if (Property)
			{
				return Property->HasAnyPropertyFlags(CPF_Parm) ? Property : nullptr;
			}
		}
		return nullptr;
	};
	FProperty* A = NextParm(ChildProperties);
	FProperty* B = NextParm(OtherFunction->ChildProperties);
	while (A)
	{
		if (!B)
		{
			return false;
		}
		const uint64 Difference = (uint64)A->GetPropertyFlags() ^ (uint64)B->GetPropertyFlags();
		if (!A->SameType(B) || A->GetArrayDim() != B->GetArrayDim() || (Difference & ~IgnoreFlags) != 0)
		{
			return false;
		}
		A = NextParm(A->Next);
		B = NextParm(B->Next);
	}
	return B == nullptr;
}

IMPLEMENT_CLASS(UDelegateFunction)

UDelegateFunction::UDelegateFunction(const FObjectInitializer& ObjectInitializer)
	: UFunction(ObjectInitializer)
{
}

IMPLEMENT_CLASS(USparseDelegateFunction)

USparseDelegateFunction::USparseDelegateFunction(const FObjectInitializer& ObjectInitializer)
	: UDelegateFunction(ObjectInitializer)
{
}
