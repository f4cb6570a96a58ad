#pragma once

#include "CoreMinimal.h"

class UScriptStruct;

/** A widget's render transform: applied when drawing, never to layout. */
struct FWidgetTransform
{
	UMG_API static UScriptStruct* StaticStruct();

	FWidgetTransform() = default;
	FWidgetTransform(const FVector2D& InTranslation, const FVector2D& InScale, const FVector2D& InShear, float InAngle)
		: Translation(InTranslation), Scale(InScale), Shear(InShear), Angle(InAngle)
	{
	}

	bool IsIdentity() const { return Translation == FVector2D(0.0, 0.0) && Scale == FVector2D(1.0, 1.0) && Shear == FVector2D(0.0, 0.0) && Angle == 0.0f; }
	bool operator==(const FWidgetTransform& Other) const { return Translation == Other.Translation && Scale == Other.Scale && Shear == Other.Shear && Angle == Other.Angle; }

	FVector2D Translation = FVector2D(0.0, 0.0);
	FVector2D Scale = FVector2D(1.0, 1.0);
	FVector2D Shear = FVector2D(0.0, 0.0);
	float Angle = 0.0f;
};
