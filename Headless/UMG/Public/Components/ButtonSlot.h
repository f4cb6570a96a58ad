#pragma once

#include "CoreMinimal.h"
#include "Components/PanelSlot.h"
#include "Layout/Margin.h"
#include "Types/SlateEnums.h"

/** The content of a button. */
class UButtonSlot : public UPanelSlot
{
	DECLARE_CLASS(UButtonSlot, UPanelSlot, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UButtonSlot();

	FMargin Padding = FMargin(4.0f, 2.0f);
	TEnumAsByte<EHorizontalAlignment> HorizontalAlignment = HAlign_Center;
	TEnumAsByte<EVerticalAlignment> VerticalAlignment = VAlign_Center;

	void SetPadding(FMargin InPadding) { Padding = InPadding; }
	void SetHorizontalAlignment(EHorizontalAlignment InHorizontalAlignment) { HorizontalAlignment = InHorizontalAlignment; }
	void SetVerticalAlignment(EVerticalAlignment InVerticalAlignment) { VerticalAlignment = InVerticalAlignment; }
};
