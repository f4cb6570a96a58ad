#include "UObject/UnrealType.h"
#include "UObject/EnumProperty.h"
#include "UObject/TextProperty.h"
#include "UObject/Class.h"
#include "PropertyHelper.h"
#include "ObjectRegistry.h"

#include <cstring>
#include <limits>

using namespace UE::CoreUObject::Private;

IMPLEMENT_FIELD(FProperty)
IMPLEMENT_FIELD(FNumericProperty)
IMPLEMENT_FIELD(FInt8Property)
IMPLEMENT_FIELD(FInt16Property)
IMPLEMENT_FIELD(FIntProperty)
IMPLEMENT_FIELD(FInt64Property)
IMPLEMENT_FIELD(FUInt16Property)
IMPLEMENT_FIELD(FUInt32Property)
IMPLEMENT_FIELD(FUInt64Property)
IMPLEMENT_FIELD(FFloatProperty)
IMPLEMENT_FIELD(FDoubleProperty)
IMPLEMENT_FIELD(FByteProperty)
IMPLEMENT_FIELD(FBoolProperty)
IMPLEMENT_FIELD(FNameProperty)
IMPLEMENT_FIELD(FStrProperty)

namespace UE::CoreUObject::Private
{
	void ReportImportError(FOutputDevice* ErrorText, const FString& Message)
	{
		// Core has no FOutputDevice yet: import errors go to the log either way.
		LogWarning(Message);
	}
}

// FProperty

FProperty::FProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FField(InOwner, InName, InObjectFlags)
{
}

FProperty::FProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags)
	: FField(InOwner, InName, InObjectFlags), PropertyFlags(InFlags), Offset_Internal(InOffset), bNativeOffset(true), bOffsetAssigned(true)
{
}

FProperty::~FProperty()
{
}

bool FProperty::IsInContainer(const UStruct* ContainerClass) const
{
	return !ContainerClass || Offset_Internal + GetSize() <= ContainerClass->GetPropertiesSize();
}

bool FProperty::ShouldPort(uint32 PortFlags) const
{
	if (GetSize() <= 0)
	{
		return false;
	}
	if (HasAnyPropertyFlags(CPF_Deprecated) && !(PortFlags & (PPF_ParsingDefaultProperties | PPF_UseDeprecatedProperties)))
	{
		return false;
	}
	if (HasAnyPropertyFlags(CPF_Transient) && (PortFlags & (PPF_ParsingDefaultProperties | PPF_IncludeTransient)))
	{
		return true;
	}
	if ((PortFlags & PPF_Copy) && HasAnyPropertyFlags(CPF_DuplicateTransient | CPF_TextExportTransient) && !(PortFlags & (PPF_ParsingDefaultProperties | PPF_IncludeTransient)))
	{
		return false;
	}
	if (!(PortFlags & PPF_DuplicateForPIE) && HasAnyPropertyFlags(CPF_NonPIEDuplicateTransient))
	{
		return false;
	}
	if ((PortFlags & PPF_PropertyWindow) && !HasAnyPropertyFlags(CPF_Edit))
	{
		return false;
	}
	return true;
}

uint32 FProperty::GetValueTypeHash(const void* Src) const
{
	return GetValueTypeHashInternal(Src);
}

uint32 FProperty::GetValueTypeHashInternal(const void* Src) const
{
	return 0;
}

bool FProperty::ExportText_Direct(FString& ValueStr, const void* Data, const void* Delta, UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	if (Data == Delta || !Identical(Data, Delta, PortFlags))
	{
		ExportText_Internal(ValueStr, Data, EPropertyPointerType::Direct, Delta, Parent, PortFlags, ExportRootScope);
		return true;
	}
	return false;
}

const TCHAR* FProperty::ImportText_Direct(const TCHAR* Buffer, void* PropertyPtr, UObject* OwnerObject, int32 PortFlags, FOutputDevice* ErrorText) const
{
	if (!Buffer || !PropertyPtr)
	{
		return nullptr;
	}
	if ((PortFlags & PPF_RestrictImportTypes) && HasAnyPropertyFlags(CPF_Config))
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("Import failed for %s: property is config (Check to see if the property is listed in the DefaultProperties.  It should only be listed in the specific .ini file)"), *GetName()));
		return nullptr;
	}
	return ImportText_Internal(Buffer, PropertyPtr, EPropertyPointerType::Direct, OwnerObject, PortFlags, ErrorText);
}

