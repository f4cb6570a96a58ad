#include "Math/Box2D.h"
#include "Math/IntPoint.h"
#include "Math/Quat.h"
#include "Math/Rotator.h"
#include "Math/UnrealMathUtility.h"
#include "Math/Vector.h"
#include "Math/Vector2D.h"
#include "Misc/ParseValue.h"

using UE::Core::Private::ParseValue;

namespace
{
	// Components printed with ToCompactString are left out when nearly zero by FMath's default
	// tolerance, as the engine's compact form does.
	template <typename T>
	void AppendCompactComponent(FString& Out, bool& bFirst, const TCHAR* Label, T Value)
	{
		if (FMath::IsNearlyZero(Value))
		{
			return;
		}
		if (!bFirst)
		{
			Out += TEXT(", ");
		}
		Out += FString::Printf(TEXT("%s=%.2f"), Label, double(Value));
		bFirst = false;
	}

	// A quaternion's pitch sits on the +/-90 degree pole once the test value passes this.
	constexpr double SingularityThreshold = 0.4999995;
}

// ---- FMath ------------------------------------------------------------------------------

float FMath::Fmod(float X, float Y)
{
	if (Abs(Y) <= UE_SMALL_NUMBER)
	{
		return 0.0f;
	}
	return std::fmod(X, Y);
}

double FMath::Fmod(double X, double Y)
{
	if (Abs(Y) <= UE_DOUBLE_SMALL_NUMBER)
	{
		return 0.0;
	}
	return std::fmod(X, Y);
}

namespace
{
	template <typename T>
	T TruncateToHalfIfCloseImpl(T F, T Tolerance)
	{
		T IntegralPart = 0;
		const T FractionalPart = std::modf(F, &IntegralPart);
		const T Half = (F < T(0)) ? T(-0.5) : T(0.5);
		return IntegralPart + (FMath::IsNearlyEqual(FractionalPart, Half, Tolerance) ? Half : FractionalPart);
	}

	template <typename T>
	T RoundHalfToEvenImpl(T F)
	{
		F = TruncateToHalfIfCloseImpl(F, T(UE_DOUBLE_SMALL_NUMBER));
		const bool bNegative = F < T(0);
		const T Magnitude = bNegative ? -F : F;
		const bool bIntegralIsEven = std::fmod(std::floor(Magnitude), T(2)) == T(0);
		if (bIntegralIsEven)
		{
			// x.5 rounds towards the even integer below (in magnitude).
			return bNegative ? std::floor(F + T(0.5)) : std::ceil(F - T(0.5));
		}
		return bNegative ? std::ceil(F - T(0.5)) : std::floor(F + T(0.5));
	}
}

float FMath::TruncateToHalfIfClose(float F, float Tolerance)
{
	return TruncateToHalfIfCloseImpl(F, Tolerance);
}

double FMath::TruncateToHalfIfClose(double F, double Tolerance)
{
	return TruncateToHalfIfCloseImpl(F, Tolerance);
}

float FMath::RoundHalfToEven(float F)
{
	return RoundHalfToEvenImpl(F);
}

double FMath::RoundHalfToEven(double F)
{
	return RoundHalfToEvenImpl(F);
}

namespace
{
	// Decides on the exact fractional part, so values a hair below one half are never pulled up
	// and large integers pass through unchanged.
	template <typename FloatType>
	FloatType RoundHalf(FloatType F, bool bHalfAwayFromZero)
	{
		FloatType Whole;
		const FloatType Fraction = std::modf(F, &Whole);
		const FloatType Magnitude = std::fabs(Fraction);
		const bool bAway = bHalfAwayFromZero ? Magnitude >= FloatType(0.5) : Magnitude > FloatType(0.5);
		if (!bAway)
		{
			return Whole;
		}
		return Whole + (F < FloatType(0) ? FloatType(-1) : FloatType(1));
	}
}

float FMath::RoundHalfFromZero(float F) { return RoundHalf(F, true); }
double FMath::RoundHalfFromZero(double F) { return RoundHalf(F, true); }
float FMath::RoundHalfToZero(float F) { return RoundHalf(F, false); }
double FMath::RoundHalfToZero(double F) { return RoundHalf(F, false); }

namespace
{
	// One generator for Rand/FRand and the SRand family: a 64-bit linear congruential step
	// (Knuth's MMIX constants) whose top bits are well distributed. Fixed initial seed, so
	// runs are reproducible until something reseeds it.
	constexpr uint64 DefaultRandSeed = 0x2545F4914F6CDD1Dull;
	uint64 GRandState = DefaultRandSeed;
	int32 GRandSeed = 0;

