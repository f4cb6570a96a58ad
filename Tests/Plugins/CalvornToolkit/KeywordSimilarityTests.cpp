#include "AssetOperationBase.h"
#include "Headless/Core/StringTestUtils.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace
{
	std::vector<std::string> Words(const TArray<FString>& Keywords)
	{
		std::vector<std::string> Result;
		for (const FString& Keyword : Keywords)
		{
			Result.push_back(U8(Keyword));
		}
		return Result;
	}

	/** A menu entry's keywords as the graph population builds them: title, category, node class whole, node class parts. */
	TArray<FString> EntryKeywords(const TCHAR* Title, const TCHAR* Category, const TCHAR* NodeClass)
	{
		TArray<FString> Keywords = FAssetOperationBase::CreateKeywords(Title);
		FAssetOperationBase::AppendKeywords(Category, Keywords);
		if (!Keywords.Contains(FString(NodeClass)))
		{
			Keywords.Add(NodeClass);
		}
		FAssetOperationBase::AppendKeywords(NodeClass, Keywords);
		return Keywords;
	}

	float Confidence(const TArray<FString>& Requested, const TArray<FString>& Candidate)
	{
		return FAssetOperationBase::CalculateMatchConfidence(Requested, Candidate, FAssetOperationBase::CalculateKeywordSimilarity(Requested, Candidate));
	}
}

TEST(KeywordTest, SplitsSpacedAndRunTogetherWords)
{
	const struct
	{
		const TCHAR* Text;
		std::vector<std::string> Keywords;
	} Cases[] = {
		{TEXT("GetActorLocation"), {"get", "actor", "location"}},
		{TEXT("Get Actor Location"), {"get", "actor", "location"}},
		{TEXT("get_actor_location"), {"get", "actor", "location"}},
		{TEXT("getactorlocation"), {"getactorlocation"}},
		{TEXT("PrintString"), {"print", "string"}},
		{TEXT("Print String (Development)"), {"print", "string", "development"}},
		{TEXT("Math|Float"), {"math", "float"}},
		{TEXT("IsValid"), {"is", "valid"}},
		{TEXT("K2Node_CallFunction"), {"k2node", "call", "function"}},
		{TEXT("UK2Node_IfThenElse"), {"k2node", "if", "then", "else"}},
		{TEXT("K2Nodes"), {"k2", "nodes"}},
		{TEXT("K2_SetActorLocation"), {"k2", "set", "actor", "location"}},
		{TEXT("HTTPRequest"), {"http", "request"}},
		{TEXT("Vector2D"), {"vector", "2d"}},
		{TEXT("3DWidget"), {"3d", "widget"}},
		{TEXT("Int64ToString"), {"int", "64", "to", "string"}},
		{TEXT("Conv_IntToFloat"), {"conv", "int", "to", "float"}},
		{TEXT("EdGraphNode_Comment"), {"ed", "graph", "node", "comment"}},
		{TEXT("Add add ADD"), {"add"}},
		{TEXT("  \t "), {}},
		{TEXT(""), {}},
	};
	for (const auto& Case : Cases)
	{
		EXPECT_EQ(Words(FAssetOperationBase::CreateKeywords(Case.Text)), Case.Keywords) << U8(Case.Text);
	}
}

TEST(KeywordTest, AppendAddsOnlyNewKeywordsInOrder)
{
	TArray<FString> Keywords = {TEXT("K2Node_CallFunction"), TEXT("call")};
	FAssetOperationBase::AppendKeywords(TEXT("K2Node_CallFunction"), Keywords);
	EXPECT_EQ(Words(Keywords), (std::vector<std::string>{"K2Node_CallFunction", "call", "k2node", "function"}));
}

