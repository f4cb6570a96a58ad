#include "Populate/ContextActionMenu.h"

#include "Algo/Sort.h"
#include "AnimationStateMachineSchema.h"
#include "AssetOperationBase.h"
#include "BlueprintActionFilter.h"
#include "BlueprintActionMenuBuilder.h"
#include "BlueprintActionMenuItem.h"
#include "BlueprintActionMenuUtils.h"
#include "BlueprintNodeSpawner.h"
#include "Dom/JsonObject.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphSchema.h"
#include "Engine/Blueprint.h"
#include "HAL/PlatformTime.h"
#include "Populate/GraphModificationRecords.h"
#include "Populate/PopulateTelemetry.h"
#include "ToolResult.h"

/** What the search needs of one menu entry that does not depend on the request. */
struct FContextActionMenuEntry
{
	/** The action these words were worked out for; a different action at the index means a stale entry. */
	TSharedPtr<FEdGraphSchemaAction> Action;
	FString MenuTitle;
	FString MenuCategory;
	/** Empty for an entry that names no node class: the search leaves it out. */
	FString NodeClass;
	TArray<FString> TitleKeywords;
	/** Title, category and node class, whole and in parts. */
	TArray<FString> CandidateKeywords;
};

/** One entry's score against one request, in ranking order once sorted. */
struct FContextActionMenuScore
{
	int32 EntryIndex = 0;
	FKeywordSimilarity Similarity;
	float Confidence = 0.0f;
	int32 TitleCommonKeywords = 0;
};

/** One earlier search of the menu, kept while no entry changes: the same words rank the same way. */
struct FContextActionMenuSearch
{
	TArray<FString> Requested;
	TArray<FString> RequestedTitle;
	TArray<FContextActionMenuScore> Ranking;
};

struct FContextActionMenuEntryWords
{
	TArray<FContextActionMenuEntry> Entries;
	TArray<FContextActionMenuSearch> Searches;
};

namespace
{
	/** Every class target the menu knows; without context sensitivity the mask changes nothing, but it says "all". */
	constexpr uint32 AllContextTargets = 127;

	/** The comment entries of a graph menu place a comment box whatever their spelling in a given schema. */
	bool IsCommentTitle(const FString& Title)
	{
		return Title.Equals(TEXT("Add Comment"), ESearchCase::IgnoreCase) || Title.Equals(TEXT("Create Comment from Selection"), ESearchCase::IgnoreCase);
	}

	/**
	 * The words a request stands for. Two requests name an action rather than a title: "Self" and a math
	 * expression, whose node title is the formula, not the words of the menu entry that places it.
	 */
	TArray<FString> BuildRequestedKeywords(const FNodeModificationRecord& Record)
	{
		TArray<FString> Keywords;
		if (Record.ClassName.Equals(TEXT("Self"), ESearchCase::IgnoreCase))
		{
			Keywords = FAssetOperationBase::CreateKeywords(TEXT("Get a reference to self"));
		}
		else if (Record.ClassName.Equals(TEXT("MathExpression"), ESearchCase::IgnoreCase) || Record.ClassName.Equals(TEXT("K2Node_MathExpression"), ESearchCase::IgnoreCase))
		{
			Keywords = FAssetOperationBase::CreateKeywords(TEXT("Add Math Expression"));
		}
		else
		{
			Keywords = FAssetOperationBase::CreateKeywords(Record.MenuTitle);
		}

		if (!Record.ClassName.IsEmpty())
		{
			// The class name counts whole (a client may copy it from a read) and by its parts.
			if (!Keywords.Contains(Record.ClassName))
			{
				Keywords.Add(Record.ClassName);
			}
			FAssetOperationBase::AppendKeywords(Record.ClassName, Keywords);
		}
		return Keywords;
	}

	/** The sort keys of one entry, computed once per search so that sorting a large menu stays cheap. */
	struct FRankKeys
	{
		int32 CommonKeywords = 0;
		int32 TitleCommonKeywords = 0;
		int32 Distance = 0;
	};

	/** True when A ranks before B: more words in common, then more title words in common, then nearer. */
	bool RanksBefore(const FRankKeys& A, const FRankKeys& B)
	{
		if (A.CommonKeywords != B.CommonKeywords)
		{
			return A.CommonKeywords > B.CommonKeywords;
		}
		if (A.TitleCommonKeywords != B.TitleCommonKeywords)
		{
			return A.TitleCommonKeywords > B.TitleCommonKeywords;
		}
		return A.Distance < B.Distance;
	}

