#include "UObject/UnrealType.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/SoftObjectPath.h"
#include "PropertyHelper.h"
#include "ObjectRegistry.h"

using namespace UE::CoreUObject::Private;

IMPLEMENT_FIELD(FObjectPropertyBase)
IMPLEMENT_FIELD(FObjectProperty)
IMPLEMENT_FIELD(FWeakObjectProperty)
IMPLEMENT_FIELD(FSoftObjectProperty)
IMPLEMENT_FIELD(FClassProperty)
IMPLEMENT_FIELD(FSoftClassProperty)
IMPLEMENT_FIELD(FInterfaceProperty)

// FObjectPropertyBase

FObjectPropertyBase::FObjectPropertyBase(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FProperty(InOwner, InName, InObjectFlags)
{
}

FObjectPropertyBase::FObjectPropertyBase(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags, UClass* InClass)
	: FProperty(InOwner, InName, InObjectFlags, InOffset, InFlags), PropertyClass(InClass)
{
}

FString FObjectPropertyBase::GetExportPath(const UObject* Object, const UObject* Parent, const UObject* ExportRootScope, const uint32 PortFlags)
{
	// Paths are fully qualified, except that text meant for another package or graph leaves out the
	// part shared with the exported scope, so it does not tie the copy to the place it came from.
	const UObject* StopOuter = nullptr;
	bool bExportFullyQualified = true;
	if (PortFlags & PPF_ExportsNotFullyQualified)
	{
		StopOuter = (ExportRootScope || !Parent) ? ExportRootScope : (const UObject*)Parent->GetPackage();
		bExportFullyQualified = StopOuter && !Object->IsIn(StopOuter);
		if (bExportFullyQualified)
		{
			StopOuter = StopOuter->GetOuter();
			bExportFullyQualified = !StopOuter || !Object->IsIn(StopOuter);
		}
	}
	if (bExportFullyQualified)
	{
		StopOuter = nullptr;
		if ((PortFlags & PPF_SimpleObjectText) && Parent)
		{
			StopOuter = Parent->GetPackage();
		}
	}
	else if (Parent && Object->IsIn(Parent))
	{
		StopOuter = Parent;
	}

	const FString PathName = Object->GetPathName(StopOuter);
	FString Result = (PortFlags & PPF_SimpleObjectText) ? PathName : FString::Printf(TEXT("%s'%s'"), *Object->GetClass()->GetPathName(), *PathName);
	if (PortFlags & PPF_Delimited)
	{
		Result = FString::Printf(TEXT("\"%s\""), *Result.ReplaceQuotesWithEscapedQuotes());
	}
	return Result;
}

UObject* FObjectPropertyBase::FindImportedObject(const FProperty* Property, UObject* OwnerObject, UClass* ObjectClass, UClass* RequiredMetaClass, const TCHAR* Text,
	uint32 PortFlags, FOutputDevice* ErrorText)
{
	UObject* Result = nullptr;
	// A name relative to the owner or one of its outers (subobjects of the object being edited) first.
	for (UObject* Scope = OwnerObject; !Result && Scope; Scope = Scope->GetOuter())
	{
		Result = StaticFindObjectSafe(ObjectClass, Scope, Text);
	}
	if (!Result)
	{
		Result = StaticFindObjectSafe(ObjectClass, nullptr, Text);
	}
	FString Path(Text);
	int32 DotIndex = INDEX_NONE;
	const bool bHasDot = Path.FindChar(TEXT('.'), DotIndex);
	if (!Result && !Path.StartsWith(TEXT("/")) && !bHasDot)
	{
		// A short name anywhere, as the engine's search of any package.
		Result = StaticFindFirstObject(ObjectClass, Text, EFindFirstObjectOptions::NativeFirst);
	}
	if (!Result && Path.StartsWith(TEXT("/")))
	{
		if (!bHasDot)
		{
			// A package name alone names its main asset.
			int32 SlashIndex = INDEX_NONE;
			Path.FindLastChar(TEXT('/'), SlashIndex);
			Path += TEXT(".") + Path.RightChop(SlashIndex + 1);
		}
		Result = StaticLoadObject(ObjectClass, nullptr, *Path, nullptr, LOAD_NoWarn | LOAD_FindIfFail);
	}
	if (Result && RequiredMetaClass && !Result->IsA(RequiredMetaClass))
	{
		Result = nullptr;
	}
	return Result;
}

bool FObjectPropertyBase::ParseObjectPropertyValue(const FProperty* Property, UObject* OwnerObject, UClass* RequiredMetaClass, uint32 PortFlags, const TCHAR*& Buffer,
	UObject*& Out, FOutputDevice* ErrorText)
{
	Out = nullptr;
	if (!RequiredMetaClass)
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("%s: no class to import an object of"), Property ? *Property->GetFullName() : TEXT("property")));
		return false;
	}
	const TCHAR* InBuffer = Buffer;
	FString Token;
	Buffer = ReadToken(Buffer, Token, true);
	if (!Buffer)
	{
		return false;
	}
	if (Token == TEXT("None"))
	{
		return true;
	}
	if (Token.IsEmpty())
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("%s: no object path in '%s'"), Property ? *Property->GetName() : TEXT("property"), InBuffer));
		return false;
	}
	SkipWhitespace(Buffer);
	if (*Buffer == TEXT('\''))
	{
		// Class'Path': the class is only decoration; the property's class decides. The path runs to the closing quote,
		// spaces included, since the editor names objects freely ("New State Machine").
		Token.Reset();
		const TCHAR* PathStart = Buffer + 1;
		const TCHAR* PathEnd = PathStart;
		while (*PathEnd && *PathEnd != TEXT('\'') && *PathEnd != TEXT('\n'))
		{
			++PathEnd;
		}
		Token = FString::ConstructFromPtrSize(PathStart, static_cast<int32>(PathEnd - PathStart));
		Buffer = PathEnd;
		if (Token.IsEmpty() || *Buffer != TEXT('\''))
		{
			ReportImportError(ErrorText, FString::Printf(TEXT("%s: unterminated object path in '%s'"), Property ? *Property->GetName() : TEXT("property"), InBuffer));
			Buffer = nullptr;
			return false;
		}
		++Buffer;
	}
	else
	{
		// A quoted token may carry the whole Class'Path' text.
		int32 QuoteIndex = INDEX_NONE;
		if (Token.FindChar(TEXT('\''), QuoteIndex) && Token.EndsWith(TEXT("'")) && QuoteIndex < Token.Len() - 1)
		{
			Token = Token.Mid(QuoteIndex + 1, Token.Len() - QuoteIndex - 2);
		}
	}
	Out = FindImportedObject(Property, OwnerObject, RequiredMetaClass, RequiredMetaClass, *Token, PortFlags, ErrorText);
	if (!Out)
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("%s: no %s named '%s'"), Property ? *Property->GetName() : TEXT("property"), *RequiredMetaClass->GetName(), *Token));
		return false;
	}
	return true;
}

