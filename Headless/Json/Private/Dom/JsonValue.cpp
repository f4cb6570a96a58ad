#include "Dom/JsonValue.h"

#include "Containers/UnrealString.h"
#include "Dom/JsonNodeAllocator.h"
#include "Dom/JsonObject.h"
#include "Math/UnrealMathUtility.h"

#include <cmath>
#include <limits>

namespace
{
	// Integers are read from the double reading, rounded half away from zero, and refused when
	// they fall outside the target type (NaN always does).
	template <typename IntType>
	bool TryConvertNumber(const FJsonValue& Value, IntType& OutNumber)
	{
		double Double = 0.0;
		if (!Value.TryGetNumber(Double))
		{
			return false;
		}

		bool bInRange;
		if constexpr (std::is_same_v<IntType, int64>)
		{
			// 2^63 is the first double past the range; its predecessor is inside.
			bInRange = Double >= -9223372036854775808.0 && Double < 9223372036854775808.0;
		}
		else if constexpr (std::is_same_v<IntType, uint64>)
		{
			bInRange = Double >= 0.0 && Double < 18446744073709551616.0;
		}
		else
		{
			bInRange = Double >= static_cast<double>(std::numeric_limits<IntType>::min())
				&& Double <= static_cast<double>(std::numeric_limits<IntType>::max());
		}
		if (!bInRange)
		{
			return false;
		}

		// The engine's FMath::RoundHalfFromZero (5.x) splits off the fraction with modf and compares it
		// with exactly one half, which is std::round.
		const double Rounded = std::round(Double);
		OutNumber = static_cast<IntType>(Rounded);
		return true;
	}

	/** Scalars reduced to what the engine compares across kinds: a bool, an integer, a fraction or text. */
	struct FSimpleValue
	{
		enum class EKind
		{
			Bool,
			Integer,
			Fraction,
			String
		};

		EKind Kind = EKind::String;
		bool bBool = false;
		int64 Integer = 0;
		double Fraction = 0.0;
		FString String;
	};

	bool HasFractionDigits(double Number)
	{
		return FString::SanitizeFloat(Number, 0).Contains(TEXT("."));
	}

	FSimpleValue ToSimpleValue(const FJsonValue& Value)
	{
		FSimpleValue Result;
		if (!Value.PreferStringRepresentation())
		{
			if (Value.Type == EJson::Boolean)
			{
				Result.Kind = FSimpleValue::EKind::Bool;
				Result.bBool = Value.AsBool();
				return Result;
			}
			if (Value.Type == EJson::Number)
			{
				const double Number = Value.AsNumber();
				if (HasFractionDigits(Number))
				{
					Result.Kind = FSimpleValue::EKind::Fraction;
					Result.Fraction = Number;
				}
				else
				{
					Result.Kind = FSimpleValue::EKind::Integer;
					Result.Integer = FMath::RoundToInt64(Number);
				}
				return Result;
			}
		}
		Result.Kind = FSimpleValue::EKind::String;
		Result.String = Value.AsString();
		return Result;
	}

	FString NumberText(const FSimpleValue& Value)
	{
		return Value.Kind == FSimpleValue::EKind::Fraction
			? FString::SanitizeFloat(Value.Fraction, 0)
			: FString::Printf(TEXT("%lld"), static_cast<long long>(Value.Integer));
	}

	bool IsNumberKind(const FSimpleValue& Value)
	{
		return Value.Kind == FSimpleValue::EKind::Integer || Value.Kind == FSimpleValue::EKind::Fraction;
	}

	bool NumberEqualsText(const FSimpleValue& Number, const FString& Text)
	{
		if (!Text.IsNumeric())
		{
			return false;
		}
		if (Number.Kind == FSimpleValue::EKind::Fraction)
		{
			return FString::SanitizeFloat(Number.Fraction, 0) == Text;
		}
		return Number.Integer == FCString::Atoi64(*Text);
	}

