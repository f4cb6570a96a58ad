#include "Populate/GraphModificationRecords.h"

#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraphSchema_K2.h"
#include "UObject/Object.h"
#include "UObject/SoftObjectPath.h"
#include "UObject/UObjectGlobals.h"

namespace
{
	/**
	 * A field's text when the key exists with a non-null value: a string as it stands, a number or a
	 * boolean as its text, and anything without a string reading (object, array) as empty.
	 */
	FString ReadField(const FJsonObject& Json, const TCHAR* Key)
	{
		const TSharedPtr<FJsonValue> Value = Json.TryGetField(Key);
		if (!Value.IsValid() || Value->IsNull())
		{
			return FString();
		}
		return Value->AsString();
	}

	bool HasNonNullField(const FJsonObject& Json, const TCHAR* Key)
	{
		const TSharedPtr<FJsonValue> Value = Json.TryGetField(Key);
		return Value.IsValid() && !Value->IsNull();
	}

	/** A boolean field; a missing or non-boolean value is false. */
	bool ReadFlag(const FJsonObject& Json, const TCHAR* Key)
	{
		bool bValue = false;
		return Json.TryGetBoolField(Key, bValue) && bValue;
	}

	/** The object under Key, or null when it is missing or of another type. */
	TSharedPtr<FJsonObject> ReadObject(const FJsonObject& Json, const TCHAR* Key)
	{
		const TSharedPtr<FJsonObject>* Object = nullptr;
		if (Json.TryGetObjectField(Key, Object) && Object && Object->IsValid())
		{
			return *Object;
		}
		return nullptr;
	}

	/**
	 * The type object a pin type names. A path is loaded; a bare name that no path reaches is looked up among
	 * the types already known, so that "Actor" means the same as "/Script/Engine.Actor". Null, silently, when
	 * neither finds it.
	 */
	UObject* LoadTypeObject(const FString& PathOrName)
	{
		if (PathOrName.IsEmpty())
		{
			return nullptr;
		}
		const FSoftObjectPath Path(PathOrName);
		if (UObject* Loaded = Path.TryLoad())
		{
			return Loaded;
		}
		if (!PathOrName.Contains(TEXT("/")) && !PathOrName.Contains(TEXT(".")))
		{
			return StaticFindFirstObject(UObject::StaticClass(), *PathOrName);
		}
		return nullptr;
	}

	/** "float" and "double" name a real of that precision; the editor never stores either as a category. */
	void NormaliseRealCategory(const FString& CategoryWord, FName& InOutCategory, FName& InOutSubCategory)
	{
		if (CategoryWord.Equals(TEXT("float"), ESearchCase::IgnoreCase))
		{
			InOutCategory = UEdGraphSchema_K2::PC_Real;
			InOutSubCategory = UEdGraphSchema_K2::PC_Float;
		}
		else if (CategoryWord.Equals(TEXT("double"), ESearchCase::IgnoreCase))
		{
			InOutCategory = UEdGraphSchema_K2::PC_Real;
			InOutSubCategory = UEdGraphSchema_K2::PC_Double;
		}
	}

	EPinContainerType ParseContainerWord(const FString& Word)
	{
		if (Word.Equals(TEXT("array"), ESearchCase::IgnoreCase))
		{
			return EPinContainerType::Array;
		}
		if (Word.Equals(TEXT("set"), ESearchCase::IgnoreCase))
		{
			return EPinContainerType::Set;
		}
		if (Word.Equals(TEXT("map"), ESearchCase::IgnoreCase))
		{
			return EPinContainerType::Map;
		}
		return EPinContainerType::None;
	}
}

EPopulateAction FGraphModificationParser::ParsePopulateAction(const FString& Word)
{
	if (Word.Equals(TEXT("modify"), ESearchCase::IgnoreCase))
	{
		return EPopulateAction::Modify;
	}
	if (Word.Equals(TEXT("remove"), ESearchCase::IgnoreCase))
	{
		return EPopulateAction::Remove;
	}
	return EPopulateAction::Add;
}

EConnectionAction FGraphModificationParser::ParseConnectionAction(const FString& Word)
{
	if (Word.Equals(TEXT("add"), ESearchCase::IgnoreCase) || Word.Equals(TEXT("create"), ESearchCase::IgnoreCase))
	{
		return EConnectionAction::Add;
	}
	// Anything unrecognised, like no word at all, stays inert: a wire is only made when asked for plainly.
	return EConnectionAction::Remove;
}

