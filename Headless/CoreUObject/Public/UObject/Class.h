#pragma once

#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"
#include "UObject/Object.h"
#include "UObject/Field.h"
#include "UObject/UObjectGlobals.h"

class FProperty;
class FOutputDevice;
class UClass;
class UFunction;
class UEnum;
class UScriptStruct;
struct FTopLevelAssetPath;

/** Whether lookups on a class also search its super classes. */
namespace EIncludeSuperFlag
{
	enum Type
	{
		ExcludeSuper,
		IncludeSuper
	};
}

/** Builds the object of a C++ class in memory the object system allocated; see IMPLEMENT_CLASS. */
template <class T>
void InternalConstructor(const FObjectInitializer& X)
{
	if constexpr (std::is_constructible_v<T, const FObjectInitializer&>)
	{
		new ((EInternal*)X.GetObj()) T(X);
	}
	else
	{
		new ((EInternal*)X.GetObj()) T();
	}
}

/**
 * Base of every reflected type that is an object: classes, structs, functions and enums. Keeps the
 * type's editor metadata (Category, DisplayName, ToolTip...) with the type.
 */
class COREUOBJECT_API UField : public UObject
{
	DECLARE_CASTED_CLASS_INTRINSIC(UField, UObject, CLASS_Abstract, TEXT("/Script/CoreUObject"), CASTCLASS_UField)

public:
	UField() = default;
	UField(EStaticConstructor, EObjectFlags InFlags);
	virtual ~UField() override;

	/** The next field in the owner's Children list (functions of a class). */
	UField* Next = nullptr;

	/** Resolves what the field needs at run time (native function pointers, class constructors). */
	virtual void Bind() {}
	/** Adds a property to this field; only structs accept properties. */
	virtual void AddCppProperty(FProperty* Property);

	/** The class this field belongs to: itself for a class, the owning class for a function. */
	UClass* GetOwnerClass() const;
	/** The struct this field belongs to: itself for a struct. */
	UStruct* GetOwnerStruct() const;
	virtual FString GetAuthoredName() const { return GetName(); }

	/** The DisplayName metadata, else the name made readable (FName::NameToDisplayString). */
	FText GetDisplayNameText() const;
	/** The ToolTip metadata (ShortTooltip first when bShortTooltip), else the display name. */
	FText GetToolTipText(bool bShortTooltip = false) const;

	bool HasMetaData(const TCHAR* Key) const { return FindMetaData(Key) != nullptr; }
	bool HasMetaData(const FName& Key) const { return FindMetaData(Key) != nullptr; }
	const FString* FindMetaData(const TCHAR* Key) const { return MetaData.Find(Key); }
	const FString* FindMetaData(const FName& Key) const { return MetaData.Find(Key); }
	/** The value, or an empty string. */
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
	bool GetBoolMetaData(const TCHAR* Key) const { return MetaData.GetBool(Key); }
	bool GetBoolMetaData(const FName& Key) const { return MetaData.GetBool(Key); }
	int32 GetIntMetaData(const TCHAR* Key) const { return MetaData.GetInt(Key); }
	int32 GetIntMetaData(const FName& Key) const { return MetaData.GetInt(Key); }
	float GetFloatMetaData(const TCHAR* Key) const { return MetaData.GetFloat(Key); }
	float GetFloatMetaData(const FName& Key) const { return MetaData.GetFloat(Key); }
	UClass* GetClassMetaData(const TCHAR* Key) const { return MetaData.GetClass(Key); }
	UClass* GetClassMetaData(const FName& Key) const { return MetaData.GetClass(Key); }
	/** Metadata in the order it was set; null when there is none. */
	const TMap<FName, FString>* GetMetaDataMap() const { return MetaData.GetMap(); }

private:
	UE::CoreUObject::Private::FMetaDataMap MetaData;
};

/**
 * A type with properties: the base of classes, script structs and functions. Properties are FFields
 * in ChildProperties; functions of a class are UFields in Children. Each property has an offset into
 * the memory of a value of this struct (an object of the class, a struct value, a function's parameters).
 */
class COREUOBJECT_API UStruct : public UField
{
	DECLARE_CASTED_CLASS_INTRINSIC(UStruct, UField, CLASS_None, TEXT("/Script/CoreUObject"), CASTCLASS_UStruct)

public:
	UStruct() = default;
	explicit UStruct(UStruct* InSuperStruct, SIZE_T ParamsSize = 0, SIZE_T Alignment = 0);
	UStruct(const FObjectInitializer& ObjectInitializer, UStruct* InSuperStruct, SIZE_T ParamsSize = 0, SIZE_T Alignment = 0);
	UStruct(EStaticConstructor, int32 InSize, int32 InAlignment, EObjectFlags InFlags);
	virtual ~UStruct() override;

