#include "AssetRegistry/IAssetRegistry.h"

#include "AssetRegistry/AssetRegistryModule.h"
#include "HAL/FileManager.h"
#include "Misc/PackageName.h"
#include "Misc/Paths.h"
#include "Modules/ModuleManager.h"
#include "Serialization/PackageFileHeader.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/SavePackage.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectIterator.h"

namespace
{
	/** Everything known about one package. */
	struct FPackageEntry
	{
		FName PackageName;
		/** The package file, empty for a package known only in memory. */
		FString Filename;
		TArray<FAssetData> Assets;
		TArray<FName> Dependencies;
	};

	bool IsUnderPath(const FString& PackagePath, const FString& Folder, bool bRecursive)
	{
		if (PackagePath.Equals(Folder, ESearchCase::IgnoreCase))
		{
			return true;
		}
		return bRecursive && PackagePath.Len() > Folder.Len() && PackagePath.StartsWith(Folder, ESearchCase::IgnoreCase)
			&& (Folder.EndsWith(TEXT("/")) || PackagePath[Folder.Len()] == TEXT('/'));
	}

	FString WithoutTrailingSlash(const FString& Path)
	{
		return Path.Len() > 1 && Path.EndsWith(TEXT("/")) ? Path.LeftChop(1) : Path;
	}

	bool LessByName(const FName& A, const FName& B)
	{
		return A.ToString().Compare(B.ToString(), ESearchCase::IgnoreCase) < 0;
	}

	class FAssetRegistryImpl final : public IAssetRegistry
	{
	public:
		FAssetRegistryImpl()
		{
			SavedHandle = UE::Headless::OnPackageFileSaved().AddLambda([this](const FString& Filename, UPackage* Package) { OnPackageSaved(Filename, Package); });
			MountedHandle = FPackageName::OnContentPathMounted().AddLambda([this](const FString& Root, const FString& ContentPath) { OnContentPathMounted(Root, ContentPath); });
			DismountedHandle = FPackageName::OnContentPathDismounted().AddLambda([this](const FString& Root, const FString&) { OnContentPathDismounted(Root); });
		}

		// ---- Queries ---------------------------------------------------------------------

		virtual bool GetAssets(const FARFilter& Filter, TArray<FAssetData>& OutAssetData, bool bSkipARFilteredAssets) const override
		{
			EnsureSearched();
			TSet<FTopLevelAssetPath> Classes;
			for (const FTopLevelAssetPath& ClassPath : Filter.ClassPaths)
			{
				Classes.Add(ClassPath);
			}
			if (Filter.bRecursiveClasses && Filter.ClassPaths.Num() > 0)
			{
				Classes.Reset();
				GetDerivedClassNames(Filter.ClassPaths, Filter.RecursiveClassPathsExclusionSet, Classes);
			}
			if (Filter.ClassPaths.Num() > 0 && Classes.Num() == 0)
			{
				return false;
			}

			TArray<FString> Folders;
			for (const FName& Path : Filter.PackagePaths)
			{
				Folders.Add(WithoutTrailingSlash(Path.ToString()));
			}

			const int32 FirstNew = OutAssetData.Num();
			for (const TPair<FName, FPackageEntry>& Pair : Packages)
			{
				const FPackageEntry& Package = Pair.Value;
				if (Filter.bIncludeOnlyOnDiskAssets && Package.Filename.IsEmpty())
				{
					continue;
				}
				if (Filter.PackageNames.Num() > 0 && !Filter.PackageNames.Contains(Package.PackageName))
				{
					continue;
				}
				for (const FAssetData& Asset : Package.Assets)
				{
					if (Matches(Filter, Classes, Folders, Asset))
					{
						OutAssetData.Add(Asset);
					}
				}
			}
			SortFrom(OutAssetData, FirstNew);
			return true;
		}

		virtual bool GetAssetsByPackageName(FName PackageName, TArray<FAssetData>& OutAssetData, bool bIncludeOnlyOnDiskAssets, bool bSkipARFilteredAssets) const override
		{
			FARFilter Filter;
			Filter.PackageNames.Add(PackageName);
			Filter.bIncludeOnlyOnDiskAssets = bIncludeOnlyOnDiskAssets;
			return GetAssets(Filter, OutAssetData, bSkipARFilteredAssets);
		}

