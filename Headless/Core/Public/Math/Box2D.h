#pragma once

#include "CoreTypes.h"
#include "Containers/UnrealString.h"
#include "Math/MathFwd.h"
#include "Math/UnrealMathUtility.h"
#include "Math/Vector2D.h"

#include <concepts>
#include <iterator>
#include <type_traits>

namespace UE::Math
{

/**
 * An axis-aligned rectangle. A box built from points starts invalid and becomes valid with
 * the first point added; a box built from Min and Max is valid whatever they are.
 */
template <typename T>
struct TBox2
{
	static_assert(std::is_floating_point_v<T>, "T must be floating point");

	using FReal = T;

	TVector2<T> Min;
	TVector2<T> Max;
	bool bIsValid = false;

	constexpr TBox2() = default;
	constexpr explicit TBox2(EForceInit) {}
	constexpr TBox2(const TVector2<T>& InMin, const TVector2<T>& InMax) : Min(InMin), Max(InMax), bIsValid(true) {}
	TBox2(const TVector2<T>* Points, const int32 Count)
	{
		for (int32 Index = 0; Index < Count; ++Index)
		{
			*this += Points[Index];
		}
	}
	template <typename RangeType>
		requires requires(const RangeType& Range) { { *std::begin(Range) } -> std::convertible_to<const TVector2<T>&>; }
	explicit TBox2(const RangeType& Points)
	{
		for (const TVector2<T>& Point : Points)
		{
			*this += Point;
		}
	}

	template <typename FArg> requires(!std::is_same_v<T, FArg>)
	explicit constexpr TBox2(const TBox2<FArg>& From) : Min(TVector2<T>(From.Min)), Max(TVector2<T>(From.Max)), bIsValid(From.bIsValid) {}

	/** Compares the corners only, as the engine does; validity is not part of equality. */
	[[nodiscard]] constexpr bool operator==(const TBox2& Other) const { return Min == Other.Min && Max == Other.Max; }
	[[nodiscard]] constexpr bool operator!=(const TBox2& Other) const { return !(*this == Other); }
	[[nodiscard]] bool Equals(const TBox2& Other, T Tolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return Min.Equals(Other.Min, Tolerance) && Max.Equals(Other.Max, Tolerance);
	}

	/** Grows to include the point; an invalid box becomes the point itself. */
	TBox2& operator+=(const TVector2<T>& Other)
	{
		if (bIsValid)
		{
			Min.X = FMath::Min(Min.X, Other.X);
			Min.Y = FMath::Min(Min.Y, Other.Y);
			Max.X = FMath::Max(Max.X, Other.X);
			Max.Y = FMath::Max(Max.Y, Other.Y);
		}
		else
		{
			Min = Max = Other;
			bIsValid = true;
		}
		return *this;
	}
	[[nodiscard]] TBox2 operator+(const TVector2<T>& Other) const { return TBox2(*this) += Other; }

	/** Grows to include the other box; an invalid other box changes nothing. */
	TBox2& operator+=(const TBox2& Other)
	{
		if (bIsValid && Other.bIsValid)
		{
			Min.X = FMath::Min(Min.X, Other.Min.X);
			Min.Y = FMath::Min(Min.Y, Other.Min.Y);
			Max.X = FMath::Max(Max.X, Other.Max.X);
			Max.Y = FMath::Max(Max.Y, Other.Max.Y);
		}
		else if (Other.bIsValid)
		{
			*this = Other;
		}
		return *this;
	}
	[[nodiscard]] TBox2 operator+(const TBox2& Other) const { return TBox2(*this) += Other; }

	[[nodiscard]] TVector2<T>& operator[](int32 Index)
	{
		check(Index >= 0 && Index < 2);
		return Index == 0 ? Min : Max;
	}
	[[nodiscard]] const TVector2<T>& operator[](int32 Index) const
	{
		check(Index >= 0 && Index < 2);
		return Index == 0 ? Min : Max;
	}

