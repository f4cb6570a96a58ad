#include "Misc/Paths.h"

#include "HAL/FileManager.h"
#include "HAL/FileSystemPaths.h"
#include "Math/UnrealMathUtility.h"
#include "Misc/Char.h"

#include <filesystem>
#include <string>
#include <system_error>

using UE::Core::Private::FromFileSystemPath;

namespace
{
	bool IsSlashOrBackslash(TCHAR Char)
	{
		return Char == TEXT('/') || Char == TEXT('\\');
	}

	int32 FindLastSeparator(std::u16string_view Path, int32 Count)
	{
		for (int32 Index = Count - 1; Index >= 0; --Index)
		{
			if (IsSlashOrBackslash(Path[size_t(Index)]))
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}

	int32 FindLastNonSeparator(std::u16string_view Path)
	{
		for (int32 Index = int32(Path.size()) - 1; Index >= 0; --Index)
		{
			if (!IsSlashOrBackslash(Path[size_t(Index)]))
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}

	/** Position of the dot that starts the file name's extension, or INDEX_NONE when the last dot belongs to a folder. */
	int32 FindExtensionDot(std::u16string_view Path)
	{
		for (int32 Index = int32(Path.size()) - 1; Index >= 0; --Index)
		{
			const TCHAR Char = Path[size_t(Index)];
			if (Char == TEXT('.'))
			{
				return Index;
			}
			if (IsSlashOrBackslash(Char))
			{
				return INDEX_NONE;
			}
		}
		return INDEX_NONE;
	}

	/** FString's path-append rule: one '/' between the parts unless either side already has a separator. */
	void AppendPathPart(std::u16string& Result, std::u16string_view Part)
	{
		const bool bLeftEndsWithSeparator = !Result.empty() && IsSlashOrBackslash(Result.back());
		if (Part.empty())
		{
			if (!Result.empty() && !bLeftEndsWithSeparator)
			{
				Result += u'/';
			}
			return;
		}
		if (!Result.empty() && !bLeftEndsWithSeparator && Part.front() != u'/')
		{
			Result += u'/';
		}
		Result += Part;
	}

	bool IsDotDotComponentAt(const std::u16string& Path, size_t Pos)
	{
		return Path.compare(Pos, 2, u"..") == 0 && (Pos + 2 == Path.size() || Path[Pos + 2] == u'/');
	}

	/**
	 * Folds "/." and "folder/.." in place. Text before Protected is never removed: a volume prefix
	 * ("C:"), and every ".." that could not be folded, which is what makes the result false.
	 */
	bool CollapseRelativeDirectoriesInPlace(std::u16string& Path, bool bCollapseAllPossible)
	{
		bool bAllCollapsed = true;
		size_t Protected = 0;

		const size_t FirstMark = Path.find_first_of(u":/");
		if (FirstMark != std::u16string::npos && Path[FirstMark] == u':')
		{
			Protected = FirstMark + 1;
		}

		// The scan below looks for "/.", so a leading "./" needs its own handling, and a path that
		// is exactly "/." must not be emptied.
		if (Path.compare(Protected, 2, u"./") == 0)
		{
			Path.erase(Protected, 2);
		}
		else if (Path.compare(Protected, std::u16string::npos, u"/.") == 0)
		{
			Protected += 2;
		}

		auto GiveUpOnThisDotDot = [&](size_t NewProtected)
		{
			Protected = NewProtected;
			bAllCollapsed = false;
			return bCollapseAllPossible;
		};

		size_t Cursor = Protected;
		while (Cursor < Path.size())
		{
			if (Cursor == Protected && IsDotDotComponentAt(Path, Protected))
			{
				// A ".." at the start has nothing before it to cancel.
				if (!GiveUpOnThisDotDot(Protected + 2))
				{
					return false;
				}
				continue;
			}

			const size_t Slash = Path.find(u"/.", Cursor);
			if (Slash == std::u16string::npos)
			{
				break;
			}
			const size_t AfterDot = Slash + 2;
			if (AfterDot == Path.size() || Path[AfterDot] == u'/')
			{
				Path.erase(Slash, 2); // a "." component
				continue;
			}
			if (Path[AfterDot] != u'.')
			{
				Cursor = AfterDot + 1; // a name starting with '.'
				continue;
			}
			if (AfterDot + 1 < Path.size() && Path[AfterDot + 1] != u'/')
			{
				Cursor = AfterDot + 2; // a name starting with ".."
				continue;
			}

			// A ".." component starts at Slash.
			if (Slash == Protected)
			{
				if (!GiveUpOnThisDotDot(Slash + 3))
				{
					return false;
				}
				Cursor = Protected;
				continue;
			}

			// Find the separator before the component that ".." cancels, treating a run of
			// separators right before the ".." as one.
			size_t Previous = Slash == 0 ? std::u16string::npos : Path.rfind(u'/', Slash - 1);
			if (Previous != std::u16string::npos && Previous + 1 == Slash)
			{
				while (Previous > 0 && Path[Previous - 1] == u'/')
				{
					--Previous;
				}
				if (Previous > 0)
				{
					Previous = Path.rfind(u'/', Previous - 1);
				}
			}

			const bool bHasLeadingSlash = Previous != std::u16string::npos;
			const size_t RemovalStart = bHasLeadingSlash ? Previous : Protected;
			if (RemovalStart < Protected)
			{
				if (!GiveUpOnThisDotDot(Slash + 3))
				{
					return false;
				}
				Cursor = Protected;
				continue;
			}

			size_t RemovalLength = Slash - RemovalStart + 3;
			if (!bHasLeadingSlash && RemovalStart + RemovalLength < Path.size())
			{
				++RemovalLength; // "folder/../rest" at the start also loses the slash after ".."
			}
			Path.erase(RemovalStart, RemovalLength);
			Cursor = RemovalStart;
		}
		return bAllCollapsed;
	}

	FString& ProjectFilePathStorage()
	{
		static FString Storage;
		return Storage;
	}
}

// ---- Project folders ----------------------------------------------------------------------

bool FPaths::IsProjectFilePathSet()
{
	return !ProjectFilePathStorage().IsEmpty();
}

FString FPaths::GetProjectFilePath()
{
	return ProjectFilePathStorage();
}

void FPaths::SetProjectFilePath(const FString& NewGameProjectFilePath)
{
	FString Normalized = NewGameProjectFilePath;
	NormalizeFilename(Normalized);
	ProjectFilePathStorage() = Normalized;
}

FString FPaths::ProjectDir()
{
	if (!IsProjectFilePathSet())
	{
		return FString();
	}
	FString Dir = ConvertRelativePathToFull(GetPath(ProjectFilePathStorage()));
	if (!Dir.IsEmpty() && Dir[Dir.Len() - 1] != TEXT('/'))
	{
		Dir += TEXT("/");
	}
	return Dir;
}

FString FPaths::ProjectContentDir()
{
	return IsProjectFilePathSet() ? ProjectDir() + TEXT("Content/") : FString();
}

FString FPaths::ProjectConfigDir()
{
	return IsProjectFilePathSet() ? ProjectDir() + TEXT("Config/") : FString();
}

FString FPaths::ProjectPluginsDir()
{
	return IsProjectFilePathSet() ? ProjectDir() + TEXT("Plugins/") : FString();
}

FString FPaths::ProjectUserDir()
{
	return ProjectDir();
}

FString FPaths::ProjectSavedDir()
{
	return IsProjectFilePathSet() ? ProjectUserDir() + TEXT("Saved/") : FString();
}

FString FPaths::ProjectIntermediateDir()
{
	return IsProjectFilePathSet() ? ProjectUserDir() + TEXT("Intermediate/") : FString();
}

FString FPaths::ProjectLogDir()
{
	return IsProjectFilePathSet() ? ProjectSavedDir() + TEXT("Logs/") : FString();
}

FString FPaths::SourceConfigDir()
{
	return ProjectConfigDir();
}

FString FPaths::GameSourceDir()
{
	return IsProjectFilePathSet() ? ProjectDir() + TEXT("Source/") : FString();
}

FString FPaths::LaunchDir()
{
	std::error_code Error;
	const std::filesystem::path Current = std::filesystem::current_path(Error);
	if (Error)
	{
		return FString();
	}
	FString Result = FromFileSystemPath(Current);
	if (Result.IsEmpty() || Result[Result.Len() - 1] != TEXT('/'))
	{
		Result += TEXT("/");
	}
	return Result;
}

// ---- Reading paths ------------------------------------------------------------------------

FString FPaths::GetExtension(const FString& InPath, bool bIncludeDot)
{
	const FString CleanFilename = GetCleanFilename(InPath);
	int32 DotPos = INDEX_NONE;
	if (CleanFilename.FindLastChar(TEXT('.'), DotPos))
	{
		return CleanFilename.Mid(DotPos + (bIncludeDot ? 0 : 1));
	}
	return FString();
}

FString FPaths::GetCleanFilename(const FString& InPath)
{
	const std::u16string_view Path = InPath.View();
	const int32 EndPos = FindLastNonSeparator(Path) + 1;
	const int32 StartPos = FindLastSeparator(Path, int32(Path.size())) + 1;
	return StartPos <= EndPos ? InPath.Mid(StartPos, EndPos - StartPos) : FString();
}

FString FPaths::GetBaseFilename(const FString& InPath, bool bRemovePath)
{
	FString Result = bRemovePath ? GetCleanFilename(InPath) : InPath;
	int32 ExtPos = INDEX_NONE;
	if (Result.FindLastChar(TEXT('.'), ExtPos))
	{
		// With the folders kept, a dot in a folder name is not an extension.
		const int32 LeafPos = bRemovePath ? INDEX_NONE : FindLastSeparator(Result.View(), Result.Len());
		if (LeafPos == INDEX_NONE || ExtPos > LeafPos)
		{
			Result.LeftInline(ExtPos);
		}
	}
	return Result;
}

FString FPaths::GetPath(const FString& InPath)
{
	const int32 Pos = FindLastSeparator(InPath.View(), InPath.Len());
	return Pos != INDEX_NONE ? InPath.Left(Pos) : FString();
}

FString FPaths::GetPathLeaf(const FString& InPath)
{
	const std::u16string_view Path = InPath.View();
	const int32 EndPos = FindLastNonSeparator(Path) + 1;
	const int32 StartPos = FindLastSeparator(Path, EndPos) + 1;
	return InPath.Mid(StartPos, EndPos - StartPos);
}

FString FPaths::ChangeExtension(const FString& InPath, const FString& InNewExtension)
{
	const int32 DotPos = FindExtensionDot(InPath.View());
	if (DotPos == INDEX_NONE)
	{
		return InPath;
	}
	FString Result = InPath.Left(DotPos);
	if (!InNewExtension.IsEmpty() && InNewExtension[0] != TEXT('.'))
	{
		Result += TEXT(".");
	}
	Result += InNewExtension;
	return Result;
}

FString FPaths::SetExtension(const FString& InPath, const FString& InNewExtension)
{
	const int32 DotPos = FindExtensionDot(InPath.View());
	FString Result = DotPos == INDEX_NONE ? InPath : InPath.Left(DotPos);
	if (!InNewExtension.IsEmpty() && InNewExtension[0] != TEXT('.'))
	{
		Result += TEXT(".");
	}
	Result += InNewExtension;
	return Result;
}

void FPaths::Split(const FString& InPath, FString& PathPart, FString& FilenamePart, FString& ExtensionPart)
{
	const std::u16string_view Path = InPath.View();
	const int32 NameStart = FindLastSeparator(Path, int32(Path.size())) + 1;
	const std::u16string_view CleanName = Path.substr(size_t(NameStart));
	PathPart = FString(Path.substr(0, size_t(FMath::Max(NameStart - 1, 0))));

	const size_t DotPos = CleanName.rfind(u'.');
	if (DotPos != std::u16string_view::npos && CleanName != u"..")
	{
		FilenamePart = FString(CleanName.substr(0, DotPos));
		ExtensionPart = FString(CleanName.substr(DotPos + 1));
	}
	else
	{
		FilenamePart = FString(CleanName);
		ExtensionPart = FString();
	}
}

bool FPaths::FileExists(const FString& InPath)
{
	return IFileManager::Get().FileExists(*InPath);
}

bool FPaths::DirectoryExists(const FString& InPath)
{
	return IFileManager::Get().DirectoryExists(*InPath);
}

bool FPaths::IsRelative(const FString& InPath)
{
	const int32 PathLen = InPath.Len();
	const bool bIsRooted = PathLen > 0
		&& (InPath[0] == TEXT('/')
			|| (PathLen >= 2
				&& ((InPath[0] == TEXT('\\') && InPath[1] == TEXT('\\'))
					|| (InPath[1] == TEXT(':') && FChar::IsAlpha(InPath[0])))));
	return !bIsRooted;
}

// ---- Normalising --------------------------------------------------------------------------

void FPaths::NormalizeFilename(FString& InPath)
{
	for (TCHAR& Char : InPath)
	{
		if (Char == TEXT('\\'))
		{
			Char = TEXT('/');
		}
	}
}

void FPaths::NormalizeDirectoryName(FString& InPath)
{
	NormalizeFilename(InPath);
	if (InPath.EndsWith(TEXT("/"), ESearchCase::CaseSensitive) && !InPath.EndsWith(TEXT("//"), ESearchCase::CaseSensitive)
		&& !InPath.EndsWith(TEXT(":/"), ESearchCase::CaseSensitive))
	{
		InPath.LeftChopInline(1);
	}
}

bool FPaths::CollapseRelativeDirectories(FString& InPath, bool bCollapseAllPossible)
{
	std::u16string Work(InPath.View());
	const bool bAllCollapsed = CollapseRelativeDirectoriesInPlace(Work, bCollapseAllPossible);
	InPath = FString(std::move(Work));
	return bAllCollapsed;
}

void FPaths::RemoveDuplicateSlashes(FString& InPath)
{
	std::u16string Work;
	Work.reserve(size_t(InPath.Len()));
	for (const TCHAR Char : InPath)
	{
		if (Char == TEXT('/') && !Work.empty() && Work.back() == u'/')
		{
			continue;
		}
		Work += Char;
	}
	InPath = FString(std::move(Work));
}

FString FPaths::RemoveDuplicateSlashes(const FString& InPath)
{
	FString Result = InPath;
	RemoveDuplicateSlashes(Result);
	return Result;
}

FString FPaths::ConvertRelativePathToFull(const FString& InPath)
{
	return ConvertRelativePathToFull(LaunchDir(), InPath);
}

FString FPaths::ConvertRelativePathToFull(const FString& BasePath, const FString& InPath)
{
	FString FullyPathed;
	if (IsRelative(InPath))
	{
		std::u16string Joined(BasePath.View());
		AppendPathPart(Joined, InPath.View());
		FullyPathed = FString(std::move(Joined));
	}
	else
	{
		FullyPathed = InPath;
	}

	NormalizeFilename(FullyPathed);
	// As in the engine, a ".." that climbs past the root is left in place rather than reported.
	CollapseRelativeDirectories(FullyPathed);
	if (FullyPathed.IsEmpty())
	{
		FullyPathed = TEXT("/");
	}
	return FullyPathed;
}

bool FPaths::MakePathRelativeTo(FString& InPath, const TCHAR* InRelativeTo)
{
	const FString Target = ConvertRelativePathToFull(InPath);
	const FString Source = GetPath(ConvertRelativePathToFull(FString(InRelativeTo ? InRelativeTo : TEXT(""))));

	TArray<FString> TargetParts;
	TArray<FString> SourceParts;
	Target.ParseIntoArray(TargetParts, TEXT("/"), true);
	Source.ParseIntoArray(SourceParts, TEXT("/"), true);

	auto IsDriveComponent = [](const FString& Part) { return Part.Len() > 1 && Part[1] == TEXT(':'); };
	if (TargetParts.Num() > 0 && SourceParts.Num() > 0 && IsDriveComponent(TargetParts[0]) && IsDriveComponent(SourceParts[0])
		&& FChar::ToUpper(TargetParts[0][0]) != FChar::ToUpper(SourceParts[0][0]))
	{
		return false;
	}

	int32 Common = 0;
	while (Common < TargetParts.Num() && Common < SourceParts.Num()
		&& TargetParts[Common].Equals(SourceParts[Common], ESearchCase::IgnoreCase))
	{
		++Common;
	}

	FString Result;
	for (int32 Index = Common; Index < SourceParts.Num(); ++Index)
	{
		Result += TEXT("../");
	}
	for (int32 Index = Common; Index < TargetParts.Num(); ++Index)
	{
		Result += TargetParts[Index];
		if (Index + 1 < TargetParts.Num())
		{
			Result += TEXT("/");
		}
	}
	InPath = Result;
	return true;
}

bool FPaths::IsSamePath(const FString& PathA, const FString& PathB)
{
	const FString FullA = RemoveDuplicateSlashes(ConvertRelativePathToFull(PathA));
	const FString FullB = RemoveDuplicateSlashes(ConvertRelativePathToFull(PathB));
	return FullA.Equals(FullB, ESearchCase::CaseSensitive);
}

bool FPaths::IsUnderDirectory(const FString& InPath, const FString& InDirectory)
{
	const FString Path = ConvertRelativePathToFull(InPath);
	FString Directory = ConvertRelativePathToFull(InDirectory);
	if (Directory.EndsWith(TEXT("/"), ESearchCase::CaseSensitive))
	{
		Directory.LeftChopInline(1);
	}
	if (!Path.StartsWith(Directory, ESearchCase::CaseSensitive))
	{
		return false;
	}
	return Path.Len() == Directory.Len() || Path[Directory.Len()] == TEXT('/');
}

FString FPaths::GetInvalidFileSystemChars()
{
	return FString(TEXT("/?:&\\*\"<>|%#@^"));
}

FString FPaths::MakeValidFileName(const FString& InString, const TCHAR InReplacementChar)
{
	const FString Invalid = GetInvalidFileSystemChars();
	FString Result;
	Result.Reserve(InString.Len());
	for (const TCHAR Char : InString)
	{
		int32 Unused = 0;
		if (!Invalid.FindChar(Char, Unused))
		{
			Result.AppendChar(Char);
		}
		else if (InReplacementChar != 0)
		{
			Result.AppendChar(InReplacementChar);
		}
	}
	return Result;
}

FString FPaths::CombineInternal(const std::u16string_view* Parts, int32 NumParts)
{
	std::u16string Result;
	if (NumParts <= 0)
	{
		return FString();
	}
	Result.assign(Parts[0]);
	for (int32 Index = 1; Index < NumParts; ++Index)
	{
		AppendPathPart(Result, Parts[Index]);
	}
	return FString(std::move(Result));
}
