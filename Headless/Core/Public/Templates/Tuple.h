#pragma once

#include "Templates/TypeHash.h"
#include "Templates/UnrealTemplate.h"

#include <cstddef>
#include <tuple>
#include <utility>

// TTuple of any arity; the two-element form is the engine's TPair with named Key and Value,
// which is what TMap hands out while iterating.
template <typename... Types>
struct TTuple : std::tuple<Types...>
{
	using std::tuple<Types...>::tuple;

	TTuple() = default;

	template <int32 Index>
	auto& Get() & { return std::get<Index>(static_cast<std::tuple<Types...>&>(*this)); }
	template <int32 Index>
	const auto& Get() const& { return std::get<Index>(static_cast<const std::tuple<Types...>&>(*this)); }

	template <typename FuncType>
	decltype(auto) ApplyAfter(FuncType&& Func) const
	{
		return std::apply(Forward<FuncType>(Func), static_cast<const std::tuple<Types...>&>(*this));
	}

	static constexpr int32 Num() { return sizeof...(Types); }
};

template <typename KeyType, typename ValueType>
struct TTuple<KeyType, ValueType>
{
	KeyType Key;
	ValueType Value;

	TTuple() = default;

	template <typename KeyArg, typename ValueArg>
	TTuple(KeyArg&& InKey, ValueArg&& InValue)
		: Key(Forward<KeyArg>(InKey)), Value(Forward<ValueArg>(InValue))
	{
	}

	template <int32 Index>
	auto& Get() &
	{
		static_assert(Index == 0 || Index == 1, "Index out of range for a pair");
		if constexpr (Index == 0) { return Key; } else { return Value; }
	}

	template <int32 Index>
	const auto& Get() const&
	{
		static_assert(Index == 0 || Index == 1, "Index out of range for a pair");
		if constexpr (Index == 0) { return Key; } else { return Value; }
	}

	template <typename FuncType>
	decltype(auto) ApplyAfter(FuncType&& Func) const
	{
		return Forward<FuncType>(Func)(Key, Value);
	}

	static constexpr int32 Num() { return 2; }

	bool operator==(const TTuple& Other) const { return Key == Other.Key && Value == Other.Value; }
	bool operator!=(const TTuple& Other) const { return !(*this == Other); }
	bool operator<(const TTuple& Other) const
	{
		if (Key < Other.Key) { return true; }
		if (Other.Key < Key) { return false; }
		return Value < Other.Value;
	}
};

template <typename KeyType, typename ValueType>
using TPair = TTuple<KeyType, ValueType>;

template <typename... Types>
TTuple<std::decay_t<Types>...> MakeTuple(Types&&... Args)
{
	return TTuple<std::decay_t<Types>...>(Forward<Types>(Args)...);
}

template <typename KeyType, typename ValueType>
uint32 GetTypeHash(const TTuple<KeyType, ValueType>& Pair)
{
	return HashCombineFast(GetTypeHash(Pair.Key), GetTypeHash(Pair.Value));
}

// Structured bindings: auto [Key, Value] = Pair;
namespace std
{
	template <typename... Types>
	struct tuple_size<TTuple<Types...>> : std::integral_constant<std::size_t, sizeof...(Types)>
	{
	};

	template <std::size_t Index, typename... Types>
	struct tuple_element<Index, TTuple<Types...>> : tuple_element<Index, tuple<Types...>>
	{
	};
}

template <std::size_t Index, typename... Types>
decltype(auto) get(TTuple<Types...>& Tuple) { return Tuple.template Get<static_cast<int32>(Index)>(); }
template <std::size_t Index, typename... Types>
decltype(auto) get(const TTuple<Types...>& Tuple) { return Tuple.template Get<static_cast<int32>(Index)>(); }
