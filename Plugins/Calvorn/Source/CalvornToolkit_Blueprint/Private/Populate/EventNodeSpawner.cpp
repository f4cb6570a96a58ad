#include "Populate/EventNodeSpawner.h"

#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "EdGraphSchema_K2_Actions.h"
#include "Engine/Blueprint.h"
#include "K2Node_CustomEvent.h"
#include "K2Node_Event.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Populate/GraphModificationRecords.h"
#include "ToolResult.h"

namespace
{
	/** Errors of the request itself (nothing to name, nothing to override) fail the call. */
	bool FailWithError(Calvorn::FToolResult& Result, FString& OutError, const FString& Reason)
	{
		OutError = Reason;
		Result.AddErrorMessage(FString::Printf(TEXT("[Failure] %s"), *Reason));
		return false;
	}

	/** A node that could not be placed fails only its own item of the batch. */
	bool FailItem(Calvorn::FToolResult& Result, FString& OutError, const FString& Reason)
	{
		OutError = Reason;
		Result.AddWarningMessage(FString::Printf(TEXT("[Failure] %s"), *Reason));
		return false;
	}

	bool SpawnOverrideEvent(UBlueprint* Blueprint, UEdGraph* Graph, const FString& EventName, bool bAllowDuplicate, Calvorn::FToolResult& Result, UEdGraphNode*& OutNode, FString& OutError)
	{
		const FName EventFName(*EventName);
		UFunction* Function = nullptr;
		UClass* DeclaringClass = FBlueprintEditorUtils::GetOverrideFunctionClass(Blueprint, EventFName, &Function);
		if (!DeclaringClass)
		{
			return FailWithError(Result, OutError, FString::Printf(TEXT("Event '%s' not found on class '%s'"), *EventName, TEXT("Unknown")));
		}
		if (!Function || !UEdGraphSchema_K2::FunctionCanBePlacedAsEvent(Function))
		{
			return FailWithError(Result, OutError, FString::Printf(TEXT("Event '%s' not found on class '%s'"), *EventName, *DeclaringClass->GetName()));
		}

		// An override may exist once per Blueprint: a repeated request gets the node already there, so sending the
		// same request twice does no harm.
		if (!bAllowDuplicate)
		{
			if (UK2Node_Event* Existing = FBlueprintEditorUtils::FindOverrideForFunction(Blueprint, DeclaringClass, EventFName))
			{
				const FString ShortId = Existing->NodeGuid.ToString(EGuidFormats::Digits).Left(7);
				Result.AddWarningMessage(FString::Printf(TEXT("[Warning] Event '%s' already exists in EventGraph; reusing node %s"), *EventName, *ShortId));
				OutNode = Existing;
				return true;
			}
		}

		Graph->Modify();
		const FVector2D Location = Graph->GetGoodPlaceForNewNode();
		UK2Node_Event* EventNode = FEdGraphSchemaAction_K2NewNode::SpawnNode<UK2Node_Event>(Graph, Location, EK2NewNodeFlags::SelectNewNode,
			[EventFName, DeclaringClass](UK2Node_Event* NewNode)
			{
				NewNode->EventReference.SetExternalMember(EventFName, DeclaringClass);
				NewNode->bOverrideFunction = true;
			});
		if (!EventNode)
		{
			return FailItem(Result, OutError, FString::Printf(TEXT("Failed to create event override '%s'"), *EventName));
		}
		FBlueprintEditorUtils::MarkBlueprintAsStructurallyModified(Blueprint);
		Result.AddSuccessMessage(FString::Printf(TEXT("Created override for Event %s in parent class %s"), *EventName, *DeclaringClass->GetName()));
		OutNode = EventNode;
		return true;
	}

	bool SpawnCustomEvent(UBlueprint* Blueprint, UEdGraph* Graph, const FString& EventName, Calvorn::FToolResult& Result, UEdGraphNode*& OutNode, FString& OutError)
	{
		// No reuse here: a custom event of the same name elsewhere does not stop the request (the compiler is the
		// one to report a clash), so the client always gets the node it asked for.
		Graph->Modify();
		const FVector2D Location = Graph->GetGoodPlaceForNewNode();
		const FName EventFName(*EventName);
		UK2Node_CustomEvent* EventNode = FEdGraphSchemaAction_K2NewNode::SpawnNode<UK2Node_CustomEvent>(Graph, Location, EK2NewNodeFlags::None,
			[EventFName](UK2Node_CustomEvent* NewNode)
			{
				NewNode->CustomFunctionName = EventFName;
				NewNode->bIsEditable = true;
			});
		if (!EventNode)
		{
			return FailItem(Result, OutError, FString::Printf(TEXT("Failed to create custom event '%s'"), *EventName));
		}
		FBlueprintEditorUtils::MarkBlueprintAsStructurallyModified(Blueprint);
		Result.AddSuccessMessage(FString::Printf(TEXT("Created custom event '%s' in EventGraph '%s'"), *EventName, *Graph->GetName()));
		OutNode = EventNode;
		return true;
	}
}

bool FEventNodeSpawner::IsTruthyText(const FString& Text)
{
	return Text.Equals(TEXT("true"), ESearchCase::IgnoreCase) || Text.Equals(TEXT("1"), ESearchCase::IgnoreCase) || Text.Equals(TEXT("yes"), ESearchCase::IgnoreCase);
}

FString FEventNodeSpawner::CleanEventName(const FString& Name)
{
	FString Cleaned = Name.TrimStartAndEnd();
	Cleaned.ReplaceInline(TEXT(" "), TEXT(""), ESearchCase::IgnoreCase);
	Cleaned.ReplaceInline(TEXT("."), TEXT("_"), ESearchCase::IgnoreCase);
	Cleaned.ReplaceInline(TEXT("("), TEXT("_"), ESearchCase::IgnoreCase);
	Cleaned.ReplaceInline(TEXT(")"), TEXT("_"), ESearchCase::IgnoreCase);
	return Cleaned;
}

bool FEventNodeSpawner::SpawnEventNode(UBlueprint* Blueprint, UEdGraph* Graph, const FNodeModificationRecord& Record, Calvorn::FToolResult& Result, UEdGraphNode*& OutNode, FString& OutError)
{
	OutNode = nullptr;
	OutError.Reset();

	if (!Blueprint || !Graph)
	{
		return FailWithError(Result, OutError, TEXT("Cannot create event node without a valid Blueprint and EventGraph"));
	}
	// Events run only from the ubergraph; in a function graph an event node would never fire.
	if (!Blueprint->UbergraphPages.Contains(Graph))
	{
		return FailItem(Result, OutError, FString::Printf(TEXT("Cannot create event nodes outside EventGraph '%s'"), *Graph->GetName()));
	}

	const bool bCustomEvent = Record.ClassName.Equals(TEXT("K2Node_CustomEvent"), ESearchCase::CaseSensitive);

	FString RequestedName = Record.GetMetadata(TEXT("event_name"));
	if (RequestedName.IsEmpty())
	{
		RequestedName = Record.MenuTitle;
	}
	const FString EventName = CleanEventName(RequestedName);
	if (EventName.IsEmpty())
	{
		return FailWithError(Result, OutError, TEXT("Event requests must include node_metadata.event_name"));
	}

	if (bCustomEvent)
	{
		return SpawnCustomEvent(Blueprint, Graph, EventName, Result, OutNode, OutError);
	}
	const bool bAllowDuplicate = IsTruthyText(Record.GetMetadata(TEXT("allow_duplicate")));
	return SpawnOverrideEvent(Blueprint, Graph, EventName, bAllowDuplicate, Result, OutNode, OutError);
}
