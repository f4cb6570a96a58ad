#pragma once

#include "CoreMinimal.h"

class FJsonObject;

namespace Calvorn
{
	class FToolResult;

	/**
	 * Read callbacks by tool name, so that a modifying tool can hand back fresh JSON of what it changed
	 * without knowing the module that reads it. Tool names compare without case, as FString does.
	 * Registration and lookup may come from any thread; callbacks run on the caller's thread, outside
	 * the registry's lock, so a callback may itself use the registry.
	 */
	class CALVORNCORE_API FModificationReadRegistry
	{
	public:
		using FReadCallback = TFunction<FString(TSharedPtr<FJsonObject>, FToolResult&)>;

		/** The process-wide registry. */
		[[nodiscard]] static FModificationReadRegistry& Get();

		/**
		 * Registers (or replaces) the read callback of a tool. False, and nothing registered, for an
		 * empty tool name or an unset callback.
		 */
		bool RegisterReadTool(const FString& ToolName, const FString& CategoryName, FReadCallback Callback);

		/** Forgets a tool's callback; false when it was not registered. */
		bool UnregisterReadTool(const FString& ToolName);

		[[nodiscard]] bool IsReadToolRegistered(const FString& ToolName) const;

		/** The tool's callback (a copy), or an unset function when none is registered. */
		[[nodiscard]] FReadCallback FindReadTool(const FString& ToolName) const;

		/** The category the tool was registered under; empty when it is not registered. */
		[[nodiscard]] FString GetReadToolCategory(const FString& ToolName) const;

		/** The registered tool names, in registration order. */
		[[nodiscard]] TArray<FString> GetReadToolNames() const;

		/**
		 * Runs the tool's callback with the parameters and result. False, with OutText untouched, when
		 * no callback is registered under that name.
		 */
		bool ExecuteRead(const FString& ToolName, TSharedPtr<FJsonObject> Parameters, FToolResult& Result, FString& OutText) const;

		FModificationReadRegistry(const FModificationReadRegistry&) = delete;
		FModificationReadRegistry& operator=(const FModificationReadRegistry&) = delete;
		~FModificationReadRegistry();

	private:
		FModificationReadRegistry();

		struct FImpl;
		TUniquePtr<FImpl> Impl;
	};
}

using Calvorn::FModificationReadRegistry;
