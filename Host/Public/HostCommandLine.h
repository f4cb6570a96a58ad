#pragma once

#include "CoreMinimal.h"

namespace Calvorn::Host
{
	enum class EHostCommand : uint8
	{
		Help,
		Version,
		Serve,
		Call,
		Tools,
		Demo,
		InitSample,
	};

	/** What the command line asks for. */
	struct FHostCommandLine
	{
		EHostCommand Command = EHostCommand::Help;
		/** --project: a project folder or .uproject file; empty for the sample project. */
		FString ProjectPath;
		/** call: the tool and its parameters as JSON text ("-" reads them from standard input). */
		FString ToolName;
		FString ToolArguments;
		/** init-sample: where to write the sample project. */
		FString SampleDirectory;
		/** tools --json: full descriptors with their schemas. */
		bool bJson = false;
		/** --verbose: log every message and how long it took. */
		bool bVerbose = false;
	};

	/**
	 * Reads the arguments after the program's name. Options may come before or after the command's
	 * own arguments, as "--project DIR" or "--project=DIR"; "--" ends the options. Returns false with
	 * a message for a usage error: an unknown command or option, an option the command does not take,
	 * a missing or extra argument.
	 */
	bool ParseHostCommandLine(const TArray<FString>& Args, FHostCommandLine& OutCommandLine, FString& OutError);

	/** The text of --help. */
	[[nodiscard]] FString GetHostUsage();
}
