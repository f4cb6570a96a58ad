#pragma once

#include "CoreMinimal.h"
#include "Containers/UnrealString.h"
#include "Serialization/JsonTypes.h"

class FJsonObject;
class FJsonValue;

namespace UE::Json::Private
{
	struct FValueAccess;

	/**
	 * Asks for the nodes under a container before a walk over it reaches them. A read document is
	 * larger than the caches and its nodes and texts sit wherever they were allocated, so visiting
	 * them one by one waits on memory at every step; asking for all children of a container at
	 * once lets those waits overlap. Freeing and printing a tree both use this.
	 */
	inline void PrefetchChildren(const TMap<FString, TSharedPtr<FJsonValue>>& Map)
	{
		for (const TPair<FString, TSharedPtr<FJsonValue>>& Member : Map)
		{
			__builtin_prefetch(Member.Value.Get());
			__builtin_prefetch(*Member.Key);
		}
	}

	inline void PrefetchChildren(const TArray<TSharedPtr<FJsonValue>>& Array)
	{
		for (const TSharedPtr<FJsonValue>& Element : Array)
		{
			__builtin_prefetch(Element.Get());
		}
	}
}

/**
 * A JSON value of any kind. Only the concrete subclasses below are ever created; each answers the
 * TryGet* conversions it supports and the base class answers "no" for the rest.
 *
 * The As* accessors never fail: a value of the wrong kind yields the engine's defaults
 * (0, "", false, an empty array, an empty object).
 */
class FJsonValue
{
public:
	JSON_API double AsNumber() const;
	JSON_API FString AsString() const;
	JSON_API bool AsBool() const;
	JSON_API const TArray<TSharedPtr<FJsonValue>>& AsArray() const;
	JSON_API virtual const TSharedPtr<FJsonObject>& AsObject() const;

	JSON_API virtual bool TryGetNumber(double& OutNumber) const;
	JSON_API virtual bool TryGetNumber(float& OutNumber) const;
	JSON_API virtual bool TryGetNumber(int8& OutNumber) const;
	JSON_API virtual bool TryGetNumber(int16& OutNumber) const;
	JSON_API virtual bool TryGetNumber(int32& OutNumber) const;
	JSON_API virtual bool TryGetNumber(int64& OutNumber) const;
	JSON_API virtual bool TryGetNumber(uint8& OutNumber) const;
	JSON_API virtual bool TryGetNumber(uint16& OutNumber) const;
	JSON_API virtual bool TryGetNumber(uint32& OutNumber) const;
	JSON_API virtual bool TryGetNumber(uint64& OutNumber) const;

	JSON_API virtual bool TryGetString(FString& OutString) const;
	JSON_API virtual bool TryGetBool(bool& OutBool) const;
	JSON_API virtual bool TryGetArray(const TArray<TSharedPtr<FJsonValue>>*& OutArray) const;
	JSON_API virtual bool TryGetArray(TArray<TSharedPtr<FJsonValue>>*& OutArray);
	JSON_API virtual bool TryGetObject(const TSharedPtr<FJsonObject>*& Object) const;
	JSON_API virtual bool TryGetObject(TSharedPtr<FJsonObject>*& Object);

	/** True for numbers kept as their source text, which the writer copies out verbatim. */
	JSON_API virtual bool PreferStringRepresentation() const;

	bool IsNull() const
	{
		return Type == EJson::Null || Type == EJson::None;
	}

	void AsArgumentType(double& Value) { Value = AsNumber(); }
	void AsArgumentType(FString& Value) { Value = AsString(); }
	void AsArgumentType(bool& Value) { Value = AsBool(); }
	void AsArgumentType(TArray<TSharedPtr<FJsonValue>>& Value) { Value = AsArray(); }
	void AsArgumentType(TSharedPtr<FJsonObject>& Value) { Value = AsObject(); }

	EJson Type;

	/** Deep copy; a null source gives a null result. */
	static JSON_API TSharedPtr<FJsonValue> Duplicate(const TSharedPtr<const FJsonValue>& Src);
	static JSON_API TSharedPtr<FJsonValue> Duplicate(const TSharedPtr<FJsonValue>& Src);

	/**
	 * Deep comparison with the engine's rules: values of the same kind compare by content (strings
	 * through FString's case-insensitive ==, objects key by key regardless of order); a boolean,
	 * number and string of different kinds compare through their common reading ("true"/"1",
	 * "10" == 10, "1.5" == 1.5); any other mix of kinds is unequal.
	 */
	static JSON_API bool CompareEqual(const FJsonValue& Lhs, const FJsonValue& Rhs);

	FJsonValue(const FJsonValue&) = delete;
	FJsonValue& operator=(const FJsonValue&) = delete;

	// Public so that any owner may destroy a value through a base pointer.
	JSON_API virtual ~FJsonValue();

protected:
	JSON_API FJsonValue();

	/** The kind's name, as the engine's diagnostics spell it ("String", "Number", ...). */
	virtual FString GetType() const = 0;

	friend inline bool operator==(const FJsonValue& Lhs, const FJsonValue& Rhs)
	{
		return FJsonValue::CompareEqual(Lhs, Rhs);
	}

	friend inline bool operator!=(const FJsonValue& Lhs, const FJsonValue& Rhs)
	{
		return !FJsonValue::CompareEqual(Lhs, Rhs);
	}
};

/**
 * A string. Reads as a number when the text is numeric, as a bool through FString::ToBool, and as an
 * integer with the lenient leading-digits rule of LexFromString.
 */
