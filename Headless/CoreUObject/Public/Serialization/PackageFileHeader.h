#pragma once

#include "CoreMinimal.h"

/**
 * The header of a headless package file (.uasset). Package files are UTF-8 JSON documents:
 *
 *   {"format":"calvorn-package","version":1,"package":"/Game/Doors/BP_Door","assets":[...],"dependencies":[...],
 *   	"objects": [
 *   		...
 *   	]
 *   }
 *
 * The first line holds, in compact form, everything the asset registry needs: the package name,
 * the package's assets (name, class path, registry tags) and the packages it references. That line
 * alone becomes a complete JSON object once its trailing ',' is replaced by '}', so a scan reads a
 * few hundred bytes per file and never parses the objects. The rest of the document is the objects,
 * pretty-printed so that files diff well. Headless only.
 */
namespace UE::Headless
{
	/** The value of the "format" field. */
	COREUOBJECT_API const TCHAR* GetPackageFileFormatName();

	/** The newest version this program writes and reads. */
	constexpr int32 PackageFileFormatVersion = 1;

	/** One asset of a package as the header lists it. */
	struct FPackageFileAssetEntry
	{
		/** The asset object's name ("BP_Door"). */
		FName ObjectName;
		/** The path of its class ("/Script/Engine.Blueprint"). */
		FString ClassPath;
		/** Registry tags, sorted by name. */
		TArray<TPair<FName, FString>> Tags;
	};

	struct FPackageFileHeader
	{
		int32 Version = PackageFileFormatVersion;
		/** The package name written in the file (the file's location is what counts when loading). */
		FString PackageName;
		TArray<FPackageFileAssetEntry> Assets;
		/** Long names of the packages this one references, sorted, without duplicates. */
		TArray<FName> Dependencies;

		/** The header as the compact first line of a package file, ending with ',' (no line break). */
		COREUOBJECT_API FString ToHeaderLine() const;

		/**
		 * Reads a header line (with or without its trailing ','). False with a reason when it is not a
		 * package header or comes from a newer version.
		 */
		COREUOBJECT_API bool FromHeaderLine(const FString& Line, FString& OutReason);
	};

	/**
	 * Reads only the header of a package file: the bytes up to the first line break. False, with a
	 * reason that names the file, when it cannot be read or does not start with a package header.
	 */
	COREUOBJECT_API bool ReadPackageFileHeader(const FString& Filename, FPackageFileHeader& OutHeader, FString& OutError);
}
