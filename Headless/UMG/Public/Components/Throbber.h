#pragma once

#include "CoreMinimal.h"
#include "Components/Widget.h"

/** A row of pieces pulsing while something loads. */
class UThrobber : public UWidget
{
	DECLARE_CLASS(UThrobber, UWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UThrobber();

	/** Between 1 and 25. */
	int32 NumberOfPieces = 3;
	bool bAnimateHorizontally = true;
	bool bAnimateVertically = true;
	bool bAnimateOpacity = true;

	/** Clamped to [1, 25]. */
	UMG_API void SetNumberOfPieces(int32 InNumberOfPieces);
	void SetAnimateHorizontally(bool bInAnimateHorizontally) { bAnimateHorizontally = bInAnimateHorizontally; }
	void SetAnimateVertically(bool bInAnimateVertically) { bAnimateVertically = bInAnimateVertically; }
	void SetAnimateOpacity(bool bInAnimateOpacity) { bAnimateOpacity = bInAnimateOpacity; }

	UMG_API virtual const FText GetPaletteCategory() override;
};
