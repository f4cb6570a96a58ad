#include "Headless/Core/StringTestUtils.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace
{
	std::vector<std::string> ToUtf8List(const TArray<FString>& Array)
	{
		std::vector<std::string> Result;
		for (const FString& Element : Array)
		{
			Result.push_back(U8(Element));
		}
		return Result;
	}
}

// Case rules -------------------------------------------------------------------------------------

TEST(FStringCase, EqualityAndHashIgnoreAsciiCaseOnly)
{
	const FString Mixed(TEXT("BlueprintGraph"));
	EXPECT_TRUE(Mixed == FString(TEXT("blueprintgraph")));
	EXPECT_TRUE(Mixed == TEXT("BLUEPRINTGRAPH"));
	EXPECT_TRUE(TEXT("blueprintGRAPH") == Mixed);
	EXPECT_FALSE(Mixed != TEXT("blueprintgraph"));
	EXPECT_TRUE(Mixed != TEXT("BlueprintGraphs"));
	EXPECT_EQ(GetTypeHash(Mixed), GetTypeHash(FString(TEXT("BLUEPRINTgraph"))));
	EXPECT_NE(GetTypeHash(Mixed), GetTypeHash(FString(TEXT("BlueprintGraph2"))));

	// Only A-Z fold: accented letters keep their case, as in the engine.
	EXPECT_FALSE(FString(u"\u00C9t\u00E9") == FString(u"\u00E9t\u00E9"));
	EXPECT_TRUE(FString(u"\u00C9T\u00E9") == FString(u"\u00C9t\u00E9"));

	// Empty strings made in different ways are equal, and operator* is never null.
	EXPECT_TRUE(FString() == FString(TEXT("")));
	EXPECT_TRUE(FString() == TEXT(""));
	ASSERT_NE(*FString(), nullptr);
	EXPECT_EQ(**FString(), TCHAR(0));
}

TEST(FStringCase, EqualsAndCompareDefaultToCaseSensitive)
{
	const FString Lower(TEXT("apple"));
	const FString Upper(TEXT("APPLE"));
	EXPECT_FALSE(Lower.Equals(Upper));
	EXPECT_TRUE(Lower.Equals(Upper, ESearchCase::IgnoreCase));
	EXPECT_GT(Lower.Compare(Upper), 0);
	EXPECT_EQ(Lower.Compare(Upper, ESearchCase::IgnoreCase), 0);

	// operator< ignores case: "apple" sorts before "Banana" although 'B' < 'a' in code units.
	EXPECT_TRUE(FString(TEXT("apple")) < FString(TEXT("Banana")));
	EXPECT_GT(FString(TEXT("apple")).Compare(FString(TEXT("Banana"))), 0);
	// Folding is to lower case: '_' (0x5F) sorts before 'a' (0x61) although after 'A' (0x41).
	EXPECT_TRUE(FString(TEXT("_x")) < FString(TEXT("Ax")));
}

TEST(FStringCase, MapKeysCollideByCase)
{
	TMap<FString, int32> Map;
	Map.Add(TEXT("Key"), 1);
	Map.Add(TEXT("KEY"), 2);
	EXPECT_EQ(Map.Num(), 1);
	ASSERT_NE(Map.Find(TEXT("kEy")), nullptr);
	EXPECT_EQ(*Map.Find(TEXT("kEy")), 2);
}

// Searching --------------------------------------------------------------------------------------

TEST(FStringSearch, FindTable)
{
	struct FCase
	{
		const TCHAR* Haystack;
		const TCHAR* Needle;
		ESearchCase::Type Case;
		ESearchDir::Type Dir;
		int32 Start;
		int32 Expected;
	};
	const FCase Cases[] = {
		{ TEXT("Hello World"), TEXT("world"), ESearchCase::IgnoreCase, ESearchDir::FromStart, INDEX_NONE, 6 },
		{ TEXT("Hello World"), TEXT("world"), ESearchCase::CaseSensitive, ESearchDir::FromStart, INDEX_NONE, INDEX_NONE },
		{ TEXT("abcabc"), TEXT("BC"), ESearchCase::IgnoreCase, ESearchDir::FromEnd, INDEX_NONE, 4 },
		{ TEXT("abcabc"), TEXT("bc"), ESearchCase::IgnoreCase, ESearchDir::FromStart, 2, 4 },
		{ TEXT("abcabc"), TEXT("bc"), ESearchCase::CaseSensitive, ESearchDir::FromEnd, 4, 1 },
		{ TEXT("abcabc"), TEXT("bc"), ESearchCase::CaseSensitive, ESearchDir::FromEnd, 6, 4 },
		// From the end, a match must finish by StartPosition.
		{ TEXT("X"), TEXT("X"), ESearchCase::CaseSensitive, ESearchDir::FromEnd, 0, INDEX_NONE },
		{ TEXT("abc"), TEXT(""), ESearchCase::IgnoreCase, ESearchDir::FromStart, INDEX_NONE, 0 },
		{ TEXT("abc"), TEXT(""), ESearchCase::IgnoreCase, ESearchDir::FromStart, 2, 2 },
		{ TEXT("abc"), TEXT(""), ESearchCase::IgnoreCase, ESearchDir::FromEnd, INDEX_NONE, 2 },
		{ TEXT("abc"), TEXT("abcd"), ESearchCase::IgnoreCase, ESearchDir::FromStart, INDEX_NONE, INDEX_NONE },
		{ TEXT("abc"), TEXT("abcd"), ESearchCase::IgnoreCase, ESearchDir::FromEnd, INDEX_NONE, INDEX_NONE },
		// Start positions are clamped into the string.
		{ TEXT("abc"), TEXT("c"), ESearchCase::IgnoreCase, ESearchDir::FromStart, 99, 2 },
		{ TEXT("abc"), TEXT("a"), ESearchCase::IgnoreCase, ESearchDir::FromStart, -5, 0 },
		{ TEXT(""), TEXT("a"), ESearchCase::IgnoreCase, ESearchDir::FromStart, 3, INDEX_NONE },
		{ TEXT("aaa"), TEXT("aa"), ESearchCase::IgnoreCase, ESearchDir::FromEnd, INDEX_NONE, 1 },
	};
	for (const FCase& Case : Cases)
	{
		EXPECT_EQ(FString(Case.Haystack).Find(Case.Needle, Case.Case, Case.Dir, Case.Start), Case.Expected)
			<< U8(Case.Haystack) << " / " << U8(Case.Needle) << " start " << Case.Start;
	}
	EXPECT_EQ(FString(TEXT("abc")).Find(static_cast<const TCHAR*>(nullptr)), INDEX_NONE);
}

