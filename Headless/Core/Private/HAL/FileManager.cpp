#include "HAL/FileManager.h"

#include "Containers/StringConv.h"
#include "HAL/FileSystemPaths.h"
#include "Misc/Paths.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace UE::Core::Private
{
	fs::path ToFileSystemPath(const TCHAR* Path)
	{
		if (!Path)
		{
			return fs::path();
		}
		const FTCHARToUTF8 Utf8(Path);
		return fs::path(std::u8string(reinterpret_cast<const char8_t*>(Utf8.Get()), size_t(Utf8.Length())));
	}

	fs::path ToFileSystemPath(const FString& Path)
	{
		const FTCHARToUTF8 Utf8(*Path, Path.Len());
		return fs::path(std::u8string(reinterpret_cast<const char8_t*>(Utf8.Get()), size_t(Utf8.Length())));
	}

	FString FromFileSystemPath(const fs::path& Path)
	{
		const std::u8string Utf8 = Path.generic_u8string();
		const FUTF8ToTCHAR Converted(reinterpret_cast<const UTF8CHAR*>(Utf8.data()), int32(Utf8.size()));
		return FString::ConstructFromPtrSize(Converted.Get(), Converted.Length());
	}
}

using UE::Core::Private::FromFileSystemPath;
using UE::Core::Private::ToFileSystemPath;

namespace
{
	struct FDirectoryEntry
	{
		FString Name;
		bool bIsDirectory = false;
		bool bIsSymlink = false;
	};

	// An empty path names the working directory, as an empty argument does for the engine's
	// directory functions on this platform.
	fs::path DirectoryPath(const TCHAR* Directory)
	{
		fs::path Path = ToFileSystemPath(Directory);
		return Path.empty() ? fs::path(".") : Path;
	}

	/** The entries of one folder sorted by name, or false when it cannot be read. */
	bool ListDirectory(const TCHAR* Directory, std::vector<FDirectoryEntry>& OutEntries)
	{
		OutEntries.clear();
		std::error_code Error;
		fs::directory_iterator It(DirectoryPath(Directory), fs::directory_options::skip_permission_denied, Error);
		if (Error)
		{
			return false;
		}
		std::vector<std::pair<std::string, FDirectoryEntry>> Sorted;
		for (const fs::directory_iterator End; It != End; It.increment(Error))
		{
			if (Error)
			{
				return false;
			}
			const fs::directory_entry& Entry = *It;
			std::error_code StatusError;
			FDirectoryEntry Item;
			Item.bIsSymlink = Entry.is_symlink(StatusError);
			Item.bIsDirectory = Entry.is_directory(StatusError); // follows links
			Item.Name = FromFileSystemPath(Entry.path().filename());
			Sorted.emplace_back(Entry.path().filename().string(), std::move(Item));
		}
		std::sort(Sorted.begin(), Sorted.end(), [](const auto& A, const auto& B) { return A.first < B.first; });
		OutEntries.reserve(Sorted.size());
		for (auto& Pair : Sorted)
		{
			OutEntries.push_back(std::move(Pair.second));
		}
		return true;
	}

	bool IterateRecursively(const FString& Directory, IFileManager::FDirectoryVisitorFunc Visitor, int32 Depth)
	{
		// Links are not followed, so only a pathological tree could get this deep.
		constexpr int32 MaxDepth = 256;
		if (Depth > MaxDepth)
		{
			return false;
		}
		std::vector<FDirectoryEntry> Entries;
		if (!ListDirectory(*Directory, Entries))
		{
			return false;
		}
		for (const FDirectoryEntry& Entry : Entries)
		{
			const FString FullPath = FPaths::Combine(Directory, Entry.Name);
			if (!Visitor(*FullPath, Entry.bIsDirectory))
			{
				return false;
			}
			if (Entry.bIsDirectory && !Entry.bIsSymlink && !IterateRecursively(FullPath, Visitor, Depth + 1))
			{
				return false;
			}
		}
		return true;
	}

	/** "*" and "*.*" mean every entry; anything else is matched as a case-insensitive wildcard. */
	FString WildcardOf(const FString& Pattern)
	{
		return (Pattern == TEXT("*") || Pattern == TEXT("*.*")) ? FString(TEXT("*")) : Pattern;
	}

	void MakeOwnerWritable(const fs::path& Path)
	{
		std::error_code Error;
		fs::permissions(Path, fs::perms::owner_write, fs::perm_options::add, Error);
	}

