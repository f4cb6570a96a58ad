#pragma once

#include "CoreTypes.h"

// Allocator tags are accepted so engine-style declarations compile (TArray<T, TInlineAllocator<4>>);
// every container here allocates from the heap, which only affects speed, never behaviour.
class FDefaultAllocator
{
};

template <int32 NumInlineElements, typename SecondaryAllocator = FDefaultAllocator>
class TInlineAllocator
{
};

template <int32 NumInlineElements>
class TFixedAllocator
{
};

using FDefaultSetAllocator = FDefaultAllocator;

template <typename AllocatorType = FDefaultAllocator>
class TSizedDefaultAllocator
{
};
