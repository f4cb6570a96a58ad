#pragma once

#include "CoreMinimal.h"
#include "Components/Widget.h"

/** A widget showing a brush; the brush and its tint are the engine's reflected members, from the catalogue. */
class UImage : public UWidget
{
	DECLARE_CLASS(UImage, UWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UImage();

	UMG_API virtual const FText GetPaletteCategory() override;
};
