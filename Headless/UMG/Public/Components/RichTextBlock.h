#pragma once

#include "CoreMinimal.h"
#include "Components/TextWidgetTypes.h"

/** Text with inline markup (<Style>text</>) drawn with the styles of a style set. */
class URichTextBlock : public UTextLayoutWidget
{
	DECLARE_CLASS(URichTextBlock, UTextLayoutWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API URichTextBlock();

	FText Text;
	/** Use the default text style below instead of the style set's "Default" row. */
	bool bOverrideDefaultStyle = false;
	float MinDesiredWidth = 0.0f;

	FText GetText() const { return Text; }
	void SetText(const FText& InText) { Text = InText; }
	void SetMinDesiredWidth(float InMinDesiredWidth) { MinDesiredWidth = InMinDesiredWidth; }

	UMG_API virtual const FText GetPaletteCategory() override;
};
