#pragma once

#include "CoreMinimal.h"
#include "Misc/EnumClassFlags.h"
#include "Templates/Function.h"

class UPackage;

/**
 * Package names, object paths and the mount points that map package roots ("/Game/", "/MyPlugin/")
 * to folders on disk, with the engine's rules.
 *
 * Roots: the open project mounts /Game/ and its plug-ins' content roots (through the plug-in
 * manager); /Script/, /Engine/, /Temp/ and /Memory/ are always known but live only in memory and
 * are read-only here, so nothing is ever saved under them.
 *
 * The headless editor is stricter than the engine where a lax answer could reach a file outside
 * the mounted folders: converting a package name to a file name also refuses memory-only roots,
 * control characters, over-long path components and symbolic links that lead out of the mounted
 * folder, and converting a file name to a package name refuses files outside every mounted
 * folder (the engine would return a best guess). The functions the engine makes fatal
 * (LongPackageNameToFilename, FilenameToLongPackageName) return an empty string instead.
 */
class FPackageName
{
public:
	enum class EErrorCode
	{
		PackageNameUnknown,
		PackageNameEmptyPath,
		PackageNamePathNotMounted,
		PackageNamePathIsMemoryOnly,
		PackageNameSpacesNotAllowed,
		PackageNameContainsInvalidCharacters,
		LongPackageNames_PathTooShort,
		LongPackageNames_PathWithNoStartingSlash,
		LongPackageNames_PathWithTrailingSlash,
		LongPackageNames_PathWithDoubleSlash,
	};

	/** Flags for the output format of path functions. */
	enum class EPathFormatFlags : uint32
	{
		None = 0x0,
		MountPointLeadingSlash = 0x1,
		MountPointTrailingSlash = 0x2,
		MountPointSlashes = MountPointLeadingSlash | MountPointTrailingSlash,
		MountPointNoSlashes = None,
	};

	/** The engine's sentence for an error code about InPath. */
	static COREUOBJECT_API FString FormatErrorAsString(const FString& InPath, EErrorCode ErrorCode);
	static COREUOBJECT_API FText FormatErrorAsText(const FString& InPath, EErrorCode ErrorCode);

	// ---- Validation -------------------------------------------------------------------------

	/**
	 * True when the name has the form of a long package name ("/Root/Path/Name": at least four
	 * characters, a leading '/', no trailing '/', no "//", none of INVALID_LONGPACKAGE_CHARACTERS)
	 * and starts with a mounted root. Read-only roots (/Script/, /Engine/, /Temp/, /Memory/) count
	 * only with bIncludeReadOnlyRoots.
	 */
	static COREUOBJECT_API bool IsValidLongPackageName(const FString& InLongPackageName, bool bIncludeReadOnlyRoots = false, EErrorCode* OutReason = nullptr);
	static COREUOBJECT_API bool IsValidLongPackageName(const FString& InLongPackageName, bool bIncludeReadOnlyRoots, FText* OutReason);

	/** The form checks of IsValidLongPackageName, without asking whether the root is mounted. */
	static COREUOBJECT_API bool IsValidTextForLongPackageName(const FString& InLongPackageName, EErrorCode* OutReason = nullptr);
	static COREUOBJECT_API bool IsValidTextForLongPackageName(const FString& InLongPackageName, FText* OutReason);

	/** "/Pkg/Name", "/Pkg/Name.Object" or "/Pkg/Name.Object:Sub.Sub" with a valid package part (read-only roots allowed). */
	static COREUOBJECT_API bool IsValidObjectPath(const FString& InObjectPath, FText* OutReason = nullptr);

	/** Whether the path starts with a known root ("/Game/...", "/Script/..."). */
	static COREUOBJECT_API bool IsValidPath(const FString& InPath);

	static COREUOBJECT_API bool DoesPackageNameContainInvalidCharacters(const FString& InLongPackageName, EErrorCode* OutReason = nullptr);
	static COREUOBJECT_API bool DoesPackageNameContainInvalidCharacters(const FString& InLongPackageName, FText* OutReason);

	/** A name without any '/'. */
	static COREUOBJECT_API bool IsShortPackageName(const FString& PossiblyLongName);
	static COREUOBJECT_API bool IsShortPackageName(const FName PossiblyLongName);

	static COREUOBJECT_API bool IsScriptPackage(const FString& InPackageName);
	static COREUOBJECT_API bool IsMemoryPackage(const FString& InPackageName);
	static COREUOBJECT_API bool IsTempPackage(const FString& InPackageName);

	// ---- Taking names apart -----------------------------------------------------------------

	/** Everything after the last '/': "/Game/Maps/MyMap" gives "MyMap". */
	static COREUOBJECT_API FString GetShortName(const FString& LongName);
	static COREUOBJECT_API FString GetShortName(const FName& LongName);
	static COREUOBJECT_API FString GetShortName(const TCHAR* LongName);
	static COREUOBJECT_API FString GetShortName(const UPackage* Package);
	static COREUOBJECT_API FName GetShortFName(const FString& LongName);
	static COREUOBJECT_API FName GetShortFName(const FName& LongName);
	static COREUOBJECT_API FName GetShortFName(const TCHAR* LongName);

