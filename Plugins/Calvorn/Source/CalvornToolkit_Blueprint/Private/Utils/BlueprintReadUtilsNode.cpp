#include "BlueprintReadUtils.h"
#include "BlueprintReadUtilsPrivate.h"

#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphPin.h"
#include "K2Node.h"
#include "K2Node_CallFunction.h"
#include "K2Node_Composite.h"
#include "K2Node_Event.h"
#include "K2Node_Literal.h"
#include "K2Node_VariableGet.h"
#include "K2Node_VariableSet.h"

using namespace UE::CalvornBlueprint::ReadPrivate;

namespace
{
	// Keys written for every node, made once rather than from their literals for each field.
	const FString VariableNameKey(TEXT("variable_name"));
	const FString FunctionNameKey(TEXT("function_name"));
	const FString FunctionClassKey(TEXT("function_class"));
	const FString VariableScopeKey(TEXT("variable_scope"));
	const FString EventClassKey(TEXT("event_class"));
	const FString IsPureKey(TEXT("is_pure"));
	const FString NodeTitleKey(TEXT("node_title"));
	const FString MenuTitleKey(TEXT("menu_title"));
	const FString FullTitleKey(TEXT("full_title"));
	const FString MenuCategoryKey(TEXT("menu_category"));
	const FString ClassNameKey(TEXT("class_name"));
	const FString NodeGuidKey(TEXT("node_guid"));
	const FString PosXKey(TEXT("pos_x"));
	const FString PosYKey(TEXT("pos_y"));
	const FString PropertiesKey(TEXT("properties"));
	const FString PinsKey(TEXT("pins"));

	/** "<key>": name of the reference's parent class, written only when the reference names a class. */
	void WriteMemberParentClass(FJsonObject& Properties, const FString& Key, const FMemberReference& Reference)
	{
		if (const UClass* ParentClass = Reference.GetMemberParentClass())
		{
			Properties.SetField(Key, DocumentValues::Name(ParentClass->GetFName()));
		}
	}

	void WriteVariableProperties(FJsonObject& Properties, const UK2Node_Variable& Node)
	{
		Properties.SetField(VariableNameKey, DocumentValues::Name(Node.VariableReference.GetMemberName()));
		WriteMemberParentClass(Properties, VariableScopeKey, Node.VariableReference);
	}

	/** What a node of a known kind adds under "properties"; the first kind the node is decides. */
	void WriteKindProperties(FJsonObject& Properties, const UEdGraphNode* Node, const TSharedPtr<FJsonValue>& MenuTitle, const TSharedPtr<FJsonObject>& Options, int32 Depth, TSet<const UEdGraph*>& VisitedGraphs)
	{
		if (const UK2Node_VariableGet* VariableGet = Cast<UK2Node_VariableGet>(Node))
		{
			WriteVariableProperties(Properties, *VariableGet);
			return;
		}
		if (const UK2Node_VariableSet* VariableSet = Cast<UK2Node_VariableSet>(Node))
		{
			WriteVariableProperties(Properties, *VariableSet);
			return;
		}
		if (const UK2Node_CallFunction* CallFunction = Cast<UK2Node_CallFunction>(Node))
		{
			Properties.SetField(FunctionNameKey, DocumentValues::Name(CallFunction->GetFunctionName()));
			WriteMemberParentClass(Properties, FunctionClassKey, CallFunction->FunctionReference);
			Properties.SetBoolField(IsPureKey, CallFunction->IsNodePure());
			return;
		}
		if (const UK2Node_Event* Event = Cast<UK2Node_Event>(Node))
		{
			Properties.SetField(NodeTitleKey, MenuTitle);
			WriteMemberParentClass(Properties, EventClassKey, Event->EventReference);
			return;
		}
		if (const UK2Node_Literal* Literal = Cast<UK2Node_Literal>(Node))
		{
			if (const UEdGraphPin* ValuePin = Literal->GetValuePin())
			{
				Properties.SetStringField(TEXT("value"), ValuePin->GetDefaultAsString());
			}
			return;
		}
		if (WriteAnimationNodeProperties(Properties, Node, Options, Depth, VisitedGraphs))
		{
			return;
		}
		if (const UK2Node_Composite* Composite = Cast<UK2Node_Composite>(Node))
		{
			// Written even when the composite has no graph, so the kind shows.
			TSharedPtr<FJsonObject> CompositeInfo = MakeShared<FJsonObject>();
			WriteBoundGraphBlock(*CompositeInfo, Composite->BoundGraph, Options, Depth, VisitedGraphs);
			Properties.SetObjectField(TEXT("composite_info"), CompositeInfo);
		}
	}
}

FString FBlueprintReadUtils::GetShortGuid(const FGuid& Guid)
{
	// The digits form prints A first as eight upper-case hex digits, so its first seven are A's top 28 bits.
	// Written by hand: every node and every link asks for one.
	static constexpr TCHAR Digits[] = TEXT("0123456789ABCDEF");
	TCHAR Text[8];
	for (int32 Index = 0; Index < 7; ++Index)
	{
		Text[Index] = Digits[(Guid.A >> (28 - 4 * Index)) & 0xF];
	}
	Text[7] = TCHAR(0);
	return FString(Text);
}

