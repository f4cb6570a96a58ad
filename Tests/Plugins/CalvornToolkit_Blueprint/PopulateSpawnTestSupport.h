#pragma once

// Shared by the PopulateSpawn suites: an Actor Blueprint with a few variables, compiled as the editor leaves it,
// node requests written as a client writes them (JSON parsed into records), and readers for the telemetry.

#include "ReadTestSupport.h"

#include "Dom/JsonValue.h"
#include "EdGraphSchema_K2.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Populate/ContextActionMenu.h"
#include "Populate/GraphModificationRecords.h"
#include "Populate/SpawnDispatcher.h"

namespace PopulateSpawnTests
{
	using namespace ReadTests;

	inline FEdGraphPinType MakeType(const FName Category, const FName SubCategory = NAME_None, UObject* SubObject = nullptr)
	{
		FEdGraphPinType Type;
		Type.PinCategory = Category;
		Type.PinSubCategory = SubCategory;
		Type.PinSubCategoryObject = SubObject;
		return Type;
	}

	/** The names of a node's pins in order, with their direction: what a client reading the node sees. */
	inline std::vector<std::string> PinNames(const UEdGraphNode* Node)
	{
		std::vector<std::string> Names;
		for (const UEdGraphPin* Pin : Node->Pins)
		{
			if (!Pin->bHidden)
			{
				Names.push_back(std::string(Pin->Direction == EGPD_Input ? "in:" : "out:") + U8(Pin->PinName.ToString()));
			}
		}
		return Names;
	}

	class FSpawnFixture : public FReadFixture
	{
	protected:
		FSpawnFixture()
		{
			ActorClass = FindClass(TEXT("/Script/Engine.Actor"));
			Blueprint = MakeBlueprint(ActorClass, TEXT("BP_Spawner"));
			if (!Blueprint)
			{
				return;
			}
			FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Health"), MakeType(UEdGraphSchema_K2::PC_Real, UEdGraphSchema_K2::PC_Double), TEXT("100.0"));
			FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("bIsAlive"), MakeType(UEdGraphSchema_K2::PC_Boolean));
			FKismetEditorUtilities::CompileBlueprint(Blueprint);
			Graph = Blueprint->UbergraphPages.Num() > 0 ? Blueprint->UbergraphPages[0].Get() : nullptr;
		}

		/** A node request as a client sends it, parsed the way the tool parses it. */
		static FNodeModificationRecord Request(const FString& Json)
		{
			FNodeModificationRecord Record;
			const TSharedPtr<FJsonObject> Object = ParseJson(Json);
			EXPECT_TRUE(Object.IsValid()) << "bad request JSON: " << U8(Json);
			FGraphModificationParser::ParseNode(Object, Record);
			return Record;
		}

		/** Spawns one request into the event graph (or InGraph) with an empty menu: these tests never reach the menu. */
		UEdGraphNode* Spawn(const FString& Json, const TMap<FString, UEdGraphNode*>* SessionNodes = nullptr, UEdGraph* InGraph = nullptr)
		{
			FNodeModificationRecord Record = Request(Json);
			return FSpawnDispatcher::SpawnNode(InGraph ? InGraph : Graph, Record, Blueprint, Menu, Result, SessionNodes);
		}

		TSharedPtr<FJsonObject> Telemetry() const
		{
			const TSharedPtr<FJsonObject>* Object = nullptr;
			return Result.GetDatas()->TryGetObjectField(TEXT("telemetry"), Object) ? *Object : nullptr;
		}

		/** A number of the telemetry's "spawn_methods", or -1 when it is absent. */
		double SpawnMethodCount(const TCHAR* Method) const
		{
			const TSharedPtr<FJsonObject> Methods = Obj(Telemetry(), TEXT("spawn_methods"));
			double Value = -1.0;
			if (Methods.IsValid())
			{
				Methods->TryGetNumberField(Method, Value);
			}
			return Value;
		}

		std::vector<std::string> ValidationFailures() const
		{
			return Strings(Telemetry(), TEXT("validation_failures"));
		}

		std::vector<std::string> Warnings() const { return U8s(Result.GetWarningMessages()); }
		std::vector<std::string> Errors() const { return U8s(Result.GetErrorMessages()); }
		std::vector<std::string> Successes() const { return U8s(Result.GetSuccessMessages()); }

		/** A second Blueprint whose class other tests reach by path, with an "Armor" variable. */
		UBlueprint* MakeTargetBlueprint()
		{
			UBlueprint* Target = MakeBlueprint(ActorClass, TEXT("BP_Target"));
			if (Target)
			{
				FBlueprintEditorUtils::AddMemberVariable(Target, TEXT("Armor"), MakeType(UEdGraphSchema_K2::PC_Int));
				FKismetEditorUtilities::CompileBlueprint(Target);
			}
			return Target;
		}

		UClass* ActorClass = nullptr;
		UBlueprint* Blueprint = nullptr;
		UEdGraph* Graph = nullptr;
		FContextActionMenu Menu;
		Calvorn::FToolResult Result;
	};
}
