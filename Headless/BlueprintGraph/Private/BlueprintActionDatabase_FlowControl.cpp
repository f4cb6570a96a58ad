// Flow control: branches, sequences, selects, switches and the standard macro library.

#include "BlueprintActionDatabaseFamilies.h"
#include "BlueprintActionDatabaseRegistrar.h"
#include "BlueprintNodeSpawner.h"
#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "K2Node_ExecutionSequence.h"
#include "K2Node_IfThenElse.h"
#include "K2Node_MacroInstance.h"
#include "K2Node_Select.h"
#include "K2Node_SwitchEnum.h"
#include "K2Node_SwitchInteger.h"
#include "K2Node_SwitchName.h"
#include "K2Node_SwitchString.h"
#include "UObject/Class.h"
#include "UObject/UObjectIterator.h"

namespace UE::BlueprintGraph::ActionDatabase
{
	namespace
	{
		bool IsBlueprintTypeEnum(const UEnum* Enum)
		{
			return Enum && Enum->GetMetaData(TEXT("BlueprintType")) == TEXT("true");
		}

		template <typename NodeType>
		void AddNodeClassAction(FBlueprintActionDatabaseRegistrar& Registrar)
		{
			Registrar.AddBlueprintAction(NodeType::StaticClass(), UBlueprintNodeSpawner::Create<NodeType>());
		}
	}

	void RegisterFlowControlActions(FBlueprintActionDatabaseRegistrar& Registrar)
	{
		AddNodeClassAction<UK2Node_IfThenElse>(Registrar);
		AddNodeClassAction<UK2Node_ExecutionSequence>(Registrar);
		AddNodeClassAction<UK2Node_Select>(Registrar);
		AddNodeClassAction<UK2Node_SwitchInteger>(Registrar);
		AddNodeClassAction<UK2Node_SwitchString>(Registrar);
		AddNodeClassAction<UK2Node_SwitchName>(Registrar);

		// One switch per enum a Blueprint can use.
		TArray<UEnum*> Enums;
		for (TObjectIterator<UEnum> It; It; ++It)
		{
			if (IsBlueprintTypeEnum(*It))
			{
				Enums.Add(*It);
			}
		}
		for (UEnum* Enum : Enums)
		{
			auto SetEnum = [Enum](UEdGraphNode* NewNode, bool)
			{
				if (UK2Node_SwitchEnum* Switch = Cast<UK2Node_SwitchEnum>(NewNode))
				{
					Switch->SetEnum(Enum);
				}
			};
			Registrar.AddBlueprintAction(Enum, UBlueprintNodeSpawner::Create(UK2Node_SwitchEnum::StaticClass(), nullptr, UBlueprintNodeSpawner::FCustomizeNodeDelegate::CreateLambda(SetEnum)));
		}

		// Every macro of the standard library (ForEachLoop, Do N, DoOnce, Gate, FlipFlop...).
		if (UBlueprint* Macros = UE::BlueprintGraph::GetStandardMacros())
		{
			for (UEdGraph* MacroGraph : Macros->MacroGraphs)
			{
				if (!MacroGraph)
				{
					continue;
				}
				auto SetMacro = [MacroGraph](UEdGraphNode* NewNode, bool)
				{
					if (UK2Node_MacroInstance* Instance = Cast<UK2Node_MacroInstance>(NewNode))
					{
						Instance->SetMacroGraph(MacroGraph);
					}
				};
				Registrar.AddBlueprintAction(Macros, UBlueprintNodeSpawner::Create(UK2Node_MacroInstance::StaticClass(), nullptr, UBlueprintNodeSpawner::FCustomizeNodeDelegate::CreateLambda(SetMacro)));
			}
		}
	}
}
