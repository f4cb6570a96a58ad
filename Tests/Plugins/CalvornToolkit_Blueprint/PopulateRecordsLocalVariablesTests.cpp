// Local variables of a function graph: the request's definitions, and what they do to the function entry.

#include "ReadTestSupport.h"

#include "K2Node_FunctionEntry.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Populate/LocalVariableUtils.h"

using namespace ReadTests;

namespace
{
	class PopulateRecordsLocalVariables : public FReadFixture
	{
	protected:
		PopulateRecordsLocalVariables()
		{
			Blueprint = MakeBlueprint(FindClass(TEXT("/Script/Engine.Actor")), TEXT("BP_Locals"));
			Function = FBlueprintEditorUtils::CreateNewGraph(Blueprint, TEXT("ComputeDamage"), UEdGraph::StaticClass(), UEdGraphSchema_K2::StaticClass());
			FBlueprintEditorUtils::AddFunctionGraph<UClass>(Blueprint, Function, true, nullptr);
			for (UEdGraphNode* Node : Function->Nodes)
			{
				if (UK2Node_FunctionEntry* Found = Cast<UK2Node_FunctionEntry>(Node))
				{
					Entry = Found;
				}
			}
			EXPECT_NE(Entry, nullptr);
		}

		/** Parses and applies one "local_variables" object; the parse must stand. */
		bool Apply(const char* JsonText, FLocalVariableOutcome& Outcome, Calvorn::FToolResult& Result, UEdGraph* Graph = nullptr)
		{
			TArray<FLocalVariableRequest> Requests;
			const TSharedPtr<FJsonObject> Json = ParseJson(FString(UTF8_TO_TCHAR(JsonText)));
			EXPECT_TRUE(Json.IsValid()) << JsonText;
			EXPECT_TRUE(FLocalVariableUtils::ParseLocalVariables(Json, Requests, Result)) << Describe(Result);
			return FLocalVariableUtils::ApplyLocalVariables(Blueprint, Graph ? Graph : Function, Requests, Outcome, Result);
		}

		std::vector<std::string> Names() const
		{
			std::vector<std::string> Result;
			for (const FBPVariableDescription& Variable : Entry->LocalVariables)
			{
				Result.push_back(U8(Variable.VarName.ToString()));
			}
			return Result;
		}

		FBPVariableDescription* Find(const TCHAR* Name) const
		{
			return FLocalVariableUtils::FindLocalVariable(Entry, Name);
		}

		UBlueprint* Blueprint = nullptr;
		UEdGraph* Function = nullptr;
		UK2Node_FunctionEntry* Entry = nullptr;
	};
}

TEST(PopulateRecordsLocalVariableParse, RefusesTheFirstMalformedDefinition)
{
	struct FCase
	{
		const char* Json;
		const char* Error; // null: parses
	};
	const FCase Cases[] = {
		{R"({"A":{"type":{"category":"int"}}})", nullptr},
		{R"({"A":{"action":"REMOVE"}})", nullptr},
		{R"({"A":{"action":"modify","default_variable_value":3}})", nullptr},
		{R"({"A":5})", "Invalid local variable definition for 'A'"},
		{R"({"A":{"type":{"category":"int"}},"B":"text","C":{"bad":true}})", "Invalid local variable definition for 'B'"},
		{R"({"A":{"action":"rename","type":{"category":"int"}}})", "Unsupported local variable action 'rename' for 'A'"},
		{R"({"A":{"type":{"category":"int"},"default_variable_value":[1]}})", "Local variable 'A' has unsupported default value type"},
		{R"({"A":{"type":{"category":"int"},"default_variable_value":{"x":1}}})", "Local variable 'A' has unsupported default value type"},
		{R"({"A":{"type":{"category":"int"},"default_variable_value":null}})", "Local variable 'A' has unsupported default value type"},
		{R"({"A":{"type":"int"}})", "Failed to parse type for local variable 'A'"},
		{R"({"A":{"default_variable_value":"1"}})", "Local variable 'A' is missing required 'type' definition"},
		{R"({"A":{"action":"add"}})", "Local variable 'A' is missing required 'type' definition"},
	};
	for (const FCase& Case : Cases)
	{
		Calvorn::FToolResult Result;
		TArray<FLocalVariableRequest> Requests;
		const bool bParsed = FLocalVariableUtils::ParseLocalVariables(ParseJson(FString(UTF8_TO_TCHAR(Case.Json))), Requests, Result);
		if (!Case.Error)
		{
			EXPECT_TRUE(bParsed) << Case.Json << "\n" << Describe(Result);
			EXPECT_TRUE(Result.GetErrorMessages().IsEmpty());
		}
		else
		{
			EXPECT_FALSE(bParsed) << Case.Json;
			EXPECT_EQ(U8s(Result.GetErrorMessages()), (std::vector<std::string>{Case.Error})) << Case.Json;
		}
	}

	Calvorn::FToolResult Result;
	TArray<FLocalVariableRequest> Requests;
	EXPECT_TRUE(FLocalVariableUtils::ParseLocalVariables(nullptr, Requests, Result));
	EXPECT_TRUE(Requests.IsEmpty());
}

