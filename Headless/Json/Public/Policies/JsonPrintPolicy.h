#pragma once

#include "CoreMinimal.h"
#include "Containers/UnrealString.h"

#include <cstring>
#include <type_traits>

/**
 * The text a JSON writer prints into: a growable UTF-16 buffer that the print policies write to.
 * It plays the part of the engine's output archive; TJsonStringWriter hands its contents to the
 * caller's FString when the writer is closed.
 */
class FJsonPrintStream
{
public:
	JSON_API FJsonPrintStream();
	JSON_API ~FJsonPrintStream();

	FJsonPrintStream(const FJsonPrintStream&) = delete;
	FJsonPrintStream& operator=(const FJsonPrintStream&) = delete;

	FORCEINLINE void Write(TCHAR Char)
	{
		if (UNLIKELY(Num == Max))
		{
			Grow(1);
		}
		Data[Num++] = Char;
	}

	FORCEINLINE void Write(const TCHAR* Chars, int32 Count)
	{
		if (UNLIKELY(Max - Num < Count))
		{
			Grow(Count);
		}
		std::memcpy(Data + Num, Chars, static_cast<size_t>(Count) * sizeof(TCHAR));
		Num += Count;
	}

	/** Writes plain ASCII text (the literals and numbers the writer prints). */
	JSON_API void WriteAscii(const char* Chars, int32 Count);

	/** Writes a literal such as u"true"; its length is known here, so the copy is inlined. */
	template <int32 N>
	FORCEINLINE void WriteLiteral(const TCHAR (&Text)[N])
	{
		Write(Text, N - 1);
	}

	/** Writes the string as a JSON string literal: quotes around the text WriteEscaped writes. */
	JSON_API void WriteQuoted(const TCHAR* Chars, int32 Count);

	/**
	 * Writes a string's content escaped as the engine's writer escapes it, without the quotes:
	 * \" \\ \b \f \n \r \t by name, other code units below U+0020 as \u00XX (lower-case hex), and
	 * everything else as it is, '/' and non-ASCII text (unpaired surrogates included) unescaped.
	 */
	JSON_API void WriteEscaped(const TCHAR* Chars, int32 Count);

	/** printf's "%.17g": 17 significant digits, "nan"/"inf" for non-finite values. */
	JSON_API void WriteDouble(double Value);

	/** printf's "%g" of the float's exact value: 6 significant digits. */
	JSON_API void WriteFloat(float Value);

	JSON_API void WriteInt64(int64 Value);
	JSON_API void WriteUInt64(uint64 Value);

	const TCHAR* GetData() const { return Data; }
	int32 Len() const { return Num; }

	/** Replaces Out's text with what was written so far. */
	JSON_API void CopyTo(FString& Out) const;

private:
	JSON_API void Grow(int32 Extra);

	TCHAR* Data = nullptr;
	int32 Num = 0;
	int32 Max = 0;
};

/**
 * What every print policy shares: how characters, strings and numbers are put on the stream.
 * Output is UTF-16 (TCHAR); the engine's ANSI and UTF-8 writers are not provided.
 */
template <class InCharType>
struct TJsonPrintPolicy
{
	using CharType = InCharType;
	static_assert(std::is_same_v<CharType, TCHAR>, "The headless JSON writer prints TCHAR text only.");

	static FORCEINLINE void WriteChar(FJsonPrintStream* Stream, CharType Char)
	{
		Stream->Write(Char);
	}

	static FORCEINLINE void WriteString(FJsonPrintStream* Stream, const FString& String)
	{
		Stream->Write(*String, String.Len());
	}

	static FORCEINLINE void WriteString(FJsonPrintStream* Stream, const TCHAR* Chars, int32 Count)
	{
		Stream->Write(Chars, Count);
	}

	static FORCEINLINE void WriteFloat(FJsonPrintStream* Stream, float Value)
	{
		Stream->WriteFloat(Value);
	}

	static FORCEINLINE void WriteDouble(FJsonPrintStream* Stream, double Value)
	{
		Stream->WriteDouble(Value);
	}
};
