#pragma once

#include "Containers/ContainerAllocationPolicies.h"

template <typename T, typename Allocator = FDefaultAllocator>
class TArray;
template <typename T, typename KeyFuncs = void, typename Allocator = FDefaultSetAllocator>
class TSet;
template <typename KeyType, typename ValueType, typename SetAllocator = FDefaultSetAllocator, typename KeyFuncs = void>
class TMap;
template <typename KeyType, typename ValueType, typename SetAllocator = FDefaultSetAllocator, typename KeyFuncs = void>
class TMultiMap;
template <typename T>
class TArrayView;
