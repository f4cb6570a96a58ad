#pragma once

#include "CoreMinimal.h"
#include "Components/Widget.h"

/**
 * A bar with a handle choosing a value. Its value, range, style and events (OnValueChanged, the capture events)
 * are the engine's reflected members, which the catalogue gives the class.
 */
class USlider : public UWidget
{
	DECLARE_CLASS(USlider, UWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API USlider();

	UMG_API virtual const FText GetPaletteCategory() override;
};