		virtual bool GetAssetsByPath(FName PackagePath, TArray<FAssetData>& OutAssetData, bool bRecursive, bool bIncludeOnlyOnDiskAssets) const override
		{
			return GetAssetsByPaths({PackagePath}, OutAssetData, bRecursive, bIncludeOnlyOnDiskAssets);
		}

		virtual bool GetAssetsByPaths(TArray<FName> PackagePaths, TArray<FAssetData>& OutAssetData, bool bRecursive, bool bIncludeOnlyOnDiskAssets) const override
		{
			FARFilter Filter;
			Filter.PackagePaths = MoveTemp(PackagePaths);
			Filter.bRecursivePaths = bRecursive;
			Filter.bIncludeOnlyOnDiskAssets = bIncludeOnlyOnDiskAssets;
			return GetAssets(Filter, OutAssetData, true);
		}

		virtual bool GetAssetsByClass(FTopLevelAssetPath ClassPathName, TArray<FAssetData>& OutAssetData, bool bSearchSubClasses) const override
		{
			FARFilter Filter;
			Filter.ClassPaths.Add(ClassPathName);
			Filter.bRecursiveClasses = bSearchSubClasses;
			return GetAssets(Filter, OutAssetData, true);
		}

		virtual bool GetAllAssets(TArray<FAssetData>& OutAssetData, bool bIncludeOnlyOnDiskAssets) const override
		{
			FARFilter Filter;
			Filter.bIncludeOnlyOnDiskAssets = bIncludeOnlyOnDiskAssets;
			return GetAssets(Filter, OutAssetData, true);
		}

		virtual FAssetData GetAssetByObjectPath(const FSoftObjectPath& ObjectPath, bool bIncludeOnlyOnDiskAssets, bool bSkipARFilteredAssets) const override
		{
			EnsureSearched();
			if (!ObjectPath.IsAsset())
			{
				return FAssetData();
			}
			const FPackageEntry* Package = Packages.Find(ObjectPath.GetLongPackageFName());
			if (!Package || (bIncludeOnlyOnDiskAssets && Package->Filename.IsEmpty()))
			{
				return FAssetData();
			}
			const FAssetData* Found = Package->Assets.FindByPredicate([&ObjectPath](const FAssetData& Asset) { return Asset.AssetName == ObjectPath.GetAssetFName(); });
			return Found ? *Found : FAssetData();
		}

		virtual bool HasAssets(const FName PackagePath, const bool bRecursive) const override
		{
			EnsureSearched();
			const FString Folder = WithoutTrailingSlash(PackagePath.ToString());
			for (const TPair<FName, FPackageEntry>& Pair : Packages)
			{
				for (const FAssetData& Asset : Pair.Value.Assets)
				{
					if (IsUnderPath(Asset.PackagePath.ToString(), Folder, bRecursive))
					{
						return true;
					}
				}
			}
			return false;
		}

		virtual bool GetDependencies(FName PackageName, TArray<FName>& OutDependencies, UE::AssetRegistry::EDependencyCategory Category,
			const UE::AssetRegistry::FDependencyQuery& Flags) const override
		{
			EnsureSearched();
			const FPackageEntry* Package = Packages.Find(PackageName);
			if (!Package)
			{
				return false;
			}
			if (EnumHasAnyFlags(Category, UE::AssetRegistry::EDependencyCategory::Package))
			{
				for (const FName& Dependency : Package->Dependencies)
				{
					OutDependencies.AddUnique(Dependency);
				}
			}
			return true;
		}

		virtual bool GetReferencers(FName PackageName, TArray<FName>& OutReferencers, UE::AssetRegistry::EDependencyCategory Category,
			const UE::AssetRegistry::FDependencyQuery& Flags) const override
		{
			EnsureSearched();
			if (!EnumHasAnyFlags(Category, UE::AssetRegistry::EDependencyCategory::Package))
			{
				return false;
			}
			TArray<FName> Found;
			for (const TPair<FName, FPackageEntry>& Pair : Packages)
			{
				if (Pair.Value.PackageName != PackageName && Pair.Value.Dependencies.Contains(PackageName))
				{
					Found.Add(Pair.Value.PackageName);
				}
			}
			Found.Sort(LessByName);
			for (const FName& Referencer : Found)
			{
				OutReferencers.AddUnique(Referencer);
			}
			return Found.Num() > 0;
		}

