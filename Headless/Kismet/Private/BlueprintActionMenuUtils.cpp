#include "BlueprintActionMenuUtils.h"
#include "BlueprintActionDatabase.h"
#include "BlueprintActionDatabaseRegistrar.h"
#include "BlueprintActionFilter.h"
#include "BlueprintActionMenuBuilder.h"
#include "BlueprintActionMenuItem.h"
#include "BlueprintBoundEventNodeSpawner.h"
#include "Components/ActorComponent.h"
#include "Engine/SCS_Node.h"
#include "Engine/SimpleConstructionScript.h"
#include "GameFramework/Actor.h"
#include "K2Node_ComponentBoundEvent.h"
#include "BlueprintNodeSpawner.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode_Comment.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "K2Node_Timeline.h"
#include "Kismet2/BlueprintEditorUtils.h"

namespace
{
	constexpr int32 ComponentsSectionGroup = 100;
	constexpr int32 MainMenuSectionGroup = 0;

	/**
	 * "Add Comment...": the comment box is no Blueprint node and lives in the editor module, above the action
	 * database, so this module hands the database its spawner. A fresh box sits where the menu was opened, at the
	 * size the comment node gives itself.
	 */
	void RegisterCommentAction()
	{
		static bool bRegistered = false;
		if (bRegistered)
		{
			return;
		}
		bRegistered = true;
		FBlueprintActionDatabase::RegisterNodeSpecificActions(UEdGraphNode_Comment::StaticClass(),
			FBlueprintActionDatabase::FMakeNodeSpecificActions::CreateLambda([](FBlueprintActionDatabaseRegistrar& Registrar)
			{
				if (!Registrar.IsOpenForRegistration(UEdGraphNode_Comment::StaticClass()))
				{
					return;
				}
				UBlueprintNodeSpawner* Spawner = UBlueprintNodeSpawner::Create<UEdGraphNode_Comment>();
				Spawner->DefaultMenuSignature.MenuName = FText::FromString(TEXT("Add Comment..."));
				Registrar.AddBlueprintAction(Spawner);
			}));
	}

	/**
	 * "Add Timeline...": a timeline node needs its template made in the Blueprint, which only the editor
	 * utilities can do, so this one spawner lives here rather than in the database.
	 */
	UBlueprintNodeSpawner* GetTimelineSpawner()
	{
		static UBlueprintNodeSpawner* Spawner = nullptr;
		if (Spawner)
		{
			return Spawner;
		}
		auto MakeTimeline = [](UEdGraphNode* NewNode, bool bIsTemplate)
		{
			UK2Node_Timeline* Timeline = Cast<UK2Node_Timeline>(NewNode);
			UBlueprint* Blueprint = Timeline ? FBlueprintEditorUtils::FindBlueprintForNode(Timeline) : nullptr;
			if (bIsTemplate || !Blueprint)
			{
				return;
			}
			// "Timeline_0", "Timeline_1"...: the first name no member, graph or timeline of the Blueprint uses.
			for (int32 Index = 0;; ++Index)
			{
				const FString Candidate = FString::Printf(TEXT("Timeline_%d"), Index);
				if (FBlueprintEditorUtils::FindUniqueKismetName(Blueprint, Candidate) == FName(*Candidate))
				{
					Timeline->TimelineName = FName(*Candidate);
					break;
				}
			}
			FBlueprintEditorUtils::AddNewTimeline(Blueprint, Timeline->TimelineName);
		};
		Spawner = UBlueprintNodeSpawner::Create(UK2Node_Timeline::StaticClass(), nullptr, UBlueprintNodeSpawner::FCustomizeNodeDelegate::CreateLambda(MakeTimeline));
		Spawner->DefaultMenuSignature.MenuName = FText::FromString(TEXT("Add Timeline..."));
		Spawner->DefaultMenuSignature.Tooltip = FText::FromString(TEXT("Adds a timeline that plays keyframed values over time."));
		Spawner->DefaultMenuSignature.Keywords = FText::FromString(TEXT("timeline curve"));
		Spawner->AddToRoot();
		return Spawner;
	}

	/** Timelines play in event graphs of Blueprints that can hold them. */
	bool CanAddTimeline(const FBlueprintActionContext& Context)
	{
		if (Context.Blueprints.Num() == 0 || Context.Graphs.Num() == 0)
		{
			return false;
		}
		for (const UBlueprint* Blueprint : Context.Blueprints)
		{
			if (!Blueprint || !FBlueprintEditorUtils::DoesSupportTimelines(Blueprint))
			{
				return false;
			}
		}
		for (const UEdGraph* Graph : Context.Graphs)
		{
			const UBlueprint* Blueprint = FBlueprintEditorUtils::FindBlueprintForGraph(Graph);
			if (!Blueprint || !Blueprint->UbergraphPages.Contains(Graph))
			{
				return false;
			}
		}
		return true;
	}

