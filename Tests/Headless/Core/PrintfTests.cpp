#include "Headless/Core/StringTestUtils.h"

#include <gtest/gtest.h>

#include <limits>

using UE::Core::Private::FormatString::CheckFormat;
using UE::Core::Private::FormatString::ClassifyArg;
using UE::Core::Private::FormatString::EArgKind;
using UE::Core::Private::FormatString::EFormatCheck;

// Each row is one call, because the format of a Printf must be a literal checked while compiling.
#define EXPECT_PRINTF(Expected, Format, ...) EXPECT_EQ(U8(FString::Printf(TEXT(Format), ##__VA_ARGS__)), Expected) << "format: " << Format

namespace
{
	enum class ETestEnum : uint8
	{
		First = 3,
	};
}

TEST(FStringPrintf, Integers)
{
	EXPECT_PRINTF("42", "%d", 42);
	EXPECT_PRINTF("-42", "%d", -42);
	EXPECT_PRINTF("7", "%i", 7);
	EXPECT_PRINTF("4294967295", "%u", 4294967295u);
	EXPECT_PRINTF("4294967295", "%u", -1);                 // read at the argument's width
	EXPECT_PRINTF("-1", "%d", 0xFFFFFFFFu);
	EXPECT_PRINTF("-9223372036854775808", "%lld", std::numeric_limits<int64>::min());
	EXPECT_PRINTF("18446744073709551615", "%llu", std::numeric_limits<uint64>::max());
	EXPECT_PRINTF("5", "%lu", 5ul);
	EXPECT_PRINTF("1 0", "%d %d", true, false);
	EXPECT_PRINTF("3", "%d", ETestEnum::First);
	EXPECT_PRINTF("65", "%d", TCHAR('A'));
	EXPECT_PRINTF("2345", "%hx", 0x12345);
}

TEST(FStringPrintf, IntegerWidthsFlagsAndPrecision)
{
	EXPECT_PRINTF("   42", "%5d", 42);
	EXPECT_PRINTF("42   |", "%-5d|", 42);
	EXPECT_PRINTF("00042", "%05d", 42);
	EXPECT_PRINTF("-0042", "%05d", -42);
	EXPECT_PRINTF("+5", "%+d", 5);
	EXPECT_PRINTF(" 5", "% d", 5);
	EXPECT_PRINTF("007", "%.3d", 7);
	EXPECT_PRINTF("", "%.0d", 0);
	EXPECT_PRINTF("05", "%02d", 5);
	EXPECT_PRINTF("123", "%02d", 123);
	EXPECT_PRINTF("  007", "%05.3d", 7);                   // a precision turns off zero padding
	EXPECT_PRINTF("   42", "%*d", 5, 42);
	EXPECT_PRINTF("42   |", "%*d|", -5, 42);
	EXPECT_PRINTF("42   |", "%-*d|", 5, 42);
}

TEST(FStringPrintf, Hexadecimal)
{
	EXPECT_PRINTF("ff", "%x", 255);
	EXPECT_PRINTF("FF", "%X", 255);
	EXPECT_PRINTF("0000BEEF", "%08X", 0xBEEFu);
	EXPECT_PRINTF("0xff", "%#x", 255);
	EXPECT_PRINTF("0XFF", "%#X", 255);
	EXPECT_PRINTF("0", "%#x", 0);
	EXPECT_PRINTF("ffffffff", "%x", -1);
	EXPECT_PRINTF("ffffffffffffffff", "%llx", -1ll);
	EXPECT_PRINTF("10", "%o", 8);
	EXPECT_PRINTF("010", "%#o", 8);
	EXPECT_PRINTF("8CDD81286D894EBA", "%08X%08X", 0x8CDD8128u, 0x6D894EBAu);
}

