#include "BlueprintActionMenuBuilder.h"
#include "BlueprintActionDatabase.h"
#include "BlueprintActionMenuItem.h"
#include "BlueprintNodeSpawner.h"

FBlueprintActionMenuBuilder::FBlueprintActionMenuBuilder() = default;
FBlueprintActionMenuBuilder::~FBlueprintActionMenuBuilder() = default;

void FBlueprintActionMenuBuilder::Empty()
{
	FGraphActionListBuilderBase::Empty();
	MenuSections.Empty();
}

void FBlueprintActionMenuBuilder::AddMenuSection(const FBlueprintActionFilter& Filter, const FText& Heading, int32 MenuOrder, uint32 Flags)
{
	FMenuSection Section;
	Section.Filter = Filter;
	Section.Heading = Heading;
	Section.MenuOrder = MenuOrder;
	Section.Flags = Flags;
	MenuSections.Add(MoveTemp(Section));
}

void FBlueprintActionMenuBuilder::RebuildActionList()
{
	FGraphActionListBuilderBase::Empty();
	FBlueprintActionDatabase& Database = FBlueprintActionDatabase::Get();
	// The menu's own Blueprints must be current: a variable added a moment ago is offered.
	for (const FMenuSection& Section : MenuSections)
	{
		for (UBlueprint* Blueprint : Section.Filter.Context.Blueprints)
		{
			if (Blueprint)
			{
				Database.RefreshAssetActionsIfChanged(Blueprint);
			}
		}
	}
	const FBlueprintActionDatabase::FActionRegistry& Registry = Database.GetAllActions();

	// Sections with a higher order come first; equal orders keep the order they were added in.
	TArray<int32> Order;
	for (int32 Index = 0; Index < MenuSections.Num(); ++Index)
	{
		Order.Add(Index);
	}
	Order.StableSort([this](int32 A, int32 B) { return MenuSections[A].MenuOrder > MenuSections[B].MenuOrder; });

	for (int32 SectionIndex : Order)
	{
		FMenuSection& Section = MenuSections[SectionIndex];
		const FString Heading = Section.Heading.ToString();
		for (const TPair<const UObject*, FBlueprintActionDatabase::FActionList>& Pair : Registry)
		{
			for (UBlueprintNodeSpawner* Spawner : Pair.Value)
			{
				FBlueprintActionInfo Info(Pair.Key, Spawner);
				if (Section.Filter.IsFiltered(Info))
				{
					continue;
				}
				const FBlueprintActionUiSpec Spec = Spawner->GetUiSpec(Section.Filter.Context, Info.Bindings);
				if (Spec.MenuName.IsEmpty())
				{
					// Nothing to show the user: the action's node could not describe itself.
					continue;
				}
				FText Category = (Section.Flags & FlattenCategoryHierarcy) ? FText() : Spec.Category;
				TSharedPtr<FEdGraphSchemaAction> Item = MakeShared<FBlueprintActionMenuItem>(Spawner, Spec, Info.Bindings, MoveTemp(Category), Section.MenuOrder);
				AddAction(Item, Heading);
			}
		}
	}
}