void FObjectPropertyBase::ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	UObject* Value = GetObjectPropertyValue(PointerToValuePtr(PropertyValueOrContainer, PointerType));
	if (PortFlags & PPF_ExportCpp)
	{
		ValueStr += Value ? FString::Printf(TEXT("LoadObject<%s%s>(nullptr, TEXT(\"%s\"))"), PropertyClass ? PropertyClass->GetPrefixCPP() : TEXT("U"),
			PropertyClass ? *PropertyClass->GetName() : TEXT("Object"), *Value->GetPathName().ReplaceCharWithEscapedChar()) : FString(TEXT("nullptr"));
		return;
	}
	if (!Value)
	{
		ValueStr += TEXT("None");
		return;
	}
	if (PortFlags & PPF_DebugDump)
	{
		ValueStr += Value->GetFullName();
	}
	else if (Parent && !Parent->HasAnyFlags(RF_ClassDefaultObject) && Value->GetOuter() == Parent && Value->HasAnyFlags(RF_DefaultSubObject))
	{
		// A default subobject of the object being exported is named by its name alone.
		ValueStr += (PortFlags & PPF_Delimited) ? FString::Printf(TEXT("\"%s\""), *Value->GetName().ReplaceQuotesWithEscapedQuotes()) : Value->GetName();
	}
	else
	{
		ValueStr += GetExportPath(Value, Parent, ExportRootScope, PortFlags);
	}
}

const TCHAR* FObjectPropertyBase::ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
	int32 PortFlags, FOutputDevice* ErrorText) const
{
	UObject* Result = nullptr;
	UClass* RequiredClass = GetRequiredMetaClass() ? UClass::StaticClass() : PropertyClass;
	const bool bOk = ParseObjectPropertyValue(this, OwnerObject, RequiredClass ? RequiredClass : UObject::StaticClass(), PortFlags, Buffer, Result, ErrorText);
	if (!bOk || !Buffer)
	{
		return nullptr;
	}
	if (Result && !AllowObjectTypeReinterpretationTo(Result))
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("%s: %s is not a valid value"), *GetName(), *Result->GetFullName()));
		return nullptr;
	}
	SetObjectPropertyValue(PointerToValuePtr(ContainerOrPropertyPtr, PointerType), Result);
	return Buffer;
}

