#include "AssetRegistry/AssetRegistryModule.h"
#include "AssetRegistry/IAssetRegistry.h"
#include "Headless/Projects/TempProjectFolder.h"
#include "Misc/PackageName.h"
#include "Modules/ModuleManager.h"
#include "Serialization/PackageFileHeader.h"
#include "UObject/AssetRegistryTagsContext.h"
#include "UObject/Class.h"
#include "UObject/Object.h"
#include "UObject/Package.h"
#include "UObject/SavePackage.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"
#include "UObject/UnrealType.h"
#include "UObject/ObjectPtr.h"
#include "Templates/Casts.h"

#include <gtest/gtest.h>

#include <filesystem>

// A small class tree for class filters: Shape <- Round <- Ball, Shape <- Box.
class URegistryTestShape : public UObject
{
	DECLARE_CLASS(URegistryTestShape, UObject, CLASS_None, CASTCLASS_None, TEXT("/Script/RegistryTests"), NO_API)
public:
	FString Colour;
	virtual void GetAssetRegistryTags(FAssetRegistryTagsContext Context) const override
	{
		Super::GetAssetRegistryTags(Context);
		Context.AddTag(FAssetRegistryTag(TEXT("Colour"), Colour, FAssetRegistryTag::TT_Alphabetical));
	}
};
IMPLEMENT_CLASS(URegistryTestShape, UE_NATIVE_PROPERTY(FStrProperty, Colour, CPF_Edit);)

class URegistryTestRound : public URegistryTestShape
{
	DECLARE_CLASS(URegistryTestRound, URegistryTestShape, CLASS_None, CASTCLASS_None, TEXT("/Script/RegistryTests"), NO_API)
};
IMPLEMENT_CLASS(URegistryTestRound)

class URegistryTestBall : public URegistryTestRound
{
	DECLARE_CLASS(URegistryTestBall, URegistryTestRound, CLASS_None, CASTCLASS_None, TEXT("/Script/RegistryTests"), NO_API)
public:
	TObjectPtr<UObject> Friend;
};
IMPLEMENT_CLASS(URegistryTestBall, UE_NATIVE_PROPERTY(FObjectProperty, Friend, CPF_Edit, UObject::StaticClass());)

class URegistryTestBox : public URegistryTestShape
{
	DECLARE_CLASS(URegistryTestBox, URegistryTestShape, CLASS_None, CASTCLASS_None, TEXT("/Script/RegistryTests"), NO_API)
};
IMPLEMENT_CLASS(URegistryTestBox)

namespace
{
	const TCHAR* const ShapeClass = TEXT("/Script/RegistryTests.RegistryTestShape");
	const TCHAR* const RoundClass = TEXT("/Script/RegistryTests.RegistryTestRound");
	const TCHAR* const BallClass = TEXT("/Script/RegistryTests.RegistryTestBall");
	const TCHAR* const BoxClass = TEXT("/Script/RegistryTests.RegistryTestBox");

	/** Writes a package file as the header reader sees it: only the first line matters to a scan. */
	void WritePackageFile(const FTempProjectFolder& Project, const FString& Relative, const FString& PackageName, const TCHAR* ClassPath,
		TArray<TPair<FName, FString>> Tags = {}, TArray<FName> Dependencies = {})
	{
		UE::Headless::FPackageFileHeader Header;
		Header.PackageName = PackageName;
		UE::Headless::FPackageFileAssetEntry Asset;
		Asset.ObjectName = FName(FPackageName::GetShortName(PackageName));
		Asset.ClassPath = ClassPath;
		Asset.Tags = MoveTemp(Tags);
		Header.Assets.Add(MoveTemp(Asset));
		Header.Dependencies = MoveTemp(Dependencies);
		Project.WriteFile(Relative, Header.ToHeaderLine() + TEXT("\n\t\"objects\": []\n}\n"));
	}

	TArray<std::string> ObjectPaths(const TArray<FAssetData>& Assets)
	{
		TArray<std::string> Paths;
		for (const FAssetData& Asset : Assets)
		{
			Paths.Add(U8(Asset.GetObjectPathString()));
		}
		return Paths;
	}

