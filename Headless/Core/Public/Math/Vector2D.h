#pragma once

#include "CoreTypes.h"
#include "Containers/UnrealString.h"
#include "Math/MathFwd.h"
#include "Math/IntPoint.h"
#include "Math/UnrealMathUtility.h"
#include "Templates/TypeHash.h"

#include <type_traits>

namespace UE::Math
{

/** A point or direction in 2-D space. */
template <typename T>
struct TVector2
{
	static_assert(std::is_floating_point_v<T>, "T must be floating point");

	using FReal = T;

	T X = 0;
	T Y = 0;

	static const TVector2 ZeroVector;
	static const TVector2 OneVector;
	static const TVector2 UnitX;
	static const TVector2 UnitY;

	constexpr TVector2() = default;
	constexpr TVector2(T InX, T InY) : X(InX), Y(InY) {}
	constexpr explicit TVector2(T InF) : X(InF), Y(InF) {}
	constexpr explicit TVector2(EForceInit) : X(0), Y(0) {}
	template <typename IntType>
	constexpr explicit TVector2(TIntPoint<IntType> InPos) : X(T(InPos.X)), Y(T(InPos.Y)) {}
	/** Keeps X and Y of a 3-D vector (defined in Vector.h). */
	explicit TVector2(const TVector<T>& V);

	template <typename FArg> requires(!std::is_same_v<T, FArg>)
	explicit constexpr TVector2(const TVector2<FArg>& From) : X(T(From.X)), Y(T(From.Y)) {}

	[[nodiscard]] constexpr TVector2 operator+(const TVector2& V) const { return TVector2(X + V.X, Y + V.Y); }
	[[nodiscard]] constexpr TVector2 operator-(const TVector2& V) const { return TVector2(X - V.X, Y - V.Y); }
	[[nodiscard]] constexpr TVector2 operator*(const TVector2& V) const { return TVector2(X * V.X, Y * V.Y); }
	[[nodiscard]] constexpr TVector2 operator/(const TVector2& V) const { return TVector2(X / V.X, Y / V.Y); }
	[[nodiscard]] constexpr TVector2 operator-() const { return TVector2(-X, -Y); }

	template <typename FArg> requires std::is_arithmetic_v<FArg>
	[[nodiscard]] constexpr TVector2 operator*(FArg Scale) const { return TVector2(X * T(Scale), Y * T(Scale)); }
	template <typename FArg> requires std::is_arithmetic_v<FArg>
	[[nodiscard]] constexpr TVector2 operator/(FArg Scale) const
	{
		const T RScale = T(1) / T(Scale);
		return TVector2(X * RScale, Y * RScale);
	}
	template <typename FArg> requires std::is_arithmetic_v<FArg>
	[[nodiscard]] constexpr TVector2 operator+(FArg A) const { return TVector2(X + T(A), Y + T(A)); }
	template <typename FArg> requires std::is_arithmetic_v<FArg>
	[[nodiscard]] constexpr TVector2 operator-(FArg A) const { return TVector2(X - T(A), Y - T(A)); }

	/** Dot product. */
	[[nodiscard]] constexpr T operator|(const TVector2& V) const { return X * V.X + Y * V.Y; }
	/** Cross product: the Z of the 3-D cross product of the two vectors lying in the XY plane. */
	[[nodiscard]] constexpr T operator^(const TVector2& V) const { return X * V.Y - Y * V.X; }

	[[nodiscard]] constexpr bool operator==(const TVector2& V) const { return X == V.X && Y == V.Y; }
	[[nodiscard]] constexpr bool operator!=(const TVector2& V) const { return X != V.X || Y != V.Y; }
	// Ordering operators compare every component, so neither of two vectors may be less than the other.
	[[nodiscard]] constexpr bool operator<(const TVector2& Other) const { return X < Other.X && Y < Other.Y; }
	[[nodiscard]] constexpr bool operator>(const TVector2& Other) const { return X > Other.X && Y > Other.Y; }
	[[nodiscard]] constexpr bool operator<=(const TVector2& Other) const { return X <= Other.X && Y <= Other.Y; }
	[[nodiscard]] constexpr bool operator>=(const TVector2& Other) const { return X >= Other.X && Y >= Other.Y; }

