#pragma once

#include "HAL/Platform.h"

// Forward declarations of the math types under the engine's names. The double-precision
// instantiations are the defaults (FVector, FRotator, FQuat, FTransform, FBox2D), as in the
// engine's large-world-coordinates builds; the "3f"/"2f" spellings name the float ones.
namespace UE::Math
{
	template <typename T> struct TVector;
	template <typename T> struct TVector2;
	template <typename T> struct TRotator;
	template <typename T> struct TQuat;
	template <typename T> struct TTransform;
	template <typename T> struct TBox2;
	template <typename IntType> struct TIntPoint;
}

using FVector = UE::Math::TVector<double>;
using FVector3d = UE::Math::TVector<double>;
using FVector3f = UE::Math::TVector<float>;
using FVector2D = UE::Math::TVector2<double>;
using FVector2d = UE::Math::TVector2<double>;
using FVector2f = UE::Math::TVector2<float>;
using FRotator = UE::Math::TRotator<double>;
using FRotator3d = UE::Math::TRotator<double>;
using FRotator3f = UE::Math::TRotator<float>;
using FQuat = UE::Math::TQuat<double>;
using FQuat4d = UE::Math::TQuat<double>;
using FQuat4f = UE::Math::TQuat<float>;
using FTransform = UE::Math::TTransform<double>;
using FTransform3d = UE::Math::TTransform<double>;
using FTransform3f = UE::Math::TTransform<float>;
using FBox2D = UE::Math::TBox2<double>;
using FBox2d = UE::Math::TBox2<double>;
using FBox2f = UE::Math::TBox2<float>;
using FIntPoint = UE::Math::TIntPoint<int32>;
using FInt32Point = UE::Math::TIntPoint<int32>;
using FInt64Point = UE::Math::TIntPoint<int64>;

struct FLinearColor;
struct FColor;
