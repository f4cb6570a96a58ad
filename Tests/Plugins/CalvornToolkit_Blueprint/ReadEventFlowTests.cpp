#include "ReadTestSupport.h"

#include "BlueprintReadUtils.h"
#include "EdGraph/EdGraphNode_Comment.h"
#include "K2Node_CallFunction.h"
#include "K2Node_CustomEvent.h"
#include "K2Node_Event.h"

using namespace ReadTests;

namespace
{
	const TCHAR* const SchemaTool = TEXT("read_blueprint_schema");
	const TCHAR* const EventTool = TEXT("read_blueprint_event");
	const char* const Unattached = "nodes_not_attached_to_an_event";

	/**
	 * Two events and what hangs off them:
	 *   BeginPlay.then -> A.execute; A.then -> B.execute; Pure.ReturnValue -> A.Duration
	 *   OpenDoor.then -> C.execute; Pure.ReturnValue -> C.Duration (reachable from both events)
	 *   Before.then -> A.execute (drives A but no event reaches it)
	 *   Loose (no links), a comment, and Reset.then -> E.execute on their own.
	 * The pure node's output leads into the other event's chain, so each of the first two flows reaches the
	 * other's prints: a flow follows every output, data ones included.
	 */
	class ReadEventFlow : public FReadFixture
	{
	protected:
		ReadEventFlow()
		{
			Blueprint = MakeBlueprint(FindClass(TEXT("/Script/Engine.Actor")), TEXT("BP_Flows"));
			Graph = MakeGraph(Blueprint, TEXT("Flows"));
			UClass* Actor = FindClass(TEXT("/Script/Engine.Actor"));
			BeginPlay = Place<UK2Node_Event>(Graph, [Actor](UK2Node_Event& Node)
			{
				Node.EventReference.SetExternalMember(TEXT("ReceiveBeginPlay"), Actor);
				Node.bOverrideFunction = true;
			});
			PrintA = PlacePrint();
			PrintB = PlacePrint();
			const UFunction* Add = FindFunction(TEXT("/Script/Engine.KismetMathLibrary"), TEXT("Add_DoubleDouble"));
			Pure = Place<UK2Node_CallFunction>(Graph, [Add](UK2Node_CallFunction& Node) { Node.SetFromFunction(Add); });
			OpenDoor = Place<UK2Node_CustomEvent>(Graph, [](UK2Node_CustomEvent& Node) { Node.CustomFunctionName = TEXT("OpenDoor"); });
			PrintC = PlacePrint();
			Before = PlacePrint();
			Loose = PlacePrint();
			Comment = Place<UEdGraphNode_Comment>(Graph);
			Reset = Place<UK2Node_CustomEvent>(Graph, [](UK2Node_CustomEvent& Node) { Node.CustomFunctionName = TEXT("Reset"); });
			PrintE = PlacePrint();
			Link(Reset, TEXT("then"), PrintE, TEXT("execute"));

			Link(BeginPlay, TEXT("then"), PrintA, TEXT("execute"));
			Link(PrintA, TEXT("then"), PrintB, TEXT("execute"));
			Link(Pure, TEXT("ReturnValue"), PrintA, TEXT("Duration"));
			Link(OpenDoor, TEXT("then"), PrintC, TEXT("execute"));
			Link(Pure, TEXT("ReturnValue"), PrintC, TEXT("Duration"));
			Link(Before, TEXT("then"), PrintA, TEXT("execute"));
		}

		UK2Node_CallFunction* PlacePrint()
		{
			const UFunction* Print = FindFunction(TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("PrintString"));
			return Place<UK2Node_CallFunction>(Graph, [Print](UK2Node_CallFunction& Node) { Node.SetFromFunction(Print); });
		}

		static std::string Title(const UEdGraphNode* Node)
		{
			return U8(Node->GetNodeTitle(ENodeTitleType::FullTitle).ToString());
		}

		/** The node guids of a flow, in flow order. */
		static std::vector<std::string> FlowGuids(const TSharedPtr<FJsonObject>& Flow)
		{
			return Column(Flow, TEXT("nodes"), TEXT("node_guid"));
		}

		static std::vector<std::string> Guids(std::initializer_list<const UEdGraphNode*> Nodes)
		{
			std::vector<std::string> Result;
			for (const UEdGraphNode* Node : Nodes)
			{
				Result.push_back(ShortGuidOf(Node));
			}
			return Result;
		}

		TSharedPtr<FJsonObject> ReadEvents(const FString& Names, bool bFinalize = false)
		{
			const FString Extra = FString::Printf(TEXT("{\"events\": %s, \"finalize_modifications\": %s}"), *Names, bFinalize ? TEXT("true") : TEXT("false"));
			return FBlueprintReadUtils::ReadEventGraph(Graph, Request(EventTool, Extra), false, TSet<FString>());
		}

