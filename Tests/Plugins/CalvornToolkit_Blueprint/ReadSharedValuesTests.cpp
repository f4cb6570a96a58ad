#include "ReadTestSupport.h"

#include "BlueprintReadUtils.h"
#include "K2Node_CallFunction.h"
#include "K2Node_CustomEvent.h"
#include "Policies/CondensedJsonPrintPolicy.h"
#include "Serialization/JsonWriter.h"

using namespace ReadTests;

namespace
{
	/**
	 * The event graph of a Blueprint: one event driving four prints whose unlinked pins mostly match. Same and
	 * Twin keep every default but their text, Shout's text differs from theirs by case only, Other's outright.
	 * One addition feeds the durations of Same and Twin, so two pins name the same linked pin. A whole
	 * Blueprint read shares what such pins have in common; what it prints must not show it.
	 */
	class ReadSharedValues : public FReadFixture
	{
	protected:
		ReadSharedValues()
		{
			Blueprint = MakeBlueprint(FindClass(TEXT("/Script/Engine.Actor")), TEXT("BP_Shared"));
			Graph = Blueprint->UbergraphPages[0];
			while (Graph->Nodes.Num() > 0)
			{
				Graph->RemoveNode(Graph->Nodes.Last());
			}
			Event = Place<UK2Node_CustomEvent>(Graph, [](UK2Node_CustomEvent& Node) { Node.CustomFunctionName = TEXT("Go"); });
			Same = PlacePrint(TEXT("Hello"));
			Twin = PlacePrint(TEXT("Hello"));
			Shout = PlacePrint(TEXT("HELLO"));
			Other = PlacePrint(TEXT("Bye"));
			const UFunction* Add = FindFunction(TEXT("/Script/Engine.KismetMathLibrary"), TEXT("Add_DoubleDouble"));
			Sum = Place<UK2Node_CallFunction>(Graph, [Add](UK2Node_CallFunction& Node) { Node.SetFromFunction(Add); });
			Link(Event, TEXT("then"), Same, TEXT("execute"));
			Link(Same, TEXT("then"), Twin, TEXT("execute"));
			Link(Twin, TEXT("then"), Shout, TEXT("execute"));
			Link(Shout, TEXT("then"), Other, TEXT("execute"));
			Link(Sum, TEXT("ReturnValue"), Same, TEXT("Duration"));
			Link(Sum, TEXT("ReturnValue"), Twin, TEXT("Duration"));
		}

		UK2Node_CallFunction* PlacePrint(const TCHAR* Text)
		{
			const UFunction* Print = FindFunction(TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("PrintString"));
			UK2Node_CallFunction* Node = Place<UK2Node_CallFunction>(Graph, [Print](UK2Node_CallFunction& Call) { Call.SetFromFunction(Print); });
			if (UEdGraphPin* Pin = Node->FindPin(TEXT("InString")))
			{
				Pin->DefaultValue = Text;
			}
			return Node;
		}

		static TSharedPtr<FJsonObject> EventRequest()
		{
			return Request(TEXT("read_blueprint_event"), TEXT("{\"path\": \"/Game/Readers/BP_Shared\", \"events\": [{\"event_name\": \"Go\"}]}"));
		}

		/** The graph read on its own, as a nested read does: every value made for its one place. */
		TSharedPtr<FJsonObject> ReadGraph() const
		{
			return FBlueprintReadUtils::ReadEventGraph(Graph, EventRequest(), false, TSet<FString>());
		}

		/** The graph as the whole Blueprint read prints it, parsed back. */
		static TSharedPtr<FJsonObject> ReadGraphOfBlueprint()
		{
			Calvorn::FToolResult Result;
			const TSharedPtr<FJsonObject> Document = ParseJson(FBlueprintReadUtils::ReadBlueprint(EventRequest(), Result));
			const TArray<TSharedPtr<FJsonObject>> Graphs = Objects(Document, TEXT("graphs"));
			return Graphs.Num() == 1 ? Graphs[0] : nullptr;
		}

		static FString Print(const TSharedPtr<FJsonObject>& Object)
		{
			FString Text;
			FJsonSerializer::Serialize(Object.ToSharedRef(), TJsonWriterFactory<TCHAR, TCondensedJsonPrintPolicy<TCHAR>>::Create(&Text));
			return Text;
		}

