#include "HostTestSupport.h"
#include "CalvornSettings.h"
#include "UObject/Class.h"
#include "HostSession.h"
#include "SampleProject.h"

#include "Headless/HeadlessProject.h"
#include "Misc/FileHelper.h"
#include "Misc/Paths.h"

#include <filesystem>
#include <fstream>
#include <sstream>

using namespace Calvorn::Host;
using namespace HostTests;

namespace
{
	/** A fresh temporary folder, removed with everything in it at the end of the test. */
	class FTempFolder
	{
	public:
		FTempFolder()
		{
			std::string Template = (std::filesystem::temp_directory_path() / "calvorn-host-test-XXXXXX").string();
			EXPECT_NE(::mkdtemp(Template.data()), nullptr);
			Root = Template;
		}

		~FTempFolder()
		{
			std::error_code Error;
			std::filesystem::remove_all(Root, Error);
		}

		FString Path(const char* Relative = "") const { return UTF8ToFString((Root / Relative).string()); }

		std::filesystem::path Root;
	};

	std::string ReadBytes(const std::filesystem::path& File)
	{
		std::ifstream Stream(File, std::ios::binary);
		std::stringstream Buffer;
		Buffer << Stream.rdbuf();
		return Buffer.str();
	}

	TEST(SampleProject, WritesItsFilesByteForByte)
	{
		FTempFolder Folder;
		FString ProjectFile;
		FString Error;
		ASSERT_TRUE(WriteSampleProject(Folder.Path("Sample"), ProjectFile, Error)) << U8(Error);
		EXPECT_EQ(U8(ProjectFile), (Folder.Root / "Sample" / "CalvornSample.uproject").string());
		for (const FSampleProjectFile& File : GetSampleProjectFiles())
		{
			EXPECT_EQ(ReadBytes(Folder.Root / "Sample" / U8(File.RelativePath)), U8(File.Text)) << U8(File.RelativePath);
		}
		for (const TCHAR* SubFolder : GetSampleProjectFolders())
		{
			EXPECT_TRUE(std::filesystem::is_directory(Folder.Root / "Sample" / U8(SubFolder))) << U8(SubFolder);
		}
		// Nothing else: no stray files that would differ between runs.
		int32 FileCount = 0;
		for (const auto& Entry : std::filesystem::recursive_directory_iterator(Folder.Root / "Sample"))
		{
			FileCount += Entry.is_regular_file() ? 1 : 0;
		}
		EXPECT_EQ(FileCount, GetSampleProjectFiles().Num());
	}

	TEST(SampleProject, NeverWritesOverAnything)
	{
		FTempFolder Folder;
		FString ProjectFile;
		FString Error;
		ASSERT_TRUE(WriteSampleProject(Folder.Path("Sample"), ProjectFile, Error));
		std::ofstream(Folder.Root / "Sample" / "Config" / "DefaultEditor.ini") << "mine";
		std::ofstream(Folder.Root / "AFile") << "x";
		std::filesystem::create_directories(Folder.Root / "Busy" / "Content");

		const struct
		{
			FString Directory;
			std::string Error;
		} Cases[] = {
			{Folder.Path("Sample"), "' is not empty; the sample project is only written into a new or empty folder."},
			{Folder.Path("Busy"), "' is not empty; the sample project is only written into a new or empty folder."},
			{Folder.Path("AFile"), "' is a file; the sample project needs a folder."},
			{FString(), "No folder was given for the sample project."},
		};
		for (const auto& Case : Cases)
		{
			FString Unused;
			EXPECT_FALSE(WriteSampleProject(Case.Directory, Unused, Error));
			EXPECT_NE(U8(Error).find(Case.Error), std::string::npos) << U8(Error);
		}
		EXPECT_EQ(ReadBytes(Folder.Root / "Sample" / "Config" / "DefaultEditor.ini"), "mine");
		EXPECT_EQ(ReadBytes(Folder.Root / "AFile"), "x");
	}

	TEST(SampleProject, IsAProjectTheHeadlessEditorOpens)
	{
		FTempFolder Folder;
		FString ProjectFile;
		FString Error;
		ASSERT_TRUE(WriteSampleProject(Folder.Path(), ProjectFile, Error)) << U8(Error);
		TArray<FString> Warnings;
		ASSERT_TRUE(UE::Headless::OpenProject(ProjectFile, Error, &Warnings)) << U8(Error);
		EXPECT_EQ(Warnings.Num(), 0) << (Warnings.Num() ? U8(Warnings[0]) : std::string());
		EXPECT_EQ(U8(FPaths::ProjectContentDir()), (Folder.Root / "Content").string() + "/");
		UE::Headless::CloseProject();
	}

