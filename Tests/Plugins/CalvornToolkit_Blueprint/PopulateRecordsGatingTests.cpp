// Connections gated on their nodes: an end that names no node is reported as blocked, and created nodes that got
// fewer links than asked are audited. Nodes are found by request id, then by real guid in any of its forms.

#include "ReadTestSupport.h"

#include "BlueprintMatchingUtils.h"
#include "K2Node_CallFunction.h"
#include "K2Node_IfThenElse.h"
#include "Populate/DependencyGating.h"
#include "Populate/GraphModificationRecords.h"
#include "Populate/PinConnectionUtils.h"
#include "Populate/PopulateSession.h"

using namespace ReadTests;

namespace
{
	class PopulateRecordsGating : public FReadFixture
	{
	protected:
		PopulateRecordsGating()
		{
			Blueprint = MakeBlueprint(FindClass(TEXT("/Script/Engine.Actor")), TEXT("BP_Gating"));
			Graph = MakeGraph(Blueprint, TEXT("Gating"));
			Existing = Place<UK2Node_IfThenElse>(Graph);
			NodeA = Place<UK2Node_IfThenElse>(Graph);
			const UFunction* Print = FindFunction(TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("PrintString"));
			NodeC = Place<UK2Node_CallFunction>(Graph, [Print](UK2Node_CallFunction& Node) { Node.SetFromFunction(Print); });
			Session.CreatedNodes.Add(TEXT("NodeA"), NodeA);
			Session.CreatedNodes.Add(TEXT("NodeC"), NodeC);
		}

		static FConnectionModificationRecord Connection(const TCHAR* Source, const TCHAR* SourcePin, const TCHAR* Target, const TCHAR* TargetPin)
		{
			FConnectionModificationRecord Record;
			Record.Action = EConnectionAction::Add;
			Record.SourceNodeGuid = Source;
			Record.SourcePinName = SourcePin;
			Record.TargetNodeGuid = Target;
			Record.TargetPinName = TargetPin;
			return Record;
		}

		/** Resolves both ends as the driver does, source first, and connects when both stand. */
		bool Run(const FConnectionModificationRecord& Record, Calvorn::FToolResult& Result)
		{
			FConnectionEndpointResolver Resolver(Session, Graph, Record, Result);
			UEdGraphNode* Source = Resolver.ResolveEndpoint(Record.SourceNodeGuid, TEXT("Source"));
			UEdGraphNode* Target = Resolver.ResolveEndpoint(Record.TargetNodeGuid, TEXT("Target"));
			return Source && Target && FPinConnectionUtils::ConnectPins(Graph, Source, Record.SourcePinName, Target, Record.TargetPinName, Result);
		}

		static TArray<TSharedPtr<FJsonValue>> ConnectionsJson(const char* Text)
		{
			const TSharedPtr<FJsonObject> Wrapper = ParseJson(FString(UTF8_TO_TCHAR(Text)));
			EXPECT_TRUE(Wrapper.IsValid()) << Text;
			const TArray<TSharedPtr<FJsonValue>>* Array = nullptr;
			return Wrapper.IsValid() && Wrapper->TryGetArrayField(TEXT("connections"), Array) ? *Array : TArray<TSharedPtr<FJsonValue>>();
		}

		UBlueprint* Blueprint = nullptr;
		UEdGraph* Graph = nullptr;
		UK2Node_IfThenElse* Existing = nullptr;
		UK2Node_IfThenElse* NodeA = nullptr;
		UK2Node_CallFunction* NodeC = nullptr;
		FPopulateSession Session;
	};
}

