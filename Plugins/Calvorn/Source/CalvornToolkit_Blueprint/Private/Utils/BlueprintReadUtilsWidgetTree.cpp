#include "BlueprintReadUtils.h"
#include "BlueprintReadUtilsPrivate.h"

#include "AssetOperationBase.h"
#include "Blueprint/WidgetTree.h"
#include "Components/PanelSlot.h"
#include "Components/PanelWidget.h"
#include "Components/Widget.h"
#include "ToolInfo.h"
#include "ToolResult.h"
#include "UObject/UnrealType.h"
#include "UObject/FieldIterator.h"
#include "WidgetBlueprint.h"

using namespace UE::CalvornBlueprint::ReadPrivate;

namespace
{
	/** Each reflected property of the object, as the editor writes it in text, keyed by its name. */
	TSharedPtr<FJsonObject> SerializeReflectedProperties(const UObject* Object)
	{
		TSharedPtr<FJsonObject> Properties = MakeShared<FJsonObject>();
		if (!Object)
		{
			return Properties;
		}
		for (TFieldIterator<FProperty> It(Object->GetClass()); It; ++It)
		{
			FString Value;
			if (FAssetOperationBase::GetPropertyValueAsString(Object, *It, Value))
			{
				Properties->SetStringField(It->GetName(), MoveTemp(Value));
			}
		}
		return Properties;
	}

	/** The widget names a widget tree read asks about: one string, or the strings of an array. */
	TArray<FString> GetRequestedWidgetNames(const TSharedPtr<FJsonObject>& Options)
	{
		TArray<FString> Names;
		const TSharedPtr<FJsonValue> Field = Options->TryGetField(Calvorn::ToolInfo::FieldName_WidgetName);
		if (!Field.IsValid())
		{
			return Names;
		}
		if (Field->Type == EJson::String)
		{
			Names.Add(Field->AsString());
		}
		else if (Field->Type == EJson::Array)
		{
			for (const TSharedPtr<FJsonValue>& Value : Field->AsArray())
			{
				if (Value.IsValid() && Value->Type == EJson::String)
				{
					Names.AddUnique(Value->AsString());
				}
			}
		}
		return Names;
	}
}

TSharedPtr<FJsonObject> FBlueprintReadUtils::SerializeWidgetHierarchy(UWidgetBlueprint* WidgetBlueprint)
{
	if (!WidgetBlueprint || !WidgetBlueprint->WidgetTree)
	{
		return nullptr;
	}
	TSharedPtr<FJsonObject> Hierarchy = MakeShared<FJsonObject>();
	if (UWidget* Root = WidgetBlueprint->WidgetTree->RootWidget)
	{
		Hierarchy->SetObjectField(TEXT("root_widget"), SerializeWidgetHierarchyNode(Root, WidgetBlueprint));
	}
	return Hierarchy;
}

TSharedPtr<FJsonObject> FBlueprintReadUtils::SerializeWidgetHierarchyNode(UWidget* Widget, UWidgetBlueprint* WidgetBlueprint)
{
	if (!Widget)
	{
		return nullptr;
	}
	TSharedPtr<FJsonObject> Node = MakeShared<FJsonObject>();
	Node->SetStringField(TEXT("name"), Widget->GetName());
	Node->SetStringField(TEXT("class"), Widget->GetClass()->GetName());
	Node->SetBoolField(TEXT("is_variable"), Widget->bIsVariable);
	if (const UPanelWidget* Panel = Cast<UPanelWidget>(Widget))
	{
		TArray<TSharedPtr<FJsonValue>> Children;
		for (int32 Index = 0; Index < Panel->GetChildrenCount(); ++Index)
		{
			if (TSharedPtr<FJsonObject> Child = SerializeWidgetHierarchyNode(Panel->GetChildAt(Index), WidgetBlueprint))
			{
				Children.Add(MakeValue(Child));
			}
		}
		if (Children.Num() > 0)
		{
			Node->SetArrayField(TEXT("children"), MoveTemp(Children));
		}
	}
	return Node;
}