bool FGraphModificationParser::ParsePinType(const TSharedPtr<FJsonObject>& Json, FPinTypeRecord& OutRecord)
{
	if (!Json.IsValid())
	{
		return false;
	}
	OutRecord = FPinTypeRecord();
	OutRecord.Category = ReadField(*Json, TEXT("category"));
	OutRecord.SubCategory = ReadField(*Json, TEXT("sub_category"));
	OutRecord.SubCategoryObject = ReadField(*Json, TEXT("sub_category_object"));
	OutRecord.ContainerType = HasNonNullField(*Json, TEXT("container_type")) ? ReadField(*Json, TEXT("container_type")) : ReadField(*Json, TEXT("container"));
	OutRecord.bIsReference = ReadFlag(*Json, TEXT("is_reference"));
	OutRecord.bIsConst = ReadFlag(*Json, TEXT("is_const"));
	OutRecord.bIsWeakPointer = ReadFlag(*Json, TEXT("is_weak_pointer"));
	OutRecord.bIsUObjectWrapper = ReadFlag(*Json, TEXT("is_u_object_wrapper"));
	if (const TSharedPtr<FJsonObject> ValueType = ReadObject(*Json, TEXT("value_type")))
	{
		OutRecord.ValueCategory = ReadField(*ValueType, TEXT("category"));
		OutRecord.ValueSubCategory = ReadField(*ValueType, TEXT("sub_category"));
		OutRecord.ValueSubCategoryObject = ReadField(*ValueType, TEXT("sub_category_object"));
	}
	return true;
}

bool FGraphModificationParser::ParsePin(const TSharedPtr<FJsonObject>& Json, FPinModificationRecord& OutRecord)
{
	if (!Json.IsValid())
	{
		return false;
	}
	OutRecord = FPinModificationRecord();
	OutRecord.Action = ParsePopulateAction(ReadField(*Json, TEXT("action")));
	OutRecord.PinName = ReadField(*Json, TEXT("name"));
	OutRecord.Value = ReadField(*Json, TEXT("value"));
	if (const TSharedPtr<FJsonObject> TypeJson = ReadObject(*Json, TEXT("type")))
	{
		FPinTypeRecord Type;
		ParsePinType(TypeJson, Type);
		OutRecord.PinType = Type;
	}
	return true;
}

bool FGraphModificationParser::ParseNode(const TSharedPtr<FJsonObject>& Json, FNodeModificationRecord& OutRecord)
{
	if (!Json.IsValid())
	{
		return false;
	}
	OutRecord = FNodeModificationRecord();
	OutRecord.RequestGuid = ReadField(*Json, TEXT("node_guid"));
	OutRecord.Action = ParsePopulateAction(ReadField(*Json, TEXT("action")));
	OutRecord.ClassName = ReadField(*Json, TEXT("class_name"));
	OutRecord.MenuTitle = ReadField(*Json, TEXT("menu_title"));
	OutRecord.OriginalMenuTitle = OutRecord.MenuTitle;
	OutRecord.TargetClass = ReadField(*Json, TEXT("target_class"));
	OutRecord.TargetFunction = ReadField(*Json, TEXT("target_function"));
	OutRecord.MenuCategory = ReadField(*Json, TEXT("menu_category"));

	if (const TSharedPtr<FJsonObject> Metadata = ReadObject(*Json, TEXT("node_metadata")))
	{
		for (const TPair<FString, TSharedPtr<FJsonValue>>& Member : Metadata->Values)
		{
			FString Text;
			if (Member.Value.IsValid() && Member.Value->TryGetString(Text))
			{
				OutRecord.NodeMetadata.Add(Member.Key, Text);
			}
		}
	}

	const TArray<TSharedPtr<FJsonValue>>* Pins = nullptr;
	if (Json->TryGetArrayField(TEXT("pins"), Pins) && Pins)
	{
		for (const TSharedPtr<FJsonValue>& PinValue : *Pins)
		{
			const TSharedPtr<FJsonObject>* PinObject = nullptr;
			if (!PinValue.IsValid() || !PinValue->TryGetObject(PinObject) || !PinObject)
			{
				continue;
			}
			FPinModificationRecord Pin;
			if (ParsePin(*PinObject, Pin))
			{
				OutRecord.Pins.Add(MoveTemp(Pin));
			}
		}
	}
	return true;
}

bool FGraphModificationParser::ParseConnection(const TSharedPtr<FJsonObject>& Json, FConnectionModificationRecord& OutRecord)
{
	if (!Json.IsValid())
	{
		return false;
	}
	OutRecord = FConnectionModificationRecord();
	OutRecord.Action = ParseConnectionAction(ReadField(*Json, TEXT("action")));
	// The older "_id" spellings are honoured only when the current key is absent.
	OutRecord.SourceNodeGuid = HasNonNullField(*Json, TEXT("source_node_guid")) ? ReadField(*Json, TEXT("source_node_guid")) : ReadField(*Json, TEXT("source_node_id"));
	OutRecord.SourcePinName = ReadField(*Json, TEXT("source_pin_name"));
	OutRecord.TargetNodeGuid = HasNonNullField(*Json, TEXT("target_node_guid")) ? ReadField(*Json, TEXT("target_node_guid")) : ReadField(*Json, TEXT("target_node_id"));
	OutRecord.TargetPinName = ReadField(*Json, TEXT("target_pin_name"));
	return true;
}

