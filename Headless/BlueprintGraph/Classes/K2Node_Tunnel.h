#pragma once

#include "CoreMinimal.h"
#include "K2Node_EditablePinBase.h"
#include "UObject/ObjectPtr.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/**
 * The boundary of a macro or collapsed graph. Inside the graph, the entry tunnel's outputs are what the graph
 * takes and the exit tunnel's inputs what it gives; the node standing for the graph outside mirrors them.
 */
class UK2Node_Tunnel : public UK2Node_EditablePinBase
{
	DECLARE_CLASS(UK2Node_Tunnel, UK2Node_EditablePinBase, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	/** The tunnel on the other side that this one's inputs flow out of. */
	TObjectPtr<UK2Node_Tunnel> OutputSourceNode;
	/** The tunnel on the other side that this one's outputs flow into. */
	TObjectPtr<UK2Node_Tunnel> InputSinkNode;
	/** Whether the tunnel may have inputs (an exit) and outputs (an entry). */
	bool bCanHaveInputs = false;
	bool bCanHaveOutputs = false;

	UE_API UK2Node_Tunnel();

	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual bool CanUserDeleteNode() const override;
	UE_API virtual void DestroyNode() override;

	//~ UK2Node_EditablePinBase: inputs only on an exit, outputs only on an entry; the twin outside mirrors them.
	UE_API virtual UEdGraphPin* CreatePinFromUserDefinition(const TSharedPtr<FUserPinInfo> NewPinInfo) override;
	UE_API virtual bool CanCreateUserDefinedPin(const FEdGraphPinType& InPinType, EEdGraphPinDirection InDesiredDirection, FText& OutErrorMessage) override;
	virtual bool CanModifyExecutionWires() override { return true; }

	UK2Node_Tunnel* GetInputSink() const { return InputSinkNode; }
	UK2Node_Tunnel* GetOutputSource() const { return OutputSourceNode; }
	bool DrawNodeAsEntry() const { return !bCanHaveInputs && bCanHaveOutputs; }
	bool DrawNodeAsExit() const { return bCanHaveInputs && !bCanHaveOutputs; }

	/** The pins that are wildcards in the definition, resolved together when one is wired. */
	TArray<UEdGraphPin*> WildcardPins;

protected:
	UE_API void CacheWildcardPins();
};

#undef UE_API
