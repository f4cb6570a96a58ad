#pragma once

#include "CoreTypes.h"
#include "Containers/UnrealString.h"
#include "Math/MathFwd.h"
#include "Math/IntPoint.h"
#include "Math/UnrealMathUtility.h"
#include "Math/Vector2D.h"
#include "Templates/TypeHash.h"

#include <type_traits>

namespace UE::Math
{

/**
 * A point or direction in 3-D space. Unreal's frame: X forward, Y right, Z up.
 * Components start at zero (the engine leaves them uninitialised; reading such a value
 * there is undefined, here it is simply zero).
 */
template <typename T>
struct TVector
{
	static_assert(std::is_floating_point_v<T>, "T must be floating point");

	using FReal = T;

	T X = 0;
	T Y = 0;
	T Z = 0;

	static constexpr int32 NumComponents = 3;

	static const TVector ZeroVector;
	static const TVector OneVector;
	static const TVector UpVector;
	static const TVector DownVector;
	static const TVector ForwardVector;
	static const TVector BackwardVector;
	static const TVector RightVector;
	static const TVector LeftVector;
	static const TVector XAxisVector;
	static const TVector YAxisVector;
	static const TVector ZAxisVector;

	[[nodiscard]] static TVector Zero() { return ZeroVector; }
	[[nodiscard]] static TVector One() { return OneVector; }
	[[nodiscard]] static TVector UnitX() { return XAxisVector; }
	[[nodiscard]] static TVector UnitY() { return YAxisVector; }
	[[nodiscard]] static TVector UnitZ() { return ZAxisVector; }

	constexpr TVector() = default;
	constexpr explicit TVector(T InF) : X(InF), Y(InF), Z(InF) {}
	constexpr TVector(T InX, T InY, T InZ) : X(InX), Y(InY), Z(InZ) {}
	constexpr explicit TVector(const TVector2<T> V, T InZ) : X(V.X), Y(V.Y), Z(InZ) {}
	constexpr explicit TVector(EForceInit) : X(0), Y(0), Z(0) {}
	template <typename IntType>
	constexpr explicit TVector(TIntPoint<IntType> A) : X(T(A.X)), Y(T(A.Y)), Z(0) {}
	/** The R, G and B channels of a colour (defined in Color.h). */
	explicit TVector(const FLinearColor& InColor);

	template <typename FArg> requires(!std::is_same_v<T, FArg>)
	explicit constexpr TVector(const TVector<FArg>& From) : X(T(From.X)), Y(T(From.Y)), Z(T(From.Z)) {}

	/** Cross product. */
	[[nodiscard]] constexpr TVector operator^(const TVector& V) const
	{
		return TVector(Y * V.Z - Z * V.Y, Z * V.X - X * V.Z, X * V.Y - Y * V.X);
	}
	[[nodiscard]] constexpr TVector Cross(const TVector& V2) const { return *this ^ V2; }
	[[nodiscard]] static constexpr TVector CrossProduct(const TVector& A, const TVector& B) { return A ^ B; }

	/** Dot product. */
	[[nodiscard]] constexpr T operator|(const TVector& V) const { return X * V.X + Y * V.Y + Z * V.Z; }
	[[nodiscard]] constexpr T Dot(const TVector& V) const { return *this | V; }
	[[nodiscard]] static constexpr T DotProduct(const TVector& A, const TVector& B) { return A | B; }

	[[nodiscard]] constexpr TVector operator+(const TVector& V) const { return TVector(X + V.X, Y + V.Y, Z + V.Z); }
	[[nodiscard]] constexpr TVector operator-(const TVector& V) const { return TVector(X - V.X, Y - V.Y, Z - V.Z); }
	[[nodiscard]] constexpr TVector operator*(const TVector& V) const { return TVector(X * V.X, Y * V.Y, Z * V.Z); }
	[[nodiscard]] constexpr TVector operator/(const TVector& V) const { return TVector(X / V.X, Y / V.Y, Z / V.Z); }
	[[nodiscard]] constexpr TVector operator-() const { return TVector(-X, -Y, -Z); }

