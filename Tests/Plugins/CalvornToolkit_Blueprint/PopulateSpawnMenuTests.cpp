// The two routes that place nodes by what the editor offers: the deterministic route (class and function named) and
// the fuzzy route (words searched in the graph's action menu), each followed by the validation of what it placed.

#include "PopulateSpawnTestSupport.h"

#include "K2Node_CallFunction.h"

#include <cmath>
#include <cstdio>

using namespace PopulateSpawnTests;

namespace
{
	class PopulateSpawnMenu : public FSpawnFixture
	{
	protected:
		void BuildMenu()
		{
			Calvorn::FToolResult BuildResult;
			Menu = FContextActionMenuService::BuildContextActionMenu(Blueprint, Graph, BuildResult);
			ASSERT_TRUE(Menu.SharedCAM.IsValid());
		}

		/** The ranked candidates the dispatcher sees for a request. */
		TArray<FCamMatch> Candidates(const FString& Json) const
		{
			return FContextActionMenuService::SearchContextActionMenu(Request(Json), Menu);
		}

		/** A threshold that reads back as exactly Value. */
		static std::string ExactThreshold(float Value)
		{
			char Text[64];
			std::snprintf(Text, sizeof(Text), "%.9g", static_cast<double>(Value));
			return Text;
		}
	};

	TEST_F(PopulateSpawnMenu, NamedClassAndFunctionSpawnThatFunctionWithoutTheMenu)
	{
		// The menu is left empty: a deterministic request never reaches it.
		const int32 NodesBefore = Graph->Nodes.Num();
		UEdGraphNode* Node = Spawn(TEXT(R"({"node_guid":"p","class_name":"K2Node_CallFunction","target_class":"KismetSystemLibrary","target_function":"PrintString","menu_title":"Print String"})"));
		ASSERT_NE(Node, nullptr) << Describe(Result);
		const UK2Node_CallFunction* Call = Cast<UK2Node_CallFunction>(Node);
		ASSERT_NE(Call, nullptr);
		EXPECT_EQ(U8(Call->FunctionReference.GetMemberName().ToString()), "PrintString");
		EXPECT_EQ(Graph->Nodes.Num(), NodesBefore + 1);
		EXPECT_EQ(SpawnMethodCount(TEXT("deterministic")), 1.0);
		EXPECT_EQ(Errors(), std::vector<std::string>{});
		EXPECT_EQ(Warnings(), std::vector<std::string>{});
	}

	TEST_F(PopulateSpawnMenu, AFailedDeterministicRequestNeverFallsBackToTheMenu)
	{
		const int32 NodesBefore = Graph->Nodes.Num();
		EXPECT_EQ(Spawn(TEXT(R"({"class_name":"K2Node_CallFunction","target_class":"KismetSystemLibraryy","target_function":"PrintString"})")), nullptr);
		// No "SharedCAM is null": the empty menu was never asked.
		EXPECT_EQ(Errors(), std::vector<std::string>{});
		const std::string Expected = "[Failure] Deterministic spawn unavailable for KismetSystemLibraryy::PrintString (class or function - incorrect or not found).";
		EXPECT_EQ(Warnings(), std::vector<std::string>{Expected});
		ASSERT_FALSE(ValidationFailures().empty());
		EXPECT_EQ(ValidationFailures().back(), Expected);
		EXPECT_EQ(Graph->Nodes.Num(), NodesBefore);
	}

	TEST_F(PopulateSpawnMenu, ADeterministicNodeStillGoesThroughValidation)
	{
		const int32 NodesBefore = Graph->Nodes.Num();
		EXPECT_EQ(Spawn(TEXT(R"({"class_name":"K2Node_CallFunction","target_class":"KismetSystemLibrary","target_function":"PrintString","menu_title":"Print","node_metadata":{"target_function":"PrintText"}})")), nullptr);
		EXPECT_EQ(Warnings(), std::vector<std::string>{"[Failure] Created function node 'Print' but function 'PrintText' was requested (spawned 'PrintString'). Suggestions are provided (not mandatory); consider deterministic spawning if possible or refining the fuzzy request."});
		EXPECT_EQ(Graph->Nodes.Num(), NodesBefore);
	}

	TEST_F(PopulateSpawnMenu, AFuzzyTitleSpawnsTheBestEntryWhenItIsConfidentEnough)
	{
		BuildMenu();
		const int32 NodesBefore = Graph->Nodes.Num();
		UEdGraphNode* Node = Spawn(TEXT(R"({"node_guid":"f","menu_title":"Print String"})"));
		ASSERT_NE(Node, nullptr) << Describe(Result);
		const UK2Node_CallFunction* Call = Cast<UK2Node_CallFunction>(Node);
		ASSERT_NE(Call, nullptr);
		EXPECT_EQ(U8(Call->FunctionReference.GetMemberName().ToString()), "PrintString");
		EXPECT_EQ(Graph->Nodes.Num(), NodesBefore + 1);
		EXPECT_EQ(SpawnMethodCount(TEXT("cam_global")), 1.0);
		EXPECT_EQ(Warnings(), std::vector<std::string>{});
	}

