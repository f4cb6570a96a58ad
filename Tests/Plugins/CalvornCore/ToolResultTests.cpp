#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Headless/Core/StringTestUtils.h"
#include "ModificationReadRegistry.h"
#include "OperationDurationScope.h"
#include "Serialization/JsonSerializer.h"
#include "Serialization/JsonWriter.h"
#include "ToolInfo.h"
#include "ToolResult.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

using namespace Calvorn;

namespace
{
	std::string Condensed(const TSharedPtr<FJsonObject>& Object)
	{
		FString Text;
		FJsonSerializer::Serialize(Object.ToSharedRef(), TJsonWriterFactory<TCHAR, TCondensedJsonPrintPolicy<TCHAR>>::Create(&Text));
		return U8(Text);
	}

	/** Registers read tools for one test and removes them afterwards, so tests do not see each other's. */
	class FScopedReadTool
	{
	public:
		FScopedReadTool(const TCHAR* InName, FModificationReadRegistry::FReadCallback Callback)
			: Name(InName)
		{
			EXPECT_TRUE(FModificationReadRegistry::Get().RegisterReadTool(Name, ToolInfo::CategoryName_Blueprint, MoveTemp(Callback)));
		}
		~FScopedReadTool()
		{
			FModificationReadRegistry::Get().UnregisterReadTool(Name);
		}

	private:
		FString Name;
	};
}

TEST(ToolResultTest, ClientFailureIsAnErrorOrAFailureWarningInAnyCase)
{
	struct FCase
	{
		TArray<const TCHAR*> Errors;
		TArray<const TCHAR*> Warnings;
		bool bWasSuccessful;
		bool bHasFailed;
	};
	const FCase Cases[] = {
		{{}, {}, true, false},
		{{}, {TEXT("[Warning] Event 'BeginPlay' already exists in EventGraph; reusing node 1a2b3c4")}, true, false},
		{{}, {TEXT("plain anomaly")}, true, false},
		{{}, {TEXT("[Failure] Pin 'Target' not found")}, true, true},
		{{}, {TEXT("[failure] lower case still counts")}, true, true},
		{{}, {TEXT("Read-back: [FAILURE] inside the text counts too")}, true, true},
		{{}, {TEXT("Failure without brackets is a plain warning")}, true, false},
		{{TEXT("Missing required field 'path'")}, {}, false, true},
	};
	for (const FCase& Case : Cases)
	{
		FToolResult Result;
		for (const TCHAR* Error : Case.Errors)
		{
			Result.AddErrorMessage(Error);
		}
		for (const TCHAR* Warning : Case.Warnings)
		{
			Result.AddWarningMessage(Warning);
		}
		const std::string Label = Case.Warnings.Num() ? U8(Case.Warnings[0]) : (Case.Errors.Num() ? U8(Case.Errors[0]) : std::string("empty"));
		EXPECT_EQ(Result.WasSuccessful(), Case.bWasSuccessful) << Label;
		EXPECT_EQ(Result.HasFailed(), Case.bHasFailed) << Label;
		EXPECT_EQ(Result.ToJson()->GetBoolField(TEXT("success")), !Case.bHasFailed) << Label;
	}
}

TEST(ToolResultTest, MutatorsChainAndKeepMessagesInOrder)
{
	FToolResult Result(FToolCommand(TEXT("req-7"), TEXT("bp_populate_graph"), TEXT("{}")));
	Result.AddWarningMessage(TEXT("w1")).AddErrorMessage(TEXT("e1")).AddWarningMessage(TEXT("w2")).AddSuccessMessage(TEXT("done"));
	EXPECT_EQ(U8(Result.GetRequestId()), "req-7");
	EXPECT_EQ(U8(Result.GetToolName()), "bp_populate_graph");
	ASSERT_EQ(Result.GetWarningMessages().Num(), 2);
	EXPECT_EQ(U8(Result.GetWarningMessages()[0]), "w1");
	EXPECT_EQ(U8(Result.GetWarningMessages()[1]), "w2");
	EXPECT_EQ(Result.GetErrorMessages().Num(), 1);
	EXPECT_EQ(Result.GetSuccessMessages().Num(), 1);
}

