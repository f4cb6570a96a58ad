#include "Dom/JsonNodeAllocator.h"

#include <cstdlib>
#include <new>

namespace UE::Json::Private
{
	namespace
	{
		constexpr size_t Granularity = 16;
		constexpr size_t MaxPooledSize = 256;
		constexpr size_t NumClasses = MaxPooledSize / Granularity + 1;
		constexpr size_t BlockSize = 64 * 1024;

		struct FFreeNode
		{
			FFreeNode* Next;
		};

		// Plain data, so each thread's cache is ready without any construction on first use.
		struct FThreadCache
		{
			FFreeNode* FreeLists[NumClasses];
			char* Cursor;
			char* End;
		};

		thread_local FThreadCache Cache;

		size_t ClassOf(size_t Size)
		{
			return (Size + Granularity - 1) / Granularity;
		}
	}

	void* AllocateNode(size_t Size)
	{
		if (Size > MaxPooledSize)
		{
			return ::operator new(Size);
		}
		const size_t Class = ClassOf(Size);
		if (FFreeNode* Node = Cache.FreeLists[Class])
		{
			Cache.FreeLists[Class] = Node->Next;
			return Node;
		}
		const size_t Rounded = Class * Granularity;
		if (static_cast<size_t>(Cache.End - Cache.Cursor) < Rounded)
		{
			// What is left of the old block is too small for this class; it stays unused.
			char* Block = static_cast<char*>(std::malloc(BlockSize));
			if (!Block)
			{
				throw std::bad_alloc();
			}
			Cache.Cursor = Block;
			Cache.End = Block + BlockSize;
		}
		void* Result = Cache.Cursor;
		Cache.Cursor += Rounded;
		return Result;
	}

	void FreeNode(void* Pointer, size_t Size)
	{
		if (Size > MaxPooledSize)
		{
			::operator delete(Pointer);
			return;
		}
		const size_t Class = ClassOf(Size);
		FFreeNode* Node = static_cast<FFreeNode*>(Pointer);
		Node->Next = Cache.FreeLists[Class];
		Cache.FreeLists[Class] = Node;
	}
}
