#pragma once

#include "CoreMinimal.h"
#include "Components/PanelWidget.h"
#include "Components/UniformGridSlot.h"
#include "Layout/Margin.h"

/** A grid whose cells all have the same size. */
class UUniformGridPanel : public UPanelWidget
{
	DECLARE_CLASS(UUniformGridPanel, UPanelWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UUniformGridPanel();

	FMargin SlotPadding;
	float MinDesiredSlotWidth = 0.0f;
	float MinDesiredSlotHeight = 0.0f;

	UMG_API UUniformGridSlot* AddChildToUniformGrid(UWidget* Content, int32 InRow = 0, int32 InColumn = 0);
	UMG_API virtual UClass* GetSlotClass() const override;
	UMG_API virtual const FText GetPaletteCategory() override;
};
