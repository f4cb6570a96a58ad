#pragma once

#include "CoreMinimal.h"
#include "Components/PanelSlot.h"
#include "Layout/Margin.h"
#include "Components/SlateWrapperTypes.h"
#include "Types/SlateEnums.h"

/** A child of a horizontal box: its padding, its share of the width and its alignment. */
class UHorizontalBoxSlot : public UPanelSlot
{
	DECLARE_CLASS(UHorizontalBoxSlot, UPanelSlot, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UHorizontalBoxSlot();

	FMargin Padding;
	FSlateChildSize Size = FSlateChildSize(ESlateSizeRule::Automatic);
	TEnumAsByte<EHorizontalAlignment> HorizontalAlignment = HAlign_Fill;
	TEnumAsByte<EVerticalAlignment> VerticalAlignment = VAlign_Fill;

	void SetPadding(FMargin InPadding) { Padding = InPadding; }
	void SetSize(const FSlateChildSize& InSize) { Size = InSize; }
	void SetHorizontalAlignment(EHorizontalAlignment InHorizontalAlignment) { HorizontalAlignment = InHorizontalAlignment; }
	void SetVerticalAlignment(EVerticalAlignment InVerticalAlignment) { VerticalAlignment = InVerticalAlignment; }
};
