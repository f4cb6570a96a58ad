#pragma once

#include "CoreMinimal.h"
#include "K2Node.h"
#include "Templates/SubclassOf.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/**
 * "Cast To <Class>": tries to see an object as TargetType. Impure casts branch on success; pure casts have no
 * exec pins and report success on bSuccess.
 */
class UK2Node_DynamicCast : public UK2Node
{
	DECLARE_CLASS(UK2Node_DynamicCast, UK2Node, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	/** Whether the cast is pure; UseDefault follows the editor's setting (impure) when pins are made. */
	enum class EPureState : uint8
	{
		UseDefault,
		Pure,
		Impure
	};

	/** The class the object is cast to. */
	TSubclassOf<UObject> TargetType;
	EPureState PureState = EPureState::UseDefault;

	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual FText GetMenuCategory() const override;
	UE_API virtual FText GetKeywords() const override;
	UE_API virtual bool IsNodePure() const override;
	UE_API virtual void PostReconstructNode() override;
	UE_API virtual void ReallocatePinsDuringReconstruction(TArray<UEdGraphPin*>& OldPins) override;
	UE_API virtual void NotifyPinConnectionListChanged(UEdGraphPin* Pin) override;
	UE_API virtual bool IsConnectionDisallowed(const UEdGraphPin* MyPin, const UEdGraphPin* OtherPin, FString& OutReason) const override;
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;

	UE_API virtual UEdGraphPin* GetValidCastPin() const;
	UE_API virtual UEdGraphPin* GetInvalidCastPin() const;
	UE_API virtual UEdGraphPin* GetCastResultPin() const;
	UE_API virtual UEdGraphPin* GetCastSourcePin() const;
	UE_API virtual UEdGraphPin* GetBoolSuccessPin() const;

	/** Makes the cast pure or impure, rebuilding the pins if it has them. */
	UE_API void SetPurity(bool bNewPurity);

protected:
	UE_API void CreateExecPins();
	UE_API void CreateSuccessPin();
	/** Settles UseDefault into Pure or Impure. */
	UE_API void InitPureState();
	/** When a cast became pure, hands what ran into it on to what its success output ran. */
	UE_API bool ReconnectPureExecPins(TArray<UEdGraphPin*>& OldPins);
};

/** "Cast To <Class> Class": the class form of the cast, from a class reference to a class of TargetType. */
class UK2Node_ClassDynamicCast : public UK2Node_DynamicCast
{
	DECLARE_CLASS(UK2Node_ClassDynamicCast, UK2Node_DynamicCast, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual UEdGraphPin* GetCastSourcePin() const override;
	UE_API virtual void NotifyPinConnectionListChanged(UEdGraphPin* Pin) override;
	UE_API virtual bool IsConnectionDisallowed(const UEdGraphPin* MyPin, const UEdGraphPin* OtherPin, FString& OutReason) const override;
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;
};

#undef UE_API
