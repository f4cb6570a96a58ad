#pragma once

#include "CoreMinimal.h"
#include "Components/Widget.h"

/**
 * A field of editable text in a box. Its text, hint, style and events (OnTextChanged, OnTextCommitted) are the
 * engine's reflected members, which the catalogue gives the class.
 */
class UEditableTextBox : public UWidget
{
	DECLARE_CLASS(UEditableTextBox, UWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UEditableTextBox();

	UMG_API virtual const FText GetPaletteCategory() override;
};
