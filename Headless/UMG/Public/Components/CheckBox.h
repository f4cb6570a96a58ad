#pragma once

#include "CoreMinimal.h"
#include "Components/ContentWidget.h"

/**
 * A toggle that may hold a child (its label). Its checked state, style and OnCheckStateChanged event are the
 * engine's reflected members, which the catalogue gives the class.
 */
class UCheckBox : public UContentWidget
{
	DECLARE_CLASS(UCheckBox, UContentWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UCheckBox();

	UMG_API virtual const FText GetPaletteCategory() override;
};
