#pragma once

#include "CoreMinimal.h"
#include "Components/Widget.h"
#include "Templates/SubclassOf.h"

class UUserWidget;

/** The base of list widgets: the user widget class each entry is made of. */
class UListViewBase : public UWidget
{
	DECLARE_CLASS(UListViewBase, UWidget, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UListViewBase();

	TSubclassOf<UUserWidget> EntryWidgetClass;

	TSubclassOf<UUserWidget> GetEntryWidgetClass() const { return EntryWidgetClass; }
};
