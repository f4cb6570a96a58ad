#include "Misc/PackageName.h"
#include "Headless/Projects/TempProjectFolder.h"
#include "PackageTestUtils.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;

namespace
{
	using EErrorCode = FPackageName::EErrorCode;

	struct FNameCase
	{
		const TCHAR* Name;
		bool bIncludeReadOnlyRoots;
		bool bValid;
		EErrorCode Reason;
	};
}

TEST(PackageName, ValidLongPackageNamesFollowTheEngineRules)
{
	FTempContentFolder Game;
	const FNameCase Cases[] = {
		{TEXT("/Game/Maps/MyMap"), false, true, EErrorCode::PackageNameUnknown},
		{TEXT("/Game/A"), false, true, EErrorCode::PackageNameUnknown},
		{TEXT("/game/Lower"), false, true, EErrorCode::PackageNameUnknown},
		{TEXT("/Game/Ünïcødé"), false, true, EErrorCode::PackageNameUnknown},
		{TEXT(""), false, false, EErrorCode::LongPackageNames_PathTooShort},
		{TEXT("/Ga"), false, false, EErrorCode::LongPackageNames_PathTooShort},
		{TEXT("Game/Foo"), false, false, EErrorCode::LongPackageNames_PathWithNoStartingSlash},
		{TEXT("C:/Game/Foo"), false, false, EErrorCode::LongPackageNames_PathWithNoStartingSlash},
		{TEXT("/Game/Foo/"), false, false, EErrorCode::LongPackageNames_PathWithTrailingSlash},
		{TEXT("/Game//Foo"), false, false, EErrorCode::LongPackageNames_PathWithDoubleSlash},
		{TEXT("/Game/My Map"), false, false, EErrorCode::PackageNameContainsInvalidCharacters},
		{TEXT("/Game/../Secrets"), false, false, EErrorCode::PackageNameContainsInvalidCharacters},
		{TEXT("/Game/Foo.Bar"), false, false, EErrorCode::PackageNameContainsInvalidCharacters},
		{TEXT("/Game/a\\b"), false, false, EErrorCode::PackageNameContainsInvalidCharacters},
		{TEXT("/Game/C:Foo"), false, false, EErrorCode::PackageNameContainsInvalidCharacters},
		{TEXT("/Game/Wild*"), false, false, EErrorCode::PackageNameContainsInvalidCharacters},
		{TEXT("/Game/Line\nBreak"), false, false, EErrorCode::PackageNameContainsInvalidCharacters},
		{TEXT("/Game/Q?"), false, false, EErrorCode::PackageNameContainsInvalidCharacters},
		{TEXT("/Game/At@"), false, false, EErrorCode::PackageNameContainsInvalidCharacters},
		{TEXT("/Nowhere/Foo"), false, false, EErrorCode::PackageNamePathNotMounted},
		{TEXT("/Gamer/Foo"), false, false, EErrorCode::PackageNamePathNotMounted},
		{TEXT("/Script/Engine"), false, false, EErrorCode::PackageNamePathNotMounted},
		{TEXT("/Script/Engine"), true, true, EErrorCode::PackageNameUnknown},
		{TEXT("/Engine/EditorBlueprintResources/StandardMacros"), false, false, EErrorCode::PackageNamePathNotMounted},
		{TEXT("/Engine/EditorBlueprintResources/StandardMacros"), true, true, EErrorCode::PackageNameUnknown},
		{TEXT("/Temp/Scratch"), true, true, EErrorCode::PackageNameUnknown},
	};
	for (const FNameCase& Case : Cases)
	{
		EErrorCode Reason = EErrorCode::PackageNameUnknown;
		EXPECT_EQ(FPackageName::IsValidLongPackageName(Case.Name, Case.bIncludeReadOnlyRoots, &Reason), Case.bValid) << U8(Case.Name);
		EXPECT_EQ(Reason, Case.Reason) << U8(Case.Name);
	}
}

