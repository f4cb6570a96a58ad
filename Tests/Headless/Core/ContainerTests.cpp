#include "Containers/Array.h"
#include "Containers/Map.h"
#include "Containers/Set.h"
#include "Misc/Optional.h"
#include "Templates/Tuple.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace
{
	// Counts live instances so the tests can see every element destroyed exactly once.
	struct FTracked
	{
		static inline int32 Live = 0;
		std::string Text;

		FTracked() { ++Live; }
		explicit FTracked(std::string InText) : Text(std::move(InText)) { ++Live; }
		FTracked(const FTracked& Other) : Text(Other.Text) { ++Live; }
		FTracked(FTracked&& Other) noexcept : Text(std::move(Other.Text)) { ++Live; }
		FTracked& operator=(const FTracked&) = default;
		FTracked& operator=(FTracked&&) = default;
		~FTracked() { --Live; }
		bool operator==(const FTracked& Other) const { return Text == Other.Text; }
	};

	// A key whose equality ignores case, as FString's does, to check that containers ask == and the hash.
	struct FCaselessKey
	{
		std::string Text;
		bool operator==(const FCaselessKey& Other) const
		{
			if (Text.size() != Other.Text.size())
			{
				return false;
			}
			for (size_t Index = 0; Index < Text.size(); ++Index)
			{
				if (std::tolower(Text[Index]) != std::tolower(Other.Text[Index]))
				{
					return false;
				}
			}
			return true;
		}
	};

	uint32 GetTypeHash(const FCaselessKey& Key)
	{
		uint32 Hash = 0;
		for (char Ch : Key.Text)
		{
			Hash = Hash * 31 + static_cast<uint32>(std::tolower(Ch));
		}
		return Hash;
	}

	template <typename MapType>
	std::vector<int32> KeysOf(const MapType& Map)
	{
		std::vector<int32> Keys;
		for (const auto& Pair : Map)
		{
			Keys.push_back(Pair.Key);
		}
		return Keys;
	}
}

TEST(ArrayTest, AddInsertRemoveKeepOrderAndReturnIndices)
{
	TArray<int32> Array;
	EXPECT_EQ(Array.Add(10), 0);
	EXPECT_EQ(Array.Add(20), 1);
	EXPECT_EQ(Array.AddUnique(10), 0);
	EXPECT_EQ(Array.AddUnique(30), 2);
	Array.Insert(5, 0);
	EXPECT_EQ(Array, (TArray<int32>{5, 10, 20, 30}));

	Array.Add(10);
	EXPECT_EQ(Array.Remove(10), 2);
	EXPECT_EQ(Array, (TArray<int32>{5, 20, 30}));
	EXPECT_EQ(Array.RemoveSingle(99), 0);

	Array.RemoveAt(0);
	EXPECT_EQ(Array, (TArray<int32>{20, 30}));
	EXPECT_EQ(Array.Pop(), 30);
	EXPECT_EQ(Array.Last(), 20);
	EXPECT_EQ(Array.Find(20), 0);
	EXPECT_EQ(Array.Find(21), INDEX_NONE);
}

TEST(ArrayTest, GetRefAddersReturnTheElementAfterGrowing)
{
	TArray<std::string> Array;
	for (int32 Index = 0; Index < 40; ++Index)
	{
		std::string& Added = (Index % 3 == 0) ? Array.Add_GetRef(std::to_string(Index))
			: (Index % 3 == 1) ? Array.Emplace_GetRef(std::to_string(Index))
			: Array.AddDefaulted_GetRef();
		Added += "!";
		EXPECT_EQ(&Added, &Array.Last());
	}
	EXPECT_EQ(Array[0], "0!");
	EXPECT_EQ(Array[2], "!");
}

TEST(ArrayTest, RemoveAtSwapFillsHoleFromTheTail)
{
	TArray<int32> Array{0, 1, 2, 3, 4, 5};
	Array.RemoveAtSwap(1, 2);
	EXPECT_EQ(Array, (TArray<int32>{0, 4, 5, 3}));

	TArray<int32> Tail{0, 1, 2};
	Tail.RemoveAtSwap(1, 2);
	EXPECT_EQ(Tail, (TArray<int32>{0}));
}