	template <typename FArg> requires std::is_arithmetic_v<FArg>
	[[nodiscard]] constexpr TVector operator+(FArg Bias) const { return TVector(X + T(Bias), Y + T(Bias), Z + T(Bias)); }
	template <typename FArg> requires std::is_arithmetic_v<FArg>
	[[nodiscard]] constexpr TVector operator-(FArg Bias) const { return TVector(X - T(Bias), Y - T(Bias), Z - T(Bias)); }
	template <typename FArg> requires std::is_arithmetic_v<FArg>
	[[nodiscard]] constexpr TVector operator*(FArg Scale) const { return TVector(X * T(Scale), Y * T(Scale), Z * T(Scale)); }
	template <typename FArg> requires std::is_arithmetic_v<FArg>
	[[nodiscard]] constexpr TVector operator/(FArg Scale) const
	{
		const T RScale = T(1) / T(Scale);
		return TVector(X * RScale, Y * RScale, Z * RScale);
	}

	[[nodiscard]] constexpr bool operator==(const TVector& V) const { return X == V.X && Y == V.Y && Z == V.Z; }
	[[nodiscard]] constexpr bool operator!=(const TVector& V) const { return X != V.X || Y != V.Y || Z != V.Z; }

	constexpr TVector operator+=(const TVector& V) { X += V.X; Y += V.Y; Z += V.Z; return *this; }
	constexpr TVector operator-=(const TVector& V) { X -= V.X; Y -= V.Y; Z -= V.Z; return *this; }
	constexpr TVector operator*=(const TVector& V) { X *= V.X; Y *= V.Y; Z *= V.Z; return *this; }
	constexpr TVector operator/=(const TVector& V) { X /= V.X; Y /= V.Y; Z /= V.Z; return *this; }
	template <typename FArg> requires std::is_arithmetic_v<FArg>
	constexpr TVector operator*=(FArg Scale) { X *= T(Scale); Y *= T(Scale); Z *= T(Scale); return *this; }
	template <typename FArg> requires std::is_arithmetic_v<FArg>
	constexpr TVector operator/=(FArg Scale)
	{
		const T RV = T(1) / T(Scale);
		X *= RV;
		Y *= RV;
		Z *= RV;
		return *this;
	}

	/** Index 0, 1, 2 for X, Y, Z; any other index stops the process through check(). */
	[[nodiscard]] T& operator[](int32 Index) { return Component(Index); }
	[[nodiscard]] T operator[](int32 Index) const { return Component(Index); }
	[[nodiscard]] T& Component(int32 Index)
	{
		check(IsValidIndex(Index));
		return Index == 0 ? X : (Index == 1 ? Y : Z);
	}
	[[nodiscard]] T Component(int32 Index) const
	{
		check(IsValidIndex(Index));
		return Index == 0 ? X : (Index == 1 ? Y : Z);
	}
	[[nodiscard]] static constexpr bool IsValidIndex(int32 Index) { return Index >= 0 && Index < NumComponents; }

	[[nodiscard]] bool Equals(const TVector& V, T Tolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return FMath::Abs(X - V.X) <= Tolerance && FMath::Abs(Y - V.Y) <= Tolerance && FMath::Abs(Z - V.Z) <= Tolerance;
	}
	[[nodiscard]] bool AllComponentsEqual(T Tolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return FMath::Abs(X - Y) <= Tolerance && FMath::Abs(X - Z) <= Tolerance && FMath::Abs(Y - Z) <= Tolerance;
	}
	[[nodiscard]] bool IsUniform(T Tolerance = UE_KINDA_SMALL_NUMBER) const { return AllComponentsEqual(Tolerance); }

	constexpr void Set(T InX, T InY, T InZ)
	{
		X = InX;
		Y = InY;
		Z = InZ;
	}