TEST(FStringSearch, ContainsStartsWithEndsWith)
{
	const FString Path(TEXT("/Game/Blueprints/BP_Player"));
	EXPECT_TRUE(Path.Contains(TEXT("blueprints")));
	EXPECT_FALSE(Path.Contains(TEXT("blueprints"), ESearchCase::CaseSensitive));
	EXPECT_TRUE(Path.StartsWith(TEXT("/game/")));
	EXPECT_FALSE(Path.StartsWith(TEXT("/game/"), ESearchCase::CaseSensitive));
	EXPECT_TRUE(Path.EndsWith(TEXT("bp_player")));
	EXPECT_FALSE(Path.EndsWith(TEXT("bp_player"), ESearchCase::CaseSensitive));
	// An empty prefix or suffix never matches, as in the engine.
	EXPECT_FALSE(Path.StartsWith(TEXT("")));
	EXPECT_FALSE(Path.EndsWith(FString()));
	EXPECT_FALSE(FString(TEXT("ab")).StartsWith(TEXT("abc")));
	EXPECT_FALSE(FString(TEXT("ab")).EndsWith(TEXT("xab")));

	int32 Index = -7;
	EXPECT_TRUE(Path.FindChar(TCHAR('/'), Index));
	EXPECT_EQ(Index, 0);
	EXPECT_TRUE(Path.FindLastChar(TCHAR('/'), Index));
	EXPECT_EQ(Index, 16);
	EXPECT_FALSE(Path.FindChar(TCHAR('?'), Index));
	EXPECT_EQ(Index, INDEX_NONE);
	EXPECT_EQ(Path.FindLastCharByPredicate([](TCHAR C) { return C == TCHAR('B'); }), 17);
	EXPECT_EQ(Path.FindLastCharByPredicate([](TCHAR C) { return C == TCHAR('B'); }, 17), 6);
}

TEST(FStringSearch, MatchesWildcard)
{
	struct FCase
	{
		const TCHAR* Text;
		const TCHAR* Pattern;
		ESearchCase::Type Case;
		bool bExpected;
	};
	const FCase Cases[] = {
		{ TEXT("Hello"), TEXT("H*o"), ESearchCase::IgnoreCase, true },
		{ TEXT("Hello"), TEXT("h?llo"), ESearchCase::IgnoreCase, true },
		{ TEXT("Hello"), TEXT("h?llo"), ESearchCase::CaseSensitive, false },
		{ TEXT("Hlo"), TEXT("H?lo"), ESearchCase::CaseSensitive, true }, // '?' may match nothing
		{ TEXT("Hello"), TEXT("*x*"), ESearchCase::IgnoreCase, false },
		{ TEXT(""), TEXT("*"), ESearchCase::IgnoreCase, true },
		{ TEXT("abc"), TEXT(""), ESearchCase::IgnoreCase, false },
		{ TEXT("a.b.c"), TEXT("*.*.*"), ESearchCase::IgnoreCase, true },
		{ TEXT("aaaaaaaaaaaaaaaaaaaaaaaaaaaaab"), TEXT("*a*a*a*a*a*a*a*a*c"), ESearchCase::IgnoreCase, false },
	};
	for (const FCase& Case : Cases)
	{
		EXPECT_EQ(FString(Case.Text).MatchesWildcard(Case.Pattern, Case.Case), Case.bExpected) << U8(Case.Text) << " ~ " << U8(Case.Pattern);
	}
}

// Substrings -------------------------------------------------------------------------------------

TEST(FStringSubstring, ClampedLikeTheEngine)
{
	const FString Hello(TEXT("Hello"));
	struct FCase
	{
		FString Actual;
		const char* Expected;
	};
	const FCase Cases[] = {
		{ Hello.Left(2), "He" }, { Hello.Left(-1), "" }, { Hello.Left(10), "Hello" },
		{ Hello.Right(3), "llo" }, { Hello.Right(10), "Hello" }, { Hello.Right(-2), "" },
		{ Hello.LeftChop(2), "Hel" }, { Hello.LeftChop(10), "" }, { Hello.LeftChop(-1), "Hello" },
		{ Hello.RightChop(2), "llo" }, { Hello.RightChop(-3), "Hello" }, { Hello.RightChop(9), "" },
		{ Hello.Mid(1, 3), "ell" }, { Hello.Mid(3), "lo" }, { Hello.Mid(2, -1), "" }, { Hello.Mid(4, 100), "o" },
		{ Hello.Mid(10, 2), "" }, { Hello.Mid(-2, 5), "Hel" }, { Hello.Mid(3, 0x7fffffff), "lo" }, { Hello.Mid(-3), "Hello" },
	};
	for (const FCase& Case : Cases)
	{
		EXPECT_EQ(U8(Case.Actual), Case.Expected);
	}
}

TEST(FStringSubstring, InlineFormsAgreeWithCopies)
{
	const int32 Values[] = { -3, -1, 0, 1, 2, 4, 5, 6, 0x7fffffff };
	const FString Source(TEXT("Hello"));
	for (const int32 A : Values)
	{
		FString Left = Source, LeftChop = Source, Right = Source, RightChop = Source;
		Left.LeftInline(A);
		LeftChop.LeftChopInline(A);
		Right.RightInline(A);
		RightChop.RightChopInline(A);
		EXPECT_EQ(U8(Left), U8(Source.Left(A))) << A;
		EXPECT_EQ(U8(LeftChop), U8(Source.LeftChop(A))) << A;
		EXPECT_EQ(U8(Right), U8(Source.Right(A))) << A;
		EXPECT_EQ(U8(RightChop), U8(Source.RightChop(A))) << A;
		EXPECT_EQ(U8(FString(Source).Left(A)), U8(Source.Left(A))) << A;
		for (const int32 B : Values)
		{
			FString Mid = Source;
			Mid.MidInline(A, B);
			EXPECT_EQ(U8(Mid), U8(Source.Mid(A, B))) << A << "," << B;
			EXPECT_EQ(U8(FString(Source).Mid(A, B)), U8(Source.Mid(A, B))) << A << "," << B;
		}
	}
}

