#include "Algo/Accumulate.h"
#include "Algo/AllOf.h"
#include "Algo/AnyOf.h"
#include "Algo/Count.h"
#include "Algo/Find.h"
#include "Algo/MaxElement.h"
#include "Algo/MinElement.h"
#include "Algo/NoneOf.h"
#include "Algo/Reverse.h"
#include "Algo/Sort.h"
#include "Algo/StableSort.h"
#include "Algo/Transform.h"
#include "Containers/Array.h"

#include "StringTestUtils.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{
	struct FEntry
	{
		int32 Key = 0;
		int32 Sequence = 0;

		int32 GetKey() const { return Key; }
		bool operator==(const FEntry& Other) const { return Key == Other.Key && Sequence == Other.Sequence; }
	};

	TArray<FEntry> MakeEntriesWithDuplicateKeys()
	{
		// Many equal keys in a scrambled order, so an unstable sort would be likely to reorder them.
		TArray<FEntry> Entries;
		for (int32 Index = 0; Index < 200; ++Index)
		{
			Entries.Add(FEntry{ (Index * 7919) % 5, Index });
		}
		return Entries;
	}

	void ExpectStablyOrdered(const TArray<FEntry>& Entries)
	{
		for (int32 Index = 1; Index < Entries.Num(); ++Index)
		{
			const FEntry& Previous = Entries[Index - 1];
			const FEntry& Current = Entries[Index];
			ASSERT_LE(Previous.Key, Current.Key) << Index;
			if (Previous.Key == Current.Key)
			{
				ASSERT_LT(Previous.Sequence, Current.Sequence) << Index;
			}
		}
	}

	std::vector<int32> ToVector(const TArray<int32>& Array)
	{
		return std::vector<int32>(Array.begin(), Array.end());
	}
}

TEST(Algo, StableSortKeepsTheOrderOfEqualElements)
{
	TArray<FEntry> ByPredicate = MakeEntriesWithDuplicateKeys();
	Algo::StableSort(ByPredicate, [](const FEntry& A, const FEntry& B) { return A.Key < B.Key; });
	ExpectStablyOrdered(ByPredicate);

	TArray<FEntry> ByMember = MakeEntriesWithDuplicateKeys();
	Algo::StableSortBy(ByMember, &FEntry::Key);
	ExpectStablyOrdered(ByMember);
	EXPECT_TRUE(ByMember == ByPredicate);

	TArray<FEntry> ByFunction = MakeEntriesWithDuplicateKeys();
	Algo::StableSortBy(ByFunction, &FEntry::GetKey, [](int32 A, int32 B) { return A > B; });
	for (int32 Index = 1; Index < ByFunction.Num(); ++Index)
	{
		ASSERT_GE(ByFunction[Index - 1].Key, ByFunction[Index].Key);
		if (ByFunction[Index - 1].Key == ByFunction[Index].Key)
		{
			ASSERT_LT(ByFunction[Index - 1].Sequence, ByFunction[Index].Sequence);
		}
	}

	TArray<int32> Plain{ 3, 1, 2, 1 };
	Algo::StableSort(Plain);
	EXPECT_EQ(ToVector(Plain), (std::vector<int32>{ 1, 1, 2, 3 }));
}

TEST(Algo, SortOrdersByOperatorPredicateOrProjection)
{
	TArray<int32> Numbers{ 5, -2, 9, 0, 5, 3 };
	Algo::Sort(Numbers);
	EXPECT_EQ(ToVector(Numbers), (std::vector<int32>{ -2, 0, 3, 5, 5, 9 }));
	Algo::Sort(Numbers, [](int32 A, int32 B) { return A > B; });
	EXPECT_EQ(ToVector(Numbers), (std::vector<int32>{ 9, 5, 5, 3, 0, -2 }));

	TArray<FEntry> Entries{ FEntry{ 3, 0 }, FEntry{ 1, 1 }, FEntry{ 2, 2 } };
	Algo::SortBy(Entries, &FEntry::Key);
	EXPECT_EQ(Entries[0].Key, 1);
	EXPECT_EQ(Entries[2].Key, 3);
	Algo::SortBy(Entries, [](const FEntry& Entry) { return -Entry.Key; });
	EXPECT_EQ(Entries[0].Key, 3);
	Algo::SortBy(Entries, &FEntry::Sequence, [](int32 A, int32 B) { return A < B; });
	EXPECT_EQ(Entries[0].Sequence, 0);

	// Strings sort with FString's own ordering, which ignores case.
	TArray<FString> Names{ TEXT("beta"), TEXT("Alpha"), TEXT("gamma"), TEXT("ALPHA2") };
	Algo::Sort(Names);
	std::vector<std::string> Sorted;
	for (const FString& Name : Names)
	{
		Sorted.push_back(U8(Name));
	}
	EXPECT_EQ(Sorted, (std::vector<std::string>{ "Alpha", "ALPHA2", "beta", "gamma" }));

	int32 CArray[] = { 3, 2, 1 };
	Algo::Sort(CArray);
	EXPECT_EQ(CArray[0], 1);
}