		virtual void GetSubPaths(const FString& InBasePath, TArray<FString>& OutPathList, bool bInRecurse) const override
		{
			EnsureSearched();
			const FString Base = WithoutTrailingSlash(InBasePath);
			TArray<FString> Found;
			for (const TPair<FName, FPackageEntry>& Pair : Packages)
			{
				// Every folder between the base and the package's folder holds assets below it.
				FString Path = FPackageName::GetLongPackagePath(Pair.Value.PackageName.ToString());
				while (Path.Len() > Base.Len() && IsUnderPath(Path, Base, true))
				{
					const FString Parent = FPackageName::GetLongPackagePath(Path);
					if (bInRecurse || Parent.Equals(Base, ESearchCase::IgnoreCase))
					{
						if (!Found.ContainsByPredicate([&Path](const FString& Existing) { return Existing.Equals(Path, ESearchCase::IgnoreCase); }))
						{
							Found.Add(Path);
						}
					}
					Path = Parent;
				}
			}
			Found.Sort([](const FString& A, const FString& B) { return A.Compare(B, ESearchCase::IgnoreCase) < 0; });
			OutPathList.Append(Found);
		}

		virtual void GetDerivedClassNames(const TArray<FTopLevelAssetPath>& ClassNames, const TSet<FTopLevelAssetPath>& ExcludedClassNames,
			TSet<FTopLevelAssetPath>& OutDerivedClassNames) const override
		{
			TArray<UClass*> Bases;
			TArray<UClass*> Excluded;
			for (const FTopLevelAssetPath& ClassName : ClassNames)
			{
				if (UClass* Class = FindObject<UClass>(ClassName))
				{
					Bases.Add(Class);
				}
				else if (!ExcludedClassNames.Contains(ClassName))
				{
					// A class that is not in memory (a Blueprint class not loaded) can only match itself.
					OutDerivedClassNames.Add(ClassName);
				}
			}
			for (const FTopLevelAssetPath& ClassName : ExcludedClassNames)
			{
				if (UClass* Class = FindObject<UClass>(ClassName))
				{
					Excluded.Add(Class);
				}
			}
			for (TObjectIterator<UClass> It; It; ++It)
			{
				UClass* Class = *It;
				const bool bDerived = Bases.ContainsByPredicate([Class](const UClass* Base) { return Class->IsChildOf(Base); });
				const bool bExcluded = ExcludedClassNames.Contains(FTopLevelAssetPath(Class))
					|| Excluded.ContainsByPredicate([Class](const UClass* Base) { return Class->IsChildOf(Base); });
				if (bDerived && !bExcluded)
				{
					OutDerivedClassNames.Add(FTopLevelAssetPath(Class));
				}
			}
		}

		virtual void GetAncestorClassNames(FTopLevelAssetPath ClassName, TArray<FTopLevelAssetPath>& OutAncestorClassNames) const override
		{
			const UClass* Class = FindObject<UClass>(ClassName);
			for (const UClass* Super = Class ? Class->GetSuperClass() : nullptr; Super; Super = Super->GetSuperClass())
			{
				OutAncestorClassNames.Add(FTopLevelAssetPath(Super));
			}
		}

		// ---- Scanning --------------------------------------------------------------------

		virtual void SearchAllAssets(bool bSynchronousSearch) override
		{
			TArray<FString> Roots;
			FPackageName::QueryRootContentPaths(Roots);
			for (const FString& Root : Roots)
			{
				ScanRoot(Root);
			}
			bSearchedAll = true;
			FilesLoadedEvent.Broadcast();
		}