	/** Functions (for a class) in a list through UField::Next. */
	UField* Children = nullptr;
	/** Properties declared by this struct (not its super), in a list through FField::Next. */
	FField* ChildProperties = nullptr;
	/** Bytes a value of this struct needs (with super's properties); set by StaticLink. */
	int32 PropertiesSize = 0;
	int32 MinAlignment = 1;
	/** After StaticLink: every property, super's first, through FProperty::PropertyLinkNext. */
	FProperty* PropertyLink = nullptr;
	/** After StaticLink: properties holding object references, through NextRef. */
	FProperty* RefLink = nullptr;
	/** After StaticLink: properties that need destroying, through DestructorLinkNext. */
	FProperty* DestructorLink = nullptr;
	/** After StaticLink: properties that need initialising, through PostConstructLinkNext. */
	FProperty* PostConstructLink = nullptr;

	UStruct* GetSuperStruct() const { return SuperStruct; }
	/** Sets the parent type. A class takes its super's C++ constructor and native size on Bind. */
	virtual void SetSuperStruct(UStruct* NewSuperStruct);
	/** True if this is SomeBase or derives from it. */
	bool IsChildOf(const UStruct* SomeBase) const;
	template <class T>
	bool IsChildOf() const { return IsChildOf(T::StaticClass()); }

	int32 GetPropertiesSize() const { return PropertiesSize; }
	void SetPropertiesSize(int32 NewSize) { PropertiesSize = NewSize; }
	int32 GetMinAlignment() const { return MinAlignment; }
	/** PropertiesSize rounded up to MinAlignment: the stride of an array of this struct. */
	int32 GetStructureSize() const;

	/**
	 * Adds a property declared by this struct. As in the engine it goes to the FRONT of ChildProperties,
	 * so add a struct's properties in reverse declaration order (last one first) to keep the declaration
	 * order. Call StaticLink afterwards.
	 */
	virtual void AddCppProperty(FProperty* Property) override;

	/**
	 * Lays the struct out: every property without a fixed (C++) offset gets one after the super struct's
	 * properties (and after the C++ part of a native type), aligned for its type; sizes, alignment and the
	 * property link lists are computed. Call after adding or changing properties, and after the super
	 * struct is linked. bRelinkExistingProperties recomputes offsets already given by a previous link.
	 */
	void StaticLink(bool bRelinkExistingProperties = false);

	/** The property named InName, declared here or in a super struct; null if none. */
	FProperty* FindPropertyByName(FName InName) const;

	/** Constructs (initial values) ArrayDim values of this struct at Dest, which must be zeroed memory. */
	virtual void InitializeStruct(void* Dest, int32 ArrayDim = 1) const;
	/** Destroys ArrayDim values at Dest. */
	virtual void DestroyStruct(void* Dest, int32 ArrayDim = 1) const;

	/** "F" for structs, "U" or "A" for classes. */
	virtual const TCHAR* GetPrefixCPP() const { return TEXT("F"); }
	/** "/Script/Engine.Actor" style path of the type. */
	FTopLevelAssetPath GetStructPathName() const;
	/** The name of a property as written in the source (the property's name here). */
	virtual FString GetAuthoredNameForField(const FField* Field) const;

	/** The native (C++) size of a value of this type: the part laid out by C++, before data-defined properties. */
	int32 GetNativeSize() const { return NativeSize; }

	/** Records that the type has a C++ layout of InNativeSize bytes (native registration only). */
	void SetNativeLayout(int32 InNativeSize, int32 InNativeAlignment);
	/** True when this type itself is laid out by C++ (not only inherited from a native super). */
	bool HasNativeLayout() const { return bHasNativeLayout; }

protected:
	virtual void Link(bool bRelinkExistingProperties);
	/** Where this struct's own properties start: after the super struct (nothing for functions). */
	virtual int32 GetLinkStartOffset() const;
	virtual const UStruct* GetInheritanceSuper() const { return GetSuperStruct(); }
	/** Size of the C++ part, known for native types; data-defined properties are placed after it. */
	int32 NativeSize = 0;
	int32 NativeAlignment = 1;
	bool bHasNativeLayout = false;

private:
	UStruct* SuperStruct = nullptr;
};

/** A struct type (FVector, FHitResult, a data-defined struct). */
class COREUOBJECT_API UScriptStruct : public UStruct
{
	DECLARE_CASTED_CLASS_INTRINSIC(UScriptStruct, UStruct, CLASS_None, TEXT("/Script/CoreUObject"), CASTCLASS_UScriptStruct)

public:
	/** How to construct, copy, compare and print a C++ struct; what a native struct has instead of its properties' rules. */
	struct COREUOBJECT_API ICppStructOps
	{
		ICppStructOps(int32 InSize, int32 InAlignment) : Size(InSize), Alignment(InAlignment) {}
		virtual ~ICppStructOps() = default;

