#pragma once

#include "CoreMinimal.h"
#include "Components/PanelSlot.h"
#include "Layout/Margin.h"
#include "Types/SlateEnums.h"

/** The child of a size box. */
class USizeBoxSlot : public UPanelSlot
{
	DECLARE_CLASS(USizeBoxSlot, UPanelSlot, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API USizeBoxSlot();

	FMargin Padding;
	TEnumAsByte<EHorizontalAlignment> HorizontalAlignment = HAlign_Fill;
	TEnumAsByte<EVerticalAlignment> VerticalAlignment = VAlign_Fill;

	void SetPadding(FMargin InPadding) { Padding = InPadding; }
	void SetHorizontalAlignment(EHorizontalAlignment InHorizontalAlignment) { HorizontalAlignment = InHorizontalAlignment; }
	void SetVerticalAlignment(EVerticalAlignment InVerticalAlignment) { VerticalAlignment = InVerticalAlignment; }
};
