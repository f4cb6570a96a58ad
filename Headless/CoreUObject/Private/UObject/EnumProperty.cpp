#include "UObject/EnumProperty.h"
#include "UObject/Class.h"
#include "PropertyHelper.h"
#include "ObjectRegistry.h"

#include <cstring>

using namespace UE::CoreUObject::Private;

IMPLEMENT_FIELD(FEnumProperty)

FEnumProperty::FEnumProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FProperty(InOwner, InName, InObjectFlags)
{
}

FEnumProperty::FEnumProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, UEnum* InEnum)
	: FProperty(InOwner, InName, InObjectFlags), Enum(InEnum)
{
}

FEnumProperty::FEnumProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags, UEnum* InEnum)
	: FProperty(InOwner, InName, InObjectFlags, InOffset, InFlags), Enum(InEnum)
{
}

FEnumProperty::~FEnumProperty()
{
	delete UnderlyingProp;
}

void FEnumProperty::AddCppProperty(FProperty* Inner)
{
	FNumericProperty* Numeric = CastField<FNumericProperty>(Inner);
	checkf(!UnderlyingProp, TEXT("Enum property %s already has an underlying property"), *GetFullName());
	checkf(Numeric && Numeric->IsInteger(), TEXT("Enum property %s needs an integer underlying property"), *GetFullName());
	UnderlyingProp = Numeric;
	SetElementSize(Numeric->GetElementSize());
	PropertyFlags |= CPF_IsPlainOldData | CPF_NoDestructor | CPF_ZeroConstructor | CPF_HasGetValueTypeHash;
}

int32 FEnumProperty::GetMinAlignment() const
{
	return UnderlyingProp ? UnderlyingProp->GetMinAlignment() : 1;
}

void FEnumProperty::LinkInternal()
{
	if (!UnderlyingProp)
	{
		LogError(FString::Printf(TEXT("Enum property %s has no underlying property"), *GetFullName()));
		return;
	}
	UnderlyingProp->LinkInternal();
	UnderlyingProp->SetOffset_Internal(0);
	SetElementSize(UnderlyingProp->GetElementSize());
}

bool FEnumProperty::Identical(const void* A, const void* B, uint32 PortFlags) const
{
	if (!UnderlyingProp)
	{
		return true;
	}
	const int64 ValueA = UnderlyingProp->GetSignedIntPropertyValue(A);
	return ValueA == (B ? UnderlyingProp->GetSignedIntPropertyValue(B) : 0);
}

void FEnumProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	if (!UnderlyingProp)
	{
		return;
	}
	const void* Data = PointerToValuePtr(PropertyValueOrContainer, PointerType);
	if (!Enum || (PortFlags & PPF_ConsoleVariable))
	{
		UnderlyingProp->ExportTextItem_Direct(ValueStr, Data, nullptr, Parent, PortFlags, ExportRootScope);
		return;
	}
	const int64 Value = UnderlyingProp->GetSignedIntPropertyValue(Data);
	const bool bIsMax = Enum->ContainsExistingMax() && Value == Enum->GetValueByIndex(Enum->NumEnums() - 1);
	const bool bIsValid = Enum->IsValidEnumValue(Value) && (!bIsMax || (PortFlags & PPF_Copy));
	ValueStr += bIsValid ? Enum->GetNameStringByValue(Value) : FString(TEXT("(INVALID)"));
}

const TCHAR* FEnumProperty::ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
	int32 PortFlags, FOutputDevice* ErrorText) const
{
	if (!UnderlyingProp)
	{
		return nullptr;
	}
	void* Data = PointerToValuePtr(ContainerOrPropertyPtr, PointerType);
	if (!Enum)
	{
		return UnderlyingProp->ImportText_Direct(Buffer, Data, OwnerObject, PortFlags, ErrorText);
	}
	FString Token;
	const TCHAR* After = ReadToken(Buffer, Token, true);
	if (After)
	{
		int32 Index = Enum->GetIndexByNameString(Token, EGetByNameFlags::CheckAuthoredName);
		if (Index == INDEX_NONE && Token.IsNumeric() && !Token.Contains(TEXT(".")))
		{
			int64 Value = INDEX_NONE;
			LexFromString(Value, *Token);
			Index = Enum->GetIndexByValue(Value);
		}
		if (Index != INDEX_NONE)
		{
			UnderlyingProp->SetIntPropertyValue(Data, Enum->GetValueByIndex(Index));
			return After;
		}
	}
	ReportImportError(ErrorText, FString::Printf(TEXT("There is an enum property of type '%s' with an invalid value of '%s'"), *Enum->GetName(), Buffer));
	return nullptr;
}

FString FEnumProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	if (!Enum)
	{
		return UnderlyingProp ? UnderlyingProp->GetCPPType(ExtendedTypeText, CPPExportFlags) : FString(TEXT("uint8"));
	}
	return Enum->CppType.IsEmpty() ? Enum->GetName() : Enum->CppType;
}

FString FEnumProperty::GetCPPMacroType(FString& ExtendedTypeText) const
{
	ExtendedTypeText = GetCPPType();
	return TEXT("ENUM");
}

bool FEnumProperty::SameType(const FProperty* Other) const
{
	const FEnumProperty* OtherEnum = (const FEnumProperty*)Other;
	return FProperty::SameType(Other) && Enum == OtherEnum->Enum && UnderlyingProp && OtherEnum->UnderlyingProp && UnderlyingProp->SameType(OtherEnum->UnderlyingProp);
}

void FEnumProperty::InitializeValueInternal(void* Dest) const
{
	std::memset(Dest, 0, (SIZE_T)GetSize());
}

void FEnumProperty::ClearValueInternal(void* Data) const
{
	std::memset(Data, 0, (SIZE_T)GetElementSize());
}

void FEnumProperty::CopyValuesInternal(void* Dest, const void* Src, int32 Count) const
{
	std::memcpy(Dest, Src, (SIZE_T)Count * GetElementSize());
}

uint32 FEnumProperty::GetValueTypeHashInternal(const void* Src) const
{
	return UnderlyingProp ? UnderlyingProp->GetValueTypeHash(Src) : 0;
}