	class FFileManagerGeneric final : public IFileManager
	{
	public:
		bool FileExists(const TCHAR* Filename) override
		{
			std::error_code Error;
			return Filename && *Filename && fs::is_regular_file(ToFileSystemPath(Filename), Error);
		}

		bool DirectoryExists(const TCHAR* InDirectory) override
		{
			std::error_code Error;
			return InDirectory && *InDirectory && fs::is_directory(ToFileSystemPath(InDirectory), Error);
		}

		int64 FileSize(const TCHAR* Filename) override
		{
			if (!FileExists(Filename))
			{
				return -1;
			}
			std::error_code Error;
			const uintmax_t Size = fs::file_size(ToFileSystemPath(Filename), Error);
			return Error ? -1 : int64(Size);
		}

		bool IsReadOnly(const TCHAR* Filename) override
		{
			if (!FileExists(Filename))
			{
				return false;
			}
			std::error_code Error;
			const fs::file_status Status = fs::status(ToFileSystemPath(Filename), Error);
			return !Error && (Status.permissions() & fs::perms::owner_write) == fs::perms::none;
		}

		bool MakeDirectory(const TCHAR* Path, bool Tree) override
		{
			if (!Path || !*Path)
			{
				return false;
			}
			const fs::path Target = ToFileSystemPath(Path);
			std::error_code Error;
			if (fs::is_directory(Target, Error))
			{
				return true;
			}
			if (Tree)
			{
				fs::create_directories(Target, Error);
			}
			else
			{
				fs::create_directory(Target, Error);
			}
			return fs::is_directory(Target, Error);
		}

		bool DeleteDirectory(const TCHAR* Path, bool RequireExists, bool Tree) override
		{
			if (!Path || !*Path)
			{
				return false;
			}
			const fs::path Target = ToFileSystemPath(Path);
			std::error_code Error;
			if (!fs::is_directory(Target, Error))
			{
				return !RequireExists;
			}
			if (Tree)
			{
				fs::remove_all(Target, Error);
			}
			else
			{
				fs::remove(Target, Error);
			}
			return !fs::exists(fs::symlink_status(Target, Error));
		}

		bool Delete(const TCHAR* Filename, bool RequireExists, bool EvenReadOnly, bool Quiet) override
		{
			if (!FileExists(Filename))
			{
				return !RequireExists;
			}
			const fs::path Target = ToFileSystemPath(Filename);
			if (EvenReadOnly)
			{
				MakeOwnerWritable(Target);
			}
			std::error_code Error;
			return fs::remove(Target, Error) && !Error;
		}

		bool Move(const TCHAR* Dest, const TCHAR* Src, bool Replace, bool EvenIfReadOnly, bool Attributes, bool bDoNotRetryOrError) override
		{
			if (!Dest || !Src || !*Dest || !*Src)
			{
				return false;
			}
			const fs::path SourcePath = ToFileSystemPath(Src);
			const fs::path DestPath = ToFileSystemPath(Dest);
			std::error_code Error;
			if (!fs::exists(fs::symlink_status(SourcePath, Error)))
			{
				return false;
			}
			if (fs::exists(fs::symlink_status(DestPath, Error)))
			{
				if (!Replace || fs::is_directory(DestPath, Error))
				{
					return false;
				}
				if (EvenIfReadOnly)
				{
					MakeOwnerWritable(DestPath);
				}
			}
			MakeDirectory(*FPaths::GetPath(FString(Dest)), true);
			// rename(2) replaces an existing file in one step, which is what keeps Move atomic.
			fs::rename(SourcePath, DestPath, Error);
			return !Error;
		}

		uint32 Copy(const TCHAR* Dest, const TCHAR* Src, bool Replace, bool EvenIfReadOnly, bool Attributes) override
		{
			if (!Dest || !Src || !*Dest || !*Src || !FileExists(Src))
			{
				return COPY_Fail;
			}
			if (FPaths::ConvertRelativePathToFull(FString(Dest)) == FPaths::ConvertRelativePathToFull(FString(Src)))
			{
				return COPY_Fail;
			}
			if (!Replace && FileExists(Dest))
			{
				return COPY_Fail;
			}
			const fs::path DestPath = ToFileSystemPath(Dest);
			if (EvenIfReadOnly && FileExists(Dest))
			{
				MakeOwnerWritable(DestPath);
			}
			MakeDirectory(*FPaths::GetPath(FString(Dest)), true);
			std::error_code Error;
			fs::copy_file(ToFileSystemPath(Src), DestPath, fs::copy_options::overwrite_existing, Error);
			return Error ? COPY_Fail : COPY_OK;
		}

