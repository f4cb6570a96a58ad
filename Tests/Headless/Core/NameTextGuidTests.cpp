#include "Headless/Core/StringTestUtils.h"

#include "HAL/PlatformMisc.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

#define LOCTEXT_NAMESPACE "NameTextGuidTests"

// FName ------------------------------------------------------------------------------------------

TEST(FNameTest, CaseInsensitiveEqualityWithPreservedSpelling)
{
	const FName First(TEXT("MyVariable"));
	const FName Second(TEXT("MYVARIABLE"));
	const FName Third(FString(TEXT("myvariable")));
	EXPECT_EQ(First, Second);
	EXPECT_EQ(Second, Third);
	EXPECT_EQ(GetTypeHash(First), GetTypeHash(Second));
	// Each keeps the spelling it was made with; the first registration does not win.
	EXPECT_EQ(U8(First.ToString()), "MyVariable");
	EXPECT_EQ(U8(Second.ToString()), "MYVARIABLE");
	EXPECT_EQ(U8(Third.ToString()), "myvariable");
	EXPECT_EQ(U8(FName(TEXT("MyVariable")).ToString()), "MyVariable");

	EXPECT_TRUE(First == TEXT("myVARIABLE"));
	EXPECT_TRUE(TEXT("MyVariable") == First);
	EXPECT_FALSE(First == TEXT("MyVariable2"));
	EXPECT_NE(First, FName(TEXT("Other")));
	EXPECT_TRUE(First.IsEqual(Second));
	EXPECT_FALSE(First.IsEqual(Second, ENameCase::CaseSensitive));
	EXPECT_TRUE(First.IsEqual(FName(TEXT("MyVariable")), ENameCase::CaseSensitive));
	EXPECT_TRUE(FName(TEXT("Pin_1")).IsEqual(FName(TEXT("PIN_2")), ENameCase::IgnoreCase, false));
	EXPECT_FALSE(FName(TEXT("Pin_1")).IsEqual(FName(TEXT("PIN_2"))));
	EXPECT_TRUE(First.Equals(Second));
	EXPECT_TRUE(First.Equals(TEXT("myvariable")));

	FString Out(TEXT("stale"));
	First.ToString(Out);
	EXPECT_EQ(U8(Out), "MyVariable");
	FString Appended(TEXT("Var:"));
	First.AppendString(Appended);
	EXPECT_EQ(U8(Appended), "Var:MyVariable");
}

TEST(FNameTest, NoneAndFind)
{
	EXPECT_TRUE(FName().IsNone());
	EXPECT_TRUE(FName(NAME_None).IsNone());
	EXPECT_TRUE(FName(TEXT("")).IsNone());
	EXPECT_TRUE(FName(static_cast<const TCHAR*>(nullptr)).IsNone());
	EXPECT_TRUE(FName(TEXT("None")).IsNone());
	EXPECT_TRUE(FName(TEXT("none")).IsNone());
	EXPECT_EQ(FName(), NAME_None);
	EXPECT_EQ(U8(FName().ToString()), "None");
	EXPECT_TRUE(FName() == TEXT(""));
	EXPECT_TRUE(FName() == TEXT("NONE"));
	EXPECT_FALSE(FName(TEXT("Something")).IsNone());

	// Comparing with text or finding does not register the text.
	const TCHAR* Unseen = TEXT("NameNeverRegisteredBeforeThisTest_Q7");
	EXPECT_FALSE(FName(TEXT("Other")) == Unseen);
	EXPECT_TRUE(FName(Unseen, FNAME_Find).IsNone());
	const FName Added(Unseen);
	EXPECT_FALSE(Added.IsNone());
	EXPECT_EQ(FName(TEXT("namenEVERregisteredbeforethistest_q7"), FNAME_Find), Added);
}

