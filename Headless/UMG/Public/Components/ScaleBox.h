#pragma once

#include "CoreMinimal.h"
#include "Components/ContentWidget.h"
#include "Components/ScaleBoxSlot.h"

/** A content widget scaling its child to fit the space it gets. */
class UScaleBox : public UContentWidget
{
	DECLARE_CLASS(UScaleBox, UContentWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UScaleBox();

	/** The scale used when the stretch rule is the user's. */
	float UserSpecifiedScale = 1.0f;
	bool IgnoreInheritedScale = false;

	void SetUserSpecifiedScale(float InUserSpecifiedScale) { UserSpecifiedScale = InUserSpecifiedScale; }
	void SetIgnoreInheritedScale(bool bInIgnoreInheritedScale) { IgnoreInheritedScale = bInIgnoreInheritedScale; }

	UMG_API virtual UClass* GetSlotClass() const override;
	UMG_API virtual const FText GetPaletteCategory() override;
};
