#pragma once

#include "CoreTypes.h"

#include <functional>
#include <iterator>
#include <memory>

namespace Algo
{
	/** Pointer to the first element equal to Value, or nullptr. */
	template <typename RangeType, typename ValueType>
	[[nodiscard]] auto Find(RangeType&& Range, const ValueType& Value) -> decltype(std::addressof(*std::begin(Range)))
	{
		for (auto&& Element : Range)
		{
			if (Element == Value)
			{
				return std::addressof(Element);
			}
		}
		return nullptr;
	}

	/** Pointer to the first element whose projection equals Value, or nullptr. */
	template <typename RangeType, typename ValueType, typename ProjectionType>
	[[nodiscard]] auto FindBy(RangeType&& Range, const ValueType& Value, ProjectionType Projection) -> decltype(std::addressof(*std::begin(Range)))
	{
		for (auto&& Element : Range)
		{
			if (std::invoke(Projection, Element) == Value)
			{
				return std::addressof(Element);
			}
		}
		return nullptr;
	}

	/** Pointer to the first element for which Predicate is true, or nullptr. */
	template <typename RangeType, typename PredicateType>
	[[nodiscard]] auto FindByPredicate(RangeType&& Range, PredicateType Predicate) -> decltype(std::addressof(*std::begin(Range)))
	{
		for (auto&& Element : Range)
		{
			if (std::invoke(Predicate, Element))
			{
				return std::addressof(Element);
			}
		}
		return nullptr;
	}

	/** Pointer to the last element equal to Value, or nullptr. */
	template <typename RangeType, typename ValueType>
	[[nodiscard]] auto FindLast(RangeType&& Range, const ValueType& Value) -> decltype(std::addressof(*std::begin(Range)))
	{
		decltype(std::addressof(*std::begin(Range))) Result = nullptr;
		for (auto&& Element : Range)
		{
			if (Element == Value)
			{
				Result = std::addressof(Element);
			}
		}
		return Result;
	}

	/** Pointer to the last element for which Predicate is true, or nullptr. */
	template <typename RangeType, typename PredicateType>
	[[nodiscard]] auto FindLastByPredicate(RangeType&& Range, PredicateType Predicate) -> decltype(std::addressof(*std::begin(Range)))
	{
		decltype(std::addressof(*std::begin(Range))) Result = nullptr;
		for (auto&& Element : Range)
		{
			if (std::invoke(Predicate, Element))
			{
				Result = std::addressof(Element);
			}
		}
		return Result;
	}
}
