#include "Math/Box2D.h"
#include "Math/Color.h"
#include "Math/IntPoint.h"
#include "Math/Quat.h"
#include "Math/Rotator.h"
#include "Math/Transform.h"
#include "Math/UnrealMathUtility.h"
#include "Math/Vector.h"
#include "Math/Vector2D.h"
#include "Misc/DefaultValueHelper.h"

#include "StringTestUtils.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{
	void ExpectVectorNear(const FVector& Actual, const FVector& Expected, double Tolerance = 1e-9)
	{
		EXPECT_NEAR(Actual.X, Expected.X, Tolerance);
		EXPECT_NEAR(Actual.Y, Expected.Y, Tolerance);
		EXPECT_NEAR(Actual.Z, Expected.Z, Tolerance);
	}
}

// ---- Text forms: exactly what the engine prints ------------------------------------------

TEST(MathText, ToStringUsesTheEngineFormats)
{
	struct FCase
	{
		FString Actual;
		const char* Expected;
	};
	const FCase Cases[] = {
		{ FVector(1, 2, 3).ToString(), "X=1.000 Y=2.000 Z=3.000" },
		{ FVector(-12.3456, 0.0004, 1234567.25).ToString(), "X=-12.346 Y=0.000 Z=1234567.250" },
		{ FVector2D(0.5, -7).ToString(), "X=0.500 Y=-7.000" },
		{ FRotator(10, 20.5, -30).ToString(), "P=10.000000 Y=20.500000 R=-30.000000" },
		{ FQuat::Identity.ToString(), "X=0.000000000 Y=0.000000000 Z=0.000000000 W=1.000000000" },
		{ FLinearColor(1, 0.5f, 0.25f, 1).ToString(), "(R=1.000000,G=0.500000,B=0.250000,A=1.000000)" },
		{ FColor(255, 128, 0, 64).ToString(), "(R=255,G=128,B=0,A=64)" },
		{ FColor(255, 128, 0, 64).ToHex(), "FF800040" },
		{ FColor(1, 2, 3).ToHex(), "010203FF" },
		{ FIntPoint(-3, 40).ToString(), "X=-3 Y=40" },
		{ FBox2D(FVector2D(0, 1), FVector2D(2, 3)).ToString(), "bIsValid=true, Min=(X=0.000 Y=1.000), Max=(X=2.000 Y=3.000)" },
		{ FBox2D(ForceInit).ToString(), "bIsValid=false, Min=(X=0.000 Y=0.000), Max=(X=0.000 Y=0.000)" },
		{ FVector(0, 1.5, -2).ToCompactString(), "V(Y=1.50, Z=-2.00)" },
		{ FVector(0.00001, 0, 0).ToCompactString(), "V(0)" },
		{ FRotator(0, 0, 45).ToCompactString(), "R(R=45.00)" },
		{ FRotator(360, -720, 0).ToCompactString(), "R(0)" },
	};
	for (const FCase& Case : Cases)
	{
		EXPECT_EQ(U8(Case.Actual), Case.Expected);
	}
}

TEST(MathText, TransformToStringIsTranslationRotationScale)
{
	const FTransform Transform(FRotator(0, 90, 0), FVector(1, 2, 3), FVector(1, 1, 2));
	EXPECT_EQ(U8(Transform.ToString()), "1.000000,2.000000,3.000000|0.000000,90.000000,0.000000|1.000000,1.000000,2.000000");
	EXPECT_EQ(U8(FTransform::Identity.ToString()), "0.000000,0.000000,0.000000|0.000000,0.000000,0.000000|1.000000,1.000000,1.000000");

	// Rotations recovered from quaternions must not print negative zeros.
	const FTransform Rolled(FRotator(0, 0, -90), FVector::ZeroVector);
	EXPECT_EQ(U8(Rolled.ToString()), "0.000000,0.000000,0.000000|0.000000,0.000000,-90.000000|1.000000,1.000000,1.000000");
}

TEST(MathText, VectorInitFromStringFollowsParseValueRules)
{
	FVector Vector;
	EXPECT_TRUE(Vector.InitFromString(TEXT("X=1.5 Y=-2 Z=3e2")));
	EXPECT_EQ(Vector, FVector(1.5, -2, 300));

	// Keys are found anywhere, in any order and case.
	EXPECT_TRUE(Vector.InitFromString(TEXT("(z=3, y=2, x=1)")));
	EXPECT_EQ(Vector, FVector(1, 2, 3));

	// A missing key fails; the components found before it stay set.
	EXPECT_FALSE(Vector.InitFromString(TEXT("X=4 Y=5")));
	EXPECT_EQ(Vector, FVector(4, 5, 0));

	// As in the engine, finding the key is what counts: a value that is not a number reads as 0.
	EXPECT_TRUE(Vector.InitFromString(TEXT("X=abc Y=1 Z=2")));
	EXPECT_EQ(Vector, FVector(0, 1, 2));

	// Keys inside quotes are not seen.
	EXPECT_FALSE(Vector.InitFromString(TEXT("\"X=1\" Y=2 Z=3")));

	EXPECT_FALSE(Vector.InitFromString(FString()));
	EXPECT_EQ(Vector, FVector::ZeroVector);
}

