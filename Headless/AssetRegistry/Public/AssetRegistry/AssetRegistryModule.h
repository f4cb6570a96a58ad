#pragma once

#include "CoreMinimal.h"
#include "AssetRegistry/AssetRegistryGlobals.h"
#include "AssetRegistry/IAssetRegistry.h"
#include "Modules/ModuleInterface.h"

/** The AssetRegistry module: hands out the registry and forwards the editor's asset notifications to it. */
class FAssetRegistryModule : public IModuleInterface
{
public:
	virtual void StartupModule() override;
	virtual void ShutdownModule() override {}

	/** The registry. */
	IAssetRegistry& Get() const { return IAssetRegistry::GetChecked(); }
	static IAssetRegistry& GetRegistry() { return IAssetRegistry::GetChecked(); }

	static void AssetCreated(UObject* NewAsset) { IAssetRegistry::GetChecked().AssetCreated(NewAsset); }
	static void AssetDeleted(UObject* DeletedAsset) { IAssetRegistry::GetChecked().AssetDeleted(DeletedAsset); }
	static void AssetRenamed(const UObject* RenamedAsset, const FString& OldObjectPath) { IAssetRegistry::GetChecked().AssetRenamed(RenamedAsset, OldObjectPath); }
};
