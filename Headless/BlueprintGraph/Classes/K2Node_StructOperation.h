#pragma once

#include "CoreMinimal.h"
#include "K2Node.h"
#include "UObject/ObjectPtr.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class UScriptStruct;
class FProperty;

/** Base of the nodes that work member by member on one struct type. */
class UK2Node_StructOperation : public UK2Node
{
	DECLARE_CLASS(UK2Node_StructOperation, UK2Node, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	/** The struct the node works on. */
	TObjectPtr<UScriptStruct> StructType;

	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;
};

/** The struct member nodes: one pin per member a Blueprint may see, plus the whole struct on the other side. */
class UK2Node_StructMemberGet : public UK2Node_StructOperation
{
	DECLARE_CLASS(UK2Node_StructMemberGet, UK2Node_StructOperation, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)
};

class UK2Node_StructMemberSet : public UK2Node_StructOperation
{
	DECLARE_CLASS(UK2Node_StructMemberSet, UK2Node_StructOperation, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)
};

#undef UE_API
