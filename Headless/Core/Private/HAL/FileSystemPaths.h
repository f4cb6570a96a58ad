#pragma once

#include "CoreTypes.h"
#include "Containers/UnrealString.h"

#include <filesystem>

namespace UE::Core::Private
{
	/** The engine path as a std::filesystem path (UTF-8 on this platform). */
	std::filesystem::path ToFileSystemPath(const TCHAR* Path);
	std::filesystem::path ToFileSystemPath(const FString& Path);
	/** A std::filesystem path back as an engine path with '/' separators. */
	FString FromFileSystemPath(const std::filesystem::path& Path);
}
