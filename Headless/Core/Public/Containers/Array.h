#pragma once

#include "Containers/ContainersFwd.h"
#include "Templates/TypeHash.h"
#include "Templates/UnrealTemplate.h"

#include <algorithm>
#include <initializer_list>
#include <new>
#include <type_traits>

namespace UE::Core::Private
{
	[[noreturn]] CORE_API void OnInvalidArrayIndex(int32 Index, int32 Num);
}

// A dynamic array with the engine's interface: int32 sizes, Add returning the new index,
// Remove comparing with ==, RemoveSwap for order-free removal. Elements live in one heap block
// and are moved element by element when it grows, so types with internal pointers stay valid.
template <typename InElementType, typename InAllocator>
class TArray
{
public:
	using ElementType = InElementType;
	using SizeType = int32;
	using AllocatorType = InAllocator;

	TArray() = default;

	TArray(std::initializer_list<ElementType> InitList)
	{
		Reserve(static_cast<int32>(InitList.size()));
		for (const ElementType& Element : InitList)
		{
			new (Data + ArrayNum++) ElementType(Element);
		}
	}

	TArray(const ElementType* Ptr, int32 Count)
	{
		Append(Ptr, Count);
	}

	TArray(const TArray& Other)
	{
		Append(Other);
	}

	template <typename OtherAllocator>
	explicit TArray(const TArray<ElementType, OtherAllocator>& Other)
	{
		Append(Other.GetData(), Other.Num());
	}

	TArray(TArray&& Other) noexcept
		: Data(Other.Data), ArrayNum(Other.ArrayNum), ArrayMax(Other.ArrayMax)
	{
		Other.Data = nullptr;
		Other.ArrayNum = 0;
		Other.ArrayMax = 0;
	}

	~TArray()
	{
		DestructItems(0, ArrayNum);
		::operator delete(static_cast<void*>(Data));
	}

	TArray& operator=(const TArray& Other)
	{
		if (this != &Other)
		{
			Reset(Other.Num());
			Append(Other);
		}
		return *this;
	}

	TArray& operator=(TArray&& Other) noexcept
	{
		if (this != &Other)
		{
			DestructItems(0, ArrayNum);
			::operator delete(static_cast<void*>(Data));
			Data = Other.Data;
			ArrayNum = Other.ArrayNum;
			ArrayMax = Other.ArrayMax;
			Other.Data = nullptr;
			Other.ArrayNum = 0;
			Other.ArrayMax = 0;
		}
		return *this;
	}

	TArray& operator=(std::initializer_list<ElementType> InitList)
	{
		Reset(static_cast<int32>(InitList.size()));
		for (const ElementType& Element : InitList)
		{
			Add(Element);
		}
		return *this;
	}

	// Size and access

	FORCEINLINE int32 Num() const { return ArrayNum; }
	FORCEINLINE int32 Max() const { return ArrayMax; }
	FORCEINLINE bool IsEmpty() const { return ArrayNum == 0; }
	FORCEINLINE bool IsValidIndex(int32 Index) const { return Index >= 0 && Index < ArrayNum; }
	FORCEINLINE ElementType* GetData() { return Data; }
	FORCEINLINE const ElementType* GetData() const { return Data; }
	FORCEINLINE static constexpr uint32 GetTypeSize() { return sizeof(ElementType); }
	SIZE_T GetAllocatedSize() const { return static_cast<SIZE_T>(ArrayMax) * sizeof(ElementType); }

	FORCEINLINE ElementType& operator[](int32 Index)
	{
		RangeCheck(Index);
		return Data[Index];
	}

	FORCEINLINE const ElementType& operator[](int32 Index) const
	{
		RangeCheck(Index);
		return Data[Index];
	}

	ElementType& Last(int32 IndexFromTheEnd = 0)
	{
		RangeCheck(ArrayNum - IndexFromTheEnd - 1);
		return Data[ArrayNum - IndexFromTheEnd - 1];
	}

