#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Headless/Core/StringTestUtils.h"
#include "ToolInfo.h"
#include "ToolSchemas.h"

#include <gtest/gtest.h>

#include <set>

using namespace Calvorn;

namespace
{
	bool IsSnakeCase(const FString& Name)
	{
		if (Name.IsEmpty() || !FChar::IsLower(Name[0]))
		{
			return false;
		}
		for (const TCHAR Char : Name)
		{
			if (!FChar::IsLower(Char) && !FChar::IsDigit(Char) && Char != TEXT('_'))
			{
				return false;
			}
		}
		return !Name.EndsWith(TEXT("_")) && !Name.Contains(TEXT("__"));
	}

	/** Walks a schema: every node has a type, and an object's required fields are among its properties. */
	void ExpectWellFormed(const TSharedPtr<FJsonObject>& Schema, const std::string& Where)
	{
		ASSERT_TRUE(Schema.IsValid()) << Where;
		ASSERT_TRUE(Schema->HasField(TEXT("type"))) << Where << " has no type";
		FString Type;
		Schema->TryGetStringField(TEXT("type"), Type);
		if (Type == TEXT("object"))
		{
			const TSharedPtr<FJsonObject>* Properties = nullptr;
			const TSharedPtr<FJsonObject>* Additional = nullptr;
			const bool bHasProperties = Schema->TryGetObjectField(TEXT("properties"), Properties);
			const bool bHasAdditional = Schema->TryGetObjectField(TEXT("additionalProperties"), Additional);
			if (bHasProperties)
			{
				for (const auto& Pair : (*Properties)->Values)
				{
					ExpectWellFormed(Pair.Value->AsObject(), Where + "." + U8(Pair.Key));
				}
			}
			if (bHasAdditional)
			{
				ExpectWellFormed(*Additional, Where + ".*");
			}
			TArray<FString> Required;
			if (Schema->TryGetStringArrayField(TEXT("required"), Required))
			{
				ASSERT_TRUE(bHasProperties) << Where;
				for (const FString& Name : Required)
				{
					EXPECT_TRUE((*Properties)->HasField(Name)) << Where << " requires missing " << U8(Name);
				}
			}
		}
		else if (Type == TEXT("array"))
		{
			const TSharedPtr<FJsonObject>* Items = nullptr;
			ASSERT_TRUE(Schema->TryGetObjectField(TEXT("items"), Items)) << Where << " has no items";
			ExpectWellFormed(*Items, Where + "[]");
		}
	}

	TArray<FString> Required(const TSharedPtr<FJsonObject>& Schema)
	{
		TArray<FString> Names;
		Schema->TryGetStringArrayField(TEXT("required"), Names);
		return Names;
	}
}

TEST(ToolInfoTest, NineteenDistinctSnakeCaseToolNames)
{
	const TArray<FString> Names = ToolInfo::GetAllToolNames();
	ASSERT_EQ(Names.Num(), 19);
	std::set<std::string> Distinct;
	for (const FString& Name : Names)
	{
		EXPECT_TRUE(IsSnakeCase(Name)) << U8(Name);
		Distinct.insert(U8(Name.ToLower()));
	}
	EXPECT_EQ(Distinct.size(), 19u);

	// The names the Blueprint module repeats as literals.
	EXPECT_EQ(U8(ToolInfo::ToolName_ReadBlueprintSchema), "read_blueprint_schema");
	EXPECT_EQ(U8(ToolInfo::ToolName_ReadBlueprintVariable), "read_blueprint_variable");
	EXPECT_EQ(U8(ToolInfo::ToolName_ReadBlueprintComponent), "read_blueprint_component");
	EXPECT_EQ(U8(ToolInfo::ToolName_ReadBlueprintFunction), "read_blueprint_function");
	EXPECT_EQ(U8(ToolInfo::ToolName_UIModifyWidgetBP), "ui_modify_widget_bp");
	EXPECT_EQ(U8(ToolInfo::ToolName_BPPopulateGraph), "bp_populate_graph");
	EXPECT_EQ(U8(ToolInfo::ToolName_BPCreateGraph), "bp_create_graph");
	EXPECT_EQ(U8(ToolInfo::ToolName_BPModifyGraphNodes), "bp_modify_graph_nodes");
	EXPECT_EQ(U8(ToolInfo::ToolName_CompileBlueprint), "compile_blueprint");
	EXPECT_EQ(U8(Names[0]), "read_blueprint_schema");
	EXPECT_EQ(U8(Names[18]), "compile_blueprint");

	// The field names the reads and requests spell out.
	EXPECT_EQ(U8(ToolInfo::FieldName_Path), "path");
	EXPECT_EQ(U8(ToolInfo::FieldName_VariableName), "variable_name");
	EXPECT_EQ(U8(ToolInfo::FieldName_Components), "components");
	EXPECT_EQ(U8(ToolInfo::FieldName_WidgetName), "widget_name");
	for (const TCHAR* Field : {ToolInfo::FieldName_ReadTool, ToolInfo::FieldName_Events, ToolInfo::FieldName_FloatingNodeName, ToolInfo::FieldName_GraphName,
			 ToolInfo::FieldName_EventName, ToolInfo::FieldName_MacroName, ToolInfo::FieldName_TimelineName, ToolInfo::FieldName_Timelines,
			 ToolInfo::FieldName_DelegateName, ToolInfo::FieldName_Delegates, ToolInfo::FieldName_InterfaceName, ToolInfo::FieldName_Interfaces})
	{
		EXPECT_TRUE(IsSnakeCase(Field)) << U8(Field);
	}
}

