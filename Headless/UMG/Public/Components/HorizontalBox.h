#pragma once

#include "CoreMinimal.h"
#include "Components/PanelWidget.h"
#include "Components/HorizontalBoxSlot.h"

/** A panel laying its children out left to right. */
class UHorizontalBox : public UPanelWidget
{
	DECLARE_CLASS(UHorizontalBox, UPanelWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UHorizontalBox();

	UMG_API UHorizontalBoxSlot* AddChildToHorizontalBox(UWidget* Content);
	UMG_API virtual UClass* GetSlotClass() const override;
	UMG_API virtual const FText GetPaletteCategory() override;
};
