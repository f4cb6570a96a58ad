#pragma once

#include "CoreTypes.h"
#include "Containers/Array.h"
#include "Containers/UnrealString.h"
#include "Templates/Function.h"

/** Flags for reading files, with the engine's names. */
enum EFileRead
{
	FILEREAD_None = 0x00,
	FILEREAD_NoFail = 0x01,
	FILEREAD_Silent = 0x02,
	FILEREAD_AllowWrite = 0x04,
};

/** Flags for writing files, with the engine's names. */
enum EFileWrite
{
	FILEWRITE_None = 0x00,
	FILEWRITE_NoFail = 0x01,
	FILEWRITE_NoReplaceExisting = 0x02,
	FILEWRITE_EvenIfReadOnly = 0x04,
	FILEWRITE_Append = 0x08,
	FILEWRITE_AllowRead = 0x10,
	FILEWRITE_Silent = 0x20,
};

/** Results of IFileManager::Copy. */
enum ECopyResult
{
	COPY_OK = 0x00,
	COPY_Fail = 0x01,
	COPY_Canceled = 0x02,
};

/**
 * The file system as the engine's tools see it. Every operation reports failure through its
 * return value; none throws. Paths use '/' or '\\'; relative paths are taken from the working
 * directory.
 *
 * Listings are sorted by name (code-unit order) so results never depend on the order the
 * operating system happens to return; the engine gives no order at all.
 */
class IFileManager
{
public:
	using FDirectoryVisitorFunc = TFunctionRef<bool(const TCHAR* FilenameOrDirectory, bool bIsDirectory)>;

	virtual ~IFileManager() = default;

	/** The process-wide file manager. */
	[[nodiscard]] static CORE_API IFileManager& Get();

	/** True for an existing regular file (a directory is not a file). */
	[[nodiscard]] virtual bool FileExists(const TCHAR* Filename) = 0;
	[[nodiscard]] virtual bool DirectoryExists(const TCHAR* InDirectory) = 0;
	/** Size in bytes, or -1 when Filename is not an existing file. */
	[[nodiscard]] virtual int64 FileSize(const TCHAR* Filename) = 0;
	/** True when the file exists and its owner may not write it. */
	[[nodiscard]] virtual bool IsReadOnly(const TCHAR* Filename) = 0;

	/** Creates the directory, or with Tree every missing parent too. An existing directory counts as success. */
	virtual bool MakeDirectory(const TCHAR* Path, bool Tree = false) = 0;
	/**
	 * Removes an empty directory, or with Tree the directory and everything in it. Unless
	 * RequireExists, a directory that is not there counts as removed.
	 */
	virtual bool DeleteDirectory(const TCHAR* Path, bool RequireExists = false, bool Tree = false) = 0;
	/** Deletes a file. Unless RequireExists, a missing file counts as deleted. Directories are never deleted here. */
	virtual bool Delete(const TCHAR* Filename, bool RequireExists = false, bool EvenReadOnly = false, bool Quiet = false) = 0;
	/**
	 * Renames Src to Dest, creating Dest's folder. The rename is atomic: Dest is either the old
	 * file or the complete new one, never a mix. With Replace false an existing Dest makes it fail.
	 */
	virtual bool Move(const TCHAR* Dest, const TCHAR* Src, bool Replace = true, bool EvenIfReadOnly = false, bool Attributes = false, bool bDoNotRetryOrError = false) = 0;
	/** Copies a file, creating Dest's folder. Returns COPY_OK or COPY_Fail (also when Dest is Src). */
	virtual uint32 Copy(const TCHAR* Dest, const TCHAR* Src, bool Replace = true, bool EvenIfReadOnly = false, bool Attributes = false) = 0;

	/**
	 * Adds to Result the names (without folder) of the entries in a folder matching a wildcard:
	 * Filename is "Folder/Pattern" with '*' and '?' (case-insensitive), "*" and "*.*" matching
	 * everything. Result is appended to, not cleared.
	 */
	virtual void FindFiles(TArray<FString>& Result, const TCHAR* Filename, bool Files, bool Directories) = 0;
	/** Adds the names of the files in Directory with the extension ("png", ".png" or a pattern such as "*.png"); all files when null or empty. */
	virtual void FindFiles(TArray<FString>& FoundFiles, const TCHAR* Directory, const TCHAR* FileExtension = nullptr) = 0;
	/** Full paths (StartDirectory joined with the relative path) of matching entries at any depth, parents before children. */
	virtual void FindFilesRecursive(TArray<FString>& FileNames, const TCHAR* StartDirectory, const TCHAR* Filename, bool Files, bool Directories, bool bClearFileNames = true) = 0;

	/**
	 * Calls Visitor with the path (Directory joined with the name) of each entry in the folder.
	 * Returns false when the folder cannot be read or the visitor returns false to stop.
	 */
	virtual bool IterateDirectory(const TCHAR* Directory, FDirectoryVisitorFunc Visitor) = 0;
	/** As IterateDirectory through every sub-folder, depth first. Linked folders are reported but not entered. */
	virtual bool IterateDirectoryRecursively(const TCHAR* Directory, FDirectoryVisitorFunc Visitor) = 0;

	/** The path relative to the working directory when it lies under it, otherwise the full path. */
	[[nodiscard]] virtual FString ConvertToRelativePath(const TCHAR* Filename) = 0;
	[[nodiscard]] virtual FString ConvertToAbsolutePathForExternalAppForRead(const TCHAR* Filename) = 0;
	[[nodiscard]] virtual FString ConvertToAbsolutePathForExternalAppForWrite(const TCHAR* Filename) = 0;
};
