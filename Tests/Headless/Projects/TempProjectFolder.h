#pragma once

#include "CoreMinimal.h"
#include "Headless/Core/StringTestUtils.h"
#include "Headless/HeadlessProject.h"
#include "Misc/FileHelper.h"
#include "Misc/Paths.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

/**
 * A project folder in the system's temporary folder, deleted (and closed, when open) at the end of
 * the test. Shared by the Projects, CoreUObject and AssetRegistry suites.
 */
class FTempProjectFolder
{
public:
	explicit FTempProjectFolder(const TCHAR* ProjectName = TEXT("TestGame"), const TCHAR* UProjectText = nullptr)
		: Name(ProjectName)
	{
		std::string Template = (std::filesystem::temp_directory_path() / "calvorn-project-XXXXXX").string();
		const char* Created = ::mkdtemp(Template.data());
		EXPECT_NE(Created, nullptr);
		Root = FString(UTF8_TO_TCHAR(Template.c_str()));
		WriteFile(Name + TEXT(".uproject"), UProjectText ? FString(UProjectText) : FString(TEXT("{\n\t\"FileVersion\": 3,\n\t\"EngineAssociation\": \"5.7\"\n}\n")));
		std::filesystem::create_directories(Template + "/Content");
	}

	~FTempProjectFolder()
	{
		if (UE::Headless::IsProjectOpen() && FPaths::IsSamePath(FPaths::GetProjectFilePath(), GetProjectFile()))
		{
			UE::Headless::CloseProject();
		}
		std::error_code Error;
		// Undo read-only folders a test may have left, or the folder cannot be deleted.
		for (const auto& Entry : std::filesystem::recursive_directory_iterator(ToNative(Root), Error))
		{
			std::filesystem::permissions(Entry.path(), std::filesystem::perms::owner_all, std::filesystem::perm_options::add, Error);
		}
		std::filesystem::remove_all(ToNative(Root), Error);
	}

	FTempProjectFolder(const FTempProjectFolder&) = delete;
	FTempProjectFolder& operator=(const FTempProjectFolder&) = delete;

	FString GetRoot() const { return Root; }
	FString GetProjectFile() const { return Root / (Name + TEXT(".uproject")); }
	FString GetContentDir() const { return Root / TEXT("Content"); }
	FString Path(const FString& Relative) const { return Root / Relative; }

	/** Writes a UTF-8 file under the project folder, creating its folders. */
	void WriteFile(const FString& Relative, const FString& Text) const
	{
		ASSERT_TRUE(FFileHelper::SaveStringToFile(Text, *(Root / Relative), FFileHelper::EEncodingOptions::ForceUTF8WithoutBOM));
	}

	/** Adds Plugins/<Folder>/<Name>.uplugin with the given JSON. */
	void AddPlugin(const FString& Folder, const FString& PluginName, const FString& Json) const
	{
		WriteFile(TEXT("Plugins") / Folder / (PluginName + TEXT(".uplugin")), Json);
	}

	/** Opens the project, failing the test with the reason when it cannot. */
	void Open(TArray<FString>* OutWarnings = nullptr) const
	{
		FString Error;
		ASSERT_TRUE(UE::Headless::OpenProject(GetProjectFile(), Error, OutWarnings)) << TCHAR_TO_UTF8(*Error);
	}

	static std::filesystem::path ToNative(const FString& Path)
	{
		return std::filesystem::path(std::string(TCHAR_TO_UTF8(*Path)));
	}

private:
	FString Name;
	FString Root;
};
