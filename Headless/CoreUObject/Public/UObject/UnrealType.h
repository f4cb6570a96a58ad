#pragma once

// Properties: the reflected members of classes, structs and function parameters, one FProperty class
// per kind of value. Each property knows its value's size and alignment, where it sits in its container
// (Offset_Internal), and how to construct, copy, compare, destroy, export and import a value.

#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"
#include "UObject/Field.h"
#include "UObject/Class.h"
#include "UObject/ObjectPtr.h"
#include "UObject/WeakObjectPtr.h"
#include "UObject/SoftObjectPtr.h"
#include "UObject/ScriptInterface.h"
#include "UObject/ScriptDelegates.h"
#include "UObject/ScriptContainers.h"

#include <type_traits>

class FOutputDevice;
class UEnum;
class UFunction;
class UScriptStruct;

/** Whether a pointer given to a property is the value itself or the container (object/struct) holding it. */
enum class EPropertyPointerType
{
	Direct = 0,
	Container = 1,
};

/** Flags of FProperty::GetCPPType. */
enum EPropertyExportCPPFlags
{
	CPPF_None = 0x00000000,
	CPPF_OptionalValue = 0x00000001,
	CPPF_ArgumentOrReturnValue = 0x00000002,
	CPPF_Implementation = 0x00000004,
	CPPF_CustomTypeName = 0x00000008,
	CPPF_NoConst = 0x00000010,
	CPPF_NoRef = 0x00000020,
	CPPF_NoStaticArray = 0x00000040,
	CPPF_BlueprintCppBackend = 0x00000080,
	CPPF_NativeInterface = 0x00000100,
};

