#include "BlueprintReadUtils.h"
#include "BlueprintReadUtilsPrivate.h"

#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphPin.h"
#include "ToolInfo.h"

using namespace UE::CalvornBlueprint::ReadPrivate;

TSharedPtr<FJsonObject> FBlueprintReadUtils::ReadEdGraph(const UEdGraph* Graph, TSharedPtr<FJsonObject> Options)
{
	TSet<const UEdGraph*> VisitedGraphs;
	return ReadEdGraph(Graph, MoveTemp(Options), 0, VisitedGraphs);
}

TSharedPtr<FJsonObject> FBlueprintReadUtils::ReadEdGraph(const UEdGraph* Graph, TSharedPtr<FJsonObject> Options, int32 Depth, TSet<const UEdGraph*>& VisitedGraphs)
{
	TSharedPtr<FJsonObject> GraphObject = MakeShared<FJsonObject>();
	if (!Graph)
	{
		GraphObject->SetStringField(TEXT("error"), TEXT("Invalid graph provided"));
		return GraphObject;
	}

	FString ReadTool;
	if (!TryGetReadTool(Options, ReadTool))
	{
		GraphObject->SetStringField(TEXT("error"), MissingFieldMessage(Calvorn::ToolInfo::FieldName_ReadTool));
		return GraphObject;
	}

	// Past the limit the depth is what the client needs to see, even when the graph also recurs.
	if (Depth > MaxGraphReadDepth || VisitedGraphs.Contains(Graph))
	{
		GraphObject->SetStringField(TEXT("error"), Depth > MaxGraphReadDepth ? TEXT("Maximum recursion depth exceeded") : TEXT("Graph already visited"));
		GraphObject->SetNumberField(TEXT("recursion_depth"), Depth);
		return GraphObject;
	}

	VisitedGraphs.Add(Graph);

	GraphObject->SetStringField(TEXT("name"), Graph->GetName());
	GraphObject->SetStringField(TEXT("class"), Graph->GetClass()->GetName());
	GraphObject->SetStringField(TEXT("schema"), GetSchemaClassName(Graph));
	GraphObject->SetNumberField(TEXT("hierarchy_depth"), Depth);
	GraphObject->SetStringField(TEXT("graph_path"), Graph->GetPathName());

	// A schema read names graphs without listing what they hold: the item tools give the detail.
	if (!ReadTool.Equals(Calvorn::ToolInfo::ToolName_ReadBlueprintSchema, ESearchCase::IgnoreCase))
	{
		TArray<TSharedPtr<FJsonValue>> NodeValues;
		NodeValues.Reserve(Graph->Nodes.Num());
		for (const UEdGraphNode* Node : Graph->Nodes)
		{
			if (!Node)
			{
				continue;
			}
			if (TSharedPtr<FJsonObject> NodeObject = ReadNodeWithPins(Node, Options, Depth, VisitedGraphs, nullptr))
			{
				NodeValues.Add(MakeValue(NodeObject));
			}
		}
		GraphObject->SetArrayField(TEXT("nodes"), MoveTemp(NodeValues));
		WriteStateMachineGraphInfo(*GraphObject, Graph);
	}

	VisitedGraphs.Remove(Graph);
	return GraphObject;
}
