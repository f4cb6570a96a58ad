#pragma once

#include "CoreTypes.h"
#include "Containers/UnrealString.h"
#include "Math/MathFwd.h"
#include "Math/Rotator.h"
#include "Math/UnrealMathUtility.h"
#include "Math/Vector.h"
#include "Templates/TypeHash.h"

#include <type_traits>

namespace UE::Math
{

/**
 * A rotation as a unit quaternion. Multiplication composes right to left: (A * B) applies B
 * first, then A. A default-constructed quaternion is the identity (the engine leaves it
 * uninitialised).
 */
template <typename T>
struct TQuat
{
	static_assert(std::is_floating_point_v<T>, "T must be floating point");

	using FReal = T;

	T X = 0;
	T Y = 0;
	T Z = 0;
	T W = 1;

	static const TQuat Identity;

	constexpr TQuat() = default;
	constexpr TQuat(T InX, T InY, T InZ, T InW) : X(InX), Y(InY), Z(InZ), W(InW) {}
	/** ForceInitToZero gives (0,0,0,0); ForceInit the identity. */
	constexpr explicit TQuat(EForceInit ZeroOrNot) : X(0), Y(0), Z(0), W(ZeroOrNot == ForceInitToZero ? T(0) : T(1)) {}
	explicit TQuat(const TRotator<T>& R) { *this = R.Quaternion(); }
	/** Rotation of AngleRad radians about Axis, which must be normalised. */
	TQuat(const TVector<T>& Axis, T AngleRad)
	{
		T S, C;
		FMath::SinCos(&S, &C, T(0.5) * AngleRad);
		X = S * Axis.X;
		Y = S * Axis.Y;
		Z = S * Axis.Z;
		W = C;
	}

	template <typename FArg> requires(!std::is_same_v<T, FArg>)
	explicit constexpr TQuat(const TQuat<FArg>& From) : X(T(From.X)), Y(T(From.Y)), Z(T(From.Z)), W(T(From.W)) {}

	[[nodiscard]] constexpr TQuat operator+(const TQuat& Q) const { return TQuat(X + Q.X, Y + Q.Y, Z + Q.Z, W + Q.W); }
	[[nodiscard]] constexpr TQuat operator-(const TQuat& Q) const { return TQuat(X - Q.X, Y - Q.Y, Z - Q.Z, W - Q.W); }
	[[nodiscard]] constexpr TQuat operator-() const { return TQuat(-X, -Y, -Z, -W); }

	/** Composition: the result applies Q first, then this. */
	[[nodiscard]] constexpr TQuat operator*(const TQuat& Q) const
	{
		return TQuat(
			W * Q.X + X * Q.W + Y * Q.Z - Z * Q.Y,
			W * Q.Y - X * Q.Z + Y * Q.W + Z * Q.X,
			W * Q.Z + X * Q.Y - Y * Q.X + Z * Q.W,
			W * Q.W - X * Q.X - Y * Q.Y - Z * Q.Z);
	}
	constexpr TQuat& operator*=(const TQuat& Q)
	{
		*this = *this * Q;
		return *this;
	}
	[[nodiscard]] TVector<T> operator*(const TVector<T>& V) const { return RotateVector(V); }
	template <typename FArg> requires std::is_arithmetic_v<FArg>
	[[nodiscard]] constexpr TQuat operator*(FArg Scale) const { return TQuat(X * T(Scale), Y * T(Scale), Z * T(Scale), W * T(Scale)); }
	template <typename FArg> requires std::is_arithmetic_v<FArg>
	[[nodiscard]] constexpr TQuat operator/(FArg Scale) const
	{
		const T Recip = T(1) / T(Scale);
		return TQuat(X * Recip, Y * Recip, Z * Recip, W * Recip);
	}

	/** Dot product of the four components. */
	[[nodiscard]] constexpr T operator|(const TQuat& Q) const { return X * Q.X + Y * Q.Y + Z * Q.Z + W * Q.W; }

	[[nodiscard]] constexpr bool operator==(const TQuat& Q) const { return X == Q.X && Y == Q.Y && Z == Q.Z && W == Q.W; }
	[[nodiscard]] constexpr bool operator!=(const TQuat& Q) const { return !(*this == Q); }

	/** Same rotation within Tolerance; Q and -Q describe the same rotation and compare equal. */
	[[nodiscard]] bool Equals(const TQuat& Q, T Tolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return (FMath::Abs(X - Q.X) <= Tolerance && FMath::Abs(Y - Q.Y) <= Tolerance && FMath::Abs(Z - Q.Z) <= Tolerance
				&& FMath::Abs(W - Q.W) <= Tolerance)
			|| (FMath::Abs(X + Q.X) <= Tolerance && FMath::Abs(Y + Q.Y) <= Tolerance && FMath::Abs(Z + Q.Z) <= Tolerance
				&& FMath::Abs(W + Q.W) <= Tolerance);
	}
	[[nodiscard]] bool IsIdentity(T Tolerance = UE_SMALL_NUMBER) const { return Equals(Identity, Tolerance); }

