#include "HostSession.h"

#include "CalvornToolkitModule.h"
#include "HostLog.h"
#include "IToolExecutor.h"
#include "SampleProject.h"

#include "Headless/HeadlessProject.h"
#include "HAL/FileManager.h"
#include "Misc/Paths.h"
#include "Modules/ModuleManager.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace Calvorn::Host
{
	bool ResolveProjectFile(const FString& Path, FString& OutProjectFile, FString& OutError)
	{
		const FString FullPath = FPaths::ConvertRelativePathToFull(Path);
		IFileManager& FileManager = IFileManager::Get();
		if (FileManager.FileExists(*FullPath))
		{
			OutProjectFile = FullPath;
			return true;
		}
		if (!FileManager.DirectoryExists(*FullPath))
		{
			OutError = FString::Printf(TEXT("'%s' does not exist. Give a project folder or its .uproject file, or create the sample project with: calvorn-bp init-sample %s"), *FullPath, *Path);
			return false;
		}
		TArray<FString> ProjectFiles;
		FileManager.FindFiles(ProjectFiles, *FullPath, TEXT("uproject"));
		if (ProjectFiles.Num() == 0)
		{
			OutError = FString::Printf(TEXT("'%s' holds no .uproject file. To put the sample project there, run: calvorn-bp init-sample %s"), *FullPath, *Path);
			return false;
		}
		if (ProjectFiles.Num() > 1)
		{
			ProjectFiles.Sort();
			OutError = FString::Printf(TEXT("'%s' holds %d .uproject files (%s); give the one to open."), *FullPath, ProjectFiles.Num(), *FString::Join(ProjectFiles, TEXT(", ")));
			return false;
		}
		OutProjectFile = FPaths::Combine(FullPath, ProjectFiles[0]);
		return true;
	}

	FHostSession::~FHostSession()
	{
		Close();
	}

	const TArray<const TCHAR*>& FHostSession::GetToolModuleNames()
	{
		// The Blueprint tools join as soon as their module is linked into the program.
		static const TArray<const TCHAR*> Names = {TEXT("CalvornToolkit"), TEXT("CalvornToolkit_Blueprint")};
		return Names;
	}

	bool FHostSession::CreateTemporarySample(FString& OutProjectFile, FString& OutError)
	{
		const char* TempRoot = std::getenv("TMPDIR");
		std::string Template = std::string(TempRoot && *TempRoot ? TempRoot : "/tmp") + "/calvorn-sample-XXXXXX";
		if (!::mkdtemp(Template.data()))
		{
			OutError = FString::Printf(TEXT("Could not create a temporary folder for the sample project from '%s'."), *UTF8ToFString(Template));
			return false;
		}
		TemporaryFolder = UTF8ToFString(Template);
		if (!WriteSampleProject(TemporaryFolder, OutProjectFile, OutError))
		{
			RemoveTemporarySample();
			return false;
		}
		return true;
	}

	void FHostSession::RemoveTemporarySample()
	{
		if (TemporaryFolder.IsEmpty())
		{
			return;
		}
		// remove_all never follows links, so nothing outside the folder we made can be touched.
		std::error_code Error;
		std::filesystem::remove_all(std::filesystem::path(FStringToUTF8(TemporaryFolder)), Error);
		if (Error)
		{
			HostLogWarning(FString::Printf(TEXT("could not remove the temporary sample project '%s': %s"), *TemporaryFolder, *UTF8ToFString(Error.message())));
		}
		TemporaryFolder.Reset();
	}

	bool FHostSession::Open(const FString& ProjectPath, FString& OutError)
	{
		Close();

		FString UProjectFile;
		if (ProjectPath.IsEmpty())
		{
			if (!CreateTemporarySample(UProjectFile, OutError))
			{
				return false;
			}
			HostLogDisplay(FString::Printf(TEXT("using the sample project in %s (removed at exit; keep your work with --project DIR, see init-sample)"), *TemporaryFolder));
		}
		else if (!ResolveProjectFile(ProjectPath, UProjectFile, OutError))
		{
			return false;
		}

		TArray<FString> Warnings;
		FString OpenError;
		if (!UE::Headless::OpenProject(UProjectFile, OpenError, &Warnings))
		{
			OutError = OpenError;
			RemoveTemporarySample();
			return false;
		}
		bProjectOpen = true;
		ProjectFile = UProjectFile;
		for (const FString& Warning : Warnings)
		{
			HostLogWarning(Warning);
		}

		FModuleManager& ModuleManager = FModuleManager::Get();
		for (const TCHAR* ModuleName : GetToolModuleNames())
		{
			if (!ModuleManager.ModuleExists(ModuleName))
			{
				HostLogVerbose(FString::Printf(TEXT("module %s is not part of this build"), ModuleName));
				continue;
			}
			if (!ModuleManager.LoadModule(FName(ModuleName)))
			{
				OutError = FString::Printf(TEXT("The module %s could not be started."), ModuleName);
				Close();
				return false;
			}
			StartedModules.Add(FName(ModuleName));
		}

		Executor = FCalvornToolkitModule::GetToolExecutor();
		if (!Executor.IsValid())
		{
			OutError = TEXT("The CalvornToolkit module did not provide a tool executor.");
			Close();
			return false;
		}
		return true;
	}

	void FHostSession::Close()
	{
		Executor.Reset();
		FModuleManager& ModuleManager = FModuleManager::Get();
		// The newest module first: a tool module unregisters from the executor before it goes away.
		for (int32 Index = StartedModules.Num() - 1; Index >= 0; --Index)
		{
			ModuleManager.UnloadModule(StartedModules[Index]);
		}
		StartedModules.Reset();
		if (bProjectOpen)
		{
			UE::Headless::CloseProject();
			bProjectOpen = false;
		}
		ProjectFile.Reset();
		RemoveTemporarySample();
	}
}
