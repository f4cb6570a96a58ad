#pragma once

#include "CoreTypes.h"

#include <cstring>
#include <type_traits>

// Hashes as the engine combines them. Values only ever decide bucket placement; nothing
// observable (iteration order, output) depends on them.

FORCEINLINE constexpr uint32 HashCombine(uint32 A, uint32 C)
{
	uint32 B = 0x9e3779b9;
	A += B;
	A -= B; A -= C; A ^= (C >> 13);
	B -= C; B -= A; B ^= (A << 8);
	C -= A; C -= B; C ^= (B >> 13);
	A -= B; A -= C; A ^= (C >> 12);
	B -= C; B -= A; B ^= (A << 16);
	C -= A; C -= B; C ^= (B >> 5);
	A -= B; A -= C; A ^= (C >> 3);
	B -= C; B -= A; B ^= (A << 10);
	C -= A; C -= B; C ^= (B >> 15);
	return C;
}

FORCEINLINE constexpr uint32 HashCombineFast(uint32 A, uint32 B)
{
	return A ^ (B + 0x9e3779b9 + (A << 6) + (A >> 2));
}

FORCEINLINE uint32 PointerHash(const void* Key)
{
	const UPTRINT PtrInt = reinterpret_cast<UPTRINT>(Key) >> 4;
	return static_cast<uint32>(PtrInt) ^ static_cast<uint32>(static_cast<uint64>(PtrInt) >> 32);
}

template <typename ScalarType>
FORCEINLINE constexpr std::enable_if_t<std::is_integral_v<ScalarType> || std::is_enum_v<ScalarType>, uint32> GetTypeHash(ScalarType Value)
{
	if constexpr (sizeof(ScalarType) <= 4)
	{
		return static_cast<uint32>(Value);
	}
	else
	{
		const uint64 Wide = static_cast<uint64>(Value);
		return static_cast<uint32>(Wide) + static_cast<uint32>(Wide >> 32) * 23;
	}
}

FORCEINLINE uint32 GetTypeHash(float Value)
{
	uint32 Bits;
	std::memcpy(&Bits, &Value, sizeof(Bits));
	return Bits;
}

FORCEINLINE uint32 GetTypeHash(double Value)
{
	uint64 Bits;
	std::memcpy(&Bits, &Value, sizeof(Bits));
	return GetTypeHash(Bits);
}

template <typename T>
FORCEINLINE uint32 GetTypeHash(T* Pointer)
{
	return PointerHash(Pointer);
}