	TArray<std::string> Names(const TArray<FName>& Values)
	{
		TArray<std::string> Result;
		for (const FName& Value : Values)
		{
			Result.Add(U8(Value.ToString()));
		}
		return Result;
	}

	/** A project with assets in folders, a plug-in with content, a disabled plug-in and some files that are not assets. */
	class AssetRegistryTest : public ::testing::Test
	{
	protected:
		AssetRegistryTest()
			: Project(TEXT("Shapes"))
		{
			Project.AddPlugin(TEXT("Toys"), TEXT("Toys"), TEXT(R"({"FileVersion": 3, "CanContainContent": true})"));
			Project.AddPlugin(TEXT("Hidden"), TEXT("Hidden"), TEXT(R"({"FileVersion": 3, "CanContainContent": true, "EnabledByDefault": false})"));
			WritePackageFile(Project, TEXT("Content/Balls/Red.uasset"), TEXT("/Game/Balls/Red"), BallClass, {{TEXT("Colour"), TEXT("Red")}}, {TEXT("/Game/Boxes/Crate")});
			WritePackageFile(Project, TEXT("Content/Balls/Big/Blue.uasset"), TEXT("/Game/Balls/Big/Blue"), BallClass, {{TEXT("Colour"), TEXT("Blue")}}, {TEXT("/Game/Boxes/Crate"), TEXT("/Toys/Kite")});
			WritePackageFile(Project, TEXT("Content/Boxes/Crate.uasset"), TEXT("/Game/Boxes/Crate"), BoxClass, {{TEXT("Colour"), TEXT("Brown")}});
			WritePackageFile(Project, TEXT("Content/Round.uasset"), TEXT("/Game/Round"), RoundClass);
			WritePackageFile(Project, TEXT("Content/Maps/Level.umap"), TEXT("/Game/Maps/Level"), TEXT("/Script/Engine.World"));
			WritePackageFile(Project, TEXT("Plugins/Toys/Content/Kite.uasset"), TEXT("/Toys/Kite"), ShapeClass);
			WritePackageFile(Project, TEXT("Plugins/Hidden/Content/Secret.uasset"), TEXT("/Hidden/Secret"), ShapeClass);
			Project.WriteFile(TEXT("Content/Readme.txt"), TEXT("not an asset"));
			Project.WriteFile(TEXT("Content/Broken.uasset"), TEXT("this is not a package\n"));
			Project.WriteFile(TEXT("Content/Bad Name.uasset"), TEXT("{}\n"));
			Project.Open();
			UE::Headless::ResetAssetRegistry();
			Registry().SearchAllAssets(true);
		}

		~AssetRegistryTest() override
		{
			UE::Headless::CloseProject();
			UE::Headless::ResetAssetRegistry();
		}

		static IAssetRegistry& Registry()
		{
			return FModuleManager::LoadModuleChecked<FAssetRegistryModule>(TEXT("AssetRegistry")).Get();
		}

		TArray<std::string> Query(const FARFilter& Filter)
		{
			TArray<FAssetData> Assets;
			Registry().GetAssets(Filter, Assets);
			return ObjectPaths(Assets);
		}

		FTempProjectFolder Project;
	};
}

TEST_F(AssetRegistryTest, ScansEveryMountedFolderAndReportsWhatItSkips)
{
	// Asked before any search, the registry searches first.
	UE::Headless::ResetAssetRegistry();
	TArray<FAssetData> All;
	Registry().GetAllAssets(All);
	EXPECT_EQ(ObjectPaths(All), TArray<std::string>({"/Game/Balls/Big/Blue.Blue", "/Game/Balls/Red.Red", "/Game/Boxes/Crate.Crate", "/Game/Maps/Level.Level",
		"/Game/Round.Round", "/Toys/Kite.Kite"}));

	const TArray<FString> Errors = UE::Headless::TakeAssetRegistryScanErrors();
	ASSERT_EQ(Errors.Num(), 2);
	EXPECT_EQ(U8(Errors[0]).rfind("Skipped '" + U8(Project.Path(TEXT("Content/Bad Name.uasset"))) + "': FilenameToLongPackageName failed to convert", 0), 0u) << U8(Errors[0]);
	EXPECT_EQ(U8(Errors[1]).rfind("Package file '" + U8(Project.Path(TEXT("Content/Broken.uasset"))) + "' cannot be read: its first line is not a package header", 0), 0u) << U8(Errors[1]);
	EXPECT_EQ(UE::Headless::TakeAssetRegistryScanErrors().Num(), 0);
}

