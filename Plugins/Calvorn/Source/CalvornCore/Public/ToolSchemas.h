#pragma once

#include "CoreMinimal.h"

class FJsonObject;

namespace Calvorn::ToolInfo
{
	/**
	 * The JSON Schema (draft 2020-12) of a tool's parameters, as a client shows it to an agent: the
	 * fields, which are required, their types and what they mean. A fresh object on every call, so a
	 * caller may change it. Null for a name that is not one of the tools (compared without case).
	 */
	[[nodiscard]] CALVORNCORE_API TSharedPtr<FJsonObject> GetToolParameterSchema(const FString& ToolName);
}
