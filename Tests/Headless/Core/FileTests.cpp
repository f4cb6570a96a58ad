#include "Containers/StringConv.h"
#include "HAL/FileManager.h"
#include "HAL/PlatformTime.h"
#include "Misc/FileHelper.h"
#include "Misc/Paths.h"

#include "StringTestUtils.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace
{
	// Each test works in its own fresh folder under the system temporary directory.
	class FileTest : public ::testing::Test
	{
	protected:
		void SetUp() override
		{
			std::string Template = (std::filesystem::temp_directory_path() / "calvorn-files-XXXXXX").string();
			ASSERT_NE(mkdtemp(Template.data()), nullptr);
			RootOnDisk = Template;
			Root = FString(UTF8_TO_TCHAR(Template.c_str()));
		}

		void TearDown() override
		{
			std::error_code Error;
			std::filesystem::remove_all(RootOnDisk, Error);
		}

		FString PathOf(const TCHAR* Relative) const
		{
			return FPaths::Combine(Root, Relative);
		}

		std::vector<uint8> BytesOf(const TCHAR* Relative) const
		{
			TArray<uint8> Bytes;
			EXPECT_TRUE(FFileHelper::LoadFileToArray(Bytes, *PathOf(Relative)));
			return std::vector<uint8>(Bytes.begin(), Bytes.end());
		}

		void WriteBytes(const TCHAR* Relative, std::initializer_list<uint8> Bytes) const
		{
			TArray<uint8> Array;
			for (const uint8 Byte : Bytes)
			{
				Array.Add(Byte);
			}
			ASSERT_TRUE(FFileHelper::SaveArrayToFile(Array, *PathOf(Relative)));
		}

		std::vector<std::string> NamesOnDisk() const
		{
			std::vector<std::string> Names;
			for (const auto& Entry : std::filesystem::directory_iterator(RootOnDisk))
			{
				Names.push_back(Entry.path().filename().string());
			}
			std::sort(Names.begin(), Names.end());
			return Names;
		}

		std::filesystem::path RootOnDisk;
		FString Root;
	};

	std::vector<std::string> ToStrings(const TArray<FString>& Array)
	{
		std::vector<std::string> Result;
		for (const FString& Item : Array)
		{
			Result.push_back(U8(Item));
		}
		return Result;
	}

	const TCHAR* const NonAscii = TEXT("Gr\u00fc\u00dfe, \u4e16\u754c \U0001F600 end");
}

TEST_F(FileTest, SaveAndLoadRoundTripInEveryEncoding)
{
	using EEncoding = FFileHelper::EEncodingOptions;
	const FString Text(NonAscii);

	struct FCase
	{
		EEncoding Encoding;
		std::vector<uint8> ExpectedPrefix;
	};
	const FCase Cases[] = {
		{ EEncoding::ForceUTF8WithoutBOM, { 'G', 'r', 0xC3, 0xBC } },
		{ EEncoding::ForceUTF8, { 0xEF, 0xBB, 0xBF, 'G', 'r', 0xC3, 0xBC } },
		{ EEncoding::AutoDetect, { 0xFF, 0xFE, 'G', 0x00, 'r', 0x00, 0xFC, 0x00 } },
		{ EEncoding::ForceUnicode, { 0xFF, 0xFE, 'G', 0x00 } },
	};
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(int32(Case.Encoding));
		ASSERT_TRUE(FFileHelper::SaveStringToFile(Text, *PathOf(TEXT("text.txt")), Case.Encoding));
		const std::vector<uint8> Bytes = BytesOf(TEXT("text.txt"));
		ASSERT_GE(Bytes.size(), Case.ExpectedPrefix.size());
		EXPECT_TRUE(std::equal(Case.ExpectedPrefix.begin(), Case.ExpectedPrefix.end(), Bytes.begin()));

		FString Loaded(TEXT("stale"));
		ASSERT_TRUE(FFileHelper::LoadFileToString(Loaded, *PathOf(TEXT("text.txt"))));
		EXPECT_EQ(U8(Loaded), U8(Text));
	}

	// Without a BOM the bytes are exactly the UTF-8 text.
	ASSERT_TRUE(FFileHelper::SaveStringToFile(Text, *PathOf(TEXT("plain.txt")), EEncoding::ForceUTF8WithoutBOM));
	const std::vector<uint8> Plain = BytesOf(TEXT("plain.txt"));
	EXPECT_EQ(std::string(Plain.begin(), Plain.end()), U8(Text));
}

