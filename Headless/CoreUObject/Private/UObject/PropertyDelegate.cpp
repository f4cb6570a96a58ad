#include "UObject/UnrealType.h"
#include "UObject/Class.h"
#include "UObject/ScriptDelegates.h"
#include "PropertyHelper.h"
#include "ObjectRegistry.h"

using namespace UE::CoreUObject::Private;

IMPLEMENT_FIELD(FDelegateProperty)
IMPLEMENT_FIELD(FMulticastDelegateProperty)
IMPLEMENT_FIELD(FMulticastInlineDelegateProperty)
IMPLEMENT_FIELD(FMulticastSparseDelegateProperty)

namespace
{
	/**
	 * Reads "<Object>.<Function>" into Delegate, as the engine writes it. The object is a class name (its default
	 * object), a name found in the owner's outer chain or anywhere (natives first), or a full path; a function name
	 * alone refers to the owner (to the outer of a default object's subobject). "(null).None" unbinds. The function
	 * must exist and match the signature.
	 */
	const TCHAR* ImportDelegateFromText(FScriptDelegate& Delegate, const UFunction* SignatureFunction, const TCHAR* Buffer, UObject* Parent, int32 PortFlags,
		FOutputDevice* ErrorText, const FString& PropertyName)
	{
		SkipWhitespace(Buffer);
		FString Text;
		if (*Buffer == TEXT('"'))
		{
			int32 NumCharsRead = 0;
			if (!ReadQuotedString(Buffer, Text, &NumCharsRead))
			{
				return nullptr;
			}
			Buffer += NumCharsRead;
		}
		else
		{
			// "(null)" is the object part of an unbound delegate; its ')' does not end the value.
			if (FCString::Strncmp(Buffer, TEXT("(null)"), 6) == 0)
			{
				Text += TEXT("(null)");
				Buffer += 6;
			}
			while (*Buffer && *Buffer != TEXT(',') && *Buffer != TEXT(')') && !FChar::IsWhitespace(*Buffer))
			{
				Text.AppendChar(*Buffer++);
			}
		}
		if (Text.StartsWith(TEXT("(null)"), ESearchCase::CaseSensitive))
		{
			if (Text == TEXT("(null).None") || Text == TEXT("(null)"))
			{
				Delegate.Unbind();
				return Buffer;
			}
			ReportImportError(ErrorText, FString::Printf(TEXT("%s: '%s' names a function but no object"), *PropertyName, *Text));
			return nullptr;
		}
		if (Text.IsEmpty())
		{
			ReportImportError(ErrorText, FString::Printf(TEXT("%s: a delegate value is <Object>.<Function>"), *PropertyName));
			return nullptr;
		}

		UObject* Object = nullptr;
		FName FunctionName;
		FString ObjectText;
		int32 DotIndex = INDEX_NONE;
		if (!Text.FindLastChar(TEXT('.'), DotIndex))
		{
			if (!Parent)
			{
				ReportImportError(ErrorText, FString::Printf(TEXT("%s: '%s' has no object and there is no owner to use"), *PropertyName, *Text));
				return nullptr;
			}
			UObject* ParentOuter = Parent->GetOuter();
			const bool bSubobjectOfDefaults = !Parent->HasAnyFlags(RF_ClassDefaultObject) && ParentOuter && ParentOuter->HasAnyFlags(RF_ClassDefaultObject);
			Object = bSubobjectOfDefaults ? ParentOuter : Parent;
			ObjectText = Object->GetName();
			FunctionName = FName(*Text);
		}
		else
		{
			if (DotIndex == 0 || DotIndex == Text.Len() - 1)
			{
				ReportImportError(ErrorText, FString::Printf(TEXT("%s: '%s' is not <Object>.<Function>"), *PropertyName, *Text));
				return nullptr;
			}
			ObjectText = Text.Left(DotIndex);
			FunctionName = FName(*Text.RightChop(DotIndex + 1));
			if (!ObjectText.Contains(TEXT(".")) && !ObjectText.Contains(TEXT("/")))
			{
				if (UClass* Class = FindFirstObject<UClass>(*ObjectText, EFindFirstObjectOptions::NativeFirst))
				{
					Object = Class->GetDefaultObject();
				}
			}
			for (UObject* Scope = Parent; !Object && Scope; Scope = Scope->GetOuter())
			{
				Object = StaticFindObject(UObject::StaticClass(), Scope, *ObjectText);
			}
			if (!Object)
			{
				Object = ObjectText.StartsWith(TEXT("/"))
					? StaticFindObject(UObject::StaticClass(), nullptr, *ObjectText)
					: StaticFindFirstObject(UObject::StaticClass(), *ObjectText, EFindFirstObjectOptions::NativeFirst);
			}
		}
		if (!Object)
		{
			ReportImportError(ErrorText, FString::Printf(TEXT("%s: no object named '%s'"), *PropertyName, *ObjectText));
			return nullptr;
		}
		const UFunction* Function = Object->FindFunction(FunctionName);
		if (!Function)
		{
			ReportImportError(ErrorText, FString::Printf(TEXT("%s: %s has no function %s"), *PropertyName, *Object->GetPathName(), *FunctionName.ToString()));
			return nullptr;
		}
		if (SignatureFunction && !Function->IsSignatureCompatibleWith(SignatureFunction))
		{
			ReportImportError(ErrorText, FString::Printf(TEXT("%s: %s does not match the signature %s"), *PropertyName, *Function->GetPathName(), *SignatureFunction->GetName()));
			return nullptr;
		}
		Delegate.BindUFunction(Object, Function->GetFName());
		return Buffer;
	}

