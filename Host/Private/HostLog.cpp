#include "HostLog.h"

#include <cstdio>

namespace Calvorn::Host
{
	namespace
	{
		EHostLogVerbosity GVerbosity = EHostLogVerbosity::Display;
	}

	void SetHostLogVerbosity(EHostLogVerbosity Verbosity)
	{
		GVerbosity = Verbosity;
	}

	EHostLogVerbosity GetHostLogVerbosity()
	{
		return GVerbosity;
	}

	void HostLog(EHostLogVerbosity Verbosity, const FString& Message)
	{
		if (Verbosity > GVerbosity)
		{
			return;
		}
		const char* Severity = "";
		switch (Verbosity)
		{
		case EHostLogVerbosity::Error:
			Severity = "error: ";
			break;
		case EHostLogVerbosity::Warning:
			Severity = "warning: ";
			break;
		default:
			break;
		}
		// One write per line, so lines from a client's own logging on the same terminal never interleave mid-line.
		const std::string Line = std::string("calvorn-bp: ") + Severity + FStringToUTF8(Message) + "\n";
		std::fwrite(Line.data(), 1, Line.size(), stderr);
		std::fflush(stderr);
	}
}
