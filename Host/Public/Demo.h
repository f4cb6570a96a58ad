#pragma once

#include "CoreMinimal.h"
#include "Templates/Function.h"

class FJsonObject;

namespace Calvorn::Host
{
	class FMcpServer;

	/**
	 * A short scripted MCP session: each request is printed as it is sent to the server, followed by
	 * the essence of the server's answer, read from the answer itself. Returns true when every answer
	 * had the shape the protocol requires.
	 */
	bool RunDemoSession(FMcpServer& Server, TFunctionRef<void(const FString&)> PrintLine);

	/** The essence of a tools/call result for a reader: whether it failed, its messages, its data keys. */
	[[nodiscard]] FString SummarizeToolCallResult(const FJsonObject& CallResult);
}
