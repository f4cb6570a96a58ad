#include "Headless/Json/JsonTestUtils.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>

using namespace JsonTest;

namespace
{
	using FCondensedWriter = TJsonWriter<TCHAR, TCondensedJsonPrintPolicy<TCHAR>>;
	using FCondensedFactory = TJsonWriterFactory<TCHAR, TCondensedJsonPrintPolicy<TCHAR>>;

	template <typename ValueType>
	std::string WriteOneInArray(ValueType Value)
	{
		FString Out;
		TSharedRef<FCondensedWriter> Writer = FCondensedFactory::Create(&Out);
		Writer->WriteArrayStart();
		Writer->WriteValue(Value);
		Writer->WriteArrayEnd();
		EXPECT_TRUE(Writer->Close());
		const std::string Text = Utf8(Out);
		return Text.substr(1, Text.size() - 2);
	}
}

// Doubles print as printf's %.17g, floats as %g, integers in full.
TEST(JsonWriter, NumberPrinting)
{
	const double Inf = std::numeric_limits<double>::infinity();
	const struct
	{
		double Value;
		const char* Text;
	} Doubles[] = {
		{0.0, "0"},
		{-0.0, "-0"},
		{5.0, "5"},
		{1.5, "1.5"},
		{-2.25, "-2.25"},
		{0.1, "0.10000000000000001"},
		{0.3, "0.29999999999999999"},
		{1.0 / 3.0, "0.33333333333333331"},
		{100.0, "100"},
		{123456.789, "123456.789"},
		{9007199254740992.0, "9007199254740992"},
		{1e16, "10000000000000000"},
		{1e17, "1e+17"},
		{1e21, "1e+21"},
		{1e-7, "9.9999999999999995e-08"},
		{1e-5, "1.0000000000000001e-05"},
		{0.0001, "0.0001"},
		{5e-324, "4.9406564584124654e-324"},
		{1.7976931348623157e308, "1.7976931348623157e+308"},
		{std::numeric_limits<double>::quiet_NaN(), "nan"},
		{Inf, "inf"},
		{-Inf, "-inf"},
	};
	for (const auto& Case : Doubles)
	{
		SCOPED_TRACE(Case.Text);
		EXPECT_EQ(WriteOneInArray(Case.Value), Case.Text);
	}

	const struct
	{
		float Value;
		const char* Text;
	} Floats[] = {
		{1.5f, "1.5"},
		{0.1f, "0.1"},
		{3.14159274f, "3.14159"},
		{123456789.0f, "1.23457e+08"},
		{1e10f, "1e+10"},
		{-0.0f, "-0"},
		{1e-5f, "1e-05"},
	};
	for (const auto& Case : Floats)
	{
		SCOPED_TRACE(Case.Text);
		EXPECT_EQ(WriteOneInArray(Case.Value), Case.Text);
	}

	EXPECT_EQ(WriteOneInArray(int32(-5)), "-5");
	EXPECT_EQ(WriteOneInArray(std::numeric_limits<int64>::min()), "-9223372036854775808");
	EXPECT_EQ(WriteOneInArray(std::numeric_limits<uint64>::max()), "18446744073709551615");
	EXPECT_EQ(WriteOneInArray(uint32(4000000000u)), "4000000000");
	EXPECT_EQ(WriteOneInArray(uint8(200)), "200");
	EXPECT_EQ(WriteOneInArray(true), "true");
	EXPECT_EQ(WriteOneInArray(nullptr), "null");
}

// The C library's %.17g is the reference; compare over a spread of bit patterns.
TEST(JsonWriter, DoublesMatchPrintfEverywhere)
{
	uint64 State = 0x9E3779B97F4A7C15ull;
	for (int32 Index = 0; Index < 20000; ++Index)
	{
		State = State * 6364136223846793005ull + 1442695040888963407ull;
		double Value;
		const uint64 Bits = Index % 2 == 0 ? State : (State >> 12) | 0x3FF0000000000000ull;
		std::memcpy(&Value, &Bits, sizeof(Value));
		if (Index % 3 == 0)
		{
			Value = static_cast<double>(static_cast<int64>(State >> 20)) / 1000.0;
		}

		char Expected[64];
		std::snprintf(Expected, sizeof(Expected), "%.17g", Value);
		ASSERT_EQ(WriteOneInArray(Value), Expected) << "bits " << Bits;

		const float Single = static_cast<float>(Value);
		std::snprintf(Expected, sizeof(Expected), "%g", static_cast<double>(Single));
		ASSERT_EQ(WriteOneInArray(Single), Expected) << "bits " << Bits;
	}
}