	const ElementType& Last(int32 IndexFromTheEnd = 0) const
	{
		RangeCheck(ArrayNum - IndexFromTheEnd - 1);
		return Data[ArrayNum - IndexFromTheEnd - 1];
	}

	ElementType& Top() { return Last(); }
	const ElementType& Top() const { return Last(); }

	// Adding

	template <typename... ArgsType>
	int32 Emplace(ArgsType&&... Args)
	{
		// Construct before growing: an argument may refer into this array.
		ElementType Temp(Forward<ArgsType>(Args)...);
		EnsureCapacity(ArrayNum + 1);
		new (Data + ArrayNum) ElementType(MoveTemp(Temp));
		return ArrayNum++;
	}

	template <typename... ArgsType>
	ElementType& Emplace_GetRef(ArgsType&&... Args)
	{
		// Index first: the call may reallocate Data.
		const int32 Index = Emplace(Forward<ArgsType>(Args)...);
		return Data[Index];
	}

	int32 Add(const ElementType& Item) { return Emplace(Item); }
	int32 Add(ElementType&& Item) { return Emplace(MoveTemp(Item)); }
	ElementType& Add_GetRef(const ElementType& Item) { return Emplace_GetRef(Item); }
	ElementType& Add_GetRef(ElementType&& Item) { return Emplace_GetRef(MoveTemp(Item)); }

	int32 AddUnique(const ElementType& Item)
	{
		const int32 Existing = Find(Item);
		return Existing != INDEX_NONE ? Existing : Add(Item);
	}

	int32 AddUnique(ElementType&& Item)
	{
		const int32 Existing = Find(Item);
		return Existing != INDEX_NONE ? Existing : Add(MoveTemp(Item));
	}

	int32 AddDefaulted(int32 Count = 1)
	{
		check(Count >= 0);
		const int32 First = ArrayNum;
		EnsureCapacity(ArrayNum + Count);
		for (int32 Index = 0; Index < Count; ++Index)
		{
			new (Data + ArrayNum) ElementType();
			++ArrayNum;
		}
		return First;
	}

	ElementType& AddDefaulted_GetRef()
	{
		const int32 Index = AddDefaulted(1);
		return Data[Index];
	}

	int32 AddZeroed(int32 Count = 1)
	{
		check(Count >= 0);
		const int32 First = ArrayNum;
		EnsureCapacity(ArrayNum + Count);
		for (int32 Index = 0; Index < Count; ++Index)
		{
			new (Data + ArrayNum) ElementType{};
			++ArrayNum;
		}
		return First;
	}

	int32 AddUninitialized(int32 Count = 1) { return AddZeroed(Count); }

	template <typename... ArgsType>
	void EmplaceAt(int32 Index, ArgsType&&... Args)
	{
		check(Index >= 0 && Index <= ArrayNum);
		ElementType Temp(Forward<ArgsType>(Args)...);
		OpenGap(Index, 1);
		new (Data + Index) ElementType(MoveTemp(Temp));
	}

	int32 Insert(const ElementType& Item, int32 Index)
	{
		EmplaceAt(Index, Item);
		return Index;
	}

	int32 Insert(ElementType&& Item, int32 Index)
	{
		EmplaceAt(Index, MoveTemp(Item));
		return Index;
	}

	int32 Insert(const TArray& Items, int32 Index)
	{
		check(Index >= 0 && Index <= ArrayNum && &Items != this);
		OpenGap(Index, Items.Num());
		for (int32 Offset = 0; Offset < Items.Num(); ++Offset)
		{
			new (Data + Index + Offset) ElementType(Items[Offset]);
		}
		return Index;
	}

	int32 InsertDefaulted(int32 Index, int32 Count = 1)
	{
		check(Index >= 0 && Index <= ArrayNum && Count >= 0);
		OpenGap(Index, Count);
		for (int32 Offset = 0; Offset < Count; ++Offset)
		{
			new (Data + Index + Offset) ElementType();
		}
		return Index;
	}