	/** A component the Blueprint's graphs can bind events to, and the variable that names it. */
	struct FBindableComponent
	{
		UObject* Binding = nullptr;
		FName VariableName;
	};

	/**
	 * The components of an actor Blueprint in the order the components panel lists them: those the native parent
	 * class makes (when a visible property holds them), then the construction script nodes of each Blueprint from
	 * the oldest ancestor down to this one.
	 */
	TArray<FBindableComponent> GatherBindableComponents(UBlueprint* Blueprint)
	{
		TArray<FBindableComponent> Components;
		if (!Blueprint || !FBlueprintEditorUtils::IsActorBased(Blueprint))
		{
			return Components;
		}
		TArray<UBlueprint*> Chain;
		UClass* NativeParent = Blueprint->ParentClass.Get();
		Chain.Add(Blueprint);
		while (NativeParent)
		{
			UBlueprint* ParentBlueprint = UBlueprint::GetBlueprintFromClass(NativeParent);
			if (!ParentBlueprint || Chain.Contains(ParentBlueprint))
			{
				break;
			}
			Chain.Insert(ParentBlueprint, 0);
			NativeParent = ParentBlueprint->ParentClass.Get();
		}
		if (const AActor* NativeDefaults = NativeParent ? Cast<AActor>(NativeParent->GetDefaultObject()) : nullptr)
		{
			TArray<UActorComponent*> Native;
			NativeDefaults->GetComponents(Native);
			for (UActorComponent* Component : Native)
			{
				FBindableComponent Entry;
				UClass* ComponentClass = nullptr;
				Entry.Binding = Component;
				const FProperty* Holder = UBlueprintBoundEventNodeSpawner::ResolveComponentBinding(Component, Entry.VariableName, ComponentClass)
					? NativeParent->FindPropertyByName(Entry.VariableName) : nullptr;
				if (Holder && Holder->HasAnyPropertyFlags(CPF_BlueprintVisible))
				{
					Components.Add(Entry);
				}
			}
		}
		for (UBlueprint* Each : Chain)
		{
			if (USimpleConstructionScript* SCS = Each->SimpleConstructionScript.Get())
			{
				for (USCS_Node* Node : SCS->GetAllNodes())
				{
					FBindableComponent Entry;
					UClass* ComponentClass = nullptr;
					Entry.Binding = Node;
					if (UBlueprintBoundEventNodeSpawner::ResolveComponentBinding(Node, Entry.VariableName, ComponentClass))
					{
						Components.Add(Entry);
					}
				}
			}
		}
		return Components;
	}

	/**
	 * "Add Event for <Component>": the events of one component's delegates, one section per component as the
	 * editor shows a single selected component. The editor fills these sections from the components selected in
	 * its panel; a menu built without a selection (the headless editor has no panel) covers every component.
	 */
	void AddComponentEventSections(const FBlueprintActionContext& Context, FBlueprintActionMenuBuilder& MenuOut)
	{
		if (Context.Blueprints.Num() != 1)
		{
			return;
		}
		TArray<FBindableComponent> Components = GatherBindableComponents(Context.Blueprints[0]);
		if (Context.SelectedObjects.Num() > 0)
		{
			Components.RemoveAll([&Context](const FBindableComponent& Entry) { return !Context.SelectedObjects.Contains(Entry.Binding); });
		}
		for (const FBindableComponent& Component : Components)
		{
			FBlueprintActionFilter ComponentEvents;
			ComponentEvents.Context = Context;
			ComponentEvents.Context.Pins.Empty();
			ComponentEvents.Context.SelectedObjects.Empty();
			ComponentEvents.Context.SelectedObjects.Add(Component.Binding);
			ComponentEvents.PermittedNodeTypes.Add(UK2Node_ComponentBoundEvent::StaticClass());
			MenuOut.AddMenuSection(ComponentEvents, FText::FromString(FString::Printf(TEXT("Add Event for %s"), *Component.VariableName.ToString())), ComponentsSectionGroup);
		}
	}

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
	RegisterCommentAction();

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
	AddComponentEventSections(Context, MenuOut);
	MenuOut.RebuildActionList();

	if (CanAddTimeline(Context))
	{
		UBlueprintNodeSpawner* Timeline = GetTimelineSpawner();
		MenuOut.AddAction(MakeShared<FBlueprintActionMenuItem>(Timeline, Timeline->DefaultMenuSignature, IBlueprintNodeBinder::FBindingSet(), FText(), MainMenuSectionGroup));
	}

}
