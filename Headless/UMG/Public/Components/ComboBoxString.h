#pragma once

#include "CoreMinimal.h"
#include "Components/Widget.h"
#include "Types/SlateEnums.h"
#include "UObject/ScriptDelegates.h"

/** A drop-down list of strings, one of them selected. */
class UComboBoxString : public UWidget
{
	DECLARE_CLASS(UComboBoxString, UWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	/** SelectedItem (FString) and SelectionType (ESelectInfo::Type) when the selection changes. */
	struct FOnSelectionChangedEvent : FMulticastScriptDelegate {};
	/** No parameters: the list is about to open. */
	struct FOnOpeningEvent : FMulticastScriptDelegate {};

	UMG_API UComboBoxString();

	/** The options the designer gave; the list starts with them. */
	TArray<FString> DefaultOptions;
	/** The option selected at start. */
	FString SelectedOption;
	float MaxListHeight = 450.0f;
	bool HasDownArrow = true;
	bool EnableGamepadNavigationMode = true;
	bool bIsFocusable = true;
	FOnSelectionChangedEvent OnSelectionChanged;
	FOnOpeningEvent OnOpening;

	/** The options of the list as it is now. */
	UMG_API void AddOption(const FString& Option);
	/** False when there was no such option; removing the selected option clears the selection. */
	UMG_API bool RemoveOption(const FString& Option);
	UMG_API int32 FindOptionIndex(const FString& Option) const;
	/** The option at Index, or an empty string. */
	UMG_API FString GetOptionAtIndex(int32 Index) const;
	UMG_API void ClearOptions();
	UMG_API void ClearSelection();
	int32 GetOptionCount() const { return Options.Num(); }
	/** Selects Option when the list has it; otherwise nothing changes. */
	UMG_API void SetSelectedOption(FString Option);
	UMG_API void SetSelectedIndex(const int32 Index);
	FString GetSelectedOption() const { return CurrentOption; }
	UMG_API int32 GetSelectedIndex() const;

	UMG_API virtual void PostInitProperties() override;
	UMG_API virtual void PostLoad() override;
	UMG_API virtual const FText GetPaletteCategory() override;

private:
	/** Rebuilds the list from the designer's options and selection. */
	void ResetOptionsFromDefaults();

	TArray<FString> Options;
	FString CurrentOption;
};