	[[nodiscard]] constexpr T GetMax() const { return FMath::Max(FMath::Max(X, Y), Z); }
	[[nodiscard]] constexpr T GetAbsMax() const { return FMath::Max(FMath::Max(FMath::Abs(X), FMath::Abs(Y)), FMath::Abs(Z)); }
	[[nodiscard]] constexpr T GetMin() const { return FMath::Min(FMath::Min(X, Y), Z); }
	[[nodiscard]] constexpr T GetAbsMin() const { return FMath::Min(FMath::Min(FMath::Abs(X), FMath::Abs(Y)), FMath::Abs(Z)); }
	[[nodiscard]] constexpr TVector ComponentMin(const TVector& Other) const { return Min(*this, Other); }
	[[nodiscard]] constexpr TVector ComponentMax(const TVector& Other) const { return Max(*this, Other); }
	[[nodiscard]] constexpr TVector GetAbs() const { return TVector(FMath::Abs(X), FMath::Abs(Y), FMath::Abs(Z)); }

	[[nodiscard]] T Size() const { return FMath::Sqrt(X * X + Y * Y + Z * Z); }
	[[nodiscard]] T Length() const { return Size(); }
	[[nodiscard]] constexpr T SizeSquared() const { return X * X + Y * Y + Z * Z; }
	[[nodiscard]] constexpr T SquaredLength() const { return SizeSquared(); }
	[[nodiscard]] T Size2D() const { return FMath::Sqrt(X * X + Y * Y); }
	[[nodiscard]] constexpr T SizeSquared2D() const { return X * X + Y * Y; }

	[[nodiscard]] bool IsNearlyZero(T Tolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return FMath::Abs(X) <= Tolerance && FMath::Abs(Y) <= Tolerance && FMath::Abs(Z) <= Tolerance;
	}
	[[nodiscard]] constexpr bool IsZero() const { return X == 0 && Y == 0 && Z == 0; }
	[[nodiscard]] bool IsUnit(T LengthSquaredTolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return FMath::Abs(T(1) - SizeSquared()) < LengthSquaredTolerance;
	}
	[[nodiscard]] bool IsNormalized() const { return FMath::Abs(T(1) - SizeSquared()) < T(UE_THRESH_VECTOR_NORMALIZED); }

	/** Normalises in place when the squared length exceeds Tolerance; otherwise leaves the vector alone and returns false. */
	bool Normalize(T Tolerance = UE_SMALL_NUMBER)
	{
		const T SquareSum = X * X + Y * Y + Z * Z;
		if (SquareSum > Tolerance)
		{
			const T Scale = FMath::InvSqrt(SquareSum);
			X *= Scale;
			Y *= Scale;
			Z *= Scale;
			return true;
		}
		return false;
	}

	[[nodiscard]] TVector GetUnsafeNormal() const
	{
		const T Scale = FMath::InvSqrt(X * X + Y * Y + Z * Z);
		return TVector(X * Scale, Y * Scale, Z * Scale);
	}

	/** Unit vector in the same direction, or ResultIfZero when the squared length is below Tolerance. */
	[[nodiscard]] TVector GetSafeNormal(T Tolerance = UE_SMALL_NUMBER, const TVector& ResultIfZero = ZeroVector) const
	{
		const T SquareSum = X * X + Y * Y + Z * Z;
		if (SquareSum == T(1))
		{
			return *this;
		}
		if (SquareSum < Tolerance)
		{
			return ResultIfZero;
		}
		const T Scale = FMath::InvSqrt(SquareSum);
		return TVector(X * Scale, Y * Scale, Z * Scale);
	}

	/** Normal of the projection onto the XY plane (Z dropped). */
	[[nodiscard]] TVector GetSafeNormal2D(T Tolerance = UE_SMALL_NUMBER, const TVector& ResultIfZero = ZeroVector) const
	{
		const T SquareSum = X * X + Y * Y;
		if (SquareSum == T(1))
		{
			return Z == T(0) ? *this : TVector(X, Y, T(0));
		}
		if (SquareSum < Tolerance)
		{
			return ResultIfZero;
		}
		const T Scale = FMath::InvSqrt(SquareSum);
		return TVector(X * Scale, Y * Scale, T(0));
	}

	/** Splits into a unit direction and a length; a length at or below UE_SMALL_NUMBER gives a zero direction. */
	void ToDirectionAndLength(TVector& OutDir, T& OutLength) const
	{
		OutLength = Size();
		if (OutLength > T(UE_SMALL_NUMBER))
		{
			const T OneOverLength = T(1) / OutLength;
			OutDir = TVector(X * OneOverLength, Y * OneOverLength, Z * OneOverLength);
		}
		else
		{
			OutDir = ZeroVector;
		}
	}