TEST_F(FileTest, AutoDetectWritesSevenBitTextAsBytes)
{
	ASSERT_TRUE(FFileHelper::SaveStringToFile(FString(TEXT("plain ascii\n")), *PathOf(TEXT("a.txt"))));
	const std::vector<uint8> Bytes = BytesOf(TEXT("a.txt"));
	EXPECT_EQ(std::string(Bytes.begin(), Bytes.end()), "plain ascii\n");

	ASSERT_TRUE(FFileHelper::SaveStringToFile(FString(TEXT("caf\u00e9 \u4e16")), *PathOf(TEXT("ansi.txt")), FFileHelper::EEncodingOptions::ForceAnsi));
	const std::vector<uint8> Ansi = BytesOf(TEXT("ansi.txt"));
	EXPECT_EQ(std::string(Ansi.begin(), Ansi.end()), "caf? ?");

	ASSERT_TRUE(FFileHelper::SaveStringToFile(FString(), *PathOf(TEXT("empty.txt"))));
	EXPECT_EQ(IFileManager::Get().FileSize(*PathOf(TEXT("empty.txt"))), 0);
	FString Loaded(TEXT("stale"));
	EXPECT_TRUE(FFileHelper::LoadFileToString(Loaded, *PathOf(TEXT("empty.txt"))));
	EXPECT_TRUE(Loaded.IsEmpty());
}

TEST_F(FileTest, LoadDetectsByteOrderMarks)
{
	struct FCase
	{
		std::initializer_list<uint8> Bytes;
		std::u16string Expected;
	};
	const FCase Cases[] = {
		{ { 0xFE, 0xFF, 0x00, 'A', 0x4E, 0x16 }, u"A\u4e16" },             // UTF-16 big-endian
		{ { 0xFF, 0xFE, 'A', 0x00, 0x16, 0x4E }, u"A\u4e16" },             // UTF-16 little-endian
		{ { 0xFF, 0xFE }, u"" },                                            // a mark and nothing else
		{ { 0xEF, 0xBB, 0xBF, 'h', 'i' }, u"hi" },                          // UTF-8 mark skipped
		{ { 'h', 0xC3, 0xA9 }, u"h\u00e9" },                                // plain UTF-8
		{ { 'a', 0xC3, '(', 'b' }, u"a\uFFFD(b" },                          // broken sequence replaced
	};
	int32 Index = 0;
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(Index++);
		WriteBytes(TEXT("bom.txt"), Case.Bytes);
		FString Loaded;
		ASSERT_TRUE(FFileHelper::LoadFileToString(Loaded, *PathOf(TEXT("bom.txt"))));
		EXPECT_EQ(U8(Loaded), U8(FString(Case.Expected)));
	}

	// Bytes that are not UTF-8 become replacement characters; the valid text around them survives.
	struct FInvalidCase
	{
		std::initializer_list<uint8> Bytes;
		TCHAR Last;
	};
	const FInvalidCase InvalidCases[] = {
		{ { 0xFF, 0xFE, 'A' }, TEXT('A') },           // a UTF-16 mark on an odd-sized file is not one
		{ { 0xED, 0xA0, 0x80, 'z' }, TEXT('z') },     // an encoded surrogate
		{ { 0xF8, 0x88, 0x80, 0x80, 0x80, '!' }, TEXT('!') }, // a five-byte form
		{ { 0xC0, 0xAF, '.' }, TEXT('.') },           // an overlong '/'
	};
	for (const FInvalidCase& Case : InvalidCases)
	{
		WriteBytes(TEXT("bad.txt"), Case.Bytes);
		FString Loaded;
		ASSERT_TRUE(FFileHelper::LoadFileToString(Loaded, *PathOf(TEXT("bad.txt"))));
		ASSERT_GE(Loaded.Len(), 2);
		EXPECT_EQ(Loaded[Loaded.Len() - 1], Case.Last);
		for (int32 Index = 0; Index + 1 < Loaded.Len(); ++Index)
		{
			EXPECT_EQ(Loaded[Index], TCHAR(0xFFFD)) << Index;
		}
	}
}

