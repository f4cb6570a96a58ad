#pragma once

#include "CoreTypes.h"
#include "Math/MathFwd.h"
#include "Math/NumericLimits.h"

#include <cmath>
#include <limits>
#include <type_traits>

// Constants keep the engine's literal types: the UE_ names are float literals, the UE_DOUBLE_
// names doubles. Code that passes UE_SMALL_NUMBER as a double tolerance therefore sees the
// same slightly-off value (1e-8f widened) that it sees in the editor.
#define UE_PI                   (3.1415926535897932f)
#define UE_SMALL_NUMBER         (1.e-8f)
#define UE_KINDA_SMALL_NUMBER   (1.e-4f)
#define UE_BIG_NUMBER           (3.4e+38f)
#define UE_EULERS_NUMBER        (2.71828182845904523536f)
#define UE_GOLDEN_RATIO         (1.6180339887498948482045868343656381f)
#define UE_FLOAT_NON_FRACTIONAL (8388608.f)

#define UE_DOUBLE_PI                 (3.141592653589793238462643383279502884197169399)
#define UE_DOUBLE_SMALL_NUMBER       (1.e-8)
#define UE_DOUBLE_KINDA_SMALL_NUMBER (1.e-4)
#define UE_DOUBLE_BIG_NUMBER         (3.4e+38)
#define UE_DOUBLE_EULERS_NUMBER      (2.7182818284590452353602874713526624977572)
#define UE_DOUBLE_GOLDEN_RATIO       (1.6180339887498948482045868343656381)
#define UE_DOUBLE_NON_FRACTIONAL     (4503599627370496.0)

#define UE_MAX_FLT 3.402823466e+38F

#define UE_INV_PI     (0.31830988618f)
#define UE_HALF_PI    (1.57079632679f)
#define UE_TWO_PI     (6.28318530717f)
#define UE_PI_SQUARED (9.86960440108f)

#define UE_DOUBLE_INV_PI     (0.31830988618379067154)
#define UE_DOUBLE_HALF_PI    (1.57079632679489661923)
#define UE_DOUBLE_TWO_PI     (6.28318530717958647692)
#define UE_DOUBLE_PI_SQUARED (9.86960440108935861883)

#define UE_SQRT_2     (1.4142135623730950488016887242097f)
#define UE_SQRT_3     (1.7320508075688772935274463415059f)
#define UE_INV_SQRT_2 (0.70710678118654752440084436210485f)

#define UE_DOUBLE_SQRT_2     (1.4142135623730950488016887242097)
#define UE_DOUBLE_SQRT_3     (1.7320508075688772935274463415059)
#define UE_DOUBLE_INV_SQRT_2 (0.70710678118654752440084436210485)

#define UE_DELTA        (0.00001f)
#define UE_DOUBLE_DELTA (0.00001)

#define UE_FLOAT_NORMAL_THRESH  (0.0001f)
#define UE_DOUBLE_NORMAL_THRESH (0.0001)

#define UE_THRESH_POINTS_ARE_SAME    (0.00002f)
#define UE_THRESH_NORMALS_ARE_SAME   (0.00002f)
#define UE_THRESH_ZERO_NORM_SQUARED  (0.0001f)
#define UE_THRESH_VECTOR_NORMALIZED  (0.01f)
#define UE_THRESH_QUAT_NORMALIZED    (0.01f)

#define UE_DOUBLE_THRESH_POINTS_ARE_SAME   (0.00002)
#define UE_DOUBLE_THRESH_VECTOR_NORMALIZED (0.01)
#define UE_DOUBLE_THRESH_QUAT_NORMALIZED   (0.01)

// Names older engine code still uses.
#undef PI
#define PI                 UE_PI
#define SMALL_NUMBER       UE_SMALL_NUMBER
#define KINDA_SMALL_NUMBER UE_KINDA_SMALL_NUMBER
#define BIG_NUMBER         UE_BIG_NUMBER
#define DOUBLE_PI          UE_DOUBLE_PI
#define DOUBLE_SMALL_NUMBER UE_DOUBLE_SMALL_NUMBER
#define DOUBLE_KINDA_SMALL_NUMBER UE_DOUBLE_KINDA_SMALL_NUMBER
#define HALF_PI            UE_HALF_PI
#define TWO_PI             UE_TWO_PI
#define INV_PI             UE_INV_PI
#define DELTA              UE_DELTA

