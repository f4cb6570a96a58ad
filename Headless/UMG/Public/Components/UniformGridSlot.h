#pragma once

#include "CoreMinimal.h"
#include "Components/PanelSlot.h"
#include "Types/SlateEnums.h"

/** A cell of a uniform grid: its row, column and alignment. */
class UUniformGridSlot : public UPanelSlot
{
	DECLARE_CLASS(UUniformGridSlot, UPanelSlot, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UUniformGridSlot();

	TEnumAsByte<EHorizontalAlignment> HorizontalAlignment = HAlign_Left;
	TEnumAsByte<EVerticalAlignment> VerticalAlignment = VAlign_Top;
	int32 Row = 0;
	int32 Column = 0;

	void SetHorizontalAlignment(EHorizontalAlignment InHorizontalAlignment) { HorizontalAlignment = InHorizontalAlignment; }
	void SetVerticalAlignment(EVerticalAlignment InVerticalAlignment) { VerticalAlignment = InVerticalAlignment; }
	void SetRow(int32 InRow) { Row = InRow; }
	void SetColumn(int32 InColumn) { Column = InColumn; }
};
