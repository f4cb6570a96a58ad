#pragma once

#include "CoreTypes.h"

#include <algorithm>
#include <functional>
#include <iterator>

namespace Algo
{
	/** Sorts a range in place with operator<, keeping equal elements in their original order. */
	template <typename RangeType>
	void StableSort(RangeType&& Range)
	{
		std::stable_sort(std::begin(Range), std::end(Range), [](const auto& A, const auto& B) { return A < B; });
	}

	/** Stable sort; Predicate(A, B) returns true when A belongs before B. */
	template <typename RangeType, typename PredicateType>
	void StableSort(RangeType&& Range, PredicateType Predicate)
	{
		std::stable_sort(std::begin(Range), std::end(Range),
			[&Predicate](const auto& A, const auto& B) { return std::invoke(Predicate, A, B); });
	}

	/** Stable sort by a projection of each element compared with operator<. */
	template <typename RangeType, typename ProjectionType>
	void StableSortBy(RangeType&& Range, ProjectionType Projection)
	{
		std::stable_sort(std::begin(Range), std::end(Range),
			[&Projection](const auto& A, const auto& B) { return std::invoke(Projection, A) < std::invoke(Projection, B); });
	}

	/** Stable sort by a projection of each element compared with Predicate. */
	template <typename RangeType, typename ProjectionType, typename PredicateType>
	void StableSortBy(RangeType&& Range, ProjectionType Projection, PredicateType Predicate)
	{
		std::stable_sort(std::begin(Range), std::end(Range),
			[&Projection, &Predicate](const auto& A, const auto& B)
			{
				return std::invoke(Predicate, std::invoke(Projection, A), std::invoke(Projection, B));
			});
	}
}