// Types that need their own interpolation (rotators take the short way round) specialise this.
template <typename T>
struct TCustomLerp
{
	static constexpr bool Value = false;
};

namespace UE::Math::Private
{
	// The engine converts with the processor's truncating instruction, which yields the
	// "integer indefinite" value (the type's minimum) for NaN and out-of-range inputs.
	// Reproducing that keeps results identical without invoking C++'s undefined conversion.
	template <typename IntType, typename FloatType>
	constexpr IntType SaturatingTrunc(FloatType Value)
	{
		constexpr FloatType Lower = static_cast<FloatType>(std::numeric_limits<IntType>::min());
		constexpr FloatType Upper = -Lower; // 2^(bits-1), exactly representable
		if (!(Value > Lower - FloatType(1)) || !(Value < Upper))
		{
			return std::numeric_limits<IntType>::min();
		}
		return static_cast<IntType>(Value);
	}
}

struct FMath
{
	// ---- Comparison and selection -------------------------------------------------------

	template <typename T>
	[[nodiscard]] static constexpr T Max(const T A, const T B) { return (B < A) ? A : B; }

	template <typename T>
	[[nodiscard]] static constexpr T Min(const T A, const T B) { return (A < B) ? A : B; }

	template <typename T>
	[[nodiscard]] static constexpr T Max3(const T A, const T B, const T C) { return Max(Max(A, B), C); }

	template <typename T>
	[[nodiscard]] static constexpr T Min3(const T A, const T B, const T C) { return Min(Min(A, B), C); }

	template <typename T>
	[[nodiscard]] static constexpr T Abs(const T A) { return (A < T(0)) ? -A : A; }

	template <typename T>
	[[nodiscard]] static constexpr T Sign(const T A) { return (A > T(0)) ? T(1) : ((A < T(0)) ? T(-1) : T(0)); }

	template <typename T>
	[[nodiscard]] static constexpr T Square(const T A) { return A * A; }

	template <typename T>
	[[nodiscard]] static constexpr T Cube(const T A) { return A * A * A; }

	/** Clamps X into [MinValue, MaxValue]; with an inverted range the minimum wins, as in the engine. */
	template <typename T>
	[[nodiscard]] static constexpr T Clamp(const T X, const T MinValue, const T MaxValue)
	{
		return Max(Min(X, MaxValue), MinValue);
	}

	// Mixed float/double arguments promote to double instead of failing to deduce.
	template <typename A, typename B, typename C>
		requires(std::is_arithmetic_v<A> && std::is_arithmetic_v<B> && std::is_arithmetic_v<C>
			&& !(std::is_same_v<A, B> && std::is_same_v<B, C>))
	[[nodiscard]] static constexpr auto Clamp(const A X, const B MinValue, const C MaxValue)
	{
		using R = std::common_type_t<A, B, C>;
		return Clamp<R>(R(X), R(MinValue), R(MaxValue));
	}

	template <typename A, typename B>
		requires(std::is_arithmetic_v<A> && std::is_arithmetic_v<B> && !std::is_same_v<A, B>)
	[[nodiscard]] static constexpr auto Max(const A X, const B Y)
	{
		using R = std::common_type_t<A, B>;
		return Max<R>(R(X), R(Y));
	}

	template <typename A, typename B>
		requires(std::is_arithmetic_v<A> && std::is_arithmetic_v<B> && !std::is_same_v<A, B>)
	[[nodiscard]] static constexpr auto Min(const A X, const B Y)
	{
		using R = std::common_type_t<A, B>;
		return Min<R>(R(X), R(Y));
	}

