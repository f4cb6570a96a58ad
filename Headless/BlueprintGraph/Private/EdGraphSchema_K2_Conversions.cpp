#include "EdGraphSchema_K2.h"

#include "EdGraph/EdGraph.h"
#include "Engine/Blueprint.h"
#include "K2Node.h"
#include "K2Node_CallFunction.h"
#include "K2Node_MakeArray.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/FieldIterator.h"
#include "UObject/UnrealType.h"

// Putting a conversion node between two pins whose types meet only through a conversion: a call of the
// autocast function the schema finds, or a node made for the purpose (Make Array, a pure cast). The node goes
// half way between the two nodes and is wired on both sides, as the editor wires one it spawns.

namespace UE::BlueprintGraph::Private
{
	namespace
	{
		/** The reflected members a node class adds to UEdGraphNode's: what makes a template node what it is. */
		void CopyNodeSettings(const UEdGraphNode& Template, UEdGraphNode& Node)
		{
			const UClass* NodeBase = UEdGraphNode::StaticClass();
			for (TFieldIterator<FProperty> It(Template.GetClass()); It; ++It)
			{
				const UStruct* Owner = It->GetOwnerStruct();
				if (Owner && Owner != NodeBase && Owner->IsChildOf(NodeBase) && !It->HasAnyPropertyFlags(CPF_Transient))
				{
					It->CopyCompleteValue_InContainer(&Node, &Template);
				}
			}
		}

		/** A node of the template's kind placed in Graph at Location, as the editor places a new node. */
		UK2Node* SpawnNodeFromTemplate(UEdGraph& Graph, const UK2Node& Template, int32 X, int32 Y)
		{
			UK2Node* Node = Cast<UK2Node>(Graph.CreateNode(Template.GetClass(), false, false));
			if (!Node)
			{
				return nullptr;
			}
			CopyNodeSettings(Template, *Node);
			Node->NodePosX = X;
			Node->NodePosY = Y;
			Node->CreateNewGuid();
			Node->PostPlacedNewNode();
			if (Node->Pins.Num() == 0)
			{
				Node->AllocateDefaultPins();
			}
			Node->SnapToGrid(16);
			return Node;
		}
	}
}

bool UEdGraphSchema_K2::AutowireConversionNode(UEdGraphPin* InputPin, UEdGraphPin* OutputPin, UEdGraphNode* ConversionNode) const
{
	const UK2Node* OwningNode = Cast<UK2Node>(InputPin->GetOwningNode());
	const UClass* CallingContext = OwningNode ? OwningNode->GetBlueprintClassFromNode() : nullptr;
	bool bInputSideWired = false;
	bool bOutputSideWired = false;
	// Copy: wiring may change the node's pins (wildcards resolving).
	const TArray<UEdGraphPin*> ConversionPins = ConversionNode->Pins;
	for (UEdGraphPin* TestPin : ConversionPins)
	{
		if (TestPin->bHidden || TestPin->bNotConnectable || IsExecPin(*TestPin))
		{
			continue;
		}
		if (!bOutputSideWired && TestPin->Direction == EGPD_Input && ArePinTypesCompatible(OutputPin->PinType, TestPin->PinType, CallingContext))
		{
			bOutputSideWired = TryCreateConnection(TestPin, OutputPin);
		}
		else if (!bInputSideWired && TestPin->Direction == EGPD_Output && ArePinTypesCompatible(TestPin->PinType, InputPin->PinType, CallingContext))
		{
			bInputSideWired = TryCreateConnection(TestPin, InputPin);
		}
	}
	return bInputSideWired && bOutputSideWired;
}

bool UEdGraphSchema_K2::CreateAutomaticConversionNodeAndConnections(UEdGraphPin* PinA, UEdGraphPin* PinB) const
{
	using namespace UE::BlueprintGraph::Private;
	LastConversionFailureReason.Reset();
	UEdGraphPin* InputPin = nullptr;
	UEdGraphPin* OutputPin = nullptr;
	if (!PinA || !PinB || !CategorizePinsByDirection(PinA, PinB, InputPin, OutputPin))
	{
		LastConversionFailureReason = TEXT("Directions are not compatible");
		return false;
	}
	UEdGraphNode* InputNode = InputPin->GetOwningNode();
	UEdGraphNode* OutputNode = OutputPin->GetOwningNode();
	UEdGraph* Graph = InputNode->GetGraph();
	if (!Graph)
	{
		LastConversionFailureReason = TEXT("The pins' node is in no graph");
		return false;
	}

	UK2Node* Template = nullptr;
	if (TOptional<FSearchForAutocastFunctionResults> Autocast = SearchForAutocastFunction(OutputPin->PinType, InputPin->PinType))
	{
		UK2Node_CallFunction* CallTemplate = NewObject<UK2Node_CallFunction>(GetTransientPackage(), NAME_None, RF_Transient);
		CallTemplate->FunctionReference.SetExternalMember(Autocast->TargetFunction, Autocast->FunctionOwner);
		Template = CallTemplate;
	}
	else if (TOptional<FFindSpecializedConversionNodeResults> Specialized = FindSpecializedConversionNode(OutputPin->PinType, *InputPin, true))
	{
		Template = Specialized->TargetNode;
		if (!Template)
		{
			LastConversionFailureReason = FString::Printf(TEXT("Converting %s to %s needs a kind of conversion node the headless editor does not have"),
				*TypeToText(OutputPin->PinType).ToString(), *TypeToText(InputPin->PinType).ToString());
			return false;
		}
	}
	else
	{
		LastConversionFailureReason = FString::Printf(TEXT("No conversion from %s to %s"), *TypeToText(OutputPin->PinType).ToString(), *TypeToText(InputPin->PinType).ToString());
		return false;
	}

	// Half way between the two nodes, where the editor puts a conversion it inserts.
	const int32 X = (InputNode->NodePosX + OutputNode->NodePosX) / 2;
	const int32 Y = (InputNode->NodePosY + OutputNode->NodePosY) / 2;
	UK2Node* ConversionNode = SpawnNodeFromTemplate(*Graph, *Template, X, Y);
	Template->MarkAsGarbage();
	if (!ConversionNode)
	{
		LastConversionFailureReason = TEXT("The conversion node could not be made");
		return false;
	}
	if (!AutowireConversionNode(InputPin, OutputPin, ConversionNode))
	{
		// Half a conversion is worse than none: the node goes again.
		LastConversionFailureReason = FString::Printf(TEXT("The %s node could not be wired between the pins"), *ConversionNode->GetNodeTitle(ENodeTitleType::ListView).ToString());
		ConversionNode->DestroyNode();
		return false;
	}
	if (UBlueprint* Blueprint = Cast<UK2Node>(InputNode) ? Cast<UK2Node>(InputNode)->GetBlueprint() : nullptr)
	{
		Blueprint->Status = BS_Dirty;
	}
	return true;
}
