#pragma once

#include "CoreMinimal.h"

// The untyped containers behind reflected array, set and map properties. FScriptArray has TArray's
// exact layout (data pointer, count, capacity; memory from ::operator new), so a native TArray member
// and a data-defined array property are read and written by the same code. Elements are never moved
// as raw bytes: FScriptArrayHelper relocates them through the inner property, because types such as
// FString keep pointers into themselves. Sets and maps are laid out by the helpers below (native TSet
// and TMap members are not reflected).

/** Untyped storage with TArray's layout. Use FScriptArrayHelper to change it. */
class FScriptArray
{
public:
	FScriptArray() = default;
	FScriptArray(const FScriptArray&) = delete;
	FScriptArray& operator=(const FScriptArray&) = delete;

	void* GetData() { return Data; }
	const void* GetData() const { return Data; }
	int32 Num() const { return ArrayNum; }
	int32 Max() const { return ArrayMax; }
	bool IsValidIndex(int32 Index) const { return Index >= 0 && Index < ArrayNum; }
	bool IsEmpty() const { return ArrayNum == 0; }

private:
	friend class FScriptArrayHelper;
	friend struct FScriptContainerAccess;

	void* Data = nullptr;
	int32 ArrayNum = 0;
	int32 ArrayMax = 0;
};

static_assert(sizeof(FScriptArray) == sizeof(TArray<int32>), "FScriptArray must be laid out as TArray");

/** Size and alignment of one set element slot. */
struct FScriptSetLayout
{
	int32 Size = 0;
	int32 Alignment = 1;
};

/** Where the value sits in a map pair slot (the key is at 0). */
struct FScriptMapLayout
{
	int32 ValueOffset = 0;
	FScriptSetLayout SetLayout;
};

/** Untyped storage of a set property: slots kept in insertion order. Use FScriptSetHelper. */
class FScriptSet
{
public:
	FScriptSet() = default;
	FScriptSet(const FScriptSet&) = delete;
	FScriptSet& operator=(const FScriptSet&) = delete;

	int32 Num() const { return Elements.Num(); }
	static COREUOBJECT_API FScriptSetLayout GetScriptLayout(int32 ElementSize, int32 ElementAlignment);

private:
	friend class FScriptSetHelper;
	friend class FScriptMapHelper;
	friend struct FScriptContainerAccess;
	FScriptArray Elements;
};

/** Untyped storage of a map property: key/value pair slots kept in insertion order. Use FScriptMapHelper. */
class FScriptMap
{
public:
	FScriptMap() = default;
	FScriptMap(const FScriptMap&) = delete;
	FScriptMap& operator=(const FScriptMap&) = delete;

	int32 Num() const { return Pairs.Num(); }
	static COREUOBJECT_API FScriptMapLayout GetScriptLayout(int32 KeySize, int32 KeyAlignment, int32 ValueSize, int32 ValueAlignment);

private:
	friend class FScriptMapHelper;
	friend struct FScriptContainerAccess;
	FScriptSet Pairs;
};
