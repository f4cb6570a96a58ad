#pragma once

#include "CoreMinimal.h"
#include "Components/ContentWidget.h"
#include "Components/SizeBoxSlot.h"

/** A content widget that overrides its child's desired size; each override counts only while its flag is set. */
class USizeBox : public UContentWidget
{
	DECLARE_CLASS(USizeBox, UContentWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API USizeBox();

	float WidthOverride = 0.0f;
	float HeightOverride = 0.0f;
	float MinDesiredWidth = 0.0f;
	float MinDesiredHeight = 0.0f;
	float MaxDesiredWidth = 0.0f;
	float MaxDesiredHeight = 0.0f;
	float MinAspectRatio = 1.0f;
	float MaxAspectRatio = 1.0f;
	bool bOverride_WidthOverride = false;
	bool bOverride_HeightOverride = false;
	bool bOverride_MinDesiredWidth = false;
	bool bOverride_MinDesiredHeight = false;
	bool bOverride_MaxDesiredWidth = false;
	bool bOverride_MaxDesiredHeight = false;
	bool bOverride_MinAspectRatio = false;
	bool bOverride_MaxAspectRatio = false;

	/** Each setter sets the value and turns its override on; the Clear functions turn it off. */
	void SetWidthOverride(float InWidthOverride) { bOverride_WidthOverride = true; WidthOverride = InWidthOverride; }
	void ClearWidthOverride() { bOverride_WidthOverride = false; }
	void SetHeightOverride(float InHeightOverride) { bOverride_HeightOverride = true; HeightOverride = InHeightOverride; }
	void ClearHeightOverride() { bOverride_HeightOverride = false; }
	void SetMinDesiredWidth(float InMinDesiredWidth) { bOverride_MinDesiredWidth = true; MinDesiredWidth = InMinDesiredWidth; }
	void ClearMinDesiredWidth() { bOverride_MinDesiredWidth = false; }
	void SetMinDesiredHeight(float InMinDesiredHeight) { bOverride_MinDesiredHeight = true; MinDesiredHeight = InMinDesiredHeight; }
	void ClearMinDesiredHeight() { bOverride_MinDesiredHeight = false; }
	void SetMaxDesiredWidth(float InMaxDesiredWidth) { bOverride_MaxDesiredWidth = true; MaxDesiredWidth = InMaxDesiredWidth; }
	void ClearMaxDesiredWidth() { bOverride_MaxDesiredWidth = false; }
	void SetMaxDesiredHeight(float InMaxDesiredHeight) { bOverride_MaxDesiredHeight = true; MaxDesiredHeight = InMaxDesiredHeight; }
	void ClearMaxDesiredHeight() { bOverride_MaxDesiredHeight = false; }

	UMG_API virtual UClass* GetSlotClass() const override;
	UMG_API virtual const FText GetPaletteCategory() override;
};
