#include "PackageTestUtils.h"
#include "UObject/SavePackage.h"

#include <gtest/gtest.h>

#include <filesystem>

using UE::Headless::EPackageWriteFault;

namespace
{
	TArray<uint8> Bytes(const char* Text)
	{
		TArray<uint8> Result;
		for (const char* Char = Text; *Char; ++Char)
		{
			Result.Add(uint8(*Char));
		}
		return Result;
	}

	std::string ReadAll(const FString& Filename)
	{
		TArray<uint8> Data;
		if (!FFileHelper::LoadFileToArray(Data, *Filename))
		{
			return "<missing>";
		}
		return std::string(reinterpret_cast<const char*>(Data.GetData()), size_t(Data.Num()));
	}

	/** Names in the folder, to prove that no temporary file is left behind. */
	TArray<std::string> FolderEntries(const FString& Folder)
	{
		TArray<std::string> Names;
		for (const auto& Entry : std::filesystem::directory_iterator(FTempContentFolder::Native(Folder)))
		{
			Names.Add(Entry.path().filename().string());
		}
		Names.Sort();
		return Names;
	}

	struct FFaultGuard
	{
		explicit FFaultGuard(EPackageWriteFault Fault) { UE::Headless::SetPackageWriteFaultForTesting(Fault); }
		~FFaultGuard() { UE::Headless::SetPackageWriteFaultForTesting(EPackageWriteFault::None); }
	};
}

TEST(PackageFileWrite, WritesNewFilesAndReplacesOldOnesWhole)
{
	FTempContentFolder Folder;
	const FString Target = Folder.Content(TEXT("Deep/Er/Asset.uasset"));
	FString Error;
	ASSERT_TRUE(UE::Headless::WriteFileAtomically(Target, Bytes("first version"), Error)) << U8(Error);
	EXPECT_EQ(ReadAll(Target), "first version");
	ASSERT_TRUE(UE::Headless::WriteFileAtomically(Target, Bytes("second"), Error)) << U8(Error);
	EXPECT_EQ(ReadAll(Target), "second");
	EXPECT_EQ(FolderEntries(Folder.Content(TEXT("Deep/Er"))), TArray<std::string>({"Asset.uasset"}));
}

TEST(PackageFileWrite, AFailureAtAnyStepLeavesTheOldFileIntact)
{
	FTempContentFolder Folder;
	const FString Target = Folder.Content(TEXT("Asset.uasset"));
	FString Error;
	ASSERT_TRUE(UE::Headless::WriteFileAtomically(Target, Bytes("the good old content"), Error));

	struct FCase
	{
		EPackageWriteFault Fault;
		std::string Message;
	};
	const std::string Name = U8(Target);
	const FCase Cases[] = {
		{EPackageWriteFault::CreateTemporaryFile, "Cannot save '" + Name + "': creating the temporary file '" + Name + "."},
		{EPackageWriteFault::WriteTemporaryFile, "Cannot save '" + Name + "': writing the temporary file failed (No space left on device). The file on disk was left as it was."},
		{EPackageWriteFault::FlushTemporaryFile, "Cannot save '" + Name + "': flushing the temporary file failed (Input/output error). The file on disk was left as it was."},
		{EPackageWriteFault::RenameOverTarget, "Cannot save '" + Name + "': replacing the file failed (Invalid cross-device link). The file on disk was left as it was."},
	};
	for (const FCase& Case : Cases)
	{
		FFaultGuard Guard(Case.Fault);
		EXPECT_FALSE(UE::Headless::WriteFileAtomically(Target, Bytes("a replacement that must never be seen"), Error));
		EXPECT_EQ(U8(Error).substr(0, Case.Message.size()), Case.Message);
		EXPECT_EQ(ReadAll(Target), "the good old content");
		EXPECT_EQ(FolderEntries(Folder.GetContentDir()), TArray<std::string>({"Asset.uasset"})) << "no temporary file may stay behind";
	}
	// A new file that fails is simply not there.
	FFaultGuard Guard(EPackageWriteFault::RenameOverTarget);
	EXPECT_FALSE(UE::Headless::WriteFileAtomically(Folder.Content(TEXT("New.uasset")), Bytes("x"), Error));
	EXPECT_EQ(FolderEntries(Folder.GetContentDir()), TArray<std::string>({"Asset.uasset"}));
}

TEST(PackageFileWrite, RefusesReadOnlyFilesAndThingsInTheWay)
{
	FTempContentFolder Folder;
	const FString ReadOnly = Folder.Content(TEXT("Locked.uasset"));
	Folder.WriteFile(ReadOnly, TEXT("locked"));
	std::filesystem::permissions(FTempContentFolder::Native(ReadOnly), std::filesystem::perms::owner_read | std::filesystem::perms::group_read);
	FString Error;
	EXPECT_FALSE(UE::Headless::WriteFileAtomically(ReadOnly, Bytes("x"), Error));
	EXPECT_EQ(U8(Error), "Cannot save '" + U8(ReadOnly) + "': the file is read-only.");
	EXPECT_EQ(ReadAll(ReadOnly), "locked");

	std::filesystem::create_directories(FTempContentFolder::Native(Folder.Content(TEXT("Folder.uasset"))));
	EXPECT_FALSE(UE::Headless::WriteFileAtomically(Folder.Content(TEXT("Folder.uasset")), Bytes("x"), Error));
	EXPECT_EQ(U8(Error), "Cannot save '" + U8(Folder.Content(TEXT("Folder.uasset"))) + "': a folder of that name is in the way.");

	Folder.WriteFile(Folder.Content(TEXT("File")), TEXT("a file, not a folder"));
	EXPECT_FALSE(UE::Headless::WriteFileAtomically(Folder.Content(TEXT("File/Asset.uasset")), Bytes("x"), Error));
	EXPECT_EQ(U8(Error), "Cannot save '" + U8(Folder.Content(TEXT("File/Asset.uasset"))) + "': its folder '" + U8(Folder.Content(TEXT("File"))) + "' cannot be created.");
}