	[[nodiscard]] T Size() const { return FMath::Sqrt(X * X + Y * Y + Z * Z + W * W); }
	[[nodiscard]] constexpr T SizeSquared() const { return X * X + Y * Y + Z * Z + W * W; }
	[[nodiscard]] bool IsNormalized() const { return FMath::Abs(T(1) - SizeSquared()) < T(UE_THRESH_QUAT_NORMALIZED); }

	/** Scales to unit length; a quaternion too short to normalise becomes the identity. */
	void Normalize(T Tolerance = UE_SMALL_NUMBER)
	{
		const T SquareSum = SizeSquared();
		if (SquareSum >= Tolerance)
		{
			const T Scale = FMath::InvSqrt(SquareSum);
			X *= Scale;
			Y *= Scale;
			Z *= Scale;
			W *= Scale;
		}
		else
		{
			*this = Identity;
		}
	}
	[[nodiscard]] TQuat GetNormalized(T Tolerance = UE_SMALL_NUMBER) const
	{
		TQuat Result(*this);
		Result.Normalize(Tolerance);
		return Result;
	}

	/** The opposite rotation (the conjugate, which is the inverse of a unit quaternion). */
	[[nodiscard]] constexpr TQuat Inverse() const { return TQuat(-X, -Y, -Z, W); }

	[[nodiscard]] constexpr TVector<T> RotateVector(const TVector<T>& V) const
	{
		// v' = v + 2w(q x v) + q x (2(q x v)), the expansion of q v q* for a unit q.
		const TVector<T> Q(X, Y, Z);
		const TVector<T> TT = (Q ^ V) * T(2);
		return V + (TT * W) + (Q ^ TT);
	}
	[[nodiscard]] constexpr TVector<T> UnrotateVector(const TVector<T>& V) const
	{
		const TVector<T> Q(-X, -Y, -Z);
		const TVector<T> TT = (Q ^ V) * T(2);
		return V + (TT * W) + (Q ^ TT);
	}

	[[nodiscard]] CORE_API TRotator<T> Rotator() const;
	/** (Roll, Pitch, Yaw) in degrees. */
	[[nodiscard]] TVector<T> Euler() const { return Rotator().Euler(); }
	[[nodiscard]] static TQuat MakeFromEuler(const TVector<T>& Euler) { return TRotator<T>::MakeFromEuler(Euler).Quaternion(); }
	[[nodiscard]] static TQuat MakeFromRotator(const TRotator<T>& R) { return R.Quaternion(); }

	[[nodiscard]] TVector<T> GetAxisX() const { return RotateVector(TVector<T>(1, 0, 0)); }
	[[nodiscard]] TVector<T> GetAxisY() const { return RotateVector(TVector<T>(0, 1, 0)); }
	[[nodiscard]] TVector<T> GetAxisZ() const { return RotateVector(TVector<T>(0, 0, 1)); }
	[[nodiscard]] TVector<T> GetForwardVector() const { return GetAxisX(); }
	[[nodiscard]] TVector<T> GetRightVector() const { return GetAxisY(); }
	[[nodiscard]] TVector<T> GetUpVector() const { return GetAxisZ(); }
	[[nodiscard]] TVector<T> Vector() const { return GetAxisX(); }

	/** Rotation angle in radians, in [0, 2*pi]. */
	[[nodiscard]] T GetAngle() const { return T(2) * FMath::Acos(W); }
	/** Axis of rotation; the X axis for a rotation too small to have a meaningful axis. */
	[[nodiscard]] TVector<T> GetRotationAxis() const
	{
		const T SquareSum = X * X + Y * Y + Z * Z;
		if (SquareSum < T(UE_SMALL_NUMBER))
		{
			return TVector<T>::XAxisVector;
		}
		const T Scale = FMath::InvSqrt(SquareSum);
		return TVector<T>(X * Scale, Y * Scale, Z * Scale);
	}
	void ToAxisAndAngle(TVector<T>& Axis, T& Angle) const
	{
		Angle = GetAngle();
		Axis = GetRotationAxis();
	}

	/** Angle in radians between the two rotations, in [0, pi]. */
	[[nodiscard]] T AngularDistance(const TQuat& Q) const
	{
		const T InnerProd = X * Q.X + Y * Q.Y + Z * Q.Z + W * Q.W;
		return FMath::Acos((T(2) * InnerProd * InnerProd) - T(1));
	}

	[[nodiscard]] bool ContainsNaN() const
	{
		return !FMath::IsFinite(X) || !FMath::IsFinite(Y) || !FMath::IsFinite(Z) || !FMath::IsFinite(W);
	}

	/** "X=%.9f Y=%.9f Z=%.9f W=%.9f", as the engine prints it. */
	[[nodiscard]] CORE_API FString ToString() const;
	/** Reads "X=... Y=... Z=... W=..."; all four are required. */
	CORE_API bool InitFromString(const FString& InSourceString);
};

template <typename T> const TQuat<T> TQuat<T>::Identity(T(0), T(0), T(0), T(1));

template <typename T>
[[nodiscard]] inline uint32 GetTypeHash(const TQuat<T>& Quat)
{
	return HashCombine(HashCombine(::GetTypeHash(Quat.X + T(0)), ::GetTypeHash(Quat.Y + T(0))),
		HashCombine(::GetTypeHash(Quat.Z + T(0)), ::GetTypeHash(Quat.W + T(0))));
}

} // namespace UE::Math
