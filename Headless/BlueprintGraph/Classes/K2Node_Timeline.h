#pragma once

#include "CoreMinimal.h"
#include "K2Node.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class UTimelineTemplate;

/** Plays a timeline the Blueprint declares: play controls in, Update/Finished and one output per track out. */
class UK2Node_Timeline : public UK2Node
{
	DECLARE_CLASS(UK2Node_Timeline, UK2Node, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_Timeline();

	/** The timeline variable this node plays (its template is "<TimelineName>_Template"). */
	FName TimelineName;
	bool bAutoPlay = false;
	FGuid TimelineGuid;
	bool bLoop = false;
	bool bReplicated = false;
	bool bIgnoreTimeDilation = false;

	// UEdGraphNode interface
	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual void OnRenameNode(const FString& NewName) override;
	virtual bool CanDuplicateNode() const override { return false; }
	// End of UEdGraphNode interface

	// UK2Node interface
	virtual bool NodeCausesStructuralBlueprintChange() const override { return true; }
	// End of UK2Node interface

	/** The Blueprint's template of this timeline, or null. */
	UE_API UTimelineTemplate* FindTimelineTemplate() const;

	UE_API UEdGraphPin* GetPlayPin() const;
	UE_API UEdGraphPin* GetPlayFromStartPin() const;
	UE_API UEdGraphPin* GetStopPin() const;
	UE_API UEdGraphPin* GetReversePin() const;
	UE_API UEdGraphPin* GetReverseFromEndPin() const;
	UE_API UEdGraphPin* GetUpdatePin() const;
	UE_API UEdGraphPin* GetFinishedPin() const;
	UE_API UEdGraphPin* GetNewTimePin() const;
	UE_API UEdGraphPin* GetSetNewTimePin() const;
	UE_API UEdGraphPin* GetDirectionPin() const;
	/** The output of the track named TrackName, or null. */
	UE_API UEdGraphPin* GetTrackPin(const FName TrackName) const;
};

#undef UE_API