		UBlueprint* Blueprint = nullptr;
		UEdGraph* Graph = nullptr;
		UK2Node_Event* BeginPlay = nullptr;
		UK2Node_CallFunction* PrintA = nullptr;
		UK2Node_CallFunction* PrintB = nullptr;
		UK2Node_CallFunction* Pure = nullptr;
		UK2Node_CustomEvent* OpenDoor = nullptr;
		UK2Node_CallFunction* PrintC = nullptr;
		UK2Node_CallFunction* Before = nullptr;
		UK2Node_CallFunction* Loose = nullptr;
		UEdGraphNode_Comment* Comment = nullptr;
		UK2Node_CustomEvent* Reset = nullptr;
		UK2Node_CallFunction* PrintE = nullptr;
	};
}

TEST_F(ReadEventFlow, ASchemaReadNamesEachFlowAndListsOnlyTheLooseNodes)
{
	const TSharedPtr<FJsonObject> Object = FBlueprintReadUtils::ReadEventGraph(Graph, Request(SchemaTool), false, TSet<FString>());
	EXPECT_EQ(Keys(Object), (std::vector<std::string>{"name", "class", "schema", "event_flows"}));
	EXPECT_EQ(Str(Object, TEXT("name")), "Flows");
	EXPECT_EQ(Str(Object, TEXT("class")), "EdGraph");
	EXPECT_EQ(Str(Object, TEXT("schema")), "EdGraphSchema_K2");

	const TArray<TSharedPtr<FJsonObject>> Flows = Objects(Object, TEXT("event_flows"));
	ASSERT_EQ(Flows.Num(), 4);
	EXPECT_EQ(Keys(Flows[0]), (std::vector<std::string>{"event_type", "event_title"}));
	EXPECT_EQ(Str(Flows[0], TEXT("event_type")), "K2Node_Event");
	EXPECT_EQ(Str(Flows[0], TEXT("event_title")), Title(BeginPlay));
	EXPECT_EQ(Str(Flows[1], TEXT("event_type")), "K2Node_CustomEvent");
	EXPECT_EQ(Str(Flows[1], TEXT("event_title")), Title(OpenDoor));
	EXPECT_EQ(Str(Flows[2], TEXT("event_title")), Title(Reset));

	// The loose flow is last and always has its nodes: what drives a flow from outside, and what is unlinked.
	EXPECT_EQ(Keys(Flows[3]), (std::vector<std::string>{"event_type", "event_title", "nodes"}));
	EXPECT_EQ(Str(Flows[3], TEXT("event_type")), Unattached);
	EXPECT_EQ(Str(Flows[3], TEXT("event_title")), Unattached);
	EXPECT_EQ(FlowGuids(Flows[3]), Guids({Before, Loose})) << "comments belong to no flow";
	EXPECT_EQ(Keys(Objects(Flows[3], TEXT("nodes"))[0]).back(), "pins");
}

TEST_F(ReadEventFlow, AnEventReadWalksBreadthFirstAndNeverBackAlongExecution)
{
	const TSharedPtr<FJsonObject> Object = ReadEvents(TEXT("[{\"event_name\": \"BeginPlay\"}]"));
	const TArray<TSharedPtr<FJsonObject>> Flows = Objects(Object, TEXT("event_flows"));
	ASSERT_EQ(Flows.Num(), 2);
	EXPECT_EQ(Keys(Flows[0]), (std::vector<std::string>{"event_type", "event_title", "nodes"}));
	// A's "then" comes before its Duration input, so B is queued before the pure node that feeds A; the pure
	// node's output then leads on to C. Before drives A through A's execution input and is never reached.
	EXPECT_EQ(FlowGuids(Flows[0]), Guids({BeginPlay, PrintA, PrintB, Pure, PrintC}));
	EXPECT_EQ(Str(Flows[1], TEXT("event_title")), Unattached);
	// OpenDoor's flow was not asked for, but its nodes are attached all the same.
	EXPECT_EQ(FlowGuids(Flows[1]), Guids({Before, Loose}));

	// Every node reads from the top, with its pins.
	const TSharedPtr<FJsonObject> First = Objects(Flows[0], TEXT("nodes"))[0];
	EXPECT_EQ(Keys(First), (std::vector<std::string>{"menu_title", "full_title", "menu_category", "class_name", "node_guid", "pos_x", "pos_y", "properties", "pins"}));
	EXPECT_EQ(Str(Obj(First, TEXT("properties")), TEXT("event_class")), "Actor");
}

TEST_F(ReadEventFlow, ANodeReachableFromTwoEventsIsInBoth)
{
	const TSharedPtr<FJsonObject> Object = ReadEvents(TEXT("[{\"event_name\": \"opendoor\"}, {\"event_name\": \"Event BeginPlay\"}]"));
	const TArray<TSharedPtr<FJsonObject>> Flows = Objects(Object, TEXT("event_flows"));
	ASSERT_EQ(Flows.Num(), 3);
	EXPECT_EQ(FlowGuids(Flows[0]), Guids({BeginPlay, PrintA, PrintB, Pure, PrintC}));
	EXPECT_EQ(FlowGuids(Flows[1]), Guids({OpenDoor, PrintC, Pure, PrintA, PrintB}));
	EXPECT_EQ(Str(Flows[2], TEXT("event_type")), Unattached);
}

