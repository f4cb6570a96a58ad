#pragma once

#include "CoreMinimal.h"
#include "Containers/StringConv.h"
#include "Containers/UnrealString.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"
#include "Serialization/JsonWriter.h"

#include <string>

// Shared by the Json suites. FString's == ignores case, so expectations compare UTF-8 copies,
// which are exact and print readably when a test fails.
namespace JsonTest
{
	inline std::string Utf8(const FString& String)
	{
		return FStringToUTF8(String);
	}

	inline FString FromUtf8(const char* Text)
	{
		return UTF8ToFString(Text);
	}

	/** The exact code units, for text that UTF-8 cannot carry (lone surrogates). */
	inline std::u16string Units(const FString& String)
	{
		return std::u16string(String.View());
	}

	inline TSharedPtr<FJsonObject> ParseObject(const FString& Text, FString* OutError = nullptr)
	{
		TSharedRef<TJsonReader<TCHAR>> Reader = TJsonReaderFactory<TCHAR>::Create(Text);
		TSharedPtr<FJsonObject> Object;
		const bool bOk = FJsonSerializer::Deserialize(Reader, Object);
		if (OutError)
		{
			*OutError = Reader->GetErrorMessage();
		}
		return bOk ? Object : TSharedPtr<FJsonObject>();
	}

	inline TSharedPtr<FJsonObject> ParseObject(const char* Utf8Text, FString* OutError = nullptr)
	{
		return ParseObject(FromUtf8(Utf8Text), OutError);
	}

	inline FString Condensed(const TSharedPtr<FJsonObject>& Object)
	{
		FString Out;
		TSharedRef<TJsonWriter<TCHAR, TCondensedJsonPrintPolicy<TCHAR>>> Writer = TJsonWriterFactory<TCHAR, TCondensedJsonPrintPolicy<TCHAR>>::Create(&Out);
		FJsonSerializer::Serialize(Object, Writer);
		return Out;
	}

	inline FString Pretty(const TSharedPtr<FJsonObject>& Object)
	{
		FString Out;
		TSharedRef<TJsonWriter<>> Writer = TJsonWriterFactory<>::Create(&Out);
		FJsonSerializer::Serialize(Object, Writer);
		return Out;
	}

	/** Parses and writes back condensed; "<error>" plus the message when parsing fails. */
	inline std::string RoundTrip(const char* Utf8Text)
	{
		FString Error;
		const TSharedPtr<FJsonObject> Object = ParseObject(Utf8Text, &Error);
		return Object.IsValid() ? Utf8(Condensed(Object)) : "<error> " + Utf8(Error);
	}
}