TEST(FStringPrintf, FloatingPoint)
{
	EXPECT_PRINTF("3.141590", "%f", 3.14159);
	EXPECT_PRINTF("1.500000", "%f", 1.5f);
	EXPECT_PRINTF("3.14", "%.2f", 3.14159);
	EXPECT_PRINTF("1.000", "%.3f", 1.0005);               // 1.0005 is slightly below the half in binary
	EXPECT_PRINTF("2.001", "%.3f", 2.0005);               // and 2.0005 slightly above it
	EXPECT_PRINTF("0.12", "%.2f", 0.125);                 // exact ties round to even
	EXPECT_PRINTF("0.38", "%.2f", 0.375);
	EXPECT_PRINTF("2", "%.0f", 2.5);
	EXPECT_PRINTF("4", "%.0f", 3.5);
	EXPECT_PRINTF("0", "%.0f", 0.4);
	EXPECT_PRINTF("-0.000000", "%f", -0.0);
	EXPECT_PRINTF("1000000000000000000000.000000", "%f", 1e21);
	EXPECT_PRINTF("   3.142", "%8.3f", 3.14159);
	EXPECT_PRINTF("3.14    |", "%-8.2f|", 3.14159);
	EXPECT_PRINTF("-0003.14", "%08.2f", -3.14159);
	EXPECT_PRINTF("+2.0", "%+.1f", 2.0);
	EXPECT_PRINTF("3.14", "%.*f", 2, 3.14159);
	EXPECT_PRINTF("3.", "%#.0f", 3.0);
	EXPECT_PRINTF("1.234568e+04", "%e", 12345.678);
	EXPECT_PRINTF("1.234568E+04", "%E", 12345.678);
	EXPECT_PRINTF("1.2e-07", "%.1e", 1.23e-7);
	EXPECT_PRINTF("0.0001", "%g", 0.0001);
	EXPECT_PRINTF("1e-05", "%g", 1e-5);
	EXPECT_PRINTF("1E-05", "%G", 1e-5);
	EXPECT_PRINTF("1.23457e+08", "%g", 123456789.0);
	EXPECT_PRINTF("100000", "%g", 100000.0);
	EXPECT_PRINTF("0.10000000000000001", "%.17g", 0.1);
	EXPECT_PRINTF("1e+21", "%.17g", 1e21);
	EXPECT_PRINTF("5", "%.17g", 5.0);
	EXPECT_PRINTF("0x1p+0", "%a", 1.0);
	EXPECT_PRINTF("inf", "%f", std::numeric_limits<double>::infinity());
	EXPECT_PRINTF("-inf", "%f", -std::numeric_limits<double>::infinity());
	EXPECT_PRINTF("  nan", "%5.1f", std::numeric_limits<double>::quiet_NaN());
	EXPECT_PRINTF("  inf", "%05f", std::numeric_limits<double>::infinity()); // no zero padding for inf
}

TEST(FStringPrintf, StringsAndCharacters)
{
	const FString Name(TEXT("Player"));
	const TCHAR* Null = nullptr;
	EXPECT_PRINTF("abc", "%s", TEXT("abc"));
	EXPECT_PRINTF("Hello Player!", "Hello %s!", *Name);
	EXPECT_PRINTF("       abc", "%10s", TEXT("abc"));
	EXPECT_PRINTF("abc       |", "%-10s|", TEXT("abc"));
	EXPECT_PRINTF("ab", "%.2s", TEXT("abc"));
	EXPECT_PRINTF("(null)", "%s", Null);
	EXPECT_PRINTF("(null)", "%s", nullptr);
	EXPECT_PRINTF("narrow", "%hs", "narrow");
	EXPECT_PRINTF("caf\xC3\xA9", "%hs", u8"caf\u00E9");
	EXPECT_PRINTF("x", "%c", TCHAR('x'));
	EXPECT_PRINTF("A", "%c", 65);
	EXPECT_PRINTF("  x", "%3c", 'x');
	EXPECT_PRINTF("\xF0\x9F\x98\x80", "%c", 0x1F600);
	EXPECT_PRINTF("ab", "a%cb", 0);                        // a NUL character is left out
	EXPECT_PRINTF("%", "%%");
	EXPECT_PRINTF("100%", "100%%");
	EXPECT_PRINTF("plain", "plain");
	EXPECT_PRINTF("\xC3\xA9:1", "\u00E9:%d", 1);

	EXPECT_PRINTF("(nil)", "%p", nullptr);
	int32 Local = 0;
	EXPECT_TRUE(FString::Printf(TEXT("%p"), &Local).StartsWith(TEXT("0x")));
}

TEST(FStringPrintf, LongOutputAndAppendf)
{
	const FString Long = FString::ChrN(3000, TCHAR('z'));
	const FString Printed = FString::Printf(TEXT("<%s>%d"), *Long, 7);
	EXPECT_EQ(Printed.Len(), 3003);
	EXPECT_TRUE(Printed.EndsWith(TEXT("z>7")));

	FString Built(TEXT("Node"));
	Built.Appendf(TEXT("_%d"), 3).Appendf(TEXT("/%s"), TEXT("Pin"));
	EXPECT_EQ(U8(Built), "Node_3/Pin");
	EXPECT_PRINTF("999999", "%d", 999999);
	// A width from '*' is clamped rather than allocating without bound.
	EXPECT_LE(FString::Printf(TEXT("%*d"), 1 << 30, 1).Len(), 5000);
}

