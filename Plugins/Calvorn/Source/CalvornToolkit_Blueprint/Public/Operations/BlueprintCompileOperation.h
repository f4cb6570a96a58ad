#pragma once

#include "CoreMinimal.h"

class FJsonObject;

namespace Calvorn
{
	class FToolResult;
}

/**
 * Compiles each Blueprint of {"blueprint_paths": [...]} in order and saves those that compiled; reports the
 * compiler's errors and warnings per Blueprint, and a verdict over the batch.
 */
class CALVORNTOOLKIT_BLUEPRINT_API FBlueprintCompileOperation
{
public:
	static void Execute(const FJsonObject& Json, Calvorn::FToolResult& Result);
};