void FProperty::InitializeValueInternal(void* Dest) const
{
	std::memset(Dest, 0, (SIZE_T)GetSize());
}

void FProperty::ClearValueInternal(void* Data) const
{
	std::memset(Data, 0, (SIZE_T)GetElementSize());
}

void FProperty::CopyValuesInternal(void* Dest, const void* Src, int32 Count) const
{
	std::memcpy(Dest, Src, (SIZE_T)Count * GetElementSize());
}

FString FProperty::GetCPPMacroType(FString& ExtendedTypeText) const
{
	ExtendedTypeText.Empty();
	return TEXT("PROPERTY");
}

bool FProperty::SameType(const FProperty* Other) const
{
	return Other && GetClass() == Other->GetClass();
}

int32 FProperty::SetupOffset()
{
	UStruct* OwnerStruct = Owner.IsUObject() ? Owner.Get<UStruct>() : nullptr;
	const int32 Alignment = FMath::Max(1, GetMinAlignment());
	if (!bNativeOffset)
	{
		const int32 Start = OwnerStruct ? OwnerStruct->GetPropertiesSize() : 0;
		Offset_Internal = (Start + Alignment - 1) / Alignment * Alignment;
		bOffsetAssigned = true;
	}
	return Offset_Internal + GetSize();
}

void FProperty::PostDuplicate(const FField& InField)
{
	const FProperty& Source = static_cast<const FProperty&>(InField);
	ArrayDim = Source.ArrayDim;
	ElementSize = Source.ElementSize;
	PropertyFlags = Source.PropertyFlags;
	RepNotifyFunc = Source.RepNotifyFunc;
	RepIndex = Source.RepIndex;

	// The kind's own description: its types and inner properties.
	auto DuplicateInner = [this](const FProperty* Inner) -> FProperty* {
		return Inner ? (FProperty*)FField::Duplicate(Inner, this) : nullptr;
	};
	if (const FByteProperty* Byte = CastField<FByteProperty>(&Source))
	{
		((FByteProperty*)this)->Enum = Byte->Enum;
	}
	else if (const FBoolProperty* Bool = CastField<FBoolProperty>(&Source))
	{
		((FBoolProperty*)this)->SetBoolSize(Bool->GetBoolSize(), Bool->IsNativeBool(), Bool->GetFieldMask() << (8 * Bool->GetByteOffset()));
	}
	else if (const FObjectPropertyBase* Object = CastField<FObjectPropertyBase>(&Source))
	{
		((FObjectPropertyBase*)this)->PropertyClass = Object->PropertyClass;
		if (const FClassProperty* Class = CastField<FClassProperty>(&Source))
		{
			((FClassProperty*)this)->MetaClass = Class->MetaClass;
		}
		if (const FSoftClassProperty* SoftClass = CastField<FSoftClassProperty>(&Source))
		{
			((FSoftClassProperty*)this)->MetaClass = SoftClass->MetaClass;
		}
	}
	else if (const FInterfaceProperty* Interface = CastField<FInterfaceProperty>(&Source))
	{
		((FInterfaceProperty*)this)->InterfaceClass = Interface->InterfaceClass;
	}
	else if (const FStructProperty* Struct = CastField<FStructProperty>(&Source))
	{
		((FStructProperty*)this)->Struct = Struct->Struct;
	}
	else if (const FArrayProperty* Array = CastField<FArrayProperty>(&Source))
	{
		((FArrayProperty*)this)->Inner = DuplicateInner(Array->Inner);
	}
	else if (const FSetProperty* Set = CastField<FSetProperty>(&Source))
	{
		((FSetProperty*)this)->ElementProp = DuplicateInner(Set->ElementProp);
	}
	else if (const FMapProperty* Map = CastField<FMapProperty>(&Source))
	{
		((FMapProperty*)this)->KeyProp = DuplicateInner(Map->KeyProp);
		((FMapProperty*)this)->ValueProp = DuplicateInner(Map->ValueProp);
	}
	else if (const FDelegateProperty* Delegate = CastField<FDelegateProperty>(&Source))
	{
		((FDelegateProperty*)this)->SignatureFunction = Delegate->SignatureFunction;
	}
	else if (const FMulticastDelegateProperty* Multicast = CastField<FMulticastDelegateProperty>(&Source))
	{
		((FMulticastDelegateProperty*)this)->SignatureFunction = Multicast->SignatureFunction;
	}
	else if (const FEnumProperty* EnumProperty = CastField<FEnumProperty>(&Source))
	{
		((FEnumProperty*)this)->SetEnum(EnumProperty->GetEnum());
		((FEnumProperty*)this)->AddCppProperty(DuplicateInner(EnumProperty->GetUnderlyingProperty()));
	}
	FField::PostDuplicate(InField);
}

