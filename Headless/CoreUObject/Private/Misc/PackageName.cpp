#include "Misc/PackageName.h"

#include "Containers/StringConv.h"
#include "HAL/FileManager.h"
#include "Interfaces/IPluginManager.h"
#include "Misc/Paths.h"
#include "Misc/PackageNamePrivate.h"
#include "UObject/Package.h"

#include <algorithm>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

#ifndef INVALID_OBJECTPATH_CHARACTERS
// The engine's set (UObject/NameTypes.h): the object-name set without the path delimiters.
#define INVALID_OBJECTPATH_CHARACTERS TEXT("\"' ,|&!~\n\r\t@#(){}[]=;^%$`")
#endif

FPackageName::FOnContentPathMountedEvent FPackageName::OnContentPathMountedEvent;
FPackageName::FOnContentPathDismountedEvent FPackageName::OnContentPathDismountedEvent;

namespace
{
	/**
	 * The plug-in manager (Projects) mounts the project's and the plug-ins' content through these
	 * delegates, as in the engine, so it needs to know nothing of packages.
	 */
	struct FPluginMountPointBinding
	{
		FPluginMountPointBinding()
		{
			IPluginManager::Get().SetRegisterMountPointDelegate(IPluginManager::FRegisterMountPointDelegate::CreateStatic(&FPackageName::RegisterMountPoint));
			IPluginManager::Get().SetUnRegisterMountPointDelegate(IPluginManager::FRegisterMountPointDelegate::CreateStatic(&FPackageName::UnRegisterMountPoint));
		}
	} GPluginMountPointBinding;
}

namespace
{
	// The shortest long package name is "/A/B".
	constexpr int32 MinPackageNameLength = 4;

	// Most file systems store at most 255 bytes per name.
	constexpr int32 MaxPathComponentBytes = 255;

	struct FMountPoint
	{
		/** "/Game/": leading and trailing slash. */
		FString RootPath;
		/** Full path of the folder ending in '/', or empty for a root that lives only in memory. */
		FString ContentPath;
		/** Nothing may be saved under a read-only root. */
		bool bReadOnly = false;
		/** Always known; never removed by UnRegisterMountPoint. */
		bool bBuiltIn = false;
	};

	class FMountPoints
	{
	public:
		static FMountPoints& Get()
		{
			static FMountPoints* Instance = new FMountPoints();
			return *Instance;
		}

		/** The mount whose root holds the path ("/Game/X" or the root itself, "/Game"); the longest root wins, then the newest. */
		const FMountPoint* FindForPackagePath(const FString& Path) const
		{
			const FMountPoint* Best = nullptr;
			for (const FMountPoint& Mount : Mounts)
			{
				const bool bUnder = Path.StartsWith(Mount.RootPath, ESearchCase::IgnoreCase)
					|| (Path.Len() + 1 == Mount.RootPath.Len() && Mount.RootPath.StartsWith(Path, ESearchCase::IgnoreCase));
				if (bUnder && (!Best || Mount.RootPath.Len() > Best->RootPath.Len()))
				{
					Best = &Mount;
				}
			}
			return Best;
		}

		/** The mount whose folder holds a full file path; the longest folder wins, then the newest. */
		const FMountPoint* FindForFilename(const FString& FullPath) const
		{
			const FMountPoint* Best = nullptr;
			for (const FMountPoint& Mount : Mounts)
			{
				if (Mount.ContentPath.IsEmpty())
				{
					continue;
				}
				// File paths are case-sensitive here.
				const bool bUnder = FullPath.StartsWith(Mount.ContentPath, ESearchCase::CaseSensitive)
					|| (FullPath + TEXT("/")).Equals(Mount.ContentPath, ESearchCase::CaseSensitive);
				if (bUnder && (!Best || Mount.ContentPath.Len() > Best->ContentPath.Len()))
				{
					Best = &Mount;
				}
			}
			return Best;
		}

		void Insert(const FString& RootPath, const FString& ContentPath)
		{
			Remove(RootPath, ContentPath);
			FMountPoint Mount;
			Mount.RootPath = RootPath;
			Mount.ContentPath = ContentPath;
			Mounts.Insert(MoveTemp(Mount), 0);
		}

		bool Remove(const FString& RootPath, const FString& ContentPath)
		{
			return Mounts.RemoveAll([&](const FMountPoint& Mount)
				{
					return !Mount.bBuiltIn && Mount.RootPath.Equals(RootPath, ESearchCase::IgnoreCase) && Mount.ContentPath.Equals(ContentPath, ESearchCase::CaseSensitive);
				}) > 0;
		}

		/** Each root once (its newest mount), sorted without case. */
		TArray<const FMountPoint*> GetDistinctRoots() const
		{
			TArray<const FMountPoint*> Roots;
			for (const FMountPoint& Mount : Mounts)
			{
				if (!Roots.ContainsByPredicate([&Mount](const FMountPoint* Other) { return Other->RootPath.Equals(Mount.RootPath, ESearchCase::IgnoreCase); }))
				{
					Roots.Add(&Mount);
				}
			}
			Roots.Sort([](const FMountPoint* A, const FMountPoint* B) { return A->RootPath.Compare(B->RootPath, ESearchCase::IgnoreCase) < 0; });
			return Roots;
		}

	private:
		FMountPoints()
		{
			// Roots of objects that never come from files here: reflected classes, the engine's
			// content (built in code), temporary and memory-only packages.
			for (const TCHAR* Root : { TEXT("/Script/"), TEXT("/Engine/"), TEXT("/Temp/"), TEXT("/Memory/") })
			{
				FMountPoint Mount;
				Mount.RootPath = Root;
				Mount.bReadOnly = true;
				Mount.bBuiltIn = true;
				Mounts.Add(MoveTemp(Mount));
			}
		}

