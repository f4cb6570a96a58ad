#pragma once

#include "CoreTypes.h"

#include <functional>

namespace Algo
{
	/** True when any element converts to true. An empty range gives false. */
	template <typename RangeType>
	[[nodiscard]] constexpr bool AnyOf(const RangeType& Range)
	{
		for (const auto& Element : Range)
		{
			if (Element)
			{
				return true;
			}
		}
		return false;
	}

	/** True when Predicate holds for any element. An empty range gives false. */
	template <typename RangeType, typename PredicateType>
	[[nodiscard]] constexpr bool AnyOf(const RangeType& Range, PredicateType Predicate)
	{
		for (const auto& Element : Range)
		{
			if (std::invoke(Predicate, Element))
			{
				return true;
			}
		}
		return false;
	}
}
