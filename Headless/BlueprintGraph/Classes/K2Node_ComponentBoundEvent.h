#pragma once

#include "CoreMinimal.h"
#include "K2Node_Event.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class FMulticastDelegateProperty;
class FObjectProperty;

/** An event bound to a delegate of one of the Blueprint's components ("On Component Hit (Mesh)"). */
class UK2Node_ComponentBoundEvent : public UK2Node_Event
{
	DECLARE_CLASS(UK2Node_ComponentBoundEvent, UK2Node_Event, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_ComponentBoundEvent();

	/** The delegate the event is bound to. */
	FName DelegatePropertyName;
	/** The class declaring that delegate. */
	TObjectPtr<UClass> DelegateOwnerClass;
	/** The component variable whose delegate is bound. */
	FName ComponentPropertyName;

	// UEdGraphNode interface
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;
	UE_API virtual void ReconstructNode() override;
	// End of UEdGraphNode interface

	/** True while both the component variable and the delegate still exist. */
	UE_API bool IsDelegateValid() const;

	/** Binds the node to InDelegateProperty of the component held by InComponentProperty. */
	UE_API void InitializeComponentBoundEventParams(const FObjectProperty* InComponentProperty, const FMulticastDelegateProperty* InDelegateProperty);
	/**
	 * The same by the component variable's name, for a component the Blueprint declares but its class does not hold
	 * yet (added to the construction script since the last compile).
	 */
	UE_API void InitializeComponentBoundEventParams(FName InComponentPropertyName, const FMulticastDelegateProperty* InDelegateProperty);

	/** The delegate property, or null if the owner class no longer has it. */
	UE_API FMulticastDelegateProperty* GetTargetDelegateProperty() const;

	/** The component variable in the Blueprint's class, or null. */
	UE_API FObjectProperty* GetComponentProperty() const;
};

#undef UE_API
