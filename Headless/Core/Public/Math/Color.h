#pragma once

#include "CoreTypes.h"
#include "Containers/UnrealString.h"
#include "Math/MathFwd.h"
#include "Math/UnrealMathUtility.h"
#include "Math/Vector.h"
#include "Templates/TypeHash.h"

struct FColor;

/** A linear-space RGBA colour with a float per channel. Channels start at zero. */
struct FLinearColor
{
	float R = 0.0f;
	float G = 0.0f;
	float B = 0.0f;
	float A = 0.0f;

	constexpr FLinearColor() = default;
	constexpr explicit FLinearColor(EForceInit) : R(0), G(0), B(0), A(0) {}
	constexpr FLinearColor(float InR, float InG, float InB, float InA = 1.0f) : R(InR), G(InG), B(InB), A(InA) {}
	/** Treats Color as sRGB and converts it to linear space; ReinterpretAsLinear skips the curve. */
	CORE_API FLinearColor(const FColor& Color);
	/** X, Y, Z as R, G, B with opaque alpha. */
	explicit FLinearColor(const FVector3f& Vector) : R(Vector.X), G(Vector.Y), B(Vector.Z), A(1.0f) {}
	explicit FLinearColor(const FVector3d& Vector) : R(float(Vector.X)), G(float(Vector.Y)), B(float(Vector.Z)), A(1.0f) {}

	[[nodiscard]] static FLinearColor FromSRGBColor(const FColor& Color) { return FLinearColor(Color); }
	[[nodiscard]] static CORE_API FLinearColor FromPow22Color(const FColor& Color);

	[[nodiscard]] float& Component(int32 Index)
	{
		check(Index >= 0 && Index < 4);
		return Index == 0 ? R : (Index == 1 ? G : (Index == 2 ? B : A));
	}
	[[nodiscard]] const float& Component(int32 Index) const
	{
		check(Index >= 0 && Index < 4);
		return Index == 0 ? R : (Index == 1 ? G : (Index == 2 ? B : A));
	}

	[[nodiscard]] constexpr FLinearColor operator+(const FLinearColor& Other) const { return FLinearColor(R + Other.R, G + Other.G, B + Other.B, A + Other.A); }
	[[nodiscard]] constexpr FLinearColor operator-(const FLinearColor& Other) const { return FLinearColor(R - Other.R, G - Other.G, B - Other.B, A - Other.A); }
	[[nodiscard]] constexpr FLinearColor operator*(const FLinearColor& Other) const { return FLinearColor(R * Other.R, G * Other.G, B * Other.B, A * Other.A); }
	[[nodiscard]] constexpr FLinearColor operator/(const FLinearColor& Other) const { return FLinearColor(R / Other.R, G / Other.G, B / Other.B, A / Other.A); }
	[[nodiscard]] constexpr FLinearColor operator*(float Scalar) const { return FLinearColor(R * Scalar, G * Scalar, B * Scalar, A * Scalar); }
	[[nodiscard]] constexpr FLinearColor operator/(float Scalar) const
	{
		const float InvScalar = 1.0f / Scalar;
		return FLinearColor(R * InvScalar, G * InvScalar, B * InvScalar, A * InvScalar);
	}
	constexpr FLinearColor& operator+=(const FLinearColor& Other) { R += Other.R; G += Other.G; B += Other.B; A += Other.A; return *this; }
	constexpr FLinearColor& operator-=(const FLinearColor& Other) { R -= Other.R; G -= Other.G; B -= Other.B; A -= Other.A; return *this; }
	constexpr FLinearColor& operator*=(const FLinearColor& Other) { R *= Other.R; G *= Other.G; B *= Other.B; A *= Other.A; return *this; }
	constexpr FLinearColor& operator/=(const FLinearColor& Other) { R /= Other.R; G /= Other.G; B /= Other.B; A /= Other.A; return *this; }
	constexpr FLinearColor& operator*=(float Scalar) { R *= Scalar; G *= Scalar; B *= Scalar; A *= Scalar; return *this; }
	constexpr FLinearColor& operator/=(float Scalar)
	{
		const float InvScalar = 1.0f / Scalar;
		R *= InvScalar;
		G *= InvScalar;
		B *= InvScalar;
		A *= InvScalar;
		return *this;
	}

