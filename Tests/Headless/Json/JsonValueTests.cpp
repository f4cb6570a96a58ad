#include "Headless/Json/JsonTestUtils.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

using namespace JsonTest;

namespace
{
	struct FKindCase
	{
		const char* Name;
		std::function<TSharedPtr<FJsonValue>()> Make;
		EJson Type;
		bool bStringOk;
		const char* String; // AsString
		bool bNumberOk;
		double Number; // AsNumber
		bool bBoolOk;
		bool bBool; // AsBool
		bool bInt32Ok;
		int32 Int32;
	};

	TSharedPtr<FJsonValue> Str(const char* Text) { return MakeShared<FJsonValueString>(FromUtf8(Text)); }
	TSharedPtr<FJsonValue> Num(double Value) { return MakeShared<FJsonValueNumber>(Value); }
	TSharedPtr<FJsonValue> NumText(const char* Text) { return MakeShared<FJsonValueNumberString>(FromUtf8(Text)); }
	TSharedPtr<FJsonValue> Bool(bool bValue) { return MakeShared<FJsonValueBoolean>(bValue); }
	TSharedPtr<FJsonValue> Null() { return MakeShared<FJsonValueNull>(); }
}

// Each kind's readings as the other kinds, with the engine's defaults where a reading fails.
TEST(JsonValue, ConversionsBetweenKinds)
{
	const FKindCase Cases[] = {
		// Name                 Make                                   Type            Str?   AsString   Num?   AsNumber  Bool?  AsBool Int?   Int32
		{"numeric string", [] { return Str("12.5"); }, EJson::String, true, "12.5", true, 12.5, true, true, true, 12},
		{"word string", [] { return Str("abc"); }, EJson::String, true, "abc", false, 0.0, true, false, true, 0},
		{"'true' string", [] { return Str("true"); }, EJson::String, true, "true", false, 0.0, true, true, true, 0},
		{"'yes' string", [] { return Str("Yes"); }, EJson::String, true, "Yes", false, 0.0, true, true, true, 0},
		{"empty string", [] { return Str(""); }, EJson::String, true, "", false, 0.0, true, false, true, 0},
		{"padded digits", [] { return Str("  7"); }, EJson::String, true, "  7", false, 0.0, true, true, true, 7},
		{"exponent string", [] { return Str("1e3"); }, EJson::String, true, "1e3", false, 0.0, true, true, true, 1},
		{"negative string", [] { return Str("-42"); }, EJson::String, true, "-42", true, -42.0, true, true, true, -42},
		{"fraction", [] { return Num(1.5); }, EJson::Number, true, "1.5", true, 1.5, true, true, true, 2},
		{"whole number", [] { return Num(5); }, EJson::Number, true, "5", true, 5.0, true, true, true, 5},
		{"zero", [] { return Num(0); }, EJson::Number, true, "0", true, 0.0, true, false, true, 0},
		{"third", [] { return Num(1.0 / 3.0); }, EJson::Number, true, "0.333333", true, 1.0 / 3.0, true, true, true, 0},
		{"tiny", [] { return Num(1e-7); }, EJson::Number, true, "0", true, 1e-7, true, true, true, 0},
		{"negative half", [] { return Num(-2.5); }, EJson::Number, true, "-2.5", true, -2.5, true, true, true, -3},
		{"beyond int32", [] { return Num(3e9); }, EJson::Number, true, "3000000000", true, 3e9, true, true, false, 0},
		{"true", [] { return Bool(true); }, EJson::Boolean, true, "true", true, 1.0, true, true, true, 1},
		{"false", [] { return Bool(false); }, EJson::Boolean, true, "false", true, 0.0, true, false, true, 0},
		{"null", [] { return Null(); }, EJson::Null, false, "", false, 0.0, false, false, false, 0},
		{"array", [] { return MakeShared<FJsonValueArray>(TArray<TSharedPtr<FJsonValue>>{Num(1)}); }, EJson::Array, false, "", false, 0.0, false, false, false, 0},
		{"object", [] { return MakeShared<FJsonValueObject>(MakeShared<FJsonObject>()); }, EJson::Object, false, "", false, 0.0, false, false, false, 0},
		{"number text", [] { return NumText("12.50"); }, EJson::Number, true, "12.50", true, 12.5, true, true, true, 12},
		{"bad number text", [] { return NumText("abc"); }, EJson::Number, true, "abc", false, 0.0, true, false, false, 0},
	};

	for (const FKindCase& Case : Cases)
	{
		SCOPED_TRACE(Case.Name);
		const TSharedPtr<FJsonValue> Value = Case.Make();
		EXPECT_EQ(Value->Type, Case.Type);

		FString String;
		EXPECT_EQ(Value->TryGetString(String), Case.bStringOk);
		EXPECT_EQ(Utf8(Value->AsString()), Case.String);

		double Number = -1.0;
		EXPECT_EQ(Value->TryGetNumber(Number), Case.bNumberOk);
		EXPECT_EQ(Value->AsNumber(), Case.Number);

		bool bBool = false;
		EXPECT_EQ(Value->TryGetBool(bBool), Case.bBoolOk);
		EXPECT_EQ(Value->AsBool(), Case.bBool);

		int32 Int32 = -1;
		EXPECT_EQ(Value->TryGetNumber(Int32), Case.bInt32Ok);
		if (Case.bInt32Ok)
		{
			EXPECT_EQ(Int32, Case.Int32);
		}
	}
}

