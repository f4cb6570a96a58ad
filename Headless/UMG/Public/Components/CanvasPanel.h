#pragma once

#include "CoreMinimal.h"
#include "Components/PanelWidget.h"
#include "Components/CanvasPanelSlot.h"

/** A panel placing each child by anchors and offsets. */
class UCanvasPanel : public UPanelWidget
{
	DECLARE_CLASS(UCanvasPanel, UPanelWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UCanvasPanel();

	UMG_API UCanvasPanelSlot* AddChildToCanvas(UWidget* Content);
	UMG_API virtual UClass* GetSlotClass() const override;
	UMG_API virtual const FText GetPaletteCategory() override;
};
