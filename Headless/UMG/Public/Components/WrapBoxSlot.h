#pragma once

#include "CoreMinimal.h"
#include "Components/PanelSlot.h"
#include "Layout/Margin.h"
#include "Types/SlateEnums.h"

/** A child of a wrap box: how it fills the line it lands on and whether it starts a new one. */
class UWrapBoxSlot : public UPanelSlot
{
	DECLARE_CLASS(UWrapBoxSlot, UPanelSlot, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UWrapBoxSlot();

	FMargin Padding;
	bool bFillEmptySpace = false;
	float FillSpanWhenLessThan = 0.0f;
	TEnumAsByte<EHorizontalAlignment> HorizontalAlignment = HAlign_Fill;
	TEnumAsByte<EVerticalAlignment> VerticalAlignment = VAlign_Fill;
	bool bForceNewLine = false;

	void SetPadding(FMargin InPadding) { Padding = InPadding; }
	void SetFillEmptySpace(bool InbFillEmptySpace) { bFillEmptySpace = InbFillEmptySpace; }
	void SetFillSpanWhenLessThan(float InFillSpanWhenLessThan) { FillSpanWhenLessThan = InFillSpanWhenLessThan; }
	void SetHorizontalAlignment(EHorizontalAlignment InHorizontalAlignment) { HorizontalAlignment = InHorizontalAlignment; }
	void SetVerticalAlignment(EVerticalAlignment InVerticalAlignment) { VerticalAlignment = InVerticalAlignment; }
	void SetForceNewLine(bool InbForceNewLine) { bForceNewLine = InbForceNewLine; }
};