		TArray<FMountPoint> Mounts;
	};

	/** Normalises a folder to a full path with '/' separators and one trailing '/'. */
	FString NormalizeContentPath(const FString& ContentPath)
	{
		FString Full = FPaths::ConvertRelativePathToFull(ContentPath);
		while (Full.Len() > 1 && Full.EndsWith(TEXT("/")))
		{
			Full.LeftChopInline(1);
		}
		return Full + TEXT("/");
	}

	bool IsValidRootPath(const FString& RootPath)
	{
		if (RootPath.Len() < 3 || !RootPath.StartsWith(TEXT("/")) || !RootPath.EndsWith(TEXT("/")))
		{
			return false;
		}
		const FString Name = RootPath.Mid(1, RootPath.Len() - 2);
		int32 Index = INDEX_NONE;
		return !Name.FindChar(TEXT('/'), Index) && !FPackageName::DoesPackageNameContainInvalidCharacters(Name);
	}

	FString JoinRoots(bool bIncludeReadOnlyRoots)
	{
		FString Result;
		for (const FMountPoint* Mount : FMountPoints::Get().GetDistinctRoots())
		{
			if (bIncludeReadOnlyRoots || !Mount->bReadOnly)
			{
				Result += Result.IsEmpty() ? Mount->RootPath : TEXT(", ") + Mount->RootPath;
			}
		}
		return Result;
	}

	bool IsControlCharacter(TCHAR Char)
	{
		return uint16(Char) < 0x20 || uint16(Char) == 0x7F;
	}

	bool IsValidExtension(const FString& Extension)
	{
		if (Extension.IsEmpty())
		{
			return true;
		}
		if (Extension.Len() < 2 || Extension[0] != TEXT('.'))
		{
			return false;
		}
		for (int32 Index = 1; Index < Extension.Len(); ++Index)
		{
			const TCHAR Char = Extension[Index];
			const bool bAlphaNumeric = (Char >= TEXT('a') && Char <= TEXT('z')) || (Char >= TEXT('A') && Char <= TEXT('Z')) || (Char >= TEXT('0') && Char <= TEXT('9'));
			if (!bAlphaNumeric)
			{
				return false;
			}
		}
		return true;
	}

	/** Whether Path is Root or lies inside it, comparing whole components. */
	bool IsUnderRoot(const fs::path& Path, const fs::path& Root)
	{
		auto PathIt = Path.begin();
		for (auto RootIt = Root.begin(); RootIt != Root.end(); ++RootIt, ++PathIt)
		{
			if (RootIt->empty() && std::next(RootIt) == Root.end())
			{
				break; // a trailing separator in Root
			}
			if (PathIt == Path.end() || *PathIt != *RootIt)
			{
				return false;
			}
		}
		return true;
	}

	/** Where a symbolic link finally leads, resolving a relative target against the link's folder. */
	fs::path ResolveLinkTarget(const fs::path& Link)
	{
		std::error_code Error;
		fs::path Target = fs::read_symlink(Link, Error);
		if (Error)
		{
			return fs::path();
		}
		if (Target.is_relative())
		{
			Target = fs::weakly_canonical(Link.parent_path(), Error) / Target;
		}
		return fs::weakly_canonical(Target, Error);
	}

	/** The entry of Folder whose name equals Name ignoring case (the first by name when several do), or empty. */
	FString FindNameIgnoringCase(const fs::path& Folder, const FString& Name)
	{
		std::vector<FString> Matches;
		std::error_code Error;
		for (fs::directory_iterator It(Folder, Error), End; !Error && It != End; It.increment(Error))
		{
			const FString Entry = UE::CoreUObject::Private::FromFileSystemPath(It->path().filename());
			if (Entry.Equals(Name, ESearchCase::IgnoreCase))
			{
				Matches.push_back(Entry);
			}
		}
		if (Matches.empty())
		{
			return FString();
		}
		std::sort(Matches.begin(), Matches.end(), [](const FString& A, const FString& B) { return A.Compare(B, ESearchCase::CaseSensitive) < 0; });
		return Matches.front();
	}

	/**
	 * Builds the file of RelativePath (components joined by '/') under a mount's folder, taking the
	 * case of entries that exist on disk, and refuses when a symbolic link on the way leads out of
	 * the folder.
	 */
	bool ResolveFileInMount(const FString& InLongPackageName, const FMountPoint& Mount, const TArray<FString>& Components, FString& OutFilename, FText& OutReason)
	{
		using UE::CoreUObject::Private::FromFileSystemPath;
		using UE::CoreUObject::Private::ToFileSystemPath;

		const fs::path Root = ToFileSystemPath(Mount.ContentPath.LeftChop(1));
		std::error_code Error;
		fs::path CanonicalRoot = fs::weakly_canonical(Root, Error);
		if (Error)
		{
			CanonicalRoot = Root.lexically_normal();
		}

		fs::path Current = Root;
		FString Result = Mount.ContentPath.LeftChop(1);
		bool bExists = true;
		for (const FString& Component : Components)
		{
			FString Name = Component;
			fs::path Candidate = Current / ToFileSystemPath(Name);
			if (bExists)
			{
				fs::file_status Status = fs::symlink_status(Candidate, Error);
				if (!fs::exists(Status))
				{
					const FString OnDisk = FindNameIgnoringCase(Current, Name);
					if (!OnDisk.IsEmpty())
					{
						Name = OnDisk;
						Candidate = Current / ToFileSystemPath(Name);
						Status = fs::symlink_status(Candidate, Error);
					}
				}
				bExists = fs::exists(Status);
				if (fs::is_symlink(Status))
				{
					const fs::path Target = ResolveLinkTarget(Candidate);
					if (Target.empty() || !IsUnderRoot(Target, CanonicalRoot))
					{
						OutReason = FText::FromString(FString::Printf(TEXT("Input '%s' leads through the symbolic link '%s' to '%s', outside its mounted folder '%s'."),
							*InLongPackageName, *FromFileSystemPath(Candidate), Target.empty() ? TEXT("(unreadable)") : *FromFileSystemPath(Target), *Mount.ContentPath));
						return false;
					}
					bExists = fs::exists(Candidate, Error);
				}
			}
			Current = Candidate;
			Result += TEXT("/") + Name;
		}
		OutFilename = MoveTemp(Result);
		return true;
	}

