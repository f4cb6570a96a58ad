#include "Blueprint/WidgetTree.h"

#include "Blueprint/UserWidget.h"
#include "Components/PanelWidget.h"
#include "Templates/Casts.h"
#include "UObject/UnrealType.h"
#include "UObject/UObjectGlobals.h"

IMPLEMENT_CLASS(UWidgetTree,
	UE_NATIVE_PROPERTY(FObjectProperty, RootWidget, CPF_TObjectPtr | CPF_InstancedReference, UWidget::StaticClass());
)

IMPLEMENT_CLASS(UUserWidget,
	UE_NATIVE_PROPERTY(FObjectProperty, WidgetTree, CPF_TObjectPtr | CPF_InstancedReference | CPF_Transient, UWidgetTree::StaticClass());
)

UWidgetTree::UWidgetTree() = default;
UUserWidget::UUserWidget() = default;

void UWidgetTree::ForEachWidget(TFunctionRef<void(UWidget*)> Predicate) const
{
	TArray<UWidget*> Widgets;
	GetAllWidgets(Widgets);
	for (UWidget* Widget : Widgets)
	{
		Predicate(Widget);
	}
}

void UWidgetTree::GetAllWidgets(TArray<UWidget*>& Widgets) const
{
	if (!RootWidget)
	{
		return;
	}
	// Depth first, parents before children, children in slot order.
	TArray<UWidget*> Stack;
	Stack.Add(RootWidget);
	while (Stack.Num() > 0)
	{
		UWidget* Widget = Stack.Pop();
		if (!Widget || Widgets.Contains(Widget))
		{
			continue;
		}
		Widgets.Add(Widget);
		if (const UPanelWidget* Panel = Cast<UPanelWidget>(Widget))
		{
			for (int32 Index = Panel->GetChildrenCount() - 1; Index >= 0; --Index)
			{
				Stack.Add(Panel->GetChildAt(Index));
			}
		}
	}
}

UWidget* UWidgetTree::FindWidget(const FName& Name) const
{
	TArray<UWidget*> Widgets;
	GetAllWidgets(Widgets);
	for (UWidget* Widget : Widgets)
	{
		if (Widget->GetFName() == Name)
		{
			return Widget;
		}
	}
	return nullptr;
}

UPanelWidget* UWidgetTree::FindWidgetParent(const UWidget* Widget, int32& OutChildIndex)
{
	OutChildIndex = INDEX_NONE;
	UPanelWidget* Parent = Widget ? Widget->GetParent() : nullptr;
	if (Parent)
	{
		OutChildIndex = Parent->GetChildIndex(Widget);
	}
	return Parent;
}

bool UWidgetTree::RemoveWidget(UWidget* Widget)
{
	if (!Widget)
	{
		return false;
	}
	if (Widget == RootWidget)
	{
		RootWidget = nullptr;
		return true;
	}
	TArray<UWidget*> Widgets;
	GetAllWidgets(Widgets);
	if (!Widgets.Contains(Widget))
	{
		return false;
	}
	return Widget->RemoveFromParent();
}

UWidget* UWidgetTree::ConstructWidget(TSubclassOf<UWidget> WidgetClass, FName WidgetName)
{
	UClass* Class = WidgetClass.Get();
	if (!Class || !Class->IsChildOf(UWidget::StaticClass()) || Class->HasAnyClassFlags(CLASS_Abstract))
	{
		return nullptr;
	}
	if (WidgetName != NAME_None && StaticFindObject(nullptr, this, *WidgetName.ToString()))
	{
		return nullptr;
	}
	return NewObject<UWidget>(this, Class, WidgetName, RF_Transactional);
}