TEST(PopulateRecordsLocalVariableParse, DefaultValuesBecomeText)
{
	Calvorn::FToolResult Result;
	TArray<FLocalVariableRequest> Requests;
	ASSERT_TRUE(FLocalVariableUtils::ParseLocalVariables(ParseJson(TEXT(R"({
		"Rate": {"type": {"category": "float"}, "default_variable_value": 1.5},
		"Count": {"type": {"category": "int"}, "default_variable_value": 3},
		"Armed": {"type": {"category": "bool"}, "default_variable_value": true},
		"Label": {"type": {"category": "string"}, "default_variable_value": "ready"},
		"Old": {"action": "remove", "type": "ignored on removal"},
		"Plain": {"action": "Modify"}
	})")), Requests, Result)) << Describe(Result);
	ASSERT_EQ(Requests.Num(), 6);
	EXPECT_EQ(U8(Requests[0].Name), "Rate");
	EXPECT_EQ(U8(Requests[0].DefaultValue), "1.5");
	EXPECT_EQ(U8(Requests[1].DefaultValue), "3.0");
	EXPECT_EQ(U8(Requests[2].DefaultValue), "true");
	EXPECT_EQ(U8(Requests[3].DefaultValue), "ready");
	EXPECT_TRUE(Requests[3].bHasDefaultValue);
	EXPECT_EQ(Requests[4].Action, FLocalVariableRequest::EAction::Remove);
	EXPECT_FALSE(Requests[4].Type.IsSet());
	EXPECT_EQ(Requests[5].Action, FLocalVariableRequest::EAction::Modify);
	EXPECT_FALSE(Requests[5].Type.IsSet());
	EXPECT_FALSE(Requests[5].bHasDefaultValue);
}

TEST_F(PopulateRecordsLocalVariables, AddsVariablesOfTheRequestedTypes)
{
	FLocalVariableOutcome Outcome;
	Calvorn::FToolResult Result;
	ASSERT_TRUE(Apply(R"({
		"TempDamage": {"type": {"category": "float"}, "default_variable_value": "0.0"},
		"CachedTarget": {"type": {"category": "object", "sub_category_object": "/Script/Engine.Actor"}},
		"Precise": {"type": {"category": "double", "sub_category": "float"}},
		"HitNames": {"type": {"category": "name", "container_type": "array"}}
	})", Outcome, Result)) << Describe(Result);
	EXPECT_EQ(Outcome.Added, 4);
	EXPECT_EQ(Outcome.Modified, 0);
	EXPECT_EQ(Outcome.Removed, 0);
	EXPECT_TRUE(Outcome.Failures.IsEmpty());
	EXPECT_EQ(Names(), (std::vector<std::string>{"TempDamage", "CachedTarget", "Precise", "HitNames"}));

	const FBPVariableDescription* Damage = Find(TEXT("tempdamage"));
	ASSERT_NE(Damage, nullptr) << "found without case";
	EXPECT_EQ(Damage->VarType.PinCategory, UEdGraphSchema_K2::PC_Real);
	EXPECT_EQ(Damage->VarType.PinSubCategory, UEdGraphSchema_K2::PC_Float);
	EXPECT_EQ(U8(Damage->DefaultValue), "0.0");
	const FBPVariableDescription* Target = Find(TEXT("CachedTarget"));
	ASSERT_NE(Target, nullptr);
	EXPECT_EQ(Target->VarType.PinCategory, UEdGraphSchema_K2::PC_Object);
	EXPECT_EQ(Target->VarType.PinSubCategoryObject.Get(), FindClass(TEXT("/Script/Engine.Actor")));
	EXPECT_EQ(Find(TEXT("Precise"))->VarType.PinSubCategory, UEdGraphSchema_K2::PC_Float);
	EXPECT_EQ(Find(TEXT("HitNames"))->VarType.ContainerType, EPinContainerType::Array);
	EXPECT_EQ(Find(TEXT("Nothing")), nullptr);
	EXPECT_EQ(FLocalVariableUtils::FindLocalVariable(nullptr, TEXT("TempDamage")), nullptr);
}

TEST_F(PopulateRecordsLocalVariables, ModifiesAndRemovesAfterAdding)
{
	FLocalVariableOutcome Outcome;
	Calvorn::FToolResult Result;
	ASSERT_TRUE(Apply(R"({
		"ExistingScore": {"type": {"category": "float"}, "default_variable_value": 1},
		"TempBuffer": {"type": {"category": "string"}},
		"Untouched": {"type": {"category": "bool"}}
	})", Outcome, Result)) << Describe(Result);

	// The removal stands first in the request but runs after the addition of the same call.
	ASSERT_TRUE(Apply(R"({
		"TempBuffer": {"action": "remove"},
		"ExistingScore": {"action": "modify", "type": {"category": "int"}, "default_variable_value": 7},
		"Untouched": {"action": "modify"},
		"NewAccumulator": {"type": {"category": "int"}}
	})", Outcome, Result)) << Describe(Result);
	EXPECT_EQ(Outcome.Added, 1);
	EXPECT_EQ(Outcome.Modified, 1) << "a modify that carries nothing is not counted";
	EXPECT_EQ(Outcome.Removed, 1);
	EXPECT_EQ(Names(), (std::vector<std::string>{"ExistingScore", "Untouched", "NewAccumulator"}));
	const FBPVariableDescription* Score = Find(TEXT("ExistingScore"));
	ASSERT_NE(Score, nullptr);
	EXPECT_EQ(Score->VarType.PinCategory, UEdGraphSchema_K2::PC_Int);
	EXPECT_EQ(Score->VarType.PinSubCategory, NAME_None) << "the whole type is replaced";
	EXPECT_EQ(U8(Score->DefaultValue), "7.0");
	EXPECT_TRUE(Result.GetErrorMessages().IsEmpty());

	// Removals run last: a failing removal named first still finds the request's additions made.
	Calvorn::FToolResult Failing;
	EXPECT_FALSE(Apply(R"({"Ghost": {"action": "remove"}, "Scratch": {"type": {"category": "int"}}})", Outcome, Failing));
	EXPECT_EQ(U8s(Failing.GetErrorMessages()), (std::vector<std::string>{"Local variable 'Ghost' not found for removal"}));
	EXPECT_EQ(Outcome.Added, 1);
	EXPECT_NE(Find(TEXT("Scratch")), nullptr);
}

TEST_F(PopulateRecordsLocalVariables, EachFailureStopsTheWorkAndStaysInTheOutcome)
{
	{
		FLocalVariableOutcome Outcome;
		Calvorn::FToolResult Result;
		ASSERT_TRUE(Apply(R"({"Score": {"type": {"category": "int"}}})", Outcome, Result));
	}
	struct FCase
	{
		const char* Json;
		const char* Failure;
		int32 Added;
	};
	const FCase Cases[] = {
		{R"({"score": {"type": {"category": "float"}}})", "Local variable 'score' already exists", 0},
		{R"({"Fresh": {"type": {"category": "bool"}}, "SCORE": {"type": {"category": "bool"}}})", "Local variable 'SCORE' already exists", 1},
		{R"({"Ghost": {"action": "modify", "default_variable_value": "1"}})", "Local variable 'Ghost' not found for modification", 0},
		{R"({"Ghost": {"action": "remove"}})", "Local variable 'Ghost' not found for removal", 0},
		{R"({"NoCategory": {"type": {"sub_category": "x"}}})", "Local variable 'NoCategory' requires a 'type' field for add action", 0},
	};
	for (const FCase& Case : Cases)
	{
		FLocalVariableOutcome Outcome;
		Calvorn::FToolResult Result;
		EXPECT_FALSE(Apply(Case.Json, Outcome, Result)) << Case.Json;
		EXPECT_EQ(U8s(Result.GetErrorMessages()), (std::vector<std::string>{Case.Failure})) << Case.Json;
		EXPECT_EQ(U8s(Outcome.Failures), (std::vector<std::string>{Case.Failure})) << Case.Json;
		EXPECT_EQ(Outcome.Added, Case.Added) << Case.Json;
	}
	// What a failing request did before its failure stays.
	EXPECT_EQ(Names(), (std::vector<std::string>{"Score", "Fresh"}));

	FLocalVariableOutcome Outcome;
	Calvorn::FToolResult Result;
	TArray<FLocalVariableRequest> Unnamed;
	FPinTypeRecord IntType;
	IntType.Category = TEXT("int");
	Unnamed.AddDefaulted_GetRef().Type = IntType;
	EXPECT_FALSE(FLocalVariableUtils::ApplyLocalVariables(Blueprint, Function, Unnamed, Outcome, Result));
	EXPECT_EQ(U8s(Result.GetErrorMessages()), (std::vector<std::string>{"Local variable name cannot be empty"}));
}

TEST_F(PopulateRecordsLocalVariables, EventGraphsOnlyWarnAndMissingObjectsFail)
{
	UEdGraph* EventGraph = Blueprint->UbergraphPages.Num() > 0 ? Blueprint->UbergraphPages[0].Get() : nullptr;
	ASSERT_NE(EventGraph, nullptr);
	FLocalVariableOutcome Outcome;
	Calvorn::FToolResult Result;
	EXPECT_TRUE(Apply(R"({"Temp": {"type": {"category": "int"}}})", Outcome, Result, EventGraph));
	EXPECT_EQ(U8s(Result.GetWarningMessages()), (std::vector<std::string>{"Local variables are only supported in function graphs"}));
	EXPECT_EQ(U8s(Outcome.Failures), (std::vector<std::string>{"Local variables are only supported in function graphs"}));
	EXPECT_TRUE(Result.GetErrorMessages().IsEmpty());
	EXPECT_EQ(Outcome.Added, 0);

	TArray<FLocalVariableRequest> Requests;
	Requests.AddDefaulted_GetRef().Name = TEXT("Temp");
	Calvorn::FToolResult NoGraph;
	EXPECT_FALSE(FLocalVariableUtils::ApplyLocalVariables(Blueprint, nullptr, Requests, Outcome, NoGraph));
	EXPECT_EQ(U8s(NoGraph.GetErrorMessages()), (std::vector<std::string>{"Cannot modify local variables without a valid Blueprint and graph"}));

	// Nothing to do is no failure, whatever the graph.
	Calvorn::FToolResult Nothing;
	EXPECT_TRUE(FLocalVariableUtils::ApplyLocalVariables(nullptr, nullptr, {}, Outcome, Nothing));
	EXPECT_TRUE(Nothing.GetErrorMessages().IsEmpty());
}
