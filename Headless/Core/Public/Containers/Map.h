#pragma once

#include "Containers/Set.h"
#include "Templates/Tuple.h"

#include <initializer_list>
#include <type_traits>

namespace UE::Core::Private
{
	template <typename KeyType, typename ValueType>
	struct TPairKeyOf
	{
		static const KeyType& Get(const TPair<KeyType, ValueType>& Pair) { return Pair.Key; }
	};
}

// A map with the engine's interface and iteration order (see THashedSparseStorage). Keys are
// hashed through an ADL GetTypeHash and compared with ==, so FString and FName keys ignore case.
template <typename InKeyType, typename InValueType, typename SetAllocator, typename KeyFuncs>
class TMap
{
public:
	using KeyType = InKeyType;
	using ValueType = InValueType;
	using ElementType = TPair<KeyType, ValueType>;

private:
	using FStorage = UE::Core::Private::THashedSparseStorage<ElementType, KeyType, UE::Core::Private::TPairKeyOf<KeyType, ValueType>>;

public:
	TMap() = default;

	TMap(std::initializer_list<ElementType> InitList)
	{
		for (const ElementType& Element : InitList)
		{
			Add(Element.Key, Element.Value);
		}
	}

	int32 Num() const { return Storage.Num(); }
	bool IsEmpty() const { return Storage.Num() == 0; }

	// Adding replaces the value of an existing key, keeping its place.
	ValueType& Add(const KeyType& Key, const ValueType& Value) { return Emplace(Key, Value); }
	ValueType& Add(const KeyType& Key, ValueType&& Value) { return Emplace(Key, MoveTemp(Value)); }
	ValueType& Add(KeyType&& Key, const ValueType& Value) { return Emplace(MoveTemp(Key), Value); }
	ValueType& Add(KeyType&& Key, ValueType&& Value) { return Emplace(MoveTemp(Key), MoveTemp(Value)); }
	ValueType& Add(const KeyType& Key) { return Emplace(Key, ValueType()); }
	ValueType& Add(KeyType&& Key) { return Emplace(MoveTemp(Key), ValueType()); }
	ValueType& Add(const ElementType& Pair) { return Emplace(Pair.Key, Pair.Value); }

	template <typename KeyArg, typename ValueArg>
	ValueType& Emplace(KeyArg&& InKey, ValueArg&& InValue)
	{
		if constexpr (std::is_same_v<KeyArg, KeyType>)
		{
			// A key handed over as an rvalue cannot be one of this map's own, which growing the
			// storage could move away, so it goes straight into its slot without a copy first.
			return EmplaceMovedKey(InKey, Forward<ValueArg>(InValue));
		}
		else
		{
			KeyType Key(Forward<KeyArg>(InKey));
			return EmplaceMovedKey(Key, Forward<ValueArg>(InValue));
		}
	}

	template <typename KeyArg>
	ValueType& Emplace(KeyArg&& InKey)
	{
		return Emplace(Forward<KeyArg>(InKey), ValueType());
	}

private:
	/** Adds or replaces Key's value; Key is moved from. */
	template <typename ValueArg>
	ValueType& EmplaceMovedKey(KeyType& Key, ValueArg&& InValue)
	{
		const uint32 Hash = GetTypeHash(Key);
		const int32 Existing = Storage.FindIndexByHash(Hash, Key);
		if (Existing != INDEX_NONE)
		{
			ElementType& Pair = Storage.At(Existing);
			Pair.Key = MoveTemp(Key);
			Pair.Value = ValueType(Forward<ValueArg>(InValue));
			return Pair.Value;
		}
		return Storage.At(Storage.EmplaceNew(Hash, MoveTemp(Key), Forward<ValueArg>(InValue))).Value;
	}

public:

	ValueType& FindOrAdd(const KeyType& Key)
	{
		const uint32 Hash = GetTypeHash(Key);
		const int32 Existing = Storage.FindIndexByHash(Hash, Key);
		if (Existing != INDEX_NONE)
		{
			return Storage.At(Existing).Value;
		}
		return Storage.At(Storage.EmplaceNew(Hash, Key, ValueType())).Value;
	}

