#include "AssetRegistry/AssetData.h"

#include "Misc/PackageName.h"
#include "UObject/AssetRegistryTagsContext.h"
#include "UObject/Class.h"
#include "UObject/Object.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"

namespace
{
	bool LessIgnoringCase(const TPair<FName, FString>& A, const TPair<FName, FString>& B)
	{
		return A.Key.ToString().Compare(B.Key.ToString(), ESearchCase::IgnoreCase) < 0;
	}

	const TArray<TPair<FName, FString>>& EmptyPairs()
	{
		static const TArray<TPair<FName, FString>> Empty;
		return Empty;
	}
}

FAssetDataTagMapSharedView::FAssetDataTagMapSharedView(const FAssetDataTagMap& InMap)
{
	TArray<TPair<FName, FString>> Sorted;
	for (const TPair<FName, FString>& Pair : InMap)
	{
		Sorted.Emplace(Pair.Key, Pair.Value);
	}
	*this = FAssetDataTagMapSharedView(MoveTemp(Sorted));
}

FAssetDataTagMapSharedView::FAssetDataTagMapSharedView(TArray<TPair<FName, FString>>&& InPairs)
{
	if (InPairs.Num() > 0)
	{
		InPairs.StableSort(LessIgnoringCase);
		Pairs = MakeShared<const TArray<TPair<FName, FString>>>(MoveTemp(InPairs));
	}
}

const TArray<TPair<FName, FString>>& FAssetDataTagMapSharedView::GetPairs() const
{
	return Pairs.IsValid() ? *Pairs : EmptyPairs();
}

FAssetTagValueRef FAssetDataTagMapSharedView::FindTag(FName Key) const
{
	for (const TPair<FName, FString>& Pair : GetPairs())
	{
		if (Pair.Key == Key)
		{
			return FAssetTagValueRef(&Pair.Value);
		}
	}
	return FAssetTagValueRef();
}

FAssetDataTagMap FAssetDataTagMapSharedView::CopyMap() const
{
	FAssetDataTagMap Map;
	for (const TPair<FName, FString>& Pair : GetPairs())
	{
		Map.Add(Pair.Key, Pair.Value);
	}
	return Map;
}

bool FAssetDataTagMapSharedView::operator==(const FAssetDataTagMapSharedView& Other) const
{
	const TArray<TPair<FName, FString>>& Mine = GetPairs();
	const TArray<TPair<FName, FString>>& Theirs = Other.GetPairs();
	if (Mine.Num() != Theirs.Num())
	{
		return false;
	}
	for (int32 Index = 0; Index < Mine.Num(); ++Index)
	{
		if (Mine[Index].Key != Theirs[Index].Key || !Mine[Index].Value.Equals(Theirs[Index].Value, ESearchCase::CaseSensitive))
		{
			return false;
		}
	}
	return true;
}

FAssetData::FAssetData(FName InPackageName, FName InPackagePath, FName InAssetName, FTopLevelAssetPath InAssetClassPathName, FAssetDataTagMap InTags, uint32 InPackageFlags)
	: PackageName(InPackageName)
	, PackagePath(InPackagePath)
	, AssetName(InAssetName)
	, AssetClassPath(InAssetClassPathName)
	, PackageFlags(InPackageFlags)
	, TagsAndValues(InTags)
{
}

FAssetData::FAssetData(const FString& InLongPackageName, const FString& InObjectPath, FTopLevelAssetPath InAssetClassPathName, FAssetDataTagMap InTags, uint32 InPackageFlags)
	: PackageName(InLongPackageName)
	, PackagePath(FPackageName::GetLongPackagePath(InLongPackageName))
	, AssetName(FPackageName::ObjectPathToObjectName(InObjectPath))
	, AssetClassPath(InAssetClassPathName)
	, PackageFlags(InPackageFlags)
	, TagsAndValues(InTags)
{
}

FAssetData::FAssetData(const UObject* InAsset)
{
	if (!InAsset || !InAsset->GetOuter() || !InAsset->GetOuter()->IsA<UPackage>())
	{
		return;
	}
	const UPackage* Package = InAsset->GetPackage();
	PackageName = Package->GetFName();
	PackagePath = FName(FPackageName::GetLongPackagePath(Package->GetName()));
	AssetName = InAsset->GetFName();
	AssetClassPath = FTopLevelAssetPath(InAsset->GetClass());
	PackageFlags = uint32(Package->GetPackageFlags());

	FAssetRegistryTagsContextData Data(InAsset, EAssetRegistryTagsCaller::AssetRegistryQuery);
	InAsset->GetAssetRegistryTags(FAssetRegistryTagsContext(Data));
	TArray<TPair<FName, FString>> Tags;
	for (const FAssetRegistryTag& Tag : Data.Tags)
	{
		Tags.Emplace(Tag.Name, Tag.Value);
	}
	TagsAndValues = FAssetDataTagMapSharedView(MoveTemp(Tags));
}

bool FAssetData::IsUAsset() const
{
	return IsValid() && FPackageName::GetShortFName(PackageName) == AssetName;
}

FSoftObjectPath FAssetData::GetSoftObjectPath() const
{
	return IsValid() ? FSoftObjectPath(FTopLevelAssetPath(PackageName, AssetName)) : FSoftObjectPath();
}

FString FAssetData::GetObjectPathString() const
{
	return IsValid() ? PackageName.ToString() + TEXT(".") + AssetName.ToString() : FString();
}

FString FAssetData::GetFullName() const
{
	return IsValid() ? AssetClassPath.ToString() + TEXT(" ") + GetObjectPathString() : FString();
}

FString FAssetData::GetExportTextName() const
{
	return IsValid() ? AssetClassPath.ToString() + TEXT("'") + GetObjectPathString() + TEXT("'") : FString();
}

UClass* FAssetData::GetClass() const
{
	return AssetClassPath.IsValid() ? FindObject<UClass>(AssetClassPath) : nullptr;
}

bool FAssetData::IsInstanceOf(const UClass* InClass) const
{
	const UClass* Class = GetClass();
	return Class && InClass && Class->IsChildOf(InClass);
}

UObject* FAssetData::GetAsset() const
{
	return FastGetAsset(true);
}

UObject* FAssetData::FastGetAsset(bool bLoad) const
{
	if (!IsValid())
	{
		return nullptr;
	}
	const FString ObjectPath = GetObjectPathString();
	if (UObject* Found = StaticFindObject(nullptr, nullptr, *ObjectPath))
	{
		return Found;
	}
	return bLoad ? StaticLoadObject(nullptr, nullptr, *ObjectPath, nullptr, LOAD_NoWarn | LOAD_Quiet) : nullptr;
}

bool FAssetData::IsAssetLoaded() const
{
	return FastGetAsset(false) != nullptr;
}

UPackage* FAssetData::GetPackage() const
{
	if (PackageName.IsNone())
	{
		return nullptr;
	}
	if (UPackage* Found = FindObject<UPackage>(nullptr, *PackageName.ToString()))
	{
		return Found;
	}
	return LoadPackage(nullptr, *PackageName.ToString(), LOAD_NoWarn | LOAD_Quiet);
}

bool FAssetData::operator<(const FAssetData& Other) const
{
	const int32 ByPackage = PackageName.ToString().Compare(Other.PackageName.ToString(), ESearchCase::IgnoreCase);
	if (ByPackage != 0)
	{
		return ByPackage < 0;
	}
	return AssetName.ToString().Compare(Other.AssetName.ToString(), ESearchCase::IgnoreCase) < 0;
}
