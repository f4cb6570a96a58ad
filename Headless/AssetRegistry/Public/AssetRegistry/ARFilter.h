#pragma once

#include "CoreMinimal.h"
#include "AssetRegistry/AssetRegistryGlobals.h"
#include "UObject/SoftObjectPath.h"
#include "UObject/TopLevelAssetPath.h"

/**
 * Which assets IAssetRegistry::GetAssets returns. Each list that is not empty must be satisfied (they
 * combine with AND); an asset satisfies a list when it matches any of its entries (OR). An empty
 * filter matches every asset.
 */
struct FARFilter
{
	/** Exact package names ("/Game/Doors/BP_Door"). */
	TArray<FName> PackageNames;
	/** Folders ("/Game/Doors"); with bRecursivePaths their sub-folders too. */
	TArray<FName> PackagePaths;
	/** Exact object paths ("/Game/Doors/BP_Door.BP_Door"). */
	TArray<FSoftObjectPath> SoftObjectPaths;
	/** Asset classes ("/Script/Engine.Blueprint"); with bRecursiveClasses their subclasses too. */
	TArray<FTopLevelAssetPath> ClassPaths;
	/** Classes (and their subclasses) left out of a bRecursiveClasses search. */
	TSet<FTopLevelAssetPath> RecursiveClassPathsExclusionSet;
	/** Tags the asset must have, with a value when one is given. */
	TArray<TPair<FName, TOptional<FString>>> TagsAndValues;
	bool bRecursivePaths = false;
	bool bRecursiveClasses = false;
	/** Leave out assets known only in memory (created but never saved). */
	bool bIncludeOnlyOnDiskAssets = false;

	bool IsEmpty() const
	{
		return PackageNames.Num() == 0 && PackagePaths.Num() == 0 && SoftObjectPaths.Num() == 0 && ClassPaths.Num() == 0 && TagsAndValues.Num() == 0;
	}

	void Clear() { *this = FARFilter(); }

	/** Adds the other filter's entries to this one's. */
	void Append(const FARFilter& Other)
	{
		PackageNames.Append(Other.PackageNames);
		PackagePaths.Append(Other.PackagePaths);
		SoftObjectPaths.Append(Other.SoftObjectPaths);
		ClassPaths.Append(Other.ClassPaths);
		for (const FTopLevelAssetPath& Excluded : Other.RecursiveClassPathsExclusionSet)
		{
			RecursiveClassPathsExclusionSet.Add(Excluded);
		}
		TagsAndValues.Append(Other.TagsAndValues);
		bRecursivePaths |= Other.bRecursivePaths;
		bRecursiveClasses |= Other.bRecursiveClasses;
		bIncludeOnlyOnDiskAssets |= Other.bIncludeOnlyOnDiskAssets;
	}
};
