#pragma once

#include "CoreTypes.h"

#include <functional>

namespace Algo
{
	/** True when every element converts to true. An empty range gives true. */
	template <typename RangeType>
	[[nodiscard]] constexpr bool AllOf(const RangeType& Range)
	{
		for (const auto& Element : Range)
		{
			if (!Element)
			{
				return false;
			}
		}
		return true;
	}

	/** True when Predicate holds for every element. An empty range gives true. */
	template <typename RangeType, typename PredicateType>
	[[nodiscard]] constexpr bool AllOf(const RangeType& Range, PredicateType Predicate)
	{
		for (const auto& Element : Range)
		{
			if (!std::invoke(Predicate, Element))
			{
				return false;
			}
		}
		return true;
	}
}
