#include "Dom/JsonObject.h"

#include "Containers/UnrealString.h"
#include "Dom/JsonNodeAllocator.h"
#include "Math/UnrealMathUtility.h"

FJsonObject::~FJsonObject()
{
	// The fields are destroyed right after this; have their nodes on the way.
	UE::Json::Private::PrefetchChildren(Values);
}

TSharedPtr<FJsonValue> FJsonObject::GetField(const FString& FieldName, EJson JsonType) const
{
	const TSharedPtr<FJsonValue>* Field = Values.Find(FieldName);
	if (Field && Field->IsValid() && (JsonType == EJson::None || (*Field)->Type == JsonType))
	{
		return *Field;
	}
	return UE::Json::Private::MakeSharedNode<FJsonValueNull>();
}

TSharedPtr<FJsonValue> FJsonObject::TryGetField(const FString& FieldName) const
{
	const TSharedPtr<FJsonValue>* Field = Values.Find(FieldName);
	return Field && Field->IsValid() ? *Field : TSharedPtr<FJsonValue>();
}

bool FJsonObject::HasField(const FString& FieldName) const
{
	const TSharedPtr<FJsonValue>* Field = Values.Find(FieldName);
	return Field && Field->IsValid();
}

bool FJsonObject::HasTypedField(const FString& FieldName, EJson JsonType) const
{
	const TSharedPtr<FJsonValue>* Field = Values.Find(FieldName);
	return Field && Field->IsValid() && (*Field)->Type == JsonType;
}

void FJsonObject::SetField(FString&& FieldName, const TSharedPtr<FJsonValue>& Value)
{
	Values.Add(MoveTemp(FieldName), Value);
}

void FJsonObject::SetField(const FString& FieldName, const TSharedPtr<FJsonValue>& Value)
{
	Values.Add(FieldName, Value);
}

void FJsonObject::RemoveField(const FString& FieldName)
{
	Values.Remove(FieldName);
}

double FJsonObject::GetNumberField(const FString& FieldName) const
{
	return GetField<EJson::None>(FieldName)->AsNumber();
}

int32 FJsonObject::GetIntegerField(const FString& FieldName) const
{
	return FMath::TruncToInt32(GetNumberField(FieldName));
}

namespace
{
	template <typename NumberType>
	bool TryGetNumberFrom(const FJsonObject& Object, const FString& FieldName, NumberType& OutNumber)
	{
		const TSharedPtr<FJsonValue> Field = Object.TryGetField(FieldName);
		return Field.IsValid() && Field->TryGetNumber(OutNumber);
	}
}

bool FJsonObject::TryGetNumberField(const FString& FieldName, float& OutNumber) const { return TryGetNumberFrom(*this, FieldName, OutNumber); }
bool FJsonObject::TryGetNumberField(const FString& FieldName, double& OutNumber) const { return TryGetNumberFrom(*this, FieldName, OutNumber); }
bool FJsonObject::TryGetNumberField(const FString& FieldName, int8& OutNumber) const { return TryGetNumberFrom(*this, FieldName, OutNumber); }
bool FJsonObject::TryGetNumberField(const FString& FieldName, int16& OutNumber) const { return TryGetNumberFrom(*this, FieldName, OutNumber); }
bool FJsonObject::TryGetNumberField(const FString& FieldName, int32& OutNumber) const { return TryGetNumberFrom(*this, FieldName, OutNumber); }
bool FJsonObject::TryGetNumberField(const FString& FieldName, int64& OutNumber) const { return TryGetNumberFrom(*this, FieldName, OutNumber); }
bool FJsonObject::TryGetNumberField(const FString& FieldName, uint8& OutNumber) const { return TryGetNumberFrom(*this, FieldName, OutNumber); }
bool FJsonObject::TryGetNumberField(const FString& FieldName, uint16& OutNumber) const { return TryGetNumberFrom(*this, FieldName, OutNumber); }
bool FJsonObject::TryGetNumberField(const FString& FieldName, uint32& OutNumber) const { return TryGetNumberFrom(*this, FieldName, OutNumber); }
bool FJsonObject::TryGetNumberField(const FString& FieldName, uint64& OutNumber) const { return TryGetNumberFrom(*this, FieldName, OutNumber); }

