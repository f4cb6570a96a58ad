// The telemetry a graph population leaves beside its answer: every recorder adds to what is there.

#include "ReadTestSupport.h"

#include "Populate/ContextActionMenu.h"
#include "Populate/GraphModificationRecords.h"
#include "Populate/PopulateTelemetry.h"

using namespace ReadTests;

namespace
{
	TSharedPtr<FJsonObject> Telemetry(const Calvorn::FToolResult& Result)
	{
		return Obj(Result.GetDatas(), TEXT("telemetry"));
	}

	FNodeModificationRecord RecordWith(std::initializer_list<std::pair<const TCHAR*, const TCHAR*>> Metadata)
	{
		FNodeModificationRecord Record;
		for (const auto& [Key, Value] : Metadata)
		{
			Record.NodeMetadata.Add(Key, Value);
		}
		return Record;
	}
}

TEST(PopulateRecordsTelemetry, GetOrCreateStoresOnlyWhenAsked)
{
	Calvorn::FToolResult Result;
	EXPECT_FALSE(FPopulateTelemetry::HasTelemetry(Result));
	TSharedPtr<FJsonObject> Loose = FPopulateTelemetry::GetOrCreateTelemetry(Result);
	ASSERT_TRUE(Loose.IsValid());
	EXPECT_FALSE(FPopulateTelemetry::HasTelemetry(Result)) << "a new object is not stored by the plain getter";

	TSharedPtr<FJsonObject> Stored = FPopulateTelemetry::GetOrCreateStoredTelemetry(Result);
	EXPECT_TRUE(FPopulateTelemetry::HasTelemetry(Result));
	Stored->SetNumberField(TEXT("cam_action_count"), 12);
	EXPECT_EQ(FPopulateTelemetry::GetOrCreateTelemetry(Result), Stored) << "the stored object is handed back, not a copy";

	// Something else under the key is no telemetry object.
	Calvorn::FToolResult Odd;
	Odd.SetData(TEXT("telemetry"), TEXT("text"));
	EXPECT_FALSE(FPopulateTelemetry::HasTelemetry(Odd));
	FPopulateTelemetry::IncrementCounter(Odd, TEXT("pin_direction_fallbacks"));
	EXPECT_EQ(Telemetry(Odd)->GetNumberField(TEXT("pin_direction_fallbacks")), 1.0);
}

TEST(PopulateRecordsTelemetry, RecordersStartTheObjectAndAppendInOrder)
{
	Calvorn::FToolResult Result;
	FPopulateTelemetry::IncrementPinDirectionFallbacks(Result);
	FPopulateTelemetry::IncrementPinDirectionFallbacks(Result);
	FPopulateTelemetry::IncrementSpawnMethod(Result, TEXT("deterministic"));
	FPopulateTelemetry::IncrementSpawnMethod(Result, TEXT("cam_global"));
	FPopulateTelemetry::IncrementSpawnMethod(Result, TEXT("deterministic"));
	FPopulateTelemetry::RecordValidationFailure(Result, TEXT("first"));
	FPopulateTelemetry::RecordValidationFailure(Result, TEXT("second"));
	FPopulateTelemetry::RecordConnectionFailure(Result, TEXT("Branch"), TEXT("then"), TEXT("Print String"), TEXT("In String"), TEXT("types differ"));
	FPopulateTelemetry::RecordHalfConnected(Result, TEXT("NodeA"), TEXT("Branch"), 3, 1);
	FPopulateTelemetry::RecordNodeLatency(Result, TEXT("NodeA"), TEXT("Branch"), 1.25);
	FPopulateTelemetry::SetTelemetryString(Result, TEXT("resolved_class_path"), TEXT("/Script/Engine.Actor"));
	FPopulateTelemetry::SetTelemetryNumber(Result, TEXT("format_time_ms"), 0.5);

	const TSharedPtr<FJsonObject> Object = Telemetry(Result);
	ASSERT_TRUE(Object.IsValid());
	EXPECT_EQ(Object->GetNumberField(TEXT("pin_direction_fallbacks")), 2.0);
	const TSharedPtr<FJsonObject> Methods = Obj(Object, TEXT("spawn_methods"));
	ASSERT_TRUE(Methods.IsValid());
	EXPECT_EQ(Keys(Methods), (std::vector<std::string>{"deterministic", "cam_global"}));
	EXPECT_EQ(Methods->GetNumberField(TEXT("deterministic")), 2.0);
	EXPECT_EQ(Methods->GetNumberField(TEXT("cam_global")), 1.0);
	EXPECT_EQ(Strings(Object, TEXT("validation_failures")), (std::vector<std::string>{"first", "second"}));

	const TArray<TSharedPtr<FJsonObject>> Failures = Objects(Object, TEXT("connection_failures"));
	ASSERT_EQ(Failures.Num(), 1);
	EXPECT_EQ(Keys(Failures[0]), (std::vector<std::string>{"source_node", "source_pin", "target_node", "target_pin", "reason"}));
	EXPECT_EQ(Str(Failures[0], TEXT("target_pin")), "In String");
	EXPECT_EQ(Str(Failures[0], TEXT("reason")), "types differ");

	const TArray<TSharedPtr<FJsonObject>> Half = Objects(Object, TEXT("half_connected_nodes"));
	ASSERT_EQ(Half.Num(), 1);
	EXPECT_EQ(Keys(Half[0]), (std::vector<std::string>{"node_id", "node_title", "expected_connections", "actual_connections"}));
	EXPECT_EQ(Half[0]->GetNumberField(TEXT("expected_connections")), 3.0);
	EXPECT_EQ(Half[0]->GetNumberField(TEXT("actual_connections")), 1.0);

	const TArray<TSharedPtr<FJsonObject>> Latency = Objects(Object, TEXT("node_creation_latency_ms"));
	ASSERT_EQ(Latency.Num(), 1);
	EXPECT_EQ(Keys(Latency[0]), (std::vector<std::string>{"duration_ms", "node_id", "node_title"}));
	EXPECT_EQ(Latency[0]->GetNumberField(TEXT("duration_ms")), 1.25);
	EXPECT_EQ(Str(Object, TEXT("resolved_class_path")), "/Script/Engine.Actor");
	EXPECT_EQ(Object->GetNumberField(TEXT("format_time_ms")), 0.5);
}