TEST(PackageName, RefusalsAreExplainedInTheEnginesWords)
{
	FTempContentFolder Game;
	struct FCase
	{
		const TCHAR* Name;
		std::string Expected;
	};
	const FCase Cases[] = {
		{TEXT("/Ga"), "Input '/Ga' contains fewer than the minimum number of characters 4 for LongPackageNames."},
		{TEXT("Game/Foo"), "Input 'Game/Foo' does not start with a '/', which is required for LongPackageNames."},
		{TEXT("/Game/Foo/"), "Input '/Game/Foo/' ends with a '/', which is invalid for LongPackageNames."},
		{TEXT("/Game//Foo"), "Input '/Game//Foo' contains '//', which is invalid for LongPackageNames."},
		{TEXT("/Game/A B"), "Input '/Game/A B' contains one of the invalid characters for LongPackageNames: '\\:*?\"<>|' ,.&!~\n\r\t@#'."},
		{TEXT("/Nowhere/Foo"), "Path does not start with a valid root. Path must begin with one of: /Game/"},
	};
	for (const FCase& Case : Cases)
	{
		FText Reason;
		EXPECT_FALSE(FPackageName::IsValidLongPackageName(Case.Name, false, &Reason));
		EXPECT_EQ(U8(Reason.ToString()), Case.Expected);
	}
	FText Reason;
	EXPECT_FALSE(FPackageName::IsValidLongPackageName(TEXT("/Nowhere/Foo"), true, &Reason));
	EXPECT_EQ(U8(Reason.ToString()), "Path does not start with a valid root. Path must begin with one of: /Engine/, /Game/, /Memory/, /Script/, /Temp/");
}

TEST(PackageName, ObjectPathsSplitLikeTheEngine)
{
	struct FCase
	{
		const TCHAR* Path;
		const char* PackageName;
		const char* WithinPackage;
		const char* Outer;
		const char* SubObject;
		const char* ObjectName;
	};
	const FCase Cases[] = {
		{TEXT("/Game/MyAsset.MyAsset:SubObject.AnotherObject"), "/Game/MyAsset", "MyAsset:SubObject.AnotherObject", "/Game/MyAsset.MyAsset:SubObject", "SubObject.AnotherObject", "AnotherObject"},
		{TEXT("/Game/MyAsset.MyAsset:SubObject"), "/Game/MyAsset", "MyAsset:SubObject", "/Game/MyAsset.MyAsset", "SubObject", "SubObject"},
		{TEXT("/Game/MyAsset.MyAsset"), "/Game/MyAsset", "MyAsset", "/Game/MyAsset", "MyAsset", "MyAsset"},
		{TEXT("/Game/MyAsset"), "/Game/MyAsset", "", "", "/Game/MyAsset", "/Game/MyAsset"},
		{TEXT(""), "", "", "", "", ""},
	};
	for (const FCase& Case : Cases)
	{
		EXPECT_EQ(U8(FPackageName::ObjectPathToPackageName(Case.Path)), Case.PackageName) << U8(Case.Path);
		EXPECT_EQ(U8(FPackageName::ObjectPathToPathWithinPackage(Case.Path)), Case.WithinPackage) << U8(Case.Path);
		EXPECT_EQ(U8(FPackageName::ObjectPathToOuterPath(Case.Path)), Case.Outer) << U8(Case.Path);
		EXPECT_EQ(U8(FPackageName::ObjectPathToSubObjectPath(Case.Path)), Case.SubObject) << U8(Case.Path);
		EXPECT_EQ(U8(FPackageName::ObjectPathToObjectName(Case.Path)), Case.ObjectName) << U8(Case.Path);
	}

	EXPECT_EQ(U8(FPackageName::ObjectPathCombine(TEXT("/Package"), TEXT("Object"))), "/Package.Object");
	EXPECT_EQ(U8(FPackageName::ObjectPathCombine(TEXT("/Package.Object"), TEXT("SubObject"))), "/Package.Object:SubObject");
	EXPECT_EQ(U8(FPackageName::ObjectPathCombine(TEXT("/Package.Object:SubObject"), TEXT("Next"))), "/Package.Object:SubObject.Next");
	EXPECT_EQ(U8(FPackageName::ObjectPathCombine(TEXT("/Package"), TEXT("Object.SubObject"))), "/Package.Object:SubObject");
	EXPECT_EQ(U8(FPackageName::ObjectPathCombine(TEXT("/Package"), TEXT("/Other.Object:Sub"))), "/Other.Object:Sub");
	EXPECT_EQ(U8(FPackageName::ObjectPathCombine(TEXT(""), TEXT("Object"))), "Object");

	FString ClassName, PackageName, ObjectName, SubObjectName;
	FPackageName::SplitFullObjectPath(TEXT(" Blueprint /Game/BP.BP_C:Comp.Inner "), ClassName, PackageName, ObjectName, SubObjectName);
	EXPECT_EQ(U8(ClassName), "Blueprint");
	EXPECT_EQ(U8(PackageName), "/Game/BP");
	EXPECT_EQ(U8(ObjectName), "BP_C");
	EXPECT_EQ(U8(SubObjectName), "Comp.Inner");

	FString ExportClass, ExportPath;
	EXPECT_TRUE(FPackageName::ParseExportTextPath(TEXT("Blueprint'/Game/BP.BP'"), &ExportClass, &ExportPath));
	EXPECT_EQ(U8(ExportClass), "Blueprint");
	EXPECT_EQ(U8(ExportPath), "/Game/BP.BP");
	EXPECT_EQ(U8(FPackageName::ExportTextPathToObjectPath(TEXT("/Script/Engine.Blueprint'\"/Game/BP.BP\"'"))), "/Game/BP.BP");
	EXPECT_EQ(U8(FPackageName::ExportTextPathToObjectPath(TEXT("/Game/BP.BP"))), "/Game/BP.BP");
	EXPECT_FALSE(FPackageName::ParseExportTextPath(TEXT("Blueprint'/Game/BP.BP"), nullptr, nullptr));
}

