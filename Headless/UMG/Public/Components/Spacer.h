#pragma once

#include "CoreMinimal.h"
#include "Components/Widget.h"

/** Empty space of a given size between other widgets. */
class USpacer : public UWidget
{
	DECLARE_CLASS(USpacer, UWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API USpacer();

	FVector2D Size = FVector2D(1.0, 1.0);

	FVector2D GetSize() const { return Size; }
	void SetSize(FVector2D InSize) { Size = InSize; }

	UMG_API virtual const FText GetPaletteCategory() override;
};
