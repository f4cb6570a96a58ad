#include "UObject/UnrealType.h"
#include "UObject/Class.h"
#include "PropertyHelper.h"
#include "ObjectRegistry.h"

#include <cstring>

using namespace UE::CoreUObject::Private;

IMPLEMENT_FIELD(FStructProperty)

FStructProperty::FStructProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FProperty(InOwner, InName, InObjectFlags)
{
}

FStructProperty::FStructProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags, UScriptStruct* InStruct)
	: FProperty(InOwner, InName, InObjectFlags, InOffset, InFlags), Struct(InStruct)
{
	if (Struct)
	{
		SetElementSize(Struct->GetStructureSize());
	}
}

int32 FStructProperty::GetMinAlignment() const
{
	return Struct ? Struct->GetMinAlignment() : 1;
}

void FStructProperty::LinkInternal()
{
	if (!Struct)
	{
		LogError(FString::Printf(TEXT("Struct property %s has no struct"), *GetFullName()));
		SetElementSize(0);
		return;
	}
	SetElementSize(Struct->GetStructureSize());
	PropertyFlags &= ~(CPF_IsPlainOldData | CPF_NoDestructor | CPF_ZeroConstructor | CPF_HasGetValueTypeHash);
	if (Struct->HasAnyStructFlags(STRUCT_IsPlainOldData))
	{
		PropertyFlags |= CPF_IsPlainOldData;
	}
	if (Struct->HasAnyStructFlags(STRUCT_NoDestructor))
	{
		PropertyFlags |= CPF_NoDestructor;
	}
	if (Struct->HasAnyStructFlags(STRUCT_ZeroConstructor))
	{
		PropertyFlags |= CPF_ZeroConstructor;
	}
	if (Struct->GetCppStructOps() && Struct->GetCppStructOps()->HasGetTypeHash())
	{
		PropertyFlags |= CPF_HasGetValueTypeHash;
	}
}

bool FStructProperty::Identical(const void* A, const void* B, uint32 PortFlags) const
{
	if (!Struct)
	{
		return true;
	}
	if (B)
	{
		return Struct->CompareScriptStruct(A, B, PortFlags);
	}
	// Compare with a freshly initialised value.
	const int32 Size = Struct->GetStructureSize();
	uint8* Default = (uint8*)AllocateObjectMemory((SIZE_T)Size, ObjectAlignment);
	Struct->InitializeStruct(Default);
	const bool bIdentical = Struct->CompareScriptStruct(A, Default, PortFlags);
	Struct->DestroyStruct(Default);
	FreeObjectMemory(Default, ObjectAlignment);
	return bIdentical;
}

void FStructProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	if (!Struct)
	{
		return;
	}
	Struct->ExportText(ValueStr, PointerToValuePtr(PropertyValueOrContainer, PointerType), DefaultValue, Parent, PortFlags, ExportRootScope);
}

const TCHAR* FStructProperty::ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
	int32 PortFlags, FOutputDevice* ErrorText) const
{
	if (!Struct)
	{
		return nullptr;
	}
	return Struct->ImportText(Buffer, PointerToValuePtr(ContainerOrPropertyPtr, PointerType), OwnerObject, PortFlags, ErrorText, GetName());
}

FString FStructProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	return Struct ? Struct->GetStructCPPName() : FString(TEXT("FStruct"));
}

FString FStructProperty::GetCPPMacroType(FString& ExtendedTypeText) const
{
	ExtendedTypeText = GetCPPType();
	return TEXT("STRUCT");
}

bool FStructProperty::SameType(const FProperty* Other) const
{
	return FProperty::SameType(Other) && Struct == ((const FStructProperty*)Other)->Struct;
}

void FStructProperty::InitializeValueInternal(void* Dest) const
{
	if (Struct)
	{
		Struct->InitializeStruct(Dest, GetArrayDim());
	}
}

void FStructProperty::DestroyValueInternal(void* Dest) const
{
	if (Struct)
	{
		Struct->DestroyStruct(Dest, GetArrayDim());
	}
}

void FStructProperty::ClearValueInternal(void* Data) const
{
	if (Struct)
	{
		Struct->DestroyStruct(Data);
		std::memset(Data, 0, (SIZE_T)Struct->GetStructureSize());
		Struct->InitializeStruct(Data);
	}
}

void FStructProperty::CopyValuesInternal(void* Dest, const void* Src, int32 Count) const
{
	if (Struct)
	{
		Struct->CopyScriptStruct(Dest, Src, Count);
	}
}

uint32 FStructProperty::GetValueTypeHashInternal(const void* Src) const
{
	return Struct ? Struct->GetStructTypeHash(Src) : 0;
}

// Struct text

void UScriptStruct::ExportText(FString& ValueStr, const void* Value, const void* Defaults, UObject* OwnerObject, int32 PortFlags, UObject* ExportRootScope,
	bool bAllowNativeOverride) const
{
	if (bAllowNativeOverride && CppStructOps && CppStructOps->HasExportTextItem())
	{
		if (CppStructOps->ExportTextItem(ValueStr, Value, Defaults, OwnerObject, PortFlags, ExportRootScope))
		{
			return;
		}
	}
	if (PortFlags & PPF_ExportCpp)
	{
		return;
	}
	// A struct kept as one unit exports every member, whatever the defaults.
	if (StructFlags & STRUCT_Atomic)
	{
		Defaults = Value;
	}
	int32 Count = 0;
	for (FProperty* Property = PropertyLink; Property; Property = Property->PropertyLinkNext)
	{
		if (!Property->ShouldPort(PortFlags))
		{
			continue;
		}
		for (int32 Index = 0; Index < Property->GetArrayDim(); ++Index)
		{
			FString InnerValue;
			if (!Property->ExportText_InContainer(Index, InnerValue, Value, Defaults, OwnerObject, PPF_Delimited | PortFlags, ExportRootScope))
			{
				continue;
			}
			++Count;
			if (Count == 1)
			{
				ValueStr += TEXT('(');
			}
			else if (PortFlags & PPF_BlueprintDebugView)
			{
				ValueStr += TEXT(",\n");
			}
			else
			{
				ValueStr += TEXT(',');
			}
			const FString PropertyName = (PortFlags & (PPF_ExternalEditor | PPF_BlueprintDebugView)) ? Property->GetAuthoredName() : Property->GetName();
			if (Property->GetArrayDim() == 1)
			{
				ValueStr += PropertyName + TEXT("=");
			}
			else
			{
				ValueStr += FString::Printf(TEXT("%s[%i]="), *PropertyName, Index);
			}
			ValueStr += InnerValue;
		}
	}
	ValueStr += Count > 0 ? TEXT(")") : TEXT("()");
}

