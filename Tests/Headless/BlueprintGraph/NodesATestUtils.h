#pragma once

// Shared by the NodesA suites: a Blueprint of a chosen parent class in a project package, with an event graph under
// the K2 schema, ways to place nodes the way the editor does, and a save/load round trip through the package files.

#include <gtest/gtest.h>

#include <string>

#include "CoreMinimal.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "HAL/PlatformMisc.h"
#include "Headless/Projects/TempProjectFolder.h"
#include "K2Node.h"
#include "Kismet2/CompilerResultsLog.h"
#include "Misc/FileHelper.h"
#include "Misc/PackageName.h"
#include "Modules/ModuleManager.h"
#include "UObject/Package.h"
#include "UObject/SavePackage.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"

namespace NodesATest
{
	inline std::string U8(const FText& Text) { return U8(Text.ToString()); }
	inline std::string U8(FName Name) { return U8(Name.ToString()); }

	inline UClass* FindClass(const TCHAR* Path)
	{
		FModuleManager::Get().LoadModuleChecked(TEXT("Catalogue"));
		return FindObject<UClass>(nullptr, Path);
	}

	inline UFunction* FindFunction(const TCHAR* ClassPath, const TCHAR* Name)
	{
		UClass* Class = FindClass(ClassPath);
		return Class ? Class->FindFunctionByName(FName(Name)) : nullptr;
	}

	/** "name:direction:category[/subcategory]" for each pin, in order; hidden pins end with " (hidden)". */
	inline std::string DescribePins(const UEdGraphNode* Node)
	{
		std::string Result;
		for (const UEdGraphPin* Pin : Node->Pins)
		{
			if (!Result.empty())
			{
				Result += ", ";
			}
			Result += U8(Pin->PinName) + (Pin->Direction == EGPD_Input ? ":in:" : ":out:") + U8(Pin->PinType.PinCategory);
			if (!Pin->PinType.PinSubCategory.IsNone())
			{
				Result += "/" + U8(Pin->PinType.PinSubCategory);
			}
			if (Pin->bHidden)
			{
				Result += " (hidden)";
			}
		}
		return Result;
	}

	/** The messages of a compiler log, one per line. */
	inline std::string Messages(const FCompilerResultsLog& Log)
	{
		std::string Result;
		for (const TSharedRef<FTokenizedMessage>& Message : Log.Messages)
		{
			Result += U8(Message->ToText()) + "\n";
		}
		return Result;
	}

	class FBlueprintFixture : public ::testing::Test
	{
	protected:
		FBlueprintFixture()
			: Project(TEXT("NodesA"))
		{
			Project.Open();
			FModuleManager::Get().LoadModuleChecked(TEXT("Catalogue"));
			FPlatformMisc::SeedGuidGenerator(7);
		}

		~FBlueprintFixture() override
		{
			if (UPackage* Package = FindObject<UPackage>(nullptr, *PackageName))
			{
				Unload(Package);
			}
		}

		/** A Blueprint of ParentClass with an event graph. */
		UBlueprint* MakeBlueprint(UClass* ParentClass, const TCHAR* Name = TEXT("BP_Test"))
		{
			PackageName = FString::Printf(TEXT("/Game/NodesA/%s"), Name);
			UPackage* Package = CreatePackage(*PackageName);
			Blueprint = NewObject<UBlueprint>(Package, Name, RF_Public | RF_Standalone | RF_Transactional);
			Blueprint->ParentClass = ParentClass;
			EventGraph = NewObject<UEdGraph>(Blueprint, TEXT("EventGraph"), RF_Transactional);
			EventGraph->Schema = UEdGraphSchema_K2::StaticClass();
			Blueprint->UbergraphPages.Add(EventGraph);
			return Blueprint;
		}

		UEdGraph* AddFunctionGraph(const TCHAR* Name)
		{
			UEdGraph* Graph = NewObject<UEdGraph>(Blueprint, Name, RF_Transactional);
			Graph->Schema = UEdGraphSchema_K2::StaticClass();
			Graph->GraphGuid = FGuid::NewGuid();
			Blueprint->FunctionGraphs.Add(Graph);
			return Graph;
		}

		/** A node of class T placed as the editor places one: guid, then Setup, then its pins. */
		template <typename T, typename SetupType>
		T* Place(UEdGraph* Graph, SetupType&& Setup)
		{
			T* Node = static_cast<T*>(Graph->CreateNode(T::StaticClass(), false, false));
			Node->CreateNewGuid();
			Setup(*Node);
			Node->PostPlacedNewNode();
			Node->AllocateDefaultPins();
			return Node;
		}

		FString PackageFile() const { return FPackageName::LongPackageNameToFilename(PackageName, TEXT(".uasset")); }

		/** Saves the Blueprint's package, unloads it and loads it again; returns the loaded Blueprint. */
		UBlueprint* SaveAndReload(FString* OutFirstBytes = nullptr)
		{
			const FString Name = Blueprint->GetName();
			const bool bSaved = UPackage::Save(Blueprint->GetPackage(), Blueprint, *PackageFile(), FSavePackageArgs()).IsSuccessful();
			EXPECT_TRUE(bSaved) << U8(UE::Headless::GetLastPackageError());
			if (!bSaved)
			{
				return nullptr;
			}
			if (OutFirstBytes)
			{
				FFileHelper::LoadFileToString(*OutFirstBytes, *PackageFile());
			}
			Unload(Blueprint->GetPackage());
			UPackage* Package = LoadPackage(nullptr, *PackageName, LOAD_None);
			EXPECT_NE(Package, nullptr) << U8(UE::Headless::GetLastPackageError());
			Blueprint = Package ? FindObject<UBlueprint>(Package, *Name) : nullptr;
			EventGraph = (Blueprint && Blueprint->UbergraphPages.Num() > 0) ? Blueprint->UbergraphPages[0].Get() : nullptr;
			return Blueprint;
		}

		FString SaveAgainBytes()
		{
			EXPECT_TRUE(UPackage::Save(Blueprint->GetPackage(), Blueprint, *PackageFile(), FSavePackageArgs()).IsSuccessful()) << U8(UE::Headless::GetLastPackageError());
			FString Bytes;
			FFileHelper::LoadFileToString(Bytes, *PackageFile());
			return Bytes;
		}

		static void Unload(UPackage* Package)
		{
			TArray<UObject*> Inner;
			GetObjectsWithOuter(Package, Inner, true);
			for (UObject* Object : Inner)
			{
				Object->MarkAsGarbage();
			}
			Package->MarkAsGarbage();
			CollectGarbage(RF_NoFlags);
		}

		FTempProjectFolder Project;
		FString PackageName = TEXT("/Game/NodesA/BP_Test");
		UBlueprint* Blueprint = nullptr;
		UEdGraph* EventGraph = nullptr;
	};
}
