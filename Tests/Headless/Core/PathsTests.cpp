#include "Misc/Paths.h"

#include "StringTestUtils.h"

#include <gtest/gtest.h>

namespace
{
	struct FUnaryCase
	{
		const TCHAR* Input;
		const char* Expected;
	};

	struct FBinaryCase
	{
		const TCHAR* Input;
		const TCHAR* Argument;
		const char* Expected;
	};

	struct FCollapseCase
	{
		const TCHAR* Input;
		const char* Expected;
		bool bExpectedResult;
	};
}

TEST(Paths, GetCleanFilename)
{
	const FUnaryCase Cases[] = {
		{ TEXT("a/b/c.txt"), "c.txt" },
		{ TEXT("c.txt"), "c.txt" },
		{ TEXT("a\\b\\c.txt"), "c.txt" },
		{ TEXT("a/b/"), "" },
		{ TEXT("/"), "" },
		{ TEXT(""), "" },
		{ TEXT("/Game/Maps/Level.umap"), "Level.umap" },
	};
	for (const FUnaryCase& Case : Cases)
	{
		EXPECT_EQ(U8(FPaths::GetCleanFilename(Case.Input)), Case.Expected) << U8(Case.Input);
	}
}

TEST(Paths, GetBaseFilename)
{
	const FUnaryCase RemovingPath[] = {
		{ TEXT("a/b/c.txt"), "c" },
		{ TEXT("a/b.dir/c"), "c" },
		{ TEXT("a/archive.tar.gz"), "archive.tar" },
		{ TEXT(".gitignore"), "" },
		{ TEXT("a/b/"), "" },
		{ TEXT("NoExtension"), "NoExtension" },
	};
	for (const FUnaryCase& Case : RemovingPath)
	{
		EXPECT_EQ(U8(FPaths::GetBaseFilename(Case.Input)), Case.Expected) << U8(Case.Input);
	}

	const FUnaryCase KeepingPath[] = {
		{ TEXT("a/b/c.txt"), "a/b/c" },
		{ TEXT("a/b.dir/c"), "a/b.dir/c" },
		{ TEXT("a\\b.dir\\c.txt"), "a\\b.dir\\c" },
		{ TEXT("a.b"), "a" },
	};
	for (const FUnaryCase& Case : KeepingPath)
	{
		EXPECT_EQ(U8(FPaths::GetBaseFilename(Case.Input, false)), Case.Expected) << U8(Case.Input);
	}
}

TEST(Paths, GetPathAndLeaf)
{
	const FUnaryCase PathCases[] = {
		{ TEXT("a/b/c.txt"), "a/b" },
		{ TEXT("c.txt"), "" },
		{ TEXT("a/b/"), "a/b" },
		{ TEXT("/c.txt"), "" },
		{ TEXT("a\\b/c"), "a\\b" },
		{ TEXT("a/b\\c"), "a/b" },
	};
	for (const FUnaryCase& Case : PathCases)
	{
		EXPECT_EQ(U8(FPaths::GetPath(Case.Input)), Case.Expected) << U8(Case.Input);
	}

	const FUnaryCase LeafCases[] = {
		{ TEXT("a/b/"), "b" },
		{ TEXT("a/b//"), "b" },
		{ TEXT("a/b"), "b" },
		{ TEXT("a"), "a" },
		{ TEXT("/"), "" },
		{ TEXT(""), "" },
	};
	for (const FUnaryCase& Case : LeafCases)
	{
		EXPECT_EQ(U8(FPaths::GetPathLeaf(Case.Input)), Case.Expected) << U8(Case.Input);
	}
}

