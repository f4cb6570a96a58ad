#include "AnimationGraphSchema.h"
#include "AnimationStateMachineSchema.h"

#include "AnimGraphNode_Base.h"
#include "AnimGraphNode_StateMachineBase.h"
#include "AnimStateNode.h"
#include "AnimStateTransitionNode.h"
#include "AnimationGraph.h"
#include "AnimationStateGraph.h"
#include "AnimationStateMachineGraph.h"
#include "AnimationTransitionGraph.h"
#include "EdGraph/EdGraph.h"
#include "UObject/Package.h"
#include "UObject/UnrealType.h"
#include "UObject/UObjectIterator.h"

IMPLEMENT_CLASS(UAnimationGraph, UE_NATIVE_PROPERTY(FNameProperty, BlendOptions, CPF_None);)
IMPLEMENT_CLASS(UAnimationStateGraph, UE_NATIVE_PROPERTY(FObjectProperty, MyResultNode, CPF_TObjectPtr, UAnimGraphNode_StateResult::StaticClass());)
IMPLEMENT_CLASS(UAnimationTransitionGraph, UE_NATIVE_PROPERTY(FObjectProperty, MyResultNode, CPF_TObjectPtr, UAnimGraphNode_TransitionResult::StaticClass());)
IMPLEMENT_CLASS(UAnimationStateMachineGraph,
	UE_NATIVE_PROPERTY(FObjectProperty, EntryNode, CPF_TObjectPtr, UAnimStateEntryNode::StaticClass());
	UE_NATIVE_PROPERTY(FObjectProperty, OwnerAnimGraphNode, CPF_TObjectPtr, UAnimGraphNode_StateMachineBase::StaticClass());
)
IMPLEMENT_CLASS(UAnimationGraphSchema)
IMPLEMENT_CLASS(UAnimationStateGraphSchema)
IMPLEMENT_CLASS(UAnimationTransitionSchema)
IMPLEMENT_CLASS(UAnimationConduitGraphSchema)
IMPLEMENT_CLASS(UAnimationStateMachineSchema)

const FName UAnimationGraphSchema::PN_Result(TEXT("Result"));
const FName UAnimationGraphSchema::DefaultEvaluationHandlerName(TEXT("EvaluateGraphExposedInputs"));
const FName UAnimationStateMachineSchema::PC_Exec(TEXT("exec"));
const FName UAnimationStateMachineSchema::PC_Transition(TEXT("Transition"));

namespace
{
	// The engine declares the pose links in C++ with no Blueprint exposure, so the catalogue lacks them; the pose
	// pins of anim nodes need them as struct types all the same.
	UScriptStruct* MakePoseLinkStruct(UPackage* Package, const TCHAR* Name)
	{
		UScriptStruct* Struct = NewObject<UScriptStruct>(Package, Name, RF_Public | RF_Transient | RF_MarkAsNative);
		new FIntProperty(Struct, TEXT("LinkID"), RF_Public | RF_MarkAsNative | RF_Transient);
		Struct->StaticLink(true);
		return Struct;
	}

	void RegisterPoseLinkStructs()
	{
		UPackage* Engine = CreatePackage(TEXT("/Script/Engine"));
		if (!FindObject<UScriptStruct>(Engine, TEXT("PoseLink")))
		{
			MakePoseLinkStruct(Engine, TEXT("PoseLink"));
		}
		if (!FindObject<UScriptStruct>(Engine, TEXT("ComponentSpacePoseLink")))
		{
			MakePoseLinkStruct(Engine, TEXT("ComponentSpacePoseLink"));
		}
	}

	UE::CoreUObject::Private::FRegisterCompiledInCallback GRegisterPoseLinks(&RegisterPoseLinkStructs);

	template <typename ResultNodeType>
	ResultNodeType* PlaceResultNode(UEdGraph& Graph, int32 PosX, int32 PosY)
	{
		FGraphNodeCreator<ResultNodeType> Creator(Graph);
		ResultNodeType* Node = Creator.CreateNode();
		Node->NodePosX = PosX;
		Node->NodePosY = PosY;
		Creator.Finalize();
		return Node;
	}
}

