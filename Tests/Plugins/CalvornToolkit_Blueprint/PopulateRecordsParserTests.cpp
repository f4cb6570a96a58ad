// The request records of graph population: what each JSON entry becomes, with the defaults clients rely on.

#include "ReadTestSupport.h"

#include "Populate/GraphModificationRecords.h"

using namespace ReadTests;

namespace
{
	TSharedPtr<FJsonObject> Json(const char* Text)
	{
		TSharedPtr<FJsonObject> Object = ParseJson(FString(UTF8_TO_TCHAR(Text)));
		EXPECT_TRUE(Object.IsValid()) << "bad test JSON: " << Text;
		return Object;
	}

	struct FConnectionCase
	{
		const char* Request;
		bool bAdd;
		const char* SourceGuid;
		const char* SourcePin;
		const char* TargetGuid;
		const char* TargetPin;
	};

	const FConnectionCase ConnectionCases[] = {
		{R"({"action":"add","source_node_guid":"A","source_pin_name":"then","target_node_guid":"B","target_pin_name":"execute"})", true, "A", "then", "B", "execute"},
		{R"({"action":"CREATE","source_node_guid":"A","target_node_guid":"B"})", true, "A", "", "B", ""},
		{R"({"action":"Add","source_node_id":"Old","target_node_id":"Older"})", true, "Old", "", "Older", ""},
		// The current key wins over the older spelling when both are there.
		{R"({"action":"add","source_node_guid":"New","source_node_id":"Old","target_node_id":"T","target_node_guid":"N2"})", true, "New", "", "N2", ""},
		// No action at all, or a word that means nothing, leaves the entry inert.
		{R"({"source_node_guid":"A","target_node_guid":"B"})", false, "A", "", "B", ""},
		{R"({"action":"connect","source_node_guid":"A"})", false, "A", "", "", ""},
		{R"({"action":"remove","source_node_guid":"A"})", false, "A", "", "", ""},
		// A null value is no value: the alias is read instead.
		{R"({"action":"add","source_node_guid":null,"source_node_id":"Alias"})", true, "Alias", "", "", ""},
		// A number reads as its text.
		{R"({"action":"add","source_node_guid":42,"source_pin_name":"then"})", true, "42", "then", "", ""},
	};

	class PopulateRecordsConnection : public ::testing::TestWithParam<FConnectionCase>
	{
	};

	/** Pin types that name engine types need the catalogue loaded. */
	class PopulateRecordsPinTypes : public FReadFixture
	{
	};
}

TEST_P(PopulateRecordsConnection, ParsesEachEntryAsClientsSpellIt)
{
	const FConnectionCase& Case = GetParam();
	FConnectionModificationRecord Record;
	ASSERT_TRUE(FGraphModificationParser::ParseConnection(Json(Case.Request), Record));
	EXPECT_EQ(Record.Action == EConnectionAction::Add, Case.bAdd) << Case.Request;
	EXPECT_EQ(U8(Record.SourceNodeGuid), Case.SourceGuid) << Case.Request;
	EXPECT_EQ(U8(Record.SourcePinName), Case.SourcePin) << Case.Request;
	EXPECT_EQ(U8(Record.TargetNodeGuid), Case.TargetGuid) << Case.Request;
	EXPECT_EQ(U8(Record.TargetPinName), Case.TargetPin) << Case.Request;
}

INSTANTIATE_TEST_SUITE_P(Table, PopulateRecordsConnection, ::testing::ValuesIn(ConnectionCases));

TEST(PopulateRecordsParser, NullObjectsAreTheOnlyFailures)
{
	FConnectionModificationRecord Connection;
	FNodeModificationRecord Node;
	FPinModificationRecord Pin;
	FPinTypeRecord Type;
	EXPECT_FALSE(FGraphModificationParser::ParseConnection(nullptr, Connection));
	EXPECT_FALSE(FGraphModificationParser::ParseNode(nullptr, Node));
	EXPECT_FALSE(FGraphModificationParser::ParsePin(nullptr, Pin));
	EXPECT_FALSE(FGraphModificationParser::ParsePinType(nullptr, Type));

	EXPECT_TRUE(FGraphModificationParser::ParseConnection(Json("{}"), Connection));
	EXPECT_EQ(Connection.Action, EConnectionAction::Remove);
	EXPECT_TRUE(FGraphModificationParser::ParseNode(Json("{}"), Node));
	EXPECT_EQ(Node.Action, EPopulateAction::Add);
	EXPECT_TRUE(FGraphModificationParser::ParsePin(Json("{}"), Pin));
	EXPECT_FALSE(Pin.PinType.IsSet());
	EXPECT_TRUE(FGraphModificationParser::ParsePinType(Json("{}"), Type));
	EXPECT_TRUE(Type.Category.IsEmpty());
}