// Editing ----------------------------------------------------------------------------------------

TEST(FStringEdit, ReplaceTable)
{
	struct FCase
	{
		const TCHAR* Source;
		const TCHAR* From;
		const TCHAR* To;
		ESearchCase::Type Case;
		const char* Expected;
		int32 ExpectedCount;
	};
	const FCase Cases[] = {
		{ TEXT("Hello hello HELLO"), TEXT("hello"), TEXT("bye"), ESearchCase::IgnoreCase, "bye bye bye", 3 },
		{ TEXT("Hello hello HELLO"), TEXT("hello"), TEXT("bye"), ESearchCase::CaseSensitive, "Hello bye HELLO", 1 },
		{ TEXT("aaa"), TEXT("aa"), TEXT("b"), ESearchCase::IgnoreCase, "ba", 1 },
		{ TEXT("abc"), TEXT(""), TEXT("x"), ESearchCase::IgnoreCase, "abc", 0 },
		{ TEXT("abcb"), TEXT("b"), TEXT(""), ESearchCase::IgnoreCase, "ac", 2 },
		{ TEXT("a.b.c"), TEXT("."), TEXT("::"), ESearchCase::IgnoreCase, "a::b::c", 2 },
		{ TEXT("same"), TEXT("a"), TEXT("a"), ESearchCase::CaseSensitive, "same", 0 },
		{ TEXT("aAa"), TEXT("a"), TEXT("a"), ESearchCase::IgnoreCase, "aaa", 3 },
		{ TEXT(""), TEXT("a"), TEXT("b"), ESearchCase::IgnoreCase, "", 0 },
	};
	for (const FCase& Case : Cases)
	{
		const FString Source(Case.Source);
		EXPECT_EQ(U8(Source.Replace(Case.From, Case.To, Case.Case)), Case.Expected) << U8(Case.Source);
		FString InPlace(Case.Source);
		EXPECT_EQ(InPlace.ReplaceInline(Case.From, Case.To, Case.Case), Case.ExpectedCount) << U8(Case.Source);
		EXPECT_EQ(U8(InPlace), Case.Expected);
	}

	FString Chars(TEXT("aAbB"));
	Chars.ReplaceCharInline(TCHAR('a'), TCHAR('x'));
	EXPECT_EQ(U8(Chars), "xxbB");
	Chars.ReplaceCharInline(TCHAR('b'), TCHAR('y'), ESearchCase::CaseSensitive);
	EXPECT_EQ(U8(Chars), "xxyB");
}

TEST(FStringEdit, TrimRules)
{
	const FString Padded(TEXT("  \t hi \r\n"));
	EXPECT_EQ(U8(Padded.TrimStartAndEnd()), "hi");
	EXPECT_EQ(U8(Padded.TrimStart()), "hi \r\n");
	EXPECT_EQ(U8(Padded.TrimEnd()), "  \t hi");
	FString InPlace = Padded;
	InPlace.TrimStartAndEndInline();
	EXPECT_EQ(U8(InPlace), "hi");
	EXPECT_EQ(U8(FString(TEXT(" \t\r\n ")).TrimStartAndEnd()), "");
	// Ideographic space trims; a no-break space does not.
	EXPECT_EQ(FString(u"\u3000x\u3000").TrimStartAndEnd().Len(), 1);
	EXPECT_EQ(FString(u"\u00A0x").TrimStart().Len(), 2);

	bool bRemoved = false;
	EXPECT_EQ(U8(FString(TEXT("\"abc\"")).TrimQuotes(&bRemoved)), "abc");
	EXPECT_TRUE(bRemoved);
	EXPECT_EQ(U8(FString(TEXT("\"abc")).TrimQuotes(&bRemoved)), "abc");
	EXPECT_TRUE(bRemoved);
	EXPECT_EQ(U8(FString(TEXT("abc")).TrimQuotes(&bRemoved)), "abc");
	EXPECT_FALSE(bRemoved);
	EXPECT_EQ(U8(FString(TEXT("\"")).TrimQuotes()), "");
	EXPECT_EQ(U8(FString(TEXT("xax")).TrimChar(TCHAR('x'))), "a");
}

TEST(FStringEdit, CaseConversionIsAsciiOnly)
{
	EXPECT_EQ(U8(FString(u"MixedCase_1\u00E9").ToUpper()), "MIXEDCASE_1\xC3\xA9");
	EXPECT_EQ(U8(FString(u"MixedCase_1\u00C9").ToLower()), "mixedcase_1\xC3\x89");
	FString InPlace(TEXT("AbC"));
	InPlace.ToLowerInline();
	EXPECT_EQ(U8(InPlace), "abc");
}