	/** Everything before the last '/': "/Game/Maps/MyMap" gives "/Game/Maps"; a name without '/' is returned whole. */
	static COREUOBJECT_API FString GetLongPackagePath(const FString& InLongPackageName);

	/** Same as GetShortName. */
	static COREUOBJECT_API FString GetLongPackageAssetName(const FString& InLongPackageName);

	/**
	 * Splits "/Root/Path/Leaf" into "/Root/", "Path/" and "Leaf" (the root's slashes per Flags).
	 * "" and "/" and "/root" give nothing; "/root/" gives only the root.
	 */
	static COREUOBJECT_API void SplitPackageName(const FString& InLongPackageName, FString* OutPackageRoot, FString* OutPackagePath, FString* OutPackageLeafName,
		EPathFormatFlags Flags = EPathFormatFlags::MountPointSlashes);

	/** SplitPackageName for a name under a mounted root; false (and every output empty) otherwise. */
	static COREUOBJECT_API bool SplitLongPackageName(const FString& InLongPackageName, FString& OutPackageRoot, FString& OutPackagePath, FString& OutPackageLeafName,
		const bool bStripRootLeadingSlash = false);

	/** The mounted root of a path, e.g. "Game" for "/Game/Maps/MyMap" (or "/Game/" with bInWithoutSlashes false); NAME_None when unmounted. */
	static COREUOBJECT_API FName GetPackageMountPoint(const FString& InPackagePath, bool InWithoutSlashes = true);

	/** Splits "Class /Pkg/Name.Object:Sub.Sub" into its parts; the sub-object part is not split. */
	static COREUOBJECT_API void SplitFullObjectPath(const FString& InFullObjectPath, FString& OutClassName, FString& OutPackageName, FString& OutObjectName,
		FString& OutSubObjectName, bool bDetectClassName = true);

	/** "/Game/MyAsset.MyAsset:Sub.Other" gives "/Game/MyAsset"; a path without '.' is returned whole. */
	static COREUOBJECT_API FString ObjectPathToPackageName(const FString& InObjectPath);
	/** "/Game/MyAsset.MyAsset:Sub.Other" gives "MyAsset:Sub.Other"; "/Game/MyAsset" gives "". */
	static COREUOBJECT_API FString ObjectPathToPathWithinPackage(const FString& InObjectPath);
	/** "/Game/MyAsset.MyAsset:Sub" gives "/Game/MyAsset.MyAsset"; "/Game/MyAsset" gives "". */
	static COREUOBJECT_API FString ObjectPathToOuterPath(const FString& InObjectPath);
	/** "/Game/MyAsset.MyAsset:Sub.Other" gives "Sub.Other"; "/Game/MyAsset.MyAsset" gives "MyAsset"; no '.' returns the input. */
	static COREUOBJECT_API FString ObjectPathToSubObjectPath(const FString& InObjectPath);
	/** "/Game/MyAsset.MyAsset:Sub.Other" gives "Other"; no '.' or ':' returns the input. */
	static COREUOBJECT_API FString ObjectPathToObjectName(const FString& InObjectPath);
	/** Appends a name with the right delimiter: {"/Pkg", "Obj"} gives "/Pkg.Obj", {"/Pkg.Obj", "Sub"} gives "/Pkg.Obj:Sub". */
	static COREUOBJECT_API FString ObjectPathCombine(const FString& ObjectPath, const FString& NextName);

	/** Splits "Class'/Pkg/Name.Object'" (quotes optional) into its class and object path. */
	static COREUOBJECT_API bool ParseExportTextPath(const FString& InExportTextPath, FString* OutClassName, FString* OutObjectPath);
	/** The object path of "Class'/Pkg/Name.Object'", or the input when it has no quoted part. */
	static COREUOBJECT_API FString ExportTextPathToObjectPath(const FString& InExportTextPath);

	/** "InputCore" gives "/Script/InputCore". */
	static COREUOBJECT_API FString ConvertToLongScriptPackageName(const TCHAR* InShortName);
	static COREUOBJECT_API FName GetModuleScriptPackageName(FName ModuleName);

	// ---- Files --------------------------------------------------------------------------------

	/**
	 * The file of a package under its mounted folder with InExtension appended (".uasset"), or of
	 * a package path (folder) with no extension. Refuses (false) invalid names, unmounted and
	 * memory-only roots, and names that would leave the mounted folder through a symbolic link.
	 * Where a file or folder on the way exists with different letter case, its case on disk is used,
	 * since package names ignore case.
	 */
	static COREUOBJECT_API bool TryConvertLongPackageNameToFilename(const FString& InLongPackageName, FString& OutFilename, const FString& InExtension = FString());