	FString StripLeafExtension(const FString& Path)
	{
		const int32 Slash = Path.FindLastCharByPredicate([](TCHAR Char) { return Char == TEXT('/'); });
		const int32 Dot = Path.FindLastCharByPredicate([](TCHAR Char) { return Char == TEXT('.'); });
		// Keep "/Path/.ext" whole: without a name before the dot it is not an extension.
		if (Dot != INDEX_NONE && Dot > Slash + 1)
		{
			return Path.Left(Dot);
		}
		return Path;
	}
}

namespace UE::CoreUObject::Private
{
	fs::path ToFileSystemPath(const FString& Path)
	{
		const FTCHARToUTF8 Utf8(*Path, Path.Len());
		return fs::path(std::u8string(reinterpret_cast<const char8_t*>(Utf8.Get()), size_t(Utf8.Length())));
	}

	FString FromFileSystemPath(const fs::path& Path)
	{
		const std::u8string Utf8 = Path.generic_u8string();
		const FUTF8ToTCHAR Converted(reinterpret_cast<const UTF8CHAR*>(Utf8.data()), int32(Utf8.size()));
		return FString::ConstructFromPtrSize(Converted.Get(), Converted.Length());
	}
}

// ---- Errors -------------------------------------------------------------------------------------

FString FPackageName::FormatErrorAsString(const FString& InPath, EErrorCode ErrorCode)
{
	return FormatErrorAsText(InPath, ErrorCode).ToString();
}

FText FPackageName::FormatErrorAsText(const FString& InPath, EErrorCode ErrorCode)
{
	const TCHAR* Path = *InPath;
	switch (ErrorCode)
	{
	case EErrorCode::PackageNameUnknown:
		return FText::FromString(FString::Printf(TEXT("Input '%s' caused undocumented internal error."), Path));
	case EErrorCode::PackageNameEmptyPath:
		return FText::FromString(FString::Printf(TEXT("Input '%s' was empty."), Path));
	case EErrorCode::PackageNamePathNotMounted:
		return FText::FromString(FString::Printf(TEXT("Input '%s' is not a child of an existing mount point."), Path));
	case EErrorCode::PackageNamePathIsMemoryOnly:
		return FText::FromString(FString::Printf(TEXT("Input '%s' is in a memory-only mount point."), Path));
	case EErrorCode::PackageNameSpacesNotAllowed:
		return FText::FromString(FString::Printf(TEXT("Input '%s' includes a space. A space is not valid in ObjectPaths unless it is delimiting a ClassName in a full ObjectPath, and full ObjectPaths are not supported in this function."), Path));
	case EErrorCode::PackageNameContainsInvalidCharacters:
		return FText::FromString(FString::Printf(TEXT("Input '%s' contains one of the invalid characters for LongPackageNames: '%s'."), Path, INVALID_LONGPACKAGE_CHARACTERS));
	case EErrorCode::LongPackageNames_PathTooShort:
		return FText::FromString(FString::Printf(TEXT("Input '%s' contains fewer than the minimum number of characters %d for LongPackageNames."), Path, MinPackageNameLength));
	case EErrorCode::LongPackageNames_PathWithNoStartingSlash:
		return FText::FromString(FString::Printf(TEXT("Input '%s' does not start with a '/', which is required for LongPackageNames."), Path));
	case EErrorCode::LongPackageNames_PathWithTrailingSlash:
		return FText::FromString(FString::Printf(TEXT("Input '%s' ends with a '/', which is invalid for LongPackageNames."), Path));
	case EErrorCode::LongPackageNames_PathWithDoubleSlash:
		return FText::FromString(FString::Printf(TEXT("Input '%s' contains '//', which is invalid for LongPackageNames."), Path));
	default:
		return FText::FromString(FString::Printf(TEXT("Input '%s' caused undocumented internal error."), Path));
	}
}

// ---- Validation -----------------------------------------------------------------------------------

bool FPackageName::DoesPackageNameContainInvalidCharacters(const FString& InLongPackageName, EErrorCode* OutReason)
{
	for (const TCHAR* Invalid = INVALID_LONGPACKAGE_CHARACTERS; *Invalid; ++Invalid)
	{
		int32 Index = INDEX_NONE;
		if (InLongPackageName.FindChar(*Invalid, Index))
		{
			if (OutReason)
			{
				*OutReason = EErrorCode::PackageNameContainsInvalidCharacters;
			}
			return true;
		}
	}
	if (OutReason)
	{
		*OutReason = EErrorCode::PackageNameUnknown;
	}
	return false;
}

bool FPackageName::DoesPackageNameContainInvalidCharacters(const FString& InLongPackageName, FText* OutReason)
{
	EErrorCode Reason = EErrorCode::PackageNameUnknown;
	if (DoesPackageNameContainInvalidCharacters(InLongPackageName, &Reason))
	{
		if (OutReason)
		{
			*OutReason = FormatErrorAsText(InLongPackageName, Reason);
		}
		return true;
	}
	return false;
}

