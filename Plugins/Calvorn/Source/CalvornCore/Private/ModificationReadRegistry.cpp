#include "ModificationReadRegistry.h"

#include "Dom/JsonObject.h"
#include "ToolResult.h"

#include <mutex>

namespace Calvorn
{
	struct FModificationReadRegistry::FImpl
	{
		struct FEntry
		{
			FString ToolName;
			FString CategoryName;
			FReadCallback Callback;
		};

		mutable std::mutex Mutex;
		// Few tools, looked up by a case-insensitive name: an ordered array keeps registration order for listing.
		TArray<FEntry> Entries;

		int32 IndexOf(const FString& ToolName) const
		{
			return Entries.IndexOfByPredicate([&ToolName](const FEntry& Entry) { return Entry.ToolName == ToolName; });
		}
	};

	FModificationReadRegistry::FModificationReadRegistry()
		: Impl(MakeUnique<FImpl>())
	{
	}

	FModificationReadRegistry::~FModificationReadRegistry() = default;

	FModificationReadRegistry& FModificationReadRegistry::Get()
	{
		static FModificationReadRegistry Registry;
		return Registry;
	}

	bool FModificationReadRegistry::RegisterReadTool(const FString& ToolName, const FString& CategoryName, FReadCallback Callback)
	{
		if (ToolName.IsEmpty() || !Callback)
		{
			return false;
		}
		std::lock_guard<std::mutex> Lock(Impl->Mutex);
		const int32 Index = Impl->IndexOf(ToolName);
		if (Index != INDEX_NONE)
		{
			// A module registering again (after a reload) replaces its callback in place.
			Impl->Entries[Index].CategoryName = CategoryName;
			Impl->Entries[Index].Callback = MoveTemp(Callback);
			return true;
		}
		Impl->Entries.Add(FImpl::FEntry{ToolName, CategoryName, MoveTemp(Callback)});
		return true;
	}

	bool FModificationReadRegistry::UnregisterReadTool(const FString& ToolName)
	{
		std::lock_guard<std::mutex> Lock(Impl->Mutex);
		const int32 Index = Impl->IndexOf(ToolName);
		if (Index == INDEX_NONE)
		{
			return false;
		}
		Impl->Entries.RemoveAt(Index);
		return true;
	}

	bool FModificationReadRegistry::IsReadToolRegistered(const FString& ToolName) const
	{
		std::lock_guard<std::mutex> Lock(Impl->Mutex);
		return Impl->IndexOf(ToolName) != INDEX_NONE;
	}

	FModificationReadRegistry::FReadCallback FModificationReadRegistry::FindReadTool(const FString& ToolName) const
	{
		std::lock_guard<std::mutex> Lock(Impl->Mutex);
		const int32 Index = Impl->IndexOf(ToolName);
		return Index != INDEX_NONE ? Impl->Entries[Index].Callback : FReadCallback();
	}

	FString FModificationReadRegistry::GetReadToolCategory(const FString& ToolName) const
	{
		std::lock_guard<std::mutex> Lock(Impl->Mutex);
		const int32 Index = Impl->IndexOf(ToolName);
		return Index != INDEX_NONE ? Impl->Entries[Index].CategoryName : FString();
	}

	TArray<FString> FModificationReadRegistry::GetReadToolNames() const
	{
		std::lock_guard<std::mutex> Lock(Impl->Mutex);
		TArray<FString> Names;
		Names.Reserve(Impl->Entries.Num());
		for (const FImpl::FEntry& Entry : Impl->Entries)
		{
			Names.Add(Entry.ToolName);
		}
		return Names;
	}

	bool FModificationReadRegistry::ExecuteRead(const FString& ToolName, TSharedPtr<FJsonObject> Parameters, FToolResult& Result, FString& OutText) const
	{
		// Copied out so the callback runs without the lock: it may register or read through the registry itself.
		FReadCallback Callback = FindReadTool(ToolName);
		if (!Callback)
		{
			return false;
		}
		OutText = Callback(MoveTemp(Parameters), Result);
		return true;
	}
}