TEST(FStringEdit, InsertRemoveAndPad)
{
	FString Text(TEXT("ace"));
	Text.InsertAt(1, TCHAR('b'));
	Text.InsertAt(3, FString(TEXT("d")));
	EXPECT_EQ(U8(Text), "abcde");
	Text.InsertAt(99, TCHAR('f'));
	EXPECT_EQ(U8(Text), "abcdef");
	Text.RemoveAt(1, 2);
	EXPECT_EQ(U8(Text), "adef");
	Text.RemoveAt(3, 50);
	EXPECT_EQ(U8(Text), "ade");
	Text.RemoveAt(7);
	EXPECT_EQ(U8(Text), "ade");

	FString Prefixed(TEXT("BP_Player"));
	EXPECT_FALSE(Prefixed.RemoveFromStart(TEXT("")));
	EXPECT_TRUE(Prefixed.RemoveFromStart(TEXT("bp_")));
	EXPECT_EQ(U8(Prefixed), "Player");
	EXPECT_FALSE(Prefixed.RemoveFromEnd(TEXT("ER"), ESearchCase::CaseSensitive));
	EXPECT_TRUE(Prefixed.RemoveFromEnd(TEXT("ER")));
	EXPECT_EQ(U8(Prefixed), "Play");

	EXPECT_EQ(U8(FString(TEXT("ab")).LeftPad(4)), "  ab");
	EXPECT_EQ(U8(FString(TEXT("ab")).RightPad(4)), "ab  ");
	EXPECT_EQ(U8(FString(TEXT("abcde")).LeftPad(2)), "abcde");
	EXPECT_EQ(U8(FString::ChrN(3, TCHAR('-'))), "---");
	EXPECT_EQ(U8(FString::ChrN(-2, TCHAR('-'))), "");
	EXPECT_EQ(U8(FString::Chr(TCHAR('Q'))), "Q");
	EXPECT_EQ(U8(FString(TEXT("abc")).Reverse()), "cba");

	FString Appended;
	Appended.AppendChar(TCHAR(0));
	EXPECT_TRUE(Appended.IsEmpty());
	Appended += TEXT("x");
	Appended += 'y';
	Appended += TCHAR('z');
	Appended.AppendInt(-12);
	EXPECT_EQ(U8(Appended), "xyz-12");
	EXPECT_EQ(U8(FString(TEXT("a")) + TEXT("b") + FString(TEXT("c")) + TCHAR('d')), "abcd");
	EXPECT_EQ(U8(TEXT("x") + FString(TEXT("y"))), "xy");
}

TEST(FStringEdit, PathConcatenation)
{
	EXPECT_EQ(U8(FString(TEXT("a")) / TEXT("b")), "a/b");
	EXPECT_EQ(U8(FString(TEXT("a/")) / TEXT("b")), "a/b");
	EXPECT_EQ(U8(FString(TEXT("a")) / TEXT("/b")), "a/b");
	EXPECT_EQ(U8(FString() / TEXT("b")), "b");
	EXPECT_EQ(U8(FString(TEXT("a")) / FString()), "a/");
	FString Path(TEXT("/Game"));
	Path /= TEXT("Maps");
	Path /= FString(TEXT("Level"));
	EXPECT_EQ(U8(Path), "/Game/Maps/Level");
}

TEST(FStringEdit, EscapesRoundTrip)
{
	const FString Raw(TEXT("a\n\"b\\\t'"));
	const FString Escaped = Raw.ReplaceCharWithEscapedChar();
	EXPECT_EQ(U8(Escaped), "a\\n\\\"b\\\\\\t\\'");
	EXPECT_EQ(U8(Escaped.ReplaceEscapedCharWithChar()), U8(Raw));

	EXPECT_EQ(U8(FString(TEXT("say \"hi\" \\\"ok\\\"")).ReplaceQuotesWithEscapedQuotes()), "say \\\"hi\\\" \\\"ok\\\"");
	EXPECT_EQ(U8(FString(TEXT("a\tb")).ConvertTabsToSpaces(4)), "a   b");
	EXPECT_EQ(U8(FString(TEXT("abcd\te")).ConvertTabsToSpaces(4)), "abcd    e");
}

// Splitting and joining --------------------------------------------------------------------------

TEST(FStringSplit, SplitTable)
{
	struct FCase
	{
		const TCHAR* Source;
		const TCHAR* Separator;
		ESearchCase::Type Case;
		ESearchDir::Type Dir;
		bool bExpected;
		const char* Left;
		const char* Right;
	};
	const FCase Cases[] = {
		{ TEXT("Key=Value=More"), TEXT("="), ESearchCase::IgnoreCase, ESearchDir::FromStart, true, "Key", "Value=More" },
		{ TEXT("Key=Value=More"), TEXT("="), ESearchCase::IgnoreCase, ESearchDir::FromEnd, true, "Key=Value", "More" },
		{ TEXT("a.B.c"), TEXT("b"), ESearchCase::IgnoreCase, ESearchDir::FromStart, true, "a.", ".c" },
		{ TEXT("a.B.c"), TEXT("b"), ESearchCase::CaseSensitive, ESearchDir::FromStart, false, "untouched", "untouched" },
		{ TEXT("=x"), TEXT("="), ESearchCase::IgnoreCase, ESearchDir::FromStart, true, "", "x" },
		{ TEXT("x="), TEXT("="), ESearchCase::IgnoreCase, ESearchDir::FromStart, true, "x", "" },
		{ TEXT("A::B::C"), TEXT("::"), ESearchCase::IgnoreCase, ESearchDir::FromEnd, true, "A::B", "C" },
	};
	for (const FCase& Case : Cases)
	{
		FString Left(TEXT("untouched"));
		FString Right(TEXT("untouched"));
		EXPECT_EQ(FString(Case.Source).Split(Case.Separator, &Left, &Right, Case.Case, Case.Dir), Case.bExpected) << U8(Case.Source);
		EXPECT_EQ(U8(Left), Case.Left) << U8(Case.Source);
		EXPECT_EQ(U8(Right), Case.Right) << U8(Case.Source);
	}

	// The left output may be the string itself.
	FString Self(TEXT("name:value"));
	FString Value;
	ASSERT_TRUE(Self.Split(TEXT(":"), &Self, &Value));
	EXPECT_EQ(U8(Self), "name");
	EXPECT_EQ(U8(Value), "value");
	FString OnlyRight;
	EXPECT_TRUE(FString(TEXT("a|b")).Split(TEXT("|"), nullptr, &OnlyRight));
	EXPECT_EQ(U8(OnlyRight), "b");
}

