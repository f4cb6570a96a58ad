#pragma once

#include "CoreMinimal.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphPin.h"
#include "UObject/ObjectMacros.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class FBlueprintActionDatabaseRegistrar;
class UBlueprint;
class UEdGraphSchema_K2;

/** Base of every node of a Blueprint graph. What a node is (purity, menu, connection vetoes) lives in its virtuals. */
class UK2Node : public UEdGraphNode
{
	DECLARE_CLASS(UK2Node, UEdGraphNode, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node();

	/** A pure node has no exec pins and runs when its outputs are read. */
	virtual bool IsNodePure() const { return false; }

	/** Lets a node refuse a connection the schema would otherwise allow; OutReason is shown to the user. */
	virtual bool IsConnectionDisallowed(const UEdGraphPin* MyPin, const UEdGraphPin* OtherPin, FString& OutReason) const { return false; }

	/** True if the self pin accepts several objects (the call then runs once per object). */
	virtual bool AllowMultipleSelfs(bool bInputAsArray) const { return false; }

	/** Whether a non-container wildcard input may take an array. */
	virtual bool DoesInputWildcardPinAcceptArray(const UEdGraphPin* Pin) const { return true; }
	/** Whether a wildcard output may take a container. */
	virtual bool DoesOutputWildcardPinAcceptContainer(const UEdGraphPin* Pin) const { return true; }

	virtual bool ShouldShowNodeProperties() const { return false; }

	/** True when changing this node changes the Blueprint's structure (its class), so a full compile is needed. */
	virtual bool NodeCausesStructuralBlueprintChange() const { return false; }

	/** The menu category the node is listed under. */
	UE_API virtual FText GetMenuCategory() const;

	/**
	 * Gives the action database the menu entries that place this kind of node. The database asks the default
	 * object of every Blueprint node class, so a node class living in a module above this one (the gameplay tag
	 * switches) reaches the menu without this module knowing it. The base adds nothing.
	 */
	virtual void GetMenuActions(FBlueprintActionDatabaseRegistrar& ActionRegistrar) const {}

	/** Filters the action menu; the base keeps everything. */
	virtual bool IsActionFilteredOut(class FBlueprintActionFilter const& Filter) { return false; }

	/** After ReconstructNode: object pins of interface classes become interface pins. */
	UE_API virtual void PostReconstructNode() override;

	/** A linked input drops its typed value; an orphan without links goes away; then NotifyPinConnectionListChanged. */
	UE_API virtual void PinConnectionListChanged(UEdGraphPin* Pin) override;

	/**
	 * Links a node placed from a dragged pin: to the first pin that connects as is (an exec wire already in use gets
	 * the node inserted), else to one that needs a conversion; a dragged data output also chains then to execute.
	 */
	UE_API virtual void AutowireNewNode(UEdGraphPin* FromPin) override;

	/**
	 * Rebuilds the pins through ReallocatePinsDuringReconstruction, so a node can shape its new pins after its old
	 * ones; surviving pins keep their links and values, the rest become orphans while they still matter.
	 */
	UE_API virtual void ReconstructNode() override;

	/** Allocates the pins during reconstruction; OldPins are the pins being replaced. */
	UE_API virtual void ReallocatePinsDuringReconstruction(TArray<UEdGraphPin*>& OldPins);

	/** Reacts to a pin's type changing (wildcards resolving). */
	virtual void NotifyPinConnectionListChanged(UEdGraphPin* Pin) {}

	/** Whether the node draws as a compact node (title in the body). */
	virtual bool ShouldDrawCompact() const { return false; }

	/** The title drawn in the body of a compact node. */
	virtual FText GetCompactNodeTitle() const { return GetNodeTitle(ENodeTitleType::FullTitle); }

	/**
	 * Creates one pin per parameter of Function: for an entry, outputs for what the function takes; for an exit,
	 * inputs for what it returns. False if a parameter has no pin type.
	 */
	UE_API bool CreatePinsForFunctionEntryExit(const UFunction* Function, bool bForFunctionEntry);

	/** The Blueprint this node belongs to, found by walking the outers. */
	UE_API UBlueprint* GetBlueprint() const;

	/** True when the node lives in a Blueprint (templates and loose nodes do not). */
	bool HasValidBlueprint() const { return GetBlueprint() != nullptr; }

	/** The class the node's Blueprint generates (its skeleton or generated class, or the parent class). */
	UE_API UClass* GetBlueprintClassFromNode() const;

	/** Purity as a tool sees it: pure nodes have no exec pins. */
	UE_API bool HasExecPins() const;

	/** The node's "execute" input and "then" output, if it has them. */
	UE_API UEdGraphPin* GetExecPin() const;
	UE_API UEdGraphPin* GetThenPin() const;

	/** The K2 schema of this node's graph. */
	UE_API const UEdGraphSchema_K2* GetK2Schema() const;
};

#undef UE_API