		virtual bool HasZeroConstructor() const = 0;
		virtual void Construct(void* Dest) const = 0;
		virtual bool HasDestructor() const = 0;
		virtual void Destruct(void* Dest) const = 0;
		virtual bool IsPlainOldData() const = 0;
		virtual bool Copy(void* Dest, const void* Src, int32 ArrayDim) const = 0;
		virtual bool HasIdentical() const = 0;
		/** Compares A and B; false when the type cannot tell (then the properties decide). */
		virtual bool Identical(const void* A, const void* B, uint32 PortFlags, bool& bOutResult) const = 0;
		virtual bool HasExportTextItem() const = 0;
		virtual bool ExportTextItem(FString& ValueStr, const void* PropertyValue, const void* DefaultValue, UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const = 0;
		virtual bool HasImportTextItem() const = 0;
		/** Reads a value at Buffer, advancing it; false when the text is not a value of the type. */
		virtual bool ImportTextItem(const TCHAR*& Buffer, void* Data, int32 PortFlags, UObject* OwnerObject, FOutputDevice* ErrorText) const = 0;
		virtual bool HasGetTypeHash() const = 0;
		virtual uint32 GetStructTypeHash(const void* Src) const = 0;

		int32 GetSize() const { return Size; }
		int32 GetAlignment() const { return Alignment; }

	private:
		int32 Size;
		int32 Alignment;
	};

	/** ICppStructOps for a C++ struct: constructor, destructor, copy, and ==, ExportTextItem/ImportTextItem when it has them. */
	template <class CPPSTRUCT>
	struct TCppStructOps : public ICppStructOps
	{
		TCppStructOps() : ICppStructOps(sizeof(CPPSTRUCT), alignof(CPPSTRUCT)) {}

		virtual bool HasZeroConstructor() const override { return false; }
		virtual void Construct(void* Dest) const override { new (Dest) CPPSTRUCT(); }
		virtual bool HasDestructor() const override { return !std::is_trivially_destructible_v<CPPSTRUCT>; }
		virtual void Destruct(void* Dest) const override { static_cast<CPPSTRUCT*>(Dest)->~CPPSTRUCT(); }
		virtual bool IsPlainOldData() const override { return std::is_trivially_copyable_v<CPPSTRUCT>; }
		virtual bool Copy(void* Dest, const void* Src, int32 ArrayDim) const override
		{
			for (int32 Index = 0; Index < ArrayDim; ++Index)
			{
				static_cast<CPPSTRUCT*>(Dest)[Index] = static_cast<const CPPSTRUCT*>(Src)[Index];
			}
			return true;
		}
		virtual bool HasIdentical() const override { return requires(const CPPSTRUCT& A, const CPPSTRUCT& B) { { A == B } -> std::convertible_to<bool>; }; }
		virtual bool Identical(const void* A, const void* B, uint32 PortFlags, bool& bOutResult) const override
		{
			if constexpr (requires(const CPPSTRUCT& X, const CPPSTRUCT& Y) { { X == Y } -> std::convertible_to<bool>; })
			{
				bOutResult = *static_cast<const CPPSTRUCT*>(A) == *static_cast<const CPPSTRUCT*>(B);
				return true;
			}
			return false;
		}
		virtual bool HasExportTextItem() const override
		{
			return requires(const CPPSTRUCT& Value, FString& Out) { Value.ExportTextItem(Out, Value, (UObject*)nullptr, int32(0), (UObject*)nullptr); };
		}
		virtual bool ExportTextItem(FString& ValueStr, const void* PropertyValue, const void* DefaultValue, UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const override
		{
			if constexpr (requires(const CPPSTRUCT& Value, FString& Out) { Value.ExportTextItem(Out, Value, (UObject*)nullptr, int32(0), (UObject*)nullptr); })
			{
				const CPPSTRUCT& Value = *static_cast<const CPPSTRUCT*>(PropertyValue);
				return Value.ExportTextItem(ValueStr, DefaultValue ? *static_cast<const CPPSTRUCT*>(DefaultValue) : CPPSTRUCT(), Parent, PortFlags, ExportRootScope);
			}
			return false;
		}
		virtual bool HasImportTextItem() const override
		{
			return requires(CPPSTRUCT& Value, const TCHAR*& Buffer) { Value.ImportTextItem(Buffer, int32(0), (UObject*)nullptr, (FOutputDevice*)nullptr); };
		}
		virtual bool ImportTextItem(const TCHAR*& Buffer, void* Data, int32 PortFlags, UObject* OwnerObject, FOutputDevice* ErrorText) const override
		{
			if constexpr (requires(CPPSTRUCT& Value, const TCHAR*& Text) { Value.ImportTextItem(Text, int32(0), (UObject*)nullptr, (FOutputDevice*)nullptr); })
			{
				return static_cast<CPPSTRUCT*>(Data)->ImportTextItem(Buffer, PortFlags, OwnerObject, ErrorText);
			}
			return false;
		}
		virtual bool HasGetTypeHash() const override { return requires(const CPPSTRUCT& Value) { { GetTypeHash(Value) } -> std::convertible_to<uint32>; }; }
		virtual uint32 GetStructTypeHash(const void* Src) const override
		{
			if constexpr (requires(const CPPSTRUCT& Value) { { GetTypeHash(Value) } -> std::convertible_to<uint32>; })
			{
				return GetTypeHash(*static_cast<const CPPSTRUCT*>(Src));
			}
			return 0;
		}
	};

