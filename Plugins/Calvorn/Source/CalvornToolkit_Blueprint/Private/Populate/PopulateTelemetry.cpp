#include "Populate/PopulateTelemetry.h"

#include "AssetOperationBase.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "HAL/PlatformTime.h"
#include "Populate/ContextActionMenu.h"
#include "Populate/GraphModificationRecords.h"
#include "ToolResult.h"

namespace
{
	const FString TelemetryKey = TEXT("telemetry");

	/** A client reads at most this many candidates; more would only bury the useful ones. */
	constexpr int32 MaxReportedCandidates = 20;

	/** The confidence a fuzzy match must reach when the request does not say otherwise. */
	constexpr float DefaultMinimumConfidence = 0.6f;

	/** The array stored under Key, copied, or an empty one when the key is missing or holds something else. */
	TArray<TSharedPtr<FJsonValue>> CopyArrayField(const FJsonObject& Object, const FString& Key)
	{
		const TArray<TSharedPtr<FJsonValue>>* Existing = nullptr;
		if (Object.TryGetArrayField(Key, Existing) && Existing)
		{
			return *Existing;
		}
		return {};
	}

	/** The number stored under Key, 0 when missing or not a number. */
	double ReadCounter(const FJsonObject& Object, const FString& Key)
	{
		double Value = 0.0;
		if (!Object.TryGetNumberField(Key, Value))
		{
			return 0.0;
		}
		return Value;
	}
}

TSharedPtr<FJsonObject> FPopulateTelemetry::GetOrCreateTelemetry(Calvorn::FToolResult& Result)
{
	const TSharedPtr<FJsonObject>* Existing = nullptr;
	if (Result.GetDatas()->TryGetObjectField(TelemetryKey, Existing) && Existing && Existing->IsValid())
	{
		return *Existing;
	}
	return MakeShared<FJsonObject>();
}

TSharedPtr<FJsonObject> FPopulateTelemetry::GetOrCreateStoredTelemetry(Calvorn::FToolResult& Result)
{
	const bool bHadOne = HasTelemetry(Result);
	TSharedPtr<FJsonObject> Telemetry = GetOrCreateTelemetry(Result);
	if (!bHadOne)
	{
		Result.SetData(TelemetryKey, Telemetry);
	}
	return Telemetry;
}

bool FPopulateTelemetry::HasTelemetry(const Calvorn::FToolResult& Result)
{
	const TSharedPtr<FJsonObject>* Existing = nullptr;
	return Result.GetDatas()->TryGetObjectField(TelemetryKey, Existing) && Existing && Existing->IsValid();
}

FString FPopulateTelemetry::ResolveSpawnMethod(const FNodeModificationRecord& Record)
{
	if (const FString* Requested = Record.FindMetadata(TEXT("spawn_method")))
	{
		// A label of blanks only names nothing; the request's own fields decide then.
		FString Trimmed = Requested->TrimStartAndEnd();
		if (!Trimmed.IsEmpty())
		{
			return Trimmed;
		}
	}
	if (!Record.TargetClass.IsEmpty() && !Record.TargetFunction.IsEmpty())
	{
		return TEXT("deterministic");
	}
	if (!Record.MenuCategory.IsEmpty())
	{
		return TEXT("cam_filtered");
	}
	if (!Record.ClassName.IsEmpty())
	{
		return TEXT("cam_global_with_class");
	}
	return TEXT("cam_global");
}

float FPopulateTelemetry::ResolveMinimumConfidence(const FNodeModificationRecord& Record)
{
	const FString* Requested = Record.FindMetadata(TEXT("minimum_confidence"));
	if (!Requested || Requested->IsEmpty())
	{
		return DefaultMinimumConfidence;
	}
	// Text that is no number reads as 0, as the engine's Atof gives it, and 0 is a valid bar.
	const float Parsed = FCString::Atof(**Requested);
	if (Parsed >= 0.0f && Parsed <= 1.0f)
	{
		return Parsed;
	}
	return DefaultMinimumConfidence;
}

