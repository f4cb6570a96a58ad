#pragma once

#include "CoreMinimal.h"
#include "BlueprintNodeBinder.h"
#include "Delegates/Delegate.h"
#include "Math/Vector2D.h"
#include "Templates/SubclassOf.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class UEdGraph;
class UEdGraphNode;
struct FBlueprintActionContext;

/** How an action reads in the menu: its title, the category it sits under, its search words and its tooltip. */
struct FBlueprintActionUiSpec
{
	FText MenuName;
	FText Category;
	FText Tooltip;
	FText Keywords;
	FString DocExcerptTag;
};

/**
 * The action half of a menu entry: knows which node class it places and how to set the node up. Spawners are
 * made once, when the action database is built, and can place any number of nodes.
 */
class UBlueprintNodeSpawner : public UObject, public IBlueprintNodeBinder
{
	DECLARE_CLASS(UBlueprintNodeSpawner, UObject, CLASS_Transient, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	/** Called on a freshly made node before its pins exist; the bool says whether it is a menu template. */
	DECLARE_DELEGATE_TwoParams(FCustomizeNodeDelegate, UEdGraphNode*, bool);

	/** A spawner for NodeClass with no set-up beyond PostSpawnDelegate; null when the class is not a node class. */
	static UE_API UBlueprintNodeSpawner* Create(TSubclassOf<UEdGraphNode> NodeClass, UObject* Outer = nullptr, FCustomizeNodeDelegate PostSpawnDelegate = FCustomizeNodeDelegate());

	template <class NodeType>
	static UBlueprintNodeSpawner* Create(UObject* Outer = nullptr, FCustomizeNodeDelegate PostSpawnDelegate = FCustomizeNodeDelegate())
	{
		return Create(NodeType::StaticClass(), Outer, MoveTemp(PostSpawnDelegate));
	}

	/** The class of node Invoke places. */
	TSubclassOf<UEdGraphNode> NodeClass;
	/** The menu signature; empty fields are read from a template node the first time they are asked for. */
	FBlueprintActionUiSpec DefaultMenuSignature;
	FCustomizeNodeDelegate CustomizeNodeDelegate;

	/** How the action reads in a menu for this context. */
	UE_API virtual FBlueprintActionUiSpec GetUiSpec(const FBlueprintActionContext& Context, const FBindingSet& Bindings) const;

	/** Places a node in ParentGraph at Location: made, set up, given a guid and pins, then added. Null on bad input. */
	UE_API virtual UEdGraphNode* Invoke(UEdGraph* ParentGraph, const FBindingSet& Bindings, const FVector2D Location) const;

	/** A node this spawner would make, kept outside any Blueprint, for titles and filtering; null if none can be made. */
	UE_API virtual UEdGraphNode* GetTemplateNode() const;

	/** Whether the node is a menu template rather than one placed in a Blueprint. */
	static UE_API bool IsTemplateOuter(const UEdGraph* Graph);

protected:
	/** Makes a node of InNodeClass in ParentGraph the way every spawner does, running PostSpawnDelegate on it first. */
	UE_API UEdGraphNode* SpawnNode(TSubclassOf<UEdGraphNode> InNodeClass, UEdGraph* ParentGraph, const FBindingSet& Bindings, FVector2D Location, const FCustomizeNodeDelegate& PostSpawnDelegate) const;

	/** Fills the empty fields of the default signature from the template node, once. */
	UE_API const FBlueprintActionUiSpec& PrimeDefaultUiSpec() const;

private:
	mutable UEdGraphNode* CachedTemplateNode = nullptr;
	mutable bool bTemplateTried = false;
	mutable bool bUiSpecPrimed = false;
};

#undef UE_API