void FBlueprintReadUtils::ExtractTitleTargetClass(const FString& Title, FString& OutClass)
{
	static const FString Phrase(TEXT("Target is "));
	const int32 Found = Title.Find(Phrase, ESearchCase::IgnoreCase);
	OutClass = Found == INDEX_NONE ? FString() : Title.RightChop(Found + Phrase.Len());
}

TSharedPtr<FJsonObject> FBlueprintReadUtils::ReadNodeInfo(const UEdGraphNode* Node, TSharedPtr<FJsonObject> Options, int32 Depth, TSet<const UEdGraph*>& VisitedGraphs)
{
	if (!Node)
	{
		return nullptr;
	}

	TSharedPtr<FJsonObject> NodeObject = MakeShared<FJsonObject>();
	// Every key a node can carry, with the "pins" its readers add: one allocation for the object's slots.
	NodeObject->Values.Reserve(10);
	// No key carries the target class: the full title already holds "Target is ..." for a client that wants it.
	const TSharedPtr<FJsonValue> MenuTitle = DocumentValues::MenuTitle(Node);
	NodeObject->SetField(MenuTitleKey, MenuTitle);
	NodeObject->SetField(FullTitleKey, DocumentValues::Text(GetNodeTitleString(Node, ENodeTitleType::FullTitle)));
	if (const UK2Node* K2Node = Cast<UK2Node>(Node))
	{
		NodeObject->SetField(MenuCategoryKey, DocumentValues::Text(FString(K2Node->GetMenuCategory().ToString())));
	}
	NodeObject->SetField(ClassNameKey, DocumentValues::Name(Node->GetClass()->GetFName()));
	NodeObject->SetField(NodeGuidKey, DocumentValues::ShortGuid(Node));
	NodeObject->SetNumberField(PosXKey, Node->NodePosX);
	NodeObject->SetNumberField(PosYKey, Node->NodePosY);
	if (!Node->NodeComment.IsEmpty())
	{
		NodeObject->SetStringField(TEXT("comment"), Node->NodeComment);
	}

	const auto MakeProperties = [&]()
	{
		TSharedPtr<FJsonObject> Properties = MakeShared<FJsonObject>();
		WriteKindProperties(*Properties, Node, MenuTitle, Options, Depth, VisitedGraphs);
		return Properties;
	};
	if (const UK2Node_CallFunction* CallFunction = Cast<UK2Node_CallFunction>(Node))
	{
		// What a call's properties print depends on nothing else, so calls alike may share them.
		NodeObject->SetField(PropertiesKey, DocumentValues::CallProperties(CallFunction->GetFunctionName(), CallFunction->FunctionReference.GetMemberParentClass(), CallFunction->IsNodePure(), MakeProperties));
		return NodeObject;
	}
	NodeObject->SetObjectField(PropertiesKey, MakeProperties());
	return NodeObject;
}

TSharedPtr<FJsonObject> FBlueprintReadUtils::ReadPinInfo(const UEdGraphPin* Pin, const TSet<const UEdGraphNode*>* Nodes)
{
	if (!Pin)
	{
		return nullptr;
	}
	return DocumentValues::Pin(*Pin)->AsObject();
}

namespace UE::CalvornBlueprint::ReadPrivate
{
	TSharedPtr<FJsonObject> ReadNestedGraph(const UEdGraph* Graph, const TSharedPtr<FJsonObject>& Options, int32 Depth, const TSet<const UEdGraph*>& VisitedGraphs)
	{
		// A copy of the path for this one read, so what one nested graph marks never hides a graph from its siblings.
		TSet<const UEdGraph*> PathCopy = VisitedGraphs;
		return FBlueprintReadUtils::ReadEdGraph(Graph, Options, Depth + 1, PathCopy);
	}

	void WriteBoundGraphBlock(FJsonObject& Info, const UEdGraph* BoundGraph, const TSharedPtr<FJsonObject>& Options, int32 Depth, const TSet<const UEdGraph*>& VisitedGraphs)
	{
		if (!BoundGraph)
		{
			return;
		}
		Info.SetStringField(TEXT("bound_graph_name"), BoundGraph->GetName());
		Info.SetStringField(TEXT("bound_graph_class"), BoundGraph->GetClass()->GetName());
		Info.SetObjectField(TEXT("bound_graph"), ReadNestedGraph(BoundGraph, Options, Depth, VisitedGraphs));
		Info.SetNumberField(TEXT("bound_graph_depth"), Depth + 1);
	}

	TSharedPtr<FJsonObject> ReadNodeWithPins(const UEdGraphNode* Node, const TSharedPtr<FJsonObject>& Options, int32 Depth, TSet<const UEdGraph*>& VisitedGraphs, const TSet<const UEdGraphNode*>* FlowNodes)
	{
		TSharedPtr<FJsonObject> NodeObject = FBlueprintReadUtils::ReadNodeInfo(Node, Options, Depth, VisitedGraphs);
		if (!NodeObject)
		{
			return nullptr;
		}
		TArray<TSharedPtr<FJsonValue>> PinValues;
		PinValues.Reserve(Node->Pins.Num());
		for (const UEdGraphPin* Pin : Node->Pins)
		{
			if (Pin)
			{
				PinValues.Add(DocumentValues::Pin(*Pin));
			}
		}
		NodeObject->SetArrayField(PinsKey, MoveTemp(PinValues));
		return NodeObject;
	}
}
