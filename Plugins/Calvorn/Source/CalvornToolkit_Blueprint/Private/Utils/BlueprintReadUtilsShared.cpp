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

	/** What one document computes many times over: pin type objects, and node menu titles that every link repeats. */
	struct FPinTypeCache
	{
		/** By type; few enough that a linear search wins. */
		TArray<TPair<FEdGraphPinType, TSharedPtr<FJsonObject>>> Entries;
		/** Looked up by node, never iterated, so its order cannot show. */
		TMap<const UEdGraphNode*, FString> MenuTitles;
	};

	namespace
	{
		thread_local FPinTypeCache* ActivePinTypeCache = nullptr;
	}

	FDocumentScope::FDocumentScope()
		: PreviousCache(ActivePinTypeCache)
		, OwnCache(ActivePinTypeCache ? nullptr : new FPinTypeCache())
	{
		if (OwnCache)
		{
			ActivePinTypeCache = OwnCache;
		}
	}

	FDocumentScope::~FDocumentScope()
	{
		if (OwnCache)
		{
			ActivePinTypeCache = PreviousCache;
			delete OwnCache;
		}
	}

	TSharedPtr<FJsonObject> PinTypeToJson(const FEdGraphPinType& PinType)
	{
		FPinTypeCache* Cache = ActivePinTypeCache;
		if (!Cache)
		{
			return FAssetOperationBase::ConvertEdGraphPinTypeToJson(PinType);
		}
		for (const TPair<FEdGraphPinType, TSharedPtr<FJsonObject>>& Entry : Cache->Entries)
		{
			if (Entry.Key == PinType)
			{
				return Entry.Value;
			}
		}
		TSharedPtr<FJsonObject> Json = FAssetOperationBase::ConvertEdGraphPinTypeToJson(PinType);
		Cache->Entries.Emplace(PinType, Json);
		return Json;
	}

	FString GetSchemaClassName(const UEdGraph* Graph)
	{
		const UEdGraphSchema* Schema = Graph ? Graph->GetSchema() : nullptr;
		return Schema ? Schema->GetClass()->GetName() : FString(TEXT("Unknown"));
	}

	FString GetMenuTitle(const UEdGraphNode* Node)
	{
		FPinTypeCache* Cache = ActivePinTypeCache;
		if (!Cache)
		{
			return GetNodeTitleString(Node, ENodeTitleType::MenuTitle);
		}
		if (const FString* Known = Cache->MenuTitles.Find(Node))
		{
			return *Known;
		}
		return Cache->MenuTitles.Add(Node, GetNodeTitleString(Node, ENodeTitleType::MenuTitle));
	}

	FString GetNodeTitleString(const UEdGraphNode* Node, int32 TitleType)
	{
		return Node->GetNodeTitle(static_cast<ENodeTitleType::Type>(TitleType)).ToString();
	}
}
