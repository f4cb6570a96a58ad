#pragma once

#include "CoreMinimal.h"
#include "Components/PanelWidget.h"
#include "Components/WrapBoxSlot.h"
#include "Types/SlateEnums.h"

/** A panel laying its children out in lines that wrap at its width. */
class UWrapBox : public UPanelWidget
{
	DECLARE_CLASS(UWrapBox, UPanelWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UWrapBox();

	/** Space between neighbouring children. */
	FVector2D InnerSlotPadding = FVector2D(0.0, 0.0);
	float WrapSize = 500.0f;
	/** Wrap at WrapSize rather than at the box's width. */
	bool bExplicitWrapSize = false;
	TEnumAsByte<EHorizontalAlignment> HorizontalAlignment = HAlign_Left;
	TEnumAsByte<EOrientation> Orientation = Orient_Horizontal;

	UMG_API UWrapBoxSlot* AddChildToWrapBox(UWidget* Content);
	UMG_API virtual UClass* GetSlotClass() const override;
	UMG_API virtual const FText GetPaletteCategory() override;
};