UAnimationGraph::UAnimationGraph() = default;
UAnimationStateGraph::UAnimationStateGraph() = default;
UAnimationTransitionGraph::UAnimationTransitionGraph() = default;
UAnimationStateMachineGraph::UAnimationStateMachineGraph() = default;

UAnimGraphNode_StateResult* UAnimationStateGraph::GetResultNode() const
{
	return MyResultNode;
}

UAnimGraphNode_TransitionResult* UAnimationTransitionGraph::GetResultNode() const
{
	return MyResultNode;
}

UAnimationGraphSchema::UAnimationGraphSchema() = default;

void UAnimationGraphSchema::CreateDefaultNodesForGraph(UEdGraph& Graph) const
{
	UAnimGraphNode_Root* Root = PlaceResultNode<UAnimGraphNode_Root>(Graph, 0, 0);
	Root->Name = Graph.GetFName();
}

EGraphType UAnimationGraphSchema::GetGraphType(const UEdGraph* TestEdGraph) const
{
	return GT_Animation;
}

UScriptStruct* UAnimationGraphSchema::GetPoseLinkStruct()
{
	return FindObject<UScriptStruct>(nullptr, TEXT("/Script/Engine.PoseLink"));
}

UScriptStruct* UAnimationGraphSchema::GetComponentSpacePoseLinkStruct()
{
	return FindObject<UScriptStruct>(nullptr, TEXT("/Script/Engine.ComponentSpacePoseLink"));
}

bool UAnimationGraphSchema::IsLocalSpacePosePin(const FEdGraphPinType& PinType)
{
	return PinType.PinCategory == PC_Struct && PinType.PinSubCategoryObject.Get() == GetPoseLinkStruct();
}

bool UAnimationGraphSchema::IsComponentSpacePosePin(const FEdGraphPinType& PinType)
{
	return PinType.PinCategory == PC_Struct && PinType.PinSubCategoryObject.Get() == GetComponentSpacePoseLinkStruct();
}

bool UAnimationGraphSchema::IsPosePin(const FEdGraphPinType& PinType)
{
	return IsLocalSpacePosePin(PinType) || IsComponentSpacePosePin(PinType);
}

void UAnimationStateGraphSchema::CreateDefaultNodesForGraph(UEdGraph& Graph) const
{
	UAnimGraphNode_StateResult* Result = PlaceResultNode<UAnimGraphNode_StateResult>(Graph, 200, 0);
	if (UAnimationStateGraph* StateGraph = Cast<UAnimationStateGraph>(&Graph))
	{
		StateGraph->MyResultNode = Result;
	}
}

EGraphType UAnimationStateGraphSchema::GetGraphType(const UEdGraph* TestEdGraph) const
{
	return GT_Animation;
}

void UAnimationTransitionSchema::CreateDefaultNodesForGraph(UEdGraph& Graph) const
{
	UAnimGraphNode_TransitionResult* Result = PlaceResultNode<UAnimGraphNode_TransitionResult>(Graph, 200, 0);
	if (UAnimationTransitionGraph* TransitionGraph = Cast<UAnimationTransitionGraph>(&Graph))
	{
		TransitionGraph->MyResultNode = Result;
	}
}

EGraphType UAnimationTransitionSchema::GetGraphType(const UEdGraph* TestEdGraph) const
{
	return GT_StateMachine;
}

void UAnimationStateMachineSchema::CreateDefaultNodesForGraph(UEdGraph& Graph) const
{
	FGraphNodeCreator<UAnimStateEntryNode> Creator(Graph);
	UAnimStateEntryNode* Entry = Creator.CreateNode();
	Creator.Finalize();
	if (UAnimationStateMachineGraph* MachineGraph = Cast<UAnimationStateMachineGraph>(&Graph))
	{
		MachineGraph->EntryNode = Entry;
	}
}