TEST(MathText, ToStringRoundTripsThroughInitFromString)
{
	const FVector Vectors[] = { FVector(1, 2, 3), FVector(-0.25, 1024, 7.125), FVector::ZeroVector };
	for (const FVector& Original : Vectors)
	{
		FVector Parsed(99);
		ASSERT_TRUE(Parsed.InitFromString(Original.ToString()));
		EXPECT_EQ(Parsed, Original);
	}

	FVector2D Parsed2D;
	ASSERT_TRUE(Parsed2D.InitFromString(FVector2D(-3.5, 8).ToString()));
	EXPECT_EQ(Parsed2D, FVector2D(-3.5, 8));

	FRotator ParsedRotator;
	ASSERT_TRUE(ParsedRotator.InitFromString(FRotator(12.5, -90, 180).ToString()));
	EXPECT_EQ(ParsedRotator, FRotator(12.5, -90, 180));
	EXPECT_FALSE(ParsedRotator.InitFromString(TEXT("P=1 Y=2")));

	FQuat ParsedQuat;
	const FQuat Original = FRotator(10, 20, 30).Quaternion();
	ASSERT_TRUE(ParsedQuat.InitFromString(Original.ToString()));
	EXPECT_TRUE(ParsedQuat.Equals(Original, 1e-8));

	FLinearColor ParsedColor;
	ASSERT_TRUE(ParsedColor.InitFromString(FLinearColor(0.5f, 0.25f, 1, 0.75f).ToString()));
	EXPECT_EQ(ParsedColor, FLinearColor(0.5f, 0.25f, 1, 0.75f));

	FColor ParsedFColor;
	ASSERT_TRUE(ParsedFColor.InitFromString(FColor(10, 20, 30, 40).ToString()));
	EXPECT_EQ(ParsedFColor, FColor(10, 20, 30, 40));

	FIntPoint ParsedPoint;
	ASSERT_TRUE(ParsedPoint.InitFromString(FIntPoint(-7, 12).ToString()));
	EXPECT_EQ(ParsedPoint, FIntPoint(-7, 12));

	FVector Compact;
	ASSERT_TRUE(Compact.InitFromCompactString(FVector(0, 1.5, 0).ToCompactString()));
	EXPECT_EQ(Compact, FVector(0, 1.5, 0));
	ASSERT_TRUE(Compact.InitFromCompactString(TEXT("V(0)")));
	EXPECT_EQ(Compact, FVector::ZeroVector);
}

TEST(MathText, ColorInitFromStringTreatsAlphaAsOptional)
{
	FLinearColor Linear;
	EXPECT_TRUE(Linear.InitFromString(TEXT("(R=0.5,G=0.25,B=1.0)")));
	EXPECT_EQ(Linear, FLinearColor(0.5f, 0.25f, 1.0f, 1.0f));
	EXPECT_FALSE(Linear.InitFromString(TEXT("(R=1,G=1)")));

	FColor Color;
	EXPECT_TRUE(Color.InitFromString(TEXT("(R=1,G=2,B=3)")));
	EXPECT_EQ(Color, FColor(1, 2, 3, 255));
	// A byte value that is not a number fails (zero that does not start with a digit).
	EXPECT_FALSE(Color.InitFromString(TEXT("(R=red,G=2,B=3)")));
	EXPECT_TRUE(Color.InitFromString(TEXT("(R=0,G=0,B=0,A=0)")));
	EXPECT_EQ(Color, FColor(0, 0, 0, 0));
}

TEST(MathText, TransformInitFromStringAcceptsBothPartForms)
{
	FTransform Transform;
	ASSERT_TRUE(Transform.InitFromString(TEXT("1,2,3|0,90,0|2,2,2")));
	ExpectVectorNear(Transform.GetLocation(), FVector(1, 2, 3));
	EXPECT_TRUE(Transform.Rotator().Equals(FRotator(0, 90, 0), 1e-6));
	ExpectVectorNear(Transform.GetScale3D(), FVector(2, 2, 2));

	// Whitespace is ignored and non-numeric parts fall back to the "X=" and "P=" forms.
	ASSERT_TRUE(Transform.InitFromString(TEXT(" 1 , 2 , 3 | P=10,Y=0,R=0 | X=1,Y=1,Z=1")));
	EXPECT_TRUE(Transform.Rotator().Equals(FRotator(10, 0, 0), 1e-6));

	const FTransform Before = Transform;
	EXPECT_FALSE(Transform.InitFromString(TEXT("1,2,3|0,90,0")));
	EXPECT_FALSE(Transform.InitFromString(TEXT("1,2|0,90,0|1,1,1")));
	EXPECT_FALSE(Transform.InitFromString(TEXT("1,2,3,4|0,90,0|1,1,1")));
	EXPECT_TRUE(Transform.Identical(Before));

	FTransform RoundTrip;
	const FTransform Original(FRotator(15, -30, 45), FVector(-5, 6.5, 100), FVector(1, 2, 3));
	ASSERT_TRUE(RoundTrip.InitFromString(Original.ToString()));
	EXPECT_TRUE(RoundTrip.Equals(Original, 1e-5));
}

TEST(MathText, ColorFromHexAcceptsTheEngineLengths)
{
	struct FCase
	{
		const TCHAR* Text;
		FColor Expected;
	};
	const FCase Cases[] = {
		{ TEXT("#FF8000"), FColor(255, 128, 0, 255) },
		{ TEXT("ff8000"), FColor(255, 128, 0, 255) },
		{ TEXT("F80"), FColor(255, 136, 0, 255) },
		{ TEXT("#11223344"), FColor(0x11, 0x22, 0x33, 0x44) },
		{ TEXT("#zz0000"), FColor(0, 0, 0, 255) },
		{ TEXT("12345"), FColor(0, 0, 0, 0) },
		{ TEXT(""), FColor(0, 0, 0, 0) },
		{ TEXT("#"), FColor(0, 0, 0, 0) },
	};
	for (const FCase& Case : Cases)
	{
		EXPECT_EQ(FColor::FromHex(Case.Text), Case.Expected) << U8(Case.Text);
	}
	EXPECT_EQ(FColor::FromHex(FColor(9, 8, 7, 6).ToHex()), FColor(9, 8, 7, 6));
}

// ---- Colour conversions -------------------------------------------------------------------

TEST(MathColor, FColorStoresBytesInEngineOrder)
{
	const FColor Color(0x11, 0x22, 0x33, 0x44);
	const uint8* Bytes = reinterpret_cast<const uint8*>(&Color);
	EXPECT_EQ(Bytes[0], 0x33); // B
	EXPECT_EQ(Bytes[1], 0x22); // G
	EXPECT_EQ(Bytes[2], 0x11); // R
	EXPECT_EQ(Bytes[3], 0x44); // A
	EXPECT_EQ(Color.DWColor(), 0x44112233u);
	EXPECT_EQ(FColor(0x44112233u), Color);
}

