#pragma once

#include "CoreMinimal.h"

namespace Calvorn
{
	/** One call of a tool as it reaches the executor: who asked, which tool, and the parameters as JSON text. */
	class CALVORNCORE_API FToolCommand
	{
	public:
		FToolCommand() = default;
		FToolCommand(const FString& InRequestId, const FString& InToolName, const FString& InParametersJson);

		const FString& GetRequestId() const { return RequestId; }
		const FString& GetToolName() const { return ToolName; }
		/** The parameters exactly as the client sent them; nothing has parsed them yet. */
		const FString& GetParametersJson() const { return ParametersJson; }

	private:
		FString RequestId;
		FString ToolName;
		FString ParametersJson;
	};
}
