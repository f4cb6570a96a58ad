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
	const FEdGraphSchemaAction* Action = nullptr;
	FString MenuTitle;
	FString MenuCategory;
	/** Empty for an entry that names no node class: the search leaves it out. */
	FString NodeClass;
	TArray<FString> TitleKeywords;
	/** Title, category and node class, whole and in parts. */
	TArray<FString> CandidateKeywords;
};

struct FContextActionMenuEntryWords
{
	TArray<FContextActionMenuEntry> Entries;
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

	int32 CountTitleKeywordsInCommon(const TArray<FString>& RequestedTitleKeywords, const FString& EntryTitle)
	{
		return FAssetOperationBase::CalculateKeywordSimilarity(RequestedTitleKeywords, FAssetOperationBase::CreateKeywords(EntryTitle)).CommonKeywords;
	}

	/** The words of one entry: its title, then its category, then the node class whole and in parts. */
	FContextActionMenuEntry DescribeEntry(const TSharedPtr<FEdGraphSchemaAction>& Action)
	{
		FContextActionMenuEntry Entry;
		Entry.Action = Action.Get();
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
	TArray<FCamMatch> Matches;
	if (!Menu.SharedCAM.IsValid())
	{
		return Matches;
	}

	const TArray<FString> Requested = BuildRequestedKeywords(Record);
	const TArray<FString> RequestedTitleKeywords = FAssetOperationBase::CreateKeywords(Record.MenuTitle);
	TArray<FRankKeys> Keys;

	const FBlueprintActionMenuBuilder& Builder = *Menu.SharedCAM;
	const int32 NumActions = Builder.GetNumActions();
	if (!Menu.EntryWords.IsValid())
	{
		Menu.EntryWords = MakeShared<FContextActionMenuEntryWords>();
	}
	TArray<FContextActionMenuEntry>& Entries = Menu.EntryWords->Entries;
	Entries.SetNum(NumActions);

	for (int32 Index = 0; Index < NumActions; ++Index)
	{
		TSharedPtr<FEdGraphSchemaAction> Action = Builder.GetSchemaAction(Index);
		if (!Action.IsValid())
		{
			continue;
		}
		FContextActionMenuEntry& Entry = Entries[Index];
		// A plain schema action's node comes from its template, which placing or removing a node can change.
		const bool bTemplateBased = Action->GetTypeId() == FEdGraphSchemaAction::StaticGetTypeId();
		if (Entry.Action != Action.Get() || (bTemplateBased && GetActionNodeClassName(Action) != Entry.NodeClass))
		{
			Entry = DescribeEntry(Action);
		}
		if (Entry.NodeClass.IsEmpty())
		{
			// An entry that places no node (or none we can name) cannot be checked after spawning.
			continue;
		}

		FCamMatch Match;
		Match.Action = Action;
		Match.MenuTitle = Entry.MenuTitle;
		Match.MenuCategory = Entry.MenuCategory;
		Match.NodeClass = Entry.NodeClass;
		Match.Similarity = FAssetOperationBase::CalculateKeywordSimilarity(Requested, Entry.CandidateKeywords);
		Match.CommonKeywords = Match.Similarity.CommonKeywords;
		Match.Confidence = FAssetOperationBase::CalculateMatchConfidence(Requested, Entry.CandidateKeywords, Match.Similarity);

		// The title alone decides ties between entries that share as many words with the whole request. Its
		// words are among the entry's, so an entry sharing none with the request shares none by its title.
		FRankKeys EntryKeys{Match.CommonKeywords, 0, Match.Similarity.Distance};
		if (Match.CommonKeywords > 0)
		{
			EntryKeys.TitleCommonKeywords = FAssetOperationBase::CalculateKeywordSimilarity(RequestedTitleKeywords, Entry.TitleKeywords).CommonKeywords;
		}
		Keys.Add(EntryKeys);
		Matches.Add(MoveTemp(Match));
	}

	if (Matches.Num() > 1)
	{
		// The same order as CompareCamMatches, whose title comparison depends only on each entry, so it is
		// taken once per entry here instead of twice per comparison.
		TArray<int32> Order;
		Order.Reserve(Matches.Num());
		for (int32 Index = 0; Index < Matches.Num(); ++Index)
		{
			Order.Add(Index);
		}
		Algo::Sort(Order, [&Keys](int32 A, int32 B) { return RanksBefore(Keys[A], Keys[B]); });

		TArray<FCamMatch> Sorted;
		Sorted.Reserve(Matches.Num());
		for (const int32 Index : Order)
		{
			Sorted.Add(MoveTemp(Matches[Index]));
		}
		Matches = MoveTemp(Sorted);
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