	/** "<ObjectName>.<FunctionName>", with "(null)" for a missing object, as the engine writes a delegate. */
	void AppendDelegateText(FString& ValueStr, const FScriptDelegate& Delegate)
	{
		const UObject* Object = Delegate.GetUObject();
		ValueStr += Object ? Object->GetName() : FString(TEXT("(null)"));
		ValueStr += TEXT(".");
		ValueStr += Delegate.GetFunctionName().ToString();
	}

	FString SignatureTypeName(const UFunction* SignatureFunction)
	{
		if (!SignatureFunction)
		{
			return TEXT("FScriptDelegate");
		}
		FString Name = SignatureFunction->GetName();
		Name.RemoveFromEnd(TEXT("__DelegateSignature"), ESearchCase::CaseSensitive);
		return TEXT("F") + Name;
	}
}

// FDelegateProperty

FDelegateProperty::FDelegateProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: TProperty(InOwner, InName, InObjectFlags)
{
}

FDelegateProperty::FDelegateProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags,
	UFunction* InSignatureFunction)
	: TProperty(InOwner, InName, InObjectFlags, InOffset, InFlags), SignatureFunction(InSignatureFunction)
{
}

void FDelegateProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	const FScriptDelegate& Delegate = *(const FScriptDelegate*)PointerToValuePtr(PropertyValueOrContainer, PointerType);
	AppendDelegateText(ValueStr, Delegate);
}

const TCHAR* FDelegateProperty::ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
	int32 PortFlags, FOutputDevice* ErrorText) const
{
	return ImportDelegateFromText(*(FScriptDelegate*)PointerToValuePtr(ContainerOrPropertyPtr, PointerType), SignatureFunction, Buffer, OwnerObject, PortFlags, ErrorText,
		GetName());
}

FString FDelegateProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	return SignatureTypeName(SignatureFunction);
}

bool FDelegateProperty::SameType(const FProperty* Other) const
{
	return FProperty::SameType(Other) && SignatureFunction == ((const FDelegateProperty*)Other)->SignatureFunction;
}

// FMulticastDelegateProperty

FMulticastDelegateProperty::FMulticastDelegateProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FProperty(InOwner, InName, InObjectFlags)
{
}

FMulticastDelegateProperty::FMulticastDelegateProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags,
	UFunction* InSignatureFunction)
	: FProperty(InOwner, InName, InObjectFlags, InOffset, InFlags), SignatureFunction(InSignatureFunction)
{
}

bool FMulticastDelegateProperty::SameType(const FProperty* Other) const
{
	return FProperty::SameType(Other) && SignatureFunction == ((const FMulticastDelegateProperty*)Other)->SignatureFunction;
}

FString FMulticastDelegateProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	return SignatureTypeName(SignatureFunction);
}

// FMulticastInlineDelegateProperty

void FMulticastInlineDelegateProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType,
	const void* DefaultValue, UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	const FMulticastScriptDelegate& Delegate = *(const FMulticastScriptDelegate*)PointerToValuePtr(PropertyValueOrContainer, PointerType);
	// The bound entries, comma separated, in parentheses (empty or not).
	ValueStr += TEXT("(");
	bool bFirst = true;
	for (const FScriptDelegate& Entry : Delegate.GetInvocationList())
	{
		if (Entry.IsBound())
		{
			if (!bFirst)
			{
				ValueStr += TEXT(",");
			}
			bFirst = false;
			AppendDelegateText(ValueStr, Entry);
		}
	}
	ValueStr += TEXT(")");
}

const TCHAR* FMulticastInlineDelegateProperty::ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType,
	UObject* OwnerObject, int32 PortFlags, FOutputDevice* ErrorText) const
{
	FMulticastScriptDelegate& Delegate = *(FMulticastScriptDelegate*)PointerToValuePtr(ContainerOrPropertyPtr, PointerType);
	SkipWhitespace(Buffer);
	if (*Buffer++ != TEXT('('))
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("%s: a multicast delegate value starts with '('"), *GetName()));
		return nullptr;
	}
	FMulticastScriptDelegate Imported;
	SkipWhitespace(Buffer);
	while (*Buffer && *Buffer != TEXT(')'))
	{
		FScriptDelegate Entry;
		Buffer = ImportDelegateFromText(Entry, SignatureFunction, Buffer, OwnerObject, PortFlags, ErrorText, GetName());
		if (!Buffer)
		{
			return nullptr;
		}
		if (Entry.IsBound())
		{
			Imported.AddUnique(Entry);
		}
		SkipWhitespace(Buffer);
		if (*Buffer == TEXT(','))
		{
			++Buffer;
			SkipWhitespace(Buffer);
		}
	}
	if (*Buffer++ != TEXT(')'))
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("%s: a multicast delegate value ends with ')'"), *GetName()));
		return nullptr;
	}
	Delegate = Imported;
	return Buffer;
}

// FMulticastSparseDelegateProperty

void FMulticastSparseDelegateProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType,
	const void* DefaultValue, UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	// The bindings of a sparse delegate live outside the object; the value itself lists none.
	ValueStr += TEXT("()");
}

const TCHAR* FMulticastSparseDelegateProperty::ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType,
	UObject* OwnerObject, int32 PortFlags, FOutputDevice* ErrorText) const
{
	SkipWhitespace(Buffer);
	if (Buffer[0] == TEXT('(') && Buffer[1] == TEXT(')'))
	{
		((FSparseDelegate*)PointerToValuePtr(ContainerOrPropertyPtr, PointerType))->bIsBound = false;
		return Buffer + 2;
	}
	ReportImportError(ErrorText, FString::Printf(TEXT("%s: sparse delegates hold no bindings in their value; only \"()\" imports"), *GetName()));
	return nullptr;
}