	[[nodiscard]] constexpr bool operator==(const FLinearColor& Other) const { return R == Other.R && G == Other.G && B == Other.B && A == Other.A; }
	[[nodiscard]] constexpr bool operator!=(const FLinearColor& Other) const { return !(*this == Other); }
	/** Every channel strictly within Tolerance. */
	[[nodiscard]] bool Equals(const FLinearColor& Other, float Tolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return FMath::Abs(R - Other.R) < Tolerance && FMath::Abs(G - Other.G) < Tolerance && FMath::Abs(B - Other.B) < Tolerance
			&& FMath::Abs(A - Other.A) < Tolerance;
	}

	[[nodiscard]] constexpr FLinearColor GetClamped(float InMin = 0.0f, float InMax = 1.0f) const
	{
		return FLinearColor(FMath::Clamp(R, InMin, InMax), FMath::Clamp(G, InMin, InMax), FMath::Clamp(B, InMin, InMax), FMath::Clamp(A, InMin, InMax));
	}
	[[nodiscard]] constexpr FLinearColor CopyWithNewOpacity(float NewOpacity) const { return FLinearColor(R, G, B, NewOpacity); }
	[[nodiscard]] constexpr float GetMax() const { return FMath::Max(FMath::Max(FMath::Max(R, G), B), A); }
	[[nodiscard]] constexpr float GetMin() const { return FMath::Min(FMath::Min(FMath::Min(R, G), B), A); }
	[[nodiscard]] static float Dist(const FLinearColor& V1, const FLinearColor& V2)
	{
		return FMath::Sqrt(FMath::Square(V2.R - V1.R) + FMath::Square(V2.G - V1.G) + FMath::Square(V2.B - V1.B) + FMath::Square(V2.A - V1.A));
	}

	/** Clamps to [0, 1] with NaN mapped to 0, as GPUs convert. */
	[[nodiscard]] static constexpr float Clamp01NansTo0(float InValue)
	{
		const float ClampedLo = (InValue > 0.0f) ? InValue : 0.0f;
		return (ClampedLo < 1.0f) ? ClampedLo : 1.0f;
	}

	/** Each channel scaled to a byte with rounding, no gamma curve. */
	[[nodiscard]] CORE_API FColor QuantizeRound() const;
	/** Each channel scaled to a byte and truncated, no gamma curve. */
	[[nodiscard]] CORE_API FColor QuantizeFloor() const;
	/** R, G and B through the sRGB curve, alpha linear; every channel clamped to [0, 1] first. */
	[[nodiscard]] CORE_API FColor ToFColorSRGB() const;
	/** ToFColorSRGB when bSRGB, otherwise QuantizeRound. */
	[[nodiscard]] CORE_API FColor ToFColor(const bool bSRGB) const;

	/** R = hue in degrees, G = saturation, B = value; alpha kept. */
	[[nodiscard]] CORE_API FLinearColor LinearRGBToHSV() const;
	[[nodiscard]] CORE_API FLinearColor HSVToLinearRGB() const;
	[[nodiscard]] static CORE_API FLinearColor MakeFromHSV8(uint8 H, uint8 S, uint8 V);

	/** "(R=%f,G=%f,B=%f,A=%f)", as the engine prints it. */
	[[nodiscard]] CORE_API FString ToString() const;
	/** Reads "R=... G=... B=..." with an optional "A=" (1 when absent); R, G and B are required. */
	CORE_API bool InitFromString(const FString& InSourceString);

	static CORE_API const FLinearColor White;
	static CORE_API const FLinearColor Gray;
	static CORE_API const FLinearColor Black;
	static CORE_API const FLinearColor Transparent;
	static CORE_API const FLinearColor Red;
	static CORE_API const FLinearColor Green;
	static CORE_API const FLinearColor Blue;
	static CORE_API const FLinearColor Yellow;
};

[[nodiscard]] constexpr FLinearColor operator*(float Scalar, const FLinearColor& Color)
{
	return Color * Scalar;
}

[[nodiscard]] inline uint32 GetTypeHash(const FLinearColor& Color)
{
	return HashCombine(HashCombine(GetTypeHash(Color.R + 0.0f), GetTypeHash(Color.G + 0.0f)),
		HashCombine(GetTypeHash(Color.B + 0.0f), GetTypeHash(Color.A + 0.0f)));
}

/**
 * An 8-bit-per-channel colour, normally sRGB. The bytes are stored B, G, R, A, as in the engine,
 * so the packed value (DWColor) reads 0xAARRGGBB. Channels start at zero.
 */
struct FColor
{
	uint8 B = 0;
	uint8 G = 0;
	uint8 R = 0;
	uint8 A = 0;

