#pragma once

// Shared by the Read suites: a project with Blueprints made through the headless editor, registered with the
// asset registry as the editor registers a new asset, and small helpers to look into read documents key by key.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "AssetRegistry/AssetRegistryModule.h"
#include "AssetRegistry/IAssetRegistry.h"
#include "CoreMinimal.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "HAL/PlatformMisc.h"
#include "Headless/Core/StringTestUtils.h"
#include "Headless/Projects/TempProjectFolder.h"
#include "Kismet2/KismetEditorUtilities.h"
#include "Modules/ModuleManager.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"
#include "ToolInfo.h"
#include "ToolResult.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"

namespace ReadTests
{
	inline UClass* FindClass(const TCHAR* Path)
	{
		return FindObject<UClass>(nullptr, Path);
	}

	inline UFunction* FindFunction(const TCHAR* ClassPath, const TCHAR* Name)
	{
		UClass* Class = FindClass(ClassPath);
		return Class ? Class->FindFunctionByName(FName(Name)) : nullptr;
	}

	inline TSharedPtr<FJsonObject> ParseJson(const FString& Text)
	{
		TSharedPtr<FJsonObject> Object;
		FJsonSerializer::Deserialize(TJsonReaderFactory<TCHAR>::Create(Text), Object);
		return Object;
	}

	/** The keys of an object in document order; what clients see as the shape of the JSON. */
	inline std::vector<std::string> Keys(const TSharedPtr<FJsonObject>& Object)
	{
		std::vector<std::string> Result;
		if (Object.IsValid())
		{
			for (const auto& Pair : Object->Values)
			{
				Result.push_back(U8(Pair.Key));
			}
		}
		return Result;
	}

	inline std::string Str(const TSharedPtr<FJsonObject>& Object, const TCHAR* Key)
	{
		FString Value;
		return Object.IsValid() && Object->TryGetStringField(Key, Value) ? U8(Value) : std::string("<absent>");
	}

	inline TSharedPtr<FJsonObject> Obj(const TSharedPtr<FJsonObject>& Object, const TCHAR* Key)
	{
		const TSharedPtr<FJsonObject>* Found = nullptr;
		return Object.IsValid() && Object->TryGetObjectField(Key, Found) ? *Found : nullptr;
	}

	inline TArray<TSharedPtr<FJsonObject>> Objects(const TSharedPtr<FJsonObject>& Object, const TCHAR* Key)
	{
		TArray<TSharedPtr<FJsonObject>> Result;
		const TArray<TSharedPtr<FJsonValue>>* Values = nullptr;
		if (Object.IsValid() && Object->TryGetArrayField(Key, Values))
		{
			for (const TSharedPtr<FJsonValue>& Value : *Values)
			{
				const TSharedPtr<FJsonObject>* Element = nullptr;
				Result.Add(Value.IsValid() && Value->TryGetObject(Element) ? *Element : nullptr);
			}
		}
		return Result;
	}

	/** The string values of an array field, in order. */
	inline std::vector<std::string> Strings(const TSharedPtr<FJsonObject>& Object, const TCHAR* Key)
	{
		std::vector<std::string> Result;
		const TArray<TSharedPtr<FJsonValue>>* Values = nullptr;
		if (Object.IsValid() && Object->TryGetArrayField(Key, Values))
		{
			for (const TSharedPtr<FJsonValue>& Value : *Values)
			{
				Result.push_back(U8(Value->AsString()));
			}
		}
		return Result;
	}

	/** The value of one string key of each element of an array field. */
	inline std::vector<std::string> Column(const TSharedPtr<FJsonObject>& Object, const TCHAR* ArrayKey, const TCHAR* Key)
	{
		std::vector<std::string> Result;
		for (const TSharedPtr<FJsonObject>& Element : Objects(Object, ArrayKey))
		{
			Result.push_back(Str(Element, Key));
		}
		return Result;
	}

	/** The element of an array field whose "name" is Name, or null. */
	inline TSharedPtr<FJsonObject> Named(const TSharedPtr<FJsonObject>& Object, const TCHAR* ArrayKey, const TCHAR* Name, const TCHAR* NameKey = TEXT("name"))
	{
		for (const TSharedPtr<FJsonObject>& Element : Objects(Object, ArrayKey))
		{
			if (Str(Element, NameKey) == U8(Name))
			{
				return Element;
			}
		}
		return nullptr;
	}

	inline std::string ShortGuidOf(const UEdGraphNode* Node)
	{
		return U8(Node->NodeGuid.ToString(EGuidFormats::Digits).Left(7));
	}

