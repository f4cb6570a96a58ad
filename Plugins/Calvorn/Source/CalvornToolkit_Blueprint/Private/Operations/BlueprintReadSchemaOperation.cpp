#include "BlueprintReadOperation.h"

#include "AssetOperationBase.h"
#include "BlueprintReadUtils.h"
#include "Dom/JsonObject.h"
#include "ToolInfo.h"
#include "ToolResult.h"

namespace
{
	bool IsDocument(const FString& Text)
	{
		return !Text.IsEmpty() && !Text.Equals(TEXT("{}"), ESearchCase::IgnoreCase);
	}
}

void FBlueprintReadSchemaOperation::Execute(const FJsonObject& Json, Calvorn::FToolResult& Result)
{
	FString RequestedPath;
	if (!Json.TryGetStringField(TEXT("path"), RequestedPath))
	{
		Result.AddErrorMessage(TEXT("Missing required field 'path'"));
		return;
	}
	const FString Path = FAssetOperationBase::NormalizeAssetPath(RequestedPath);
	if (!FAssetOperationBase::AssetExists(Path))
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Blueprint does not exist: %s"), *Path));
		Result.AddErrorMessage(TEXT("Cannot read schema for non-existent Blueprint. The asset may have been deleted."));
		return;
	}

	TSharedPtr<FJsonObject> Request = MakeShared<FJsonObject>();
	Request->SetStringField(TEXT("path"), Path);
	Request->SetStringField(Calvorn::ToolInfo::FieldName_ReadTool, Calvorn::ToolInfo::ToolName_ReadBlueprintSchema);

	const FString Text = FBlueprintReadUtils::ReadBlueprint(Request, Result);
	if (!IsDocument(Text))
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Failed to read schema at path: %s"), *Path));
		return;
	}
	Result.SetData(TEXT("content"), Text);
	Result.AddSuccessMessage(FString::Printf(TEXT("Successfully read schema for Blueprint: %s"), *FAssetOperationBase::GetAssetNameFromPath(Path)));
}