bool FPackageName::IsValidTextForLongPackageName(const FString& InLongPackageName, EErrorCode* OutReason)
{
	EErrorCode Reason = EErrorCode::PackageNameUnknown;
	if (InLongPackageName.Len() < MinPackageNameLength)
	{
		Reason = EErrorCode::LongPackageNames_PathTooShort;
	}
	else if (InLongPackageName[0] != TEXT('/'))
	{
		Reason = EErrorCode::LongPackageNames_PathWithNoStartingSlash;
	}
	else if (InLongPackageName[InLongPackageName.Len() - 1] == TEXT('/'))
	{
		Reason = EErrorCode::LongPackageNames_PathWithTrailingSlash;
	}
	else if (InLongPackageName.Contains(TEXT("//")))
	{
		Reason = EErrorCode::LongPackageNames_PathWithDoubleSlash;
	}
	else
	{
		DoesPackageNameContainInvalidCharacters(InLongPackageName, &Reason);
	}
	if (OutReason)
	{
		*OutReason = Reason;
	}
	return Reason == EErrorCode::PackageNameUnknown;
}

bool FPackageName::IsValidTextForLongPackageName(const FString& InLongPackageName, FText* OutReason)
{
	EErrorCode Reason = EErrorCode::PackageNameUnknown;
	if (!IsValidTextForLongPackageName(InLongPackageName, &Reason))
	{
		if (OutReason)
		{
			*OutReason = FormatErrorAsText(InLongPackageName, Reason);
		}
		return false;
	}
	return true;
}

bool FPackageName::IsValidLongPackageName(const FString& InLongPackageName, bool bIncludeReadOnlyRoots, EErrorCode* OutReason)
{
	if (!IsValidTextForLongPackageName(InLongPackageName, OutReason))
	{
		return false;
	}
	const FMountPoint* Mount = FMountPoints::Get().FindForPackagePath(InLongPackageName);
	const bool bValid = Mount && (bIncludeReadOnlyRoots || !Mount->bReadOnly);
	if (OutReason)
	{
		*OutReason = bValid ? EErrorCode::PackageNameUnknown : EErrorCode::PackageNamePathNotMounted;
	}
	return bValid;
}

bool FPackageName::IsValidLongPackageName(const FString& InLongPackageName, bool bIncludeReadOnlyRoots, FText* OutReason)
{
	EErrorCode Reason = EErrorCode::PackageNameUnknown;
	if (IsValidLongPackageName(InLongPackageName, bIncludeReadOnlyRoots, &Reason))
	{
		return true;
	}
	if (OutReason)
	{
		if (Reason == EErrorCode::PackageNamePathNotMounted)
		{
			*OutReason = FText::FromString(FString::Printf(TEXT("Path does not start with a valid root. Path must begin with one of: %s"), *JoinRoots(bIncludeReadOnlyRoots)));
		}
		else
		{
			*OutReason = FormatErrorAsText(InLongPackageName, Reason);
		}
	}
	return false;
}

bool FPackageName::IsValidObjectPath(const FString& InObjectPath, FText* OutReason)
{
	FString PackageName = InObjectPath;
	FString RemainingObjectPath;
	int32 DotIndex = INDEX_NONE;
	if (InObjectPath.FindChar(TEXT('.'), DotIndex))
	{
		if (DotIndex == InObjectPath.Len() - 1)
		{
			if (OutReason)
			{
				*OutReason = FText::FromString(TEXT("Object Path may not end with ."));
			}
			return false;
		}
		PackageName = InObjectPath.Left(DotIndex);
		RemainingObjectPath = InObjectPath.Mid(DotIndex + 1);
	}
	if (!IsValidLongPackageName(PackageName, true, OutReason))
	{
		return false;
	}
	if (!RemainingObjectPath.IsEmpty())
	{
		const FText Context = FText::FromString(TEXT("Object Path"));
		if (!FName::IsValidXName(RemainingObjectPath, INVALID_OBJECTPATH_CHARACTERS, OutReason, &Context))
		{
			return false;
		}
		const TCHAR Last = RemainingObjectPath[RemainingObjectPath.Len() - 1];
		if (Last == TEXT('.') || Last == TEXT(':'))
		{
			if (OutReason)
			{
				*OutReason = FText::FromString(TEXT("Object Path may not end with : or ."));
			}
			return false;
		}
		int32 SlashIndex = INDEX_NONE;
		if (RemainingObjectPath.FindChar(TEXT('/'), SlashIndex))
		{
			if (OutReason)
			{
				*OutReason = FText::FromString(TEXT("Object Path may not have / after first ."));
			}
			return false;
		}
	}
	return true;
}

bool FPackageName::IsValidPath(const FString& InPath)
{
	return FMountPoints::Get().FindForPackagePath(InPath) != nullptr;
}

bool FPackageName::IsShortPackageName(const FString& PossiblyLongName)
{
	int32 Index = INDEX_NONE;
	return !PossiblyLongName.FindChar(TEXT('/'), Index);
}

bool FPackageName::IsShortPackageName(const FName PossiblyLongName)
{
	return IsShortPackageName(PossiblyLongName.ToString());
}

bool FPackageName::IsScriptPackage(const FString& InPackageName)
{
	return InPackageName.StartsWith(TEXT("/Script/"), ESearchCase::IgnoreCase) || InPackageName.Equals(TEXT("/Script"), ESearchCase::IgnoreCase);
}

bool FPackageName::IsMemoryPackage(const FString& InPackageName)
{
	return InPackageName.StartsWith(TEXT("/Memory/"), ESearchCase::IgnoreCase) || InPackageName.Equals(TEXT("/Memory"), ESearchCase::IgnoreCase);
}

bool FPackageName::IsTempPackage(const FString& InPackageName)
{
	return InPackageName.StartsWith(TEXT("/Temp/"), ESearchCase::IgnoreCase) || InPackageName.Equals(TEXT("/Temp"), ESearchCase::IgnoreCase);
}

