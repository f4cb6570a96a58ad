#include "BlueprintReadOperation.h"

#include "AssetOperationBase.h"
#include "BlueprintReadUtils.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "ToolInfo.h"
#include "ToolResult.h"
#include "Utils/BlueprintReadUtilsPrivate.h"

namespace ToolInfo = Calvorn::ToolInfo;

namespace
{
	/** How the read failure of an item tool is worded: some tools say where they looked, others what from. */
	enum class EFailureWording
	{
		AtPath,
		FromBlueprint,
	};

	/** One item tool: its read tool, the field naming the item, the document array it checks, its word. */
	struct FItemReadKind
	{
		const TCHAR* ToolName;
		const TCHAR* NameField;
		const TCHAR* FilterField;
		const TCHAR* ArrayKey;
		const TCHAR* ItemWord;
		EFailureWording FailureWording;
	};

	/**
	 * Whether the document's array under ArrayKey starts with a status entry: the item was not there. The
	 * document is looked at as built, the very tree whose text the client receives.
	 */
	bool DocumentReportsMissingItem(const TSharedPtr<FJsonObject>& Root, const TCHAR* ArrayKey)
	{
		if (!Root.IsValid())
		{
			return false;
		}
		const TArray<TSharedPtr<FJsonValue>>* Items = nullptr;
		if (!Root->TryGetArrayField(ArrayKey, Items) || Items->Num() == 0)
		{
			return false;
		}
		const TSharedPtr<FJsonObject>* First = nullptr;
		FString Status;
		if (!(*Items)[0].IsValid() || !(*Items)[0]->TryGetObject(First) || !(*First)->TryGetStringField(TEXT("status"), Status))
		{
			return false;
		}
		return Status.Equals(TEXT("deleted"), ESearchCase::IgnoreCase) || Status.Equals(TEXT("not_found"), ESearchCase::IgnoreCase);
	}

	bool IsDocument(const FString& Text)
	{
		return !Text.IsEmpty() && !Text.Equals(TEXT("{}"), ESearchCase::IgnoreCase);
	}

	void ExecuteItemRead(const FJsonObject& Json, Calvorn::FToolResult& Result, const FItemReadKind& Kind)
	{
		FString RequestedPath;
		if (!Json.TryGetStringField(TEXT("path"), RequestedPath))
		{
			Result.AddErrorMessage(TEXT("Missing required field 'path'"));
			return;
		}
		FString ItemName;
		if (!Json.TryGetStringField(Kind.NameField, ItemName))
		{
			Result.AddErrorMessage(FString::Printf(TEXT("Missing required field '%s'"), Kind.NameField));
			return;
		}
		const FString Path = FAssetOperationBase::NormalizeAssetPath(RequestedPath);

		TSharedPtr<FJsonObject> Request = MakeShared<FJsonObject>();
		Request->SetStringField(TEXT("path"), Path);
		Request->SetArrayField(Kind.FilterField, TArray<TSharedPtr<FJsonValue>>{ MakeShared<FJsonValueString>(ItemName) });
		Request->SetStringField(ToolInfo::FieldName_ReadTool, Kind.ToolName);

		const TSharedPtr<FJsonObject> Document = UE::CalvornBlueprint::ReadPrivate::ReadBlueprintDocument(Request, Result);
		const FString Text = FAssetOperationBase::SerializeJson(Document);
		if (!IsDocument(Text))
		{
			Result.AddErrorMessage(Kind.FailureWording == EFailureWording::AtPath
				? FString::Printf(TEXT("Failed to read %s '%s' at path: %s"), Kind.ItemWord, *ItemName, *Path)
				: FString::Printf(TEXT("Failed to read %s '%s' from Blueprint: %s"), Kind.ItemWord, *ItemName, *Path));
			return;
		}
		Result.SetData(TEXT("content"), Text);
		if (DocumentReportsMissingItem(Document, Kind.ArrayKey))
		{
			Result.AddWarningMessage(FString::Printf(TEXT("'%s' %s does not exist in Blueprint: %s"), *ItemName, Kind.ItemWord, *Path));
			return;
		}
		Result.AddSuccessMessage(FString::Printf(TEXT("Successfully read %s '%s' from Blueprint: %s"), Kind.ItemWord, *ItemName, *FAssetOperationBase::GetAssetNameFromPath(Path)));
	}
}

void FBlueprintVariableReadOperation::Execute(const FJsonObject& Json, Calvorn::FToolResult& Result)
{
	ExecuteItemRead(Json, Result, { ToolInfo::ToolName_ReadBlueprintVariable, TEXT("variable_name"), ToolInfo::FieldName_VariableName, TEXT("variables"), TEXT("variable"), EFailureWording::AtPath });
}

