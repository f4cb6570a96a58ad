#pragma once

#include "CoreMinimal.h"
#include "HostCommandLine.h"
#include "McpServer.h"

namespace Calvorn::Host
{
	inline constexpr const TCHAR* HostProgramName = TEXT("calvorn-bp");
	inline constexpr const TCHAR* HostVersion = TEXT("0.1.0");

	/** Exit statuses of the program. */
	namespace HostExitCode
	{
		inline constexpr int32 Success = 0;
		/** The tool call failed, or the command could not do its job (no project, a write failed). */
		inline constexpr int32 Failure = 1;
		/** The command line was wrong; nothing was run. */
		inline constexpr int32 Usage = 2;
	}

	/** Parses the arguments after the program's name, runs the command and returns the exit status. */
	int32 RunHost(const TArray<FString>& Args);

	/** Runs a parsed command line. */
	int32 RunHostCommand(const FHostCommandLine& CommandLine);

	/** How the server introduces itself to clients for the given open project. */
	[[nodiscard]] FMcpServerInfo MakeServerInfo(const FString& ProjectFile);
}
