#pragma once

#include "CoreMinimal.h"
#include "Components/PanelSlot.h"
#include "Layout/Margin.h"
#include "Types/SlateEnums.h"

/** A layer of an overlay: its padding and where it sits over the others. */
class UOverlaySlot : public UPanelSlot
{
	DECLARE_CLASS(UOverlaySlot, UPanelSlot, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UOverlaySlot();

	FMargin Padding;
	TEnumAsByte<EHorizontalAlignment> HorizontalAlignment = HAlign_Left;
	TEnumAsByte<EVerticalAlignment> VerticalAlignment = VAlign_Top;

	void SetPadding(FMargin InPadding) { Padding = InPadding; }
	void SetHorizontalAlignment(EHorizontalAlignment InHorizontalAlignment) { HorizontalAlignment = InHorizontalAlignment; }
	void SetVerticalAlignment(EVerticalAlignment InVerticalAlignment) { VerticalAlignment = InVerticalAlignment; }
};