namespace
{
	/**
	 * Reads "Name=Value", "Name(2)=Value" or "Name[2]=Value" at Str into the struct value at Dest. Unknown
	 * members and bad values are reported; the caller then skips the rest of the value text.
	 */
	const TCHAR* ImportStructMember(const TCHAR* Str, void* Dest, const UStruct* Struct, UObject* OwnerObject, int32 PortFlags, FOutputDevice* ErrorText,
		const FString& StructName, bool& bOutFailed)
	{
		bOutFailed = false;
		const TCHAR* NameStart = Str;
		while (FChar::IsAlnum(*Str) || *Str == TEXT('_'))
		{
			++Str;
		}
		const FString MemberName(Str - NameStart, NameStart);
		int32 ArrayIndex = 0;
		if (*Str == TEXT('(') || *Str == TEXT('['))
		{
			const TCHAR Close = *Str == TEXT('(') ? TEXT(')') : TEXT(']');
			++Str;
			const TCHAR* IndexStart = Str;
			while (FChar::IsDigit(*Str))
			{
				++Str;
			}
			if (Str == IndexStart || *Str != Close)
			{
				ReportImportError(ErrorText, FString::Printf(TEXT("ImportText (%s): bad array index for %s"), *StructName, *MemberName));
				bOutFailed = true;
				return Str;
			}
			ArrayIndex = FCString::Atoi(*FString(Str - IndexStart, IndexStart));
			++Str;
		}
		SkipWhitespace(Str);
		if (MemberName.IsEmpty() || *Str != TEXT('='))
		{
			ReportImportError(ErrorText, FString::Printf(TEXT("ImportText (%s): missing '=' after %s"), *StructName, *MemberName));
			bOutFailed = true;
			return Str;
		}
		++Str;
		SkipWhitespace(Str);
		FProperty* Property = Struct->FindPropertyByName(FName(*MemberName, FNAME_Find));
		if (!Property)
		{
			ReportImportError(ErrorText, FString::Printf(TEXT("ImportText (%s): unknown member %s"), *StructName, *MemberName));
			bOutFailed = true;
			return Str;
		}
		if (ArrayIndex >= Property->GetArrayDim())
		{
			ReportImportError(ErrorText, FString::Printf(TEXT("ImportText (%s): index %d out of bounds for %s"), *StructName, ArrayIndex, *MemberName));
			bOutFailed = true;
			return Str;
		}
		const TCHAR* Result = Property->ImportText_Direct(Str, Property->ContainerPtrToValuePtr<void>(Dest, ArrayIndex), OwnerObject, PortFlags | PPF_Delimited, ErrorText);
		if (!Result)
		{
			ReportImportError(ErrorText, FString::Printf(TEXT("ImportText (%s): invalid value for %s: %s"), *StructName, *MemberName, Str));
			bOutFailed = true;
			return Str;
		}
		return Result;
	}
}

const TCHAR* UScriptStruct::ImportText(const TCHAR* InBuffer, void* Value, UObject* OwnerObject, int32 PortFlags, FOutputDevice* ErrorText, const FString& StructName,
	bool bAllowNativeOverride) const
{
	if (!InBuffer)
	{
		return nullptr;
	}
	if (bAllowNativeOverride && CppStructOps && CppStructOps->HasImportTextItem())
	{
		const TCHAR* Buffer = InBuffer;
		if (CppStructOps->ImportTextItem(Buffer, Value, PortFlags, OwnerObject, ErrorText))
		{
			return Buffer;
		}
	}
	const TCHAR* Buffer = InBuffer;
	if (*Buffer++ != TEXT('('))
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("ImportText (%s): Missing opening parenthesis: %s"), *StructName, InBuffer));
		return nullptr;
	}
	SkipWhitespace(Buffer);
	while (*Buffer != TEXT(')'))
	{
		bool bMemberFailed = false;
		Buffer = ImportStructMember(Buffer, Value, this, OwnerObject, PortFlags | PPF_Delimited, ErrorText, StructName, bMemberFailed);
		// Whatever is left of the member's text (all of it after a failure) is skipped up to the next member.
		SkipWhitespace(Buffer);
		const TCHAR* Skipped = SkipValueText(Buffer);
		if (!Skipped)
		{
			ReportImportError(ErrorText, FString::Printf(TEXT("ImportText (%s): unbalanced parentheses or quotes in: %s"), *StructName, InBuffer));
			return nullptr;
		}
		Buffer = Skipped;
		if (*Buffer == TEXT(','))
		{
			++Buffer;
		}
		else if (*Buffer != TEXT(')'))
		{
			ReportImportError(ErrorText, FString::Printf(TEXT("ImportText (%s): Missing closing parenthesis: %s"), *StructName, InBuffer));
			return nullptr;
		}
		SkipWhitespace(Buffer);
	}
	return Buffer + 1;
}
