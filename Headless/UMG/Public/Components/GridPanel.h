#pragma once

#include "CoreMinimal.h"
#include "Components/PanelWidget.h"
#include "Components/GridSlot.h"

/** A panel of rows and columns whose sizes follow their fill coefficients. */
class UGridPanel : public UPanelWidget
{
	DECLARE_CLASS(UGridPanel, UPanelWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UGridPanel();

	/** The share of the free width each column takes; a missing entry counts as 0. */
	TArray<float> ColumnFill;
	TArray<float> RowFill;

	UMG_API void SetColumnFill(int32 ColumnIndex, float Coefficient);
	UMG_API void SetRowFill(int32 RowIndex, float Coefficient);

	UMG_API UGridSlot* AddChildToGrid(UWidget* Content, int32 InRow = 0, int32 InColumn = 0);
	UMG_API virtual UClass* GetSlotClass() const override;
	UMG_API virtual const FText GetPaletteCategory() override;
};