void FBlueprintComponentReadOperation::Execute(const FJsonObject& Json, Calvorn::FToolResult& Result)
{
	ExecuteItemRead(Json, Result, { ToolInfo::ToolName_ReadBlueprintComponent, TEXT("component_name"), ToolInfo::FieldName_ComponentName, TEXT("components"), TEXT("component"), EFailureWording::AtPath });
}

void FBlueprintFunctionReadOperation::Execute(const FJsonObject& Json, Calvorn::FToolResult& Result)
{
	ExecuteItemRead(Json, Result, { ToolInfo::ToolName_ReadBlueprintFunction, TEXT("function_name"), ToolInfo::FieldName_FunctionName, TEXT("functions"), TEXT("function"), EFailureWording::FromBlueprint });
}

void FBlueprintInterfaceReadOperation::Execute(const FJsonObject& Json, Calvorn::FToolResult& Result)
{
	ExecuteItemRead(Json, Result, { ToolInfo::ToolName_ReadBlueprintInterface, TEXT("interface_name"), ToolInfo::FieldName_InterfaceName, TEXT("interfaces"), TEXT("interface"), EFailureWording::AtPath });
}

void FBlueprintMacroReadOperation::Execute(const FJsonObject& Json, Calvorn::FToolResult& Result)
{
	ExecuteItemRead(Json, Result, { ToolInfo::ToolName_ReadBlueprintMacro, TEXT("macro_name"), ToolInfo::FieldName_MacroName, TEXT("macros"), TEXT("macro"), EFailureWording::FromBlueprint });
}

void FBlueprintDelegateReadOperation::Execute(const FJsonObject& Json, Calvorn::FToolResult& Result)
{
	ExecuteItemRead(Json, Result, { ToolInfo::ToolName_ReadBlueprintDelegate, TEXT("delegate_name"), ToolInfo::FieldName_DelegateName, TEXT("delegates"), TEXT("delegate"), EFailureWording::AtPath });
}

void FBlueprintTimelineReadOperation::Execute(const FJsonObject& Json, Calvorn::FToolResult& Result)
{
	ExecuteItemRead(Json, Result, { ToolInfo::ToolName_ReadBlueprintTimeline, TEXT("timeline_name"), ToolInfo::FieldName_TimelineName, TEXT("timelines"), TEXT("timeline"), EFailureWording::AtPath });
}

void FBlueprintEventReadOperation::Execute(const FJsonObject& Json, Calvorn::FToolResult& Result)
{
	FString RequestedPath;
	if (!Json.TryGetStringField(TEXT("path"), RequestedPath))
	{
		Result.AddErrorMessage(TEXT("Missing required field 'path'"));
		return;
	}
	FString GraphName;
	if (!Json.TryGetStringField(TEXT("graph_name"), GraphName))
	{
		Result.AddErrorMessage(TEXT("Missing required field 'graph_name'"));
		return;
	}
	FString EventName;
	if (!Json.TryGetStringField(TEXT("event_name"), EventName))
	{
		Result.AddErrorMessage(TEXT("Missing required field 'event_name'"));
		return;
	}
	const FString Path = FAssetOperationBase::NormalizeAssetPath(RequestedPath);

	// The graph name is carried for the read-back's sake; every event graph page is read.
	TSharedPtr<FJsonObject> Event = MakeShared<FJsonObject>();
	Event->SetStringField(ToolInfo::FieldName_GraphName, GraphName);
	Event->SetStringField(ToolInfo::FieldName_EventName, EventName);
	TSharedPtr<FJsonObject> Request = MakeShared<FJsonObject>();
	Request->SetStringField(ToolInfo::FieldName_Path, Path);
	Request->SetArrayField(ToolInfo::FieldName_Events, TArray<TSharedPtr<FJsonValue>>{ MakeShared<FJsonValueObject>(Event) });
	Request->SetStringField(ToolInfo::FieldName_ReadTool, ToolInfo::ToolName_ReadBlueprintEvent);

	const TSharedPtr<FJsonObject> Document = UE::CalvornBlueprint::ReadPrivate::ReadBlueprintDocument(Request, Result);
	const FString Text = FAssetOperationBase::SerializeJson(Document);
	if (!IsDocument(Text))
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Failed to read event '%s' from graph '%s' in Blueprint: %s"), *EventName, *GraphName, *Path));
		return;
	}
	Result.SetData(TEXT("content"), Text);
	// The flows stand inside each graph, not at the root, so a missing event shows in the content only.
	if (DocumentReportsMissingItem(Document, TEXT("event_flows")))
	{
		Result.AddWarningMessage(FString::Printf(TEXT("'%s' event does not exist in graph '%s' in Blueprint: %s"), *EventName, *GraphName, *Path));
		return;
	}
	Result.AddSuccessMessage(FString::Printf(TEXT("Successfully read event '%s' from graph '%s' in Blueprint: %s"), *EventName, *GraphName, *FAssetOperationBase::GetAssetNameFromPath(Path)));
}