TEST(Paths, Extensions)
{
	const FUnaryCase WithoutDot[] = {
		{ TEXT("a/b/c.txt"), "txt" },
		{ TEXT("a/b.dir/c"), "" },
		{ TEXT("archive.tar.gz"), "gz" },
		{ TEXT("file."), "" },
		{ TEXT(".gitignore"), "gitignore" },
		{ TEXT("a/b/"), "" },
	};
	for (const FUnaryCase& Case : WithoutDot)
	{
		EXPECT_EQ(U8(FPaths::GetExtension(Case.Input)), Case.Expected) << U8(Case.Input);
	}
	EXPECT_EQ(U8(FPaths::GetExtension(TEXT("a/b/c.txt"), true)), ".txt");
	EXPECT_EQ(U8(FPaths::GetExtension(TEXT("file."), true)), ".");
	EXPECT_EQ(U8(FPaths::GetExtension(TEXT("a.dir/file"), true)), "");

	const FBinaryCase Change[] = {
		{ TEXT("a/b.txt"), TEXT("png"), "a/b.png" },
		{ TEXT("a/b.txt"), TEXT(".png"), "a/b.png" },
		{ TEXT("a/b"), TEXT("png"), "a/b" },
		{ TEXT("a.dir/b"), TEXT("png"), "a.dir/b" },
		{ TEXT("a/b.txt"), TEXT(""), "a/b" },
		{ TEXT("a/b.tar.gz"), TEXT("zip"), "a/b.tar.zip" },
	};
	for (const FBinaryCase& Case : Change)
	{
		EXPECT_EQ(U8(FPaths::ChangeExtension(Case.Input, Case.Argument)), Case.Expected) << U8(Case.Input);
	}

	const FBinaryCase Set[] = {
		{ TEXT("a/b"), TEXT("png"), "a/b.png" },
		{ TEXT("a.dir/b"), TEXT(".png"), "a.dir/b.png" },
		{ TEXT("a/b.txt"), TEXT("png"), "a/b.png" },
		{ TEXT("a\\b.c\\d"), TEXT("e"), "a\\b.c\\d.e" },
	};
	for (const FBinaryCase& Case : Set)
	{
		EXPECT_EQ(U8(FPaths::SetExtension(Case.Input, Case.Argument)), Case.Expected) << U8(Case.Input);
	}
}

TEST(Paths, Split)
{
	struct FCase
	{
		const TCHAR* Input;
		const char* Path;
		const char* Name;
		const char* Extension;
	};
	const FCase Cases[] = {
		{ TEXT("a/b/c.tar.gz"), "a/b", "c.tar", "gz" },
		{ TEXT("c"), "", "c", "" },
		{ TEXT("/c.txt"), "", "c", "txt" },
		{ TEXT("a/.."), "a", "..", "" },
		{ TEXT("a\\b.c"), "a", "b", "c" },
	};
	for (const FCase& Case : Cases)
	{
		FString PathPart, NamePart, ExtensionPart;
		FPaths::Split(Case.Input, PathPart, NamePart, ExtensionPart);
		EXPECT_EQ(U8(PathPart), Case.Path) << U8(Case.Input);
		EXPECT_EQ(U8(NamePart), Case.Name) << U8(Case.Input);
		EXPECT_EQ(U8(ExtensionPart), Case.Extension) << U8(Case.Input);
	}
}

TEST(Paths, CombineJoinsWithOneSlash)
{
	EXPECT_EQ(U8(FPaths::Combine(TEXT("a"), TEXT("b"))), "a/b");
	EXPECT_EQ(U8(FPaths::Combine(TEXT("a/"), TEXT("b"))), "a/b");
	EXPECT_EQ(U8(FPaths::Combine(TEXT("a"), TEXT("/b"))), "a/b");
	EXPECT_EQ(U8(FPaths::Combine(TEXT("a/"), TEXT("/b"))), "a//b");
	EXPECT_EQ(U8(FPaths::Combine(TEXT("a\\"), TEXT("b"))), "a\\b");
	EXPECT_EQ(U8(FPaths::Combine(TEXT(""), TEXT("b"))), "b");
	EXPECT_EQ(U8(FPaths::Combine(TEXT("a"), TEXT(""))), "a/");
	EXPECT_EQ(U8(FPaths::Combine(TEXT(""), TEXT(""))), "");
	EXPECT_EQ(U8(FPaths::Combine(TEXT("a"), TEXT("b"), TEXT("c.txt"))), "a/b/c.txt");
	const FString Root(TEXT("/root"));
	EXPECT_EQ(U8(FPaths::Combine(Root, FString(TEXT("x")), TEXT("y"))), "/root/x/y");
}

