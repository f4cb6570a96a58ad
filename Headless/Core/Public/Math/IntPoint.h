#pragma once

#include "CoreTypes.h"
#include "Containers/UnrealString.h"
#include "Math/MathFwd.h"
#include "Math/UnrealMathUtility.h"
#include "Templates/TypeHash.h"

#include <type_traits>

namespace UE::Math
{

/** A pair of integers: a pixel, a cell, a size in whole units. */
template <typename InIntType>
struct TIntPoint
{
	using IntType = InIntType;
	static_assert(std::is_integral_v<IntType>, "An integer type is required");

	IntType X = 0;
	IntType Y = 0;

	static const TIntPoint ZeroValue;
	static const TIntPoint NoneValue;

	constexpr TIntPoint() = default;
	constexpr TIntPoint(IntType InX, IntType InY) : X(InX), Y(InY) {}
	constexpr explicit TIntPoint(IntType InXY) : X(InXY), Y(InXY) {}
	constexpr explicit TIntPoint(EForceInit) : X(0), Y(0) {}

	template <typename OtherIntType> requires(!std::is_same_v<IntType, OtherIntType>)
	explicit constexpr TIntPoint(TIntPoint<OtherIntType> Other) : X(IntType(Other.X)), Y(IntType(Other.Y)) {}

	[[nodiscard]] IntType& operator[](int32 Index)
	{
		check(Index >= 0 && Index < 2);
		return Index == 0 ? X : Y;
	}
	[[nodiscard]] IntType operator[](int32 Index) const
	{
		check(Index >= 0 && Index < 2);
		return Index == 0 ? X : Y;
	}

	[[nodiscard]] constexpr bool operator==(const TIntPoint& Other) const { return X == Other.X && Y == Other.Y; }
	[[nodiscard]] constexpr bool operator!=(const TIntPoint& Other) const { return X != Other.X || Y != Other.Y; }

	constexpr TIntPoint& operator*=(IntType Scale) { X *= Scale; Y *= Scale; return *this; }
	/** Integer division truncates towards zero, as the engine's does. Dividing by zero is refused by check(). */
	TIntPoint& operator/=(IntType Divisor)
	{
		check(Divisor != 0);
		X /= Divisor;
		Y /= Divisor;
		return *this;
	}
	constexpr TIntPoint& operator+=(const TIntPoint& Other) { X += Other.X; Y += Other.Y; return *this; }
	constexpr TIntPoint& operator-=(const TIntPoint& Other) { X -= Other.X; Y -= Other.Y; return *this; }
	constexpr TIntPoint& operator*=(const TIntPoint& Other) { X *= Other.X; Y *= Other.Y; return *this; }
	TIntPoint& operator/=(const TIntPoint& Other)
	{
		check(Other.X != 0 && Other.Y != 0);
		X /= Other.X;
		Y /= Other.Y;
		return *this;
	}

	[[nodiscard]] constexpr TIntPoint operator*(IntType Scale) const { return TIntPoint(*this) *= Scale; }
	[[nodiscard]] TIntPoint operator/(IntType Divisor) const { return TIntPoint(*this) /= Divisor; }
	[[nodiscard]] constexpr TIntPoint operator+(const TIntPoint& Other) const { return TIntPoint(*this) += Other; }
	[[nodiscard]] constexpr TIntPoint operator-(const TIntPoint& Other) const { return TIntPoint(*this) -= Other; }
	[[nodiscard]] constexpr TIntPoint operator*(const TIntPoint& Other) const { return TIntPoint(*this) *= Other; }
	[[nodiscard]] TIntPoint operator/(const TIntPoint& Other) const { return TIntPoint(*this) /= Other; }
	[[nodiscard]] constexpr TIntPoint operator-() const { return TIntPoint(-X, -Y); }

	[[nodiscard]] constexpr TIntPoint ComponentMin(const TIntPoint& Other) const
	{
		return TIntPoint(FMath::Min(X, Other.X), FMath::Min(Y, Other.Y));
	}
	[[nodiscard]] constexpr TIntPoint ComponentMax(const TIntPoint& Other) const
	{
		return TIntPoint(FMath::Max(X, Other.X), FMath::Max(Y, Other.Y));
	}
	[[nodiscard]] constexpr IntType GetMax() const { return FMath::Max(X, Y); }
	[[nodiscard]] constexpr IntType GetMin() const { return FMath::Min(X, Y); }

	/** Length rounded down to an integer. */
	[[nodiscard]] IntType Size() const
	{
		return IntType(FMath::Sqrt(double(X) * double(X) + double(Y) * double(Y)));
	}
	[[nodiscard]] constexpr IntType SizeSquared() const { return X * X + Y * Y; }

	[[nodiscard]] static TIntPoint DivideAndRoundUp(TIntPoint Lhs, IntType Divisor)
	{
		check(Divisor != 0);
		return TIntPoint(FMath::DivideAndRoundUp(Lhs.X, Divisor), FMath::DivideAndRoundUp(Lhs.Y, Divisor));
	}
	[[nodiscard]] static TIntPoint DivideAndRoundUp(TIntPoint Lhs, TIntPoint Divisor)
	{
		check(Divisor.X != 0 && Divisor.Y != 0);
		return TIntPoint(FMath::DivideAndRoundUp(Lhs.X, Divisor.X), FMath::DivideAndRoundUp(Lhs.Y, Divisor.Y));
	}
	[[nodiscard]] static TIntPoint DivideAndRoundDown(TIntPoint Lhs, IntType Divisor)
	{
		check(Divisor != 0);
		return TIntPoint(FMath::DivideAndRoundDown(Lhs.X, Divisor), FMath::DivideAndRoundDown(Lhs.Y, Divisor));
	}

	/** "X=%d Y=%d". */
	[[nodiscard]] CORE_API FString ToString() const;
	/** Reads "X=... Y=..."; both are required. */
	CORE_API bool InitFromString(const FString& InSourceString);
};

template <typename IntType> const TIntPoint<IntType> TIntPoint<IntType>::ZeroValue(0, 0);
template <typename IntType> const TIntPoint<IntType> TIntPoint<IntType>::NoneValue(static_cast<IntType>(INDEX_NONE), static_cast<IntType>(INDEX_NONE));

template <typename IntType>
[[nodiscard]] inline uint32 GetTypeHash(const TIntPoint<IntType>& Point)
{
	return HashCombine(::GetTypeHash(Point.X), ::GetTypeHash(Point.Y));
}

} // namespace UE::Math
