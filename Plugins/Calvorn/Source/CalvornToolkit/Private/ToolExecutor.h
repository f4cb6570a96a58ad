#pragma once

#include "CoreMinimal.h"
#include "IToolExecutor.h"

namespace Calvorn
{
	/** The executor the CalvornToolkit module hands out. */
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

		int32 IndexOf(const FString& Name) const;

		TArray<FEntry> Tools;
		/** Set while a command runs; a command arriving meanwhile (from inside a tool) is refused. */
		bool bRunning = false;
	};
}
