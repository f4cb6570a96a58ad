#pragma once

#include "CoreMinimal.h"
#include "Components/PanelSlot.h"
#include "Components/Widget.h"
#include "Containers/Array.h"

/** A widget that holds other widgets, each through a slot of the panel's slot kind. */
class UPanelWidget : public UWidget
{
	DECLARE_CLASS(UPanelWidget, UWidget, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UPanelWidget();

	/** One slot per child, in order. */
	TArray<TObjectPtr<UPanelSlot>> Slots;

	UMG_API int32 GetChildrenCount() const;
	UMG_API UWidget* GetChildAt(int32 Index) const;
	UMG_API TArray<UWidget*> GetAllChildren() const;
	UMG_API int32 GetChildIndex(const UWidget* Content) const;
	UMG_API bool HasChild(UWidget* Content) const;
	bool HasAnyChildren() const { return GetChildrenCount() > 0; }
	const TArray<TObjectPtr<UPanelSlot>>& GetSlots() const { return Slots; }

	/** Adds a child at the end (taking it from its old parent); null when the panel is full or Content is null. */
	UMG_API UPanelSlot* AddChild(UWidget* Content);
	/** Inserts a child at Index (clamped to the end). */
	UMG_API UPanelSlot* InsertChildAt(int32 Index, UWidget* Content);
	/** Moves a child to Index (clamped), keeping its slot and the slot's layout. */
	UMG_API void ShiftChild(int32 Index, UWidget* Child);
	/** Puts Content in the slot at Index in place of its child, keeping the slot's layout; false for a bad index. */
	UMG_API bool ReplaceChildAt(int32 Index, UWidget* Content);
	UMG_API bool RemoveChildAt(int32 Index);
	UMG_API bool RemoveChild(UWidget* Content);
	UMG_API void ClearChildren();

	/** Whether the panel takes more than one child (a border or button holds one). */
	UMG_API bool CanHaveMultipleChildren() const;
	UMG_API bool CanAddMoreChildren() const;

	/** The slot kind of this panel: "<Panel>Slot" when the engine has one, else the generic slot. */
	UMG_API virtual UClass* GetSlotClass() const;

protected:
	/** A new slot is in place and holds its content. */
	virtual void OnSlotAdded(UPanelSlot* InSlot) {}
	/** A slot has left the panel. */
	virtual void OnSlotRemoved(UPanelSlot* InSlot) {}

	bool bCanHaveMultipleChildren = true;
};