		virtual void ScanPathsSynchronous(const TArray<FString>& InPaths, bool bForceRescan, bool bIgnoreDenyListScanFilters) override
		{
			for (const FString& InPath : InPaths)
			{
				FString PackagePath;
				FString Folder;
				if (InPath.StartsWith(TEXT("/")) && FPackageName::IsValidPath(InPath))
				{
					PackagePath = WithoutTrailingSlash(InPath);
					if (!FPackageName::TryConvertLongPackageNameToFilename(PackagePath, Folder))
					{
						AddError(FString::Printf(TEXT("Cannot scan '%s': it is not a mounted content folder."), *InPath));
						continue;
					}
				}
				else
				{
					Folder = FPaths::ConvertRelativePathToFull(InPath);
					FString Reason;
					if (!FPackageName::TryConvertFilenameToLongPackageName(Folder, PackagePath, &Reason))
					{
						AddError(FString::Printf(TEXT("Cannot scan '%s': %s"), *InPath, *Reason));
						continue;
					}
				}
				ScanFolder(PackagePath, Folder);
			}
		}

		virtual void ScanFilesSynchronous(const TArray<FString>& InFilePaths, bool bForceRescan) override
		{
			for (const FString& InPath : InFilePaths)
			{
				FString PackageName;
				FString Filename;
				if (InPath.StartsWith(TEXT("/")) && FPackageName::IsValidLongPackageName(InPath, true))
				{
					PackageName = InPath;
					if (!FPackageName::DoesPackageExist(PackageName, &Filename))
					{
						ForgetPackage(FName(PackageName));
						continue;
					}
				}
				else
				{
					Filename = FPaths::ConvertRelativePathToFull(InPath);
					FString Reason;
					if (!FPackageName::TryConvertFilenameToLongPackageName(Filename, PackageName, &Reason))
					{
						AddError(FString::Printf(TEXT("Cannot scan '%s': %s"), *InPath, *Reason));
						continue;
					}
					if (!IFileManager::Get().FileExists(*Filename))
					{
						ForgetPackage(FName(PackageName));
						continue;
					}
				}
				ScanFile(Filename, nullptr);
			}
		}

		virtual bool IsLoadingAssets() const override { return false; }
		virtual void WaitForCompletion() override {}

		// ---- Changes made by the editor --------------------------------------------------

		virtual void AssetCreated(UObject* NewAsset) override
		{
			const FAssetData Asset = DescribeObject(NewAsset);
			if (!Asset.IsValid())
			{
				return;
			}
			FPackageEntry& Package = FindOrAddPackage(Asset.PackageName);
			if (FAssetData* Existing = Package.Assets.FindByPredicate([&Asset](const FAssetData& Other) { return Other == Asset; }))
			{
				*Existing = Asset;
				AssetUpdatedEvent.Broadcast(Asset);
				return;
			}
			Package.Assets.Add(Asset);
			AssetAddedEvent.Broadcast(Asset);
		}

		virtual void AssetDeleted(UObject* DeletedAsset) override
		{
			if (!DeletedAsset)
			{
				return;
			}
			const FName PackageName = DeletedAsset->GetPackage()->GetFName();
			RemoveAsset(PackageName, DeletedAsset->GetFName());
			FPackageEntry* Package = Packages.Find(PackageName);
			// Once the file is gone too, the package's references go with it.
			if (Package && Package->Assets.Num() == 0 && (Package->Filename.IsEmpty() || !IFileManager::Get().FileExists(*Package->Filename)))
			{
				Packages.Remove(PackageName);
			}
		}

		virtual void AssetRenamed(const UObject* RenamedAsset, const FString& OldObjectPath) override
		{
			if (!RenamedAsset)
			{
				return;
			}
			const FName OldPackageName(FPackageName::ObjectPathToPackageName(OldObjectPath));
			const FName OldAssetName(FPackageName::ObjectPathToObjectName(OldObjectPath));
			FPackageEntry* OldPackage = Packages.Find(OldPackageName);
			if (OldPackage)
			{
				OldPackage->Assets.RemoveAll([&OldAssetName](const FAssetData& Asset) { return Asset.AssetName == OldAssetName; });
				if (OldPackage->Assets.Num() == 0 && OldPackage->Filename.IsEmpty())
				{
					Packages.Remove(OldPackageName);
				}
			}
			const FAssetData Asset = DescribeObject(RenamedAsset);
			if (Asset.IsValid())
			{
				FPackageEntry& Package = FindOrAddPackage(Asset.PackageName);
				Package.Assets.RemoveAll([&Asset](const FAssetData& Other) { return Other == Asset; });
				Package.Assets.Add(Asset);
				AssetRenamedEvent.Broadcast(Asset, OldObjectPath);
			}
		}

