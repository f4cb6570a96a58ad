#include "ToolCommand.h"

namespace Calvorn
{
	FToolCommand::FToolCommand(const FString& InRequestId, const FString& InToolName, const FString& InParametersJson)
		: RequestId(InRequestId)
		, ToolName(InToolName)
		, ParametersJson(InParametersJson)
	{
	}
}