TEST_F(FileTest, LoadFileToStringArraySplitsEveryLineEnding)
{
	WriteBytes(TEXT("lines.txt"), { 0xEF, 0xBB, 0xBF, 'o', 'n', 'e', '\r', '\n', 't', 'w', 'o', '\n', '\n', 't', 'h', 'r', 'e', 'e', '\r', 'f', 'o', 'u', 'r', '\n' });
	TArray<FString> Lines;
	ASSERT_TRUE(FFileHelper::LoadFileToStringArray(Lines, *PathOf(TEXT("lines.txt"))));
	EXPECT_EQ(ToStrings(Lines), (std::vector<std::string>{ "one", "two", "", "three", "four" }));

	TArray<FString> Written;
	Written.Add(TEXT("first"));
	Written.Add(TEXT("\u4e16"));
	ASSERT_TRUE(FFileHelper::SaveStringArrayToFile(Written, *PathOf(TEXT("utf16.txt"))));
	ASSERT_TRUE(FFileHelper::LoadFileToStringArray(Lines, *PathOf(TEXT("utf16.txt"))));
	EXPECT_EQ(ToStrings(Lines), ToStrings(Written));

	ASSERT_TRUE(FFileHelper::LoadFileToStringArrayWithPredicate(Lines, *PathOf(TEXT("lines.txt")), [](const FString& Line) { return Line.Len() > 3; }));
	EXPECT_EQ(ToStrings(Lines), (std::vector<std::string>{ "three", "four" }));
}

TEST_F(FileTest, MissingFilesFailCleanly)
{
	const FString Missing = PathOf(TEXT("nope/missing.txt"));
	FString Text(TEXT("stale"));
	EXPECT_FALSE(FFileHelper::LoadFileToString(Text, *Missing));
	EXPECT_TRUE(Text.IsEmpty());
	TArray<uint8> Bytes;
	Bytes.Add(1);
	EXPECT_FALSE(FFileHelper::LoadFileToArray(Bytes, *Missing));
	EXPECT_EQ(Bytes.Num(), 0);
	TArray<FString> Lines;
	EXPECT_FALSE(FFileHelper::LoadFileToStringArray(Lines, *Missing));
	EXPECT_FALSE(FFileHelper::LoadFileToString(Text, TEXT("")));

	IFileManager& FileManager = IFileManager::Get();
	EXPECT_EQ(FileManager.FileSize(*Missing), -1);
	EXPECT_FALSE(FileManager.FileExists(*Missing));
	EXPECT_TRUE(FileManager.Delete(*Missing));
	EXPECT_FALSE(FileManager.Delete(*Missing, true));
	EXPECT_FALSE(FileManager.Move(*PathOf(TEXT("dest.txt")), *Missing));
	EXPECT_EQ(FileManager.Copy(*PathOf(TEXT("dest.txt")), *Missing), uint32(COPY_Fail));

	// A folder is not a file: it cannot be loaded, sized or overwritten as one.
	EXPECT_FALSE(FFileHelper::LoadFileToString(Text, *Root));
	EXPECT_EQ(FileManager.FileSize(*Root), -1);
	EXPECT_FALSE(FileManager.FileExists(*Root));
	EXPECT_TRUE(FileManager.DirectoryExists(*Root));
	EXPECT_FALSE(FFileHelper::SaveStringToFile(FString(TEXT("x")), *Root));
	EXPECT_TRUE(FileManager.DirectoryExists(*Root));
}

