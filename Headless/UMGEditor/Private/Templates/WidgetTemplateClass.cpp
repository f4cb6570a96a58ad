#include "Templates/WidgetTemplateClass.h"

#include "Blueprint/WidgetTree.h"
#include "Components/Widget.h"

FWidgetTemplateClass::FWidgetTemplateClass(TSubclassOf<UWidget> InWidgetClass)
	: WidgetClass(InWidgetClass.Get())
{
	if (UClass* Class = WidgetClass.Get())
	{
		Name = Class->GetDisplayNameText();
	}
}

FText FWidgetTemplateClass::GetCategory() const
{
	UClass* Class = WidgetClass.Get();
	if (!Class)
	{
		return FText::FromString(TEXT("Uncategorized"));
	}
	// The category is what the class says of itself, so a widget class decides where it is listed.
	return Class->GetDefaultObject<UWidget>()->GetPaletteCategory();
}

UWidget* FWidgetTemplateClass::Create(UWidgetTree* Tree)
{
	return CreateNamed(Tree, NAME_None);
}

UWidget* FWidgetTemplateClass::CreateNamed(UWidgetTree* Tree, FName NameOverride)
{
	UClass* Class = WidgetClass.Get();
	if (!Tree || !Class)
	{
		return nullptr;
	}
	UWidget* Widget = Tree->ConstructWidget<UWidget>(Class, NameOverride);
	if (Widget)
	{
		Widget->OnCreationFromPalette();
	}
	return Widget;
}
