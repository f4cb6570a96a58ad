#include "ReadTestSupport.h"

#include "BlueprintReadUtils.h"
#include "EdGraph/EdGraphNode_Comment.h"
#include "K2Node_CallFunction.h"
#include "K2Node_Composite.h"
#include "K2Node_IfThenElse.h"

using namespace ReadTests;

namespace
{
	const TCHAR* const SchemaTool = TEXT("read_blueprint_schema");
	const TCHAR* const FunctionTool = TEXT("read_blueprint_function");

	class ReadGraph : public FReadFixture
	{
	protected:
		ReadGraph()
		{
			Outer = CreatePackage(TEXT("/Game/Readers/GraphHolder"));
			PackageNames.Add(TEXT("/Game/Readers/GraphHolder"));
			Graph = MakeGraph(Outer, TEXT("Logic"));
		}

		/** A composite node in Graph whose bound graph is Bound (or none). */
		UK2Node_Composite* PlaceComposite(UEdGraph* Into, UEdGraph* Bound)
		{
			UK2Node_Composite* Composite = Place<UK2Node_Composite>(Into);
			Composite->BoundGraph = Bound;
			return Composite;
		}

		static TSharedPtr<FJsonObject> CompositeInfo(const TSharedPtr<FJsonObject>& GraphObject, int32 NodeIndex)
		{
			const TArray<TSharedPtr<FJsonObject>> Nodes = Objects(GraphObject, TEXT("nodes"));
			return NodeIndex < Nodes.Num() ? Obj(Obj(Nodes[NodeIndex], TEXT("properties")), TEXT("composite_info")) : nullptr;
		}

		UPackage* Outer = nullptr;
		UEdGraph* Graph = nullptr;
	};
}

TEST_F(ReadGraph, RefusalsAreErrorObjectsInPlaceOfTheGraph)
{
	const TSharedPtr<FJsonObject> Null = FBlueprintReadUtils::ReadEdGraph(nullptr, Request(FunctionTool));
	EXPECT_EQ(Keys(Null), (std::vector<std::string>{"error"}));
	EXPECT_EQ(Str(Null, TEXT("error")), "Invalid graph provided");

	TSet<const UEdGraph*> Visited;
	const TSharedPtr<FJsonObject> NullDeep = FBlueprintReadUtils::ReadEdGraph(nullptr, Request(FunctionTool), 12, Visited);
	EXPECT_EQ(Keys(NullDeep), (std::vector<std::string>{"error"}));
	EXPECT_EQ(Str(NullDeep, TEXT("error")), "Invalid graph provided");

	// The request's tool is checked before anything is written, and before the depth limit.
	const TSharedPtr<FJsonObject> NoTool = FBlueprintReadUtils::ReadEdGraph(Graph, Request(nullptr, TEXT("{\"read_tool\": 5}")), 30, Visited);
	EXPECT_EQ(Keys(NoTool), (std::vector<std::string>{"error"}));
	EXPECT_EQ(Str(NoTool, TEXT("error")), "Missing required field 'read_tool'");
}

TEST_F(ReadGraph, IdentityKeysComeFirstAndASchemaReadStopsThere)
{
	Place<UK2Node_IfThenElse>(Graph);

	const TSharedPtr<FJsonObject> Full = FBlueprintReadUtils::ReadEdGraph(Graph, Request(FunctionTool));
	EXPECT_EQ(Keys(Full), (std::vector<std::string>{"name", "class", "schema", "hierarchy_depth", "graph_path", "nodes"}));
	EXPECT_EQ(Str(Full, TEXT("name")), "Logic");
	EXPECT_EQ(Str(Full, TEXT("class")), "EdGraph");
	EXPECT_EQ(Str(Full, TEXT("schema")), "EdGraphSchema_K2");
	EXPECT_EQ(Full->GetNumberField(TEXT("hierarchy_depth")), 0);
	EXPECT_EQ(Str(Full, TEXT("graph_path")), U8(Graph->GetPathName()));
	EXPECT_EQ(Objects(Full, TEXT("nodes")).Num(), 1);

	// The tool name matches without case.
	const TSharedPtr<FJsonObject> Schema = FBlueprintReadUtils::ReadEdGraph(Graph, Request(TEXT("READ_Blueprint_Schema")));
	EXPECT_EQ(Keys(Schema), (std::vector<std::string>{"name", "class", "schema", "hierarchy_depth", "graph_path"}));

	TSet<const UEdGraph*> Visited;
	const TSharedPtr<FJsonObject> AtFour = FBlueprintReadUtils::ReadEdGraph(Graph, Request(SchemaTool), 4, Visited);
	EXPECT_EQ(AtFour->GetNumberField(TEXT("hierarchy_depth")), 4);
	EXPECT_EQ(Visited.Num(), 0) << "the path is left as it was found";
}