	[[nodiscard]] TVector GetSignVector() const
	{
		return TVector(X >= 0 ? T(1) : T(-1), Y >= 0 ? T(1) : T(-1), Z >= 0 ? T(1) : T(-1));
	}

	[[nodiscard]] TVector GridSnap(const T& GridSz) const
	{
		return TVector(FMath::GridSnap(X, GridSz), FMath::GridSnap(Y, GridSz), FMath::GridSnap(Z, GridSz));
	}

	[[nodiscard]] constexpr TVector BoundToCube(T Radius) const
	{
		return TVector(FMath::Clamp(X, -Radius, Radius), FMath::Clamp(Y, -Radius, Radius), FMath::Clamp(Z, -Radius, Radius));
	}

	[[nodiscard]] constexpr TVector BoundToBox(const TVector& InMin, const TVector& InMax) const
	{
		return TVector(FMath::Clamp(X, InMin.X, InMax.X), FMath::Clamp(Y, InMin.Y, InMax.Y), FMath::Clamp(Z, InMin.Z, InMax.Z));
	}

	[[nodiscard]] TVector GetClampedToSize(T InMin, T InMax) const
	{
		T VecSize = Size();
		const TVector VecDir = (VecSize > T(UE_SMALL_NUMBER)) ? (*this / VecSize) : ZeroVector;
		VecSize = FMath::Clamp(VecSize, InMin, InMax);
		return VecDir * VecSize;
	}

	[[nodiscard]] TVector GetClampedToMaxSize(T MaxSize) const
	{
		if (MaxSize < T(UE_KINDA_SMALL_NUMBER))
		{
			return ZeroVector;
		}
		const T VSq = SizeSquared();
		if (VSq > FMath::Square(MaxSize))
		{
			const T Scale = MaxSize * FMath::InvSqrt(VSq);
			return TVector(X * Scale, Y * Scale, Z * Scale);
		}
		return *this;
	}

	[[nodiscard]] TVector Reciprocal() const
	{
		return TVector(X != 0 ? T(1) / X : T(UE_BIG_NUMBER), Y != 0 ? T(1) / Y : T(UE_BIG_NUMBER), Z != 0 ? T(1) / Z : T(UE_BIG_NUMBER));
	}

	[[nodiscard]] constexpr TVector ProjectOnTo(const TVector& A) const { return A * ((*this | A) / (A | A)); }
	[[nodiscard]] constexpr TVector ProjectOnToNormal(const TVector& Normal) const { return Normal * (*this | Normal); }
	[[nodiscard]] constexpr TVector MirrorByVector(const TVector& MirrorNormal) const
	{
		return *this - MirrorNormal * (T(2) * (*this | MirrorNormal));
	}

	[[nodiscard]] bool ContainsNaN() const { return !FMath::IsFinite(X) || !FMath::IsFinite(Y) || !FMath::IsFinite(Z); }

	/** Yaw and pitch that point along this vector; roll is zero. Defined with TRotator. */
	[[nodiscard]] CORE_API TRotator<T> ToOrientationRotator() const;
	[[nodiscard]] TRotator<T> Rotation() const { return ToOrientationRotator(); }
	/** The same orientation as a quaternion. Defined with TQuat. */
	[[nodiscard]] CORE_API TQuat<T> ToOrientationQuat() const;

