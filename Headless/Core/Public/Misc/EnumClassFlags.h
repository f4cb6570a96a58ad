#pragma once

#include <type_traits>

// Bitwise operators for flag enums, as the engine spells them. Plain enums (EObjectFlags) and
// enum classes (EEnumFlags) both get |, &, ^, ~ and the compound forms, keeping the enum type so
// a combination still reads as flags and cannot be passed where another flag type is wanted.
#define ENUM_CLASS_FLAGS(Enum) \
	inline constexpr Enum& operator|=(Enum& Lhs, Enum Rhs) { return Lhs = (Enum)((std::underlying_type_t<Enum>)Lhs | (std::underlying_type_t<Enum>)Rhs); } \
	inline constexpr Enum& operator&=(Enum& Lhs, Enum Rhs) { return Lhs = (Enum)((std::underlying_type_t<Enum>)Lhs & (std::underlying_type_t<Enum>)Rhs); } \
	inline constexpr Enum& operator^=(Enum& Lhs, Enum Rhs) { return Lhs = (Enum)((std::underlying_type_t<Enum>)Lhs ^ (std::underlying_type_t<Enum>)Rhs); } \
	inline constexpr Enum operator|(Enum Lhs, Enum Rhs) { return (Enum)((std::underlying_type_t<Enum>)Lhs | (std::underlying_type_t<Enum>)Rhs); } \
	inline constexpr Enum operator&(Enum Lhs, Enum Rhs) { return (Enum)((std::underlying_type_t<Enum>)Lhs & (std::underlying_type_t<Enum>)Rhs); } \
	inline constexpr Enum operator^(Enum Lhs, Enum Rhs) { return (Enum)((std::underlying_type_t<Enum>)Lhs ^ (std::underlying_type_t<Enum>)Rhs); } \
	inline constexpr bool operator!(Enum E) { return !(std::underlying_type_t<Enum>)E; } \
	inline constexpr Enum operator~(Enum E) { return (Enum)~(std::underlying_type_t<Enum>)E; }

// The same operators declared as friends, for an enum nested in a class.
#define FRIEND_ENUM_CLASS_FLAGS(Enum) \
	friend constexpr Enum& operator|=(Enum& Lhs, Enum Rhs); \
	friend constexpr Enum& operator&=(Enum& Lhs, Enum Rhs); \
	friend constexpr Enum& operator^=(Enum& Lhs, Enum Rhs); \
	friend constexpr Enum operator|(Enum Lhs, Enum Rhs); \
	friend constexpr Enum operator&(Enum Lhs, Enum Rhs); \
	friend constexpr Enum operator^(Enum Lhs, Enum Rhs); \
	friend constexpr bool operator!(Enum E); \
	friend constexpr Enum operator~(Enum E);

template <typename Enum>
constexpr bool EnumHasAllFlags(Enum Flags, Enum Contains)
{
	using UnderlyingType = std::underlying_type_t<Enum>;
	return ((UnderlyingType)Flags & (UnderlyingType)Contains) == (UnderlyingType)Contains;
}

template <typename Enum>
constexpr bool EnumHasAnyFlags(Enum Flags, Enum Contains)
{
	using UnderlyingType = std::underlying_type_t<Enum>;
	return ((UnderlyingType)Flags & (UnderlyingType)Contains) != 0;
}

template <typename Enum>
void EnumAddFlags(Enum& Flags, Enum FlagsToAdd)
{
	using UnderlyingType = std::underlying_type_t<Enum>;
	Flags = (Enum)((UnderlyingType)Flags | (UnderlyingType)FlagsToAdd);
}

template <typename Enum>
void EnumRemoveFlags(Enum& Flags, Enum FlagsToRemove)
{
	using UnderlyingType = std::underlying_type_t<Enum>;
	Flags = (Enum)((UnderlyingType)Flags & ~(UnderlyingType)FlagsToRemove);
}
