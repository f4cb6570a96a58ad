#pragma once

// Shared by the action menu suites: a Blueprint made the editor's way and its graphs' menus, read back as rows.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "BlueprintActionDatabase.h"
#include "BlueprintActionFilter.h"
#include "BlueprintActionMenuBuilder.h"
#include "BlueprintActionMenuItem.h"
#include "BlueprintActionMenuUtils.h"
#include "BlueprintNodeSpawner.h"
#include "Headless/UnrealEd/EditorTestUtils.h"

namespace ActionMenuTest
{
	using EditorTest::U8;

	/** One entry of a built menu as a user (and the fuzzy matcher) reads it. */
	struct FMenuRow
	{
		std::string Title;
		std::string Category;
		std::string Keywords;
		std::string TypeId;
		std::string NodeClass;
		TSharedPtr<FEdGraphSchemaAction> Action;
	};

	inline std::vector<FMenuRow> ReadMenu(FBlueprintActionMenuBuilder& Menu)
	{
		std::vector<FMenuRow> Rows;
		for (int32 Index = 0; Index < Menu.GetNumActions(); ++Index)
		{
			TSharedPtr<FEdGraphSchemaAction> Action = Menu.GetSchemaAction(Index);
			if (!Action.IsValid())
			{
				continue;
			}
			FMenuRow Row;
			Row.Title = U8(Action->GetMenuDescription());
			Row.Category = U8(Action->GetCategory());
			Row.Keywords = U8(Action->GetKeywords());
			Row.TypeId = U8(Action->GetTypeId());
			if (Action->GetTypeId() == FBlueprintActionMenuItem::StaticGetTypeId())
			{
				const UBlueprintNodeSpawner* Spawner = static_cast<FBlueprintActionMenuItem*>(Action.Get())->GetRawAction();
				if (Spawner && Spawner->NodeClass.Get())
				{
					Row.NodeClass = U8(Spawner->NodeClass->GetName());
				}
			}
			Row.Action = Action;
			Rows.push_back(MoveTemp(Row));
		}
		return Rows;
	}

	/** The first row titled Title, or null. */
	inline const FMenuRow* FindRow(const std::vector<FMenuRow>& Rows, const std::string& Title)
	{
		for (const FMenuRow& Row : Rows)
		{
			if (Row.Title == Title)
			{
				return &Row;
			}
		}
		return nullptr;
	}

	/** The row titled Title under Category, or null: several entries may share a title ("Add" of arrays, maps, operators). */
	inline const FMenuRow* FindRow(const std::vector<FMenuRow>& Rows, const std::string& Title, const std::string& Category)
	{
		for (const FMenuRow& Row : Rows)
		{
			if (Row.Title == Title && Row.Category == Category)
			{
				return &Row;
			}
		}
		return nullptr;
	}

	class FActionMenuFixture : public EditorTest::FEditorFixture
	{
	protected:
		FActionMenuFixture()
			: EditorTest::FEditorFixture(TEXT("ActionMenuTests"))
		{
		}

		/** The menu of Graph, as the populate tool asks for it: not context sensitive, every target. */
		std::vector<FMenuRow> MenuFor(UBlueprint* Blueprint, UEdGraph* Graph, FBlueprintActionMenuBuilder* OutMenu = nullptr)
		{
			FBlueprintActionContext Context;
			Context.Blueprints.Add(Blueprint);
			Context.Graphs.Add(Graph);
			FBlueprintActionMenuBuilder LocalMenu;
			FBlueprintActionMenuBuilder& Menu = OutMenu ? *OutMenu : LocalMenu;
			FBlueprintActionMenuUtils::MakeContextMenu(Context, false, EContextTargetFlags::ContextTargetFlags_MAX - 1, Menu);
			return ReadMenu(Menu);
		}

		static UEdGraph* EventGraphOf(UBlueprint* Blueprint)
		{
			return Blueprint->UbergraphPages.Num() > 0 ? Blueprint->UbergraphPages[0].Get() : nullptr;
		}
	};
}