TEST(KeywordTest, LevenshteinDistanceIgnoresCase)
{
	const struct
	{
		const TCHAR* A;
		const TCHAR* B;
		int32 Distance;
	} Cases[] = {
		{TEXT(""), TEXT(""), 0},
		{TEXT("abc"), TEXT(""), 3},
		{TEXT(""), TEXT("abcd"), 4},
		{TEXT("kitten"), TEXT("sitting"), 3},
		{TEXT("flaw"), TEXT("lawn"), 2},
		{TEXT("Print"), TEXT("pRINT"), 0},
		{TEXT("location"), TEXT("rotation"), 2},
		{TEXT("a"), TEXT("b"), 1},
		{TEXT("GetActorLocation"), TEXT("GetActorLocation2"), 1},
	};
	for (const auto& Case : Cases)
	{
		EXPECT_EQ(FAssetOperationBase::LevenshteinDistance(Case.A, Case.B), Case.Distance) << U8(Case.A) << " / " << U8(Case.B);
		EXPECT_EQ(FAssetOperationBase::LevenshteinDistance(Case.B, Case.A), Case.Distance) << "symmetric";
	}
}

TEST(KeywordTest, CommonCountCountsRequestedKeywordsFoundInTheCandidate)
{
	const TArray<FString> Entry = EntryKeywords(TEXT("Get Actor Location"), TEXT("Transformation"), TEXT("K2Node_CallFunction"));
	const struct
	{
		const TCHAR* Request;
		int32 Common;
	} Cases[] = {
		{TEXT("Get Actor Location"), 3},
		{TEXT("Location Actor Get"), 3},
		{TEXT("GetActorLocation"), 3},
		{TEXT("getactorlocation"), 1},
		{TEXT("Get Location"), 2},
		{TEXT("Get Velocity"), 1},
		{TEXT("Set Rotation"), 0},
		{TEXT("call function"), 2},
	};
	for (const auto& Case : Cases)
	{
		const FKeywordSimilarity Similarity = FAssetOperationBase::CalculateKeywordSimilarity(FAssetOperationBase::CreateKeywords(Case.Request), Entry);
		EXPECT_EQ(Similarity.CommonKeywords, Case.Common) << U8(Case.Request);
	}

	// A requested keyword counts once however often it is repeated.
	EXPECT_EQ(FAssetOperationBase::CalculateKeywordSimilarity({TEXT("add"), TEXT("ADD")}, {TEXT("add")}).CommonKeywords, 1);
	EXPECT_EQ(FAssetOperationBase::CalculateKeywordSimilarity({}, {TEXT("add")}).CommonKeywords, 0);
}

TEST(KeywordTest, DistanceGrowsAsTheMatchGetsWorse)
{
	const TArray<FString> Request = {TEXT("print"), TEXT("string")};
	auto Distance = [&Request](TArray<FString> Candidate) { return FAssetOperationBase::CalculateKeywordSimilarity(Request, Candidate).Distance; };

	const int32 Exact = Distance({TEXT("print"), TEXT("string")});
	const int32 ExtraWord = Distance({TEXT("print"), TEXT("string"), TEXT("development")});
	const int32 TwoExtraWords = Distance({TEXT("print"), TEXT("string"), TEXT("development"), TEXT("utilities")});
	const int32 Misspelt = Distance({TEXT("print"), TEXT("strong")});
	const int32 Missing = Distance({TEXT("print")});
	const int32 Unrelated = Distance({TEXT("destroy"), TEXT("actor")});

	EXPECT_EQ(Exact, 0);
	EXPECT_LT(Exact, ExtraWord);
	EXPECT_LT(ExtraWord, TwoExtraWords);
	EXPECT_LT(Exact, Misspelt);
	EXPECT_LT(Misspelt, Missing);
	EXPECT_LT(Missing, Unrelated);
}

