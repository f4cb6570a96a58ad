#pragma once

#include "CoreMinimal.h"
#include "ToolCommand.h"
#include "ToolResult.h"

namespace Calvorn
{
	/**
	 * A tool the executor can run. The order of the virtual functions is part of the contract with
	 * the modules that implement tools; add new ones at the end.
	 */
	class ITool
	{
	public:
		virtual ~ITool() = default;

		/** The tool's own parameter schema as JSON text; may be empty or "{}". */
		virtual FString GetSchema() const = 0;

		/** What the tool does, in the words an agent reads. */
		virtual FString GetDescription() const = 0;

		/** Checks the parameter text before a run, reporting problems in Result. */
		virtual void ValidateCommand(const FString& ParametersJson, FToolResult& Result) const = 0;

		/** The tool's metadata as JSON text ("{}" at least). */
		virtual FString GetMetadata() = 0;

		/** Drops cached metadata so the next GetMetadata builds it again, where the tool caches any. */
		virtual void InvalidateMetadata() = 0;

		/**
		 * Runs the command into Result and fires OnCompleted exactly once with it. Result must stay
		 * alive until then; the executor keeps it so.
		 */
		virtual void Run(const FToolCommand& Command, TSharedPtr<FToolResult> Result, const FOnToolCompleted& OnCompleted) = 0;
	};
}
