#pragma once

#include "CoreMinimal.h"
#include "KeywordSimilarity.h"

class UBlueprint;
class UEdGraph;
struct FBlueprintActionMenuBuilder;
struct FEdGraphSchemaAction;
struct FNodeModificationRecord;

namespace Calvorn
{
	class FToolResult;
}

/**
 * The context action menu of one populate call: everything the editor could place in the graph, built once
 * without context sensitivity and searched once per fuzzy node. Entries are read through the builder's
 * GetNumActions and GetSchemaAction; there is no second index.
 */
struct CALVORNTOOLKIT_BLUEPRINT_API FContextActionMenu
{
	TSharedPtr<FBlueprintActionMenuBuilder> SharedCAM;

	/**
	 * The words of each entry, worked out by the first search and reused by the next ones of the same call:
	 * they depend on the entry alone, and splitting thousands of titles again for every fuzzy node would cost
	 * more than the scoring itself. An entry that changed since is worked out again. The last searches are
	 * kept beside them, so a request with the same words gets the same ranking without scoring the menu again,
	 * until an entry changes.
	 */
	mutable TSharedPtr<struct FContextActionMenuEntryWords> EntryWords;
};

/** One scored entry of the menu for a request. */
struct CALVORNTOOLKIT_BLUEPRINT_API FCamMatch
{
	TSharedPtr<FEdGraphSchemaAction> Action;
	FString MenuTitle;
	/** Reserved; never filled. */
	FString TargetClass;
	FString MenuCategory;
	/** The class of node the action creates, without prefix ("K2Node_CallFunction"). */
	FString NodeClass;
	FKeywordSimilarity Similarity;
	int32 CommonKeywords = 0;
	float Confidence = 0.0f;
};

class CALVORNTOOLKIT_BLUEPRINT_API FContextActionMenuService
{
public:
	/**
	 * Builds the menu of the Blueprint's graph (all class targets, not context sensitive; a state machine
	 * graph adds its schema's own actions) and writes "cam_build_time_ms", "cam_action_count" and
	 * "context_sensitive" into a new telemetry object stored in Result.
	 */
	static FContextActionMenu BuildContextActionMenu(UBlueprint* Blueprint, UEdGraph* Graph, Calvorn::FToolResult& Result);

	/** Every entry that names a node class, scored against the request's words, best first. */
	static TArray<FCamMatch> SearchContextActionMenu(const FNodeModificationRecord& Record, const FContextActionMenu& Menu);

	/**
	 * The same ranking, cut to its first MaxCandidates entries (all of them when MaxCandidates is negative).
	 * A caller that reads only the head of the list (the best entry and the candidates it reports) saves
	 * copying thousands of entries per fuzzy node.
	 */
	static TArray<FCamMatch> SearchContextActionMenu(const FNodeModificationRecord& Record, const FContextActionMenu& Menu, int32 MaxCandidates);

	/**
	 * The ranking: more common keywords first; on a tie, more keywords shared by the request's title and the
	 * entry's title alone; then the smaller distance.
	 */
	static bool CompareCamMatches(const FCamMatch& A, const FCamMatch& B, const FString& RequestedMenuTitle);

	/** Writes "candidate_matches" (first 20, with the context message when not empty). */
	static void ReportCandidateMatches(const TArray<FCamMatch>& Candidates, Calvorn::FToolResult& Result, const FString& Context);

	/** The node class name an action creates ("" when it names none); comments are "EdGraphNode_Comment". */
	[[nodiscard]] static FString GetActionNodeClassName(const TSharedPtr<FEdGraphSchemaAction>& Action);
};