// ---- Taking names apart -----------------------------------------------------------------------------

FString FPackageName::GetShortName(const FString& LongName)
{
	int32 SlashIndex = INDEX_NONE;
	LongName.FindLastChar(TEXT('/'), SlashIndex);
	return LongName.Mid(SlashIndex + 1);
}

FString FPackageName::GetShortName(const UPackage* Package)
{
	check(Package);
	return GetShortName(Package->GetName());
}

FString FPackageName::GetShortName(const FName& LongName)
{
	return GetShortName(LongName.ToString());
}

FString FPackageName::GetShortName(const TCHAR* LongName)
{
	return GetShortName(FString(LongName ? LongName : TEXT("")));
}

FName FPackageName::GetShortFName(const FString& LongName)
{
	return FName(GetShortName(LongName));
}

FName FPackageName::GetShortFName(const FName& LongName)
{
	return FName(GetShortName(LongName.ToString()));
}

FName FPackageName::GetShortFName(const TCHAR* LongName)
{
	return LongName ? FName(GetShortName(LongName)) : FName();
}

FString FPackageName::GetLongPackagePath(const FString& InLongPackageName)
{
	int32 SlashIndex = INDEX_NONE;
	return InLongPackageName.FindLastChar(TEXT('/'), SlashIndex) ? InLongPackageName.Left(SlashIndex) : InLongPackageName;
}

FString FPackageName::GetLongPackageAssetName(const FString& InLongPackageName)
{
	return GetShortName(InLongPackageName);
}

void FPackageName::SplitPackageName(const FString& InLongPackageName, FString* OutPackageRoot, FString* OutPackagePath, FString* OutPackageLeafName, EPathFormatFlags Flags)
{
	FString Root;
	FString Path;
	FString Leaf;
	int32 RootEnd = INDEX_NONE;
	if (InLongPackageName.StartsWith(TEXT("/")) && InLongPackageName.RightChop(1).FindChar(TEXT('/'), RootEnd))
	{
		RootEnd += 1; // index of the slash closing the root
		const FString RootName = InLongPackageName.Mid(1, RootEnd - 1);
		if (!RootName.IsEmpty())
		{
			Root = FString::Printf(TEXT("%s%s%s"), EnumHasAnyFlags(Flags, EPathFormatFlags::MountPointLeadingSlash) ? TEXT("/") : TEXT(""), *RootName,
				EnumHasAnyFlags(Flags, EPathFormatFlags::MountPointTrailingSlash) ? TEXT("/") : TEXT(""));
			const FString Rest = InLongPackageName.Mid(RootEnd + 1);
			int32 LastSlash = INDEX_NONE;
			if (Rest.FindLastChar(TEXT('/'), LastSlash))
			{
				Path = Rest.Left(LastSlash + 1);
				Leaf = Rest.Mid(LastSlash + 1);
			}
			else
			{
				Leaf = Rest;
			}
		}
	}
	if (OutPackageRoot)
	{
		*OutPackageRoot = MoveTemp(Root);
	}
	if (OutPackagePath)
	{
		*OutPackagePath = MoveTemp(Path);
	}
	if (OutPackageLeafName)
	{
		*OutPackageLeafName = MoveTemp(Leaf);
	}
}

bool FPackageName::SplitLongPackageName(const FString& InLongPackageName, FString& OutPackageRoot, FString& OutPackagePath, FString& OutPackageLeafName, const bool bStripRootLeadingSlash)
{
	const FMountPoint* Mount = FMountPoints::Get().FindForPackagePath(InLongPackageName);
	if (!Mount)
	{
		OutPackageRoot.Reset();
		OutPackagePath.Reset();
		OutPackageLeafName.Reset();
		return false;
	}
	OutPackageRoot = bStripRootLeadingSlash ? Mount->RootPath.RightChop(1) : Mount->RootPath;
	const FString Rest = InLongPackageName.RightChop(FMath::Min(Mount->RootPath.Len(), InLongPackageName.Len()));
	int32 LastSlash = INDEX_NONE;
	if (Rest.FindLastChar(TEXT('/'), LastSlash))
	{
		OutPackagePath = Rest.Left(LastSlash + 1);
		OutPackageLeafName = Rest.Mid(LastSlash + 1);
	}
	else
	{
		OutPackagePath.Reset();
		OutPackageLeafName = Rest;
	}
	return true;
}

FName FPackageName::GetPackageMountPoint(const FString& InPackagePath, bool InWithoutSlashes)
{
	const FMountPoint* Mount = FMountPoints::Get().FindForPackagePath(InPackagePath);
	if (!Mount)
	{
		return NAME_None;
	}
	return FName(InWithoutSlashes ? Mount->RootPath.Mid(1, Mount->RootPath.Len() - 2) : Mount->RootPath);
}

void FPackageName::SplitFullObjectPath(const FString& InFullObjectPath, FString& OutClassName, FString& OutPackageName, FString& OutObjectName, FString& OutSubObjectName, bool bDetectClassName)
{
	FString Remaining = InFullObjectPath.TrimStartAndEnd();
	auto ExtractBefore = [&Remaining](TCHAR Delimiter, FString& Out)
	{
		int32 Index = INDEX_NONE;
		if (Remaining.FindChar(Delimiter, Index))
		{
			Out = Remaining.Left(Index);
			Remaining.RightChopInline(Index + 1);
			return true;
		}
		Out.Reset();
		return false;
	};
	OutClassName.Reset();
	if (bDetectClassName)
	{
		ExtractBefore(TEXT(' '), OutClassName);
	}
	if (ExtractBefore(TEXT('.'), OutPackageName))
	{
		if (ExtractBefore(TEXT(':'), OutObjectName))
		{
			OutSubObjectName = Remaining;
		}
		else
		{
			OutObjectName = Remaining;
			OutSubObjectName.Reset();
		}
	}
	else
	{
		OutPackageName = Remaining;
		OutObjectName.Reset();
		OutSubObjectName.Reset();
	}
}