	FRankKeys KeysOf(const FContextActionMenuScore& Score)
	{
		return FRankKeys{Score.Similarity.CommonKeywords, Score.TitleCommonKeywords, Score.Similarity.Distance};
	}

	int32 CountTitleKeywordsInCommon(const TArray<FString>& RequestedTitleKeywords, const FString& EntryTitle)
	{
		return FAssetOperationBase::CalculateKeywordSimilarity(RequestedTitleKeywords, FAssetOperationBase::CreateKeywords(EntryTitle)).CommonKeywords;
	}

	/** The words of one entry: its title, then its category, then the node class whole and in parts. */
	FContextActionMenuEntry DescribeEntry(const TSharedPtr<FEdGraphSchemaAction>& Action)
	{
		FContextActionMenuEntry Entry;
		Entry.Action = Action;
		Entry.NodeClass = FContextActionMenuService::GetActionNodeClassName(Action);
		if (Entry.NodeClass.IsEmpty())
		{
			return Entry;
		}
		Entry.MenuTitle = Action->GetMenuDescription().ToString();
		Entry.MenuCategory = Action->GetCategory().ToString();
		Entry.TitleKeywords = FAssetOperationBase::CreateKeywords(Entry.MenuTitle);
		Entry.CandidateKeywords = Entry.TitleKeywords;
		FAssetOperationBase::AppendKeywords(Entry.MenuCategory, Entry.CandidateKeywords);
		if (!Entry.CandidateKeywords.Contains(Entry.NodeClass))
		{
			Entry.CandidateKeywords.Add(Entry.NodeClass);
		}
		FAssetOperationBase::AppendKeywords(Entry.NodeClass, Entry.CandidateKeywords);
		return Entry;
	}

	/** Earlier searches kept per menu; a batch rarely asks for more different nodes by words than this. */
	constexpr int32 MaxRememberedSearches = 16;

	bool SameWords(const TArray<FString>& A, const TArray<FString>& B)
	{
		if (A.Num() != B.Num())
		{
			return false;
		}
		for (int32 Index = 0; Index < A.Num(); ++Index)
		{
			if (!A[Index].Equals(B[Index], ESearchCase::CaseSensitive))
			{
				return false;
			}
		}
		return true;
	}

	/** Brings the entries' words in line with the menu; true when any entry was added, replaced or changed. */
	bool RefreshEntries(FBlueprintActionMenuBuilder& Builder, TArray<FContextActionMenuEntry>& Entries)
	{
		const int32 NumActions = Builder.GetNumActions();
		bool bChanged = Entries.Num() != NumActions;
		Entries.SetNum(NumActions);
		for (int32 Index = 0; Index < NumActions; ++Index)
		{
			// The entry's first action is what the menu performs; it is read in place, since taking a counted
			// reference to each of thousands of actions per search costs more than comparing them.
			const TArray<TSharedPtr<FEdGraphSchemaAction>>& Group = Builder.GetAction(Index).Actions;
			static const TSharedPtr<FEdGraphSchemaAction> NoAction;
			const TSharedPtr<FEdGraphSchemaAction>& Action = Group.Num() > 0 ? Group[0] : NoAction;
			FContextActionMenuEntry& Entry = Entries[Index];
			if (!Action.IsValid())
			{
				bChanged |= Entry.Action.IsValid();
				Entry = FContextActionMenuEntry();
				continue;
			}
			// A plain schema action's node comes from its template, which placing or removing a node can change.
			const bool bTemplateBased = Action->GetTypeId() == FEdGraphSchemaAction::StaticGetTypeId();
			if (Entry.Action != Action || (bTemplateBased && FContextActionMenuService::GetActionNodeClassName(Action) != Entry.NodeClass))
			{
				Entry = DescribeEntry(Action);
				bChanged = true;
			}
		}
		return bChanged;
	}
}

