#pragma once

#include "CoreMinimal.h"
#include "Components/SlateWrapperTypes.h"
#include "Components/Visual.h"
#include "Slate/WidgetTransform.h"
#include "UObject/ObjectPtr.h"

class UPanelSlot;
class UPanelWidget;

/**
 * A widget of a widget tree. Headless widgets carry their place in the tree and their reflected
 * settings; nothing is drawn.
 */
class UWidget : public UVisual
{
	DECLARE_CLASS(UWidget, UVisual, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UWidget();

	/** The slot placing this widget in its parent panel, or null for a root or loose widget. */
	TObjectPtr<UPanelSlot> Slot;
	FText ToolTipText;
	/** A widget shown as the tooltip instead of ToolTipText. */
	TObjectPtr<UWidget> ToolTipWidget;
	FWidgetTransform RenderTransform;
	/** The transform's pivot, as a fraction of the widget's size. */
	FVector2D RenderTransformPivot = FVector2D(0.5, 0.5);
	/** Whether the Widget Blueprint exposes this widget as a member variable. */
	bool bIsVariable = true;
	bool bIsEnabled = true;
	bool bIsVolatile = false;
	ESlateVisibility Visibility = ESlateVisibility::Visible;
	float RenderOpacity = 1.0f;

	/** The panel holding this widget, or null. */
	UMG_API UPanelWidget* GetParent() const;
	/** Takes the widget out of its parent panel; false when it had none. */
	UMG_API bool RemoveFromParent();
	/** The name shown for the widget in the editor's hierarchy. */
	UMG_API FString GetDisplayLabel() const;
	void SetDisplayLabel(const FString& InDisplayLabel) { DisplayLabel = InDisplayLabel; }

	bool GetIsEnabled() const { return bIsEnabled; }
	void SetIsEnabled(bool bInIsEnabled) { bIsEnabled = bInIsEnabled; }
	ESlateVisibility GetVisibility() const { return Visibility; }
	void SetVisibility(ESlateVisibility InVisibility) { Visibility = InVisibility; }
	/** Visible and hit-test invisible widgets take part in layout and are shown; collapsed and hidden ones are not. */
	UMG_API bool IsVisible() const;
	float GetRenderOpacity() const { return RenderOpacity; }
	/** Clamped to [0, 1]. */
	UMG_API void SetRenderOpacity(float InOpacity);
	void SetToolTipText(const FText& InToolTipText) { ToolTipText = InToolTipText; }
	void SetRenderTransform(const FWidgetTransform& InTransform) { RenderTransform = InTransform; }
	void SetRenderTransformPivot(const FVector2D& InPivot) { RenderTransformPivot = InPivot; }

	/** The palette section the designer lists this kind of widget in. */
	UMG_API virtual const FText GetPaletteCategory();
	/** Called on a widget the designer has just made from its palette, for settings a new widget starts with. */
	virtual void OnCreationFromPalette() {}

private:
	FString DisplayLabel;
};