TEST_F(FileTest, SavingIsAtomicAndCreatesFolders)
{
	const FString Nested = PathOf(TEXT("deep/er/file.txt"));
	ASSERT_TRUE(FFileHelper::SaveStringToFile(FString(TEXT("v1")), *Nested));
	ASSERT_TRUE(FFileHelper::SaveStringToFile(FString(TEXT("v2")), *Nested));
	FString Loaded;
	ASSERT_TRUE(FFileHelper::LoadFileToString(Loaded, *Nested));
	EXPECT_EQ(U8(Loaded), "v2");
	// No temporary file is left beside the target.
	EXPECT_EQ(NamesOnDisk(), (std::vector<std::string>{ "deep" }));
	TArray<FString> Found;
	IFileManager::Get().FindFiles(Found, *PathOf(TEXT("deep/er")), nullptr);
	EXPECT_EQ(ToStrings(Found), (std::vector<std::string>{ "file.txt" }));

	EXPECT_FALSE(FFileHelper::SaveStringToFile(FString(TEXT("v3")), *Nested, FFileHelper::EEncodingOptions::AutoDetect, &IFileManager::Get(), FILEWRITE_NoReplaceExisting));
	ASSERT_TRUE(FFileHelper::LoadFileToString(Loaded, *Nested));
	EXPECT_EQ(U8(Loaded), "v2");

	ASSERT_TRUE(FFileHelper::SaveStringToFile(FString(TEXT("+v3")), *Nested, FFileHelper::EEncodingOptions::AutoDetect, &IFileManager::Get(), FILEWRITE_Append));
	ASSERT_TRUE(FFileHelper::LoadFileToString(Loaded, *Nested));
	EXPECT_EQ(U8(Loaded), "v2+v3");
}

TEST_F(FileTest, MoveRenamesAtomically)
{
	IFileManager& FileManager = IFileManager::Get();
	const FString Source = PathOf(TEXT("new.txt"));
	const FString Dest = PathOf(TEXT("old.txt"));
	ASSERT_TRUE(FFileHelper::SaveStringToFile(FString(TEXT("new")), *Source));
	ASSERT_TRUE(FFileHelper::SaveStringToFile(FString(TEXT("old")), *Dest));

	// Without Replace an existing destination is left alone.
	EXPECT_FALSE(FileManager.Move(*Dest, *Source, false));
	FString Text;
	ASSERT_TRUE(FFileHelper::LoadFileToString(Text, *Dest));
	EXPECT_EQ(U8(Text), "old");
	EXPECT_TRUE(FileManager.FileExists(*Source));

	EXPECT_TRUE(FileManager.Move(*Dest, *Source));
	ASSERT_TRUE(FFileHelper::LoadFileToString(Text, *Dest));
	EXPECT_EQ(U8(Text), "new");
	EXPECT_FALSE(FileManager.FileExists(*Source));

	// The destination's folder is created.
	const FString Moved = PathOf(TEXT("a/b/moved.txt"));
	EXPECT_TRUE(FileManager.Move(*Moved, *Dest));
	EXPECT_TRUE(FileManager.FileExists(*Moved));
	EXPECT_EQ(FileManager.FileSize(*Moved), 3);

	// A folder is never replaced by a file.
	ASSERT_TRUE(FileManager.MakeDirectory(*PathOf(TEXT("folder"))));
	EXPECT_FALSE(FileManager.Move(*PathOf(TEXT("folder")), *Moved));
	EXPECT_TRUE(FileManager.FileExists(*Moved));
}