void FJsonObject::SetNumberField(FString&& FieldName, double Number)
{
	Values.Add(MoveTemp(FieldName), UE::Json::Private::MakeSharedNode<FJsonValueNumber>(Number));
}

void FJsonObject::SetNumberField(const FString& FieldName, double Number)
{
	Values.Add(FieldName, UE::Json::Private::MakeSharedNode<FJsonValueNumber>(Number));
}

FString FJsonObject::GetStringField(const FString& FieldName) const
{
	return GetField<EJson::None>(FieldName)->AsString();
}

bool FJsonObject::TryGetStringField(const FString& FieldName, FString& OutString) const
{
	const TSharedPtr<FJsonValue> Field = TryGetField(FieldName);
	return Field.IsValid() && Field->TryGetString(OutString);
}

bool FJsonObject::TryGetStringArrayField(const FString& FieldName, TArray<FString>& OutArray) const
{
	const TSharedPtr<FJsonValue> Field = TryGetField(FieldName);
	const TArray<TSharedPtr<FJsonValue>>* Array = nullptr;
	if (!Field.IsValid() || !Field->TryGetArray(Array))
	{
		return false;
	}
	for (const TSharedPtr<FJsonValue>& Element : *Array)
	{
		FString String;
		if (!Element.IsValid() || !Element->TryGetString(String))
		{
			return false;
		}
		OutArray.Add(MoveTemp(String));
	}
	return true;
}

void FJsonObject::SetStringField(FString&& FieldName, FString&& StringValue)
{
	Values.Add(MoveTemp(FieldName), UE::Json::Private::MakeSharedNode<FJsonValueString>(MoveTemp(StringValue)));
}

void FJsonObject::SetStringField(FString&& FieldName, const FString& StringValue)
{
	Values.Add(MoveTemp(FieldName), UE::Json::Private::MakeSharedNode<FJsonValueString>(StringValue));
}

void FJsonObject::SetStringField(const FString& FieldName, FString&& StringValue)
{
	Values.Add(FieldName, UE::Json::Private::MakeSharedNode<FJsonValueString>(MoveTemp(StringValue)));
}

void FJsonObject::SetStringField(const FString& FieldName, const FString& StringValue)
{
	Values.Add(FieldName, UE::Json::Private::MakeSharedNode<FJsonValueString>(StringValue));
}

void FJsonObject::SetStringField(FString&& FieldName, const TCHAR* StringValue)
{
	Values.Add(MoveTemp(FieldName), UE::Json::Private::MakeSharedNode<FJsonValueString>(StringValue));
}

void FJsonObject::SetStringField(const FString& FieldName, const TCHAR* StringValue)
{
	Values.Add(FieldName, UE::Json::Private::MakeSharedNode<FJsonValueString>(StringValue));
}

bool FJsonObject::GetBoolField(const FString& FieldName) const
{
	return GetField<EJson::None>(FieldName)->AsBool();
}

bool FJsonObject::TryGetBoolField(const FString& FieldName, bool& OutBool) const
{
	const TSharedPtr<FJsonValue> Field = TryGetField(FieldName);
	return Field.IsValid() && Field->TryGetBool(OutBool);
}

void FJsonObject::SetBoolField(FString&& FieldName, bool InValue)
{
	Values.Add(MoveTemp(FieldName), UE::Json::Private::MakeSharedNode<FJsonValueBoolean>(InValue));
}

void FJsonObject::SetBoolField(const FString& FieldName, bool InValue)
{
	Values.Add(FieldName, UE::Json::Private::MakeSharedNode<FJsonValueBoolean>(InValue));
}

