#include "Headless/HeadlessProject.h"

#include "Containers/StringConv.h"
#include "HAL/FileManager.h"
#include "Interfaces/IPluginManager.h"
#include "Interfaces/IProjectManager.h"
#include "Misc/Paths.h"
#include "ProjectsPrivate.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
	using UE::Projects::Private::ToFileSystemPath;

	FString ErrnoText(int Error)
	{
		return FString(UTF8_TO_TCHAR(std::strerror(Error)));
	}

	/**
	 * The project's write lock. The lock file holds the owner's process id for people and error
	 * messages; the exclusion itself is an flock on it, which the system drops when the owner
	 * dies however it dies. A lock file left by a dead process is therefore simply taken over.
	 */
	class FProjectLock
	{
	public:
		bool Acquire(const FString& LockFile, FString& OutError)
		{
			if (Descriptor >= 0 && LockFile.Equals(HeldFile, ESearchCase::CaseSensitive))
			{
				return true;
			}
			const std::string NativePath = ToFileSystemPath(LockFile).string();
			// A few rounds cover a holder that deletes its lock file between our open and our flock.
			for (int32 Attempt = 0; Attempt < 4; ++Attempt)
			{
				const int File = ::open(NativePath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
				if (File < 0)
				{
					OutError = FString::Printf(TEXT("Cannot create the project lock file '%s': %s."), *LockFile, *ErrnoText(errno));
					return false;
				}
				if (::flock(File, LOCK_EX | LOCK_NB) != 0)
				{
					const int Error = errno;
					const FString Owner = ReadOwner(File);
					::close(File);
					if (Error == EWOULDBLOCK)
					{
						OutError = FString::Printf(TEXT("The project is already open for writing by process %s (lock file '%s'). Close that process before opening the project again."),
							Owner.IsEmpty() ? TEXT("(unknown)") : *Owner, *LockFile);
					}
					else
					{
						OutError = FString::Printf(TEXT("Cannot lock the project lock file '%s': %s."), *LockFile, *ErrnoText(Error));
					}
					return false;
				}
				if (!IsStillAtPath(File, NativePath))
				{
					::close(File);
					continue;
				}
				const std::string Content = std::to_string(long(::getpid())) + "\n";
				if (::ftruncate(File, 0) != 0 || ::pwrite(File, Content.data(), Content.size(), 0) != ssize_t(Content.size()) || ::fsync(File) != 0)
				{
					const int Error = errno;
					::close(File);
					OutError = FString::Printf(TEXT("Cannot write the project lock file '%s': %s."), *LockFile, *ErrnoText(Error));
					return false;
				}
				Release();
				Descriptor = File;
				HeldFile = LockFile;
				RegisterExitRelease();
				return true;
			}
			OutError = FString::Printf(TEXT("Cannot take the project lock file '%s': it keeps being replaced by another process."), *LockFile);
			return false;
		}

		void Release()
		{
			if (Descriptor < 0)
			{
				return;
			}
			// Delete while still holding the lock, so the file removed is never someone else's.
			::unlink(ToFileSystemPath(HeldFile).string().c_str());
			::close(Descriptor);
			Descriptor = -1;
			HeldFile.Reset();
		}

		bool IsHeld() const { return Descriptor >= 0; }

	private:
		static FString ReadOwner(int File)
		{
			char Buffer[32] = {};
			const ssize_t Read = ::pread(File, Buffer, sizeof(Buffer) - 1, 0);
			FString Owner;
			for (ssize_t Index = 0; Index < Read && Buffer[Index] >= '0' && Buffer[Index] <= '9'; ++Index)
			{
				Owner.AppendChar(TCHAR(Buffer[Index]));
			}
			return Owner;
		}

		static bool IsStillAtPath(int File, const std::string& NativePath)
		{
			struct stat Opened = {};
			struct stat Named = {};
			return ::fstat(File, &Opened) == 0 && ::stat(NativePath.c_str(), &Named) == 0
				&& Opened.st_dev == Named.st_dev && Opened.st_ino == Named.st_ino;
		}

		static void RegisterExitRelease();

		int Descriptor = -1;
		FString HeldFile;
	};

	FProjectLock& GetProjectLock()
	{
		static FProjectLock* Lock = new FProjectLock();
		return *Lock;
	}

	void FProjectLock::RegisterExitRelease()
	{
		static bool bRegistered = false;
		if (!bRegistered)
		{
			bRegistered = true;
			std::atexit([] { GetProjectLock().Release(); });
		}
	}

	/** The /Game/ mount of the open project, remembered so closing can unmount exactly it. */
	FString& MountedGameContentDir()
	{
		static FString Dir;
		return Dir;
	}

	void UnmountProjectContent()
	{
		UE::Projects::Private::ForgetAllPlugins();
		if (!MountedGameContentDir().IsEmpty())
		{
			UE::Projects::Private::UnRegisterMountPoint(TEXT("/Game/"), MountedGameContentDir());
			MountedGameContentDir().Reset();
		}
	}
}

