#pragma once

#include "CoreMinimal.h"

class UObject;

/** One tag an object reports to the asset registry, with the engine's names. */
struct FAssetRegistryTag
{
	enum ETagType : uint8
	{
		TT_Hidden,
		TT_Alphabetical,
		TT_Numerical,
		TT_Dimensional,
		TT_Chronological,
	};

	enum ETagDisplay : uint32
	{
		TD_None = 0,
		TD_Date = 1 << 0,
		TD_Time = 1 << 1,
		TD_InvariantTz = 1 << 2,
		TD_Memory = 1 << 3,
	};

	FName Name;
	FString Value;
	ETagType Type = TT_Alphabetical;
	uint32 DisplayFlags = TD_None;

	FAssetRegistryTag() = default;
	FAssetRegistryTag(FName InName, const FString& InValue, ETagType InType, uint32 InDisplayFlags = TD_None)
		: Name(InName)
		, Value(InValue)
		, Type(InType)
		, DisplayFlags(InDisplayFlags)
	{
	}
};

/** Who asks an object for its tags. */
enum class EAssetRegistryTagsCaller : uint8
{
	Uncategorized,
	AssetRegistryQuery,
	AssetRegistryLoad,
	FullUpdate,
	SavePackage,
};

/** The tags collected for one object; FAssetRegistryTagsContext writes into it. */
class FAssetRegistryTagsContextData
{
public:
	COREUOBJECT_API FAssetRegistryTagsContextData(const UObject* InObject, EAssetRegistryTagsCaller InCaller = EAssetRegistryTagsCaller::Uncategorized);

	const UObject* Object = nullptr;
	EAssetRegistryTagsCaller Caller = EAssetRegistryTagsCaller::Uncategorized;
	/** In the order added; a tag added twice keeps its first place and its last value. */
	TArray<FAssetRegistryTag> Tags;
};

/**
 * What UObject::GetAssetRegistryTags receives: the object being described and where to put its tags.
 * Passed by value, as in the engine; copies write to the same data.
 */
class FAssetRegistryTagsContext
{
public:
	explicit FAssetRegistryTagsContext(FAssetRegistryTagsContextData& InData) : Data(&InData) {}

	const UObject* GetObject() const { return Data->Object; }
	EAssetRegistryTagsCaller GetTagsCaller() const { return Data->Caller; }
	bool IsSaving() const { return Data->Caller == EAssetRegistryTagsCaller::SavePackage; }
	bool IsProceduralSave() const { return false; }
	bool IsFullUpdate() const { return Data->Caller == EAssetRegistryTagsCaller::FullUpdate || IsSaving(); }

	/** Adds a tag, or replaces the value of a tag of the same name. */
	COREUOBJECT_API void AddTag(FAssetRegistryTag TagResult);
	COREUOBJECT_API const FAssetRegistryTag* FindTag(FName TagName) const;
	bool ContainsTag(FName TagName) const { return FindTag(TagName) != nullptr; }
	int32 GetNumTags() const { return Data->Tags.Num(); }
	void EnumerateTags(TFunctionRef<void(const FAssetRegistryTag&)> Visitor) const
	{
		for (const FAssetRegistryTag& Tag : Data->Tags)
		{
			Visitor(Tag);
		}
	}

private:
	FAssetRegistryTagsContextData* Data;
};
