#include "AnimGraphNode_StateMachineBase.h"

#include "AnimGraphPrivate.h"
#include "AnimStateNode.h"
#include "AnimStateTransitionNode.h"
#include "AnimationGraphSchema.h"
#include "AnimationStateMachineGraph.h"
#include "AnimationStateMachineSchema.h"
#include "EdGraph/EdGraph.h"
#include "Kismet2/CompilerResultsLog.h"
#include "UObject/UnrealType.h"

IMPLEMENT_CLASS(UAnimGraphNode_StateMachineBase,
	UE_NATIVE_PROPERTY(FObjectProperty, EditorStateMachineGraph, CPF_TObjectPtr, UAnimationStateMachineGraph::StaticClass());
)
IMPLEMENT_CLASS(UAnimGraphNode_StateMachine)

namespace
{
	/** Machine names are unique among the state machine nodes of one anim graph. */
	FString MakeUniqueMachineName(const UAnimGraphNode_StateMachineBase* Self, const FString& Suggestion)
	{
		auto IsTaken = [Self](const FString& Name)
		{
			if (Name.IsEmpty() || Name == TEXT("None"))
			{
				return true;
			}
			const UEdGraph* Graph = Self->GetGraph();
			if (!Graph)
			{
				return false;
			}
			for (const UEdGraphNode* Node : Graph->Nodes)
			{
				const UAnimGraphNode_StateMachineBase* Machine = Cast<UAnimGraphNode_StateMachineBase>(Node);
				if (Machine && Machine != Self && Machine->GetStateMachineName() == Name)
				{
					return true;
				}
			}
			return false;
		};
		FString Candidate = Suggestion;
		for (int32 Postfix = 1; IsTaken(Candidate); ++Postfix)
		{
			Candidate = FString::Printf(TEXT("%s_%d"), *Suggestion, Postfix);
		}
		return Candidate;
	}
}

void UAnimGraphNode_StateMachineBase::AllocateDefaultPins()
{
	CreatePosePin(EGPD_Output, TEXT("Pose"));
}

FText UAnimGraphNode_StateMachineBase::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	if (!EditorStateMachineGraph)
	{
		if (TitleType == ENodeTitleType::MenuTitle || TitleType == ENodeTitleType::ListView)
		{
			return FText::FromString(TEXT("State Machine"));
		}
		return FText::FromString(TitleType == ENodeTitleType::FullTitle ? TEXT("Error: No Graph\nState Machine") : TEXT("Error: No Graph"));
	}
	if (TitleType == ENodeTitleType::FullTitle)
	{
		return FText::FromString(FString::Printf(TEXT("%s\nState Machine"), *EditorStateMachineGraph->GetName()));
	}
	return FText::FromString(EditorStateMachineGraph->GetName());
}

FText UAnimGraphNode_StateMachineBase::GetTooltipText() const
{
	return FText::FromString(TEXT("Animation State Machine"));
}

FText UAnimGraphNode_StateMachineBase::GetMenuCategory() const
{
	return FText::FromString(TEXT("Animation|State Machines"));
}

void UAnimGraphNode_StateMachineBase::PostPlacedNewNode()
{
	Super::PostPlacedNewNode();
	if (EditorStateMachineGraph)
	{
		return;
	}
	const FString Name = MakeUniqueMachineName(this, TEXT("New State Machine"));
	EditorStateMachineGraph = Cast<UAnimationStateMachineGraph>(UE::AnimGraph::Private::CreateGraph(
		this, FName(*Name), UAnimationStateMachineGraph::StaticClass(), UAnimationStateMachineSchema::StaticClass()));
	EditorStateMachineGraph->OwnerAnimGraphNode = this;
	EditorStateMachineGraph->GetSchema()->CreateDefaultNodesForGraph(*EditorStateMachineGraph);
	if (UEdGraph* ParentGraph = GetGraph())
	{
		ParentGraph->SubGraphs.AddUnique(EditorStateMachineGraph.Get());
	}
}

void UAnimGraphNode_StateMachineBase::DestroyNode()
{
	UEdGraph* Machine = EditorStateMachineGraph;
	EditorStateMachineGraph = nullptr;
	Super::DestroyNode();
	if (Machine)
	{
		if (UEdGraph* ParentGraph = GetGraph())
		{
			ParentGraph->SubGraphs.Remove(Machine);
		}
		Machine->MarkAsGarbage();
	}
}

void UAnimGraphNode_StateMachineBase::OnRenameNode(const FString& NewName)
{
	if (EditorStateMachineGraph && !NewName.IsEmpty())
	{
		EditorStateMachineGraph->Rename(*MakeUniqueMachineName(this, NewName), this);
	}
}

FString UAnimGraphNode_StateMachineBase::GetStateMachineName() const
{
	return EditorStateMachineGraph ? EditorStateMachineGraph->GetName() : FString(TEXT("(null)"));
}

TArray<UEdGraph*> UAnimGraphNode_StateMachineBase::GetSubGraphs() const
{
	TArray<UEdGraph*> SubGraphs;
	SubGraphs.Add(EditorStateMachineGraph);
	return SubGraphs;
}

void UAnimGraphNode_StateMachineBase::ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const
{
	if (!EditorStateMachineGraph)
	{
		MessageLog.Error(TEXT("@@ does not have a corresponding graph"), this);
		return;
	}
	const UAnimStateEntryNode* Entry = nullptr;
	for (UEdGraphNode* Node : EditorStateMachineGraph->Nodes)
	{
		if (const UAnimStateEntryNode* ThisEntry = Cast<UAnimStateEntryNode>(Node))
		{
			if (Entry)
			{
				MessageLog.Error(TEXT("Found an extra entry node @@"), ThisEntry);
				continue;
			}
			Entry = ThisEntry;
		}
		if (const UAnimStateNodeBase* State = Cast<UAnimStateNodeBase>(Node))
		{
			State->ValidateNodeDuringCompilation(MessageLog);
		}
	}
	UEdGraphNode* Initial = Entry ? Entry->GetOutputNode() : nullptr;
	if (!Initial)
	{
		MessageLog.Warning(TEXT("There was no entry state connection in @@"), this);
	}
	else if (const UAnimStateAliasNode* Alias = Cast<UAnimStateAliasNode>(Initial))
	{
		MessageLog.Error(TEXT("An alias (@@) cannot be used as the entry node for a state machine"), Alias);
	}
	else if (const UAnimStateConduitNode* Conduit = Cast<UAnimStateConduitNode>(Initial))
	{
		MessageLog.Error(TEXT("A conduit (@@) cannot be used as the entry node for a state machine."), Conduit);
	}
}
