#pragma once

#include "CoreMinimal.h"
#include "Headless/Core/StringTestUtils.h"
#include "Misc/FileHelper.h"
#include "Misc/PackageName.h"
#include "Misc/Paths.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

/**
 * A temporary folder whose Content/ is mounted as a package root (default /Game/) for the length
 * of a test; unmounted and deleted afterwards.
 */
class FTempContentFolder
{
public:
	explicit FTempContentFolder(const TCHAR* InRootPath = TEXT("/Game/"))
		: RootPath(InRootPath)
	{
		std::string Template = (std::filesystem::temp_directory_path() / "calvorn-content-XXXXXX").string();
		EXPECT_NE(::mkdtemp(Template.data()), nullptr);
		Folder = FString(UTF8_TO_TCHAR(Template.c_str()));
		std::filesystem::create_directories(Template + "/Content");
		FPackageName::RegisterMountPoint(RootPath, GetContentDir() + TEXT("/"));
	}

	~FTempContentFolder()
	{
		FPackageName::UnRegisterMountPoint(RootPath, GetContentDir() + TEXT("/"));
		std::error_code Error;
		for (const auto& Entry : std::filesystem::recursive_directory_iterator(Native(Folder), Error))
		{
			std::filesystem::permissions(Entry.path(), std::filesystem::perms::owner_all, std::filesystem::perm_options::add, Error);
		}
		std::filesystem::permissions(Native(Folder), std::filesystem::perms::owner_all, std::filesystem::perm_options::add, Error);
		std::filesystem::remove_all(Native(Folder), Error);
	}

	FTempContentFolder(const FTempContentFolder&) = delete;
	FTempContentFolder& operator=(const FTempContentFolder&) = delete;

	FString GetFolder() const { return Folder; }
	FString GetContentDir() const { return Folder / TEXT("Content"); }
	FString Content(const FString& Relative) const { return GetContentDir() / Relative; }

	void WriteFile(const FString& FullPath, const FString& Text) const
	{
		ASSERT_TRUE(FFileHelper::SaveStringToFile(Text, *FullPath, FFileHelper::EEncodingOptions::ForceUTF8WithoutBOM));
	}

	static std::filesystem::path Native(const FString& Path) { return std::filesystem::path(U8(Path)); }

private:
	FString RootPath;
	FString Folder;
};
