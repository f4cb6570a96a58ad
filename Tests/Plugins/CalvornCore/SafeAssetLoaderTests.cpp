#include "AssetRegistry/IAssetRegistry.h"
#include "Headless/Core/StringTestUtils.h"
#include "Headless/Projects/TempProjectFolder.h"
#include "SafeAssetLoader.h"
#include "Serialization/PackageFileHeader.h"

#include <gtest/gtest.h>

using namespace Calvorn;

namespace
{
	class SafeAssetLoaderTest : public ::testing::Test
	{
	protected:
		SafeAssetLoaderTest()
		{
			UE::Headless::FPackageFileHeader Header;
			Header.PackageName = TEXT("/Game/Doors/BP_Door");
			UE::Headless::FPackageFileAssetEntry Asset;
			Asset.ObjectName = FName(TEXT("BP_Door"));
			Asset.ClassPath = TEXT("/Script/CoreUObject.Object");
			Header.Assets.Add(MoveTemp(Asset));
			Project.WriteFile(TEXT("Content/Doors/BP_Door.uasset"), Header.ToHeaderLine() + TEXT("\n\t\"objects\": []\n}\n"));
			Project.Open();
			UE::Headless::ResetAssetRegistry();
		}

		~SafeAssetLoaderTest() override
		{
			UE::Headless::CloseProject();
			UE::Headless::ResetAssetRegistry();
		}

		FTempProjectFolder Project;
	};
}

TEST_F(SafeAssetLoaderTest, ValidPathsAreObjectPathsUnderMountedRoots)
{
	const struct
	{
		const TCHAR* Path;
		bool bValid;
	} Cases[] = {
		{TEXT("/Game/Doors/BP_Door"), true},
		{TEXT("/Game/Doors/BP_Door.BP_Door"), true},
		{TEXT("/Game/Doors/BP_Door.BP_Door:Inner"), true},
		{TEXT("/Script/Engine.Actor"), true},
		{TEXT(""), false},
		{TEXT("Game/Doors/BP_Door"), false},
		{TEXT("/Game/Doors/"), false},
		{TEXT("/Game//Doors/BP_Door"), false},
		{TEXT("/Game/Doors/BP Door"), false},
		{TEXT("/NotMounted/BP_Door"), false},
		{TEXT("/Game/Doors/BP_Door."), false},
		{TEXT("C:/Temp/BP_Door"), false},
	};
	for (const auto& Case : Cases)
	{
		EXPECT_EQ(FSafeAssetLoader::IsValidAssetPath(Case.Path), Case.bValid) << U8(Case.Path);
	}
}

TEST_F(SafeAssetLoaderTest, RegistryCheckUsesThePackagePart)
{
	EXPECT_TRUE(FSafeAssetLoader::AssetExistsInRegistry(TEXT("/Game/Doors/BP_Door")));
	EXPECT_TRUE(FSafeAssetLoader::AssetExistsInRegistry(TEXT("/Game/Doors/BP_Door.BP_Door")));
	EXPECT_TRUE(FSafeAssetLoader::AssetExistsInRegistry(TEXT("/Game/Doors/BP_Door.BP_Door_C")));
	EXPECT_FALSE(FSafeAssetLoader::AssetExistsInRegistry(TEXT("/Game/Doors/BP_Window")));
	EXPECT_FALSE(FSafeAssetLoader::AssetExistsInRegistry(TEXT("/Game/Doors")));
	EXPECT_FALSE(FSafeAssetLoader::AssetExistsInRegistry(TEXT("")));
	EXPECT_FALSE(FSafeAssetLoader::AssetExistsInRegistry(TEXT("not a path")));
}