	int32 InsertZeroed(int32 Index, int32 Count = 1) { return InsertDefaulted(Index, Count); }

	void Append(const ElementType* Ptr, int32 Count)
	{
		check(Count >= 0);
		if (Count == 0)
		{
			return;
		}
		// Copy out first when the source lies inside this array, which growing would free.
		if (Ptr >= Data && Ptr < Data + ArrayNum)
		{
			TArray Copy(Ptr, Count);
			Append(MoveTemp(Copy));
			return;
		}
		EnsureCapacity(ArrayNum + Count);
		for (int32 Index = 0; Index < Count; ++Index)
		{
			new (Data + ArrayNum) ElementType(Ptr[Index]);
			++ArrayNum;
		}
	}

	template <typename OtherAllocator>
	void Append(const TArray<ElementType, OtherAllocator>& Other)
	{
		Append(Other.GetData(), Other.Num());
	}

	void Append(TArray&& Other)
	{
		if (ArrayNum == 0)
		{
			*this = MoveTemp(Other);
			return;
		}
		EnsureCapacity(ArrayNum + Other.Num());
		for (ElementType& Element : Other)
		{
			new (Data + ArrayNum) ElementType(MoveTemp(Element));
			++ArrayNum;
		}
		Other.Empty();
	}

	void Append(std::initializer_list<ElementType> InitList)
	{
		EnsureCapacity(ArrayNum + static_cast<int32>(InitList.size()));
		for (const ElementType& Element : InitList)
		{
			new (Data + ArrayNum) ElementType(Element);
			++ArrayNum;
		}
	}

	TArray& operator+=(const TArray& Other)
	{
		Append(Other);
		return *this;
	}

	TArray& operator+=(TArray&& Other)
	{
		Append(MoveTemp(Other));
		return *this;
	}

	void Init(const ElementType& Element, int32 Count)
	{
		Reset(Count);
		for (int32 Index = 0; Index < Count; ++Index)
		{
			new (Data + ArrayNum) ElementType(Element);
			++ArrayNum;
		}
	}

	// Removing

	void RemoveAt(int32 Index, int32 Count = 1, bool bAllowShrinking = false)
	{
		check(Count >= 0 && Index >= 0 && Index + Count <= ArrayNum);
		if (Count == 0)
		{
			return;
		}
		std::move(Data + Index + Count, Data + ArrayNum, Data + Index);
		DestructItems(ArrayNum - Count, ArrayNum);
		ArrayNum -= Count;
	}

	void RemoveAtSwap(int32 Index, int32 Count = 1, bool bAllowShrinking = false)
	{
		check(Count >= 0 && Index >= 0 && Index + Count <= ArrayNum);
		// The hole is filled from the tail, so only the elements after it may change places.
		const int32 NumAfterHole = ArrayNum - (Index + Count);
		const int32 NumToMove = Count < NumAfterHole ? Count : NumAfterHole;
		for (int32 Offset = 0; Offset < NumToMove; ++Offset)
		{
			Data[Index + Offset] = MoveTemp(Data[ArrayNum - NumToMove + Offset]);
		}
		DestructItems(ArrayNum - Count, ArrayNum);
		ArrayNum -= Count;
	}

	template <typename PredicateType>
	int32 RemoveAll(PredicateType Predicate)
	{
		int32 WriteIndex = 0;
		for (int32 ReadIndex = 0; ReadIndex < ArrayNum; ++ReadIndex)
		{
			if (!Predicate(Data[ReadIndex]))
			{
				if (WriteIndex != ReadIndex)
				{
					Data[WriteIndex] = MoveTemp(Data[ReadIndex]);
				}
				++WriteIndex;
			}
		}
		const int32 Removed = ArrayNum - WriteIndex;
		DestructItems(WriteIndex, ArrayNum);
		ArrayNum = WriteIndex;
		return Removed;
	}

