#pragma once

#include "CoreMinimal.h"
#include "EdGraph/EdGraphPin.h"

/**
 * Which pin types a promotable operator may widen into which. Only the numeric ladder is known here:
 * byte -> int -> int64 -> real, and float real -> double real. Struct promotions come with the operator nodes.
 */
class FTypePromotion
{
public:
	/** True if a pin of type A can be promoted so that it accepts B. */
	static BLUEPRINTGRAPH_API bool IsValidPromotion(const FEdGraphPinType& A, const FEdGraphPinType& B);

	/** The wider of two numeric types, or the first when neither promotes into the other. */
	static BLUEPRINTGRAPH_API FEdGraphPinType GetHigherType(const FEdGraphPinType& A, const FEdGraphPinType& B);
};
