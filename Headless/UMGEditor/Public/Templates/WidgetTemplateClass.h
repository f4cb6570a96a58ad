#pragma once

#include "CoreMinimal.h"
#include "Templates/SubclassOf.h"
#include "Templates/WidgetTemplate.h"
#include "UObject/WeakObjectPtr.h"

class UWidget;

/** The palette entry of a native widget class: makes a widget of that class. */
class FWidgetTemplateClass : public FWidgetTemplate
{
public:
	UMGEDITOR_API explicit FWidgetTemplateClass(TSubclassOf<UWidget> InWidgetClass);

	/** The class's own palette category; "Uncategorized" once the class is gone. */
	UMGEDITOR_API virtual FText GetCategory() const override;
	/** A widget named after its class ("Button_0", "Button_1"...); null when the class is gone or abstract. */
	UMGEDITOR_API virtual UWidget* Create(UWidgetTree* Tree) override;

	UClass* GetWidgetClass() const { return WidgetClass.Get(); }

protected:
	UMGEDITOR_API UWidget* CreateNamed(UWidgetTree* Tree, FName NameOverride);

	TWeakObjectPtr<UClass> WidgetClass;
};