class FJsonValueString : public FJsonValue
{
public:
	JSON_API FJsonValueString(const FString& InString);
	JSON_API FJsonValueString(FString&& InString);
	JSON_API FJsonValueString(const TCHAR* InString);
	JSON_API virtual ~FJsonValueString();

	JSON_API virtual bool TryGetString(FString& OutString) const override;
	JSON_API virtual bool TryGetNumber(double& OutDouble) const override;
	JSON_API virtual bool TryGetNumber(int32& OutValue) const override;
	JSON_API virtual bool TryGetNumber(uint32& OutValue) const override;
	JSON_API virtual bool TryGetNumber(int64& OutValue) const override;
	JSON_API virtual bool TryGetNumber(uint64& OutValue) const override;
	JSON_API virtual bool TryGetBool(bool& OutBool) const override;

	/** Checks for an empty string without copying it. */
	bool IsEmpty() const
	{
		return Value.IsEmpty();
	}

protected:
	FString Value;

	JSON_API virtual FString GetType() const override;

	friend struct UE::Json::Private::FValueAccess;
};

template <typename CharType>
using TJsonValueString = FJsonValueString;

/** A number held as a double. Its string reading is FString::SanitizeFloat(Value, 0). */
class FJsonValueNumber : public FJsonValue
{
public:
	JSON_API FJsonValueNumber(double InNumber);
	JSON_API virtual ~FJsonValueNumber();

	JSON_API virtual bool TryGetNumber(double& OutNumber) const override;
	JSON_API virtual bool TryGetBool(bool& OutBool) const override;
	JSON_API virtual bool TryGetString(FString& OutString) const override;

protected:
	double Value;

	JSON_API virtual FString GetType() const override;

	friend struct UE::Json::Private::FValueAccess;
};

/**
 * A number kept as the text it was read from, so that no precision is lost (the reader makes these
 * when asked to store numbers as strings). The writer copies the text out unchanged.
 */
class FJsonValueNumberString : public FJsonValue
{
public:
	JSON_API FJsonValueNumberString(const FString& InString);
	JSON_API FJsonValueNumberString(FString&& InString);
	JSON_API virtual ~FJsonValueNumberString();

	JSON_API virtual bool TryGetString(FString& OutString) const override;
	JSON_API virtual bool TryGetNumber(double& OutDouble) const override;
	JSON_API virtual bool TryGetNumber(float& OutDouble) const override;
	JSON_API virtual bool TryGetNumber(int8& OutValue) const override;
	JSON_API virtual bool TryGetNumber(int16& OutValue) const override;
	JSON_API virtual bool TryGetNumber(int32& OutValue) const override;
	JSON_API virtual bool TryGetNumber(int64& OutValue) const override;
	JSON_API virtual bool TryGetNumber(uint8& OutValue) const override;
	JSON_API virtual bool TryGetNumber(uint16& OutValue) const override;
	JSON_API virtual bool TryGetNumber(uint32& OutValue) const override;
	JSON_API virtual bool TryGetNumber(uint64& OutValue) const override;
	JSON_API virtual bool TryGetBool(bool& OutBool) const override;
	JSON_API virtual bool PreferStringRepresentation() const override;

protected:
	FString Value;

	JSON_API virtual FString GetType() const override;

	friend struct UE::Json::Private::FValueAccess;
};

template <typename CharType>
using TJsonValueNumberString = FJsonValueNumberString;

/** true or false; reads as 1/0 and as "true"/"false". */
class FJsonValueBoolean : public FJsonValue
{
public:
	JSON_API FJsonValueBoolean(bool InBool);
	JSON_API virtual ~FJsonValueBoolean();

	JSON_API virtual bool TryGetNumber(double& OutNumber) const override;
	JSON_API virtual bool TryGetBool(bool& OutBool) const override;
	JSON_API virtual bool TryGetString(FString& OutString) const override;

protected:
	bool Value;

	JSON_API virtual FString GetType() const override;

	friend struct UE::Json::Private::FValueAccess;
};

class FJsonValueArray : public FJsonValue
{
public:
	JSON_API FJsonValueArray(const TArray<TSharedPtr<FJsonValue>>& InArray);
	JSON_API FJsonValueArray(TArray<TSharedPtr<FJsonValue>>&& InArray);
	JSON_API virtual ~FJsonValueArray();

	JSON_API virtual bool TryGetArray(const TArray<TSharedPtr<FJsonValue>>*& OutArray) const override;
	JSON_API virtual bool TryGetArray(TArray<TSharedPtr<FJsonValue>>*& OutArray) override;

protected:
	TArray<TSharedPtr<FJsonValue>> Value;

	JSON_API virtual FString GetType() const override;

	friend struct UE::Json::Private::FValueAccess;
};

class FJsonValueObject : public FJsonValue
{
public:
	JSON_API FJsonValueObject(TSharedPtr<FJsonObject> InObject);
	JSON_API virtual ~FJsonValueObject();

	JSON_API virtual bool TryGetObject(const TSharedPtr<FJsonObject>*& OutObject) const override;
	JSON_API virtual bool TryGetObject(TSharedPtr<FJsonObject>*& OutObject) override;

protected:
	TSharedPtr<FJsonObject> Value;

	JSON_API virtual FString GetType() const override;

	friend struct UE::Json::Private::FValueAccess;
};

class FJsonValueNull : public FJsonValue
{
public:
	JSON_API FJsonValueNull();
	JSON_API virtual ~FJsonValueNull();

protected:
	JSON_API virtual FString GetType() const override;
};
