#include "PopulateMatchTestSupport.h"

#include "AnimGraphNode_StateMachineBase.h"
#include "AnimationGraph.h"
#include "AnimationGraphSchema.h"
#include "AnimationStateMachineGraph.h"
#include "Animation/AnimBlueprint.h"
#include "Animation/AnimInstance.h"
#include "BlueprintActionMenuBuilder.h"
#include "EdGraph/EdGraphNode_Comment.h"
#include "K2Node_CallFunction.h"
#include "K2Node_Self.h"
#include "Misc/PackageName.h"
#include "Populate/ContextActionMenu.h"

using namespace PopulateMatchTests;

namespace
{
	/** The first few candidates, for failure output. */
	std::string Top(const TArray<FCamMatch>& Matches, int32 Count = 5)
	{
		std::string Text;
		for (int32 Index = 0; Index < Matches.Num() && Index < Count; ++Index)
		{
			const FCamMatch& Match = Matches[Index];
			Text += "  " + U8(Match.MenuTitle) + " [" + U8(Match.MenuCategory) + "] " + U8(Match.NodeClass) + " common=" + std::to_string(Match.CommonKeywords)
				+ " distance=" + std::to_string(Match.Similarity.Distance) + " confidence=" + std::to_string(Match.Confidence) + "\n";
		}
		return Text;
	}

	class PopulateMatchMenu : public FMatchFixture
	{
	protected:
		PopulateMatchMenu()
		{
			Blueprint = MakeActorBlueprint(TEXT("/Game/Match/BP_MenuActor"));
			Graph = EventGraphOf(Blueprint);
			Menu = FContextActionMenuService::BuildContextActionMenu(Blueprint, Graph, BuildResult);
		}

		TArray<FCamMatch> Search(const TCHAR* ClassName, const TCHAR* Title)
		{
			return FContextActionMenuService::SearchContextActionMenu(MakeRecord(TEXT("n1"), ClassName, Title), Menu);
		}

		UBlueprint* Blueprint = nullptr;
		UEdGraph* Graph = nullptr;
		Calvorn::FToolResult BuildResult;
		FContextActionMenu Menu;
	};

	/** The default bar of a fuzzy spawn; the dispatcher takes the first candidate only when it reaches it. */
	constexpr float DefaultThreshold = 0.6f;

	struct FSearchCase
	{
		const TCHAR* ClassName;
		const TCHAR* Title;
		/** The first candidate's title and node class; null title: any entry of that node class. */
		const char* ExpectedTitle;
		const char* ExpectedNodeClass;
		bool bConfident;
	};

	const FSearchCase SearchCases[] = {
		{TEXT(""), TEXT("Print String"), "Print String", "K2Node_CallFunction", true},
		{TEXT(""), TEXT("PrintString"), "Print String", "K2Node_CallFunction", true},
		{TEXT(""), TEXT("print string"), "Print String", "K2Node_CallFunction", true},
		{TEXT("K2Node_CallFunction"), TEXT("Print String"), "Print String", "K2Node_CallFunction", true},
		{TEXT(""), TEXT("Get Actor Location"), "Get Actor Location", "K2Node_CallFunction", true},
		{TEXT(""), TEXT("GetActorLocation"), "Get Actor Location", "K2Node_CallFunction", true},
		{TEXT(""), TEXT("Location Actor Get"), "Get Actor Location", "K2Node_CallFunction", true},
		{TEXT(""), TEXT("SetActorRotation"), "Set Actor Rotation", "K2Node_CallFunction", true},
		{TEXT(""), TEXT("Branch"), "Branch", "K2Node_IfThenElse", true},
		{TEXT("K2Node_IfThenElse"), TEXT("Branch"), "Branch", "K2Node_IfThenElse", true},
		{TEXT(""), TEXT("Sequence"), "Sequence", "K2Node_ExecutionSequence", true},
		{TEXT(""), TEXT("Delay"), "Delay", "K2Node_CallFunction", true},
		{TEXT(""), TEXT("Event BeginPlay"), "Event BeginPlay", "K2Node_Event", true},
		{TEXT("Self"), TEXT(""), "Get a reference to self", "K2Node_Self", true},
		{TEXT("self"), TEXT("My Actor"), "Get a reference to self", "K2Node_Self", true},
		{TEXT("MathExpression"), TEXT("(a + b) * 2"), "Add Math Expression...", "K2Node_MathExpression", true},
		{TEXT("K2Node_MathExpression"), TEXT("x > 4"), "Add Math Expression...", "K2Node_MathExpression", true},
		{TEXT(""), TEXT("Add Comment"), "Add Comment...", "EdGraphNode_Comment", true},
		{TEXT(""), TEXT("add comment"), "Add Comment...", "EdGraphNode_Comment", true},
		{TEXT(""), TEXT("Get NonExistentVariable"), nullptr, nullptr, false},
	};
}

