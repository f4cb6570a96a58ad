#pragma once

#include "CoreMinimal.h"
#include "Misc/Optional.h"

class FJsonObject;
struct FEdGraphPinType;

/** What a request asks for a node or a pin. Unknown words leave the default (Add). */
enum class EPopulateAction : uint8
{
	Add,
	Modify,
	Remove,
};

/** What a request asks for a connection. The default is Remove, so an entry without "action" is inert in populate. */
enum class EConnectionAction : uint8
{
	Add,
	Remove,
};

/**
 * A pin type as the request spells it, before anything is looked up: the shared pin type JSON
 * ("category", "sub_category", "sub_category_object", "container_type" or its alias "container", the flags,
 * and for a map "value_type"). Members missing from the JSON stay empty.
 */
struct CALVORNTOOLKIT_BLUEPRINT_API FPinTypeRecord
{
	FString Category;
	FString SubCategory;
	FString SubCategoryObject;
	FString ContainerType;
	bool bIsReference = false;
	bool bIsConst = false;
	bool bIsWeakPointer = false;
	bool bIsUObjectWrapper = false;
	FString ValueCategory;
	FString ValueSubCategory;
	FString ValueSubCategoryObject;
};

/** One entry of a node's "pins". */
struct CALVORNTOOLKIT_BLUEPRINT_API FPinModificationRecord
{
	EPopulateAction Action = EPopulateAction::Add;
	FString PinName;
	FString Value;
	/** Set only when "type" was present and an object. */
	TOptional<FPinTypeRecord> PinType;
};

/** One entry of "nodes". */
struct CALVORNTOOLKIT_BLUEPRINT_API FNodeModificationRecord
{
	/** The client's own id for the node in this request; connections refer to it. */
	FString RequestGuid;
	EPopulateAction Action = EPopulateAction::Add;
	FString ClassName;
	/** May be rewritten while spawning; OriginalMenuTitle keeps the request's text. */
	FString MenuTitle;
	FString OriginalMenuTitle;
	FString TargetClass;
	FString TargetFunction;
	FString MenuCategory;
	/** String members of "node_metadata"; keys compare without case (FString's own rule). */
	TMap<FString, FString> NodeMetadata;
	TArray<FPinModificationRecord> Pins;
	/** No request fills these; the variable and parent-call routes honour them when both are set. */
	TOptional<int32> NodePosX;
	TOptional<int32> NodePosY;

	/** The metadata value, or null when the key is absent. */
	[[nodiscard]] const FString* FindMetadata(const TCHAR* Key) const { return NodeMetadata.Find(FString(Key)); }
	/** The metadata value, or empty when the key is absent. */
	[[nodiscard]] FString GetMetadata(const TCHAR* Key) const
	{
		const FString* Value = FindMetadata(Key);
		return Value ? *Value : FString();
	}
};

/** One entry of "connections". */
struct CALVORNTOOLKIT_BLUEPRINT_API FConnectionModificationRecord
{
	EConnectionAction Action = EConnectionAction::Remove;
	FString SourceNodeGuid;
	FString SourcePinName;
	FString TargetNodeGuid;
	FString TargetPinName;
};

/** One parameter of a function record. */
struct CALVORNTOOLKIT_BLUEPRINT_API FFunctionParameterRecord
{
	FString Name;
	/** "input" unless the request says otherwise. */
	FString Direction;
	FPinTypeRecord Type;
};

/** One entry of bp_create_graph's "functions". */
struct CALVORNTOOLKIT_BLUEPRINT_API FFunctionRecord
{
	FString Name;
	bool bIsDelegate = false;
	bool bIsRepNotify = false;
	FString ReplicatedProperty;
	TArray<FFunctionParameterRecord> Parameters;
	/** Absent when "return_type" is missing or not parseable. */
	TOptional<FPinTypeRecord> ReturnType;
	/** The name a "return_type" object carries, if any. */
	FString ReturnName;
};

/**
 * Reads the JSON of graph requests into records. Parsers never report: they fill the record and say whether
 * it stands; what a failed parse means is the caller's decision. A field is read when its key exists with a
 * non-null value, as the value's string reading (a number reads as its text, an object or array as empty).
 */
class CALVORNTOOLKIT_BLUEPRINT_API FGraphModificationParser
{
public:
	/** False only for a null object. */
	static bool ParseNode(const TSharedPtr<FJsonObject>& Json, FNodeModificationRecord& OutRecord);
	/** False only for a null object. */
	static bool ParsePin(const TSharedPtr<FJsonObject>& Json, FPinModificationRecord& OutRecord);
	/** False only for a null object. */
	static bool ParseConnection(const TSharedPtr<FJsonObject>& Json, FConnectionModificationRecord& OutRecord);
	/** False only for a null object; an empty object gives an empty record. */
	static bool ParsePinType(const TSharedPtr<FJsonObject>& Json, FPinTypeRecord& OutRecord);
	/** False without a name or without a usable "type" object. DefaultDirection fills a missing "direction". */
	static bool ParseFunctionParameter(const TSharedPtr<FJsonObject>& Json, FFunctionParameterRecord& OutRecord, const FString& DefaultDirection = TEXT("input"));
	/** False for a null object or an empty "name". */
	static bool ParseFunctionRecord(const TSharedPtr<FJsonObject>& Json, FFunctionRecord& OutRecord);

	/** "add", "modify", "remove" without case; anything else is Add. */
	[[nodiscard]] static EPopulateAction ParsePopulateAction(const FString& Word);
	/** "add"/"create" and "remove" without case; anything else is Remove. */
	[[nodiscard]] static EConnectionAction ParseConnectionAction(const FString& Word);

	/**
	 * The pin type a record stands for: category and sub category as names ("float" and "double" become a
	 * real of that precision unless a sub category is given), the sub category object loaded from its path
	 * (left null, silently, when it does not load), the container, the map's value type and the flags.
	 */
	[[nodiscard]] static FEdGraphPinType BuildPinType(const FPinTypeRecord& Record);
};
