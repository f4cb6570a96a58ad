#pragma once

#include "CoreMinimal.h"
#include "AssetRegistry/ARFilter.h"
#include "AssetRegistry/AssetData.h"
#include "AssetRegistry/AssetRegistryGlobals.h"
#include "Misc/EnumClassFlags.h"

class UObject;

namespace UE::AssetRegistry
{
	/** Kinds of dependency between packages. The headless registry records package references only. */
	enum class EDependencyCategory : uint8
	{
		None = 0x0,
		Package = 0x1,
		Manage = 0x2,
		SearchableName = 0x4,
		All = Package | Manage | SearchableName,
	};
	ENUM_CLASS_FLAGS(EDependencyCategory)

	/** Narrows a dependency query; every package reference matches the default query. */
	struct FDependencyQuery
	{
	};
}

/**
 * The catalogue of the assets in the mounted content folders, read from the package files' headers
 * without loading them (UE's IAssetRegistry). Kept up to date when packages are saved and when
 * assets are created, deleted or renamed. Every list it returns is sorted by object path (packages
 * by name), so answers never depend on the order of the file system or of history.
 */
class IAssetRegistry
{
public:
	virtual ~IAssetRegistry() = default;

	/** The process-wide registry, made on first use. */
	[[nodiscard]] static ASSETREGISTRY_API IAssetRegistry* Get();
	[[nodiscard]] static IAssetRegistry& GetChecked() { return *Get(); }

	// ---- Queries ---------------------------------------------------------------------------

	/** The assets matching the filter; false only for a filter that cannot match anything by construction. */
	virtual bool GetAssets(const FARFilter& Filter, TArray<FAssetData>& OutAssetData, bool bSkipARFilteredAssets = true) const = 0;
	virtual bool GetAssetsByPackageName(FName PackageName, TArray<FAssetData>& OutAssetData, bool bIncludeOnlyOnDiskAssets = false, bool bSkipARFilteredAssets = true) const = 0;
	virtual bool GetAssetsByPath(FName PackagePath, TArray<FAssetData>& OutAssetData, bool bRecursive = false, bool bIncludeOnlyOnDiskAssets = false) const = 0;
	virtual bool GetAssetsByPaths(TArray<FName> PackagePaths, TArray<FAssetData>& OutAssetData, bool bRecursive = false, bool bIncludeOnlyOnDiskAssets = false) const = 0;
	virtual bool GetAssetsByClass(FTopLevelAssetPath ClassPathName, TArray<FAssetData>& OutAssetData, bool bSearchSubClasses = false) const = 0;
	virtual bool GetAllAssets(TArray<FAssetData>& OutAssetData, bool bIncludeOnlyOnDiskAssets = false) const = 0;
	/** The asset at that object path, or an invalid FAssetData. */
	virtual FAssetData GetAssetByObjectPath(const FSoftObjectPath& ObjectPath, bool bIncludeOnlyOnDiskAssets = false, bool bSkipARFilteredAssets = true) const = 0;
	/** Whether any asset lies in the folder (or below it, with bRecursive). */
	virtual bool HasAssets(const FName PackagePath, const bool bRecursive = false) const = 0;

	/** The packages PackageName references (from its file's header); false when the package is unknown. */
	virtual bool GetDependencies(FName PackageName, TArray<FName>& OutDependencies,
		UE::AssetRegistry::EDependencyCategory Category = UE::AssetRegistry::EDependencyCategory::Package,
		const UE::AssetRegistry::FDependencyQuery& Flags = UE::AssetRegistry::FDependencyQuery()) const = 0;
	/** The known packages that reference PackageName; false when none is known to. */
	virtual bool GetReferencers(FName PackageName, TArray<FName>& OutReferencers,
		UE::AssetRegistry::EDependencyCategory Category = UE::AssetRegistry::EDependencyCategory::Package,
		const UE::AssetRegistry::FDependencyQuery& Flags = UE::AssetRegistry::FDependencyQuery()) const = 0;