/** The base of every property kind. */
class COREUOBJECT_API FProperty : public FField
{
	DECLARE_FIELD(FProperty, FField, CASTCLASS_FProperty)

public:
	/** A property laid out by StaticLink (data-defined). */
	FProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	/** A property at a fixed offset of a C++ type (see UE_NATIVE_PROPERTY); StaticLink keeps the offset. */
	FProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags);
	virtual ~FProperty() override;

	// Layout

	/** Elements of a fixed-size C array member (1 for a plain member). */
	int32 GetArrayDim() const { return ArrayDim; }
	void SetArrayDim(int32 InArrayDim) { ArrayDim = InArrayDim; }
	/** Bytes of one element. */
	int32 GetElementSize() const { return ElementSize; }
	void SetElementSize(int32 InElementSize) { ElementSize = InElementSize; }
	/** Bytes of the whole member: ArrayDim * ElementSize. */
	int32 GetSize() const { return ArrayDim * ElementSize; }
	virtual int32 GetMinAlignment() const { return 1; }

	int32 GetOffset_ForInternal() const { return Offset_Internal; }
	int32 GetOffset_ForUFunction() const { return Offset_Internal; }
	int32 GetOffset_ForDebug() const { return Offset_Internal; }
	int32 GetOffset_ForGC() const { return Offset_Internal; }
	int32 GetOffset_ReplaceWith_ContainerPtrToValuePtr() const { return Offset_Internal; }
	void SetOffset_Internal(int32 NewOffset) { Offset_Internal = NewOffset; }
	/** True when the offset came from C++ (the member of a native type); StaticLink never moves it. */
	bool HasNativeOffset() const { return bNativeOffset; }
	/** True if the value lies inside the first ContainerSize bytes of its container. */
	bool IsInContainer(int32 ContainerSize) const { return Offset_Internal + GetSize() <= ContainerSize; }
	bool IsInContainer(const UStruct* ContainerClass) const;

	/** The value of element ArrayIndex inside the object or struct value at Container. */
	template <typename ValueType>
	ValueType* ContainerPtrToValuePtr(void* Container, int32 ArrayIndex = 0) const
	{
		return (ValueType*)ContainerVoidPtrToValuePtrInternal(Container, ArrayIndex);
	}
	template <typename ValueType>
	const ValueType* ContainerPtrToValuePtr(const void* Container, int32 ArrayIndex = 0) const
	{
		return (const ValueType*)ContainerVoidPtrToValuePtrInternal(const_cast<void*>(Container), ArrayIndex);
	}
	template <typename ValueType>
	ValueType* ContainerPtrToValuePtr(UObject* Container, int32 ArrayIndex = 0) const
	{
		return (ValueType*)ContainerVoidPtrToValuePtrInternal((void*)Container, ArrayIndex);
	}
	template <typename ValueType>
	const ValueType* ContainerPtrToValuePtr(const UObject* Container, int32 ArrayIndex = 0) const
	{
		return (const ValueType*)ContainerVoidPtrToValuePtrInternal((void*)Container, ArrayIndex);
	}
	/** Value pointer from a pointer of either kind. */
	void* PointerToValuePtr(const void* ContainerOrValuePtr, EPropertyPointerType PointerType, int32 ArrayIndex = 0) const
	{
		return PointerType == EPropertyPointerType::Container ? ContainerVoidPtrToValuePtrInternal(const_cast<void*>(ContainerOrValuePtr), ArrayIndex)
			: (uint8*)const_cast<void*>(ContainerOrValuePtr) + (SIZE_T)ArrayIndex * ElementSize;
	}

	// Flags

	EPropertyFlags GetPropertyFlags() const { return PropertyFlags; }
	void SetPropertyFlags(EPropertyFlags NewFlags) { PropertyFlags |= NewFlags; }
	void ClearPropertyFlags(EPropertyFlags FlagsToClear) { PropertyFlags &= ~FlagsToClear; }
	bool HasAnyPropertyFlags(uint64 FlagsToCheck) const { return (PropertyFlags & FlagsToCheck) != 0 || FlagsToCheck == CPF_AllFlags; }
	bool HasAllPropertyFlags(uint64 FlagsToCheck) const { return (PropertyFlags & FlagsToCheck) == FlagsToCheck; }
	/** Whether text export with PortFlags includes this property (transient, deprecated and so on are left out). */
	bool ShouldPort(uint32 PortFlags = 0) const;

	// Values (Dest and Src point at the value; the _InContainer forms at the object or struct)

	/** Constructs all ArrayDim elements in zeroed memory. */
	void InitializeValue(void* Dest) const { InitializeValueInternal(Dest); }
	void InitializeValue_InContainer(void* Container) const { InitializeValueInternal(ContainerPtrToValuePtr<uint8>(Container)); }
	void DestroyValue(void* Dest) const { DestroyValueInternal(Dest); }
	void DestroyValue_InContainer(void* Container) const { DestroyValueInternal(ContainerPtrToValuePtr<uint8>(Container)); }
	/** Resets one element to its initial value. */
	void ClearValue(void* Data) const { ClearValueInternal(Data); }
	void ClearValue_InContainer(void* Data, int32 ArrayIndex = 0) const { ClearValueInternal(ContainerPtrToValuePtr<uint8>(Data, ArrayIndex)); }
	void CopySingleValue(void* Dest, const void* Src) const { if (Dest != Src) CopyValuesInternal(Dest, Src, 1); }
	void CopyCompleteValue(void* Dest, const void* Src) const { if (Dest != Src) CopyValuesInternal(Dest, Src, ArrayDim); }
	void CopyCompleteValue_InContainer(void* Dest, const void* Src) const
	{
		CopyCompleteValue(ContainerPtrToValuePtr<void>(Dest), ContainerPtrToValuePtr<void>(Src));
	}
	/** Compares one element; a null B compares with the type's initial value. */
	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const = 0;
	bool Identical_InContainer(const void* A, const void* B, int32 ArrayIndex = 0, uint32 PortFlags = 0) const
	{
		return Identical(ContainerPtrToValuePtr<void>(A, ArrayIndex), B ? ContainerPtrToValuePtr<void>(B, ArrayIndex) : nullptr, PortFlags);
	}
	/** Hash of one element, for properties with CPF_HasGetValueTypeHash. */
	uint32 GetValueTypeHash(const void* Src) const;

	// Text

	/**
	 * Appends the value at Data in the engine's text form when it differs from the value at Delta (a null
	 * Delta stands for the type's initial value; Delta == Data always exports). True when something was
	 * written. Parent and ExportRootScope decide how object paths are shortened.
	 */
	bool ExportText_Direct(FString& ValueStr, const void* Data, const void* Delta, UObject* Parent, int32 PortFlags, UObject* ExportRootScope = nullptr) const;
	bool ExportText_InContainer(int32 Index, FString& ValueStr, const void* Data, const void* Delta, UObject* Parent, int32 PortFlags, UObject* ExportRootScope = nullptr) const
	{
		return ExportText_Direct(ValueStr, ContainerPtrToValuePtr<void>(Data, Index), Delta ? ContainerPtrToValuePtr<void>(Delta, Index) : nullptr, Parent, PortFlags,
			ExportRootScope);
	}
	/**
	 * Appends the value at PropertyValue in the engine's text form, always. DefaultValue, when given, is what
	 * structs and containers compare their members with to leave out unchanged ones.
	 */
	void ExportTextItem_Direct(FString& ValueStr, const void* PropertyValue, const void* DefaultValue, UObject* Parent, int32 PortFlags, UObject* ExportRootScope = nullptr) const
	{
		ExportText_Internal(ValueStr, PropertyValue, EPropertyPointerType::Direct, DefaultValue, Parent, PortFlags, ExportRootScope);
	}
	void ExportTextItem_InContainer(FString& ValueStr, const void* Container, const void* DefaultValue, UObject* Parent, int32 PortFlags, UObject* ExportRootScope = nullptr) const
	{
		ExportText_Internal(ValueStr, ContainerPtrToValuePtr<void>(Container), EPropertyPointerType::Direct, DefaultValue ? ContainerPtrToValuePtr<void>(DefaultValue) : nullptr,
			Parent, PortFlags, ExportRootScope);
	}

	/**
	 * Reads a value from Buffer into PropertyPtr. Returns the text after the value, or null when the text
	 * is not a value of this property (the reason goes to ErrorText when given; the value is left unchanged
	 * for simple types).
	 */
	const TCHAR* ImportText_Direct(const TCHAR* Buffer, void* PropertyPtr, UObject* OwnerObject, int32 PortFlags, FOutputDevice* ErrorText = nullptr) const;
	const TCHAR* ImportText_InContainer(const TCHAR* Buffer, void* Container, UObject* OwnerObject, int32 PortFlags, FOutputDevice* ErrorText = nullptr) const
	{
		return ImportText_Direct(Buffer, ContainerPtrToValuePtr<void>(Container), OwnerObject, PortFlags, ErrorText);
	}

	// Types

	/** The C++ type: "int32", "FString", "TArray" (with "<FString>" in ExtendedTypeText), "UObject*"... */
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const = 0;
	/** The engine's macro type name ("PROPERTY", "OBJECT", "TARRAY", "STRUCT", "ENUM"...). */
	virtual FString GetCPPMacroType(FString& ExtendedTypeText) const;
	/** True if Other is the same kind with the same types (classes, structs, enums, inner properties). */
	virtual bool SameType(const FProperty* Other) const;

	/** Lays out inner properties (containers, enums); called by UStruct::StaticLink. */
	virtual void LinkInternal() {}
	/** Copies the type description (flags, classes, inner properties) of the property this one duplicates. */
	virtual void PostDuplicate(const FField& InField) override;
	/** Gives the property its offset in the owner struct being linked; returns the end of the value. */
	int32 SetupOffset();
	/** True when a value of the type is constructed by zeroing. */
	bool IsZeroConstructed() const { return HasAnyPropertyFlags(CPF_ZeroConstructor); }

	/** Engine-internal: export with a pointer of either kind. */
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope = nullptr) const = 0;
	/** Engine-internal: import with a pointer of either kind. */
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
		int32 PortFlags, FOutputDevice* ErrorText) const = 0;

	/** Link lists built by UStruct::StaticLink. */
	FProperty* PropertyLinkNext = nullptr;
	FProperty* NextRef = nullptr;
	FProperty* DestructorLinkNext = nullptr;
	FProperty* PostConstructLinkNext = nullptr;
	/** The function called when the value replicates (CPF_RepNotify). */
	FName RepNotifyFunc;
	uint16 RepIndex = 0;

protected:
	virtual void InitializeValueInternal(void* Dest) const;
	virtual void DestroyValueInternal(void* Dest) const {}
	virtual void ClearValueInternal(void* Data) const;
	virtual void CopyValuesInternal(void* Dest, const void* Src, int32 Count) const;
	virtual uint32 GetValueTypeHashInternal(const void* Src) const;

	void* ContainerVoidPtrToValuePtrInternal(void* ContainerPtr, int32 ArrayIndex) const
	{
		return (uint8*)ContainerPtr + Offset_Internal + (SIZE_T)ElementSize * ArrayIndex;
	}

	EPropertyFlags PropertyFlags = CPF_None;

