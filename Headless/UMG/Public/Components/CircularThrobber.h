#pragma once

#include "CoreMinimal.h"
#include "Components/Widget.h"

/** A ring of pieces turning while something loads. */
class UCircularThrobber : public UWidget
{
	DECLARE_CLASS(UCircularThrobber, UWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UCircularThrobber();

	/** Between 1 and 25. */
	int32 NumberOfPieces = 6;
	/** Seconds per turn. */
	float Period = 0.75f;
	float Radius = 16.0f;
	bool bEnableRadius = true;

	/** Clamped to [1, 25]. */
	UMG_API void SetNumberOfPieces(int32 InNumberOfPieces);
	void SetPeriod(float InPeriod) { Period = InPeriod; }
	void SetRadius(float InRadius) { Radius = InRadius; }

	UMG_API virtual const FText GetPaletteCategory() override;
};
