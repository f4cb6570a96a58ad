#include "BlueprintReadUtilsPrivate.h"

#include "AssetOperationBase.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraph/EdGraphSchema.h"
#include "ToolInfo.h"

namespace UE::CalvornBlueprint::ReadPrivate
{
	bool TryGetReadTool(const TSharedPtr<FJsonObject>& Options, FString& OutReadTool)
	{
		if (!Options.IsValid())
		{
			return false;
		}
		const TSharedPtr<FJsonValue> Field = Options->TryGetField(Calvorn::ToolInfo::FieldName_ReadTool);
		if (!Field.IsValid() || Field->Type != EJson::String)
		{
			return false;
		}
		OutReadTool = Field->AsString();
		return true;
	}

	bool IsReadTool(const TSharedPtr<FJsonObject>& Options, const TCHAR* ToolName)
	{
		FString ReadTool;
		return TryGetReadTool(Options, ReadTool) && ReadTool.Equals(ToolName, ESearchCase::IgnoreCase);
	}

	bool IsFinalizeRead(const TSharedPtr<FJsonObject>& Options)
	{
		bool bFinalize = false;
		return Options.IsValid() && Options->TryGetBoolField(TEXT("finalize_modifications"), bFinalize) && bFinalize;
	}

	const TCHAR* GetMissingStatusWord(bool bFinalizeRead)
	{
		// A read-back follows a change, so an item it cannot find was removed by that change on purpose.
		return bFinalizeRead ? TEXT("deleted") : TEXT("not_found");
	}

	FString MissingFieldMessage(const TCHAR* FieldName)
	{
		return FString::Printf(TEXT("Missing required field '%s'"), FieldName);
	}

	TSharedPtr<FJsonObject> PinTypeToJson(const FEdGraphPinType& PinType)
	{
		return FAssetOperationBase::ConvertEdGraphPinTypeToJson(PinType);
	}

	FString GetSchemaClassName(const UEdGraph* Graph)
	{
		const UEdGraphSchema* Schema = Graph ? Graph->GetSchema() : nullptr;
		return Schema ? Schema->GetClass()->GetName() : FString(TEXT("Unknown"));
	}

	FString GetNodeTitleString(const UEdGraphNode* Node, int32 TitleType)
	{
		return Node->GetNodeTitle(static_cast<ENodeTitleType::Type>(TitleType)).ToString();
	}
}