	template <typename T, typename U>
	[[nodiscard]] static constexpr bool IsWithin(const T& TestValue, const U& MinValue, const U& MaxValue)
	{
		return (TestValue >= MinValue) && (TestValue < MaxValue);
	}

	template <typename T, typename U>
	[[nodiscard]] static constexpr bool IsWithinInclusive(const T& TestValue, const U& MinValue, const U& MaxValue)
	{
		return (TestValue >= MinValue) && (TestValue <= MaxValue);
	}

	[[nodiscard]] static bool IsNearlyEqual(float A, float B, float ErrorTolerance = UE_SMALL_NUMBER)
	{
		return Abs<float>(A - B) <= ErrorTolerance;
	}

	[[nodiscard]] static bool IsNearlyEqual(double A, double B, double ErrorTolerance = UE_DOUBLE_SMALL_NUMBER)
	{
		return Abs<double>(A - B) <= ErrorTolerance;
	}

	template <typename A, typename B>
		requires(std::is_arithmetic_v<A> && std::is_arithmetic_v<B> && !std::is_same_v<A, B>)
	[[nodiscard]] static bool IsNearlyEqual(A X, B Y)
	{
		return IsNearlyEqual(double(X), double(Y));
	}

	template <typename A, typename B, typename C>
		requires(std::is_arithmetic_v<A> && std::is_arithmetic_v<B> && std::is_arithmetic_v<C>
			&& !(std::is_same_v<A, B> && std::is_same_v<B, C>))
	[[nodiscard]] static bool IsNearlyEqual(A X, B Y, C Tolerance)
	{
		return IsNearlyEqual(double(X), double(Y), double(Tolerance));
	}

	[[nodiscard]] static bool IsNearlyZero(float Value, float ErrorTolerance = UE_SMALL_NUMBER)
	{
		return Abs<float>(Value) <= ErrorTolerance;
	}

	[[nodiscard]] static bool IsNearlyZero(double Value, double ErrorTolerance = UE_DOUBLE_SMALL_NUMBER)
	{
		return Abs<double>(Value) <= ErrorTolerance;
	}

	template <typename A, typename B>
		requires(std::is_arithmetic_v<A> && std::is_arithmetic_v<B> && !std::is_same_v<A, B>)
	[[nodiscard]] static bool IsNearlyZero(A Value, B Tolerance)
	{
		return IsNearlyZero(double(Value), double(Tolerance));
	}

	template <typename T>
	[[nodiscard]] static bool IsNaN(T A) { return std::isnan(A); }

	template <typename T>
	[[nodiscard]] static bool IsFinite(T A) { return std::isfinite(A); }

	/** True for powers of two and, as in the engine, for zero. */
	template <typename T>
	[[nodiscard]] static constexpr bool IsPowerOfTwo(T Value) { return (Value & (Value - 1)) == T(0); }

	// ---- Integer helpers ----------------------------------------------------------------

	template <typename T>
	[[nodiscard]] static constexpr T DivideAndRoundUp(T Dividend, T Divisor) { return (Dividend + Divisor - 1) / Divisor; }

	template <typename T>
	[[nodiscard]] static constexpr T DivideAndRoundDown(T Dividend, T Divisor) { return Dividend / Divisor; }

	template <typename T>
	[[nodiscard]] static constexpr T DivideAndRoundNearest(T Dividend, T Divisor)
	{
		return (Dividend >= 0) ? (Dividend + Divisor / 2) / Divisor : (Dividend - Divisor / 2 + 1) / Divisor;
	}

	[[nodiscard]] static constexpr uint32 RoundUpToPowerOfTwo(uint32 Value)
	{
		uint32 Result = 1;
		while (Result < Value && Result != 0x80000000u)
		{
			Result <<= 1;
		}
		return Result < Value ? 0 : Result;
	}

	// ---- Float to integer ---------------------------------------------------------------

