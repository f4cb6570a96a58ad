#include "WidgetBlueprint.h"

#include "Animation/WidgetAnimation.h"
#include "Blueprint/UserWidget.h"
#include "Blueprint/WidgetTree.h"
#include "Components/Widget.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "KismetCompilerModule.h"
#include "UObject/UnrealType.h"
#include "UObject/UObjectGlobals.h"
#include "WidgetBlueprintCompiler.h"

IMPLEMENT_CLASS(UWidgetBlueprint,
	UE_NATIVE_PROPERTY(FObjectProperty, WidgetTree, CPF_TObjectPtr | CPF_InstancedReference, UWidgetTree::StaticClass());
	{
		FArrayProperty* AnimationArray = UE_NATIVE_PROPERTY(FArrayProperty, Animations, CPF_None);
		AnimationArray->AddCppProperty(new FObjectProperty(AnimationArray, AnimationArray->GetFName(), RF_Public | RF_MarkAsNative | RF_Transient, 0,
			CPF_TObjectPtr | CPF_InstancedReference, UWidgetAnimation::StaticClass()));
	}
)

UWidgetBlueprint::UWidgetBlueprint() = default;

void UWidgetBlueprint::PostInitProperties()
{
	UBlueprint::PostInitProperties();
	UE::UMGEditor::RegisterWidgetBlueprintCompiler();
	// A package being read fills the tree it finds here rather than making a second one.
	if (!HasAnyFlags(RF_ClassDefaultObject | RF_ArchetypeObject) && !WidgetTree)
	{
		WidgetTree = NewObject<UWidgetTree>(this, TEXT("WidgetTree"), RF_Transactional);
	}
}

TArray<UWidget*> UWidgetBlueprint::GetAllSourceWidgets() const
{
	TArray<UWidget*> Widgets;
	if (WidgetTree)
	{
		WidgetTree->GetAllWidgets(Widgets);
	}
	return Widgets;
}

bool UWidgetBlueprint::IsWidgetFreeFromCircularReferences(UUserWidget* UserWidget) const
{
	if (!UserWidget)
	{
		return true;
	}
	// Walk the Widget Blueprints that the candidate's class contains; meeting this one again is a cycle.
	TArray<const UWidgetBlueprint*> Pending;
	TArray<const UWidgetBlueprint*> Seen;
	if (const UWidgetBlueprint* Start = Cast<UWidgetBlueprint>(UBlueprint::GetBlueprintFromClass(UserWidget->GetClass())))
	{
		Pending.Add(Start);
	}
	while (Pending.Num() > 0)
	{
		const UWidgetBlueprint* Current = Pending.Pop();
		if (Current == this)
		{
			return false;
		}
		if (Seen.Contains(Current))
		{
			continue;
		}
		Seen.Add(Current);
		for (UWidget* Widget : Current->GetAllSourceWidgets())
		{
			if (const UWidgetBlueprint* Nested = Cast<UWidgetBlueprint>(UBlueprint::GetBlueprintFromClass(Widget->GetClass())))
			{
				Pending.Add(Nested);
			}
		}
	}
	return true;
}

void UWidgetBlueprint::OnVariableAdded(const FName& VariableName)
{
	for (UWidget* Widget : GetAllSourceWidgets())
	{
		if (Widget->GetFName() == VariableName)
		{
			Widget->bIsVariable = false;
		}
	}
}

namespace
{
	/** Tells the compiler that user widgets make Widget Blueprints. */
	class FWidgetBlueprintKind : public IBlueprintCompiler
	{
	public:
		FWidgetBlueprintKind()
		{
			UE::Kismet::GetRegisteredBlueprintCompilers().Add(this);
		}

		virtual bool CanCompile(const UBlueprint* Blueprint) override
		{
			return Cast<UWidgetBlueprint>(Blueprint) != nullptr;
		}

		virtual bool GetBlueprintTypesForClass(UClass* ParentClass, UClass*& OutBlueprintClass, UClass*& OutBlueprintGeneratedClass) const override
		{
			if (!ParentClass || !ParentClass->IsChildOf(UUserWidget::StaticClass()))
			{
				return false;
			}
			OutBlueprintClass = UWidgetBlueprint::StaticClass();
			OutBlueprintGeneratedClass = UBlueprintGeneratedClass::StaticClass();
			return true;
		}
	};

	FWidgetBlueprintKind WidgetBlueprintKind;
}
