#include "BlueprintUtils.h"

#include "Animation/AnimBlueprint.h"
#include "Animation/AnimInstance.h"
#include "AssetOperationBase.h"
#include "AssetRegistry/AssetRegistryModule.h"
#include "Dom/JsonObject.h"
#include "Engine/Blueprint.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "Kismet2/CompilerResultsLog.h"
#include "Kismet2/KismetEditorUtilities.h"
#include "Logging/TokenizedMessage.h"
#include "Misc/PackageName.h"
#include "Templates/Casts.h"
#include "ToolResult.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"

#if __has_include("WidgetBlueprint.h")
#include "WidgetBlueprint.h"
#define CALVORN_WITH_WIDGET_BLUEPRINTS 1
#else
#define CALVORN_WITH_WIDGET_BLUEPRINTS 0
#endif

namespace
{
	/**
	 * The Blueprint asset a "blueprint" parent names, loaded if need be. An object has one class, so the
	 * most specific kind (Animation, Widget, plain) is what comes back whichever way it is found.
	 */
	UBlueprint* FindParentBlueprint(const FString& ParentPath)
	{
		const FString ObjectPath = FAssetOperationBase::NormalizeAssetPath(ParentPath);
		UObject* Found = StaticFindObject(UObject::StaticClass(), nullptr, *ObjectPath);
		if (!Cast<UBlueprint>(Found) && FAssetOperationBase::AssetExists(ObjectPath))
		{
			Found = StaticLoadObject(UObject::StaticClass(), nullptr, *ObjectPath);
		}
		if (UBlueprint* Blueprint = Cast<UBlueprint>(Found))
		{
			return Blueprint;
		}
		// Names and other spellings go through the registry, as any Blueprint lookup does; the caller
		// reports the failure in its own words.
		Calvorn::FToolResult Unreported;
		return FBlueprintUtils::LoadBlueprint(ParentPath, Unreported);
	}

	/** A native class by any spelling a client uses: a class path, its name with or without prefix, a quoted reference. */
	UClass* FindNativeParent(const FString& ParentPath)
	{
		FString Text = ParentPath.TrimStartAndEnd();
		int32 Quote = INDEX_NONE;
		if (Text.EndsWith(TEXT("'")) && Text.FindChar(TCHAR('\''), Quote) && Quote < Text.Len() - 1)
		{
			Text = Text.Mid(Quote + 1, Text.Len() - Quote - 2);
		}
		if (Text.IsEmpty())
		{
			return nullptr;
		}
		if (UClass* Found = Cast<UClass>(StaticFindObject(UClass::StaticClass(), nullptr, *Text)))
		{
			return Found;
		}
		return FAssetOperationBase::GetAssetClassFromAssetName(Text);
	}

	/** Takes a Blueprint that could not be saved back out of memory and the registry, with its package. */
	void DiscardNewBlueprint(UBlueprint* Blueprint)
	{
		FAssetRegistryModule::AssetDeleted(Blueprint);
		UPackage* Package = Blueprint->GetOutermost();
		TArray<UObject*> Objects;
		GetObjectsWithOuter(Package, Objects, /*bIncludeNestedObjects*/ true);
		Objects.Add(Package);
		for (UObject* Object : Objects)
		{
			Object->ClearFlags(RF_Standalone | RF_Public);
			Object->MarkAsGarbage();
		}
	}

	/** Whether a folder component of the path steps outside its folder ("." or ".."), which no asset path may. */
	bool HasRelativeComponent(const FString& Path)
	{
		TArray<FString> Components;
		Path.Replace(TEXT("\\"), TEXT("/")).ParseIntoArray(Components, TEXT("/"), /*bCullEmpty*/ true);
		return Components.ContainsByPredicate([](const FString& Component) { return Component == TEXT(".") || Component == TEXT(".."); });
	}

	/** The Blueprint class of the asset a parent asks for; null leaves the choice to the editor. */
	UClass* GetBlueprintKindForParent(const UClass* ParentClass)
	{
		if (ParentClass->IsChildOf(UAnimInstance::StaticClass()))
		{
			return UAnimBlueprint::StaticClass();
		}
#if CALVORN_WITH_WIDGET_BLUEPRINTS
		if (const UClass* UserWidget = FindObject<UClass>(nullptr, TEXT("/Script/UMG.UserWidget")); UserWidget && ParentClass->IsChildOf(UserWidget))
		{
			return UWidgetBlueprint::StaticClass();
		}
#endif
		return nullptr;
	}
}

