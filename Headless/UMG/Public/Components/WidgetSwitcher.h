#pragma once

#include "CoreMinimal.h"
#include "Components/PanelWidget.h"
#include "Components/WidgetSwitcherSlot.h"

/** A panel showing one of its children at a time. */
class UWidgetSwitcher : public UPanelWidget
{
	DECLARE_CLASS(UWidgetSwitcher, UPanelWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UWidgetSwitcher();

	/** The child shown; clamped to the children there are. */
	int32 ActiveWidgetIndex = 0;

	UMG_API int32 GetNumWidgets() const;
	UMG_API int32 GetActiveWidgetIndex() const;
	/** Clamped to the children there are. */
	UMG_API void SetActiveWidgetIndex(int32 Index);
	/** Shows Widget when it is a child; otherwise nothing changes. */
	UMG_API void SetActiveWidget(UWidget* Widget);
	UMG_API UWidget* GetActiveWidget() const;
	UMG_API UWidget* GetWidgetAtIndex(int32 Index) const;

	UMG_API virtual UClass* GetSlotClass() const override;
	UMG_API virtual const FText GetPaletteCategory() override;
};
