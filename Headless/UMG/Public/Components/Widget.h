#pragma once

#include "CoreMinimal.h"
#include "Components/Visual.h"
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
	/** Whether the Widget Blueprint exposes this widget as a member variable. */
	bool bIsVariable = true;
	bool bIsEnabled = true;

	/** The panel holding this widget, or null. */
	UMG_API UPanelWidget* GetParent() const;
	/** Takes the widget out of its parent panel; false when it had none. */
	UMG_API bool RemoveFromParent();
	/** The name shown for the widget in the editor's hierarchy. */
	UMG_API FString GetDisplayLabel() const;
	void SetDisplayLabel(const FString& InDisplayLabel) { DisplayLabel = InDisplayLabel; }

	bool GetIsEnabled() const { return bIsEnabled; }
	void SetIsEnabled(bool bInIsEnabled) { bIsEnabled = bInIsEnabled; }

private:
	FString DisplayLabel;
};
