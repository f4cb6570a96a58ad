#pragma once

#include "CoreMinimal.h"
#include "Containers/Array.h"
#include "Templates/Function.h"
#include "Templates/Casts.h"
#include "Templates/SubclassOf.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"
#include "UObject/ObjectPtr.h"

class UWidget;

/** The widgets of a user widget: a root and, through panels, everything under it. */
class UWidgetTree : public UObject
{
	DECLARE_CLASS(UWidgetTree, UObject, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UWidgetTree();

	TObjectPtr<UWidget> RootWidget;

	/** The widget of that name in the tree, or null. */
	UMG_API UWidget* FindWidget(const FName& Name) const;
	template <typename WidgetT>
	WidgetT* FindWidget(const FName& Name) const
	{
		return Cast<WidgetT>(FindWidget(Name));
	}

	/** Every widget reachable from the root, parents before children. */
	UMG_API void GetAllWidgets(TArray<UWidget*>& Widgets) const;
	UMG_API void ForEachWidget(TFunctionRef<void(UWidget*)> Predicate) const;
	/** Takes the widget out of the tree (from its panel, or as the root); false when it is not in it. */
	UMG_API bool RemoveWidget(UWidget* Widget);
	/** The parent panel of a widget and its index there; null for the root or a loose widget. */
	UMG_API static class UPanelWidget* FindWidgetParent(const UWidget* Widget, int32& OutChildIndex);

	/** A new widget of the class, owned by this tree; null when the class is no widget or is abstract. */
	UMG_API UWidget* ConstructWidget(TSubclassOf<UWidget> WidgetClass, FName WidgetName = NAME_None);
	template <typename WidgetT>
	WidgetT* ConstructWidget(TSubclassOf<UWidget> WidgetClass = WidgetT::StaticClass(), FName WidgetName = NAME_None)
	{
		return Cast<WidgetT>(ConstructWidget(WidgetClass, WidgetName));
	}
};
