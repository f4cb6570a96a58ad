#include "GameplayTagsK2Node_SwitchGameplayTag.h"

#include "BlueprintActionDatabaseRegistrar.h"
#include "BlueprintNodeSpawner.h"
#include "EdGraphSchema_K2.h"
#include "Kismet2/CompilerResultsLog.h"
#include "UObject/UnrealType.h"

namespace
{
	void ReflectCases(UStruct* Owner)
	{
		using ThisClass = UGameplayTagsK2Node_SwitchGameplayTag;
		FArrayProperty* Tags = UE_NATIVE_PROPERTY(FArrayProperty, PinTags, CPF_None);
		Tags->AddCppProperty(new FStructProperty(Tags, Tags->GetFName(), RF_Public | RF_MarkAsNative | RF_Transient, 0, CPF_None, FGameplayTag::StaticStruct()));
		FArrayProperty* Names = UE_NATIVE_PROPERTY(FArrayProperty, PinNames, CPF_None);
		Names->AddCppProperty(new FNameProperty(Names, Names->GetFName(), RF_Public | RF_MarkAsNative | RF_Transient));
	}
}

IMPLEMENT_CLASS(UGameplayTagsK2Node_SwitchGameplayTag, ReflectCases(Owner);)
IMPLEMENT_CLASS(UGameplayTagsK2Node_SwitchGameplayTagContainer)

UGameplayTagsK2Node_SwitchGameplayTag::UGameplayTagsK2Node_SwitchGameplayTag()
{
	// The comparison lives in the gameplay tag function library, which the catalogue does not carry; the hidden
	// function pin names it all the same.
	FunctionName = TEXT("NotEqual_TagTag");
}

FText UGameplayTagsK2Node_SwitchGameplayTag::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	return FText::FromString(TEXT("Switch on Gameplay Tag"));
}

FText UGameplayTagsK2Node_SwitchGameplayTag::GetTooltipText() const
{
	return FText::FromString(TEXT("Continues on the output whose tag equals the selected tag."));
}

FText UGameplayTagsK2Node_SwitchGameplayTag::GetMenuCategory() const
{
	return FText::FromString(TEXT("Utilities|Flow Control|Switch"));
}

void UGameplayTagsK2Node_SwitchGameplayTag::GetMenuActions(FBlueprintActionDatabaseRegistrar& ActionRegistrar) const
{
	// Filed under the node's class, so the entry goes when the class does; a registrar refreshing some other key
	// gets nothing, and no spawner is made for it.
	UClass* ActionKey = GetClass();
	if (ActionRegistrar.IsOpenForRegistration(ActionKey))
	{
		ActionRegistrar.AddBlueprintAction(ActionKey, UBlueprintNodeSpawner::Create(ActionKey));
	}
}

UScriptStruct* UGameplayTagsK2Node_SwitchGameplayTag::GetSelectionStruct() const
{
	return FGameplayTag::StaticStruct();
}

FEdGraphPinType UGameplayTagsK2Node_SwitchGameplayTag::GetPinType() const
{
	FEdGraphPinType PinType;
	PinType.PinCategory = UEdGraphSchema_K2::PC_Struct;
	PinType.PinSubCategoryObject = GetSelectionStruct();
	return PinType;
}

void UGameplayTagsK2Node_SwitchGameplayTag::CreateSelectionPin()
{
	CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Struct, GetSelectionStruct(), GetSelectionPinName());
}

void UGameplayTagsK2Node_SwitchGameplayTag::SyncPinNames()
{
	PinNames.SetNum(PinTags.Num());
	for (int32 Index = 0; Index < PinTags.Num(); ++Index)
	{
		if (PinTags[Index].IsValid())
		{
			PinNames[Index] = PinTags[Index].GetTagName();
		}
		else if (PinNames[Index].IsNone())
		{
			PinNames[Index] = FName(*FString::Printf(TEXT("Case_%d"), Index));
		}
	}
}

void UGameplayTagsK2Node_SwitchGameplayTag::CreateCasePins()
{
	SyncPinNames();
	for (const FName& PinName : PinNames)
	{
		CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Exec, PinName);
	}
}

FName UGameplayTagsK2Node_SwitchGameplayTag::GetPinNameGivenIndex(int32 Index) const
{
	return PinNames.IsValidIndex(Index) ? PinNames[Index] : NAME_None;
}

FName UGameplayTagsK2Node_SwitchGameplayTag::GetUniquePinName()
{
	for (int32 Index = 0;; ++Index)
	{
		const FName Candidate(*FString::Printf(TEXT("Case_%d"), Index));
		if (!FindPin(Candidate))
		{
			return Candidate;
		}
	}
}

void UGameplayTagsK2Node_SwitchGameplayTag::AddPinToSwitchNode()
{
	const FName PinName = GetUniquePinName();
	PinTags.Add(FGameplayTag());
	PinNames.Add(PinName);
	CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Exec, PinName);
}

bool UGameplayTagsK2Node_SwitchGameplayTag::AddTagCase(const FGameplayTag& Tag)
{
	if (!Tag.IsValid() || PinTags.Contains(Tag))
	{
		return false;
	}
	PinTags.Add(Tag);
	PinNames.Add(Tag.GetTagName());
	CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Exec, Tag.GetTagName());
	return true;
}

void UGameplayTagsK2Node_SwitchGameplayTag::RemovePin(UEdGraphPin* TargetPin)
{
	const int32 Index = PinNames.IndexOfByKey(TargetPin->PinName);
	if (Index != INDEX_NONE)
	{
		PinNames.RemoveAt(Index);
		if (PinTags.IsValidIndex(Index))
		{
			PinTags.RemoveAt(Index);
		}
	}
}

void UGameplayTagsK2Node_SwitchGameplayTag::ReconstructNode()
{
	// A case whose tag changed keeps its links: its output is renamed to the new tag before the pins are rebuilt.
	const TArray<FName> OldNames = PinNames;
	SyncPinNames();
	for (int32 Index = 0; Index < OldNames.Num() && Index < PinNames.Num(); ++Index)
	{
		if (OldNames[Index] != PinNames[Index])
		{
			if (UEdGraphPin* Pin = FindPin(OldNames[Index], EGPD_Output))
			{
				Pin->PinName = PinNames[Index];
			}
		}
	}
	Super::ReconstructNode();
}

void UGameplayTagsK2Node_SwitchGameplayTag::ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const
{
	Super::ValidateNodeDuringCompilation(MessageLog);
	for (int32 Index = 0; Index < PinTags.Num(); ++Index)
	{
		if (!PinTags[Index].IsValid())
		{
			MessageLog.Warning(TEXT("@@ has a case with no gameplay tag; it is never taken."), this);
			return;
		}
	}
}

UGameplayTagsK2Node_SwitchGameplayTagContainer::UGameplayTagsK2Node_SwitchGameplayTagContainer()
{
	FunctionName = TEXT("HasTag");
}

FText UGameplayTagsK2Node_SwitchGameplayTagContainer::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	return FText::FromString(TEXT("Switch on Gameplay Tag Container"));
}

FText UGameplayTagsK2Node_SwitchGameplayTagContainer::GetTooltipText() const
{
	return FText::FromString(TEXT("Continues on the first output whose tag the selected container has."));
}

UScriptStruct* UGameplayTagsK2Node_SwitchGameplayTagContainer::GetSelectionStruct() const
{
	return FGameplayTagContainer::StaticStruct();
}

FEdGraphPinType UGameplayTagsK2Node_SwitchGameplayTagContainer::GetPinType() const
{
	return Super::GetPinType();
}