FContextActionMenu FContextActionMenuService::BuildContextActionMenu(UBlueprint* Blueprint, UEdGraph* Graph, Calvorn::FToolResult& Result)
{
	FContextActionMenu Menu;
	if (!Blueprint || !Graph)
	{
		// No menu for no graph: the dispatcher reports a missing menu when a fuzzy node asks for one.
		return Menu;
	}

	const double StartSeconds = FPlatformTime::Seconds();

	FBlueprintActionContext Context;
	Context.Blueprints.Add(Blueprint);
	Context.Graphs.Add(Graph);

	Menu.SharedCAM = MakeShared<FBlueprintActionMenuBuilder>();
	FBlueprintActionMenuUtils::MakeContextMenu(Context, false, AllContextTargets, *Menu.SharedCAM);

	// A state machine's states, conduits and entry are not Blueprint actions: only its schema offers them.
	const UEdGraphSchema* Schema = Graph->GetSchema();
	if (Schema && Schema->IsA(UAnimationStateMachineSchema::StaticClass()))
	{
		FGraphContextMenuBuilder StateMachineActions(Graph);
		Schema->GetGraphContextActions(StateMachineActions);
		Menu.SharedCAM->Append(StateMachineActions);
	}

	const double ElapsedMilliseconds = (FPlatformTime::Seconds() - StartSeconds) * 1000.0;
	TSharedPtr<FJsonObject> Telemetry = MakeShared<FJsonObject>();
	Telemetry->SetNumberField(TEXT("cam_build_time_ms"), ElapsedMilliseconds);
	Telemetry->SetNumberField(TEXT("cam_action_count"), Menu.SharedCAM->GetNumActions());
	Telemetry->SetBoolField(TEXT("context_sensitive"), false);
	Result.SetData(TEXT("telemetry"), Telemetry);
	return Menu;
}

FString FContextActionMenuService::GetActionNodeClassName(const TSharedPtr<FEdGraphSchemaAction>& Action)
{
	if (!Action.IsValid())
	{
		return FString();
	}

	const FName TypeId = Action->GetTypeId();
	if (TypeId == FBlueprintActionMenuItem::StaticGetTypeId())
	{
		const UBlueprintNodeSpawner* Spawner = static_cast<const FBlueprintActionMenuItem*>(Action.Get())->GetRawAction();
		if (Spawner && Spawner->NodeClass.Get())
		{
			return Spawner->NodeClass->GetName();
		}
		return FString();
	}

	if (TypeId == FEdGraphSchemaAction::StaticGetTypeId())
	{
		if (IsCommentTitle(Action->GetMenuDescription().ToString()))
		{
			return TEXT("EdGraphNode_Comment");
		}
		// Plain schema actions that place a node carry it as a template; once placed, the template is the node.
		// The state machine's action shares the base type id, so only its dynamic type tells it apart (this
		// module builds with RTTI for that reason).
		if (const FEdGraphSchemaAction_NewStateNode* StateAction = dynamic_cast<const FEdGraphSchemaAction_NewStateNode*>(Action.Get()))
		{
			const UEdGraphNode* Template = StateAction->NodeTemplate;
			if (IsValid(Template))
			{
				return Template->GetClass()->GetName();
			}
		}
	}
	return FString();
}

TArray<FCamMatch> FContextActionMenuService::SearchContextActionMenu(const FNodeModificationRecord& Record, const FContextActionMenu& Menu)
{
	return SearchContextActionMenu(Record, Menu, INDEX_NONE);
}