// Numbers

namespace
{
	/** Reads an integer as the engine accepts it: optional signs then digits, or "0x" and hex digits. */
	const TCHAR* ScanInteger(const TCHAR* Buffer, bool& bOutHex)
	{
		bOutHex = false;
		if (Buffer[0] == TEXT('0') && (Buffer[1] == TEXT('x') || Buffer[1] == TEXT('X')))
		{
			bOutHex = true;
			Buffer += 2;
			while (FChar::IsHexDigit(*Buffer))
			{
				++Buffer;
			}
			return Buffer;
		}
		while (*Buffer == TEXT('-') || *Buffer == TEXT('+'))
		{
			++Buffer;
		}
		while (FChar::IsDigit(*Buffer))
		{
			++Buffer;
		}
		return Buffer;
	}

	/** Reads a floating-point number: sign, digits and '.', an exponent, and an optional trailing 'f'. */
	const TCHAR* ScanFloat(const TCHAR* Buffer, bool& bOutHasDigits)
	{
		bOutHasDigits = false;
		while (*Buffer == TEXT('+') || *Buffer == TEXT('-') || *Buffer == TEXT('.') || FChar::IsDigit(*Buffer))
		{
			bOutHasDigits |= FChar::IsDigit(*Buffer);
			++Buffer;
		}
		if (bOutHasDigits && (*Buffer == TEXT('e') || *Buffer == TEXT('E')))
		{
			const TCHAR* Exponent = Buffer + 1;
			if (*Exponent == TEXT('+') || *Exponent == TEXT('-'))
			{
				++Exponent;
			}
			if (FChar::IsDigit(*Exponent))
			{
				while (FChar::IsDigit(*Exponent))
				{
					++Exponent;
				}
				Buffer = Exponent;
			}
		}
		if (*Buffer == TEXT('f') || *Buffer == TEXT('F'))
		{
			++Buffer;
		}
		return Buffer;
	}

	template <typename T>
	const TCHAR* CppTypeNameOf()
	{
		if constexpr (std::is_same_v<T, int8>) return TEXT("int8");
		else if constexpr (std::is_same_v<T, int16>) return TEXT("int16");
		else if constexpr (std::is_same_v<T, int32>) return TEXT("int32");
		else if constexpr (std::is_same_v<T, int64>) return TEXT("int64");
		else if constexpr (std::is_same_v<T, uint8>) return TEXT("uint8");
		else if constexpr (std::is_same_v<T, uint16>) return TEXT("uint16");
		else if constexpr (std::is_same_v<T, uint32>) return TEXT("uint32");
		else if constexpr (std::is_same_v<T, uint64>) return TEXT("uint64");
		else if constexpr (std::is_same_v<T, float>) return TEXT("float");
		else return TEXT("double");
	}
}

template <typename T>
void TProperty_Numeric<T>::SetNumericPropertyValueFromString(void* Data, const TCHAR* Value) const
{
	LexFromString(*(T*)Data, Value);
}

template <typename T>
FString TProperty_Numeric<T>::GetNumericPropertyValueToString(const void* Data) const
{
	return LexToString(*(const T*)Data);
}

template <typename T>
bool TProperty_Numeric<T>::CanHoldValue(int64 Value) const
{
	if constexpr (std::is_floating_point_v<T>)
	{
		return (int64)(T)Value == Value;
	}
	else if constexpr (std::is_signed_v<T>)
	{
		return Value >= (int64)std::numeric_limits<T>::min() && Value <= (int64)std::numeric_limits<T>::max();
	}
	else
	{
		return Value >= 0 && (uint64)Value <= (uint64)std::numeric_limits<T>::max();
	}
}

template <typename T>
void TProperty_Numeric<T>::ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	ValueStr += GetNumericPropertyValueToString(this->PointerToValuePtr(PropertyValueOrContainer, PointerType));
}

