#pragma once

#include "CoreMinimal.h"
#include "Components/PanelSlot.h"
#include "Layout/Margin.h"
#include "Types/SlateEnums.h"

/** The child of a border, kept in step with the border's own padding and alignment. */
class UBorderSlot : public UPanelSlot
{
	DECLARE_CLASS(UBorderSlot, UPanelSlot, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UBorderSlot();

	FMargin Padding = FMargin(4.0f, 2.0f);
	TEnumAsByte<EHorizontalAlignment> HorizontalAlignment = HAlign_Fill;
	TEnumAsByte<EVerticalAlignment> VerticalAlignment = VAlign_Fill;

	void SetPadding(FMargin InPadding) { Padding = InPadding; }
	void SetHorizontalAlignment(EHorizontalAlignment InHorizontalAlignment) { HorizontalAlignment = InHorizontalAlignment; }
	void SetVerticalAlignment(EVerticalAlignment InVerticalAlignment) { VerticalAlignment = InVerticalAlignment; }
};