TArray<FCamMatch> FContextActionMenuService::SearchContextActionMenu(const FNodeModificationRecord& Record, const FContextActionMenu& Menu, int32 MaxCandidates)
{
	if (!Menu.SharedCAM.IsValid())
	{
		return TArray<FCamMatch>();
	}

	const TArray<FString> Requested = BuildRequestedKeywords(Record);
	const TArray<FString> RequestedTitleKeywords = FAssetOperationBase::CreateKeywords(Record.MenuTitle);

	if (!Menu.EntryWords.IsValid())
	{
		Menu.EntryWords = MakeShared<FContextActionMenuEntryWords>();
	}
	FContextActionMenuEntryWords& Words = *Menu.EntryWords;
	if (RefreshEntries(*Menu.SharedCAM, Words.Entries))
	{
		Words.Searches.Empty();
	}

	// A batch often asks for the same node many times ("Print String" after each step): the answer is the same.
	const TArray<FContextActionMenuScore>* Ranking = nullptr;
	for (const FContextActionMenuSearch& Earlier : Words.Searches)
	{
		if (SameWords(Earlier.Requested, Requested) && SameWords(Earlier.RequestedTitle, RequestedTitleKeywords))
		{
			Ranking = &Earlier.Ranking;
			break;
		}
	}

	if (!Ranking)
	{
		TArray<FContextActionMenuScore> Scored;
		Scored.Reserve(Words.Entries.Num());
		for (int32 Index = 0; Index < Words.Entries.Num(); ++Index)
		{
			const FContextActionMenuEntry& Entry = Words.Entries[Index];
			if (!Entry.Action.IsValid() || Entry.NodeClass.IsEmpty())
			{
				// An entry that places no node (or none we can name) cannot be checked after spawning.
				continue;
			}
			FContextActionMenuScore& Score = Scored.AddDefaulted_GetRef();
			Score.EntryIndex = Index;
			Score.Similarity = FAssetOperationBase::CalculateKeywordSimilarity(Requested, Entry.CandidateKeywords);
			Score.Confidence = FAssetOperationBase::CalculateMatchConfidence(Requested, Entry.CandidateKeywords, Score.Similarity);
			// The title alone decides ties between entries that share as many words with the whole request. Its
			// words are among the entry's, so an entry sharing none with the request shares none by its title.
			if (Score.Similarity.CommonKeywords > 0)
			{
				Score.TitleCommonKeywords = FAssetOperationBase::CalculateKeywordSimilarity(RequestedTitleKeywords, Entry.TitleKeywords).CommonKeywords;
			}
		}

		// The same order as CompareCamMatches, whose title comparison depends only on each entry, so it is
		// taken once per entry here instead of twice per comparison.
		Algo::Sort(Scored, [](const FContextActionMenuScore& A, const FContextActionMenuScore& B) { return RanksBefore(KeysOf(A), KeysOf(B)); });

		if (Words.Searches.Num() >= MaxRememberedSearches)
		{
			Words.Searches.RemoveAt(0);
		}
		FContextActionMenuSearch& Search = Words.Searches.AddDefaulted_GetRef();
		Search.Requested = Requested;
		Search.RequestedTitle = RequestedTitleKeywords;
		Search.Ranking = MoveTemp(Scored);
		Ranking = &Search.Ranking;
	}

	const int32 NumMatches = MaxCandidates < 0 ? Ranking->Num() : FMath::Min(MaxCandidates, Ranking->Num());
	TArray<FCamMatch> Matches;
	Matches.Reserve(NumMatches);
	for (int32 Rank = 0; Rank < NumMatches; ++Rank)
	{
		const FContextActionMenuScore& Score = (*Ranking)[Rank];
		const FContextActionMenuEntry& Entry = Words.Entries[Score.EntryIndex];
		FCamMatch& Match = Matches.AddDefaulted_GetRef();
		Match.Action = Entry.Action;
		Match.MenuTitle = Entry.MenuTitle;
		Match.MenuCategory = Entry.MenuCategory;
		Match.NodeClass = Entry.NodeClass;
		Match.Similarity = Score.Similarity;
		Match.CommonKeywords = Score.Similarity.CommonKeywords;
		Match.Confidence = Score.Confidence;
	}
	return Matches;
}

bool FContextActionMenuService::CompareCamMatches(const FCamMatch& A, const FCamMatch& B, const FString& RequestedMenuTitle)
{
	FRankKeys KeysA{A.CommonKeywords, 0, A.Similarity.Distance};
	FRankKeys KeysB{B.CommonKeywords, 0, B.Similarity.Distance};
	if (KeysA.CommonKeywords == KeysB.CommonKeywords)
	{
		const TArray<FString> RequestedTitleKeywords = FAssetOperationBase::CreateKeywords(RequestedMenuTitle);
		KeysA.TitleCommonKeywords = CountTitleKeywordsInCommon(RequestedTitleKeywords, A.MenuTitle);
		KeysB.TitleCommonKeywords = CountTitleKeywordsInCommon(RequestedTitleKeywords, B.MenuTitle);
	}
	return RanksBefore(KeysA, KeysB);
}

void FContextActionMenuService::ReportCandidateMatches(const TArray<FCamMatch>& Candidates, Calvorn::FToolResult& Result, const FString& Context)
{
	FPopulateTelemetry::RecordCandidateMatches(Result, Candidates, Context);
}