private:
	int32 ArrayDim = 1;
	int32 ElementSize = 0;
	int32 Offset_Internal = 0;
	bool bNativeOffset = false;
	/** Set once StaticLink gave the property its offset. */
	bool bOffsetAssigned = false;
	friend class UStruct;
};

/** The typed layer of a property whose value is a TCppType: construction, copy, compare and typed access. */
template <typename InTCppType, class TInPropertyBaseClass>
class TProperty : public TInPropertyBaseClass
{
public:
	using TCppType = InTCppType;
	using Super = TInPropertyBaseClass;

	TProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
		: Super(InOwner, InName, InObjectFlags)
	{
		this->SetElementSize(sizeof(TCppType));
		this->PropertyFlags |= GetComputedFlags();
	}
	TProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags)
		: Super(InOwner, InName, InObjectFlags, InOffset, InFlags)
	{
		this->SetElementSize(sizeof(TCppType));
		this->PropertyFlags |= GetComputedFlags();
	}

	static const TCppType* GetPropertyValuePtr(const void* A) { return (const TCppType*)A; }
	static TCppType* GetPropertyValuePtr(void* A) { return (TCppType*)A; }
	static const TCppType& GetPropertyValue(const void* A) { return *GetPropertyValuePtr(A); }
	static TCppType GetDefaultPropertyValue() { return TCppType(); }
	static void SetPropertyValue(void* A, const TCppType& Value) { *GetPropertyValuePtr(A) = Value; }
	static TCppType* InitializePropertyValue(void* A) { return new (A) TCppType(); }
	static void DestroyPropertyValue(void* A) { GetPropertyValuePtr(A)->~TCppType(); }

	TCppType* GetPropertyValuePtr_InContainer(void* A, int32 ArrayIndex = 0) const { return this->template ContainerPtrToValuePtr<TCppType>(A, ArrayIndex); }
	const TCppType* GetPropertyValuePtr_InContainer(const void* A, int32 ArrayIndex = 0) const { return this->template ContainerPtrToValuePtr<TCppType>(A, ArrayIndex); }
	TCppType GetPropertyValue_InContainer(const void* A, int32 ArrayIndex = 0) const { return *GetPropertyValuePtr_InContainer(A, ArrayIndex); }
	void SetPropertyValue_InContainer(void* A, const TCppType& Value, int32 ArrayIndex = 0) const { *GetPropertyValuePtr_InContainer(A, ArrayIndex) = Value; }

	virtual int32 GetMinAlignment() const override { return alignof(TCppType); }

	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override
	{
		if constexpr (requires(const TCppType& X, const TCppType& Y) { { X == Y } -> std::convertible_to<bool>; })
		{
			const TCppType& ValueA = GetPropertyValue(A);
			return B ? ValueA == GetPropertyValue(B) : ValueA == TCppType();
		}
		else
		{
			return false;
		}
	}

protected:
	static constexpr EPropertyFlags GetComputedFlags()
	{
		EPropertyFlags Flags = CPF_None;
		if constexpr (std::is_trivially_destructible_v<TCppType>)
		{
			Flags |= CPF_NoDestructor;
		}
		if constexpr (std::is_arithmetic_v<TCppType> || std::is_enum_v<TCppType>)
		{
			Flags |= CPF_IsPlainOldData | CPF_ZeroConstructor;
		}
		if constexpr (requires(const TCppType& X) { { GetTypeHash(X) } -> std::convertible_to<uint32>; })
		{
			Flags |= CPF_HasGetValueTypeHash;
		}
		return Flags;
	}

	virtual void InitializeValueInternal(void* Dest) const override
	{
		for (int32 Index = 0; Index < this->GetArrayDim(); ++Index)
		{
			new ((uint8*)Dest + (SIZE_T)Index * sizeof(TCppType)) TCppType();
		}
	}
	virtual void DestroyValueInternal(void* Dest) const override
	{
		for (int32 Index = 0; Index < this->GetArrayDim(); ++Index)
		{
			((TCppType*)((uint8*)Dest + (SIZE_T)Index * sizeof(TCppType)))->~TCppType();
		}
	}
	virtual void ClearValueInternal(void* Data) const override
	{
		if constexpr (std::is_copy_assignable_v<TCppType>)
		{
			*(TCppType*)Data = TCppType();
		}
	}
	virtual void CopyValuesInternal(void* Dest, const void* Src, int32 Count) const override
	{
		if constexpr (std::is_copy_assignable_v<TCppType>)
		{
			for (int32 Index = 0; Index < Count; ++Index)
			{
				((TCppType*)Dest)[Index] = ((const TCppType*)Src)[Index];
			}
		}
	}
	virtual uint32 GetValueTypeHashInternal(const void* Src) const override
	{
		if constexpr (requires(const TCppType& X) { { GetTypeHash(X) } -> std::convertible_to<uint32>; })
		{
			return GetTypeHash(GetPropertyValue(Src));
		}
		else
		{
			return 0;
		}
	}
};

/** A number: the base of the integer and floating-point kinds (FByteProperty included). */
class COREUOBJECT_API FNumericProperty : public FProperty
{
	DECLARE_FIELD(FNumericProperty, FProperty, CASTCLASS_FNumericProperty)

public:
	using FProperty::FProperty;

	virtual bool IsFloatingPoint() const { return false; }
	virtual bool IsInteger() const { return true; }
	/** The enum when this is a byte property holding an enum. */
	virtual UEnum* GetIntPropertyEnum() const { return nullptr; }
	bool IsEnum() const { return GetIntPropertyEnum() != nullptr; }

	virtual void SetIntPropertyValue(void* Data, uint64 Value) const = 0;
	virtual void SetIntPropertyValue(void* Data, int64 Value) const = 0;
	virtual void SetFloatingPointPropertyValue(void* Data, double Value) const = 0;
	/** Parses Value as this type's number (floats for floating point, integers otherwise). */
	virtual void SetNumericPropertyValueFromString(void* Data, const TCHAR* Value) const = 0;
	virtual int64 GetSignedIntPropertyValue(const void* Data) const = 0;
	virtual uint64 GetUnsignedIntPropertyValue(const void* Data) const = 0;
	virtual double GetFloatingPointPropertyValue(const void* Data) const = 0;
	/** The value as its export text ("3", "1.500000"). */
	virtual FString GetNumericPropertyValueToString(const void* Data) const = 0;
	/** True if the value can be held without loss. */
	virtual bool CanHoldValue(int64 Value) const = 0;
};

