#pragma once

#include "Containers/Array.h"
#include "Templates/TypeHash.h"
#include "Templates/UnrealTemplate.h"

#include <algorithm>
#include <new>
#include <type_traits>
#include <vector>

// Identifies an element of a TSet by its slot, as the engine's FSetElementId does.
class FSetElementId
{
public:
	FSetElementId() = default;
	static FSetElementId FromInteger(int32 Integer) { return FSetElementId(Integer); }
	bool IsValidId() const { return Index != INDEX_NONE; }
	int32 AsInteger() const { return Index; }
	bool operator==(const FSetElementId& Other) const { return Index == Other.Index; }
	bool operator!=(const FSetElementId& Other) const { return Index != Other.Index; }

private:
	explicit FSetElementId(int32 InIndex) : Index(InIndex) {}
	int32 Index = INDEX_NONE;
};

namespace UE::Core::Private
{
	// Storage behind TSet and TMap, with the engine's observable order: elements sit in a sparse
	// array, so iteration follows insertion while nothing is removed, and a removal leaves a hole
	// that the next addition fills (last freed, first reused). Small containers are searched
	// linearly; a bucket index is built only once they grow, which keeps the many tiny maps of a
	// JSON document cheap.
	template <typename ElementType, typename KeyType, typename KeyOfType>
	class THashedSparseStorage
	{
		// A slot owns the element it holds, so the slot vector may move slots freely when it grows.
		// The link and the occupied bit share one word: a slot of a string-keyed map stays at 56 bytes.
		struct FSlot
		{
			alignas(ElementType) unsigned char Storage[sizeof(ElementType)];
			uint32 Hash = 0;

			FSlot() = default;

			FSlot(const FSlot& Other)
				: Hash(Other.Hash), LinkAndFlag(Other.LinkAndFlag)
			{
				if (IsAllocated())
				{
					new (Storage) ElementType(Other.Get());
				}
			}

			FSlot(FSlot&& Other) noexcept
				: Hash(Other.Hash), LinkAndFlag(Other.LinkAndFlag)
			{
				if (IsAllocated())
				{
					new (Storage) ElementType(MoveTemp(Other.Get()));
				}
			}

			FSlot& operator=(const FSlot&) = delete;
			FSlot& operator=(FSlot&&) = delete;

			~FSlot() { Destroy(); }

			void Destroy()
			{
				if (IsAllocated())
				{
					Get().~ElementType();
					LinkAndFlag &= ~AllocatedBit;
				}
			}

			bool IsAllocated() const { return (LinkAndFlag & AllocatedBit) != 0; }
			void MarkAllocated() { LinkAndFlag |= AllocatedBit; }

			// For an occupied slot: the next slot of its bucket; for a free slot: the next free slot.
			int32 GetLink() const { return static_cast<int32>(LinkAndFlag & ~AllocatedBit) - 1; }
			void SetLink(int32 Index) { LinkAndFlag = (LinkAndFlag & AllocatedBit) | static_cast<uint32>(Index + 1); }

			ElementType& Get() { return *std::launder(reinterpret_cast<ElementType*>(Storage)); }
			const ElementType& Get() const { return *std::launder(reinterpret_cast<const ElementType*>(Storage)); }

		private:
			static constexpr uint32 AllocatedBit = 0x80000000u;
			uint32 LinkAndFlag = 0; // link + 1 in the low bits, so zero means no link
		};

		static constexpr int32 LinearSearchLimit = 8;

	public:
		THashedSparseStorage() = default;

		THashedSparseStorage(const THashedSparseStorage& Other)
		{
			CopyFrom(Other);
		}

		THashedSparseStorage(THashedSparseStorage&& Other) noexcept
		{
			MoveFrom(Other);
		}

		THashedSparseStorage& operator=(const THashedSparseStorage& Other)
		{
			if (this != &Other)
			{
				Clear(0);
				CopyFrom(Other);
			}
			return *this;
		}

		THashedSparseStorage& operator=(THashedSparseStorage&& Other) noexcept
		{
			if (this != &Other)
			{
				Clear(0);
				MoveFrom(Other);
			}
			return *this;
		}

		~THashedSparseStorage() { Clear(0); }