	UScriptStruct() = default;
	UScriptStruct(const FObjectInitializer& ObjectInitializer, UScriptStruct* InSuperStruct = nullptr, ICppStructOps* InCppStructOps = nullptr,
		EStructFlags InStructFlags = STRUCT_NoFlags, SIZE_T ExplicitSize = 0, SIZE_T ExplicitAlignment = 0);
	virtual ~UScriptStruct() override;

	EStructFlags StructFlags = STRUCT_NoFlags;

	/** The C++ operations of a native struct; null for a data-defined struct. */
	ICppStructOps* GetCppStructOps() const { return CppStructOps; }
	/** Takes ownership of the operations and sets the native size and the computed STRUCT_ flags. */
	void SetCppStructOps(ICppStructOps* InCppStructOps);
	void PrepareCppStructOps() {}

	bool HasAnyStructFlags(EStructFlags Flags) const { return (StructFlags & Flags) != 0; }

	virtual void InitializeStruct(void* Dest, int32 ArrayDim = 1) const override;
	virtual void DestroyStruct(void* Dest, int32 ArrayDim = 1) const override;
	/** Copies ArrayDim values from Src to Dest (both constructed). */
	void CopyScriptStruct(void* Dest, const void* Src, int32 ArrayDim = 1) const;
	/** True when A and B hold the same value. */
	bool CompareScriptStruct(const void* A, const void* B, uint32 PortFlags) const;
	/** The hash of a value, when the struct can hash (native GetTypeHash); else 0. */
	uint32 GetStructTypeHash(const void* Src) const;

	/**
	 * Writes the value as text: the type's own form for a native struct that has one (FGuid), else
	 * "(Member=Value,...)" with the members that differ from Defaults (all when Defaults is null).
	 */
	void ExportText(FString& ValueStr, const void* Value, const void* Defaults, UObject* OwnerObject, int32 PortFlags, UObject* ExportRootScope,
		bool bAllowNativeOverride = true) const;
	/** Reads what ExportText writes; returns the text after the value, or null on failure (reason to ErrorText). */
	const TCHAR* ImportText(const TCHAR* Buffer, void* Value, UObject* OwnerObject, int32 PortFlags, FOutputDevice* ErrorText,
		const FString& StructName, bool bAllowNativeOverride = true) const;

	/** "F" + the name: "FVector". */
	FString GetStructCPPName() const;

	/** True when the struct's default value differs from a zeroed one (headless: whether it has C++ ops). */
	bool HasDefaults() const { return CppStructOps != nullptr; }

protected:
	virtual void Link(bool bRelinkExistingProperties) override;

private:
	ICppStructOps* CppStructOps = nullptr;
};

/** An interface a class implements, with where the native interface part sits in the object. */
struct COREUOBJECT_API FImplementedInterface
{
	/** The interface class (a UInterface subclass). */
	UClass* Class = nullptr;
	/** Offset of the native interface part (the I-class) in objects of the implementing class; 0 when not native. */
	int32 PointerOffset = 0;
	/** Implemented by a Blueprint rather than in C++. */
	bool bImplementedByK2 = false;

	FImplementedInterface() = default;
	FImplementedInterface(UClass* InClass, int32 InOffset, bool InImplementedByK2)
		: Class(InClass), PointerOffset(InOffset), bImplementedByK2(InImplementedByK2) {}
};

/** A class: the type of objects. Native classes register from C++; others are built from data. */
class COREUOBJECT_API UClass : public UStruct
{
	DECLARE_CASTED_CLASS_INTRINSIC(UClass, UStruct, CLASS_None, TEXT("/Script/CoreUObject"), CASTCLASS_UClass)

public:
	using ClassConstructorType = void (*)(const FObjectInitializer&);

	UClass() = default;
	explicit UClass(const FObjectInitializer& ObjectInitializer);
	UClass(const FObjectInitializer& ObjectInitializer, UClass* InSuperClass);
	UClass(EStaticConstructor, FName InName, uint32 InSize, uint32 InAlignment, EClassFlags InClassFlags, EClassCastFlags InClassCastFlags,
		const TCHAR* InClassConfigName, EObjectFlags InFlags, ClassConstructorType InClassConstructor);
	virtual ~UClass() override;

	/** Builds the C++ part of an object; inherited by data-defined subclasses (see Bind). */
	ClassConstructorType ClassConstructor = nullptr;
	EClassFlags ClassFlags = CLASS_None;
	EClassCastFlags ClassCastFlags = CASTCLASS_None;
	/** Objects of this class must live inside an object of this class. */
	UClass* ClassWithin = nullptr;
	/** The object this class was built from (a Blueprint), or null. */
	UObject* ClassGeneratedBy = nullptr;
	FName ClassConfigName;
	/** Interfaces this class implements (its supers' are in their own lists). */
	TArray<FImplementedInterface> Interfaces;
	/** Counter the engine used for unique names; kept for compatibility. */
	int32 ClassUnique = 0;

	UClass* GetSuperClass() const { return (UClass*)GetSuperStruct(); }