TEST_F(AssetRegistryTest, AssetDataDescribesTheAssetWithoutLoadingIt)
{
	const FAssetData Red = Registry().GetAssetByObjectPath(FSoftObjectPath(TEXT("/Game/Balls/Red.Red")));
	ASSERT_TRUE(Red.IsValid());
	EXPECT_EQ(Red.PackageName, FName(TEXT("/Game/Balls/Red")));
	EXPECT_EQ(Red.PackagePath, FName(TEXT("/Game/Balls")));
	EXPECT_EQ(Red.AssetName, FName(TEXT("Red")));
	EXPECT_EQ(U8(Red.AssetClassPath.ToString()), U8(BallClass));
	EXPECT_EQ(U8(Red.GetSoftObjectPath().ToString()), "/Game/Balls/Red.Red");
	EXPECT_EQ(U8(Red.GetFullName()), "/Script/RegistryTests.RegistryTestBall /Game/Balls/Red.Red");
	EXPECT_EQ(U8(Red.GetExportTextName()), "/Script/RegistryTests.RegistryTestBall'/Game/Balls/Red.Red'");
	EXPECT_TRUE(Red.IsUAsset());
	EXPECT_EQ(U8(Red.GetTagValueRef<FString>(TEXT("Colour"))), "Red");
	FString Missing;
	EXPECT_FALSE(Red.GetTagValue(TEXT("Size"), Missing));
	EXPECT_FALSE(Red.IsAssetLoaded());
	EXPECT_EQ(Red.GetClass(), URegistryTestBall::StaticClass());
	EXPECT_TRUE(Red.IsInstanceOf(URegistryTestShape::StaticClass()));

	EXPECT_FALSE(Registry().GetAssetByObjectPath(FSoftObjectPath(TEXT("/Game/Balls/Red.Green"))).IsValid());
	EXPECT_FALSE(Registry().GetAssetByObjectPath(FSoftObjectPath(TEXT("/Hidden/Secret.Secret"))).IsValid()) << "disabled plug-ins are not mounted";
}