TEST(Paths, Normalisation)
{
	FString File(TEXT("a\\b\\c"));
	FPaths::NormalizeFilename(File);
	EXPECT_EQ(U8(File), "a/b/c");

	const FUnaryCase DirectoryCases[] = {
		{ TEXT("a\\b\\"), "a/b" },
		{ TEXT("a/b"), "a/b" },
		{ TEXT("a/b//"), "a/b//" },
		{ TEXT("C:/"), "C:/" },
		{ TEXT("C:\\"), "C:/" },
	};
	for (const FUnaryCase& Case : DirectoryCases)
	{
		FString Directory(Case.Input);
		FPaths::NormalizeDirectoryName(Directory);
		EXPECT_EQ(U8(Directory), Case.Expected) << U8(Case.Input);
	}

	EXPECT_EQ(U8(FPaths::RemoveDuplicateSlashes(FString(TEXT("//a///b/c//")))), "/a/b/c/");
}

TEST(Paths, CollapseRelativeDirectories)
{
	const FCollapseCase Cases[] = {
		{ TEXT("a/b/../c"), "a/c", true },
		{ TEXT("a/./b"), "a/b", true },
		{ TEXT("./a"), "a", true },
		{ TEXT("a/."), "a", true },
		{ TEXT("a/b/.."), "a", true },
		{ TEXT("a/.."), "", true },
		{ TEXT("/a/.."), "", true },
		{ TEXT("C:/a/../b"), "C:/b", true },
		{ TEXT("/Game/Maps/../../Secret"), "/Secret", true },
		{ TEXT("a/.hidden/../b"), "a/b", true },
		{ TEXT("a/..b/c"), "a/..b/c", true },
		{ TEXT("a/...b"), "a/...b", true },
		{ TEXT("a//../b"), "b", true },
		{ TEXT("/."), "/.", true },
		{ TEXT(""), "", true },
		{ TEXT("plain/path"), "plain/path", true },
		// A ".." that climbs above the start is refused: the caller must not use the path.
		{ TEXT("../a"), "../a", false },
		{ TEXT(".."), "..", false },
		{ TEXT("a/../../b"), "../b", false },
		{ TEXT("a/b/../../.."), "..", false },
		{ TEXT("/../a"), "/../a", false },
		{ TEXT("C:/a/../../b"), "C:/../b", false },
		{ TEXT("Content/Maps/../../../Secret"), "../Secret", false },
	};
	for (const FCollapseCase& Case : Cases)
	{
		FString Path(Case.Input);
		const bool bResult = FPaths::CollapseRelativeDirectories(Path);
		EXPECT_EQ(bResult, Case.bExpectedResult) << U8(Case.Input);
		if (bResult)
		{
			EXPECT_EQ(U8(Path), Case.Expected) << U8(Case.Input);
		}
	}

	// Collapsing as much as possible keeps going past a leading "..".
	FString Path(TEXT("../a/b/../c"));
	EXPECT_FALSE(FPaths::CollapseRelativeDirectories(Path, true));
	EXPECT_EQ(U8(Path), "../a/c");
}

TEST(Paths, IsRelative)
{
	struct FCase
	{
		const TCHAR* Input;
		bool bRelative;
	};
	const FCase Cases[] = {
		{ TEXT("a/b"), true },
		{ TEXT(""), true },
		{ TEXT("../a"), true },
		{ TEXT("\\a"), true },
		{ TEXT("1:/x"), true },
		{ TEXT("/a"), false },
		{ TEXT("\\\\server\\share"), false },
		{ TEXT("C:/x"), false },
		{ TEXT("c:"), false },
	};
	for (const FCase& Case : Cases)
	{
		EXPECT_EQ(FPaths::IsRelative(Case.Input), Case.bRelative) << U8(Case.Input);
	}
}

TEST(Paths, ConvertRelativePathToFull)
{
	const FBinaryCase Cases[] = {
		{ TEXT("/base/dir"), TEXT("x/../y"), "/base/dir/y" },
		{ TEXT("/base/dir/"), TEXT("x"), "/base/dir/x" },
		{ TEXT("/base"), TEXT("/abs/./p"), "/abs/p" },
		{ TEXT("/base"), TEXT("..\\up"), "/up" },
		{ TEXT("/base"), TEXT(""), "/base/" },
		{ TEXT("/base"), TEXT(".."), "/" },
		{ TEXT("/base"), TEXT("../../.."), "/../.." },
	};
	for (const FBinaryCase& Case : Cases)
	{
		EXPECT_EQ(U8(FPaths::ConvertRelativePathToFull(FString(Case.Input), FString(Case.Argument))), Case.Expected) << U8(Case.Argument);
	}

	const FString LaunchDir = FPaths::LaunchDir();
	ASSERT_FALSE(LaunchDir.IsEmpty());
	EXPECT_TRUE(LaunchDir.EndsWith(TEXT("/")));
	EXPECT_EQ(U8(FPaths::ConvertRelativePathToFull(TEXT("sub/file.txt"))), U8(LaunchDir + TEXT("sub/file.txt")));
}

