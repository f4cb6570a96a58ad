#pragma once

#include "CoreMinimal.h"
#include "Components/Widget.h"
#include "Layout/Margin.h"

/** The base of widgets that lay text out: wrapping, margin and line height. */
class UTextLayoutWidget : public UWidget
{
	DECLARE_CLASS(UTextLayoutWidget, UWidget, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UTextLayoutWidget();

	bool AutoWrapText = false;
	/** Wraps at this width when above zero. */
	float WrapTextAt = 0.0f;
	FMargin Margin;
	float LineHeightPercentage = 1.0f;
	bool ApplyLineHeightToBottomLine = true;

	void SetAutoWrapText(bool InAutoWrapText) { AutoWrapText = InAutoWrapText; }
	void SetWrapTextAt(float InWrapTextAt) { WrapTextAt = InWrapTextAt; }
};