	bool HasAnyClassFlags(EClassFlags FlagsToCheck) const { return EnumHasAnyFlags(ClassFlags, FlagsToCheck); }
	bool HasAllClassFlags(EClassFlags FlagsToCheck) const { return EnumHasAllFlags(ClassFlags, FlagsToCheck); }
	EClassFlags GetClassFlags() const { return ClassFlags; }
	bool HasAnyCastFlag(EClassCastFlags FlagToCheck) const { return (ClassCastFlags & FlagToCheck) != 0; }
	bool HasAllCastFlags(EClassCastFlags FlagsToCheck) const { return (ClassCastFlags & FlagsToCheck) == FlagsToCheck; }

	/**
	 * The class default object: made on first request (bCreateIfNeeded) with RF_ClassDefaultObject |
	 * RF_Public, named "Default__<ClassName>" in the class's package. Its values are the defaults every
	 * new object of the class starts from.
	 */
	UObject* GetDefaultObject(bool bCreateIfNeeded = true) const;
	template <class T>
	T* GetDefaultObject() const
	{
		return (T*)GetDefaultObject();
	}
	/** "Default__<ClassName>". */
	FName GetDefaultObjectName() const;
	/** The object a new default object takes its values from: the super class's default object. */
	UObject* GetArchetypeForCDO() const;
	/** Frees the default object so the next request makes a fresh one (after a class is rebuilt). */
	void PurgeClassDefaultObject();

	/** The function named InName in this class (and its supers with IncludeSuper); null if none. */
	UFunction* FindFunctionByName(FName InName, EIncludeSuperFlag::Type IncludeSuper = EIncludeSuperFlag::IncludeSuper) const;
	/** Makes the function findable by name; also add it to Children (Func->Next = Children; Children = Func). */
	void AddFunctionToFunctionMap(UFunction* Function, FName FuncName);
	void RemoveFunctionFromFunctionMap(UFunction* Function);
	void ClearFunctionMapsCaches() {}
	/** Functions added to the function map, in the order they were added. */
	const TMap<FName, UFunction*>& GetFunctionMap() const { return FuncMap; }

	/** True if this class or a super class lists SomeInterface (or a child of it) among its interfaces. */
	bool ImplementsInterface(const UClass* SomeInterface) const;

	/** Takes the C++ constructor and native size from the super class when this class has none. */
	virtual void Bind() override;
	virtual const TCHAR* GetPrefixCPP() const override;
	virtual void SetSuperStruct(UStruct* NewSuperStruct) override;
	virtual bool IsFunctionImplementedInScript(FName InFunctionName) const { return false; }
	/** Classes are never assets, even when they live in an asset package. */
	virtual bool IsAsset() const override { return false; }

	/**
	 * The type of TypeClass named InPathNameOrShortName: a path ("/Script/Engine.Actor") or a short
	 * name ("Actor"), case-insensitive.
	 */
	static UObject* TryFindTypeSlow(UClass* TypeClass, const FString& InPathNameOrShortName, EFindFirstObjectOptions Options = EFindFirstObjectOptions::None);
	template <typename T>
	static T* TryFindTypeSlow(const FString& InPathNameOrShortName, EFindFirstObjectOptions Options = EFindFirstObjectOptions::None)
	{
		return (T*)TryFindTypeSlow(T::StaticClass(), InPathNameOrShortName, Options);
	}
	/** The full path of the type named by a short name ("Actor" -> "/Script/Engine.Actor"); empty if unknown. */
	static FTopLevelAssetPath TryConvertShortTypeNameToPathName(UClass* TypeClass, const FString& InShortTypeName, EFindFirstObjectOptions Options = EFindFirstObjectOptions::None);

protected:
	virtual UObject* CreateDefaultObject();
	virtual void Link(bool bRelinkExistingProperties) override;

private:
	friend class UObject;
	mutable UObject* ClassDefaultObject = nullptr;
	TMap<FName, UFunction*> FuncMap;
};

/** A function: flags, and parameters as properties (CPF_Parm; CPF_OutParm; CPF_ReturnParm last). */
class COREUOBJECT_API UFunction : public UStruct
{
	DECLARE_CASTED_CLASS_INTRINSIC(UFunction, UStruct, CLASS_None, TEXT("/Script/CoreUObject"), CASTCLASS_UFunction)

public:
	UFunction() = default;
	explicit UFunction(const FObjectInitializer& ObjectInitializer);
	UFunction(const FObjectInitializer& ObjectInitializer, UFunction* InSuperFunction, EFunctionFlags InFunctionFlags = FUNC_None, SIZE_T ParamsSize = 0);

	EFunctionFlags FunctionFlags = FUNC_None;
	/** Set by StaticLink: parameter count, bytes of the parameter block, where the return value sits. */
	uint8 NumParms = 0;
	uint16 ParmsSize = 0;
	uint16 ReturnValueOffset = 0xFFFF;
	uint16 RPCId = 0;
	uint16 RPCResponseId = 0;
	FProperty* FirstPropertyToInit = nullptr;

	FNativeFuncPtr GetNativeFunc() const { return Func; }
	void SetNativeFunc(FNativeFuncPtr InFunc) { Func = InFunc; }

