#include "BlueprintUtils.h"

#include "Animation/AnimBlueprint.h"
#include "AssetOperationBase.h"
#include "AssetRegistry/AssetRegistryModule.h"
#include "AssetRegistry/IAssetRegistry.h"
#include "Engine/Blueprint.h"
#include "Engine/SCS_Node.h"
#include "Engine/SimpleConstructionScript.h"
#include "Misc/PackageName.h"
#include "Kismet2/Kismet2NameValidators.h"
#include "Modules/ModuleManager.h"
#include "SafeAssetLoader.h"
#include "Templates/Casts.h"
#include "ToolResult.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/SavePackage.h"
#include "UObject/UObjectGlobals.h"

#if __has_include("WidgetBlueprint.h")
#include "WidgetBlueprint.h"
#define CALVORN_WITH_WIDGET_BLUEPRINTS 1
#else
#define CALVORN_WITH_WIDGET_BLUEPRINTS 0
#endif

namespace
{
	/**
	 * The asset of exactly this Blueprint kind (or a subclass) that a path names, loaded. The registry is
	 * asked rather than the object system so that assets on disk are found whether or not they are loaded.
	 */
	template <typename BlueprintType>
	BlueprintType* FindBlueprintOfKind(const FString& RequestedPath, const FString& ObjectPath, const FString& AssetName, FString& OutUnloadable)
	{
		IAssetRegistry& Registry = FModuleManager::LoadModuleChecked<FAssetRegistryModule>(TEXT("AssetRegistry")).Get();
		TArray<FAssetData> Assets;
		Registry.GetAssetsByClass(BlueprintType::StaticClass()->GetStructPathName(), Assets, /*bSearchSubClasses*/ true);
		const FAssetData* ByName = nullptr;
		for (const FAssetData& Asset : Assets)
		{
			const FString AssetObjectPath = Asset.GetObjectPathString();
			if (AssetObjectPath.Equals(ObjectPath, ESearchCase::IgnoreCase) || AssetObjectPath.Equals(RequestedPath, ESearchCase::IgnoreCase))
			{
				ByName = &Asset;
				break;
			}
			// A bare name matches the first asset of that name; the registry's answer is sorted by path.
			if (!ByName && !RequestedPath.Contains(TEXT("/")) && Asset.AssetName.ToString().Equals(AssetName, ESearchCase::IgnoreCase))
			{
				ByName = &Asset;
			}
		}
		if (!ByName)
		{
			return nullptr;
		}
		BlueprintType* Loaded = Cast<BlueprintType>(ByName->GetAsset());
		if (!Loaded)
		{
			OutUnloadable = ByName->GetObjectPathString();
		}
		return Loaded;
	}

	UBlueprint* FindBlueprint(const FString& Path, FString& OutUnloadable)
	{
		const FString Requested = Path.TrimStartAndEnd();
		if (Requested.IsEmpty())
		{
			return nullptr;
		}
		const FString ObjectPath = FAssetOperationBase::NormalizeAssetPath(Requested);
		const FString AssetName = FAssetOperationBase::GetAssetNameFromPath(ObjectPath);
		// The most specific kind first: a Widget or Animation Blueprint is also a Blueprint.
		if (UBlueprint* Found = FindBlueprintOfKind<UAnimBlueprint>(Requested, ObjectPath, AssetName, OutUnloadable))
		{
			return Found;
		}
#if CALVORN_WITH_WIDGET_BLUEPRINTS
		if (UBlueprint* Found = FindBlueprintOfKind<UWidgetBlueprint>(Requested, ObjectPath, AssetName, OutUnloadable))
		{
			return Found;
		}
#endif
		if (UBlueprint* Found = FindBlueprintOfKind<UBlueprint>(Requested, ObjectPath, AssetName, OutUnloadable))
		{
			return Found;
		}
		// A Blueprint made in memory that nobody announced to the registry is still the asset the path names.
		return FindObject<UBlueprint>(nullptr, *ObjectPath);
	}

