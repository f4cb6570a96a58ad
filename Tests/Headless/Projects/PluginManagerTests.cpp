#include "Headless/HeadlessProject.h"
#include "Interfaces/IPluginManager.h"
#include "Interfaces/IProjectManager.h"
#include "Misc/Paths.h"
#include "TempProjectFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace
{
	/** Records the mount-point delegate calls as "+/Root/ -> Path" and "-/Root/ -> Path". */
	class FMountRecorder
	{
	public:
		FMountRecorder()
		{
			IPluginManager::Get().SetRegisterMountPointDelegate(IPluginManager::FRegisterMountPointDelegate::CreateLambda(
				[this](const FString& Root, const FString& Path) { Calls.Add(TEXT("+") + Root + TEXT(" -> ") + Path); }));
			IPluginManager::Get().SetUnRegisterMountPointDelegate(IPluginManager::FRegisterMountPointDelegate::CreateLambda(
				[this](const FString& Root, const FString& Path) { Calls.Add(TEXT("-") + Root + TEXT(" -> ") + Path); }));
		}
		~FMountRecorder()
		{
			IPluginManager::Get().SetRegisterMountPointDelegate({});
			IPluginManager::Get().SetUnRegisterMountPointDelegate({});
		}

		TArray<std::string> Take()
		{
			TArray<std::string> Result;
			for (const FString& Call : Calls)
			{
				Result.Add(U8(Call));
			}
			Calls.Reset();
			return Result;
		}

		TArray<FString> Calls;
	};

	TArray<std::string> NamesOf(const TArray<TSharedRef<IPlugin>>& Plugins)
	{
		TArray<std::string> Names;
		for (const TSharedRef<IPlugin>& Plugin : Plugins)
		{
			Names.Add(U8(Plugin->GetName()));
		}
		return Names;
	}

	/** A project with one plug-in of each kind the manager must tell apart. */
	class PluginManagerTest : public ::testing::Test
	{
	protected:
		PluginManagerTest()
			: Folder(TEXT("TestGame"), TEXT(R"({"FileVersion": 3, "Plugins": [
				{"Name": "Dropped", "Enabled": false},
				{"Name": "OptIn", "Enabled": true},
				{"Name": "ModelingToolsEditorMode", "Enabled": true},
				{"Name": "Maybe", "Enabled": true, "Optional": true}
			]})"))
		{
			Folder.AddPlugin(TEXT("Zeta"), TEXT("Zeta"), TEXT(R"({"FileVersion": 3, "CanContainContent": true})"));
			Folder.AddPlugin(TEXT("alpha"), TEXT("alpha"), TEXT(R"({"FileVersion": 3, "CanContainContent": true, "FriendlyName": "Alpha Tools"})"));
			Folder.AddPlugin(TEXT("Off"), TEXT("Off"), TEXT(R"({"FileVersion": 3, "CanContainContent": true, "EnabledByDefault": false})"));
			Folder.AddPlugin(TEXT("OptIn"), TEXT("OptIn"), TEXT(R"({"FileVersion": 3, "CanContainContent": true, "EnabledByDefault": false})"));
			Folder.AddPlugin(TEXT("Dropped"), TEXT("Dropped"), TEXT(R"({"FileVersion": 3, "CanContainContent": true})"));
			Folder.AddPlugin(TEXT("CodeOnly"), TEXT("CodeOnly"), TEXT(R"({"FileVersion": 3})"));
			// Grouped one level deeper; its own sub-folders are not searched once the .uplugin is found.
			Folder.AddPlugin(TEXT("Group/Nested"), TEXT("Nested"), TEXT(R"({"FileVersion": 3, "CanContainContent": true})"));
			Folder.AddPlugin(TEXT("Group/Nested/Inner"), TEXT("Inner"), TEXT(R"({"FileVersion": 3, "CanContainContent": true})"));
			Folder.AddPlugin(TEXT("Broken"), TEXT("Broken"), TEXT(R"({"FileVersion": 3, "CanContainContent": tru})"));
			Folder.AddPlugin(TEXT("Game"), TEXT("Game"), TEXT(R"({"FileVersion": 3, "CanContainContent": true})"));
			Folder.AddPlugin(TEXT("Bad Name"), TEXT("Bad Name"), TEXT(R"({"FileVersion": 3, "CanContainContent": true})"));
		}

		FMountRecorder Mounts;
		FTempProjectFolder Folder;
	};
}

