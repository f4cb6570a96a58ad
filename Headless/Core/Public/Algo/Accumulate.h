#pragma once

#include "CoreTypes.h"

#include <functional>
#include <utility>

namespace Algo
{
	/** Folds the range from the left: Op(Op(Init, First), Second)... */
	template <typename T, typename RangeType, typename OpType>
	[[nodiscard]] T Accumulate(const RangeType& Range, T Init, OpType Op)
	{
		for (const auto& Element : Range)
		{
			Init = std::invoke(Op, std::move(Init), Element);
		}
		return Init;
	}

	/** Sum of the elements added to Init with operator+. */
	template <typename T, typename RangeType>
	[[nodiscard]] T Accumulate(const RangeType& Range, T Init)
	{
		return Algo::Accumulate(Range, std::move(Init), [](auto&& Acc, const auto& Element) { return Acc + Element; });
	}

	/** Folds MapOp(Element) for each element with Op. */
	template <typename T, typename RangeType, typename MapType, typename OpType>
	[[nodiscard]] T TransformAccumulate(const RangeType& Range, MapType MapOp, T Init, OpType Op)
	{
		for (const auto& Element : Range)
		{
			Init = std::invoke(Op, std::move(Init), std::invoke(MapOp, Element));
		}
		return Init;
	}

	/** Sum of MapOp(Element) added to Init. */
	template <typename T, typename RangeType, typename MapType>
	[[nodiscard]] T TransformAccumulate(const RangeType& Range, MapType MapOp, T Init)
	{
		return Algo::TransformAccumulate(Range, MapOp, std::move(Init), [](auto&& Acc, auto&& Value) { return Acc + Value; });
	}
}
