#include "Headless/Json/JsonTestUtils.h"

#include <gtest/gtest.h>

#include <limits>

using namespace JsonTest;

TEST(JsonObject, FieldsKeepInsertionOrder)
{
	const TSharedPtr<FJsonObject> Object = MakeShared<FJsonObject>();
	Object->SetStringField(TEXT("zeta"), TEXT("z"));
	Object->SetNumberField(TEXT("alpha"), 1);
	Object->SetBoolField(TEXT("mid"), true);
	Object->SetField(TEXT("nothing"), MakeShared<FJsonValueNull>());
	Object->SetArrayField(TEXT("list"), TArray<TSharedPtr<FJsonValue>>{MakeShared<FJsonValueNumber>(2)});
	Object->SetObjectField(TEXT("child"), MakeShared<FJsonObject>());
	EXPECT_EQ(Utf8(Condensed(Object)), R"({"zeta":"z","alpha":1,"mid":true,"nothing":null,"list":[2],"child":{}})");

	// Parsed objects keep the document's order too.
	EXPECT_EQ(RoundTrip(R"({"b":1,"a":2,"c":{"y":1,"x":2}})"), R"({"b":1,"a":2,"c":{"y":1,"x":2}})");
}

// Setting an existing field replaces it where it stands; a removal frees a place that the next new
// field takes, as the engine's TMap does.
TEST(JsonObject, ReplaceAndRemoveFollowTheMapsOrder)
{
	const TSharedPtr<FJsonObject> Object = MakeShared<FJsonObject>();
	Object->SetNumberField(TEXT("a"), 1);
	Object->SetNumberField(TEXT("b"), 2);
	Object->SetNumberField(TEXT("c"), 3);
	Object->SetNumberField(TEXT("a"), 10);
	EXPECT_EQ(Utf8(Condensed(Object)), R"({"a":10,"b":2,"c":3})");

	Object->RemoveField(TEXT("b"));
	EXPECT_FALSE(Object->HasField(TEXT("b")));
	Object->SetNumberField(TEXT("d"), 4);
	EXPECT_EQ(Utf8(Condensed(Object)), R"({"a":10,"d":4,"c":3})");

	Object->RemoveField(TEXT("missing"));
	EXPECT_EQ(Object->Values.Num(), 3);
}

// Names compare as FString keys do: without regard to case. The last spelling set is kept.
TEST(JsonObject, NamesIgnoreCase)
{
	const TSharedPtr<FJsonObject> Object = MakeShared<FJsonObject>();
	Object->SetStringField(TEXT("Name"), TEXT("first"));
	EXPECT_TRUE(Object->HasField(TEXT("NAME")));
	EXPECT_EQ(Utf8(Object->GetStringField(TEXT("name"))), "first");

	Object->SetStringField(TEXT("NAME"), TEXT("second"));
	EXPECT_EQ(Object->Values.Num(), 1);
	EXPECT_EQ(Utf8(Condensed(Object)), R"({"NAME":"second"})");

	// A document repeating a name keeps one field, at the first place, with the last value.
	EXPECT_EQ(RoundTrip(R"({"a":1,"b":2,"A":3})"), R"({"A":3,"b":2})");
}