TEST(PackageName, ShortNamesPathsAndRoots)
{
	FTempContentFolder Game;
	EXPECT_EQ(U8(FPackageName::GetShortName(TEXT("/Game/Maps/MyMap"))), "MyMap");
	EXPECT_EQ(U8(FPackageName::GetShortName(TEXT("MyMap"))), "MyMap");
	EXPECT_EQ(U8(FPackageName::GetShortName(FName(TEXT("/Game/Maps/MyMap")))), "MyMap");
	EXPECT_EQ(FPackageName::GetShortFName(TEXT("/Game/Maps/MyMap")), FName(TEXT("MyMap")));
	EXPECT_EQ(U8(FPackageName::GetLongPackagePath(TEXT("/Game/Maps/MyMap"))), "/Game/Maps");
	EXPECT_EQ(U8(FPackageName::GetLongPackagePath(TEXT("MyMap"))), "MyMap");
	EXPECT_TRUE(FPackageName::IsShortPackageName(FString(TEXT("MyMap"))));
	EXPECT_FALSE(FPackageName::IsShortPackageName(FString(TEXT("/Game/MyMap"))));

	FString Root, Path, Leaf;
	EXPECT_TRUE(FPackageName::SplitLongPackageName(TEXT("/Game/Maps/Test/MyMap"), Root, Path, Leaf));
	EXPECT_EQ(U8(Root), "/Game/");
	EXPECT_EQ(U8(Path), "Maps/Test/");
	EXPECT_EQ(U8(Leaf), "MyMap");
	EXPECT_TRUE(FPackageName::SplitLongPackageName(TEXT("/Game/MyMap"), Root, Path, Leaf, true));
	EXPECT_EQ(U8(Root), "Game/");
	EXPECT_EQ(U8(Path), "");
	EXPECT_FALSE(FPackageName::SplitLongPackageName(TEXT("/Nowhere/MyMap"), Root, Path, Leaf));
	EXPECT_EQ(U8(Root), "");

	FPackageName::SplitPackageName(TEXT("/root/path/leaf"), &Root, &Path, &Leaf);
	EXPECT_EQ(U8(Root) + "|" + U8(Path) + "|" + U8(Leaf), "/root/|path/|leaf");
	FPackageName::SplitPackageName(TEXT("/root"), &Root, &Path, &Leaf);
	EXPECT_EQ(U8(Root) + "|" + U8(Path) + "|" + U8(Leaf), "||");
	FPackageName::SplitPackageName(TEXT("/root/leaf"), &Root, &Path, &Leaf, FPackageName::EPathFormatFlags::MountPointNoSlashes);
	EXPECT_EQ(U8(Root) + "|" + U8(Path) + "|" + U8(Leaf), "root||leaf");

	EXPECT_EQ(FPackageName::GetPackageMountPoint(TEXT("/Game/Maps/MyMap")), FName(TEXT("Game")));
	EXPECT_EQ(U8(FPackageName::GetPackageMountPoint(TEXT("/Game/Maps/MyMap"), false).ToString()), "/Game/");
	EXPECT_EQ(FPackageName::GetPackageMountPoint(TEXT("/Nowhere/MyMap")), NAME_None);
	EXPECT_TRUE(FPackageName::IsValidPath(TEXT("/Script/Engine")));
	EXPECT_FALSE(FPackageName::IsValidPath(TEXT("/Nowhere")));
	EXPECT_EQ(U8(FPackageName::ConvertToLongScriptPackageName(TEXT("InputCore"))), "/Script/InputCore");
	EXPECT_TRUE(FPackageName::IsScriptPackage(TEXT("/Script/Engine")));
	EXPECT_FALSE(FPackageName::IsScriptPackage(TEXT("/Scripts/Engine")));

	EXPECT_EQ(U8(FPackageName::GetAssetPackageExtension()), ".uasset");
	EXPECT_EQ(U8(FPackageName::GetMapPackageExtension()), ".umap");
	EXPECT_TRUE(FPackageName::IsPackageExtension(TEXT("uasset")));
	EXPECT_TRUE(FPackageName::IsPackageExtension(TEXT(".UMAP")));
	EXPECT_FALSE(FPackageName::IsPackageExtension(TEXT(".json")));
}

