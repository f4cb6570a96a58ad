#pragma once

#include "CoreMinimal.h"
#include "Components/Widget.h"
#include "Types/SlateEnums.h"
#include "UObject/ScriptDelegates.h"

/** A field of editable text without a box around it. */
class UEditableText : public UWidget
{
	DECLARE_CLASS(UEditableText, UWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	/** Text (const FText&) after each edit. */
	struct FOnEditableTextChangedEvent : FMulticastScriptDelegate {};
	/** Text (const FText&) and CommitMethod (ETextCommit::Type) when editing ends. */
	struct FOnEditableTextCommittedEvent : FMulticastScriptDelegate {};

	UMG_API UEditableText();

	FText Text;
	FText HintText;
	bool IsReadOnly = false;
	bool IsPassword = false;
	float MinimumDesiredWidth = 0.0f;
	bool IsCaretMovedWhenGainFocus = true;
	bool SelectAllTextWhenFocused = false;
	bool RevertTextOnEscape = false;
	bool ClearKeyboardFocusOnCommit = true;
	bool SelectAllTextOnCommit = false;
	FOnEditableTextChangedEvent OnTextChanged;
	FOnEditableTextCommittedEvent OnTextCommitted;

	FText GetText() const { return Text; }
	void SetText(FText InText) { Text = InText; }
	void SetHintText(FText InHintText) { HintText = InHintText; }
	void SetIsReadOnly(bool InbIsReadyOnly) { IsReadOnly = InbIsReadyOnly; }
	void SetIsPassword(bool InbIsPassword) { IsPassword = InbIsPassword; }

	UMG_API virtual const FText GetPaletteCategory() override;
};
