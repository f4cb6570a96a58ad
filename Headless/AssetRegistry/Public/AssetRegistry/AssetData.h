#pragma once

#include "CoreMinimal.h"
#include "AssetRegistry/AssetRegistryGlobals.h"
#include "UObject/SoftObjectPath.h"
#include "UObject/TopLevelAssetPath.h"

class UClass;
class UObject;
class UPackage;

/** Tags of an asset as a map; FAssetData keeps them sorted by name. */
using FAssetDataTagMap = TMap<FName, FString>;

/** One tag value looked up in FAssetDataTagMapSharedView; IsSet is false when the tag is absent. */
class FAssetTagValueRef
{
public:
	FAssetTagValueRef() = default;
	explicit FAssetTagValueRef(const FString* InValue) : Value(InValue) {}

	bool IsSet() const { return Value != nullptr; }
	FString AsString() const { return Value ? *Value : FString(); }
	FName AsName() const { return Value ? FName(*Value) : FName(); }
	FString GetValue() const { return AsString(); }
	bool Equals(const FString& Other) const { return Value && Value->Equals(Other, ESearchCase::CaseSensitive); }

private:
	const FString* Value = nullptr;
};

/**
 * The tags of an asset, shared between copies of its FAssetData. Sorted by name (ignoring case),
 * so iteration is stable.
 */
class FAssetDataTagMapSharedView
{
public:
	FAssetDataTagMapSharedView() = default;
	ASSETREGISTRY_API explicit FAssetDataTagMapSharedView(const FAssetDataTagMap& InMap);
	ASSETREGISTRY_API explicit FAssetDataTagMapSharedView(TArray<TPair<FName, FString>>&& InPairs);

	ASSETREGISTRY_API FAssetTagValueRef FindTag(FName Key) const;
	FAssetTagValueRef Find(FName Key) const { return FindTag(Key); }
	bool Contains(FName Key) const { return FindTag(Key).IsSet(); }
	int32 Num() const { return Pairs.IsValid() ? Pairs->Num() : 0; }

	/** The tags as a map, in name order. */
	ASSETREGISTRY_API FAssetDataTagMap CopyMap() const;

	template <typename Func>
	void ForEach(Func&& Callback) const
	{
		for (const TPair<FName, FString>& Pair : GetPairs())
		{
			Callback(Pair);
		}
	}

	const TPair<FName, FString>* begin() const { return GetPairs().GetData(); }
	const TPair<FName, FString>* end() const { return GetPairs().GetData() + GetPairs().Num(); }

	bool operator==(const FAssetDataTagMapSharedView& Other) const;

private:
	ASSETREGISTRY_API const TArray<TPair<FName, FString>>& GetPairs() const;

	TSharedPtr<const TArray<TPair<FName, FString>>> Pairs;
};

/**
 * What the asset registry knows about one asset without loading it: where it is, its class and its
 * tags. Copies are cheap; the tags are shared.
 */
struct FAssetData
{
	/** "/Game/Doors/BP_Door". */
	FName PackageName;
	/** "/Game/Doors". */
	FName PackagePath;
	/** "BP_Door". */
	FName AssetName;
	/** "/Script/Engine.Blueprint". */
	FTopLevelAssetPath AssetClassPath;
	uint32 PackageFlags = 0;
	FAssetDataTagMapSharedView TagsAndValues;

	FAssetData() = default;
	ASSETREGISTRY_API FAssetData(FName InPackageName, FName InPackagePath, FName InAssetName, FTopLevelAssetPath InAssetClassPathName,
		FAssetDataTagMap InTags = FAssetDataTagMap(), uint32 InPackageFlags = 0);
	/** From "/Game/Doors/BP_Door" and "/Game/Doors/BP_Door.BP_Door". */
	ASSETREGISTRY_API FAssetData(const FString& InLongPackageName, const FString& InObjectPath, FTopLevelAssetPath InAssetClassPathName,
		FAssetDataTagMap InTags = FAssetDataTagMap(), uint32 InPackageFlags = 0);
	/** Describes an object in memory, with the tags it reports; invalid for null or for an object not directly in a package. */
	ASSETREGISTRY_API explicit FAssetData(const UObject* InAsset);

	bool IsValid() const { return !PackageName.IsNone() && !AssetName.IsNone(); }
	/** Whether the asset is named like its package, as an asset saved alone in its file is. */
	ASSETREGISTRY_API bool IsUAsset() const;
	bool IsTopLevelAsset() const { return IsValid(); }

	/** "/Game/Doors/BP_Door.BP_Door". */
	ASSETREGISTRY_API FSoftObjectPath GetSoftObjectPath() const;
	ASSETREGISTRY_API FString GetObjectPathString() const;
	/** "/Script/Engine.Blueprint /Game/Doors/BP_Door.BP_Door". */
	ASSETREGISTRY_API FString GetFullName() const;
	/** "/Script/Engine.Blueprint'/Game/Doors/BP_Door.BP_Door'". */
	ASSETREGISTRY_API FString GetExportTextName() const;

	/** The asset's class if it is in memory, else null. */
	ASSETREGISTRY_API UClass* GetClass() const;
	/** Whether the asset's class is InClass or derives from it (false when the class is not in memory). */
	ASSETREGISTRY_API bool IsInstanceOf(const UClass* InClass) const;

	/** The asset, loading its package when needed; null when it cannot be loaded. */
	ASSETREGISTRY_API UObject* GetAsset() const;
	/** The asset if it is in memory; with bLoad, loads it otherwise. */
	ASSETREGISTRY_API UObject* FastGetAsset(bool bLoad = false) const;
	ASSETREGISTRY_API bool IsAssetLoaded() const;
	/** The asset's package, loading it when needed. */
	ASSETREGISTRY_API UPackage* GetPackage() const;

	FAssetTagValueRef FindTag(FName Tag) const { return TagsAndValues.FindTag(Tag); }
	bool GetTagValue(FName Tag, FString& OutValue) const
	{
		const FAssetTagValueRef Value = TagsAndValues.FindTag(Tag);
		if (Value.IsSet())
		{
			OutValue = Value.AsString();
		}
		return Value.IsSet();
	}
	/** The tag's value, or an empty string. */
	template <typename ValueType>
	ValueType GetTagValueRef(FName Tag) const;

	/** Same asset: same package and asset name (ignoring case, as names compare). */
	bool operator==(const FAssetData& Other) const { return PackageName == Other.PackageName && AssetName == Other.AssetName; }
	bool operator!=(const FAssetData& Other) const { return !(*this == Other); }
	/** Orders by object path, ignoring case. */
	ASSETREGISTRY_API bool operator<(const FAssetData& Other) const;

	friend uint32 GetTypeHash(const FAssetData& AssetData) { return HashCombine(GetTypeHash(AssetData.PackageName), GetTypeHash(AssetData.AssetName)); }
};

template <>
inline FString FAssetData::GetTagValueRef<FString>(FName Tag) const
{
	return TagsAndValues.FindTag(Tag).AsString();
}

template <>
inline FName FAssetData::GetTagValueRef<FName>(FName Tag) const
{
	return TagsAndValues.FindTag(Tag).AsName();
}
