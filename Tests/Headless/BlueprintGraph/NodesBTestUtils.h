#pragma once

// Shared by the NodesB suites: a Blueprint in a project package with an event graph under the K2 schema, nodes
// placed the way the editor places them, pins described in one line, and a save/load round trip.

#include <gtest/gtest.h>

#include <string>

#include "CoreMinimal.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "GameFramework/Actor.h"
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

namespace NodesBTest
{
	inline std::string Str(const FString& Text) { return FStringToUTF8(Text); }
	inline std::string Str(const FText& Text) { return FStringToUTF8(Text.ToString()); }
	inline std::string Str(FName Name) { return FStringToUTF8(Name.ToString()); }

	inline UClass* EngineClass(const TCHAR* Name)
	{
		FModuleManager::Get().LoadModuleChecked(TEXT("Catalogue"));
		return FindObject<UClass>(nullptr, *FString::Printf(TEXT("/Script/Engine.%s"), Name));
	}

	inline UFunction* LibraryFunction(const TCHAR* Library, const TCHAR* Function)
	{
		UClass* Class = EngineClass(Library);
		return Class ? Class->FindFunctionByName(FName(Function)) : nullptr;
	}

	/** "name:direction:category[/subcategory]" per pin, in order; hidden pins end with " (hidden)". */
	inline std::string DescribePins(const UEdGraphNode* Node)
	{
		std::string Result;
		for (const UEdGraphPin* Pin : Node->Pins)
		{
			if (!Result.empty())
			{
				Result += ", ";
			}
			Result += Str(Pin->PinName) + (Pin->Direction == EGPD_Input ? ":in:" : ":out:") + Str(Pin->PinType.PinCategory);
			if (!Pin->PinType.PinSubCategory.IsNone())
			{
				Result += "/" + Str(Pin->PinType.PinSubCategory);
			}
			if (Pin->PinType.IsArray())
			{
				Result += "[]";
			}
			if (Pin->bHidden)
			{
				Result += " (hidden)";
			}
		}
		return Result;
	}

	inline std::string Messages(const FCompilerResultsLog& Log)
	{
		std::string Result;
		for (const TSharedRef<FTokenizedMessage>& Message : Log.Messages)
		{
			Result += Str(Message->ToText()) + "\n";
		}
		return Result;
	}

	class FNodesBFixture : public ::testing::Test
	{
	protected:
		FNodesBFixture()
			: Project(TEXT("NodesB"))
		{
			Project.Open();
			FModuleManager::Get().LoadModuleChecked(TEXT("Catalogue"));
			FPlatformMisc::SeedGuidGenerator(11);
			MakeBlueprint();
		}

		~FNodesBFixture() override
		{
			if (UPackage* Package = FindObject<UPackage>(nullptr, *PackageName))
			{
				Unload(Package);
			}
		}

		void MakeBlueprint()
		{
			UPackage* Package = CreatePackage(*PackageName);
			Blueprint = NewObject<UBlueprint>(Package, TEXT("BP_NodesB"), RF_Public | RF_Standalone | RF_Transactional);
			Blueprint->ParentClass = AActor::StaticClass();
			Graph = NewObject<UEdGraph>(Blueprint, TEXT("EventGraph"), RF_Transactional);
			Graph->Schema = UEdGraphSchema_K2::StaticClass();
			Blueprint->UbergraphPages.Add(Graph);
			Schema = GetDefault<UEdGraphSchema_K2>();
		}

		/** A node of class T placed as the editor places one: created, set up, given a guid, placed, then its pins. */
		template <typename T, typename SetupType>
		T* Place(SetupType&& Setup, int32 X = 0, int32 Y = 0)
		{
			T* Node = static_cast<T*>(Graph->CreateNode(T::StaticClass(), false, false));
			Node->NodePosX = X;
			Node->NodePosY = Y;
			Setup(*Node);
			Node->CreateNewGuid();
			Node->PostPlacedNewNode();
			if (Node->Pins.Num() == 0)
			{
				Node->AllocateDefaultPins();
			}
			return Node;
		}

		template <typename T>
		T* Place(int32 X = 0, int32 Y = 0)
		{
			return Place<T>([](T&) {}, X, Y);
		}

		/** Connects as the editor's drag does: the schema links, then both nodes hear that their links changed. */
		bool Connect(UEdGraphPin* A, UEdGraphPin* B)
		{
			const bool bConnected = Schema->TryCreateConnection(A, B);
			if (bConnected)
			{
				A->GetOwningNode()->NodeConnectionListChanged();
				B->GetOwningNode()->NodeConnectionListChanged();
			}
			return bConnected;
		}

		FString PackageFile() const { return FPackageName::LongPackageNameToFilename(PackageName, TEXT(".uasset")); }

		/** Saves, unloads and loads the Blueprint's package again; the loaded event graph replaces Graph. */
		bool SaveAndReload(FString* OutBytes = nullptr)
		{
			const bool bSaved = UPackage::Save(Blueprint->GetPackage(), Blueprint, *PackageFile(), FSavePackageArgs()).IsSuccessful();
			EXPECT_TRUE(bSaved) << FStringToUTF8(UE::Headless::GetLastPackageError());
			if (!bSaved)
			{
				return false;
			}
			if (OutBytes)
			{
				FFileHelper::LoadFileToString(*OutBytes, *PackageFile());
			}
			Unload(Blueprint->GetPackage());
			UPackage* Package = LoadPackage(nullptr, *PackageName, LOAD_None);
			EXPECT_NE(Package, nullptr) << FStringToUTF8(UE::Headless::GetLastPackageError());
			Blueprint = Package ? FindObject<UBlueprint>(Package, TEXT("BP_NodesB")) : nullptr;
			Graph = (Blueprint && Blueprint->UbergraphPages.Num() > 0) ? Blueprint->UbergraphPages[0].Get() : nullptr;
			return Graph != nullptr;
		}

		FString SaveBytes()
		{
			EXPECT_TRUE(UPackage::Save(Blueprint->GetPackage(), Blueprint, *PackageFile(), FSavePackageArgs()).IsSuccessful()) << FStringToUTF8(UE::Headless::GetLastPackageError());
			FString Bytes;
			FFileHelper::LoadFileToString(Bytes, *PackageFile());
			return Bytes;
		}

		template <typename T>
		T* FindNode(int32 Index = 0) const
		{
			TArray<T*> Found;
			Graph->GetNodesOfClass<T>(Found);
			return Found.IsValidIndex(Index) ? Found[Index] : nullptr;
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
		FString PackageName = TEXT("/Game/NodesB/BP_NodesB");
		UBlueprint* Blueprint = nullptr;
		UEdGraph* Graph = nullptr;
		const UEdGraphSchema_K2* Schema = nullptr;
	};
}