	/** The CPF_ReturnParm parameter, or null. */
	FProperty* GetReturnProperty() const;
	UClass* GetOwnerClass() const;
	/** The function this one overrides (its super struct). */
	UFunction* GetSuperFunction() const { return (UFunction*)GetSuperStruct(); }

	bool HasAnyFunctionFlags(EFunctionFlags FlagsToCheck) const { return (FunctionFlags & FlagsToCheck) != 0 || FlagsToCheck == FUNC_AllFlags; }
	bool HasAllFunctionFlags(EFunctionFlags FlagsToCheck) const { return (FunctionFlags & FlagsToCheck) == FlagsToCheck; }

	/** Flags a signature check ignores by default. */
	static uint64 GetDefaultIgnoredSignatureCompatibilityFlags();
	/** True when OtherFunction takes the same parameters (same kinds and flags, in order) as this one. */
	bool IsSignatureCompatibleWith(const UFunction* OtherFunction) const;
	bool IsSignatureCompatibleWith(const UFunction* OtherFunction, uint64 IgnoreFlags) const;

	/** Recomputes NumParms, ParmsSize and ReturnValueOffset from the parameters (flags are left as set). */
	void InitializeDerivedMembers();

	virtual void Bind() override;

protected:
	virtual void Link(bool bRelinkExistingProperties) override;
	/** Parameters are laid out from 0: the overridden function's parameters are not inherited. */
	virtual const UStruct* GetInheritanceSuper() const override { return nullptr; }

private:
	FNativeFuncPtr Func = nullptr;
};

/** The signature of a delegate type. */
class COREUOBJECT_API UDelegateFunction : public UFunction
{
	DECLARE_CASTED_CLASS_INTRINSIC(UDelegateFunction, UFunction, CLASS_None, TEXT("/Script/CoreUObject"), CASTCLASS_UDelegateFunction)

public:
	UDelegateFunction() = default;
	explicit UDelegateFunction(const FObjectInitializer& ObjectInitializer);
};

/** The signature of a sparse multicast delegate. */
class COREUOBJECT_API USparseDelegateFunction : public UDelegateFunction
{
	DECLARE_CASTED_CLASS_INTRINSIC(USparseDelegateFunction, UDelegateFunction, CLASS_None, TEXT("/Script/CoreUObject"), CASTCLASS_USparseDelegateFunction)

public:
	USparseDelegateFunction() = default;
	explicit USparseDelegateFunction(const FObjectInitializer& ObjectInitializer);

	FName OwningClassName;
	FName DelegateName;
};

/** Options of UEnum lookups by name. */
enum class EGetByNameFlags
{
	None = 0,
	/** Fail unless the full name matches ("EFoo::Bar" rather than "Bar"). */
	ErrorIfNotFound = 0x01,
	/** Compare with case. */
	CaseSensitive = 0x02,
	/** Also accept the authored (C++) name. */
	CheckAuthoredName = 0x04,
};
ENUM_CLASS_FLAGS(EGetByNameFlags)

/** An enumeration: names with values, and metadata per entry (DisplayName, ToolTip, Hidden...). */
class COREUOBJECT_API UEnum : public UField
{
	DECLARE_CASTED_CLASS_INTRINSIC(UEnum, UField, CLASS_None, TEXT("/Script/CoreUObject"), CASTCLASS_UEnum)

public:
	/** How the enum is written in C++, which decides how its entries are named. */
	enum class ECppForm
	{
		/** enum EFoo { Foo_A }: entries named "Foo_A". */
		Regular,
		/** namespace EFoo { enum Type { A } }: entries named "EFoo::A". */
		Namespaced,
		/** enum class EFoo { A }: entries named "EFoo::A". */
		EnumClass
	};

	UEnum() = default;
	explicit UEnum(const FObjectInitializer& ObjectInitializer);

	/** The C++ type name ("EFoo" or "EFoo::Type"). */
	FString CppType;

	/**
	 * Sets the entries. For Namespaced and EnumClass forms, names must be full ("EFoo::A"). With
	 * bAddMaxKeyIfMissing, a "<Prefix>_MAX" entry with the next value is added (as the engine's
	 * generated enums have) unless one exists. False, changing nothing, on a duplicate name.
	 */
	bool SetEnums(TArray<TPair<FName, int64>>& InNames, ECppForm InCppForm, EEnumFlags InFlags = EEnumFlags::None, bool bAddMaxKeyIfMissing = true);

	ECppForm GetCppForm() const { return CppForm; }
	bool HasAnyEnumFlags(EEnumFlags InFlags) const { return EnumHasAnyFlags(EnumFlags, InFlags); }
	void SetEnumFlags(EEnumFlags InFlags) { EnumFlags |= InFlags; }

