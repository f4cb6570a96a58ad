#pragma once

#include "CoreMinimal.h"

class FJsonObject;

namespace Calvorn
{
	class FToolResult;
}

/**
 * Creates a Blueprint, Animation Blueprint, Widget Blueprint or Behavior Tree Task asset from
 * {"path": ..., "blueprint_parent_class": {"type": ..., "parent_path": ...}}.
 */
class CALVORNTOOLKIT_BLUEPRINT_API FBlueprintCreateOperation
{
public:
	static void Execute(const FJsonObject& Json, Calvorn::FToolResult& Result);
};
