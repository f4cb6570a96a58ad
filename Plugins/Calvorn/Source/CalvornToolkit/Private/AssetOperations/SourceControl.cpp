#include "AssetOperationBase.h"

#include "ExternalProcess.h"
#include "HAL/FileManager.h"
#include "Misc/PackageName.h"
#include "Misc/Paths.h"

// The headless editor's source control: a package file that is read-only counts as checked in (as
// with Perforce), and a project inside a git work tree gets its new and changed assets staged.

namespace
{
	constexpr double GitTimeoutSeconds = 30.0;

	/** The package file of the asset, when the path is valid and the file exists. */
	bool FindPackageFile(const FString& AssetPath, FString& OutFilename, FString& OutError)
	{
		const FString PackageName = FAssetOperationBase::GetPackageNameFromPath(AssetPath);
		FText Reason;
		if (!FPackageName::IsValidLongPackageName(PackageName, /*bIncludeReadOnlyRoots*/ false, &Reason))
		{
			OutError = FString::Printf(TEXT("'%s' is not a valid asset path: %s"), *AssetPath, *Reason.ToString());
			return false;
		}
		if (!FPackageName::DoesPackageExist(PackageName, &OutFilename))
		{
			OutError = FString::Printf(TEXT("Asset '%s' has no file on disk (it has not been saved yet, or it was deleted)"), *PackageName);
			return false;
		}
		OutFilename = FPaths::ConvertRelativePathToFull(OutFilename);
		return true;
	}

	/** The top folder of the git work tree holding Directory, found by its ".git" entry; empty if none. */
	FString FindGitWorkTree(const FString& Directory)
	{
		FString Current = FPaths::ConvertRelativePathToFull(Directory);
		while (!Current.IsEmpty())
		{
			// ".git" is a folder in a plain clone and a file in linked work trees and submodules.
			const FString GitEntry = FPaths::Combine(Current, TEXT(".git"));
			if (FPaths::DirectoryExists(GitEntry) || FPaths::FileExists(GitEntry))
			{
				return Current;
			}
			const FString Parent = FPaths::GetPath(Current);
			if (Parent == Current || Parent.Len() >= Current.Len())
			{
				break;
			}
			Current = Parent;
		}
		return FString();
	}
}

bool FAssetOperationBase::CheckOutAssetForModify(const FString& AssetPath, FString& OutError)
{
	FString Filename;
	if (!FindPackageFile(AssetPath, Filename, OutError))
	{
		return false;
	}
	if (IFileManager::Get().IsReadOnly(*Filename))
	{
		OutError = FString::Printf(TEXT("File '%s' of asset '%s' is read-only; make it writable (check it out) before changing the asset"), *Filename, *GetPackageNameFromPath(AssetPath));
		return false;
	}
	return true;
}

bool FAssetOperationBase::AddAssetToSourceControl(const FString& AssetPath, FString& OutError)
{
	if (!FPaths::IsProjectFilePathSet())
	{
		return true;
	}
	const FString WorkTree = FindGitWorkTree(FPaths::ProjectDir());
	if (WorkTree.IsEmpty())
	{
		// No source control to tell.
		return true;
	}
	FString Filename;
	if (!FindPackageFile(AssetPath, Filename, OutError))
	{
		return false;
	}

	const Calvorn::Private::FProcessOutcome Outcome = Calvorn::Private::RunProcess(
		TEXT("git"), {TEXT("-C"), WorkTree, TEXT("add"), TEXT("--"), Filename}, WorkTree, GitTimeoutSeconds);
	if (!Outcome.bStarted)
	{
		OutError = FString::Printf(TEXT("The project is in a git work tree (%s) but git could not be run: %s"), *WorkTree, *Outcome.StartError);
		return false;
	}
	if (Outcome.bTimedOut)
	{
		OutError = FString::Printf(TEXT("git add of '%s' did not finish within %.0f seconds"), *Filename, GitTimeoutSeconds);
		return false;
	}
	if (Outcome.ExitCode != 0)
	{
		OutError = FString::Printf(TEXT("git add of '%s' failed (exit code %d): %s"), *Filename, Outcome.ExitCode, *Outcome.Output);
		return false;
	}
	return true;
}