	bool SimpleValuesEqual(const FSimpleValue& Lhs, const FSimpleValue& Rhs)
	{
		using EKind = FSimpleValue::EKind;
		if (Lhs.Kind == EKind::Bool)
		{
			if (Rhs.Kind == EKind::Bool)
			{
				return Lhs.bBool == Rhs.bBool;
			}
			if (Rhs.Kind == EKind::String)
			{
				return Lhs.bBool
					? Rhs.String.Equals(TEXT("true"), ESearchCase::IgnoreCase) || Rhs.String.Equals(TEXT("1"), ESearchCase::IgnoreCase)
					: Rhs.String.Equals(TEXT("false"), ESearchCase::IgnoreCase) || Rhs.String.Equals(TEXT("0"), ESearchCase::IgnoreCase);
			}
			// A fraction never equals a bool; an integer must be exactly 1 or 0.
			return Rhs.Kind == EKind::Integer && Rhs.Integer == (Lhs.bBool ? 1 : 0);
		}
		if (IsNumberKind(Lhs))
		{
			if (IsNumberKind(Rhs))
			{
				if (Lhs.Kind == EKind::Fraction || Rhs.Kind == EKind::Fraction)
				{
					return NumberText(Lhs) == NumberText(Rhs);
				}
				return Lhs.Integer == Rhs.Integer;
			}
			return SimpleValuesEqual(Rhs, Lhs);
		}
		// Lhs is text.
		if (Rhs.Kind == EKind::String)
		{
			return Lhs.String.Equals(Rhs.String, ESearchCase::CaseSensitive);
		}
		if (Rhs.Kind == EKind::Bool)
		{
			return SimpleValuesEqual(Rhs, Lhs);
		}
		return NumberEqualsText(Rhs, Lhs.String);
	}

	bool IsSimpleKind(EJson Type)
	{
		return Type == EJson::Boolean || Type == EJson::Number || Type == EJson::String;
	}
}

// FJsonValue ------------------------------------------------------------------------------------

FJsonValue::FJsonValue()
	: Type(EJson::None)
{
}

FJsonValue::~FJsonValue() = default;

double FJsonValue::AsNumber() const
{
	double Number = 0.0;
	if (!TryGetNumber(Number))
	{
		Number = 0.0;
	}
	return Number;
}

FString FJsonValue::AsString() const
{
	FString String;
	if (!TryGetString(String))
	{
		String.Empty();
	}
	return String;
}

bool FJsonValue::AsBool() const
{
	bool bValue = false;
	if (!TryGetBool(bValue))
	{
		bValue = false;
	}
	return bValue;
}

const TArray<TSharedPtr<FJsonValue>>& FJsonValue::AsArray() const
{
	const TArray<TSharedPtr<FJsonValue>>* Array = nullptr;
	if (!TryGetArray(Array))
	{
		static const TArray<TSharedPtr<FJsonValue>> EmptyArray;
		Array = &EmptyArray;
	}
	return *Array;
}

const TSharedPtr<FJsonObject>& FJsonValue::AsObject() const
{
	const TSharedPtr<FJsonObject>* Object = nullptr;
	if (!TryGetObject(Object))
	{
		static const TSharedPtr<FJsonObject> EmptyObject = MakeShared<FJsonObject>();
		Object = &EmptyObject;
	}
	return *Object;
}

bool FJsonValue::TryGetNumber(double& OutNumber) const
{
	return false;
}

bool FJsonValue::TryGetNumber(float& OutNumber) const
{
	double Double = 0.0;
	if (TryGetNumber(Double))
	{
		OutNumber = static_cast<float>(Double);
		return true;
	}
	return false;
}

bool FJsonValue::TryGetNumber(int8& OutNumber) const { return TryConvertNumber(*this, OutNumber); }
bool FJsonValue::TryGetNumber(int16& OutNumber) const { return TryConvertNumber(*this, OutNumber); }
bool FJsonValue::TryGetNumber(int32& OutNumber) const { return TryConvertNumber(*this, OutNumber); }
bool FJsonValue::TryGetNumber(int64& OutNumber) const { return TryConvertNumber(*this, OutNumber); }
bool FJsonValue::TryGetNumber(uint8& OutNumber) const { return TryConvertNumber(*this, OutNumber); }
bool FJsonValue::TryGetNumber(uint16& OutNumber) const { return TryConvertNumber(*this, OutNumber); }
bool FJsonValue::TryGetNumber(uint32& OutNumber) const { return TryConvertNumber(*this, OutNumber); }
bool FJsonValue::TryGetNumber(uint64& OutNumber) const { return TryConvertNumber(*this, OutNumber); }

bool FJsonValue::TryGetString(FString& OutString) const
{
	return false;
}

bool FJsonValue::TryGetBool(bool& OutBool) const
{
	return false;
}

