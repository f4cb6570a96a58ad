#pragma once

#include "CoreMinimal.h"

/**
 * The host's log. Standard output carries protocol messages and command results, so every line of
 * the log goes to standard error, prefixed with the program's name and the severity.
 */
namespace Calvorn::Host
{
	enum class EHostLogVerbosity : uint8
	{
		Error,
		Warning,
		Display,
		Verbose,
	};

	/** Lines above this verbosity are dropped; Display by default. */
	void SetHostLogVerbosity(EHostLogVerbosity Verbosity);
	[[nodiscard]] EHostLogVerbosity GetHostLogVerbosity();

	void HostLog(EHostLogVerbosity Verbosity, const FString& Message);

	inline void HostLogError(const FString& Message) { HostLog(EHostLogVerbosity::Error, Message); }
	inline void HostLogWarning(const FString& Message) { HostLog(EHostLogVerbosity::Warning, Message); }
	inline void HostLogDisplay(const FString& Message) { HostLog(EHostLogVerbosity::Display, Message); }
	inline void HostLogVerbose(const FString& Message) { HostLog(EHostLogVerbosity::Verbose, Message); }
}
