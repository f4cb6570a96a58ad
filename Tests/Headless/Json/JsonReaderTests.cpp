#include "Headless/Json/JsonTestUtils.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using namespace JsonTest;

namespace
{
	struct FMalformedCase
	{
		const char* Name;
		std::u16string Text;
		const char* Expected; // a distinctive part of the message
		uint32 Line;
		uint32 Ch;
	};

	std::u16string U16(const char* Utf8Text)
	{
		return std::u16string(FromUtf8(Utf8Text).View());
	}

	std::u16string Repeat(const char16_t* Unit, int32 Count)
	{
		std::u16string Result;
		for (int32 Index = 0; Index < Count; ++Index)
		{
			Result += Unit;
		}
		return Result;
	}
}

// Every malformed input fails cleanly: no object, and a message saying what and where.
TEST(JsonReader, MalformedInputFailsWithMessage)
{
	const FMalformedCase Cases[] = {
		{"empty", U16(""), "found the end of the text", 1, 1},
		{"whitespace only", U16(" \n\t "), "found the end of the text", 2, 3},
		{"unclosed object", U16("{"), "member name", 1, 2},
		{"truncated after value", U16(R"({"a":1)"), "Expected ',' or '}'", 1, 7},
		{"truncated string", U16(R"({"a":"abc)"), "closing quotation mark", 1, 10},
		{"truncated nested", U16(R"({"Object":{"NestedValue":null,)"), "member name", 1, 31},
		{"trailing comma in object", U16(R"({"a":1,})"), "member name", 1, 8},
		{"trailing comma in array", U16(R"({"a":[1,2,]})"), "Expected a value", 1, 11},
		{"missing comma", U16(R"({"a":null "b":1})"), "Expected ',' or '}'", 1, 11},
		{"unquoted name", U16(R"({a:1})"), "member name", 1, 2},
		{"single-quoted string", U16(R"({"a":'x'})"), "Expected a value", 1, 6},
		{"missing colon", U16("{\n\t\"a\": 1,\n\t\"b\" 2\n}"), "Expected ':'", 3, 6},
		{"trailing garbage", U16(R"({"a":1}x)"), "after the end of the top-level value", 1, 8},
		{"second document", U16(R"({} {})"), "after the end of the top-level value", 1, 4},
		{"bad escape", U16(R"({"a":"Hello\xThere"})"), "Invalid escape", 1, 12},
		{"short unicode escape", U16(R"({"a":"\u12G4"})"), "four hexadecimal digits", 1, 7},
		{"raw line break in string", U16("{\"a\":\"line\nbreak\"}"), "Invalid escape or control character", 1, 11},
		{"misspelt literal", U16(R"({"a":tru})"), "Expected a value", 1, 9},
		{"capitalised literal", U16(R"({"a":True})"), "Expected a value", 1, 6},
		{"NaN", U16(R"({"a":NaN})"), "Expected a value", 1, 6},
		{"leading plus", U16(R"({"a":+6})"), "Expected a value", 1, 6},
		{"leading dot", U16(R"({"a":.7})"), "Expected a value", 1, 6},
		{"missing fraction", U16(R"({"a":65.})"), "after the decimal point", 1, 9},
		{"missing exponent", U16(R"({"a":2e+})"), "exponent digits", 1, 9},
		{"leading zero", U16(R"({"a":01})"), "Expected ',' or '}'", 1, 7},
		{"scalar at top", U16(R"(  "just text")"), "Expected an object or an array at the top level", 1, 3},
		{"number at top", U16("42"), "Expected an object or an array at the top level", 1, 1},
		{"array where object expected", U16("\n[1,2]"), "Expected an object at the top level, found an array", 2, 1},
		{"closing brace only", U16("}"), "Expected a value", 1, 1},
		{"high surrogate escape alone", U16(R"({"a":"\uD800"})"), "high surrogate", 1, 7},
		{"high surrogate then letter", U16(R"({"a":"\uD800\u0041"})"), "high surrogate", 1, 7},
		{"low surrogate escape alone", U16(R"({"a":"x\uDC00y"})"), "surrogate without its pair", 1, 16},
		{"low surrogate escape in a name", U16(R"({"\uDC00":1})"), "surrogate without its pair", 1, 10},
		{"raw lone high surrogate", u"{\"a\":\"x\xD800y\"}", "invalid UTF-16", 1, 8},
		{"raw lone low surrogate", u"{\"a\":\"\xDC00\"}", "invalid UTF-16", 1, 7},
		{"raw lone surrogate in long text", u"{\"a\":\"abcdefghijkl\xDC00mnopqrstuvwxyz\"}", "invalid UTF-16", 1, 19},
		{"reversed pair in long text", u"{\"abcdefghijklmnop\xDE00\xD83D\":1}", "invalid UTF-16", 1, 19},
		{"NUL after the value", std::u16string(u"{}\0{}", 5), "Unexpected NUL character", 1, 3},
		{"NUL inside a string", std::u16string(u"{\"a\":\"x\0\"}", 10), "Unexpected NUL character", 1, 8},
		{"nested too deep", Repeat(u"{\"k\":", 513) + u"1" + Repeat(u"}", 513), "nested deeper than 512 levels", 1, 2561},
		{"nested far too deep", Repeat(u"{\"a\":[", 100000), "nested deeper than 512 levels", 1, 1537},
		{"number beyond a double", U16(R"({"a":1e400})"), "too large", 1, 6},
	};

	for (const FMalformedCase& Case : Cases)
	{
		SCOPED_TRACE(Case.Name);
		const FString Text(Case.Text);
		TSharedRef<TJsonReader<TCHAR>> Reader = TJsonReaderFactory<TCHAR>::Create(Text);
		TSharedPtr<FJsonObject> Object;
		EXPECT_FALSE(FJsonSerializer::Deserialize(Reader, Object));
		EXPECT_FALSE(Object.IsValid());

		const std::string Message = Utf8(Reader->GetErrorMessage());
		EXPECT_NE(Message.find(Case.Expected), std::string::npos) << Message;
		const std::string Where = " Line: " + std::to_string(Case.Line) + " Ch: " + std::to_string(Case.Ch);
		EXPECT_NE(Message.find(Where), std::string::npos) << Message << " (expected" << Where << ")";
		EXPECT_EQ(Reader->GetLineNumber(), Case.Line);
		EXPECT_EQ(Reader->GetCharacterNumber(), Case.Ch);
	}
}

TEST(JsonReader, NestingUpToTheLimitIsAccepted)
{
	const FString Text(Repeat(u"[", UE::Json::MaxReadDepth) + Repeat(u"]", UE::Json::MaxReadDepth));
	TArray<TSharedPtr<FJsonValue>> Array;
	EXPECT_TRUE(FJsonSerializer::Deserialize(TJsonReaderFactory<>::Create(Text), Array));
	ASSERT_EQ(Array.Num(), 1);

	int32 Depth = 2;
	for (TSharedPtr<FJsonValue> Value = Array[0]; Value->AsArray().Num() > 0; Value = Value->AsArray()[0])
	{
		++Depth;
	}
	EXPECT_EQ(Depth, UE::Json::MaxReadDepth);
}

// Escapes come back as the engine's writer prints them: named escapes for the usual controls,
// \u00XX for other controls, and everything else (slash, DEL, non-ASCII) as plain text.
TEST(JsonReader, RoundTripsEscapesAndNonAsciiText)
{
	struct FCase
	{
		const char* Input;
		const char* Output;
	};
	const FCase Cases[] = {
		{R"({"s":"quote \" backslash \\ slash \/ controls \b\f\n\r\t"})", R"({"s":"quote \" backslash \\ slash / controls \b\f\n\r\t"})"},
		{R"({"s":"\u0000\u0001\u001f\u0020\u007f"})", "{\"s\":\"\\u0000\\u0001\\u001f \x7f\"}"},
		{R"({"s":"\u00e9\u4e2d\u00C9"})", R"({"s":"é中É"})"},
		{R"({"s":"Καλημέρα κόσμε, コンニチハ"})", R"({"s":"Καλημέρα κόσμε, コンニチハ"})"},
		{R"({"s":"\uD83D\uDE10 and 😀"})", R"({"s":"😐 and 😀"})"},
		{R"({"a long name with 😀 inside":"and a long value with 😀😀 and \u00e9 inside"})", R"({"a long name with 😀 inside":"and a long value with 😀😀 and é inside"})"},
		{R"({"Ключ \"q\"":"v"})", R"({"Ключ \"q\"":"v"})"},
		{R"({"":"empty name"})", R"({"":"empty name"})"},
	};
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(Case.Input);
		EXPECT_EQ(RoundTrip(Case.Input), Case.Output);
	}

	// Surrogate pairs are stored as the two UTF-16 code units.
	const TSharedPtr<FJsonObject> Object = ParseObject(R"({"s":"\uD83D\uDE10"})");
	ASSERT_TRUE(Object);
	EXPECT_EQ(Units(Object->GetStringField(TEXT("s"))), std::u16string(u"\xD83D\xDE10"));
	const TSharedPtr<FJsonObject> Nul = ParseObject(R"({"s":"a\u0000b"})");
	ASSERT_TRUE(Nul);
	EXPECT_EQ(Units(Nul->GetStringField(TEXT("s"))), std::u16string(u"a\0b", 3));
}