TEST(ToolResultTest, DataObjectIsSharedAndExtendedInPlace)
{
	FToolResult Result;
	const TSharedPtr<FJsonObject> Data = Result.GetDatas();
	ASSERT_TRUE(Data.IsValid());
	Result.SetData(TEXT("nodes_created"), TEXT("3"));
	TSharedPtr<FJsonObject> Telemetry = MakeShared<FJsonObject>();
	Telemetry->SetNumberField(TEXT("cam_action_count"), 12);
	Result.SetData(TEXT("telemetry"), Telemetry);
	// A later phase extends the same telemetry object through the data object.
	Result.GetDatas()->GetObjectField(TEXT("telemetry"))->SetBoolField(TEXT("context_sensitive"), false);

	EXPECT_EQ(Data.Get(), Result.GetDatas().Get());
	EXPECT_EQ(Condensed(Data), R"({"nodes_created":"3","telemetry":{"cam_action_count":12,"context_sensitive":false}})");

	Result.SetData(TEXT("nodes_created"), TEXT("4"));
	Result.SetData(TEXT("missing"), TSharedPtr<FJsonObject>());
	EXPECT_EQ(Condensed(Data), R"({"nodes_created":"4","telemetry":{"cam_action_count":12,"context_sensitive":false},"missing":null})");
}

TEST(ToolResultTest, JsonFormHasTheClientKeysInOrderAndStringsStayStrings)
{
	FToolResult Result;
	Result.AddWarningMessage(TEXT("[Failure] Node 'X' could not be spawned"));
	Result.AddSuccessMessage(TEXT("Created 1/2 nodes"));
	Result.SetData(TEXT("created_nodes"), TEXT("{\"nodes\":[]}"));
	Result.SetData(TEXT("count"), TEXT("2"));

	EXPECT_EQ(Condensed(Result.ToJson()),
		R"({"success":false,"errors":[],"warnings":["[Failure] Node 'X' could not be spawned"],"messages":["Created 1/2 nodes"],)"
		R"("data":{"created_nodes":"{\"nodes\":[]}","count":"2"},"read_backs":[]})");
}

TEST(ToolResultTest, FinalizeRunsTrackedReadsInOrderOnceEach)
{
	TArray<FString> Calls;
	FScopedReadTool Function(TEXT("test_read_function"), [&Calls](TSharedPtr<FJsonObject> Parameters, FToolResult& ReadResult)
	{
		Calls.Add(TEXT("function:") + Parameters->GetStringField(ToolInfo::FieldName_Path));
		return FString(TEXT("{\"functions\":[{\"name\":\"Open\"}]}"));
	});
	FScopedReadTool Raw(TEXT("test_read_raw"), [&Calls](TSharedPtr<FJsonObject> Parameters, FToolResult& ReadResult)
	{
		Calls.Add(TEXT("raw"));
		return FString(TEXT("not json at all"));
	});

	FToolResult Result;
	TSharedPtr<FJsonObject> Parameters = MakeShared<FJsonObject>();
	Parameters->SetStringField(ToolInfo::FieldName_Path, TEXT("/Game/BP_Door"));
	Result.TrackModification(TEXT("test_read_function"), Parameters);
	Result.TrackModification(TEXT("TEST_READ_RAW"), nullptr);
	EXPECT_EQ(Result.GetPendingModificationCount(), 2);

	Result.FinalizeModifications();
	Result.FinalizeModifications();

	ASSERT_EQ(Calls.Num(), 2);
	EXPECT_EQ(U8(Calls[0]), "function:/Game/BP_Door");
	EXPECT_EQ(U8(Calls[1]), "raw");
	EXPECT_EQ(Result.GetPendingModificationCount(), 0);
	ASSERT_EQ(Result.GetReadBacks().Num(), 2);
	EXPECT_TRUE(Result.WasSuccessful());
	EXPECT_EQ(Condensed(Result.ToJson()->GetArrayField(TEXT("read_backs"))[0]->AsObject()),
		R"({"tool":"test_read_function","result":{"functions":[{"name":"Open"}]}})");
	EXPECT_EQ(Condensed(Result.ToJson()->GetArrayField(TEXT("read_backs"))[1]->AsObject()),
		R"({"tool":"TEST_READ_RAW","result":"not json at all"})");
}

