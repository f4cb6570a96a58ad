#pragma once

#include "CoreMinimal.h"
#include "Dom/JsonValue.h"
#include "JsonGlobals.h"
#include "Serialization/JsonTypes.h"

/**
 * A JSON object: named values in the order they were added. Names match as FString keys of a TMap
 * do, so "Name" and "name" are the same field; setting an existing field replaces it where it
 * stands, and after a RemoveField the next new field takes the freed place.
 *
 * Get*Field answer the engine's defaults (0, "", false, an empty array or object) for a field that
 * is missing or cannot be read as the asked kind; TryGet*Field return false instead.
 */
class FJsonObject
{
public:
	TMap<FString, TSharedPtr<FJsonValue>> Values;

	FJsonObject() = default;
	FJsonObject(const FJsonObject&) = default;
	FJsonObject(FJsonObject&&) = default;
	FJsonObject& operator=(const FJsonObject&) = default;
	FJsonObject& operator=(FJsonObject&&) = default;
	JSON_API ~FJsonObject();

	template <EJson JsonType>
	TSharedPtr<FJsonValue> GetField(const FString& FieldName) const
	{
		return GetField(FieldName, JsonType);
	}

	/** The field if present and of the given kind (any kind for EJson::None), else a null value. */
	JSON_API TSharedPtr<FJsonValue> GetField(const FString& FieldName, EJson JsonType) const;

	/** The field, or an invalid pointer when it is missing. */
	JSON_API TSharedPtr<FJsonValue> TryGetField(const FString& FieldName) const;

	JSON_API bool HasField(const FString& FieldName) const;

	template <EJson JsonType>
	bool HasTypedField(const FString& FieldName) const
	{
		return HasTypedField(FieldName, JsonType);
	}

	JSON_API bool HasTypedField(const FString& FieldName, EJson JsonType) const;

	JSON_API void SetField(FString&& FieldName, const TSharedPtr<FJsonValue>& Value);
	JSON_API void SetField(const FString& FieldName, const TSharedPtr<FJsonValue>& Value);

	JSON_API void RemoveField(const FString& FieldName);

	JSON_API double GetNumberField(const FString& FieldName) const;

	/**
	 * The number truncated toward zero, as the engine's cast does; a value outside int32 (or NaN)
	 * gives INT32_MIN, what that cast yields on x64, instead of undefined behaviour.
	 */
	JSON_API int32 GetIntegerField(const FString& FieldName) const;

	// The integer forms round half away from zero and fail when the value is out of the type's range.
	JSON_API bool TryGetNumberField(const FString& FieldName, float& OutNumber) const;
	JSON_API bool TryGetNumberField(const FString& FieldName, double& OutNumber) const;
	JSON_API bool TryGetNumberField(const FString& FieldName, int8& OutNumber) const;
	JSON_API bool TryGetNumberField(const FString& FieldName, int16& OutNumber) const;
	JSON_API bool TryGetNumberField(const FString& FieldName, int32& OutNumber) const;
	JSON_API bool TryGetNumberField(const FString& FieldName, int64& OutNumber) const;
	JSON_API bool TryGetNumberField(const FString& FieldName, uint8& OutNumber) const;
	JSON_API bool TryGetNumberField(const FString& FieldName, uint16& OutNumber) const;
	JSON_API bool TryGetNumberField(const FString& FieldName, uint32& OutNumber) const;
	JSON_API bool TryGetNumberField(const FString& FieldName, uint64& OutNumber) const;

	JSON_API void SetNumberField(FString&& FieldName, double Number);
	JSON_API void SetNumberField(const FString& FieldName, double Number);

	JSON_API FString GetStringField(const FString& FieldName) const;
	JSON_API bool TryGetStringField(const FString& FieldName, FString& OutString) const;

	/**
	 * Appends the elements of an array field to OutArray. Fails when the field is missing, is not an
	 * array, or holds an element without a string reading (what was appended before it stays).
	 */
	JSON_API bool TryGetStringArrayField(const FString& FieldName, TArray<FString>& OutArray) const;

	/** Array of strings parsed as enumerators with LexTryParseString; unparsable strings are skipped. */
	template <typename TEnum>
	bool TryGetEnumArrayField(const FString& FieldName, TArray<TEnum>& OutArray) const
	{
		TArray<FString> Strings;
		if (!TryGetStringArrayField(FieldName, Strings))
		{
			return false;
		}
		OutArray.Empty();
		for (const FString& String : Strings)
		{
			TEnum Value;
			if (LexTryParseString(Value, *String))
			{
				OutArray.Add(Value);
			}
		}
		return true;
	}

	JSON_API void SetStringField(FString&& FieldName, FString&& StringValue);
	JSON_API void SetStringField(FString&& FieldName, const FString& StringValue);
	JSON_API void SetStringField(const FString& FieldName, FString&& StringValue);
	JSON_API void SetStringField(const FString& FieldName, const FString& StringValue);
	JSON_API void SetStringField(FString&& FieldName, const TCHAR* StringValue);
	JSON_API void SetStringField(const FString& FieldName, const TCHAR* StringValue);

	JSON_API bool GetBoolField(const FString& FieldName) const;
	JSON_API bool TryGetBoolField(const FString& FieldName, bool& OutBool) const;

	JSON_API void SetBoolField(FString&& FieldName, bool InValue);
	JSON_API void SetBoolField(const FString& FieldName, bool InValue);

	/** The array field, or an empty array when it is missing or not an array. */
	JSON_API const TArray<TSharedPtr<FJsonValue>>& GetArrayField(const FString& FieldName) const;
	JSON_API bool TryGetArrayField(const FString& FieldName, const TArray<TSharedPtr<FJsonValue>>*& OutArray) const;

	JSON_API void SetArrayField(FString&& FieldName, TArray<TSharedPtr<FJsonValue>>&& Array);
	JSON_API void SetArrayField(FString&& FieldName, const TArray<TSharedPtr<FJsonValue>>& Array);
	JSON_API void SetArrayField(const FString& FieldName, TArray<TSharedPtr<FJsonValue>>&& Array);
	JSON_API void SetArrayField(const FString& FieldName, const TArray<TSharedPtr<FJsonValue>>& Array);

	/**
	 * The object field. When it is missing or not an object this is a shared empty object, as in the
	 * engine: read from it, never write to it.
	 */
	JSON_API const TSharedPtr<FJsonObject>& GetObjectField(const FString& FieldName) const;
	JSON_API bool TryGetObjectField(const FString& FieldName, const TSharedPtr<FJsonObject>*& OutObject) const;

	/** An invalid object pointer is stored as a null value. */
	JSON_API void SetObjectField(FString&& FieldName, const TSharedPtr<FJsonObject>& JsonObject);
	JSON_API void SetObjectField(const FString& FieldName, const TSharedPtr<FJsonObject>& JsonObject);

	/** Deep-copies every field of Source into Dest (fields already in Dest stay unless replaced). */
	static JSON_API void Duplicate(const TSharedPtr<const FJsonObject>& Source, const TSharedPtr<FJsonObject>& Dest);
	static JSON_API void Duplicate(const TSharedPtr<FJsonObject>& Source, TSharedPtr<FJsonObject>& Dest);
};