TEST(ArrayTest, AddingAnElementOfTheSameArrayWhileGrowingIsSafe)
{
	TArray<std::string> Array{"first-long-enough-to-allocate-on-the-heap"};
	for (int32 Index = 0; Index < 100; ++Index)
	{
		Array.Add(Array[0]);
	}
	Array.Append(Array.GetData(), Array.Num());
	EXPECT_EQ(Array.Num(), 202);
	EXPECT_EQ(Array.Last(), "first-long-enough-to-allocate-on-the-heap");
}

TEST(ArrayTest, ElementsAreConstructedAndDestroyedExactlyOnce)
{
	{
		TArray<FTracked> Array;
		for (int32 Index = 0; Index < 50; ++Index)
		{
			Array.Emplace(std::to_string(Index));
		}
		Array.Insert(FTracked("inserted"), 10);
		Array.RemoveAt(3, 5);
		Array.RemoveAll([](const FTracked& Item) { return Item.Text.size() == 1; });
		TArray<FTracked> Copy = Array;
		TArray<FTracked> Moved = MoveTemp(Copy);
		Moved.SetNum(3);
		Moved.SetNum(6);
		EXPECT_EQ(Moved[5].Text, "");
		EXPECT_EQ(FTracked::Live, Array.Num() + Moved.Num());
	}
	EXPECT_EQ(FTracked::Live, 0);
}

TEST(ArrayTest, StableSortKeepsEqualElementsInOrder)
{
	TArray<TPair<int32, char>> Array{{2, 'a'}, {1, 'b'}, {2, 'c'}, {1, 'd'}, {0, 'e'}};
	Array.StableSort([](const TPair<int32, char>& A, const TPair<int32, char>& B) { return A.Key < B.Key; });
	std::string Order;
	for (const auto& Pair : Array)
	{
		Order.push_back(Pair.Value);
	}
	EXPECT_EQ(Order, "ebdac");
}

TEST(ArrayTest, IteratorRemoveCurrentVisitsEveryRemainingElement)
{
	TArray<int32> Array{1, 2, 3, 4, 5, 6};
	std::vector<int32> Visited;
	for (auto It = Array.CreateIterator(); It; ++It)
	{
		Visited.push_back(*It);
		if (*It % 2 == 0)
		{
			It.RemoveCurrent();
		}
	}
	EXPECT_EQ(Visited, (std::vector<int32>{1, 2, 3, 4, 5, 6}));
	EXPECT_EQ(Array, (TArray<int32>{1, 3, 5}));
}

TEST(MapTest, IteratesInInsertionOrderAndAddOverwritesInPlace)
{
	TMap<int32, std::string> Map;
	for (int32 Key : {42, 7, 19, 3, 100, 55, 8, 61, 12, 90, 33})
	{
		Map.Add(Key, std::to_string(Key));
	}
	Map.Add(19, "nineteen");
	EXPECT_EQ(KeysOf(Map), (std::vector<int32>{42, 7, 19, 3, 100, 55, 8, 61, 12, 90, 33}));
	EXPECT_EQ(*Map.Find(19), "nineteen");
	EXPECT_EQ(Map.FindRef(4), "");
	EXPECT_EQ(Map.Find(4), nullptr);
	EXPECT_EQ(Map.Num(), 11);
}

TEST(MapTest, RemovalLeavesAHoleThatTheNextAddFills)
{
	// The engine's sparse storage reuses the last freed slot first; clients see it in key order of JSON objects.
	TMap<int32, int32> Map;
	for (int32 Key = 1; Key <= 5; ++Key)
	{
		Map.Add(Key, Key);
	}
	EXPECT_EQ(Map.Remove(2), 1);
	EXPECT_EQ(Map.Remove(4), 1);
	EXPECT_EQ(Map.Remove(4), 0);
	Map.Add(6, 6);
	Map.Add(7, 7);
	Map.Add(8, 8);
	EXPECT_EQ(KeysOf(Map), (std::vector<int32>{1, 7, 3, 6, 5, 8}));
}

