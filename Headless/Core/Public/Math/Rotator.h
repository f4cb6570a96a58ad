#pragma once

#include "CoreTypes.h"
#include "Containers/UnrealString.h"
#include "Math/MathFwd.h"
#include "Math/UnrealMathUtility.h"
#include "Math/Vector.h"
#include "Templates/TypeHash.h"

#include <type_traits>

namespace UE::Math
{

/**
 * An orientation as three angles in degrees: Pitch about the right axis (Y), Yaw about the
 * up axis (Z), Roll about the forward axis (X).
 */
template <typename T>
struct TRotator
{
	static_assert(std::is_floating_point_v<T>, "T must be floating point");

	using FReal = T;

	T Pitch = 0;
	T Yaw = 0;
	T Roll = 0;

	static const TRotator ZeroRotator;

	constexpr TRotator() = default;
	constexpr explicit TRotator(T InF) : Pitch(InF), Yaw(InF), Roll(InF) {}
	constexpr TRotator(T InPitch, T InYaw, T InRoll) : Pitch(InPitch), Yaw(InYaw), Roll(InRoll) {}
	constexpr explicit TRotator(EForceInit) : Pitch(0), Yaw(0), Roll(0) {}
	/** The rotator equivalent to a quaternion (TQuat::Rotator). */
	CORE_API explicit TRotator(const TQuat<T>& Quat);

	template <typename FArg> requires(!std::is_same_v<T, FArg>)
	explicit constexpr TRotator(const TRotator<FArg>& From) : Pitch(T(From.Pitch)), Yaw(T(From.Yaw)), Roll(T(From.Roll)) {}

	[[nodiscard]] constexpr TRotator operator+(const TRotator& R) const { return TRotator(Pitch + R.Pitch, Yaw + R.Yaw, Roll + R.Roll); }
	[[nodiscard]] constexpr TRotator operator-(const TRotator& R) const { return TRotator(Pitch - R.Pitch, Yaw - R.Yaw, Roll - R.Roll); }
	template <typename FArg> requires std::is_arithmetic_v<FArg>
	[[nodiscard]] constexpr TRotator operator*(FArg Scale) const { return TRotator(Pitch * T(Scale), Yaw * T(Scale), Roll * T(Scale)); }
	template <typename FArg> requires std::is_arithmetic_v<FArg>
	constexpr TRotator operator*=(FArg Scale)
	{
		Pitch *= T(Scale);
		Yaw *= T(Scale);
		Roll *= T(Scale);
		return *this;
	}
	constexpr TRotator operator+=(const TRotator& R) { Pitch += R.Pitch; Yaw += R.Yaw; Roll += R.Roll; return *this; }
	constexpr TRotator operator-=(const TRotator& R) { Pitch -= R.Pitch; Yaw -= R.Yaw; Roll -= R.Roll; return *this; }

	/** Exact comparison; 0 and 360 differ. Use Equals to compare orientations. */
	[[nodiscard]] constexpr bool operator==(const TRotator& R) const { return Pitch == R.Pitch && Yaw == R.Yaw && Roll == R.Roll; }
	[[nodiscard]] constexpr bool operator!=(const TRotator& R) const { return Pitch != R.Pitch || Yaw != R.Yaw || Roll != R.Roll; }

	/** True when every angle is within Tolerance of a whole turn. */
	[[nodiscard]] bool IsNearlyZero(T Tolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return FMath::Abs(NormalizeAxis(Pitch)) <= Tolerance && FMath::Abs(NormalizeAxis(Yaw)) <= Tolerance
			&& FMath::Abs(NormalizeAxis(Roll)) <= Tolerance;
	}
	[[nodiscard]] bool IsZero() const { return ClampAxis(Pitch) == 0 && ClampAxis(Yaw) == 0 && ClampAxis(Roll) == 0; }

	/** Compares angle by angle modulo whole turns, so (0, 360, 0) equals (0, 0, 0). */
	[[nodiscard]] bool Equals(const TRotator& R, T Tolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return FMath::Abs(NormalizeAxis(Pitch - R.Pitch)) <= Tolerance && FMath::Abs(NormalizeAxis(Yaw - R.Yaw)) <= Tolerance
			&& FMath::Abs(NormalizeAxis(Roll - R.Roll)) <= Tolerance;
	}

	TRotator Add(T DeltaPitch, T DeltaYaw, T DeltaRoll)
	{
		Yaw += DeltaYaw;
		Pitch += DeltaPitch;
		Roll += DeltaRoll;
		return *this;
	}

	[[nodiscard]] CORE_API TRotator GetInverse() const;

	[[nodiscard]] TRotator GridSnap(const TRotator& RotGrid) const
	{
		return TRotator(FMath::GridSnap(Pitch, RotGrid.Pitch), FMath::GridSnap(Yaw, RotGrid.Yaw), FMath::GridSnap(Roll, RotGrid.Roll));
	}

