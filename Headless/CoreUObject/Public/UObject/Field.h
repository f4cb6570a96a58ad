#pragma once

#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"
#include "UObject/Object.h"
#include "UObject/FieldMetaDataMap.h"

#include <type_traits>

class FField;
class FFieldVariant;
class UObject;
class UClass;
class UStruct;
class UField;
class UPackage;

/**
 * The class of an FField (FIntProperty, FArrayProperty...): name without the 'F', cast flags and super
 * class. Field classes are not objects; each is a static made on first use.
 */
class COREUOBJECT_API FFieldClass
{
public:
	using FConstructFn = FField* (*)(const FFieldVariant&, const FName&, EObjectFlags);

	FFieldClass(const TCHAR* InCPPName, uint64 InId, uint64 InCastFlags, FFieldClass* InSuperClass, FConstructFn ConstructFnPtr);
	FFieldClass(const FFieldClass&) = delete;
	FFieldClass& operator=(const FFieldClass&) = delete;

	/** "IntProperty" for FIntProperty. */
	FString GetName() const { return Name.ToString(); }
	FName GetFName() const { return Name; }
	uint64 GetId() const { return Id; }
	uint64 GetCastFlags() const { return CastFlags; }
	bool HasAnyCastFlags(const uint64 InCastFlags) const { return !!(CastFlags & InCastFlags); }
	bool HasAllCastFlags(const uint64 InCastFlags) const { return (CastFlags & InCastFlags) == InCastFlags; }
	bool IsChildOf(const FFieldClass* InClass) const;
	FFieldClass* GetSuperClass() const { return SuperClass; }
	/** Makes a field of this class; used to build fields from data (the kind named in text). */
	FField* Construct(const FFieldVariant& InOwner, const FName& InName, EObjectFlags InFlags = RF_NoFlags) const { return ConstructFn(InOwner, InName, InFlags); }

	/** Every field class, in registration order. */
	static TArray<FFieldClass*>& GetAllFieldClasses();
	/** Field classes by name ("IntProperty"). */
	static TMap<FName, FFieldClass*>& GetNameToFieldClassMap();

private:
	FName Name;
	uint64 Id;
	uint64 CastFlags;
	FFieldClass* SuperClass;
	FConstructFn ConstructFn;
};

/** An owner of a field: either a UObject (a UStruct) or another FField (a container property). */
class COREUOBJECT_API FFieldVariant
{
public:
	FFieldVariant() = default;
	FFieldVariant(const FField* InField) : Field(const_cast<FField*>(InField)), bIsUObject(false) {}
	template <typename T, typename = std::enable_if_t<std::is_base_of_v<UObjectBaseUtility, T>>>
	FFieldVariant(const T* InObject) : Object(static_cast<UObject*>(const_cast<UObjectBaseUtility*>(static_cast<const UObjectBaseUtility*>(InObject)))), bIsUObject(true) {}
	FFieldVariant(std::nullptr_t) {}

	bool IsUObject() const { return bIsUObject; }
	bool IsValid() const { return Object != nullptr; }
	explicit operator bool() const { return IsValid(); }

	FField* ToField() const { return bIsUObject ? nullptr : Field; }
	UObject* ToUObject() const { return bIsUObject ? Object : nullptr; }
	FField* ToFieldUnsafe() const { return Field; }
	UObject* ToUObjectUnsafe() const { return Object; }

	template <typename T>
	bool IsA() const
	{
		if constexpr (std::is_base_of_v<UObjectBaseUtility, T>)
		{
			return bIsUObject && Object && IsObjectA(Object, T::StaticClass());
		}
		else
		{
			return !bIsUObject && Field && IsFieldA(Field, T::StaticClass());
		}
	}

	template <typename T>
	T* Get() const
	{
		return IsA<T>() ? static_cast<T*>(bIsUObject ? static_cast<void*>(Object) : static_cast<void*>(Field)) : nullptr;
	}

