#include "AssetOperationBase.h"

#include "AssetRegistry/AssetRegistryModule.h"
#include "AssetRegistry/IAssetRegistry.h"
#include "Dom/JsonObject.h"
#include "HAL/FileManager.h"
#include "Misc/PackageName.h"
#include "Misc/Paths.h"
#include "Serialization/JsonSerializer.h"
#include "Serialization/JsonWriter.h"
#include "ToolResult.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/SavePackage.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"

#if __has_include("Factories/Factory.h")
#include "Factories/Factory.h"
#define CALVORN_WITH_ASSET_FACTORIES 1
#else
#define CALVORN_WITH_ASSET_FACTORIES 0
#endif

namespace
{
	/** Hides every object of the package, and the package, from lookups: the editor's unload of a deleted asset. */
	void DiscardPackage(UPackage* Package)
	{
		if (!Package)
		{
			return;
		}
		TArray<UObject*> Objects;
		GetObjectsWithOuter(Package, Objects, /*bIncludeNestedObjects*/ true);
		Objects.Add(Package);
		for (UObject* Object : Objects)
		{
			if (Object->IsRooted())
			{
				Object->RemoveFromRoot();
			}
			Object->ClearFlags(RF_Standalone | RF_Public);
			Object->MarkAsGarbage();
		}
	}

	FString JoinNames(const TArray<FName>& Names)
	{
		FString Joined;
		for (const FName& Name : Names)
		{
			if (!Joined.IsEmpty())
			{
				Joined += TEXT(", ");
			}
			Joined += Name.ToString();
		}
		return Joined;
	}
}

UObject* FAssetOperationBase::CreateAsset(const FString& AssetName, const FString& PackagePath, UClass* AssetClass, Calvorn::FToolResult& Result, UFactory* Factory)
{
	const FString Name = AssetName.TrimStartAndEnd();
	FString Folder = PackagePath.TrimStartAndEnd();
	Folder.ReplaceInline(TEXT("\\"), TEXT("/"), ESearchCase::CaseSensitive);
	FPaths::RemoveDuplicateSlashes(Folder);
	while (Folder.Len() > 1 && Folder.EndsWith(TEXT("/"), ESearchCase::CaseSensitive))
	{
		Folder.LeftChopInline(1);
	}

	FText Reason;
	if (Name.IsEmpty() || !FName::IsValidXName(Name, INVALID_OBJECTNAME_CHARACTERS, &Reason))
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Cannot create asset '%s': %s"), *Name,
			Name.IsEmpty() ? TEXT("the asset name is empty") : *Reason.ToString()));
		return nullptr;
	}
	if (!AssetClass)
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Cannot create asset '%s': no asset class was given"), *Name));
		return nullptr;
	}
	if (AssetClass->HasAnyClassFlags(CLASS_Abstract | CLASS_Deprecated | CLASS_NewerVersionExists))
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Cannot create asset '%s': class '%s' is abstract or deprecated and cannot have instances"), *Name, *AssetClass->GetName()));
		return nullptr;
	}

	const FString PackageName = Folder + TEXT("/") + Name;
	if (!FPackageName::IsValidLongPackageName(PackageName, /*bIncludeReadOnlyRoots*/ false, &Reason))
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Cannot create asset '%s' in '%s': %s"), *Name, *PackagePath, *Reason.ToString()));
		return nullptr;
	}
	FString ExistingFile;
	if (FPackageName::DoesPackageExist(PackageName, &ExistingFile))
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Cannot create asset '%s': a package already exists at %s (%s)"), *Name, *PackageName, *ExistingFile));
		return nullptr;
	}
	UPackage* ExistingPackage = FindObject<UPackage>(nullptr, *PackageName);
	if (ExistingPackage && StaticFindObjectFast(nullptr, ExistingPackage, FName(*Name)))
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Cannot create asset '%s': an object of that name already exists in %s"), *Name, *PackageName));
		return nullptr;
	}

	UPackage* Package = ExistingPackage ? ExistingPackage : CreatePackage(*PackageName);
	if (!Package)
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Cannot create asset '%s': package %s could not be created"), *Name, *PackageName));
		return nullptr;
	}

	constexpr EObjectFlags AssetFlags = RF_Public | RF_Standalone | RF_Transactional;
	UObject* NewAsset = nullptr;
	if (Factory)
	{
#if CALVORN_WITH_ASSET_FACTORIES
		NewAsset = Factory->FactoryCreateNew(AssetClass, Package, FName(*Name), AssetFlags, nullptr, nullptr);
		if (!NewAsset)
		{
			Result.AddErrorMessage(FString::Printf(TEXT("Failed to create asset '%s' of class '%s': the factory %s made nothing"), *Name, *AssetClass->GetName(), *Factory->GetName()));
		}
#else
		Result.AddErrorMessage(FString::Printf(TEXT("Cannot create asset '%s' through a factory: this build has no asset factories"), *Name));
#endif
	}
	else
	{
		NewAsset = NewObject<UObject>(Package, AssetClass, FName(*Name), AssetFlags);
		if (!NewAsset)
		{
			Result.AddErrorMessage(FString::Printf(TEXT("Failed to create asset '%s' of class '%s'"), *Name, *AssetClass->GetName()));
		}
	}

	if (!NewAsset)
	{
		// Nothing is left behind: a package made for the asset goes with it.
		if (!ExistingPackage)
		{
			DiscardPackage(Package);
		}
		return nullptr;
	}

	FAssetRegistryModule::AssetCreated(NewAsset);
	NewAsset->MarkPackageDirty();
	return NewAsset;
}

