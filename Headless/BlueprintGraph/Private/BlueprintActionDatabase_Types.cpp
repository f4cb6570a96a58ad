// Type actions: casts, struct make and break, object construction and actor spawning.

#include "BlueprintActionDatabaseFamilies.h"
#include "BlueprintActionDatabaseRegistrar.h"
#include "BlueprintNodeSpawner.h"
#include "EdGraphSchema_K2.h"
#include "K2Node_BreakStruct.h"
#include "K2Node_ClassDynamicCast.h"
#include "K2Node_ConstructObjectFromClass.h"
#include "K2Node_DynamicCast.h"
#include "K2Node_MakeStruct.h"
#include "K2Node_SpawnActorFromClass.h"
#include "UObject/Class.h"
#include "UObject/UObjectIterator.h"

namespace UE::BlueprintGraph::ActionDatabase
{
	void RegisterTypeActions(FBlueprintActionDatabaseRegistrar& Registrar)
	{
		// "Cast To X" and "Cast To X Class" for every class Blueprints can hold.
		TArray<UClass*> CastTargets;
		for (TObjectIterator<UClass> It; It; ++It)
		{
			UClass* Class = *It;
			if (!IsBlueprintMadeClass(Class) && IsBlueprintTypeClass(Class) && !Class->HasAnyClassFlags(CLASS_Deprecated | CLASS_NewerVersionExists))
			{
				CastTargets.Add(Class);
			}
		}
		for (UClass* Class : CastTargets)
		{
			auto SetTarget = [Class](UEdGraphNode* NewNode, bool)
			{
				if (UK2Node_DynamicCast* CastNode = Cast<UK2Node_DynamicCast>(NewNode))
				{
					CastNode->TargetType = Class;
				}
			};
			Registrar.AddBlueprintAction(Class, UBlueprintNodeSpawner::Create(UK2Node_DynamicCast::StaticClass(), nullptr, UBlueprintNodeSpawner::FCustomizeNodeDelegate::CreateLambda(SetTarget)));
			Registrar.AddBlueprintAction(Class, UBlueprintNodeSpawner::Create(UK2Node_ClassDynamicCast::StaticClass(), nullptr, UBlueprintNodeSpawner::FCustomizeNodeDelegate::CreateLambda(SetTarget)));
		}

		// "Make X" and "Break X" for every struct Blueprints can hold and no native function makes or breaks.
		TArray<UScriptStruct*> Structs;
		for (TObjectIterator<UScriptStruct> It; It; ++It)
		{
			Structs.Add(*It);
		}
		for (UScriptStruct* Struct : Structs)
		{
			auto SetStruct = [Struct](UEdGraphNode* NewNode, bool)
			{
				if (UK2Node_StructOperation* StructNode = Cast<UK2Node_StructOperation>(NewNode))
				{
					StructNode->StructType = Struct;
				}
			};
			if (UK2Node_MakeStruct::CanBeMade(Struct))
			{
				Registrar.AddBlueprintAction(Struct, UBlueprintNodeSpawner::Create(UK2Node_MakeStruct::StaticClass(), nullptr, UBlueprintNodeSpawner::FCustomizeNodeDelegate::CreateLambda(SetStruct)));
			}
			if (UK2Node_BreakStruct::CanBeBroken(Struct))
			{
				Registrar.AddBlueprintAction(Struct, UBlueprintNodeSpawner::Create(UK2Node_BreakStruct::StaticClass(), nullptr, UBlueprintNodeSpawner::FCustomizeNodeDelegate::CreateLambda(SetStruct)));
			}
		}

		Registrar.AddBlueprintAction(UK2Node_SpawnActorFromClass::StaticClass(), UBlueprintNodeSpawner::Create<UK2Node_SpawnActorFromClass>());
		Registrar.AddBlueprintAction(UK2Node_ConstructObjectFromClass::StaticClass(), UBlueprintNodeSpawner::Create<UK2Node_ConstructObjectFromClass>());
	}
}
