#pragma once

#include "CoreMinimal.h"
#include "Engine/Blueprint.h"
#include "UObject/ObjectPtr.h"

class UUserWidget;
class UWidget;
class UWidgetAnimation;
class UWidgetTree;

/** A Blueprint of a user widget: its graphs, and the widget tree the designer edits. */
class UWidgetBlueprint : public UBlueprint
{
	DECLARE_CLASS(UWidgetBlueprint, UBlueprint, CLASS_None, CASTCLASS_None, TEXT("/Script/UMGEditor"), UMGEDITOR_API)

public:
	UMGEDITOR_API UWidgetBlueprint();

	/** The designer's widgets. Every Widget Blueprint has one from the start. */
	TObjectPtr<UWidgetTree> WidgetTree;
	/** The Blueprint's animations, each a member of the compiled class named after it. */
	TArray<TObjectPtr<UWidgetAnimation>> Animations;

	UMGEDITOR_API virtual void PostInitProperties() override;

	/** Every widget of the tree. */
	UMGEDITOR_API TArray<UWidget*> GetAllSourceWidgets() const;
	const TArray<TObjectPtr<UWidgetAnimation>>& GetAnimations() const { return Animations; }

	/**
	 * False when placing an instance of UserWidget's class in this Blueprint's tree would nest the
	 * Blueprint inside itself, directly or through other user widgets.
	 */
	UMGEDITOR_API bool IsWidgetFreeFromCircularReferences(UUserWidget* UserWidget) const;

	/** Called when a member variable is added: a widget of that name stops being exposed as one. */
	UMGEDITOR_API void OnVariableAdded(const FName& VariableName);

	UMGEDITOR_API virtual bool SupportedByDefaultBlueprintFactory() const override { return false; }
};