TEST(MathColor, SRGBConversionsMatchTheCurve)
{
	// The engine's table values at a few points of the sRGB curve.
	EXPECT_FLOAT_EQ(FLinearColor::FromSRGBColor(FColor(0, 0, 0)).R, 0.0f);
	EXPECT_FLOAT_EQ(FLinearColor::FromSRGBColor(FColor(1, 0, 0)).R, 0.000303526983548838f);
	EXPECT_FLOAT_EQ(FLinearColor::FromSRGBColor(FColor(128, 0, 0)).R, 0.215860498718652f);
	EXPECT_FLOAT_EQ(FLinearColor::FromSRGBColor(FColor(255, 0, 0)).R, 1.0f);
	EXPECT_FLOAT_EQ(FLinearColor::FromSRGBColor(FColor(0, 0, 0, 51)).A, 0.2f);

	// Every byte survives linear and back.
	for (int32 Value = 0; Value < 256; ++Value)
	{
		const FColor Original(uint8(Value), uint8(255 - Value), uint8(Value / 2), uint8(Value));
		EXPECT_EQ(FLinearColor(Original).ToFColor(true), Original) << Value;
	}

	EXPECT_EQ(FLinearColor(0.5f, 0.5f, 0.5f, 0.5f).ToFColor(false), FColor(128, 128, 128, 128));
	EXPECT_EQ(FLinearColor(2.0f, -1.0f, std::numeric_limits<float>::quiet_NaN(), 1.0f).ToFColor(false), FColor(255, 0, 0, 255));
	EXPECT_EQ(FLinearColor(2.0f, -1.0f, std::numeric_limits<float>::quiet_NaN(), 1.0f).ToFColor(true), FColor(255, 0, 0, 255));
	EXPECT_EQ(FLinearColor(0.5f, 0.5f, 0.5f, 0.5f).QuantizeFloor(), FColor(127, 127, 127, 127));
}

TEST(MathColor, HSVRoundTrip)
{
	const FLinearColor Colors[] = { FLinearColor::Red, FLinearColor(0.2f, 0.4f, 0.6f, 0.5f), FLinearColor(0.9f, 0.1f, 0.5f) };
	for (const FLinearColor& Color : Colors)
	{
		EXPECT_TRUE(Color.LinearRGBToHSV().HSVToLinearRGB().Equals(Color, 1e-5f));
	}
	const FLinearColor Hsv = FLinearColor(0, 0, 1).LinearRGBToHSV();
	EXPECT_FLOAT_EQ(Hsv.R, 240.0f);
	EXPECT_FLOAT_EQ(Hsv.G, 1.0f);
	EXPECT_FLOAT_EQ(Hsv.B, 1.0f);
}

// ---- FMath --------------------------------------------------------------------------------

TEST(MathUtility, RoundingModes)
{
	struct FCase
	{
		double Value;
		int64 RoundToInt;
		double HalfToEven;
		double HalfFromZero;
		double HalfToZero;
		int64 Floor;
		int64 Ceil;
		int64 Trunc;
	};
	const FCase Cases[] = {
		{ 2.5, 3, 2, 3, 2, 2, 3, 2 },
		{ 3.5, 4, 4, 4, 3, 3, 4, 3 },
		{ -2.5, -2, -2, -3, -2, -3, -2, -2 },
		{ -3.5, -3, -4, -4, -3, -4, -3, -3 },
		{ -2.6, -3, -3, -3, -3, -3, -2, -2 },
		// Within UE_SMALL_NUMBER of a half: only RoundHalfToEven snaps it to 0.5; the from/to-zero rules
		// look at the exact fraction, as the 5.x engine does.
		{ 0.49999999999, 0, 0, 0, 0, 0, 1, 0 },
		{ -0.5, 0, -0.0, -1, -0.0, -1, 0, 0 },
	};
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(Case.Value);
		EXPECT_EQ(FMath::RoundToInt(Case.Value), Case.RoundToInt);
		EXPECT_EQ(FMath::RoundHalfToEven(Case.Value), Case.HalfToEven);
		EXPECT_EQ(FMath::RoundHalfFromZero(Case.Value), Case.HalfFromZero);
		EXPECT_EQ(FMath::RoundHalfToZero(Case.Value), Case.HalfToZero);
		EXPECT_EQ(FMath::FloorToInt(Case.Value), Case.Floor);
		EXPECT_EQ(FMath::CeilToInt(Case.Value), Case.Ceil);
		EXPECT_EQ(FMath::TruncToInt(Case.Value), Case.Trunc);
	}
	// The exact-fraction rules leave the largest exact integer of a double alone.
	EXPECT_EQ(FMath::RoundHalfFromZero(9007199254740991.0), 9007199254740991.0);
	EXPECT_EQ(FMath::RoundHalfToZero(-9007199254740991.0), -9007199254740991.0);
	EXPECT_EQ(FMath::RoundToInt32(2.5f), 3);
	EXPECT_EQ(FMath::RoundToInt32(-2.5f), -2);
	EXPECT_EQ(FMath::RoundToFloat(2.5f), 3.0f);
	EXPECT_EQ(FMath::RoundToFloat(-2.5f), -2.0f);
	EXPECT_EQ(FMath::RoundFromZero(-0.1), -1.0);
	EXPECT_EQ(FMath::RoundToZero(-0.9), 0.0);
	EXPECT_DOUBLE_EQ(FMath::Frac(-1.25), 0.75);
	EXPECT_DOUBLE_EQ(FMath::Fractional(-1.25), -0.25);
}

TEST(MathUtility, FloatToIntConversionsNeverOverflow)
{
	constexpr int32 Indefinite = std::numeric_limits<int32>::min();
	EXPECT_EQ(FMath::TruncToInt32(std::numeric_limits<double>::quiet_NaN()), Indefinite);
	EXPECT_EQ(FMath::TruncToInt32(1e20), Indefinite);
	EXPECT_EQ(FMath::TruncToInt32(-1e20f), Indefinite);
	EXPECT_EQ(FMath::RoundToInt32(std::numeric_limits<double>::infinity()), Indefinite);
	EXPECT_EQ(FMath::TruncToInt32(2147483647.0), 2147483647);
	EXPECT_EQ(FMath::TruncToInt32(2147483648.0), Indefinite);
	EXPECT_EQ(FMath::TruncToInt32(-2147483648.0), Indefinite);
	EXPECT_EQ(FMath::TruncToInt64(9.3e18), std::numeric_limits<int64>::min());
}