		void FindFiles(TArray<FString>& Result, const TCHAR* InFilename, bool Files, bool Directories) override
		{
			if (!InFilename)
			{
				return;
			}
			FString Filename(InFilename);
			FPaths::NormalizeFilename(Filename);
			const FString Wildcard = WildcardOf(FPaths::GetCleanFilename(Filename));
			const FString Folder = FPaths::GetPath(Filename);

			std::vector<FDirectoryEntry> Entries;
			if (!ListDirectory(*Folder, Entries))
			{
				return;
			}
			for (const FDirectoryEntry& Entry : Entries)
			{
				if (((Entry.bIsDirectory && Directories) || (!Entry.bIsDirectory && Files)) && Entry.Name.MatchesWildcard(Wildcard))
				{
					Result.Add(Entry.Name);
				}
			}
		}

		void FindFiles(TArray<FString>& FoundFiles, const TCHAR* Directory, const TCHAR* FileExtension) override
		{
			if (!Directory || !*Directory)
			{
				return;
			}
			FString RootDir(Directory);
			FPaths::NormalizeDirectoryName(RootDir);

			FString Extension = FileExtension ? FString(FileExtension) : FString();
			if (!Extension.Contains(TEXT("*")))
			{
				if (Extension.IsEmpty())
				{
					Extension = TEXT("*.*");
				}
				else
				{
					Extension = (Extension[0] == TEXT('.') ? FString(TEXT("*")) : FString(TEXT("*."))) + Extension;
				}
			}
			FindFiles(FoundFiles, *(RootDir + TEXT("/") + Extension), true, false);
		}

		void FindFilesRecursive(TArray<FString>& FileNames, const TCHAR* StartDirectory, const TCHAR* InFilename, bool Files, bool Directories, bool bClearFileNames) override
		{
			if (bClearFileNames)
			{
				FileNames.Empty();
			}
			if (!StartDirectory || !InFilename)
			{
				return;
			}
			FString Filename(InFilename);
			FPaths::NormalizeFilename(Filename);
			const FString Wildcard = WildcardOf(FPaths::GetCleanFilename(Filename));
			IterateRecursively(FString(StartDirectory), [&](const TCHAR* Path, bool bIsDirectory)
				{
					if ((bIsDirectory && Directories) || (!bIsDirectory && Files))
					{
						if (FPaths::GetCleanFilename(FString(Path)).MatchesWildcard(Wildcard))
						{
							FileNames.Add(FString(Path));
						}
					}
					return true;
				}, 0);
		}

		bool IterateDirectory(const TCHAR* Directory, FDirectoryVisitorFunc Visitor) override
		{
			std::vector<FDirectoryEntry> Entries;
			if (!Directory || !ListDirectory(Directory, Entries))
			{
				return false;
			}
			const FString Folder(Directory);
			for (const FDirectoryEntry& Entry : Entries)
			{
				if (!Visitor(*FPaths::Combine(Folder, Entry.Name), Entry.bIsDirectory))
				{
					return false;
				}
			}
			return true;
		}

		bool IterateDirectoryRecursively(const TCHAR* Directory, FDirectoryVisitorFunc Visitor) override
		{
			return Directory && IterateRecursively(FString(Directory), Visitor, 0);
		}

		FString ConvertToRelativePath(const TCHAR* Filename) override
		{
			const FString Full = FPaths::ConvertRelativePathToFull(FString(Filename ? Filename : TEXT("")));
			const FString Base = FPaths::LaunchDir();
			if (!Base.IsEmpty() && FPaths::IsUnderDirectory(Full, Base))
			{
				FString Relative = Full;
				if (FPaths::MakePathRelativeTo(Relative, *Base))
				{
					return Relative;
				}
			}
			return Full;
		}

		FString ConvertToAbsolutePathForExternalAppForRead(const TCHAR* Filename) override
		{
			return FPaths::ConvertRelativePathToFull(FString(Filename ? Filename : TEXT("")));
		}

		FString ConvertToAbsolutePathForExternalAppForWrite(const TCHAR* Filename) override
		{
			return FPaths::ConvertRelativePathToFull(FString(Filename ? Filename : TEXT("")));
		}
	};
}

IFileManager& IFileManager::Get()
{
	static FFileManagerGeneric Singleton;
	return Singleton;
}
