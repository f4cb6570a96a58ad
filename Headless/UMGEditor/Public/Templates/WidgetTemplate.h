#pragma once

#include "CoreMinimal.h"
#include "Templates/SharedPointer.h"

class UWidget;
class UWidgetTree;

/** An entry of the designer's palette: something that makes a widget in a tree. */
class FWidgetTemplate : public TSharedFromThis<FWidgetTemplate>
{
public:
	FWidgetTemplate() = default;
	virtual ~FWidgetTemplate() = default;

	/** The palette section the entry is listed in. */
	virtual FText GetCategory() const = 0;
	/** A new widget in Tree, or null when none can be made. */
	virtual UWidget* Create(UWidgetTree* Tree) = 0;

	/** The entry's name in the palette. */
	FText Name;
};