TEST(MathUtility, GridSnapRoundsHalvesUp)
{
	struct FCase
	{
		double Location;
		double Grid;
		double Expected;
	};
	const FCase Cases[] = {
		{ 7.0, 5.0, 5.0 },
		{ 7.5, 5.0, 10.0 },
		{ -7.5, 5.0, -5.0 },
		{ -7.6, 5.0, -10.0 },
		{ -2.5, 5.0, 0.0 },
		{ 123.4, 16.0, 128.0 },
		{ 3.0, 0.0, 3.0 },
	};
	for (const FCase& Case : Cases)
	{
		EXPECT_DOUBLE_EQ(FMath::GridSnap(Case.Location, Case.Grid), Case.Expected) << Case.Location << " on " << Case.Grid;
	}
	EXPECT_EQ(FMath::GridSnap(7, 5), 5);
	EXPECT_EQ(FMath::GridSnap(23, 16), 16);
	EXPECT_EQ(FVector(7, 7.5, -7.6).GridSnap(5.0), FVector(5, 10, -10));
	EXPECT_EQ(FRotator(44, 46, 0).GridSnap(FRotator(90, 90, 90)), FRotator(0, 90, 0));
}

TEST(MathUtility, ScalarHelpers)
{
	EXPECT_EQ(FMath::Clamp(5, 0, 10), 5);
	EXPECT_EQ(FMath::Clamp(-5, 0, 10), 0);
	EXPECT_EQ(FMath::Clamp(5, 10, 0), 10); // an inverted range gives the minimum
	EXPECT_EQ(FMath::Clamp(0.5, 0, 1), 0.5);
	EXPECT_EQ(FMath::Max(3, 7), 7);
	EXPECT_EQ(FMath::Min(3, 7), 3);
	EXPECT_EQ(FMath::Max3(3, 9, 7), 9);
	EXPECT_EQ(FMath::Abs(-4), 4);
	EXPECT_EQ(FMath::Sign(-0.5), -1.0);
	EXPECT_EQ(FMath::Sign(0.0), 0.0);
	EXPECT_EQ(FMath::Square(-3), 9);
	EXPECT_EQ(FMath::DivideAndRoundUp(7, 2), 4);
	EXPECT_EQ(FMath::DivideAndRoundUp(8, 2), 4);
	EXPECT_EQ(FMath::DivideAndRoundDown(7, 2), 3);
	EXPECT_TRUE(FMath::IsPowerOfTwo(0u));
	EXPECT_TRUE(FMath::IsPowerOfTwo(64));
	EXPECT_FALSE(FMath::IsPowerOfTwo(6));
	EXPECT_EQ(FMath::RoundUpToPowerOfTwo(33), 64u);
	EXPECT_DOUBLE_EQ(FMath::Lerp(0.0, 10.0, 0.25), 2.5);
	EXPECT_EQ(FMath::Lerp(FVector(0, 0, 0), FVector(10, 20, 30), 0.5), FVector(5, 10, 15));
	EXPECT_TRUE(FMath::IsNearlyEqual(1.0, 1.0 + 1e-9));
	EXPECT_FALSE(FMath::IsNearlyEqual(1.0, 1.0001));
	EXPECT_TRUE(FMath::IsNearlyEqual(1.0f, 1.00005f, 1e-4f));
	EXPECT_TRUE(FMath::IsNearlyZero(1e-9));
	EXPECT_FALSE(FMath::IsNearlyZero(1e-7));
	EXPECT_DOUBLE_EQ(FMath::Fmod(-7.0, 3.0), -1.0);
	EXPECT_EQ(FMath::Fmod(5.5, 0.0), 0.0); // no NaN from a zero divisor
	EXPECT_DOUBLE_EQ(FMath::Pow(2.0, 10.0), 1024.0);
	EXPECT_DOUBLE_EQ(FMath::Sqrt(16), 4.0);
	EXPECT_DOUBLE_EQ(FMath::Loge(FMath::Exp(2.0)), 2.0);
	EXPECT_DOUBLE_EQ(FMath::RadiansToDegrees(UE_DOUBLE_PI), 180.0);
	EXPECT_DOUBLE_EQ(FMath::DegreesToRadians(90.0), UE_DOUBLE_HALF_PI);
	EXPECT_DOUBLE_EQ(FMath::UnwindDegrees(540.0), 180.0);
	EXPECT_DOUBLE_EQ(FMath::UnwindDegrees(-190.0), 170.0);
	EXPECT_DOUBLE_EQ(FMath::FindDeltaAngleDegrees(170.0, -170.0), 20.0);
	EXPECT_EQ(FMath::Atan2(-0.0, 1.0), 0.0);
	EXPECT_FALSE(std::signbit(FMath::Atan2(-0.0, 1.0)));
	EXPECT_DOUBLE_EQ(FMath::Atan2(-0.0, -1.0), UE_DOUBLE_PI);
	EXPECT_DOUBLE_EQ(FMath::Atan2(-1.0, -1.0), -0.75 * UE_DOUBLE_PI);
	EXPECT_EQ(FMath::Asin(2.0), FMath::Asin(1.0)); // clamped, no NaN
	EXPECT_EQ(PI, UE_PI);
	EXPECT_EQ(KINDA_SMALL_NUMBER, 1.e-4f);
	EXPECT_EQ(SMALL_NUMBER, 1.e-8f);
}

TEST(MathUtility, RandomNumbersAreReproducibleAndInRange)
{
	FMath::RandInit(1234);
	int32 First[8];
	for (int32& Value : First)
	{
		Value = FMath::RandRange(-3, 3);
		EXPECT_GE(Value, -3);
		EXPECT_LE(Value, 3);
	}
	FMath::RandInit(1234);
	for (const int32 Value : First)
	{
		EXPECT_EQ(FMath::RandRange(-3, 3), Value);
	}
	for (int32 Index = 0; Index < 1000; ++Index)
	{
		const float Fraction = FMath::FRand();
		ASSERT_GE(Fraction, 0.0f);
		ASSERT_LT(Fraction, 1.0f);
	}
	EXPECT_EQ(FMath::RandRange(5, 5), 5);
	EXPECT_EQ(FMath::RandRange(5, 4), 5); // an empty range gives its minimum
	EXPECT_EQ(FMath::RandHelper(0), 0);
}

// ---- Vectors and rotations ----------------------------------------------------------------

