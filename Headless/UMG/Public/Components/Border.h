#pragma once

#include "CoreMinimal.h"
#include "Components/BorderSlot.h"
#include "Components/ContentWidget.h"
#include "Layout/Margin.h"
#include "Types/SlateEnums.h"

/** A content widget drawing a brush behind its child; its padding and alignment are its slot's. */
class UBorder : public UContentWidget
{
	DECLARE_CLASS(UBorder, UContentWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UBorder();

	TEnumAsByte<EHorizontalAlignment> HorizontalAlignment = HAlign_Fill;
	TEnumAsByte<EVerticalAlignment> VerticalAlignment = VAlign_Fill;
	FMargin Padding = FMargin(4.0f, 2.0f);
	FLinearColor ContentColorAndOpacity = FLinearColor::White;
	FLinearColor BrushColor = FLinearColor::White;
	bool bShowEffectWhenDisabled = true;

	/** Each setter also sets the content's slot, which the border's values always match. */
	UMG_API void SetPadding(FMargin InPadding);
	UMG_API void SetHorizontalAlignment(EHorizontalAlignment InHorizontalAlignment);
	UMG_API void SetVerticalAlignment(EVerticalAlignment InVerticalAlignment);
	void SetBrushColor(FLinearColor InBrushColor) { BrushColor = InBrushColor; }
	void SetContentColorAndOpacity(FLinearColor InContentColorAndOpacity) { ContentColorAndOpacity = InContentColorAndOpacity; }

	UMG_API virtual UClass* GetSlotClass() const override;
	UMG_API virtual const FText GetPaletteCategory() override;

protected:
	UMG_API virtual void OnSlotAdded(UPanelSlot* InSlot) override;
};