TEST(FNameTest, NumberSuffixes)
{
	struct FCase
	{
		const TCHAR* Text;
		int32 Number;
		const char* Plain;
	};
	const FCase Cases[] = {
		{ TEXT("Node_12"), 13, "Node" },
		{ TEXT("Node_0"), 1, "Node" },
		{ TEXT("Node_012"), NAME_NO_NUMBER_INTERNAL, "Node_012" },
		{ TEXT("_5"), NAME_NO_NUMBER_INTERNAL, "_5" },
		{ TEXT("A_"), NAME_NO_NUMBER_INTERNAL, "A_" },
		{ TEXT("Node12"), NAME_NO_NUMBER_INTERNAL, "Node12" },
		{ TEXT("X_2147483646"), 2147483647, "X" },
		{ TEXT("X_2147483647"), NAME_NO_NUMBER_INTERNAL, "X_2147483647" },
		{ TEXT("K2Node_CallFunction_17"), 18, "K2Node_CallFunction" },
	};
	for (const FCase& Case : Cases)
	{
		const FName Name(Case.Text);
		EXPECT_EQ(Name.GetNumber(), Case.Number) << U8(Case.Text);
		EXPECT_EQ(U8(Name.GetPlainNameString()), Case.Plain) << U8(Case.Text);
		EXPECT_EQ(U8(Name.ToString()), U8(Case.Text));
		EXPECT_EQ(Name.GetStringLength(), FCString::Strlen(Case.Text));
	}
	EXPECT_EQ(FName(TEXT("Node_12")), FName(TEXT("NODE_12")));
	EXPECT_NE(FName(TEXT("Node_12")), FName(TEXT("Node_13")));
	EXPECT_NE(FName(TEXT("Node_12")), FName(TEXT("Node")));
	EXPECT_EQ(U8(FName(FName(TEXT("Base")), 5).ToString()), "Base_4");
	EXPECT_EQ(U8(FName(TEXT("Base"), 1).ToString()), "Base_0");
	EXPECT_EQ(FName(TEXT("Base"), 3), FName(TEXT("base_2")));
	EXPECT_EQ(FName(TEXT("Base_7"), 0).GetNumber(), NAME_NO_NUMBER_INTERNAL);
	EXPECT_EQ(FName(TEXT("Base_7"), 0, true).GetNumber(), 8);
	EXPECT_TRUE(FName(TEXT("Node_12")) == TEXT("node_12"));
}

TEST(FNameTest, OrderingAndContainers)
{
	TArray<FName> Names;
	for (const TCHAR* Text : { TEXT("b"), TEXT("a_10"), TEXT("C"), TEXT("A"), TEXT("a_2") })
	{
		Names.Add(FName(Text));
	}
	Names.Sort([](const FName& X, const FName& Y) { return X.LexicalLess(Y); });
	std::vector<std::string> Sorted;
	for (const FName& Name : Names)
	{
		Sorted.push_back(U8(Name.ToString()));
	}
	EXPECT_EQ(Sorted, (std::vector<std::string>{ "A", "a_2", "a_10", "b", "C" }));

	const FName Lower(TEXT("fastless_x"));
	const FName Upper(TEXT("FASTLESS_X"));
	const FName Other(TEXT("fastless_y"));
	EXPECT_FALSE(Lower.FastLess(Upper));
	EXPECT_FALSE(Upper.FastLess(Lower));
	EXPECT_NE(Lower.FastLess(Other), Other.FastLess(Lower));
	EXPECT_EQ(Lower.Compare(Upper), 0);
	EXPECT_LT(FName(TEXT("apple")).Compare(FName(TEXT("Banana"))), 0);

	TMap<FName, int32> Map;
	Map.Add(FName(TEXT("Key")), 1);
	Map.Add(FName(TEXT("KEY")), 2);
	EXPECT_EQ(Map.Num(), 1);
	EXPECT_EQ(Map.FindRef(FName(TEXT("key"))), 2);
}

TEST(FNameTest, ManyNamesRoundTrip)
{
	std::vector<FName> Names;
	for (int32 Index = 0; Index < 20000; ++Index)
	{
		Names.emplace_back(*FString::Printf(TEXT("RoundTrip%dName"), Index));
	}
	for (int32 Index = 0; Index < 20000; ++Index)
	{
		ASSERT_EQ(U8(Names[static_cast<size_t>(Index)].ToString()), U8(FString::Printf(TEXT("RoundTrip%dName"), Index)));
		ASSERT_EQ(Names[static_cast<size_t>(Index)], FName(*FString::Printf(TEXT("ROUNDTRIP%dNAME"), Index)));
	}
}

