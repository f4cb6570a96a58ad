#pragma once

#include "CoreMinimal.h"
#include "ITool.h"

namespace Calvorn
{
	/** What a client needs to know of a tool to offer it. */
	struct FToolDescriptor
	{
		FString Name;
		FString Description;
		/** The read registry's category for the tool, else the "data_type" of its metadata, else empty. */
		FString Category;
		/** The core module's parameter schema when it has one, else the tool's own schema text, else "{}". */
		FString SchemaJson;
		FString MetadataJson;
	};

	/** Holds the registered tools and runs commands on them, one at a time. */
	class IToolExecutor
	{
	public:
		virtual ~IToolExecutor() = default;

		/** Adds a tool; false for an empty name, a null tool, or a name already registered (without case). */
		virtual bool RegisterTool(const FString& Name, TSharedPtr<ITool> Tool) = 0;

		/** Removes a tool; false when no tool has that name. */
		virtual bool UnregisterTool(const FString& Name) = 0;

		/** The registered names, in registration order. */
		virtual TArray<FString> GetToolNames() const = 0;

		/** The tool registered under the name (without case), or null. */
		virtual TSharedPtr<ITool> FindTool(const FString& Name) const = 0;

		/**
		 * Runs the command's tool synchronously and returns its completed result. An unknown tool
		 * gives an error result "Unknown tool: <name>". A tool that returns without firing its
		 * completion is reported as an error result, as is a command that arrives while another is
		 * still running.
		 */
		virtual FToolResult ExecuteCommand(const FToolCommand& Command) = 0;

		/** Every registered tool, in registration order. */
		virtual TArray<FToolDescriptor> ListTools() const = 0;
	};
}

using Calvorn::FToolDescriptor;
using Calvorn::IToolExecutor;
