#include "BlueprintReadUtilsPrivate.h"

#include "AssetOperationBase.h"
#include "BlueprintReadUtils.h"
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

	/** Pins without links that print alike: same name spelling, default text, direction and type. */
	struct FLoosePinKey
	{
		/** The first pin seen with this content; the graph outlives the document built from it. */
		const UEdGraphPin* Pin = nullptr;
		int32 TypeIndex = INDEX_NONE;
		uint32 Hash = 0;

		bool operator==(const FLoosePinKey& Other) const
		{
			// The display index names one exact spelling, so equal indices print equal names.
			return TypeIndex == Other.TypeIndex
				&& Pin->Direction == Other.Pin->Direction
				&& Pin->PinName.GetDisplayIndex() == Other.Pin->PinName.GetDisplayIndex()
				&& Pin->PinName.GetNumber() == Other.Pin->PinName.GetNumber()
				&& Pin->DefaultValue.Equals(Other.Pin->DefaultValue, ESearchCase::CaseSensitive);
		}

		friend uint32 GetTypeHash(const FLoosePinKey& Key)
		{
			return Key.Hash;
		}
	};

	/** What a call node's "properties" print: the function's name, its class's name (or none) and purity. */
	struct FCallPropertiesKey
	{
		uint64 FunctionName = 0;
		uint64 ClassName = 0;
		bool bPure = false;

		bool operator==(const FCallPropertiesKey& Other) const
		{
			return FunctionName == Other.FunctionName && ClassName == Other.ClassName && bPure == Other.bPure;
		}

		friend uint32 GetTypeHash(const FCallPropertiesKey& Key)
		{
			return HashCombineFast(HashCombineFast(GetTypeHash(Key.FunctionName), GetTypeHash(Key.ClassName)), Key.bPure ? 1u : 0u);
		}
	};

	/** A text compared to the letter, as a client reads it; the hash ignores case, which equal texts agree on. */
	struct FExactText
	{
		FString Text;

		bool operator==(const FExactText& Other) const
		{
			return Text.Equals(Other.Text, ESearchCase::CaseSensitive);
		}

		friend uint32 GetTypeHash(const FExactText& Key)
		{
			return GetTypeHash(Key.Text);
		}
	};

	/** What a node lends to every link that names it. */
	struct FNodeNaming
	{
		FString MenuTitle;
		TSharedPtr<FJsonValue> MenuTitleValue;
		TSharedPtr<FJsonValue> ShortGuidValue;
	};

	/** What one document computes many times over. Its maps are looked up, never iterated, so their order cannot show. */
	struct FDocumentCache
	{
		/** By type; few enough that a linear search wins. */
		TArray<TPair<FEdGraphPinType, TSharedPtr<FJsonValue>>> PinTypes;
		TMap<const UEdGraphNode*, FNodeNaming> Nodes;
		/** By display index and number, which fix the spelling. */
		TMap<uint64, TSharedPtr<FJsonValue>> Names;
		/** A link's entry, by the pin it names. */
		TMap<const UEdGraphPin*, TSharedPtr<FJsonValue>> Connections;
		TMap<FLoosePinKey, TSharedPtr<FJsonValue>> LoosePins;
		TMap<FCallPropertiesKey, TSharedPtr<FJsonValue>> CallProperties;
		/** Titles and categories, which nodes of one kind repeat. */
		TMap<FExactText, TSharedPtr<FJsonValue>> Texts;
		TSharedPtr<FJsonValue> Input;
		TSharedPtr<FJsonValue> Output;
		TSharedPtr<FJsonValue> Empty;
	};

	namespace
	{
		thread_local FDocumentCache* ActiveDocumentCache = nullptr;

		// Keys of the pin and link entries, made once rather than from their literals for every field.
		const FString NameKey(TEXT("name"));
		const FString ValueKey(TEXT("value"));
		const FString DirectionKey(TEXT("direction"));
		const FString TypeKey(TEXT("type"));
		const FString ConnectionsKey(TEXT("connections"));
		const FString NodeTitleKey(TEXT("node_title"));
		const FString NodeGuidKey(TEXT("node_guid"));
		const FString PinNameKey(TEXT("pin_name"));

		/** The display index and number of a name, which fix its spelling. */
		uint64 SpellingOf(FName Name)
		{
			return (static_cast<uint64>(Name.GetDisplayIndex()) << 32) | static_cast<uint32>(Name.GetNumber());
		}

		TSharedPtr<FJsonValue> MakeStringValue(FString&& Text)
		{
			return MakeShared<FJsonValueString>(MoveTemp(Text));
		}

		/** Index of the type in the cache, added when new. */
		int32 FindOrAddPinType(FDocumentCache& Cache, const FEdGraphPinType& PinType)
		{
			for (int32 Index = 0; Index < Cache.PinTypes.Num(); ++Index)
			{
				if (Cache.PinTypes[Index].Key == PinType)
				{
					return Index;
				}
			}
			Cache.PinTypes.Emplace(PinType, MakeValue(FAssetOperationBase::ConvertEdGraphPinTypeToJson(PinType)));
			return Cache.PinTypes.Num() - 1;
		}

		FNodeNaming& FindOrAddNaming(FDocumentCache& Cache, const UEdGraphNode* Node)
		{
			if (FNodeNaming* Known = Cache.Nodes.Find(Node))
			{
				return *Known;
			}
			FNodeNaming Naming;
			Naming.MenuTitle = GetNodeTitleString(Node, ENodeTitleType::MenuTitle);
			return Cache.Nodes.Add(Node, MoveTemp(Naming));
		}

		/** A link's entry naming Linked, a pin of LinkedNode. */
		TSharedPtr<FJsonObject> MakeConnection(const UEdGraphPin& Linked, const UEdGraphNode* LinkedNode)
		{
			TSharedPtr<FJsonObject> Connection = MakeShared<FJsonObject>();
			Connection->Values.Reserve(3);
			Connection->SetField(NodeTitleKey, DocumentValues::MenuTitle(LinkedNode));
			Connection->SetField(NodeGuidKey, DocumentValues::ShortGuid(LinkedNode));
			Connection->SetField(PinNameKey, DocumentValues::Name(Linked.PinName));
			return Connection;
		}
	}

	FDocumentScope::FDocumentScope()
		: PreviousCache(ActiveDocumentCache)
		, OwnCache(ActiveDocumentCache ? nullptr : new FDocumentCache())
	{
		if (OwnCache)
		{
			ActiveDocumentCache = OwnCache;
		}
	}

	FDocumentScope::~FDocumentScope()
	{
		if (OwnCache)
		{
			ActiveDocumentCache = PreviousCache;
			delete OwnCache;
		}
	}

	TSharedPtr<FJsonObject> PinTypeToJson(const FEdGraphPinType& PinType)
	{
		FDocumentCache* Cache = ActiveDocumentCache;
		if (!Cache)
		{
			return FAssetOperationBase::ConvertEdGraphPinTypeToJson(PinType);
		}
		return Cache->PinTypes[FindOrAddPinType(*Cache, PinType)].Value->AsObject();
	}

	FString GetMenuTitle(const UEdGraphNode* Node)
	{
		FDocumentCache* Cache = ActiveDocumentCache;
		return Cache ? FindOrAddNaming(*Cache, Node).MenuTitle : GetNodeTitleString(Node, ENodeTitleType::MenuTitle);
	}

	TSharedPtr<FJsonValue> DocumentValues::PinType(const FEdGraphPinType& PinType)
	{
		FDocumentCache* Cache = ActiveDocumentCache;
		return Cache ? Cache->PinTypes[FindOrAddPinType(*Cache, PinType)].Value : MakeValue(FAssetOperationBase::ConvertEdGraphPinTypeToJson(PinType));
	}

	TSharedPtr<FJsonValue> DocumentValues::Name(FName Name)
	{
		FDocumentCache* Cache = ActiveDocumentCache;
		if (!Cache)
		{
			return MakeStringValue(Name.ToString());
		}
		const uint64 Key = SpellingOf(Name);
		if (const TSharedPtr<FJsonValue>* Known = Cache->Names.Find(Key))
		{
			return *Known;
		}
		return Cache->Names.Add(Key, MakeStringValue(Name.ToString()));
	}

	TSharedPtr<FJsonValue> DocumentValues::Direction(bool bInput)
	{
		FDocumentCache* Cache = ActiveDocumentCache;
		const TCHAR* Word = bInput ? TEXT("Input") : TEXT("Output");
		if (!Cache)
		{
			return MakeStringValue(FString(Word));
		}
		TSharedPtr<FJsonValue>& Value = bInput ? Cache->Input : Cache->Output;
		if (!Value)
		{
			Value = MakeStringValue(FString(Word));
		}
		return Value;
	}

	TSharedPtr<FJsonValue> DocumentValues::MenuTitle(const UEdGraphNode* Node)
	{
		FDocumentCache* Cache = ActiveDocumentCache;
		if (!Cache)
		{
			return MakeStringValue(GetNodeTitleString(Node, ENodeTitleType::MenuTitle));
		}
		FNodeNaming& Naming = FindOrAddNaming(*Cache, Node);
		if (!Naming.MenuTitleValue)
		{
			Naming.MenuTitleValue = Text(FString(Naming.MenuTitle));
		}
		return Naming.MenuTitleValue;
	}

	TSharedPtr<FJsonValue> DocumentValues::ShortGuid(const UEdGraphNode* Node)
	{
		FDocumentCache* Cache = ActiveDocumentCache;
		if (!Cache)
		{
			return MakeStringValue(FBlueprintReadUtils::GetShortGuid(Node->NodeGuid));
		}
		FNodeNaming& Naming = FindOrAddNaming(*Cache, Node);
		if (!Naming.ShortGuidValue)
		{
			Naming.ShortGuidValue = MakeStringValue(FBlueprintReadUtils::GetShortGuid(Node->NodeGuid));
		}
		return Naming.ShortGuidValue;
	}

	TSharedPtr<FJsonValue> DocumentValues::Text(FString&& Text)
	{
		FDocumentCache* Cache = ActiveDocumentCache;
		if (!Cache)
		{
			return MakeStringValue(MoveTemp(Text));
		}
		FExactText Key{MoveTemp(Text)};
		if (const TSharedPtr<FJsonValue>* Known = Cache->Texts.Find(Key))
		{
			return *Known;
		}
		TSharedPtr<FJsonValue> Value = MakeValue(Key.Text);
		Cache->Texts.Add(MoveTemp(Key), Value);
		return Value;
	}

	TSharedPtr<FJsonValue> DocumentValues::String(const FString& Text)
	{
		FDocumentCache* Cache = ActiveDocumentCache;
		if (Cache && Text.IsEmpty())
		{
			if (!Cache->Empty)
			{
				Cache->Empty = MakeStringValue(FString());
			}
			return Cache->Empty;
		}
		return MakeValue(Text);
	}

	TSharedPtr<FJsonValue> DocumentValues::CallProperties(FName FunctionName, const UClass* FunctionClass, bool bPure, TFunctionRef<TSharedPtr<FJsonObject>()> Make)
	{
		FDocumentCache* Cache = ActiveDocumentCache;
		if (!Cache)
		{
			return MakeValue(Make());
		}
		FCallPropertiesKey Key;
		Key.FunctionName = SpellingOf(FunctionName);
		Key.ClassName = FunctionClass ? SpellingOf(FunctionClass->GetFName()) : ~0ull;
		Key.bPure = bPure;
		if (const TSharedPtr<FJsonValue>* Known = Cache->CallProperties.Find(Key))
		{
			return *Known;
		}
		return Cache->CallProperties.Add(Key, MakeValue(Make()));
	}

	TSharedPtr<FJsonValue> DocumentValues::Pin(const UEdGraphPin& Pin)
	{
		FDocumentCache* Cache = ActiveDocumentCache;
		FLoosePinKey LooseKey;
		if (Cache && Pin.LinkedTo.Num() == 0)
		{
			LooseKey.Pin = &Pin;
			LooseKey.TypeIndex = FindOrAddPinType(*Cache, Pin.PinType);
			LooseKey.Hash = HashCombineFast(HashCombineFast(GetTypeHash(Pin.PinName), GetTypeHash(Pin.DefaultValue)), static_cast<uint32>(LooseKey.TypeIndex) * 2 + (Pin.Direction == EGPD_Input ? 1 : 0));
			if (const TSharedPtr<FJsonValue>* Known = Cache->LoosePins.Find(LooseKey))
			{
				return *Known;
			}
		}

		TSharedPtr<FJsonObject> PinObject = MakeShared<FJsonObject>();
		PinObject->Values.Reserve(5);
		PinObject->SetField(NameKey, Name(Pin.PinName));
		PinObject->SetField(ValueKey, String(Pin.DefaultValue));
		PinObject->SetField(DirectionKey, Direction(Pin.Direction == EGPD_Input));
		PinObject->SetField(TypeKey, LooseKey.Pin ? Cache->PinTypes[LooseKey.TypeIndex].Value : PinType(Pin.PinType));

		TArray<TSharedPtr<FJsonValue>> Connections;
		Connections.Reserve(Pin.LinkedTo.Num());
		for (const UEdGraphPin* Linked : Pin.LinkedTo)
		{
			const UEdGraphNode* LinkedNode = Linked ? Linked->GetOwningNodeUnchecked() : nullptr;
			if (!LinkedNode)
			{
				continue;
			}
			if (!Cache)
			{
				Connections.Add(MakeValue(MakeConnection(*Linked, LinkedNode)));
				continue;
			}
			if (const TSharedPtr<FJsonValue>* Known = Cache->Connections.Find(Linked))
			{
				Connections.Add(*Known);
				continue;
			}
			TSharedPtr<FJsonValue> Connection = MakeValue(MakeConnection(*Linked, LinkedNode));
			Cache->Connections.Add(Linked, Connection);
			Connections.Add(MoveTemp(Connection));
		}
		if (Connections.Num() > 0)
		{
			PinObject->SetArrayField(ConnectionsKey, MoveTemp(Connections));
		}

		TSharedPtr<FJsonValue> Value = MakeValue(PinObject);
		if (LooseKey.Pin)
		{
			Cache->LoosePins.Add(LooseKey, Value);
		}
		return Value;
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
