#pragma once

#include "CoreMinimal.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonTypes.h"
#include "Serialization/JsonWriter.h"

#include <typeinfo>

/** The value types FJsonSerializer reads into and writes from. */
struct FJsonSerializerPolicy_JsonObject
{
	using FValue = TSharedPtr<FJsonValue>;
	using FArrayOfValues = TArray<TSharedPtr<FJsonValue>>;
	using FMapOfValues = TSharedPtr<FJsonObject>;
};

namespace UE::Json::Private
{
	/** Reads the parts of a value the writer needs without copying strings out of it. */
	struct FValueAccess
	{
		static const FString& GetString(const FJsonValueString& Value) { return Value.Value; }
		static const FString& GetNumberText(const FJsonValueNumberString& Value) { return Value.Value; }
	};

	/**
	 * Writes one value (and its name, when Identifier is given) and everything under it. The walk
	 * keeps its own stack, so a deep tree cannot exhaust the call stack. Null pointers in the tree
	 * are written as null, where the engine would crash.
	 */
	template <class CharType, class PrintPolicy>
	void WriteTree(TJsonWriter<CharType, PrintPolicy>& Writer, const FString* Identifier, const FJsonValue* Root)
	{
		using FMap = TMap<FString, TSharedPtr<FJsonValue>>;
		using FArray = TArray<TSharedPtr<FJsonValue>>;

		// Writes a scalar, or opens a container and returns it for the walk to descend into.
		auto WriteOne = [&Writer](const FString* Name, const FJsonValue* Value, const FArray*& OutArray, const FMap*& OutMap)
		{
			OutArray = nullptr;
			OutMap = nullptr;
			const EJson Kind = Value ? Value->Type : EJson::Null;
			switch (Kind)
			{
			case EJson::Boolean:
				Name ? Writer.WriteValue(*Name, Value->AsBool()) : Writer.WriteValue(Value->AsBool());
				return;
			case EJson::Number:
				if (!Value->PreferStringRepresentation())
				{
					Name ? Writer.WriteValue(*Name, Value->AsNumber()) : Writer.WriteValue(Value->AsNumber());
				}
				else if (typeid(*Value) == typeid(FJsonValueNumberString))
				{
					const FString& Text = FValueAccess::GetNumberText(static_cast<const FJsonValueNumberString&>(*Value));
					Name ? Writer.WriteRawJSONValue(*Name, Text) : Writer.WriteRawJSONValue(Text);
				}
				else
				{
					const FString Text = Value->AsString();
					Name ? Writer.WriteRawJSONValue(*Name, Text) : Writer.WriteRawJSONValue(Text);
				}
				return;
			case EJson::String:
				// Strings are nearly always our own FJsonValueString; read those in place.
				if (typeid(*Value) == typeid(FJsonValueString))
				{
					const FString& Text = FValueAccess::GetString(static_cast<const FJsonValueString&>(*Value));
					Name ? Writer.WriteValue(*Name, Text) : Writer.WriteValue(Text);
				}
				else
				{
					const FString Text = Value->AsString();
					Name ? Writer.WriteValue(*Name, Text) : Writer.WriteValue(Text);
				}
				return;
			case EJson::Array:
			{
				const FArray* Array = nullptr;
				if (Value->TryGetArray(Array))
				{
					Name ? Writer.WriteArrayStart(*Name) : Writer.WriteArrayStart();
					OutArray = Array;
					return;
				}
				break;
			}
			case EJson::Object:
			{
				const TSharedPtr<FJsonObject>* Object = nullptr;
				if (Value->TryGetObject(Object) && Object->IsValid())
				{
					Name ? Writer.WriteObjectStart(*Name) : Writer.WriteObjectStart();
					OutMap = &(*Object)->Values;
					return;
				}
				break;
			}
			default:
				break;
			}
			Name ? Writer.WriteNull(*Name) : Writer.WriteNull();
		};

		static const FMap EmptyMap;
		struct FFrame
		{
			const FArray* Array;
			int32 NextIndex;
			typename FMap::TConstIterator NextMember;
		};
		TArray<FFrame> Frames;

		auto Push = [&Frames](const FArray* Array, const FMap* Map)
		{
			if (Array)
			{
				Frames.Add(FFrame{Array, 0, EmptyMap.CreateConstIterator()});
			}
			else if (Map)
			{
				Frames.Add(FFrame{nullptr, 0, Map->CreateConstIterator()});
			}
		};

		const FArray* Array = nullptr;
		const FMap* Map = nullptr;
		WriteOne(Identifier, Root, Array, Map);
		Push(Array, Map);

		while (Frames.Num() > 0)
		{
			FFrame& Top = Frames.Top();
			if (Top.Array)
			{
				if (Top.NextIndex == Top.Array->Num())
				{
					Frames.Pop();
					Writer.WriteArrayEnd();
					continue;
				}
				const FJsonValue* Element = (*Top.Array)[Top.NextIndex++].Get();
				WriteOne(nullptr, Element, Array, Map);
			}
			else
			{
				if (!Top.NextMember)
				{
					Frames.Pop();
					Writer.WriteObjectEnd();
					continue;
				}
				const auto& Member = *Top.NextMember;
				++Top.NextMember;
				WriteOne(&Member.Key, Member.Value.Get(), Array, Map);
			}
			// May reallocate Frames; Top is not used past this point.
			Push(Array, Map);
		}
	}
}

