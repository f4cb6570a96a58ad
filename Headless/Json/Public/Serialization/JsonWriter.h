#pragma once

#include "CoreMinimal.h"
#include "Policies/CondensedJsonPrintPolicy.h"
#include "Policies/PrettyJsonPrintPolicy.h"
#include "Serialization/JsonTypes.h"

namespace UE::Json::Private
{
	template <class CharType, class PrintPolicy>
	class TTreeWriter;
}

/** The string as a JSON string literal: escaped as the writer escapes, with the quotes. */
JSON_API FString EscapeJsonString(const FString& StringVal);

/**
 * Writes JSON token by token. The layout follows the engine's writer exactly, quirks included,
 * because clients compare what we print with what the editor prints: in pretty mode an object that
 * follows a name opens on its own line ("name":\n\t{), an array stays on the name's line
 * ("name": [), every element of an array sits on its own line, and an empty array prints [] while
 * an empty object prints {, a line break and }.
 *
 * Misuse that the engine stops on with check() (closing what was never opened, a named value
 * outside an object, a value where a name is required) is ignored here and makes Close() fail.
 *
 * @param CharType     The character type printed (TCHAR).
 * @param PrintPolicy  TPrettyJsonPrintPolicy (default) or TCondensedJsonPrintPolicy.
 */
template <class CharType = TCHAR, class PrintPolicy = TPrettyJsonPrintPolicy<CharType>>
class TJsonWriter
{
public:
	virtual ~TJsonWriter() = default;

	int32 GetIndentLevel() const { return IndentLevel; }

	bool CanWriteObjectStart() const { return CanWriteObjectWithoutIdentifier(); }

	EJson GetCurrentElementType() const { return Stack.Num() > 0 ? Stack.Top() : EJson::None; }

	void WriteObjectStart()
	{
		if (!Require(CanWriteObjectWithoutIdentifier()))
		{
			return;
		}
		WriteCommaIfNeeded();
		if (PreviousTokenWritten != EJsonToken::None)
		{
			BreakLine();
		}
		OpenScope(CharType('{'), EJson::Object, EJsonToken::CurlyOpen);
	}

	template <typename IdentifierType>
	void WriteObjectStart(IdentifierType&& Identifier)
	{
		if (!Require(IsInsideObject()))
		{
			return;
		}
		WriteIdentifier(Identifier);
		BreakLine();
		OpenScope(CharType('{'), EJson::Object, EJsonToken::CurlyOpen);
	}

	void WriteObjectEnd()
	{
		if (!Require(IsInsideObject()))
		{
			return;
		}
		PrintPolicy::WriteLineTerminator(&Stream);
		--IndentLevel;
		PrintPolicy::WriteTabs(&Stream, IndentLevel);
		PrintPolicy::WriteChar(&Stream, CharType('}'));
		Stack.Pop();
		PreviousTokenWritten = EJsonToken::CurlyClose;
	}

	void WriteArrayStart()
	{
		if (!Require(CanWriteValueWithoutIdentifier()))
		{
			return;
		}
		WriteCommaIfNeeded();
		if (PreviousTokenWritten != EJsonToken::None)
		{
			BreakLine();
		}
		OpenScope(CharType('['), EJson::Array, EJsonToken::SquareOpen);
	}

	template <typename IdentifierType>
	void WriteArrayStart(IdentifierType&& Identifier)
	{
		if (!Require(IsInsideObject()))
		{
			return;
		}
		WriteIdentifier(Identifier);
		PrintPolicy::WriteSpace(&Stream);
		OpenScope(CharType('['), EJson::Array, EJsonToken::SquareOpen);
	}

	void WriteArrayEnd()
	{
		if (!Require(Stack.Num() > 0 && Stack.Top() == EJson::Array))
		{
			return;
		}
		--IndentLevel;
		if (PreviousTokenWritten != EJsonToken::SquareOpen)
		{
			BreakLine();
		}
		PrintPolicy::WriteChar(&Stream, CharType(']'));
		Stack.Pop();
		PreviousTokenWritten = EJsonToken::SquareClose;
	}

	// Values inside an array, or after WriteIdentifierPrefix.

