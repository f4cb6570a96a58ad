#pragma once

#include "CoreMinimal.h"
#include "IToolExecutor.h"

#include <atomic>
#include <mutex>
#include <thread>

namespace Calvorn
{
	/**
	 * The executor the CalvornToolkit module hands out. Registration and lookup may come from any
	 * thread. Calls run one at a time: a call from another thread waits for the running one, and a
	 * call made from inside a running tool (the same thread) is refused, since waiting would never end.
	 */
	class FToolExecutor final : public IToolExecutor
	{
	public:
		virtual bool RegisterTool(const FString& Name, TSharedPtr<ITool> Tool) override;
		virtual bool UnregisterTool(const FString& Name) override;
		virtual TArray<FString> GetToolNames() const override;
		virtual TSharedPtr<ITool> FindTool(const FString& Name) const override;
		virtual FToolResult ExecuteCommand(const FToolCommand& Command) override;
		virtual TArray<FToolDescriptor> ListTools() const override;

	private:
		struct FEntry
		{
			FString Name;
			TSharedPtr<ITool> Tool;
		};

		/** Index of the tool in Tools; the caller holds ToolsMutex. */
		int32 IndexOf(const FString& Name) const;
		TArray<FEntry> CopyTools() const;

		mutable std::mutex ToolsMutex;
		TArray<FEntry> Tools;

		std::mutex CallMutex;
		/** The thread running a call, while one runs. */
		std::atomic<std::thread::id> RunningThread;
	};
}
