#pragma once

#include "CoreMinimal.h"
#include "Components/PanelWidget.h"

/** A panel of a single child: borders, buttons, check boxes, size and scale boxes. */
class UContentWidget : public UPanelWidget
{
	DECLARE_CLASS(UContentWidget, UPanelWidget, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UContentWidget();

	UMG_API UPanelSlot* GetContentSlot() const;
	UMG_API UWidget* GetContent() const;
	/** Replaces the child with Content (null only removes it); the new slot, or null. */
	UMG_API UPanelSlot* SetContent(UWidget* Content);
};
