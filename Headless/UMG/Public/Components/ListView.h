#pragma once

#include "CoreMinimal.h"
#include "Components/ListViewBase.h"
#include "Types/SlateEnums.h"
#include "UObject/ScriptDelegates.h"

/** A virtualised list of items (any objects), each shown by an entry widget. */
class UListView : public UListViewBase
{
	DECLARE_CLASS(UListView, UListViewBase, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	/** Item (UObject*). */
	struct FSimpleListItemEventDynamic : FMulticastScriptDelegate {};
	/** Item (UObject*) and bIsSelected (bool). */
	struct FOnItemSelectionChangedDynamic : FMulticastScriptDelegate {};
	/** Item (UObject*) and bIsHovered (bool). */
	struct FOnItemIsHoveredChangedDynamic : FMulticastScriptDelegate {};

	UMG_API UListView();

	TEnumAsByte<EOrientation> Orientation = Orient_Vertical;
	float EntrySpacing = 0.0f;
	bool bClearSelectionOnClick = false;
	/** The items shown, in order. */
	TArray<TObjectPtr<UObject>> ListItems;
	FSimpleListItemEventDynamic BP_OnItemClicked;
	FSimpleListItemEventDynamic BP_OnItemDoubleClicked;
	FOnItemIsHoveredChangedDynamic BP_OnItemIsHoveredChanged;
	FOnItemSelectionChangedDynamic BP_OnItemSelectionChanged;

	/** Adds an item once; null is refused. */
	UMG_API void AddItem(UObject* Item);
	UMG_API void RemoveItem(UObject* Item);
	UMG_API UObject* GetItemAt(int32 Index) const;
	int32 GetNumItems() const { return ListItems.Num(); }
	UMG_API int32 GetIndexForItem(const UObject* Item) const;
	UMG_API void SetListItems(const TArray<UObject*>& InListItems);
	void ClearListItems() { ListItems.Reset(); }
	const TArray<TObjectPtr<UObject>>& GetListItems() const { return ListItems; }

	UMG_API virtual const FText GetPaletteCategory() override;
};