TEST(FNameTest, IsValidXName)
{
	FText Reason;
	EXPECT_TRUE(FName::IsValidXName(FString(TEXT("GoodName")), INVALID_OBJECTNAME_CHARACTERS, &Reason));
	EXPECT_FALSE(FName::IsValidXName(FString(TEXT("Bad Name.With,Chars.")), INVALID_OBJECTNAME_CHARACTERS, &Reason));
	EXPECT_EQ(U8(Reason.ToString()), "Name may not contain the following characters:  ,.");
	const FText Context = FText::FromString(TEXT("Variable name"));
	EXPECT_FALSE(FName::IsValidXName(FString(TEXT("a\"b")), INVALID_NAME_CHARACTERS, &Reason, &Context));
	EXPECT_EQ(U8(Reason.ToString()), "Variable name may not contain the following characters: \"");
	EXPECT_TRUE(FName::IsValidXName(FString(), INVALID_NAME_CHARACTERS));
}

// FText ------------------------------------------------------------------------------------------

TEST(FTextTest, BasicsAndOrigins)
{
	EXPECT_EQ(U8(FText::FromString(TEXT("x")).ToString()), "x");
	EXPECT_EQ(U8(FText::FromString(FString(TEXT("Hello"))).ToString()), "Hello");
	EXPECT_TRUE(FText().IsEmpty());
	EXPECT_TRUE(FText::GetEmpty().IsEmpty());
	EXPECT_TRUE(FText::FromString(TEXT("")).IsEmpty());
	EXPECT_TRUE(FText::FromString(TEXT(" \t")).IsEmptyOrWhitespace());
	EXPECT_FALSE(FText::FromString(TEXT(" a ")).IsEmptyOrWhitespace());
	EXPECT_EQ(U8(FText::FromName(FName(TEXT("SomeName"))).ToString()), "SomeName");
	// In the editor, texts made from strings are not culture invariant.
	EXPECT_FALSE(FText::FromString(TEXT("x")).IsCultureInvariant());

	const FText Localized = LOCTEXT("GreetingKey", "Hello");
	EXPECT_EQ(U8(Localized.ToString()), "Hello");
	EXPECT_EQ(U8(FTextInspector::GetNamespace(Localized).GetValue()), "NameTextGuidTests");
	EXPECT_EQ(U8(FTextInspector::GetKey(Localized).GetValue()), "GreetingKey");
	const FText Target = NSLOCTEXT("K2Node", "Target", "Target");
	EXPECT_EQ(U8(FTextInspector::GetNamespace(Target).GetValue()), "K2Node");
	EXPECT_FALSE(FTextInspector::GetNamespace(FText::FromString(TEXT("x"))).IsSet());
	EXPECT_TRUE(INVTEXT("Invariant").IsCultureInvariant());
	EXPECT_EQ(U8(INVTEXT("Invariant").ToString()), "Invariant");

	EXPECT_TRUE(FText::FromString(TEXT("abc")).EqualTo(FText::FromString(TEXT("abc"))));
	EXPECT_FALSE(FText::FromString(TEXT("abc")).EqualTo(FText::FromString(TEXT("ABC"))));
	EXPECT_TRUE(FText::FromString(TEXT("abc")).EqualToCaseIgnored(FText::FromString(TEXT("ABC"))));
	const FText Copy = Localized;
	EXPECT_TRUE(Copy.IdenticalTo(Localized));
	EXPECT_FALSE(FText::FromString(TEXT("Hello")).IdenticalTo(Localized));
	EXPECT_EQ(U8(FText::FromString(TEXT("MiXed")).ToUpper().ToString()), "MIXED");
	EXPECT_EQ(U8(FText::TrimPrecedingAndTrailing(FText::FromString(TEXT("  a b  "))).ToString()), "a b");
}