	TEST_F(PopulateSpawnMenu, TheThresholdDecidesOnTheFirstCandidateAloneAndEqualityPasses)
	{
		BuildMenu();
		const FString Base = TEXT(R"("menu_title":"Print Text Message")");
		const TArray<FCamMatch> Ranked = Candidates(FString::Printf(TEXT("{%s}"), *Base));
		ASSERT_GT(Ranked.Num(), 0);
		const float Best = Ranked[0].Confidence;
		ASSERT_GT(Best, 0.0f);
		ASSERT_LT(Best, 1.0f);
		const float Above = std::nextafter(Best, 2.0f);

		struct FCase
		{
			std::string Threshold;
			bool bSpawns;
		};
		const std::vector<FCase> Cases = {
			{ExactThreshold(Best), true},
			{ExactThreshold(Above), false},
			{"abc", true},  // no number reads as 0
			{"1.5", Best >= 0.6f},  // out of range: the default
			{"-0.1", Best >= 0.6f},
		};
		for (const FCase& Case : Cases)
		{
			SCOPED_TRACE(Case.Threshold);
			Result = Calvorn::FToolResult();
			const int32 NodesBefore = Graph->Nodes.Num();
			UEdGraphNode* Node = Spawn(FString::Printf(TEXT(R"({%s,"node_metadata":{"minimum_confidence":"%s"}})"), *Base, *FString(Case.Threshold.c_str())));
			EXPECT_EQ(Node != nullptr, Case.bSpawns) << Describe(Result);
			EXPECT_EQ(Graph->Nodes.Num(), NodesBefore + (Case.bSpawns ? 1 : 0));
			if (!Case.bSpawns)
			{
				ASSERT_EQ(Result.GetWarningMessages().Num(), 1);
				EXPECT_TRUE(Result.GetWarningMessages()[0].StartsWith(FString::Printf(TEXT("[Failure] No confident fuzzy match for node 'Print Text Message' (best: '%s', confidence: %.2f, threshold: "), *Ranked[0].MenuTitle, Best), ESearchCase::CaseSensitive))
					<< U8(Result.GetWarningMessages()[0]);
			}
		}
	}

	TEST_F(PopulateSpawnMenu, ARefusalListsAtMostTwentyCandidatesAndReportsThem)
	{
		BuildMenu();
		const FString Json = TEXT(R"({"menu_title":"Get NonExistentVariable","node_metadata":{"minimum_confidence":"1"}})");
		const TArray<FCamMatch> Ranked = Candidates(Json);
		ASSERT_GT(Ranked.Num(), 20);
		ASSERT_LT(Ranked[0].Confidence, 1.0f);
		const int32 NodesBefore = Graph->Nodes.Num();
		EXPECT_EQ(Spawn(Json), nullptr);
		EXPECT_EQ(Graph->Nodes.Num(), NodesBefore);
		ASSERT_EQ(Result.GetWarningMessages().Num(), 1);
		const FString Text = Result.GetWarningMessages()[0];
		const FString Head = FString::Printf(TEXT("[Failure] No confident fuzzy match for node 'Get NonExistentVariable' (best: '%s', confidence: %.2f, threshold: 1.00). Suggestions are provided (not mandatory); consider deterministic spawning if possible or refining the fuzzy request.\nTop candidates:\n"), *Ranked[0].MenuTitle, Ranked[0].Confidence);
		ASSERT_TRUE(Text.StartsWith(Head, ESearchCase::CaseSensitive)) << U8(Text);
		TArray<FString> Lines;
		Text.RightChop(Head.Len()).ParseIntoArray(Lines, TEXT("\n"), false);
		ASSERT_EQ(Lines.Num(), 20);
		EXPECT_EQ(Lines[0], FString::Printf(TEXT("  1. '%s' (class: %s, confidence: %.2f)"), *Ranked[0].MenuTitle, *Ranked[0].NodeClass, Ranked[0].Confidence));
		EXPECT_EQ(Lines[19], FString::Printf(TEXT("  20. '%s' (class: %s, confidence: %.2f)"), *Ranked[19].MenuTitle, *Ranked[19].NodeClass, Ranked[19].Confidence));
		EXPECT_EQ(ValidationFailures(), std::vector<std::string>{U8(Text)});

		// The candidates go to the client beside the message, with the message as their context.
		FString MatchesText;
		ASSERT_TRUE(Result.GetDatas()->TryGetStringField(TEXT("candidate_matches"), MatchesText));
		const TSharedPtr<FJsonObject> Matches = ParseJson(MatchesText);
		EXPECT_EQ(Objects(Matches, TEXT("candidates")).Num(), 20);
		EXPECT_EQ(Str(Matches, TEXT("context")), U8(Text));
	}

	TEST_F(PopulateSpawnMenu, ANullMenuIsAnInternalErrorOfTheCall)
	{
		EXPECT_EQ(Spawn(TEXT(R"({"menu_title":"Print String"})")), nullptr);
		EXPECT_EQ(Errors(), std::vector<std::string>{"SharedCAM is null - internal error"});
		EXPECT_EQ(Warnings(), std::vector<std::string>{});
		// Still timed and counted, as every spawn past the first check.
		EXPECT_EQ(Objects(Telemetry(), TEXT("node_creation_latency_ms")).Num(), 1);
		EXPECT_EQ(SpawnMethodCount(TEXT("cam_global")), 1.0);
	}
}
