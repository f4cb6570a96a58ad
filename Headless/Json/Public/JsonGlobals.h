#pragma once

#include "CoreMinimal.h"
#include "Serialization/JsonTypes.h"

namespace UE::Json
{
	/**
	 * Deepest nesting of arrays and objects the reader accepts. The engine's reader has no limit;
	 * ours refuses deeper input with a parse error so hostile input cannot exhaust the stack.
	 */
	inline constexpr int32 MaxReadDepth = 512;
}
