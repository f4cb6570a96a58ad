#pragma once

#include "CoreMinimal.h"

#include <filesystem>

namespace UE::CoreUObject::Private
{
	/** An engine path as a file-system path (UTF-8), and back with '/' separators. */
	std::filesystem::path ToFileSystemPath(const FString& Path);
	FString FromFileSystemPath(const std::filesystem::path& Path);
}