template <typename T>
const TCHAR* TProperty_Numeric<T>::ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
	int32 PortFlags, FOutputDevice* ErrorText) const
{
	void* Data = this->PointerToValuePtr(ContainerOrPropertyPtr, PointerType);
	const TCHAR* Start = Buffer;
	if constexpr (std::is_integral_v<T>)
	{
		if (FChar::IsAlpha(*Buffer))
		{
			// An enumerator name stands for its value ("ECC_Pawn").
			const int64 EnumValue = UEnum::ParseEnum(Buffer);
			if (EnumValue == INDEX_NONE)
			{
				ReportImportError(ErrorText, FString::Printf(TEXT("%s: '%s' is not a number"), *this->GetName(), Start));
				return nullptr;
			}
			*(T*)Data = (T)EnumValue;
			return Buffer;
		}
		bool bHex = false;
		Buffer = ScanInteger(Buffer, bHex);
		if (Buffer == Start || (bHex && Buffer == Start + 2) || (!bHex && !FChar::IsDigit(Buffer[-1])))
		{
			ReportImportError(ErrorText, FString::Printf(TEXT("%s: '%s' is not a number"), *this->GetName(), Start));
			return nullptr;
		}
		if (bHex)
		{
			*(T*)Data = (T)FCString::Strtoui64(Start + 2, nullptr, 16);
		}
		else
		{
			SetNumericPropertyValueFromString(Data, *FString(Buffer - Start, Start));
		}
	}
	else
	{
		bool bHasDigits = false;
		Buffer = ScanFloat(Buffer, bHasDigits);
		if (!bHasDigits)
		{
			ReportImportError(ErrorText, FString::Printf(TEXT("%s: '%s' is not a number"), *this->GetName(), Start));
			return nullptr;
		}
		SetNumericPropertyValueFromString(Data, *FString(Buffer - Start, Start));
	}
	return Buffer;
}

template <typename T>
FString TProperty_Numeric<T>::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	return CppTypeNameOf<T>();
}

template class TProperty_Numeric<int8>;
template class TProperty_Numeric<int16>;
template class TProperty_Numeric<int32>;
template class TProperty_Numeric<int64>;
template class TProperty_Numeric<uint8>;
template class TProperty_Numeric<uint16>;
template class TProperty_Numeric<uint32>;
template class TProperty_Numeric<uint64>;
template class TProperty_Numeric<float>;
template class TProperty_Numeric<double>;

// FByteProperty

FByteProperty::FByteProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: TProperty_Numeric<uint8>(InOwner, InName, InObjectFlags)
{
	PropertyFlags |= CPF_HasGetValueTypeHash;
}

FByteProperty::FByteProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags, UEnum* InEnum)
	: TProperty_Numeric<uint8>(InOwner, InName, InObjectFlags, InOffset, InFlags), Enum(InEnum)
{
	PropertyFlags |= CPF_HasGetValueTypeHash;
}

void FByteProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	const uint8 Value = *(const uint8*)PointerToValuePtr(PropertyValueOrContainer, PointerType);
	if (Enum && !(PortFlags & PPF_ConsoleVariable))
	{
		// The generated _MAX entry is not a real value, except when copying (the text must name an entry).
		const bool bIsMax = Enum->ContainsExistingMax() && (int64)Value == Enum->GetValueByIndex(Enum->NumEnums() - 1);
		const bool bIsValid = Enum->IsValidEnumValue(Value) && (!bIsMax || (PortFlags & PPF_Copy));
		ValueStr += bIsValid ? Enum->GetNameStringByValue(Value) : FString(TEXT("(INVALID)"));
		return;
	}
	ValueStr += LexToString(Value);
}

const TCHAR* FByteProperty::ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
	int32 PortFlags, FOutputDevice* ErrorText) const
{
	uint8* Data = (uint8*)PointerToValuePtr(ContainerOrPropertyPtr, PointerType);
	if (Enum)
	{
		FString Token;
		const TCHAR* After = ReadToken(Buffer, Token, true);
		if (After)
		{
			int32 EnumIndex = Enum->GetIndexByName(FName(*Token, FNAME_Find), EGetByNameFlags::CheckAuthoredName);
			if (EnumIndex == INDEX_NONE)
			{
				EnumIndex = Enum->GetIndexByNameString(Token, EGetByNameFlags::CheckAuthoredName);
			}
			if (EnumIndex == INDEX_NONE && Token.IsNumeric() && !Token.Contains(TEXT(".")))
			{
				int64 EnumValue = INDEX_NONE;
				LexFromString(EnumValue, *Token);
				EnumIndex = Enum->GetIndexByValue(EnumValue);
			}
			if (EnumIndex != INDEX_NONE)
			{
				*Data = (uint8)Enum->GetValueByIndex(EnumIndex);
				return After;
			}
		}
		ReportImportError(ErrorText, FString::Printf(TEXT("There is an enum property of type '%s' with an invalid value of '%s'"), *Enum->GetName(), Buffer));
		return nullptr;
	}
	// A plain byte also takes "True" and "False", for values exported from a bool.
	FString Token;
	if (const TCHAR* After = ReadToken(Buffer, Token))
	{
		if (Token == TEXT("True"))
		{
			*Data = 1;
			return After;
		}
		if (Token == TEXT("False"))
		{
			*Data = 0;
			return After;
		}
	}
	return TProperty_Numeric<uint8>::ImportText_Internal(Buffer, ContainerOrPropertyPtr, PointerType, OwnerObject, PortFlags, ErrorText);
}