		/** The "pins" entry named PinName of Node, in the first flow of Document. */
		static TSharedPtr<FJsonObject> PinEntry(const TSharedPtr<FJsonObject>& Document, const UEdGraphNode* Node, const TCHAR* PinName)
		{
			const TArray<TSharedPtr<FJsonObject>> Flows = Objects(Document, TEXT("event_flows"));
			if (Flows.Num() == 0)
			{
				return nullptr;
			}
			const FString Guid(ShortGuidOf(Node).c_str());
			const TSharedPtr<FJsonObject> NodeEntry = Named(Flows[0], TEXT("nodes"), *Guid, TEXT("node_guid"));
			return Named(NodeEntry, TEXT("pins"), PinName);
		}

		UBlueprint* Blueprint = nullptr;
		UEdGraph* Graph = nullptr;
		UK2Node_CustomEvent* Event = nullptr;
		UK2Node_CallFunction* Same = nullptr;
		UK2Node_CallFunction* Twin = nullptr;
		UK2Node_CallFunction* Shout = nullptr;
		UK2Node_CallFunction* Other = nullptr;
		UK2Node_CallFunction* Sum = nullptr;
	};
}

TEST_F(ReadSharedValues, TheBlueprintReadPrintsTheGraphAsTheGraphReadAlone)
{
	const TSharedPtr<FJsonObject> Whole = ReadGraphOfBlueprint();
	ASSERT_TRUE(Whole.IsValid());
	EXPECT_EQ(U8(Print(Whole)), U8(Print(ReadGraph())));
	// Nothing stays shared from one read to the next.
	const TSharedPtr<FJsonObject> Again = ReadGraphOfBlueprint();
	ASSERT_TRUE(Again.IsValid());
	EXPECT_EQ(U8(Print(Again)), U8(Print(Whole)));
}

TEST_F(ReadSharedValues, PinsThatDifferEvenByCaseKeepTheirOwnValues)
{
	const TSharedPtr<FJsonObject> Document = ReadGraphOfBlueprint();
	ASSERT_TRUE(Document.IsValid());
	const std::vector<std::pair<const UEdGraphNode*, std::string>> Cases = {{Same, "Hello"}, {Twin, "Hello"}, {Shout, "HELLO"}, {Other, "Bye"}};
	for (const auto& [Node, Text] : Cases)
	{
		const TSharedPtr<FJsonObject> Entry = PinEntry(Document, Node, TEXT("InString"));
		ASSERT_TRUE(Entry.IsValid()) << Text;
		EXPECT_EQ(Str(Entry, TEXT("value")), Text);
	}
	// Both durations name the addition's output.
	for (const UEdGraphNode* Node : {static_cast<const UEdGraphNode*>(Same), static_cast<const UEdGraphNode*>(Twin)})
	{
		const TArray<TSharedPtr<FJsonObject>> Links = Objects(PinEntry(Document, Node, TEXT("Duration")), TEXT("connections"));
		ASSERT_EQ(Links.Num(), 1);
		EXPECT_EQ(Str(Links[0], TEXT("pin_name")), "ReturnValue");
		EXPECT_EQ(Str(Links[0], TEXT("node_guid")), ShortGuidOf(Sum));
	}
}

TEST_F(ReadSharedValues, WithoutAScopeEveryPinGetsAnEntryOfItsOwn)
{
	const TSharedPtr<FJsonObject> Document = ReadGraph();
	const TSharedPtr<FJsonObject> SameText = PinEntry(Document, Same, TEXT("InString"));
	const TSharedPtr<FJsonObject> TwinText = PinEntry(Document, Twin, TEXT("InString"));
	ASSERT_TRUE(SameText && TwinText);
	EXPECT_NE(SameText.Get(), TwinText.Get());
	// So a caller may change one without touching the other.
	SameText->SetStringField(TEXT("value"), TEXT("Changed"));
	EXPECT_EQ(Str(TwinText, TEXT("value")), "Hello");
	const TSharedPtr<FJsonObject> Single = FBlueprintReadUtils::ReadPinInfo(Same->FindPin(TEXT("InString")), nullptr);
	const TSharedPtr<FJsonObject> Again = FBlueprintReadUtils::ReadPinInfo(Same->FindPin(TEXT("InString")), nullptr);
	ASSERT_TRUE(Single && Again);
	EXPECT_NE(Single.Get(), Again.Get());
}