	/** Entries including the generated _MAX one. */
	int32 NumEnums() const { return Names.Num(); }
	/** The full name of entry Index ("EFoo::A"), NAME_None out of range. */
	FName GetNameByIndex(int32 Index) const;
	FName GetNameByValue(int64 InValue) const;
	/** The entry name without the "EFoo::" part ("A"); empty out of range. */
	FString GetNameStringByIndex(int32 InIndex) const;
	FString GetNameStringByValue(int64 InValue) const;
	FString GetAuthoredNameStringByIndex(int32 InIndex) const { return GetNameStringByIndex(InIndex); }
	FString GetAuthoredNameStringByValue(int64 InValue) const { return GetNameStringByValue(InValue); }
	int64 GetValueByIndex(int32 Index) const;
	/** INDEX_NONE when absent. Accepts the full or the short name. */
	int64 GetValueByName(FName InName, EGetByNameFlags Flags = EGetByNameFlags::None) const;
	int64 GetValueByNameString(const FString& SearchString, EGetByNameFlags Flags = EGetByNameFlags::None) const;
	int32 GetIndexByName(FName InName, EGetByNameFlags Flags = EGetByNameFlags::None) const;
	int32 GetIndexByNameString(const FString& SearchString, EGetByNameFlags Flags = EGetByNameFlags::None) const;
	int32 GetIndexByValue(int64 InValue) const;
	/** The DisplayName metadata of the entry, else the short name. */
	FText GetDisplayNameTextByIndex(int32 InIndex) const;
	FText GetDisplayNameTextByValue(int64 InValue) const;
	bool FindDisplayNameTextByValue(FText& OutText, int64 InValue) const;
	FText GetToolTipTextByIndex(int32 NameIndex) const;
	/** The largest value (the generated _MAX entry included). */
	int64 GetMaxEnumValue() const;
	bool IsValidEnumValue(int64 InValue) const;
	bool IsValidEnumName(FName InName) const;
	/** True when the last entry is the "<Prefix>_MAX" one. */
	bool ContainsExistingMax() const;

	/** "EFoo::A" for the Namespaced and EnumClass forms, the name unchanged for Regular. */
	FString GenerateFullEnumName(const TCHAR* InEnumName) const;
	/** The common prefix of the entry names ("ECC" for ECC_WorldStatic...), else the enum's name. */
	FString GenerateEnumPrefix() const;
	/** True for a name written "Type::Entry". */
	static bool IsFullEnumName(const TCHAR* InEnumName);
	/**
	 * Reads an enumerator name at Str ("EFoo::Bar" or "Foo_Bar", letters, digits, '_' and "::"), advancing
	 * past it, and returns its value from whichever enum has it; INDEX_NONE when no enum has it.
	 */
	static int64 ParseEnum(const TCHAR*& Str);

	// Metadata. With a NameIndex the key is the entry's ("A.DisplayName"); without, it is the enum's own.
	bool HasMetaData(const TCHAR* Key, int32 NameIndex = INDEX_NONE) const;
	FString GetMetaData(const TCHAR* Key, int32 NameIndex = INDEX_NONE, bool bAllowRemap = true) const;
	void SetMetaData(const TCHAR* Key, const TCHAR* InValue, int32 NameIndex = INDEX_NONE);
	void RemoveMetaData(const TCHAR* Key, int32 NameIndex = INDEX_NONE);

	/** The entries with their values. */
	const TArray<TPair<FName, int64>>& GetEnums() const { return Names; }

private:
	FString MetaDataKey(const TCHAR* Key, int32 NameIndex) const;

	TArray<TPair<FName, int64>> Names;
	ECppForm CppForm = ECppForm::Regular;
	EEnumFlags EnumFlags = EEnumFlags::None;
};

// Class default objects

template <class T>
const T* GetDefault()
{
	return (const T*)T::StaticClass()->GetDefaultObject();
}

template <class T>
T* GetMutableDefault()
{
	return (T*)T::StaticClass()->GetDefaultObject();
}

template <class T>
const T* GetDefault(UClass* Class)
{
	return (const T*)Class->GetDefaultObject();
}

template <class T>
T* GetMutableDefault(UClass* Class)
{
	return (T*)Class->GetDefaultObject();
}

// Script structs and enums of C++ types

/** The UScriptStruct of a C++ struct: T::StaticStruct(), or the core struct registered for T. */
template <typename T>
struct TBaseStructure
{
	static UScriptStruct* Get() { return T::StaticStruct(); }
};

template <> struct TBaseStructure<FVector> { COREUOBJECT_API static UScriptStruct* Get(); };
template <> struct TBaseStructure<FVector2D> { COREUOBJECT_API static UScriptStruct* Get(); };
template <> struct TBaseStructure<FRotator> { COREUOBJECT_API static UScriptStruct* Get(); };
template <> struct TBaseStructure<FQuat> { COREUOBJECT_API static UScriptStruct* Get(); };
template <> struct TBaseStructure<FTransform> { COREUOBJECT_API static UScriptStruct* Get(); };
template <> struct TBaseStructure<FLinearColor> { COREUOBJECT_API static UScriptStruct* Get(); };
template <> struct TBaseStructure<FColor> { COREUOBJECT_API static UScriptStruct* Get(); };
template <> struct TBaseStructure<FGuid> { COREUOBJECT_API static UScriptStruct* Get(); };
template <> struct TBaseStructure<FBox2D> { COREUOBJECT_API static UScriptStruct* Get(); };
template <> struct TBaseStructure<FIntPoint> { COREUOBJECT_API static UScriptStruct* Get(); };

template <typename T>
UScriptStruct* StaticStruct()
{
	return TBaseStructure<T>::Get();
}

/** The UEnum of a C++ enum registered with IMPLEMENT_NATIVE_ENUM. */
template <typename T>
UEnum* StaticEnum();

namespace UE::CoreUObject::Private
{
	/** Builds a script struct for a C++ struct; see IMPLEMENT_SCRIPT_STRUCT. */
	COREUOBJECT_API void ConstructNativeScriptStruct(UScriptStruct*& OutStruct, const TCHAR* PackageName, const TCHAR* Name,
		UScriptStruct::ICppStructOps* CppStructOps, EStructFlags Flags, UScriptStruct* (*SuperStructFn)(), void (*InitFn)(UScriptStruct*));
	/** Builds an enum for a C++ enum; see IMPLEMENT_NATIVE_ENUM. */
	COREUOBJECT_API void ConstructNativeEnum(UEnum*& OutEnum, const TCHAR* PackageName, const TCHAR* Name, const TCHAR* CppType, void (*InitFn)(UEnum*));

