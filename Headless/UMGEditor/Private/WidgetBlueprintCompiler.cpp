#include "WidgetBlueprintCompiler.h"

#include "Animation/WidgetAnimation.h"
#include "Blueprint/WidgetTree.h"
#include "Components/Widget.h"
#include "EdGraphSchema_K2.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "Kismet2/CompilerResultsLog.h"
#include "Templates/Casts.h"
#include "UObject/UnrealType.h"
#include "WidgetBlueprint.h"

FWidgetBlueprintCompilerContext::FWidgetBlueprintCompilerContext(UWidgetBlueprint* SourceSketch, FCompilerResultsLog& InMessageLog, const FKismetCompilerOptions& InCompilerOptions)
	: FKismetCompilerContext(SourceSketch, InMessageLog, InCompilerOptions)
{
}

UWidgetBlueprint* FWidgetBlueprintCompilerContext::WidgetBlueprint() const
{
	return Cast<UWidgetBlueprint>(Blueprint);
}

void FWidgetBlueprintCompilerContext::CreateClassVariablesFromBlueprint(TArray<FProperty*>& OutProperties)
{
	FKismetCompilerContext::CreateClassVariablesFromBlueprint(OutProperties);
	UWidgetBlueprint* WidgetBP = WidgetBlueprint();
	if (!WidgetBP)
	{
		return;
	}

	TSet<FName> Taken;
	for (const FProperty* Property : OutProperties)
	{
		Taken.Add(Property->GetFName());
	}

	for (UWidget* Widget : WidgetBP->GetAllSourceWidgets())
	{
		// Only the widgets marked as variables are members; the others stay the tree's business.
		if (!Widget || !Widget->bIsVariable)
		{
			continue;
		}
		if (Taken.Contains(Widget->GetFName()))
		{
			ReportNameClash(TEXT("widget"), Widget);
			continue;
		}
		FEdGraphPinType Type;
		Type.PinCategory = UEdGraphSchema_K2::PC_Object;
		Type.PinSubCategoryObject = Widget->GetClass();
		if (FProperty* Property = CreateVariable(Widget->GetFName(), Type))
		{
			Property->SetPropertyFlags(CPF_BlueprintVisible | CPF_BlueprintReadOnly | CPF_DisableEditOnInstance | CPF_InstancedReference | CPF_RepSkip);
			Property->SetMetaData(TEXT("DisplayName"), *Widget->GetDisplayLabel());
			Property->SetMetaData(TEXT("Category"), *WidgetBP->GetName());
			Taken.Add(Widget->GetFName());
			OutProperties.Add(Property);
		}
	}

	for (UWidgetAnimation* Animation : WidgetBP->Animations)
	{
		if (!Animation)
		{
			continue;
		}
		if (Taken.Contains(Animation->GetFName()))
		{
			ReportNameClash(TEXT("animation"), Animation);
			continue;
		}
		FEdGraphPinType Type;
		Type.PinCategory = UEdGraphSchema_K2::PC_Object;
		Type.PinSubCategoryObject = UWidgetAnimation::StaticClass();
		if (FProperty* Property = CreateVariable(Animation->GetFName(), Type))
		{
			Property->SetPropertyFlags(CPF_Transient | CPF_BlueprintVisible | CPF_BlueprintReadOnly | CPF_RepSkip);
			Property->SetMetaData(TEXT("Category"), TEXT("Animations"));
			Taken.Add(Animation->GetFName());
			OutProperties.Add(Property);
		}
	}
}

void FWidgetBlueprintCompilerContext::ReportNameClash(const TCHAR* Kind, const UObject* Member)
{
	if (ReportedClashes.Contains(Member->GetFName()))
	{
		return;
	}
	ReportedClashes.Add(Member->GetFName());
	MessageLog.Error(*FString::Printf(TEXT("The %s %s has the name of another member of @@; rename one of them"), Kind, *Member->GetName()), Blueprint);
}

namespace UE::UMGEditor
{
	void RegisterWidgetBlueprintCompiler()
	{
		static bool bRegistered = false;
		if (bRegistered)
		{
			return;
		}
		bRegistered = true;
		FKismetCompilerContext::RegisterCompilerForBP(UWidgetBlueprint::StaticClass(),
			[](UBlueprint* Blueprint, FCompilerResultsLog& Log, const FKismetCompilerOptions& Options) -> TSharedPtr<FKismetCompilerContext>
			{
				UWidgetBlueprint* WidgetBP = Cast<UWidgetBlueprint>(Blueprint);
				if (!WidgetBP)
				{
					return nullptr;
				}
				return MakeShared<FWidgetBlueprintCompilerContext>(WidgetBP, Log, Options);
			});
	}
}
