#pragma once

#include "CoreMinimal.h"
#include "K2Node.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/**
 * Base of the nodes that make an object of a class chosen on a "Class" pin: once a class is known, each of its
 * properties marked ExposeOnSpawn becomes an input.
 */
class UK2Node_ConstructObjectFromClass : public UK2Node
{
	DECLARE_CLASS(UK2Node_ConstructObjectFromClass, UK2Node, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual FText GetMenuCategory() const override;
	UE_API virtual FText GetKeywords() const override;
	UE_API virtual void PostPlacedNewNode() override;
	UE_API virtual void ReallocatePinsDuringReconstruction(TArray<UEdGraphPin*>& OldPins) override;
	UE_API virtual void ReconstructNode() override;
	UE_API virtual void PinConnectionListChanged(UEdGraphPin* Pin) override;
	UE_API virtual void PinDefaultValueChanged(UEdGraphPin* Pin) override;
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;

	UE_API UEdGraphPin* GetClassPin(const TArray<UEdGraphPin*>* InPinsToSearch = nullptr) const;
	UE_API UEdGraphPin* GetWorldContextPin() const;
	UE_API UEdGraphPin* GetResultPin() const;
	UE_API UEdGraphPin* GetOuterPin() const;

	/** The class chosen on the Class pin (its value, or the class type of what is wired to it). */
	UE_API UClass* GetClassToSpawn(const TArray<UEdGraphPin*>* InPinsToSearch = nullptr) const;

	/** Whether the pin is one of the class's exposed properties. */
	UE_API virtual bool IsSpawnVarPin(UEdGraphPin* Pin) const;

protected:
	/** The class the Class pin accepts. */
	UE_API virtual UClass* GetClassPinBaseClass() const;
	/** Whether the node has a world context input (Blueprints whose parent asks for it). */
	UE_API virtual bool UseWorldContext() const;
	/** Whether the node has an "Outer" input. */
	virtual bool UseOuter() const { return false; }
	UE_API virtual FText GetBaseNodeTitle() const;
	UE_API virtual FText GetDefaultNodeTitle() const;
	UE_API virtual FText GetNodeTitleFormat() const;

	/** Adds the inputs for the class's exposed properties and types the result as the class. */
	UE_API void CreatePinsForClass(UClass* InClass, TArray<UEdGraphPin*>* OutClassPins = nullptr);
	/** Rebuilds the property inputs after the class changed, keeping links that still fit. */
	UE_API void OnClassPinChanged();

	FText NodeTooltip;
};

#undef UE_API