TEST(JsonReader, NumbersAreReadExactly)
{
	const TSharedPtr<FJsonObject> Object = ParseObject(
		R"({"tenth":0.1,"big":2.544e+15,"neg":-0.544E-2,"exp":251e3,"negzero":-0.0,"int":843,)"
		R"("tiny":1e-400,"long":123456789012345678901234567890,"odd":9007199254740993})");
	ASSERT_TRUE(Object);
	EXPECT_EQ(Object->GetNumberField(TEXT("tenth")), 0.1);
	EXPECT_EQ(Object->GetNumberField(TEXT("big")), 2.544e+15);
	EXPECT_EQ(Object->GetNumberField(TEXT("neg")), -0.544e-2);
	EXPECT_EQ(Object->GetNumberField(TEXT("exp")), 251e3);
	EXPECT_TRUE(std::signbit(Object->GetNumberField(TEXT("negzero"))));
	EXPECT_EQ(Object->GetNumberField(TEXT("int")), 843.0);
	EXPECT_EQ(Object->GetNumberField(TEXT("tiny")), 0.0);
	EXPECT_EQ(Object->GetNumberField(TEXT("long")), 1.2345678901234568e+29);
	EXPECT_EQ(Object->GetNumberField(TEXT("odd")), 9007199254740992.0);
	EXPECT_EQ(Utf8(Condensed(Object)),
		R"({"tenth":0.10000000000000001,"big":2544000000000000,"neg":-0.0054400000000000004,"exp":251000,"negzero":-0,"int":843,)"
		R"("tiny":0,"long":1.2345678901234568e+29,"odd":9007199254740992})");
}

