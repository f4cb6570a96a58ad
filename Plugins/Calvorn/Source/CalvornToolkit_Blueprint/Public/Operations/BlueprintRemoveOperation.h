#pragma once

#include "CoreMinimal.h"

class FJsonObject;

namespace Calvorn
{
	class FToolResult;
}

/** Deletes a Blueprint asset: the shared deletion flow of the toolkit, which refuses assets that others reference. */
class CALVORNTOOLKIT_BLUEPRINT_API FBlueprintRemoveOperation
{
public:
	static void Execute(const FJsonObject& Json, Calvorn::FToolResult& Result);
};