/** The numeric kinds' shared implementation: text forms and conversions for the C++ number type. */
template <typename InTCppType>
class TProperty_Numeric : public TProperty<InTCppType, FNumericProperty>
{
public:
	using Super = TProperty<InTCppType, FNumericProperty>;
	using TCppType = InTCppType;
	using Super::Super;

	virtual bool IsFloatingPoint() const override { return std::is_floating_point_v<TCppType>; }
	virtual bool IsInteger() const override { return std::is_integral_v<TCppType>; }

	virtual void SetIntPropertyValue(void* Data, uint64 Value) const override { *(TCppType*)Data = (TCppType)Value; }
	virtual void SetIntPropertyValue(void* Data, int64 Value) const override { *(TCppType*)Data = (TCppType)Value; }
	virtual void SetFloatingPointPropertyValue(void* Data, double Value) const override { *(TCppType*)Data = (TCppType)Value; }
	virtual void SetNumericPropertyValueFromString(void* Data, const TCHAR* Value) const override;
	virtual int64 GetSignedIntPropertyValue(const void* Data) const override { return (int64)*(const TCppType*)Data; }
	virtual uint64 GetUnsignedIntPropertyValue(const void* Data) const override { return (uint64)*(const TCppType*)Data; }
	virtual double GetFloatingPointPropertyValue(const void* Data) const override { return (double)*(const TCppType*)Data; }
	virtual FString GetNumericPropertyValueToString(const void* Data) const override;
	virtual bool CanHoldValue(int64 Value) const override;

	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope = nullptr) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
		int32 PortFlags, FOutputDevice* ErrorText) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
};

/** uint8, or an enum stored in a byte (TEnumAsByte) when Enum is set. */
class COREUOBJECT_API FByteProperty : public TProperty_Numeric<uint8>
{
	DECLARE_FIELD(FByteProperty, TProperty_Numeric<uint8>, CASTCLASS_FByteProperty)

public:
	FByteProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	FByteProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags, UEnum* InEnum = nullptr);

	/** The enum whose values the byte holds, or null for a plain byte. */
	UEnum* Enum = nullptr;

	virtual UEnum* GetIntPropertyEnum() const override { return Enum; }
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope = nullptr) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
		int32 PortFlags, FOutputDevice* ErrorText) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual bool SameType(const FProperty* Other) const override;
};

#define UE_DECLARE_NUMERIC_PROPERTY(TClass, TCpp, TCast) \
	class COREUOBJECT_API TClass : public TProperty_Numeric<TCpp> \
	{ \
		DECLARE_FIELD(TClass, TProperty_Numeric<TCpp>, TCast) \
	public: \
		TClass(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags) : Super(InOwner, InName, InObjectFlags) {} \
		TClass(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags) \
			: Super(InOwner, InName, InObjectFlags, InOffset, InFlags) {} \
	};

UE_DECLARE_NUMERIC_PROPERTY(FInt8Property, int8, CASTCLASS_FInt8Property)
UE_DECLARE_NUMERIC_PROPERTY(FInt16Property, int16, CASTCLASS_FInt16Property)
UE_DECLARE_NUMERIC_PROPERTY(FIntProperty, int32, CASTCLASS_FIntProperty)
UE_DECLARE_NUMERIC_PROPERTY(FInt64Property, int64, CASTCLASS_FInt64Property)
UE_DECLARE_NUMERIC_PROPERTY(FUInt16Property, uint16, CASTCLASS_FUInt16Property)
UE_DECLARE_NUMERIC_PROPERTY(FUInt32Property, uint32, CASTCLASS_FUInt32Property)
UE_DECLARE_NUMERIC_PROPERTY(FUInt64Property, uint64, CASTCLASS_FUInt64Property)
UE_DECLARE_NUMERIC_PROPERTY(FFloatProperty, float, CASTCLASS_FFloatProperty)
UE_DECLARE_NUMERIC_PROPERTY(FDoubleProperty, double, CASTCLASS_FDoubleProperty)

#undef UE_DECLARE_NUMERIC_PROPERTY

/** A bool: a native bool, or one bit of a byte (bitfield members). Exports "True"/"False". */
class COREUOBJECT_API FBoolProperty : public FProperty
{
	DECLARE_FIELD(FBoolProperty, FProperty, CASTCLASS_FBoolProperty)

public:
	/** A native bool (one byte, all bits). */
	FBoolProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	/** A member of a C++ type: sizeof(bool) with bIsNativeBool, or a bitfield of InBitMask in a byte. */
	FBoolProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags,
		uint32 InBitMask, uint32 InElementSize, bool bIsNativeBool);

	/** Sets the storage: InSize bytes, a native bool or the bit InBitMask. */
	void SetBoolSize(const uint32 InSize, const bool bIsNativeBool = false, const uint32 InBitMask = 0);
	int32 GetBoolSize() const { return FieldSize; }
	bool IsNativeBool() const { return FieldMask == 0xff; }
	uint8 GetByteOffset() const { return ByteOffset; }
	uint8 GetByteMask() const { return ByteMask; }
	uint8 GetFieldMask() const { return FieldMask; }

	bool GetPropertyValue(const void* A) const { return (((const uint8*)A)[ByteOffset] & FieldMask) != 0; }
	void SetPropertyValue(void* A, bool Value) const
	{
		uint8* Byte = (uint8*)A + ByteOffset;
		*Byte = (uint8)((*Byte & ~FieldMask) | (Value ? ByteMask : 0));
	}
	bool GetPropertyValue_InContainer(const void* A, int32 ArrayIndex = 0) const { return GetPropertyValue(ContainerPtrToValuePtr<void>(A, ArrayIndex)); }
	void SetPropertyValue_InContainer(void* A, bool Value, int32 ArrayIndex = 0) const { SetPropertyValue(ContainerPtrToValuePtr<void>(A, ArrayIndex), Value); }
	static bool GetDefaultPropertyValue() { return false; }

	virtual int32 GetMinAlignment() const override { return alignof(bool); }
	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override;
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope = nullptr) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
		int32 PortFlags, FOutputDevice* ErrorText) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual FString GetCPPMacroType(FString& ExtendedTypeText) const override;
	virtual bool SameType(const FProperty* Other) const override;

