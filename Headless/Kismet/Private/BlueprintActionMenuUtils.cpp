#include "BlueprintActionMenuUtils.h"
#include "BlueprintActionFilter.h"
#include "BlueprintActionMenuBuilder.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode_Comment.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"

namespace
{
	constexpr int32 MainMenuSectionGroup = 0;
	constexpr int32 CommentDefaultWidth = 400;
	constexpr int32 CommentDefaultHeight = 100;

	/**
	 * "Add Comment...": a plain schema action (no node template, no spawner) that wraps a comment box around
	 * nothing, at the place the menu was opened.
	 */
	struct FAddCommentAction : public FEdGraphSchemaAction
	{
		FAddCommentAction()
			: FEdGraphSchemaAction(FText(), FText::FromString(TEXT("Add Comment...")), FText::FromString(TEXT("Adds a comment box that can be resized.")), MainMenuSectionGroup,
				FText::FromString(TEXT("comment note box")))
		{
		}

		virtual UEdGraphNode* PerformAction(UEdGraph* ParentGraph, UEdGraphPin* FromPin, const FVector2f& Location, bool bSelectNewNode = true) override
		{
			if (!ParentGraph)
			{
				return nullptr;
			}
			FGraphNodeCreator<UEdGraphNode_Comment> Creator(*ParentGraph);
			UEdGraphNode_Comment* Comment = Creator.CreateUserInvokedNode(bSelectNewNode);
			Comment->SetBounds(Location.X, Location.Y, Location.X + CommentDefaultWidth, Location.Y + CommentDefaultHeight);
			Creator.Finalize();
			return Comment;
		}
		using FEdGraphSchemaAction::PerformAction;
	};

	UClass* GetPinObjectClass(const UEdGraphPin* Pin)
	{
		if (!Pin)
		{
			return nullptr;
		}
		const FName Category = Pin->PinType.PinCategory;
		if (Category != UEdGraphSchema_K2::PC_Object && Category != UEdGraphSchema_K2::PC_Interface && Category != UEdGraphSchema_K2::PC_SoftObject)
		{
			return nullptr;
		}
		return Cast<UClass>(Pin->PinType.PinSubCategoryObject.Get());
	}
}

void FBlueprintActionMenuUtils::MakeContextMenu(const FBlueprintActionContext& Context, bool bIsContextSensitive, uint32 ClassTargetMask, FBlueprintActionMenuBuilder& MenuOut)
{
	uint32 FilterFlags = FBlueprintActionFilter::BPFILTER_NoFlags;
	if (bIsContextSensitive && (ClassTargetMask & EContextTargetFlags::TARGET_BlueprintLibraries) == 0)
	{
		FilterFlags |= FBlueprintActionFilter::BPFILTER_RejectGlobalFields;
	}

	// The classes whose members a context-sensitive menu is about.
	TArray<FBlueprintActionFilter::FTargetClassFilterData> TargetClasses;
	if (bIsContextSensitive)
	{
		if (ClassTargetMask & EContextTargetFlags::TARGET_Blueprint)
		{
			for (UBlueprint* Blueprint : Context.Blueprints)
			{
				FBlueprintActionFilter::AddUnique(TargetClasses, FBlueprintActionFilter::GetBlueprintClass(Blueprint));
			}
		}
		for (UEdGraphPin* Pin : Context.Pins)
		{
			if (ClassTargetMask & EContextTargetFlags::TARGET_PinObject)
			{
				FBlueprintActionFilter::AddUnique(TargetClasses, GetPinObjectClass(Pin));
			}
			UEdGraphNode* OwningNode = Pin ? Pin->GetOwningNodeUnchecked() : nullptr;
			if (OwningNode && (ClassTargetMask & EContextTargetFlags::TARGET_NodeTarget))
			{
				FBlueprintActionFilter::AddUnique(TargetClasses, GetPinObjectClass(OwningNode->FindPin(UEdGraphSchema_K2::PN_Self, EGPD_Input)));
			}
			if (OwningNode && (ClassTargetMask & EContextTargetFlags::TARGET_SiblingPinObjects))
			{
				for (UEdGraphPin* Sibling : OwningNode->Pins)
				{
					if (Sibling->Direction == EGPD_Output)
					{
						FBlueprintActionFilter::AddUnique(TargetClasses, GetPinObjectClass(Sibling));
					}
				}
			}
		}
		if (TargetClasses.Num() > 0)
		{
			FilterFlags |= FBlueprintActionFilter::BPFILTER_RejectNonTargetMembers;
		}
	}

	FBlueprintActionFilter MainMenuFilter(FilterFlags);
	MainMenuFilter.Context = Context;
	MainMenuFilter.Context.SelectedObjects.Empty();
	MainMenuFilter.TargetClasses = TargetClasses;
	if (!bIsContextSensitive)
	{
		// Without context sensitivity the menu does not depend on what was dragged.
		MainMenuFilter.Context.Pins.Empty();
	}

	MenuOut.Empty();
	MenuOut.AddMenuSection(MainMenuFilter, FText::GetEmpty(), MainMenuSectionGroup);
	MenuOut.RebuildActionList();

	// A comment box fits any Blueprint graph.
	bool bAllBlueprintGraphs = Context.Graphs.Num() > 0;
	for (const UEdGraph* Graph : Context.Graphs)
	{
		const UEdGraphSchema* Schema = Graph ? Graph->GetSchema() : nullptr;
		bAllBlueprintGraphs &= Schema && Schema->IsA(UEdGraphSchema_K2::StaticClass());
	}
	if (bAllBlueprintGraphs)
	{
		MenuOut.AddAction(MakeShared<FAddCommentAction>());
	}
}