	template <typename PredicateType>
	int32 RemoveAllSwap(PredicateType Predicate, bool bAllowShrinking = false)
	{
		return RemoveAll(Predicate);
	}

	int32 Remove(const ElementType& Item)
	{
		// Copy first: Item may be an element of this array.
		const ElementType Value = Item;
		return RemoveAll([&Value](const ElementType& Element) { return Element == Value; });
	}

	int32 RemoveSingle(const ElementType& Item)
	{
		const int32 Index = Find(Item);
		if (Index == INDEX_NONE)
		{
			return 0;
		}
		RemoveAt(Index);
		return 1;
	}

	int32 RemoveSwap(const ElementType& Item) { return Remove(Item); }

	int32 RemoveSingleSwap(const ElementType& Item)
	{
		const int32 Index = Find(Item);
		if (Index == INDEX_NONE)
		{
			return 0;
		}
		RemoveAtSwap(Index);
		return 1;
	}

	ElementType Pop(bool bAllowShrinking = true)
	{
		RangeCheck(0);
		ElementType Result = MoveTemp(Data[ArrayNum - 1]);
		RemoveAt(ArrayNum - 1);
		return Result;
	}

	void Push(const ElementType& Item) { Add(Item); }
	void Push(ElementType&& Item) { Add(MoveTemp(Item)); }

	void Empty(int32 Slack = 0)
	{
		DestructItems(0, ArrayNum);
		ArrayNum = 0;
		if (ArrayMax != Slack)
		{
			ReallocateTo(Slack);
		}
	}

	void Reset(int32 NewSize = 0)
	{
		DestructItems(0, ArrayNum);
		ArrayNum = 0;
		EnsureCapacity(NewSize);
	}

	void Reserve(int32 Number)
	{
		if (Number > ArrayMax)
		{
			ReallocateTo(Number);
		}
	}

	void Shrink()
	{
		if (ArrayMax != ArrayNum)
		{
			ReallocateTo(ArrayNum);
		}
	}

	void SetNum(int32 NewNum, bool bAllowShrinking = true)
	{
		check(NewNum >= 0);
		if (NewNum > ArrayNum)
		{
			AddDefaulted(NewNum - ArrayNum);
		}
		else if (NewNum < ArrayNum)
		{
			RemoveAt(NewNum, ArrayNum - NewNum);
		}
	}

	void SetNumZeroed(int32 NewNum, bool bAllowShrinking = true)
	{
		check(NewNum >= 0);
		if (NewNum > ArrayNum)
		{
			AddZeroed(NewNum - ArrayNum);
		}
		else if (NewNum < ArrayNum)
		{
			RemoveAt(NewNum, ArrayNum - NewNum);
		}
	}

	void SetNumUninitialized(int32 NewNum, bool bAllowShrinking = true) { SetNumZeroed(NewNum, bAllowShrinking); }

	// Searching