bool FAssetOperationBase::SaveAsset(UObject* Asset, Calvorn::FToolResult& Result)
{
	if (!Asset)
	{
		Result.AddErrorMessage(TEXT("Cannot save: no asset was given"));
		return false;
	}
	UPackage* Package = Asset->GetOutermost();
	if (!Package || Package->IsScriptPackage() || Package == GetTransientPackage())
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Cannot save '%s': it does not belong to an asset package"), *Asset->GetPathName()));
		return false;
	}

	const FString PackageName = Package->GetName();
	FString Filename;
	if (!FPackageName::DoesPackageExist(PackageName, &Filename))
	{
		FText Reason;
		if (!FPackageName::TryConvertLongPackageNameToFilename(PackageName, Filename, FPackageName::GetAssetPackageExtension(), Reason))
		{
			Result.AddErrorMessage(FString::Printf(TEXT("Cannot save '%s': %s"), *PackageName, *Reason.ToString()));
			return false;
		}
	}

	FSavePackageArgs SaveArgs;
	SaveArgs.TopLevelFlags = RF_Public | RF_Standalone;
	SaveArgs.SaveFlags = SAVE_NoError;
	const FSavePackageResultStruct Saved = UPackage::Save(Package, Asset, *Filename, SaveArgs);
	if (!Saved.IsSuccessful())
	{
		const FString& Why = UE::Headless::GetLastPackageError();
		Result.AddErrorMessage(FString::Printf(TEXT("Failed to save asset '%s' to %s%s%s"), *PackageName, *Filename,
			Why.IsEmpty() ? TEXT("") : TEXT(": "), *Why));
		return false;
	}
	return true;
}

void FAssetOperationBase::ExecuteDeleteOperation(const FJsonObject& Json, Calvorn::FToolResult& Result, const FString& AssetKindName)
{
	FString RequestedPath;
	if (!Json.TryGetStringField(TEXT("path"), RequestedPath) || RequestedPath.TrimStartAndEnd().IsEmpty())
	{
		Result.AddErrorMessage(TEXT("Missing required field 'path'"));
		return;
	}

	const FString ObjectPath = NormalizeAssetPath(RequestedPath);
	const FString PackageName = GetPackageNameFromPath(ObjectPath);
	FText Reason;
	if (!FPackageName::IsValidLongPackageName(PackageName, /*bIncludeReadOnlyRoots*/ false, &Reason))
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Invalid %s path '%s': %s"), *AssetKindName, *RequestedPath, *Reason.ToString()));
		return;
	}

	IAssetRegistry& Registry = IAssetRegistry::GetChecked();
	FString Filename;
	const bool bHasFile = FPackageName::DoesPackageExist(PackageName, &Filename);
	UObject* LoadedAsset = StaticFindObject(UObject::StaticClass(), nullptr, *ObjectPath);
	if (LoadedAsset && LoadedAsset->IsA<UPackage>())
	{
		LoadedAsset = nullptr;
	}
	if (!bHasFile && !LoadedAsset)
	{
		Result.AddErrorMessage(FString::Printf(TEXT("%s not found: %s"), *AssetKindName, *ObjectPath));
		return;
	}

	TArray<FName> Referencers;
	Registry.GetReferencers(FName(*PackageName), Referencers);
	Referencers.RemoveAll([&PackageName](const FName& Referencer) { return Referencer.ToString() == PackageName; });
	if (Referencers.Num() > 0)
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Cannot delete %s '%s': it is referenced by %d other asset(s): %s. Remove those references first."),
			*AssetKindName, *ObjectPath, Referencers.Num(), *JoinNames(Referencers)));
		return;
	}

	if (bHasFile)
	{
		FString CheckOutError;
		if (!CheckOutAssetForModify(ObjectPath, CheckOutError))
		{
			Result.AddErrorMessage(FString::Printf(TEXT("Cannot delete %s '%s': %s"), *AssetKindName, *ObjectPath, *CheckOutError));
			return;
		}
		if (!IFileManager::Get().Delete(*Filename, /*RequireExists*/ true, /*EvenReadOnly*/ false, /*Quiet*/ true) || FPaths::FileExists(Filename))
		{
			Result.AddErrorMessage(FString::Printf(TEXT("Cannot delete %s '%s': its file %s could not be deleted"), *AssetKindName, *ObjectPath, *Filename));
			return;
		}
	}

	// The registry forgets the asset: told directly about a loaded one, by a rescan of the missing file otherwise.
	if (LoadedAsset)
	{
		Registry.AssetDeleted(LoadedAsset);
	}
	else
	{
		Registry.ScanFilesSynchronous({PackageName}, /*bForceRescan*/ true);
	}
	DiscardPackage(FindObject<UPackage>(nullptr, *PackageName));

	Result.SetData(TEXT("deleted_path"), ObjectPath);
	Result.AddSuccessMessage(FString::Printf(TEXT("Successfully deleted %s: %s"), *AssetKindName, *ObjectPath));
}

FString FAssetOperationBase::SerializeJson(const TSharedPtr<FJsonObject>& JsonObject, bool bPrettyPrint)
{
	if (!JsonObject.IsValid())
	{
		return TEXT("{}");
	}
	FString Text;
	if (bPrettyPrint)
	{
		FJsonSerializer::Serialize(JsonObject.ToSharedRef(), TJsonWriterFactory<TCHAR, TPrettyJsonPrintPolicy<TCHAR>>::Create(&Text));
	}
	else
	{
		FJsonSerializer::Serialize(JsonObject.ToSharedRef(), TJsonWriterFactory<TCHAR, TCondensedJsonPrintPolicy<TCHAR>>::Create(&Text));
	}
	return Text;
}