UBlueprint* FBlueprintUtils::CreateBlueprint(const FString& Path, TSharedPtr<FJsonObject> ParentClassJson, Calvorn::FToolResult& Result)
{
	FString ParentType;
	FString ParentPath;
	if (!ParentClassJson.IsValid() || !ParentClassJson->TryGetStringField(TEXT("type"), ParentType))
	{
		Result.AddErrorMessage(TEXT("Missing required Parent class field: type"));
		return nullptr;
	}
	if (!ParentClassJson->TryGetStringField(TEXT("parent_path"), ParentPath))
	{
		Result.AddErrorMessage(TEXT("Missing required Parent class field: name"));
		return nullptr;
	}

	UClass* ParentClass = nullptr;
	if (ParentType.TrimStartAndEnd().Equals(TEXT("blueprint"), ESearchCase::IgnoreCase))
	{
		UBlueprint* ParentBlueprint = FindParentBlueprint(ParentPath);
		if (!ParentBlueprint)
		{
			Result.AddErrorMessage(FString::Printf(TEXT("Failed to find or load blueprint: %s"), *ParentPath));
			return nullptr;
		}
		ParentClass = ParentBlueprint->GeneratedClass.Get();
	}
	else
	{
		ParentClass = FindNativeParent(ParentPath);
	}
	if (!ParentClass || !FKismetEditorUtilities::CanCreateBlueprintOfClass(ParentClass))
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Parent class '%s' is not valid for Blueprint creation."), *ParentPath));
		return nullptr;
	}

	// Where the asset goes: the package of the normalised path, named like the asset.
	const FString ObjectPath = FAssetOperationBase::NormalizeAssetPath(Path);
	const FString PackageName = FAssetOperationBase::GetPackageNameFromPath(ObjectPath);
	const FString AssetName = FAssetOperationBase::GetAssetNameFromPath(ObjectPath);
	FText Reason;
	if (HasRelativeComponent(Path))
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Invalid Blueprint path '%s': '.' and '..' are not allowed in asset paths"), *Path));
		return nullptr;
	}
	if (!FPackageName::IsValidLongPackageName(PackageName, /*bIncludeReadOnlyRoots*/ false, &Reason))
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Invalid Blueprint path '%s': %s"), *Path, *Reason.ToString()));
		return nullptr;
	}
	if (FPackageName::GetLongPackagePath(PackageName).IsEmpty() || PackageName.Len() - FPackageName::GetLongPackagePath(PackageName).Len() <= 1)
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Invalid Blueprint path '%s': give the asset's folder and name, such as /Game/Blueprints/BP_Door"), *Path));
		return nullptr;
	}
	if (!FName::IsValidXName(AssetName, INVALID_OBJECTNAME_CHARACTERS, &Reason))
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Invalid Blueprint name '%s': %s"), *AssetName, *Reason.ToString()));
		return nullptr;
	}
	if (FPackageName::DoesPackageExist(PackageName) || FAssetOperationBase::AssetExists(ObjectPath))
	{
		Result.AddErrorMessage(FString::Printf(TEXT("An asset already exists at %s; choose another path or delete it first"), *ObjectPath));
		return nullptr;
	}

	UPackage* ExistingPackage = FindObject<UPackage>(nullptr, *PackageName);
	UPackage* Package = ExistingPackage ? ExistingPackage : CreatePackage(*PackageName);
	UBlueprint* Blueprint = Package ? FKismetEditorUtilities::CreateBlueprint(ParentClass, Package, FName(*AssetName), BPTYPE_Normal,
		GetBlueprintKindForParent(ParentClass), nullptr, FName(TEXT("CalvornToolkit"))) : nullptr;
	if (!Blueprint)
	{
		if (Package && !ExistingPackage)
		{
			Package->ClearFlags(RF_Standalone | RF_Public);
			Package->MarkAsGarbage();
		}
		Result.AddErrorMessage(FString::Printf(TEXT("Failed to create Blueprint '%s' with parent class '%s'"), *ObjectPath, *ParentClass->GetName()));
		return nullptr;
	}

	FAssetRegistryModule::AssetCreated(Blueprint);
	Blueprint->MarkPackageDirty();
	if (!FAssetOperationBase::SaveAsset(Blueprint, Result))
	{
		// Nothing is left behind: an asset that is not on disk is not half made either.
		DiscardNewBlueprint(Blueprint);
		return nullptr;
	}
	AddBlueprintToSourceControl(ObjectPath, Result);
	return Blueprint;
}

bool FBlueprintUtils::CompileBlueprintWithResults(UBlueprint* Blueprint, bool bSkipGarbageCollection, TArray<FString>& OutErrors, TArray<FString>& OutWarnings)
{
	if (!Blueprint)
	{
		OutErrors.Add(TEXT("No Blueprint to compile"));
		return false;
	}
	FCompilerResultsLog Log;
	Log.bSilentMode = true;
	EBlueprintCompileOptions Options = EBlueprintCompileOptions::SkipSave;
	if (bSkipGarbageCollection)
	{
		Options |= EBlueprintCompileOptions::SkipGarbageCollection;
	}
	FKismetEditorUtilities::CompileBlueprint(Blueprint, Options, &Log);

	for (const TSharedRef<FTokenizedMessage>& Message : Log.Messages)
	{
		switch (Message->GetSeverity())
		{
		case EMessageSeverity::Error:
			OutErrors.Add(Message->ToText().ToString());
			break;
		case EMessageSeverity::Warning:
		case EMessageSeverity::PerformanceWarning:
			OutWarnings.Add(Message->ToText().ToString());
			break;
		default:
			break;
		}
	}
	return Log.NumErrors == 0 && Blueprint->Status != BS_Error;
}
