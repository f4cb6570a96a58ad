#include "UObject/Package.h"
#include "UObject/UObjectHash.h"
#include "UObject/UObjectGlobals.h"
#include "ObjectRegistry.h"

IMPLEMENT_CLASS(UPackage)

UPackage::FOnPackageDirtyStateChanged UPackage::PackageDirtyStateChangedEvent;
UPackage::FOnPackageMarkedDirty UPackage::PackageMarkedDirtyEvent;

UPackage::UPackage(const FObjectInitializer& ObjectInitializer)
	: UObject(ObjectInitializer)
{
}

void UPackage::SetDirtyFlag(bool bInIsDirty)
{
	// Transient packages are never saved, so they never become dirty.
	if (HasAnyFlags(RF_Transient) || bDirty == bInIsDirty)
	{
		return;
	}
	bDirty = bInIsDirty;
	PackageDirtyStateChangedEvent.Broadcast(this);
}

bool UPackage::IsScriptPackage() const
{
	return GetName().StartsWith(TEXT("/Script/"));
}

bool UPackage::IsFullyLoaded() const
{
	// Packages that never came from a file (made in memory, script packages) are complete by nature.
	return bHasBeenFullyLoaded || HasAnyPackageFlags(PKG_InMemoryOnly) || HasAnyFlags(RF_Transient) || LoadedPath.IsEmpty();
}

void UPackage::FullyLoad()
{
	if (!IsFullyLoaded())
	{
		LoadPackage(this, *GetName(), LOAD_None);
	}
}

UObject* UPackage::FindAssetInPackage(EObjectFlags RequiredTopLevelFlags) const
{
	const FString PackageName = GetName();
	int32 SlashIndex = INDEX_NONE;
	PackageName.FindLastChar(TEXT('/'), SlashIndex);
	const FString ShortName = PackageName.RightChop(SlashIndex + 1);

	UObject* FirstAsset = nullptr;
	UObject* NamedAsset = nullptr;
	UE::CoreUObject::Private::ForEachObjectWithOuterDirect(this, [&](UObject* Object) {
		if (!Object->IsAsset() || (RequiredTopLevelFlags != RF_NoFlags && !Object->HasAllFlags(RequiredTopLevelFlags)))
		{
			return true;
		}
		if (!FirstAsset)
		{
			FirstAsset = Object;
		}
		if (Object->GetName() == ShortName)
		{
			NamedAsset = Object;
			return false;
		}
		return true;
	});
	return NamedAsset ? NamedAsset : FirstAsset;
}
