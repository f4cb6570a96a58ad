#pragma once

// Shared by the PopulateMatch suites: a project with two content plug-ins and one code-only plug-in, Blueprints
// made through the headless editor and known to the asset registry, and readers of the telemetry a spawn leaves.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "AssetRegistry/AssetRegistryModule.h"
#include "AssetRegistry/IAssetRegistry.h"
#include "CoreMinimal.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "HAL/PlatformMisc.h"
#include "Headless/Core/StringTestUtils.h"
#include "Headless/Projects/TempProjectFolder.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Kismet2/KismetEditorUtilities.h"
#include "Modules/ModuleManager.h"
#include "Populate/GraphModificationRecords.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"
#include "ToolResult.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"

namespace PopulateMatchTests
{
	inline UClass* FindClass(const TCHAR* Path)
	{
		return FindObject<UClass>(nullptr, Path);
	}

	/** A node request as the parser would leave it. */
	inline FNodeModificationRecord MakeRecord(const TCHAR* Guid, const TCHAR* ClassName, const TCHAR* MenuTitle, const TCHAR* TargetClass = TEXT(""), const TCHAR* TargetFunction = TEXT(""))
	{
		FNodeModificationRecord Record;
		Record.RequestGuid = Guid;
		Record.ClassName = ClassName;
		Record.MenuTitle = MenuTitle;
		Record.OriginalMenuTitle = MenuTitle;
		Record.TargetClass = TargetClass;
		Record.TargetFunction = TargetFunction;
		return Record;
	}

	inline TSharedPtr<FJsonObject> Telemetry(const Calvorn::FToolResult& Result)
	{
		const TSharedPtr<FJsonObject>* Found = nullptr;
		return Result.GetDatas()->TryGetObjectField(TEXT("telemetry"), Found) ? *Found : nullptr;
	}

	inline std::string TelemetryString(const Calvorn::FToolResult& Result, const FString& Key)
	{
		const TSharedPtr<FJsonObject> Object = Telemetry(Result);
		FString Value;
		return Object.IsValid() && Object->TryGetStringField(Key, Value) ? U8(Value) : std::string("<absent>");
	}

	inline double TelemetryNumber(const Calvorn::FToolResult& Result, const FString& Key)
	{
		const TSharedPtr<FJsonObject> Object = Telemetry(Result);
		double Value = -1.0;
		return Object.IsValid() && Object->TryGetNumberField(Key, Value) ? Value : -1.0;
	}

	inline std::vector<std::string> ValidationFailures(const Calvorn::FToolResult& Result)
	{
		std::vector<std::string> Texts;
		const TSharedPtr<FJsonObject> Object = Telemetry(Result);
		const TArray<TSharedPtr<FJsonValue>>* Values = nullptr;
		if (Object.IsValid() && Object->TryGetArrayField(TEXT("validation_failures"), Values))
		{
			for (const TSharedPtr<FJsonValue>& Value : *Values)
			{
				Texts.push_back(U8(Value->AsString()));
			}
		}
		return Texts;
	}

	inline std::string Join(const std::vector<std::string>& Lines)
	{
		std::string Text;
		for (const std::string& Line : Lines)
		{
			Text += Line + "\n";
		}
		return Text;
	}

	/**
	 * A project with the content plug-ins MatchKit and MatchTools, the code-only plug-in MatchCode, the
	 * catalogue and the compiler loaded, and guids seeded.
	 */
	class FMatchFixture : public ::testing::Test
	{
	protected:
		FMatchFixture()
			: Project(TEXT("MatchGame"))
		{
			Project.AddPlugin(TEXT("MatchKit"), TEXT("MatchKit"), TEXT(R"({"FileVersion": 3, "CanContainContent": true})"));
			Project.AddPlugin(TEXT("MatchTools"), TEXT("MatchTools"), TEXT(R"({"FileVersion": 3, "CanContainContent": true})"));
			Project.AddPlugin(TEXT("MatchCode"), TEXT("MatchCode"), TEXT(R"({"FileVersion": 3, "CanContainContent": false})"));
			Project.Open();
			UE::Headless::ResetAssetRegistry();
			FModuleManager::Get().LoadModuleChecked(TEXT("Catalogue"));
			FModuleManager::Get().LoadModule(TEXT("KismetCompiler"));
			FPlatformMisc::SeedGuidGenerator(23);
		}

		~FMatchFixture() override
		{
			for (const FString& PackageName : PackageNames)
			{
				if (UPackage* Package = FindObject<UPackage>(nullptr, *PackageName))
				{
					TArray<UObject*> Inner;
					GetObjectsWithOuter(Package, Inner, true);
					for (UObject* Object : Inner)
					{
						Object->MarkAsGarbage();
					}
					Package->MarkAsGarbage();
				}
			}
			CollectGarbage(RF_NoFlags);
			UE::Headless::CloseProject();
			UE::Headless::ResetAssetRegistry();
		}

		/** A Blueprint made as the editor makes one, in the package PackageName, known to the registry. */
		UBlueprint* MakeBlueprint(UClass* ParentClass, const TCHAR* PackageName)
		{
			PackageNames.Add(PackageName);
			UPackage* Package = CreatePackage(PackageName);
			const FString Name = FString(PackageName).RightChop(FString(PackageName).Find(TEXT("/"), ESearchCase::CaseSensitive, ESearchDir::FromEnd) + 1);
			UBlueprint* Blueprint = FKismetEditorUtilities::CreateBlueprint(ParentClass, Package, FName(*Name), BPTYPE_Normal, UBlueprint::StaticClass(), UBlueprintGeneratedClass::StaticClass());
			EXPECT_NE(Blueprint, nullptr) << "cannot make " << U8(PackageName);
			if (Blueprint)
			{
				FAssetRegistryModule::AssetCreated(Blueprint);
			}
			return Blueprint;
		}

		UBlueprint* MakeActorBlueprint(const TCHAR* PackageName)
		{
			return MakeBlueprint(FindClass(TEXT("/Script/Engine.Actor")), PackageName);
		}

		static UEdGraph* EventGraphOf(UBlueprint* Blueprint)
		{
			return Blueprint && Blueprint->UbergraphPages.Num() > 0 ? Blueprint->UbergraphPages[0].Get() : nullptr;
		}

		static UEdGraph* AddFunction(UBlueprint* Blueprint, const TCHAR* Name)
		{
			UEdGraph* Graph = FBlueprintEditorUtils::CreateNewGraph(Blueprint, FName(Name), UEdGraph::StaticClass(), UEdGraphSchema_K2::StaticClass());
			FBlueprintEditorUtils::AddFunctionGraph<UClass>(Blueprint, Graph, true, nullptr);
			return Graph;
		}

		FTempProjectFolder Project;
		TArray<FString> PackageNames;
	};
}