TEST(KeywordTest, AMisspellingCountsOnlyWithinItsEditLimit)
{
	// One requested word against one candidate word: a near match takes part credit and its edits as distance;
	// beyond the limit (one edit from 4 letters, two from 8) the word is missing and costs its length, and the
	// unmatched candidate word one more. Pairs with the same letters in another order, or far apart in length,
	// must be judged by their real edit distance.
	const struct
	{
		const TCHAR* Requested;
		const TCHAR* Candidate;
		bool bNearMatch;
		int32 Distance;
	} Cases[] = {
		{TEXT("strong"), TEXT("string"), true, 1},
		{TEXT("actr"), TEXT("actor"), true, 1},
		{TEXT("acotr"), TEXT("actor"), false, 6},
		{TEXT("locaiton"), TEXT("location"), true, 2},
		{TEXT("loactoin"), TEXT("location"), false, 9},
		{TEXT("component"), TEXT("components"), true, 1},
		{TEXT("component"), TEXT("componentss"), true, 2},
		{TEXT("component"), TEXT("componentsss"), false, 10},
		{TEXT("overlap"), TEXT("overlaps"), true, 1},
		{TEXT("overlap"), TEXT("ovrelap"), false, 8},
		{TEXT("vector2d"), TEXT("vector3d"), true, 1},
		{TEXT("abba"), TEXT("baab"), false, 5},
		{TEXT("set"), TEXT("get"), false, 4},
		{TEXT("Begin"), TEXT("begn"), true, 1},
	};
	for (const auto& Case : Cases)
	{
		SCOPED_TRACE(U8(FString(Case.Requested) + TEXT(" / ") + Case.Candidate));
		const FKeywordSimilarity Similarity = FAssetOperationBase::CalculateKeywordSimilarity({Case.Requested}, {Case.Candidate});
		EXPECT_EQ(Similarity.CommonKeywords, 0);
		EXPECT_EQ(Similarity.MatchedCandidateKeywords, Case.bNearMatch ? 1 : 0);
		EXPECT_EQ(Similarity.Distance, Case.Distance);
		EXPECT_EQ(Similarity.Coverage > 0.0f, Case.bNearMatch);
	}
}

TEST(KeywordTest, ConfidencePassesIdenticalTitlesAndRefusesOneSharedGenericWord)
{
	constexpr float Bar = 0.6f;
	const struct
	{
		const TCHAR* Request;
		const TCHAR* Title;
		const TCHAR* Category;
		const TCHAR* NodeClass;
		bool bPasses;
	} Cases[] = {
		{TEXT("Print String"), TEXT("Print String"), TEXT("Development"), TEXT("K2Node_CallFunction"), true},
		{TEXT("PrintString"), TEXT("Print String"), TEXT("Development"), TEXT("K2Node_CallFunction"), true},
		{TEXT("printstring"), TEXT("Print String"), TEXT("Development"), TEXT("K2Node_CallFunction"), true},
		{TEXT("Get Actor Location"), TEXT("Get Actor Location"), TEXT("Transformation"), TEXT("K2Node_CallFunction"), true},
		{TEXT("Prnt String"), TEXT("Print String"), TEXT("Development"), TEXT("K2Node_CallFunction"), true},
		{TEXT("Add Component"), TEXT("Add Component"), TEXT("Components"), TEXT("K2Node_AddComponent"), true},
		{TEXT("Branch"), TEXT("Branch"), TEXT("Flow Control"), TEXT("K2Node_IfThenElse"), true},
		{TEXT("Get Actor Location"), TEXT("Get Velocity"), TEXT("Transformation"), TEXT("K2Node_CallFunction"), false},
		{TEXT("Destroy Actor"), TEXT("Destroy Component"), TEXT("Components"), TEXT("K2Node_CallFunction"), false},
		{TEXT("Get NonExistentVariable"), TEXT("Get Actor Location"), TEXT("Transformation"), TEXT("K2Node_CallFunction"), false},
		{TEXT("Add Static Mesh Component"), TEXT("Add Timeline"), TEXT("Timeline"), TEXT("K2Node_Timeline"), false},
		{TEXT("Set Actor Rotation"), TEXT("Get Actor Location"), TEXT("Transformation"), TEXT("K2Node_CallFunction"), false},
	};
	for (const auto& Case : Cases)
	{
		const float Value = Confidence(FAssetOperationBase::CreateKeywords(Case.Request), EntryKeywords(Case.Title, Case.Category, Case.NodeClass));
		EXPECT_GE(Value, 0.0f);
		EXPECT_LE(Value, 1.0f);
		EXPECT_EQ(Value >= Bar, Case.bPasses) << U8(Case.Request) << " vs " << U8(Case.Title) << ": " << Value;
	}

	EXPECT_FLOAT_EQ(Confidence({TEXT("add")}, {TEXT("add")}), 1.0f);
	EXPECT_FLOAT_EQ(Confidence({}, {TEXT("add")}), 0.0f);
	EXPECT_FLOAT_EQ(Confidence({TEXT("add")}, {}), 0.0f);
}

