#include "BlueprintActionMenuBuilder.h"
#include "BlueprintActionDatabase.h"
#include "BlueprintActionMenuItem.h"
#include "BlueprintBoundEventNodeSpawner.h"
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
	Database.RegisterUnknownBlueprints();
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
		// A heading roots every entry of its section: "Add Event for Mesh|Collision".
		auto MakeCategory = [&Section, &Heading](const FText& ActionCategory)
		{
			const FString Own = (Section.Flags & FlattenCategoryHierarcy) ? FString() : ActionCategory.ToString();
			if (Heading.IsEmpty() || Own.IsEmpty())
			{
				return FText::FromString(Heading.IsEmpty() ? Own : Heading);
			}
			return FText::FromString(Heading + TEXT("|") + Own);
		};
		auto AddItem = [this, &Section, &MakeCategory](UBlueprintNodeSpawner* Spawner, FBlueprintActionInfo& Info)
		{
			const FBlueprintActionUiSpec Spec = Spawner->GetUiSpec(Section.Filter.Context, Info.Bindings);
			if (Spec.MenuName.IsEmpty())
			{
				// Nothing to show the user: the action's node could not describe itself.
				return;
			}
			AddAction(MakeShared<FBlueprintActionMenuItem>(Spawner, Spec, Info.Bindings, MakeCategory(Spec.Category), Section.MenuOrder));
		};
		const TArray<UObject*>& Selection = Section.Filter.Context.SelectedObjects;
		for (const TPair<const UObject*, FBlueprintActionDatabase::FActionList>& Pair : Registry)
		{
			for (UBlueprintNodeSpawner* Spawner : Pair.Value)
			{
				FBlueprintActionInfo Info(Pair.Key, Spawner);
				if (!Section.Filter.IsFiltered(Info))
				{
					AddItem(Spawner, Info);
				}
				// Actions that bind their node to an object get one entry per selected object they can take.
				const UBlueprintBoundEventNodeSpawner* BoundSpawner = Selection.Num() > 0 ? Cast<UBlueprintBoundEventNodeSpawner>(Spawner) : nullptr;
				if (!BoundSpawner)
				{
					continue;
				}
				for (UObject* Selected : Selection)
				{
					if (!BoundSpawner->IsBindingCompatible(Selected))
					{
						continue;
					}
					IBlueprintNodeBinder::FBindingSet Binding;
					Binding.Add(Selected);
					FBlueprintActionInfo BoundInfo(Info, Binding);
					if (!Section.Filter.IsFiltered(BoundInfo))
					{
						AddItem(Spawner, BoundInfo);
					}
				}
			}
		}
	}
}