TEST(Algo, FindAndCount)
{
	TArray<FEntry> Entries{ FEntry{ 1, 10 }, FEntry{ 2, 20 }, FEntry{ 1, 30 } };
	FEntry* Found = Algo::FindBy(Entries, 1, &FEntry::Key);
	ASSERT_NE(Found, nullptr);
	EXPECT_EQ(Found->Sequence, 10);
	EXPECT_EQ(Found, &Entries[0]);
	EXPECT_EQ(Algo::FindBy(Entries, 7, &FEntry::Key), nullptr);
	EXPECT_EQ(Algo::Find(Entries, FEntry{ 2, 20 }), &Entries[1]);
	EXPECT_EQ(Algo::FindByPredicate(Entries, [](const FEntry& Entry) { return Entry.Sequence > 15; }), &Entries[1]);
	EXPECT_EQ(Algo::FindLastByPredicate(Entries, [](const FEntry& Entry) { return Entry.Key == 1; }), &Entries[2]);

	const TArray<int32> Numbers{ 1, 2, 2, 3, 2 };
	EXPECT_EQ(Algo::Count(Numbers, 2), SIZE_T(3));
	EXPECT_EQ(Algo::CountIf(Numbers, [](int32 Value) { return Value > 1; }), SIZE_T(4));
	EXPECT_EQ(Algo::CountBy(Entries, 1, &FEntry::Key), SIZE_T(2));
	EXPECT_EQ(Algo::Find(Numbers, 3), &Numbers[3]);
	EXPECT_EQ(Algo::FindLast(Numbers, 2), &Numbers[4]);
}

TEST(Algo, PredicatesOverRanges)
{
	const TArray<int32> Empty;
	EXPECT_FALSE(Algo::AnyOf(Empty));
	EXPECT_TRUE(Algo::AllOf(Empty));
	EXPECT_TRUE(Algo::NoneOf(Empty));

	const TArray<int32> Numbers{ 2, 4, 6 };
	EXPECT_TRUE(Algo::AllOf(Numbers, [](int32 Value) { return Value % 2 == 0; }));
	EXPECT_FALSE(Algo::AnyOf(Numbers, [](int32 Value) { return Value > 6; }));
	EXPECT_TRUE(Algo::NoneOf(Numbers, [](int32 Value) { return Value < 0; }));
	const TArray<bool> Flags{ false, true };
	EXPECT_TRUE(Algo::AnyOf(Flags));
	EXPECT_FALSE(Algo::AllOf(Flags));
	EXPECT_FALSE(Algo::NoneOf(Flags));
}

TEST(Algo, TransformReverseExtremesAndAccumulate)
{
	const TArray<int32> Numbers{ 3, 9, 1, 9, 1 };
	TArray<FString> Texts;
	Algo::Transform(Numbers, Texts, [](int32 Value) { return FString::Printf(TEXT("#%d"), Value); });
	ASSERT_EQ(Texts.Num(), 5);
	EXPECT_EQ(U8(Texts[1]), "#9");
	TArray<int32> Large;
	Algo::TransformIf(Numbers, Large, [](int32 Value) { return Value > 2; }, [](int32 Value) { return Value * 10; });
	EXPECT_EQ(ToVector(Large), (std::vector<int32>{ 30, 90, 90 }));

	TArray<int32> Reversed = Numbers;
	Algo::Reverse(Reversed);
	EXPECT_EQ(ToVector(Reversed), (std::vector<int32>{ 1, 9, 1, 9, 3 }));

	// Extremes point at the first of equal elements.
	EXPECT_EQ(Algo::MaxElement(Numbers), &Numbers[1]);
	EXPECT_EQ(Algo::MinElement(Numbers), &Numbers[2]);
	EXPECT_EQ(Algo::MaxElement(Numbers, [](int32 A, int32 B) { return A > B; }), &Numbers[2]);
	const TArray<FEntry> Entries{ FEntry{ 5, 0 }, FEntry{ 7, 1 }, FEntry{ 7, 2 } };
	EXPECT_EQ(Algo::MaxElementBy(Entries, &FEntry::Key), &Entries[1]);
	EXPECT_EQ(Algo::MinElementBy(Entries, &FEntry::Key), &Entries[0]);
	EXPECT_EQ(Algo::MaxElement(TArray<int32>()), nullptr);

	EXPECT_EQ(Algo::Accumulate(Numbers, 0), 23);
	EXPECT_EQ(Algo::Accumulate(Numbers, 1, [](int32 Acc, int32 Value) { return Acc * Value; }), 243);
	EXPECT_EQ(Algo::TransformAccumulate(Entries, &FEntry::Key, 0), 19);
	EXPECT_EQ(Algo::TransformAccumulate(Numbers, [](int32 Value) { return Value * Value; }, 0, [](int32 A, int32 B) { return A + B; }), 173);
}