TEST_F(PopulateMatchMenu, WellKnownRequestsRankTheirEntryFirst)
{
	for (const FSearchCase& Case : SearchCases)
	{
		SCOPED_TRACE(U8(Case.ClassName) + " / " + U8(Case.Title));
		const TArray<FCamMatch> Matches = Search(Case.ClassName, Case.Title);
		ASSERT_GT(Matches.Num(), 0);
		const FCamMatch& First = Matches[0];
		if (Case.ExpectedTitle)
		{
			EXPECT_EQ(U8(First.MenuTitle), Case.ExpectedTitle) << Top(Matches);
		}
		if (Case.ExpectedNodeClass)
		{
			EXPECT_EQ(U8(First.NodeClass), Case.ExpectedNodeClass) << Top(Matches);
		}
		EXPECT_EQ(First.Confidence >= DefaultThreshold, Case.bConfident) << Top(Matches);
	}
}

TEST_F(PopulateMatchMenu, GenericWordsAlwaysGiveAFirstCandidate)
{
	for (const TCHAR* Title : {TEXT("Add"), TEXT("Multiply"), TEXT("Destroy"), TEXT("IsValid"), TEXT("Is Valid"), TEXT("GetLocation")})
	{
		SCOPED_TRACE(U8(Title));
		const TArray<FCamMatch> Matches = Search(TEXT(""), Title);
		ASSERT_GT(Matches.Num(), 0);
		EXPECT_GT(Matches[0].CommonKeywords, 0) << Top(Matches);
	}
}

TEST_F(PopulateMatchMenu, AClassNameAloneRanksItsNodeClassFirst)
{
	for (const TCHAR* ClassName : {TEXT("K2Node_IfThenElse"), TEXT("K2Node_DynamicCast"), TEXT("K2Node_Self")})
	{
		SCOPED_TRACE(U8(ClassName));
		const TArray<FCamMatch> Matches = Search(ClassName, TEXT(""));
		ASSERT_GT(Matches.Num(), 0);
		EXPECT_EQ(Matches[0].NodeClass, FString(ClassName)) << Top(Matches);
	}
}

TEST_F(PopulateMatchMenu, EveryCandidateNamesANodeClassAndRanksAsTheComparisonSays)
{
	const FString Title = TEXT("Get Actor Location");
	const TArray<FCamMatch> Matches = Search(TEXT("K2Node_CallFunction"), *Title);
	ASSERT_GT(Matches.Num(), 100);
	EXPECT_LE(Matches.Num(), Menu.SharedCAM->GetNumActions());
	for (int32 Index = 0; Index < Matches.Num(); ++Index)
	{
		const FCamMatch& Match = Matches[Index];
		ASSERT_TRUE(Match.Action.IsValid()) << Index;
		EXPECT_FALSE(Match.NodeClass.IsEmpty()) << U8(Match.MenuTitle);
		EXPECT_TRUE(Match.TargetClass.IsEmpty());
		EXPECT_EQ(Match.CommonKeywords, Match.Similarity.CommonKeywords);
		EXPECT_GE(Match.Confidence, 0.0f);
		EXPECT_LE(Match.Confidence, 1.0f);
		EXPECT_EQ(Match.MenuTitle, Match.Action->GetMenuDescription().ToString());
		// No later entry may belong before an earlier one by the ranking's own predicate.
		if (Index > 0)
		{
			EXPECT_FALSE(FContextActionMenuService::CompareCamMatches(Match, Matches[Index - 1], Title)) << U8(Matches[Index - 1].MenuTitle) << " before " << U8(Match.MenuTitle);
		}
	}
}