		// ---- Events ----------------------------------------------------------------------

		virtual FAssetAddedEvent& OnAssetAdded() override { return AssetAddedEvent; }
		virtual FAssetRemovedEvent& OnAssetRemoved() override { return AssetRemovedEvent; }
		virtual FAssetRenamedEvent& OnAssetRenamed() override { return AssetRenamedEvent; }
		virtual FAssetUpdatedEvent& OnAssetUpdated() override { return AssetUpdatedEvent; }
		virtual FFilesLoadedEvent& OnFilesLoaded() override { return FilesLoadedEvent; }

		// ---- Headless ----------------------------------------------------------------------

		TArray<FString> TakeErrors()
		{
			TArray<FString> Result = MoveTemp(Errors);
			Errors.Reset();
			return Result;
		}

		void Reset()
		{
			Packages.Reset();
			Errors.Reset();
			bSearchedAll = false;
		}

	private:
		/**
		 * The first question asked of the registry finds it searched: the editor starts its search at
		 * start-up, so asking before any scan must not answer "nothing".
		 */
		void EnsureSearched() const
		{
			if (!bSearchedAll)
			{
				const_cast<FAssetRegistryImpl*>(this)->SearchAllAssets(true);
			}
		}

		bool Matches(const FARFilter& Filter, const TSet<FTopLevelAssetPath>& Classes, const TArray<FString>& Folders, const FAssetData& Asset) const
		{
			if (Filter.ClassPaths.Num() > 0 && !Classes.Contains(Asset.AssetClassPath))
			{
				return false;
			}
			if (Folders.Num() > 0)
			{
				const FString Path = Asset.PackagePath.ToString();
				if (!Folders.ContainsByPredicate([&](const FString& Folder) { return IsUnderPath(Path, Folder, Filter.bRecursivePaths); }))
				{
					return false;
				}
			}
			if (Filter.SoftObjectPaths.Num() > 0 && !Filter.SoftObjectPaths.Contains(Asset.GetSoftObjectPath()))
			{
				return false;
			}
			for (const TPair<FName, TOptional<FString>>& Tag : Filter.TagsAndValues)
			{
				const FAssetTagValueRef Value = Asset.TagsAndValues.FindTag(Tag.Key);
				if (!Value.IsSet() || (Tag.Value.IsSet() && !Value.Equals(Tag.Value.GetValue())))
				{
					return false;
				}
			}
			return true;
		}

		static void SortFrom(TArray<FAssetData>& Assets, int32 First)
		{
			if (Assets.Num() - First > 1)
			{
				std::sort(Assets.GetData() + First, Assets.GetData() + Assets.Num());
			}
		}

		FPackageEntry& FindOrAddPackage(FName PackageName)
		{
			if (FPackageEntry* Existing = Packages.Find(PackageName))
			{
				return *Existing;
			}
			FPackageEntry& Package = Packages.Add(PackageName);
			Package.PackageName = PackageName;
			return Package;
		}

		void RemoveAsset(FName PackageName, FName AssetName)
		{
			FPackageEntry* Package = Packages.Find(PackageName);
			if (!Package)
			{
				return;
			}
			const int32 Index = Package->Assets.IndexOfByPredicate([&AssetName](const FAssetData& Asset) { return Asset.AssetName == AssetName; });
			if (Index != INDEX_NONE)
			{
				const FAssetData Removed = Package->Assets[Index];
				Package->Assets.RemoveAt(Index);
				AssetRemovedEvent.Broadcast(Removed);
			}
		}

		void ForgetPackage(FName PackageName)
		{
			FPackageEntry* Package = Packages.Find(PackageName);
			if (!Package)
			{
				return;
			}
			const TArray<FAssetData> Removed = Package->Assets;
			Packages.Remove(PackageName);
			for (const FAssetData& Asset : Removed)
			{
				AssetRemovedEvent.Broadcast(Asset);
			}
		}