TEST_F(FileTest, CopyAndDelete)
{
	IFileManager& FileManager = IFileManager::Get();
	const FString Source = PathOf(TEXT("src.bin"));
	WriteBytes(TEXT("src.bin"), { 1, 2, 3, 0, 255 });

	EXPECT_EQ(FileManager.Copy(*PathOf(TEXT("copies/dst.bin")), *Source), uint32(COPY_OK));
	EXPECT_EQ(BytesOf(TEXT("copies/dst.bin")), (std::vector<uint8>{ 1, 2, 3, 0, 255 }));
	EXPECT_EQ(FileManager.Copy(*Source, *Source), uint32(COPY_Fail));
	EXPECT_EQ(FileManager.Copy(*PathOf(TEXT("copies/dst.bin")), *Source, false), uint32(COPY_Fail));

	EXPECT_TRUE(FileManager.Delete(*PathOf(TEXT("copies/dst.bin")), true));
	EXPECT_FALSE(FileManager.FileExists(*PathOf(TEXT("copies/dst.bin"))));
	// Delete never removes folders.
	EXPECT_TRUE(FileManager.Delete(*PathOf(TEXT("copies"))));
	EXPECT_TRUE(FileManager.DirectoryExists(*PathOf(TEXT("copies"))));

	ASSERT_TRUE(FileManager.MakeDirectory(*PathOf(TEXT("t/u/v")), true));
	EXPECT_FALSE(FileManager.MakeDirectory(*PathOf(TEXT("x/y/z"))));
	EXPECT_TRUE(FileManager.MakeDirectory(*PathOf(TEXT("t/u/v"))));
	WriteBytes(TEXT("t/u/v/f.bin"), { 7 });
	EXPECT_FALSE(FileManager.DeleteDirectory(*PathOf(TEXT("t"))));
	EXPECT_TRUE(FileManager.DirectoryExists(*PathOf(TEXT("t/u/v"))));
	EXPECT_TRUE(FileManager.DeleteDirectory(*PathOf(TEXT("t")), true, true));
	EXPECT_FALSE(FileManager.DirectoryExists(*PathOf(TEXT("t"))));
	EXPECT_TRUE(FileManager.DeleteDirectory(*PathOf(TEXT("t"))));
	EXPECT_FALSE(FileManager.DeleteDirectory(*PathOf(TEXT("t")), true));
}