	constexpr TVector2& operator+=(const TVector2& V) { X += V.X; Y += V.Y; return *this; }
	constexpr TVector2& operator-=(const TVector2& V) { X -= V.X; Y -= V.Y; return *this; }
	constexpr TVector2& operator*=(const TVector2& V) { X *= V.X; Y *= V.Y; return *this; }
	constexpr TVector2& operator/=(const TVector2& V) { X /= V.X; Y /= V.Y; return *this; }
	template <typename FArg> requires std::is_arithmetic_v<FArg>
	constexpr TVector2& operator*=(FArg Scale) { X *= T(Scale); Y *= T(Scale); return *this; }
	template <typename FArg> requires std::is_arithmetic_v<FArg>
	constexpr TVector2& operator/=(FArg V)
	{
		const T RV = T(1) / T(V);
		X *= RV;
		Y *= RV;
		return *this;
	}

	[[nodiscard]] T& operator[](int32 Index);
	[[nodiscard]] T operator[](int32 Index) const;
	[[nodiscard]] T& Component(int32 Index) { return (*this)[Index]; }
	[[nodiscard]] T Component(int32 Index) const { return (*this)[Index]; }

	[[nodiscard]] static constexpr T DotProduct(const TVector2& A, const TVector2& B) { return A | B; }
	[[nodiscard]] static constexpr T CrossProduct(const TVector2& A, const TVector2& B) { return A ^ B; }
	[[nodiscard]] static constexpr T DistSquared(const TVector2& V1, const TVector2& V2)
	{
		return FMath::Square(V2.X - V1.X) + FMath::Square(V2.Y - V1.Y);
	}
	[[nodiscard]] static T Distance(const TVector2& V1, const TVector2& V2) { return FMath::Sqrt(DistSquared(V1, V2)); }
	[[nodiscard]] static constexpr TVector2 Max(const TVector2& A, const TVector2& B)
	{
		return TVector2(FMath::Max(A.X, B.X), FMath::Max(A.Y, B.Y));
	}
	[[nodiscard]] static constexpr TVector2 Min(const TVector2& A, const TVector2& B)
	{
		return TVector2(FMath::Min(A.X, B.X), FMath::Min(A.Y, B.Y));
	}
	[[nodiscard]] static constexpr TVector2 Clamp(const TVector2& V, const TVector2& MinValue, const TVector2& MaxValue)
	{
		return TVector2(FMath::Clamp(V.X, MinValue.X, MaxValue.X), FMath::Clamp(V.Y, MinValue.Y, MaxValue.Y));
	}

	[[nodiscard]] bool Equals(const TVector2& V, T Tolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return FMath::Abs(X - V.X) <= Tolerance && FMath::Abs(Y - V.Y) <= Tolerance;
	}

	constexpr void Set(T InX, T InY)
	{
		X = InX;
		Y = InY;
	}

	[[nodiscard]] constexpr T GetMax() const { return FMath::Max(X, Y); }
	[[nodiscard]] constexpr T GetAbsMax() const { return FMath::Max(FMath::Abs(X), FMath::Abs(Y)); }
	[[nodiscard]] constexpr T GetMin() const { return FMath::Min(X, Y); }
	[[nodiscard]] constexpr T GetAbsMin() const { return FMath::Min(FMath::Abs(X), FMath::Abs(Y)); }
	[[nodiscard]] constexpr TVector2 GetAbs() const { return TVector2(FMath::Abs(X), FMath::Abs(Y)); }
	[[nodiscard]] constexpr TVector2 ComponentMin(const TVector2& Other) const { return Min(*this, Other); }
	[[nodiscard]] constexpr TVector2 ComponentMax(const TVector2& Other) const { return Max(*this, Other); }

	[[nodiscard]] T Size() const { return FMath::Sqrt(X * X + Y * Y); }
	[[nodiscard]] T Length() const { return Size(); }
	[[nodiscard]] constexpr T SizeSquared() const { return X * X + Y * Y; }
	[[nodiscard]] constexpr T SquaredLength() const { return SizeSquared(); }