bool FObjectPropertyBase::AllowObjectTypeReinterpretationTo(const UObject* Object) const
{
	return !PropertyClass || Object->IsA(PropertyClass);
}

bool FObjectPropertyBase::Identical(const void* A, const void* B, uint32 PortFlags) const
{
	const UObject* ObjectA = A ? GetObjectPropertyValue(A) : nullptr;
	const UObject* ObjectB = B ? GetObjectPropertyValue(B) : nullptr;
	return ObjectA == ObjectB;
}

bool FObjectPropertyBase::SameType(const FProperty* Other) const
{
	return FProperty::SameType(Other) && PropertyClass == ((const FObjectPropertyBase*)Other)->PropertyClass;
}

// FObjectProperty

FString FObjectProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	const FString ClassName = PropertyClass ? FString(PropertyClass->GetPrefixCPP()) + PropertyClass->GetName() : FString(TEXT("UObject"));
	return HasAnyPropertyFlags(CPF_TObjectPtr) ? FString::Printf(TEXT("TObjectPtr<%s>"), *ClassName) : ClassName + TEXT("*");
}

FString FObjectProperty::GetCPPMacroType(FString& ExtendedTypeText) const
{
	ExtendedTypeText = PropertyClass ? FString::Printf(TEXT("%s%s"), PropertyClass->GetPrefixCPP(), *PropertyClass->GetName()) : FString(TEXT("UObject"));
	return HasAnyPropertyFlags(CPF_TObjectPtr) ? TEXT("OBJECTPTR") : TEXT("OBJECT");
}

// FWeakObjectProperty

FString FWeakObjectProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	const FString ClassName = PropertyClass ? FString(PropertyClass->GetPrefixCPP()) + PropertyClass->GetName() : FString(TEXT("UObject"));
	if (ExtendedTypeText)
	{
		*ExtendedTypeText = FString::Printf(TEXT("<%s>"), *ClassName);
	}
	return TEXT("TWeakObjectPtr");
}

FString FWeakObjectProperty::GetCPPMacroType(FString& ExtendedTypeText) const
{
	ExtendedTypeText = TEXT("TWeakObjectPtr");
	return TEXT("WEAKOBJECT");
}

// FSoftObjectProperty

void FSoftObjectProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	const FSoftObjectPtr& Value = *(const FSoftObjectPtr*)PointerToValuePtr(PropertyValueOrContainer, PointerType);
	Value.ToSoftObjectPath().ExportTextItem(ValueStr, FSoftObjectPath(), Parent, PortFlags, ExportRootScope);
}

const TCHAR* FSoftObjectProperty::ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
	int32 PortFlags, FOutputDevice* ErrorText) const
{
	FSoftObjectPtr& Value = *(FSoftObjectPtr*)PointerToValuePtr(ContainerOrPropertyPtr, PointerType);
	FSoftObjectPath Path;
	if (!Path.ImportTextItem(Buffer, PortFlags, OwnerObject, ErrorText))
	{
		Value = FSoftObjectPtr();
		return nullptr;
	}
	Value = Path;
	return Buffer;
}

bool FSoftObjectProperty::Identical(const void* A, const void* B, uint32 PortFlags) const
{
	const FSoftObjectPtr& ValueA = *(const FSoftObjectPtr*)A;
	return B ? ValueA.ToSoftObjectPath() == ((const FSoftObjectPtr*)B)->ToSoftObjectPath() : ValueA.IsNull();
}

FString FSoftObjectProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	const FString ClassName = PropertyClass ? FString(PropertyClass->GetPrefixCPP()) + PropertyClass->GetName() : FString(TEXT("UObject"));
	return FString::Printf(TEXT("TSoftObjectPtr<%s>"), *ClassName);
}

FString FSoftObjectProperty::GetCPPMacroType(FString& ExtendedTypeText) const
{
	ExtendedTypeText = GetCPPType();
	return TEXT("SOFTOBJECT");
}

// FClassProperty

FClassProperty::FClassProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FObjectProperty(InOwner, InName, InObjectFlags)
{
}

FClassProperty::FClassProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags, UClass* InMetaClass,
	UClass* InClassType)
	: FObjectProperty(InOwner, InName, InObjectFlags, InOffset, InFlags, InClassType ? InClassType : UClass::StaticClass()), MetaClass(InMetaClass)
{
}