TEST(MathVector, ArithmeticAndHelpers)
{
	const FVector A(1, 2, 3);
	const FVector B(4, -5, 6);
	EXPECT_EQ(A + B, FVector(5, -3, 9));
	EXPECT_EQ(A - B, FVector(-3, 7, -3));
	EXPECT_EQ(A * 2, FVector(2, 4, 6));
	EXPECT_EQ(2.0 * A, FVector(2, 4, 6));
	EXPECT_EQ(A / 2, FVector(0.5, 1, 1.5));
	EXPECT_EQ(-A, FVector(-1, -2, -3));
	EXPECT_EQ(FVector::DotProduct(A, B), 12.0);
	EXPECT_EQ(A | B, 12.0);
	EXPECT_EQ(FVector::CrossProduct(FVector::ForwardVector, FVector::RightVector), FVector::UpVector);
	EXPECT_EQ(FVector(3, 4, 0).Size(), 5.0);
	EXPECT_EQ(FVector(3, 4, 0).SizeSquared(), 25.0);
	EXPECT_EQ(FVector::Dist(FVector(1, 1, 1), FVector(1, 4, 5)), 5.0);
	ExpectVectorNear(FVector(0, 3, 4).GetSafeNormal(), FVector(0, 0.6, 0.8));
	EXPECT_EQ(FVector(1e-5, 0, 0).GetSafeNormal(), FVector::ZeroVector);
	EXPECT_EQ(FVector(1e-5, 0, 0).GetSafeNormal(UE_SMALL_NUMBER, FVector::UpVector), FVector::UpVector);
	EXPECT_TRUE(FVector(1e-5, -1e-5, 0).IsNearlyZero());
	EXPECT_FALSE(FVector(1e-3, 0, 0).IsNearlyZero());
	EXPECT_TRUE(A.Equals(FVector(1.00005, 2, 3)));
	EXPECT_FALSE(A.Equals(FVector(1.001, 2, 3)));
	EXPECT_TRUE(A.Equals(FVector(1.001, 2, 3), 0.01));

	FVector Normalized(0, 0, 0);
	EXPECT_FALSE(Normalized.Normalize());
	EXPECT_EQ(Normalized, FVector::ZeroVector);
	FVector V(2, 0, 0);
	EXPECT_TRUE(V.Normalize());
	EXPECT_EQ(V, FVector::ForwardVector);

	FVector Indexed(7, 8, 9);
	EXPECT_EQ(Indexed[2], 9.0);
	Indexed[0] = 1;
	EXPECT_EQ(Indexed.X, 1.0);
	EXPECT_EQ(GetTypeHash(FVector(-0.0, 0, 0)), GetTypeHash(FVector(0, 0, 0)));
	EXPECT_EQ(FVector(1, 2, 3).GetMax(), 3.0);
	ExpectVectorNear(FVector(3, 4, 0).GetClampedToMaxSize(2.5), FVector(1.5, 2, 0));
}

TEST(MathVector, Vector2DAndIntPoint)
{
	EXPECT_EQ(FVector2D(1, 2) + FVector2D(3, 4), FVector2D(4, 6));
	EXPECT_EQ(FVector2D(3, 4).Size(), 5.0);
	EXPECT_EQ(FVector2D(1, 0) ^ FVector2D(0, 1), 1.0);
	EXPECT_EQ(FVector2D(2, 3) | FVector2D(4, 5), 23.0);
	EXPECT_TRUE(FVector2D(1, 0).GetRotated(90).Equals(FVector2D(0, 1), 1e-12));
	EXPECT_EQ(FVector2D(1.5, -1.5).IntPoint(), FIntPoint(2, -1));
	EXPECT_EQ(FVector2D(FVector(1, 2, 3)), FVector2D(1, 2));
	EXPECT_EQ(FVector(FVector2D(1, 2), 3), FVector(1, 2, 3));

	EXPECT_EQ(FIntPoint(7, -7) / 2, FIntPoint(3, -3));
	EXPECT_EQ(FIntPoint::DivideAndRoundUp(FIntPoint(7, 8), 2), FIntPoint(4, 4));
	EXPECT_EQ(FIntPoint(3, 4).Size(), 5);
	EXPECT_EQ(FIntPoint::NoneValue, FIntPoint(-1, -1));
	EXPECT_EQ(FIntPoint(1, 5).ComponentMax(FIntPoint(3, 2)), FIntPoint(3, 5));
}

TEST(MathRotator, NormalisationAndEquality)
{
	EXPECT_EQ(FRotator::NormalizeAxis(180.0), 180.0);
	EXPECT_EQ(FRotator::NormalizeAxis(-180.0), 180.0);
	EXPECT_EQ(FRotator::NormalizeAxis(540.0), 180.0);
	EXPECT_EQ(FRotator::NormalizeAxis(-190.0), 170.0);
	EXPECT_EQ(FRotator::ClampAxis(-90.0), 270.0);
	EXPECT_EQ(FRotator::ClampAxis(720.0), 0.0);
	EXPECT_EQ(FRotator(370, -370, 180).GetNormalized(), FRotator(10, -10, 180));
	EXPECT_EQ(FRotator(-10, 0, 0).Clamp(), FRotator(350, 0, 0));
	EXPECT_TRUE(FRotator(0, 360, 0).Equals(FRotator::ZeroRotator));
	EXPECT_TRUE(FRotator(0, 360, 0).IsNearlyZero());
	EXPECT_FALSE(FRotator(0, 360, 0) == FRotator::ZeroRotator);
	EXPECT_EQ(FRotator(1, 2, 3).Euler(), FVector(3, 1, 2));
	EXPECT_EQ(FRotator::MakeFromEuler(FVector(3, 1, 2)), FRotator(1, 2, 3));

	// Rotators interpolate the short way round.
	const FRotator Halfway = FMath::Lerp(FRotator(0, 170, 0), FRotator(0, -170, 0), 0.5);
	EXPECT_TRUE(Halfway.Equals(FRotator(0, 180, 0), 1e-9));
}

