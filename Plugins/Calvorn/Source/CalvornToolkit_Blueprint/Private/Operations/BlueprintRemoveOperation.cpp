#include "Operations/BlueprintRemoveOperation.h"

#include "AssetOperationBase.h"
#include "ToolResult.h"

void FBlueprintRemoveOperation::Execute(const FJsonObject& Json, Calvorn::FToolResult& Result)
{
	FAssetOperationBase::ExecuteDeleteOperation(Json, Result, TEXT("Blueprint"));
}