TEST(PopulateRecordsTelemetry, AppendingKeepsWhatAnotherWriterStored)
{
	// The driver writes its own keys straight into the stored object; a recorder must not lose them.
	Calvorn::FToolResult Result;
	TSharedPtr<FJsonObject> Stored = FPopulateTelemetry::GetOrCreateStoredTelemetry(Result);
	Stored->SetNumberField(TEXT("cam_build_time_ms"), 4.0);
	Stored->SetArrayField(TEXT("validation_failures"), TArray<TSharedPtr<FJsonValue>>{MakeShared<FJsonValueString>(TEXT("earlier"))});
	FPopulateTelemetry::RecordValidationFailure(Result, TEXT("later"));
	const TSharedPtr<FJsonObject> Object = Telemetry(Result);
	EXPECT_EQ(Object->GetNumberField(TEXT("cam_build_time_ms")), 4.0);
	EXPECT_EQ(Strings(Object, TEXT("validation_failures")), (std::vector<std::string>{"earlier", "later"}));
}

TEST(PopulateRecordsTelemetry, LatencyScopeRecordsOnExit)
{
	Calvorn::FToolResult Result;
	{
		FNodeLatencyScope Scope(Result, TEXT("N1"), TEXT("Print String"));
		EXPECT_FALSE(FPopulateTelemetry::HasTelemetry(Result));
	}
	const TArray<TSharedPtr<FJsonObject>> Latency = Objects(Telemetry(Result), TEXT("node_creation_latency_ms"));
	ASSERT_EQ(Latency.Num(), 1);
	EXPECT_EQ(Str(Latency[0], TEXT("node_id")), "N1");
	EXPECT_EQ(Str(Latency[0], TEXT("node_title")), "Print String");
	EXPECT_GE(Latency[0]->GetNumberField(TEXT("duration_ms")), 0.0);
}

TEST(PopulateRecordsTelemetry, SpawnMethodFollowsTheFirstRuleThatHolds)
{
	struct FCase
	{
		FNodeModificationRecord Record;
		const char* Expected;
	};
	FNodeModificationRecord Deterministic;
	Deterministic.TargetClass = TEXT("KismetSystemLibrary");
	Deterministic.TargetFunction = TEXT("PrintString");
	FNodeModificationRecord ClassOnly;
	ClassOnly.TargetClass = TEXT("KismetSystemLibrary");
	FNodeModificationRecord Filtered = ClassOnly;
	Filtered.MenuCategory = TEXT("Development");
	Filtered.ClassName = TEXT("K2Node_CallFunction");
	FNodeModificationRecord WithClass;
	WithClass.ClassName = TEXT("K2Node_IfThenElse");
	FNodeModificationRecord Labelled = Deterministic;
	Labelled.NodeMetadata.Add(TEXT("spawn_method"), TEXT("  custom  "));
	FNodeModificationRecord Blank = WithClass;
	Blank.NodeMetadata.Add(TEXT("spawn_method"), TEXT("   "));

	const FCase Cases[] = {
		{Deterministic, "deterministic"},
		{ClassOnly, "cam_global"},
		{Filtered, "cam_filtered"},
		{WithClass, "cam_global_with_class"},
		{Labelled, "custom"},
		{Blank, "cam_global_with_class"},
		{FNodeModificationRecord(), "cam_global"},
	};
	for (const FCase& Case : Cases)
	{
		EXPECT_EQ(U8(FPopulateTelemetry::ResolveSpawnMethod(Case.Record)), Case.Expected);
	}
}