TEST_F(ReadGraph, EmptyAndSchemalessGraphs)
{
	UEdGraph* Bare = NewObject<UEdGraph>(Outer, TEXT("Bare"));
	const TSharedPtr<FJsonObject> Object = FBlueprintReadUtils::ReadEdGraph(Bare, Request(FunctionTool));
	EXPECT_EQ(Str(Object, TEXT("schema")), "Unknown");
	const TArray<TSharedPtr<FJsonValue>>* Nodes = nullptr;
	ASSERT_TRUE(Object->TryGetArrayField(TEXT("nodes"), Nodes));
	EXPECT_EQ(Nodes->Num(), 0);
}

TEST_F(ReadGraph, DepthIsLimitedToTenAndTheLimitWinsOverAVisitedGraph)
{
	TSet<const UEdGraph*> Visited;
	const TSharedPtr<FJsonObject> AtTen = FBlueprintReadUtils::ReadEdGraph(Graph, Request(FunctionTool), 10, Visited);
	EXPECT_EQ(Str(AtTen, TEXT("name")), "Logic");

	const TSharedPtr<FJsonObject> AtEleven = FBlueprintReadUtils::ReadEdGraph(Graph, Request(FunctionTool), 11, Visited);
	EXPECT_EQ(Keys(AtEleven), (std::vector<std::string>{"error", "recursion_depth"}));
	EXPECT_EQ(Str(AtEleven, TEXT("error")), "Maximum recursion depth exceeded");
	EXPECT_EQ(AtEleven->GetNumberField(TEXT("recursion_depth")), 11);

	Visited.Add(Graph);
	const TSharedPtr<FJsonObject> VisitedAtEleven = FBlueprintReadUtils::ReadEdGraph(Graph, Request(FunctionTool), 11, Visited);
	EXPECT_EQ(Str(VisitedAtEleven, TEXT("error")), "Maximum recursion depth exceeded");
	const TSharedPtr<FJsonObject> VisitedAtThree = FBlueprintReadUtils::ReadEdGraph(Graph, Request(FunctionTool), 3, Visited);
	EXPECT_EQ(Keys(VisitedAtThree), (std::vector<std::string>{"error", "recursion_depth"}));
	EXPECT_EQ(Str(VisitedAtThree, TEXT("error")), "Graph already visited");
	EXPECT_EQ(VisitedAtThree->GetNumberField(TEXT("recursion_depth")), 3);
	EXPECT_TRUE(Visited.Contains(Graph)) << "a refused read leaves the caller's path alone";
}

TEST_F(ReadGraph, AGraphInsideItselfIsRefusedWhereItRecurs)
{
	PlaceComposite(Graph, Graph);
	const TSharedPtr<FJsonObject> Object = FBlueprintReadUtils::ReadEdGraph(Graph, Request(FunctionTool));
	const TSharedPtr<FJsonObject> Info = CompositeInfo(Object, 0);
	EXPECT_EQ(Keys(Info), (std::vector<std::string>{"bound_graph_name", "bound_graph_class", "bound_graph", "bound_graph_depth"}));
	EXPECT_EQ(Str(Info, TEXT("bound_graph_name")), "Logic");
	EXPECT_EQ(Str(Info, TEXT("bound_graph_class")), "EdGraph");
	EXPECT_EQ(Info->GetNumberField(TEXT("bound_graph_depth")), 1);
	const TSharedPtr<FJsonObject> Nested = Obj(Info, TEXT("bound_graph"));
	EXPECT_EQ(Str(Nested, TEXT("error")), "Graph already visited");
	EXPECT_EQ(Nested->GetNumberField(TEXT("recursion_depth")), 1);
}

