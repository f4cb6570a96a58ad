#pragma once

#include "CoreMinimal.h"
#include "Containers/UnrealString.h"

/** The kinds a JSON value can take. None marks a value that was never given a kind. */
enum class EJson
{
	None,
	Null,
	String,
	Number,
	Boolean,
	Array,
	Object
};

/** Tokens as the writer tracks them; the pretty layout depends on which one came last. */
enum class EJsonToken
{
	None,
	Comma,
	CurlyOpen,
	CurlyClose,
	SquareOpen,
	SquareClose,
	Colon,
	String,

	// Short values: numbers and literals.
	Number,
	True,
	False,
	Null,

	Identifier
};

inline bool EJsonToken_IsShortValue(EJsonToken Token)
{
	return Token >= EJsonToken::Number && Token <= EJsonToken::Null;
}

/** What a reader found next. */
enum class EJsonNotation
{
	ObjectStart,
	ObjectEnd,
	ArrayStart,
	ArrayEnd,
	Boolean,
	String,
	Number,
	Null,
	Error
};

using FJsonSerializableArray = TArray<FString>;
using FJsonSerializableArrayInt = TArray<int32>;
using FJsonSerializableArrayFloat = TArray<float>;

using FJsonSerializableKeyValueMap = TMap<FString, FString>;
using FJsonSerializableKeyValueMapInt = TMap<FString, int32>;
using FJsonSerializableKeyValueMapInt64 = TMap<FString, int64>;
using FJsonSerializableKeyValueMapFloat = TMap<FString, float>;