TEST_F(PluginManagerTest, ListsPluginsByNameAndEnablesThemByProjectThenDefault)
{
	TArray<FString> Warnings;
	Folder.Open(&Warnings);
	IPluginManager& Manager = IPluginManager::Get();

	EXPECT_EQ(NamesOf(Manager.GetDiscoveredPlugins()),
		TArray<std::string>({"alpha", "Bad Name", "CodeOnly", "Dropped", "Game", "Nested", "Off", "OptIn", "Zeta"}));
	EXPECT_EQ(NamesOf(Manager.GetEnabledPlugins()),
		TArray<std::string>({"alpha", "Bad Name", "CodeOnly", "Game", "Nested", "OptIn", "Zeta"}));
	EXPECT_EQ(NamesOf(Manager.GetEnabledPluginsWithContent()),
		TArray<std::string>({"alpha", "Bad Name", "Game", "Nested", "OptIn", "Zeta"}));

	ASSERT_EQ(Warnings.Num(), 4);
	EXPECT_NE(U8(Warnings[0]).find("Plug-in 'Broken' is ignored. Failed to read descriptor file '" + U8(Folder.Path(TEXT("Plugins/Broken/Broken.uplugin")))), std::string::npos) << U8(Warnings[0]);
	EXPECT_EQ(U8(Warnings[1]), "The project enables plug-in 'ModelingToolsEditorMode', which is not in its Plugins folder.");
	EXPECT_EQ(U8(Warnings[2]), "The content of plug-in 'Bad Name' is not mounted: the name contains a character that is invalid in package names.");
	EXPECT_EQ(U8(Warnings[3]), "The content of plug-in 'Game' is not mounted: /Game/ is reserved by the engine.");
}

TEST_F(PluginManagerTest, MountsGameContentAndEnabledPluginContent)
{
	Folder.Open();
	const std::string Root = U8(Folder.GetRoot());
	EXPECT_EQ(Mounts.Take(), TArray<std::string>({
		"+/Game/ -> " + Root + "/Content/",
		"+/alpha/ -> " + Root + "/Plugins/alpha/Content/",
		"+/Nested/ -> " + Root + "/Plugins/Group/Nested/Content/",
		"+/OptIn/ -> " + Root + "/Plugins/OptIn/Content/",
		"+/Zeta/ -> " + Root + "/Plugins/Zeta/Content/",
	}));

	const TSharedPtr<IPlugin> Alpha = IPluginManager::Get().FindPlugin(TEXT("ALPHA"));
	ASSERT_TRUE(Alpha.IsValid());
	EXPECT_EQ(U8(Alpha->GetFriendlyName()), "Alpha Tools");
	EXPECT_EQ(U8(Alpha->GetBaseDir()), Root + "/Plugins/alpha");
	EXPECT_EQ(U8(Alpha->GetContentDir()), Root + "/Plugins/alpha/Content");
	EXPECT_EQ(U8(Alpha->GetMountedAssetPath()), "/alpha/");
	EXPECT_EQ(Alpha->GetType(), EPluginType::Project);
	EXPECT_TRUE(Alpha->IsMounted());

	const TSharedPtr<IPlugin> Off = IPluginManager::Get().FindPlugin(TEXT("Off"));
	ASSERT_TRUE(Off.IsValid());
	EXPECT_FALSE(Off->IsEnabled());
	EXPECT_FALSE(Off->IsMounted());
	EXPECT_FALSE(Off->IsEnabledByDefault(true));
	EXPECT_FALSE(IPluginManager::Get().FindPlugin(TEXT("Inner")).IsValid());
	EXPECT_FALSE(IPluginManager::Get().FindPlugin(TEXT("CodeOnly"))->IsMounted());

	EXPECT_EQ(IPluginManager::Get().FindPluginFromPath(TEXT("/Zeta/Folder/Asset")), IPluginManager::Get().FindPlugin(TEXT("Zeta")));
	EXPECT_FALSE(IPluginManager::Get().FindPluginFromPath(TEXT("/Off/Asset")).IsValid()) << "disabled plug-ins own no paths";
	EXPECT_FALSE(IPluginManager::Get().FindPluginFromPath(TEXT("Zeta/Asset")).IsValid());
}

TEST_F(PluginManagerTest, ClosingUnmountsEverythingAndForgetsTheProject)
{
	Folder.Open();
	Mounts.Take();
	UE::Headless::CloseProject();
	const std::string Root = U8(Folder.GetRoot());
	EXPECT_EQ(Mounts.Take(), TArray<std::string>({
		"-/alpha/ -> " + Root + "/Plugins/alpha/Content/",
		"-/Nested/ -> " + Root + "/Plugins/Group/Nested/Content/",
		"-/OptIn/ -> " + Root + "/Plugins/OptIn/Content/",
		"-/Zeta/ -> " + Root + "/Plugins/Zeta/Content/",
		"-/Game/ -> " + Root + "/Content/",
	}));
	EXPECT_FALSE(UE::Headless::IsProjectOpen());
	EXPECT_FALSE(FPaths::IsProjectFilePathSet());
	EXPECT_EQ(IProjectManager::Get().GetCurrentProject(), nullptr);
	EXPECT_EQ(IPluginManager::Get().GetDiscoveredPlugins().Num(), 0);
	EXPECT_FALSE(FPaths::FileExists(Folder.Path(TEXT("Saved/.calvorn-lock"))));
}