TEST(ToolSchemaTest, EveryToolHasAWellFormedObjectSchemaWithDescribedFields)
{
	for (const FString& Name : ToolInfo::GetAllToolNames())
	{
		const TSharedPtr<FJsonObject> Schema = ToolInfo::GetToolParameterSchema(Name);
		ASSERT_TRUE(Schema.IsValid()) << U8(Name);
		EXPECT_EQ(U8(Schema->GetStringField(TEXT("$schema"))), "https://json-schema.org/draft/2020-12/schema") << U8(Name);
		EXPECT_EQ(U8(Schema->GetStringField(TEXT("type"))), "object") << U8(Name);
		EXPECT_FALSE(Schema->GetStringField(TEXT("description")).IsEmpty()) << U8(Name);
		EXPECT_GT(Required(Schema).Num(), 0) << U8(Name) << " requires nothing";
		ExpectWellFormed(Schema, U8(Name));
		for (const auto& Field : Schema->GetObjectField(TEXT("properties"))->Values)
		{
			EXPECT_FALSE(Field.Value->AsObject()->GetStringField(TEXT("description")).IsEmpty()) << U8(Name) << "." << U8(Field.Key);
		}
	}
}

TEST(ToolSchemaTest, RequiredFieldsFollowEachToolsRequest)
{
	struct FCase
	{
		const TCHAR* Tool;
		std::vector<std::string> Required;
	};
	const FCase Cases[] = {
		{ToolInfo::ToolName_ReadBlueprintSchema, {"path"}},
		{ToolInfo::ToolName_ReadBlueprintVariable, {"path", "variable_name"}},
		{ToolInfo::ToolName_ReadBlueprintComponent, {"path", "component_name"}},
		{ToolInfo::ToolName_ReadBlueprintFunction, {"path", "function_name"}},
		{ToolInfo::ToolName_ReadBlueprintInterface, {"path", "interface_name"}},
		{ToolInfo::ToolName_ReadBlueprintEvent, {"path", "graph_name", "event_name"}},
		{ToolInfo::ToolName_ReadBlueprintTimeline, {"path", "timeline_name"}},
		{ToolInfo::ToolName_ReadBlueprintDelegate, {"path", "delegate_name"}},
		{ToolInfo::ToolName_ReadBlueprintMacro, {"path", "macro_name"}},
		{ToolInfo::ToolName_ReadBlueprintWidgetTree, {"path"}},
		{ToolInfo::ToolName_ModifyBlueprintClassStructure, {"path"}},
		{ToolInfo::ToolName_UIModifyWidgetBP, {"path"}},
		{ToolInfo::ToolName_BPPopulateGraph, {"path", "graph_name"}},
		{ToolInfo::ToolName_BPCreateGraph, {"path", "functions"}},
		{ToolInfo::ToolName_BPModifyGraphNodes, {"path", "graph_name"}},
		{ToolInfo::ToolName_BPRemoveGraphConnections, {"path", "graph_name"}},
		{ToolInfo::ToolName_BPCreateAsset, {"path", "blueprint_parent_class"}},
		{ToolInfo::ToolName_DeleteBlueprint, {"path"}},
		{ToolInfo::ToolName_CompileBlueprint, {"blueprint_paths"}},
	};
	for (const FCase& Case : Cases)
	{
		std::vector<std::string> Actual;
		for (const FString& Name : Required(ToolInfo::GetToolParameterSchema(Case.Tool)))
		{
			Actual.push_back(U8(Name));
		}
		EXPECT_EQ(Actual, Case.Required) << U8(Case.Tool);
	}

	// "At least one of" groups.
	const TSharedPtr<FJsonObject> Populate = ToolInfo::GetToolParameterSchema(ToolInfo::ToolName_BPPopulateGraph);
	EXPECT_EQ(Populate->GetArrayField(TEXT("anyOf")).Num(), 2);
	const TSharedPtr<FJsonObject> Structure = ToolInfo::GetToolParameterSchema(ToolInfo::ToolName_ModifyBlueprintClassStructure);
	EXPECT_EQ(Structure->GetArrayField(TEXT("anyOf")).Num(), 5);
	const TSharedPtr<FJsonObject> CreateGraph = ToolInfo::GetToolParameterSchema(ToolInfo::ToolName_BPCreateGraph);
	EXPECT_EQ(CreateGraph->GetObjectField(TEXT("properties"))->GetObjectField(TEXT("functions"))->GetNumberField(TEXT("minItems")), 1.0);
}

TEST(ToolSchemaTest, LookupIgnoresCaseGivesFreshObjectsAndRefusesUnknownTools)
{
	EXPECT_FALSE(ToolInfo::GetToolParameterSchema(TEXT("no_such_tool")).IsValid());
	EXPECT_FALSE(ToolInfo::GetToolParameterSchema(TEXT("")).IsValid());
	ASSERT_TRUE(ToolInfo::GetToolParameterSchema(TEXT("COMPILE_Blueprint")).IsValid());

	TSharedPtr<FJsonObject> First = ToolInfo::GetToolParameterSchema(ToolInfo::ToolName_DeleteBlueprint);
	First->SetStringField(TEXT("type"), TEXT("changed"));
	First->GetObjectField(TEXT("properties"))->RemoveField(TEXT("path"));
	const TSharedPtr<FJsonObject> Second = ToolInfo::GetToolParameterSchema(ToolInfo::ToolName_DeleteBlueprint);
	EXPECT_EQ(U8(Second->GetStringField(TEXT("type"))), "object");
	EXPECT_TRUE(Second->GetObjectField(TEXT("properties"))->HasField(TEXT("path")));
}