	uint32 NextRandBits()
	{
		GRandState = GRandState * 6364136223846793005ull + 1442695040888963407ull;
		return uint32(GRandState >> 33); // 31 bits
	}
}

void FMath::RandInit(int32 Seed)
{
	GRandSeed = Seed;
	GRandState = DefaultRandSeed ^ uint64(uint32(Seed));
}

int32 FMath::Rand()
{
	return int32(NextRandBits());
}

float FMath::FRand()
{
	// 24 bits fit a float's mantissa exactly, so the result is strictly below 1.
	return float(NextRandBits() >> 7) * (1.0f / 16777216.0f);
}

void FMath::SRandInit(int32 Seed)
{
	RandInit(Seed);
}

int32 FMath::GetRandSeed()
{
	return GRandSeed;
}

float FMath::SRand()
{
	return FRand();
}

namespace UE::Math
{

// ---- Text forms -------------------------------------------------------------------------

template <typename T>
FString TVector<T>::ToString() const
{
	return FString::Printf(TEXT("X=%3.3f Y=%3.3f Z=%3.3f"), double(X), double(Y), double(Z));
}

template <typename T>
FString TVector<T>::ToCompactString() const
{
	if (IsNearlyZero())
	{
		return FString(TEXT("V(0)"));
	}
	FString Result(TEXT("V("));
	bool bFirst = true;
	AppendCompactComponent(Result, bFirst, TEXT("X"), X);
	AppendCompactComponent(Result, bFirst, TEXT("Y"), Y);
	AppendCompactComponent(Result, bFirst, TEXT("Z"), Z);
	Result += TEXT(")");
	return Result;
}

template <typename T>
bool TVector<T>::InitFromString(const FString& InSourceString)
{
	X = Y = Z = 0;
	return ParseValue(*InSourceString, TEXT("X="), X) && ParseValue(*InSourceString, TEXT("Y="), Y)
		&& ParseValue(*InSourceString, TEXT("Z="), Z);
}

template <typename T>
bool TVector<T>::InitFromCompactString(const FString& InSourceString)
{
	X = Y = Z = 0;
	if (InSourceString.Contains(TEXT("V(0)")))
	{
		return true;
	}
	// Every key is tried: a compact string may carry any subset of them.
	const bool bHasX = ParseValue(*InSourceString, TEXT("X="), X);
	const bool bHasY = ParseValue(*InSourceString, TEXT("Y="), Y);
	const bool bHasZ = ParseValue(*InSourceString, TEXT("Z="), Z);
	return bHasX || bHasY || bHasZ;
}

template <typename T>
FString TVector2<T>::ToString() const
{
	return FString::Printf(TEXT("X=%3.3f Y=%3.3f"), double(X), double(Y));
}

template <typename T>
bool TVector2<T>::InitFromString(const FString& InSourceString)
{
	X = Y = 0;
	return ParseValue(*InSourceString, TEXT("X="), X) && ParseValue(*InSourceString, TEXT("Y="), Y);
}

template <typename T>
FString TRotator<T>::ToString() const
{
	return FString::Printf(TEXT("P=%f Y=%f R=%f"), double(Pitch), double(Yaw), double(Roll));
}

template <typename T>
FString TRotator<T>::ToCompactString() const
{
	if (IsNearlyZero())
	{
		return FString(TEXT("R(0)"));
	}
	FString Result(TEXT("R("));
	bool bFirst = true;
	AppendCompactComponent(Result, bFirst, TEXT("P"), Pitch);
	AppendCompactComponent(Result, bFirst, TEXT("Y"), Yaw);
	AppendCompactComponent(Result, bFirst, TEXT("R"), Roll);
	Result += TEXT(")");
	return Result;
}

template <typename T>
bool TRotator<T>::InitFromString(const FString& InSourceString)
{
	Pitch = Yaw = Roll = 0;
	return ParseValue(*InSourceString, TEXT("P="), Pitch) && ParseValue(*InSourceString, TEXT("Y="), Yaw)
		&& ParseValue(*InSourceString, TEXT("R="), Roll);
}

template <typename T>
FString TQuat<T>::ToString() const
{
	return FString::Printf(TEXT("X=%.9f Y=%.9f Z=%.9f W=%.9f"), double(X), double(Y), double(Z), double(W));
}

template <typename T>
bool TQuat<T>::InitFromString(const FString& InSourceString)
{
	X = Y = Z = 0;
	W = 1;
	return ParseValue(*InSourceString, TEXT("X="), X) && ParseValue(*InSourceString, TEXT("Y="), Y)
		&& ParseValue(*InSourceString, TEXT("Z="), Z) && ParseValue(*InSourceString, TEXT("W="), W);
}

template <typename IntType>
FString TIntPoint<IntType>::ToString() const
{
	if constexpr (std::is_signed_v<IntType>)
	{
		return FString::Printf(TEXT("X=%lld Y=%lld"), int64(X), int64(Y));
	}
	else
	{
		return FString::Printf(TEXT("X=%llu Y=%llu"), uint64(X), uint64(Y));
	}
}

template <typename IntType>
bool TIntPoint<IntType>::InitFromString(const FString& InSourceString)
{
	X = Y = 0;
	if constexpr (std::is_same_v<IntType, int64>)
	{
		return ParseValue(*InSourceString, TEXT("X="), X) && ParseValue(*InSourceString, TEXT("Y="), Y);
	}
	else
	{
		int32 ParsedX = 0;
		int32 ParsedY = 0;
		const bool bSuccess = ParseValue(*InSourceString, TEXT("X="), ParsedX) && ParseValue(*InSourceString, TEXT("Y="), ParsedY);
		X = IntType(ParsedX);
		Y = IntType(ParsedY);
		return bSuccess;
	}
}

template <typename T>
FString TBox2<T>::ToString() const
{
	return FString::Printf(TEXT("bIsValid=%s, Min=(%s), Max=(%s)"), bIsValid ? TEXT("true") : TEXT("false"), *Min.ToString(), *Max.ToString());
}

// ---- Orientation conversions ------------------------------------------------------------

template <typename T>
TRotator<T> TVector<T>::ToOrientationRotator() const
{
	TRotator<T> R;
	R.Yaw = FMath::RadiansToDegrees(FMath::Atan2(Y, X));
	R.Pitch = FMath::RadiansToDegrees(FMath::Atan2(Z, FMath::Sqrt(X * X + Y * Y)));
	R.Roll = 0;
	return R;
}

template <typename T>
TQuat<T> TVector<T>::ToOrientationQuat() const
{
	// Yaw about Z then pitch about the rotated Y, with no roll.
	const T YawRad = FMath::Atan2(Y, X);
	const T PitchRad = FMath::Atan2(Z, FMath::Sqrt(X * X + Y * Y));
	T SP, CP, SY, CY;
	FMath::SinCos(&SP, &CP, PitchRad * T(0.5));
	FMath::SinCos(&SY, &CY, YawRad * T(0.5));
	return TQuat<T>(SP * SY, -SP * CY, CP * SY, CP * CY);
}

template <typename T>
TRotator<T>::TRotator(const TQuat<T>& Quat)
{
	*this = Quat.Rotator();
}

template <typename T>
TVector<T> TRotator<T>::Vector() const
{
	// Angles are reduced first so large values keep their precision through sin and cos.
	const T PitchNoWinding = FMath::Fmod(Pitch, T(360));
	const T YawNoWinding = FMath::Fmod(Yaw, T(360));
	T CP, SP, CY, SY;
	FMath::SinCos(&SP, &CP, FMath::DegreesToRadians(PitchNoWinding));
	FMath::SinCos(&SY, &CY, FMath::DegreesToRadians(YawNoWinding));
	return TVector<T>(CP * CY, CP * SY, SP);
}

template <typename T>
TQuat<T> TRotator<T>::Quaternion() const
{
	const T HalfDegToRad = T(UE_DOUBLE_PI / 360.0);
	T SP, SY, SR, CP, CY, CR;
	FMath::SinCos(&SP, &CP, FMath::Fmod(Pitch, T(360)) * HalfDegToRad);
	FMath::SinCos(&SY, &CY, FMath::Fmod(Yaw, T(360)) * HalfDegToRad);
	FMath::SinCos(&SR, &CR, FMath::Fmod(Roll, T(360)) * HalfDegToRad);

	// Yaw (Z), then pitch (Y), then roll (X), with Unreal's handedness: positive pitch looks up.
	return TQuat<T>(
		CR * SP * SY - SR * CP * CY,
		-CR * SP * CY - SR * CP * SY,
		CR * CP * SY - SR * SP * CY,
		CR * CP * CY + SR * SP * SY);
}

template <typename T>
TRotator<T> TRotator<T>::GetInverse() const
{
	return Quaternion().Inverse().Rotator();
}

template <typename T>
TVector<T> TRotator<T>::RotateVector(const TVector<T>& V) const
{
	return Quaternion().RotateVector(V);
}

template <typename T>
TVector<T> TRotator<T>::UnrotateVector(const TVector<T>& V) const
{
	return Quaternion().UnrotateVector(V);
}

template <typename T>
TRotator<T> TQuat<T>::Rotator() const
{
	const T SingularityTest = Z * X - W * Y;
	const T YawY = T(2) * (W * Z + X * Y);
	const T YawX = T(1) - T(2) * (FMath::Square(Y) + FMath::Square(Z));
	const T RadToDeg = T(180.0 / UE_DOUBLE_PI);

	TRotator<T> Result;
	if (SingularityTest < T(-SingularityThreshold))
	{
		// Looking straight down: yaw and roll share one degree of freedom.
		Result.Pitch = T(-90);
		Result.Yaw = FMath::Atan2(YawY, YawX) * RadToDeg;
		Result.Roll = TRotator<T>::NormalizeAxis(-Result.Yaw - (T(2) * FMath::Atan2(X, W) * RadToDeg));
	}
	else if (SingularityTest > T(SingularityThreshold))
	{
		Result.Pitch = T(90);
		Result.Yaw = FMath::Atan2(YawY, YawX) * RadToDeg;
		Result.Roll = TRotator<T>::NormalizeAxis(Result.Yaw - (T(2) * FMath::Atan2(X, W) * RadToDeg));
	}
	else
	{
		Result.Pitch = FMath::Asin(T(2) * SingularityTest) * RadToDeg;
		Result.Yaw = FMath::Atan2(YawY, YawX) * RadToDeg;
		Result.Roll = FMath::Atan2(T(-2) * (W * X + Y * Z), (T(1) - T(2) * (FMath::Square(X) + FMath::Square(Y)))) * RadToDeg;
	}
	return Result;
}

// The non-inline members exist for float and double only, as in the engine.
template FString TVector<float>::ToString() const;
template FString TVector<double>::ToString() const;
template FString TVector<float>::ToCompactString() const;
template FString TVector<double>::ToCompactString() const;
template bool TVector<float>::InitFromString(const FString&);
template bool TVector<double>::InitFromString(const FString&);
template bool TVector<float>::InitFromCompactString(const FString&);
template bool TVector<double>::InitFromCompactString(const FString&);
template TRotator<float> TVector<float>::ToOrientationRotator() const;
template TRotator<double> TVector<double>::ToOrientationRotator() const;
template TQuat<float> TVector<float>::ToOrientationQuat() const;
template TQuat<double> TVector<double>::ToOrientationQuat() const;

template FString TVector2<float>::ToString() const;
template FString TVector2<double>::ToString() const;
template bool TVector2<float>::InitFromString(const FString&);
template bool TVector2<double>::InitFromString(const FString&);

template TRotator<float>::TRotator(const TQuat<float>&);
template TRotator<double>::TRotator(const TQuat<double>&);
template FString TRotator<float>::ToString() const;
template FString TRotator<double>::ToString() const;
template FString TRotator<float>::ToCompactString() const;
template FString TRotator<double>::ToCompactString() const;
template bool TRotator<float>::InitFromString(const FString&);
template bool TRotator<double>::InitFromString(const FString&);
template TVector<float> TRotator<float>::Vector() const;
template TVector<double> TRotator<double>::Vector() const;
template TQuat<float> TRotator<float>::Quaternion() const;
template TQuat<double> TRotator<double>::Quaternion() const;
template TRotator<float> TRotator<float>::GetInverse() const;
template TRotator<double> TRotator<double>::GetInverse() const;
template TVector<float> TRotator<float>::RotateVector(const TVector<float>&) const;
template TVector<double> TRotator<double>::RotateVector(const TVector<double>&) const;
template TVector<float> TRotator<float>::UnrotateVector(const TVector<float>&) const;
template TVector<double> TRotator<double>::UnrotateVector(const TVector<double>&) const;

template FString TQuat<float>::ToString() const;
template FString TQuat<double>::ToString() const;
template bool TQuat<float>::InitFromString(const FString&);
template bool TQuat<double>::InitFromString(const FString&);
template TRotator<float> TQuat<float>::Rotator() const;
template TRotator<double> TQuat<double>::Rotator() const;

template FString TIntPoint<int32>::ToString() const;
template FString TIntPoint<int64>::ToString() const;
template FString TIntPoint<uint32>::ToString() const;
template bool TIntPoint<int32>::InitFromString(const FString&);
template bool TIntPoint<int64>::InitFromString(const FString&);
template bool TIntPoint<uint32>::InitFromString(const FString&);

template FString TBox2<float>::ToString() const;
template FString TBox2<double>::ToString() const;

} // namespace UE::Math