TEST_F(PluginManagerTest, MountsAPluginCreatedAfterOpening)
{
	Folder.Open();
	Mounts.Take();
	Folder.AddPlugin(TEXT("Fresh"), TEXT("Fresh"), TEXT(R"({"FileVersion": 3, "CanContainContent": true, "EnabledByDefault": false})"));
	IPluginManager::Get().MountNewlyCreatedPlugin(TEXT("Fresh"));
	EXPECT_EQ(Mounts.Take(), TArray<std::string>({"+/Fresh/ -> " + U8(Folder.GetRoot()) + "/Plugins/Fresh/Content/"}));
	EXPECT_EQ(NamesOf(IPluginManager::Get().GetEnabledPluginsWithContent()),
		TArray<std::string>({"alpha", "Bad Name", "Fresh", "Game", "Nested", "OptIn", "Zeta"}));
}

TEST(HeadlessProject, OpenProjectSetsTheProjectFolders)
{
	FTempProjectFolder Folder(TEXT("Shooter"));
	Folder.Open();
	EXPECT_TRUE(UE::Headless::IsProjectOpen());
	EXPECT_EQ(U8(FPaths::GetProjectFilePath()), U8(Folder.GetProjectFile()));
	EXPECT_EQ(U8(FPaths::ProjectDir()), U8(Folder.GetRoot()) + "/");
	EXPECT_EQ(U8(FPaths::ProjectContentDir()), U8(Folder.GetRoot()) + "/Content/");
	ASSERT_NE(IProjectManager::Get().GetCurrentProject(), nullptr);
	EXPECT_EQ(U8(IProjectManager::Get().GetCurrentProject()->EngineAssociation), "5.7");
	EXPECT_TRUE(FPaths::FileExists(Folder.Path(TEXT("Saved/.calvorn-lock"))));
}

TEST(HeadlessProject, RefusesWhatIsNotAProjectAndKeepsTheOpenOne)
{
	FTempProjectFolder Open(TEXT("Kept"));
	Open.Open();
	FTempProjectFolder Other(TEXT("Other"));
	Other.WriteFile(TEXT("Broken.uproject"), TEXT("{\"FileVersion\": 3"));
	Other.WriteFile(TEXT("Folder.uproject/readme.txt"), TEXT("x"));
	Other.WriteFile(TEXT("Notes.txt"), TEXT("{}"));

	struct FCase
	{
		FString Path;
		std::string Expected;
	};
	const FCase Cases[] = {
		{FString(), "No project file was given."},
		{Other.Path(TEXT("Missing.uproject")), "Project file '" + U8(Other.Path(TEXT("Missing.uproject"))) + "' does not exist."},
		{Other.Path(TEXT("Notes.txt")), "'" + U8(Other.Path(TEXT("Notes.txt"))) + "' is not a project file: its name must end in .uproject."},
		{Other.Path(TEXT("Folder.uproject")), "'" + U8(Other.Path(TEXT("Folder.uproject"))) + "' is a folder, not a project file."},
		{Other.Path(TEXT("Broken.uproject")), "Failed to read descriptor file '" + U8(Other.Path(TEXT("Broken.uproject"))) + "': the file is not a JSON object"},
	};
	for (const FCase& Case : Cases)
	{
		FString Error;
		EXPECT_FALSE(UE::Headless::OpenProject(Case.Path, Error));
		EXPECT_EQ(U8(Error).substr(0, Case.Expected.size()), Case.Expected);
		EXPECT_EQ(U8(FPaths::GetProjectFilePath()), U8(Open.GetProjectFile())) << "a refused project must leave the open one";
	}
}

TEST(HeadlessProject, OpeningAnotherProjectReleasesTheFirst)
{
	FTempProjectFolder First(TEXT("First"));
	FTempProjectFolder Second(TEXT("Second"));
	First.Open();
	Second.Open();
	EXPECT_FALSE(FPaths::FileExists(First.Path(TEXT("Saved/.calvorn-lock"))));
	EXPECT_TRUE(FPaths::FileExists(Second.Path(TEXT("Saved/.calvorn-lock"))));
	EXPECT_EQ(U8(FPaths::GetProjectFilePath()), U8(Second.GetProjectFile()));
	// Opening the open project again is a refresh, not a conflict with ourselves.
	Second.Open();
	EXPECT_TRUE(UE::Headless::IsProjectOpen());
}