TEST(FStringSplit, ParseIntoArrayTable)
{
	struct FCase
	{
		const TCHAR* Source;
		const TCHAR* Delimiter;
		bool bCullEmpty;
		std::vector<std::string> Expected;
	};
	const FCase Cases[] = {
		{ TEXT("a,b,,c"), TEXT(","), true, { "a", "b", "c" } },
		{ TEXT("a,b,,c"), TEXT(","), false, { "a", "b", "", "c" } },
		{ TEXT(",a,"), TEXT(","), false, { "", "a", "" } },
		{ TEXT(",a,"), TEXT(","), true, { "a" } },
		{ TEXT(""), TEXT(","), false, { "" } },
		{ TEXT(""), TEXT(","), true, {} },
		{ TEXT("aXbxc"), TEXT("x"), true, { "a", "b", "c" } }, // the delimiter ignores case
		{ TEXT("a::b:::c"), TEXT("::"), false, { "a", "b", ":c" } },
		{ TEXT("abc"), TEXT(""), false, {} },
		{ TEXT("no delimiter"), TEXT(";"), true, { "no delimiter" } },
	};
	for (const FCase& Case : Cases)
	{
		TArray<FString> Out;
		Out.Add(TEXT("stale"));
		const int32 Count = FString(Case.Source).ParseIntoArray(Out, Case.Delimiter, Case.bCullEmpty);
		EXPECT_EQ(Count, static_cast<int32>(Case.Expected.size())) << U8(Case.Source);
		EXPECT_EQ(ToUtf8List(Out), Case.Expected) << U8(Case.Source);
	}
}

TEST(FStringSplit, LinesAndWhitespace)
{
	TArray<FString> Lines;
	FString(TEXT("l1\r\nl2\rl3\nl4\n\nl5")).ParseIntoArrayLines(Lines);
	EXPECT_EQ(ToUtf8List(Lines), (std::vector<std::string>{ "l1", "l2", "l3", "l4", "l5" }));
	FString(TEXT("l1\r\nl2\rl3\nl4\n\nl5")).ParseIntoArrayLines(Lines, false);
	EXPECT_EQ(ToUtf8List(Lines), (std::vector<std::string>{ "l1", "l2", "l3", "l4", "", "l5" }));

	TArray<FString> Words;
	FString(TEXT("  a b\tc\nd,e ")).ParseIntoArrayWS(Words, TEXT(","));
	EXPECT_EQ(ToUtf8List(Words), (std::vector<std::string>{ "a", "b", "c", "d", "e" }));

	const TCHAR* Delims[] = { TEXT(""), TEXT("--") };
	TArray<FString> Pieces;
	FString(TEXT("x--y")).ParseIntoArray(Pieces, Delims, 2);
	EXPECT_EQ(ToUtf8List(Pieces), (std::vector<std::string>{ "x", "y" }));

	TArray<FString> WithEmpties;
	WithEmpties.Add(TEXT("a"));
	WithEmpties.Add(FString());
	WithEmpties.Add(TEXT("b"));
	EXPECT_EQ(FString::CullArray(&WithEmpties), 2);
}

TEST(FStringSplit, Join)
{
	TArray<FString> Parts;
	EXPECT_EQ(U8(FString::Join(Parts, TEXT(", "))), "");
	Parts.Add(TEXT("a"));
	EXPECT_EQ(U8(FString::Join(Parts, TEXT(", "))), "a");
	Parts.Add(TEXT("b"));
	Parts.Add(TEXT("c"));
	EXPECT_EQ(U8(FString::Join(Parts, TEXT(", "))), "a, b, c");
	EXPECT_EQ(U8(FString::JoinBy(Parts, TEXT("+"), [](const FString& S) { return S.ToUpper(); })), "A+B+C");
}

// Numbers ----------------------------------------------------------------------------------------

TEST(FStringNumbers, IsNumericTable)
{
	struct FCase
	{
		const TCHAR* Text;
		bool bExpected;
	};
	const FCase Cases[] = {
		{ TEXT(""), false }, { TEXT("0"), true }, { TEXT("-1"), true }, { TEXT("+1.5"), true }, { TEXT("1.5.2"), false },
		{ TEXT("1e5"), false }, { TEXT("."), true }, { TEXT("-"), true }, { TEXT(" 1"), false }, { TEXT("1 "), false },
		{ TEXT("0x10"), false }, { TEXT("--1"), false }, { TEXT(".5"), true }, { TEXT("5."), true }, { u"\u0661", false },
	};
	for (const FCase& Case : Cases)
	{
		EXPECT_EQ(FString(Case.Text).IsNumeric(), Case.bExpected) << U8(Case.Text);
	}
}

TEST(FStringNumbers, SanitizeFloatTable)
{
	struct FCase
	{
		double Value;
		int32 MinFractionalDigits;
		const char* Expected;
	};
	const FCase Cases[] = {
		{ 5.0, 1, "5.0" }, { 1.5, 1, "1.5" }, { 1.0 / 3.0, 1, "0.333333" }, { 1e-7, 1, "0.0" }, { -0.0, 1, "0.0" },
		{ 5.0, 0, "5" }, { -2.5, 1, "-2.5" }, { 100.0, 1, "100.0" }, { 0.1, 1, "0.1" }, { 2.0 / 3.0, 1, "0.666667" },
		{ 1.0000004, 1, "1.0" }, { 5.0, 3, "5.000" }, { 1.25, 3, "1.250" }, { 123456.789, 1, "123456.789" },
		{ 1e21, 1, "1000000000000000000000.0" }, { -1e-7, 1, "-0.0" }, { 0.5, 0, "0.5" },
		{ std::numeric_limits<double>::infinity(), 1, "inf" }, { -std::numeric_limits<double>::infinity(), 1, "-inf" },
		{ std::numeric_limits<double>::quiet_NaN(), 1, "nan" },
	};
	for (const FCase& Case : Cases)
	{
		EXPECT_EQ(U8(FString::SanitizeFloat(Case.Value, Case.MinFractionalDigits)), Case.Expected) << Case.Value;
	}
	EXPECT_EQ(U8(LexToSanitizedString(1.5f)), "1.5");
}

