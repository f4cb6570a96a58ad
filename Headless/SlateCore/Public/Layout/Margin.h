#pragma once

#include "CoreMinimal.h"

class UScriptStruct;

/** Space around a widget's four sides, in slate units: padding of slots and offsets of canvas children. */
struct FMargin
{
	static UScriptStruct* StaticStruct();

	FMargin() = default;
	/** The same space on every side. */
	FMargin(float UniformMargin) : Left(UniformMargin), Top(UniformMargin), Right(UniformMargin), Bottom(UniformMargin) {}
	/** Horizontal space left and right, vertical space above and below. */
	FMargin(float Horizontal, float Vertical) : Left(Horizontal), Top(Vertical), Right(Horizontal), Bottom(Vertical) {}
	FMargin(float InLeft, float InTop, float InRight, float InBottom) : Left(InLeft), Top(InTop), Right(InRight), Bottom(InBottom) {}

	/** The horizontal and vertical totals (left plus right, top plus bottom). */
	FVector2D GetDesiredSize() const { return FVector2D(Left + Right, Top + Bottom); }

	FMargin operator+(const FMargin& Other) const { return FMargin(Left + Other.Left, Top + Other.Top, Right + Other.Right, Bottom + Other.Bottom); }
	FMargin operator-(const FMargin& Other) const { return FMargin(Left - Other.Left, Top - Other.Top, Right - Other.Right, Bottom - Other.Bottom); }
	FMargin operator*(float Scale) const { return FMargin(Left * Scale, Top * Scale, Right * Scale, Bottom * Scale); }
	bool operator==(const FMargin& Other) const { return Left == Other.Left && Top == Other.Top && Right == Other.Right && Bottom == Other.Bottom; }
	bool operator!=(const FMargin& Other) const { return !(*this == Other); }

	float Left = 0.0f;
	float Top = 0.0f;
	float Right = 0.0f;
	float Bottom = 0.0f;
};
