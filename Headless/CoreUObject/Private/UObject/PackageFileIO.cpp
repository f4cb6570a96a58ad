#include "UObject/SavePackage.h"

#include "Containers/StringConv.h"
#include "HAL/FileManager.h"
#include "Misc/PackageNamePrivate.h"
#include "Misc/Paths.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
	std::atomic<UE::Headless::EPackageWriteFault> InjectedFault{UE::Headless::EPackageWriteFault::None};

	FString& LastPackageError()
	{
		thread_local FString Error;
		return Error;
	}

	FString ErrnoText(int Error)
	{
		return FString(UTF8_TO_TCHAR(std::strerror(Error)));
	}

	bool IsFaultInjected(UE::Headless::EPackageWriteFault Step)
	{
		return InjectedFault.load() == Step;
	}

	/** Writes everything, resuming after partial writes and interruptions. */
	bool WriteAll(int File, const uint8* Data, size_t Size)
	{
		while (Size > 0)
		{
			const ssize_t Written = ::write(File, Data, Size);
			if (Written < 0)
			{
				if (errno == EINTR)
				{
					continue;
				}
				return false;
			}
			Data += Written;
			Size -= size_t(Written);
		}
		return true;
	}
}

namespace UE::Headless
{
	const FString& GetLastPackageError()
	{
		return LastPackageError();
	}

	void SetLastPackageError(const FString& Error)
	{
		LastPackageError() = Error;
	}

	FOnPackageFileSaved& OnPackageFileSaved()
	{
		static FOnPackageFileSaved Event;
		return Event;
	}

	void SetPackageWriteFaultForTesting(EPackageWriteFault Fault)
	{
		InjectedFault.store(Fault);
	}

	bool WriteFileAtomically(const FString& Filename, const TArray<uint8>& Bytes, FString& OutError)
	{
		using UE::CoreUObject::Private::ToFileSystemPath;

		const FString Folder = FPaths::GetPath(Filename);
		if (Folder.IsEmpty() || !IFileManager::Get().MakeDirectory(*Folder, true))
		{
			OutError = FString::Printf(TEXT("Cannot save '%s': its folder '%s' cannot be created."), *Filename, *Folder);
			return false;
		}
		if (IFileManager::Get().DirectoryExists(*Filename))
		{
			OutError = FString::Printf(TEXT("Cannot save '%s': a folder of that name is in the way."), *Filename);
			return false;
		}
		if (IFileManager::Get().IsReadOnly(*Filename))
		{
			OutError = FString::Printf(TEXT("Cannot save '%s': the file is read-only."), *Filename);
			return false;
		}

		// Unique per process and call, so concurrent writers never share a temporary file. The name
		// does not end in a package extension, so scans never mistake it for a package.
		static std::atomic<uint32> Counter{0};
		const FString Temporary = FString::Printf(TEXT("%s.%d-%u.saving"), *Filename, int32(::getpid()), Counter.fetch_add(1));
		const std::string NativeTemporary = ToFileSystemPath(Temporary).string();
		const std::string NativeTarget = ToFileSystemPath(Filename).string();

		auto Fail = [&](const TCHAR* Step, int Error)
		{
			::unlink(NativeTemporary.c_str());
			OutError = FString::Printf(TEXT("Cannot save '%s': %s failed (%s). The file on disk was left as it was."), *Filename, Step, *ErrnoText(Error));
			return false;
		};

		const int File = IsFaultInjected(EPackageWriteFault::CreateTemporaryFile) ? -1 : ::open(NativeTemporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
		if (File < 0)
		{
			const int Error = IsFaultInjected(EPackageWriteFault::CreateTemporaryFile) ? EACCES : errno;
			OutError = FString::Printf(TEXT("Cannot save '%s': creating the temporary file '%s' failed (%s). The file on disk was left as it was."), *Filename, *Temporary, *ErrnoText(Error));
			return false;
		}
		// Half of the bytes reach the temporary file before an injected write failure, as a full disk would leave it.
		const bool bWriteFault = IsFaultInjected(EPackageWriteFault::WriteTemporaryFile);
		const size_t BytesToWrite = bWriteFault ? size_t(Bytes.Num()) / 2 : size_t(Bytes.Num());
		if (!WriteAll(File, Bytes.GetData(), BytesToWrite) || bWriteFault)
		{
			const int Error = bWriteFault ? ENOSPC : errno;
			::close(File);
			return Fail(TEXT("writing the temporary file"), Error);
		}
		if (IsFaultInjected(EPackageWriteFault::FlushTemporaryFile) || ::fsync(File) != 0)
		{
			const int Error = IsFaultInjected(EPackageWriteFault::FlushTemporaryFile) ? EIO : errno;
			::close(File);
			return Fail(TEXT("flushing the temporary file"), Error);
		}
		if (::close(File) != 0)
		{
			return Fail(TEXT("closing the temporary file"), errno);
		}
		if (IsFaultInjected(EPackageWriteFault::RenameOverTarget) || ::rename(NativeTemporary.c_str(), NativeTarget.c_str()) != 0)
		{
			return Fail(TEXT("replacing the file"), IsFaultInjected(EPackageWriteFault::RenameOverTarget) ? EXDEV : errno);
		}
		// The rename is durable only once the folder itself is flushed.
		const int Directory = ::open(ToFileSystemPath(Folder).string().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
		if (Directory >= 0)
		{
			::fsync(Directory);
			::close(Directory);
		}
		return true;
	}
}