TEST_F(AssetRegistryTest, FiltersCombinePathsClassesNamesAndTags)
{
	struct FCase
	{
		const char* What;
		FARFilter Filter;
		TArray<std::string> Expected;
	};
	TArray<FCase> Cases;
	auto Add = [&Cases](const char* What, TFunction<void(FARFilter&)> Fill, TArray<std::string> Expected)
	{
		FCase Case{What, FARFilter(), MoveTemp(Expected)};
		Fill(Case.Filter);
		Cases.Add(MoveTemp(Case));
	};
	Add("folder", [](FARFilter& F) { F.PackagePaths.Add(TEXT("/Game/Balls")); }, {"/Game/Balls/Red.Red"});
	Add("folder with sub-folders", [](FARFilter& F) { F.PackagePaths.Add(TEXT("/Game/Balls")); F.bRecursivePaths = true; }, {"/Game/Balls/Big/Blue.Blue", "/Game/Balls/Red.Red"});
	Add("folder spelled with a trailing slash and other case", [](FARFilter& F) { F.PackagePaths.Add(TEXT("/game/balls/")); F.bRecursivePaths = true; }, {"/Game/Balls/Big/Blue.Blue", "/Game/Balls/Red.Red"});
	Add("a prefix is not a folder", [](FARFilter& F) { F.PackagePaths.Add(TEXT("/Game/Bal")); F.bRecursivePaths = true; }, {});
	Add("two folders", [](FARFilter& F) { F.PackagePaths = {TEXT("/Game/Boxes"), TEXT("/Toys")}; }, {"/Game/Boxes/Crate.Crate", "/Toys/Kite.Kite"});
	Add("exact class", [](FARFilter& F) { F.ClassPaths.Add(FTopLevelAssetPath(RoundClass)); }, {"/Game/Round.Round"});
	Add("class and subclasses", [](FARFilter& F) { F.ClassPaths.Add(FTopLevelAssetPath(RoundClass)); F.bRecursiveClasses = true; },
		{"/Game/Balls/Big/Blue.Blue", "/Game/Balls/Red.Red", "/Game/Round.Round"});
	Add("subclasses minus an excluded branch", [](FARFilter& F) { F.ClassPaths.Add(FTopLevelAssetPath(ShapeClass)); F.bRecursiveClasses = true; F.RecursiveClassPathsExclusionSet.Add(FTopLevelAssetPath(RoundClass)); },
		{"/Game/Boxes/Crate.Crate", "/Toys/Kite.Kite"});
	Add("class not in memory matches itself", [](FARFilter& F) { F.ClassPaths.Add(FTopLevelAssetPath(TEXT("/Script/Engine.World"))); F.bRecursiveClasses = true; }, {"/Game/Maps/Level.Level"});
	Add("path and class together", [](FARFilter& F) { F.PackagePaths.Add(TEXT("/Game")); F.bRecursivePaths = true; F.ClassPaths.Add(FTopLevelAssetPath(BoxClass)); }, {"/Game/Boxes/Crate.Crate"});
	Add("package names", [](FARFilter& F) { F.PackageNames = {TEXT("/Game/Round"), TEXT("/Toys/Kite"), TEXT("/Game/Nothing")}; }, {"/Game/Round.Round", "/Toys/Kite.Kite"});
	Add("object paths", [](FARFilter& F) { F.SoftObjectPaths.Add(FSoftObjectPath(TEXT("/Game/Boxes/Crate.Crate"))); }, {"/Game/Boxes/Crate.Crate"});
	Add("tag with a value", [](FARFilter& F) { F.TagsAndValues.Emplace(TEXT("Colour"), TOptional<FString>(FString(TEXT("Blue")))); }, {"/Game/Balls/Big/Blue.Blue"});
	Add("tag with any value", [](FARFilter& F) { F.TagsAndValues.Emplace(TEXT("Colour"), TOptional<FString>()); }, {"/Game/Balls/Big/Blue.Blue", "/Game/Balls/Red.Red", "/Game/Boxes/Crate.Crate"});
	for (const FCase& Case : Cases)
	{
		EXPECT_EQ(Query(Case.Filter), Case.Expected) << Case.What;
	}

	TArray<FAssetData> Assets;
	Registry().GetAssetsByClass(FTopLevelAssetPath(ShapeClass), Assets, true);
	EXPECT_EQ(Assets.Num(), 5);
	Assets.Reset();
	Registry().GetAssetsByPath(TEXT("/Game"), Assets, false);
	EXPECT_EQ(ObjectPaths(Assets), TArray<std::string>({"/Game/Round.Round"}));
	EXPECT_TRUE(Registry().HasAssets(TEXT("/Game/Balls")));
	EXPECT_TRUE(Registry().HasAssets(TEXT("/Game"), true));
	EXPECT_FALSE(Registry().HasAssets(TEXT("/Game/Empty"), true));

	TArray<FString> SubPaths;
	Registry().GetSubPaths(TEXT("/Game"), SubPaths, false);
	EXPECT_EQ(SubPaths, TArray<FString>({TEXT("/Game/Balls"), TEXT("/Game/Boxes"), TEXT("/Game/Maps")}));
	SubPaths.Reset();
	Registry().GetSubPaths(TEXT("/Game"), SubPaths, true);
	EXPECT_EQ(SubPaths, TArray<FString>({TEXT("/Game/Balls"), TEXT("/Game/Balls/Big"), TEXT("/Game/Boxes"), TEXT("/Game/Maps")}));
}

TEST_F(AssetRegistryTest, KnowsWhichPackagesReferenceWhich)
{
	TArray<FName> Found;
	EXPECT_TRUE(Registry().GetDependencies(TEXT("/Game/Balls/Big/Blue"), Found));
	EXPECT_EQ(Names(Found), TArray<std::string>({"/Game/Boxes/Crate", "/Toys/Kite"}));
	Found.Reset();
	EXPECT_TRUE(Registry().GetReferencers(TEXT("/Game/Boxes/Crate"), Found));
	EXPECT_EQ(Names(Found), TArray<std::string>({"/Game/Balls/Big/Blue", "/Game/Balls/Red"}));
	Found.Reset();
	EXPECT_FALSE(Registry().GetReferencers(TEXT("/Game/Round"), Found));
	EXPECT_FALSE(Registry().GetDependencies(TEXT("/Game/Unknown"), Found));
}