FString FByteProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	if (!Enum)
	{
		return TEXT("uint8");
	}
	const FString EnumName = Enum->CppType.IsEmpty() ? Enum->GetName() : Enum->CppType;
	const bool bRawParam = (CPPExportFlags & CPPF_ArgumentOrReturnValue) && (HasAnyPropertyFlags(CPF_ReturnParm) || !HasAnyPropertyFlags(CPF_OutParm));
	if (Enum->GetCppForm() == UEnum::ECppForm::EnumClass || bRawParam)
	{
		return EnumName;
	}
	return FString::Printf(TEXT("TEnumAsByte<%s>"), *EnumName);
}

bool FByteProperty::SameType(const FProperty* Other) const
{
	return FProperty::SameType(Other) && Enum == ((const FByteProperty*)Other)->Enum;
}

// FBoolProperty

FBoolProperty::FBoolProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FProperty(InOwner, InName, InObjectFlags)
{
	SetBoolSize(sizeof(bool), true);
}

FBoolProperty::FBoolProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags, uint32 InBitMask,
	uint32 InElementSize, bool bIsNativeBool)
	: FProperty(InOwner, InName, InObjectFlags, InOffset, InFlags)
{
	SetBoolSize(InElementSize, bIsNativeBool, InBitMask);
}

void FBoolProperty::SetBoolSize(const uint32 InSize, const bool bIsNativeBool, const uint32 InBitMask)
{
	if (bIsNativeBool)
	{
		PropertyFlags |= CPF_IsPlainOldData | CPF_NoDestructor | CPF_ZeroConstructor;
	}
	else
	{
		PropertyFlags &= ~(CPF_IsPlainOldData | CPF_ZeroConstructor);
		PropertyFlags |= CPF_NoDestructor;
	}
	PropertyFlags |= CPF_HasGetValueTypeHash;
	SetElementSize((int32)InSize);
	FieldSize = (uint8)InSize;
	ByteOffset = 0;
	if (bIsNativeBool)
	{
		ByteMask = 1;
		FieldMask = 0xff;
		return;
	}
	// The byte holding the bit, and the bit inside it.
	const uint32 Mask = InBitMask ? InBitMask : 1;
	for (ByteOffset = 0; ByteOffset < InSize; ++ByteOffset)
	{
		ByteMask = (uint8)(Mask >> (8 * ByteOffset));
		if (ByteMask)
		{
			break;
		}
	}
	FieldMask = ByteMask;
}

bool FBoolProperty::Identical(const void* A, const void* B, uint32 PortFlags) const
{
	return GetPropertyValue(A) == (B ? GetPropertyValue(B) : false);
}

void FBoolProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	const bool bValue = GetPropertyValue(PointerToValuePtr(PropertyValueOrContainer, PointerType));
	if (PortFlags & PPF_ExportCpp)
	{
		ValueStr += bValue ? TEXT("true") : TEXT("false");
	}
	else
	{
		ValueStr += bValue ? TEXT("True") : TEXT("False");
	}
}

const TCHAR* FBoolProperty::ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
	int32 PortFlags, FOutputDevice* ErrorText) const
{
	FString Token;
	const TCHAR* After = ReadToken(Buffer, Token);
	if (!After)
	{
		return nullptr;
	}
	void* Data = PointerToValuePtr(ContainerOrPropertyPtr, PointerType);
	// FString comparison ignores case, as the engine's does.
	if (Token == TEXT("1") || Token == TEXT("True") || Token == TEXT("Yes"))
	{
		SetPropertyValue(Data, true);
		return After;
	}
	if (Token == TEXT("0") || Token == TEXT("False") || Token == TEXT("No"))
	{
		SetPropertyValue(Data, false);
		return After;
	}
	ReportImportError(ErrorText, FString::Printf(TEXT("%s: '%s' is not a bool (True or False)"), *GetName(), Buffer));
	return nullptr;
}