TEST(JsonReader, NumbersCanBeKeptAsText)
{
	const FString Text = TEXT(R"({"price":1.50,"id":12345678901234567890123,"list":[0.10]})");
	TSharedPtr<FJsonObject> Object;
	ASSERT_TRUE(FJsonSerializer::Deserialize(TJsonReaderFactory<>::Create(Text), Object, FJsonSerializer::EFlags::StoreNumbersAsStrings));

	const TSharedPtr<FJsonValue> Price = Object->TryGetField(TEXT("price"));
	EXPECT_EQ(Price->Type, EJson::Number);
	EXPECT_TRUE(Price->PreferStringRepresentation());
	EXPECT_EQ(Utf8(Price->AsString()), "1.50");
	EXPECT_EQ(Price->AsNumber(), 1.5);
	EXPECT_EQ(Utf8(Condensed(Object)), R"({"price":1.50,"id":12345678901234567890123,"list":[0.10]})");
}

TEST(JsonReader, TopLevelKindsAndReaderUse)
{
	const FString ArrayText = TEXT(R"([{"Value":"Some String"},10,"s",[true],null])");
	const FString ObjectText = TEXT(R"({"a":[]})");

	TArray<TSharedPtr<FJsonValue>> Array;
	ASSERT_TRUE(FJsonSerializer::Deserialize(TJsonReaderFactory<>::Create(ArrayText), Array));
	ASSERT_EQ(Array.Num(), 5);
	EXPECT_EQ(Utf8(Array[0]->AsObject()->GetStringField(TEXT("Value"))), "Some String");
	EXPECT_TRUE(Array[4]->IsNull());

	TArray<TSharedPtr<FJsonValue>> NotArray;
	TSharedRef<TJsonReader<>> ObjectReader = TJsonReaderFactory<>::Create(ObjectText);
	EXPECT_FALSE(FJsonSerializer::Deserialize(ObjectReader, NotArray));
	EXPECT_NE(Utf8(ObjectReader->GetErrorMessage()).find("Expected an array at the top level, found an object"), std::string::npos);

	TSharedPtr<FJsonValue> AnyValue;
	EXPECT_TRUE(FJsonSerializer::Deserialize(TJsonReaderFactory<>::Create(ArrayText), AnyValue));
	EXPECT_EQ(AnyValue->Type, EJson::Array);
	EXPECT_TRUE(FJsonSerializer::Deserialize(TJsonReaderFactory<>::Create(ObjectText), AnyValue));
	EXPECT_EQ(AnyValue->Type, EJson::Object);
	EXPECT_FALSE(FJsonSerializer::Deserialize(TJsonReaderFactory<>::Create(FString(TEXT("true"))), AnyValue));

	// A reader's text is consumed by the first read.
	TSharedRef<TJsonReader<>> Reader = TJsonReaderFactory<>::Create(ObjectText);
	TSharedPtr<FJsonObject> First;
	TSharedPtr<FJsonObject> Second;
	EXPECT_TRUE(FJsonSerializer::Deserialize(Reader, First));
	EXPECT_FALSE(FJsonSerializer::Deserialize(Reader, Second));
	EXPECT_FALSE(Reader->GetErrorMessage().IsEmpty());

	// Whitespace around the value and a byte order mark are fine.
	EXPECT_EQ(RoundTrip("\xEF\xBB\xBF \t\r\n {\"a\":1} \r\n\t "), R"({"a":1})");
}