	ValueType& FindOrAdd(KeyType&& Key)
	{
		const uint32 Hash = GetTypeHash(Key);
		const int32 Existing = Storage.FindIndexByHash(Hash, Key);
		if (Existing != INDEX_NONE)
		{
			return Storage.At(Existing).Value;
		}
		return Storage.At(Storage.EmplaceNew(Hash, MoveTemp(Key), ValueType())).Value;
	}

	template <typename ValueArg>
	ValueType& FindOrAdd(const KeyType& Key, ValueArg&& Value)
	{
		const uint32 Hash = GetTypeHash(Key);
		const int32 Existing = Storage.FindIndexByHash(Hash, Key);
		if (Existing != INDEX_NONE)
		{
			return Storage.At(Existing).Value;
		}
		return Storage.At(Storage.EmplaceNew(Hash, Key, Forward<ValueArg>(Value))).Value;
	}

	ValueType* Find(const KeyType& Key)
	{
		const int32 Index = Storage.FindIndex(Key);
		return Index != INDEX_NONE ? &Storage.At(Index).Value : nullptr;
	}

	const ValueType* Find(const KeyType& Key) const
	{
		const int32 Index = Storage.FindIndex(Key);
		return Index != INDEX_NONE ? &Storage.At(Index).Value : nullptr;
	}

	ValueType FindRef(const KeyType& Key) const
	{
		const ValueType* Value = Find(Key);
		return Value ? *Value : ValueType();
	}

	ValueType FindRef(const KeyType& Key, ValueType Default) const
	{
		const ValueType* Value = Find(Key);
		return Value ? *Value : MoveTemp(Default);
	}

	ValueType& FindChecked(const KeyType& Key)
	{
		ValueType* Value = Find(Key);
		check(Value != nullptr);
		return *Value;
	}

	const ValueType& FindChecked(const KeyType& Key) const
	{
		const ValueType* Value = Find(Key);
		check(Value != nullptr);
		return *Value;
	}

	const KeyType* FindKey(const ValueType& Value) const
	{
		for (const ElementType& Pair : *this)
		{
			if (Pair.Value == Value)
			{
				return &Pair.Key;
			}
		}
		return nullptr;
	}

	bool Contains(const KeyType& Key) const { return Storage.FindIndex(Key) != INDEX_NONE; }

	ValueType& operator[](const KeyType& Key) { return FindChecked(Key); }
	const ValueType& operator[](const KeyType& Key) const { return FindChecked(Key); }

	int32 Remove(const KeyType& Key)
	{
		const int32 Index = Storage.FindIndex(Key);
		if (Index == INDEX_NONE)
		{
			return 0;
		}
		Storage.RemoveAtIndex(Index);
		return 1;
	}

	bool RemoveAndCopyValue(const KeyType& Key, ValueType& OutRemovedValue)
	{
		const int32 Index = Storage.FindIndex(Key);
		if (Index == INDEX_NONE)
		{
			return false;
		}
		OutRemovedValue = MoveTemp(Storage.At(Index).Value);
		Storage.RemoveAtIndex(Index);
		return true;
	}

	ValueType FindAndRemoveChecked(const KeyType& Key)
	{
		const int32 Index = Storage.FindIndex(Key);
		check(Index != INDEX_NONE);
		ValueType Value = MoveTemp(Storage.At(Index).Value);
		Storage.RemoveAtIndex(Index);
		return Value;
	}

	void Empty(int32 ExpectedNumElements = 0) { Storage.Clear(ExpectedNumElements); }
	void Reset() { Storage.Clear(0); }
	void Reserve(int32 Number) { Storage.Reserve(Number); }
	void Shrink() {}
	void Compact() { Storage.Compact(); }
	void CompactStable() { Storage.Compact(); }

