// bp_populate_graph end to end: request JSON in through the executor, messages, data and telemetry out, and the
// graph afterwards, on Blueprints made by the tools themselves.

#include "ToolSurfaceTestSupport.h"

#include "BlueprintUtils.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "HAL/PlatformMisc.h"
#include "K2Node_FunctionEntry.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Kismet2/KismetEditorUtilities.h"
#include "Misc/Paths.h"
#include "ToolInfo.h"

using namespace ToolSurfaceTests;
using Calvorn::FToolResult;

namespace
{
	FString NodeGuidText(const UEdGraphNode* Node)
	{
		return Node->NodeGuid.ToString(EGuidFormats::Digits);
	}

	/** "Node.pin" for each link leaving an output of the node, in pin order: what a reader of the graph sees. */
	TArray<FString> OutgoingLinks(const UEdGraphNode* Node)
	{
		TArray<FString> Links;
		for (const UEdGraphPin* Pin : Node->Pins)
		{
			if (Pin->Direction != EGPD_Output)
			{
				continue;
			}
			for (const UEdGraphPin* Linked : Pin->LinkedTo)
			{
				Links.Add(Pin->PinName.ToString() + TEXT("->") + Linked->GetOwningNode()->GetClass()->GetName() + TEXT(".") + Linked->PinName.ToString());
			}
		}
		return Links;
	}

	class PopulateTool : public FToolSession
	{
	protected:
		void SetUp() override
		{
			// Objects outlive a test in memory, so each test makes its Blueprint under a folder of its own.
			Folder = FString(UTF8_TO_TCHAR(::testing::UnitTest::GetInstance()->current_test_info()->name()));
			BlueprintPath = FString::Printf(TEXT("/Game/%s/BP_Pawn"), *Folder);
			FPlatformMisc::SeedGuidGenerator(4242);
			const FToolResult Created = Call(Calvorn::ToolInfo::ToolName_BPCreateAsset,
				FString::Printf(TEXT("{\"path\": \"%s\", \"blueprint_parent_class\": {\"type\": \"native\", \"parent_path\": \"/Script/Engine.Pawn\"}}"), *BlueprintPath));
			ASSERT_FALSE(Created.HasFailed()) << Describe(Created);
			Blueprint = LoadBlueprint();
			ASSERT_NE(Blueprint, nullptr);

			FEdGraphPinType BoolType;
			BoolType.PinCategory = UEdGraphSchema_K2::PC_Boolean;
			FEdGraphPinType RealType;
			RealType.PinCategory = UEdGraphSchema_K2::PC_Real;
			RealType.PinSubCategory = UEdGraphSchema_K2::PC_Double;
			ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("bIsAlive"), BoolType, TEXT("true")));
			ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Health"), RealType, TEXT("100.0")));
			const FToolResult Compiled = Call(Calvorn::ToolInfo::ToolName_CompileBlueprint, FString::Printf(TEXT("{\"blueprint_paths\": [\"%s\"]}"), *BlueprintPath));
			ASSERT_FALSE(Compiled.HasFailed()) << Describe(Compiled);
		}

		UBlueprint* LoadBlueprint()
		{
			FToolResult Lookup;
			return FBlueprintUtils::LoadBlueprint(BlueprintPath, Lookup);
		}

		UEdGraph* EventGraph() const
		{
			return Blueprint->UbergraphPages.Num() > 0 ? Blueprint->UbergraphPages[0].Get() : nullptr;
		}

		/** A populate request on the Blueprint: Body holds the members after "path". */
		FToolResult Populate(const FString& Body)
		{
			return Call(Calvorn::ToolInfo::ToolName_BPPopulateGraph, FString::Printf(TEXT("{\"path\": \"%s\", %s}"), *BlueprintPath, *Body));
		}

		static TSharedPtr<FJsonObject> Telemetry(const FToolResult& Result)
		{
			const TSharedPtr<FJsonObject>* Object = nullptr;
			return Result.GetDatas()->TryGetObjectField(TEXT("telemetry"), Object) ? *Object : nullptr;
		}

		/** The data member that holds a JSON document as text ("created_nodes" and the like), parsed. */
		static TSharedPtr<FJsonObject> DataDocument(const FToolResult& Result, const TCHAR* Key)
		{
			FString Text;
			return Result.GetDatas()->TryGetStringField(Key, Text) ? ParseJson(Text) : nullptr;
		}

		/** The node made for a request guid, from "created_nodes_summary". */
		UEdGraphNode* CreatedNode(const FToolResult& Result, const TCHAR* RequestGuid) const
		{
			const TSharedPtr<FJsonObject> Summary = DataDocument(Result, TEXT("created_nodes_summary"));
			if (!Summary.IsValid())
			{
				return nullptr;
			}
			for (const TSharedPtr<FJsonValue>& Item : Summary->GetArrayField(TEXT("items")))
			{
				const TSharedPtr<FJsonObject> Entry = Item->AsObject();
				if (Entry->GetStringField(TEXT("request_guid")) == RequestGuid)
				{
					const FString Guid = Entry->GetStringField(TEXT("node_guid"));
					TArray<UEdGraph*> Graphs;
					Blueprint->GetAllGraphs(Graphs);
					for (UEdGraph* Graph : Graphs)
					{
						for (UEdGraphNode* Node : Graph->Nodes)
						{
							if (Node && NodeGuidText(Node) == Guid)
							{
								return Node;
							}
						}
					}
				}
			}
			return nullptr;
		}

		FString Folder;
		FString BlueprintPath;
		UBlueprint* Blueprint = nullptr;
	};
}

