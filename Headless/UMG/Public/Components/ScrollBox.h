#pragma once

#include "CoreMinimal.h"
#include "Components/PanelWidget.h"
#include "Components/ScrollBoxSlot.h"
#include "Types/SlateEnums.h"
#include "UObject/ScriptDelegates.h"

/** A panel scrolling a column (or row) of children. */
class UScrollBox : public UPanelWidget
{
	DECLARE_CLASS(UScrollBox, UPanelWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UScrollBox();

	/** Called with the new offset when the user scrolls (one float parameter, CurrentOffset). */
	struct FOnUserScrolledEvent : FMulticastScriptDelegate {};

	TEnumAsByte<EOrientation> Orientation = Orient_Vertical;
	ESlateVisibility ScrollBarVisibility = ESlateVisibility::Visible;
	bool AlwaysShowScrollbar = false;
	bool AllowOverscroll = true;
	FOnUserScrolledEvent OnUserScrolled;

	UMG_API virtual UClass* GetSlotClass() const override;
	UMG_API virtual const FText GetPaletteCategory() override;
};