	constexpr FColor() = default;
	constexpr explicit FColor(EForceInit) : B(0), G(0), R(0), A(0) {}
	constexpr FColor(uint8 InR, uint8 InG, uint8 InB, uint8 InA = 255) : B(InB), G(InG), R(InR), A(InA) {}
	/** From a packed 0xAARRGGBB value. */
	constexpr explicit FColor(uint32 InColor)
		: B(uint8(InColor & 0xFF)), G(uint8((InColor >> 8) & 0xFF)), R(uint8((InColor >> 16) & 0xFF)), A(uint8((InColor >> 24) & 0xFF))
	{
	}

	/** Packed 0xAARRGGBB, the little-endian reading of the four stored bytes. */
	[[nodiscard]] constexpr uint32 DWColor() const { return ToPackedARGB(); }
	[[nodiscard]] constexpr uint32 ToPackedARGB() const { return (uint32(A) << 24) | (uint32(R) << 16) | (uint32(G) << 8) | uint32(B); }
	[[nodiscard]] constexpr uint32 ToPackedABGR() const { return (uint32(A) << 24) | (uint32(B) << 16) | (uint32(G) << 8) | uint32(R); }
	[[nodiscard]] constexpr uint32 ToPackedRGBA() const { return (uint32(R) << 24) | (uint32(G) << 16) | (uint32(B) << 8) | uint32(A); }
	[[nodiscard]] constexpr uint32 ToPackedBGRA() const { return (uint32(B) << 24) | (uint32(G) << 16) | (uint32(R) << 8) | uint32(A); }

	[[nodiscard]] constexpr bool operator==(const FColor& C) const { return R == C.R && G == C.G && B == C.B && A == C.A; }
	[[nodiscard]] constexpr bool operator!=(const FColor& C) const { return !(*this == C); }

	/** Channel-wise addition saturating at 255. */
	constexpr void operator+=(const FColor& C)
	{
		R = uint8(FMath::Min(int32(R) + int32(C.R), 255));
		G = uint8(FMath::Min(int32(G) + int32(C.G), 255));
		B = uint8(FMath::Min(int32(B) + int32(C.B), 255));
		A = uint8(FMath::Min(int32(A) + int32(C.A), 255));
	}

	[[nodiscard]] constexpr FColor WithAlpha(uint8 Alpha) const { return FColor(R, G, B, Alpha); }
	/** Each byte divided by 255, no gamma curve. */
	[[nodiscard]] constexpr FLinearColor ReinterpretAsLinear() const
	{
		constexpr float Inv255 = 1.f / 255.f;
		return FLinearColor(R * Inv255, G * Inv255, B * Inv255, A * Inv255);
	}

	/**
	 * Parses "RGB", "RRGGBB" or "RRGGBBAA", each optionally after '#'. Alpha is 255 unless given.
	 * Any other length gives transparent black; a character that is not a hex digit counts as 0.
	 */
	[[nodiscard]] static CORE_API FColor FromHex(const FString& HexString);
	/** "RRGGBBAA" in upper case. */
	[[nodiscard]] CORE_API FString ToHex() const;
	/** "(R=%i,G=%i,B=%i,A=%i)", as the engine prints it. */
	[[nodiscard]] CORE_API FString ToString() const;
	/** Reads "R=... G=... B=..." with an optional "A=" (255 when absent); R, G and B are required. */
	CORE_API bool InitFromString(const FString& InSourceString);

	static CORE_API const FColor White;
	static CORE_API const FColor Black;
	static CORE_API const FColor Transparent;
	static CORE_API const FColor Red;
	static CORE_API const FColor Green;
	static CORE_API const FColor Blue;
	static CORE_API const FColor Yellow;
	static CORE_API const FColor Cyan;
	static CORE_API const FColor Magenta;
	static CORE_API const FColor Orange;
	static CORE_API const FColor Purple;
	static CORE_API const FColor Turquoise;
	static CORE_API const FColor Silver;
	static CORE_API const FColor Emerald;
};

static_assert(sizeof(FColor) == 4, "FColor packs into four bytes");

[[nodiscard]] constexpr uint32 GetTypeHash(const FColor& Color)
{
	return Color.DWColor();
}

template <typename T>
UE::Math::TVector<T>::TVector(const FLinearColor& InColor)
	: X(T(InColor.R)), Y(T(InColor.G)), Z(T(InColor.B))
{
}