	void WriteValue(bool Value) { WriteShortValue([&] { return WriteValueOnly(Value); }); }
	void WriteValue(float Value) { WriteShortValue([&] { return WriteValueOnly(Value); }); }
	void WriteValue(double Value) { WriteShortValue([&] { return WriteValueOnly(Value); }); }
	void WriteValue(int32 Value) { WriteShortValue([&] { return WriteValueOnly(Value); }); }
	void WriteValue(int64 Value) { WriteShortValue([&] { return WriteValueOnly(Value); }); }
	void WriteValue(uint8 Value) { WriteShortValue([&] { return WriteValueOnly(Value); }); }
	void WriteValue(uint32 Value) { WriteShortValue([&] { return WriteValueOnly(Value); }); }
	void WriteValue(uint64 Value) { WriteShortValue([&] { return WriteValueOnly(Value); }); }
	void WriteValue(std::nullptr_t) { WriteShortValue([&] { return WriteValueOnly(nullptr); }); }

	void WriteValue(const FString& Value) { WriteStringElement(*Value, Value.Len()); }
	void WriteValue(const TCHAR* Value) { WriteStringElement(Value, Value ? StrLen(Value) : 0); }

	void WriteNull() { WriteValue(nullptr); }

	// Named values inside an object.

	template <typename IdentifierType>
	void WriteValue(IdentifierType&& Identifier, bool Value) { WriteNamedValue(Identifier, [&] { return WriteValueOnly(Value); }); }
	template <typename IdentifierType>
	void WriteValue(IdentifierType&& Identifier, float Value) { WriteNamedValue(Identifier, [&] { return WriteValueOnly(Value); }); }
	template <typename IdentifierType>
	void WriteValue(IdentifierType&& Identifier, double Value) { WriteNamedValue(Identifier, [&] { return WriteValueOnly(Value); }); }
	template <typename IdentifierType>
	void WriteValue(IdentifierType&& Identifier, int32 Value) { WriteNamedValue(Identifier, [&] { return WriteValueOnly(Value); }); }
	template <typename IdentifierType>
	void WriteValue(IdentifierType&& Identifier, int64 Value) { WriteNamedValue(Identifier, [&] { return WriteValueOnly(Value); }); }
	template <typename IdentifierType>
	void WriteValue(IdentifierType&& Identifier, uint8 Value) { WriteNamedValue(Identifier, [&] { return WriteValueOnly(Value); }); }
	template <typename IdentifierType>
	void WriteValue(IdentifierType&& Identifier, uint32 Value) { WriteNamedValue(Identifier, [&] { return WriteValueOnly(Value); }); }
	template <typename IdentifierType>
	void WriteValue(IdentifierType&& Identifier, uint64 Value) { WriteNamedValue(Identifier, [&] { return WriteValueOnly(Value); }); }
	template <typename IdentifierType>
	void WriteValue(IdentifierType&& Identifier, std::nullptr_t) { WriteNamedValue(Identifier, [&] { return WriteValueOnly(nullptr); }); }
	template <typename IdentifierType>
	void WriteValue(IdentifierType&& Identifier, const FString& Value) { WriteNamedValue(Identifier, [&] { return WriteStringOnly(*Value, Value.Len()); }); }
	template <typename IdentifierType>
	void WriteValue(IdentifierType&& Identifier, const TCHAR* Value) { WriteNamedValue(Identifier, [&] { return WriteStringOnly(Value, Value ? StrLen(Value) : 0); }); }

	/** A named array of plain values (numbers, bools, strings). */
	template <typename IdentifierType, typename ElementType>
	void WriteValue(IdentifierType&& Identifier, const TArray<ElementType>& Array)
	{
		WriteArrayStart(Identifier);
		for (const ElementType& Element : Array)
		{
			WriteValue(Element);
		}
		WriteArrayEnd();
	}

	template <typename IdentifierType>
	void WriteNull(IdentifierType&& Identifier) { WriteValue(Identifier, nullptr); }

	/**
	 * Copies Value out as it is. The caller guarantees it is valid JSON; this is how a number kept as
	 * text, or another writer's output, is embedded.
	 */
	void WriteRawJSONValue(const FString& Value)
	{
		if (!Require(CanWriteValueWithoutIdentifier()))
		{
			return;
		}
		WriteCommaIfNeeded();
		if (PreviousTokenWritten != EJsonToken::True && PreviousTokenWritten != EJsonToken::False && PreviousTokenWritten != EJsonToken::SquareOpen)
		{
			BreakLine();
		}
		else
		{
			PrintPolicy::WriteSpace(&Stream);
		}
		PrintPolicy::WriteString(&Stream, Value);
		PreviousTokenWritten = EJsonToken::String;
	}