	TEST(HostProjectPath, FindsTheProjectFileOrSaysWhatToDo)
	{
		FTempFolder Folder;
		std::filesystem::create_directories(Folder.Root / "One");
		std::filesystem::create_directories(Folder.Root / "Two");
		std::filesystem::create_directories(Folder.Root / "None");
		std::ofstream(Folder.Root / "One" / "Game.uproject") << "{}";
		std::ofstream(Folder.Root / "Two" / "B.uproject") << "{}";
		std::ofstream(Folder.Root / "Two" / "A.uproject") << "{}";

		FString ProjectFile;
		FString Error;
		ASSERT_TRUE(ResolveProjectFile(Folder.Path("One"), ProjectFile, Error)) << U8(Error);
		EXPECT_EQ(U8(ProjectFile), (Folder.Root / "One" / "Game.uproject").string());
		ASSERT_TRUE(ResolveProjectFile(Folder.Path("One/Game.uproject"), ProjectFile, Error));
		EXPECT_EQ(U8(ProjectFile), (Folder.Root / "One" / "Game.uproject").string());

		EXPECT_FALSE(ResolveProjectFile(Folder.Path("Two"), ProjectFile, Error));
		EXPECT_NE(U8(Error).find("holds 2 .uproject files (A.uproject, B.uproject)"), std::string::npos) << U8(Error);
		EXPECT_FALSE(ResolveProjectFile(Folder.Path("None"), ProjectFile, Error));
		EXPECT_NE(U8(Error).find("holds no .uproject file. To put the sample project there, run: calvorn-bp init-sample "), std::string::npos) << U8(Error);
		EXPECT_FALSE(ResolveProjectFile(Folder.Path("Missing"), ProjectFile, Error));
		EXPECT_NE(U8(Error).find("does not exist"), std::string::npos) << U8(Error);
	}

	TEST(HostSession, RunsOnATemporarySampleAndRemovesIt)
	{
		std::filesystem::path SampleFolder;
		{
			FHostSession Session;
			FString Error;
			ASSERT_TRUE(Session.Open(FString(), Error)) << U8(Error);
			EXPECT_TRUE(Session.IsTemporarySample());
			ASSERT_TRUE(Session.GetExecutor().IsValid());
			EXPECT_TRUE(UE::Headless::IsProjectOpen());
			SampleFolder = std::filesystem::path(U8(Session.GetProjectFile())).parent_path();
			EXPECT_EQ(std::filesystem::path(U8(Session.GetProjectFile())).filename(), "CalvornSample.uproject");
			EXPECT_TRUE(std::filesystem::exists(SampleFolder / "Saved" / ".calvorn-lock"));
			// The toolkit read the sample's settings when it started.
			EXPECT_FALSE(GetDefault<UCalvornSettings>()->bFocusOnNewNodes);
			EXPECT_TRUE(FModuleManager::Get().IsModuleLoaded(TEXT("CalvornToolkit")));
		}
		EXPECT_FALSE(std::filesystem::exists(SampleFolder)) << SampleFolder;
		EXPECT_FALSE(UE::Headless::IsProjectOpen());
		EXPECT_FALSE(FModuleManager::Get().IsModuleLoaded(TEXT("CalvornToolkit")));
	}

	TEST(HostSession, KeepsAGivenProjectAndRefusesWhatIsNotOne)
	{
		FTempFolder Folder;
		FString ProjectFile;
		FString Error;
		ASSERT_TRUE(WriteSampleProject(Folder.Path("Kept"), ProjectFile, Error));
		{
			FHostSession Session;
			ASSERT_TRUE(Session.Open(Folder.Path("Kept"), Error)) << U8(Error);
			EXPECT_FALSE(Session.IsTemporarySample());
			EXPECT_EQ(U8(Session.GetProjectFile()), U8(ProjectFile));
		}
		EXPECT_TRUE(std::filesystem::exists(Folder.Root / "Kept" / "CalvornSample.uproject"));

		std::filesystem::create_directories(Folder.Root / "Broken");
		std::ofstream(Folder.Root / "Broken" / "Broken.uproject") << "{\"FileVersion\": 3";
		FHostSession Session;
		EXPECT_FALSE(Session.Open(Folder.Path("Broken"), Error));
		EXPECT_NE(U8(Error).find("Broken.uproject"), std::string::npos) << U8(Error);
		EXPECT_FALSE(Session.GetExecutor().IsValid());
		EXPECT_FALSE(UE::Headless::IsProjectOpen());
		EXPECT_FALSE(FModuleManager::Get().IsModuleLoaded(TEXT("CalvornToolkit")));
	}
}