TEST_F(FileTest, ListingsAreSortedAndFiltered)
{
	const TCHAR* const Files[] = { TEXT("b.txt"), TEXT("a.txt"), TEXT("C.PNG"), TEXT("sub/d.txt"), TEXT("sub/e.png"), TEXT("sub/deeper/f.TXT") };
	for (const TCHAR* File : Files)
	{
		WriteBytes(File, { 'x' });
	}
	IFileManager& FileManager = IFileManager::Get();

	TArray<FString> Found;
	FileManager.FindFiles(Found, *PathOf(TEXT("*.txt")), true, false);
	EXPECT_EQ(ToStrings(Found), (std::vector<std::string>{ "a.txt", "b.txt" }));

	// FindFiles appends; the extension form accepts "png", ".png" and wildcards, ignoring case.
	FileManager.FindFiles(Found, *Root, TEXT("png"));
	EXPECT_EQ(ToStrings(Found), (std::vector<std::string>{ "a.txt", "b.txt", "C.PNG" }));
	Found.Empty();
	FileManager.FindFiles(Found, *Root, TEXT(".PNG"));
	EXPECT_EQ(ToStrings(Found), (std::vector<std::string>{ "C.PNG" }));
	Found.Empty();
	FileManager.FindFiles(Found, *(Root + TEXT("/")), nullptr);
	EXPECT_EQ(ToStrings(Found), (std::vector<std::string>{ "C.PNG", "a.txt", "b.txt" }));
	Found.Empty();
	FileManager.FindFiles(Found, *PathOf(TEXT("*")), false, true);
	EXPECT_EQ(ToStrings(Found), (std::vector<std::string>{ "sub" }));

	TArray<FString> Recursive;
	Recursive.Add(TEXT("cleared"));
	FileManager.FindFilesRecursive(Recursive, *Root, TEXT("*.txt"), true, false);
	const std::string Base = U8(Root);
	EXPECT_EQ(ToStrings(Recursive), (std::vector<std::string>{ Base + "/a.txt", Base + "/b.txt", Base + "/sub/d.txt", Base + "/sub/deeper/f.TXT" }));

	TArray<FString> Folders;
	FileManager.FindFilesRecursive(Folders, *(Root + TEXT("/")), TEXT("*"), false, true);
	EXPECT_EQ(ToStrings(Folders), (std::vector<std::string>{ Base + "/sub", Base + "/sub/deeper" }));

	std::vector<std::string> Visited;
	EXPECT_TRUE(FileManager.IterateDirectory(*PathOf(TEXT("sub")), [&Visited](const TCHAR* Path, bool bIsDirectory)
		{
			Visited.push_back(U8(FPaths::GetCleanFilename(FString(Path))) + (bIsDirectory ? "/" : ""));
			return true;
		}));
	EXPECT_EQ(Visited, (std::vector<std::string>{ "d.txt", "deeper/", "e.png" }));

	int32 Calls = 0;
	EXPECT_FALSE(FileManager.IterateDirectoryRecursively(*Root, [&Calls](const TCHAR*, bool) { return ++Calls < 2; }));
	EXPECT_EQ(Calls, 2);
	EXPECT_FALSE(FileManager.IterateDirectory(*PathOf(TEXT("missing")), [](const TCHAR*, bool) { return true; }));

	EXPECT_TRUE(FPaths::FileExists(PathOf(TEXT("sub/e.png"))));
	EXPECT_TRUE(FPaths::DirectoryExists(PathOf(TEXT("sub/deeper"))));
	EXPECT_FALSE(FPaths::DirectoryExists(PathOf(TEXT("sub/e.png"))));
}

TEST_F(FileTest, ConvertToRelativePath)
{
	IFileManager& FileManager = IFileManager::Get();
	const FString LaunchDir = FPaths::LaunchDir();
	EXPECT_EQ(U8(FileManager.ConvertToRelativePath(*(LaunchDir + TEXT("x/y.txt")))), "x/y.txt");
	EXPECT_EQ(U8(FileManager.ConvertToRelativePath(TEXT("x/../y.txt"))), "y.txt");
	EXPECT_EQ(U8(FileManager.ConvertToAbsolutePathForExternalAppForRead(TEXT("x/y.txt"))), U8(LaunchDir + TEXT("x/y.txt")));
}

TEST(PlatformTime, ClockIsMonotonicAndConsistent)
{
	const double StartSeconds = FPlatformTime::Seconds();
	const uint64 StartCycles = FPlatformTime::Cycles64();
	const auto WaitUntil = std::chrono::steady_clock::now() + std::chrono::milliseconds(20);
	while (std::chrono::steady_clock::now() < WaitUntil)
	{
	}
	const double ElapsedSeconds = FPlatformTime::Seconds() - StartSeconds;
	const uint64 ElapsedCycles = FPlatformTime::Cycles64() - StartCycles;
	EXPECT_GE(ElapsedSeconds, 0.019);
	EXPECT_LT(ElapsedSeconds, 5.0);
	EXPECT_NEAR(FPlatformTime::ToSeconds64(ElapsedCycles), ElapsedSeconds, 0.01);
	EXPECT_GT(FPlatformTime::GetSecondsPerCycle64(), 0.0);
	EXPECT_DOUBLE_EQ(FPlatformTime::ToMilliseconds64(ElapsedCycles), FPlatformTime::ToSeconds64(ElapsedCycles) * 1000.0);
}