protected:
	virtual void InitializeValueInternal(void* Dest) const override;
	virtual void ClearValueInternal(void* Data) const override;
	virtual void CopyValuesInternal(void* Dest, const void* Src, int32 Count) const override;
	virtual uint32 GetValueTypeHashInternal(const void* Src) const override;

private:
	uint8 FieldSize = 1;
	uint8 ByteOffset = 0;
	uint8 ByteMask = 1;
	uint8 FieldMask = 1;
};

/** An FName, exported bare ("Foo") or quoted inside structs and containers. */
class COREUOBJECT_API FNameProperty : public TProperty<FName, FProperty>
{
	DECLARE_FIELD(FNameProperty, FProperty, CASTCLASS_FNameProperty)

public:
	using TProperty::TProperty;

	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope = nullptr) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
		int32 PortFlags, FOutputDevice* ErrorText) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override { return TEXT("FName"); }
};

/** An FString, exported bare or, inside structs and containers, quoted with escapes. */
class COREUOBJECT_API FStrProperty : public TProperty<FString, FProperty>
{
	DECLARE_FIELD(FStrProperty, FProperty, CASTCLASS_FStrProperty)

public:
	using TProperty::TProperty;

	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope = nullptr) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
		int32 PortFlags, FOutputDevice* ErrorText) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override { return TEXT("FString"); }
};

/** Shared by the object reference kinds: the class the referenced object must be. */
class COREUOBJECT_API FObjectPropertyBase : public FProperty
{
	DECLARE_FIELD(FObjectPropertyBase, FProperty, CASTCLASS_FObjectPropertyBase)

public:
	FObjectPropertyBase(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	FObjectPropertyBase(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags, UClass* InClass = nullptr);

	/** The class every referenced object must be a child of. */
	UClass* PropertyClass = nullptr;

	void SetPropertyClass(UClass* NewPropertyClass) { PropertyClass = NewPropertyClass; }

	virtual UObject* GetObjectPropertyValue(const void* PropertyValueAddress) const = 0;
	virtual void SetObjectPropertyValue(void* PropertyValueAddress, UObject* Value) const = 0;
	UObject* GetObjectPropertyValue_InContainer(const void* ContainerAddress, int32 ArrayIndex = 0) const
	{
		return GetObjectPropertyValue(ContainerPtrToValuePtr<void>(ContainerAddress, ArrayIndex));
	}
	void SetObjectPropertyValue_InContainer(void* ContainerAddress, UObject* Value, int32 ArrayIndex = 0) const
	{
		SetObjectPropertyValue(ContainerPtrToValuePtr<void>(ContainerAddress, ArrayIndex), Value);
	}

	/**
	 * The text an object reference exports as: "None", or "<ClassPath>'<ObjectPath>'" (the bare path with
	 * PPF_SimpleObjectText), quoted as a whole when PPF_Delimited.
	 */
	static FString GetExportPath(const UObject* Object, const UObject* Parent = nullptr, const UObject* ExportRootScope = nullptr, const uint32 PortFlags = PPF_None);
	/**
	 * Reads an object reference at Buffer ("None", a path, "Class'Path'", quoted or not) and finds or loads
	 * the object. False when the text names no object of RequiredMetaClass (Out is then null).
	 */
	static bool ParseObjectPropertyValue(const FProperty* Property, UObject* OwnerObject, UClass* RequiredMetaClass, uint32 PortFlags, const TCHAR*& Buffer,
		UObject*& Out, FOutputDevice* ErrorText = nullptr);
	/** Finds (or loads) the object named Text of ObjectClass. */
	static UObject* FindImportedObject(const FProperty* Property, UObject* OwnerObject, UClass* ObjectClass, UClass* RequiredMetaClass, const TCHAR* Text,
		uint32 PortFlags = 0, FOutputDevice* ErrorText = nullptr);

	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope = nullptr) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
		int32 PortFlags, FOutputDevice* ErrorText) const override;
	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override;
	virtual bool SameType(const FProperty* Other) const override;

protected:
	/** The class an imported object must derive from (the meta class for class properties). */
	virtual UClass* GetRequiredMetaClass() const { return nullptr; }
	/** Whether a value may be set to Object. */
	virtual bool AllowObjectTypeReinterpretationTo(const UObject* Object) const;
};

/** The typed layer of an object reference kind. */
template <typename InTCppType>
class TFObjectPropertyBase : public TProperty<InTCppType, FObjectPropertyBase>
{
public:
	using Super = TProperty<InTCppType, FObjectPropertyBase>;
	TFObjectPropertyBase(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags) : Super(InOwner, InName, InObjectFlags) {}
	TFObjectPropertyBase(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags, UClass* InClass)
		: Super(InOwner, InName, InObjectFlags, InOffset, InFlags)
	{
		this->PropertyClass = InClass;
	}
	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override { return FObjectPropertyBase::Identical(A, B, PortFlags); }

	// Every reference kind reads the object it holds with Get() and takes a new one by assignment; a soft
	// reference answers only while its object is loaded.
	virtual UObject* GetObjectPropertyValue(const void* PropertyValueAddress) const override { return ((const InTCppType*)PropertyValueAddress)->Get(); }
	virtual void SetObjectPropertyValue(void* PropertyValueAddress, UObject* Value) const override { *(InTCppType*)PropertyValueAddress = Value; }
};

/** A hard reference (UObject* or TObjectPtr<UObject>). */
class COREUOBJECT_API FObjectProperty : public TFObjectPropertyBase<TObjectPtr<UObject>>
{
	DECLARE_FIELD(FObjectProperty, FObjectPropertyBase, CASTCLASS_FObjectProperty)

public:
	using TFObjectPropertyBase::TFObjectPropertyBase;

	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual FString GetCPPMacroType(FString& ExtendedTypeText) const override;
};

/** A weak reference (TWeakObjectPtr). */
class COREUOBJECT_API FWeakObjectProperty : public TFObjectPropertyBase<FWeakObjectPtr>
{
	DECLARE_FIELD(FWeakObjectProperty, FObjectPropertyBase, CASTCLASS_FWeakObjectProperty)

public:
	using TFObjectPropertyBase::TFObjectPropertyBase;

	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual FString GetCPPMacroType(FString& ExtendedTypeText) const override;
};