	[[nodiscard]] static constexpr int32 TruncToInt32(float F) { return UE::Math::Private::SaturatingTrunc<int32>(F); }
	[[nodiscard]] static constexpr int32 TruncToInt32(double F) { return UE::Math::Private::SaturatingTrunc<int32>(F); }
	[[nodiscard]] static constexpr int64 TruncToInt64(double F) { return UE::Math::Private::SaturatingTrunc<int64>(F); }
	[[nodiscard]] static constexpr int32 TruncToInt(float F) { return TruncToInt32(F); }
	[[nodiscard]] static constexpr int64 TruncToInt(double F) { return TruncToInt64(F); }
	[[nodiscard]] static float TruncToFloat(float F) { return std::trunc(F); }
	[[nodiscard]] static double TruncToDouble(double F) { return std::trunc(F); }
	[[nodiscard]] static double TruncToFloat(double F) { return std::trunc(F); }

	[[nodiscard]] static float FloorToFloat(float F) { return std::floor(F); }
	[[nodiscard]] static double FloorToDouble(double F) { return std::floor(F); }
	[[nodiscard]] static double FloorToFloat(double F) { return std::floor(F); }
	[[nodiscard]] static float Floor(float F) { return std::floor(F); }
	[[nodiscard]] static double Floor(double F) { return std::floor(F); }
	template <typename T> requires std::is_integral_v<T>
	[[nodiscard]] static constexpr T Floor(T I) { return I; }
	[[nodiscard]] static int32 FloorToInt32(float F) { return TruncToInt32(std::floor(F)); }
	[[nodiscard]] static int32 FloorToInt32(double F) { return TruncToInt32(std::floor(F)); }
	[[nodiscard]] static int64 FloorToInt64(double F) { return TruncToInt64(std::floor(F)); }
	[[nodiscard]] static int32 FloorToInt(float F) { return FloorToInt32(F); }
	[[nodiscard]] static int64 FloorToInt(double F) { return FloorToInt64(F); }

	[[nodiscard]] static float CeilToFloat(float F) { return std::ceil(F); }
	[[nodiscard]] static double CeilToDouble(double F) { return std::ceil(F); }
	[[nodiscard]] static double CeilToFloat(double F) { return std::ceil(F); }
	[[nodiscard]] static int32 CeilToInt32(float F) { return TruncToInt32(std::ceil(F)); }
	[[nodiscard]] static int32 CeilToInt32(double F) { return TruncToInt32(std::ceil(F)); }
	[[nodiscard]] static int64 CeilToInt64(double F) { return TruncToInt64(std::ceil(F)); }
	[[nodiscard]] static int32 CeilToInt(float F) { return CeilToInt32(F); }
	[[nodiscard]] static int64 CeilToInt(double F) { return CeilToInt64(F); }

	// Rounding adds one half and floors, so halves always go up (-2.5 becomes -2).
	[[nodiscard]] static int32 RoundToInt32(float F) { return FloorToInt32(F + 0.5f); }
	[[nodiscard]] static int32 RoundToInt32(double F) { return FloorToInt32(F + 0.5); }
	[[nodiscard]] static int64 RoundToInt64(double F) { return FloorToInt64(F + 0.5); }
	[[nodiscard]] static int32 RoundToInt(float F) { return RoundToInt32(F); }
	[[nodiscard]] static int64 RoundToInt(double F) { return RoundToInt64(F); }
	[[nodiscard]] static float RoundToFloat(float F) { return FloorToFloat(F + 0.5f); }
	[[nodiscard]] static double RoundToDouble(double F) { return FloorToDouble(F + 0.5); }
	[[nodiscard]] static double RoundToFloat(double F) { return FloorToDouble(F + 0.5); }

	[[nodiscard]] static CORE_API float TruncateToHalfIfClose(float F, float Tolerance = UE_SMALL_NUMBER);
	[[nodiscard]] static CORE_API double TruncateToHalfIfClose(double F, double Tolerance = UE_DOUBLE_SMALL_NUMBER);
	[[nodiscard]] static CORE_API float RoundHalfToEven(float F);
	[[nodiscard]] static CORE_API double RoundHalfToEven(double F);
	[[nodiscard]] static CORE_API float RoundHalfFromZero(float F);
	[[nodiscard]] static CORE_API double RoundHalfFromZero(double F);
	[[nodiscard]] static CORE_API float RoundHalfToZero(float F);
	[[nodiscard]] static CORE_API double RoundHalfToZero(double F);