		int32 Num() const { return NumElements; }
		int32 GetMaxIndex() const { return static_cast<int32>(Slots.size()); }
		bool IsValidIndex(int32 Index) const { return Index >= 0 && Index < GetMaxIndex() && Slots[Index].IsAllocated(); }
		ElementType& At(int32 Index) { return Slots[Index].Get(); }
		const ElementType& At(int32 Index) const { return Slots[Index].Get(); }

		int32 FindIndex(const KeyType& Key) const
		{
			return FindIndexByHash(GetTypeHash(Key), Key);
		}

		int32 FindIndexByHash(uint32 Hash, const KeyType& Key) const
		{
			if (NumElements == 0)
			{
				return INDEX_NONE;
			}
			if (Buckets.empty())
			{
				for (int32 Index = 0; Index < GetMaxIndex(); ++Index)
				{
					const FSlot& Slot = Slots[Index];
					if (Slot.IsAllocated() && Slot.Hash == Hash && KeyOfType::Get(Slot.Get()) == Key)
					{
						return Index;
					}
				}
				return INDEX_NONE;
			}
			for (int32 Index = Buckets[Hash & BucketMask()]; Index != INDEX_NONE; Index = Slots[Index].GetLink())
			{
				const FSlot& Slot = Slots[Index];
				if (Slot.Hash == Hash && KeyOfType::Get(Slot.Get()) == Key)
				{
					return Index;
				}
			}
			return INDEX_NONE;
		}

		// Constructs an element in a free slot; the caller has made sure its key is not present.
		template <typename... ArgsType>
		int32 EmplaceNew(uint32 Hash, ArgsType&&... Args)
		{
			int32 Index;
			if (FirstFree != INDEX_NONE)
			{
				Index = FirstFree;
				FirstFree = Slots[Index].GetLink();
				--NumFree;
			}
			else
			{
				Index = GetMaxIndex();
				Slots.emplace_back();
			}
			FSlot& Slot = Slots[Index];
			new (Slot.Storage) ElementType(Forward<ArgsType>(Args)...);
			Slot.MarkAllocated();
			Slot.Hash = Hash;
			Slot.SetLink(INDEX_NONE);
			++NumElements;
			if (!Buckets.empty())
			{
				if (static_cast<size_t>(NumElements) * 2 > Buckets.size())
				{
					Rehash();
				}
				else
				{
					LinkToBucket(Index);
				}
			}
			else if (NumElements > LinearSearchLimit)
			{
				Rehash();
			}
			return Index;
		}

		void RemoveAtIndex(int32 Index)
		{
			check(IsValidIndex(Index));
			if (!Buckets.empty())
			{
				UnlinkFromBucket(Index);
			}
			FSlot& Slot = Slots[Index];
			Slot.Destroy();
			Slot.SetLink(FirstFree);
			FirstFree = Index;
			++NumFree;
			--NumElements;
		}

		void Clear(int32 ExpectedNum)
		{
			Slots.clear();
			Buckets.clear();
			FirstFree = INDEX_NONE;
			NumFree = 0;
			NumElements = 0;
			Reserve(ExpectedNum);
		}

		void Reserve(int32 Number)
		{
			if (Number > 0)
			{
				Slots.reserve(static_cast<size_t>(Number));
			}
			// Size the index for the expected count now, so filling the container never rehashes.
			if (Number > LinearSearchLimit && static_cast<size_t>(Number) * 2 > Buckets.size())
			{
				Rehash(Number);
			}
		}

		// Closes the holes left by removals, keeping the relative order of what remains.
		void Compact()
		{
			if (NumFree == 0)
			{
				return;
			}
			std::vector<FSlot> Packed;
			Packed.reserve(static_cast<size_t>(NumElements));
			for (FSlot& Slot : Slots)
			{
				if (Slot.IsAllocated())
				{
					Packed.push_back(MoveTemp(Slot));
				}
			}
			Slots = MoveTemp(Packed);
			FirstFree = INDEX_NONE;
			NumFree = 0;
			RebuildIndex();
		}

		template <typename PredicateType>
		void StableSortElements(const PredicateType& Predicate)
		{
			Compact();
			std::vector<ElementType> Elements;
			Elements.reserve(Slots.size());
			for (FSlot& Slot : Slots)
			{
				Elements.push_back(MoveTemp(Slot.Get()));
			}
			std::stable_sort(Elements.begin(), Elements.end(), Predicate);
			for (size_t Index = 0; Index < Elements.size(); ++Index)
			{
				Slots[Index].Get() = MoveTemp(Elements[Index]);
				Slots[Index].Hash = GetTypeHash(KeyOfType::Get(Slots[Index].Get()));
			}
			RebuildIndex();
		}

