#pragma once

#include "CoreMinimal.h"
#include "EdGraph/EdGraphPin.h"

class UFunction;

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

	/** The operator a math library function implements: the part of its name before the types ("Add" for Add_IntInt). */
	static BLUEPRINTGRAPH_API FName GetOpNameFromFunction(const UFunction* Function);

	/** Whether the function compares (==, !=, <, <=, >, >=): its result is a bool whatever the operand type. */
	static BLUEPRINTGRAPH_API bool IsComparisonFunc(const UFunction* Function);
	static BLUEPRINTGRAPH_API bool IsComparisonOpName(FName OpName);

	/**
	 * The math library function of the operator that best fits the given operand types: the one whose operands
	 * have the widest of the types (numbers promote up the ladder), or null when none takes them.
	 */
	static BLUEPRINTGRAPH_API UFunction* FindBestMatchingFunc(FName OpName, const TArray<FEdGraphPinType>& OperandTypes);

	/** Every math library function of the operator, in the library's order. */
	static BLUEPRINTGRAPH_API void GetAllFuncsForOp(FName OpName, TArray<UFunction*>& OutFuncs);
};