		void AddError(const FString& Error)
		{
			Errors.Add(Error);
		}

		/** The object as an asset, with the tags it reports. */
		static FAssetData DescribeObject(const UObject* Object)
		{
			return FAssetData(Object);
		}

		void ScanRoot(const FString& Root)
		{
			const FString Folder = FPackageName::GetContentPathForPackageRoot(Root);
			if (!Folder.IsEmpty())
			{
				ScanFolder(WithoutTrailingSlash(Root), WithoutTrailingSlash(Folder));
			}
		}

		/** Scans every package file under Folder (the folder of PackagePath); packages no longer there are forgotten. */
		void ScanFolder(const FString& PackagePath, const FString& Folder)
		{
			TMap<FName, FString> Seen;
			const bool bComplete = IFileManager::Get().IterateDirectoryRecursively(*Folder, [this, &Seen](const TCHAR* Path, bool bIsDirectory)
				{
					if (!bIsDirectory && FPackageName::IsPackageFilename(FString(Path)))
					{
						const FName Scanned = ScanFile(FString(Path), &Seen);
						if (!Scanned.IsNone())
						{
							Seen.Add(Scanned, FString(Path));
						}
					}
					return true;
				});
			if (!bComplete)
			{
				// Without the whole listing, a package not seen may still be there: forget nothing.
				if (IFileManager::Get().DirectoryExists(*Folder))
				{
					AddError(FString::Printf(TEXT("The folder '%s' could not be read completely; packages in it that were not seen are kept."), *Folder));
					return;
				}
			}
			TArray<FName> Gone;
			for (const TPair<FName, FPackageEntry>& Pair : Packages)
			{
				if (!Pair.Value.Filename.IsEmpty() && !Seen.Contains(Pair.Key) && IsUnderPath(FPackageName::GetLongPackagePath(Pair.Key.ToString()), PackagePath, true))
				{
					Gone.Add(Pair.Key);
				}
			}
			for (const FName& PackageName : Gone)
			{
				ForgetPackage(PackageName);
			}
		}

		/**
		 * Reads one package file's header and records its assets and references. Returns the
		 * package name, or NAME_None when the file was refused (the reason goes to the errors).
		 */
		FName ScanFile(const FString& Filename, const TMap<FName, FString>* AlreadySeen)
		{
			FString PackageNameString;
			FString Reason;
			if (!FPackageName::TryConvertFilenameToLongPackageName(Filename, PackageNameString, &Reason))
			{
				AddError(FString::Printf(TEXT("Skipped '%s': %s"), *Filename, *Reason));
				return NAME_None;
			}
			// The file must be the one the package name leads to: this refuses files reached through
			// links that leave the folder, and a second file whose name differs only in case.
			FString Expected;
			FText Refusal;
			if (!FPackageName::TryConvertLongPackageNameToFilename(PackageNameString, Expected, FString(TEXT(".")) + FPaths::GetExtension(Filename), Refusal))
			{
				AddError(FString::Printf(TEXT("Skipped '%s': %s"), *Filename, *Refusal.ToString()));
				return NAME_None;
			}
			const FName PackageName(PackageNameString);
			const FString* EarlierFile = AlreadySeen ? AlreadySeen->Find(PackageName) : nullptr;
			if (EarlierFile || !Expected.Equals(FPaths::ConvertRelativePathToFull(Filename), ESearchCase::CaseSensitive))
			{
				AddError(FString::Printf(TEXT("Skipped '%s': package '%s' already comes from '%s'."), *Filename, *PackageNameString, EarlierFile ? **EarlierFile : *Expected));
				return NAME_None;
			}

			UE::Headless::FPackageFileHeader Header;
			FString Error;
			if (!UE::Headless::ReadPackageFileHeader(Filename, Header, Error))
			{
				AddError(Error);
				ForgetPackage(PackageName);
				return NAME_None;
			}

			TArray<FAssetData> NewAssets;
			const FName PackagePath(FPackageName::GetLongPackagePath(PackageNameString));
			for (const UE::Headless::FPackageFileAssetEntry& Entry : Header.Assets)
			{
				FAssetData Asset;
				Asset.PackageName = PackageName;
				Asset.PackagePath = PackagePath;
				Asset.AssetName = Entry.ObjectName;
				Asset.AssetClassPath = FTopLevelAssetPath(Entry.ClassPath);
				TArray<TPair<FName, FString>> Tags = Entry.Tags;
				Asset.TagsAndValues = FAssetDataTagMapSharedView(MoveTemp(Tags));
				NewAssets.Add(MoveTemp(Asset));
			}
			ReplacePackage(PackageName, FPaths::ConvertRelativePathToFull(Filename), MoveTemp(NewAssets), MoveTemp(Header.Dependencies));
			return PackageName;
		}

