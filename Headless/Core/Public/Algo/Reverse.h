#pragma once

#include "CoreTypes.h"

#include <algorithm>
#include <iterator>

namespace Algo
{
	/** Reverses the order of the elements in place. */
	template <typename RangeType>
	void Reverse(RangeType&& Range)
	{
		std::reverse(std::begin(Range), std::end(Range));
	}

	template <typename T>
	void Reverse(T* Array, SIZE_T ArraySize)
	{
		std::reverse(Array, Array + ArraySize);
	}
}
