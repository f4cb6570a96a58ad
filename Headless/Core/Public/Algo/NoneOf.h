#pragma once

#include "CoreTypes.h"

#include <functional>

namespace Algo
{
	/** True when no element converts to true. An empty range gives true. */
	template <typename RangeType>
	[[nodiscard]] constexpr bool NoneOf(const RangeType& Range)
	{
		for (const auto& Element : Range)
		{
			if (Element)
			{
				return false;
			}
		}
		return true;
	}

	/** True when Predicate holds for no element. An empty range gives true. */
	template <typename RangeType, typename PredicateType>
	[[nodiscard]] constexpr bool NoneOf(const RangeType& Range, PredicateType Predicate)
	{
		for (const auto& Element : Range)
		{
			if (std::invoke(Predicate, Element))
			{
				return false;
			}
		}
		return true;
	}
}