TEST(JsonWriter, PrettyLayoutMatchesTheEngine)
{
	const char* Text =
		"{\n"
		"\t\"Data1\": \"value\",\n"
		"\t\"Data2\": 2.5,\n"
		"\t\"Array\": [\n"
		"\t\t{\n"
		"\t\t\t\"InnerData1\": \"value\"\n"
		"\t\t},\n"
		"\t\t[],\n"
		"\t\t[\n"
		"\t\t\t1,\n"
		"\t\t\ttrue,\n"
		"\t\t\tnull\n"
		"\t\t],\n"
		"\t\t{\n"
		"\t\t},\n"
		"\t\t\"value\"\n"
		"\t],\n"
		"\t\"Object\":\n"
		"\t{\n"
		"\t\t\"Nested\":\n"
		"\t\t{\n"
		"\t\t}\n"
		"\t},\n"
		"\t\"Empty\": []\n"
		"}";
	const TSharedPtr<FJsonObject> Object = ParseObject(Text);
	ASSERT_TRUE(Object);
	EXPECT_EQ(Utf8(Pretty(Object)), Text);
	EXPECT_EQ(Utf8(Condensed(Object)),
		R"({"Data1":"value","Data2":2.5,"Array":[{"InnerData1":"value"},[],[1,true,null],{},"value"],"Object":{"Nested":{}},"Empty":[]})");

	EXPECT_EQ(Utf8(Pretty(MakeShared<FJsonObject>())), "{\n}");
}

TEST(JsonWriter, SerializeArraysAndValues)
{
	const TArray<TSharedPtr<FJsonValue>> Array = {MakeShared<FJsonValueNumber>(1), MakeShared<FJsonValueString>(TEXT("a")), TSharedPtr<FJsonValue>()};

	FString Pretty;
	EXPECT_TRUE(FJsonSerializer::Serialize(Array, TJsonWriterFactory<>::Create(&Pretty)));
	EXPECT_EQ(Utf8(Pretty), "[\n\t1,\n\t\"a\",\n\tnull\n]");

	FString Empty;
	const TSharedPtr<FJsonValue> EmptyArray = MakeShared<FJsonValueArray>(TArray<TSharedPtr<FJsonValue>>());
	EXPECT_TRUE(FJsonSerializer::Serialize(EmptyArray, FString(), FCondensedFactory::Create(&Empty)));
	EXPECT_EQ(Utf8(Empty), "[]");

	// An empty name is still a name inside an object.
	FString Named;
	TSharedRef<FCondensedWriter> Writer = FCondensedFactory::Create(&Named);
	Writer->WriteObjectStart();
	EXPECT_TRUE(FJsonSerializer::Serialize(TSharedPtr<FJsonValue>(MakeShared<FJsonValueString>(TEXT("foo"))), FString(), Writer, false));
	EXPECT_TRUE(FJsonSerializer::Serialize(TSharedPtr<FJsonValue>(MakeShared<FJsonValueBoolean>(true)), FString(TEXT("b")), Writer, false));
	Writer->WriteObjectEnd();
	EXPECT_TRUE(Writer->Close());
	EXPECT_EQ(Utf8(Named), R"({"":"foo","b":true})");

	// A name where no object is open, or no object at all, is refused.
	FString Refused;
	EXPECT_FALSE(FJsonSerializer::Serialize(TSharedPtr<FJsonValue>(MakeShared<FJsonValueNull>()), FString(TEXT("x")), FCondensedFactory::Create(&Refused)));
	EXPECT_FALSE(FJsonSerializer::Serialize(TSharedPtr<FJsonObject>(), FCondensedFactory::Create(&Refused)));
	EXPECT_EQ(Utf8(Refused), "");
}

TEST(JsonWriter, NullPointersInTheTreeAreWrittenAsNull)
{
	const TSharedPtr<FJsonObject> Object = MakeShared<FJsonObject>();
	Object->Values.Add(TEXT("missing"), TSharedPtr<FJsonValue>());
	Object->SetArrayField(TEXT("holes"), TArray<TSharedPtr<FJsonValue>>{TSharedPtr<FJsonValue>(), MakeShared<FJsonValueObject>(TSharedPtr<FJsonObject>())});
	EXPECT_EQ(Utf8(Condensed(Object)), R"({"missing":null,"holes":[null,null]})");
}

// Token-level writing, including the engine's quirks with prefixes and raw values.
TEST(JsonWriter, TokenWriting)
{
	FString Out;
	TSharedRef<TJsonWriter<>> Writer = TJsonWriterFactory<>::Create(&Out);
	Writer->WriteObjectStart();
	Writer->WriteValue(TEXT("name"), TEXT("Ada"));
	Writer->WriteValue(TEXT("age"), 36);
	Writer->WriteValue(FString(TEXT("ratio")), 0.5f);
	Writer->WriteNull(TEXT("none"));
	Writer->WriteValue(TEXT("tags"), TArray<FString>{TEXT("x"), TEXT("y")});
	Writer->WriteRawJSONValue(TEXT("raw"), TEXT("[1,2]"));
	Writer->WriteIdentifierPrefix(TEXT("later"));
	Writer->WriteValue(7);
	Writer->WriteArrayStart(TEXT("mixed"));
	Writer->WriteRawJSONValue(TEXT("1.50"));
	Writer->WriteValue(false);
	Writer->WriteRawJSONValue(TEXT("{}"));
	Writer->WriteArrayEnd();
	Writer->WriteObjectEnd();
	EXPECT_TRUE(Out.IsEmpty()); // the text arrives on Close
	EXPECT_TRUE(Writer->Close());
	EXPECT_EQ(Utf8(Out),
		"{\n"
		"\t\"name\": \"Ada\",\n"
		"\t\"age\": 36,\n"
		"\t\"ratio\": 0.5,\n"
		"\t\"none\": null,\n"
		"\t\"tags\": [\n"
		"\t\t\"x\",\n"
		"\t\t\"y\"\n"
		"\t],\n"
		"\t\"raw\": [1,2],\n"
		"\t\"later\": \n"
		"\t7,\n"
		"\t\"mixed\": [ 1.50,\n"
		"\t\tfalse,\n"
		"\t\t{}\n"
		"\t]\n"
		"}");
}

