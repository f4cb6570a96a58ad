#pragma once

#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"
#include "UObject/Package.h"

/**
 * How UPackage::Save writes a package (the engine's FSavePackageArgs, without the cooking options).
 *
 * Headless package files are deterministic UTF-8 text (see Serialization/PackageFileHeader.h) written
 * atomically: into a temporary file beside the target, flushed to disk, then renamed over it. A
 * failed save leaves the old file as it was. A package whose file failed to load is never saved
 * over that file, nor is a file saved over when the package was not loaded from it.
 */
struct FSavePackageArgs
{
	/**
	 * The engine saves the objects with these flags that sit directly in the package, and what they
	 * reference. The headless writer saves every object of the package that is not transient, so the
	 * field is kept for the engine's signature only.
	 */
	EObjectFlags TopLevelFlags = RF_Standalone;
	/** ESaveFlags; SAVE_KeepDirty leaves the package dirty after a successful save. */
	uint32 SaveFlags = SAVE_None;
	/** Kept for the engine's signature; text files have no byte order and no slow-task UI. */
	bool bForceByteSwapping = false;
	bool bWarnOfLongFilename = true;
	bool bSlowTask = true;
};

namespace UE::Headless
{
	/**
	 * Why the last UPackage::Save or LoadPackage call on this thread failed, naming the package and the
	 * file; empty after a success. Headless only: the engine writes this to its log.
	 */
	COREUOBJECT_API const FString& GetLastPackageError();

	/** Sets the text GetLastPackageError returns (used by the package reader and writer). */
	COREUOBJECT_API void SetLastPackageError(const FString& Error);

	/** Broadcast after a package file has been written, with the file and the package. */
	DECLARE_MULTICAST_DELEGATE_TwoParams(FOnPackageFileSaved, const FString& /* Filename */, UPackage* /* Package */);
	COREUOBJECT_API FOnPackageFileSaved& OnPackageFileSaved();

	/** A step of the atomic write that tests can make fail, to check that nothing is left half-written. */
	enum class EPackageWriteFault : uint8
	{
		None,
		CreateTemporaryFile,
		WriteTemporaryFile,
		FlushTemporaryFile,
		RenameOverTarget,
	};

	/** Makes the next package writes fail at that step (None to stop). For tests only. */
	COREUOBJECT_API void SetPackageWriteFaultForTesting(EPackageWriteFault Fault);

	/**
	 * Writes Bytes to Filename atomically: a temporary file in the same folder, written, flushed and
	 * renamed over the target, then the folder is flushed. Missing folders are made. On failure the
	 * target is untouched, the temporary file is removed and OutError names the file and the reason.
	 */
	COREUOBJECT_API bool WriteFileAtomically(const FString& Filename, const TArray<uint8>& Bytes, FString& OutError);
}
