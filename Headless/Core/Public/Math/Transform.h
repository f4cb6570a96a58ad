#pragma once

#include "CoreTypes.h"
#include "Containers/UnrealString.h"
#include "Math/MathFwd.h"
#include "Math/Quat.h"
#include "Math/Rotator.h"
#include "Math/UnrealMathUtility.h"
#include "Math/Vector.h"

#include <type_traits>

namespace UE::Math
{

/**
 * Scale, then rotation, then translation. Composition follows the engine: (A * B) applies A
 * first and B second, so a child's world transform is ChildRelative * ParentWorld.
 */
template <typename T>
struct TTransform
{
	static_assert(std::is_floating_point_v<T>, "T must be floating point");

	using FReal = T;

protected:
	TQuat<T> Rotation = TQuat<T>(0, 0, 0, 1);
	TVector<T> Translation = TVector<T>(0, 0, 0);
	TVector<T> Scale3D = TVector<T>(1, 1, 1);

public:
	static const TTransform Identity;

	constexpr TTransform() = default;
	constexpr explicit TTransform(const TVector<T>& InTranslation) : Translation(InTranslation) {}
	constexpr explicit TTransform(const TQuat<T>& InRotation) : Rotation(InRotation) {}
	explicit TTransform(const TRotator<T>& InRotation) : Rotation(InRotation.Quaternion()) {}
	constexpr TTransform(const TQuat<T>& InRotation, const TVector<T>& InTranslation, const TVector<T>& InScale3D = TVector<T>(1, 1, 1))
		: Rotation(InRotation), Translation(InTranslation), Scale3D(InScale3D)
	{
	}
	TTransform(const TRotator<T>& InRotation, const TVector<T>& InTranslation, const TVector<T>& InScale3D = TVector<T>(1, 1, 1))
		: Rotation(InRotation.Quaternion()), Translation(InTranslation), Scale3D(InScale3D)
	{
	}

	template <typename FArg> requires(!std::is_same_v<T, FArg>)
	explicit TTransform(const TTransform<FArg>& From)
		: Rotation(TQuat<T>(From.GetRotation())), Translation(TVector<T>(From.GetTranslation())), Scale3D(TVector<T>(From.GetScale3D()))
	{
	}

	[[nodiscard]] const TVector<T>& GetTranslation() const { return Translation; }
	[[nodiscard]] TVector<T> GetLocation() const { return Translation; }
	[[nodiscard]] const TQuat<T>& GetRotation() const { return Rotation; }
	[[nodiscard]] TRotator<T> Rotator() const { return Rotation.Rotator(); }
	[[nodiscard]] const TVector<T>& GetScale3D() const { return Scale3D; }

	void SetTranslation(const TVector<T>& NewTranslation) { Translation = NewTranslation; }
	void SetLocation(const TVector<T>& Origin) { Translation = Origin; }
	void SetRotation(const TQuat<T>& NewRotation) { Rotation = NewRotation; }
	void SetScale3D(const TVector<T>& NewScale3D) { Scale3D = NewScale3D; }
	void SetComponents(const TQuat<T>& InRotation, const TVector<T>& InTranslation, const TVector<T>& InScale3D)
	{
		Rotation = InRotation;
		Translation = InTranslation;
		Scale3D = InScale3D;
	}
	void SetIdentity() { *this = TTransform(); }
	void AddToTranslation(const TVector<T>& DeltaTranslation) { Translation += DeltaTranslation; }
	void NormalizeRotation() { Rotation.Normalize(); }

	/** A then B: scale and rotation compose, and A's translation is carried through B. */
	[[nodiscard]] static TTransform Multiply(const TTransform& A, const TTransform& B)
	{
		TTransform Result;
		Result.Rotation = B.Rotation * A.Rotation;
		Result.Scale3D = A.Scale3D * B.Scale3D;
		Result.Translation = B.Rotation.RotateVector(B.Scale3D * A.Translation) + B.Translation;
		return Result;
	}
	[[nodiscard]] TTransform operator*(const TTransform& Other) const { return Multiply(*this, Other); }
	TTransform& operator*=(const TTransform& Other)
	{
		*this = Multiply(*this, Other);
		return *this;
	}
	/** Applies this transform, then the rotation Other. */
	[[nodiscard]] TTransform operator*(const TQuat<T>& Other) const { return Multiply(*this, TTransform(Other)); }

	[[nodiscard]] TVector<T> TransformPosition(const TVector<T>& V) const { return Rotation.RotateVector(Scale3D * V) + Translation; }
	[[nodiscard]] TVector<T> TransformPositionNoScale(const TVector<T>& V) const { return Rotation.RotateVector(V) + Translation; }
	[[nodiscard]] TVector<T> TransformVector(const TVector<T>& V) const { return Rotation.RotateVector(Scale3D * V); }
	[[nodiscard]] TVector<T> TransformVectorNoScale(const TVector<T>& V) const { return Rotation.RotateVector(V); }
	[[nodiscard]] TQuat<T> TransformRotation(const TQuat<T>& Q) const { return Rotation * Q; }