TEST(MapTest, LargeMapsStayConsistentThroughRehashAndRemoval)
{
	TMap<int32, int32> Map;
	for (int32 Key = 0; Key < 5000; ++Key)
	{
		Map.Add(Key * 7, Key);
	}
	for (int32 Key = 0; Key < 5000; Key += 3)
	{
		EXPECT_EQ(Map.Remove(Key * 7), 1);
	}
	for (int32 Key = 0; Key < 5000; ++Key)
	{
		const int32* Value = Map.Find(Key * 7);
		if (Key % 3 == 0)
		{
			EXPECT_EQ(Value, nullptr);
		}
		else
		{
			ASSERT_NE(Value, nullptr);
			EXPECT_EQ(*Value, Key);
		}
	}
	EXPECT_EQ(Map.Num(), 5000 - 1667);
	Map.Compact();
	int32 Previous = -1;
	for (const auto& Pair : Map)
	{
		EXPECT_GT(Pair.Value, Previous);
		Previous = Pair.Value;
	}
}

TEST(MapTest, KeysCompareWithTheirOwnEquality)
{
	TMap<FCaselessKey, int32> Map;
	Map.Add(FCaselessKey{"Health"}, 1);
	Map.Add(FCaselessKey{"HEALTH"}, 2);
	EXPECT_EQ(Map.Num(), 1);
	EXPECT_EQ(Map.Find(FCaselessKey{"health"}) ? *Map.Find(FCaselessKey{"health"}) : 0, 2);
	// The engine's Add replaces the whole pair, so the last spelling wins.
	EXPECT_EQ(Map.begin()->Key.Text, "HEALTH");
}

TEST(MapTest, SortsAndIteratorRemoval)
{
	TMap<int32, int32> Map{{3, 30}, {1, 10}, {2, 20}, {4, 5}};
	Map.KeySort([](int32 A, int32 B) { return A < B; });
	EXPECT_EQ(KeysOf(Map), (std::vector<int32>{1, 2, 3, 4}));
	Map.ValueSort([](int32 A, int32 B) { return A < B; });
	EXPECT_EQ(KeysOf(Map), (std::vector<int32>{4, 1, 2, 3}));
	for (auto It = Map.CreateIterator(); It; ++It)
	{
		if (It.Key() % 2 == 0)
		{
			It.RemoveCurrent();
		}
	}
	EXPECT_EQ(KeysOf(Map), (std::vector<int32>{1, 3}));
	EXPECT_EQ(Map.FindOrAdd(9), 0);
	EXPECT_EQ(Map.FindOrAdd(1), 10);
	TArray<int32> Values;
	Map.GenerateValueArray(Values);
	EXPECT_EQ(Values.Num(), 3);
}

TEST(MapTest, CopiesAndMovesOwnTheirElements)
{
	{
		TMap<int32, FTracked> Map;
		for (int32 Key = 0; Key < 20; ++Key)
		{
			Map.Add(Key, FTracked(std::string(40, static_cast<char>('a' + Key))));
		}
		Map.Remove(3);
		TMap<int32, FTracked> Copy = Map;
		TMap<int32, FTracked> Moved = MoveTemp(Copy);
		EXPECT_EQ(Moved.Num(), 19);
		EXPECT_EQ(Moved.FindChecked(4).Text, std::string(40, 'e'));
		EXPECT_EQ(Copy.Num(), 0);
	}
	EXPECT_EQ(FTracked::Live, 0);
}

TEST(SetTest, KeepsOrderAndSupportsSetAlgebra)
{
	TSet<int32> A{5, 1, 4, 1, 9};
	TSet<int32> B{4, 9, 10};
	EXPECT_EQ(A.Num(), 4);
	EXPECT_EQ(A.Array(), (TArray<int32>{5, 1, 4, 9}));
	EXPECT_EQ(A.Intersect(B).Array(), (TArray<int32>{4, 9}));
	EXPECT_EQ(A.Difference(B).Array(), (TArray<int32>{5, 1}));
	EXPECT_EQ(A.Union(B).Array(), (TArray<int32>{5, 1, 4, 9, 10}));
	EXPECT_TRUE(A.Includes(TSet<int32>{9, 5}));
	EXPECT_EQ(TSet<int32>({1, 2}), TSet<int32>({2, 1}));
	bool bAlreadyInSet = false;
	A.Add(4, &bAlreadyInSet);
	EXPECT_TRUE(bAlreadyInSet);
}

TEST(OptionalTest, SetResetAndDefault)
{
	TOptional<int32> Value;
	EXPECT_FALSE(Value.IsSet());
	EXPECT_EQ(Value.Get(7), 7);
	Value = 3;
	EXPECT_EQ(*Value, 3);
	Value.Reset();
	EXPECT_EQ(Value.GetPtrOrNull(), nullptr);
}
