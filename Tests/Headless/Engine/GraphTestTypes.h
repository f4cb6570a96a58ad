#pragma once

// A node and a schema for the graph tests: the node's pins depend on NumOutputs, and the schema answers
// every legal pair with a response the test picks, counting calls to its conversion and promotion hooks.

#include "CoreMinimal.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphSchema.h"
#include "UObject/UnrealType.h"

class UGraphTestNode : public UEdGraphNode
{
	DECLARE_CLASS(UGraphTestNode, UEdGraphNode, CLASS_None, CASTCLASS_None, TEXT("/Script/EngineTests"), NO_API)

public:
	int32 NumOutputs = 1;
	TArray<FName> ConnectionChanges;

	virtual void AllocateDefaultPins() override;
	virtual void PinConnectionListChanged(UEdGraphPin* Pin) override;
};

class UGraphTestSchema : public UEdGraphSchema
{
	DECLARE_CLASS(UGraphTestSchema, UEdGraphSchema, CLASS_None, CASTCLASS_None, TEXT("/Script/EngineTests"), NO_API)

public:
	ECanCreateConnectionResponse NextResponse = CONNECT_RESPONSE_MAKE;
	bool bHooksSucceed = true;
	mutable int32 ConversionCalls = 0;
	mutable int32 PromotionCalls = 0;

	virtual const FPinConnectionResponse CanCreateConnection(const UEdGraphPin* A, const UEdGraphPin* B) const override;
	virtual bool CreateAutomaticConversionNodeAndConnections(UEdGraphPin* A, UEdGraphPin* B) const override;
	virtual bool CreatePromotedConnection(UEdGraphPin* A, UEdGraphPin* B) const override;
	virtual FString IsPinDefaultValid(const UEdGraphPin* Pin, const FString& NewDefaultValue, UObject* NewDefaultObject, const FText& InNewDefaultText) const override;
};