TEST(FStringPrintf, ArgumentKinds)
{
	static_assert(ClassifyArg<int32>() == EArgKind::SignedInt);
	static_assert(ClassifyArg<uint8>() == EArgKind::UnsignedInt);
	static_assert(ClassifyArg<TCHAR>() == EArgKind::UnsignedInt);
	static_assert(ClassifyArg<double>() == EArgKind::Float);
	static_assert(ClassifyArg<const TCHAR*>() == EArgKind::TCharPointer);
	static_assert(ClassifyArg<TCHAR*>() == EArgKind::TCharPointer);
	static_assert(ClassifyArg<const ANSICHAR*>() == EArgKind::AnsiPointer);
	static_assert(ClassifyArg<const int32*>() == EArgKind::Pointer);
	static_assert(ClassifyArg<std::nullptr_t>() == EArgKind::NullPointer);
	// The kinds that must never reach Printf: passing them is a compile error.
	static_assert(ClassifyArg<FString>() == EArgKind::Unsupported);
	static_assert(ClassifyArg<std::string>() == EArgKind::Unsupported);
	static_assert(ClassifyArg<FName>() == EArgKind::Unsupported);
	SUCCEED();
}

TEST(FStringPrintf, FormatCheckTable)
{
	struct FCase
	{
		const TCHAR* Format;
		std::vector<EArgKind> Kinds;
		EFormatCheck Expected;
	};
	const EArgKind Int = EArgKind::SignedInt;
	const EArgKind Float = EArgKind::Float;
	const EArgKind Str = EArgKind::TCharPointer;
	const EArgKind Ansi = EArgKind::AnsiPointer;
	const EArgKind Object = EArgKind::Unsupported;
	const FCase Cases[] = {
		{ TEXT("%d %s %f"), { Int, Str, Float }, EFormatCheck::Ok },
		{ TEXT("%s"), { Object }, EFormatCheck::PercentSNeedsTCharPointer },
		{ TEXT("%s"), { Ansi }, EFormatCheck::PercentSNeedsTCharPointer },
		{ TEXT("%hs"), { Ansi }, EFormatCheck::Ok },
		{ TEXT("%hs"), { Str }, EFormatCheck::PercentHsNeedsAnsiOrUtf8Pointer },
		{ TEXT("%d"), { Float }, EFormatCheck::IntegerSpecifierGivenNonInteger },
		{ TEXT("%f"), { Int }, EFormatCheck::FloatSpecifierGivenNonFloat },
		{ TEXT("%d %d"), { Int }, EFormatCheck::TooFewArguments },
		{ TEXT("%d"), { Int, Int }, EFormatCheck::TooManyArguments },
		{ TEXT("%c"), { Str }, EFormatCheck::PercentCNeedsCharacter },
		{ TEXT("%p"), { Int }, EFormatCheck::PercentPNeedsPointer },
		{ TEXT("%*d"), { Float, Int }, EFormatCheck::StarNeedsInteger },
		{ TEXT("%.*f"), { Int, Float }, EFormatCheck::Ok },
		{ TEXT("%k"), { Int }, EFormatCheck::UnknownConversion },
		{ TEXT("100%"), {}, EFormatCheck::IncompleteSpecifier },
		{ TEXT("%5."), { Int }, EFormatCheck::IncompleteSpecifier },
		{ TEXT("%n"), { Int }, EFormatCheck::PercentNNotSupported },
		{ TEXT("%% %-08.3lld %I64u %zu"), { Int, Int, Int }, EFormatCheck::Ok },
		{ TEXT("no specifiers"), {}, EFormatCheck::Ok },
		{ TEXT("no specifiers"), { Int }, EFormatCheck::TooManyArguments },
	};
	for (const FCase& Case : Cases)
	{
		const EFormatCheck Result = CheckFormat(Case.Format, FCString::Strlen(Case.Format), Case.Kinds.data(), static_cast<int32>(Case.Kinds.size()));
		EXPECT_EQ(static_cast<int32>(Result), static_cast<int32>(Case.Expected)) << U8(Case.Format);
	}
}