TEST(KeywordTest, RankingByCommonKeywordsFindsTheRequestedEntryFirst)
{
	struct FEntry
	{
		const TCHAR* Title;
		const TCHAR* Category;
		const TCHAR* NodeClass;
	};
	const FEntry Menu[] = {
		{TEXT("Get Velocity"), TEXT("Transformation"), TEXT("K2Node_CallFunction")},
		{TEXT("Get Actor Location"), TEXT("Transformation"), TEXT("K2Node_CallFunction")},
		{TEXT("Set Actor Location"), TEXT("Transformation"), TEXT("K2Node_CallFunction")},
		{TEXT("Print String"), TEXT("Development"), TEXT("K2Node_CallFunction")},
		{TEXT("Print Text"), TEXT("Development"), TEXT("K2Node_CallFunction")},
		{TEXT("Branch"), TEXT("Flow Control"), TEXT("K2Node_IfThenElse")},
		{TEXT("Sequence"), TEXT("Flow Control"), TEXT("K2Node_ExecutionSequence")},
		{TEXT("Is Valid"), TEXT("Utilities"), TEXT("K2Node_CallFunction")},
	};

	// The order the population step sorts by: more common keywords, then more in the titles alone, then less distance.
	auto Best = [&Menu](const TCHAR* Title, const TCHAR* ClassName) -> std::pair<std::string, float>
	{
		TArray<FString> Requested = FAssetOperationBase::CreateKeywords(Title);
		if (*ClassName)
		{
			if (!Requested.Contains(FString(ClassName)))
			{
				Requested.Add(ClassName);
			}
			FAssetOperationBase::AppendKeywords(ClassName, Requested);
		}
		struct FScored
		{
			const FEntry* Entry;
			FKeywordSimilarity Similarity;
			int32 TitleCommon;
			float Confidence;
		};
		std::vector<FScored> Scored;
		for (const FEntry& Entry : Menu)
		{
			const TArray<FString> Candidate = EntryKeywords(Entry.Title, Entry.Category, Entry.NodeClass);
			const FKeywordSimilarity Similarity = FAssetOperationBase::CalculateKeywordSimilarity(Requested, Candidate);
			const int32 TitleCommon = FAssetOperationBase::CalculateKeywordSimilarity(FAssetOperationBase::CreateKeywords(Title), FAssetOperationBase::CreateKeywords(Entry.Title)).CommonKeywords;
			Scored.push_back({&Entry, Similarity, TitleCommon, FAssetOperationBase::CalculateMatchConfidence(Requested, Candidate, Similarity)});
		}
		std::stable_sort(Scored.begin(), Scored.end(), [](const FScored& A, const FScored& B)
		{
			if (A.Similarity.CommonKeywords != B.Similarity.CommonKeywords)
			{
				return A.Similarity.CommonKeywords > B.Similarity.CommonKeywords;
			}
			if (A.TitleCommon != B.TitleCommon)
			{
				return A.TitleCommon > B.TitleCommon;
			}
			return A.Similarity.Distance < B.Similarity.Distance;
		});
		return {U8(Scored.front().Entry->Title), Scored.front().Confidence};
	};

	EXPECT_EQ(Best(TEXT("GetActorLocation"), TEXT("")).first, "Get Actor Location");
	EXPECT_GE(Best(TEXT("GetActorLocation"), TEXT("")).second, 0.6f);
	EXPECT_EQ(Best(TEXT("print string"), TEXT("")).first, "Print String");
	EXPECT_EQ(Best(TEXT("IsValid"), TEXT("")).first, "Is Valid");
	EXPECT_EQ(Best(TEXT(""), TEXT("K2Node_IfThenElse")).first, "Branch");
	EXPECT_EQ(Best(TEXT("Set Actor Location"), TEXT("K2Node_CallFunction")).first, "Set Actor Location");

	// A request naming nothing in the menu still ranks a first entry, but not a confident one.
	const std::pair<std::string, float> Unknown = Best(TEXT("Get NonExistentVariable"), TEXT(""));
	EXPECT_FALSE(Unknown.first.empty());
	EXPECT_LT(Unknown.second, 0.6f);
}