	int32 Find(const ElementType& Item) const
	{
		for (int32 Index = 0; Index < ArrayNum; ++Index)
		{
			if (Data[Index] == Item)
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}

	bool Find(const ElementType& Item, int32& OutIndex) const
	{
		OutIndex = Find(Item);
		return OutIndex != INDEX_NONE;
	}

	int32 FindLast(const ElementType& Item) const
	{
		for (int32 Index = ArrayNum - 1; Index >= 0; --Index)
		{
			if (Data[Index] == Item)
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}

	bool FindLast(const ElementType& Item, int32& OutIndex) const
	{
		OutIndex = FindLast(Item);
		return OutIndex != INDEX_NONE;
	}

	template <typename KeyType>
	int32 IndexOfByKey(const KeyType& Key) const
	{
		for (int32 Index = 0; Index < ArrayNum; ++Index)
		{
			if (Data[Index] == Key)
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}

	template <typename PredicateType>
	int32 IndexOfByPredicate(PredicateType Predicate) const
	{
		for (int32 Index = 0; Index < ArrayNum; ++Index)
		{
			if (Predicate(Data[Index]))
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}

	template <typename PredicateType>
	int32 FindLastByPredicate(PredicateType Predicate) const
	{
		for (int32 Index = ArrayNum - 1; Index >= 0; --Index)
		{
			if (Predicate(Data[Index]))
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}

	template <typename KeyType>
	ElementType* FindByKey(const KeyType& Key)
	{
		const int32 Index = IndexOfByKey(Key);
		return Index != INDEX_NONE ? Data + Index : nullptr;
	}

	template <typename KeyType>
	const ElementType* FindByKey(const KeyType& Key) const
	{
		const int32 Index = IndexOfByKey(Key);
		return Index != INDEX_NONE ? Data + Index : nullptr;
	}

	template <typename PredicateType>
	ElementType* FindByPredicate(PredicateType Predicate)
	{
		const int32 Index = IndexOfByPredicate(Predicate);
		return Index != INDEX_NONE ? Data + Index : nullptr;
	}

	template <typename PredicateType>
	const ElementType* FindByPredicate(PredicateType Predicate) const
	{
		const int32 Index = IndexOfByPredicate(Predicate);
		return Index != INDEX_NONE ? Data + Index : nullptr;
	}

	template <typename PredicateType>
	TArray FilterByPredicate(PredicateType Predicate) const
	{
		TArray Result;
		for (const ElementType& Element : *this)
		{
			if (Predicate(Element))
			{
				Result.Add(Element);
			}
		}
		return Result;
	}

	template <typename ComparisonType>
	bool Contains(const ComparisonType& Item) const
	{
		for (int32 Index = 0; Index < ArrayNum; ++Index)
		{
			if (Data[Index] == Item)
			{
				return true;
			}
		}
		return false;
	}

	template <typename PredicateType>
	bool ContainsByPredicate(PredicateType Predicate) const
	{
		return IndexOfByPredicate(Predicate) != INDEX_NONE;
	}

	// Ordering. Sort is not stable, as the engine's; use StableSort where equal elements must keep order.

	void Sort()
	{
		std::sort(Data, Data + ArrayNum, [](const ElementType& A, const ElementType& B) { return A < B; });
	}

	template <typename PredicateType>
	void Sort(const PredicateType& Predicate)
	{
		std::sort(Data, Data + ArrayNum, [&Predicate](const ElementType& A, const ElementType& B) { return Predicate(A, B); });
	}

	void StableSort()
	{
		std::stable_sort(Data, Data + ArrayNum, [](const ElementType& A, const ElementType& B) { return A < B; });
	}

	template <typename PredicateType>
	void StableSort(const PredicateType& Predicate)
	{
		std::stable_sort(Data, Data + ArrayNum, [&Predicate](const ElementType& A, const ElementType& B) { return Predicate(A, B); });
	}

	void Swap(int32 A, int32 B)
	{
		RangeCheck(A);
		RangeCheck(B);
		if (A != B)
		{
			::Swap(Data[A], Data[B]);
		}
	}

	void SwapMemory(int32 A, int32 B) { Swap(A, B); }

	// Comparison

	bool operator==(const TArray& Other) const
	{
		if (ArrayNum != Other.ArrayNum)
		{
			return false;
		}
		for (int32 Index = 0; Index < ArrayNum; ++Index)
		{
			if (!(Data[Index] == Other.Data[Index]))
			{
				return false;
			}
		}
		return true;
	}

	bool operator!=(const TArray& Other) const { return !(*this == Other); }

	// Iteration

	FORCEINLINE ElementType* begin() { return Data; }
	FORCEINLINE const ElementType* begin() const { return Data; }
	FORCEINLINE ElementType* end() { return Data + ArrayNum; }
	FORCEINLINE const ElementType* end() const { return Data + ArrayNum; }

	template <typename ContainerType, typename ElementRefType>
	class TIndexedIterator
	{
	public:
		explicit TIndexedIterator(ContainerType& InContainer, int32 StartIndex = 0)
			: Container(InContainer), Index(StartIndex)
		{
		}

		TIndexedIterator& operator++()
		{
			++Index;
			return *this;
		}

		TIndexedIterator& operator--()
		{
			--Index;
			return *this;
		}

		ElementRefType operator*() const { return Container[Index]; }
		auto operator->() const { return &Container[Index]; }
		explicit operator bool() const { return Container.IsValidIndex(Index); }
		int32 GetIndex() const { return Index; }
		void Reset() { Index = 0; }

		// Removing the current element leaves the iterator on the one that followed it.
		void RemoveCurrent()
		{
			Container.RemoveAt(Index);
			--Index;
		}

		void RemoveCurrentSwap()
		{
			Container.RemoveAtSwap(Index);
			--Index;
		}

	private:
		ContainerType& Container;
		int32 Index;
	};

	using TIterator = TIndexedIterator<TArray, ElementType&>;
	using TConstIterator = TIndexedIterator<const TArray, const ElementType&>;

	TIterator CreateIterator() { return TIterator(*this); }
	TConstIterator CreateConstIterator() const { return TConstIterator(*this); }

private:
	FORCEINLINE void RangeCheck(int32 Index) const
	{
		if (UNLIKELY(Index < 0 || Index >= ArrayNum))
		{
			UE::Core::Private::OnInvalidArrayIndex(Index, ArrayNum);
		}
	}

	void DestructItems(int32 From, int32 To)
	{
		if constexpr (!std::is_trivially_destructible_v<ElementType>)
		{
			for (int32 Index = From; Index < To; ++Index)
			{
				Data[Index].~ElementType();
			}
		}
	}

	void EnsureCapacity(int32 Required)
	{
		if (Required > ArrayMax)
		{
			// Geometric growth keeps Add amortised O(1).
			const int32 Grown = ArrayMax + ArrayMax / 2 + 4;
			ReallocateTo(Required > Grown ? Required : Grown);
		}
	}

	void ReallocateTo(int32 NewMax)
	{
		ElementType* NewData = NewMax > 0 ? static_cast<ElementType*>(::operator new(sizeof(ElementType) * static_cast<SIZE_T>(NewMax))) : nullptr;
		for (int32 Index = 0; Index < ArrayNum; ++Index)
		{
			new (NewData + Index) ElementType(MoveTemp(Data[Index]));
			Data[Index].~ElementType();
		}
		::operator delete(static_cast<void*>(Data));
		Data = NewData;
		ArrayMax = NewMax;
	}

	// Opens Count unconstructed slots at Index, shifting the tail up.
	void OpenGap(int32 Index, int32 Count)
	{
		if (Count == 0)
		{
			return;
		}
		EnsureCapacity(ArrayNum + Count);
		for (int32 Source = ArrayNum - 1; Source >= Index; --Source)
		{
			new (Data + Source + Count) ElementType(MoveTemp(Data[Source]));
			Data[Source].~ElementType();
		}
		ArrayNum += Count;
	}

	ElementType* Data = nullptr;
	int32 ArrayNum = 0;
	int32 ArrayMax = 0;
};

template <typename ElementType, typename Allocator>
uint32 GetTypeHash(const TArray<ElementType, Allocator>& Array)
{
	uint32 Hash = 0;
	for (const ElementType& Element : Array)
	{
		Hash = HashCombineFast(Hash, GetTypeHash(Element));
	}
	return Hash;
}

template <typename ElementType, int32 NumInline>
using TInlineArray = TArray<ElementType, TInlineAllocator<NumInline>>;