TEST(JsonValue, WrongKindAccessorsGiveEmptyContainers)
{
	const TSharedPtr<FJsonValue> Value = Str("not a container");
	EXPECT_EQ(Value->AsArray().Num(), 0);
	ASSERT_TRUE(Value->AsObject().IsValid());
	EXPECT_EQ(Value->AsObject()->Values.Num(), 0);

	const TArray<TSharedPtr<FJsonValue>>* Array = nullptr;
	const TSharedPtr<FJsonObject>* Object = nullptr;
	EXPECT_FALSE(Value->TryGetArray(Array));
	EXPECT_FALSE(Value->TryGetObject(Object));
	EXPECT_TRUE(Null()->IsNull());
	EXPECT_FALSE(Value->IsNull());
}

// Integer readings round half away from zero and refuse values outside the type, NaN included.
TEST(JsonValue, IntegerReadingsRangeAndRounding)
{
	struct FCase
	{
		double Number;
		bool bInt32Ok;
		int32 Int32;
		bool bUInt32Ok;
		uint32 UInt32;
		bool bInt64Ok;
		int64 Int64;
	};
	const double NaN = std::numeric_limits<double>::quiet_NaN();
	const FCase Cases[] = {
		{0.4999999999999997, true, 0, true, 0u, true, 0},
		{0.5, true, 1, true, 1u, true, 1},
		{-0.5, true, -1, false, 0u, true, -1},
		{2147483647.0, true, 2147483647, true, 2147483647u, true, 2147483647},
		{2147483646.5, true, 2147483647, true, 2147483647u, true, 2147483647},
		{2147483647.000001, false, 0, true, 2147483647u, true, 2147483647},
		{-2147483648.0, true, -2147483647 - 1, false, 0u, true, -2147483648LL},
		{-2147483648.000001, false, 0, false, 0u, true, -2147483648LL},
		{4294967295.0, false, 0, true, 4294967295u, true, 4294967295LL},
		{4294967295.000001, false, 0, false, 0u, true, 4294967295LL},
		{-0.000000000000001, true, 0, false, 0u, true, 0},
		{9007199254740991.0, false, 0, false, 0u, true, 9007199254740991LL},
		{9223372036854775808.0, false, 0, false, 0u, false, 0},
		{NaN, false, 0, false, 0u, false, 0},
	};
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(Case.Number);
		const FJsonValueNumber Value(Case.Number);
		const FJsonValue& Base = Value;
		int32 Int32 = 0;
		uint32 UInt32 = 0;
		int64 Int64 = 0;
		EXPECT_EQ(Base.TryGetNumber(Int32), Case.bInt32Ok);
		EXPECT_EQ(Base.TryGetNumber(UInt32), Case.bUInt32Ok);
		EXPECT_EQ(Base.TryGetNumber(Int64), Case.bInt64Ok);
		if (Case.bInt32Ok)
		{
			EXPECT_EQ(Int32, Case.Int32);
		}
		if (Case.bUInt32Ok)
		{
			EXPECT_EQ(UInt32, Case.UInt32);
		}
		if (Case.bInt64Ok)
		{
			EXPECT_EQ(Int64, Case.Int64);
		}
	}

	uint8 Byte = 0;
	EXPECT_FALSE(static_cast<const FJsonValue&>(FJsonValueNumber(256)).TryGetNumber(Byte));
	EXPECT_TRUE(static_cast<const FJsonValue&>(FJsonValueNumber(255)).TryGetNumber(Byte));
	EXPECT_EQ(Byte, 255);
}