void FPopulateTelemetry::IncrementPinDirectionFallbacks(Calvorn::FToolResult& Result)
{
	IncrementCounter(Result, TEXT("pin_direction_fallbacks"));
}

void FPopulateTelemetry::IncrementSpawnMethod(Calvorn::FToolResult& Result, const FString& Method)
{
	TSharedPtr<FJsonObject> Telemetry = GetOrCreateTelemetry(Result);
	const FString Key = TEXT("spawn_methods");
	TSharedPtr<FJsonObject> Methods;
	const TSharedPtr<FJsonObject>* Existing = nullptr;
	if (Telemetry->TryGetObjectField(Key, Existing) && Existing && Existing->IsValid())
	{
		Methods = *Existing;
	}
	else
	{
		Methods = MakeShared<FJsonObject>();
	}
	Methods->SetNumberField(Method, ReadCounter(*Methods, Method) + 1.0);
	Telemetry->SetObjectField(Key, Methods);
	Result.SetData(TelemetryKey, Telemetry);
}

void FPopulateTelemetry::IncrementCounter(Calvorn::FToolResult& Result, const FString& Key)
{
	TSharedPtr<FJsonObject> Telemetry = GetOrCreateTelemetry(Result);
	Telemetry->SetNumberField(Key, ReadCounter(*Telemetry, Key) + 1.0);
	Result.SetData(TelemetryKey, Telemetry);
}

void FPopulateTelemetry::SetTelemetryString(Calvorn::FToolResult& Result, const FString& Key, const FString& Value)
{
	TSharedPtr<FJsonObject> Telemetry = GetOrCreateTelemetry(Result);
	Telemetry->SetStringField(Key, Value);
	Result.SetData(TelemetryKey, Telemetry);
}

void FPopulateTelemetry::SetTelemetryNumber(Calvorn::FToolResult& Result, const FString& Key, double Value)
{
	TSharedPtr<FJsonObject> Telemetry = GetOrCreateTelemetry(Result);
	Telemetry->SetNumberField(Key, Value);
	Result.SetData(TelemetryKey, Telemetry);
}

void FPopulateTelemetry::RecordValidationFailure(Calvorn::FToolResult& Result, const FString& Text)
{
	AppendString(Result, TEXT("validation_failures"), Text);
}

void FPopulateTelemetry::RecordConnectionFailure(Calvorn::FToolResult& Result, const FString& SourceNode, const FString& SourcePin, const FString& TargetNode, const FString& TargetPin, const FString& Reason)
{
	TSharedPtr<FJsonObject> Entry = MakeShared<FJsonObject>();
	Entry->SetStringField(TEXT("source_node"), SourceNode);
	Entry->SetStringField(TEXT("source_pin"), SourcePin);
	Entry->SetStringField(TEXT("target_node"), TargetNode);
	Entry->SetStringField(TEXT("target_pin"), TargetPin);
	Entry->SetStringField(TEXT("reason"), Reason);
	AppendObject(Result, TEXT("connection_failures"), Entry);
}

void FPopulateTelemetry::RecordHalfConnected(Calvorn::FToolResult& Result, const FString& NodeGuid, const FString& NodeTitle, int32 Expected, int32 Actual)
{
	TSharedPtr<FJsonObject> Entry = MakeShared<FJsonObject>();
	Entry->SetStringField(TEXT("node_id"), NodeGuid);
	Entry->SetStringField(TEXT("node_title"), NodeTitle);
	Entry->SetNumberField(TEXT("expected_connections"), Expected);
	Entry->SetNumberField(TEXT("actual_connections"), Actual);
	AppendObject(Result, TEXT("half_connected_nodes"), Entry);
}

