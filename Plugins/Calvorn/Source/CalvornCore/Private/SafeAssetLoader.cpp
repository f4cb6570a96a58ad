#include "SafeAssetLoader.h"

#include "AssetRegistry/IAssetRegistry.h"
#include "Misc/PackageName.h"

namespace Calvorn
{
	bool FSafeAssetLoader::IsValidAssetPath(const FString& ObjectPath)
	{
		if (ObjectPath.IsEmpty())
		{
			return false;
		}
		int32 DotIndex = INDEX_NONE;
		if (ObjectPath.FindChar(TEXT('.'), DotIndex))
		{
			return FPackageName::IsValidObjectPath(ObjectPath);
		}
		// A bare package name names the package's main asset; script and engine packages are paths too.
		return FPackageName::IsValidLongPackageName(ObjectPath, /*bIncludeReadOnlyRoots*/ true);
	}

	bool FSafeAssetLoader::AssetExistsInRegistry(const FString& ObjectPath)
	{
		const FString PackageName = FPackageName::ObjectPathToPackageName(ObjectPath);
		if (!FPackageName::IsValidLongPackageName(PackageName, /*bIncludeReadOnlyRoots*/ true))
		{
			return false;
		}
		IAssetRegistry* Registry = IAssetRegistry::Get();
		if (!Registry)
		{
			return false;
		}
		TArray<FAssetData> Assets;
		Registry->GetAssetsByPackageName(FName(*PackageName), Assets);
		return Assets.Num() > 0;
	}
}