TEST(ToolResultTest, AFailedOrMissingReadBackDoesNotFailTheChange)
{
	FScopedReadTool Failing(TEXT("test_read_failing"), [](TSharedPtr<FJsonObject>, FToolResult& ReadResult)
	{
		ReadResult.AddErrorMessage(TEXT("Blueprint does not exist: /Game/Gone"));
		return FString(TEXT("{}"));
	});

	FToolResult Result;
	Result.TrackModification(TEXT("test_read_failing"), MakeShared<FJsonObject>());
	Result.TrackModification(TEXT("test_read_not_registered"), MakeShared<FJsonObject>());
	Result.FinalizeModifications();

	EXPECT_TRUE(Result.WasSuccessful());
	EXPECT_FALSE(Result.HasFailed());
	ASSERT_EQ(Result.GetWarningMessages().Num(), 2);
	EXPECT_NE(U8(Result.GetWarningMessages()[0]).find("Blueprint does not exist: /Game/Gone"), std::string::npos);
	EXPECT_NE(U8(Result.GetWarningMessages()[1]).find("test_read_not_registered"), std::string::npos);
	// The failed read still reports what it returned; the missing one has nothing to report.
	ASSERT_EQ(Result.GetReadBacks().Num(), 1);
	EXPECT_EQ(U8(Result.GetReadBacks()[0].Text), "{}");
}

TEST(ToolResultTest, ModifiedObjectsAreKeptOnceAndNullIsIgnored)
{
	UPackage* Package = CreatePackage(TEXT("/Temp/ToolResultModified"));
	ASSERT_NE(Package, nullptr);
	FToolResult Result;
	Result.AddModifiedObjects(Package).AddModifiedObjects(Package).AddModifiedObjects(nullptr);
	ASSERT_EQ(Result.GetModifiedObjects().Num(), 1);
	EXPECT_EQ(Result.GetModifiedObjects()[0].Get(), Package);
}

TEST(OperationDurationScopeTest, SetsDurationOnEveryWayOut)
{
	auto Operation = [](FToolResult& Result, bool bFailEarly)
	{
		FOperationDurationScope Duration(Result);
		if (bFailEarly)
		{
			Result.AddErrorMessage(TEXT("Missing required field 'path'"));
			return;
		}
		std::this_thread::sleep_for(std::chrono::milliseconds(30));
		Result.AddSuccessMessage(TEXT("done"));
	};

	FToolResult Early;
	Operation(Early, true);
	FString EarlyText;
	ASSERT_TRUE(Early.GetDatas()->TryGetStringField(TEXT("duration_seconds"), EarlyText));
	// A string with exactly three decimals.
	const std::string Text = U8(EarlyText);
	ASSERT_GE(Text.size(), 5u);
	EXPECT_EQ(Text[Text.size() - 4], '.');
	EXPECT_LT(FCString::Atod(*EarlyText), 0.03);

	FToolResult Late;
	Operation(Late, false);
	const double Seconds = FCString::Atod(*Late.GetDatas()->GetStringField(TEXT("duration_seconds")));
	EXPECT_GE(Seconds, 0.025);
	EXPECT_LT(Seconds, 5.0);
}