TEST(JsonObject, GettersGiveDefaultsForMissingFields)
{
	const TSharedPtr<FJsonObject> Object = MakeShared<FJsonObject>();
	EXPECT_FALSE(Object->HasField(TEXT("x")));
	EXPECT_FALSE(Object->TryGetField(TEXT("x")).IsValid());
	EXPECT_EQ(Object->GetField<EJson::None>(TEXT("x"))->Type, EJson::Null);
	EXPECT_EQ(Utf8(Object->GetStringField(TEXT("x"))), "");
	EXPECT_EQ(Object->GetNumberField(TEXT("x")), 0.0);
	EXPECT_EQ(Object->GetIntegerField(TEXT("x")), 0);
	EXPECT_FALSE(Object->GetBoolField(TEXT("x")));
	EXPECT_EQ(Object->GetArrayField(TEXT("x")).Num(), 0);
	ASSERT_TRUE(Object->GetObjectField(TEXT("x")).IsValid());
	EXPECT_EQ(Object->GetObjectField(TEXT("x"))->Values.Num(), 0);

	FString String = TEXT("unchanged");
	double Number = 7;
	bool bBool = true;
	const TArray<TSharedPtr<FJsonValue>>* Array = nullptr;
	const TSharedPtr<FJsonObject>* Child = nullptr;
	TArray<FString> Strings;
	EXPECT_FALSE(Object->TryGetStringField(TEXT("x"), String));
	EXPECT_FALSE(Object->TryGetNumberField(TEXT("x"), Number));
	EXPECT_FALSE(Object->TryGetBoolField(TEXT("x"), bBool));
	EXPECT_FALSE(Object->TryGetArrayField(TEXT("x"), Array));
	EXPECT_FALSE(Object->TryGetObjectField(TEXT("x"), Child));
	EXPECT_FALSE(Object->TryGetStringArrayField(TEXT("x"), Strings));
	EXPECT_EQ(Utf8(String), "unchanged");
	EXPECT_EQ(Number, 7);
	EXPECT_TRUE(bBool);
}

// Each getter on each kind of field: what the engine's accessors read.
TEST(JsonObject, GettersOnFieldsOfOtherKinds)
{
	const TSharedPtr<FJsonObject> Object = ParseObject(R"({"s":"abc","d":"12","n":12.7,"neg":-1,"b":true,"arr":[1],"o":{"k":1},"z":null})");
	ASSERT_TRUE(Object);

	EXPECT_EQ(Utf8(Object->GetStringField(TEXT("n"))), "12.7");
	EXPECT_EQ(Utf8(Object->GetStringField(TEXT("b"))), "true");
	EXPECT_EQ(Utf8(Object->GetStringField(TEXT("arr"))), "");
	EXPECT_EQ(Utf8(Object->GetStringField(TEXT("z"))), "");
	EXPECT_EQ(Object->GetNumberField(TEXT("s")), 0.0);
	EXPECT_EQ(Object->GetNumberField(TEXT("d")), 12.0);
	EXPECT_EQ(Object->GetNumberField(TEXT("b")), 1.0);
	EXPECT_EQ(Object->GetIntegerField(TEXT("n")), 12);
	EXPECT_EQ(Object->GetIntegerField(TEXT("neg")), -1);
	EXPECT_EQ(ParseObject(R"({"big":1e20,"low":-2.9})")->GetIntegerField(TEXT("big")), std::numeric_limits<int32>::min());
	EXPECT_EQ(ParseObject(R"({"big":1e20,"low":-2.9})")->GetIntegerField(TEXT("low")), -2);
	EXPECT_FALSE(Object->GetBoolField(TEXT("s")));
	EXPECT_TRUE(Object->GetBoolField(TEXT("n")));
	EXPECT_EQ(Object->GetArrayField(TEXT("s")).Num(), 0);
	EXPECT_EQ(Object->GetArrayField(TEXT("arr")).Num(), 1);
	EXPECT_EQ(Object->GetObjectField(TEXT("arr"))->Values.Num(), 0);
	EXPECT_EQ(Object->GetObjectField(TEXT("o"))->GetNumberField(TEXT("k")), 1.0);

	FString String;
	EXPECT_TRUE(Object->TryGetStringField(TEXT("n"), String));
	EXPECT_EQ(Utf8(String), "12.7");
	EXPECT_FALSE(Object->TryGetStringField(TEXT("o"), String));

	double Double = 0;
	int32 Int32 = 0;
	uint32 UInt32 = 99;
	float Float = 0;
	EXPECT_FALSE(Object->TryGetNumberField(TEXT("s"), Double));
	EXPECT_TRUE(Object->TryGetNumberField(TEXT("d"), Double));
	EXPECT_EQ(Double, 12.0);
	EXPECT_TRUE(Object->TryGetNumberField(TEXT("n"), Int32));
	EXPECT_EQ(Int32, 13);
	EXPECT_TRUE(Object->TryGetNumberField(TEXT("n"), Float));
	EXPECT_EQ(Float, 12.7f);
	EXPECT_FALSE(Object->TryGetNumberField(TEXT("neg"), UInt32));
	EXPECT_EQ(UInt32, 99u);

	bool bBool = false;
	EXPECT_TRUE(Object->TryGetBoolField(TEXT("n"), bBool));
	EXPECT_TRUE(bBool);
	EXPECT_FALSE(Object->TryGetBoolField(TEXT("arr"), bBool));

	const TArray<TSharedPtr<FJsonValue>>* Array = nullptr;
	const TSharedPtr<FJsonObject>* Child = nullptr;
	EXPECT_FALSE(Object->TryGetArrayField(TEXT("o"), Array));
	EXPECT_TRUE(Object->TryGetArrayField(TEXT("arr"), Array));
	EXPECT_FALSE(Object->TryGetObjectField(TEXT("arr"), Child));
	EXPECT_TRUE(Object->TryGetObjectField(TEXT("o"), Child));

	EXPECT_TRUE(Object->HasTypedField<EJson::String>(TEXT("s")));
	EXPECT_FALSE(Object->HasTypedField<EJson::Number>(TEXT("s")));
	EXPECT_TRUE(Object->HasTypedField<EJson::Null>(TEXT("z")));
	EXPECT_TRUE(Object->HasField(TEXT("z")));
	EXPECT_EQ(Object->GetField<EJson::String>(TEXT("n"))->Type, EJson::Null);
	EXPECT_EQ(Object->GetField<EJson::Number>(TEXT("n"))->AsNumber(), 12.7);
}