TEST_F(PopulateMatchMenu, TiesBreakOnTheTitleAloneThenOnDistance)
{
	FCamMatch Exact;
	Exact.MenuTitle = TEXT("Print String");
	Exact.CommonKeywords = 3;
	Exact.Similarity.Distance = 9;
	FCamMatch Other;
	Other.MenuTitle = TEXT("Print Text");
	Other.CommonKeywords = 3;
	Other.Similarity.Distance = 1;
	const FString Title = TEXT("Print String");

	// Equal common counts: the title that shares more words with the request wins, whatever the distance.
	EXPECT_TRUE(FContextActionMenuService::CompareCamMatches(Exact, Other, Title));
	EXPECT_FALSE(FContextActionMenuService::CompareCamMatches(Other, Exact, Title));

	// More words in common wins before anything else.
	Other.CommonKeywords = 4;
	EXPECT_TRUE(FContextActionMenuService::CompareCamMatches(Other, Exact, Title));
	EXPECT_FALSE(FContextActionMenuService::CompareCamMatches(Exact, Other, Title));

	// Same titles' share: the smaller distance wins; equal in everything, neither goes first.
	Other.CommonKeywords = 3;
	Other.MenuTitle = TEXT("String Print");
	EXPECT_TRUE(FContextActionMenuService::CompareCamMatches(Other, Exact, Title));
	Other.Similarity.Distance = 9;
	EXPECT_FALSE(FContextActionMenuService::CompareCamMatches(Other, Exact, Title));
	EXPECT_FALSE(FContextActionMenuService::CompareCamMatches(Exact, Other, Title));
}

TEST_F(PopulateMatchMenu, TheBuildLeavesItsFiguresInTheTelemetry)
{
	ASSERT_TRUE(Menu.SharedCAM.IsValid());
	EXPECT_GT(Menu.SharedCAM->GetNumActions(), 500);
	EXPECT_EQ(TelemetryNumber(BuildResult, TEXT("cam_action_count")), double(Menu.SharedCAM->GetNumActions()));
	EXPECT_GE(TelemetryNumber(BuildResult, TEXT("cam_build_time_ms")), 0.0);
	bool bContextSensitive = true;
	ASSERT_TRUE(Telemetry(BuildResult).IsValid());
	EXPECT_TRUE(Telemetry(BuildResult)->TryGetBoolField(TEXT("context_sensitive"), bContextSensitive));
	EXPECT_FALSE(bContextSensitive);

	// A second build replaces the object: one call, one menu.
	Calvorn::FToolResult Result;
	Telemetry(BuildResult)->SetNumberField(TEXT("stale"), 1);
	Result.SetData(TEXT("telemetry"), Telemetry(BuildResult));
	FContextActionMenuService::BuildContextActionMenu(Blueprint, Graph, Result);
	EXPECT_EQ(TelemetryNumber(Result, TEXT("stale")), -1.0);

	Calvorn::FToolResult NoGraph;
	EXPECT_FALSE(FContextActionMenuService::BuildContextActionMenu(Blueprint, nullptr, NoGraph).SharedCAM.IsValid());
	EXPECT_FALSE(Telemetry(NoGraph).IsValid());
	EXPECT_EQ(FContextActionMenuService::SearchContextActionMenu(MakeRecord(TEXT("n"), TEXT(""), TEXT("Branch")), FContextActionMenu()).Num(), 0);
}

TEST_F(PopulateMatchMenu, FirstCandidatesPlaceTheNodeTheyName)
{
	const TArray<FCamMatch> Print = Search(TEXT(""), TEXT("Print String"));
	ASSERT_GT(Print.Num(), 0);
	UEdGraphNode* PrintNode = Print[0].Action->PerformAction(Graph, nullptr, FVector2f(0.0f, 0.0f), true);
	ASSERT_NE(PrintNode, nullptr);
	UK2Node_CallFunction* Call = Cast<UK2Node_CallFunction>(PrintNode);
	ASSERT_NE(Call, nullptr);
	EXPECT_EQ(Call->FunctionReference.GetMemberName(), FName(TEXT("PrintString")));

	const TArray<FCamMatch> Self = Search(TEXT("Self"), TEXT("Target"));
	ASSERT_GT(Self.Num(), 0);
	EXPECT_TRUE(Self[0].Action->PerformAction(Graph, nullptr, FVector2f(0.0f, 300.0f), true)->IsA<UK2Node_Self>());

	const TArray<FCamMatch> Math = Search(TEXT("MathExpression"), TEXT("a * 2"));
	ASSERT_GT(Math.Num(), 0);
	UEdGraphNode* MathNode = Math[0].Action->PerformAction(Graph, nullptr, FVector2f(0.0f, 450.0f), true);
	ASSERT_NE(MathNode, nullptr);
	EXPECT_EQ(U8(MathNode->GetClass()->GetName()), "K2Node_MathExpression");

	const TArray<FCamMatch> Comment = Search(TEXT(""), TEXT("Add Comment"));
	ASSERT_GT(Comment.Num(), 0);
	ASSERT_EQ(Comment[0].NodeClass, TEXT("EdGraphNode_Comment")) << Top(Comment);
	UEdGraphNode* CommentNode = Comment[0].Action->PerformAction(Graph, nullptr, FVector2f(0.0f, 600.0f), true);
	ASSERT_NE(CommentNode, nullptr);
	EXPECT_TRUE(CommentNode->IsA<UEdGraphNode_Comment>());
	EXPECT_TRUE(Graph->Nodes.Contains(CommentNode));
}