TEST(MathRotator, DirectionsAndQuaternions)
{
	ExpectVectorNear(FRotator(0, 0, 0).Vector(), FVector::ForwardVector);
	ExpectVectorNear(FRotator(0, 90, 0).Vector(), FVector::RightVector);
	ExpectVectorNear(FRotator(90, 0, 0).Vector(), FVector::UpVector);
	EXPECT_TRUE(FVector(0, 5, 0).Rotation().Equals(FRotator(0, 90, 0), 1e-9));
	EXPECT_TRUE(FVector(1, 0, 1).Rotation().Equals(FRotator(45, 0, 0), 1e-9));

	// Rotating the forward axis by the quaternion gives the rotator's direction.
	const FRotator Rotators[] = { FRotator(30, 60, 0), FRotator(-20, 135, 70), FRotator(0, -90, 45), FRotator(89, 10, -10) };
	for (const FRotator& Rotator : Rotators)
	{
		SCOPED_TRACE(U8(Rotator.ToString()));
		const FQuat Quat = Rotator.Quaternion();
		EXPECT_TRUE(Quat.IsNormalized());
		ExpectVectorNear(Quat.RotateVector(FVector::ForwardVector), Rotator.Vector(), 1e-9);
		EXPECT_TRUE(Quat.Rotator().Equals(Rotator, 1e-6));
		EXPECT_TRUE(FRotator(Quat).Equals(Rotator, 1e-6));
		ExpectVectorNear(Quat.UnrotateVector(Quat.RotateVector(FVector(1, 2, 3))), FVector(1, 2, 3), 1e-9);
		ExpectVectorNear(Rotator.UnrotateVector(Rotator.RotateVector(FVector(1, 2, 3))), FVector(1, 2, 3), 1e-9);
		EXPECT_TRUE((Quat * Quat.Inverse()).Equals(FQuat::Identity, 1e-9));
		ExpectVectorNear(Rotator.Vector().ToOrientationQuat().RotateVector(FVector::ForwardVector), Rotator.Vector(), 1e-9);
	}

	// Quaternion composition applies the right-hand rotation first.
	const FQuat Yaw90 = FRotator(0, 90, 0).Quaternion();
	const FQuat Pitch90 = FRotator(90, 0, 0).Quaternion();
	ExpectVectorNear((Yaw90 * Pitch90).RotateVector(FVector::ForwardVector), FVector::UpVector, 1e-9);
	ExpectVectorNear((Pitch90 * Yaw90).RotateVector(FVector::ForwardVector), FVector::RightVector, 1e-9);

	// -Q is the same rotation.
	EXPECT_TRUE(Yaw90.Equals(-Yaw90));
	// At the poles the rotator comes back with pitch exactly +/-90.
	EXPECT_EQ(FRotator(90, 0, 0).Quaternion().Rotator().Pitch, 90.0);
	EXPECT_EQ(FRotator(-90, 30, 0).Quaternion().Rotator().Pitch, -90.0);
	EXPECT_NEAR(FQuat(FVector::UpVector, UE_DOUBLE_HALF_PI).GetAngle(), UE_DOUBLE_HALF_PI, 1e-12);
}

// ---- Transforms ---------------------------------------------------------------------------

TEST(MathTransform, CompositionAppliesLeftThenRight)
{
	const FTransform Child(FRotator(0, 90, 0), FVector(10, 0, 0), FVector(1, 1, 1));
	const FTransform Parent(FRotator(0, 0, 0), FVector(0, 0, 5), FVector(2, 2, 2));
	const FTransform World = Child * Parent;

	const FVector Points[] = { FVector::ZeroVector, FVector(1, 0, 0), FVector(3, -4, 5) };
	for (const FVector& Point : Points)
	{
		ExpectVectorNear(World.TransformPosition(Point), Parent.TransformPosition(Child.TransformPosition(Point)));
	}
	ExpectVectorNear(World.GetLocation(), FVector(20, 0, 5));
	ExpectVectorNear(World.GetScale3D(), FVector(2, 2, 2));
	ExpectVectorNear(World.TransformVector(FVector(1, 0, 0)), FVector(0, 2, 0));
	ExpectVectorNear(World.TransformVectorNoScale(FVector(1, 0, 0)), FVector(0, 1, 0));

	// Relative transforms and inverses undo composition.
	EXPECT_TRUE(World.GetRelativeTransform(Parent).Equals(Child, 1e-9));
	EXPECT_TRUE((World * World.Inverse()).Equals(FTransform::Identity, 1e-9));
	for (const FVector& Point : Points)
	{
		ExpectVectorNear(World.InverseTransformPosition(World.TransformPosition(Point)), Point);
	}
}

TEST(MathTransform, AccessorsAndIdentity)
{
	FTransform Transform;
	EXPECT_TRUE(Transform.Identical(FTransform::Identity));
	EXPECT_EQ(Transform.GetScale3D(), FVector::OneVector);
	Transform.SetLocation(FVector(1, 2, 3));
	Transform.SetRotation(FRotator(0, 45, 0).Quaternion());
	Transform.SetScale3D(FVector(0, 1, 1));
	EXPECT_EQ(Transform.GetLocation(), FVector(1, 2, 3));
	EXPECT_TRUE(Transform.Rotator().Equals(FRotator(0, 45, 0), 1e-9));
	// A zero scale axis inverts to zero instead of infinity.
	EXPECT_EQ(FTransform::GetSafeScaleReciprocal(FVector(0, 2, -4)), FVector(0, 0.5, -0.25));
	EXPECT_FALSE(Transform.Inverse().ContainsNaN());
	EXPECT_TRUE(FTransform(FVector(1, 2, 3)).EqualsNoScale(FTransform(FQuat::Identity, FVector(1, 2, 3), FVector(9))));
}

// ---- Boxes --------------------------------------------------------------------------------

TEST(MathBox2D, IntersectAndInside)
{
	const FBox2D A(FVector2D(0, 0), FVector2D(10, 10));
	struct FCase
	{
		FBox2D Other;
		bool bIntersects;
	};
	const FCase Cases[] = {
		{ FBox2D(FVector2D(5, 5), FVector2D(15, 15)), true },
		{ FBox2D(FVector2D(10, 0), FVector2D(20, 10)), true },  // shared edge counts
		{ FBox2D(FVector2D(10, 10), FVector2D(11, 11)), true }, // shared corner counts
		{ FBox2D(FVector2D(10.001, 0), FVector2D(20, 10)), false },
		{ FBox2D(FVector2D(-5, 11), FVector2D(15, 20)), false },
		{ FBox2D(FVector2D(2, 2), FVector2D(3, 3)), true },     // contained
	};
	for (const FCase& Case : Cases)
	{
		EXPECT_EQ(A.Intersect(Case.Other), Case.bIntersects) << U8(Case.Other.ToString());
		EXPECT_EQ(Case.Other.Intersect(A), Case.bIntersects) << U8(Case.Other.ToString());
	}

	EXPECT_EQ(A.Overlap(FBox2D(FVector2D(5, -5), FVector2D(15, 5))), FBox2D(FVector2D(5, 0), FVector2D(10, 5)));
	EXPECT_FALSE(A.Overlap(FBox2D(FVector2D(20, 20), FVector2D(30, 30))).bIsValid);

	EXPECT_TRUE(A.IsInside(FVector2D(5, 5)));
	EXPECT_FALSE(A.IsInside(FVector2D(10, 5))); // edges are outside
	EXPECT_TRUE(A.IsInsideOrOn(FVector2D(10, 5)));
	EXPECT_TRUE(A.IsInside(FBox2D(FVector2D(1, 1), FVector2D(9, 9))));
	EXPECT_FALSE(A.IsInside(FBox2D(FVector2D(0, 1), FVector2D(9, 9))));
}