		void ReplacePackage(FName PackageName, const FString& Filename, TArray<FAssetData>&& NewAssets, TArray<FName>&& Dependencies)
		{
			FPackageEntry& Package = FindOrAddPackage(PackageName);
			const TArray<FAssetData> OldAssets = MoveTemp(Package.Assets);
			Package.Filename = Filename;
			Package.Assets = MoveTemp(NewAssets);
			Package.Dependencies = MoveTemp(Dependencies);
			Package.Dependencies.Sort(LessByName);

			// Copy before broadcasting: a listener may query or change the registry.
			const TArray<FAssetData> Current = Package.Assets;
			for (const FAssetData& Old : OldAssets)
			{
				if (!Current.Contains(Old))
				{
					AssetRemovedEvent.Broadcast(Old);
				}
			}
			for (const FAssetData& Asset : Current)
			{
				const FAssetData* Old = OldAssets.FindByPredicate([&Asset](const FAssetData& Other) { return Other == Asset; });
				if (!Old)
				{
					AssetAddedEvent.Broadcast(Asset);
				}
				else if (Old->AssetClassPath != Asset.AssetClassPath || !(Old->TagsAndValues == Asset.TagsAndValues))
				{
					AssetUpdatedEvent.Broadcast(Asset);
				}
			}
		}

		void OnPackageSaved(const FString& Filename, UPackage* Package)
		{
			ScanFile(Filename, nullptr);
		}

		void OnContentPathMounted(const FString& Root, const FString& ContentPath)
		{
			if (bSearchedAll)
			{
				ScanRoot(Root);
			}
		}

		void OnContentPathDismounted(const FString& Root)
		{
			const FString RootPath = WithoutTrailingSlash(Root);
			// A root mounted twice stays reachable through its other folder.
			if (FPackageName::MountPointExists(Root))
			{
				ScanRoot(Root);
				return;
			}
			TArray<FName> Gone;
			for (const TPair<FName, FPackageEntry>& Pair : Packages)
			{
				if (IsUnderPath(FPackageName::GetLongPackagePath(Pair.Key.ToString()), RootPath, true))
				{
					Gone.Add(Pair.Key);
				}
			}
			for (const FName& PackageName : Gone)
			{
				ForgetPackage(PackageName);
			}
		}

		TMap<FName, FPackageEntry> Packages;
		TArray<FString> Errors;
		bool bSearchedAll = false;

		FDelegateHandle SavedHandle;
		FDelegateHandle MountedHandle;
		FDelegateHandle DismountedHandle;

		FAssetAddedEvent AssetAddedEvent;
		FAssetRemovedEvent AssetRemovedEvent;
		FAssetRenamedEvent AssetRenamedEvent;
		FAssetUpdatedEvent AssetUpdatedEvent;
		FFilesLoadedEvent FilesLoadedEvent;
	};

	FAssetRegistryImpl& GetRegistry()
	{
		// Never destroyed: its delegates stay bound to events that live as long as the program.
		static FAssetRegistryImpl* Registry = new FAssetRegistryImpl();
		return *Registry;
	}
}

IAssetRegistry* IAssetRegistry::Get()
{
	return &GetRegistry();
}

void FAssetRegistryModule::StartupModule()
{
	GetRegistry();
}

namespace UE::Headless
{
	TArray<FString> TakeAssetRegistryScanErrors()
	{
		return GetRegistry().TakeErrors();
	}

	void ResetAssetRegistry()
	{
		GetRegistry().Reset();
	}
}

IMPLEMENT_MODULE(FAssetRegistryModule, AssetRegistry)