FString FPackageName::ObjectPathToPackageName(const FString& InObjectPath)
{
	int32 DotIndex = INDEX_NONE;
	return InObjectPath.FindChar(TEXT('.'), DotIndex) ? InObjectPath.Left(DotIndex) : InObjectPath;
}

FString FPackageName::ObjectPathToPathWithinPackage(const FString& InObjectPath)
{
	int32 DotIndex = INDEX_NONE;
	return InObjectPath.FindChar(TEXT('.'), DotIndex) ? InObjectPath.Mid(DotIndex + 1) : FString();
}

FString FPackageName::ObjectPathToOuterPath(const FString& InObjectPath)
{
	const int32 Index = InObjectPath.FindLastCharByPredicate([](TCHAR Char) { return Char == TEXT('.') || Char == TEXT(':'); });
	return Index == INDEX_NONE ? FString() : InObjectPath.Left(Index);
}

FString FPackageName::ObjectPathToSubObjectPath(const FString& InObjectPath)
{
	int32 Index = INDEX_NONE;
	if (InObjectPath.FindChar(TEXT(':'), Index) || InObjectPath.FindChar(TEXT('.'), Index))
	{
		return InObjectPath.Mid(Index + 1);
	}
	return InObjectPath;
}

FString FPackageName::ObjectPathToObjectName(const FString& InObjectPath)
{
	const int32 Index = InObjectPath.FindLastCharByPredicate([](TCHAR Char) { return Char == TEXT('.') || Char == TEXT(':'); });
	return Index == INDEX_NONE ? InObjectPath : InObjectPath.Mid(Index + 1);
}

FString FPackageName::ObjectPathCombine(const FString& ObjectPath, const FString& NextName)
{
	if (NextName.StartsWith(TEXT("/")))
	{
		return NextName;
	}
	FString Result = ObjectPath;
	FString Remaining = NextName;
	while (!Remaining.IsEmpty())
	{
		int32 First = INDEX_NONE;
		for (int32 Index = 0; Index < Remaining.Len(); ++Index)
		{
			if (Remaining[Index] == TEXT('.') || Remaining[Index] == TEXT(':'))
			{
				First = Index;
				break;
			}
		}
		const FString Name = First == INDEX_NONE ? Remaining : Remaining.Left(First);
		Remaining = First == INDEX_NONE ? FString() : Remaining.Mid(First + 1);
		if (Name.IsEmpty())
		{
			continue;
		}
		if (Result.IsEmpty())
		{
			Result = Name;
			continue;
		}
		int32 Index = INDEX_NONE;
		const bool bHasObject = Result.FindChar(TEXT('.'), Index);
		const bool bHasSubObject = Result.FindChar(TEXT(':'), Index);
		Result += !bHasObject ? TEXT(".") : (!bHasSubObject ? TEXT(":") : TEXT("."));
		Result += Name;
	}
	return Result;
}

bool FPackageName::ParseExportTextPath(const FString& InExportTextPath, FString* OutClassName, FString* OutObjectPath)
{
	int32 QuoteIndex = INDEX_NONE;
	if (!InExportTextPath.FindChar(TEXT('\''), QuoteIndex) || InExportTextPath.Len() < QuoteIndex + 2 || !InExportTextPath.EndsWith(TEXT("'")))
	{
		return false;
	}
	if (OutClassName)
	{
		*OutClassName = InExportTextPath.Left(QuoteIndex);
	}
	if (OutObjectPath)
	{
		FString Path = InExportTextPath.Mid(QuoteIndex + 1, InExportTextPath.Len() - QuoteIndex - 2);
		// Newer exports also wrap the path in double quotes: Class'"/Pkg/Name.Object"'.
		if (Path.Len() >= 2 && Path.StartsWith(TEXT("\"")) && Path.EndsWith(TEXT("\"")))
		{
			Path = Path.Mid(1, Path.Len() - 2);
		}
		*OutObjectPath = MoveTemp(Path);
	}
	return true;
}

FString FPackageName::ExportTextPathToObjectPath(const FString& InExportTextPath)
{
	FString ObjectPath;
	return ParseExportTextPath(InExportTextPath, nullptr, &ObjectPath) ? ObjectPath : InExportTextPath;
}

FString FPackageName::ConvertToLongScriptPackageName(const TCHAR* InShortName)
{
	const FString ShortName(InShortName ? InShortName : TEXT(""));
	return IsShortPackageName(ShortName) ? TEXT("/Script/") + ShortName : ShortName;
}

FName FPackageName::GetModuleScriptPackageName(FName ModuleName)
{
	return FName(TEXT("/Script/") + ModuleName.ToString());
}

// ---- Files ------------------------------------------------------------------------------------------

bool FPackageName::TryConvertLongPackageNameToFilename(const FString& InLongPackageName, FString& OutFilename, const FString& InExtension)
{
	FText Ignored;
	return TryConvertLongPackageNameToFilename(InLongPackageName, OutFilename, InExtension, Ignored);
}

