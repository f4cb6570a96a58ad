#pragma once

#include "CoreMinimal.h"
#include "Components/PanelWidget.h"
#include "Components/VerticalBoxSlot.h"

/** A panel laying its children out top to bottom. */
class UVerticalBox : public UPanelWidget
{
	DECLARE_CLASS(UVerticalBox, UPanelWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UVerticalBox();

	UMG_API UVerticalBoxSlot* AddChildToVerticalBox(UWidget* Content);
	UMG_API virtual UClass* GetSlotClass() const override;
	UMG_API virtual const FText GetPaletteCategory() override;
};