	/** The folders below InBasePath that hold assets ("/Game/Doors"), with bInRecurse at any depth. */
	virtual void GetSubPaths(const FString& InBasePath, TArray<FString>& OutPathList, bool bInRecurse) const = 0;

	/** The classes deriving from ClassNames (themselves included), minus ExcludedClassNames and their subclasses. */
	virtual void GetDerivedClassNames(const TArray<FTopLevelAssetPath>& ClassNames, const TSet<FTopLevelAssetPath>& ExcludedClassNames,
		TSet<FTopLevelAssetPath>& OutDerivedClassNames) const = 0;
	/** The super classes of ClassName, nearest first. */
	virtual void GetAncestorClassNames(FTopLevelAssetPath ClassName, TArray<FTopLevelAssetPath>& OutAncestorClassNames) const = 0;

	// ---- Scanning --------------------------------------------------------------------------

	/**
	 * Scans every mounted content folder. The headless registry always scans synchronously, does so by
	 * itself on the first question asked of it, and scans folders mounted after that as they come.
	 */
	virtual void SearchAllAssets(bool bSynchronousSearch) = 0;
	/** Scans folders given as package paths ("/Game/Doors") or as folders on disk; known packages under them that are gone are forgotten. */
	virtual void ScanPathsSynchronous(const TArray<FString>& InPaths, bool bForceRescan = false, bool bIgnoreDenyListScanFilters = false) = 0;
	/** Scans package files given as file names or package names; a file that no longer exists is forgotten. */
	virtual void ScanFilesSynchronous(const TArray<FString>& InFilePaths, bool bForceRescan = false) = 0;
	virtual bool IsLoadingAssets() const = 0;
	virtual void WaitForCompletion() = 0;

	// ---- Changes made by the editor --------------------------------------------------------

	/** A new asset exists in memory; it is listed (as not on disk) until saved or deleted. */
	virtual void AssetCreated(UObject* NewAsset) = 0;
	/** The asset was deleted; it is no longer listed. */
	virtual void AssetDeleted(UObject* DeletedAsset) = 0;
	/** The asset was renamed or moved from OldObjectPath. */
	virtual void AssetRenamed(const UObject* RenamedAsset, const FString& OldObjectPath) = 0;

	// ---- Events ----------------------------------------------------------------------------

	DECLARE_MULTICAST_DELEGATE_OneParam(FAssetAddedEvent, const FAssetData&);
	DECLARE_MULTICAST_DELEGATE_OneParam(FAssetRemovedEvent, const FAssetData&);
	DECLARE_MULTICAST_DELEGATE_TwoParams(FAssetRenamedEvent, const FAssetData&, const FString&);
	DECLARE_MULTICAST_DELEGATE_OneParam(FAssetUpdatedEvent, const FAssetData&);
	DECLARE_MULTICAST_DELEGATE(FFilesLoadedEvent);

	virtual FAssetAddedEvent& OnAssetAdded() = 0;
	virtual FAssetRemovedEvent& OnAssetRemoved() = 0;
	virtual FAssetRenamedEvent& OnAssetRenamed() = 0;
	virtual FAssetUpdatedEvent& OnAssetUpdated() = 0;
	/** Broadcast when a full search has finished. */
	virtual FFilesLoadedEvent& OnFilesLoaded() = 0;
};

namespace UE::Headless
{
	/**
	 * Problems met by the scans since the last call (unreadable or foreign package files, files a
	 * symbolic link leads outside their folder, two files for one package name), one sentence each
	 * naming the file. The files concerned are not listed. Headless only.
	 */
	ASSETREGISTRY_API TArray<FString> TakeAssetRegistryScanErrors();

	/** Forgets every asset and scan, as at start-up. Headless only, for tests. */
	ASSETREGISTRY_API void ResetAssetRegistry();
}