TEST(MathBox2D, GrowingAndMeasuring)
{
	FBox2D Box(ForceInit);
	EXPECT_FALSE(Box.bIsValid);
	Box += FVector2D(3, -1);
	EXPECT_TRUE(Box.bIsValid);
	EXPECT_EQ(Box.Min, FVector2D(3, -1));
	EXPECT_EQ(Box.Max, FVector2D(3, -1));
	Box += FVector2D(-2, 4);
	EXPECT_EQ(Box, FBox2D(FVector2D(-2, -1), FVector2D(3, 4)));
	EXPECT_EQ(Box.GetSize(), FVector2D(5, 5));
	EXPECT_EQ(Box.GetCenter(), FVector2D(0.5, 1.5));
	EXPECT_EQ(Box.GetExtent(), FVector2D(2.5, 2.5));
	EXPECT_EQ(Box.GetArea(), 25.0);
	EXPECT_EQ(Box.ExpandBy(1), FBox2D(FVector2D(-3, -2), FVector2D(4, 5)));

	// Adding an invalid box changes nothing; adding to an invalid box copies the other.
	FBox2D Copy = Box;
	Copy += FBox2D(ForceInit);
	EXPECT_EQ(Copy, Box);
	FBox2D Empty(ForceInit);
	Empty += Box;
	EXPECT_TRUE(Empty.bIsValid);
	EXPECT_EQ(Empty, Box);

	const FVector2D Points[] = { FVector2D(1, 1), FVector2D(-1, 5), FVector2D(0, -3) };
	const FBox2D FromPoints(Points, 3);
	EXPECT_EQ(FromPoints, FBox2D(FVector2D(-1, -3), FVector2D(1, 5)));
	EXPECT_FALSE(FBox2D(Points, 0).bIsValid);
	EXPECT_EQ(FromPoints.GetClosestPointTo(FVector2D(10, 0)), FVector2D(1, 0));
	EXPECT_EQ(FromPoints.ComputeSquaredDistanceToPoint(FVector2D(4, 9)), 25.0);
}

// ---- Default-value text (FDefaultValueHelper) ----------------------------------------------

TEST(DefaultValueHelper, ParseVectorAndRotator)
{
	struct FCase
	{
		const TCHAR* Text;
		bool bParses;
		FVector Expected;
	};
	const FCase VectorCases[] = {
		{ TEXT("1,2,3"), true, FVector(1, 2, 3) },
		{ TEXT(" 1.5 , -2 , 3e1 "), true, FVector(1.5, -2, 30) },
		{ TEXT("0, 0, 0"), true, FVector(0, 0, 0) },
		{ TEXT("1f,2,+3"), true, FVector(1, 2, 3) },
		{ TEXT("X=1,Y=2,Z=3"), true, FVector(1, 2, 3) }, // non-numbers fall back to the X= form
		{ TEXT("1,2"), false, FVector() },
		{ TEXT("1,2,3,4"), false, FVector() },
		{ TEXT(""), false, FVector() },
		{ TEXT("a,b,c"), false, FVector() },
		{ TEXT("X=1 Y=2 Z=3"), false, FVector() }, // without commas the engine does not try the X= form
	};
	for (const FCase& Case : VectorCases)
	{
		FVector Parsed(7, 7, 7);
		EXPECT_EQ(FDefaultValueHelper::ParseVector(Case.Text, Parsed), Case.bParses) << U8(Case.Text);
		EXPECT_EQ(FDefaultValueHelper::IsStringValidVector(Case.Text), Case.bParses) << U8(Case.Text);
		if (Case.bParses)
		{
			EXPECT_EQ(Parsed, Case.Expected) << U8(Case.Text);
		}
	}

	FVector3f Narrow;
	EXPECT_TRUE(FDefaultValueHelper::ParseVector(TEXT("0.5,1,2"), Narrow));
	EXPECT_EQ(Narrow, FVector3f(0.5f, 1, 2));

	FRotator Rotator;
	EXPECT_TRUE(FDefaultValueHelper::ParseRotator(TEXT("10, 20, 30"), Rotator));
	EXPECT_EQ(Rotator, FRotator(10, 20, 30));
	EXPECT_TRUE(FDefaultValueHelper::ParseRotator(TEXT("P=1 Y=2 R=3"), Rotator));
	EXPECT_EQ(Rotator, FRotator(1, 2, 3));
	EXPECT_TRUE(FDefaultValueHelper::ParseRotator(TEXT("(Pitch=4,Yaw=5,Roll=6)"), Rotator));
	EXPECT_EQ(Rotator, FRotator(4, 5, 6));
	EXPECT_FALSE(FDefaultValueHelper::ParseRotator(TEXT("1,2"), Rotator));

	FVector2D Vector2D;
	EXPECT_TRUE(FDefaultValueHelper::ParseVector2D(TEXT("1, -2"), Vector2D));
	EXPECT_EQ(Vector2D, FVector2D(1, -2));
	EXPECT_TRUE(FDefaultValueHelper::ParseVector2D(TEXT("X=3,Y=4,Z=5"), Vector2D)); // extra commas fall back
	EXPECT_EQ(Vector2D, FVector2D(3, 4));
	EXPECT_FALSE(FDefaultValueHelper::ParseVector2D(TEXT("1,2,3"), Vector2D));
	EXPECT_FALSE(FDefaultValueHelper::ParseVector2D(TEXT("1"), Vector2D));
}

