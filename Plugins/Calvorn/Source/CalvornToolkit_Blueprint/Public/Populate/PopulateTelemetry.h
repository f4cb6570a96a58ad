#pragma once

#include "CoreMinimal.h"

class FJsonObject;
struct FCamMatch;
struct FNodeModificationRecord;

namespace Calvorn
{
	class FToolResult;
}

/**
 * The "telemetry" object a graph population leaves in the result's data: how each node was found and why
 * something failed. Each recorder reads the object (or starts one), adds to it and stores it back, so the
 * order of calls never loses an entry; recording never changes the outcome of the call.
 */
class CALVORNTOOLKIT_BLUEPRINT_API FPopulateTelemetry
{
public:
	/** The stored object, or a new empty one that is not stored yet. */
	static TSharedPtr<FJsonObject> GetOrCreateTelemetry(Calvorn::FToolResult& Result);
	/** As above, storing a new object at once. */
	static TSharedPtr<FJsonObject> GetOrCreateStoredTelemetry(Calvorn::FToolResult& Result);
	/** Whether the result holds a telemetry object. */
	[[nodiscard]] static bool HasTelemetry(const Calvorn::FToolResult& Result);

	/** The label counted in "spawn_methods" for a request that is not an event request. */
	[[nodiscard]] static FString ResolveSpawnMethod(const FNodeModificationRecord& Record);
	/** "minimum_confidence" of the metadata in 0..1, else 0.6; text that is no number reads as 0. */
	[[nodiscard]] static float ResolveMinimumConfidence(const FNodeModificationRecord& Record);

	static void IncrementPinDirectionFallbacks(Calvorn::FToolResult& Result);
	static void IncrementSpawnMethod(Calvorn::FToolResult& Result, const FString& Method);
	/** Adds one to a numeric key (missing reads as 0). */
	static void IncrementCounter(Calvorn::FToolResult& Result, const FString& Key);
	static void SetTelemetryString(Calvorn::FToolResult& Result, const FString& Key, const FString& Value);
	static void SetTelemetryNumber(Calvorn::FToolResult& Result, const FString& Key, double Value);
	static void RecordValidationFailure(Calvorn::FToolResult& Result, const FString& Text);
	static void RecordConnectionFailure(Calvorn::FToolResult& Result, const FString& SourceNode, const FString& SourcePin, const FString& TargetNode, const FString& TargetPin, const FString& Reason);
	static void RecordHalfConnected(Calvorn::FToolResult& Result, const FString& NodeGuid, const FString& NodeTitle, int32 Expected, int32 Actual);
	static void RecordNodeLatency(Calvorn::FToolResult& Result, const FString& NodeId, const FString& NodeTitle, double Milliseconds);
	/** Appends an object to an array key. */
	static void AppendObject(Calvorn::FToolResult& Result, const FString& Key, const TSharedPtr<FJsonObject>& Entry);
	/** Appends a string to an array key. */
	static void AppendString(Calvorn::FToolResult& Result, const FString& Key, const FString& Entry);

	/**
	 * Writes "candidate_matches" beside the telemetry: the first 20 candidates in ranking order and the context
	 * when it is not empty. Nothing is written for no candidates.
	 */
	static void RecordCandidateMatches(Calvorn::FToolResult& Result, const TArray<FCamMatch>& Candidates, const FString& Context);
};

/** Times one spawn and records it as "node_creation_latency_ms" when it ends. */
class CALVORNTOOLKIT_BLUEPRINT_API FNodeLatencyScope
{
public:
	FNodeLatencyScope(Calvorn::FToolResult& InResult, const FString& InNodeId, const FString& InNodeTitle);
	~FNodeLatencyScope();
	FNodeLatencyScope(const FNodeLatencyScope&) = delete;
	FNodeLatencyScope& operator=(const FNodeLatencyScope&) = delete;

private:
	Calvorn::FToolResult& Result;
	FString NodeId;
	FString NodeTitle;
	double StartSeconds = 0.0;
};
