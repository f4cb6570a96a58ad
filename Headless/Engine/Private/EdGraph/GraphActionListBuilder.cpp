#include "EdGraph/EdGraphSchema.h"
#include "EdGraph/EdGraph.h"
#include "UObject/Package.h"

FGraphActionListBuilderBase::ActionGroup::ActionGroup(TSharedPtr<FEdGraphSchemaAction> InAction, FString InRootCategory)
	: RootCategory(MoveTemp(InRootCategory))
{
	Actions.Add(MoveTemp(InAction));
}

FGraphActionListBuilderBase::ActionGroup::ActionGroup(const TArray<TSharedPtr<FEdGraphSchemaAction>>& InActions, FString InRootCategory)
	: Actions(InActions)
	, RootCategory(MoveTemp(InRootCategory))
{
}

void FGraphActionListBuilderBase::ActionGroup::GetCategoryChain(TArray<FString>& OutCategories) const
{
	OutCategories.Reset();
	auto AppendSplit = [&OutCategories](const FString& Path)
	{
		TArray<FString> Parts;
		Path.ParseIntoArray(Parts, TEXT("|"), true);
		for (FString& Part : Parts)
		{
			Part.TrimStartAndEndInline();
			if (!Part.IsEmpty())
			{
				OutCategories.Add(MoveTemp(Part));
			}
		}
	};
	AppendSplit(RootCategory);
	if (Actions.Num() > 0 && Actions[0].IsValid())
	{
		AppendSplit(Actions[0]->GetCategory().ToString());
	}
}

void FGraphActionListBuilderBase::AddAction(const TSharedPtr<FEdGraphSchemaAction>& NewAction, const FString& Category)
{
	if (NewAction.IsValid())
	{
		Entries.Emplace(NewAction, Category);
	}
}

void FGraphActionListBuilderBase::AddActionList(const TArray<TSharedPtr<FEdGraphSchemaAction>>& NewActions, const FString& Category)
{
	TArray<TSharedPtr<FEdGraphSchemaAction>> Valid;
	for (const TSharedPtr<FEdGraphSchemaAction>& Action : NewActions)
	{
		if (Action.IsValid())
		{
			Valid.Add(Action);
		}
	}
	if (Valid.Num() > 0)
	{
		Entries.Emplace(Valid, Category);
	}
}

void FGraphActionListBuilderBase::Append(FGraphActionListBuilderBase& Other)
{
	if (&Other == this)
	{
		// Appending a list to itself doubles it; copy first so the source does not grow while it is read.
		const TArray<ActionGroup> Copy = Other.Entries;
		Entries.Append(Copy);
		return;
	}
	Entries.Append(Other.Entries);
}

int32 FGraphActionListBuilderBase::GetNumActions() const
{
	return Entries.Num();
}

FGraphActionListBuilderBase::ActionGroup& FGraphActionListBuilderBase::GetAction(const int32 Index)
{
	check(Entries.IsValidIndex(Index));
	return Entries[Index];
}

TSharedPtr<FEdGraphSchemaAction> FGraphActionListBuilderBase::GetSchemaAction(const int32 Index) const
{
	if (!Entries.IsValidIndex(Index) || Entries[Index].Actions.Num() == 0)
	{
		return nullptr;
	}
	return Entries[Index].Actions[0];
}

void FGraphActionListBuilderBase::Empty()
{
	Entries.Empty();
}

FGraphContextMenuBuilder::FGraphContextMenuBuilder(const UEdGraph* InGraph)
	: CurrentGraph(InGraph)
{
	OwnerOfTemporaries = GetTransientPackage();
}