TEST(PopulateRecordsParser, NodeEntryFillsEveryField)
{
	FNodeModificationRecord Node;
	ASSERT_TRUE(FGraphModificationParser::ParseNode(Json(R"({
		"node_guid": "Print1", "action": "MODIFY", "class_name": "K2Node_CallFunction", "menu_title": "Print String",
		"target_class": "KismetSystemLibrary", "target_function": "PrintString", "menu_category": "Development",
		"node_metadata": {"spawn_method": "deterministic", "minimum_confidence": 0.75, "flag": true, "nested": {"a": 1}, "list": [1], "none": null},
		"pins": [
			{"name": "InString", "value": "Hello", "action": "modify"},
			"not an object",
			7,
			{"name": "Duration", "value": 2.5, "type": {"category": "float"}},
			{"name": "Typed", "type": "not an object"}
		]
	})"), Node));

	EXPECT_EQ(U8(Node.RequestGuid), "Print1");
	EXPECT_EQ(Node.Action, EPopulateAction::Modify);
	EXPECT_EQ(U8(Node.ClassName), "K2Node_CallFunction");
	EXPECT_EQ(U8(Node.MenuTitle), "Print String");
	EXPECT_EQ(U8(Node.OriginalMenuTitle), "Print String");
	EXPECT_EQ(U8(Node.TargetClass), "KismetSystemLibrary");
	EXPECT_EQ(U8(Node.TargetFunction), "PrintString");
	EXPECT_EQ(U8(Node.MenuCategory), "Development");

	// Members with a string reading are kept (numbers and booleans as their text); objects, arrays and null are dropped.
	EXPECT_EQ(Node.NodeMetadata.Num(), 3);
	EXPECT_EQ(U8(Node.GetMetadata(TEXT("spawn_method"))), "deterministic");
	EXPECT_EQ(U8(Node.GetMetadata(TEXT("minimum_confidence"))), "0.75");
	EXPECT_EQ(U8(Node.GetMetadata(TEXT("flag"))), "true");
	EXPECT_EQ(Node.FindMetadata(TEXT("nested")), nullptr);
	EXPECT_EQ(Node.FindMetadata(TEXT("list")), nullptr);
	EXPECT_EQ(Node.FindMetadata(TEXT("none")), nullptr);
	// Keys compare without case, as clients write them either way.
	EXPECT_EQ(U8(Node.GetMetadata(TEXT("Spawn_Method"))), "deterministic");

	ASSERT_EQ(Node.Pins.Num(), 3) << "entries that are not objects are dropped";
	EXPECT_EQ(U8(Node.Pins[0].PinName), "InString");
	EXPECT_EQ(U8(Node.Pins[0].Value), "Hello");
	EXPECT_EQ(Node.Pins[0].Action, EPopulateAction::Modify);
	EXPECT_EQ(U8(Node.Pins[1].Value), "2.5");
	EXPECT_EQ(Node.Pins[1].Action, EPopulateAction::Add);
	ASSERT_TRUE(Node.Pins[1].PinType.IsSet());
	EXPECT_EQ(U8(Node.Pins[1].PinType->Category), "float");
	EXPECT_FALSE(Node.Pins[2].PinType.IsSet()) << "a type that is not an object is absent";
}

TEST(PopulateRecordsParser, ActionWordsOfNodesAndConnections)
{
	struct FCase
	{
		const TCHAR* Word;
		EPopulateAction Node;
		EConnectionAction Connection;
	};
	const FCase Cases[] = {
		{TEXT("add"), EPopulateAction::Add, EConnectionAction::Add},
		{TEXT("Modify"), EPopulateAction::Modify, EConnectionAction::Remove},
		{TEXT("REMOVE"), EPopulateAction::Remove, EConnectionAction::Remove},
		{TEXT("create"), EPopulateAction::Add, EConnectionAction::Add},
		{TEXT(""), EPopulateAction::Add, EConnectionAction::Remove},
		{TEXT("delete"), EPopulateAction::Add, EConnectionAction::Remove},
		{TEXT(" add"), EPopulateAction::Add, EConnectionAction::Remove},
	};
	for (const FCase& Case : Cases)
	{
		EXPECT_EQ(FGraphModificationParser::ParsePopulateAction(Case.Word), Case.Node) << U8(Case.Word);
		EXPECT_EQ(FGraphModificationParser::ParseConnectionAction(Case.Word), Case.Connection) << U8(Case.Word);
	}
}

TEST(PopulateRecordsParser, PinTypeReadsEachMemberOnItsOwn)
{
	FPinTypeRecord Type;
	ASSERT_TRUE(FGraphModificationParser::ParsePinType(Json(R"({"category":"object","sub_category_object":"/Script/Engine.Actor","container":"array","is_reference":true,"is_weak_pointer":{"x":true}})"), Type));
	EXPECT_EQ(U8(Type.Category), "object");
	EXPECT_EQ(U8(Type.SubCategory), "");
	EXPECT_EQ(U8(Type.SubCategoryObject), "/Script/Engine.Actor");
	EXPECT_EQ(U8(Type.ContainerType), "array") << "the alias is read when container_type is absent";
	EXPECT_TRUE(Type.bIsReference);
	EXPECT_FALSE(Type.bIsConst);
	EXPECT_FALSE(Type.bIsWeakPointer) << "an object has no boolean reading";

	ASSERT_TRUE(FGraphModificationParser::ParsePinType(Json(R"({"category":"int","container_type":"set","container":"array"})"), Type));
	EXPECT_EQ(U8(Type.ContainerType), "set") << "container_type wins over the alias";
	EXPECT_FALSE(Type.bIsReference) << "a second parse starts from an empty record";

	ASSERT_TRUE(FGraphModificationParser::ParsePinType(Json(R"({"category":"name","container_type":"map","value_type":{"category":"float","sub_category_object":"x"}})"), Type));
	EXPECT_EQ(U8(Type.ValueCategory), "float");
	EXPECT_EQ(U8(Type.ValueSubCategoryObject), "x");
}

TEST_F(PopulateRecordsPinTypes, BuildPinTypeNormalisesRealsAndLoadsTypeObjects)
{
	struct FCase
	{
		const char* Json;
		FName Category;
		FName SubCategory;
		const TCHAR* ObjectName;
		EPinContainerType Container;
	};
	const FCase Cases[] = {
		{R"({"category":"float"})", UEdGraphSchema_K2::PC_Real, UEdGraphSchema_K2::PC_Float, nullptr, EPinContainerType::None},
		{R"({"category":"Double"})", UEdGraphSchema_K2::PC_Real, UEdGraphSchema_K2::PC_Double, nullptr, EPinContainerType::None},
		// A sub category given by the request is kept over the implied precision.
		{R"({"category":"double","sub_category":"float"})", UEdGraphSchema_K2::PC_Real, UEdGraphSchema_K2::PC_Float, nullptr, EPinContainerType::None},
		{R"({"category":"int","container_type":"ARRAY"})", UEdGraphSchema_K2::PC_Int, NAME_None, nullptr, EPinContainerType::Array},
		{R"({"category":"bool","container_type":"list"})", UEdGraphSchema_K2::PC_Boolean, NAME_None, nullptr, EPinContainerType::None},
		{R"({"category":"object","sub_category_object":"/Script/Engine.Actor","container":"set"})", UEdGraphSchema_K2::PC_Object, NAME_None, TEXT("Actor"), EPinContainerType::Set},
		{R"({"category":"object","sub_category_object":"Actor"})", UEdGraphSchema_K2::PC_Object, NAME_None, TEXT("Actor"), EPinContainerType::None},
		// An object that does not load is left out without a word.
		{R"({"category":"object","sub_category_object":"/Script/Engine.NoSuchClass"})", UEdGraphSchema_K2::PC_Object, NAME_None, nullptr, EPinContainerType::None},
		{R"({"category":"struct","sub_category_object":"/Script/CoreUObject.Vector"})", UEdGraphSchema_K2::PC_Struct, NAME_None, TEXT("Vector"), EPinContainerType::None},
	};
	for (const FCase& Case : Cases)
	{
		FPinTypeRecord Record;
		ASSERT_TRUE(FGraphModificationParser::ParsePinType(Json(Case.Json), Record));
		const FEdGraphPinType Type = FGraphModificationParser::BuildPinType(Record);
		EXPECT_EQ(Type.PinCategory, Case.Category) << Case.Json;
		EXPECT_EQ(Type.PinSubCategory, Case.SubCategory) << Case.Json;
		EXPECT_EQ(Type.ContainerType, Case.Container) << Case.Json;
		const UObject* Object = Type.PinSubCategoryObject.Get();
		if (Case.ObjectName)
		{
			ASSERT_NE(Object, nullptr) << Case.Json;
			EXPECT_EQ(U8(Object->GetName()), U8(Case.ObjectName)) << Case.Json;
		}
		else
		{
			EXPECT_EQ(Object, nullptr) << Case.Json;
		}
	}

	FPinTypeRecord Map;
	ASSERT_TRUE(FGraphModificationParser::ParsePinType(Json(R"({"category":"name","container_type":"map","is_const":true,"is_reference":true,"value_type":{"category":"float"}})"), Map));
	const FEdGraphPinType MapType = FGraphModificationParser::BuildPinType(Map);
	EXPECT_EQ(MapType.ContainerType, EPinContainerType::Map);
	EXPECT_EQ(MapType.PinValueType.TerminalCategory, UEdGraphSchema_K2::PC_Real);
	EXPECT_EQ(MapType.PinValueType.TerminalSubCategory, UEdGraphSchema_K2::PC_Float);
	EXPECT_TRUE(MapType.bIsConst);
	EXPECT_TRUE(MapType.bIsReference);
	EXPECT_FALSE(MapType.bIsWeakPointer);
}

TEST(PopulateRecordsParser, FunctionParametersNeedANameAndAType)
{
	struct FCase
	{
		const char* Json;
		bool bParses;
		const char* Direction;
	};
	const FCase Cases[] = {
		{R"({"name":"Damage","type":{"category":"float"}})", true, "input"},
		{R"({"name":"Result","direction":"output","type":{"category":"int"}})", true, "output"},
		{R"({"type":{"category":"int"}})", false, ""},
		{R"({"name":"","type":{"category":"int"}})", false, ""},
		{R"({"name":"NoType"})", false, ""},
		{R"({"name":"BadType","type":"int"})", false, ""},
		{R"({"name":"EmptyType","type":{}})", false, ""},
	};
	for (const FCase& Case : Cases)
	{
		FFunctionParameterRecord Parameter;
		EXPECT_EQ(FGraphModificationParser::ParseFunctionParameter(Json(Case.Json), Parameter), Case.bParses) << Case.Json;
		if (Case.bParses)
		{
			EXPECT_EQ(U8(Parameter.Direction), Case.Direction) << Case.Json;
		}
	}
	FFunctionParameterRecord Parameter;
	ASSERT_TRUE(FGraphModificationParser::ParseFunctionParameter(Json(R"({"name":"Out","type":{"category":"int"}})"), Parameter, TEXT("output")));
	EXPECT_EQ(U8(Parameter.Direction), "output") << "the caller's default fills a missing direction";
}

TEST(PopulateRecordsParser, FunctionRecordKeepsWhatParses)
{
	FFunctionRecord Record;
	ASSERT_TRUE(FGraphModificationParser::ParseFunctionRecord(Json(R"({
		"name": "ComputeDamage", "is_rep_notify": true, "replicated_property": "Health",
		"parameters": [{"name":"Base","type":{"category":"float"}}, {"name":"Broken"}, 3, {"name":"Out","direction":"out","type":{"category":"int"}}],
		"return_type": {"category":"bool"}
	})"), Record));
	EXPECT_EQ(U8(Record.Name), "ComputeDamage");
	EXPECT_FALSE(Record.bIsDelegate);
	EXPECT_TRUE(Record.bIsRepNotify);
	EXPECT_EQ(U8(Record.ReplicatedProperty), "Health");
	ASSERT_EQ(Record.Parameters.Num(), 2);
	EXPECT_EQ(U8(Record.Parameters[0].Name), "Base");
	EXPECT_EQ(U8(Record.Parameters[0].Direction), "input");
	EXPECT_EQ(U8(Record.Parameters[1].Direction), "out");
	ASSERT_TRUE(Record.ReturnType.IsSet());
	EXPECT_EQ(U8(Record.ReturnType->Category), "bool");

	ASSERT_TRUE(FGraphModificationParser::ParseFunctionRecord(Json(R"({"name":"Named","is_delegate":true,"return_type":{"name":"Total","type":{"category":"int"}}})"), Record));
	EXPECT_TRUE(Record.bIsDelegate);
	EXPECT_EQ(U8(Record.ReturnName), "Total");
	ASSERT_TRUE(Record.ReturnType.IsSet());
	EXPECT_EQ(U8(Record.ReturnType->Category), "int");

	// A return type that names no category does not stand, but the record does.
	ASSERT_TRUE(FGraphModificationParser::ParseFunctionRecord(Json(R"({"name":"Loose","return_type":{"sub_category":"x"}})"), Record));
	EXPECT_FALSE(Record.ReturnType.IsSet());
	ASSERT_TRUE(FGraphModificationParser::ParseFunctionRecord(Json(R"({"name":"Loose","return_type":"bool"})"), Record));
	EXPECT_FALSE(Record.ReturnType.IsSet());

	EXPECT_FALSE(FGraphModificationParser::ParseFunctionRecord(Json(R"({"name":""})"), Record));
	EXPECT_FALSE(FGraphModificationParser::ParseFunctionRecord(Json(R"({"is_delegate":true})"), Record));
	EXPECT_FALSE(FGraphModificationParser::ParseFunctionRecord(nullptr, Record));
}