/** A soft reference (TSoftObjectPtr): a path, exported as the path. */
class COREUOBJECT_API FSoftObjectProperty : public TFObjectPropertyBase<FSoftObjectPtr>
{
	DECLARE_FIELD(FSoftObjectProperty, FObjectPropertyBase, CASTCLASS_FSoftObjectProperty)

public:
	using TFObjectPropertyBase::TFObjectPropertyBase;

	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope = nullptr) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
		int32 PortFlags, FOutputDevice* ErrorText) const override;
	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual FString GetCPPMacroType(FString& ExtendedTypeText) const override;
};

/** A class reference (UClass* or TSubclassOf<MetaClass>). */
class COREUOBJECT_API FClassProperty : public FObjectProperty
{
	DECLARE_FIELD(FClassProperty, FObjectProperty, CASTCLASS_FClassProperty)

public:
	FClassProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	/** InClassType is the property class (UClass by default); InMetaClass the class values must derive from. */
	FClassProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags, UClass* InMetaClass,
		UClass* InClassType = nullptr);

	UClass* MetaClass = nullptr;
	void SetMetaClass(UClass* NewMetaClass) { MetaClass = NewMetaClass; }

	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual bool SameType(const FProperty* Other) const override;

protected:
	virtual UClass* GetRequiredMetaClass() const override { return MetaClass; }
	virtual bool AllowObjectTypeReinterpretationTo(const UObject* Object) const override;
};

/** A soft class reference (TSoftClassPtr<MetaClass>). */
class COREUOBJECT_API FSoftClassProperty : public FSoftObjectProperty
{
	DECLARE_FIELD(FSoftClassProperty, FSoftObjectProperty, CASTCLASS_FSoftClassProperty)

public:
	FSoftClassProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	FSoftClassProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags, UClass* InMetaClass);

	UClass* MetaClass = nullptr;
	void SetMetaClass(UClass* NewMetaClass) { MetaClass = NewMetaClass; }

	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual bool SameType(const FProperty* Other) const override;

protected:
	virtual UClass* GetRequiredMetaClass() const override { return MetaClass; }
};

/** An interface reference (TScriptInterface<IMyInterface>), exported as the object. */
class COREUOBJECT_API FInterfaceProperty : public TProperty<FScriptInterface, FProperty>
{
	DECLARE_FIELD(FInterfaceProperty, FProperty, CASTCLASS_FInterfaceProperty)

public:
	FInterfaceProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	FInterfaceProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags, UClass* InInterfaceClass);

	/** The interface (a class with CLASS_Interface). */
	UClass* InterfaceClass = nullptr;
	void SetInterfaceClass(UClass* NewInterfaceClass) { InterfaceClass = NewInterfaceClass; }

	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope = nullptr) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
		int32 PortFlags, FOutputDevice* ErrorText) const override;
	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual FString GetCPPMacroType(FString& ExtendedTypeText) const override;
	virtual bool SameType(const FProperty* Other) const override;
};

/** A struct value (Struct says which). */
class COREUOBJECT_API FStructProperty : public FProperty
{
	DECLARE_FIELD(FStructProperty, FProperty, CASTCLASS_FStructProperty)

public:
	FStructProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	FStructProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags, UScriptStruct* InStruct);

	UScriptStruct* Struct = nullptr;

	virtual int32 GetMinAlignment() const override;
	virtual void LinkInternal() override;
	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override;
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope = nullptr) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
		int32 PortFlags, FOutputDevice* ErrorText) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual FString GetCPPMacroType(FString& ExtendedTypeText) const override;
	virtual bool SameType(const FProperty* Other) const override;

protected:
	virtual void InitializeValueInternal(void* Dest) const override;
	virtual void DestroyValueInternal(void* Dest) const override;
	virtual void ClearValueInternal(void* Data) const override;
	virtual void CopyValuesInternal(void* Dest, const void* Src, int32 Count) const override;
	virtual uint32 GetValueTypeHashInternal(const void* Src) const override;
};

/** A TArray (Inner is the element property). */
class COREUOBJECT_API FArrayProperty : public TProperty<FScriptArray, FProperty>
{
	DECLARE_FIELD(FArrayProperty, FProperty, CASTCLASS_FArrayProperty)

public:
	FArrayProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	FArrayProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags,
		EArrayPropertyFlags InArrayPropertyFlags = EArrayPropertyFlags::None);
	virtual ~FArrayProperty() override;

	/** The element property, owned by this one (its owner is this property, its offset 0). */
	FProperty* Inner = nullptr;

	/** Sets Inner. */
	virtual void AddCppProperty(FProperty* Property);

	virtual void LinkInternal() override;
	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override;
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope = nullptr) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
		int32 PortFlags, FOutputDevice* ErrorText) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual FString GetCPPMacroType(FString& ExtendedTypeText) const override;
	virtual bool SameType(const FProperty* Other) const override;

protected:
	virtual void InitializeValueInternal(void* Dest) const override;
	virtual void DestroyValueInternal(void* Dest) const override;
	virtual void ClearValueInternal(void* Data) const override;
	virtual void CopyValuesInternal(void* Dest, const void* Src, int32 Count) const override;
	virtual uint32 GetValueTypeHashInternal(const void* Src) const override;
};

/** A TSet (ElementProp is the element property). Elements keep insertion order. */
class COREUOBJECT_API FSetProperty : public TProperty<FScriptSet, FProperty>
{
	DECLARE_FIELD(FSetProperty, FProperty, CASTCLASS_FSetProperty)

public:
	FSetProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	FSetProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags);
	virtual ~FSetProperty() override;

	FProperty* ElementProp = nullptr;
	FScriptSetLayout SetLayout;

	/** Sets ElementProp. */
	virtual void AddCppProperty(FProperty* Property);

	virtual void LinkInternal() override;
	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override;
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope = nullptr) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
		int32 PortFlags, FOutputDevice* ErrorText) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual FString GetCPPMacroType(FString& ExtendedTypeText) const override;
	virtual bool SameType(const FProperty* Other) const override;