FString FBoolProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	if (IsNativeBool())
	{
		return TEXT("bool");
	}
	switch (FieldSize)
	{
	case 2: return TEXT("uint16");
	case 4: return TEXT("uint32");
	case 8: return TEXT("uint64");
	default: return TEXT("uint8");
	}
}

FString FBoolProperty::GetCPPMacroType(FString& ExtendedTypeText) const
{
	ExtendedTypeText.Empty();
	return TEXT("UBOOL");
}

bool FBoolProperty::SameType(const FProperty* Other) const
{
	return FProperty::SameType(Other) && FieldSize == ((const FBoolProperty*)Other)->FieldSize;
}

void FBoolProperty::InitializeValueInternal(void* Dest) const
{
	for (int32 Index = 0; Index < GetArrayDim(); ++Index)
	{
		SetPropertyValue((uint8*)Dest + (SIZE_T)Index * GetElementSize(), false);
	}
}

void FBoolProperty::ClearValueInternal(void* Data) const
{
	SetPropertyValue(Data, false);
}

void FBoolProperty::CopyValuesInternal(void* Dest, const void* Src, int32 Count) const
{
	for (int32 Index = 0; Index < Count; ++Index)
	{
		SetPropertyValue((uint8*)Dest + (SIZE_T)Index * GetElementSize(), GetPropertyValue((const uint8*)Src + (SIZE_T)Index * GetElementSize()));
	}
}

uint32 FBoolProperty::GetValueTypeHashInternal(const void* Src) const
{
	return GetTypeHash(GetPropertyValue(Src));
}

// FNameProperty

void FNameProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	const FName Value = *(const FName*)PointerToValuePtr(PropertyValueOrContainer, PointerType);
	if (!(PortFlags & PPF_Delimited))
	{
		ValueStr += Value.ToString();
	}
	else if (!Value.IsNone())
	{
		ValueStr += FString::Printf(TEXT("\"%s\""), *Value.ToString().ReplaceCharWithEscapedChar());
	}
	else
	{
		ValueStr += TEXT("\"\"");
	}
}

const TCHAR* FNameProperty::ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
	int32 PortFlags, FOutputDevice* ErrorText) const
{
	FName Imported;
	if (!(PortFlags & PPF_Delimited))
	{
		// The whole text is the name.
		Imported = FName(Buffer);
		Buffer += FCString::Strlen(Buffer);
	}
	else
	{
		FString Token;
		Buffer = ReadToken(Buffer, Token, true);
		if (!Buffer)
		{
			ReportImportError(ErrorText, FString::Printf(TEXT("%s: bad quoted name"), *GetName()));
			return nullptr;
		}
		Imported = FName(*Token);
	}
	*(FName*)PointerToValuePtr(ContainerOrPropertyPtr, PointerType) = Imported;
	return Buffer;
}

// FStrProperty

void FStrProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	const FString& Value = *(const FString*)PointerToValuePtr(PropertyValueOrContainer, PointerType);
	if (PortFlags & PPF_ExportCpp)
	{
		ValueStr += FString::Printf(TEXT("TEXT(\"%s\")"), *Value.ReplaceCharWithEscapedChar());
	}
	else if (PortFlags & PPF_Delimited)
	{
		ValueStr += FString::Printf(TEXT("\"%s\""), *Value.ReplaceCharWithEscapedChar());
	}
	else
	{
		ValueStr += Value;
	}
}

const TCHAR* FStrProperty::ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
	int32 PortFlags, FOutputDevice* ErrorText) const
{
	FString* Data = (FString*)PointerToValuePtr(ContainerOrPropertyPtr, PointerType);
	if (!(PortFlags & PPF_Delimited))
	{
		*Data = Buffer;
		return Buffer + FCString::Strlen(Buffer);
	}
	if (*Buffer != TEXT('"'))
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("Missing opening '\"' in string property value: %s"), Buffer));
		return nullptr;
	}
	FString Value;
	int32 NumCharsRead = 0;
	if (!ReadQuotedString(Buffer, Value, &NumCharsRead))
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("Missing terminating '\"' in string property value: %s"), Buffer));
		return nullptr;
	}
	*Data = MoveTemp(Value);
	return Buffer + NumCharsRead;
}

// FPropertyChangedEvent

FName FPropertyChangedEvent::GetPropertyName() const
{
	return Property ? Property->GetFName() : FName();
}

FName FPropertyChangedEvent::GetMemberPropertyName() const
{
	return MemberProperty ? MemberProperty->GetFName() : FName();
}