	/** Headless: TryConvertLongPackageNameToFilename that says why it refused. */
	static COREUOBJECT_API bool TryConvertLongPackageNameToFilename(const FString& InLongPackageName, FString& OutFilename, const FString& InExtension, FText& OutReason);

	/** TryConvertLongPackageNameToFilename, or an empty string when it fails. */
	static COREUOBJECT_API FString LongPackageNameToFilename(const FString& InLongPackageName, const FString& InExtension = FString());

	/**
	 * The package name of a file (absolute, or relative to the working directory) under a mounted
	 * folder, without its extension; a long package name under a mounted root is accepted as is.
	 * False with a reason for anything outside every mounted folder or not a valid package name.
	 */
	static COREUOBJECT_API bool TryConvertFilenameToLongPackageName(const FString& InFilename, FString& OutPackageName, FString* OutFailureReason = nullptr);

	/** TryConvertFilenameToLongPackageName, or an empty string when it fails. */
	static COREUOBJECT_API FString FilenameToLongPackageName(const FString& InFilename);

	/** Whether the package has a file (.uasset or .umap) on disk; OutFilename gets its file name. */
	static COREUOBJECT_API bool DoesPackageExist(const FString& LongPackageName, FString* OutFilename = nullptr, bool InAllowTextFormats = true);

	/** Finds "<InPackageFilename>.uasset" or ".umap" on disk. */
	static COREUOBJECT_API bool FindPackageFileWithoutExtension(const FString& InPackageFilename, FString& OutFilename);

	static COREUOBJECT_API const FString& GetAssetPackageExtension();
	static COREUOBJECT_API const FString& GetMapPackageExtension();
	static COREUOBJECT_API const FString& GetTextAssetPackageExtension();
	static COREUOBJECT_API const FString& GetTextMapPackageExtension();

	/** Whether the extension (with or without its dot) is ".uasset" or ".umap". */
	static COREUOBJECT_API bool IsPackageExtension(const TCHAR* Ext);
	static COREUOBJECT_API bool IsAssetPackageExtension(const TCHAR* Ext);
	static COREUOBJECT_API bool IsMapPackageExtension(const TCHAR* Ext);

	/** Whether the file name ends with a package extension. */
	static COREUOBJECT_API bool IsPackageFilename(const FString& Filename);

	/** Adds the package files (full paths) under RootDir, sorted by path; true when any was found. Linked folders are not entered. */
	static COREUOBJECT_API bool FindPackagesInDirectory(TArray<FString>& OutPackages, const FString& RootDir);

	using FPackageNameVisitor = TFunctionRef<bool(const TCHAR*)>;
	/** Calls Visitor with each package file under RootDir in path order until it returns false. */
	static COREUOBJECT_API void IteratePackagesInDirectory(const FString& RootDir, const FPackageNameVisitor& Visitor);

	// ---- Mount points -------------------------------------------------------------------------

	/** Maps a root ("/MyPlugin/") to a folder; the newest mapping of a root wins. */
	static COREUOBJECT_API void RegisterMountPoint(const FString& RootPath, const FString& ContentPath);
	/** Removes a mapping added by RegisterMountPoint. */
	static COREUOBJECT_API void UnRegisterMountPoint(const FString& RootPath, const FString& ContentPath);

	/** Whether a root ("/Game/") is known. */
	static COREUOBJECT_API bool MountPointExists(const FString& RootPath);

	/** The folder (full path ending in '/') a root maps to; empty for unknown and memory-only roots. */
	static COREUOBJECT_API FString GetContentPathForPackageRoot(const FString& InPackageRoot);

	/** The known roots ("/Game/"), sorted; read-only ones only with bIncludeReadOnlyRoots. */
	static COREUOBJECT_API void QueryRootContentPaths(TArray<FString>& OutRootContentPaths, bool bIncludeReadOnlyRoots = false, bool bWithoutLeadingSlashes = false,
		bool bWithoutTrailingSlashes = false);

	/** The folders of the mounted roots, in the order of QueryRootContentPaths. */
	static COREUOBJECT_API TArray<FString> QueryMountPointLocalAbsPaths();

	DECLARE_MULTICAST_DELEGATE_TwoParams(FOnContentPathMountedEvent, const FString& /* AssetPath */, const FString& /* ContentPath */);
	static FOnContentPathMountedEvent& OnContentPathMounted() { return OnContentPathMountedEvent; }

	DECLARE_MULTICAST_DELEGATE_TwoParams(FOnContentPathDismountedEvent, const FString& /* AssetPath */, const FString& /* ContentPath */);
	static FOnContentPathDismountedEvent& OnContentPathDismounted() { return OnContentPathDismountedEvent; }

private:
	static COREUOBJECT_API FOnContentPathMountedEvent OnContentPathMountedEvent;
	static COREUOBJECT_API FOnContentPathDismountedEvent OnContentPathDismountedEvent;
};

ENUM_CLASS_FLAGS(FPackageName::EPathFormatFlags)
