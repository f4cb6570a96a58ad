#include "K2NodeHelpers.h"

#include "Engine/Blueprint.h"
#include "UObject/Class.h"

namespace UE::BlueprintGraph::Private
{
	FText GetClassDisplayName(const UClass* Class)
	{
		if (const UBlueprint* Blueprint = UBlueprint::GetBlueprintFromClass(Class))
		{
			return FText::FromString(FName::NameToDisplayString(Blueprint->GetName(), false));
		}
		return Class ? Class->GetDisplayNameText() : FText::GetEmpty();
	}

	FString GetClassTitleName(const UClass* Class)
	{
		if (const UBlueprint* Blueprint = UBlueprint::GetBlueprintFromClass(Class))
		{
			return Blueprint->GetName();
		}
		return Class ? Class->GetName() : FString();
	}
}
