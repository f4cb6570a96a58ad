#include "BlueprintReadOperation.h"

#include "AssetOperationBase.h"
#include "BlueprintReadUtils.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "ToolInfo.h"
#include "ToolResult.h"

void FWidgetBlueprintWidgetTreeReadOperation::Execute(const FJsonObject& Json, Calvorn::FToolResult& Result)
{
	FString RequestedPath;
	if (!Json.TryGetStringField(TEXT("path"), RequestedPath))
	{
		Result.AddErrorMessage(TEXT("Missing required field 'path'"));
		return;
	}
	const FString Path = FAssetOperationBase::NormalizeAssetPath(RequestedPath);

	TSharedPtr<FJsonObject> Request = MakeShared<FJsonObject>();
	Request->SetStringField(TEXT("path"), Path);
	Request->SetStringField(Calvorn::ToolInfo::FieldName_ReadTool, Calvorn::ToolInfo::ToolName_ReadBlueprintWidgetTree);
	// One name or a list of names; the reader accepts both.
	if (const TSharedPtr<FJsonValue> WidgetNames = Json.TryGetField(Calvorn::ToolInfo::FieldName_WidgetName))
	{
		Request->SetField(Calvorn::ToolInfo::FieldName_WidgetName, WidgetNames);
	}

	const FString Text = FBlueprintReadUtils::ReadBlueprint(Request, Result);
	if (Text.IsEmpty() || Text.Equals(TEXT("{}"), ESearchCase::IgnoreCase))
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Failed to read widget_tree at path: %s"), *Path));
		return;
	}
	Result.SetData(TEXT("content"), Text);
	Result.AddSuccessMessage(FString::Printf(TEXT("Successfully read widget_tree from Widget Blueprint: %s"), *FAssetOperationBase::GetAssetNameFromPath(Path)));
}
