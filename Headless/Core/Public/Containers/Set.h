#pragma once

#include "Containers/SparseHashStorage.h"

#include <initializer_list>

namespace UE::Core::Private
{
	template <typename ElementType>
	struct TSetKeyOf
	{
		static const ElementType& Get(const ElementType& Element) { return Element; }
	};
}

// A hashed set with the engine's interface and iteration order (see THashedSparseStorage).
// Elements are found through an ADL GetTypeHash and compared with ==, so a set of FString
// ignores case exactly as the engine's does.
template <typename InElementType, typename KeyFuncs, typename Allocator>
class TSet
{
	using FStorage = UE::Core::Private::THashedSparseStorage<InElementType, InElementType, UE::Core::Private::TSetKeyOf<InElementType>>;

public:
	using ElementType = InElementType;

	TSet() = default;

	TSet(std::initializer_list<ElementType> InitList)
	{
		for (const ElementType& Element : InitList)
		{
			Add(Element);
		}
	}

	template <typename ArrayAllocator>
	explicit TSet(const TArray<ElementType, ArrayAllocator>& Array)
	{
		Append(Array);
	}

	int32 Num() const { return Storage.Num(); }
	bool IsEmpty() const { return Storage.Num() == 0; }
	int32 GetMaxIndex() const { return Storage.GetMaxIndex(); }

	FSetElementId Add(const ElementType& Element, bool* bIsAlreadyInSetPtr = nullptr) { return Emplace(Element, bIsAlreadyInSetPtr); }
	FSetElementId Add(ElementType&& Element, bool* bIsAlreadyInSetPtr = nullptr) { return Emplace(MoveTemp(Element), bIsAlreadyInSetPtr); }

	// An element equal to an existing one replaces it, as in the engine.
	template <typename ArgType>
	FSetElementId Emplace(ArgType&& Arg, bool* bIsAlreadyInSetPtr = nullptr)
	{
		ElementType Element(Forward<ArgType>(Arg));
		const uint32 Hash = GetTypeHash(Element);
		const int32 Existing = Storage.FindIndexByHash(Hash, Element);
		if (bIsAlreadyInSetPtr)
		{
			*bIsAlreadyInSetPtr = Existing != INDEX_NONE;
		}
		if (Existing != INDEX_NONE)
		{
			Storage.At(Existing) = MoveTemp(Element);
			return FSetElementId::FromInteger(Existing);
		}
		return FSetElementId::FromInteger(Storage.EmplaceNew(Hash, MoveTemp(Element)));
	}

	template <typename ArrayAllocator>
	void Append(const TArray<ElementType, ArrayAllocator>& Array)
	{
		for (const ElementType& Element : Array)
		{
			Add(Element);
		}
	}

	void Append(const TSet& Other)
	{
		for (const ElementType& Element : Other)
		{
			Add(Element);
		}
	}

	int32 Remove(const ElementType& Key)
	{
		const int32 Index = Storage.FindIndex(Key);
		if (Index == INDEX_NONE)
		{
			return 0;
		}
		Storage.RemoveAtIndex(Index);
		return 1;
	}

	void Remove(FSetElementId Id)
	{
		Storage.RemoveAtIndex(Id.AsInteger());
	}

	bool Contains(const ElementType& Key) const { return Storage.FindIndex(Key) != INDEX_NONE; }

	FSetElementId FindId(const ElementType& Key) const { return FSetElementId::FromInteger(Storage.FindIndex(Key)); }

	ElementType* Find(const ElementType& Key)
	{
		const int32 Index = Storage.FindIndex(Key);
		return Index != INDEX_NONE ? &Storage.At(Index) : nullptr;
	}

	const ElementType* Find(const ElementType& Key) const
	{
		const int32 Index = Storage.FindIndex(Key);
		return Index != INDEX_NONE ? &Storage.At(Index) : nullptr;
	}

	bool IsValidId(FSetElementId Id) const { return Storage.IsValidIndex(Id.AsInteger()); }
	ElementType& operator[](FSetElementId Id) { check(IsValidId(Id)); return Storage.At(Id.AsInteger()); }
	const ElementType& operator[](FSetElementId Id) const { check(IsValidId(Id)); return Storage.At(Id.AsInteger()); }

	void Empty(int32 ExpectedNumElements = 0) { Storage.Clear(ExpectedNumElements); }
	void Reset() { Storage.Clear(0); }
	void Reserve(int32 Number) { Storage.Reserve(Number); }
	void Shrink() {}
	void Compact() { Storage.Compact(); }
	void CompactStable() { Storage.Compact(); }

	TArray<ElementType> Array() const
	{
		TArray<ElementType> Result;
		Result.Reserve(Num());
		for (const ElementType& Element : *this)
		{
			Result.Add(Element);
		}
		return Result;
	}

	template <typename PredicateType>
	void Sort(const PredicateType& Predicate)
	{
		Storage.StableSortElements(Predicate);
	}

	void Sort()
	{
		Storage.StableSortElements([](const ElementType& A, const ElementType& B) { return A < B; });
	}

	TSet Union(const TSet& Other) const
	{
		TSet Result(*this);
		Result.Append(Other);
		return Result;
	}

	TSet Intersect(const TSet& Other) const
	{
		TSet Result;
		for (const ElementType& Element : *this)
		{
			if (Other.Contains(Element))
			{
				Result.Add(Element);
			}
		}
		return Result;
	}

	TSet Difference(const TSet& Other) const
	{
		TSet Result;
		for (const ElementType& Element : *this)
		{
			if (!Other.Contains(Element))
			{
				Result.Add(Element);
			}
		}
		return Result;
	}

	bool Includes(const TSet& Other) const
	{
		for (const ElementType& Element : Other)
		{
			if (!Contains(Element))
			{
				return false;
			}
		}
		return true;
	}

	using TIterator = UE::Core::Private::TSparseStorageIterator<FStorage, ElementType&>;
	using TConstIterator = UE::Core::Private::TSparseStorageIterator<const FStorage, const ElementType&>;

	TIterator CreateIterator() { return TIterator(Storage, 0); }
	TConstIterator CreateConstIterator() const { return TConstIterator(Storage, 0); }
	TIterator begin() { return TIterator(Storage, 0); }
	TIterator end() { return TIterator(Storage, Storage.GetMaxIndex()); }
	TConstIterator begin() const { return TConstIterator(Storage, 0); }
	TConstIterator end() const { return TConstIterator(Storage, Storage.GetMaxIndex()); }

	// Equal when each holds the same elements, in any order.
	bool operator==(const TSet& Other) const { return Num() == Other.Num() && Includes(Other); }
	bool operator!=(const TSet& Other) const { return !(*this == Other); }

private:
	FStorage Storage;
};
