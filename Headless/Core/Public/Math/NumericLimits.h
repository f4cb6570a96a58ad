#pragma once

#include "CoreTypes.h"

#include <limits>
#include <type_traits>

#define MIN_uint8  ((uint8)0x00)
#define MIN_uint16 ((uint16)0x0000)
#define MIN_uint32 ((uint32)0x00000000)
#define MIN_uint64 ((uint64)0x0000000000000000)
#define MIN_int8   ((int8)-128)
#define MIN_int16  ((int16)-32768)
#define MIN_int32  ((int32)0x80000000)
#define MIN_int64  ((int64)0x8000000000000000)

#define MAX_uint8  ((uint8)0xff)
#define MAX_uint16 ((uint16)0xffff)
#define MAX_uint32 ((uint32)0xffffffff)
#define MAX_uint64 ((uint64)0xffffffffffffffff)
#define MAX_int8   ((int8)0x7f)
#define MAX_int16  ((int16)0x7fff)
#define MAX_int32  ((int32)0x7fffffff)
#define MAX_int64  ((int64)0x7fffffffffffffff)

#define MIN_flt (1.175494351e-38F)
#define MAX_flt (3.402823466e+38F)
#define MIN_dbl (2.2250738585072014e-308)
#define MAX_dbl (1.7976931348623158e+308)

/**
 * Limits of the arithmetic types under the engine's names. As in the engine, Min() of a
 * floating-point type is the smallest positive normal value; Lowest() is the most negative.
 */
template <typename NumericType>
struct TNumericLimits
{
	static_assert(std::is_arithmetic_v<std::remove_cv_t<NumericType>>, "TNumericLimits is for arithmetic types");

	using NumericT = std::remove_cv_t<NumericType>;

	static constexpr NumericT Min() { return std::numeric_limits<NumericT>::min(); }
	static constexpr NumericT Max() { return std::numeric_limits<NumericT>::max(); }
	static constexpr NumericT Lowest() { return std::numeric_limits<NumericT>::lowest(); }
};
