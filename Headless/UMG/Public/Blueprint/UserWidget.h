#pragma once

#include "CoreMinimal.h"
#include "Components/Widget.h"
#include "UObject/ObjectPtr.h"

class UWidgetTree;

/** The parent class of Widget Blueprints: a widget made of a widget tree. */
class UUserWidget : public UWidget
{
	DECLARE_CLASS(UUserWidget, UWidget, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UUserWidget();

	TObjectPtr<UWidgetTree> WidgetTree;
};