TSharedPtr<FJsonObject> FBlueprintReadUtils::SerializeWidgetDetails(UWidget* Widget, UWidgetBlueprint* WidgetBlueprint)
{
	if (!Widget)
	{
		return nullptr;
	}
	TSharedPtr<FJsonObject> Details = MakeShared<FJsonObject>();
	Details->SetStringField(TEXT("name"), Widget->GetName());
	Details->SetStringField(TEXT("class"), Widget->GetClass()->GetName());
	Details->SetBoolField(TEXT("is_variable"), Widget->bIsVariable);
	const UPanelWidget* Parent = Widget->GetParent();
	Details->SetStringField(TEXT("parent"), Parent ? Parent->GetName() : FString());
	Details->SetObjectField(TEXT("slot"), SerializeSlotProperties(Widget->Slot));
	Details->SetObjectField(TEXT("properties"), SerializeWidgetProperties(Widget));
	return Details;
}

TSharedPtr<FJsonObject> FBlueprintReadUtils::SerializeSlotProperties(UPanelSlot* Slot)
{
	return SerializeReflectedProperties(Slot);
}

TSharedPtr<FJsonObject> FBlueprintReadUtils::SerializeWidgetProperties(UWidget* Widget)
{
	return SerializeReflectedProperties(Widget);
}

namespace UE::CalvornBlueprint::ReadPrivate
{
	void ReadWidgetTreeSection(UBlueprint* Blueprint, const TSharedPtr<FJsonObject>& Options, bool bWidgetTreeTool, const FString& Path, FJsonObject& Document, Calvorn::FToolResult& Result)
	{
		UWidgetBlueprint* WidgetBlueprint = Cast<UWidgetBlueprint>(Blueprint);
		const TSharedPtr<FJsonObject> Hierarchy = FBlueprintReadUtils::SerializeWidgetHierarchy(WidgetBlueprint);
		if (!bWidgetTreeTool)
		{
			// A schema read shows the skeleton when there is one and says nothing otherwise.
			if (Hierarchy.IsValid())
			{
				TSharedPtr<FJsonObject> WidgetTree = MakeShared<FJsonObject>();
				WidgetTree->SetObjectField(TEXT("widget_hierarchy"), Hierarchy);
				Document.SetObjectField(TEXT("widget_tree"), WidgetTree);
			}
			return;
		}
		if (!Hierarchy.IsValid())
		{
			Result.AddErrorMessage(FString::Printf(TEXT("Blueprint at '%s' is not a Widget Blueprint"), *Path));
			return;
		}

		TSharedPtr<FJsonObject> WidgetTree = MakeShared<FJsonObject>();
		WidgetTree->SetObjectField(TEXT("widget_hierarchy"), Hierarchy);
		const TArray<FString> Names = GetRequestedWidgetNames(Options);
		if (Names.Num() > 0)
		{
			const bool bFinalizeRead = IsFinalizeRead(Options);
			TSharedPtr<FJsonObject> Widgets = MakeShared<FJsonObject>();
			for (const FString& Name : Names)
			{
				if (UWidget* Widget = WidgetBlueprint->WidgetTree->FindWidget(FName(*Name)))
				{
					Widgets->SetObjectField(Widget->GetName(), FBlueprintReadUtils::SerializeWidgetDetails(Widget, WidgetBlueprint));
					continue;
				}
				// As with every item read, a widget asked for and absent is a status entry, not a failure.
				TSharedPtr<FJsonObject> Status = MakeShared<FJsonObject>();
				Status->SetStringField(TEXT("name"), Name);
				Status->SetStringField(TEXT("status"), GetMissingStatusWord(bFinalizeRead));
				Widgets->SetObjectField(Name, Status);
			}
			WidgetTree->SetObjectField(TEXT("widgets"), Widgets);
		}
		Document.SetObjectField(TEXT("widget_tree"), WidgetTree);
	}
}