TEST_F(PopulateTool, RequestsThatCannotRunStopBeforeAnythingChanges)
{
	const FString OneNode = TEXT("\"nodes\": [{\"node_guid\": \"A\", \"menu_title\": \"Print String\"}]");
	const struct
	{
		FString Request;
		const TCHAR* Error;
	} Cases[] = {
		{TEXT("{}"), TEXT("Missing required field 'path'")},
		{FString::Printf(TEXT("{\"path\": \"%s\"}"), *BlueprintPath), TEXT("Missing required field 'graph_name'")},
		{FString::Printf(TEXT("{\"path\": \"%s\", \"graph_name\": \"EventGraph\", %s, \"functions\": []}"), *BlueprintPath, *OneNode),
			TEXT("'functions' array is no longer supported in bp_populate_graph. Use bp_create_graph for function/delegate creation.")},
		{FString::Printf(TEXT("{\"path\": \"%s\", \"graph_name\": \"EventGraph\", \"nodes\": [], \"connections\": []}"), *BlueprintPath),
			TEXT("No operations specified - must provide 'nodes' or 'connections' array")},
		{FString::Printf(TEXT("{\"path\": \"%s\", \"graph_name\": \"EventGraph\", \"nodes\": \"not an array\"}"), *BlueprintPath),
			TEXT("No operations specified - must provide 'nodes' or 'connections' array")},
		{FString::Printf(TEXT("{\"path\": \"%s\", \"graph_name\": \"NoSuchGraph\", %s}"), *BlueprintPath, *OneNode), TEXT("Graph 'NoSuchGraph' not found in blueprint")},
		{FString::Printf(TEXT("{\"path\": \"/Game/Nowhere/BP_Missing\", \"graph_name\": \"EventGraph\", %s}"), *OneNode), TEXT("Blueprint not found: /Game/Nowhere/BP_Missing")},
	};
	const int32 NodesBefore = EventGraph()->Nodes.Num();
	for (const auto& Case : Cases)
	{
		SCOPED_TRACE(U8(Case.Request));
		const FToolResult Result = Call(Calvorn::ToolInfo::ToolName_BPPopulateGraph, Case.Request);
		ASSERT_GE(Result.GetErrorMessages().Num(), 1) << Describe(Result);
		EXPECT_EQ(Result.GetErrorMessages().Last(), Case.Error) << Describe(Result);
		EXPECT_EQ(Result.GetSuccessMessages().Num(), 0);
		EXPECT_EQ(Telemetry(Result), nullptr) << "the menu is built only after the request and graph stand";
		EXPECT_TRUE(Result.GetDatas()->HasField(TEXT("duration_seconds")));
	}
	EXPECT_EQ(EventGraph()->Nodes.Num(), NodesBefore);
}