namespace UE::Headless
{
	const TCHAR* GetProjectLockFileName()
	{
		return TEXT(".calvorn-lock");
	}

	bool OpenProject(const FString& UProjectPath, FString& OutError, TArray<FString>* OutWarnings)
	{
		OutError.Reset();
		if (UProjectPath.IsEmpty())
		{
			OutError = TEXT("No project file was given.");
			return false;
		}
		const FString ProjectFile = FPaths::ConvertRelativePathToFull(UProjectPath);
		if (!ProjectFile.EndsWith(TEXT(".uproject"), ESearchCase::IgnoreCase))
		{
			OutError = FString::Printf(TEXT("'%s' is not a project file: its name must end in .uproject."), *ProjectFile);
			return false;
		}
		if (IFileManager::Get().DirectoryExists(*ProjectFile))
		{
			OutError = FString::Printf(TEXT("'%s' is a folder, not a project file."), *ProjectFile);
			return false;
		}
		if (!IFileManager::Get().FileExists(*ProjectFile))
		{
			OutError = FString::Printf(TEXT("Project file '%s' does not exist."), *ProjectFile);
			return false;
		}

		// Read and lock before touching any state, so a refused project leaves the open one as it was.
		FProjectDescriptor Descriptor;
		FText Reason;
		if (!Descriptor.Load(ProjectFile, Reason))
		{
			OutError = Reason.ToString();
			return false;
		}
		const FString ProjectDir = FPaths::GetPath(ProjectFile);
		const FString SavedDir = ProjectDir / TEXT("Saved");
		if (!IFileManager::Get().MakeDirectory(*SavedDir, true))
		{
			OutError = FString::Printf(TEXT("Cannot create the project's Saved folder '%s'."), *SavedDir);
			return false;
		}
		// Taking the new lock releases the lock of a project opened before, only once it succeeded.
		if (!GetProjectLock().Acquire(SavedDir / GetProjectLockFileName(), OutError))
		{
			return false;
		}

		UnmountProjectContent();
		if (!IProjectManager::Get().LoadProjectFile(ProjectFile))
		{
			// The file changed between the two reads; report it as any unreadable project.
			OutError = IProjectManager::Get().GetLastLoadFailureReason().ToString();
			CloseProject();
			return false;
		}
		FPaths::SetProjectFilePath(ProjectFile);
		MountedGameContentDir() = FPaths::ProjectContentDir();
		UE::Projects::Private::RegisterMountPoint(TEXT("/Game/"), MountedGameContentDir());
		IPluginManager::Get().RefreshPluginsList();

		TArray<FString> Warnings = UE::Projects::Private::TakePluginWarnings();
		if (OutWarnings)
		{
			*OutWarnings = MoveTemp(Warnings);
		}
		return true;
	}

	void CloseProject()
	{
		UnmountProjectContent();
		IProjectManager::Get().ClearCurrentProject();
		FPaths::SetProjectFilePath(FString());
		GetProjectLock().Release();
	}

	bool IsProjectOpen()
	{
		return GetProjectLock().IsHeld() && FPaths::IsProjectFilePathSet();
	}
}