TEST(JsonWriter, MisuseFailsCloseInsteadOfCrashing)
{
	auto CloseAfter = [](auto&& Steps)
	{
		FString Out;
		TSharedRef<FCondensedWriter> Writer = FCondensedFactory::Create(&Out);
		Steps(*Writer);
		return Writer->Close();
	};
	EXPECT_TRUE(CloseAfter([](FCondensedWriter& W) {}));
	EXPECT_TRUE(CloseAfter([](FCondensedWriter& W) { W.WriteArrayStart(); W.WriteArrayEnd(); }));
	EXPECT_FALSE(CloseAfter([](FCondensedWriter& W) { W.WriteObjectEnd(); }));
	EXPECT_FALSE(CloseAfter([](FCondensedWriter& W) { W.WriteArrayEnd(); }));
	EXPECT_FALSE(CloseAfter([](FCondensedWriter& W) { W.WriteValue(TEXT("name"), 1); }));
	EXPECT_FALSE(CloseAfter([](FCondensedWriter& W) { W.WriteObjectStart(); W.WriteValue(1); W.WriteObjectEnd(); }));
	EXPECT_FALSE(CloseAfter([](FCondensedWriter& W) { W.WriteArrayStart(); W.WriteObjectEnd(); W.WriteArrayEnd(); }));
	EXPECT_FALSE(CloseAfter([](FCondensedWriter& W) { W.WriteObjectStart(); }));
	EXPECT_FALSE(CloseAfter([](FCondensedWriter& W) { W.WriteArrayStart(); W.WriteValue(TEXT("n"), true); W.WriteArrayEnd(); }));
}

TEST(JsonWriter, EscapesAsTheEngine)
{
	const FString Raw = FString(std::u16string(u"q\" b\\ s/ \b\f\n\r\t \x01\x1f\x7f é \xD83D\xDE00 \xDC00 <>&"));
	const std::u16string Expected = u"\"q\\\" b\\\\ s/ \\b\\f\\n\\r\\t \\u0001\\u001f\x7f é \xD83D\xDE00 \xDC00 <>&\"";
	EXPECT_EQ(Units(EscapeJsonString(Raw)), Expected);

	const TSharedPtr<FJsonObject> Object = MakeShared<FJsonObject>();
	Object->SetStringField(FString(std::u16string(u"k\"\n")), Raw);
	EXPECT_EQ(Units(Condensed(Object)), u"{\"k\\\"\\n\":" + Expected + u"}");
}

// Strings are scanned several code units at a time; an escape must come out right wherever it falls
// and whatever the string's length, in both the condensed fast path and the token-by-token writer.
TEST(JsonWriter, EscapesAtEveryLengthAndPosition)
{
	const auto ReferenceEscape = [](const std::u16string& Text)
	{
		std::u16string Out = u"\"";
		for (const char16_t Ch : Text)
		{
			switch (Ch)
			{
			case u'"': Out += u"\\\""; break;
			case u'\\': Out += u"\\\\"; break;
			case u'\n': Out += u"\\n"; break;
			case u'\x01': Out += u"\\u0001"; break;
			default: Out += Ch; break;
			}
		}
		return Out + u"\"";
	};
	const char16_t Specials[] = { u'"', u'\\', u'\n', u'\x01', u'\u00e9' };
	for (int32 Len = 0; Len <= 40; ++Len)
	{
		for (int32 Position = 0; Position <= Len; ++Position)
		{
			for (const char16_t Special : Specials)
			{
				std::u16string Text(static_cast<size_t>(Len), u'a');
				Text.insert(static_cast<size_t>(Position), 1, Special);
				SCOPED_TRACE(testing::Message() << "length " << Len << " position " << Position << " char " << int(Special));
				const TSharedPtr<FJsonObject> Object = MakeShared<FJsonObject>();
				Object->SetStringField(TEXT("s"), FString(Text));
				ASSERT_EQ(Units(Condensed(Object)), u"{\"s\":" + ReferenceEscape(Text) + u"}");
				ASSERT_EQ(Units(EscapeJsonString(FString(Text))), ReferenceEscape(Text));
			}
		}
	}
}
