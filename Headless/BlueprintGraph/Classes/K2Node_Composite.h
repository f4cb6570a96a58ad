#pragma once

#include "CoreMinimal.h"
#include "K2Node_Tunnel.h"

#define UE_API BLUEPRINTGRAPH_API

class UEdGraph;

/** A collapsed graph: a node whose pins are the boundary of the graph it holds (BoundGraph). */
class UK2Node_Composite : public UK2Node_Tunnel
{
	DECLARE_CLASS(UK2Node_Composite, UK2Node_Tunnel, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_Composite();

	/** The graph the node stands for; its entry and exit tunnels give the node its pins. */
	TObjectPtr<UEdGraph> BoundGraph;

	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual bool CanUserDeleteNode() const override { return true; }
	UE_API virtual void OnRenameNode(const FString& NewName) override;

	/** Makes an empty bound graph with its entry and exit tunnels, twinned with this node. */
	UE_API UEdGraph* CreateBoundGraph(FName GraphName);
	UE_API UK2Node_Tunnel* GetEntryNode() const;
	UE_API UK2Node_Tunnel* GetExitNode() const;
};

#undef UE_API