TEST_F(PopulateMatchMenu, TheReportHoldsTwentyCandidatesAtMostInRankingOrder)
{
	const TArray<FCamMatch> Matches = Search(TEXT(""), TEXT("Get"));
	ASSERT_GT(Matches.Num(), 20);
	Calvorn::FToolResult Result;
	FContextActionMenuService::ReportCandidateMatches(Matches, Result, TEXT("why it failed"));

	FString Text;
	const TSharedPtr<FJsonValue> Field = Result.GetDatas()->TryGetField(TEXT("candidate_matches"));
	ASSERT_TRUE(Field.IsValid());
	TSharedPtr<FJsonObject> Report;
	if (Field->Type == EJson::String)
	{
		FJsonSerializer::Deserialize(TJsonReaderFactory<TCHAR>::Create(Field->AsString()), Report);
	}
	else
	{
		Report = Field->AsObject();
	}
	ASSERT_TRUE(Report.IsValid());
	const TArray<TSharedPtr<FJsonValue>>* Candidates = nullptr;
	ASSERT_TRUE(Report->TryGetArrayField(TEXT("candidates"), Candidates));
	ASSERT_EQ(Candidates->Num(), 20);
	for (int32 Index = 0; Index < 20; ++Index)
	{
		EXPECT_EQ((*Candidates)[Index]->AsObject()->GetStringField(TEXT("menu_title")), Matches[Index].MenuTitle) << Index;
	}
	EXPECT_EQ(Report->GetStringField(TEXT("context")), TEXT("why it failed"));
}

TEST_F(PopulateMatchMenu, AStateMachineGraphOffersItsSchemasStatesAndComment)
{
	const TCHAR* PackageName = TEXT("/Game/Match/ABP_Runner");
	PackageNames.Add(PackageName);
	UPackage* Package = CreatePackage(PackageName);
	UAnimBlueprint* AnimBlueprint = NewObject<UAnimBlueprint>(Package, *FPackageName::GetShortName(PackageName), RF_Public | RF_Standalone | RF_Transactional);
	AnimBlueprint->ParentClass = UAnimInstance::StaticClass();
	UAnimationGraph* AnimGraph = NewObject<UAnimationGraph>(AnimBlueprint, TEXT("AnimGraph"), RF_Transactional);
	AnimGraph->Schema = UAnimationGraphSchema::StaticClass();
	AnimGraph->GetSchema()->CreateDefaultNodesForGraph(*AnimGraph);
	AnimBlueprint->FunctionGraphs.Add(AnimGraph);
	FGraphNodeCreator<UAnimGraphNode_StateMachine> Creator(*AnimGraph);
	UAnimGraphNode_StateMachine* Machine = Creator.CreateNode(false);
	Creator.Finalize();
	UEdGraph* MachineGraph = Machine->EditorStateMachineGraph;
	ASSERT_NE(MachineGraph, nullptr);

	Calvorn::FToolResult Result;
	const FContextActionMenu MachineMenu = FContextActionMenuService::BuildContextActionMenu(AnimBlueprint, MachineGraph, Result);
	ASSERT_TRUE(MachineMenu.SharedCAM.IsValid());
	EXPECT_EQ(TelemetryNumber(Result, TEXT("cam_action_count")), double(MachineMenu.SharedCAM->GetNumActions()));

	const TArray<FCamMatch> State = FContextActionMenuService::SearchContextActionMenu(MakeRecord(TEXT("s"), TEXT(""), TEXT("Add State")), MachineMenu);
	ASSERT_GT(State.Num(), 0);
	EXPECT_EQ(U8(State[0].MenuTitle), "Add State") << Top(State);
	EXPECT_EQ(U8(State[0].NodeClass), "AnimStateNode") << Top(State);
	EXPECT_GE(State[0].Confidence, DefaultThreshold);
	UEdGraphNode* StateNode = State[0].Action->PerformAction(MachineGraph, nullptr, FVector2f(200.0f, 0.0f), true);
	ASSERT_NE(StateNode, nullptr);
	EXPECT_TRUE(MachineGraph->Nodes.Contains(StateNode));

	const TArray<FCamMatch> Comment = FContextActionMenuService::SearchContextActionMenu(MakeRecord(TEXT("c"), TEXT(""), TEXT("Add Comment")), MachineMenu);
	ASSERT_GT(Comment.Num(), 0);
	EXPECT_EQ(U8(Comment[0].NodeClass), "EdGraphNode_Comment") << Top(Comment);
}

