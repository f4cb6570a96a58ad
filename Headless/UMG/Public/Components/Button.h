#pragma once

#include "CoreMinimal.h"
#include "Components/ButtonSlot.h"
#include "Components/ContentWidget.h"

/**
 * A clickable content widget. Its style, colours and events (OnClicked, OnPressed, OnReleased, OnHovered,
 * OnUnhovered) are the engine's reflected members, which the catalogue gives the class.
 */
class UButton : public UContentWidget
{
	DECLARE_CLASS(UButton, UContentWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UButton();

	UMG_API virtual UClass* GetSlotClass() const override;
	UMG_API virtual const FText GetPaletteCategory() override;
};
