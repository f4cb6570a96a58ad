#include "SampleProject.h"

#include "HAL/FileManager.h"
#include "Misc/FileHelper.h"
#include "Misc/Paths.h"

namespace Calvorn::Host
{
	namespace
	{
		// No "Plugins" list: the tools run in this program, not as a plug-in of the project, and a
		// project naming a plug-in it does not hold gets a warning at every start.
		constexpr const TCHAR* UProjectText = TEXT(R"({
	"FileVersion": 3,
	"EngineAssociation": "5.7",
	"Category": "Samples",
	"Description": "A Blueprint-only project for trying the Calvorn Blueprint tools without Unreal."
}
)");

		constexpr const TCHAR* DefaultGameText = TEXT(R"([/Script/EngineSettings.GeneralProjectSettings]
ProjectName=CalvornSample
Description=A Blueprint-only project for trying the Calvorn Blueprint tools without Unreal.
)");

		// There is no graph editor to bring forward in the headless editor.
		constexpr const TCHAR* DefaultEditorText = TEXT(R"([/Script/CalvornToolkit.CalvornSettings]
bFocusOnNewNodes=False
)");
	}

	const TArray<FSampleProjectFile>& GetSampleProjectFiles()
	{
		static const TArray<FSampleProjectFile> Files = {
			{TEXT("CalvornSample.uproject"), UProjectText},
			{TEXT("Config/DefaultGame.ini"), DefaultGameText},
			{TEXT("Config/DefaultEditor.ini"), DefaultEditorText},
		};
		return Files;
	}

	const TArray<const TCHAR*>& GetSampleProjectFolders()
	{
		static const TArray<const TCHAR*> Folders = {TEXT("Config"), TEXT("Content")};
		return Folders;
	}

	bool WriteSampleProject(const FString& Directory, FString& OutProjectFile, FString& OutError)
	{
		if (Directory.IsEmpty())
		{
			OutError = TEXT("No folder was given for the sample project.");
			return false;
		}
		const FString Root = FPaths::ConvertRelativePathToFull(Directory);
		IFileManager& FileManager = IFileManager::Get();
		if (FileManager.FileExists(*Root))
		{
			OutError = FString::Printf(TEXT("'%s' is a file; the sample project needs a folder."), *Root);
			return false;
		}
		if (FileManager.DirectoryExists(*Root))
		{
			bool bEmpty = true;
			FileManager.IterateDirectory(*Root, [&bEmpty](const TCHAR*, bool) {
				bEmpty = false;
				return false;
			});
			if (!bEmpty)
			{
				OutError = FString::Printf(TEXT("'%s' is not empty; the sample project is only written into a new or empty folder."), *Root);
				return false;
			}
		}
		else if (!FileManager.MakeDirectory(*Root, true))
		{
			OutError = FString::Printf(TEXT("Could not create the folder '%s'."), *Root);
			return false;
		}

		for (const TCHAR* Folder : GetSampleProjectFolders())
		{
			const FString Path = FPaths::Combine(Root, Folder);
			if (!FileManager.MakeDirectory(*Path, true))
			{
				OutError = FString::Printf(TEXT("Could not create the folder '%s'."), *Path);
				return false;
			}
		}
		for (const FSampleProjectFile& File : GetSampleProjectFiles())
		{
			const FString Path = FPaths::Combine(Root, File.RelativePath);
			if (!FileManager.MakeDirectory(*FPaths::GetPath(Path), true)
				|| !FFileHelper::SaveStringToFile(FString(File.Text), *Path, FFileHelper::EEncodingOptions::ForceUTF8WithoutBOM))
			{
				OutError = FString::Printf(TEXT("Could not write '%s'."), *Path);
				return false;
			}
		}
		OutProjectFile = FPaths::Combine(Root, FString(SampleProjectName) + TEXT(".uproject"));
		return true;
	}
}