	/** The owner of this owner. */
	FFieldVariant GetOwnerVariant() const;
	FString GetName() const;
	FName GetFName() const;
	FString GetPathName() const;
	FString GetFullName() const;
	UPackage* GetOutermost() const;
	bool IsNative() const;

	friend bool operator==(const FFieldVariant& A, const FFieldVariant& B) { return A.Object == B.Object; }
	friend bool operator!=(const FFieldVariant& A, const FFieldVariant& B) { return A.Object != B.Object; }

private:
	static bool IsObjectA(const UObject* InObject, const UClass* InClass);
	static bool IsFieldA(const FField* InField, const FFieldClass* InClass);

	union
	{
		FField* Field;
		UObject* Object = nullptr;
	};
	bool bIsUObject = false;
};

namespace UE::CoreUObject::Private
{
	/** Makes a field of a concrete kind; abstract kinds (FProperty itself) cannot be made. */
	template <class T>
	FField* ConstructField(const FFieldVariant& InOwner, const FName& InName, EObjectFlags InFlags)
	{
		if constexpr (std::is_abstract_v<T>)
		{
			return nullptr;
		}
		else
		{
			return new T(InOwner, InName, InFlags);
		}
	}
}

/** Declares an FField class: StaticClass(), Super and ThisClass, and the constructor used to build it from data. */
#define DECLARE_FIELD(TClass, TSuperClass, TStaticFlags) \
public: \
	using Super = TSuperClass; \
	using ThisClass = TClass; \
	static constexpr uint64 StaticClassCastFlagsPrivate() { return uint64(TStaticFlags); } \
	static constexpr uint64 StaticClassCastFlags() { return uint64(TStaticFlags) | Super::StaticClassCastFlags(); } \
	static FFieldClass* StaticClass(); \
	static FField* Construct(const FFieldVariant& InOwner, const FName& InName, EObjectFlags InFlags); \
	virtual FFieldClass* GetFieldClassPrivate() const override { return StaticClass(); }