TEST(PackageName, ObjectPathValidation)
{
	FTempContentFolder Game;
	struct FCase
	{
		const TCHAR* Path;
		bool bValid;
		const char* Reason;
	};
	const FCase Cases[] = {
		{TEXT("/Game/BP.BP"), true, ""},
		{TEXT("/Game/BP.BP:Inner.Deeper"), true, ""},
		{TEXT("/Script/Engine.Actor"), true, ""},
		{TEXT("/Game/BP"), true, ""},
		{TEXT("/Game/BP."), false, "Object Path may not end with ."},
		{TEXT("/Game/BP.BP:"), false, "Object Path may not end with : or ."},
		{TEXT("/Game/BP.BP/Other"), false, "Object Path may not have / after first ."},
		{TEXT("/Game/BP.B P"), false, "Object Path"},
		{TEXT("/Nowhere/BP.BP"), false, "Path does not start with a valid root."},
	};
	for (const FCase& Case : Cases)
	{
		FText Reason;
		EXPECT_EQ(FPackageName::IsValidObjectPath(Case.Path, &Reason), Case.bValid) << U8(Case.Path);
		if (!Case.bValid)
		{
			EXPECT_NE(U8(Reason.ToString()).find(Case.Reason), std::string::npos) << U8(Case.Path) << ": " << U8(Reason.ToString());
		}
	}
}

TEST(PackageName, MountPointsMapRootsToFolders)
{
	TArray<std::string> Events;
	const FDelegateHandle Mounted = FPackageName::OnContentPathMounted().AddLambda([&Events](const FString& Root, const FString& Path) { Events.Add("+" + U8(Root) + " " + U8(Path)); });
	const FDelegateHandle Dismounted = FPackageName::OnContentPathDismounted().AddLambda([&Events](const FString& Root, const FString& Path) { Events.Add("-" + U8(Root) + " " + U8(Path)); });
	{
		FTempContentFolder Plugin(TEXT("/MyPlugin/"));
		const std::string Content = U8(Plugin.GetContentDir()) + "/";
		EXPECT_TRUE(FPackageName::MountPointExists(TEXT("/MyPlugin/")));
		EXPECT_TRUE(FPackageName::MountPointExists(TEXT("/myplugin")));
		EXPECT_EQ(U8(FPackageName::GetContentPathForPackageRoot(TEXT("/MyPlugin/"))), Content);
		EXPECT_EQ(U8(FPackageName::GetContentPathForPackageRoot(TEXT("/Script/"))), "");
		TArray<FString> Roots;
		FPackageName::QueryRootContentPaths(Roots);
		EXPECT_TRUE(Roots.Contains(TEXT("/MyPlugin/")));
		EXPECT_FALSE(Roots.Contains(TEXT("/Script/")));
		FPackageName::QueryRootContentPaths(Roots, true, true, true);
		EXPECT_TRUE(Roots.Contains(TEXT("MyPlugin")));
		EXPECT_TRUE(Roots.Contains(TEXT("Script")));
		EXPECT_TRUE(FPackageName::IsValidLongPackageName(TEXT("/MyPlugin/Asset")));
		ASSERT_EQ(Events.Num(), 1);
		EXPECT_EQ(Events[0], "+/MyPlugin/ " + Content);
	}
	EXPECT_EQ(Events.Num(), 2);
	EXPECT_EQ(Events.Last().substr(0, 12), "-/MyPlugin/ ");
	EXPECT_FALSE(FPackageName::MountPointExists(TEXT("/MyPlugin/")));
	EXPECT_FALSE(FPackageName::IsValidLongPackageName(TEXT("/MyPlugin/Asset")));

	// Roots that could never be package roots are ignored.
	FPackageName::RegisterMountPoint(TEXT("Game"), TEXT("/tmp"));
	FPackageName::RegisterMountPoint(TEXT("/A/B/"), TEXT("/tmp"));
	FPackageName::RegisterMountPoint(TEXT("/A B/"), TEXT("/tmp"));
	EXPECT_FALSE(FPackageName::MountPointExists(TEXT("/A/B/")));
	EXPECT_FALSE(FPackageName::MountPointExists(TEXT("/A B/")));
	EXPECT_EQ(Events.Num(), 2);

	FPackageName::OnContentPathMounted().Remove(Mounted);
	FPackageName::OnContentPathDismounted().Remove(Dismounted);
}