	[[nodiscard]] static float RoundFromZero(float F) { return (F < 0.0f) ? FloorToFloat(F) : CeilToFloat(F); }
	[[nodiscard]] static double RoundFromZero(double F) { return (F < 0.0) ? FloorToDouble(F) : CeilToDouble(F); }
	[[nodiscard]] static float RoundToZero(float F) { return (F < 0.0f) ? CeilToFloat(F) : FloorToFloat(F); }
	[[nodiscard]] static double RoundToZero(double F) { return (F < 0.0) ? CeilToDouble(F) : FloorToDouble(F); }
	[[nodiscard]] static float RoundToNegativeInfinity(float F) { return FloorToFloat(F); }
	[[nodiscard]] static double RoundToNegativeInfinity(double F) { return FloorToDouble(F); }
	[[nodiscard]] static float RoundToPositiveInfinity(float F) { return CeilToFloat(F); }
	[[nodiscard]] static double RoundToPositiveInfinity(double F) { return CeilToDouble(F); }

	/** Fractional part with the sign of the input: -1.25 gives -0.25. */
	[[nodiscard]] static float Fractional(float Value) { return Value - TruncToFloat(Value); }
	[[nodiscard]] static double Fractional(double Value) { return Value - TruncToDouble(Value); }
	/** Fractional part towards negative infinity: -1.25 gives 0.75. */
	[[nodiscard]] static float Frac(float Value) { return Value - FloorToFloat(Value); }
	[[nodiscard]] static double Frac(double Value) { return Value - FloorToDouble(Value); }

	[[nodiscard]] static float Modf(float Value, float* OutIntPart) { return std::modf(Value, OutIntPart); }
	[[nodiscard]] static double Modf(double Value, double* OutIntPart) { return std::modf(Value, OutIntPart); }

	/** Remainder of X / Y; a divisor within UE_SMALL_NUMBER of zero gives 0 instead of NaN. */
	[[nodiscard]] static CORE_API float Fmod(float X, float Y);
	[[nodiscard]] static CORE_API double Fmod(double X, double Y);
	template <typename A, typename B>
		requires(std::is_arithmetic_v<A> && std::is_arithmetic_v<B> && !std::is_same_v<A, B>)
	[[nodiscard]] static double Fmod(A X, B Y) { return Fmod(double(X), double(Y)); }

	// ---- Transcendentals ----------------------------------------------------------------

	[[nodiscard]] static float Sqrt(float Value) { return std::sqrt(Value); }
	[[nodiscard]] static double Sqrt(double Value) { return std::sqrt(Value); }
	/** Integers are taken as doubles rather than being ambiguous between the two overloads. */
	template <typename T> requires std::is_integral_v<T>
	[[nodiscard]] static double Sqrt(T Value) { return std::sqrt(double(Value)); }
	[[nodiscard]] static float InvSqrt(float Value) { return 1.0f / std::sqrt(Value); }
	[[nodiscard]] static double InvSqrt(double Value) { return 1.0 / std::sqrt(Value); }
	[[nodiscard]] static float Pow(float A, float B) { return std::pow(A, B); }
	[[nodiscard]] static double Pow(double A, double B) { return std::pow(A, B); }
	[[nodiscard]] static float Exp(float Value) { return std::exp(Value); }
	[[nodiscard]] static double Exp(double Value) { return std::exp(Value); }
	[[nodiscard]] static float Exp2(float Value) { return std::exp2(Value); }
	[[nodiscard]] static double Exp2(double Value) { return std::exp2(Value); }
	[[nodiscard]] static float Loge(float Value) { return std::log(Value); }
	[[nodiscard]] static double Loge(double Value) { return std::log(Value); }
	[[nodiscard]] static float Log2(float Value) { return std::log2(Value); }
	[[nodiscard]] static double Log2(double Value) { return std::log2(Value); }
	[[nodiscard]] static float LogX(float Base, float Value) { return Loge(Value) / Loge(Base); }
	[[nodiscard]] static double LogX(double Base, double Value) { return Loge(Value) / Loge(Base); }

