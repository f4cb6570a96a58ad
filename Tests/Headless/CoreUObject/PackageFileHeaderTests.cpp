#include "PackageTestUtils.h"
#include "Serialization/PackageFileHeader.h"

#include <gtest/gtest.h>

using UE::Headless::FPackageFileAssetEntry;
using UE::Headless::FPackageFileHeader;

namespace
{
	FPackageFileHeader MakeDoorHeader()
	{
		FPackageFileHeader Header;
		Header.PackageName = TEXT("/Game/Doors/BP_Door");
		FPackageFileAssetEntry Asset;
		Asset.ObjectName = TEXT("BP_Door");
		Asset.ClassPath = TEXT("/Script/Engine.Blueprint");
		Asset.Tags.Emplace(TEXT("ParentClass"), TEXT("/Script/CoreUObject.Class'/Script/Engine.Actor'"));
		Asset.Tags.Emplace(TEXT("BlueprintType"), TEXT("BPTYPE_Normal"));
		Header.Assets.Add(Asset);
		Header.Dependencies = {TEXT("/Game/Shared/M_Wood"), TEXT("/Game/Audio/Creak"), TEXT("/Game/Shared/M_Wood")};
		return Header;
	}
}

TEST(PackageFileHeader, IsOneCompactLineWithSortedTagsAndDependencies)
{
	const FString Line = MakeDoorHeader().ToHeaderLine();
	EXPECT_EQ(U8(Line),
		"{\"format\":\"calvorn-package\",\"version\":1,\"package\":\"/Game/Doors/BP_Door\","
		"\"assets\":[{\"name\":\"BP_Door\",\"class\":\"/Script/Engine.Blueprint\",\"tags\":{\"BlueprintType\":\"BPTYPE_Normal\","
		"\"ParentClass\":\"/Script/CoreUObject.Class'/Script/Engine.Actor'\"}}],"
		"\"dependencies\":[\"/Game/Audio/Creak\",\"/Game/Shared/M_Wood\"],");

	FPackageFileHeader Read;
	FString Reason;
	ASSERT_TRUE(Read.FromHeaderLine(Line, Reason)) << U8(Reason);
	EXPECT_EQ(U8(Read.PackageName), "/Game/Doors/BP_Door");
	ASSERT_EQ(Read.Assets.Num(), 1);
	EXPECT_EQ(Read.Assets[0].ObjectName, FName(TEXT("BP_Door")));
	EXPECT_EQ(U8(Read.Assets[0].ClassPath), "/Script/Engine.Blueprint");
	ASSERT_EQ(Read.Assets[0].Tags.Num(), 2);
	EXPECT_EQ(Read.Assets[0].Tags[0].Key, FName(TEXT("BlueprintType")));
	EXPECT_EQ(Read.Dependencies, TArray<FName>({TEXT("/Game/Audio/Creak"), TEXT("/Game/Shared/M_Wood")}));
	EXPECT_EQ(U8(Read.ToHeaderLine()), U8(Line)) << "writing what was read gives the same bytes";
}

TEST(PackageFileHeader, RefusesLinesThatAreNotPackageHeaders)
{
	struct FCase
	{
		const TCHAR* Line;
		const char* Reason;
	};
	const FCase Cases[] = {
		{TEXT(""), "its first line is not a package header"},
		{TEXT("{\"format\":\"calvorn-package\",\"version\":1,\"package\":\"/Game/A\""), "its first line is not a package header"},
		{TEXT("{\"format\":\"something-else\",\"version\":1,\"package\":\"/Game/A\","), "its \"format\" is not \"calvorn-package\""},
		{TEXT("{\"version\":1,\"package\":\"/Game/A\","), "its \"format\" is not \"calvorn-package\""},
		{TEXT("{\"format\":\"calvorn-package\",\"package\":\"/Game/A\","), "its \"version\" is missing or invalid"},
		{TEXT("{\"format\":\"calvorn-package\",\"version\":7,\"package\":\"/Game/A\","), "format version 7 by a newer program (this one reads up to version 1)"},
		{TEXT("{\"format\":\"calvorn-package\",\"version\":1,"), "no \"package\" name"},
		{TEXT("{\"format\":\"calvorn-package\",\"version\":1,\"package\":\"/Game/A\",\"assets\":[{\"name\":\"A\"}],"), "lacks a \"name\" or \"class\""},
		{TEXT("{\"format\":\"calvorn-package\",\"version\":1,\"package\":\"/Game/A\",\"assets\":[{\"name\":\"A\",\"class\":\"/Script/X.Y\",\"tags\":{\"T\":3}}],"), "the tag \"T\" of asset 'A' is not a string"},
		{TEXT("{\"format\":\"calvorn-package\",\"version\":1,\"package\":\"/Game/A\",\"dependencies\":[\"\"],"), "\"dependencies\" is not a package name"},
	};
	for (const FCase& Case : Cases)
	{
		FPackageFileHeader Header;
		FString Reason;
		EXPECT_FALSE(Header.FromHeaderLine(Case.Line, Reason)) << U8(Case.Line);
		EXPECT_NE(U8(Reason).find(Case.Reason), std::string::npos) << U8(Case.Line) << " gave: " << U8(Reason);
	}
}

TEST(PackageFileHeader, ReadsOnlyTheFirstLineOfAFile)
{
	FTempContentFolder Folder;
	const FString Good = Folder.Content(TEXT("Good.uasset"));
	// Everything after the first line is garbage: reading the header must not look at it.
	Folder.WriteFile(Good, MakeDoorHeader().ToHeaderLine() + TEXT("\n\t\"objects\": [ this is never parsed"));
	FPackageFileHeader Header;
	FString Error;
	ASSERT_TRUE(UE::Headless::ReadPackageFileHeader(Good, Header, Error)) << U8(Error);
	EXPECT_EQ(U8(Header.PackageName), "/Game/Doors/BP_Door");

	const FString Binary = Folder.Content(TEXT("Binary.uasset"));
	Folder.WriteFile(Binary, TEXT("\x01\x02 not json"));
	EXPECT_FALSE(UE::Headless::ReadPackageFileHeader(Binary, Header, Error));
	EXPECT_EQ(U8(Error).rfind("Package file '" + U8(Binary) + "' cannot be read: its first line is not a package header", 0), 0u) << U8(Error);

	const FString Missing = Folder.Content(TEXT("Missing.uasset"));
	EXPECT_FALSE(UE::Headless::ReadPackageFileHeader(Missing, Header, Error));
	EXPECT_EQ(U8(Error), "Cannot read package file '" + U8(Missing) + "': No such file or directory.");

	EXPECT_FALSE(UE::Headless::ReadPackageFileHeader(Folder.GetContentDir(), Header, Error));
	EXPECT_EQ(U8(Error), "Cannot read package file '" + U8(Folder.GetContentDir()) + "': Is a directory.");
}
