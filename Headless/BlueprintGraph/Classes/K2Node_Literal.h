#pragma once

#include "CoreMinimal.h"
#include "K2Node.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class AActor;

/** A reference to one object, usually an actor of the level a level Blueprint belongs to. */
class UK2Node_Literal : public UK2Node
{
	DECLARE_CLASS(UK2Node_Literal, UK2Node, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_Literal();

	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual void PostReconstructNode() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	virtual bool IsNodePure() const override { return true; }

	/** The single output, named after the object. */
	UE_API UEdGraphPin* GetValuePin() const;

	/** Points the node at NewValue: the output takes its class as type and its name as pin name. */
	UE_API void SetObjectRef(UObject* NewValue);
	UObject* GetObjectRef() const { return ObjectRef; }

	UE_API AActor* GetReferencedLevelActor() const;

private:
	TObjectPtr<UObject> ObjectRef;
};

#undef UE_API
