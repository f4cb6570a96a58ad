#include "AnimGraphPrivate.h"

#include "AnimStateNodeBase.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphSchema.h"
#include "UObject/UObjectGlobals.h"

namespace UE::AnimGraph::Private
{
	namespace
	{
		bool IsNameTaken(const UEdGraph* MachineGraph, const UAnimStateNodeBase* Self, const FString& Name)
		{
			if (Name.IsEmpty() || Name == TEXT("None"))
			{
				return true;
			}
			if (!MachineGraph)
			{
				return false;
			}
			for (const UEdGraphNode* Node : MachineGraph->Nodes)
			{
				const UAnimStateNodeBase* State = Cast<UAnimStateNodeBase>(Node);
				if (State && State != Self && State->GetStateName() == Name)
				{
					return true;
				}
			}
			return false;
		}
	}

	FString MakeUniqueStateName(const UEdGraph* MachineGraph, const UAnimStateNodeBase* Self, const FString& Suggestion)
	{
		const FString Base = Suggestion.IsEmpty() ? FString(TEXT("State")) : Suggestion;
		FString Candidate = Base;
		for (int32 Postfix = 1; IsNameTaken(MachineGraph, Self, Candidate); ++Postfix)
		{
			Candidate = FString::Printf(TEXT("%s_%d"), *Base, Postfix);
		}
		return Candidate;
	}

	UEdGraph* CreateGraph(UObject* Outer, FName Name, UClass* GraphClass, UClass* SchemaClass)
	{
		const FName GraphName = Name.IsNone() ? MakeUniqueObjectName(Outer, GraphClass) : Name;
		UEdGraph* Graph = NewObject<UEdGraph>(Outer, GraphClass, GraphName, RF_Transactional);
		Graph->Schema = SchemaClass;
		return Graph;
	}
}