	[[nodiscard]] static float Sin(float Value) { return std::sin(Value); }
	[[nodiscard]] static double Sin(double Value) { return std::sin(Value); }
	[[nodiscard]] static float Cos(float Value) { return std::cos(Value); }
	[[nodiscard]] static double Cos(double Value) { return std::cos(Value); }
	[[nodiscard]] static float Tan(float Value) { return std::tan(Value); }
	[[nodiscard]] static double Tan(double Value) { return std::tan(Value); }
	// Inverse sine and cosine clamp their input so values a rounding step outside [-1, 1] do not give NaN.
	[[nodiscard]] static float Asin(float Value) { return std::asin(Clamp(Value, -1.0f, 1.0f)); }
	[[nodiscard]] static double Asin(double Value) { return std::asin(Clamp(Value, -1.0, 1.0)); }
	[[nodiscard]] static float Acos(float Value) { return std::acos(Clamp(Value, -1.0f, 1.0f)); }
	[[nodiscard]] static double Acos(double Value) { return std::acos(Clamp(Value, -1.0, 1.0)); }
	[[nodiscard]] static float Atan(float Value) { return std::atan(Value); }
	[[nodiscard]] static double Atan(double Value) { return std::atan(Value); }
	/**
	 * Angle of (X, Y) in (-pi, pi]. As in the engine, the sign comes from Y < 0, so a negative
	 * zero Y gives +0 or +pi rather than -0 or -pi, and (0, 0) gives 0: angles printed with %f
	 * never read "-0.000000".
	 */
	[[nodiscard]] static float Atan2(float Y, float X)
	{
		if (X == 0.0f && Y == 0.0f)
		{
			return 0.0f;
		}
		const float Angle = std::atan2(std::fabs(Y), X);
		return (Y < 0.0f) ? -Angle : Angle;
	}
	[[nodiscard]] static double Atan2(double Y, double X)
	{
		if (X == 0.0 && Y == 0.0)
		{
			return 0.0;
		}
		const double Angle = std::atan2(std::fabs(Y), X);
		return (Y < 0.0) ? -Angle : Angle;
	}
	static void SinCos(float* ScalarSin, float* ScalarCos, float Value)
	{
		*ScalarSin = std::sin(Value);
		*ScalarCos = std::cos(Value);
	}
	static void SinCos(double* ScalarSin, double* ScalarCos, double Value)
	{
		*ScalarSin = std::sin(Value);
		*ScalarCos = std::cos(Value);
	}

	// ---- Angles -------------------------------------------------------------------------

	[[nodiscard]] static constexpr float RadiansToDegrees(float RadVal) { return RadVal * (180.f / UE_PI); }
	[[nodiscard]] static constexpr double RadiansToDegrees(double RadVal) { return RadVal * (180.0 / UE_DOUBLE_PI); }
	[[nodiscard]] static constexpr float DegreesToRadians(float DegVal) { return DegVal * (UE_PI / 180.f); }
	[[nodiscard]] static constexpr double DegreesToRadians(double DegVal) { return DegVal * (UE_DOUBLE_PI / 180.0); }

	template <typename T> requires std::is_floating_point_v<T>
	[[nodiscard]] static T UnwindDegrees(T A)
	{
		// A bounded loop would spin for ever on huge inputs; Fmod gets there directly.
		A = Fmod(A, T(360));
		if (A > T(180))
		{
			A -= T(360);
		}
		else if (A < T(-180))
		{
			A += T(360);
		}
		return A;
	}

	template <typename T> requires std::is_floating_point_v<T>
	[[nodiscard]] static T UnwindRadians(T A)
	{
		A = Fmod(A, T(UE_DOUBLE_TWO_PI));
		if (A > T(UE_DOUBLE_PI))
		{
			A -= T(UE_DOUBLE_TWO_PI);
		}
		else if (A < T(-UE_DOUBLE_PI))
		{
			A += T(UE_DOUBLE_TWO_PI);
		}
		return A;
	}