bool FPackageName::TryConvertLongPackageNameToFilename(const FString& InLongPackageName, FString& OutFilename, const FString& InExtension, FText& OutReason)
{
	if (InLongPackageName.IsEmpty())
	{
		OutReason = FormatErrorAsText(InLongPackageName, EErrorCode::PackageNameEmptyPath);
		return false;
	}
	if (!IsValidExtension(InExtension))
	{
		OutReason = FText::FromString(FString::Printf(TEXT("'%s' is not a valid file extension for package '%s'."), *InExtension, *InLongPackageName));
		return false;
	}
	for (const TCHAR Char : InLongPackageName)
	{
		if (IsControlCharacter(Char))
		{
			OutReason = FText::FromString(FString::Printf(TEXT("Input '%s' contains a control character, which is invalid for LongPackageNames."), *InLongPackageName));
			return false;
		}
	}

	const FMountPoint* Mount = FMountPoints::Get().FindForPackagePath(InLongPackageName);
	FString Relative;
	if (Mount && InLongPackageName.Len() + 1 >= Mount->RootPath.Len() && InLongPackageName.Len() <= Mount->RootPath.Len())
	{
		// The root itself ("/Game" or "/Game/") is its folder, but never a package file.
		if (!InExtension.IsEmpty())
		{
			OutReason = FText::FromString(FString::Printf(TEXT("Input '%s' names a mount point, not a package."), *InLongPackageName));
			return false;
		}
	}
	else
	{
		if (!IsValidLongPackageName(InLongPackageName, true, &OutReason))
		{
			return false;
		}
		Relative = InLongPackageName.RightChop(Mount->RootPath.Len());
	}
	if (Mount->ContentPath.IsEmpty())
	{
		OutReason = FormatErrorAsText(InLongPackageName, EErrorCode::PackageNamePathIsMemoryOnly);
		return false;
	}

	TArray<FString> Components;
	if (!Relative.IsEmpty())
	{
		Relative.ParseIntoArray(Components, TEXT("/"), false);
	}
	if (!Components.IsEmpty())
	{
		Components.Last() += InExtension;
	}
	for (const FString& Component : Components)
	{
		// Dots are already invalid in package names; this guards the rule itself.
		if (Component.IsEmpty() || Component == TEXT(".") || Component == TEXT(".."))
		{
			OutReason = FText::FromString(FString::Printf(TEXT("Input '%s' has an empty or relative path component."), *InLongPackageName));
			return false;
		}
		if (FTCHARToUTF8(*Component, Component.Len()).Length() > MaxPathComponentBytes)
		{
			OutReason = FText::FromString(FString::Printf(TEXT("Input '%s' has a path component longer than %d bytes, which the file system cannot store."), *InLongPackageName, MaxPathComponentBytes));
			return false;
		}
	}
	return ResolveFileInMount(InLongPackageName, *Mount, Components, OutFilename, OutReason);
}

FString FPackageName::LongPackageNameToFilename(const FString& InLongPackageName, const FString& InExtension)
{
	FString Result;
	return TryConvertLongPackageNameToFilename(InLongPackageName, Result, InExtension) ? Result : FString();
}

bool FPackageName::TryConvertFilenameToLongPackageName(const FString& InFilename, FString& OutPackageName, FString* OutFailureReason)
{
	auto Fail = [OutFailureReason](const FString& Reason)
	{
		if (OutFailureReason)
		{
			*OutFailureReason = Reason;
		}
		return false;
	};
	if (InFilename.IsEmpty())
	{
		return Fail(FormatErrorAsString(InFilename, EErrorCode::PackageNameEmptyPath));
	}

	FString Normalized = InFilename;
	FPaths::NormalizeFilename(Normalized);

	// A file inside a mounted folder first: a folder on disk may well start like a root ("/Temp/...").
	const FString Full = FPaths::ConvertRelativePathToFull(Normalized);
	const FMountPoint* Mount = FMountPoints::Get().FindForFilename(Full);
	if (!Mount)
	{
		// Already a package name under a known root.
		if (Normalized.StartsWith(TEXT("/")) && FMountPoints::Get().FindForPackagePath(Normalized))
		{
			const FString PackageName = StripLeafExtension(Normalized);
			FText Reason;
			if (!IsValidLongPackageName(PackageName, true, &Reason))
			{
				return Fail(FString::Printf(TEXT("FilenameToLongPackageName failed to convert '%s': %s"), *InFilename, *Reason.ToString()));
			}
			OutPackageName = PackageName;
			return true;
		}
		TArray<FString> Folders = QueryMountPointLocalAbsPaths();
		return Fail(FString::Printf(TEXT("FilenameToLongPackageName failed to convert '%s': the file is not inside a mounted content folder (%s)."), *InFilename,
			Folders.IsEmpty() ? TEXT("none is mounted") : *FString::Join(Folders, TEXT(", "))));
	}
	const FString Relative = StripLeafExtension(Full.RightChop(FMath::Min(Mount->ContentPath.Len(), Full.Len())));
	if (Relative.IsEmpty())
	{
		OutPackageName = Mount->RootPath.LeftChop(1);
		return true;
	}
	const FString PackageName = Mount->RootPath + (Relative.EndsWith(TEXT("/")) ? Relative.LeftChop(1) : Relative);
	FText Reason;
	if (!IsValidTextForLongPackageName(PackageName, &Reason))
	{
		return Fail(FString::Printf(TEXT("FilenameToLongPackageName failed to convert '%s': %s"), *InFilename, *Reason.ToString()));
	}
	OutPackageName = PackageName;
	return true;
}

FString FPackageName::FilenameToLongPackageName(const FString& InFilename)
{
	FString Result;
	return TryConvertFilenameToLongPackageName(InFilename, Result) ? Result : FString();
}

bool FPackageName::DoesPackageExist(const FString& LongPackageName, FString* OutFilename, bool InAllowTextFormats)
{
	for (const FString* Extension : { &GetAssetPackageExtension(), &GetMapPackageExtension() })
	{
		FString Filename;
		if (TryConvertLongPackageNameToFilename(LongPackageName, Filename, *Extension) && IFileManager::Get().FileExists(*Filename))
		{
			if (OutFilename)
			{
				*OutFilename = MoveTemp(Filename);
			}
			return true;
		}
	}
	return false;
}

