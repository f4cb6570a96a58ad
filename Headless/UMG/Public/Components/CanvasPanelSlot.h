#pragma once

#include "CoreMinimal.h"
#include "Components/PanelSlot.h"
#include "Layout/Margin.h"
#include "Widgets/Layout/Anchors.h"

/**
 * Where a canvas child is placed: Offsets are its position and size while its anchors meet on an axis, and its
 * distances from the anchors where they are apart; Alignment is the child's own point placed at the position.
 */
struct FAnchorData
{
	UMG_API static UScriptStruct* StaticStruct();

	bool operator==(const FAnchorData& Other) const { return Offsets == Other.Offsets && Anchors == Other.Anchors && Alignment == Other.Alignment; }

	FMargin Offsets;
	FAnchors Anchors;
	FVector2D Alignment = FVector2D(0.0, 0.0);
};

/** A child of a canvas panel: its layout data, whether it takes its content's size, and its drawing order. */
class UCanvasPanelSlot : public UPanelSlot
{
	DECLARE_CLASS(UCanvasPanelSlot, UPanelSlot, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UCanvasPanelSlot();

	FAnchorData LayoutData;
	bool bAutoSize = false;
	int32 ZOrder = 0;

	void SetLayout(const FAnchorData& InLayoutData) { LayoutData = InLayoutData; }
	FAnchorData GetLayout() const { return LayoutData; }
	/** The top left offsets. */
	UMG_API void SetPosition(FVector2D InPosition);
	UMG_API FVector2D GetPosition() const;
	/** The right and bottom offsets. */
	UMG_API void SetSize(FVector2D InSize);
	UMG_API FVector2D GetSize() const;
	void SetOffsets(FMargin InOffset) { LayoutData.Offsets = InOffset; }
	FMargin GetOffsets() const { return LayoutData.Offsets; }
	void SetAnchors(FAnchors InAnchors) { LayoutData.Anchors = InAnchors; }
	FAnchors GetAnchors() const { return LayoutData.Anchors; }
	void SetMinimum(FVector2D InMinimumAnchors) { LayoutData.Anchors.Minimum = InMinimumAnchors; }
	void SetMaximum(FVector2D InMaximumAnchors) { LayoutData.Anchors.Maximum = InMaximumAnchors; }
	void SetAlignment(FVector2D InAlignment) { LayoutData.Alignment = InAlignment; }
	FVector2D GetAlignment() const { return LayoutData.Alignment; }
	void SetAutoSize(bool InbAutoSize) { bAutoSize = InbAutoSize; }
	bool GetAutoSize() const { return bAutoSize; }
	void SetZOrder(int32 InZOrder) { ZOrder = InZOrder; }
	int32 GetZOrder() const { return ZOrder; }
};