	/** Smallest signed difference between two headings in degrees, in [-180, 180]. */
	template <typename T> requires std::is_floating_point_v<T>
	[[nodiscard]] static T FindDeltaAngleDegrees(T A1, T A2)
	{
		return UnwindDegrees(A2 - A1);
	}

	// ---- Interpolation and snapping -----------------------------------------------------

	template <typename T, typename U>
	[[nodiscard]] static constexpr T Lerp(const T& A, const T& B, const U& Alpha)
	{
		if constexpr (TCustomLerp<T>::Value)
		{
			return TCustomLerp<T>::Lerp(A, B, Alpha);
		}
		else
		{
			return static_cast<T>(A + Alpha * (B - A));
		}
	}

	/** Fraction of the way Value lies from MinValue to MaxValue; a zero-width range gives 0 or 1. */
	template <typename T> requires std::is_floating_point_v<T>
	[[nodiscard]] static T GetRangePct(T MinValue, T MaxValue, T Value)
	{
		const T Divisor = MaxValue - MinValue;
		if (IsNearlyZero(Divisor))
		{
			return (Value >= MaxValue) ? T(1) : T(0);
		}
		return (Value - MinValue) / Divisor;
	}

	/** Snaps Location to the nearest multiple of Grid, halves rounding up; a zero grid leaves it alone. */
	template <typename T>
	[[nodiscard]] static constexpr T GridSnap(T Location, T Grid)
	{
		return (Grid == T{}) ? Location : (Floor((Location + (Grid / T(2))) / Grid) * Grid);
	}

	template <typename A, typename B>
		requires(std::is_arithmetic_v<A> && std::is_arithmetic_v<B> && !std::is_same_v<A, B>)
	[[nodiscard]] static constexpr auto GridSnap(A Location, B Grid)
	{
		using R = std::common_type_t<A, B>;
		return GridSnap<R>(R(Location), R(Grid));
	}

	// ---- Random numbers -----------------------------------------------------------------
	// One process-wide generator with a fixed starting seed, so a run is reproducible unless
	// the caller reseeds it. RandInit and SRandInit both reseed it.

	static CORE_API void RandInit(int32 Seed);
	/** Uniform integer in [0, 0x7fffffff]. */
	[[nodiscard]] static CORE_API int32 Rand();
	/** Uniform float in [0, 1). */
	[[nodiscard]] static CORE_API float FRand();
	static CORE_API void SRandInit(int32 Seed);
	[[nodiscard]] static CORE_API int32 GetRandSeed();
	/** Uniform float in [0, 1) from the seeded generator. */
	[[nodiscard]] static CORE_API float SRand();

	/** Uniform integer in [0, A), or 0 when A is not positive. */
	[[nodiscard]] static int32 RandHelper(int32 A)
	{
		return A > 0 ? Min(TruncToInt32(FRand() * float(A)), A - 1) : 0;
	}

	/** Uniform integer in [Min, Max], both inclusive. */
	[[nodiscard]] static int32 RandRange(int32 InMin, int32 InMax)
	{
		const int64 Range = int64(InMax) - int64(InMin) + 1;
		if (Range <= 0)
		{
			return InMin;
		}
		const int64 Offset = Min<int64>(int64(double(FRand()) * double(Range)), Range - 1);
		return int32(int64(InMin) + Offset);
	}

	[[nodiscard]] static float RandRange(float InMin, float InMax) { return FRandRange(InMin, InMax); }
	[[nodiscard]] static double RandRange(double InMin, double InMax) { return FRandRange(InMin, InMax); }
	[[nodiscard]] static float FRandRange(float InMin, float InMax) { return InMin + (InMax - InMin) * FRand(); }
	[[nodiscard]] static double FRandRange(double InMin, double InMax) { return InMin + (InMax - InMin) * double(FRand()); }
	[[nodiscard]] static bool RandBool() { return RandRange(0, 1) == 1; }
};