TEST(JsonObject, StringArrayField)
{
	const TSharedPtr<FJsonObject> Object = ParseObject(R"({"mixed":["a",1,true],"holes":["a",null,"b"],"nested":[["x"]],"one":"a"})");
	ASSERT_TRUE(Object);

	TArray<FString> Strings;
	EXPECT_TRUE(Object->TryGetStringArrayField(TEXT("mixed"), Strings));
	ASSERT_EQ(Strings.Num(), 3);
	EXPECT_EQ(Utf8(Strings[0]), "a");
	EXPECT_EQ(Utf8(Strings[1]), "1");
	EXPECT_EQ(Utf8(Strings[2]), "true");

	Strings.Reset();
	EXPECT_FALSE(Object->TryGetStringArrayField(TEXT("holes"), Strings));
	EXPECT_FALSE(Object->TryGetStringArrayField(TEXT("nested"), Strings));
	EXPECT_FALSE(Object->TryGetStringArrayField(TEXT("one"), Strings));
}

TEST(JsonObject, SettersStoreTheirKinds)
{
	const TSharedPtr<FJsonObject> Object = MakeShared<FJsonObject>();
	Object->SetObjectField(TEXT("none"), TSharedPtr<FJsonObject>());
	EXPECT_TRUE(Object->HasTypedField<EJson::Null>(TEXT("none")));

	const FString Name = TEXT("moved");
	FString Value = TEXT("value");
	Object->SetStringField(Name, MoveTemp(Value));
	EXPECT_EQ(Utf8(Object->GetStringField(TEXT("moved"))), "value");

	const TSharedPtr<FJsonObject> Child = MakeShared<FJsonObject>();
	Object->SetObjectField(TEXT("child"), Child);
	Child->SetNumberField(TEXT("late"), 1);
	// The field shares the object, as the engine's does.
	EXPECT_EQ(Object->GetObjectField(TEXT("child"))->GetNumberField(TEXT("late")), 1.0);
}

TEST(JsonObject, DuplicateCopiesIntoDestination)
{
	const TSharedPtr<FJsonObject> Source = ParseObject(R"({"a":[1,2],"b":{"c":"d"}})");
	TSharedPtr<FJsonObject> Dest = MakeShared<FJsonObject>();
	Dest->SetBoolField(TEXT("kept"), true);
	FJsonObject::Duplicate(Source, Dest);
	EXPECT_EQ(Utf8(Condensed(Dest)), R"({"kept":true,"a":[1,2],"b":{"c":"d"}})");

	Dest->GetObjectField(TEXT("b"))->SetStringField(TEXT("c"), TEXT("changed"));
	EXPECT_EQ(Utf8(Source->GetObjectField(TEXT("b"))->GetStringField(TEXT("c"))), "d");
}