	[[nodiscard]] static constexpr T DistSquared(const TVector& V1, const TVector& V2)
	{
		return FMath::Square(V2.X - V1.X) + FMath::Square(V2.Y - V1.Y) + FMath::Square(V2.Z - V1.Z);
	}
	[[nodiscard]] static T Dist(const TVector& V1, const TVector& V2) { return FMath::Sqrt(DistSquared(V1, V2)); }
	[[nodiscard]] static T Distance(const TVector& V1, const TVector& V2) { return Dist(V1, V2); }
	[[nodiscard]] static constexpr T DistSquaredXY(const TVector& V1, const TVector& V2)
	{
		return FMath::Square(V2.X - V1.X) + FMath::Square(V2.Y - V1.Y);
	}
	[[nodiscard]] static T DistXY(const TVector& V1, const TVector& V2) { return FMath::Sqrt(DistSquaredXY(V1, V2)); }
	[[nodiscard]] static constexpr T DistSquared2D(const TVector& V1, const TVector& V2) { return DistSquaredXY(V1, V2); }
	[[nodiscard]] static T Dist2D(const TVector& V1, const TVector& V2) { return DistXY(V1, V2); }

	[[nodiscard]] static constexpr TVector Min(const TVector& A, const TVector& B)
	{
		return TVector(FMath::Min(A.X, B.X), FMath::Min(A.Y, B.Y), FMath::Min(A.Z, B.Z));
	}
	[[nodiscard]] static constexpr TVector Max(const TVector& A, const TVector& B)
	{
		return TVector(FMath::Max(A.X, B.X), FMath::Max(A.Y, B.Y), FMath::Max(A.Z, B.Z));
	}

	/** Cosine of the angle between the two vectors (dot product of their safe normals). */
	[[nodiscard]] static T CosineAngle(const TVector& A, const TVector& B)
	{
		return A.GetSafeNormal() | B.GetSafeNormal();
	}

	/** "X=%3.3f Y=%3.3f Z=%3.3f", as the engine prints it. */
	[[nodiscard]] CORE_API FString ToString() const;
	/** "V(X=1.00, Z=2.00)": nearly-zero components left out, "V(0)" for a zero vector. */
	[[nodiscard]] CORE_API FString ToCompactString() const;
	/** Reads "X=... Y=... Z=..."; all three are required. On failure the parsed prefix is kept and false returned. */
	CORE_API bool InitFromString(const FString& InSourceString);
	/** Reads what ToCompactString prints; any one component is enough. */
	CORE_API bool InitFromCompactString(const FString& InSourceString);
};

template <typename T> const TVector<T> TVector<T>::ZeroVector(T(0), T(0), T(0));
template <typename T> const TVector<T> TVector<T>::OneVector(T(1), T(1), T(1));
template <typename T> const TVector<T> TVector<T>::UpVector(T(0), T(0), T(1));
template <typename T> const TVector<T> TVector<T>::DownVector(T(0), T(0), T(-1));
template <typename T> const TVector<T> TVector<T>::ForwardVector(T(1), T(0), T(0));
template <typename T> const TVector<T> TVector<T>::BackwardVector(T(-1), T(0), T(0));
template <typename T> const TVector<T> TVector<T>::RightVector(T(0), T(1), T(0));
template <typename T> const TVector<T> TVector<T>::LeftVector(T(0), T(-1), T(0));
template <typename T> const TVector<T> TVector<T>::XAxisVector(T(1), T(0), T(0));
template <typename T> const TVector<T> TVector<T>::YAxisVector(T(0), T(1), T(0));
template <typename T> const TVector<T> TVector<T>::ZAxisVector(T(0), T(0), T(1));

template <typename T, typename FArg> requires std::is_arithmetic_v<FArg>
[[nodiscard]] constexpr TVector<T> operator*(FArg Scale, const TVector<T>& V)
{
	return V * Scale;
}

template <typename T>
[[nodiscard]] inline uint32 GetTypeHash(const TVector<T>& Vector)
{
	// Adding zero folds -0 into +0, so vectors that compare equal hash equally.
	return HashCombine(HashCombine(::GetTypeHash(Vector.X + T(0)), ::GetTypeHash(Vector.Y + T(0))), ::GetTypeHash(Vector.Z + T(0)));
}

template <typename T>
TVector2<T>::TVector2(const TVector<T>& V)
	: X(V.X), Y(V.Y)
{
}

} // namespace UE::Math

template <typename T>
[[nodiscard]] inline UE::Math::TVector<T> ClampVector(const UE::Math::TVector<T>& V, const UE::Math::TVector<T>& Min, const UE::Math::TVector<T>& Max)
{
	return V.BoundToBox(Min, Max);
}
