#include "UObject/AssetRegistryTagsContext.h"

FAssetRegistryTagsContextData::FAssetRegistryTagsContextData(const UObject* InObject, EAssetRegistryTagsCaller InCaller)
	: Object(InObject)
	, Caller(InCaller)
{
}

void FAssetRegistryTagsContext::AddTag(FAssetRegistryTag TagResult)
{
	if (FAssetRegistryTag* Existing = Data->Tags.FindByPredicate([&TagResult](const FAssetRegistryTag& Tag) { return Tag.Name == TagResult.Name; }))
	{
		*Existing = MoveTemp(TagResult);
		return;
	}
	Data->Tags.Add(MoveTemp(TagResult));
}

const FAssetRegistryTag* FAssetRegistryTagsContext::FindTag(FName TagName) const
{
	return Data->Tags.FindByPredicate([&TagName](const FAssetRegistryTag& Tag) { return Tag.Name == TagName; });
}
