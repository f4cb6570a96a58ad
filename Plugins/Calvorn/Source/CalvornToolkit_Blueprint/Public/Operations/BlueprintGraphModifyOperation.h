#pragma once

#include "CoreMinimal.h"

class FJsonObject;

namespace Calvorn
{
	class FToolResult;
}

/**
 * bp_populate_graph: a request of nodes and connections becomes a wired, laid-out graph in one strictly
 * ordered pass. A failed node never stops the batch; connections that need it are reported as blocked.
 */
class CALVORNTOOLKIT_BLUEPRINT_API FBlueprintGraphModifyOperation
{
public:
	static void Execute(const FJsonObject& Json, Calvorn::FToolResult& Result);
};
