#pragma once

#include "CoreMinimal.h"

class UEdGraph;
class UAnimStateNodeBase;
class UObject;
class UClass;

namespace UE::AnimGraph::Private
{
	/**
	 * The first of Suggestion, Suggestion_1, Suggestion_2, ... that no other state-like node of MachineGraph uses
	 * as its state name (case ignored) and that is not "None".
	 */
	FString MakeUniqueStateName(const UEdGraph* MachineGraph, const UAnimStateNodeBase* Self, const FString& Suggestion);

	/** A new graph under Outer with the given schema; named by the object system when Name is None. */
	UEdGraph* CreateGraph(UObject* Outer, FName Name, UClass* GraphClass, UClass* SchemaClass);
}