TEST_F(PopulateTool, BuildsAnEventGraphFromEventsCallsBranchesCastsVariablesAndACustomEvent)
{
	// The call to the custom event stands before the event in the request: custom events spawn first, so it binds.
	const FToolResult Result = Populate(FString::Printf(TEXT(R"("graph_name": "EventGraph",
		"nodes": [
			{"node_guid": "Begin", "class_name": "K2Node_Event", "node_metadata": {"event_name": "ReceiveBeginPlay"}},
			{"node_guid": "Tick", "class_name": "K2Node_Event", "node_metadata": {"event_name": "ReceiveTick"}},
			{"node_guid": "CallDamaged", "class_name": "K2Node_CallFunction", "target_class": "%s", "target_function": "OnDamaged"},
			{"node_guid": "Print", "class_name": "K2Node_CallFunction", "target_class": "KismetSystemLibrary", "target_function": "PrintString",
				"pins": [{"name": "In String", "action": "modify", "value": "Ready"}, {"name": "InString", "action": "modify", "value": "Ready"}]},
			{"node_guid": "Alive", "class_name": "K2Node_VariableGet", "node_metadata": {"variable_name": "bIsAlive"}},
			{"node_guid": "Branch", "menu_title": "Branch"},
			{"node_guid": "Cast", "class_name": "K2Node_DynamicCast", "target_class": "Character", "target_function": "unused"},
			{"node_guid": "Self", "class_name": "Self"},
			{"node_guid": "Damaged", "class_name": "K2Node_CustomEvent", "node_metadata": {"event_name": "OnDamaged"}}
		],
		"connections": [
			{"action": "add", "source_node_guid": "Begin", "source_pin_name": "then", "target_node_guid": "Print", "target_pin_name": "execute"},
			{"action": "add", "source_node_guid": "Tick", "source_pin_name": "then", "target_node_guid": "Branch", "target_pin_name": "execute"},
			{"action": "add", "source_node_guid": "Alive", "source_pin_name": "bIsAlive", "target_node_guid": "Branch", "target_pin_name": "Condition"},
			{"action": "add", "source_node_guid": "Branch", "source_pin_name": "true", "target_node_guid": "Cast", "target_pin_name": "execute"},
			{"action": "add", "source_node_guid": "Self", "source_pin_name": "self", "target_node_guid": "Cast", "target_pin_name": "Object"},
			{"action": "add", "source_node_guid": "Cast", "source_pin_name": "then", "target_node_guid": "CallDamaged", "target_pin_name": "execute"}
		])"), *BlueprintPath));

	ASSERT_TRUE(Result.WasSuccessful()) << Describe(Result);
	EXPECT_FALSE(Result.HasFailed()) << Describe(Result);
	ASSERT_GE(Result.GetSuccessMessages().Num(), 1);
	EXPECT_EQ(Result.GetSuccessMessages().Last(), TEXT("Created 9 nodes and 6 connections in graph 'EventGraph'")) << Describe(Result);
	EXPECT_EQ(Result.GetDatas()->GetStringField(TEXT("nodes_created")), TEXT("9"));
	EXPECT_EQ(Result.GetDatas()->GetStringField(TEXT("connections_failed")), TEXT("0"));

	const struct
	{
		const TCHAR* Key;
		TArray<FString> Value;
	} ExpectedLinks[] = {
		{TEXT("Begin"), {TEXT("then->K2Node_CallFunction.execute")}},
		{TEXT("Tick"), {TEXT("then->K2Node_IfThenElse.execute")}},
		{TEXT("Alive"), {TEXT("bIsAlive->K2Node_IfThenElse.Condition")}},
		{TEXT("Branch"), {TEXT("then->K2Node_DynamicCast.execute")}},
		{TEXT("Self"), {TEXT("self->K2Node_DynamicCast.Object")}},
		{TEXT("Cast"), {TEXT("then->K2Node_CallFunction.execute")}},
	};
	for (const auto& Expected : ExpectedLinks)
	{
		const UEdGraphNode* Node = CreatedNode(Result, Expected.Key);
		ASSERT_NE(Node, nullptr) << U8(Expected.Key);
		EXPECT_EQ(OutgoingLinks(Node), Expected.Value) << U8(Expected.Key);
	}
	const UEdGraphNode* Print = CreatedNode(Result, TEXT("Print"));
	EXPECT_EQ(Print->FindPin(TEXT("InString"))->DefaultValue, TEXT("Ready"));

	// The nodes the events reach are reported with their events; the self node feeds the cast and so joins Tick's flow.
	const TSharedPtr<FJsonObject> Attached = DataDocument(Result, TEXT("nodes_attached_to_events"));
	ASSERT_TRUE(Attached.IsValid());
	TMap<FString, FString> EventsByRequest;
	for (const TSharedPtr<FJsonValue>& Item : Attached->GetArrayField(TEXT("nodes")))
	{
		FString Events;
		for (const TSharedPtr<FJsonValue>& Event : Item->AsObject()->GetArrayField(TEXT("attached_to_events")))
		{
			Events += (Events.IsEmpty() ? TEXT("") : TEXT("|")) + Event->AsString();
		}
		EventsByRequest.Add(Item->AsObject()->GetStringField(TEXT("request_guid")), Events);
	}
	EXPECT_EQ(EventsByRequest.Num(), 6) << "events themselves are not listed";
	EXPECT_EQ(EventsByRequest.FindRef(TEXT("Print")), TEXT("Event BeginPlay"));
	EXPECT_EQ(EventsByRequest.FindRef(TEXT("Cast")), TEXT("Event Tick"));
	EXPECT_EQ(EventsByRequest.FindRef(TEXT("CallDamaged")), TEXT("Event Tick"));

	// Telemetry tells how each node was found.
	const TSharedPtr<FJsonObject> Stats = Telemetry(Result);
	ASSERT_TRUE(Stats.IsValid());
	EXPECT_GT(Stats->GetNumberField(TEXT("cam_action_count")), 1000);
	EXPECT_FALSE(Stats->GetBoolField(TEXT("context_sensitive")));
	const TSharedPtr<FJsonObject> Methods = Stats->GetObjectField(TEXT("spawn_methods"));
	EXPECT_EQ(Methods->GetNumberField(TEXT("deterministic_event")), 3);
	EXPECT_EQ(Methods->GetNumberField(TEXT("deterministic")), 3);
	const TSharedPtr<FJsonObject> Session = Stats->GetObjectField(TEXT("session_summary"));
	EXPECT_EQ(Session->GetNumberField(TEXT("nodes_created")), 9);
	EXPECT_EQ(Session->GetNumberField(TEXT("connections_successful")), 6);
	EXPECT_EQ(Session->GetNumberField(TEXT("connections_blocked")), 0);
	EXPECT_FALSE(Stats->HasField(TEXT("blocked_operations")));
	EXPECT_EQ(Stats->GetNumberField(TEXT("nodes_created")), 9);

	// Saved, and read back through the events it touched.
	EXPECT_TRUE(FPaths::FileExists(ContentFile(Folder / TEXT("BP_Pawn.uasset"))));
	ASSERT_EQ(Result.GetReadBacks().Num(), 1) << Describe(Result);
	EXPECT_EQ(Result.GetReadBacks()[0].ToolName, Calvorn::ToolInfo::ToolName_ReadBlueprintEvent);
	EXPECT_TRUE(Result.GetReadBacks()[0].Text.Contains(TEXT("Event BeginPlay")));
}

TEST_F(PopulateTool, FuzzyRequestsSpawnTheNodeTheEditorWouldPlace)
{
	const struct
	{
		const TCHAR* Node;
		const TCHAR* ExpectedClass;
		const TCHAR* ExpectedTitleStart;
	} Cases[] = {
		{TEXT(R"({"node_guid": "N", "menu_title": "Print String"})"), TEXT("K2Node_CallFunction"), TEXT("Print String")},
		{TEXT(R"({"node_guid": "N", "menu_title": "Get Actor Location"})"), TEXT("K2Node_CallFunction"), TEXT("Get Actor Location")},
		{TEXT(R"({"node_guid": "N", "menu_title": "GetActorLocation"})"), TEXT("K2Node_CallFunction"), TEXT("Get Actor Location")},
		{TEXT(R"({"node_guid": "N", "menu_title": "Branch"})"), TEXT("K2Node_IfThenElse"), TEXT("Branch")},
		{TEXT(R"({"node_guid": "N", "class_name": "Self", "menu_title": "anything at all"})"), TEXT("K2Node_Self"), TEXT("Self")},
		{TEXT(R"({"node_guid": "N", "menu_title": "Add Comment", "class_name": "EdGraphNode_Comment"})"), TEXT("EdGraphNode_Comment"), TEXT("Comment")},
	};
	for (const auto& Case : Cases)
	{
		SCOPED_TRACE(U8(Case.Node));
		const int32 NodesBefore = EventGraph()->Nodes.Num();
		const FToolResult Result = Populate(FString::Printf(TEXT("\"graph_name\": \"EventGraph\", \"nodes\": [%s]"), Case.Node));
		EXPECT_FALSE(Result.HasFailed()) << Describe(Result);
		ASSERT_EQ(EventGraph()->Nodes.Num(), NodesBefore + 1) << Describe(Result);
		const UEdGraphNode* Node = EventGraph()->Nodes.Last();
		EXPECT_EQ(Node->GetClass()->GetName(), Case.ExpectedClass);
		EXPECT_TRUE(Node->GetNodeTitle(ENodeTitleType::FullTitle).ToString().StartsWith(Case.ExpectedTitleStart)) << U8(Node->GetNodeTitle(ENodeTitleType::FullTitle).ToString());
		const TSharedPtr<FJsonObject> Methods = Telemetry(Result)->GetObjectField(TEXT("spawn_methods"));
		EXPECT_EQ(Methods->Values.Num(), 1);
	}
}

TEST_F(PopulateTool, AnUnknownTitleIsRefusedWithCandidatesAndNothingIsPlaced)
{
	const int32 NodesBefore = EventGraph()->Nodes.Num();
	const FToolResult Result = Populate(TEXT(R"("graph_name": "EventGraph", "nodes": [{"node_guid": "Ghost", "menu_title": "Get NonExistentVariable"}])"));
	ASSERT_TRUE(Result.WasSuccessful()) << Describe(Result);
	EXPECT_TRUE(Result.HasFailed());
	EXPECT_TRUE(AnyContains(Result.GetWarningMessages(), TEXT("[Failure] No confident fuzzy match for node 'Get NonExistentVariable'"))) << Describe(Result);
	EXPECT_EQ(EventGraph()->Nodes.Num(), NodesBefore);
	EXPECT_EQ(Result.GetSuccessMessages().Last(), TEXT("Created 0/1 nodes and 0/0 connections in graph 'EventGraph' (1 node(s) failed, 0 connection(s) failed)"));

	const TSharedPtr<FJsonObject> Candidates = DataDocument(Result, TEXT("candidate_matches"));
	ASSERT_TRUE(Candidates.IsValid());
	const TArray<TSharedPtr<FJsonValue>>& List = Candidates->GetArrayField(TEXT("candidates"));
	ASSERT_GT(List.Num(), 0);
	EXPECT_LE(List.Num(), 20);
	EXPECT_TRUE(List[0]->AsObject()->HasField(TEXT("confidence")));
	EXPECT_EQ(Telemetry(Result)->GetArrayField(TEXT("validation_failures")).Num(), 1);
}

TEST_F(PopulateTool, AFailedNodeBlocksItsConnectionsAndTheRestStands)
{
	const FToolResult Result = Populate(TEXT(R"("graph_name": "EventGraph",
		"nodes": [
			{"node_guid": "A", "class_name": "K2Node_CallFunction", "target_class": "KismetSystemLibrary", "target_function": "PrintString"},
			{"node_guid": "B", "class_name": "K2Node_CallFunction", "target_class": "NoSuchClassAnywhere", "target_function": "Nothing"},
			{"node_guid": "C", "class_name": "K2Node_CallFunction", "target_class": "KismetSystemLibrary", "target_function": "PrintString"}
		],
		"connections": [
			{"action": "add", "source_node_guid": "A", "source_pin_name": "then", "target_node_guid": "B", "target_pin_name": "execute"},
			{"action": "add", "source_node_guid": "B", "source_pin_name": "then", "target_node_guid": "C", "target_pin_name": "execute"},
			{"source_node_guid": "A", "source_pin_name": "then", "target_node_guid": "C", "target_pin_name": "execute"}
		])"));
	ASSERT_TRUE(Result.WasSuccessful()) << Describe(Result);
	EXPECT_TRUE(AnyContains(Result.GetWarningMessages(), TEXT("[Failure] Deterministic spawn unavailable for NoSuchClassAnywhere::Nothing (class or function - incorrect or not found).")));
	EXPECT_TRUE(AnyContains(Result.GetWarningMessages(), TEXT("Connection blocked: Target node 'B' not found (A.then -> B.execute)")));
	EXPECT_TRUE(AnyContains(Result.GetWarningMessages(), TEXT("Connection blocked: Source node 'B' not found (B.then -> C.execute)")));
	// The third entry has no "action": it is parsed as a removal, ignored, and still counted as attempted.
	EXPECT_EQ(Result.GetSuccessMessages().Last(), TEXT("Created 2/3 nodes and 0/3 connections in graph 'EventGraph' (1 node(s) failed, 3 connection(s) failed)"));
	EXPECT_EQ(OutgoingLinks(CreatedNode(Result, TEXT("A"))).Num(), 0);

	const TSharedPtr<FJsonObject> Session = Telemetry(Result)->GetObjectField(TEXT("session_summary"));
	EXPECT_EQ(Session->GetNumberField(TEXT("nodes_failed")), 1);
	EXPECT_EQ(Session->GetNumberField(TEXT("connections_attempted")), 3);
	EXPECT_EQ(Session->GetNumberField(TEXT("connections_successful")), 0);
	EXPECT_EQ(Session->GetNumberField(TEXT("connections_blocked")), 2);
	EXPECT_EQ(Telemetry(Result)->GetArrayField(TEXT("blocked_operations")).Num(), 2);
	// A expected one link and got none; failed nodes are not audited.
	const TArray<TSharedPtr<FJsonValue>>& Half = Telemetry(Result)->GetArrayField(TEXT("half_connected_nodes"));
	ASSERT_EQ(Half.Num(), 2);
	EXPECT_EQ(Half[0]->AsObject()->GetStringField(TEXT("node_id")), TEXT("A"));
	EXPECT_EQ(Half[0]->AsObject()->GetNumberField(TEXT("expected_connections")), 1);
	EXPECT_EQ(Half[0]->AsObject()->GetNumberField(TEXT("actual_connections")), 0);
}

TEST_F(PopulateTool, TheSchemaRefusesAWrongWireAndSaysWhy)
{
	const FToolResult Result = Populate(TEXT(R"("graph_name": "EventGraph",
		"nodes": [
			{"node_guid": "Print", "class_name": "K2Node_CallFunction", "target_class": "KismetSystemLibrary", "target_function": "PrintString"},
			{"node_guid": "Branch", "menu_title": "Branch"}
		],
		"connections": [
			{"action": "add", "source_node_guid": "Print", "source_pin_name": "then", "target_node_guid": "Branch", "target_pin_name": "Condition"}
		])"));
	ASSERT_TRUE(Result.WasSuccessful()) << Describe(Result);
	EXPECT_TRUE(AnyContains(Result.GetWarningMessages(), TEXT("[Failure] Schema forbids connection: "))) << Describe(Result);
	const TSharedPtr<FJsonObject> Stats = Telemetry(Result);
	EXPECT_EQ(Stats->GetObjectField(TEXT("session_summary"))->GetNumberField(TEXT("connections_blocked")), 0);
	const TArray<TSharedPtr<FJsonValue>>& Failures = Stats->GetArrayField(TEXT("connection_failures"));
	ASSERT_EQ(Failures.Num(), 1);
	EXPECT_FALSE(Failures[0]->AsObject()->GetStringField(TEXT("reason")).IsEmpty());
	EXPECT_EQ(Failures[0]->AsObject()->GetStringField(TEXT("source_pin")), TEXT("then"));
}

TEST_F(PopulateTool, ASecondCallWiresToTheRealGuidsTheFirstReturned)
{
	const FToolResult First = Populate(TEXT(R"("graph_name": "EventGraph",
		"nodes": [
			{"node_guid": "Begin", "class_name": "K2Node_Event", "node_metadata": {"event_name": "ReceiveBeginPlay"}},
			{"node_guid": "Print", "class_name": "K2Node_CallFunction", "target_class": "KismetSystemLibrary", "target_function": "PrintString"}
		])"));
	ASSERT_FALSE(First.HasFailed()) << Describe(First);
	const UEdGraphNode* Begin = CreatedNode(First, TEXT("Begin"));
	const UEdGraphNode* Print = CreatedNode(First, TEXT("Print"));
	ASSERT_NE(Begin, nullptr);
	ASSERT_NE(Print, nullptr);

	// The request ids of the first call mean nothing now; the real guids do, in full or in their short form.
	const FToolResult Stale = Populate(TEXT(R"("graph_name": "EventGraph", "connections": [
		{"action": "add", "source_node_guid": "Begin", "source_pin_name": "then", "target_node_guid": "Print", "target_pin_name": "execute"}])"));
	EXPECT_EQ(Telemetry(Stale), nullptr) << "no nodes, no menu, no telemetry";
	EXPECT_TRUE(AnyContains(Stale.GetWarningMessages(), TEXT("Connection blocked: Source node 'Begin' not found")));
	EXPECT_EQ(OutgoingLinks(Begin).Num(), 0);

	const FToolResult Second = Populate(FString::Printf(TEXT(R"("graph_name": "EventGraph", "connections": [
		{"action": "create", "source_node_guid": "%s", "source_pin_name": "then", "target_node_id": "%s", "target_pin_name": "execute"}])"),
		*NodeGuidText(Begin), *NodeGuidText(Print).Left(7).ToLower()));
	EXPECT_FALSE(Second.HasFailed()) << Describe(Second);
	EXPECT_EQ(Second.GetSuccessMessages().Last(), TEXT("Created 0 nodes and 1 connections in graph 'EventGraph'"));
	EXPECT_EQ(OutgoingLinks(Begin), TArray<FString>{TEXT("then->K2Node_CallFunction.execute")});
	EXPECT_FALSE(Second.GetDatas()->HasField(TEXT("created_nodes_summary")));
	ASSERT_EQ(Second.GetReadBacks().Num(), 1);
	EXPECT_EQ(Second.GetReadBacks()[0].ToolName, Calvorn::ToolInfo::ToolName_ReadBlueprintEvent);
}

TEST_F(PopulateTool, RepeatingAnOverrideReusesItAndAFunctionGraphRefusesEvents)
{
	const FString BeginPlay = TEXT(R"("graph_name": "eventgraph", "nodes": [{"node_guid": "Begin", "class_name": "K2Node_Event", "node_metadata": {"event_name": "ReceiveBeginPlay"}}])");
	const FToolResult First = Populate(BeginPlay);
	ASSERT_FALSE(First.HasFailed()) << Describe(First);
	const int32 NodesAfterFirst = EventGraph()->Nodes.Num();
	const FToolResult Again = Populate(BeginPlay);
	EXPECT_FALSE(Again.HasFailed()) << Describe(Again);
	EXPECT_TRUE(AnyContains(Again.GetWarningMessages(), TEXT("[Warning] Event 'ReceiveBeginPlay' already exists in EventGraph; reusing node ")));
	EXPECT_EQ(EventGraph()->Nodes.Num(), NodesAfterFirst);

	const FToolResult Function = Call(Calvorn::ToolInfo::ToolName_BPCreateGraph, FString::Printf(TEXT(R"({"path": "%s", "functions": [{"name": "Heal"}]})"), *BlueprintPath));
	ASSERT_FALSE(Function.HasFailed()) << Describe(Function);
	const FToolResult InFunction = Populate(TEXT(R"("graph_name": "Heal", "nodes": [{"node_guid": "E", "class_name": "K2Node_Event", "node_metadata": {"event_name": "ReceiveTick"}}])"));
	EXPECT_TRUE(AnyContains(InFunction.GetWarningMessages(), TEXT("[Failure] Cannot create event nodes outside EventGraph 'Heal'"))) << Describe(InFunction);
}

TEST_F(PopulateTool, AFunctionGraphTakesLocalVariablesAndIsReadBackAsAFunction)
{
	const FToolResult Function = Call(Calvorn::ToolInfo::ToolName_BPCreateGraph, FString::Printf(TEXT(R"({"path": "%s",
		"functions": [{"name": "ComputeDamage", "parameters": [{"name": "Base", "type": {"category": "real", "sub_category": "double"}}],
			"return_type": {"name": "Damage", "category": "real", "sub_category": "double"}}]})"), *BlueprintPath));
	ASSERT_FALSE(Function.HasFailed()) << Describe(Function);

	const FToolResult Result = Populate(TEXT(R"("graph_name": "ComputeDamage",
		"local_variables": {
			"TempDamage": {"type": {"category": "float"}, "default_variable_value": 0.0},
			"CachedTarget": {"type": {"category": "object", "sub_category_object": "/Script/Engine.Actor"}}
		},
		"nodes": [
			{"node_guid": "Print", "class_name": "K2Node_CallFunction", "target_class": "KismetSystemLibrary", "target_function": "PrintString"},
			{"node_guid": "Math", "class_name": "K2Node_MathExpression", "menu_title": "(Base * 2.0) + 1.5"},
			{"node_guid": "BadMath", "class_name": "K2Node_MathExpression", "menu_title": "(Base * "}
		],
		"connections": [
			{"action": "add", "source_node_guid": "Math", "source_pin_name": "ReturnValue", "target_node_guid": "Print", "target_pin_name": "Duration"}
		])"));
	ASSERT_TRUE(Result.WasSuccessful()) << Describe(Result);
	// The expression becomes a math node with the variable as its input; a formula that does not parse is refused.
	const UEdGraphNode* Math = CreatedNode(Result, TEXT("Math"));
	ASSERT_NE(Math, nullptr) << Describe(Result);
	EXPECT_EQ(Math->GetClass()->GetName(), TEXT("K2Node_MathExpression"));
	EXPECT_NE(Math->FindPin(TEXT("Base")), nullptr);
	EXPECT_EQ(OutgoingLinks(Math), TArray<FString>{TEXT("ReturnValue->K2Node_CallFunction.Duration")});
	EXPECT_EQ(CreatedNode(Result, TEXT("BadMath")), nullptr);
	EXPECT_TRUE(AnyContains(Result.GetWarningMessages(), TEXT("[Failure] Invalid math expression '(Base * ': "))) << Describe(Result);
	EXPECT_EQ(Result.GetDatas()->GetStringField(TEXT("nodes_failed")), TEXT("1"));

	const TSharedPtr<FJsonObject> Stats = Telemetry(Result);
	EXPECT_EQ(Stats->GetNumberField(TEXT("local_variables_added")), 2);
	EXPECT_EQ(Stats->GetNumberField(TEXT("local_variables_removed")), 0);

	UEdGraph* Graph = nullptr;
	for (UEdGraph* Candidate : Blueprint->FunctionGraphs)
	{
		Graph = Candidate->GetName() == TEXT("ComputeDamage") ? Candidate : Graph;
	}
	ASSERT_NE(Graph, nullptr);
	const UK2Node_FunctionEntry* Entry = nullptr;
	for (UEdGraphNode* Node : Graph->Nodes)
	{
		Entry = Entry ? Entry : Cast<UK2Node_FunctionEntry>(Node);
	}
	ASSERT_NE(Entry, nullptr);
	ASSERT_EQ(Entry->LocalVariables.Num(), 2);
	EXPECT_EQ(Entry->LocalVariables[0].VarName, FName(TEXT("TempDamage")));
	EXPECT_EQ(Entry->LocalVariables[0].VarType.PinCategory, UEdGraphSchema_K2::PC_Real);
	EXPECT_EQ(Entry->LocalVariables[0].VarType.PinSubCategory, UEdGraphSchema_K2::PC_Float);

	// Outside the event graph the created nodes are listed as they are, and the function is read back.
	const TSharedPtr<FJsonObject> Created = DataDocument(Result, TEXT("created_nodes"));
	ASSERT_TRUE(Created.IsValid());
	EXPECT_GE(Created->GetArrayField(TEXT("nodes")).Num(), 1);
	ASSERT_GE(Result.GetReadBacks().Num(), 1);
	EXPECT_EQ(Result.GetReadBacks()[0].ToolName, Calvorn::ToolInfo::ToolName_ReadBlueprintFunction);

	// A local variable on the event graph is a plain warning, and the nodes still come.
	const FToolResult OnEventGraph = Populate(TEXT(R"("graph_name": "EventGraph", "local_variables": {"X": {"type": {"category": "int"}}},
		"nodes": [{"node_guid": "B", "menu_title": "Branch"}])"));
	EXPECT_TRUE(AnyContains(OnEventGraph.GetWarningMessages(), TEXT("Local variables are only supported in function graphs")));
	EXPECT_EQ(OnEventGraph.GetDatas()->GetStringField(TEXT("nodes_created")), TEXT("1"));
}

TEST_F(PopulateTool, NodeEntriesThatAreNotAdditionsCountAsNotCreated)
{
	const FToolResult Result = Populate(TEXT(R"("graph_name": "EventGraph", "nodes": [
		{"node_guid": "Kept", "menu_title": "Branch"},
		{"node_guid": "Edited", "action": "modify", "menu_title": "Branch"},
		{"node_guid": "Dropped", "action": "REMOVE", "menu_title": "Branch"},
		{"node_guid": "Created", "action": "create", "menu_title": "Branch"},
		"not an object"
	])"));
	ASSERT_TRUE(Result.WasSuccessful()) << Describe(Result);
	// "create" is no word for a node, so it keeps the default: an addition. The string is no node at all.
	EXPECT_EQ(Result.GetSuccessMessages().Last(), TEXT("Created 2/4 nodes and 0/0 connections in graph 'EventGraph' (2 node(s) failed, 0 connection(s) failed)"));
	EXPECT_NE(CreatedNode(Result, TEXT("Kept")), nullptr);
	EXPECT_NE(CreatedNode(Result, TEXT("Created")), nullptr);
	EXPECT_EQ(CreatedNode(Result, TEXT("Edited")), nullptr);
	EXPECT_EQ(Telemetry(Result)->GetObjectField(TEXT("session_summary"))->GetNumberField(TEXT("nodes_failed")), 0)
		<< "entries that were never spawned did not fail to spawn";
}

TEST_F(PopulateTool, TheEventRouteMakesANamedEventGraphAndReadsBackFloatingNodes)
{
	const FToolResult Result = Populate(TEXT(R"("graph_name": "Combat", "graph_type": "Event", "nodes": [
		{"node_guid": "Lonely", "menu_title": "Branch"}
	])"));
	ASSERT_FALSE(Result.HasFailed()) << Describe(Result);
	const UEdGraph* Combat = nullptr;
	for (const UEdGraph* Page : Blueprint->UbergraphPages)
	{
		Combat = Page->GetName() == TEXT("Combat") ? Page : Combat;
	}
	ASSERT_NE(Combat, nullptr) << "the event route makes the event graph it is asked for";
	EXPECT_EQ(Combat->Nodes.Last()->GetClass()->GetName(), TEXT("K2Node_IfThenElse"));
	// No event reaches the branch: it is read back by its own title, and not listed among attached nodes.
	ASSERT_EQ(Result.GetReadBacks().Num(), 1);
	EXPECT_EQ(Result.GetReadBacks()[0].ToolName, Calvorn::ToolInfo::ToolName_ReadBlueprintEvent);
	const TSharedPtr<FJsonObject> Attached = DataDocument(Result, TEXT("nodes_attached_to_events"));
	ASSERT_TRUE(Attached.IsValid());
	EXPECT_EQ(Attached->GetArrayField(TEXT("nodes")).Num(), 0);
}