TEST(PackageName, PackageNamesMapToFilesInsideTheirMountedFolder)
{
	FTempContentFolder Game;
	FTempContentFolder Plugin(TEXT("/MyPlugin/"));
	const std::string Content = U8(Game.GetContentDir());

	FString Filename;
	ASSERT_TRUE(FPackageName::TryConvertLongPackageNameToFilename(TEXT("/Game/Maps/MyMap"), Filename, FPackageName::GetAssetPackageExtension()));
	EXPECT_EQ(U8(Filename), Content + "/Maps/MyMap.uasset");
	ASSERT_TRUE(FPackageName::TryConvertLongPackageNameToFilename(TEXT("/Game/Maps"), Filename));
	EXPECT_EQ(U8(Filename), Content + "/Maps");
	ASSERT_TRUE(FPackageName::TryConvertLongPackageNameToFilename(TEXT("/Game"), Filename));
	EXPECT_EQ(U8(Filename), Content);
	ASSERT_TRUE(FPackageName::TryConvertLongPackageNameToFilename(TEXT("/MyPlugin/Icons/Star"), Filename, TEXT(".uasset")));
	EXPECT_EQ(U8(Filename), U8(Plugin.GetContentDir()) + "/Icons/Star.uasset");
	EXPECT_EQ(U8(FPackageName::LongPackageNameToFilename(TEXT("/Game/A"), TEXT(".uasset"))), Content + "/A.uasset");
	EXPECT_EQ(U8(FPackageName::LongPackageNameToFilename(TEXT("/Nowhere/A"), TEXT(".uasset"))), "");

	// Package names ignore case; the file that exists on disk is found whatever the spelling.
	Game.WriteFile(Game.Content(TEXT("Maps/MyMap.uasset")), TEXT("{}"));
	ASSERT_TRUE(FPackageName::TryConvertLongPackageNameToFilename(TEXT("/game/MAPS/mymap"), Filename, TEXT(".uasset")));
	EXPECT_EQ(U8(Filename), Content + "/Maps/MyMap.uasset");
	FString Found;
	EXPECT_TRUE(FPackageName::DoesPackageExist(TEXT("/Game/maps/MYMAP"), &Found));
	EXPECT_EQ(U8(Found), Content + "/Maps/MyMap.uasset");
	EXPECT_FALSE(FPackageName::DoesPackageExist(TEXT("/Game/Maps/Other")));
	EXPECT_FALSE(FPackageName::DoesPackageExist(TEXT("/Game/Maps/My Map")));
}