	private:
		uint32 BucketMask() const { return static_cast<uint32>(Buckets.size()) - 1; }

		void LinkToBucket(int32 Index)
		{
			int32& Head = Buckets[Slots[Index].Hash & BucketMask()];
			Slots[Index].SetLink(Head);
			Head = Index;
		}

		void UnlinkFromBucket(int32 Index)
		{
			int32& Head = Buckets[Slots[Index].Hash & BucketMask()];
			if (Head == Index)
			{
				Head = Slots[Index].GetLink();
				return;
			}
			int32 Previous = Head;
			while (Slots[Previous].GetLink() != Index)
			{
				Previous = Slots[Previous].GetLink();
			}
			Slots[Previous].SetLink(Slots[Index].GetLink());
		}

		void Rehash(int32 ExpectedNum = 0)
		{
			const size_t Wanted = static_cast<size_t>(NumElements > ExpectedNum ? NumElements : ExpectedNum) * 2;
			size_t NumBuckets = 16;
			while (NumBuckets < Wanted)
			{
				NumBuckets *= 2;
			}
			Buckets.assign(NumBuckets, INDEX_NONE);
			// Link in reverse so each bucket lists its elements in slot order.
			for (int32 Index = GetMaxIndex() - 1; Index >= 0; --Index)
			{
				if (Slots[Index].IsAllocated())
				{
					LinkToBucket(Index);
				}
			}
		}

		void RebuildIndex()
		{
			Buckets.clear();
			if (NumElements > LinearSearchLimit)
			{
				Rehash();
			}
		}

		void CopyFrom(const THashedSparseStorage& Other)
		{
			Slots.reserve(Other.Slots.size());
			for (const FSlot& Slot : Other.Slots)
			{
				Slots.push_back(Slot);
			}
			Buckets = Other.Buckets;
			FirstFree = Other.FirstFree;
			NumFree = Other.NumFree;
			NumElements = Other.NumElements;
		}

		void MoveFrom(THashedSparseStorage& Other)
		{
			// Slots hold raw storage, so moving the vector moves the buffer without touching elements.
			Slots = std::move(Other.Slots);
			Buckets = std::move(Other.Buckets);
			FirstFree = Other.FirstFree;
			NumFree = Other.NumFree;
			NumElements = Other.NumElements;
			Other.Slots.clear();
			Other.Buckets.clear();
			Other.FirstFree = INDEX_NONE;
			Other.NumFree = 0;
			Other.NumElements = 0;
		}

		std::vector<FSlot> Slots;
		std::vector<int32> Buckets;
		int32 FirstFree = INDEX_NONE;
		int32 NumFree = 0;
		int32 NumElements = 0;
	};

	// Walks the occupied slots of a storage in slot order; TSet and TMap build their iterators on it.
	template <typename StorageType, typename ElementRefType>
	class TSparseStorageIterator
	{
	public:
		TSparseStorageIterator(StorageType& InStorage, int32 StartIndex)
			: Storage(&InStorage), Index(StartIndex)
		{
			SkipHoles();
		}

		TSparseStorageIterator& operator++()
		{
			++Index;
			SkipHoles();
			return *this;
		}

		ElementRefType operator*() const { return Storage->At(Index); }
		auto operator->() const { return &Storage->At(Index); }
		explicit operator bool() const { return Index < Storage->GetMaxIndex(); }
		bool operator==(const TSparseStorageIterator& Other) const { return Index == Other.Index; }
		bool operator!=(const TSparseStorageIterator& Other) const { return Index != Other.Index; }
		FSetElementId GetId() const { return FSetElementId::FromInteger(Index); }

		// Valid during iteration: the freed slot is behind the iterator.
		void RemoveCurrent()
		{
			static_assert(!std::is_const_v<StorageType>, "Cannot remove through a const iterator");
			Storage->RemoveAtIndex(Index);
		}

	private:
		void SkipHoles()
		{
			while (Index < Storage->GetMaxIndex() && !Storage->IsValidIndex(Index))
			{
				++Index;
			}
		}

		StorageType* Storage;
		int32 Index;
	};
}
