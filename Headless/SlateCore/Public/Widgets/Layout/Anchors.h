#pragma once

#include "CoreMinimal.h"

class UScriptStruct;

/**
 * Where a canvas child is pinned in its parent, as fractions of the parent's size: Minimum is the top left
 * anchor and Maximum the bottom right one. Apart on an axis, the child stretches along it.
 */
struct FAnchors
{
	static UScriptStruct* StaticStruct();

	FAnchors() = default;
	/** Both anchors at the same point, the same fraction on both axes. */
	FAnchors(float UnifiedAnchor) : Minimum(UnifiedAnchor, UnifiedAnchor), Maximum(UnifiedAnchor, UnifiedAnchor) {}
	/** Both anchors at one point. */
	FAnchors(float Horizontal, float Vertical) : Minimum(Horizontal, Vertical), Maximum(Horizontal, Vertical) {}
	FAnchors(float MinX, float MinY, float MaxX, float MaxY) : Minimum(MinX, MinY), Maximum(MaxX, MaxY) {}

	bool IsStretchedVertical() const { return Minimum.Y != Maximum.Y; }
	bool IsStretchedHorizontal() const { return Minimum.X != Maximum.X; }

	bool operator==(const FAnchors& Other) const { return Minimum == Other.Minimum && Maximum == Other.Maximum; }
	bool operator!=(const FAnchors& Other) const { return !(*this == Other); }

	FVector2D Minimum = FVector2D(0.0, 0.0);
	FVector2D Maximum = FVector2D(0.0, 0.0);
};