// Equality across kinds goes through the engine's shared reading of bools, numbers and text.
TEST(JsonValue, CompareEqualAcrossKinds)
{
	struct FCase
	{
		const char* Name;
		TSharedPtr<FJsonValue> Lhs;
		TSharedPtr<FJsonValue> Rhs;
		bool bEqual;
	};
	const FCase Cases[] = {
		{"number and its text", Num(10), Str("10"), true},
		{"fraction and its text", Num(10.5), Str("10.5"), true},
		{"fraction and longer text", Num(1.5), Str("1.50"), false},
		{"number and other text", Num(10), Str("20"), false},
		{"true and 'true'", Bool(true), Str("TRUE"), true},
		{"true and '1'", Bool(true), Str("1"), true},
		{"false and '0'", Bool(false), Str("0"), true},
		{"true and 'yes'", Bool(true), Str("yes"), false},
		{"true and 1", Bool(true), Num(1), true},
		{"false and 0", Bool(false), Num(0), true},
		{"true and 2", Bool(true), Num(2), false},
		{"true and 1.5", Bool(true), Num(1.5), false},
		{"whole numbers", Num(10), Num(10.0), true},
		{"number kept as text", Num(1.5), NumText("1.50"), true},
		{"same-kind strings ignore case", Str("Foo"), Str("foo"), true},
		{"different strings", Str("Foo"), Str("Bar"), false},
		{"null and null", Null(), Null(), true},
		{"null and empty string", Null(), Str(""), false},
		{"bool and null", Bool(false), Null(), false},
	};
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(Case.Name);
		EXPECT_EQ(FJsonValue::CompareEqual(*Case.Lhs, *Case.Rhs), Case.bEqual);
		EXPECT_EQ(FJsonValue::CompareEqual(*Case.Rhs, *Case.Lhs), Case.bEqual);
		EXPECT_EQ(*Case.Lhs == *Case.Rhs, Case.bEqual);
	}
}

TEST(JsonValue, CompareEqualContainers)
{
	const TSharedPtr<FJsonObject> A = ParseObject(R"({"a":1,"b":[true,"x",{"c":null}]})");
	const TSharedPtr<FJsonObject> SameOtherOrder = ParseObject(R"({"b":[true,"X",{"c":null}],"a":1.0})");
	const TSharedPtr<FJsonObject> DifferentDeep = ParseObject(R"({"a":1,"b":[true,"x",{"c":0}]})");
	const TSharedPtr<FJsonObject> Shorter = ParseObject(R"({"a":1,"b":[true,"x"]})");
	ASSERT_TRUE(A && SameOtherOrder && DifferentDeep && Shorter);

	const FJsonValueObject ValueA(A);
	EXPECT_TRUE(FJsonValue::CompareEqual(ValueA, FJsonValueObject(SameOtherOrder)));
	EXPECT_FALSE(FJsonValue::CompareEqual(ValueA, FJsonValueObject(DifferentDeep)));
	EXPECT_FALSE(FJsonValue::CompareEqual(ValueA, FJsonValueObject(Shorter)));
	EXPECT_FALSE(FJsonValue::CompareEqual(ValueA, FJsonValueArray(TArray<TSharedPtr<FJsonValue>>())));
}

TEST(JsonValue, DuplicateIsDeepAndIndependent)
{
	const TSharedPtr<FJsonObject> Source = ParseObject(R"({"n":1.5,"s":"text","b":false,"z":null,"a":[1,{"k":"v"}],"o":{"x":2}})");
	ASSERT_TRUE(Source);
	const TSharedPtr<FJsonValue> SourceValue = MakeShared<FJsonValueObject>(Source);
	const TSharedPtr<FJsonValue> Copy = FJsonValue::Duplicate(SourceValue);
	ASSERT_TRUE(Copy.IsValid());
	EXPECT_TRUE(FJsonValue::CompareEqual(*SourceValue, *Copy));
	EXPECT_EQ(Utf8(Condensed(Copy->AsObject())), Utf8(Condensed(Source)));

	// Changing the copy leaves the source alone, all the way down.
	Copy->AsObject()->GetObjectField(TEXT("o"))->SetNumberField(TEXT("x"), 3);
	Copy->AsObject()->GetArrayField(TEXT("a"))[1]->AsObject()->SetStringField(TEXT("k"), TEXT("changed"));
	EXPECT_EQ(Source->GetObjectField(TEXT("o"))->GetNumberField(TEXT("x")), 2);
	EXPECT_EQ(Utf8(Source->GetArrayField(TEXT("a"))[1]->AsObject()->GetStringField(TEXT("k"))), "v");

	EXPECT_FALSE(FJsonValue::Duplicate(TSharedPtr<FJsonValue>()).IsValid());
	const TSharedPtr<FJsonValue> NullCopy = FJsonValue::Duplicate(Null());
	ASSERT_TRUE(NullCopy.IsValid());
	EXPECT_EQ(NullCopy->Type, EJson::Null);

	// A number kept as text becomes a plain number, as the engine's copy does.
	const TSharedPtr<FJsonValue> NumberCopy = FJsonValue::Duplicate(NumText("2.50"));
	EXPECT_FALSE(NumberCopy->PreferStringRepresentation());
	EXPECT_EQ(NumberCopy->AsNumber(), 2.5);
}
