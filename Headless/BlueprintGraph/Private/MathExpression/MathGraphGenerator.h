#pragma once

#include "CoreMinimal.h"
#include "Containers/Array.h"
#include "Misc/Guid.h"
#include "UObject/NameTypes.h"

class FCompilerResultsLog;
class UK2Node;
class UK2Node_MathExpression;

namespace UE::BlueprintGraph::MathExpression
{
	struct FExpressionNode;

	/**
	 * Builds the bound graph of Node from a parsed expression: one call of a library function per operator and
	 * function, a variable read per Blueprint variable, an entry input per other name (a double, unless the pin
	 * already exists), literals typed into the pins they feed, the result on the exit's ReturnValue. Variables found
	 * on the Blueprint are rewritten in Root as "{guid}" tokens. Problems go to Log, naming Node; returns false if any
	 * were logged. OutUsedInputs receives the entry pins the expression reads.
	 */
	bool GenerateGraph(UK2Node_MathExpression& Node, FExpressionNode& Root, FCompilerResultsLog& Log, TArray<FName>& OutUsedInputs);

	/** The name of the variable a guid stands for in Node's Blueprint: a member, else a local of Node's function. */
	FName FindVariableNameByGuid(const UK2Node& Node, const FGuid& VariableGuid);
}