	template <typename IdentifierType>
	void WriteRawJSONValue(IdentifierType&& Identifier, const FString& Value)
	{
		WriteNamedValue(Identifier, [&]
		{
			PrintPolicy::WriteString(&Stream, Value);
			return EJsonToken::String;
		});
	}

	/** Writes a name and its colon; the next WriteValue call supplies the value. */
	template <typename IdentifierType>
	void WriteIdentifierPrefix(IdentifierType&& Identifier)
	{
		if (!Require(IsInsideObject()))
		{
			return;
		}
		WriteIdentifier(Identifier);
		PrintPolicy::WriteSpace(&Stream);
		PreviousTokenWritten = EJsonToken::Identifier;
	}

	/** True when the output is one complete JSON text and the writer was used correctly. */
	virtual bool Close()
	{
		return !bMisused
			&& (PreviousTokenWritten == EJsonToken::None || PreviousTokenWritten == EJsonToken::CurlyClose || PreviousTokenWritten == EJsonToken::SquareClose)
			&& Stack.Num() == 0;
	}

protected:
	explicit TJsonWriter(int32 InitialIndentLevel)
		: IndentLevel(InitialIndentLevel)
	{
	}

	bool CanWriteValueWithoutIdentifier() const
	{
		return Stack.Num() <= 0 || Stack.Top() == EJson::Array || PreviousTokenWritten == EJsonToken::Identifier;
	}

	bool CanWriteObjectWithoutIdentifier() const
	{
		return CanWriteValueWithoutIdentifier() || PreviousTokenWritten == EJsonToken::Colon;
	}

	bool IsInsideObject() const
	{
		return Stack.Num() > 0 && Stack.Top() == EJson::Object;
	}

	bool Require(bool bCondition)
	{
		bMisused |= !bCondition;
		return bCondition;
	}

	void WriteCommaIfNeeded()
	{
		if (PreviousTokenWritten != EJsonToken::CurlyOpen
			&& PreviousTokenWritten != EJsonToken::SquareOpen
			&& PreviousTokenWritten != EJsonToken::Identifier
			&& PreviousTokenWritten != EJsonToken::Comma
			&& PreviousTokenWritten != EJsonToken::None)
		{
			PrintPolicy::WriteChar(&Stream, CharType(','));
			PreviousTokenWritten = EJsonToken::Comma;
		}
	}

	void BreakLine()
	{
		PrintPolicy::WriteLineTerminator(&Stream);
		PrintPolicy::WriteTabs(&Stream, IndentLevel);
	}

	void OpenScope(CharType Bracket, EJson Kind, EJsonToken Token)
	{
		PrintPolicy::WriteChar(&Stream, Bracket);
		++IndentLevel;
		Stack.Push(Kind);
		PreviousTokenWritten = Token;
	}

	void WriteIdentifier(const FString& Identifier)
	{
		WriteIdentifier(*Identifier, Identifier.Len());
	}

	void WriteIdentifier(const TCHAR* Identifier)
	{
		WriteIdentifier(Identifier, Identifier ? StrLen(Identifier) : 0);
	}

	void WriteIdentifier(const TCHAR* Identifier, int32 Length)
	{
		WriteCommaIfNeeded();
		BreakLine();
		WriteStringOnly(Identifier, Length);
		PrintPolicy::WriteChar(&Stream, CharType(':'));
		PreviousTokenWritten = EJsonToken::Identifier;
	}

	template <typename WriteFunctionType>
	void WriteShortValue(WriteFunctionType&& WriteFunction)
	{
		if (!Require(CanWriteValueWithoutIdentifier()))
		{
			return;
		}
		WriteCommaIfNeeded();
		if (EJsonToken_IsShortValue(PreviousTokenWritten))
		{
			PrintPolicy::WriteSpace(&Stream);
		}
		else
		{
			BreakLine();
		}
		PreviousTokenWritten = WriteFunction();
	}