TEST(FTextTest, AsNumberTable)
{
	struct FCase
	{
		FText Actual;
		const char* Expected;
	};
	FNumberFormattingOptions TwoDecimals;
	TwoDecimals.MinimumFractionalDigits = 2;
	FNumberFormattingOptions Whole;
	Whole.MaximumFractionalDigits = 0;
	FNumberFormattingOptions WholeFromZero = Whole;
	WholeFromZero.RoundingMode = HalfFromZero;
	FNumberFormattingOptions ThreeDigits;
	ThreeDigits.MinimumIntegralDigits = 3;
	FNumberFormattingOptions Signed;
	Signed.AlwaysSign = true;
	const FCase Cases[] = {
		{ FText::AsNumber(0), "0" },
		{ FText::AsNumber(1234), "1,234" },
		{ FText::AsNumber(-1234567), "-1,234,567" },
		{ FText::AsNumber(999), "999" },
		{ FText::AsNumber(1.5), "1.5" },
		{ FText::AsNumber(3.14159), "3.142" },
		{ FText::AsNumber(0.125), "0.125" },
		{ FText::AsNumber(0.0005), "0.001" },
		{ FText::AsNumber(1234.5), "1,234.5" },
		{ FText::AsNumber(1e6), "1,000,000" },
		{ FText::AsNumber(-0.0001), "0" },
		{ FText::AsNumber(0.1f), "0.1" },
		{ FText::AsNumber(std::numeric_limits<uint64>::max()), "18,446,744,073,709,551,615" },
		{ FText::AsNumber(std::numeric_limits<int64>::min()), "-9,223,372,036,854,775,808" },
		{ FText::AsNumber(1234, &FNumberFormattingOptions::DefaultNoGrouping()), "1234" },
		{ FText::AsNumber(1.5, &TwoDecimals), "1.50" },
		{ FText::AsNumber(2.5, &Whole), "2" },
		{ FText::AsNumber(2.5, &WholeFromZero), "3" },
		{ FText::AsNumber(7, &ThreeDigits), "007" },
		{ FText::AsNumber(5, &Signed), "+5" },
	};
	for (const FCase& Case : Cases)
	{
		EXPECT_EQ(U8(Case.Actual.ToString()), Case.Expected);
	}
}

TEST(FTextTest, FormatOrderedAndNamed)
{
	EXPECT_EQ(U8(FText::Format(LOCTEXT("Sum", "{0} + {1} = {2}"), 1, 2, 3).ToString()), "1 + 2 = 3");
	EXPECT_EQ(U8(FText::Format(INVTEXT("{0}{0}-{1}"), FText::FromString(TEXT("ab")), 2.5).ToString()), "abab-2.5");
	EXPECT_EQ(U8(FText::Format(INVTEXT("{0} and {3}"), 1).ToString()), "1 and {3}");
	EXPECT_EQ(U8(FText::Format(INVTEXT("`{0`} {0}"), 7).ToString()), "{0} 7");
	EXPECT_EQ(U8(FText::Format(INVTEXT("{0 unclosed"), 7).ToString()), "{0 unclosed");
	EXPECT_EQ(U8(FText::Format(INVTEXT("count {0}"), 12345).ToString()), "count 12,345");

	FFormatOrderedArguments Ordered;
	Ordered.Add(FText::FromString(TEXT("first")));
	Ordered.Add(2);
	EXPECT_EQ(U8(FText::Format(INVTEXT("{1}:{0}"), Ordered).ToString()), "2:first");

	FFormatNamedArguments Named;
	Named.Add(TEXT("Name"), FText::FromString(TEXT("Player")));
	Named.Add(TEXT("Count"), 3);
	EXPECT_EQ(U8(FText::Format(INVTEXT("{Name} has {count} lives, {Missing}"), Named).ToString()), "Player has 3 lives, {Missing}");
	EXPECT_EQ(U8(FText::FormatNamed(INVTEXT("{A}-{B}"), TEXT("A"), 1, TEXT("B"), FText::FromString(TEXT("x"))).ToString()), "1-x");
	EXPECT_EQ(U8(FText::FormatOrdered(INVTEXT("{0}/{1}"), 1u, 2.0f).ToString()), "1/2");

	TArray<FText> Parts;
	Parts.Add(FText::FromString(TEXT("a")));
	Parts.Add(FText::FromString(TEXT("b")));
	EXPECT_EQ(U8(FText::Join(INVTEXT(", "), Parts).ToString()), "a, b");
}

// FGuid ------------------------------------------------------------------------------------------

