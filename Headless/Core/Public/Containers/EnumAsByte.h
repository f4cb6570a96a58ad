#pragma once

#include "CoreTypes.h"
#include "Templates/TypeHash.h"
#include <type_traits>

/** Stores an old-style (unscoped) enum in one byte, as reflected properties of that kind expect. */
template <typename InEnumType>
class TEnumAsByte
{
	static_assert(std::is_enum_v<InEnumType>, "TEnumAsByte holds enumerations only");

public:
	using EnumType = InEnumType;

	TEnumAsByte() = default;
	TEnumAsByte(EnumType InValue) : Value(static_cast<uint8>(InValue)) {}
	explicit TEnumAsByte(int32 InValue) : Value(static_cast<uint8>(InValue)) {}
	explicit TEnumAsByte(uint8 InValue) : Value(InValue) {}

	TEnumAsByte& operator=(EnumType InValue)
	{
		Value = static_cast<uint8>(InValue);
		return *this;
	}

	bool operator==(EnumType InValue) const { return static_cast<EnumType>(Value) == InValue; }
	bool operator==(TEnumAsByte InValue) const { return Value == InValue.Value; }

	operator EnumType() const { return static_cast<EnumType>(Value); }
	EnumType GetValue() const { return static_cast<EnumType>(Value); }
	uint8 GetIntValue() const { return Value; }

	friend uint32 GetTypeHash(const TEnumAsByte& Enum) { return GetTypeHash(Enum.Value); }

private:
	uint8 Value = 0;
};