const TArray<TSharedPtr<FJsonValue>>& FJsonObject::GetArrayField(const FString& FieldName) const
{
	const TSharedPtr<FJsonValue>* Field = Values.Find(FieldName);
	if (Field && Field->IsValid() && (*Field)->Type == EJson::Array)
	{
		return (*Field)->AsArray();
	}
	static const TArray<TSharedPtr<FJsonValue>> EmptyArray;
	return EmptyArray;
}

bool FJsonObject::TryGetArrayField(const FString& FieldName, const TArray<TSharedPtr<FJsonValue>>*& OutArray) const
{
	const TSharedPtr<FJsonValue> Field = TryGetField(FieldName);
	return Field.IsValid() && Field->TryGetArray(OutArray);
}

void FJsonObject::SetArrayField(FString&& FieldName, TArray<TSharedPtr<FJsonValue>>&& Array)
{
	Values.Add(MoveTemp(FieldName), UE::Json::Private::MakeSharedNode<FJsonValueArray>(MoveTemp(Array)));
}

void FJsonObject::SetArrayField(FString&& FieldName, const TArray<TSharedPtr<FJsonValue>>& Array)
{
	Values.Add(MoveTemp(FieldName), UE::Json::Private::MakeSharedNode<FJsonValueArray>(Array));
}

void FJsonObject::SetArrayField(const FString& FieldName, TArray<TSharedPtr<FJsonValue>>&& Array)
{
	Values.Add(FieldName, UE::Json::Private::MakeSharedNode<FJsonValueArray>(MoveTemp(Array)));
}

void FJsonObject::SetArrayField(const FString& FieldName, const TArray<TSharedPtr<FJsonValue>>& Array)
{
	Values.Add(FieldName, UE::Json::Private::MakeSharedNode<FJsonValueArray>(Array));
}

const TSharedPtr<FJsonObject>& FJsonObject::GetObjectField(const FString& FieldName) const
{
	const TSharedPtr<FJsonValue>* Field = Values.Find(FieldName);
	if (Field && Field->IsValid() && (*Field)->Type == EJson::Object)
	{
		return (*Field)->AsObject();
	}
	// Any non-object reads as the engine's shared empty object.
	const FJsonValueNull Missing;
	return Missing.AsObject();
}

bool FJsonObject::TryGetObjectField(const FString& FieldName, const TSharedPtr<FJsonObject>*& OutObject) const
{
	const TSharedPtr<FJsonValue> Field = TryGetField(FieldName);
	return Field.IsValid() && Field->TryGetObject(OutObject);
}

void FJsonObject::SetObjectField(FString&& FieldName, const TSharedPtr<FJsonObject>& JsonObject)
{
	if (JsonObject.IsValid())
	{
		Values.Add(MoveTemp(FieldName), UE::Json::Private::MakeSharedNode<FJsonValueObject>(JsonObject));
	}
	else
	{
		Values.Add(MoveTemp(FieldName), UE::Json::Private::MakeSharedNode<FJsonValueNull>());
	}
}

void FJsonObject::SetObjectField(const FString& FieldName, const TSharedPtr<FJsonObject>& JsonObject)
{
	SetObjectField(FString(FieldName), JsonObject);
}

void FJsonObject::Duplicate(const TSharedPtr<const FJsonObject>& Source, const TSharedPtr<FJsonObject>& Dest)
{
	if (Source.IsValid() && Dest.IsValid())
	{
		for (const TPair<FString, TSharedPtr<FJsonValue>>& Pair : Source->Values)
		{
			Dest->SetField(Pair.Key, FJsonValue::Duplicate(Pair.Value));
		}
	}
}

void FJsonObject::Duplicate(const TSharedPtr<FJsonObject>& Source, TSharedPtr<FJsonObject>& Dest)
{
	Duplicate(ConstCastSharedPtr<const FJsonObject>(Source), Dest);
}