TEST(JsonReader, ReadsUtf8Bytes)
{
	const std::string Bytes = "\xEF\xBB\xBF{\"greek\":\"Καλημέρα\",\"emoji\":\"😀\",\"escaped\":\"\\uD83D\\uDE10\",\"n\":[1.5,true,null]}";
	TSharedRef<TJsonReader<UTF8CHAR>> Reader = TJsonReaderFactory<UTF8CHAR>::CreateFromView(Bytes.data(), static_cast<int32>(Bytes.size()));
	TSharedPtr<FJsonObject> Object;
	ASSERT_TRUE(FJsonSerializer::Deserialize(Reader, Object)) << Utf8(Reader->GetErrorMessage());
	EXPECT_EQ(Units(Object->GetStringField(TEXT("emoji"))), std::u16string(u"\xD83D\xDE00"));
	EXPECT_EQ(Utf8(Condensed(Object)), R"({"greek":"Καλημέρα","emoji":"😀","escaped":"😐","n":[1.5,true,null]})");

	struct FCase
	{
		const char* Name;
		std::string Bytes;
		const char* Expected;
		uint32 Ch;
	};
	const FCase Failures[] = {
		{"truncated sequence", "{\"a\":\"\xC3\"}", "invalid UTF-8", 7},
		{"overlong slash", "{\"a\":\"\xC0\xAF\"}", "invalid UTF-8", 7},
		{"encoded surrogate", "{\"a\":\"\xED\xA0\x80\"}", "invalid UTF-8", 7},
		{"stray continuation", "{\"é\":\"\x80\"}", "invalid UTF-8", 7},
		{"column counts characters", "{\"é\":1,}", "member name", 8},
	};
	for (const FCase& Case : Failures)
	{
		SCOPED_TRACE(Case.Name);
		TSharedRef<TJsonReader<UTF8CHAR>> BadReader = TJsonReaderFactory<UTF8CHAR>::CreateFromView(Case.Bytes.data(), static_cast<int32>(Case.Bytes.size()));
		TSharedPtr<FJsonObject> Bad;
		EXPECT_FALSE(FJsonSerializer::Deserialize(BadReader, Bad));
		EXPECT_NE(Utf8(BadReader->GetErrorMessage()).find(Case.Expected), std::string::npos) << Utf8(BadReader->GetErrorMessage());
		EXPECT_EQ(BadReader->GetCharacterNumber(), Case.Ch);
	}
}
