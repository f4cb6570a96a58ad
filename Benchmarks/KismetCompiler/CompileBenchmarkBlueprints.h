#pragma once

// The Blueprints both compile benchmarks use: 50 actor Blueprints of 200 nodes each (function calls wired in chains,
// with pure math nodes feeding them, ten member variables and two functions per Blueprint), in a project that lives
// in a temporary folder removed at exit.

#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "GameFramework/Actor.h"
#include "HAL/PlatformMisc.h"
#include "../Common/BenchmarkProject.h"
#include "K2Node_CallFunction.h"
#include "K2Node_Event.h"
#include "K2Node_FunctionEntry.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Kismet2/CompilerResultsLog.h"
#include "Kismet2/KismetEditorUtilities.h"
#include "Misc/FileHelper.h"
#include "Misc/Paths.h"
#include "Modules/ModuleManager.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"


#include <cstdlib>
#include <filesystem>
#include <string>

namespace UE::Benchmarks::Compile
{
	constexpr int32 NumBlueprints = 50;
	constexpr int32 NodesPerBlueprint = 200;

	using UE::Benchmarks::FBenchProject;


	inline UFunction* LibraryFunction(const TCHAR* Library, const TCHAR* Function)
	{
		UClass* Class = FindObject<UClass>(nullptr, *FString::Printf(TEXT("/Script/Engine.%s"), Library));
		return Class ? Class->FindFunctionByName(FName(Function)) : nullptr;
	}

	inline UK2Node_CallFunction* Call(UEdGraph& Graph, UFunction* Function, int32 Index)
	{
		UK2Node_CallFunction* Node = static_cast<UK2Node_CallFunction*>(Graph.CreateNode(UK2Node_CallFunction::StaticClass(), false, false));
		Node->NodePosX = (Index % 20) * 320;
		Node->NodePosY = (Index / 20) * 240;
		Node->SetFromFunction(Function);
		Node->CreateNewGuid();
		Node->PostPlacedNewNode();
		Node->AllocateDefaultPins();
		return Node;
	}

	/** One Blueprint of the bench: members, two functions, and a graph of NodesPerBlueprint nodes. */
	inline UBlueprint* MakeBlueprint(int32 Index)
	{
		const FString Name = FString::Printf(TEXT("BP_Compile%d"), Index);
		UPackage* Package = CreatePackage(*FString::Printf(TEXT("/Game/Bench/%s"), *Name));
		UBlueprint* Blueprint = FKismetEditorUtilities::CreateBlueprint(AActor::StaticClass(), Package, FName(*Name), BPTYPE_Normal,
			UBlueprint::StaticClass(), UBlueprintGeneratedClass::StaticClass());
		if (!Blueprint)
		{
			return nullptr;
		}
		for (int32 Var = 0; Var < 10; ++Var)
		{
			FEdGraphPinType Type;
			Type.PinCategory = (Var % 2) ? UEdGraphSchema_K2::PC_Int : UEdGraphSchema_K2::PC_String;
			FBlueprintEditorUtils::AddMemberVariable(Blueprint, FName(*FString::Printf(TEXT("Var%d"), Var)), Type, (Var % 2) ? TEXT("7") : TEXT("text"));
		}
		for (int32 Function = 0; Function < 2; ++Function)
		{
			UEdGraph* Graph = FBlueprintEditorUtils::CreateNewGraph(Blueprint, FName(*FString::Printf(TEXT("Function%d"), Function)), UEdGraph::StaticClass(), UEdGraphSchema_K2::StaticClass());
			FBlueprintEditorUtils::AddFunctionGraph<UClass>(Blueprint, Graph, true, nullptr);
			for (UEdGraphNode* Node : Graph->Nodes)
			{
				if (UK2Node_FunctionEntry* Entry = Cast<UK2Node_FunctionEntry>(Node))
				{
					FEdGraphPinType Type;
					Type.PinCategory = UEdGraphSchema_K2::PC_Int;
					Entry->CreateUserDefinedPin(TEXT("Amount"), Type, EGPD_Output);
				}
			}
		}

		UEdGraph* EventGraph = FBlueprintEditorUtils::FindEventGraph(Blueprint);
		UK2Node_Event* BeginPlay = FBlueprintEditorUtils::FindOverrideForFunction(Blueprint, AActor::StaticClass(), TEXT("ReceiveBeginPlay"));
		BeginPlay->EnabledState = ENodeEnabledState::Enabled;
		UFunction* Print = LibraryFunction(TEXT("KismetSystemLibrary"), TEXT("PrintString"));
		UFunction* Add = LibraryFunction(TEXT("KismetMathLibrary"), TEXT("Add_IntInt"));
		UFunction* ToString = LibraryFunction(TEXT("KismetStringLibrary"), TEXT("Conv_IntToString"));
		UEdGraphPin* Then = BeginPlay->FindPin(UEdGraphSchema_K2::PN_Then);
		// Groups of four: Add -> Add -> ToString -> Print, the prints chained by exec wires.
		for (int32 Node = 0; Node + 4 <= NodesPerBlueprint; Node += 4)
		{
			UK2Node_CallFunction* First = Call(*EventGraph, Add, Node);
			UK2Node_CallFunction* Second = Call(*EventGraph, Add, Node + 1);
			UK2Node_CallFunction* Convert = Call(*EventGraph, ToString, Node + 2);
			UK2Node_CallFunction* Printer = Call(*EventGraph, Print, Node + 3);
			First->FindPin(TEXT("ReturnValue"))->MakeLinkTo(Second->FindPin(TEXT("A")));
			Second->FindPin(TEXT("ReturnValue"))->MakeLinkTo(Convert->FindPin(TEXT("InInt")));
			Convert->FindPin(TEXT("ReturnValue"))->MakeLinkTo(Printer->FindPin(TEXT("InString")));
			Then->MakeLinkTo(Printer->FindPin(UEdGraphSchema_K2::PN_Execute));
			Then = Printer->FindPin(UEdGraphSchema_K2::PN_Then);
		}
		return Blueprint;
	}

}