bool FPackageName::FindPackageFileWithoutExtension(const FString& InPackageFilename, FString& OutFilename)
{
	for (const FString* Extension : { &GetAssetPackageExtension(), &GetMapPackageExtension() })
	{
		const FString Filename = InPackageFilename + *Extension;
		if (IFileManager::Get().FileExists(*Filename))
		{
			OutFilename = Filename;
			return true;
		}
	}
	return false;
}

const FString& FPackageName::GetAssetPackageExtension()
{
	static const FString Extension(TEXT(".uasset"));
	return Extension;
}

const FString& FPackageName::GetMapPackageExtension()
{
	static const FString Extension(TEXT(".umap"));
	return Extension;
}

const FString& FPackageName::GetTextAssetPackageExtension()
{
	static const FString Extension(TEXT(".utxt"));
	return Extension;
}

const FString& FPackageName::GetTextMapPackageExtension()
{
	static const FString Extension(TEXT(".utxtmap"));
	return Extension;
}

namespace
{
	bool ExtensionIs(const TCHAR* Ext, const FString& Expected)
	{
		if (!Ext)
		{
			return false;
		}
		const FString Given(Ext);
		return Given.StartsWith(TEXT(".")) ? Given.Equals(Expected, ESearchCase::IgnoreCase) : Given.Equals(Expected.RightChop(1), ESearchCase::IgnoreCase);
	}
}

bool FPackageName::IsPackageExtension(const TCHAR* Ext)
{
	return IsAssetPackageExtension(Ext) || IsMapPackageExtension(Ext);
}

bool FPackageName::IsAssetPackageExtension(const TCHAR* Ext)
{
	return ExtensionIs(Ext, GetAssetPackageExtension());
}

bool FPackageName::IsMapPackageExtension(const TCHAR* Ext)
{
	return ExtensionIs(Ext, GetMapPackageExtension());
}

bool FPackageName::IsPackageFilename(const FString& Filename)
{
	return Filename.EndsWith(GetAssetPackageExtension(), ESearchCase::IgnoreCase) || Filename.EndsWith(GetMapPackageExtension(), ESearchCase::IgnoreCase);
}

bool FPackageName::FindPackagesInDirectory(TArray<FString>& OutPackages, const FString& RootDir)
{
	const int32 Before = OutPackages.Num();
	IteratePackagesInDirectory(RootDir, [&OutPackages](const TCHAR* Filename)
		{
			OutPackages.Add(FString(Filename));
			return true;
		});
	return OutPackages.Num() > Before;
}

void FPackageName::IteratePackagesInDirectory(const FString& RootDir, const FPackageNameVisitor& Visitor)
{
	IFileManager::Get().IterateDirectoryRecursively(*RootDir, [&Visitor](const TCHAR* Path, bool bIsDirectory)
		{
			if (!bIsDirectory && IsPackageFilename(FString(Path)))
			{
				return Visitor(Path);
			}
			return true;
		});
}

// ---- Mount points -------------------------------------------------------------------------------------

void FPackageName::RegisterMountPoint(const FString& RootPath, const FString& ContentPath)
{
	if (!IsValidRootPath(RootPath) || ContentPath.IsEmpty())
	{
		return;
	}
	const FString Content = NormalizeContentPath(ContentPath);
	FMountPoints::Get().Insert(RootPath, Content);
	OnContentPathMountedEvent.Broadcast(RootPath, Content);
}

void FPackageName::UnRegisterMountPoint(const FString& RootPath, const FString& ContentPath)
{
	if (ContentPath.IsEmpty())
	{
		return;
	}
	const FString Content = NormalizeContentPath(ContentPath);
	if (FMountPoints::Get().Remove(RootPath, Content))
	{
		OnContentPathDismountedEvent.Broadcast(RootPath, Content);
	}
}

bool FPackageName::MountPointExists(const FString& RootPath)
{
	const FString Root = RootPath.EndsWith(TEXT("/")) ? RootPath : RootPath + TEXT("/");
	for (const FMountPoint* Mount : FMountPoints::Get().GetDistinctRoots())
	{
		if (Mount->RootPath.Equals(Root, ESearchCase::IgnoreCase))
		{
			return true;
		}
	}
	return false;
}

FString FPackageName::GetContentPathForPackageRoot(const FString& InPackageRoot)
{
	const FString Root = InPackageRoot.EndsWith(TEXT("/")) ? InPackageRoot : InPackageRoot + TEXT("/");
	for (const FMountPoint* Mount : FMountPoints::Get().GetDistinctRoots())
	{
		if (Mount->RootPath.Equals(Root, ESearchCase::IgnoreCase))
		{
			return Mount->ContentPath;
		}
	}
	return FString();
}

void FPackageName::QueryRootContentPaths(TArray<FString>& OutRootContentPaths, bool bIncludeReadOnlyRoots, bool bWithoutLeadingSlashes, bool bWithoutTrailingSlashes)
{
	OutRootContentPaths.Reset();
	for (const FMountPoint* Mount : FMountPoints::Get().GetDistinctRoots())
	{
		if (!bIncludeReadOnlyRoots && Mount->bReadOnly)
		{
			continue;
		}
		FString Root = Mount->RootPath;
		if (bWithoutLeadingSlashes)
		{
			Root.RightChopInline(1);
		}
		if (bWithoutTrailingSlashes)
		{
			Root.LeftChopInline(1);
		}
		OutRootContentPaths.Add(MoveTemp(Root));
	}
}

TArray<FString> FPackageName::QueryMountPointLocalAbsPaths()
{
	TArray<FString> Paths;
	for (const FMountPoint* Mount : FMountPoints::Get().GetDistinctRoots())
	{
		if (!Mount->ContentPath.IsEmpty())
		{
			Paths.Add(Mount->ContentPath);
		}
	}
	return Paths;
}