TEST(PopulateRecordsTelemetry, MinimumConfidenceAcceptsOnlyTheUnitRange)
{
	struct FCase
	{
		const TCHAR* Text;
		float Expected;
	};
	const FCase Cases[] = {
		{TEXT("0.8"), 0.8f},
		{TEXT("1"), 1.0f},
		{TEXT("0"), 0.0f},
		{TEXT("1.5"), 0.6f},
		{TEXT("-0.1"), 0.6f},
		{TEXT("abc"), 0.0f},
		{TEXT(""), 0.6f},
	};
	for (const FCase& Case : Cases)
	{
		EXPECT_FLOAT_EQ(FPopulateTelemetry::ResolveMinimumConfidence(RecordWith({{TEXT("minimum_confidence"), Case.Text}})), Case.Expected) << U8(Case.Text);
	}
	EXPECT_FLOAT_EQ(FPopulateTelemetry::ResolveMinimumConfidence(FNodeModificationRecord()), 0.6f);
}

TEST(PopulateRecordsTelemetry, CandidateMatchesKeepTwentyInOrder)
{
	Calvorn::FToolResult Result;
	FPopulateTelemetry::RecordCandidateMatches(Result, {}, TEXT("nothing"));
	EXPECT_FALSE(Result.GetDatas()->HasField(TEXT("candidate_matches"))) << "nothing is written for no candidates";

	TArray<FCamMatch> Candidates;
	for (int32 Index = 0; Index < 25; ++Index)
	{
		FCamMatch& Match = Candidates.AddDefaulted_GetRef();
		Match.MenuTitle = FString::Printf(TEXT("Entry %d"), Index);
		Match.NodeClass = TEXT("K2Node_CallFunction");
		Match.MenuCategory = Index == 1 ? FString() : FString(TEXT("Math"));
		Match.CommonKeywords = 25 - Index;
		Match.Confidence = 0.5f;
	}
	FPopulateTelemetry::RecordCandidateMatches(Result, Candidates, TEXT("[Failure] refused"));
	FString Text;
	ASSERT_TRUE(Result.GetDatas()->TryGetStringField(TEXT("candidate_matches"), Text)) << "the report travels as text";
	const TSharedPtr<FJsonObject> Report = ParseJson(Text);
	ASSERT_TRUE(Report.IsValid());
	EXPECT_EQ(Keys(Report), (std::vector<std::string>{"candidates", "context"}));
	const TArray<TSharedPtr<FJsonObject>> Entries = Objects(Report, TEXT("candidates"));
	ASSERT_EQ(Entries.Num(), 20);
	EXPECT_EQ(Str(Entries[0], TEXT("menu_title")), "Entry 0");
	EXPECT_EQ(Str(Entries[19], TEXT("menu_title")), "Entry 19");
	EXPECT_EQ(Keys(Entries[0]), (std::vector<std::string>{"menu_title", "node_class", "menu_category", "confidence", "common_keywords"}));
	EXPECT_EQ(Keys(Entries[1]), (std::vector<std::string>{"menu_title", "node_class", "confidence", "common_keywords"}));
	EXPECT_EQ(Entries[0]->GetNumberField(TEXT("common_keywords")), 25.0);
	EXPECT_DOUBLE_EQ(Entries[0]->GetNumberField(TEXT("confidence")), 0.5);
	EXPECT_EQ(Str(Report, TEXT("context")), "[Failure] refused");

	// A later report replaces the earlier one, and an empty context is left out.
	Candidates.SetNum(2);
	FPopulateTelemetry::RecordCandidateMatches(Result, Candidates, FString());
	ASSERT_TRUE(Result.GetDatas()->TryGetStringField(TEXT("candidate_matches"), Text));
	const TSharedPtr<FJsonObject> Second = ParseJson(Text);
	EXPECT_EQ(Keys(Second), (std::vector<std::string>{"candidates"}));
	EXPECT_EQ(Objects(Second, TEXT("candidates")).Num(), 2);
}
