#pragma once

#include "CoreMinimal.h"
#include "Containers/UnrealString.h"
#include "JsonGlobals.h"
#include "Serialization/JsonTypes.h"

#include <type_traits>

class FJsonValue;

/**
 * A source of JSON text for FJsonSerializer::Deserialize. TJsonReader<TCHAR> reads UTF-16 text (an
 * FString); TJsonReader<UTF8CHAR> reads UTF-8 bytes as they come from a file or a pipe, without a
 * conversion pass first.
 *
 * Reading is strict JSON (RFC 8259) with two protections the engine's reader lacks: nesting deeper
 * than UE::Json::MaxReadDepth is refused, and text that is not valid in its encoding (a lone
 * surrogate in UTF-16, a malformed sequence in UTF-8, a \u escape naming half a surrogate pair)
 * is refused rather than carried into FStrings (the engine keeps such code units as they are). The
 * engine's reader is more lenient in a few places (True/NULL in any case, NaN, a trailing comma in
 * an array, numbers beyond the range of a double read as infinity); such input is an error here.
 * A leading byte order mark is skipped.
 *
 * After a failed read GetErrorMessage() says what was wrong and where, ending with the engine's
 * " Line: <n> Ch: <n>" suffix (1-based line, 1-based character within the line).
 */
template <class CharType = TCHAR>
class TJsonReader
{
	static_assert(std::is_same_v<CharType, TCHAR> || std::is_same_v<CharType, UTF8CHAR>, "JSON is read from TCHAR or UTF8CHAR text.");

public:
	virtual ~TJsonReader() = default;

	const FString& GetErrorMessage() const { return ErrorMessage; }

	/** Line of the error (1-based); 1 when there was none. */
	uint32 GetLineNumber() const { return LineNumber; }

	/** Character of the error within its line (1-based); 0 when there was none. */
	uint32 GetCharacterNumber() const { return CharacterNumber; }

	/**
	 * Parses the whole text into a tree. ExpectedRoot is EJson::Object, EJson::Array, or EJson::None
	 * for either; a bare scalar at the top is always refused, as the engine refuses it. A reader
	 * parses once: its text is consumed by the first call. This is what FJsonSerializer calls.
	 */
	JSON_API bool ReadRootValue(EJson ExpectedRoot, bool bStoreNumbersAsStrings, TSharedPtr<FJsonValue>& OutRoot);

protected:
	TJsonReader() = default;

	void SetSource(const CharType* InData, int32 InLength)
	{
		SourceData = InData;
		SourceLength = InLength;
	}

	void SetError(const FString& Message, int32 Offset);

	const CharType* SourceData = nullptr;
	int32 SourceLength = 0;
	FString ErrorMessage;
	uint32 LineNumber = 1;
	uint32 CharacterNumber = 0;
	bool bConsumed = false;
};

/** Reads JSON held in a string that the reader keeps a copy of. */
class FJsonStringReader : public TJsonReader<TCHAR>
{
public:
	static TSharedRef<FJsonStringReader> Create(const FString& JsonString)
	{
		return MakeShareable(new FJsonStringReader(FString(JsonString)));
	}

	static TSharedRef<FJsonStringReader> Create(FString&& JsonString)
	{
		return MakeShareable(new FJsonStringReader(MoveTemp(JsonString)));
	}

	const FString& GetSourceString() const { return Content; }

protected:
	explicit FJsonStringReader(FString&& JsonString)
		: Content(MoveTemp(JsonString))
	{
		SetSource(*Content, Content.Len());
	}

	const FString Content;
};

template <typename CharType>
using TJsonStringReader = FJsonStringReader;

/** Reads JSON from text owned by the caller, which must outlive the reader. */
template <class CharType>
class TJsonStringViewReader : public TJsonReader<CharType>
{
public:
	static TSharedRef<TJsonStringViewReader> Create(const CharType* Data, int32 Length)
	{
		return MakeShareable(new TJsonStringViewReader(Data, Length));
	}

protected:
	TJsonStringViewReader(const CharType* Data, int32 Length)
	{
		this->SetSource(Data, Length);
	}
};

template <class CharType = TCHAR>
class TJsonReaderFactory;

template <>
class TJsonReaderFactory<TCHAR>
{
public:
	static TSharedRef<TJsonReader<TCHAR>> Create(FString&& JsonString)
	{
		return FJsonStringReader::Create(MoveTemp(JsonString));
	}

	static TSharedRef<TJsonReader<TCHAR>> Create(const FString& JsonString)
	{
		return FJsonStringReader::Create(JsonString);
	}

	/** Reads Length characters at Data without copying them. */
	static TSharedRef<TJsonReader<TCHAR>> CreateFromView(const TCHAR* Data, int32 Length)
	{
		return TJsonStringViewReader<TCHAR>::Create(Data, Length);
	}
};

/** UTF-8 input: how the host reads requests from a file or standard input. */
template <>
class TJsonReaderFactory<UTF8CHAR>
{
public:
	/** Reads Length bytes at Data without copying them. */
	static TSharedRef<TJsonReader<UTF8CHAR>> CreateFromView(const UTF8CHAR* Data, int32 Length)
	{
		return TJsonStringViewReader<UTF8CHAR>::Create(Data, Length);
	}

	static TSharedRef<TJsonReader<UTF8CHAR>> CreateFromView(const ANSICHAR* Data, int32 Length)
	{
		return CreateFromView(reinterpret_cast<const UTF8CHAR*>(Data), Length);
	}
};
