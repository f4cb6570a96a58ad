#pragma once

#include "CoreTypes.h"

#include <algorithm>
#include <functional>
#include <iterator>

namespace Algo
{
	/**
	 * Sorts a range in place with operator<. Not stable: equal elements may change order,
	 * as with the engine's introsort. Use Algo::StableSort when their order matters.
	 */
	template <typename RangeType>
	void Sort(RangeType&& Range)
	{
		std::sort(std::begin(Range), std::end(Range), [](const auto& A, const auto& B) { return A < B; });
	}

	/** Sorts a range in place; Predicate(A, B) returns true when A belongs before B. Not stable. */
	template <typename RangeType, typename PredicateType>
	void Sort(RangeType&& Range, PredicateType Predicate)
	{
		std::sort(std::begin(Range), std::end(Range),
			[&Predicate](const auto& A, const auto& B) { return std::invoke(Predicate, A, B); });
	}

	/** Sorts by a projection of each element (a member pointer or a callable) compared with operator<. Not stable. */
	template <typename RangeType, typename ProjectionType>
	void SortBy(RangeType&& Range, ProjectionType Projection)
	{
		std::sort(std::begin(Range), std::end(Range),
			[&Projection](const auto& A, const auto& B) { return std::invoke(Projection, A) < std::invoke(Projection, B); });
	}

	/** Sorts by a projection of each element compared with Predicate. Not stable. */
	template <typename RangeType, typename ProjectionType, typename PredicateType>
	void SortBy(RangeType&& Range, ProjectionType Projection, PredicateType Predicate)
	{
		std::sort(std::begin(Range), std::end(Range),
			[&Projection, &Predicate](const auto& A, const auto& B)
			{
				return std::invoke(Predicate, std::invoke(Projection, A), std::invoke(Projection, B));
			});
	}
}
