#pragma once

#include "CoreMinimal.h"
#include "GameplayTagContainer.h"
#include "K2Node_Switch.h"

/** "Switch on Gameplay Tag": one exec output per tag of PinTags, taken when the selection equals that tag. */
class UGameplayTagsK2Node_SwitchGameplayTag : public UK2Node_Switch
{
	DECLARE_CLASS(UGameplayTagsK2Node_SwitchGameplayTag, UK2Node_Switch, CLASS_None, CASTCLASS_None, TEXT("/Script/GameplayTagsEditor"), GAMEPLAYTAGSEDITOR_API)

public:
	GAMEPLAYTAGSEDITOR_API UGameplayTagsK2Node_SwitchGameplayTag();

	/** The tag of each case, in output order. */
	TArray<FGameplayTag> PinTags;
	/** The name of each case output: the tag's name, or "Case_N" while the case has no tag. */
	TArray<FName> PinNames;

	GAMEPLAYTAGSEDITOR_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	GAMEPLAYTAGSEDITOR_API virtual FText GetTooltipText() const override;
	GAMEPLAYTAGSEDITOR_API virtual FText GetMenuCategory() const override;
	/** One entry per switch class, filed under the class; the container switch inherits it. */
	GAMEPLAYTAGSEDITOR_API virtual void GetMenuActions(FBlueprintActionDatabaseRegistrar& ActionRegistrar) const override;
	GAMEPLAYTAGSEDITOR_API virtual void AddPinToSwitchNode() override;
	GAMEPLAYTAGSEDITOR_API virtual FEdGraphPinType GetPinType() const override;
	GAMEPLAYTAGSEDITOR_API virtual FName GetPinNameGivenIndex(int32 Index) const override;
	GAMEPLAYTAGSEDITOR_API virtual void ReconstructNode() override;
	GAMEPLAYTAGSEDITOR_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;

	/** Adds a case for Tag; false for an invalid tag or one that already has a case. */
	GAMEPLAYTAGSEDITOR_API bool AddTagCase(const FGameplayTag& Tag);

protected:
	GAMEPLAYTAGSEDITOR_API virtual void CreateSelectionPin() override;
	GAMEPLAYTAGSEDITOR_API virtual void CreateCasePins() override;
	GAMEPLAYTAGSEDITOR_API virtual FName GetUniquePinName() override;
	GAMEPLAYTAGSEDITOR_API virtual void RemovePin(UEdGraphPin* TargetPin) override;

	/** Names each case after its tag; a case without a tag keeps its "Case_N" name. */
	void SyncPinNames();
	virtual UScriptStruct* GetSelectionStruct() const;
};

/** "Switch on Gameplay Tag Container": takes the first case whose tag the selected container has. */
class UGameplayTagsK2Node_SwitchGameplayTagContainer : public UGameplayTagsK2Node_SwitchGameplayTag
{
	DECLARE_CLASS(UGameplayTagsK2Node_SwitchGameplayTagContainer, UGameplayTagsK2Node_SwitchGameplayTag, CLASS_None, CASTCLASS_None, TEXT("/Script/GameplayTagsEditor"), GAMEPLAYTAGSEDITOR_API)

public:
	GAMEPLAYTAGSEDITOR_API UGameplayTagsK2Node_SwitchGameplayTagContainer();

	GAMEPLAYTAGSEDITOR_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	GAMEPLAYTAGSEDITOR_API virtual FText GetTooltipText() const override;
	GAMEPLAYTAGSEDITOR_API virtual FEdGraphPinType GetPinType() const override;

protected:
	virtual UScriptStruct* GetSelectionStruct() const override;
};
