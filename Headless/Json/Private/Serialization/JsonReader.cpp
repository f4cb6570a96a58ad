#include "Serialization/JsonReader.h"

#include "Containers/UnrealString.h"
#include "Dom/JsonNodeAllocator.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Serialization/JsonTextScan.h"

#include <charconv>
#include <cstring>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

// RapidJSON's internal assertions are debugging aids; one of them fires on an escaped lone low
// surrogate (\uDC00), which the builder below refuses on its own. They must never abort a read.
#define RAPIDJSON_ASSERT(x) ((void)0)
#define RAPIDJSON_HAS_STDSTRING 0
#include <rapidjson/encodings.h>
#include <rapidjson/error/error.h>
#include <rapidjson/reader.h>

#include <emmintrin.h>

namespace
{
	// RapidJSON reads through a stream concept; this one is a bounded view that reports the end of
	// the text as a NUL, which is how RapidJSON recognises it.
	template <typename InCh>
	class TBoundedStream
	{
	public:
		using Ch = InCh;

		TBoundedStream(const Ch* InBegin, const Ch* InCursor, const Ch* InEnd)
			: Begin(InBegin), Cursor(InCursor), End(InEnd)
		{
		}

		Ch Peek() const { return Cursor != End ? *Cursor : Ch(0); }
		Ch Take() { return Cursor != End ? *Cursor++ : Ch(0); }
		size_t Tell() const { return static_cast<size_t>(Cursor - Begin); }

		// Writing is only used by in-place parsing, which we do not ask for.
		Ch* PutBegin() { return nullptr; }
		void Put(Ch) {}
		void Flush() {}
		size_t PutEnd(Ch*) { return 0; }

		/** Where reading has got to; RapidJSON advances this stream in place, not a copy of it. */
		const Ch* Current() const { return Cursor; }
		const Ch* Start() const { return Begin; }
		const Ch* Limit() const { return End; }
		bool AtEnd() const { return Cursor == End; }
		void Skip(size_t Count) { Cursor += Count; }

		/** Set by the bulk copy when a run of text held a surrogate; the string check clears it. */
		bool bSawSurrogate = false;

	private:
		const Ch* Begin;
		const Ch* Cursor;
		const Ch* End;
	};
}

// RapidJSON copies a string's text one code unit at a time through its general transcoding path.
// Its hook for copying runs of plain text in bulk has no version for our streams; these give it one.
// A run ends at a quote, a backslash, a control character or (in UTF-8) any non-ASCII byte, which the
// general path then handles, so behaviour is unchanged and only the speed differs.
namespace rapidjson
{
	template <>
	template <>
	inline void GenericReader<UTF16<char16_t>, UTF16<char16_t>, CrtAllocator>::ScanCopyUnescapedString(
		TBoundedStream<char16_t>& InStream, StackStream<char16_t>& OutStream)
	{
		const char16_t* const Start = InStream.Current();
		const size_t Count = static_cast<size_t>(UE::Json::Private::PlainTextRunLength<true>(Start, InStream.Limit(), &InStream.bSawSurrogate));
		if (Count > 0)
		{
			std::memcpy(OutStream.Push(static_cast<SizeType>(Count)), Start, Count * sizeof(char16_t));
			InStream.Skip(Count);
		}
	}

	template <>
	template <>
	inline void GenericReader<UTF8<char>, UTF16<char16_t>, CrtAllocator>::ScanCopyUnescapedString(
		TBoundedStream<char>& InStream, StackStream<char16_t>& OutStream)
	{
		const unsigned char* const Start = reinterpret_cast<const unsigned char*>(InStream.Current());
		const unsigned char* const End = reinterpret_cast<const unsigned char*>(InStream.Limit());
		const unsigned char* Cursor = Start;
		while (Cursor != End && *Cursor >= 0x20 && *Cursor < 0x80 && *Cursor != '"' && *Cursor != '\\')
		{
			++Cursor;
		}

		const size_t Count = static_cast<size_t>(Cursor - Start);
		if (Count > 0)
		{
			char16_t* Out = static_cast<char16_t*>(OutStream.Push(static_cast<SizeType>(Count)));
			for (size_t Index = 0; Index < Count; ++Index)
			{
				Out[Index] = Start[Index];
			}
			InStream.Skip(Count);
		}
	}
}