/**
 * Turns text into a tree of FJsonObject/FJsonValue and back. Deserialize fails (returns false and
 * leaves the output untouched) on malformed text and when the top-level value is not of the
 * requested kind: an array is not an object, nor is an object an array. Serialize writes with
 * the writer's layout and closes the writer unless told otherwise.
 */
template <typename Policy = FJsonSerializerPolicy_JsonObject>
class TJsonSerializer
{
public:
	enum class EFlags
	{
		None = 0,
		/** Keep every number as its source text (FJsonValueNumberString), losing no precision. */
		StoreNumbersAsStrings = 1,
	};

	template <class CharType>
	static bool Deserialize(const TSharedRef<TJsonReader<CharType>>& Reader, typename Policy::FValue& OutValue, EFlags InOptions = EFlags::None)
	{
		return Deserialize(*Reader, OutValue, InOptions);
	}

	/** Reads an object or an array. */
	template <class CharType>
	static bool Deserialize(TJsonReader<CharType>& Reader, typename Policy::FValue& OutValue, EFlags InOptions = EFlags::None)
	{
		TSharedPtr<FJsonValue> Root;
		if (!Reader.ReadRootValue(EJson::None, HasNumbersAsStrings(InOptions), Root))
		{
			return false;
		}
		OutValue = MoveTemp(Root);
		return true;
	}

	template <class CharType>
	static bool Deserialize(const TSharedRef<TJsonReader<CharType>>& Reader, typename Policy::FArrayOfValues& OutArray, EFlags InOptions = EFlags::None)
	{
		return Deserialize(*Reader, OutArray, InOptions);
	}

	template <class CharType>
	static bool Deserialize(TJsonReader<CharType>& Reader, typename Policy::FArrayOfValues& OutArray, EFlags InOptions = EFlags::None)
	{
		TSharedPtr<FJsonValue> Root;
		TArray<TSharedPtr<FJsonValue>>* Array = nullptr;
		if (!Reader.ReadRootValue(EJson::Array, HasNumbersAsStrings(InOptions), Root) || !Root->TryGetArray(Array))
		{
			return false;
		}
		OutArray = MoveTemp(*Array);
		return true;
	}

	template <class CharType>
	static bool Deserialize(const TSharedRef<TJsonReader<CharType>>& Reader, typename Policy::FMapOfValues& OutObject, EFlags InOptions = EFlags::None)
	{
		return Deserialize(*Reader, OutObject, InOptions);
	}