protected:
	virtual void InitializeValueInternal(void* Dest) const override;
	virtual void DestroyValueInternal(void* Dest) const override;
	virtual void ClearValueInternal(void* Data) const override;
	virtual void CopyValuesInternal(void* Dest, const void* Src, int32 Count) const override;
};

/** A TMap (KeyProp and ValueProp). Pairs keep insertion order. */
class COREUOBJECT_API FMapProperty : public TProperty<FScriptMap, FProperty>
{
	DECLARE_FIELD(FMapProperty, FProperty, CASTCLASS_FMapProperty)

public:
	FMapProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	FMapProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags,
		EMapPropertyFlags InMapFlags = EMapPropertyFlags::None);
	virtual ~FMapProperty() override;

	FProperty* KeyProp = nullptr;
	FProperty* ValueProp = nullptr;
	FScriptMapLayout MapLayout;

	/** The first call sets KeyProp, the second ValueProp. */
	virtual void AddCppProperty(FProperty* Property);

	virtual void LinkInternal() override;
	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override;
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope = nullptr) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
		int32 PortFlags, FOutputDevice* ErrorText) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual FString GetCPPMacroType(FString& ExtendedTypeText) const override;
	virtual bool SameType(const FProperty* Other) const override;

protected:
	virtual void InitializeValueInternal(void* Dest) const override;
	virtual void DestroyValueInternal(void* Dest) const override;
	virtual void ClearValueInternal(void* Data) const override;
	virtual void CopyValuesInternal(void* Dest, const void* Src, int32 Count) const override;
};

/** A single-cast dynamic delegate (SignatureFunction gives its parameters). */
class COREUOBJECT_API FDelegateProperty : public TProperty<FScriptDelegate, FProperty>
{
	DECLARE_FIELD(FDelegateProperty, FProperty, CASTCLASS_FDelegateProperty)

public:
	FDelegateProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	FDelegateProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags,
		UFunction* InSignatureFunction = nullptr);

	UFunction* SignatureFunction = nullptr;

	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope = nullptr) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
		int32 PortFlags, FOutputDevice* ErrorText) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual bool SameType(const FProperty* Other) const override;
};

/** The base of multicast dynamic delegates. */
class COREUOBJECT_API FMulticastDelegateProperty : public FProperty
{
	DECLARE_FIELD(FMulticastDelegateProperty, FProperty, CASTCLASS_FMulticastDelegateProperty)

public:
	FMulticastDelegateProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	FMulticastDelegateProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags,
		UFunction* InSignatureFunction = nullptr);

	UFunction* SignatureFunction = nullptr;

	virtual bool SameType(const FProperty* Other) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
};

/** The typed layer of a multicast delegate kind: what it stores, and the signature it is made with. */
template <typename InTCppType>
class TProperty_MulticastDelegate : public TProperty<InTCppType, FMulticastDelegateProperty>
{
public:
	using Super = TProperty<InTCppType, FMulticastDelegateProperty>;
	TProperty_MulticastDelegate(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags) : Super(InOwner, InName, InObjectFlags) {}
	TProperty_MulticastDelegate(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags,
		UFunction* InSignatureFunction = nullptr)
		: Super(InOwner, InName, InObjectFlags, InOffset, InFlags)
	{
		this->SignatureFunction = InSignatureFunction;
	}
};

/** A multicast delegate held in the object (FMulticastScriptDelegate). */
class COREUOBJECT_API FMulticastInlineDelegateProperty : public TProperty_MulticastDelegate<FMulticastScriptDelegate>
{
	DECLARE_FIELD(FMulticastInlineDelegateProperty, FMulticastDelegateProperty, CASTCLASS_FMulticastInlineDelegateProperty)

public:
	using TProperty_MulticastDelegate::TProperty_MulticastDelegate;

	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope = nullptr) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
		int32 PortFlags, FOutputDevice* ErrorText) const override;
};

/** A sparse multicast delegate: the object holds only whether it is bound. */
class COREUOBJECT_API FMulticastSparseDelegateProperty : public TProperty_MulticastDelegate<FSparseDelegate>
{
	DECLARE_FIELD(FMulticastSparseDelegateProperty, FMulticastDelegateProperty, CASTCLASS_FMulticastSparseDelegateProperty)

public:
	using TProperty_MulticastDelegate::TProperty_MulticastDelegate;

	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope = nullptr) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
		int32 PortFlags, FOutputDevice* ErrorText) const override;
};

/** Reads and changes an array property's value; elements are constructed, copied and destroyed by the inner property. */
class COREUOBJECT_API FScriptArrayHelper
{
public:
	FScriptArrayHelper(const FArrayProperty* InProperty, const void* InArray);

	int32 Num() const { return Array->ArrayNum; }
	bool IsValidIndex(int32 Index) const { return Index >= 0 && Index < Num(); }
	/** The element at Index (checked). */
	uint8* GetRawPtr(int32 Index = 0);
	const uint8* GetRawPtr(int32 Index = 0) const { return const_cast<FScriptArrayHelper*>(this)->GetRawPtr(Index); }
	uint8* GetElementPtr(int32 Index = 0) { return GetRawPtr(Index); }

	/** Adds Count initialised elements at the end; returns the index of the first. */
	int32 AddValues(int32 Count);
	int32 AddValue() { return AddValues(1); }
	int32 AddUninitializedValues(int32 Count) { return AddValues(Count); }
	/** Inserts Count initialised elements at Index. */
	void InsertValues(int32 Index, int32 Count = 1);
	/** Removes Count elements at Index (checked), keeping the order of the rest. */
	void RemoveValues(int32 Index, int32 Count = 1);
	void EmptyValues(int32 Slack = 0);
	void EmptyAndAddValues(int32 Count);
	/** Grows (initialising) or shrinks (destroying) to NewNum elements. */
	void Resize(int32 NewNum);
	void Reserve(int32 Capacity);
	void MoveAssign(void* OtherArray);
	void SwapValues(int32 A, int32 B);

private:
	void Reallocate(int32 NewMax);

	const FProperty* Inner;
	FScriptArray* Array;
	int32 ElementSize;
};

class COREUOBJECT_API FScriptArrayHelper_InContainer : public FScriptArrayHelper
{
public:
	FScriptArrayHelper_InContainer(const FArrayProperty* InProperty, const void* InContainer, int32 FixedArrayIndex = 0)
		: FScriptArrayHelper(InProperty, InProperty->ContainerPtrToValuePtr<void>(InContainer, FixedArrayIndex)) {}
};