TEST_F(ReadGraph, AGraphBoundTwiceIsReadInBothPlacesAndNestingCounts)
{
	UEdGraph* Shared = MakeGraph(Outer, TEXT("Shared"));
	UEdGraph* Inner = MakeGraph(Outer, TEXT("Inner"));
	Place<UK2Node_IfThenElse>(Inner);
	PlaceComposite(Shared, Inner);
	PlaceComposite(Graph, Shared);
	PlaceComposite(Graph, Shared);

	const TSharedPtr<FJsonObject> Object = FBlueprintReadUtils::ReadEdGraph(Graph, Request(FunctionTool));
	for (int32 Index = 0; Index < 2; ++Index)
	{
		SCOPED_TRACE(Index);
		const TSharedPtr<FJsonObject> First = Obj(CompositeInfo(Object, Index), TEXT("bound_graph"));
		EXPECT_EQ(Str(First, TEXT("name")), "Shared");
		EXPECT_EQ(First->GetNumberField(TEXT("hierarchy_depth")), 1);
		const TSharedPtr<FJsonObject> SecondInfo = CompositeInfo(First, 0);
		EXPECT_EQ(SecondInfo->GetNumberField(TEXT("bound_graph_depth")), 2);
		const TSharedPtr<FJsonObject> Second = Obj(SecondInfo, TEXT("bound_graph"));
		EXPECT_EQ(Str(Second, TEXT("name")), "Inner");
		EXPECT_EQ(Second->GetNumberField(TEXT("hierarchy_depth")), 2);
		EXPECT_EQ(Objects(Second, TEXT("nodes")).Num(), 1);
	}
}

TEST_F(ReadGraph, ACompositeAtDepthTenHoldsTheLimitError)
{
	UEdGraph* Inner = MakeGraph(Outer, TEXT("Inner"));
	PlaceComposite(Graph, Inner);
	PlaceComposite(Graph, nullptr);

	TSet<const UEdGraph*> Visited;
	const TSharedPtr<FJsonObject> Object = FBlueprintReadUtils::ReadEdGraph(Graph, Request(FunctionTool), 10, Visited);
	const TSharedPtr<FJsonObject> Info = CompositeInfo(Object, 0);
	EXPECT_EQ(Info->GetNumberField(TEXT("bound_graph_depth")), 11);
	EXPECT_EQ(Str(Obj(Info, TEXT("bound_graph")), TEXT("error")), "Maximum recursion depth exceeded");
	EXPECT_EQ(Obj(Info, TEXT("bound_graph"))->GetNumberField(TEXT("recursion_depth")), 11);

	// A composite without a graph still shows its kind, with nothing in it.
	const TSharedPtr<FJsonObject> Empty = CompositeInfo(Object, 1);
	ASSERT_TRUE(Empty.IsValid());
	EXPECT_EQ(Keys(Empty), std::vector<std::string>{});
}