	/** Undoes TransformPosition; an axis with (near) zero scale maps to zero. */
	[[nodiscard]] TVector<T> InverseTransformPosition(const TVector<T>& V) const
	{
		return Rotation.UnrotateVector(V - Translation) * GetSafeScaleReciprocal(Scale3D);
	}
	[[nodiscard]] TVector<T> InverseTransformPositionNoScale(const TVector<T>& V) const { return Rotation.UnrotateVector(V - Translation); }
	[[nodiscard]] TVector<T> InverseTransformVector(const TVector<T>& V) const
	{
		return Rotation.UnrotateVector(V) * GetSafeScaleReciprocal(Scale3D);
	}
	[[nodiscard]] TVector<T> InverseTransformVectorNoScale(const TVector<T>& V) const { return Rotation.UnrotateVector(V); }
	[[nodiscard]] TQuat<T> InverseTransformRotation(const TQuat<T>& Q) const { return Rotation.Inverse() * Q; }

	/** The transform that undoes this one (exact for uniform scale). */
	[[nodiscard]] TTransform Inverse() const
	{
		const TQuat<T> InvRotation = Rotation.Inverse();
		const TVector<T> InvScale3D = GetSafeScaleReciprocal(Scale3D);
		const TVector<T> InvTranslation = InvRotation.RotateVector(InvScale3D * -Translation);
		return TTransform(InvRotation, InvTranslation, InvScale3D);
	}

	/** This transform expressed relative to Other: the X for which X * Other == *this. An unnormalised Other.Rotation gives the identity. */
	[[nodiscard]] TTransform GetRelativeTransform(const TTransform& Other) const
	{
		if (!Other.Rotation.IsNormalized())
		{
			return Identity;
		}
		const TVector<T> SafeRecipScale3D = GetSafeScaleReciprocal(Other.Scale3D, T(UE_SMALL_NUMBER));
		const TQuat<T> InverseRot = Other.Rotation.Inverse();
		TTransform Result;
		Result.Scale3D = Scale3D * SafeRecipScale3D;
		Result.Rotation = InverseRot * Rotation;
		Result.Translation = InverseRot.RotateVector(Translation - Other.Translation) * SafeRecipScale3D;
		return Result;
	}

	/** Reciprocal of each scale axis, with zero for an axis whose magnitude is at most Tolerance. */
	[[nodiscard]] static TVector<T> GetSafeScaleReciprocal(const TVector<T>& InScale, T Tolerance = UE_SMALL_NUMBER)
	{
		return TVector<T>(
			FMath::Abs(InScale.X) <= Tolerance ? T(0) : T(1) / InScale.X,
			FMath::Abs(InScale.Y) <= Tolerance ? T(0) : T(1) / InScale.Y,
			FMath::Abs(InScale.Z) <= Tolerance ? T(0) : T(1) / InScale.Z);
	}

	[[nodiscard]] bool RotationEquals(const TTransform& Other, T Tolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return Rotation.Equals(Other.Rotation, Tolerance);
	}
	[[nodiscard]] bool TranslationEquals(const TTransform& Other, T Tolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return Translation.Equals(Other.Translation, Tolerance);
	}
	[[nodiscard]] bool Scale3DEquals(const TTransform& Other, T Tolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return Scale3D.Equals(Other.Scale3D, Tolerance);
	}
	[[nodiscard]] bool Equals(const TTransform& Other, T Tolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return RotationEquals(Other, Tolerance) && TranslationEquals(Other, Tolerance) && Scale3DEquals(Other, Tolerance);
	}
	[[nodiscard]] bool EqualsNoScale(const TTransform& Other, T Tolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return RotationEquals(Other, Tolerance) && TranslationEquals(Other, Tolerance);
	}
	/** Bit-for-bit equality of all three parts. */
	[[nodiscard]] bool Identical(const TTransform& Other) const
	{
		return Rotation == Other.Rotation && Translation == Other.Translation && Scale3D == Other.Scale3D;
	}

	[[nodiscard]] bool ContainsNaN() const { return Rotation.ContainsNaN() || Translation.ContainsNaN() || Scale3D.ContainsNaN(); }
	[[nodiscard]] bool IsValid() const { return !ContainsNaN() && Rotation.IsNormalized(); }

	/** "%f,%f,%f|%f,%f,%f|%f,%f,%f": translation, rotation as pitch/yaw/roll, scale. */
	[[nodiscard]] CORE_API FString ToString() const;
	/** Multi-line listing of the rotation (pitch, yaw, roll), translation and scale. */
	[[nodiscard]] CORE_API FString ToHumanReadableString() const;
	/** Reads what ToString prints. Each part may also be in the X=/P= form; any failure leaves the transform unchanged. */
	CORE_API bool InitFromString(const FString& InSourceString);
};

template <typename T> const TTransform<T> TTransform<T>::Identity = TTransform<T>();

} // namespace UE::Math