	[[nodiscard]] T ComputeSquaredDistanceToPoint(const TVector2<T>& Point) const
	{
		T DistSquared = 0;
		if (Point.X < Min.X)
		{
			DistSquared += FMath::Square(Point.X - Min.X);
		}
		else if (Point.X > Max.X)
		{
			DistSquared += FMath::Square(Point.X - Max.X);
		}
		if (Point.Y < Min.Y)
		{
			DistSquared += FMath::Square(Point.Y - Min.Y);
		}
		else if (Point.Y > Max.Y)
		{
			DistSquared += FMath::Square(Point.Y - Max.Y);
		}
		return DistSquared;
	}

	[[nodiscard]] TBox2 ExpandBy(const T W) const { return TBox2(Min - TVector2<T>(W, W), Max + TVector2<T>(W, W)); }
	[[nodiscard]] TBox2 ExpandBy(const TVector2<T>& V) const { return TBox2(Min - V, Max + V); }

	[[nodiscard]] T GetArea() const { return (Max.X - Min.X) * (Max.Y - Min.Y); }
	[[nodiscard]] TVector2<T> GetCenter() const { return (Min + Max) * T(0.5); }
	[[nodiscard]] TVector2<T> GetExtent() const { return (Max - Min) * T(0.5); }
	[[nodiscard]] TVector2<T> GetSize() const { return Max - Min; }
	void GetCenterAndExtents(TVector2<T>& Center, TVector2<T>& Extents) const
	{
		Extents = GetExtent();
		Center = Min + Extents;
	}

	[[nodiscard]] TVector2<T> GetClosestPointTo(const TVector2<T>& Point) const
	{
		return TVector2<T>(FMath::Clamp(Point.X, Min.X, Max.X), FMath::Clamp(Point.Y, Min.Y, Max.Y));
	}

	/** Zero corners and marked invalid. */
	void Init()
	{
		Min = TVector2<T>(0, 0);
		Max = TVector2<T>(0, 0);
		bIsValid = false;
	}

	/** True when the boxes overlap or touch (shared edges count). */
	[[nodiscard]] bool Intersect(const TBox2& Other) const
	{
		if ((Min.X > Other.Max.X) || (Other.Min.X > Max.X))
		{
			return false;
		}
		if ((Min.Y > Other.Max.Y) || (Other.Min.Y > Max.Y))
		{
			return false;
		}
		return true;
	}

	/** The shared rectangle, or an invalid zero box when the boxes do not intersect. */
	[[nodiscard]] TBox2 Overlap(const TBox2& Other) const
	{
		if (!Intersect(Other))
		{
			return TBox2(ForceInit);
		}
		return TBox2(
			TVector2<T>(FMath::Max(Min.X, Other.Min.X), FMath::Max(Min.Y, Other.Min.Y)),
			TVector2<T>(FMath::Min(Max.X, Other.Max.X), FMath::Min(Max.Y, Other.Max.Y)));
	}

	/** Strictly inside: a point on an edge is not inside (see IsInsideOrOn). */
	[[nodiscard]] bool IsInside(const TVector2<T>& TestPoint) const
	{
		return TestPoint.X > Min.X && TestPoint.X < Max.X && TestPoint.Y > Min.Y && TestPoint.Y < Max.Y;
	}
	[[nodiscard]] bool IsInsideOrOn(const TVector2<T>& TestPoint) const
	{
		return TestPoint.X >= Min.X && TestPoint.X <= Max.X && TestPoint.Y >= Min.Y && TestPoint.Y <= Max.Y;
	}
	/** Both corners of Other strictly inside this box. */
	[[nodiscard]] bool IsInside(const TBox2& Other) const { return IsInside(Other.Min) && IsInside(Other.Max); }

	[[nodiscard]] TBox2 ShiftBy(const TVector2<T>& Offset) const { return TBox2(Min + Offset, Max + Offset); }
	[[nodiscard]] TBox2 MoveTo(const TVector2<T>& Destination) const
	{
		const TVector2<T> Offset = Destination - GetCenter();
		return TBox2(Min + Offset, Max + Offset);
	}
	[[nodiscard]] static TBox2 BuildAABB(const TVector2<T>& Origin, const TVector2<T>& Extent)
	{
		return TBox2(Origin - Extent, Origin + Extent);
	}

	/** "bIsValid=true, Min=(X=... Y=...), Max=(X=... Y=...)". */
	[[nodiscard]] CORE_API FString ToString() const;
};

} // namespace UE::Math
