#pragma once

#include "CoreTypes.h"
#include "Containers/UnrealString.h"

#include <string_view>
#include <type_traits>

/**
 * Path text helpers with the engine's rules. Paths are plain strings; both '/' and '\\' count
 * as separators when reading, and the normalising functions turn '\\' into '/'. Nothing here
 * touches the disk except FileExists, DirectoryExists and the full-path conversions, which
 * resolve relative paths against the process's working directory (the headless stand-in for
 * the engine's binaries folder).
 *
 * The project folders (ProjectDir and its children) follow the project file set with
 * SetProjectFilePath; they are empty until one is set.
 */
class FPaths
{
public:
	// ---- Project folders ----------------------------------------------------------------

	/** Whether SetProjectFilePath has been given a non-empty path. */
	[[nodiscard]] static CORE_API bool IsProjectFilePathSet();
	/** The normalised project file path, e.g. "/work/MyGame/MyGame.uproject". */
	[[nodiscard]] static CORE_API FString GetProjectFilePath();
	/** Sets the .uproject path that ProjectDir and the other project folders derive from. */
	static CORE_API void SetProjectFilePath(const FString& NewGameProjectFilePath);

	/** The folder of the project file as a full path ending in '/', or empty when no project is set. */
	[[nodiscard]] static CORE_API FString ProjectDir();
	[[nodiscard]] static CORE_API FString ProjectContentDir();
	[[nodiscard]] static CORE_API FString ProjectConfigDir();
	[[nodiscard]] static CORE_API FString ProjectPluginsDir();
	[[nodiscard]] static CORE_API FString ProjectSavedDir();
	[[nodiscard]] static CORE_API FString ProjectIntermediateDir();
	[[nodiscard]] static CORE_API FString ProjectLogDir();
	[[nodiscard]] static CORE_API FString ProjectUserDir();
	[[nodiscard]] static CORE_API FString SourceConfigDir();
	[[nodiscard]] static CORE_API FString GameSourceDir();

	/** The working directory as a full path ending in '/', the base for relative paths. */
	[[nodiscard]] static CORE_API FString LaunchDir();

	// ---- Reading paths ------------------------------------------------------------------

	/** The extension of the file name ("png" or ".png"); empty when the name has no dot. */
	[[nodiscard]] static CORE_API FString GetExtension(const FString& InPath, bool bIncludeDot = false);
	/** The text after the last separator; empty when the path ends with a separator. */
	[[nodiscard]] static CORE_API FString GetCleanFilename(const FString& InPath);
	/** The file name without its extension; with bRemovePath false the folders are kept. */
	[[nodiscard]] static CORE_API FString GetBaseFilename(const FString& InPath, bool bRemovePath = true);
	/** Everything before the last separator; empty when there is none. */
	[[nodiscard]] static CORE_API FString GetPath(const FString& InPath);
	/** The last path component, ignoring trailing separators ("a/b/" gives "b"). */
	[[nodiscard]] static CORE_API FString GetPathLeaf(const FString& InPath);
	/** Replaces an existing extension; a path without one is returned unchanged. */
	[[nodiscard]] static CORE_API FString ChangeExtension(const FString& InPath, const FString& InNewExtension);
	/** Replaces the extension, or adds one when there is none. */
	[[nodiscard]] static CORE_API FString SetExtension(const FString& InPath, const FString& InNewExtension);
	/** Folder (without trailing separator), base name and extension (without dot). */
	static CORE_API void Split(const FString& InPath, FString& PathPart, FString& FilenamePart, FString& ExtensionPart);

	[[nodiscard]] static CORE_API bool FileExists(const FString& InPath);
	[[nodiscard]] static CORE_API bool DirectoryExists(const FString& InPath);

	/** False for "/x", "\\\\server" and "C:..." paths; true for everything else, including "". */
	[[nodiscard]] static CORE_API bool IsRelative(const FString& InPath);

	// ---- Normalising --------------------------------------------------------------------

	/** Backslashes become forward slashes. */
	static CORE_API void NormalizeFilename(FString& InPath);
	/** As NormalizeFilename, and one trailing '/' is removed unless it ends "//" or ":/". */
	static CORE_API void NormalizeDirectoryName(FString& InPath);

	/**
	 * Removes "./" and folds "folder/.." pairs. Returns false when a ".." would climb above the
	 * start of the path (e.g. "../a" or "a/../../b"); the path is then left partly collapsed and
	 * must not be trusted. With bCollapseAllPossible the remaining ".." are kept and collapsing
	 * continues past them.
	 */
	static CORE_API bool CollapseRelativeDirectories(FString& InPath, bool bCollapseAllPossible = false);

	/** Runs of '/' become a single '/'. */
	static CORE_API void RemoveDuplicateSlashes(FString& InPath);
	[[nodiscard]] static CORE_API FString RemoveDuplicateSlashes(const FString& InPath);

	/** Relative paths are joined to the working directory; the result is normalised and collapsed. */
	[[nodiscard]] static CORE_API FString ConvertRelativePathToFull(const FString& InPath);
	/** Relative paths are joined to BasePath; the result is normalised and collapsed. */
	[[nodiscard]] static CORE_API FString ConvertRelativePathToFull(const FString& BasePath, const FString& InPath);

	/**
	 * Rewrites InPath relative to the folder of InRelativeTo (pass a folder with a trailing '/').
	 * Components compare ignoring case. Returns false for paths on different drives.
	 */
	static CORE_API bool MakePathRelativeTo(FString& InPath, const TCHAR* InRelativeTo);

	/** Whether both name the same location once made full and normalised (case-sensitive). */
	[[nodiscard]] static CORE_API bool IsSamePath(const FString& PathA, const FString& PathB);
	/** Whether InPath is InDirectory or inside it, comparing full paths component-wise. */
	[[nodiscard]] static CORE_API bool IsUnderDirectory(const FString& InPath, const FString& InDirectory);

	/** Characters the engine refuses in file names on any platform. */
	[[nodiscard]] static CORE_API FString GetInvalidFileSystemChars();
	/** Replaces (or, with a zero replacement, removes) the invalid file-system characters. */
	[[nodiscard]] static CORE_API FString MakeValidFileName(const FString& InString, const TCHAR InReplacementChar = 0);

	/**
	 * Joins the parts with '/': a separator is added between two parts unless the left one
	 * already ends with '/' or '\\' or the right one starts with '/'. Empty parts add nothing
	 * except a trailing '/' after a non-empty left part.
	 */
	template <typename... PathTypes>
	[[nodiscard]] static FString Combine(PathTypes&&... InPaths)
	{
		const std::u16string_view Parts[] = { ToPathView(InPaths)... };
		return CombineInternal(Parts, int32(sizeof...(PathTypes)));
	}

private:
	static std::u16string_view ToPathView(const FString& Path) { return Path.View(); }
	static std::u16string_view ToPathView(const TCHAR* Path) { return Path ? std::u16string_view(Path) : std::u16string_view(); }
	static std::u16string_view ToPathView(std::u16string_view Path) { return Path; }

	static CORE_API FString CombineInternal(const std::u16string_view* Parts, int32 NumParts);
};