bool FClassProperty::AllowObjectTypeReinterpretationTo(const UObject* Object) const
{
	if (!Object->IsA(UClass::StaticClass()))
	{
		return false;
	}
	return !MetaClass || ((const UClass*)Object)->IsChildOf(MetaClass);
}

FString FClassProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	if (HasAnyPropertyFlags(CPF_UObjectWrapper) && MetaClass)
	{
		return FString::Printf(TEXT("TSubclassOf<%s%s>"), MetaClass->GetPrefixCPP(), *MetaClass->GetName());
	}
	return FObjectProperty::GetCPPType(ExtendedTypeText, CPPExportFlags);
}

bool FClassProperty::SameType(const FProperty* Other) const
{
	return FObjectProperty::SameType(Other) && MetaClass == ((const FClassProperty*)Other)->MetaClass;
}

// FSoftClassProperty

FSoftClassProperty::FSoftClassProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FSoftObjectProperty(InOwner, InName, InObjectFlags)
{
}

FSoftClassProperty::FSoftClassProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags, UClass* InMetaClass)
	: FSoftObjectProperty(InOwner, InName, InObjectFlags, InOffset, InFlags, UClass::StaticClass()), MetaClass(InMetaClass)
{
}

FString FSoftClassProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	return MetaClass ? FString::Printf(TEXT("TSoftClassPtr<%s%s>"), MetaClass->GetPrefixCPP(), *MetaClass->GetName()) : FString(TEXT("TSoftClassPtr<UObject>"));
}

bool FSoftClassProperty::SameType(const FProperty* Other) const
{
	return FSoftObjectProperty::SameType(Other) && MetaClass == ((const FSoftClassProperty*)Other)->MetaClass;
}

// FInterfaceProperty

FInterfaceProperty::FInterfaceProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: TProperty(InOwner, InName, InObjectFlags)
{
}

FInterfaceProperty::FInterfaceProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags,
	UClass* InInterfaceClass)
	: TProperty(InOwner, InName, InObjectFlags, InOffset, InFlags), InterfaceClass(InInterfaceClass)
{
}

void FInterfaceProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	const FScriptInterface& Value = *(const FScriptInterface*)PointerToValuePtr(PropertyValueOrContainer, PointerType);
	UObject* Object = Value.GetObject();
	ValueStr += Object ? FObjectPropertyBase::GetExportPath(Object, Parent, ExportRootScope, PortFlags) : FString(TEXT("None"));
}

const TCHAR* FInterfaceProperty::ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
	int32 PortFlags, FOutputDevice* ErrorText) const
{
	FScriptInterface& Value = *(FScriptInterface*)PointerToValuePtr(ContainerOrPropertyPtr, PointerType);
	UObject* Result = nullptr;
	if (!FObjectPropertyBase::ParseObjectPropertyValue(this, OwnerObject, UObject::StaticClass(), PortFlags, Buffer, Result, ErrorText) || !Buffer)
	{
		return nullptr;
	}
	if (!Result)
	{
		Value = FScriptInterface();
		return Buffer;
	}
	if (InterfaceClass && !Result->GetClass()->ImplementsInterface(InterfaceClass))
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("%s: %s does not implement %s"), *GetName(), *Result->GetPathName(), *InterfaceClass->GetName()));
		return nullptr;
	}
	Value = FScriptInterface(Result, InterfaceClass ? Result->GetInterfaceAddress(InterfaceClass) : nullptr);
	return Buffer;
}

bool FInterfaceProperty::Identical(const void* A, const void* B, uint32 PortFlags) const
{
	const UObject* ObjectA = ((const FScriptInterface*)A)->GetObject();
	const UObject* ObjectB = B ? ((const FScriptInterface*)B)->GetObject() : nullptr;
	return ObjectA == ObjectB;
}

FString FInterfaceProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	const FString InterfaceName = InterfaceClass ? TEXT("I") + InterfaceClass->GetName() : FString(TEXT("IInterface"));
	if (ExtendedTypeText)
	{
		*ExtendedTypeText = FString::Printf(TEXT("<%s>"), *InterfaceName);
	}
	return TEXT("TScriptInterface");
}

FString FInterfaceProperty::GetCPPMacroType(FString& ExtendedTypeText) const
{
	ExtendedTypeText = InterfaceClass ? TEXT("I") + InterfaceClass->GetName() : FString(TEXT("IInterface"));
	return TEXT("TINTERFACE");
}

bool FInterfaceProperty::SameType(const FProperty* Other) const
{
	return FProperty::SameType(Other) && InterfaceClass == ((const FInterfaceProperty*)Other)->InterfaceClass;
}