TEST(FGuidTest, FormatsTable)
{
	const FGuid Guid(0x01234567, 0x89ABCDEF, 0xFEDCBA98, 0x76543210);
	struct FCase
	{
		EGuidFormats Format;
		const char* Expected;
	};
	const FCase Cases[] = {
		{ EGuidFormats::Digits, "0123456789ABCDEFFEDCBA9876543210" },
		{ EGuidFormats::DigitsLower, "0123456789abcdeffedcba9876543210" },
		{ EGuidFormats::DigitsWithHyphens, "01234567-89AB-CDEF-FEDC-BA9876543210" },
		{ EGuidFormats::DigitsWithHyphensLower, "01234567-89ab-cdef-fedc-ba9876543210" },
		{ EGuidFormats::DigitsWithHyphensInBraces, "{01234567-89AB-CDEF-FEDC-BA9876543210}" },
		{ EGuidFormats::DigitsWithHyphensInParentheses, "(01234567-89AB-CDEF-FEDC-BA9876543210)" },
		{ EGuidFormats::HexValuesInBraces, "{0x01234567,0x89AB,0xCDEF,{0xFE,0xDC,0xBA,0x98,0x76,0x54,0x32,0x10}}" },
		{ EGuidFormats::UniqueObjectGuid, "01234567-89ABCDEF-FEDCBA98-76543210" },
		{ EGuidFormats::Short, "ASNFZ4mrze_-3LqYdlQyEA" },
		{ EGuidFormats::Base36Encoded, "02FAPL4N1AZS9FHGHWZ46ARYO" },
	};
	for (const FCase& Case : Cases)
	{
		EXPECT_EQ(U8(Guid.ToString(Case.Format)), Case.Expected) << static_cast<int32>(Case.Format);
		FString Appended(TEXT(">"));
		Guid.AppendString(Appended, Case.Format);
		EXPECT_EQ(U8(Appended), std::string(">") + Case.Expected);

		FGuid Exact;
		EXPECT_TRUE(FGuid::ParseExact(FString(UTF8_TO_TCHAR(Case.Expected)), Case.Format, Exact)) << Case.Expected;
		EXPECT_EQ(Exact, Guid) << Case.Expected;
		FGuid Any;
		EXPECT_TRUE(FGuid::Parse(FString(UTF8_TO_TCHAR(Case.Expected)), Any)) << Case.Expected;
		EXPECT_EQ(Any, Guid) << Case.Expected;
	}
	EXPECT_EQ(U8(Guid.ToString()), "0123456789ABCDEFFEDCBA9876543210");
	EXPECT_EQ(U8(LexToString(Guid)), "0123456789ABCDEFFEDCBA9876543210");
	EXPECT_EQ(U8(FGuid().ToString()), "00000000000000000000000000000000");
}

TEST(FGuidTest, ParseRejectsMalformedText)
{
	const FGuid Sentinel(1, 2, 3, 4);
	const TCHAR* Bad[] = {
		TEXT(""),
		TEXT("0123456789ABCDEFFEDCBA987654321"),                       // 31 digits
		TEXT("0123456789ABCDEFFEDCBA987654321G"),                      // not hex
		TEXT("01234567-89AB-CDEF-FEDC_BA9876543210"),                  // misplaced separator
		TEXT("{01234567-89AB-CDEF-FEDC-BA9876543210)"),                // mismatched brackets
		TEXT("{0x01234567,0x89AB,0xCDEF,{0xFE,0xDC,0xBA,0x98,0x76,0x54,0x32,0x10}]"),
		TEXT("01234567-89ABCDEF-FEDCBA98+76543210"),
		TEXT("02fapl4n1azs9fhghwz46aryo"),                             // base 36 is upper case only
		TEXT("ASNFZ4mrze_-3LqYdlQy=A"),                                // not URL-safe base64
		TEXT(" 0123456789ABCDEFFEDCBA987654321"),
	};
	for (const TCHAR* Text : Bad)
	{
		FGuid Out = Sentinel;
		EXPECT_FALSE(FGuid::Parse(Text, Out)) << U8(Text);
		EXPECT_EQ(Out, Sentinel) << U8(Text);
	}
	FGuid Out = Sentinel;
	EXPECT_FALSE(FGuid::ParseExact(TEXT("0123456789ABCDEFFEDCBA9876543210"), EGuidFormats::DigitsWithHyphens, Out));
	EXPECT_EQ(FGuid(FString(TEXT("garbage"))), FGuid());
	FGuid Lexed = Sentinel;
	LexFromString(Lexed, TEXT("garbage"));
	EXPECT_FALSE(Lexed.IsValid());
	EXPECT_TRUE(FGuid::Parse(TEXT("0123456789abcdeffedcba9876543210"), Out));
	EXPECT_EQ(Out, FGuid(0x01234567, 0x89ABCDEF, 0xFEDCBA98, 0x76543210));
}