bool FJsonValue::TryGetArray(const TArray<TSharedPtr<FJsonValue>>*& OutArray) const
{
	return false;
}

bool FJsonValue::TryGetArray(TArray<TSharedPtr<FJsonValue>>*& OutArray)
{
	return false;
}

bool FJsonValue::TryGetObject(const TSharedPtr<FJsonObject>*& Object) const
{
	return false;
}

bool FJsonValue::TryGetObject(TSharedPtr<FJsonObject>*& Object)
{
	return false;
}

bool FJsonValue::PreferStringRepresentation() const
{
	return false;
}

bool FJsonValue::CompareEqual(const FJsonValue& Lhs, const FJsonValue& Rhs)
{
	if (Lhs.Type != Rhs.Type)
	{
		return IsSimpleKind(Lhs.Type) && IsSimpleKind(Rhs.Type) && SimpleValuesEqual(ToSimpleValue(Lhs), ToSimpleValue(Rhs));
	}

	switch (Lhs.Type)
	{
	case EJson::None:
	case EJson::Null:
		return true;

	case EJson::String:
		// FString's == ignores case, and so does this comparison, as in the engine.
		return Lhs.AsString() == Rhs.AsString();

	case EJson::Number:
		return Lhs.AsNumber() == Rhs.AsNumber();

	case EJson::Boolean:
		return Lhs.AsBool() == Rhs.AsBool();

	case EJson::Array:
	{
		const TArray<TSharedPtr<FJsonValue>>& LhsArray = Lhs.AsArray();
		const TArray<TSharedPtr<FJsonValue>>& RhsArray = Rhs.AsArray();
		if (LhsArray.Num() != RhsArray.Num())
		{
			return false;
		}
		for (int32 Index = 0; Index < LhsArray.Num(); ++Index)
		{
			const FJsonValue* LhsElement = LhsArray[Index].Get();
			const FJsonValue* RhsElement = RhsArray[Index].Get();
			if (!LhsElement || !RhsElement)
			{
				if (LhsElement != RhsElement)
				{
					return false;
				}
				continue;
			}
			if (!CompareEqual(*LhsElement, *RhsElement))
			{
				return false;
			}
		}
		return true;
	}

	case EJson::Object:
	{
		const TSharedPtr<FJsonObject>& LhsObject = Lhs.AsObject();
		const TSharedPtr<FJsonObject>& RhsObject = Rhs.AsObject();
		if (LhsObject.IsValid() != RhsObject.IsValid())
		{
			return false;
		}
		if (!LhsObject.IsValid())
		{
			return true;
		}
		if (LhsObject->Values.Num() != RhsObject->Values.Num())
		{
			return false;
		}
		for (const TPair<FString, TSharedPtr<FJsonValue>>& Pair : LhsObject->Values)
		{
			const TSharedPtr<FJsonValue>* RhsValue = RhsObject->Values.Find(Pair.Key);
			if (!RhsValue || Pair.Value.IsValid() != RhsValue->IsValid())
			{
				return false;
			}
			if (Pair.Value.IsValid() && !CompareEqual(*Pair.Value, **RhsValue))
			{
				return false;
			}
		}
		return true;
	}

	default:
		return false;
	}
}

TSharedPtr<FJsonValue> FJsonValue::Duplicate(const TSharedPtr<const FJsonValue>& Src)
{
	return Duplicate(ConstCastSharedPtr<FJsonValue>(Src));
}

