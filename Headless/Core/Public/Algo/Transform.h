#pragma once

#include "CoreTypes.h"

#include <functional>

namespace Algo
{
	/** Adds Transform(Element) to Output (anything with Add) for each element of Input, in order. */
	template <typename InputRangeType, typename OutputType, typename TransformType>
	void Transform(const InputRangeType& Input, OutputType&& Output, TransformType Trans)
	{
		for (const auto& Value : Input)
		{
			Output.Add(std::invoke(Trans, Value));
		}
	}

	/** Like Transform, but only for the elements for which Predicate is true. */
	template <typename InputRangeType, typename OutputType, typename PredicateType, typename TransformType>
	void TransformIf(const InputRangeType& Input, OutputType&& Output, PredicateType Predicate, TransformType Trans)
	{
		for (const auto& Value : Input)
		{
			if (std::invoke(Predicate, Value))
			{
				Output.Add(std::invoke(Trans, Value));
			}
		}
	}
}
