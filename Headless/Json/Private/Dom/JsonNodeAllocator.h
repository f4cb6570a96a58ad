#pragma once

#include "CoreMinimal.h"

#include <cstddef>
#include <memory>
#include <utility>

namespace UE::Json::Private
{
	/**
	 * Memory for the nodes of JSON trees (values and objects, each with its reference count).
	 * A graph read holds tens of thousands of them; taking them from per-thread free lists carved out
	 * of large blocks, instead of one heap allocation each, makes building and freeing a tree several
	 * times cheaper and lays a tree out in the order it is read and written. Freed nodes go back to
	 * the freeing thread's lists and are reused, never returned to the system, as the engine's binned
	 * allocator keeps its small blocks.
	 */
	void* AllocateNode(size_t Size);
	void FreeNode(void* Pointer, size_t Size);

	template <typename T>
	struct TNodeAllocator
	{
		using value_type = T;

		TNodeAllocator() = default;

		template <typename OtherType>
		TNodeAllocator(const TNodeAllocator<OtherType>&)
		{
		}

		T* allocate(size_t Count) { return static_cast<T*>(AllocateNode(Count * sizeof(T))); }
		void deallocate(T* Pointer, size_t Count) { FreeNode(Pointer, Count * sizeof(T)); }

		template <typename OtherType>
		bool operator==(const TNodeAllocator<OtherType>&) const { return true; }
		template <typename OtherType>
		bool operator!=(const TNodeAllocator<OtherType>&) const { return false; }
	};

	/** MakeShared for tree nodes: one pooled block holds the object and its reference count. */
	template <typename T, typename... ArgTypes>
	std::shared_ptr<T> MakeNode(ArgTypes&&... Args)
	{
		return std::allocate_shared<T>(TNodeAllocator<T>(), std::forward<ArgTypes>(Args)...);
	}

	template <typename T, typename... ArgTypes>
	TSharedPtr<T> MakeSharedNode(ArgTypes&&... Args)
	{
		return TSharedPtr<T>::FromStdPtr(MakeNode<T>(std::forward<ArgTypes>(Args)...));
	}
}