	const TCHAR* BlueprintTypeName(EBlueprintType Type)
	{
		switch (Type)
		{
		case BPTYPE_Normal:
			return TEXT("Normal");
		case BPTYPE_Const:
			return TEXT("Const");
		case BPTYPE_MacroLibrary:
			return TEXT("MacroLibrary");
		case BPTYPE_Interface:
			return TEXT("Interface");
		case BPTYPE_LevelScript:
			return TEXT("LevelScript");
		case BPTYPE_FunctionLibrary:
			return TEXT("FunctionLibrary");
		default:
			return TEXT("Unknown");
		}
	}
}

UBlueprint* FBlueprintUtils::LoadBlueprint(const FString& Path, Calvorn::FToolResult& Result)
{
	FString Unloadable;
	UBlueprint* Blueprint = FindBlueprint(Path, Unloadable);
	if (!Blueprint)
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Failed to find or load blueprint: %s"), *Path));
		if (!Unloadable.IsEmpty())
		{
			Result.AddWarningMessage(FString::Printf(TEXT("[Warning] The asset registry lists %s, but its file could not be loaded; it may be damaged or written by another version"), *Unloadable));
		}
	}
	return Blueprint;
}

bool FBlueprintUtils::BlueprintExists(const FString& Path)
{
	FString Unloadable;
	return FindBlueprint(Path, Unloadable) != nullptr;
}

FString FBlueprintUtils::GetBlueprintName(const FString& Path)
{
	return FAssetOperationBase::GetAssetNameFromPath(Path);
}

UPackage* FBlueprintUtils::GetBlueprintPackage(UBlueprint* Blueprint)
{
	return Blueprint ? Blueprint->GetOutermost() : nullptr;
}

void FBlueprintUtils::MarkBlueprintDirty(UBlueprint* Blueprint)
{
	if (Blueprint)
	{
		Blueprint->MarkPackageDirty();
	}
}

bool FBlueprintUtils::SaveBlueprint(UBlueprint* Blueprint)
{
	UPackage* Package = GetBlueprintPackage(Blueprint);
	if (!Package || Package == GetTransientPackage())
	{
		return false;
	}
	// The file the package came from, whatever the case it is spelled in on disk; a new package's own name otherwise.
	FString Filename;
	FText Reason;
	if (!FPackageName::DoesPackageExist(Package->GetName(), &Filename)
		&& !FPackageName::TryConvertLongPackageNameToFilename(Package->GetName(), Filename, FPackageName::GetAssetPackageExtension(), Reason))
	{
		return false;
	}
	FSavePackageArgs SaveArgs;
	SaveArgs.TopLevelFlags = RF_Public | RF_Standalone;
	SaveArgs.SaveFlags = SAVE_NoError;
	return UPackage::Save(Package, Blueprint, *Filename, SaveArgs).IsSuccessful();
}

FString FBlueprintUtils::GetBlueprintDescription(UBlueprint* Blueprint)
{
	if (!Blueprint)
	{
		return FString();
	}
	const UClass* Parent = Blueprint->ParentClass.Get();
	return FString::Printf(TEXT("Blueprint: %s\nPath: %s\nParent Class: %s\nBlueprint Type: %s"), *Blueprint->GetName(), *Blueprint->GetPathName(),
		Parent ? *Parent->GetName() : TEXT("None"), BlueprintTypeName(Blueprint->BlueprintType));
}