	/** Unit vector pointing along the rotation's forward (X) axis. */
	[[nodiscard]] CORE_API TVector<T> Vector() const;
	[[nodiscard]] CORE_API TQuat<T> Quaternion() const;
	/** (Roll, Pitch, Yaw) as a vector, the engine's Euler order. */
	[[nodiscard]] constexpr TVector<T> Euler() const { return TVector<T>(Roll, Pitch, Yaw); }
	[[nodiscard]] CORE_API TVector<T> RotateVector(const TVector<T>& V) const;
	[[nodiscard]] CORE_API TVector<T> UnrotateVector(const TVector<T>& V) const;

	/** Every angle moved into [0, 360). */
	[[nodiscard]] TRotator Clamp() const { return TRotator(ClampAxis(Pitch), ClampAxis(Yaw), ClampAxis(Roll)); }
	/** Every angle moved into (-180, 180]. */
	[[nodiscard]] TRotator GetNormalized() const
	{
		TRotator Rot = *this;
		Rot.Normalize();
		return Rot;
	}
	[[nodiscard]] TRotator GetDenormalized() const { return Clamp(); }
	void Normalize()
	{
		Pitch = NormalizeAxis(Pitch);
		Yaw = NormalizeAxis(Yaw);
		Roll = NormalizeAxis(Roll);
	}

	[[nodiscard]] bool ContainsNaN() const { return !FMath::IsFinite(Pitch) || !FMath::IsFinite(Yaw) || !FMath::IsFinite(Roll); }

	[[nodiscard]] T GetManhattanDistance(const TRotator& Rotator) const
	{
		return FMath::Abs(Yaw - Rotator.Yaw) + FMath::Abs(Pitch - Rotator.Pitch) + FMath::Abs(Roll - Rotator.Roll);
	}
	/** The other rotator describing the same orientation. */
	[[nodiscard]] TRotator GetEquivalentRotator() const { return TRotator(T(180) - Pitch, Yaw + T(180), Roll + T(180)); }
	void SetClosestToMe(TRotator& MakeClosest) const
	{
		const TRotator OtherChoice = MakeClosest.GetEquivalentRotator();
		if (GetManhattanDistance(OtherChoice) < GetManhattanDistance(MakeClosest))
		{
			MakeClosest = OtherChoice;
		}
	}

	/** Angle in [0, 360). */
	[[nodiscard]] static T ClampAxis(T Angle)
	{
		Angle = FMath::Fmod(Angle, T(360));
		if (Angle < T(0))
		{
			Angle += T(360);
		}
		return Angle;
	}

	/** Angle in (-180, 180]. */
	[[nodiscard]] static T NormalizeAxis(T Angle)
	{
		Angle = ClampAxis(Angle);
		if (Angle > T(180))
		{
			Angle -= T(360);
		}
		return Angle;
	}

	/** From (Roll, Pitch, Yaw) in a vector, the inverse of Euler(). */
	[[nodiscard]] static constexpr TRotator MakeFromEuler(const TVector<T>& Euler) { return TRotator(Euler.Y, Euler.Z, Euler.X); }

	/** "P=%f Y=%f R=%f", as the engine prints it. */
	[[nodiscard]] CORE_API FString ToString() const;
	/** "R(P=1.00, Y=2.00)": nearly-zero angles left out, "R(0)" when all are. */
	[[nodiscard]] CORE_API FString ToCompactString() const;
	/** Reads "P=... Y=... R=..."; all three are required. */
	CORE_API bool InitFromString(const FString& InSourceString);
};

template <typename T> const TRotator<T> TRotator<T>::ZeroRotator(T(0), T(0), T(0));

template <typename T, typename FArg> requires std::is_arithmetic_v<FArg>
[[nodiscard]] constexpr TRotator<T> operator*(FArg Scale, const TRotator<T>& R)
{
	return R * Scale;
}

template <typename T>
[[nodiscard]] inline uint32 GetTypeHash(const TRotator<T>& Rotator)
{
	return HashCombine(HashCombine(::GetTypeHash(Rotator.Pitch + T(0)), ::GetTypeHash(Rotator.Yaw + T(0))), ::GetTypeHash(Rotator.Roll + T(0)));
}

} // namespace UE::Math

// Rotators interpolate along the shorter way round each axis.
template <typename T>
struct TCustomLerp<UE::Math::TRotator<T>>
{
	static constexpr bool Value = true;

	template <typename U>
	static UE::Math::TRotator<T> Lerp(const UE::Math::TRotator<T>& A, const UE::Math::TRotator<T>& B, const U& Alpha)
	{
		return A + (B - A).GetNormalized() * Alpha;
	}
};