	/** A read request: the read tool and any further fields of a JSON text. */
	inline TSharedPtr<FJsonObject> Request(const TCHAR* ReadTool, const FString& ExtraJson = TEXT("{}"))
	{
		TSharedPtr<FJsonObject> Options = ParseJson(ExtraJson);
		if (!Options.IsValid())
		{
			ADD_FAILURE() << "bad request JSON: " << U8(ExtraJson);
			Options = MakeShared<FJsonObject>();
		}
		if (ReadTool)
		{
			Options->SetStringField(Calvorn::ToolInfo::FieldName_ReadTool, ReadTool);
		}
		return Options;
	}

	inline std::string Describe(const Calvorn::FToolResult& Result)
	{
		std::string Text;
		for (const FString& Message : Result.GetErrorMessages())
		{
			Text += "error: " + U8(Message) + "\n";
		}
		for (const FString& Message : Result.GetWarningMessages())
		{
			Text += "warning: " + U8(Message) + "\n";
		}
		for (const FString& Message : Result.GetSuccessMessages())
		{
			Text += "success: " + U8(Message) + "\n";
		}
		return Text;
	}

	inline std::vector<std::string> U8s(const TArray<FString>& Messages)
	{
		std::vector<std::string> Result;
		for (const FString& Message : Messages)
		{
			Result.push_back(U8(Message));
		}
		return Result;
	}

	/** A project with the catalogue loaded and guids seeded, and helpers to make Blueprints and place nodes. */
	class FReadFixture : public ::testing::Test
	{
	protected:
		FReadFixture()
			: Project(TEXT("Readers"))
		{
			Project.Open();
			UE::Headless::ResetAssetRegistry();
			FModuleManager::Get().LoadModuleChecked(TEXT("Catalogue"));
			FModuleManager::Get().LoadModule(TEXT("KismetCompiler"));
			FPlatformMisc::SeedGuidGenerator(11);
		}

		~FReadFixture() override
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

		/** A Blueprint made as the editor makes one (event graph, construction script, first compile), known to the registry. */
		UBlueprint* MakeBlueprint(UClass* ParentClass, const TCHAR* Name, TSubclassOf<UBlueprint> BlueprintClass = UBlueprint::StaticClass(), TSubclassOf<UBlueprintGeneratedClass> GeneratedClass = UBlueprintGeneratedClass::StaticClass())
		{
			const FString PackageName = FString::Printf(TEXT("/Game/Readers/%s"), Name);
			PackageNames.Add(PackageName);
			UPackage* Package = CreatePackage(*PackageName);
			UBlueprint* Blueprint = FKismetEditorUtilities::CreateBlueprint(ParentClass, Package, FName(Name), BPTYPE_Normal, BlueprintClass, GeneratedClass);
			EXPECT_NE(Blueprint, nullptr) << "cannot make " << U8(Name);
			if (Blueprint)
			{
				FAssetRegistryModule::AssetCreated(Blueprint);
			}
			return Blueprint;
		}

		/** A graph under the K2 schema, outside any Blueprint list. */
		static UEdGraph* MakeGraph(UObject* Outer, const TCHAR* Name)
		{
			UEdGraph* Graph = NewObject<UEdGraph>(Outer, Name, RF_Transactional);
			Graph->Schema = UEdGraphSchema_K2::StaticClass();
			return Graph;
		}

		/** A node of class T placed as the editor places one: guid, then Setup, then its pins. */
		template <typename T, typename SetupType>
		static T* Place(UEdGraph* Graph, SetupType&& Setup, int32 X = 0, int32 Y = 0)
		{
			T* Node = static_cast<T*>(Graph->CreateNode(T::StaticClass(), false, false));
			Node->CreateNewGuid();
			Node->NodePosX = X;
			Node->NodePosY = Y;
			Setup(*Node);
			Node->PostPlacedNewNode();
			if (Node->Pins.Num() == 0)
			{
				Node->AllocateDefaultPins();
			}
			return Node;
		}

		template <typename T>
		static T* Place(UEdGraph* Graph, int32 X = 0, int32 Y = 0)
		{
			return Place<T>(Graph, [](T&) {}, X, Y);
		}

		/** Links two pins through the schema, failing the test when it refuses. */
		static void Link(UEdGraphNode* From, const TCHAR* FromPin, UEdGraphNode* To, const TCHAR* ToPin)
		{
			UEdGraphPin* A = From->FindPin(FromPin);
			UEdGraphPin* B = To->FindPin(ToPin);
			ASSERT_NE(A, nullptr) << "no pin " << U8(FromPin);
			ASSERT_NE(B, nullptr) << "no pin " << U8(ToPin);
			const UEdGraphSchema_K2* Schema = GetDefault<UEdGraphSchema_K2>();
			EXPECT_TRUE(Schema->TryCreateConnection(A, B)) << U8(FromPin) << " -> " << U8(ToPin);
		}

		FTempProjectFolder Project;
		TArray<FString> PackageNames;
	};
}