/** Reads and changes a set property's value. */
class COREUOBJECT_API FScriptSetHelper
{
public:
	FScriptSetHelper(const FSetProperty* InProperty, const void* InSet);

	int32 Num() const;
	/** Elements are contiguous: every index below Num() is valid. */
	int32 GetMaxIndex() const { return Num(); }
	bool IsValidIndex(int32 Index) const { return Index >= 0 && Index < Num(); }
	uint8* GetElementPtr(int32 Index);
	const uint8* GetElementPtr(int32 Index) const { return const_cast<FScriptSetHelper*>(this)->GetElementPtr(Index); }
	/** The index of the element equal to ElementToFind, or INDEX_NONE. */
	int32 FindElementIndex(const void* ElementToFind) const;
	/** Adds a copy of ElementToAdd unless an equal element exists; returns its index either way. */
	int32 AddElement(const void* ElementToAdd);
	/** Adds an initialised element that must then be filled (callers check for duplicates themselves). */
	int32 AddDefaultValue_Invalid_NeedsRehash();
	void Rehash() {}
	bool RemoveElement(const void* ElementToRemove);
	void RemoveAt(int32 Index, int32 Count = 1);
	void EmptyElements(int32 Slack = 0);

	const FProperty* GetElementProperty() const { return ElementProp; }

private:
	FScriptArrayHelper MakeStorageHelper() const;

	const FSetProperty* SetProperty;
	const FProperty* ElementProp;
	FScriptSet* Set;
};

class COREUOBJECT_API FScriptSetHelper_InContainer : public FScriptSetHelper
{
public:
	FScriptSetHelper_InContainer(const FSetProperty* InProperty, const void* InContainer, int32 FixedArrayIndex = 0)
		: FScriptSetHelper(InProperty, InProperty->ContainerPtrToValuePtr<void>(InContainer, FixedArrayIndex)) {}
};

/** Reads and changes a map property's value. */
class COREUOBJECT_API FScriptMapHelper
{
public:
	FScriptMapHelper(const FMapProperty* InProperty, const void* InMap);

	int32 Num() const;
	int32 GetMaxIndex() const { return Num(); }
	bool IsValidIndex(int32 Index) const { return Index >= 0 && Index < Num(); }
	uint8* GetPairPtr(int32 Index);
	uint8* GetKeyPtr(int32 Index) { return GetPairPtr(Index); }
	uint8* GetValuePtr(int32 Index) { return GetPairPtr(Index) + MapLayout.ValueOffset; }
	const uint8* GetKeyPtr(int32 Index) const { return const_cast<FScriptMapHelper*>(this)->GetKeyPtr(Index); }
	const uint8* GetValuePtr(int32 Index) const { return const_cast<FScriptMapHelper*>(this)->GetValuePtr(Index); }
	uint8* GetPairPtrWithoutCheck(int32 Index) { return GetPairPtr(Index); }

	/** The index of the pair whose key equals KeyPtr's, or INDEX_NONE. */
	int32 FindMapIndexWithKey(const void* KeyPtr) const;
	/** The value for KeyPtr, or null. */
	uint8* FindValueFromHash(const void* KeyPtr);
	uint8* FindMapPairPtrWithKey(const void* KeyPtr) { const int32 Index = FindMapIndexWithKey(KeyPtr); return Index == INDEX_NONE ? nullptr : GetPairPtr(Index); }
	/** Sets the value for the key (adding the pair if the key is new). */
	void AddPair(const void* KeyPtr, const void* ValuePtr);
	/** Adds an initialised pair to be filled by the caller; returns its index. */
	int32 AddDefaultValue_Invalid_NeedsRehash();
	void Rehash() {}
	bool RemovePair(const void* KeyPtr);
	void RemoveAt(int32 Index, int32 Count = 1);
	void EmptyValues(int32 Slack = 0);

	const FProperty* GetKeyProperty() const { return KeyProp; }
	const FProperty* GetValueProperty() const { return ValueProp; }

	FScriptMapLayout MapLayout;

private:
	const FMapProperty* MapProperty;
	const FProperty* KeyProp;
	const FProperty* ValueProp;
	FScriptMap* Map;
};

class COREUOBJECT_API FScriptMapHelper_InContainer : public FScriptMapHelper
{
public:
	FScriptMapHelper_InContainer(const FMapProperty* InProperty, const void* InContainer, int32 FixedArrayIndex = 0)
		: FScriptMapHelper(InProperty, InProperty->ContainerPtrToValuePtr<void>(InContainer, FixedArrayIndex)) {}
};

/** What kind of change PostEditChangeProperty reports. */
namespace EPropertyChangeType
{
	typedef uint32 Type;

	const Type Unspecified = 1 << 0;
	const Type ArrayAdd = 1 << 1;
	const Type ArrayRemove = 1 << 2;
	const Type ArrayClear = 1 << 3;
	const Type ValueSet = 1 << 4;
	const Type Duplicate = 1 << 5;
	const Type Interactive = 1 << 6;
	const Type Redirected = 1 << 7;
	const Type ArrayMove = 1 << 8;
	const Type ToggleEditable = 1 << 9;
}

/** The change reported to UObject::PostEditChangeProperty. */
struct COREUOBJECT_API FPropertyChangedEvent
{
	FPropertyChangedEvent(FProperty* InProperty, EPropertyChangeType::Type InChangeType = EPropertyChangeType::Unspecified)
		: Property(InProperty), MemberProperty(InProperty), ChangeType(InChangeType) {}

	void SetActiveMemberProperty(FProperty* InActiveMemberProperty) { MemberProperty = InActiveMemberProperty; }
	FName GetPropertyName() const;
	FName GetMemberPropertyName() const;

	/** The property that changed (the innermost one for a struct member). */
	FProperty* Property = nullptr;
	/** The member of the object that contains the change. */
	FProperty* MemberProperty = nullptr;
	EPropertyChangeType::Type ChangeType = EPropertyChangeType::Unspecified;
	int32 ObjectIteratorIndex = 0;
};

namespace UE::CoreUObject::Private
{
	/** Adds a native member property to its struct; see UE_NATIVE_PROPERTY. */
	template <class T>
	T* AddNativeProperty(UStruct* Owner, T* Property)
	{
		Owner->AddCppProperty(Property);
		return Property;
	}
}
