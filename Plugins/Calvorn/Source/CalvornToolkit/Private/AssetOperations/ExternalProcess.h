#pragma once

#include "CoreMinimal.h"

namespace Calvorn::Private
{
	/** What a finished (or stopped) program left behind. */
	struct FProcessOutcome
	{
		/** False when the program could not be started at all. */
		bool bStarted = false;
		/** True when it ran past its time limit and was killed. */
		bool bTimedOut = false;
		/** Its exit code; -1 when it did not exit normally. */
		int32 ExitCode = -1;
		/** Standard output and standard error, together, as UTF-8 text. */
		FString Output;
		/** Why it could not be started. */
		FString StartError;
	};

	/**
	 * Runs a program with its arguments directly (no shell, so nothing in an argument is interpreted),
	 * searching PATH for it, in WorkingDirectory, and waits at most TimeoutSeconds for it to exit.
	 * Its input is empty; at most 64 KiB of output is kept.
	 */
	FProcessOutcome RunProcess(const FString& Program, const TArray<FString>& Arguments, const FString& WorkingDirectory, double TimeoutSeconds);
}