	/** Queues a struct or enum so it is findable by path before the first lookup. */
	struct COREUOBJECT_API FRegisterCompiledInType
	{
		explicit FRegisterCompiledInType(UObject* (*RegisterFn)());
	};
}

/**
 * Implements `static UScriptStruct* StaticStruct();` of a C++ struct TStruct (declared in the struct),
 * registering it as "<TPackage>.<Name without F>". InitCode reflects the members as in IMPLEMENT_CLASS
 * (with `Struct`, `Owner` and `ThisClass` in scope).
 */
#define IMPLEMENT_SCRIPT_STRUCT(TStruct, TPackage, TStructFlags, ...) \
	UScriptStruct* TStruct::StaticStruct() \
	{ \
		static UScriptStruct* PrivateStaticStruct = nullptr; \
		if (!PrivateStaticStruct) \
		{ \
			::UE::CoreUObject::Private::ConstructNativeScriptStruct(PrivateStaticStruct, TPackage, TEXT(#TStruct) + 1, \
				new UScriptStruct::TCppStructOps<TStruct>(), EStructFlags(TStructFlags), nullptr, \
				[](UScriptStruct* Struct) { using ThisClass = TStruct; [[maybe_unused]] UStruct* const Owner = Struct; __VA_ARGS__ }); \
		} \
		return PrivateStaticStruct; \
	} \
	static ::UE::CoreUObject::Private::FRegisterCompiledInType Z_CompiledInStruct_##TStruct([]() -> UObject* { return TStruct::StaticStruct(); });

/** As IMPLEMENT_SCRIPT_STRUCT, for a struct deriving from TSuperStruct (which must also be reflected). */
#define IMPLEMENT_SCRIPT_STRUCT_WITH_SUPER(TStruct, TSuperStruct, TPackage, TStructFlags, ...) \
	UScriptStruct* TStruct::StaticStruct() \
	{ \
		static UScriptStruct* PrivateStaticStruct = nullptr; \
		if (!PrivateStaticStruct) \
		{ \
			::UE::CoreUObject::Private::ConstructNativeScriptStruct(PrivateStaticStruct, TPackage, TEXT(#TStruct) + 1, \
				new UScriptStruct::TCppStructOps<TStruct>(), EStructFlags(TStructFlags), []() { return StaticStruct<TSuperStruct>(); }, \
				[](UScriptStruct* Struct) { using ThisClass = TStruct; [[maybe_unused]] UStruct* const Owner = Struct; __VA_ARGS__ }); \
		} \
		return PrivateStaticStruct; \
	} \
	static ::UE::CoreUObject::Private::FRegisterCompiledInType Z_CompiledInStruct_##TStruct([]() -> UObject* { return TStruct::StaticStruct(); });

/**
 * Implements StaticEnum<TEnum>(), registering the enum as "<TPackage>.<TEnum>". InitCode has `Enum`
 * (the UEnum) in scope and gives it its entries with Enum->SetEnums(...).
 */
#define IMPLEMENT_NATIVE_ENUM(TEnum, TPackage, ...) \
	template <> UEnum* StaticEnum<TEnum>() \
	{ \
		static UEnum* PrivateStaticEnum = nullptr; \
		if (!PrivateStaticEnum) \
		{ \
			::UE::CoreUObject::Private::ConstructNativeEnum(PrivateStaticEnum, TPackage, TEXT(#TEnum), TEXT(#TEnum), \
				[](UEnum* Enum) { __VA_ARGS__ }); \
		} \
		return PrivateStaticEnum; \
	} \
	static ::UE::CoreUObject::Private::FRegisterCompiledInType Z_CompiledInEnum_##TEnum([]() -> UObject* { return StaticEnum<TEnum>(); });