TEST(Paths, MakePathRelativeTo)
{
	const FBinaryCase Cases[] = {
		{ TEXT("/a/b/c/file.txt"), TEXT("/a/b/"), "c/file.txt" },
		{ TEXT("/a/x/y"), TEXT("/a/b/c/"), "../../x/y" },
		{ TEXT("/A/B/f"), TEXT("/a/b/"), "f" },
		{ TEXT("/a/b/f"), TEXT("/a/b"), "b/f" },
		{ TEXT("/a/b"), TEXT("/a/b/"), "" },
	};
	for (const FBinaryCase& Case : Cases)
	{
		FString Path(Case.Input);
		EXPECT_TRUE(FPaths::MakePathRelativeTo(Path, Case.Argument)) << U8(Case.Input);
		EXPECT_EQ(U8(Path), Case.Expected) << U8(Case.Input);
	}

	FString OtherDrive(TEXT("C:/a/b"));
	EXPECT_FALSE(FPaths::MakePathRelativeTo(OtherDrive, TEXT("D:/a/")));
	EXPECT_EQ(U8(OtherDrive), "C:/a/b");
}

TEST(Paths, SameAndUnderDirectory)
{
	EXPECT_TRUE(FPaths::IsSamePath(TEXT("/a/b/../c"), TEXT("/a//c")));
	EXPECT_TRUE(FPaths::IsSamePath(TEXT("/a\\c"), TEXT("/a/c")));
	EXPECT_FALSE(FPaths::IsSamePath(TEXT("/a/C"), TEXT("/a/c")));

	EXPECT_TRUE(FPaths::IsUnderDirectory(TEXT("/a/b/c"), TEXT("/a/b")));
	EXPECT_TRUE(FPaths::IsUnderDirectory(TEXT("/a/b"), TEXT("/a/b/")));
	EXPECT_FALSE(FPaths::IsUnderDirectory(TEXT("/a/bc"), TEXT("/a/b")));
	EXPECT_FALSE(FPaths::IsUnderDirectory(TEXT("/a/b/../../x"), TEXT("/a")));
}

TEST(Paths, MakeValidFileName)
{
	EXPECT_EQ(U8(FPaths::MakeValidFileName(TEXT("a:b*c?.txt"))), "abc.txt");
	EXPECT_EQ(U8(FPaths::MakeValidFileName(TEXT("a:b*c?.txt"), TEXT('_'))), "a_b_c_.txt");
	EXPECT_EQ(U8(FPaths::MakeValidFileName(TEXT("<>|%#@^"))), "");
}

TEST(Paths, ProjectFoldersFollowTheProjectFile)
{
	FPaths::SetProjectFilePath(TEXT("/work/Proj\\Proj.uproject"));
	EXPECT_TRUE(FPaths::IsProjectFilePathSet());
	EXPECT_EQ(U8(FPaths::GetProjectFilePath()), "/work/Proj/Proj.uproject");
	EXPECT_EQ(U8(FPaths::ProjectDir()), "/work/Proj/");
	EXPECT_EQ(U8(FPaths::ProjectContentDir()), "/work/Proj/Content/");
	EXPECT_EQ(U8(FPaths::ProjectConfigDir()), "/work/Proj/Config/");
	EXPECT_EQ(U8(FPaths::ProjectPluginsDir()), "/work/Proj/Plugins/");
	EXPECT_EQ(U8(FPaths::ProjectSavedDir()), "/work/Proj/Saved/");
	EXPECT_EQ(U8(FPaths::ProjectIntermediateDir()), "/work/Proj/Intermediate/");

	FPaths::SetProjectFilePath(TEXT("rel/Game/../Game.uproject"));
	EXPECT_EQ(U8(FPaths::ProjectDir()), U8(FPaths::LaunchDir() + TEXT("rel/")));

	FPaths::SetProjectFilePath(FString());
	EXPECT_FALSE(FPaths::IsProjectFilePathSet());
	EXPECT_EQ(U8(FPaths::ProjectDir()), "");
	EXPECT_EQ(U8(FPaths::ProjectContentDir()), "");
}
