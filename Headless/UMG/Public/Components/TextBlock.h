#pragma once

#include "CoreMinimal.h"
#include "Components/TextWidgetTypes.h"

/** A line or block of text. Its font, colour and shadow are the engine's reflected members, from the catalogue. */
class UTextBlock : public UTextLayoutWidget
{
	DECLARE_CLASS(UTextBlock, UTextLayoutWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UTextBlock();

	FText Text;

	FText GetText() const { return Text; }
	void SetText(FText InText) { Text = InText; }

	UMG_API virtual const FText GetPaletteCategory() override;
	/** A text block from the palette reads "Text Block". */
	UMG_API virtual void OnCreationFromPalette() override;
};