namespace
{
	enum class EStopReason
	{
		None,
		TooDeep,
		ScalarRoot,
		RootNotObject,
		RootNotArray,
		UnpairedSurrogate,
		InvalidText,
		BadNumber,
	};

	/** True if any code unit is a surrogate; eight units at a time. */
	bool ContainsSurrogate(const char16_t* Chars, size_t Length)
	{
		const __m128i SurrogateBits = _mm_set1_epi16(static_cast<short>(0xF800));
		const __m128i Surrogate = _mm_set1_epi16(static_cast<short>(0xD800));
		__m128i Found = _mm_setzero_si128();
		size_t Index = 0;
		for (; Index + 8 <= Length; Index += 8)
		{
			const __m128i Units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(Chars + Index));
			Found = _mm_or_si128(Found, _mm_cmpeq_epi16(_mm_and_si128(Units, SurrogateBits), Surrogate));
		}
		uint32 Tail = 0;
		for (; Index < Length; ++Index)
		{
			Tail |= (Chars[Index] & 0xF800u) == 0xD800u;
		}
		return Tail != 0 || _mm_movemask_epi8(Found) != 0;
	}

	/** Index of the first surrogate that is not half of a well-formed pair, or -1. */
	int64 FindUnpairedSurrogate(const char16_t* Chars, size_t Length)
	{
		for (size_t Index = 0; Index < Length; ++Index)
		{
			const char16_t Char = Chars[Index];
			if (Char < 0xD800 || Char > 0xDFFF)
			{
				continue;
			}
			if (Char > 0xDBFF || Index + 1 == Length || Chars[Index + 1] < 0xDC00 || Chars[Index + 1] > 0xDFFF)
			{
				return static_cast<int64>(Index);
			}
			++Index;
		}
		return -1;
	}

	bool IsDigit(uint32 Unit)
	{
		return Unit >= '0' && Unit <= '9';
	}

	template <typename UnitType>
	double ParseNumberText(const UnitType* Chars, size_t Length)
	{
		// The reader has already checked the JSON number grammar, so the text is plain ASCII.
		char Small[64];
		std::string Large;
		char* Text = Small;
		if (Length >= sizeof(Small))
		{
			Large.resize(Length + 1);
			Text = Large.data();
		}
		for (size_t Index = 0; Index < Length; ++Index)
		{
			Text[Index] = static_cast<char>(Chars[Index]);
		}
		Text[Length] = '\0';

		double Value = 0.0;
		const std::from_chars_result Result = std::from_chars(Text, Text + Length, Value);
		if (Result.ec != std::errc())
		{
			// Out of range: strtod gives what the engine's Atod gives, an infinity or a zero.
			Value = std::strtod(Text, nullptr);
		}
		return Value;
	}

	/**
	 * Builds the tree straight from RapidJSON's events. Finished values wait on one flat stack (and
	 * names on another) until their container closes; the container is then created at its final
	 * size and the values are moved into it, so nothing is copied and no array regrows.
	 */
	template <typename StreamType>
	class TDomBuilder
	{
	public:
		using Ch = char16_t;

		TDomBuilder(StreamType& InStream, EJson InExpectedRoot, bool bInNumbersAsStrings)
			: Stream(InStream)
			, Values(MoveTemp(RetainedValues))
			, Keys(MoveTemp(RetainedKeys))
			, ExpectedRoot(InExpectedRoot)
			, bNumbersAsStrings(bInNumbersAsStrings)
		{
		}

		~TDomBuilder()
		{
			// The stacks of pending values and names are kept for the thread's next read. Growing
			// them anew each time would ask the allocator for blocks of a kilobyte or more, and
			// glibc answers such a request by first merging every small block freed since (the
			// whole previous tree, typically) instead of handing those blocks out again.
			Values.Reset();
			Keys.Reset();
			if (Values.Max() <= MaxRetained && Keys.Max() <= MaxRetained)
			{
				RetainedValues = MoveTemp(Values);
				RetainedKeys = MoveTemp(Keys);
			}
		}

		// The literals carry no state and no setter can change them, so every true, false and null
		// of every document shares one value each; a graph read is half flags.
		bool Null() { return AddScalar(std::shared_ptr<FJsonValue>(NullLiteral)); }
		bool Bool(bool bValue) { return AddScalar(std::shared_ptr<FJsonValue>(bValue ? TrueLiteral : FalseLiteral)); }

		// Numbers arrive as text (RawNumber); these serve the handler concept only.
		bool Int(int Value) { return AddScalar(UE::Json::Private::MakeNode<FJsonValueNumber>(static_cast<double>(Value))); }
		bool Uint(unsigned Value) { return AddScalar(UE::Json::Private::MakeNode<FJsonValueNumber>(static_cast<double>(Value))); }
		bool Int64(int64_t Value) { return AddScalar(UE::Json::Private::MakeNode<FJsonValueNumber>(static_cast<double>(Value))); }
		bool Uint64(uint64_t Value) { return AddScalar(UE::Json::Private::MakeNode<FJsonValueNumber>(static_cast<double>(Value))); }
		bool Double(double Value) { return AddScalar(UE::Json::Private::MakeNode<FJsonValueNumber>(Value)); }

		bool RawNumber(const Ch*, rapidjson::SizeType Length, bool)
		{
			// RapidJSON 1.1 garbles the text it hands over here when it converts it to UTF-16 (it
			// writes the copy over its source on its own stack); the length is right, though. A
			// number is ASCII and ends where the stream now stands, so it is read from the input.
			const auto* Text = Stream.Current() - Length;
			if (Length == 0 || !(IsDigit(Text[0]) || Text[0] == '-') || !IsDigit(Text[Length - 1]))
			{
				return Stop(EStopReason::BadNumber);
			}
			if (bNumbersAsStrings)
			{
				FString Digits;
				Digits.Reserve(static_cast<int32>(Length));
				for (rapidjson::SizeType Index = 0; Index < Length; ++Index)
				{
					Digits.AppendChar(static_cast<TCHAR>(Text[Index]));
				}
				return AddScalar(UE::Json::Private::MakeNode<FJsonValueNumberString>(MoveTemp(Digits)));
			}
			return AddScalar(UE::Json::Private::MakeNode<FJsonValueNumber>(ParseNumberText(Text, Length)));
		}

		bool String(const Ch* Chars, rapidjson::SizeType Length, bool)
		{
			if (UNLIKELY(!AcceptText(Chars, Length)))
			{
				return false;
			}
			return AddScalar(UE::Json::Private::MakeNode<FJsonValueString>(FString(std::u16string_view(Chars, Length))));
		}

		bool Key(const Ch* Chars, rapidjson::SizeType Length, bool)
		{
			if (UNLIKELY(!AcceptText(Chars, Length)))
			{
				return false;
			}
			// Assigned in place: TArray::Emplace would build a temporary and move it in.
			Keys.AddDefaulted_GetRef() = std::u16string_view(Chars, Length);
			return true;
		}

		bool StartObject() { return Enter(EJson::Object); }
		bool StartArray() { return Enter(EJson::Array); }

		bool EndObject(rapidjson::SizeType MemberCount)
		{
			const int32 Count = static_cast<int32>(MemberCount);
			const int32 FirstValue = Values.Num() - Count;
			const int32 FirstKey = Keys.Num() - Count;

			std::shared_ptr<FJsonObject> Object = UE::Json::Private::MakeNode<FJsonObject>();
			Object->Values.Reserve(Count);
			for (int32 Index = 0; Index < Count; ++Index)
			{
				// A repeated name replaces the earlier value in its place, as FJsonObject::SetField does.
				Object->Values.Add(MoveTemp(Keys[FirstKey + Index]), MoveTemp(Values[FirstValue + Index]));
			}
			Keys.RemoveAt(FirstKey, Count);
			Values.RemoveAt(FirstValue, Count);

			--Depth;
			return AddValue(UE::Json::Private::MakeNode<FJsonValueObject>(TSharedPtr<FJsonObject>::FromStdPtr(MoveTemp(Object))));
		}

		bool EndArray(rapidjson::SizeType ElementCount)
		{
			const int32 Count = static_cast<int32>(ElementCount);
			const int32 First = Values.Num() - Count;

			TArray<TSharedPtr<FJsonValue>> Elements;
			Elements.Reserve(Count);
			for (int32 Index = 0; Index < Count; ++Index)
			{
				Elements.Add(MoveTemp(Values[First + Index]));
			}
			Values.RemoveAt(First, Count);

			--Depth;
			return AddValue(UE::Json::Private::MakeNode<FJsonValueArray>(MoveTemp(Elements)));
		}

		EStopReason GetStopReason() const { return StopReason; }

		/** Where the problem is, when the builder knows better than the reader's position; else -1. */
		int64 GetStopOffset() const { return StopOffset; }

		TSharedPtr<FJsonValue> TakeRoot()
		{
			return Values.Num() == 1 ? MoveTemp(Values[0]) : TSharedPtr<FJsonValue>();
		}

	private:
		/**
		 * RapidJSON copies UTF-16 text without looking at surrogates, and a \u escape can name half a
		 * pair in either encoding, so every string is checked here. Most hold no surrogate at all,
		 * which one quick pass establishes.
		 */
		bool AcceptText(const Ch* Chars, rapidjson::SizeType Length)
		{
			// A string without escapes holds only text the bulk copy has seen, which notes any
			// surrogate (and decoded UTF-8 yields surrogates only in pairs); other strings are scanned.
			const bool bSawSurrogate = Stream.bSawSurrogate;
			Stream.bSawSurrogate = false;
			if ((!bSawSurrogate && FindOpeningQuoteOfPlainString(Length)) || LIKELY(!ContainsSurrogate(Chars, Length)))
			{
				return true;
			}
			const int64 Bad = FindUnpairedSurrogate(Chars, Length);
			if (Bad < 0)
			{
				return true;
			}
			if (const auto* OpeningQuote = FindOpeningQuoteOfPlainString(Length))
			{
				// Without escapes the string maps one to one onto its source: point at the culprit.
				StopOffset = static_cast<int64>(OpeningQuote + 1 + Bad - Stream.Start());
				return Stop(EStopReason::InvalidText);
			}
			return Stop(EStopReason::UnpairedSurrogate);
		}

		/**
		 * The opening quote of the string just read if it had no escapes (and, in UTF-8, no
		 * non-ASCII text), else null. The string ends at the stream's position; the source unit
		 * Length + 1 before its closing quote is its opening quote exactly in that case, because a
		 * quote inside a string is always escaped and an opening quote never follows a backslash.
		 */
		const typename StreamType::Ch* FindOpeningQuoteOfPlainString(rapidjson::SizeType Length) const
		{
			const auto* ClosingQuote = Stream.Current() - 1;
			if (ClosingQuote - Stream.Start() > static_cast<std::ptrdiff_t>(Length))
			{
				const auto* OpeningQuote = ClosingQuote - Length - 1;
				if (*OpeningQuote == '"' && (OpeningQuote == Stream.Start() || OpeningQuote[-1] != '\\'))
				{
					return OpeningQuote;
				}
			}
			return nullptr;
		}

		bool Stop(EStopReason Reason)
		{
			StopReason = Reason;
			return false;
		}

		bool Enter(EJson Kind)
		{
			if (Depth == 0 && ExpectedRoot != EJson::None && ExpectedRoot != Kind)
			{
				return Stop(ExpectedRoot == EJson::Object ? EStopReason::RootNotObject : EStopReason::RootNotArray);
			}
			if (++Depth > UE::Json::MaxReadDepth)
			{
				// RapidJSON has just taken the bracket; the error points at it.
				StopOffset = static_cast<int64>(Stream.Tell()) - 1;
				return Stop(EStopReason::TooDeep);
			}
			return true;
		}

		static const std::shared_ptr<FJsonValue>& SharedLiteral(EJson Kind, bool bValue)
		{
			static const std::shared_ptr<FJsonValue> Null = std::make_shared<FJsonValueNull>();
			static const std::shared_ptr<FJsonValue> True = std::make_shared<FJsonValueBoolean>(true);
			static const std::shared_ptr<FJsonValue> False = std::make_shared<FJsonValueBoolean>(false);
			return Kind == EJson::Null ? Null : (bValue ? True : False);
		}

		template <typename ValueType>
		bool AddScalar(std::shared_ptr<ValueType>&& Value)
		{
			if (UNLIKELY(Depth == 0))
			{
				return Stop(EStopReason::ScalarRoot);
			}
			return AddValue(MoveTemp(Value));
		}

		template <typename ValueType>
		bool AddValue(std::shared_ptr<ValueType>&& Value)
		{
			Values.Add(TSharedPtr<FJsonValue>::FromStdPtr(std::shared_ptr<FJsonValue>(MoveTemp(Value))));
			return true;
		}

		static constexpr int32 MaxRetained = 4096;
		static inline thread_local TArray<TSharedPtr<FJsonValue>> RetainedValues;
		static inline thread_local TArray<FString> RetainedKeys;

		StreamType& Stream;
		const std::shared_ptr<FJsonValue>& NullLiteral = SharedLiteral(EJson::Null, false);
		const std::shared_ptr<FJsonValue>& TrueLiteral = SharedLiteral(EJson::Boolean, true);
		const std::shared_ptr<FJsonValue>& FalseLiteral = SharedLiteral(EJson::Boolean, false);
		TArray<TSharedPtr<FJsonValue>> Values;
		TArray<FString> Keys;
		EJson ExpectedRoot;
		int32 Depth = 0;
		EStopReason StopReason = EStopReason::None;
		int64 StopOffset = -1;
		bool bNumbersAsStrings;
	};

	template <typename CharType>
	struct TSourceEncoding;

	template <>
	struct TSourceEncoding<TCHAR>
	{
		using Type = rapidjson::UTF16<char16_t>;
		using UnitType = char16_t;
		static constexpr int32 BomLength = 1;
		static bool HasBom(const TCHAR* Data, int32 Length) { return Length >= 1 && Data[0] == 0xFEFF; }
		static bool IsCharacterStart(TCHAR) { return true; }
		static const TCHAR* InvalidEncodingMessage() { return TEXT("A string holds invalid UTF-16 (a surrogate without its pair)."); }
	};

	template <>
	struct TSourceEncoding<UTF8CHAR>
	{
		using Type = rapidjson::UTF8<char>;
		using UnitType = char;
		static constexpr int32 BomLength = 3;
		static bool HasBom(const UTF8CHAR* Data, int32 Length)
		{
			return Length >= 3 && Data[0] == 0xEF && Data[1] == 0xBB && Data[2] == 0xBF;
		}
		// Columns count characters, so continuation bytes do not advance them.
		static bool IsCharacterStart(UTF8CHAR Unit) { return (Unit & 0xC0) != 0x80; }
		static const TCHAR* InvalidEncodingMessage() { return TEXT("A string holds invalid UTF-8."); }
	};

	FString DescribeParseError(rapidjson::ParseErrorCode Code, const TCHAR* InvalidEncodingMessage)
	{
		switch (Code)
		{
		case rapidjson::kParseErrorDocumentEmpty:
			return TEXT("Expected an object or an array, found the end of the text.");
		case rapidjson::kParseErrorDocumentRootNotSingular:
			return TEXT("Unexpected text after the end of the top-level value.");
		case rapidjson::kParseErrorValueInvalid:
			return TEXT("Expected a value: an object, an array, a string in double quotes, a number, true, false or null.");
		case rapidjson::kParseErrorObjectMissName:
			return TEXT("Expected a member name in double quotes (a comma must be followed by another member).");
		case rapidjson::kParseErrorObjectMissColon:
			return TEXT("Expected ':' after a member name.");
		case rapidjson::kParseErrorObjectMissCommaOrCurlyBracket:
			return TEXT("Expected ',' or '}' after an object member.");
		case rapidjson::kParseErrorArrayMissCommaOrSquareBracket:
			return TEXT("Expected ',' or ']' after an array element.");
		case rapidjson::kParseErrorStringUnicodeEscapeInvalidHex:
			return TEXT("Invalid \\u escape: it takes four hexadecimal digits.");
		case rapidjson::kParseErrorStringUnicodeSurrogateInvalid:
			return TEXT("Invalid \\u escape: a high surrogate must be followed by an escaped low surrogate.");
		case rapidjson::kParseErrorStringEscapeInvalid:
			return TEXT("Invalid escape or control character in a string (allowed escapes: \\\" \\\\ \\/ \\b \\f \\n \\r \\t \\uXXXX).");
		case rapidjson::kParseErrorStringMissQuotationMark:
			return TEXT("A string is missing its closing quotation mark.");
		case rapidjson::kParseErrorStringInvalidEncoding:
			return InvalidEncodingMessage;
		case rapidjson::kParseErrorNumberTooBig:
			return TEXT("A number is too large.");
		case rapidjson::kParseErrorNumberMissFraction:
			return TEXT("A number is missing its digits after the decimal point.");
		case rapidjson::kParseErrorNumberMissExponent:
			return TEXT("A number is missing its exponent digits.");
		default:
			return TEXT("Malformed JSON.");
		}
	}

	FString DescribeStop(EStopReason Reason, const TCHAR* InvalidEncodingMessage)
	{
		switch (Reason)
		{
		case EStopReason::TooDeep:
			return FString::Printf(TEXT("Arrays and objects are nested deeper than %d levels."), UE::Json::MaxReadDepth);
		case EStopReason::ScalarRoot:
			return TEXT("Expected an object or an array at the top level.");
		case EStopReason::RootNotObject:
			return TEXT("Expected an object at the top level, found an array.");
		case EStopReason::RootNotArray:
			return TEXT("Expected an array at the top level, found an object.");
		case EStopReason::UnpairedSurrogate:
			return TEXT("A string holds a surrogate without its pair.");
		case EStopReason::InvalidText:
			return InvalidEncodingMessage;
		case EStopReason::BadNumber:
			return TEXT("Malformed number.");
		default:
			return TEXT("Malformed JSON.");
		}
	}
}