void FPopulateTelemetry::RecordNodeLatency(Calvorn::FToolResult& Result, const FString& NodeId, const FString& NodeTitle, double Milliseconds)
{
	TSharedPtr<FJsonObject> Entry = MakeShared<FJsonObject>();
	Entry->SetNumberField(TEXT("duration_ms"), Milliseconds);
	Entry->SetStringField(TEXT("node_id"), NodeId);
	Entry->SetStringField(TEXT("node_title"), NodeTitle);
	AppendObject(Result, TEXT("node_creation_latency_ms"), Entry);
}

void FPopulateTelemetry::AppendObject(Calvorn::FToolResult& Result, const FString& Key, const TSharedPtr<FJsonObject>& Entry)
{
	TSharedPtr<FJsonObject> Telemetry = GetOrCreateTelemetry(Result);
	TArray<TSharedPtr<FJsonValue>> Entries = CopyArrayField(*Telemetry, Key);
	Entries.Add(MakeShared<FJsonValueObject>(Entry));
	Telemetry->SetArrayField(Key, MoveTemp(Entries));
	Result.SetData(TelemetryKey, Telemetry);
}

void FPopulateTelemetry::AppendString(Calvorn::FToolResult& Result, const FString& Key, const FString& Entry)
{
	TSharedPtr<FJsonObject> Telemetry = GetOrCreateTelemetry(Result);
	TArray<TSharedPtr<FJsonValue>> Entries = CopyArrayField(*Telemetry, Key);
	Entries.Add(MakeShared<FJsonValueString>(Entry));
	Telemetry->SetArrayField(Key, MoveTemp(Entries));
	Result.SetData(TelemetryKey, Telemetry);
}

void FPopulateTelemetry::RecordCandidateMatches(Calvorn::FToolResult& Result, const TArray<FCamMatch>& Candidates, const FString& Context)
{
	if (Candidates.Num() == 0)
	{
		return;
	}
	TArray<TSharedPtr<FJsonValue>> Entries;
	const int32 Count = FMath::Min(Candidates.Num(), MaxReportedCandidates);
	Entries.Reserve(Count);
	for (int32 Index = 0; Index < Count; ++Index)
	{
		const FCamMatch& Match = Candidates[Index];
		TSharedPtr<FJsonObject> Entry = MakeShared<FJsonObject>();
		Entry->SetStringField(TEXT("menu_title"), Match.MenuTitle);
		Entry->SetStringField(TEXT("node_class"), Match.NodeClass);
		if (!Match.MenuCategory.IsEmpty())
		{
			Entry->SetStringField(TEXT("menu_category"), Match.MenuCategory);
		}
		Entry->SetNumberField(TEXT("confidence"), Match.Confidence);
		Entry->SetNumberField(TEXT("common_keywords"), Match.CommonKeywords);
		Entries.Add(MakeShared<FJsonValueObject>(Entry));
	}

	TSharedPtr<FJsonObject> Report = MakeShared<FJsonObject>();
	Report->SetArrayField(TEXT("candidates"), MoveTemp(Entries));
	if (!Context.IsEmpty())
	{
		Report->SetStringField(TEXT("context"), Context);
	}
	// The report travels as text beside the telemetry; a later refusal replaces it.
	Result.SetData(TEXT("candidate_matches"), FAssetOperationBase::SerializeJson(Report));
}

FNodeLatencyScope::FNodeLatencyScope(Calvorn::FToolResult& InResult, const FString& InNodeId, const FString& InNodeTitle)
	: Result(InResult)
	, NodeId(InNodeId)
	, NodeTitle(InNodeTitle)
	, StartSeconds(FPlatformTime::Seconds())
{
}

FNodeLatencyScope::~FNodeLatencyScope()
{
	const double ElapsedMilliseconds = (FPlatformTime::Seconds() - StartSeconds) * 1000.0;
	FPopulateTelemetry::RecordNodeLatency(Result, NodeId, NodeTitle, ElapsedMilliseconds);
}