TEST_F(AssetRegistryTest, FilesLeavingTheirFolderAndCaseTwinsAreSkipped)
{
	const std::filesystem::path Outside = FTempProjectFolder::ToNative(Project.Path(TEXT("Outside")));
	std::filesystem::create_directories(Outside);
	WritePackageFile(Project, TEXT("Outside/Stolen.uasset"), TEXT("/Game/Stolen"), ShapeClass);
	std::filesystem::create_symlink(Outside / "Stolen.uasset", FTempProjectFolder::ToNative(Project.Path(TEXT("Content/Stolen.uasset"))));
	WritePackageFile(Project, TEXT("Content/round.uasset"), TEXT("/Game/round"), RoundClass);
	UE::Headless::TakeAssetRegistryScanErrors();

	Registry().ScanPathsSynchronous({TEXT("/Game")}, true);
	EXPECT_FALSE(Registry().GetAssetByObjectPath(FSoftObjectPath(TEXT("/Game/Stolen.Stolen"))).IsValid());
	const TArray<FString> Errors = UE::Headless::TakeAssetRegistryScanErrors();
	TArray<std::string> Text;
	for (const FString& Error : Errors)
	{
		Text.Add(U8(Error));
	}
	ASSERT_EQ(Text.Num(), 4) << ::testing::PrintToString(Text);
	EXPECT_NE(Text[3].find("Skipped '" + U8(Project.Path(TEXT("Content/round.uasset"))) + "': package '/Game/round' already comes from '"), std::string::npos) << Text[3];
	EXPECT_NE(Text[2].find("leads through the symbolic link '" + U8(Project.Path(TEXT("Content/Stolen.uasset"))) + "'"), std::string::npos) << Text[2];
}

TEST_F(AssetRegistryTest, FollowsSavesDeletionsAndUnmounts)
{
	TArray<std::string> Events;
	const FDelegateHandle Added = Registry().OnAssetAdded().AddLambda([&Events](const FAssetData& Asset) { Events.Add("+" + U8(Asset.GetObjectPathString())); });
	const FDelegateHandle Removed = Registry().OnAssetRemoved().AddLambda([&Events](const FAssetData& Asset) { Events.Add("-" + U8(Asset.GetObjectPathString())); });
	const FDelegateHandle Updated = Registry().OnAssetUpdated().AddLambda([&Events](const FAssetData& Asset) { Events.Add("~" + U8(Asset.GetObjectPathString())); });

	// A new asset is known in memory first, then on disk once saved.
	UPackage* Package = CreatePackage(TEXT("/Game/Balls/Green"));
	URegistryTestBall* Green = NewObject<URegistryTestBall>(Package, TEXT("Green"), RF_Public | RF_Standalone);
	Green->Colour = TEXT("Green");
	FAssetRegistryModule::AssetCreated(Green);
	FARFilter OnDisk;
	OnDisk.PackageNames.Add(TEXT("/Game/Balls/Green"));
	OnDisk.bIncludeOnlyOnDiskAssets = true;
	EXPECT_EQ(Query(OnDisk), TArray<std::string>());
	EXPECT_EQ(U8(Registry().GetAssetByObjectPath(FSoftObjectPath(TEXT("/Game/Balls/Green.Green"))).GetTagValueRef<FString>(TEXT("Colour"))), "Green");

	const FString Filename = FPackageName::LongPackageNameToFilename(TEXT("/Game/Balls/Green"), TEXT(".uasset"));
	ASSERT_TRUE(UPackage::Save(Package, Green, *Filename, FSavePackageArgs()).IsSuccessful()) << U8(UE::Headless::GetLastPackageError());
	EXPECT_EQ(Query(OnDisk), TArray<std::string>({"/Game/Balls/Green.Green"}));

	Green->Colour = TEXT("Lime");
	ASSERT_TRUE(UPackage::Save(Package, Green, *Filename, FSavePackageArgs()).IsSuccessful()) << U8(UE::Headless::GetLastPackageError());
	EXPECT_EQ(U8(Registry().GetAssetByObjectPath(FSoftObjectPath(TEXT("/Game/Balls/Green.Green"))).GetTagValueRef<FString>(TEXT("Colour"))), "Lime");

	// Deleting the asset and its file forgets it.
	std::filesystem::remove(FTempProjectFolder::ToNative(Filename));
	FAssetRegistryModule::AssetDeleted(Green);
	EXPECT_FALSE(Registry().GetAssetByObjectPath(FSoftObjectPath(TEXT("/Game/Balls/Green.Green"))).IsValid());

	// A file removed behind the registry's back goes on the next scan of its folder.
	std::filesystem::remove(FTempProjectFolder::ToNative(Project.Path(TEXT("Content/Round.uasset"))));
	Registry().ScanFilesSynchronous({TEXT("/Game/Round")});
	EXPECT_FALSE(Registry().GetAssetByObjectPath(FSoftObjectPath(TEXT("/Game/Round.Round"))).IsValid());

	// The first save changes nothing the registry shows; the second changes a tag.
	EXPECT_EQ(Events, TArray<std::string>({"+/Game/Balls/Green.Green", "~/Game/Balls/Green.Green", "-/Game/Balls/Green.Green", "-/Game/Round.Round"}));

	// Closing the project unmounts its folders; their assets go with them.
	UE::Headless::CloseProject();
	TArray<FAssetData> All;
	Registry().GetAllAssets(All);
	EXPECT_EQ(All.Num(), 0);

	Registry().OnAssetAdded().Remove(Added);
	Registry().OnAssetRemoved().Remove(Removed);
	Registry().OnAssetUpdated().Remove(Updated);
	Green->MarkAsGarbage();
	Package->MarkAsGarbage();
	CollectGarbage(RF_NoFlags);
}

