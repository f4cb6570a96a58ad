#pragma once

#include "CoreMinimal.h"
#include "Components/Widget.h"
#include "UObject/Class.h"

/** The direction a progress bar fills in. */
namespace EProgressBarFillType
{
	enum Type : int
	{
		LeftToRight,
		RightToLeft,
		FillFromCenter,
		FillFromCenterHorizontal,
		FillFromCenterVertical,
		TopToBottom,
		BottomToTop,
	};
}

template <> UMG_API UEnum* StaticEnum<EProgressBarFillType::Type>();

/** A bar filled to a fraction. */
class UProgressBar : public UWidget
{
	DECLARE_CLASS(UProgressBar, UWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UProgressBar();

	/** The filled fraction, from 0 to 1. */
	float Percent = 0.0f;
	TEnumAsByte<EProgressBarFillType::Type> BarFillType = EProgressBarFillType::LeftToRight;
	bool bIsMarquee = false;
	FLinearColor FillColorAndOpacity = FLinearColor::White;

	float GetPercent() const { return Percent; }
	void SetPercent(float InPercent) { Percent = InPercent; }
	void SetFillColorAndOpacity(FLinearColor InColor) { FillColorAndOpacity = InColor; }
	void SetIsMarquee(bool InbIsMarquee) { bIsMarquee = InbIsMarquee; }

	UMG_API virtual const FText GetPaletteCategory() override;
};