TSharedPtr<FJsonValue> FJsonValue::Duplicate(const TSharedPtr<FJsonValue>& Src)
{
	if (!Src.IsValid())
	{
		return TSharedPtr<FJsonValue>();
	}

	// Each kind is copied through its natural reading; a number kept as text that does not parse
	// falls back to a string, as in the engine.
	switch (Src->Type)
	{
	case EJson::Boolean:
	{
		bool bValue = false;
		if (Src->TryGetBool(bValue))
		{
			return UE::Json::Private::MakeSharedNode<FJsonValueBoolean>(bValue);
		}
		break;
	}
	case EJson::Number:
	{
		double Number = 0.0;
		if (Src->TryGetNumber(Number))
		{
			return UE::Json::Private::MakeSharedNode<FJsonValueNumber>(Number);
		}
		FString String;
		if (Src->TryGetString(String))
		{
			return UE::Json::Private::MakeSharedNode<FJsonValueString>(MoveTemp(String));
		}
		break;
	}
	case EJson::String:
	{
		FString String;
		if (Src->TryGetString(String))
		{
			return UE::Json::Private::MakeSharedNode<FJsonValueString>(MoveTemp(String));
		}
		break;
	}
	case EJson::Object:
	{
		const TSharedPtr<FJsonObject>* Object = nullptr;
		if (Src->TryGetObject(Object))
		{
			TSharedPtr<FJsonObject> NewObject = UE::Json::Private::MakeSharedNode<FJsonObject>();
			FJsonObject::Duplicate(*Object, NewObject);
			return UE::Json::Private::MakeSharedNode<FJsonValueObject>(NewObject);
		}
		break;
	}
	case EJson::Array:
	{
		const TArray<TSharedPtr<FJsonValue>>* Array = nullptr;
		if (Src->TryGetArray(Array))
		{
			TArray<TSharedPtr<FJsonValue>> NewArray;
			NewArray.Reserve(Array->Num());
			for (const TSharedPtr<FJsonValue>& Element : *Array)
			{
				NewArray.Add(Duplicate(Element));
			}
			return UE::Json::Private::MakeSharedNode<FJsonValueArray>(MoveTemp(NewArray));
		}
		break;
	}
	case EJson::Null:
		// The engine returns an invalid pointer here, which later crashes its writer; a null
		// value is what the caller meant.
		return UE::Json::Private::MakeSharedNode<FJsonValueNull>();
	default:
		break;
	}
	return TSharedPtr<FJsonValue>();
}

// FJsonValueString ------------------------------------------------------------------------------

FJsonValueString::FJsonValueString(const FString& InString)
	: Value(InString)
{
	Type = EJson::String;
}

FJsonValueString::FJsonValueString(FString&& InString)
	: Value(MoveTemp(InString))
{
	Type = EJson::String;
}

FJsonValueString::FJsonValueString(const TCHAR* InString)
	: Value(InString)
{
	Type = EJson::String;
}

FJsonValueString::~FJsonValueString() = default;

bool FJsonValueString::TryGetString(FString& OutString) const
{
	OutString = Value;
	return true;
}

bool FJsonValueString::TryGetNumber(double& OutDouble) const
{
	if (Value.IsNumeric())
	{
		OutDouble = FCString::Atod(*Value);
		return true;
	}
	return false;
}

// The integer readings are lenient, as the engine's: leading digits count and anything else reads 0.
bool FJsonValueString::TryGetNumber(int32& OutValue) const
{
	LexFromString(OutValue, *Value);
	return true;
}

bool FJsonValueString::TryGetNumber(uint32& OutValue) const
{
	LexFromString(OutValue, *Value);
	return true;
}

bool FJsonValueString::TryGetNumber(int64& OutValue) const
{
	LexFromString(OutValue, *Value);
	return true;
}

bool FJsonValueString::TryGetNumber(uint64& OutValue) const
{
	LexFromString(OutValue, *Value);
	return true;
}

bool FJsonValueString::TryGetBool(bool& OutBool) const
{
	OutBool = Value.ToBool();
	return true;
}

FString FJsonValueString::GetType() const
{
	return TEXT("String");
}

// FJsonValueNumber ------------------------------------------------------------------------------

FJsonValueNumber::FJsonValueNumber(double InNumber)
	: Value(InNumber)
{
	Type = EJson::Number;
}

FJsonValueNumber::~FJsonValueNumber() = default;

bool FJsonValueNumber::TryGetNumber(double& OutNumber) const
{
	OutNumber = Value;
	return true;
}

bool FJsonValueNumber::TryGetBool(bool& OutBool) const
{
	OutBool = Value != 0.0;
	return true;
}

bool FJsonValueNumber::TryGetString(FString& OutString) const
{
	OutString = FString::SanitizeFloat(Value, 0);
	return true;
}

FString FJsonValueNumber::GetType() const
{
	return TEXT("Number");
}

// FJsonValueNumberString ------------------------------------------------------------------------

FJsonValueNumberString::FJsonValueNumberString(const FString& InString)
	: Value(InString)
{
	Type = EJson::Number;
}

FJsonValueNumberString::FJsonValueNumberString(FString&& InString)
	: Value(MoveTemp(InString))
{
	Type = EJson::Number;
}

FJsonValueNumberString::~FJsonValueNumberString() = default;

bool FJsonValueNumberString::TryGetString(FString& OutString) const
{
	OutString = Value;
	return true;
}

