#pragma once

#include "CoreTypes.h"

#include <functional>

namespace Algo
{
	/** Number of elements equal to Value. */
	template <typename RangeType, typename ValueType>
	[[nodiscard]] SIZE_T Count(const RangeType& Range, const ValueType& Value)
	{
		SIZE_T Result = 0;
		for (const auto& Element : Range)
		{
			if (Element == Value)
			{
				++Result;
			}
		}
		return Result;
	}

	/** Number of elements for which Predicate holds. */
	template <typename RangeType, typename PredicateType>
	[[nodiscard]] SIZE_T CountIf(const RangeType& Range, PredicateType Predicate)
	{
		SIZE_T Result = 0;
		for (const auto& Element : Range)
		{
			if (std::invoke(Predicate, Element))
			{
				++Result;
			}
		}
		return Result;
	}

	/** Number of elements whose projection equals Value. */
	template <typename RangeType, typename ValueType, typename ProjectionType>
	[[nodiscard]] SIZE_T CountBy(const RangeType& Range, const ValueType& Value, ProjectionType Projection)
	{
		SIZE_T Result = 0;
		for (const auto& Element : Range)
		{
			if (std::invoke(Projection, Element) == Value)
			{
				++Result;
			}
		}
		return Result;
	}
}
