#pragma once

#include "UObject/Object.h"
#include "UObject/Class.h"

struct FSavePackageArgs;
struct FSavePackageResultStruct;
class FOutputDevice;

/** The outcome of saving a package. */
enum class ESavePackageResult
{
	Success,
	Canceled,
	Error,
	MissingFile,
	ReplaceCompletely,
	ContainsEditorOnlyData,
	ReferencedOnlyByEditorOnlyData,
	DifferentContent,
	GenerateStub,
	Timeout,
	EmptyPackage,
};

/** What SavePackage reports. */
struct COREUOBJECT_API FSavePackageResultStruct
{
	ESavePackageResult Result = ESavePackageResult::Error;
	/** Bytes written. */
	int64 TotalFileSize = 0;

	FSavePackageResultStruct() = default;
	FSavePackageResultStruct(ESavePackageResult InResult) : Result(InResult) {}
	FSavePackageResultStruct(ESavePackageResult InResult, int64 InTotalFileSize) : Result(InResult), TotalFileSize(InTotalFileSize) {}

	bool IsSuccessful() const { return Result == ESavePackageResult::Success; }
	bool operator==(const FSavePackageResultStruct& Other) const { return Result == Other.Result; }
	bool operator==(ESavePackageResult Other) const { return Result == Other; }
};

/**
 * A package: the outermost object of an asset file ("/Game/Folder/Asset") or of a module's reflected
 * types ("/Script/Engine"). Keeps the package flags and the dirty state.
 */
class COREUOBJECT_API UPackage : public UObject
{
	DECLARE_CASTED_CLASS_INTRINSIC(UPackage, UObject, CLASS_None, TEXT("/Script/CoreUObject"), CASTCLASS_UPackage)

public:
	UPackage() = default;
	explicit UPackage(const FObjectInitializer& ObjectInitializer);

	// Dirty state

	/** Sets whether the package has unsaved changes. */
	void SetDirtyFlag(bool bInIsDirty);
	bool IsDirty() const { return bDirty; }

	// Flags

	void SetPackageFlags(EPackageFlags NewFlags) { PackageFlagsPrivate |= NewFlags; }
	void ClearPackageFlags(EPackageFlags NewFlags) { PackageFlagsPrivate &= ~NewFlags; }
	void SetPackageFlagsTo(EPackageFlags NewFlags) { PackageFlagsPrivate = NewFlags; }
	bool HasAnyPackageFlags(EPackageFlags FlagsToCheck) const { return (PackageFlagsPrivate & FlagsToCheck) != 0; }
	bool HasAllPackageFlags(EPackageFlags FlagsToCheck) const { return (PackageFlagsPrivate & FlagsToCheck) == FlagsToCheck; }
	EPackageFlags GetPackageFlags() const { return PackageFlagsPrivate; }

	/** True for a package of reflected types ("/Script/..."): never saved. */
	bool IsScriptPackage() const;

	// Loading

	/** Marks the package as completely loaded (headless packages load in one go). */
	void MarkAsFullyLoaded() { bHasBeenFullyLoaded = true; }
	bool IsFullyLoaded() const;
	/** Loads whatever of the package is not loaded yet (nothing to do headless once loaded). */
	void FullyLoad();

	/** The file the package was last loaded from or saved to, empty if none. */
	const FString& GetLoadedPath() const { return LoadedPath; }
	void SetLoadedPath(const FString& InLoadedPath) { LoadedPath = InLoadedPath; }
	/** True when loading the package's file failed; a failed package is never saved over its file blindly. */
	bool HasLoadError() const { return !LoadError.IsEmpty(); }
	const FString& GetLoadError() const { return LoadError; }
	void SetLoadError(const FString& InLoadError) { LoadError = InLoadError; }

	FGuid GetPersistentGuid() const { return PersistentGuid; }
	void SetPersistentGuid(const FGuid& InGuid) { PersistentGuid = InGuid; }

	/** The package's main asset (the object named like the package), or null. */
	UObject* FindAssetInPackage(EObjectFlags RequiredTopLevelFlags = RF_NoFlags) const;

	// Saving: implemented with the package files (Private/UObject/SavePackage.cpp).

	/**
	 * Saves InOuter to Filename. Base names the asset to save (may be null: the package's asset).
	 * Fails for a script package, a package that failed to load, or a write error; the file on disk is
	 * then left as it was.
	 */
	static FSavePackageResultStruct Save(UPackage* InOuter, UObject* InAsset, const TCHAR* Filename, const FSavePackageArgs& SaveArgs);
	static bool SavePackage(UPackage* InOuter, UObject* Base, const TCHAR* Filename, const FSavePackageArgs& SaveArgs);

	/** Broadcast with the package each time its dirty state changes. */
	DECLARE_MULTICAST_DELEGATE_OneParam(FOnPackageDirtyStateChanged, UPackage*);
	static FOnPackageDirtyStateChanged PackageDirtyStateChangedEvent;
	/** Broadcast with the package and whether it was dirty before, when it is marked dirty. */
	DECLARE_MULTICAST_DELEGATE_TwoParams(FOnPackageMarkedDirty, UPackage*, bool);
	static FOnPackageMarkedDirty PackageMarkedDirtyEvent;

private:
	EPackageFlags PackageFlagsPrivate = PKG_None;
	bool bDirty = false;
	bool bHasBeenFullyLoaded = false;
	FString LoadedPath;
	FString LoadError;
	FGuid PersistentGuid;
};