TEST(FStringNumbers, IntegersAndLex)
{
	EXPECT_EQ(U8(FString::FromInt(0)), "0");
	EXPECT_EQ(U8(FString::FromInt(std::numeric_limits<int32>::min())), "-2147483648");
	EXPECT_EQ(U8(FString::FormatAsNumber(1234567)), "1,234,567");
	EXPECT_EQ(U8(FString::FormatAsNumber(-1234)), "-1,234");
	EXPECT_EQ(U8(FString::FormatAsNumber(999)), "999");

	EXPECT_EQ(U8(LexToString(42)), "42");
	EXPECT_EQ(U8(LexToString(static_cast<int64>(-7))), "-7");
	EXPECT_EQ(U8(LexToString(3000000000u)), "3000000000");
	EXPECT_EQ(U8(LexToString(std::numeric_limits<uint64>::max())), "18446744073709551615");
	EXPECT_EQ(U8(LexToString(1.5f)), "1.500000");
	EXPECT_EQ(U8(LexToString(2.0)), "2.000000");
	EXPECT_EQ(U8(LexToString(true)), "true");
	EXPECT_EQ(U8(LexToString(false)), "false");
	EXPECT_EQ(U8(LexToString(TEXT("text"))), "text");

	int32 Int = 0;
	LexFromString(Int, TEXT("12abc"));
	EXPECT_EQ(Int, 12);
	EXPECT_FALSE(LexTryParseString(Int, TEXT("abc")));
	EXPECT_TRUE(LexTryParseString(Int, TEXT("0")));
	EXPECT_EQ(Int, 0);
	EXPECT_FALSE(LexTryParseString(Int, TEXT("")));
	EXPECT_TRUE(LexTryParseString(Int, TEXT("-17")));
	EXPECT_EQ(Int, -17);
	float Float = 1.0f;
	EXPECT_TRUE(LexTryParseString(Float, TEXT("0.0")));
	EXPECT_EQ(Float, 0.0f);
	EXPECT_TRUE(LexTryParseString(Float, TEXT("1e3")));
	EXPECT_EQ(Float, 1000.0f);
	bool bValue = false;
	LexFromString(bValue, TEXT("Yes"));
	EXPECT_TRUE(bValue);
	uint64 Big = 0;
	LexFromString(Big, TEXT("0x10"));
	EXPECT_EQ(Big, 16u);
}

TEST(FCStringTest, ParsingTable)
{
	EXPECT_EQ(FCString::Atoi(TEXT("  -42xyz")), -42);
	EXPECT_EQ(FCString::Atoi(TEXT("+7")), 7);
	EXPECT_EQ(FCString::Atoi(TEXT("abc")), 0);
	EXPECT_EQ(FCString::Atoi(TEXT("99999999999")), std::numeric_limits<int32>::max());
	EXPECT_EQ(FCString::Atoi(TEXT("-99999999999")), std::numeric_limits<int32>::min());
	EXPECT_EQ(FCString::Atoi64(TEXT("9223372036854775807")), std::numeric_limits<int64>::max());
	EXPECT_EQ(FCString::Atoi64(TEXT("-9223372036854775808")), std::numeric_limits<int64>::min());
	EXPECT_EQ(FCString::Atoi64(TEXT("99999999999999999999")), std::numeric_limits<int64>::max());
	EXPECT_EQ(FCString::Strtoui64(TEXT("18446744073709551615"), nullptr, 10), std::numeric_limits<uint64>::max());

	TCHAR* End = nullptr;
	const TCHAR* Hex = TEXT("0x1Fz");
	EXPECT_EQ(FCString::Strtoi(Hex, &End, 16), 31);
	EXPECT_EQ(End, Hex + 4);
	EXPECT_EQ(FCString::Strtoi(TEXT("0x1F"), nullptr, 0), 31);
	EXPECT_EQ(FCString::Strtoi(TEXT("017"), nullptr, 0), 15);
	EXPECT_EQ(FCString::Strtoi(TEXT("ff"), nullptr, 16), 255);
	const TCHAR* NoDigits = TEXT("  -x");
	EXPECT_EQ(FCString::Strtoi(NoDigits, &End, 10), 0);
	EXPECT_EQ(End, NoDigits);

	EXPECT_DOUBLE_EQ(FCString::Atof(TEXT("1.5e3")), 1500.0);
	EXPECT_DOUBLE_EQ(FCString::Atod(TEXT("  -0.25")), -0.25);
	EXPECT_DOUBLE_EQ(FCString::Atod(TEXT("+.5")), 0.5);
	EXPECT_DOUBLE_EQ(FCString::Atod(TEXT("abc")), 0.0);
	EXPECT_DOUBLE_EQ(FCString::Atod(TEXT("0x10")), 16.0);
	EXPECT_TRUE(std::isinf(FCString::Atod(TEXT("inf"))));
	EXPECT_TRUE(std::isinf(FCString::Atod(TEXT("1e999"))));
	EXPECT_EQ(FCString::Atod(TEXT("1e-999")), 0.0);
	EXPECT_TRUE(std::isnan(FCString::Atod(TEXT("nan"))));
	const TCHAR* Mixed = TEXT("1.5xyz");
	EXPECT_DOUBLE_EQ(FCString::Strtod(Mixed, &End), 1.5);
	EXPECT_EQ(End, Mixed + 3);
	const TCHAR* NotANumber = TEXT("--1");
	EXPECT_EQ(FCString::Strtod(NotANumber, &End), 0.0);
	EXPECT_EQ(End, NotANumber);
	EXPECT_DOUBLE_EQ(FCString::Atod(u"2.5\u00E9"), 2.5);
}