	void Append(const TMap& Other)
	{
		for (const ElementType& Pair : Other)
		{
			Add(Pair.Key, Pair.Value);
		}
	}

	template <typename ArrayAllocator>
	int32 GenerateKeyArray(TArray<KeyType, ArrayAllocator>& OutKeys) const
	{
		OutKeys.Reset(Num());
		for (const ElementType& Pair : *this)
		{
			OutKeys.Add(Pair.Key);
		}
		return OutKeys.Num();
	}

	template <typename ArrayAllocator>
	int32 GenerateValueArray(TArray<ValueType, ArrayAllocator>& OutValues) const
	{
		OutValues.Reset(Num());
		for (const ElementType& Pair : *this)
		{
			OutValues.Add(Pair.Value);
		}
		return OutValues.Num();
	}

	template <typename ArrayAllocator>
	int32 GetKeys(TArray<KeyType, ArrayAllocator>& OutKeys) const
	{
		return GenerateKeyArray(OutKeys);
	}

	int32 GetKeys(TSet<KeyType>& OutKeys) const
	{
		OutKeys.Reset();
		for (const ElementType& Pair : *this)
		{
			OutKeys.Add(Pair.Key);
		}
		return OutKeys.Num();
	}

	template <typename PredicateType>
	TMap FilterByPredicate(PredicateType Predicate) const
	{
		TMap Result;
		for (const ElementType& Pair : *this)
		{
			if (Predicate(Pair))
			{
				Result.Add(Pair.Key, Pair.Value);
			}
		}
		return Result;
	}

	// The engine's sorts are unstable; a stable one gives the same guarantees and a repeatable order.
	template <typename PredicateType>
	void KeySort(const PredicateType& Predicate)
	{
		Storage.StableSortElements([&Predicate](const ElementType& A, const ElementType& B) { return Predicate(A.Key, B.Key); });
	}

	template <typename PredicateType>
	void ValueSort(const PredicateType& Predicate)
	{
		Storage.StableSortElements([&Predicate](const ElementType& A, const ElementType& B) { return Predicate(A.Value, B.Value); });
	}

	template <typename PredicateType>
	void KeyStableSort(const PredicateType& Predicate) { KeySort(Predicate); }

	template <typename PredicateType>
	void ValueStableSort(const PredicateType& Predicate) { ValueSort(Predicate); }

	// Map iterators add Key() and Value() to the storage walk.
	template <typename StorageType, typename PairRefType, typename ValueRefType>
	class TBaseIterator : public UE::Core::Private::TSparseStorageIterator<StorageType, PairRefType>
	{
		using Super = UE::Core::Private::TSparseStorageIterator<StorageType, PairRefType>;

	public:
		using Super::Super;
		const KeyType& Key() const { return (**this).Key; }
		ValueRefType Value() const { return (**this).Value; }
	};

	using TIterator = TBaseIterator<FStorage, ElementType&, ValueType&>;
	using TConstIterator = TBaseIterator<const FStorage, const ElementType&, const ValueType&>;

	TIterator CreateIterator() { return TIterator(Storage, 0); }
	TConstIterator CreateConstIterator() const { return TConstIterator(Storage, 0); }
	TIterator begin() { return TIterator(Storage, 0); }
	TIterator end() { return TIterator(Storage, Storage.GetMaxIndex()); }
	TConstIterator begin() const { return TConstIterator(Storage, 0); }
	TConstIterator end() const { return TConstIterator(Storage, Storage.GetMaxIndex()); }

	// Equal when both hold the same keys with equal values, in any order, as the engine's OrderIndependentCompareEqual.
	bool OrderIndependentCompareEqual(const TMap& Other) const
	{
		if (Num() != Other.Num())
		{
			return false;
		}
		for (const ElementType& Pair : *this)
		{
			const ValueType* OtherValue = Other.Find(Pair.Key);
			if (!OtherValue || !(*OtherValue == Pair.Value))
			{
				return false;
			}
		}
		return true;
	}

private:
	FStorage Storage;
};