/** Implements what DECLARE_FIELD declares. */
#define IMPLEMENT_FIELD(TClass) \
	FFieldClass* TClass::StaticClass() \
	{ \
		static FFieldClass StaticFieldClass(TEXT(#TClass), TClass::StaticClassCastFlagsPrivate(), TClass::StaticClassCastFlags(), \
			std::is_same_v<TClass::Super, TClass> ? nullptr : TClass::Super::StaticClass(), &TClass::Construct); \
		return &StaticFieldClass; \
	} \
	FField* TClass::Construct(const FFieldVariant& InOwner, const FName& InName, EObjectFlags InFlags) \
	{ \
		return ::UE::CoreUObject::Private::ConstructField<TClass>(InOwner, InName, InFlags); \
	}

/**
 * A reflected member that is not an object: every property kind. Fields are owned by a UStruct
 * (ChildProperties, a linked list through Next) or by another field (the inner property of an array).
 */
class COREUOBJECT_API FField
{
public:
	using Super = FField;
	using ThisClass = FField;
	static constexpr uint64 StaticClassCastFlagsPrivate() { return 0; }
	static constexpr uint64 StaticClassCastFlags() { return 0; }
	static FFieldClass* StaticClass();
	virtual FFieldClass* GetFieldClassPrivate() const { return StaticClass(); }

	FField(EInternal InInternal, FFieldClass* InClass);
	FField(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	virtual ~FField();

	FField(const FField&) = delete;
	FField& operator=(const FField&) = delete;

	/** The next field in the owner's list. */
	FField* Next = nullptr;

	FFieldClass* GetClass() const { return GetFieldClassPrivate(); }
	FName GetFName() const { return NamePrivate; }
	FString GetName() const { return NamePrivate.ToString(); }
	void Rename(const FName& NewName) { NamePrivate = NewName; }
	/** The name as written in the source (the same as the name here). */
	virtual FString GetAuthoredName() const { return GetName(); }

	EObjectFlags GetFlags() const { return FlagsPrivate; }
	void SetFlags(EObjectFlags NewFlags) { FlagsPrivate = FlagsPrivate | NewFlags; }
	void ClearFlags(EObjectFlags FlagsToClear) { FlagsPrivate = FlagsPrivate & ~FlagsToClear; }
	bool HasAnyFlags(EObjectFlags FlagsToCheck) const { return (FlagsPrivate & FlagsToCheck) != 0; }
	bool HasAllFlags(EObjectFlags FlagsToCheck) const { return (FlagsPrivate & FlagsToCheck) == FlagsToCheck; }
	bool IsNative() const;

	bool IsA(const FFieldClass* FieldType) const { return GetClass()->IsChildOf(FieldType); }
	template <typename T>
	bool IsA() const
	{
		return !!(GetClass()->GetCastFlags() & T::StaticClassCastFlagsPrivate()) || GetClass()->IsChildOf(T::StaticClass());
	}

	// Owners

	FFieldVariant GetOwnerVariant() const { return Owner; }
	template <typename T>
	T* GetOwner() const { return Owner.Get<T>(); }
	/** The nearest UObject up the owner chain (the struct holding the outermost property). */
	UObject* GetOwnerUObject() const;
	/** The nearest owning UStruct (a UClass, UScriptStruct or UFunction). */
	UStruct* GetOwnerStruct() const;
	/** The nearest owning UClass; for a function parameter, the function's class. */
	UClass* GetOwnerClass() const;
	/** The nearest owning UField. */
	UField* GetOwnerUField() const;
	UPackage* GetOutermost() const;

	/** "/Script/Engine.Actor:Tags" for a property of a class; nested fields continue with ':'. */
	FString GetPathName(const UObject* StopOuter = nullptr) const;
	void GetPathName(const UObject* StopOuter, FString& ResultString) const;
	/** "<FieldClassName> <PathName>", e.g. "IntProperty /Script/Engine.Actor:Count". */
	FString GetFullName() const;

	// Metadata (the engine's editor metadata: Category, DisplayName, ToolTip...)

	bool HasMetaData(const TCHAR* Key) const { return FindMetaData(Key) != nullptr; }
	bool HasMetaData(const FName& Key) const { return FindMetaData(Key) != nullptr; }
	const FString* FindMetaData(const TCHAR* Key) const { return MetaData.Find(Key); }
	const FString* FindMetaData(const FName& Key) const { return MetaData.Find(Key); }
	/** The value, or an empty string when absent. */
	const FString& GetMetaData(const TCHAR* Key) const { return MetaData.Get(Key); }
	const FString& GetMetaData(const FName& Key) const { return MetaData.Get(Key); }
	FText GetMetaDataText(const TCHAR* MetaDataKey, const FString LocalizationNamespace = FString(), const FString LocalizationKey = FString()) const { return MetaData.GetText(MetaDataKey); }
	FText GetMetaDataText(const FName& MetaDataKey, const FString LocalizationNamespace = FString(), const FString LocalizationKey = FString()) const { return MetaData.GetText(MetaDataKey); }
	void SetMetaData(const TCHAR* Key, const TCHAR* InValue) { MetaData.Set(Key, FString(InValue)); }
	void SetMetaData(const FName& Key, const TCHAR* InValue) { MetaData.Set(Key, FString(InValue)); }
	void SetMetaData(const TCHAR* Key, FString&& InValue) { MetaData.Set(Key, MoveTemp(InValue)); }
	void SetMetaData(const FName& Key, FString&& InValue) { MetaData.Set(Key, MoveTemp(InValue)); }
	void RemoveMetaData(const TCHAR* Key) { MetaData.Remove(Key); }
	void RemoveMetaData(const FName& Key) { MetaData.Remove(Key); }
	/** "true" (any case) is true. */
	bool GetBoolMetaData(const TCHAR* Key) const { return MetaData.GetBool(Key); }
	bool GetBoolMetaData(const FName& Key) const { return MetaData.GetBool(Key); }
	int32 GetIntMetaData(const TCHAR* Key) const { return MetaData.GetInt(Key); }
	int32 GetIntMetaData(const FName& Key) const { return MetaData.GetInt(Key); }
	float GetFloatMetaData(const TCHAR* Key) const { return MetaData.GetFloat(Key); }
	float GetFloatMetaData(const FName& Key) const { return MetaData.GetFloat(Key); }
	/** The class named by the metadata value (a path or short name), or null. */
	UClass* GetClassMetaData(const TCHAR* Key) const { return MetaData.GetClass(Key); }
	UClass* GetClassMetaData(const FName& Key) const { return MetaData.GetClass(Key); }
	/** All metadata, in the order it was set; null when there is none. */
	const TMap<FName, FString>* GetMetaDataMap() const { return MetaData.GetMap(); }
	void AppendMetaData(const TMap<FName, FString>& MetaDataMapToAppend);
	static void CopyMetaData(const FField* InSourceField, FField* InDestField);

	/** The DisplayName metadata, else the name made readable (FName::NameToDisplayString; a bool loses its 'b'). */
	FText GetDisplayNameText() const;
	/** The ToolTip metadata, else the display name. bShortTooltip prefers ShortTooltip metadata. */
	FText GetToolTipText(bool bShortTooltip = false) const;

	/** Makes a copy of the field (and its inner fields) under a new owner. */
	static FField* Duplicate(const FField* InField, FFieldVariant DestOwner, const FName DestName = NAME_None,
		EObjectFlags FlagMask = RF_AllFlags, EInternalObjectFlags InternalFlagsMask = EInternalObjectFlags::None);

	/** Called once the owner struct is linked: computes sizes and offsets. */
	virtual void PostDuplicate(const FField& InField);

protected:
	FFieldVariant Owner;

private:
	FName NamePrivate;
	EObjectFlags FlagsPrivate = RF_NoFlags;
	UE::CoreUObject::Private::FMetaDataMap MetaData;
};

/** Field to the derived type when it is one, else null. */
template <typename FieldType>
FieldType* CastField(FField* Src)
{
	return Src && Src->IsA<FieldType>() ? static_cast<FieldType*>(Src) : nullptr;
}

template <typename FieldType>
const FieldType* CastField(const FField* Src)
{
	return Src && Src->IsA<FieldType>() ? static_cast<const FieldType*>(Src) : nullptr;
}

template <typename FieldType>
FieldType* ExactCastField(FField* Src)
{
	return Src && Src->GetClass() == FieldType::StaticClass() ? static_cast<FieldType*>(Src) : nullptr;
}

template <typename FieldType>
const FieldType* ExactCastField(const FField* Src)
{
	return Src && Src->GetClass() == FieldType::StaticClass() ? static_cast<const FieldType*>(Src) : nullptr;
}

/** As CastField, but a null or wrong-typed field is a fatal error. */
template <typename FieldType>
FieldType* CastFieldChecked(FField* Src)
{
	checkf(Src && Src->IsA<FieldType>(), TEXT("CastFieldChecked failed"));
	return static_cast<FieldType*>(Src);
}

template <typename FieldType>
const FieldType* CastFieldChecked(const FField* Src)
{
	checkf(Src && Src->IsA<FieldType>(), TEXT("CastFieldChecked failed"));
	return static_cast<const FieldType*>(Src);
}

/** CastField that accepts null without complaint (the same as CastField here). */
template <typename FieldType>
FieldType* CastFieldCheckedNullAllowed(FField* Src)
{
	checkf(!Src || Src->IsA<FieldType>(), TEXT("CastFieldCheckedNullAllowed failed"));
	return static_cast<FieldType*>(Src);
}