TEST(PackageName, NamesThatCouldLeaveTheMountedFolderAreRefused)
{
	FTempContentFolder Game;
	FTempContentFolder Outside(TEXT("/Elsewhere/"));
	const std::string Content = U8(Game.GetContentDir());
	fs::create_directories(FTempContentFolder::Native(Game.Content(TEXT("Real"))));
	fs::create_directory_symlink(FTempContentFolder::Native(Outside.GetContentDir()), FTempContentFolder::Native(Game.Content(TEXT("Escape"))));
	fs::create_directory_symlink("../..", FTempContentFolder::Native(Game.Content(TEXT("Real/Up"))));
	fs::create_directory_symlink("Real", FTempContentFolder::Native(Game.Content(TEXT("Alias"))));
	fs::create_symlink("/nonexistent/calvorn/target.uasset", FTempContentFolder::Native(Game.Content(TEXT("Dangling.uasset"))));

	struct FCase
	{
		FString Name;
		FString Extension;
		std::string Reason;
	};
	const FCase Cases[] = {
		{TEXT(""), TEXT(".uasset"), "Input '' was empty."},
		{TEXT("/Game/../Secrets"), TEXT(".uasset"), "Input '/Game/../Secrets' contains one of the invalid characters for LongPackageNames"},
		{TEXT("/Game/a\\..\\b"), TEXT(".uasset"), "Input '/Game/a\\..\\b' contains one of the invalid characters for LongPackageNames"},
		{TEXT("/Game//etc/passwd"), TEXT(".uasset"), "Input '/Game//etc/passwd' contains '//'"},
		{TEXT("/etc/passwd"), TEXT(""), "Path does not start with a valid root."},
		{TEXT("/Game/Bell\x07"), TEXT(".uasset"), "Input '/Game/Bell\x07' contains a control character, which is invalid for LongPackageNames."},
		{TEXT("/Game/") + FString::ChrN(300, TEXT('x')), TEXT(".uasset"), "has a path component longer than 255 bytes"},
		{TEXT("/Game/Fine"), TEXT("/../x"), "'/../x' is not a valid file extension for package '/Game/Fine'."},
		{TEXT("/Game/Fine"), TEXT("uasset"), "'uasset' is not a valid file extension"},
		{TEXT("/Game"), TEXT(".uasset"), "Input '/Game' names a mount point, not a package."},
		{TEXT("/Script/Engine"), TEXT(".uasset"), "Input '/Script/Engine' is in a memory-only mount point."},
		{TEXT("/Engine/EditorBlueprintResources/StandardMacros"), TEXT(".uasset"), "is in a memory-only mount point."},
		{TEXT("/Game/Escape/Stolen"), TEXT(".uasset"), "Input '/Game/Escape/Stolen' leads through the symbolic link '" + Content + "/Escape' to '" + U8(Outside.GetContentDir()) + "', outside its mounted folder '" + Content + "/'."},
		{TEXT("/Game/Real/Up/Up2"), TEXT(".uasset"), "leads through the symbolic link '" + Content + "/Real/Up'"},
		{TEXT("/Game/Dangling"), TEXT(".uasset"), "leads through the symbolic link '" + Content + "/Dangling.uasset' to '/nonexistent/calvorn/target.uasset'"},
	};
	for (const FCase& Case : Cases)
	{
		FString Filename = TEXT("untouched");
		FText Reason;
		EXPECT_FALSE(FPackageName::TryConvertLongPackageNameToFilename(Case.Name, Filename, Case.Extension, Reason)) << U8(Case.Name);
		EXPECT_NE(U8(Reason.ToString()).find(Case.Reason), std::string::npos) << U8(Case.Name) << " gave: " << U8(Reason.ToString());
		EXPECT_EQ(U8(Filename), "untouched");
	}

	// A link that stays inside the folder is fine.
	FString Filename;
	ASSERT_TRUE(FPackageName::TryConvertLongPackageNameToFilename(TEXT("/Game/Alias/Thing"), Filename, TEXT(".uasset")));
	EXPECT_EQ(U8(Filename), Content + "/Alias/Thing.uasset");
}