bool FJsonValueNumberString::TryGetNumber(double& OutDouble) const { return LexTryParseString(OutDouble, *Value); }
bool FJsonValueNumberString::TryGetNumber(float& OutDouble) const { return LexTryParseString(OutDouble, *Value); }
bool FJsonValueNumberString::TryGetNumber(int8& OutValue) const { return LexTryParseString(OutValue, *Value); }
bool FJsonValueNumberString::TryGetNumber(int16& OutValue) const { return LexTryParseString(OutValue, *Value); }
bool FJsonValueNumberString::TryGetNumber(int32& OutValue) const { return LexTryParseString(OutValue, *Value); }
bool FJsonValueNumberString::TryGetNumber(int64& OutValue) const { return LexTryParseString(OutValue, *Value); }
bool FJsonValueNumberString::TryGetNumber(uint8& OutValue) const { return LexTryParseString(OutValue, *Value); }
bool FJsonValueNumberString::TryGetNumber(uint16& OutValue) const { return LexTryParseString(OutValue, *Value); }
bool FJsonValueNumberString::TryGetNumber(uint32& OutValue) const { return LexTryParseString(OutValue, *Value); }
bool FJsonValueNumberString::TryGetNumber(uint64& OutValue) const { return LexTryParseString(OutValue, *Value); }

bool FJsonValueNumberString::TryGetBool(bool& OutBool) const
{
	OutBool = Value.ToBool();
	return true;
}

bool FJsonValueNumberString::PreferStringRepresentation() const
{
	return true;
}

FString FJsonValueNumberString::GetType() const
{
	return TEXT("NumberString");
}

// FJsonValueBoolean -----------------------------------------------------------------------------

FJsonValueBoolean::FJsonValueBoolean(bool InBool)
	: Value(InBool)
{
	Type = EJson::Boolean;
}

FJsonValueBoolean::~FJsonValueBoolean() = default;

bool FJsonValueBoolean::TryGetNumber(double& OutNumber) const
{
	OutNumber = Value ? 1.0 : 0.0;
	return true;
}

bool FJsonValueBoolean::TryGetBool(bool& OutBool) const
{
	OutBool = Value;
	return true;
}

bool FJsonValueBoolean::TryGetString(FString& OutString) const
{
	OutString = Value ? TEXT("true") : TEXT("false");
	return true;
}

FString FJsonValueBoolean::GetType() const
{
	return TEXT("Boolean");
}

// FJsonValueArray -------------------------------------------------------------------------------

FJsonValueArray::FJsonValueArray(const TArray<TSharedPtr<FJsonValue>>& InArray)
	: Value(InArray)
{
	Type = EJson::Array;
}

FJsonValueArray::FJsonValueArray(TArray<TSharedPtr<FJsonValue>>&& InArray)
	: Value(MoveTemp(InArray))
{
	Type = EJson::Array;
}

FJsonValueArray::~FJsonValueArray()
{
	UE::Json::Private::PrefetchChildren(Value);
}

bool FJsonValueArray::TryGetArray(const TArray<TSharedPtr<FJsonValue>>*& OutArray) const
{
	OutArray = &Value;
	return true;
}

bool FJsonValueArray::TryGetArray(TArray<TSharedPtr<FJsonValue>>*& OutArray)
{
	OutArray = &Value;
	return true;
}

FString FJsonValueArray::GetType() const
{
	return TEXT("Array");
}

// FJsonValueObject ------------------------------------------------------------------------------

FJsonValueObject::FJsonValueObject(TSharedPtr<FJsonObject> InObject)
	: Value(MoveTemp(InObject))
{
	Type = EJson::Object;
}

FJsonValueObject::~FJsonValueObject() = default;

bool FJsonValueObject::TryGetObject(const TSharedPtr<FJsonObject>*& OutObject) const
{
	OutObject = &Value;
	return true;
}

bool FJsonValueObject::TryGetObject(TSharedPtr<FJsonObject>*& OutObject)
{
	OutObject = &Value;
	return true;
}

FString FJsonValueObject::GetType() const
{
	return TEXT("Object");
}

// FJsonValueNull --------------------------------------------------------------------------------

FJsonValueNull::FJsonValueNull()
{
	Type = EJson::Null;
}

FJsonValueNull::~FJsonValueNull() = default;

FString FJsonValueNull::GetType() const
{
	return TEXT("Null");
}
