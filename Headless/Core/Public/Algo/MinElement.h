#pragma once

#include "CoreTypes.h"

#include <functional>
#include <iterator>
#include <memory>

namespace Algo
{
	/** Pointer to the smallest element (the first of equal ones), or nullptr for an empty range. */
	template <typename RangeType, typename PredicateType>
	[[nodiscard]] auto MinElement(RangeType&& Range, PredicateType Predicate) -> decltype(std::addressof(*std::begin(Range)))
	{
		decltype(std::addressof(*std::begin(Range))) Result = nullptr;
		for (auto&& Element : Range)
		{
			if (Result == nullptr || std::invoke(Predicate, Element, *Result))
			{
				Result = std::addressof(Element);
			}
		}
		return Result;
	}

	template <typename RangeType>
	[[nodiscard]] auto MinElement(RangeType&& Range) -> decltype(std::addressof(*std::begin(Range)))
	{
		return Algo::MinElement(Range, [](const auto& A, const auto& B) { return A < B; });
	}

	/** Pointer to the element with the smallest projection (the first of equal ones), or nullptr. */
	template <typename RangeType, typename ProjectionType, typename PredicateType>
	[[nodiscard]] auto MinElementBy(RangeType&& Range, ProjectionType Projection, PredicateType Predicate) -> decltype(std::addressof(*std::begin(Range)))
	{
		return Algo::MinElement(Range, [&Projection, &Predicate](const auto& A, const auto& B)
			{
				return std::invoke(Predicate, std::invoke(Projection, A), std::invoke(Projection, B));
			});
	}

	template <typename RangeType, typename ProjectionType>
	[[nodiscard]] auto MinElementBy(RangeType&& Range, ProjectionType Projection) -> decltype(std::addressof(*std::begin(Range)))
	{
		return Algo::MinElementBy(Range, Projection, [](const auto& A, const auto& B) { return A < B; });
	}
}
