#pragma once

#include "CoreMinimal.h"
#include "Components/TextWidgetTypes.h"
#include "Types/SlateEnums.h"
#include "UObject/ScriptDelegates.h"

/** Several lines of editable text in a box. */
class UMultiLineEditableTextBox : public UTextLayoutWidget
{
	DECLARE_CLASS(UMultiLineEditableTextBox, UTextLayoutWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	/** Text (const FText&) after each edit. */
	struct FOnMultiLineEditableTextBoxChangedEvent : FMulticastScriptDelegate {};
	/** Text (const FText&) and CommitMethod (ETextCommit::Type) when editing ends. */
	struct FOnMultiLineEditableTextBoxCommittedEvent : FMulticastScriptDelegate {};

	UMG_API UMultiLineEditableTextBox();

	FText Text;
	FText HintText;
	bool bIsReadOnly = false;
	bool AllowContextMenu = true;
	FOnMultiLineEditableTextBoxChangedEvent OnTextChanged;
	FOnMultiLineEditableTextBoxCommittedEvent OnTextCommitted;

	FText GetText() const { return Text; }
	void SetText(FText InText) { Text = InText; }
	void SetHintText(FText InHintText) { HintText = InHintText; }
	void SetIsReadOnly(bool bReadOnly) { bIsReadOnly = bReadOnly; }

	UMG_API virtual const FText GetPaletteCategory() override;
};
