#pragma once

#include "CoreMinimal.h"
#include "Components/Visual.h"
#include "UObject/ObjectPtr.h"

class UPanelWidget;
class UWidget;

/** Where a child sits in its panel; each panel kind has its own slot kind with the layout it offers. */
class UPanelSlot : public UVisual
{
	DECLARE_CLASS(UPanelSlot, UVisual, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UPanelSlot();

	TObjectPtr<UPanelWidget> Parent;
	TObjectPtr<UWidget> Content;
};
