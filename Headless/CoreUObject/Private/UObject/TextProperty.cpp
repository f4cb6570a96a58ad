#include "UObject/TextProperty.h"
#include "PropertyHelper.h"
#include "ObjectRegistry.h"

using namespace UE::CoreUObject::Private;

IMPLEMENT_FIELD(FTextProperty)

namespace
{
	FString Quote(const FString& Text)
	{
		return FString::Printf(TEXT("\"%s\""), *Text.ReplaceCharWithEscapedChar());
	}

	/** Reads "Name(" then Count quoted strings separated by commas, then ")". */
	const TCHAR* ReadTextMacro(const TCHAR* Buffer, const TCHAR* MacroName, int32 Count, TArray<FString>& OutArgs)
	{
		const int32 NameLength = FCString::Strlen(MacroName);
		if (FCString::Strncmp(Buffer, MacroName, NameLength) != 0)
		{
			return nullptr;
		}
		Buffer += NameLength;
		SkipWhitespace(Buffer);
		if (*Buffer++ != TEXT('('))
		{
			return nullptr;
		}
		for (int32 Index = 0; Index < Count; ++Index)
		{
			SkipWhitespace(Buffer);
			FString Arg;
			int32 NumCharsRead = 0;
			if (!ReadQuotedString(Buffer, Arg, &NumCharsRead))
			{
				return nullptr;
			}
			Buffer += NumCharsRead;
			OutArgs.Add(Arg);
			SkipWhitespace(Buffer);
			if (Index + 1 < Count && *Buffer++ != TEXT(','))
			{
				return nullptr;
			}
		}
		SkipWhitespace(Buffer);
		return *Buffer == TEXT(')') ? Buffer + 1 : nullptr;
	}

	bool StartsWithMacro(const TCHAR* Buffer, const TCHAR* MacroName)
	{
		const int32 NameLength = FCString::Strlen(MacroName);
		if (FCString::Strncmp(Buffer, MacroName, NameLength) != 0)
		{
			return false;
		}
		const TCHAR* After = Buffer + NameLength;
		SkipWhitespace(After);
		return *After == TEXT('(');
	}
}

bool FTextProperty::Identical_Implementation(const FText& A, const FText& B, uint32 PortFlags)
{
	// A culture invariant text is never the same value as a localizable one.
	if (A.IsCultureInvariant() != B.IsCultureInvariant())
	{
		return false;
	}
	if (A.IsCultureInvariant() || (A.IsEmpty() && B.IsEmpty()))
	{
		return A.ToString().Equals(B.ToString(), ESearchCase::CaseSensitive);
	}
	if (A.IdenticalTo(B))
	{
		return true;
	}
	const TOptional<FString> NamespaceA = FTextInspector::GetNamespace(A);
	const TOptional<FString> NamespaceB = FTextInspector::GetNamespace(B);
	const TOptional<FString> KeyA = FTextInspector::GetKey(A);
	const TOptional<FString> KeyB = FTextInspector::GetKey(B);
	const bool bSameIdentity = NamespaceA.IsSet() == NamespaceB.IsSet() && KeyA.IsSet() == KeyB.IsSet()
		&& (!NamespaceA.IsSet() || NamespaceA.GetValue().Equals(NamespaceB.GetValue(), ESearchCase::CaseSensitive))
		&& (!KeyA.IsSet() || KeyA.GetValue().Equals(KeyB.GetValue(), ESearchCase::CaseSensitive));
	return bSameIdentity && A.ToString().Equals(B.ToString(), ESearchCase::CaseSensitive);
}

bool FTextProperty::Identical(const void* A, const void* B, uint32 PortFlags) const
{
	const FText& TextA = *(const FText*)A;
	return B ? Identical_Implementation(TextA, *(const FText*)B, PortFlags) : Identical_Implementation(TextA, FText::GetEmpty(), PortFlags);
}

void FTextProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	const FText& Value = *(const FText*)PointerToValuePtr(PropertyValueOrContainer, PointerType);
	const TOptional<FString> Namespace = FTextInspector::GetNamespace(Value);
	const TOptional<FString> Key = FTextInspector::GetKey(Value);
	const FString* Source = FTextInspector::GetSourceString(Value);
	const FString& Display = Value.ToString();
	if (Key.IsSet() && !Key.GetValue().IsEmpty())
	{
		ValueStr += FString::Printf(TEXT("NSLOCTEXT(%s, %s, %s)"), *Quote(Namespace.IsSet() ? Namespace.GetValue() : FString()), *Quote(Key.GetValue()),
			*Quote(Source ? *Source : Display));
	}
	else if (Value.IsCultureInvariant())
	{
		ValueStr += FString::Printf(TEXT("INVTEXT(%s)"), *Quote(Display));
	}
	else if (PortFlags & PPF_Delimited)
	{
		ValueStr += Quote(Display);
	}
	else
	{
		ValueStr += Display;
	}
}

const TCHAR* FTextProperty::ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
	int32 PortFlags, FOutputDevice* ErrorText) const
{
	FText& Value = *(FText*)PointerToValuePtr(ContainerOrPropertyPtr, PointerType);
	const TCHAR* Start = Buffer;
	SkipWhitespace(Buffer);
	TArray<FString> Args;
	const TCHAR* After = nullptr;
	if (StartsWithMacro(Buffer, TEXT("NSLOCTEXT")))
	{
		After = ReadTextMacro(Buffer, TEXT("NSLOCTEXT"), 3, Args);
		if (After)
		{
			Value = FText::AsLocalizable_Advanced(*Args[0], *Args[1], *Args[2]);
			return After;
		}
	}
	else if (StartsWithMacro(Buffer, TEXT("LOCTEXT")))
	{
		After = ReadTextMacro(Buffer, TEXT("LOCTEXT"), 2, Args);
		if (After)
		{
			Value = FText::AsLocalizable_Advanced(TEXT(""), *Args[0], *Args[1]);
			return After;
		}
	}
	else if (StartsWithMacro(Buffer, TEXT("INVTEXT")))
	{
		After = ReadTextMacro(Buffer, TEXT("INVTEXT"), 1, Args);
		if (After)
		{
			Value = FText::AsCultureInvariant(Args[0]);
			return After;
		}
	}
	else if (*Buffer == TEXT('"'))
	{
		FString Text;
		int32 NumCharsRead = 0;
		if (ReadQuotedString(Buffer, Text, &NumCharsRead))
		{
			Value = FText::FromString(Text);
			return Buffer + NumCharsRead;
		}
	}
	else if (!(PortFlags & PPF_Delimited))
	{
		// Undelimited text is the whole buffer.
		Value = FText::FromString(FString(Start));
		return Start + FCString::Strlen(Start);
	}
	ReportImportError(ErrorText, FString::Printf(TEXT("%s: '%s' is not a text value (NSLOCTEXT, INVTEXT or a quoted string)"), *GetName(), Start));
	return nullptr;
}