TEST(FGuidTest, ValueSemantics)
{
	FGuid Guid(1, 2, 3, 4);
	EXPECT_TRUE(Guid.IsValid());
	EXPECT_EQ(Guid[0], 1u);
	EXPECT_EQ(Guid[3], 4u);
	Guid[2] = 9;
	EXPECT_EQ(Guid.C, 9u);
	Guid.Invalidate();
	EXPECT_FALSE(Guid.IsValid());
	EXPECT_TRUE(FGuid(1, 0, 0, 0) < FGuid(1, 0, 0, 1));
	EXPECT_TRUE(FGuid(0, 9, 9, 9) < FGuid(1, 0, 0, 0));
	EXPECT_FALSE(FGuid(1, 2, 3, 4) < FGuid(1, 2, 3, 4));
	EXPECT_NE(FGuid(1, 2, 3, 4), FGuid(1, 2, 3, 5));
	EXPECT_EQ(GetTypeHash(FGuid(5, 6, 7, 8)), GetTypeHash(FGuid(5, 6, 7, 8)));
	EXPECT_EQ(FGuid::Combine(FGuid(1, 2, 3, 4), FGuid(5, 6, 7, 8)), FGuid::Combine(FGuid(1, 2, 3, 4), FGuid(5, 6, 7, 8)));
	EXPECT_NE(FGuid::Combine(FGuid(1, 2, 3, 4), FGuid(5, 6, 7, 8)), FGuid::Combine(FGuid(5, 6, 7, 8), FGuid(1, 2, 3, 4)));
}

TEST(FGuidTest, SeededGenerationIsDeterministic)
{
	auto Draw = [](uint64 Seed)
	{
		FPlatformMisc::SeedGuidGenerator(Seed);
		std::vector<std::string> Drawn;
		for (int32 Index = 0; Index < 8; ++Index)
		{
			Drawn.push_back(U8(FGuid::NewGuid().ToString()));
		}
		return Drawn;
	};
	const std::vector<std::string> First = Draw(42);
	EXPECT_EQ(Draw(42), First);
	EXPECT_NE(Draw(43), First);
	EXPECT_EQ(std::set<std::string>(First.begin(), First.end()).size(), First.size());

	// The sequence is xoshiro256** seeded through splitmix64, the same on every platform.
	FPlatformMisc::SeedGuidGenerator(1);
	EXPECT_EQ(U8(FGuid::NewGuid().ToString()), "B3F2AF6D0FC710C5853B559647364CEA");
	EXPECT_EQ(U8(FGuid::NewGuid().ToString()), "92F89756082A4514642E1C7BC266A3A7");

	// Random GUIDs survive every text form.
	FPlatformMisc::SeedGuidGenerator(7);
	const EGuidFormats Formats[] = {
		EGuidFormats::Digits, EGuidFormats::DigitsLower, EGuidFormats::DigitsWithHyphens, EGuidFormats::DigitsWithHyphensLower,
		EGuidFormats::DigitsWithHyphensInBraces, EGuidFormats::DigitsWithHyphensInParentheses, EGuidFormats::HexValuesInBraces,
		EGuidFormats::UniqueObjectGuid, EGuidFormats::Short, EGuidFormats::Base36Encoded,
	};
	for (int32 Round = 0; Round < 200; ++Round)
	{
		const FGuid Guid = FGuid::NewGuid();
		ASSERT_TRUE(Guid.IsValid());
		for (const EGuidFormats Format : Formats)
		{
			FGuid Parsed;
			ASSERT_TRUE(FGuid::Parse(Guid.ToString(Format), Parsed)) << U8(Guid.ToString(Format));
			ASSERT_EQ(Parsed, Guid) << U8(Guid.ToString(Format));
		}
	}
}

#undef LOCTEXT_NAMESPACE