TEST_F(ReadEventFlow, NamesThatMatchNothingBecomeStatusElementsBeforeTheLooseFlow)
{
	struct FCase
	{
		const TCHAR* Names;
		bool bFinalize;
		std::vector<std::string> Titles;
		std::vector<std::string> Statuses;
	};
	const std::string Begin = Title(BeginPlay);
	const FCase Cases[] = {
		{TEXT("[{\"event_name\": \"Jump\"}]"), false, {"Jump", Unattached}, {"not_found", "<absent>"}},
		{TEXT("[{\"event_name\": \"Jump\"}]"), true, {"Jump", Unattached}, {"deleted", "<absent>"}},
		{TEXT("[{\"event_name\": \"NODES_not_attached_to_an_event\"}]"), false, {Unattached}, {"<absent>"}},
		// Both names match the one event: the first in request order takes it, the other is reported.
		{TEXT("[{\"event_name\": \"BeginPlay\"}, {\"event_name\": \"Event BeginPlay\"}]"), false, {Begin, "Event BeginPlay", Unattached}, {"<absent>", "not_found", "<absent>"}},
		// Entries that are no objects, or name nothing, are skipped; an empty filter leaves the loose flow alone.
		{TEXT("[\"BeginPlay\", {\"event_name\": 3}, {}]"), false, {Unattached}, {"<absent>"}},
		{TEXT("[]"), false, {Unattached}, {"<absent>"}},
	};
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(U8(Case.Names));
		const TSharedPtr<FJsonObject> Object = ReadEvents(Case.Names, Case.bFinalize);
		EXPECT_EQ(Column(Object, TEXT("event_flows"), TEXT("event_title")), Case.Titles);
		EXPECT_EQ(Column(Object, TEXT("event_flows"), TEXT("status")), Case.Statuses);
		for (const TSharedPtr<FJsonObject>& Flow : Objects(Object, TEXT("event_flows")))
		{
			if (Flow->HasField(TEXT("status")))
			{
				EXPECT_EQ(Keys(Flow), (std::vector<std::string>{"event_title", "status"}));
			}
		}
	}
}

TEST_F(ReadEventFlow, FilteringByNodesKeepsTheFlowsHoldingThem)
{
	TSet<FString> Wanted;
	Wanted.Add(FBlueprintReadUtils::GetShortGuid(PrintE->NodeGuid));
	const TSharedPtr<FJsonObject> Object = FBlueprintReadUtils::ReadEventGraph(Graph, Request(SchemaTool), true, Wanted);
	EXPECT_EQ(Column(Object, TEXT("event_flows"), TEXT("event_title")), (std::vector<std::string>{Title(Reset), Unattached}));
	// A flow left out keeps its nodes attached: they do not fall into the loose flow.
	EXPECT_EQ(FlowGuids(Objects(Object, TEXT("event_flows")).Last()), Guids({Before, Loose}));
}

TEST_F(ReadEventFlow, EarlyAnswersForABadGraphOrRequest)
{
	const TSharedPtr<FJsonObject> Null = FBlueprintReadUtils::ReadEventGraph(nullptr, Request(EventTool), false, TSet<FString>());
	EXPECT_EQ(Keys(Null), (std::vector<std::string>{"error"}));
	EXPECT_EQ(Str(Null, TEXT("error")), "Invalid graph provided");

	const TSharedPtr<FJsonObject> NoTool = FBlueprintReadUtils::ReadEventGraph(Graph, Request(nullptr), false, TSet<FString>());
	ASSERT_TRUE(NoTool.IsValid());
	EXPECT_EQ(Keys(NoTool), std::vector<std::string>{});
}

TEST_F(ReadEventFlow, AGraphWithoutEventsHasOnlyTheLooseFlow)
{
	UEdGraph* Plain = MakeGraph(Blueprint, TEXT("Plain"));
	UK2Node_CallFunction* Print = nullptr;
	{
		const UFunction* PrintFunction = FindFunction(TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("PrintString"));
		Print = Place<UK2Node_CallFunction>(Plain, [PrintFunction](UK2Node_CallFunction& Node) { Node.SetFromFunction(PrintFunction); });
	}
	Place<UEdGraphNode_Comment>(Plain);
	const TSharedPtr<FJsonObject> Object = FBlueprintReadUtils::ReadEventGraph(Plain, Request(EventTool), false, TSet<FString>());
	const TArray<TSharedPtr<FJsonObject>> Flows = Objects(Object, TEXT("event_flows"));
	ASSERT_EQ(Flows.Num(), 1);
	EXPECT_EQ(FlowGuids(Flows[0]), Guids({Print}));
}