	void WriteStringElement(const TCHAR* Chars, int32 Length)
	{
		if (!Require(CanWriteValueWithoutIdentifier()))
		{
			return;
		}
		WriteCommaIfNeeded();
		BreakLine();
		PreviousTokenWritten = WriteStringOnly(Chars, Length);
	}

	template <typename IdentifierType, typename WriteFunctionType>
	void WriteNamedValue(const IdentifierType& Identifier, WriteFunctionType&& WriteFunction)
	{
		if (!Require(IsInsideObject()))
		{
			return;
		}
		WriteIdentifier(Identifier);
		PrintPolicy::WriteSpace(&Stream);
		PreviousTokenWritten = WriteFunction();
	}

	EJsonToken WriteValueOnly(bool Value)
	{
		if (Value)
		{
			Stream.WriteLiteral(u"true");
			return EJsonToken::True;
		}
		Stream.WriteLiteral(u"false");
		return EJsonToken::False;
	}

	EJsonToken WriteValueOnly(float Value)
	{
		PrintPolicy::WriteFloat(&Stream, Value);
		return EJsonToken::Number;
	}

	EJsonToken WriteValueOnly(double Value)
	{
		PrintPolicy::WriteDouble(&Stream, Value);
		return EJsonToken::Number;
	}

	EJsonToken WriteValueOnly(int32 Value) { return WriteValueOnly(static_cast<int64>(Value)); }

	EJsonToken WriteValueOnly(int64 Value)
	{
		Stream.WriteInt64(Value);
		return EJsonToken::Number;
	}

	EJsonToken WriteValueOnly(uint8 Value) { return WriteValueOnly(static_cast<uint64>(Value)); }
	EJsonToken WriteValueOnly(uint32 Value) { return WriteValueOnly(static_cast<uint64>(Value)); }

	EJsonToken WriteValueOnly(uint64 Value)
	{
		Stream.WriteUInt64(Value);
		return EJsonToken::Number;
	}

	EJsonToken WriteValueOnly(std::nullptr_t)
	{
		Stream.WriteLiteral(u"null");
		return EJsonToken::Null;
	}

	EJsonToken WriteStringOnly(const TCHAR* Chars, int32 Length)
	{
		Stream.WriteQuoted(Chars, Length);
		return EJsonToken::String;
	}

	static int32 StrLen(const TCHAR* String)
	{
		const TCHAR* Cursor = String;
		while (*Cursor)
		{
			++Cursor;
		}
		return static_cast<int32>(Cursor - String);
	}

	// The tree walk of FJsonSerializer prints whole subtrees straight into the stream.
	template <class, class>
	friend class UE::Json::Private::TTreeWriter;

	FJsonPrintStream Stream;
	TArray<EJson> Stack;
	EJsonToken PreviousTokenWritten = EJsonToken::None;
	int32 IndentLevel = 0;
	bool bMisused = false;
};

/** A writer whose text goes to an FString, replacing its content when the writer is closed. */
template <class PrintPolicy = TPrettyJsonPrintPolicy<TCHAR>>
class TJsonStringWriter : public TJsonWriter<typename PrintPolicy::CharType, PrintPolicy>
{
	using Super = TJsonWriter<typename PrintPolicy::CharType, PrintPolicy>;

public:
	using CharType = typename PrintPolicy::CharType;

	static TSharedRef<TJsonStringWriter> Create(FString* const InStream, int32 InitialIndent = 0)
	{
		return MakeShareable(new TJsonStringWriter(InStream, InitialIndent));
	}

	/** Puts everything written so far into the string given at creation, replacing its text. */
	virtual bool Close() override
	{
		if (OutString)
		{
			this->Stream.CopyTo(*OutString);
		}
		return Super::Close();
	}

protected:
	TJsonStringWriter(FString* const InOutString, int32 InitialIndent)
		: Super(InitialIndent)
		, OutString(InOutString)
	{
	}

private:
	FString* OutString;
};

template <class CharType = TCHAR, class PrintPolicy = TPrettyJsonPrintPolicy<CharType>>
class TJsonWriterFactory
{
public:
	static TSharedRef<TJsonWriter<CharType, PrintPolicy>> Create(FString* const Stream, int32 InitialIndent = 0)
	{
		return TJsonStringWriter<PrintPolicy>::Create(Stream, InitialIndent);
	}
};