const FPinConnectionResponse UAnimationStateMachineSchema::CanCreateConnection(const UEdGraphPin* PinA, const UEdGraphPin* PinB) const
{
	const UEdGraphNode* NodeA = PinA->GetOwningNode();
	const UEdGraphNode* NodeB = PinB->GetOwningNode();
	if (NodeA == NodeB)
	{
		return FPinConnectionResponse(CONNECT_RESPONSE_DISALLOW, TEXT("Both are on the same node"));
	}

	// The entry only ever points at one state, so a new link replaces the old one.
	const bool bAIsEntry = NodeA->IsA<UAnimStateEntryNode>();
	const bool bBIsEntry = NodeB->IsA<UAnimStateEntryNode>();
	if (bAIsEntry || bBIsEntry)
	{
		if (bAIsEntry && NodeB->IsA<UAnimStateNodeBase>())
		{
			return FPinConnectionResponse(CONNECT_RESPONSE_BREAK_OTHERS_A, TEXT(""));
		}
		return FPinConnectionResponse(CONNECT_RESPONSE_DISALLOW, TEXT("Entry must connect to a state node"));
	}

	const bool bAIsTransition = NodeA->IsA<UAnimStateTransitionNode>();
	const bool bBIsTransition = NodeB->IsA<UAnimStateTransitionNode>();
	if (bAIsTransition && bBIsTransition)
	{
		return FPinConnectionResponse(CONNECT_RESPONSE_DISALLOW, TEXT("Cannot wire a transition to a transition"));
	}
	// A transition joins exactly two nodes, while a state may have any number of transitions.
	if (bAIsTransition)
	{
		return FPinConnectionResponse(CONNECT_RESPONSE_BREAK_OTHERS_A, TEXT(""));
	}
	if (bBIsTransition)
	{
		return FPinConnectionResponse(CONNECT_RESPONSE_BREAK_OTHERS_B, TEXT(""));
	}
	return FPinConnectionResponse(CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE, TEXT("Create a transition"));
}

bool UAnimationStateMachineSchema::TryCreateConnection(UEdGraphPin* PinA, UEdGraphPin* PinB) const
{
	// Dragging onto a state's pin of the same direction means the state: use its other pin.
	if (PinA->Direction == PinB->Direction)
	{
		if (UAnimStateNodeBase* State = Cast<UAnimStateNodeBase>(PinB->GetOwningNode()))
		{
			UEdGraphPin* Other = PinA->Direction == EGPD_Input ? State->GetOutputPin() : State->GetInputPin();
			if (Other)
			{
				PinB = Other;
			}
		}
	}
	const bool bModified = UEdGraphSchema::TryCreateConnection(PinA, PinB);
	if (bModified)
	{
		if (UObject* Package = PinA->GetOwningNode()->GetOutermost())
		{
			Package->MarkPackageDirty();
		}
	}
	return bModified;
}

bool UAnimationStateMachineSchema::CreateAutomaticConversionNodeAndConnections(UEdGraphPin* PinA, UEdGraphPin* PinB) const
{
	UAnimStateNodeBase* NodeA = Cast<UAnimStateNodeBase>(PinA->GetOwningNode());
	UAnimStateNodeBase* NodeB = Cast<UAnimStateNodeBase>(PinB->GetOwningNode());
	if (!NodeA || !NodeB || !NodeA->GetInputPin() || !NodeA->GetOutputPin() || !NodeB->GetInputPin() || !NodeB->GetOutputPin())
	{
		return false;
	}
	UEdGraph* Graph = NodeA->GetGraph();
	FGraphNodeCreator<UAnimStateTransitionNode> Creator(*Graph);
	UAnimStateTransitionNode* Transition = Creator.CreateNode(false);
	// Halfway between the two states, as the editor places it.
	Transition->NodePosX = static_cast<int32>((float(NodeA->NodePosX) + float(NodeB->NodePosX)) * 0.5f);
	Transition->NodePosY = static_cast<int32>((float(NodeA->NodePosY) + float(NodeB->NodePosY)) * 0.5f);
	Creator.Finalize();
	if (PinA->Direction == EGPD_Output)
	{
		Transition->CreateConnections(NodeA, NodeB);
	}
	else
	{
		Transition->CreateConnections(NodeB, NodeA);
	}
	Graph->NotifyGraphChanged();
	return true;
}

EGraphType UAnimationStateMachineSchema::GetGraphType(const UEdGraph* TestEdGraph) const
{
	return GT_StateMachine;
}