TEST_F(PopulateRecordsGating, FindNodeByGuidAcceptsEveryTextForm)
{
	const FGuid Guid = Existing->NodeGuid;
	struct FCase
	{
		FString Text;
		const UEdGraphNode* Expected;
	};
	const FCase Cases[] = {
		{Guid.ToString(EGuidFormats::Digits), Existing},
		{Guid.ToString(EGuidFormats::Digits).ToLower(), Existing},
		{Guid.ToString(EGuidFormats::DigitsWithHyphens), Existing},
		{Guid.ToString(EGuidFormats::DigitsWithHyphensInBraces), Existing},
		{Guid.ToString(EGuidFormats::Digits).Left(7), Existing},
		{Guid.ToString(EGuidFormats::Digits).Left(7).ToLower(), Existing},
		{TEXT(" ") + Guid.ToString(EGuidFormats::Digits).Left(7) + TEXT(" "), Existing},
		{NodeC->NodeGuid.ToString(EGuidFormats::DigitsWithHyphens), NodeC},
		// Not a guid of this graph, or not a form that names one.
		{Guid.ToString(EGuidFormats::Digits).Left(6), nullptr},
		{Guid.ToString(EGuidFormats::Digits).Left(8), nullptr},
		{FGuid(1, 2, 3, 4).ToString(), nullptr},
		{TEXT("NodeA"), nullptr},
		{FString(), nullptr},
	};
	for (const FCase& Case : Cases)
	{
		EXPECT_EQ(FBlueprintMatchingUtils::FindNodeByGuid(Graph, Case.Text), Case.Expected) << U8(Case.Text);
	}
	EXPECT_EQ(FBlueprintMatchingUtils::FindNodeByGuid(nullptr, Guid.ToString()), nullptr);
}

TEST_F(PopulateRecordsGating, ResolvesCreatedThenExistingNodes)
{
	Calvorn::FToolResult Result;
	const FString ExistingShort = Existing->NodeGuid.ToString(EGuidFormats::Digits).Left(7);
	EXPECT_TRUE(Run(Connection(*ExistingShort, TEXT("then"), TEXT("NodeC"), TEXT("execute")), Result)) << Describe(Result);
	EXPECT_TRUE(Run(Connection(TEXT("NodeA"), TEXT("true"), TEXT("nodec"), TEXT("execute")), Result)) << "request ids match without case\n" << Describe(Result);
	EXPECT_TRUE(Result.GetWarningMessages().IsEmpty()) << Describe(Result);
	EXPECT_TRUE(Session.BlockedOperations.IsEmpty());
	EXPECT_EQ(NodeC->FindPin(TEXT("execute"))->LinkedTo.Num(), 2);
}

TEST_F(PopulateRecordsGating, BlockedEndsNameTheMissingNodeOncePerSide)
{
	Session.FailedNodes.Add(TEXT("NodeB"));
	struct FCase
	{
		FConnectionModificationRecord Record;
		std::vector<std::string> Blocked;
	};
	const FCase Cases[] = {
		{Connection(TEXT("NodeA"), TEXT("then"), TEXT("NodeB"), TEXT("execute")),
			{"Connection blocked: Target node 'NodeB' not found (NodeA.then -> NodeB.execute)"}},
		{Connection(TEXT("NodeB"), TEXT("then"), TEXT("NodeC"), TEXT("execute")),
			{"Connection blocked: Source node 'NodeB' not found (NodeB.then -> NodeC.execute)"}},
		// Both ends are always tried, so both missing give two entries.
		{Connection(TEXT("Ghost"), TEXT("then"), TEXT("NodeB"), TEXT("execute")),
			{"Connection blocked: Source node 'Ghost' not found (Ghost.then -> NodeB.execute)",
			 "Connection blocked: Target node 'NodeB' not found (Ghost.then -> NodeB.execute)"}},
		{Connection(TEXT(""), TEXT("then"), TEXT("NodeC"), TEXT("execute")),
			{"Connection blocked: Source node '' not found (.then -> NodeC.execute)"}},
	};
	for (const FCase& Case : Cases)
	{
		Session.BlockedOperations.Reset();
		Calvorn::FToolResult Result;
		EXPECT_FALSE(Run(Case.Record, Result));
		EXPECT_EQ(U8s(Session.BlockedOperations), Case.Blocked);
		EXPECT_EQ(U8s(Result.GetWarningMessages()), Case.Blocked) << "each blocked text is also a warning";
		EXPECT_TRUE(Result.GetErrorMessages().IsEmpty()) << "blocking never ends the call";
	}
	for (const UEdGraphPin* Pin : NodeA->Pins)
	{
		EXPECT_TRUE(Pin->LinkedTo.IsEmpty());
	}
}

