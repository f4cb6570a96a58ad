#pragma once

#include "CoreMinimal.h"
#include "Components/PanelSlot.h"
#include "Layout/Margin.h"
#include "Types/SlateEnums.h"

/** A cell of a grid panel: its row and column, the cells it spans, its layer and alignment. */
class UGridSlot : public UPanelSlot
{
	DECLARE_CLASS(UGridSlot, UPanelSlot, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UGridSlot();

	FMargin Padding;
	TEnumAsByte<EHorizontalAlignment> HorizontalAlignment = HAlign_Fill;
	TEnumAsByte<EVerticalAlignment> VerticalAlignment = VAlign_Fill;
	int32 Row = 0;
	int32 RowSpan = 1;
	int32 Column = 0;
	int32 ColumnSpan = 1;
	int32 Layer = 0;
	FVector2D Nudge = FVector2D(0.0, 0.0);

	void SetPadding(FMargin InPadding) { Padding = InPadding; }
	void SetHorizontalAlignment(EHorizontalAlignment InHorizontalAlignment) { HorizontalAlignment = InHorizontalAlignment; }
	void SetVerticalAlignment(EVerticalAlignment InVerticalAlignment) { VerticalAlignment = InVerticalAlignment; }
	void SetRow(int32 InRow) { Row = InRow; }
	void SetRowSpan(int32 InRowSpan) { RowSpan = InRowSpan; }
	void SetColumn(int32 InColumn) { Column = InColumn; }
	void SetColumnSpan(int32 InColumnSpan) { ColumnSpan = InColumnSpan; }
	void SetLayer(int32 InLayer) { Layer = InLayer; }
	void SetNudge(const FVector2D& InNudge) { Nudge = InNudge; }
};