bool FBlueprintUtils::VerifyBlueprintVariableName(UBlueprint* Blueprint, const FString& Name, Calvorn::FToolResult& Result)
{
	if (!Blueprint)
	{
		Result.AddWarningMessage(TEXT("Invalid Blueprint provided"));
		return false;
	}
	if (Name.IsEmpty())
	{
		Result.AddWarningMessage(TEXT("Variable name cannot be empty"));
		return false;
	}
	const FName VariableName(*Name);
	for (const FBPVariableDescription& Variable : Blueprint->NewVariables)
	{
		if (Variable.VarName == VariableName)
		{
			Result.AddWarningMessage(FString::Printf(TEXT("A variable with name '%s' already exists"), *Name));
			return false;
		}
	}
	if (const UClass* Generated = Blueprint->GeneratedClass.Get(); Generated && Generated->FindFunctionByName(VariableName))
	{
		Result.AddWarningMessage(FString::Printf(TEXT("A function with name '%s' already exists"), *Name));
		return false;
	}
	for (const USCS_Node* Node : GetBlueprintComponentsFromSCS(Blueprint))
	{
		if (Node->GetVariableName() == VariableName)
		{
			Result.AddWarningMessage(FString::Printf(TEXT("A component with name '%s' already exists"), *Name));
			return false;
		}
	}
	if (const UClass* Parent = Blueprint->ParentClass.Get(); Parent && Parent->FindPropertyByName(VariableName))
	{
		Result.AddWarningMessage(FString::Printf(TEXT("A property with name '%s' already exists in the parent class"), *Name));
		return false;
	}
	FKismetNameValidator Validator(Blueprint);
	const EValidatorResult Verdict = Validator.IsValid(Name);
	if (Verdict != EValidatorResult::Ok)
	{
		Result.AddWarningMessage(INameValidatorInterface::GetErrorText(Name, Verdict).ToString());
		return false;
	}
	return true;
}

TArray<USCS_Node*> FBlueprintUtils::GetBlueprintComponentsFromSCS(UBlueprint* Blueprint)
{
	TArray<USCS_Node*> Nodes;
	if (!Blueprint || !Blueprint->SimpleConstructionScript)
	{
		return Nodes;
	}
	TFunction<void(USCS_Node*)> Visit = [&Nodes, &Visit](USCS_Node* Node)
	{
		if (!Node || Nodes.Contains(Node))
		{
			return;
		}
		Nodes.Add(Node);
		for (USCS_Node* Child : Node->GetChildNodes())
		{
			Visit(Child);
		}
	};
	for (USCS_Node* Root : Blueprint->SimpleConstructionScript->GetRootNodes())
	{
		Visit(Root);
	}
	return Nodes;
}

bool FBlueprintUtils::CheckOutBlueprint(const FString& Path, Calvorn::FToolResult& Result)
{
	FString Reason;
	if (FAssetOperationBase::CheckOutAssetForModify(Path, Reason))
	{
		return true;
	}
	Result.AddErrorMessage(FString::Printf(TEXT("Failed to check out blueprint for modification: %s\n%s"), *Path, *Reason));
	return false;
}

void FBlueprintUtils::AddBlueprintToSourceControl(const FString& Path, Calvorn::FToolResult& Result)
{
	FString Reason;
	if (!FAssetOperationBase::AddAssetToSourceControl(Path, Reason))
	{
		Result.AddWarningMessage(FString::Printf(TEXT("Blueprint modified successfully, but could not add to source control:\n%s\nPlease manually add the asset in your source control"), *Reason));
	}
}

UObject* FBlueprintUtils::LoadObjectSafely(const FString& ObjectPath, Calvorn::FToolResult& Result)
{
	if (ObjectPath.IsEmpty())
	{
		Result.AddWarningMessage(TEXT("Empty object path provided"));
		return nullptr;
	}
	if (!FSafeAssetLoader::IsValidAssetPath(ObjectPath))
	{
		Result.AddWarningMessage(FString::Printf(TEXT("Invalid asset path format: %s"), *ObjectPath));
		return nullptr;
	}
	int32 DotIndex = INDEX_NONE;
	const FString PackagePart = ObjectPath.FindChar(TCHAR('.'), DotIndex) ? ObjectPath.Left(DotIndex) : ObjectPath;
	if (!FSafeAssetLoader::AssetExistsInRegistry(PackagePart))
	{
		Result.AddWarningMessage(FString::Printf(TEXT("Asset not found in registry: %s"), *ObjectPath));
		return nullptr;
	}
	UObject* Object = StaticFindObject(UObject::StaticClass(), nullptr, *ObjectPath);
	if (!Object || Object->IsA<UPackage>())
	{
		Object = StaticLoadObject(UObject::StaticClass(), nullptr, *ObjectPath);
	}
	if (!Object)
	{
		Result.AddWarningMessage(FString::Printf(TEXT("Failed to load or find object: %s"), *ObjectPath));
	}
	return Object;
}