bool FGraphModificationParser::ParseFunctionParameter(const TSharedPtr<FJsonObject>& Json, FFunctionParameterRecord& OutRecord, const FString& DefaultDirection)
{
	if (!Json.IsValid())
	{
		return false;
	}
	FFunctionParameterRecord Parameter;
	Parameter.Name = ReadField(*Json, TEXT("name"));
	if (Parameter.Name.IsEmpty())
	{
		return false;
	}
	const FString Direction = ReadField(*Json, TEXT("direction"));
	Parameter.Direction = Direction.IsEmpty() ? DefaultDirection : Direction;

	const TSharedPtr<FJsonObject> TypeJson = ReadObject(*Json, TEXT("type"));
	// A type without a category names no pin at all, so the parameter cannot stand.
	if (!TypeJson.IsValid() || !ParsePinType(TypeJson, Parameter.Type) || Parameter.Type.Category.IsEmpty())
	{
		return false;
	}
	OutRecord = MoveTemp(Parameter);
	return true;
}

bool FGraphModificationParser::ParseFunctionRecord(const TSharedPtr<FJsonObject>& Json, FFunctionRecord& OutRecord)
{
	if (!Json.IsValid())
	{
		return false;
	}
	FFunctionRecord Record;
	Record.Name = ReadField(*Json, TEXT("name"));
	if (Record.Name.IsEmpty())
	{
		return false;
	}
	Record.bIsDelegate = ReadFlag(*Json, TEXT("is_delegate"));
	Record.bIsRepNotify = ReadFlag(*Json, TEXT("is_rep_notify"));
	Record.ReplicatedProperty = ReadField(*Json, TEXT("replicated_property"));

	const TArray<TSharedPtr<FJsonValue>>* Parameters = nullptr;
	if (Json->TryGetArrayField(TEXT("parameters"), Parameters) && Parameters)
	{
		for (const TSharedPtr<FJsonValue>& ParameterValue : *Parameters)
		{
			const TSharedPtr<FJsonObject>* ParameterObject = nullptr;
			if (!ParameterValue.IsValid() || !ParameterValue->TryGetObject(ParameterObject) || !ParameterObject)
			{
				continue;
			}
			FFunctionParameterRecord Parameter;
			if (ParseFunctionParameter(*ParameterObject, Parameter, TEXT("input")))
			{
				Record.Parameters.Add(MoveTemp(Parameter));
			}
		}
	}

	if (const TSharedPtr<FJsonObject> ReturnJson = ReadObject(*Json, TEXT("return_type")))
	{
		// Either the pin type itself, or a named entry that carries its pin type under "type".
		Record.ReturnName = ReadField(*ReturnJson, TEXT("name"));
		const TSharedPtr<FJsonObject> NestedType = ReadObject(*ReturnJson, TEXT("type"));
		FPinTypeRecord ReturnType;
		if (ParsePinType(NestedType.IsValid() ? NestedType : ReturnJson, ReturnType) && !ReturnType.Category.IsEmpty())
		{
			Record.ReturnType = ReturnType;
		}
	}
	OutRecord = MoveTemp(Record);
	return true;
}

FEdGraphPinType FGraphModificationParser::BuildPinType(const FPinTypeRecord& Record)
{
	FEdGraphPinType PinType;
	PinType.PinCategory = Record.Category.IsEmpty() ? NAME_None : FName(*Record.Category);
	NormaliseRealCategory(Record.Category, PinType.PinCategory, PinType.PinSubCategory);
	// A sub category the request spells out wins over the precision implied by "float" or "double".
	if (!Record.SubCategory.IsEmpty())
	{
		PinType.PinSubCategory = FName(*Record.SubCategory);
	}
	PinType.PinSubCategoryObject = LoadTypeObject(Record.SubCategoryObject);

	PinType.ContainerType = ParseContainerWord(Record.ContainerType);
	if (PinType.ContainerType == EPinContainerType::Map)
	{
		FName ValueCategory = Record.ValueCategory.IsEmpty() ? NAME_None : FName(*Record.ValueCategory);
		FName ValueSubCategory;
		NormaliseRealCategory(Record.ValueCategory, ValueCategory, ValueSubCategory);
		if (!Record.ValueSubCategory.IsEmpty())
		{
			ValueSubCategory = FName(*Record.ValueSubCategory);
		}
		PinType.PinValueType.TerminalCategory = ValueCategory;
		PinType.PinValueType.TerminalSubCategory = ValueSubCategory;
		PinType.PinValueType.TerminalSubCategoryObject = LoadTypeObject(Record.ValueSubCategoryObject);
	}

	PinType.bIsReference = Record.bIsReference;
	PinType.bIsConst = Record.bIsConst;
	PinType.bIsWeakPointer = Record.bIsWeakPointer;
	PinType.bIsUObjectWrapper = Record.bIsUObjectWrapper;
	return PinType;
}
