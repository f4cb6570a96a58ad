#pragma once

#include "Templates/TypeHash.h"
#include "Templates/UnrealTemplate.h"

#include <optional>

struct FNullOpt
{
	explicit constexpr FNullOpt(int) {}
};
inline constexpr FNullOpt NullOpt{0};

template <typename OptionalType>
class TOptional
{
public:
	TOptional() = default;
	TOptional(FNullOpt) {}
	TOptional(const OptionalType& InValue) : Value(InValue) {}
	TOptional(OptionalType&& InValue) : Value(MoveTemp(InValue)) {}

	template <typename... ArgTypes>
	OptionalType& Emplace(ArgTypes&&... Args)
	{
		return Value.emplace(Forward<ArgTypes>(Args)...);
	}

	bool IsSet() const { return Value.has_value(); }
	explicit operator bool() const { return Value.has_value(); }
	void Reset() { Value.reset(); }

	OptionalType& GetValue()
	{
		check(IsSet());
		return *Value;
	}

	const OptionalType& GetValue() const
	{
		check(IsSet());
		return *Value;
	}

	const OptionalType& Get(const OptionalType& DefaultValue) const { return IsSet() ? *Value : DefaultValue; }

	OptionalType* GetPtrOrNull() { return IsSet() ? &*Value : nullptr; }
	const OptionalType* GetPtrOrNull() const { return IsSet() ? &*Value : nullptr; }

	OptionalType& operator*() { return GetValue(); }
	const OptionalType& operator*() const { return GetValue(); }
	OptionalType* operator->() { return &GetValue(); }
	const OptionalType* operator->() const { return &GetValue(); }

	bool operator==(const TOptional& Other) const { return Value == Other.Value; }
	bool operator!=(const TOptional& Other) const { return Value != Other.Value; }

private:
	std::optional<OptionalType> Value;
};

template <typename OptionalType>
uint32 GetTypeHash(const TOptional<OptionalType>& Optional)
{
	return Optional.IsSet() ? GetTypeHash(*Optional) : 0;
}
