#pragma once

#include "CoreMinimal.h"
#include "Components/PanelSlot.h"
#include "Types/SlateEnums.h"

/** The child of a scale box. */
class UScaleBoxSlot : public UPanelSlot
{
	DECLARE_CLASS(UScaleBoxSlot, UPanelSlot, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UScaleBoxSlot();

	TEnumAsByte<EHorizontalAlignment> HorizontalAlignment = HAlign_Center;
	TEnumAsByte<EVerticalAlignment> VerticalAlignment = VAlign_Center;

	void SetHorizontalAlignment(EHorizontalAlignment InHorizontalAlignment) { HorizontalAlignment = InHorizontalAlignment; }
	void SetVerticalAlignment(EVerticalAlignment InVerticalAlignment) { VerticalAlignment = InVerticalAlignment; }
};