TEST(FCStringTest, ComparisonAndBool)
{
	EXPECT_LT(FCString::Stricmp(TEXT("_"), TEXT("a")), 0);
	EXPECT_EQ(FCString::Stricmp(TEXT("HeLLo"), TEXT("hello")), 0);
	EXPECT_LT(FCString::Strcmp(TEXT("B"), TEXT("a")), 0);
	EXPECT_EQ(FCString::Strnicmp(TEXT("ABCdef"), TEXT("abcXYZ"), 3), 0);
	EXPECT_NE(FCString::Strncmp(TEXT("ABCdef"), TEXT("abcXYZ"), 3), 0);
	const TCHAR* Haystack = TEXT("find the NEEDLE here");
	EXPECT_EQ(FCString::Stristr(Haystack, TEXT("needle")), Haystack + 9);
	EXPECT_EQ(FCString::Strstr(Haystack, TEXT("needle")), nullptr);
	EXPECT_EQ(FCString::Strlen(TEXT("")), 0);
	EXPECT_TRUE(FCString::IsPureAnsi(TEXT("abc")));
	EXPECT_FALSE(FCString::IsPureAnsi(u"ab\u00E9"));

	struct FCase
	{
		const TCHAR* Text;
		bool bExpected;
	};
	const FCase Cases[] = {
		{ TEXT("True"), true }, { TEXT("yes"), true }, { TEXT("ON"), true }, { TEXT("1"), true }, { TEXT("2"), true },
		{ TEXT("0"), false }, { TEXT("off"), false }, { TEXT("false"), false }, { TEXT("abc"), false }, { TEXT(""), false },
	};
	for (const FCase& Case : Cases)
	{
		EXPECT_EQ(FCString::ToBool(Case.Text), Case.bExpected) << U8(Case.Text);
		EXPECT_EQ(FString(Case.Text).ToBool(), Case.bExpected) << U8(Case.Text);
	}
}

TEST(FStringNumbers, HexBlobs)
{
	const uint8 Bytes[] = { 0x00, 0x7F, 0xAB, 0xFF };
	EXPECT_EQ(U8(BytesToHex(Bytes, 4)), "007FABFF");
	FString Lower;
	BytesToHexLower(Bytes, 4, Lower);
	EXPECT_EQ(U8(Lower), "007fabff");
	uint8 Decoded[4] = {};
	EXPECT_EQ(HexToBytes(FString(TEXT("007fABff")), Decoded), 4);
	EXPECT_EQ(std::vector<uint8>(Decoded, Decoded + 4), std::vector<uint8>(Bytes, Bytes + 4));
	EXPECT_EQ(HexToBytes(FString(TEXT("abc")), Decoded), 2);
	EXPECT_EQ(Decoded[0], 0x0A);
	EXPECT_EQ(Decoded[1], 0xBC);
	EXPECT_TRUE(FString::ToHexBlob(FString::FromHexBlob(Bytes, 4), Decoded, 4));
	EXPECT_FALSE(FString::ToHexBlob(FString(TEXT("ABC")), Decoded, 4));
	EXPECT_EQ(FindMatchingClosingParenthesis(FString(TEXT("f(a(b)c)d")), 0), 7);
	EXPECT_EQ(FindMatchingClosingParenthesis(FString(TEXT("f(a(b")), 0), INDEX_NONE);
}

// UTF-8 ------------------------------------------------------------------------------------------

TEST(FStringUtf8, RoundTripsNonAsciiAndEmoji)
{
	const char* Utf8 = "h\xC3\xA9llo w\xC3\xB6rld \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x98\x80!";
	const FString Wide(UTF8_TO_TCHAR(Utf8));
	EXPECT_EQ(Wide.Len(), 18); // the emoji is a surrogate pair
	EXPECT_EQ(Wide[1], TCHAR(0xE9));
	EXPECT_EQ(Wide[15], TCHAR(0xD83D));
	EXPECT_EQ(Wide[16], TCHAR(0xDE00));
	EXPECT_EQ(std::string(TCHAR_TO_UTF8(*Wide)), Utf8);

	const FTCHARToUTF8 Converter(*Wide);
	EXPECT_EQ(Converter.Length(), static_cast<int32>(std::strlen(Utf8)));
	EXPECT_EQ(StringConv::Utf8LengthOfUtf16(*Wide, Wide.Len()), Converter.Length());
	const FUTF8ToTCHAR Back(Converter.Get(), Converter.Length());
	EXPECT_EQ(Back.Length(), Wide.Len());
	EXPECT_TRUE(FString(Back.Get()).Equals(Wide));

	EXPECT_TRUE(UTF8ToFString("\xF0\x9F\x98\x80").Equals(FString(u"\U0001F600")));
	EXPECT_EQ(FStringToUTF8(FString(u"\U0001F600")), "\xF0\x9F\x98\x80");
	EXPECT_EQ(FString(u8"\u00E9t\u00E9").Len(), 3);
}

TEST(FStringUtf8, InvalidInputBecomesReplacementCharacters)
{
	struct FCase
	{
		const char* Utf8;
		std::u16string Expected;
	};
	const FCase Cases[] = {
		{ "\xFF", u"\uFFFD" },
		{ "a\xC3", u"a\uFFFD" },                        // cut short at the end
		{ "\xE2\x82" "A", u"\uFFFDA" },                 // cut short before ASCII: one replacement
		{ "\xC0\xAF", u"\uFFFD\uFFFD" },                // overlong
		{ "\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD" },      // an encoded surrogate
		{ "\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD" }, // above U+10FFFF
		{ "\x80x", u"\uFFFDx" },                        // stray continuation byte
		{ "ok", u"ok" },
	};
	for (const FCase& Case : Cases)
	{
		EXPECT_TRUE(UTF8ToFString(Case.Utf8).View() == Case.Expected) << Case.Utf8;
	}

	EXPECT_EQ(FStringToUTF8(FString(u"\xD800")), "\xEF\xBF\xBD");
	EXPECT_EQ(FStringToUTF8(FString(u"a\xDC00" u"b")), "a\xEF\xBF\xBD" "b");
	EXPECT_EQ(FStringToUTF8(FString(u"\xD83D" u"x")), "\xEF\xBF\xBDx");
}

TEST(FStringUtf8, AnsiConstructorWidensBytes)
{
	const FString Latin1("caf\xE9");
	EXPECT_EQ(Latin1.Len(), 4);
	EXPECT_EQ(Latin1[3], TCHAR(0xE9));
	// UTF-8 bytes through the ANSI constructor are not decoded: that is UTF8_TO_TCHAR's job.
	EXPECT_EQ(FString("h\xC3\xA9").Len(), 3);
	EXPECT_EQ(FString(UTF8_TO_TCHAR("h\xC3\xA9")).Len(), 2);
	EXPECT_EQ(U8(FString(ANSI_TO_TCHAR("plain"))), "plain");
	EXPECT_TRUE(FString(static_cast<const TCHAR*>(nullptr)).IsEmpty());
	EXPECT_TRUE(FString(static_cast<const ANSICHAR*>(nullptr)).IsEmpty());
}