TEST(PackageName, FilesMapBackToPackageNamesOnlyInsideMountedFolders)
{
	FTempContentFolder Game;
	FTempContentFolder Plugin(TEXT("/MyPlugin/"));
	const FString Content = Game.GetContentDir();

	struct FCase
	{
		FString Filename;
		bool bValid;
		std::string Expected;
	};
	const FCase Cases[] = {
		{Content + TEXT("/Maps/MyMap.uasset"), true, "/Game/Maps/MyMap"},
		{Content + TEXT("/Maps/MyMap.umap"), true, "/Game/Maps/MyMap"},
		{Content + TEXT("/Maps/Folder"), true, "/Game/Maps/Folder"},
		{Content + TEXT("/Maps/"), true, "/Game/Maps"},
		{Content, true, "/Game"},
		{Content + TEXT("\\Maps\\Win.uasset"), true, "/Game/Maps/Win"},
		{Content + TEXT("/Maps/../Other.uasset"), true, "/Game/Other"},
		{Plugin.GetContentDir() + TEXT("/Icons/Star.uasset"), true, "/MyPlugin/Icons/Star"},
		{TEXT("/Game/Already/Named.uasset"), true, "/Game/Already/Named"},
		{TEXT("/Game/Already/Named"), true, "/Game/Already/Named"},
		{TEXT(""), false, "Input '' was empty."},
		{Content + TEXT("/../Outside.uasset"), false, "the file is not inside a mounted content folder"},
		{TEXT("/etc/passwd"), false, "the file is not inside a mounted content folder"},
		{Content + TEXT("Sibling/Thing.uasset"), false, "the file is not inside a mounted content folder"},
		{Content + TEXT("/Bad Name.uasset"), false, "contains one of the invalid characters for LongPackageNames"},
		{Content + TEXT("/Two.Dots.uasset"), false, "contains one of the invalid characters for LongPackageNames"},
	};
	for (const FCase& Case : Cases)
	{
		FString PackageName;
		FString Reason;
		EXPECT_EQ(FPackageName::TryConvertFilenameToLongPackageName(Case.Filename, PackageName, &Reason), Case.bValid) << U8(Case.Filename);
		if (Case.bValid)
		{
			EXPECT_EQ(U8(PackageName), Case.Expected) << U8(Case.Filename);
		}
		else
		{
			EXPECT_NE(U8(Reason).find(Case.Expected), std::string::npos) << U8(Case.Filename) << " gave: " << U8(Reason);
		}
	}
	EXPECT_EQ(U8(FPackageName::FilenameToLongPackageName(TEXT("/etc/passwd"))), "");
}

TEST(PackageName, FindsPackageFilesInAFolderTree)
{
	FTempContentFolder Game;
	Game.WriteFile(Game.Content(TEXT("B.uasset")), TEXT("{}"));
	Game.WriteFile(Game.Content(TEXT("A/Map.umap")), TEXT("{}"));
	Game.WriteFile(Game.Content(TEXT("A/Notes.txt")), TEXT("x"));
	Game.WriteFile(Game.Content(TEXT("A/Deeper/C.uasset")), TEXT("{}"));
	TArray<FString> Found;
	EXPECT_TRUE(FPackageName::FindPackagesInDirectory(Found, Game.GetContentDir()));
	TArray<std::string> Relative;
	for (const FString& File : Found)
	{
		Relative.Add(U8(File.RightChop(Game.GetContentDir().Len())));
	}
	EXPECT_EQ(Relative, TArray<std::string>({"/A/Deeper/C.uasset", "/A/Map.umap", "/B.uasset"}));
}

TEST(PackageName, OpeningAProjectMountsItsContentAndEnabledPlugins)
{
	FTempProjectFolder Project(TEXT("Mounted"));
	Project.AddPlugin(TEXT("Tools"), TEXT("Tools"), TEXT(R"({"FileVersion": 3, "CanContainContent": true})"));
	Project.AddPlugin(TEXT("Off"), TEXT("Off"), TEXT(R"({"FileVersion": 3, "CanContainContent": true, "EnabledByDefault": false})"));
	Project.AddPlugin(TEXT("Code"), TEXT("Code"), TEXT(R"({"FileVersion": 3})"));
	Project.Open();

	EXPECT_EQ(U8(FPackageName::GetContentPathForPackageRoot(TEXT("/Game/"))), U8(Project.GetContentDir()) + "/");
	EXPECT_EQ(U8(FPackageName::GetContentPathForPackageRoot(TEXT("/Tools/"))), U8(Project.GetRoot()) + "/Plugins/Tools/Content/");
	EXPECT_FALSE(FPackageName::MountPointExists(TEXT("/Off/")));
	EXPECT_FALSE(FPackageName::MountPointExists(TEXT("/Code/")));
	EXPECT_TRUE(FPackageName::IsValidLongPackageName(TEXT("/Tools/Icons/Star")));
	FString Filename;
	ASSERT_TRUE(FPackageName::TryConvertLongPackageNameToFilename(TEXT("/Game/Maps/Start"), Filename, TEXT(".umap")));
	EXPECT_EQ(U8(Filename), U8(Project.GetContentDir()) + "/Maps/Start.umap");

	UE::Headless::CloseProject();
	EXPECT_FALSE(FPackageName::MountPointExists(TEXT("/Game/")));
	EXPECT_FALSE(FPackageName::MountPointExists(TEXT("/Tools/")));
	EXPECT_FALSE(FPackageName::IsValidLongPackageName(TEXT("/Game/Maps/Start")));
}
