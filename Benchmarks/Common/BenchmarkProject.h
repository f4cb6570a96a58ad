#pragma once

// A project in a temporary folder for a benchmark: opened on first use, with the catalogue loaded, and removed when
// the program exits.

#include "CoreMinimal.h"
#include "Headless/HeadlessProject.h"
#include "Misc/FileHelper.h"
#include "Misc/Paths.h"
#include "Modules/ModuleManager.h"

#include <cstdlib>
#include <filesystem>
#include <string>

namespace UE::Benchmarks
{
	class FBenchProject
	{
	public:
		static FBenchProject& Get()
		{
			static FBenchProject Project;
			return Project;
		}

		bool IsOpen() const { return bOpen; }
		const FString& GetError() const { return Error; }

		~FBenchProject()
		{
			UE::Headless::CloseProject();
			std::error_code Ignored;
			std::filesystem::remove_all(Root, Ignored);
		}

	private:
		FBenchProject()
		{
			std::string Template = (std::filesystem::temp_directory_path() / "calvorn-bench-XXXXXX").string();
			if (!::mkdtemp(Template.data()))
			{
				Error = TEXT("cannot make a temporary folder");
				return;
			}
			Root = Template;
			const FString RootDir(UTF8_TO_TCHAR(Template.c_str()));
			FFileHelper::SaveStringToFile(TEXT("{\"FileVersion\": 3}\n"), *(RootDir / TEXT("Bench.uproject")));
			bOpen = UE::Headless::OpenProject(RootDir / TEXT("Bench.uproject"), Error);
			FModuleManager::Get().LoadModuleChecked(TEXT("Catalogue"));
		}

		std::string Root;
		FString Error;
		bool bOpen = false;
	};
}