TEST_F(AssetRegistryTest, AssetDataLoadsItsAssetAndScansStayInsideTheMounts)
{
	UPackage* Package = CreatePackage(TEXT("/Game/Balls/Yellow"));
	URegistryTestBall* Yellow = NewObject<URegistryTestBall>(Package, TEXT("Yellow"), RF_Public | RF_Standalone);
	Yellow->Colour = TEXT("Yellow");
	ASSERT_TRUE(UPackage::Save(Package, Yellow, *FPackageName::LongPackageNameToFilename(TEXT("/Game/Balls/Yellow"), TEXT(".uasset")), FSavePackageArgs()).IsSuccessful())
		<< U8(UE::Headless::GetLastPackageError());
	Yellow->MarkAsGarbage();
	Package->MarkAsGarbage();
	CollectGarbage(RF_NoFlags);

	const FAssetData Data = Registry().GetAssetByObjectPath(FSoftObjectPath(TEXT("/Game/Balls/Yellow.Yellow")));
	ASSERT_TRUE(Data.IsValid());
	EXPECT_FALSE(Data.IsAssetLoaded());
	URegistryTestBall* Loaded = Cast<URegistryTestBall>(Data.GetAsset());
	ASSERT_NE(Loaded, nullptr) << U8(UE::Headless::GetLastPackageError());
	EXPECT_EQ(U8(Loaded->Colour), "Yellow");
	EXPECT_TRUE(Data.IsAssetLoaded());

	UE::Headless::TakeAssetRegistryScanErrors();
	Registry().ScanPathsSynchronous({TEXT("/tmp"), TEXT("/Nowhere/Folder")});
	const TArray<FString> Errors = UE::Headless::TakeAssetRegistryScanErrors();
	ASSERT_EQ(Errors.Num(), 2);
	EXPECT_NE(U8(Errors[0]).find("Cannot scan '/tmp': FilenameToLongPackageName failed to convert '/tmp': the file is not inside a mounted content folder"), std::string::npos) << U8(Errors[0]);
	EXPECT_NE(U8(Errors[1]).find("Cannot scan '/Nowhere/Folder'"), std::string::npos) << U8(Errors[1]);

	Loaded->MarkAsGarbage();
	Loaded->GetPackage()->MarkAsGarbage();
	CollectGarbage(RF_NoFlags);
}