TEST(DefaultValueHelper, ParseColors)
{
	FLinearColor Linear;
	EXPECT_TRUE(FDefaultValueHelper::ParseLinearColor(TEXT("1, 0.5, 0"), Linear));
	EXPECT_EQ(Linear, FLinearColor(1, 0.5f, 0, 1));
	EXPECT_TRUE(FDefaultValueHelper::ParseLinearColor(TEXT("1,0.5,0,0.25"), Linear));
	EXPECT_EQ(Linear, FLinearColor(1, 0.5f, 0, 0.25f));
	EXPECT_TRUE(FDefaultValueHelper::ParseLinearColor(TEXT("(R=1,G=0.5,B=0)"), Linear));
	EXPECT_EQ(Linear, FLinearColor(1, 0.5f, 0, 1));
	// With three commas the fourth part must be a number, as in the engine, so its own text form is refused.
	EXPECT_FALSE(FDefaultValueHelper::ParseLinearColor(FLinearColor::Red.ToString(), Linear));
	EXPECT_FALSE(FDefaultValueHelper::ParseLinearColor(TEXT("1,2"), Linear));
	EXPECT_TRUE(FDefaultValueHelper::IsStringValidLinearColor(TEXT("0,0,0")));

	FColor Color;
	EXPECT_TRUE(FDefaultValueHelper::ParseColor(TEXT("255, 128, 0"), Color));
	EXPECT_EQ(Color, FColor(255, 128, 0, 255));
	EXPECT_TRUE(FDefaultValueHelper::ParseColor(TEXT("1,2,3,4"), Color));
	EXPECT_EQ(Color, FColor(1, 2, 3, 4));
	EXPECT_TRUE(FDefaultValueHelper::ParseColor(TEXT("(R=1,G=2,B=3)"), Color));
	EXPECT_EQ(Color, FColor(1, 2, 3, 255));
	EXPECT_FALSE(FDefaultValueHelper::ParseColor(TEXT("1,2,3,x"), Color));
}

TEST(DefaultValueHelper, ScalarsAndValidity)
{
	struct FIntCase
	{
		const TCHAR* Text;
		bool bParses;
		int32 Expected;
	};
	const FIntCase IntCases[] = {
		{ TEXT("42"), true, 42 },
		{ TEXT(" -7 "), true, -7 },
		{ TEXT("- 7"), true, -7 },
		{ TEXT("010"), true, 8 },
		{ TEXT("0x1F"), true, 31 },
		{ TEXT("-0x10"), true, -16 },
		{ TEXT("0"), true, 0 },
		{ TEXT("1.5"), false, 0 },
		{ TEXT("0x"), false, 0 },
		{ TEXT("1 2"), false, 0 },
		{ TEXT(""), false, 0 },
		{ TEXT("-"), false, 0 },
	};
	for (const FIntCase& Case : IntCases)
	{
		int32 Parsed = 123;
		EXPECT_EQ(FDefaultValueHelper::ParseInt(Case.Text, Parsed), Case.bParses) << U8(Case.Text);
		EXPECT_EQ(FDefaultValueHelper::IsStringValidInteger(Case.Text), Case.bParses) << U8(Case.Text);
		EXPECT_EQ(Parsed, Case.bParses ? Case.Expected : 123) << U8(Case.Text);
	}
	int64 Wide = 0;
	EXPECT_TRUE(FDefaultValueHelper::ParseInt64(TEXT("9000000000"), Wide));
	EXPECT_EQ(Wide, 9000000000ll);

	double Double = 0;
	EXPECT_TRUE(FDefaultValueHelper::ParseDouble(TEXT(" 1.5f "), Double));
	EXPECT_EQ(Double, 1.5);
	EXPECT_TRUE(FDefaultValueHelper::ParseDouble(TEXT("-.5"), Double));
	EXPECT_EQ(Double, -0.5);
	EXPECT_TRUE(FDefaultValueHelper::ParseDouble(TEXT("1e3"), Double));
	EXPECT_EQ(Double, 1000.0);
	EXPECT_FALSE(FDefaultValueHelper::ParseDouble(TEXT("abc"), Double));
	EXPECT_FALSE(FDefaultValueHelper::ParseDouble(TEXT("1.2.3"), Double));
	float Float = 0;
	EXPECT_TRUE(FDefaultValueHelper::ParseFloat(TEXT("0.25"), Float));
	EXPECT_EQ(Float, 0.25f);

	bool bValue = false;
	EXPECT_TRUE(FDefaultValueHelper::ParseBool(TEXT("TRUE"), bValue));
	EXPECT_TRUE(bValue);
	EXPECT_TRUE(FDefaultValueHelper::ParseBool(TEXT(" false "), bValue));
	EXPECT_FALSE(bValue);
	EXPECT_TRUE(FDefaultValueHelper::ParseBool(TEXT("2"), bValue));
	EXPECT_TRUE(bValue);
	EXPECT_FALSE(FDefaultValueHelper::ParseBool(TEXT("yes"), bValue));

	EXPECT_TRUE(FDefaultValueHelper::Is(TEXT("  None "), TEXT("None")));
	EXPECT_FALSE(FDefaultValueHelper::Is(TEXT("Nonex"), TEXT("None")));
	EXPECT_FALSE(FDefaultValueHelper::Is(TEXT("none"), TEXT("None")));
	EXPECT_FALSE(FDefaultValueHelper::Is(TEXT(""), TEXT("None")));
	EXPECT_EQ(U8(FDefaultValueHelper::GetUnqualifiedEnumValue(TEXT("EFoo::Bar"))), "Bar");
	EXPECT_EQ(U8(FDefaultValueHelper::GetUnqualifiedEnumValue(TEXT("Bar"))), "Bar");
	EXPECT_EQ(U8(FDefaultValueHelper::RemoveWhitespaces(TEXT(" a b\tc\r\n"))), "abc");
	EXPECT_TRUE(FDefaultValueHelper::IsStringValidFloat(TEXT(".")));
}

TEST(MathUtility, NumericLimitsUseTheEngineMeanings)
{
	EXPECT_EQ(TNumericLimits<int32>::Max(), MAX_int32);
	EXPECT_EQ(TNumericLimits<int32>::Min(), MIN_int32);
	EXPECT_EQ(TNumericLimits<uint8>::Max(), MAX_uint8);
	EXPECT_EQ(TNumericLimits<int64>::Lowest(), MIN_int64);
	EXPECT_GT(TNumericLimits<float>::Min(), 0.0f); // smallest positive, not most negative
	EXPECT_EQ(TNumericLimits<float>::Lowest(), -MAX_flt);
	EXPECT_EQ(TNumericLimits<const double>::Max(), MAX_dbl);
}