TEST_F(ReadGraph, NodeKeysStandInTheirOrderWithPinsLast)
{
	UK2Node_IfThenElse* Branch = Place<UK2Node_IfThenElse>(Graph, 32, -48);
	UEdGraphNode_Comment* Note = Place<UEdGraphNode_Comment>(Graph, 5, 6);
	Note->NodeComment = TEXT("Checks the door");
	Branch->NodeComment = TEXT("Gate");

	const TArray<TSharedPtr<FJsonObject>> Nodes = Objects(FBlueprintReadUtils::ReadEdGraph(Graph, Request(FunctionTool)), TEXT("nodes"));
	ASSERT_EQ(Nodes.Num(), 2);

	const TSharedPtr<FJsonObject>& BranchObject = Nodes[0];
	EXPECT_EQ(Keys(BranchObject), (std::vector<std::string>{"menu_title", "full_title", "menu_category", "class_name", "node_guid", "pos_x", "pos_y", "comment", "properties", "pins"}));
	EXPECT_EQ(Str(BranchObject, TEXT("menu_title")), U8(Branch->GetNodeTitle(ENodeTitleType::MenuTitle).ToString()));
	EXPECT_EQ(Str(BranchObject, TEXT("full_title")), "Branch");
	EXPECT_EQ(Str(BranchObject, TEXT("menu_category")), U8(Branch->GetMenuCategory().ToString()));
	EXPECT_EQ(Str(BranchObject, TEXT("class_name")), "K2Node_IfThenElse");
	EXPECT_EQ(Str(BranchObject, TEXT("node_guid")), ShortGuidOf(Branch));
	EXPECT_EQ(Str(BranchObject, TEXT("node_guid")).size(), 7u);
	EXPECT_EQ(BranchObject->GetNumberField(TEXT("pos_x")), 32);
	EXPECT_EQ(BranchObject->GetNumberField(TEXT("pos_y")), -48);
	EXPECT_EQ(Str(BranchObject, TEXT("comment")), "Gate");
	EXPECT_EQ(Keys(Obj(BranchObject, TEXT("properties"))), std::vector<std::string>{}) << "a node of no listed kind has empty properties";
	EXPECT_EQ(Column(BranchObject, TEXT("pins"), TEXT("name")), (std::vector<std::string>{"execute", "Condition", "then", "else"}));

	// A plain graph node is no Blueprint node: it has no menu category.
	EXPECT_EQ(Keys(Nodes[1]), (std::vector<std::string>{"menu_title", "full_title", "class_name", "node_guid", "pos_x", "pos_y", "comment", "properties", "pins"}));
	EXPECT_EQ(Str(Nodes[1], TEXT("class_name")), "EdGraphNode_Comment");

	Branch->NodeComment.Reset();
	const TSharedPtr<FJsonObject> Plain = Objects(FBlueprintReadUtils::ReadEdGraph(Graph, Request(FunctionTool)), TEXT("nodes"))[0];
	EXPECT_FALSE(Plain->HasField(TEXT("comment")));
}

TEST_F(ReadGraph, PinsCarryValueDirectionTypeAndTheirConnections)
{
	UK2Node_IfThenElse* First = Place<UK2Node_IfThenElse>(Graph);
	UK2Node_IfThenElse* Second = Place<UK2Node_IfThenElse>(Graph);
	UK2Node_IfThenElse* Third = Place<UK2Node_IfThenElse>(Graph);
	// An execution input takes any number of links: both "then" pins lead into Third.
	Link(First, TEXT("then"), Third, TEXT("execute"));
	Link(Second, TEXT("then"), Third, TEXT("execute"));
	First->FindPin(TEXT("Condition"))->DefaultValue = TEXT("true");

	const TSharedPtr<FJsonObject> Condition = FBlueprintReadUtils::ReadPinInfo(First->FindPin(TEXT("Condition")), nullptr);
	EXPECT_EQ(Keys(Condition), (std::vector<std::string>{"name", "value", "direction", "type"}));
	EXPECT_EQ(Str(Condition, TEXT("value")), "true");
	EXPECT_EQ(Str(Condition, TEXT("direction")), "Input");
	EXPECT_EQ(Str(Obj(Condition, TEXT("type")), TEXT("category")), "bool");

	const TSharedPtr<FJsonObject> Else = FBlueprintReadUtils::ReadPinInfo(First->FindPin(TEXT("else")), nullptr);
	EXPECT_EQ(Str(Else, TEXT("value")), "") << "an unset default is an empty string, not an absent key";
	EXPECT_EQ(Str(Else, TEXT("direction")), "Output");
	EXPECT_FALSE(Else->HasField(TEXT("connections")));

	const TSharedPtr<FJsonObject> Then = FBlueprintReadUtils::ReadPinInfo(Third->FindPin(TEXT("execute")), nullptr);
	EXPECT_EQ(Keys(Then), (std::vector<std::string>{"name", "value", "direction", "type", "connections"}));
	const TArray<TSharedPtr<FJsonObject>> Connections = Objects(Then, TEXT("connections"));
	ASSERT_EQ(Connections.Num(), 2);
	EXPECT_EQ(Keys(Connections[0]), (std::vector<std::string>{"node_title", "node_guid", "pin_name"}));
	EXPECT_EQ(Str(Connections[0], TEXT("node_title")), U8(First->GetNodeTitle(ENodeTitleType::MenuTitle).ToString()));
	EXPECT_EQ(Str(Connections[0], TEXT("node_guid")), ShortGuidOf(First));
	EXPECT_EQ(Str(Connections[0], TEXT("pin_name")), "then");
	EXPECT_EQ(Str(Connections[1], TEXT("node_guid")), ShortGuidOf(Second));

	// The flow's node set is accepted and changes nothing.
	TSet<const UEdGraphNode*> Flow;
	Flow.Add(First);
	const TSharedPtr<FJsonObject> WithFlow = FBlueprintReadUtils::ReadPinInfo(Third->FindPin(TEXT("execute")), &Flow);
	EXPECT_EQ(Column(WithFlow, TEXT("connections"), TEXT("node_guid")), Column(Then, TEXT("connections"), TEXT("node_guid")));

	EXPECT_FALSE(FBlueprintReadUtils::ReadPinInfo(nullptr, nullptr).IsValid());
	TSet<const UEdGraph*> Visited;
	EXPECT_FALSE(FBlueprintReadUtils::ReadNodeInfo(nullptr, Request(FunctionTool), 0, Visited).IsValid());
}