TEST(FStringFormat, NamedAndOrderedTokens)
{
	FStringFormatOrderedArguments Ordered;
	Ordered.Add(TEXT("Player"));
	Ordered.Add(3);
	Ordered.Add(1.5);
	Ordered.Add(FString(TEXT("x")));
	EXPECT_EQ(U8(FString::Format(TEXT("{0} has {1} lives at {2}, {3}{3}, {4} `{0`}"), Ordered)), "Player has 3 lives at 1.500000, xx, {4} {0}");

	FStringFormatNamedArguments Named;
	Named.Add(TEXT("Name"), TEXT("Door"));
	Named.Add(TEXT("Count"), static_cast<uint64>(12));
	EXPECT_EQ(U8(FString::Format(TEXT("{name}: { Count } {Missing} {unclosed"), Named)), "Door: 12 {Missing} {unclosed");
}

TEST(FStringStorage, AssignmentConcatenationAndReset)
{
	FString Text(TEXT("abcdef"));
	Text = *Text + 2; // assigning from inside itself
	EXPECT_EQ(U8(Text), "cdef");
	Text = static_cast<const TCHAR*>(nullptr);
	EXPECT_TRUE(Text.IsEmpty());

	FString Moved(TEXT("left"));
	const FString Joined = std::move(Moved) + FString(TEXT("+right"));
	EXPECT_EQ(U8(Joined), "left+right");
	EXPECT_EQ(U8(FString(TEXT("a")) + FString(TEXT("b"))), "ab");
	EXPECT_EQ(U8(FString(TEXT("x")) + static_cast<const TCHAR*>(nullptr)), "x");
	EXPECT_EQ(U8(static_cast<const TCHAR*>(nullptr) + FString(TEXT("y"))), "y");

	FString Reserved;
	Reserved.Reserve(100);
	EXPECT_TRUE(Reserved.IsEmpty());
	EXPECT_GE(Reserved.GetAllocatedSize(), 100u * sizeof(TCHAR));
	Reserved = TEXT("content");
	Reserved.Reset();
	EXPECT_TRUE(Reserved.IsEmpty());
	EXPECT_EQ(**Reserved, TCHAR(0));
	Reserved.Empty();
	EXPECT_EQ(Reserved.Len(), 0);

	EXPECT_EQ(U8(FString(3, TEXT("abcdef"))), "abc");
	EXPECT_EQ(U8(FString::ConstructFromPtrSize(TEXT("abcdef"), 2)), "ab");
	EXPECT_EQ(FString::ConstructFromPtrSize(u"a\0b", 3).Len(), 3);
	EXPECT_EQ(U8(FString(std::u16string_view(u"view"))), "view");

	FString Counted;
	for (const TCHAR Char : FString(TEXT("xyz")))
	{
		Counted.AppendChar(FChar::ToUpper(Char));
	}
	EXPECT_EQ(U8(Counted), "XYZ");
	FString Spaced(TEXT(" a b  c "));
	Spaced.RemoveSpacesInline();
	EXPECT_EQ(U8(Spaced), "abc");
	FString WithNul = FString::ConstructFromPtrSize(u"ab\0cd", 5);
	WithNul.TrimToNullTerminator();
	EXPECT_EQ(U8(WithNul), "ab");
}

TEST(TCharTest, ClassificationIsFixedAndAsciiCaseOnly)
{
	EXPECT_TRUE(FChar::IsDigit(TCHAR('7')));
	EXPECT_FALSE(FChar::IsDigit(TCHAR(0x0661)));
	EXPECT_TRUE(FChar::IsAlpha(TCHAR('q')));
	EXPECT_FALSE(FChar::IsAlpha(TCHAR('_')));
	EXPECT_TRUE(FChar::IsWhitespace(TCHAR('\v')));
	EXPECT_TRUE(FChar::IsWhitespace(TCHAR(0x2028)));
	EXPECT_FALSE(FChar::IsWhitespace(TCHAR(0xA0)));
	EXPECT_EQ(FChar::ToUpper(TCHAR(0xE9)), TCHAR(0xE9));
	EXPECT_EQ(FChar::ToLower(TCHAR('Z')), TCHAR('z'));
	EXPECT_EQ(FCharAnsi::ToUpper('m'), 'M');
	EXPECT_TRUE(FChar::IsHexDigit(TCHAR('F')));
	EXPECT_FALSE(FChar::IsHexDigit(TCHAR('g')));
}

// The hash folds case several code units at a time; strings equal under == must hash alike at every
// length and alignment, and folding must stay ASCII-only as the comparison is.
TEST(FStringHash, EqualStringsHashAlikeAtEveryLength)
{
	const TCHAR Pattern[] = TEXT("aZ_9mQ@[`{Ãã");
	const int32 PatternLen = UE_ARRAY_COUNT(Pattern) - 1;
	for (int32 Len = 0; Len <= 40; ++Len)
	{
		FString Lower;
		FString Upper;
		for (int32 Index = 0; Index < Len; ++Index)
		{
			const TCHAR Ch = Pattern[(Index * 7) % PatternLen];
			Lower.AppendChar(Ch >= TEXT('A') && Ch <= TEXT('Z') ? TCHAR(Ch + 32) : Ch);
			Upper.AppendChar(Ch >= TEXT('a') && Ch <= TEXT('z') ? TCHAR(Ch - 32) : Ch);
		}
		SCOPED_TRACE(Len);
		ASSERT_TRUE(Lower == Upper);
		EXPECT_EQ(GetTypeHash(Lower), GetTypeHash(Upper));
	}
	// Non-ASCII letters are not folded: these differ under == and are distinct keys.
	EXPECT_FALSE(FString(TEXT("Ã")) == FString(TEXT("ã")));
	TMap<FString, int32> Map;
	Map.Add(TEXT("Ãbc"), 1);
	Map.Add(TEXT("ãBC"), 2);
	EXPECT_EQ(Map.Num(), 2);
}