TEST_F(PopulateRecordsGating, ARequestIdOfAnEarlierCallIsBlocked)
{
	// A new call has a new session: the earlier call's request id means nothing, its real guid still works.
	FPopulateSession Next;
	Calvorn::FToolResult Result;
	const FConnectionModificationRecord Record = Connection(TEXT("NodeA"), TEXT("then"), *NodeC->NodeGuid.ToString(), TEXT("execute"));
	FConnectionEndpointResolver Resolver(Next, Graph, Record, Result);
	EXPECT_EQ(Resolver.ResolveEndpoint(Record.SourceNodeGuid, TEXT("Source")), nullptr);
	EXPECT_EQ(Resolver.ResolveEndpoint(Record.TargetNodeGuid, TEXT("Target")), NodeC);
	EXPECT_EQ(Next.BlockedOperations.Num(), 1);
}

TEST_F(PopulateRecordsGating, AuditReportsCreatedNodesWithTooFewLinks)
{
	const UFunction* Print = FindFunction(TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("PrintString"));
	UK2Node_CallFunction* NodeD = Place<UK2Node_CallFunction>(Graph, [Print](UK2Node_CallFunction& Node) { Node.SetFromFunction(Print); });
	Session.CreatedNodes.Add(TEXT("NodeD"), NodeD);
	Link(NodeA, TEXT("then"), NodeC, TEXT("execute"));

	const char* Request = R"({"connections": [
		{"action": "add", "source_node_guid": "NodeA", "source_pin_name": "then", "target_node_guid": "NodeC", "target_pin_name": "execute"},
		{"action": "add", "source_node_guid": "NodeA", "source_pin_name": "else", "target_node_guid": "NodeD", "target_pin_name": "execute"},
		{"action": "add", "source_node_guid": "NodeD", "source_pin_name": "then", "target_node_guid": "Failed", "target_pin_name": "execute"},
		{"action": "add", "source_node_guid": "EXISTING", "source_pin_name": "then", "target_node_guid": "NodeD", "target_pin_name": "execute"},
		{"source_node_guid": "NodeC", "target_node_guid": "NodeD"},
		"not an object"
	]})";
	Calvorn::FToolResult Result;
	FDependencyGating::AuditHalfConnections(ConnectionsJson(Request), Session, Result);

	// NodeA: 2 asked, 1 made; NodeC: 1 and 1; NodeD: 3 asked, none made. The inert entry asks nothing.
	const TArray<TSharedPtr<FJsonObject>> Half = Objects(Obj(Result.GetDatas(), TEXT("telemetry")), TEXT("half_connected_nodes"));
	ASSERT_EQ(Half.Num(), 2);
	EXPECT_EQ(Str(Half[0], TEXT("node_id")), "NodeA");
	EXPECT_EQ(Str(Half[0], TEXT("node_title")), U8(NodeA->GetNodeTitle(ENodeTitleType::FullTitle).ToString()));
	EXPECT_EQ(Half[0]->GetNumberField(TEXT("expected_connections")), 2.0);
	EXPECT_EQ(Half[0]->GetNumberField(TEXT("actual_connections")), 1.0);
	EXPECT_EQ(Str(Half[1], TEXT("node_id")), "NodeD");
	EXPECT_EQ(Half[1]->GetNumberField(TEXT("expected_connections")), 3.0);
	EXPECT_EQ(Half[1]->GetNumberField(TEXT("actual_connections")), 0.0);
	EXPECT_TRUE(Result.GetWarningMessages().IsEmpty());
}

TEST_F(PopulateRecordsGating, AuditCountsEveryLinkOfTheNode)
{
	// A link the request did not ask for still counts, so the node passes though its own wire was never made.
	Link(Existing, TEXT("then"), NodeC, TEXT("execute"));
	const char* Request = R"({"connections": [
		{"action": "create", "source_node_guid": "NodeA", "source_pin_name": "then", "target_node_guid": "NodeC", "target_pin_name": "execute"}
	]})";
	Calvorn::FToolResult Result;
	FDependencyGating::AuditHalfConnections(ConnectionsJson(Request), Session, Result);
	const TArray<TSharedPtr<FJsonObject>> Half = Objects(Obj(Result.GetDatas(), TEXT("telemetry")), TEXT("half_connected_nodes"));
	ASSERT_EQ(Half.Num(), 1);
	EXPECT_EQ(Str(Half[0], TEXT("node_id")), "NodeA");

	Calvorn::FToolResult Empty;
	FDependencyGating::AuditHalfConnections({}, Session, Empty);
	EXPECT_FALSE(Empty.GetDatas()->HasField(TEXT("telemetry")));
}