template <class CharType>
void TJsonReader<CharType>::SetError(const FString& Message, int32 Offset)
{
	Offset = Offset < 0 ? 0 : (Offset > SourceLength ? SourceLength : Offset);
	uint32 Line = 1;
	uint32 Column = 1;
	for (int32 Index = 0; Index < Offset; ++Index)
	{
		const CharType Unit = SourceData[Index];
		if (Unit == CharType('\n'))
		{
			++Line;
			Column = 1;
		}
		else if (TSourceEncoding<CharType>::IsCharacterStart(Unit))
		{
			++Column;
		}
	}
	LineNumber = Line;
	CharacterNumber = Column;
	ErrorMessage = FString::Printf(TEXT("%s Line: %u Ch: %u"), *Message, Line, Column);
}

template <class CharType>
bool TJsonReader<CharType>::ReadRootValue(EJson ExpectedRoot, bool bStoreNumbersAsStrings, TSharedPtr<FJsonValue>& OutRoot)
{
	using FEncoding = TSourceEncoding<CharType>;
	using FUnit = typename FEncoding::UnitType;

	if (bConsumed)
	{
		ErrorMessage = TEXT("This reader's text has already been read.");
		return false;
	}
	bConsumed = true;
	ErrorMessage.Empty();
	LineNumber = 1;
	CharacterNumber = 0;

	const FUnit* Begin = reinterpret_cast<const FUnit*>(SourceData);
	const int32 Skip = FEncoding::HasBom(SourceData, SourceLength) ? FEncoding::BomLength : 0;
	TBoundedStream<FUnit> Stream(Begin, Begin + Skip, Begin + SourceLength);

	TDomBuilder<TBoundedStream<FUnit>> Builder(Stream, ExpectedRoot, bStoreNumbersAsStrings);
	rapidjson::GenericReader<typename FEncoding::Type, rapidjson::UTF16<char16_t>> Reader;
	// Decoding UTF-8 already refuses malformed input, and UTF-16 surrogates are checked by the
	// builder, so RapidJSON's slower validating copy is not needed. The recursive parser is much
	// faster than the iterative one, which drives a state table per token; its recursion is bounded
	// because the builder refuses to open a container deeper than MaxReadDepth, where it has used
	// about 200 KiB of stack (threads get 8 MiB by default).
	static_assert(UE::Json::MaxReadDepth <= 1024, "The recursive parser uses a few hundred bytes of stack per level of nesting.");
	constexpr unsigned Flags = rapidjson::kParseNumbersAsStringsFlag;
	const rapidjson::ParseResult Result = Reader.template Parse<Flags>(Stream, Builder);

	if (Result.IsError())
	{
		const int32 Offset = static_cast<int32>(Result.Offset());
		// The builder's own refusals come first: RapidJSON reports them just past the token that
		// caused them, which may happen to be a NUL that is not the problem.
		if (Result.Code() == rapidjson::kParseErrorTermination)
		{
			const EStopReason Reason = Builder.GetStopReason();
			int32 Where = Offset;
			if (Reason == EStopReason::ScalarRoot || Reason == EStopReason::RootNotObject || Reason == EStopReason::RootNotArray)
			{
				// Point at the top-level value itself.
				Where = Skip;
				while (Where < SourceLength && (SourceData[Where] == ' ' || SourceData[Where] == '\t' || SourceData[Where] == '\n' || SourceData[Where] == '\r'))
				{
					++Where;
				}
			}
			if (Builder.GetStopOffset() >= 0)
			{
				Where = static_cast<int32>(Builder.GetStopOffset());
			}
			SetError(DescribeStop(Reason, FEncoding::InvalidEncodingMessage()), Where);
		}
		else if (Offset < SourceLength && SourceData[Offset] == CharType(0))
		{
			SetError(TEXT("Unexpected NUL character."), Offset);
		}
		else
		{
			SetError(DescribeParseError(Result.Code(), FEncoding::InvalidEncodingMessage()), Offset);
		}
		return false;
	}

	if (!Stream.AtEnd())
	{
		// RapidJSON takes a NUL for the end of the text; anything after one is still input.
		SetError(TEXT("Unexpected NUL character."), static_cast<int32>(Stream.Tell()));
		return false;
	}

	TSharedPtr<FJsonValue> Root = Builder.TakeRoot();
	if (!Root.IsValid())
	{
		SetError(TEXT("Malformed JSON."), SourceLength);
		return false;
	}
	OutRoot = MoveTemp(Root);
	return true;
}

template class TJsonReader<TCHAR>;
template class TJsonReader<UTF8CHAR>;
