#pragma once

#include "CoreMinimal.h"
#include "K2Node_Tunnel.h"
#include "Misc/Guid.h"
#include "UObject/ObjectPtr.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class UBlueprint;
class UEdGraph;

/** A reference to a macro graph: the graph, the Blueprint holding it and its guid to find it again. */
struct FGraphReference
{
	UE_API static UScriptStruct* StaticStruct();

	/** The graph, found by guid in its Blueprint when the pointer is not set. */
	UE_API UEdGraph* GetGraph() const;
	UBlueprint* GetBlueprint() const { return GraphBlueprint; }
	const FGuid& GetGraphGuid() const { return GraphGuid; }
	UE_API void SetGraph(UEdGraph* InGraph);

	bool operator==(const FGraphReference& Other) const
	{
		return MacroGraph == Other.MacroGraph && GraphBlueprint == Other.GraphBlueprint && GraphGuid == Other.GraphGuid;
	}

	mutable TObjectPtr<UEdGraph> MacroGraph;
	TObjectPtr<UBlueprint> GraphBlueprint;
	FGuid GraphGuid;
};

/** A use of a macro: pins mirrored from the macro graph's tunnels, wildcards taking the type they are wired to. */
class UK2Node_MacroInstance : public UK2Node_Tunnel
{
	DECLARE_CLASS(UK2Node_MacroInstance, UK2Node_Tunnel, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_MacroInstance();

	FGraphReference MacroGraphReference;
	/** The type the wildcards took, kept so a rebuilt node resolves them the same way. */
	FEdGraphPinType ResolvedWildcardType;
	/** Set when the pins must be rebuilt once the connection changes are over. */
	bool bReconstructNode = false;

	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual FText GetKeywords() const override;
	UE_API virtual FText GetMenuCategory() const override;
	UE_API virtual bool CanUserDeleteNode() const override { return true; }
	UE_API virtual void NotifyPinConnectionListChanged(UEdGraphPin* Pin) override;
	UE_API virtual void NodeConnectionListChanged() override;
	UE_API virtual void PostReconstructNode() override;
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;

	UEdGraph* GetMacroGraph() const { return MacroGraphReference.GetGraph(); }
	UBlueprint* GetSourceBlueprint() const { return MacroGraphReference.GetBlueprint(); }
	UE_API void SetMacroGraph(UEdGraph* Graph);

	/** The tunnel of the macro graph that the editor reads the title color, tooltip and keywords from. */
	UE_API static UK2Node_Tunnel* GetAssociatedGraphEntry(const UEdGraph* MacroGraph);
};

namespace UE::BlueprintGraph
{
	/**
	 * The engine's standard macro library (/Engine/EditorBlueprintResources/StandardMacros), built in memory the
	 * first time it is asked for: a macro library Blueprint whose macro graphs (ForEachLoop, ForLoop, WhileLoop,
	 * DoOnce, Do N, Gate, FlipFlop, IsValid...) declare their pins on their entry and exit tunnels.
	 */
	BLUEPRINTGRAPH_API UBlueprint* GetStandardMacros();

	/** A macro graph of the standard library by name ("ForEachLoop", "Do N"), or null. */
	BLUEPRINTGRAPH_API UEdGraph* FindStandardMacro(FName MacroName);
}

#undef UE_API