TEST_F(ReadGraph, FunctionCallsNameTheirFunctionClassAndPurity)
{
	struct FCase
	{
		const TCHAR* ClassPath;
		const TCHAR* Function;
		const char* ExpectedClass;
		bool bPure;
	};
	const FCase Cases[] = {
		{TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("PrintString"), "KismetSystemLibrary", false},
		{TEXT("/Script/Engine.KismetMathLibrary"), TEXT("Add_IntInt"), "KismetMathLibrary", true},
		{TEXT("/Script/Engine.Actor"), TEXT("K2_GetActorLocation"), "Actor", true},
	};
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(U8(Case.Function));
		const UFunction* Function = FindFunction(Case.ClassPath, Case.Function);
		ASSERT_NE(Function, nullptr);
		UK2Node_CallFunction* Call = Place<UK2Node_CallFunction>(Graph, [Function](UK2Node_CallFunction& Node) { Node.SetFromFunction(Function); });
		TSet<const UEdGraph*> Visited;
		const TSharedPtr<FJsonObject> Properties = Obj(FBlueprintReadUtils::ReadNodeInfo(Call, Request(FunctionTool), 0, Visited), TEXT("properties"));
		EXPECT_EQ(Keys(Properties), (std::vector<std::string>{"function_name", "function_class", "is_pure"}));
		EXPECT_EQ(Str(Properties, TEXT("function_name")), U8(Case.Function));
		EXPECT_EQ(Str(Properties, TEXT("function_class")), Case.ExpectedClass);
		EXPECT_EQ(Properties->GetBoolField(TEXT("is_pure")), Case.bPure);
	}
}

TEST(ReadNodeText, TargetClassIsWhatFollowsThePhrase)
{
	const struct
	{
		const TCHAR* Title;
		const char* Expected;
	} Cases[] = {
		{TEXT("Get Actor Location\nTarget is Actor"), "Actor"},
		{TEXT("Print String\ntarget IS Kismet System Library"), "Kismet System Library"},
		{TEXT("Target is "), ""},
		{TEXT("Branch"), ""},
		{TEXT("A\nTarget is X\nTarget is Y"), "X\nTarget is Y"},
		{TEXT(""), ""},
	};
	for (const auto& Case : Cases)
	{
		FString Class = TEXT("stale");
		FBlueprintReadUtils::ExtractTitleTargetClass(Case.Title, Class);
		EXPECT_EQ(U8(Class), Case.Expected) << U8(Case.Title);
	}
}

TEST(ReadNodeText, ShortGuidsAreTheFirstSevenDigits)
{
	const FGuid Guids[] = {FGuid(0x1234ABCD, 1, 2, 3), FGuid(0x0000000F, 0xFFFFFFFF, 0, 0), FGuid(0xFFFFFFFF, 0, 0, 0), FGuid()};
	for (const FGuid& Guid : Guids)
	{
		const FString Short = FBlueprintReadUtils::GetShortGuid(Guid);
		EXPECT_EQ(U8(Short), U8(Guid.ToString(EGuidFormats::Digits).LeftChop(25)));
		EXPECT_EQ(Short.Len(), 7);
	}
}
