#pragma once

#include "CoreMinimal.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonTypes.h"
#include "Serialization/JsonWriter.h"

#include <type_traits>
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
		static double GetNumber(const FJsonValueNumber& Value) { return Value.Value; }
		static bool GetBool(const FJsonValueBoolean& Value) { return Value.Value; }
		static const TArray<TSharedPtr<FJsonValue>>& GetArray(const FJsonValueArray& Value) { return Value.Value; }
		static const TSharedPtr<FJsonObject>& GetObject(const FJsonValueObject& Value) { return Value.Value; }
	};

	/** A value reduced to what the writer prints. */
	struct FPrintableValue
	{
		enum class EKind : uint8
		{
			Null,
			Bool,
			Number,
			/** A number printed as the text it holds. */
			RawNumber,
			String,
			Array,
			Object,
		};

		EKind Kind = EKind::Null;
		bool bBool = false;
		double Number = 0.0;
		const FString* Text = nullptr;
		const TArray<TSharedPtr<FJsonValue>>* Array = nullptr;
		const TMap<FString, TSharedPtr<FJsonValue>>* Map = nullptr;
	};

	/**
	 * What the writer prints for Value. The classes the reader builds (nearly every value) are read
	 * in place; any other subclass is asked through its virtual accessors, and text it only hands
	 * out by value lands in Scratch, which must outlive the use of the result. A null pointer, or an
	 * object value without an object, prints as null where the engine would crash.
	 */
	[[gnu::always_inline]] inline FPrintableValue ResolveForPrinting(const FJsonValue* Value, FString& Scratch)
	{
		using EKind = FPrintableValue::EKind;
		FPrintableValue Result;
		if (!Value)
		{
			return Result;
		}
		const std::type_info& Class = typeid(*Value);
		switch (Value->Type)
		{
		case EJson::Boolean:
			Result.Kind = EKind::Bool;
			Result.bBool = Class == typeid(FJsonValueBoolean) ? FValueAccess::GetBool(static_cast<const FJsonValueBoolean&>(*Value)) : Value->AsBool();
			break;
		case EJson::Number:
			if (Class == typeid(FJsonValueNumber))
			{
				Result.Kind = EKind::Number;
				Result.Number = FValueAccess::GetNumber(static_cast<const FJsonValueNumber&>(*Value));
			}
			else if (Class == typeid(FJsonValueNumberString))
			{
				Result.Kind = EKind::RawNumber;
				Result.Text = &FValueAccess::GetNumberText(static_cast<const FJsonValueNumberString&>(*Value));
			}
			else if (!Value->PreferStringRepresentation())
			{
				Result.Kind = EKind::Number;
				Result.Number = Value->AsNumber();
			}
			else
			{
				Scratch = Value->AsString();
				Result.Kind = EKind::RawNumber;
				Result.Text = &Scratch;
			}
			break;
		case EJson::String:
			Result.Kind = EKind::String;
			if (Class == typeid(FJsonValueString))
			{
				Result.Text = &FValueAccess::GetString(static_cast<const FJsonValueString&>(*Value));
			}
			else
			{
				Scratch = Value->AsString();
				Result.Text = &Scratch;
			}
			break;
		case EJson::Array:
			if (Class == typeid(FJsonValueArray))
			{
				Result.Array = &FValueAccess::GetArray(static_cast<const FJsonValueArray&>(*Value));
			}
			else if (!Value->TryGetArray(Result.Array))
			{
				Result.Array = nullptr;
			}
			Result.Kind = Result.Array ? EKind::Array : EKind::Null;
			break;
		case EJson::Object:
		{
			const TSharedPtr<FJsonObject>* Object = nullptr;
			if (Class == typeid(FJsonValueObject))
			{
				Object = &FValueAccess::GetObject(static_cast<const FJsonValueObject&>(*Value));
			}
			else if (!Value->TryGetObject(Object))
			{
				Object = nullptr;
			}
			if (Object && Object->IsValid())
			{
				Result.Kind = EKind::Object;
				Result.Map = &(*Object)->Values;
			}
			break;
		}
		default:
			break;
		}
		return Result;
	}

	/**
	 * Writes one value (and its name, when Identifier is given) and everything under it. The walk
	 * keeps its own stack, so a deep tree cannot exhaust the call stack.
	 *
	 * The top value always goes through the writer's own calls, which decide about the comma before
	 * it and refuse misuse. With the condensed layout, whose output has no state beyond the brackets
	 * still open, the contents of a container are then printed straight into the writer's stream:
	 * the same text the writer's calls would produce, without their per-token bookkeeping. Other
	 * layouts are written token by token through the writer.
	 */
	template <class CharType, class PrintPolicy>
	class TTreeWriter
	{
	public:
		using FWriter = TJsonWriter<CharType, PrintPolicy>;
		using FMap = TMap<FString, TSharedPtr<FJsonValue>>;
		using FArray = TArray<TSharedPtr<FJsonValue>>;
		using EKind = FPrintableValue::EKind;

		static void Write(FWriter& Writer, const FString* Identifier, const FJsonValue* Root)
		{
			FString Scratch;
			const FPrintableValue Value = ResolveForPrinting(Root, Scratch);
			const int32 OpenBefore = Writer.Stack.Num();
			if (!WriteToken(Writer, Identifier, Value))
			{
				return;
			}
			if constexpr (std::is_same_v<PrintPolicy, TCondensedJsonPrintPolicy<CharType>>)
			{
				// Only a container the writer accepted may be filled in directly.
				if (Writer.Stack.Num() == OpenBefore + 1)
				{
					PrintContents(Writer.Stream, Value);
					Value.Kind == EKind::Array ? Writer.WriteArrayEnd() : Writer.WriteObjectEnd();
					return;
				}
			}
			WriteContents(Writer, Value);
		}

	private:
		struct FFrame
		{
			const FArray* Array;
			int32 NextIndex;
			typename FMap::TConstIterator NextMember;
		};

		[[gnu::always_inline]] static FFrame MakeFrame(const FPrintableValue& Container)
		{
			// An array frame needs some map to give its unused member iterator; any will do.
			if (Container.Kind == EKind::Array)
			{
				PrefetchChildren(*Container.Array);
				return FFrame{Container.Array, 0, EmptyMapForFrames.CreateConstIterator()};
			}
			PrefetchChildren(*Container.Map);
			return FFrame{nullptr, 0, Container.Map->CreateConstIterator()};
		}

		static inline const FMap EmptyMapForFrames;

		/** Writes a scalar, or opens a container; true when a container was opened. */
		static bool WriteToken(FWriter& Writer, const FString* Name, const FPrintableValue& Value)
		{
			switch (Value.Kind)
			{
			case EKind::Bool:
				Name ? Writer.WriteValue(*Name, Value.bBool) : Writer.WriteValue(Value.bBool);
				return false;
			case EKind::Number:
				Name ? Writer.WriteValue(*Name, Value.Number) : Writer.WriteValue(Value.Number);
				return false;
			case EKind::RawNumber:
				Name ? Writer.WriteRawJSONValue(*Name, *Value.Text) : Writer.WriteRawJSONValue(*Value.Text);
				return false;
			case EKind::String:
				Name ? Writer.WriteValue(*Name, *Value.Text) : Writer.WriteValue(*Value.Text);
				return false;
			case EKind::Array:
				Name ? Writer.WriteArrayStart(*Name) : Writer.WriteArrayStart();
				return true;
			case EKind::Object:
				Name ? Writer.WriteObjectStart(*Name) : Writer.WriteObjectStart();
				return true;
			default:
				Name ? Writer.WriteNull(*Name) : Writer.WriteNull();
				return false;
			}
		}

		/** The contents and the end of an opened container, token by token through the writer. */
		static void WriteContents(FWriter& Writer, const FPrintableValue& Container)
		{
			FString Scratch;
			TArray<FFrame> Frames;
			Frames.Add(MakeFrame(Container));
			while (Frames.Num() > 0)
			{
				FFrame& Top = Frames.Top();
				const FString* Name = nullptr;
				const FJsonValue* Child;
				if (Top.Array)
				{
					if (Top.NextIndex == Top.Array->Num())
					{
						Frames.Pop();
						Writer.WriteArrayEnd();
						continue;
					}
					Child = (*Top.Array)[Top.NextIndex++].Get();
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
					Name = &Member.Key;
					Child = Member.Value.Get();
				}
				const FPrintableValue Value = ResolveForPrinting(Child, Scratch);
				if (WriteToken(Writer, Name, Value))
				{
					// May reallocate Frames; Top is not used past this point.
					Frames.Add(MakeFrame(Value));
				}
			}
		}

		/** The contents of an opened container (not its closing bracket) in the condensed layout. */
		static void PrintContents(FJsonPrintStream& Stream, const FPrintableValue& Container)
		{
			FString Scratch;
			TArray<FFrame> Frames;
			Frames.Reserve(16);
			Frames.Add(MakeFrame(Container));
			while (true)
			{
				FFrame& Top = Frames.Top();
				const FJsonValue* Child;
				if (Top.Array)
				{
					if (Top.NextIndex == Top.Array->Num())
					{
						Frames.Pop();
						if (Frames.Num() == 0)
						{
							return;
						}
						Stream.Write(CharType(']'));
						continue;
					}
					if (Top.NextIndex > 0)
					{
						Stream.Write(CharType(','));
					}
					Child = (*Top.Array)[Top.NextIndex++].Get();
				}
				else
				{
					if (!Top.NextMember)
					{
						Frames.Pop();
						if (Frames.Num() == 0)
						{
							return;
						}
						Stream.Write(CharType('}'));
						continue;
					}
					// NextIndex counts the members written, for the comma.
					if (Top.NextIndex++ > 0)
					{
						Stream.Write(CharType(','));
					}
					const auto& Member = *Top.NextMember;
					++Top.NextMember;
					Stream.WriteQuoted(*Member.Key, Member.Key.Len());
					Stream.Write(CharType(':'));
					Child = Member.Value.Get();
				}

				const FPrintableValue Value = ResolveForPrinting(Child, Scratch);
				switch (Value.Kind)
				{
				case EKind::Bool:
					Value.bBool ? Stream.WriteLiteral(u"true") : Stream.WriteLiteral(u"false");
					break;
				case EKind::Number:
					PrintPolicy::WriteDouble(&Stream, Value.Number);
					break;
				case EKind::RawNumber:
					PrintPolicy::WriteString(&Stream, *Value.Text);
					break;
				case EKind::String:
					Stream.WriteQuoted(**Value.Text, Value.Text->Len());
					break;
				case EKind::Array:
					Stream.Write(CharType('['));
					// May reallocate Frames; Top is not used past this point.
					Frames.Add(MakeFrame(Value));
					break;
				case EKind::Object:
					Stream.Write(CharType('{'));
					Frames.Add(MakeFrame(Value));
					break;
				default:
					Stream.WriteLiteral(u"null");
					break;
				}
			}
		}
	};

	template <class CharType, class PrintPolicy>
	void WriteTree(TJsonWriter<CharType, PrintPolicy>& Writer, const FString* Identifier, const FJsonValue* Root)
	{
		TTreeWriter<CharType, PrintPolicy>::Write(Writer, Identifier, Root);
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
