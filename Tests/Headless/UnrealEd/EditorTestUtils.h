#pragma once

// Shared by the editor, compiler and widget suites: a project to save into, Blueprints made as the
// editor makes them, and readable forms of what the tools report.

#include <gtest/gtest.h>

#include <string>

#include "CoreMinimal.h"
#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "HAL/PlatformMisc.h"
#include "Headless/Core/StringTestUtils.h"
#include "Headless/Projects/TempProjectFolder.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Kismet2/CompilerResultsLog.h"
#include "Kismet2/KismetEditorUtilities.h"
#include "Misc/FileHelper.h"
#include "Misc/PackageName.h"
#include "Modules/ModuleManager.h"
#include "UObject/Package.h"
#include "UObject/SavePackage.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"

namespace EditorTest
{
	using ::U8;
	inline std::string U8(const FText& Text) { return ::U8(Text.ToString()); }
	inline std::string U8(FName Name) { return ::U8(Name.ToString()); }

	inline UClass* FindClass(const TCHAR* Path)
	{
		FModuleManager::Get().LoadModuleChecked(TEXT("Catalogue"));
		return FindObject<UClass>(nullptr, Path);
	}

	/** The messages of a log, one per line, as a user reads them. */
	inline std::string Messages(const FCompilerResultsLog& Log)
	{
		std::string Result;
		for (const TSharedRef<FTokenizedMessage>& Message : Log.Messages)
		{
			Result += U8(Message->ToText()) + "\n";
		}
		return Result;
	}

	inline FEdGraphPinType PinType(FName Category, UObject* SubCategoryObject = nullptr, FName SubCategory = NAME_None, EPinContainerType Container = EPinContainerType::None)
	{
		FEdGraphPinType Type;
		Type.PinCategory = Category;
		Type.PinSubCategory = SubCategory;
		Type.PinSubCategoryObject = SubCategoryObject;
		Type.ContainerType = Container;
		return Type;
	}

	class FEditorFixture : public ::testing::Test
	{
	protected:
		explicit FEditorFixture(const TCHAR* InProjectName = TEXT("EditorTests"))
			: Project(InProjectName)
		{
			Project.Open();
			FModuleManager::Get().LoadModuleChecked(TEXT("Catalogue"));
			FPlatformMisc::SeedGuidGenerator(11);
			FKismetEditorUtilities::ClearRecordedFocusRequests();
		}

		~FEditorFixture() override
		{
			for (const FString& Name : PackageNames)
			{
				if (UPackage* Package = FindObject<UPackage>(nullptr, *Name))
				{
					Unload(Package);
				}
			}
		}

		/** A Blueprint made by the editor's own creation path, in a package of its own. */
		UBlueprint* Create(UClass* ParentClass, const TCHAR* Name, EBlueprintType Type = BPTYPE_Normal, TSubclassOf<UBlueprint> Kind = nullptr)
		{
			const FString PackageName = FString::Printf(TEXT("/Game/Editor/%s"), Name);
			PackageNames.AddUnique(PackageName);
			UPackage* Package = CreatePackage(*PackageName);
			return FKismetEditorUtilities::CreateBlueprint(ParentClass, Package, FName(Name), Type, Kind ? Kind : TSubclassOf<UBlueprint>(UBlueprint::StaticClass()),
				UBlueprintGeneratedClass::StaticClass());
		}

		UEdGraph* AddFunction(UBlueprint* Blueprint, const TCHAR* Name)
		{
			UEdGraph* Graph = FBlueprintEditorUtils::CreateNewGraph(Blueprint, FName(Name), UEdGraph::StaticClass(), UEdGraphSchema_K2::StaticClass());
			FBlueprintEditorUtils::AddFunctionGraph<UClass>(Blueprint, Graph, true, nullptr);
			return Graph;
		}

		static FString FileOf(const UBlueprint* Blueprint)
		{
			return FPackageName::LongPackageNameToFilename(Blueprint->GetPackage()->GetName(), TEXT(".uasset"));
		}

		/** Saves the Blueprint's package, unloads it and loads it again. */
		static UBlueprint* SaveAndReload(UBlueprint* Blueprint, FString* OutBytes = nullptr)
		{
			const FString Name = Blueprint->GetName();
			const FString PackageName = Blueprint->GetPackage()->GetName();
			const FString File = FileOf(Blueprint);
			const bool bSaved = UPackage::Save(Blueprint->GetPackage(), Blueprint, *File, FSavePackageArgs()).IsSuccessful();
			EXPECT_TRUE(bSaved) << U8(UE::Headless::GetLastPackageError());
			if (!bSaved)
			{
				return nullptr;
			}
			if (OutBytes)
			{
				FFileHelper::LoadFileToString(*OutBytes, *File);
			}
			Unload(Blueprint->GetPackage());
			UPackage* Package = LoadPackage(nullptr, *PackageName, LOAD_None);
			EXPECT_NE(Package, nullptr) << U8(UE::Headless::GetLastPackageError());
			return Package ? FindObject<UBlueprint>(Package, *Name) : nullptr;
		}

		static void Unload(UPackage* Package)
		{
			TArray<UObject*> Inner;
			GetObjectsWithOuter(Package, Inner, true);
			for (UObject* Object : Inner)
			{
				Object->ClearFlags(RF_Standalone);
				Object->MarkAsGarbage();
			}
			Package->MarkAsGarbage();
			CollectGarbage(RF_NoFlags);
		}

		FTempProjectFolder Project;
		TArray<FString> PackageNames;
	};
}