TEST_F(PopulateMatchMenu, LaterSearchesOfOneMenuRankAsAFirstSearchWould)
{
	Search(TEXT(""), TEXT("Print String"));
	const TArray<FCamMatch> Again = Search(TEXT("K2Node_IfThenElse"), TEXT("Branch"));

	FContextActionMenu Fresh;
	Fresh.SharedCAM = Menu.SharedCAM;
	const TArray<FCamMatch> First = FContextActionMenuService::SearchContextActionMenu(MakeRecord(TEXT("n1"), TEXT("K2Node_IfThenElse"), TEXT("Branch")), Fresh);
	ASSERT_EQ(Again.Num(), First.Num());
	for (int32 Index = 0; Index < First.Num(); ++Index)
	{
		EXPECT_EQ(Again[Index].CommonKeywords, First[Index].CommonKeywords) << Index;
		EXPECT_EQ(Again[Index].Similarity.Distance, First[Index].Similarity.Distance) << Index;
		EXPECT_EQ(Again[Index].Confidence, First[Index].Confidence) << Index;
	}
	EXPECT_EQ(Again[0].Action, First[0].Action);

	// An entry added to the menu after a search is found by the next one, even one asking the same words again.
	const TArray<FCamMatch> Before = Search(TEXT(""), TEXT("Create Comment from Selection"));
	Menu.SharedCAM->AddAction(MakeShared<FEdGraphSchemaAction>(FText(), FText::FromString(TEXT("Create Comment from Selection")), FText(), 0));
	const TArray<FCamMatch> Comment = Search(TEXT(""), TEXT("Create Comment from Selection"));
	ASSERT_EQ(Comment.Num(), Before.Num() + 1);
	EXPECT_EQ(U8(Comment[0].MenuTitle), "Create Comment from Selection") << Top(Comment);
	EXPECT_EQ(U8(Comment[0].NodeClass), "EdGraphNode_Comment");
}

TEST_F(PopulateMatchMenu, AShortenedSearchIsTheHeadOfTheFullOne)
{
	const FNodeModificationRecord Record = MakeRecord(TEXT("n"), TEXT(""), TEXT("Get Actor Location"));
	const TArray<FCamMatch> All = FContextActionMenuService::SearchContextActionMenu(Record, Menu);
	const TArray<FCamMatch> Head = FContextActionMenuService::SearchContextActionMenu(Record, Menu, 20);
	ASSERT_GT(All.Num(), 20);
	ASSERT_EQ(Head.Num(), 20);
	for (int32 Index = 0; Index < Head.Num(); ++Index)
	{
		EXPECT_EQ(Head[Index].Action, All[Index].Action) << Index;
		EXPECT_EQ(Head[Index].Confidence, All[Index].Confidence) << Index;
	}
	EXPECT_EQ(FContextActionMenuService::SearchContextActionMenu(Record, Menu, 0).Num(), 0);
	EXPECT_EQ(FContextActionMenuService::SearchContextActionMenu(Record, Menu, -1).Num(), All.Num());
	EXPECT_EQ(FContextActionMenuService::SearchContextActionMenu(Record, Menu, 100000).Num(), All.Num());
}
