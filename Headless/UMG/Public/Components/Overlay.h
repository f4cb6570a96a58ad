#pragma once

#include "CoreMinimal.h"
#include "Components/PanelWidget.h"
#include "Components/OverlaySlot.h"

/** A panel stacking its children over each other, the first at the back. */
class UOverlay : public UPanelWidget
{
	DECLARE_CLASS(UOverlay, UPanelWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UOverlay();

	UMG_API UOverlaySlot* AddChildToOverlay(UWidget* Content);
	UMG_API virtual UClass* GetSlotClass() const override;
	UMG_API virtual const FText GetPaletteCategory() override;
};