	/** Normalises in place; a vector whose squared length is at most Tolerance becomes zero and false is returned. */
	bool Normalize(T Tolerance = UE_SMALL_NUMBER)
	{
		const T SquareSum = X * X + Y * Y;
		if (SquareSum > Tolerance)
		{
			const T Scale = FMath::InvSqrt(SquareSum);
			X *= Scale;
			Y *= Scale;
			return true;
		}
		X = 0;
		Y = 0;
		return false;
	}

	[[nodiscard]] TVector2 GetSafeNormal(T Tolerance = UE_SMALL_NUMBER) const
	{
		const T SquareSum = X * X + Y * Y;
		if (SquareSum > Tolerance)
		{
			const T Scale = FMath::InvSqrt(SquareSum);
			return TVector2(X * Scale, Y * Scale);
		}
		return TVector2(T(0), T(0));
	}

	[[nodiscard]] bool IsNearlyZero(T Tolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return FMath::Abs(X) <= Tolerance && FMath::Abs(Y) <= Tolerance;
	}
	[[nodiscard]] constexpr bool IsZero() const { return X == 0 && Y == 0; }

	/** Rotated counter-clockwise by AngleDeg degrees about the origin. */
	[[nodiscard]] TVector2 GetRotated(T AngleDeg) const
	{
		T S, C;
		FMath::SinCos(&S, &C, FMath::DegreesToRadians(AngleDeg));
		return TVector2(C * X - S * Y, S * X + C * Y);
	}

	[[nodiscard]] TVector2 RoundToVector() const { return TVector2(FMath::RoundToFloat(X), FMath::RoundToFloat(Y)); }
	[[nodiscard]] constexpr TVector2 ClampAxes(T MinAxisVal, T MaxAxisVal) const
	{
		return TVector2(FMath::Clamp(X, MinAxisVal, MaxAxisVal), FMath::Clamp(Y, MinAxisVal, MaxAxisVal));
	}
	[[nodiscard]] TVector2 GridSnap(T GridSz) const { return TVector2(FMath::GridSnap(X, GridSz), FMath::GridSnap(Y, GridSz)); }
	[[nodiscard]] FIntPoint IntPoint() const { return FIntPoint(FMath::RoundToInt32(X), FMath::RoundToInt32(Y)); }
	[[nodiscard]] bool ContainsNaN() const { return !FMath::IsFinite(X) || !FMath::IsFinite(Y); }

	/** "X=%3.3f Y=%3.3f", as the engine prints it. */
	[[nodiscard]] CORE_API FString ToString() const;
	/** Reads "X=... Y=..." in any order; both are required. On failure the components are zero. */
	CORE_API bool InitFromString(const FString& InSourceString);
};

template <typename T> const TVector2<T> TVector2<T>::ZeroVector(T(0), T(0));
template <typename T> const TVector2<T> TVector2<T>::OneVector(T(1), T(1));
template <typename T> const TVector2<T> TVector2<T>::UnitX(T(1), T(0));
template <typename T> const TVector2<T> TVector2<T>::UnitY(T(0), T(1));

template <typename T>
T& TVector2<T>::operator[](int32 Index)
{
	check(Index >= 0 && Index < 2);
	return Index == 0 ? X : Y;
}

template <typename T>
T TVector2<T>::operator[](int32 Index) const
{
	check(Index >= 0 && Index < 2);
	return Index == 0 ? X : Y;
}

template <typename T, typename FArg> requires std::is_arithmetic_v<FArg>
[[nodiscard]] constexpr TVector2<T> operator*(FArg Scale, const TVector2<T>& V)
{
	return V * Scale;
}

template <typename T>
[[nodiscard]] inline uint32 GetTypeHash(const TVector2<T>& Vector)
{
	// Adding zero folds -0 into +0, so vectors that compare equal hash equally.
	return HashCombine(::GetTypeHash(Vector.X + T(0)), ::GetTypeHash(Vector.Y + T(0)));
}

} // namespace UE::Math