	template <class CharType>
	static bool Deserialize(TJsonReader<CharType>& Reader, typename Policy::FMapOfValues& OutObject, EFlags InOptions = EFlags::None)
	{
		TSharedPtr<FJsonValue> Root;
		const TSharedPtr<FJsonObject>* Object = nullptr;
		if (!Reader.ReadRootValue(EJson::Object, HasNumbersAsStrings(InOptions), Root) || !Root->TryGetObject(Object))
		{
			return false;
		}
		OutObject = *Object;
		return true;
	}

	/**
	 * Writes Value, named Identifier when the writer is inside an object. An empty Identifier outside
	 * an object writes the bare value; a non-empty one there is an error (false, nothing written).
	 */
	template <class CharType, class PrintPolicy>
	static bool Serialize(const typename Policy::FValue& Value, const FString& Identifier, const TSharedRef<TJsonWriter<CharType, PrintPolicy>>& Writer, bool bCloseWriter = true)
	{
		return Serialize(Value, Identifier, *Writer, bCloseWriter);
	}

	template <class CharType, class PrintPolicy>
	static bool Serialize(const typename Policy::FValue& Value, const FString& Identifier, TJsonWriter<CharType, PrintPolicy>& Writer, bool bCloseWriter = true)
	{
		const bool bInsideObject = Writer.GetCurrentElementType() == EJson::Object;
		if (!bInsideObject && !Identifier.IsEmpty())
		{
			return false;
		}
		UE::Json::Private::WriteTree(Writer, bInsideObject ? &Identifier : nullptr, Value.Get());
		return Finish(Writer, bCloseWriter);
	}

	template <class CharType, class PrintPolicy>
	static bool Serialize(const typename Policy::FArrayOfValues& Array, const TSharedRef<TJsonWriter<CharType, PrintPolicy>>& Writer, bool bCloseWriter = true)
	{
		return Serialize(Array, *Writer, bCloseWriter);
	}

	template <class CharType, class PrintPolicy>
	static bool Serialize(const typename Policy::FArrayOfValues& Array, TJsonWriter<CharType, PrintPolicy>& Writer, bool bCloseWriter = true)
	{
		Writer.WriteArrayStart();
		for (const TSharedPtr<FJsonValue>& Element : Array)
		{
			UE::Json::Private::WriteTree(Writer, nullptr, Element.Get());
		}
		Writer.WriteArrayEnd();
		return Finish(Writer, bCloseWriter);
	}

	template <class CharType, class PrintPolicy>
	static bool Serialize(const typename Policy::FMapOfValues& Object, const TSharedRef<TJsonWriter<CharType, PrintPolicy>>& Writer, bool bCloseWriter = true)
	{
		return Serialize(Object, *Writer, bCloseWriter);
	}

	/** Writes the object; an invalid pointer is an error (false, nothing written). */
	template <class CharType, class PrintPolicy>
	static bool Serialize(const typename Policy::FMapOfValues& Object, TJsonWriter<CharType, PrintPolicy>& Writer, bool bCloseWriter = true)
	{
		if (!Object.IsValid())
		{
			return false;
		}
		const FJsonValueObject Wrapper(Object);
		UE::Json::Private::WriteTree(Writer, nullptr, &Wrapper);
		return Finish(Writer, bCloseWriter);
	}

private:
	static bool HasNumbersAsStrings(EFlags Options)
	{
		return (static_cast<int32>(Options) & static_cast<int32>(EFlags::StoreNumbersAsStrings)) != 0;
	}

	template <class CharType, class PrintPolicy>
	static bool Finish(TJsonWriter<CharType, PrintPolicy>& Writer, bool bCloseWriter)
	{
		return bCloseWriter ? Writer.Close() : true;
	}
};

using FJsonSerializer = TJsonSerializer<FJsonSerializerPolicy_JsonObject>;
