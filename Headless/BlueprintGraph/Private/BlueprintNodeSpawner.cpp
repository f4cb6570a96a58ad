#include "BlueprintNodeSpawner.h"
#include "BlueprintActionFilter.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraphSchema_K2.h"
#include "K2Node.h"
#include "UObject/Package.h"

IMPLEMENT_CLASS(UBlueprintNodeSpawner)

namespace UE::BlueprintGraph::Private
{
	/** The graph template nodes live in: a K2 graph outside every Blueprint, kept for the whole process. */
	static UEdGraph* GetTemplateGraph()
	{
		static UEdGraph* TemplateGraph = nullptr;
		if (!TemplateGraph)
		{
			TemplateGraph = NewObject<UEdGraph>(GetTransientPackage(), UEdGraph::StaticClass(), FName(TEXT("BlueprintNodeTemplateGraph")), RF_Transient);
			TemplateGraph->Schema = UEdGraphSchema_K2::StaticClass();
			TemplateGraph->AddToRoot();
		}
		return TemplateGraph;
	}
}

UBlueprintNodeSpawner* UBlueprintNodeSpawner::Create(TSubclassOf<UEdGraphNode> NodeClass, UObject* Outer, FCustomizeNodeDelegate PostSpawnDelegate)
{
	if (!NodeClass.Get() || NodeClass->HasAnyClassFlags(CLASS_Abstract))
	{
		return nullptr;
	}
	UBlueprintNodeSpawner* Spawner = NewObject<UBlueprintNodeSpawner>(Outer ? Outer : (UObject*)GetTransientPackage());
	Spawner->NodeClass = NodeClass;
	Spawner->CustomizeNodeDelegate = MoveTemp(PostSpawnDelegate);
	return Spawner;
}

bool UBlueprintNodeSpawner::IsTemplateOuter(const UEdGraph* Graph)
{
	return Graph && Graph == UE::BlueprintGraph::Private::GetTemplateGraph();
}

UEdGraphNode* UBlueprintNodeSpawner::SpawnNode(TSubclassOf<UEdGraphNode> InNodeClass, UEdGraph* ParentGraph, const FBindingSet& Bindings, FVector2D Location, const FCustomizeNodeDelegate& PostSpawnDelegate) const
{
	if (!ParentGraph || !InNodeClass.Get() || InNodeClass->HasAnyClassFlags(CLASS_Abstract))
	{
		return nullptr;
	}
	const bool bIsTemplateNode = IsTemplateOuter(ParentGraph);
	UEdGraphNode* NewNode = NewObject<UEdGraphNode>(ParentGraph, InNodeClass.Get(), NAME_None, bIsTemplateNode ? RF_Transient : RF_Transactional);
	NewNode->CreateNewGuid();
	NewNode->NodePosX = static_cast<int32>(Location.X);
	NewNode->NodePosY = static_cast<int32>(Location.Y);

	// The set-up decides what the pins will be (the function, the struct, the variable), so it runs first.
	PostSpawnDelegate.ExecuteIfBound(NewNode, bIsTemplateNode);
	NewNode->AllocateDefaultPins();
	NewNode->PostPlacedNewNode();

	if (!bIsTemplateNode)
	{
		ParentGraph->AddNode(NewNode, /*bUserAction=*/true, /*bSelectNewNode=*/false);
	}
	return NewNode;
}

UEdGraphNode* UBlueprintNodeSpawner::Invoke(UEdGraph* ParentGraph, const FBindingSet& Bindings, const FVector2D Location) const
{
	return SpawnNode(NodeClass, ParentGraph, Bindings, Location, CustomizeNodeDelegate);
}

UEdGraphNode* UBlueprintNodeSpawner::GetTemplateNode() const
{
	if (!bTemplateTried)
	{
		bTemplateTried = true;
		CachedTemplateNode = Invoke(UE::BlueprintGraph::Private::GetTemplateGraph(), FBindingSet(), FVector2D(0.0, 0.0));
	}
	return CachedTemplateNode;
}

const FBlueprintActionUiSpec& UBlueprintNodeSpawner::PrimeDefaultUiSpec() const
{
	if (bUiSpecPrimed)
	{
		return DefaultMenuSignature;
	}
	bUiSpecPrimed = true;

	const bool bNeedsTemplate = DefaultMenuSignature.MenuName.IsEmpty() || DefaultMenuSignature.Category.IsEmpty()
		|| DefaultMenuSignature.Tooltip.IsEmpty() || DefaultMenuSignature.Keywords.IsEmpty();
	if (!bNeedsTemplate)
	{
		return DefaultMenuSignature;
	}
	UEdGraphNode* Template = GetTemplateNode();
	if (!Template)
	{
		return DefaultMenuSignature;
	}
	// The menu signature caches what the template says; it is filled once, on the game thread.
	FBlueprintActionUiSpec& Spec = const_cast<FBlueprintActionUiSpec&>(DefaultMenuSignature);
	if (Spec.MenuName.IsEmpty())
	{
		Spec.MenuName = Template->GetNodeTitle(ENodeTitleType::MenuTitle);
	}
	if (Spec.Category.IsEmpty())
	{
		if (const UK2Node* K2Template = Cast<UK2Node>(Template))
		{
			Spec.Category = K2Template->GetMenuCategory();
		}
	}
	if (Spec.Tooltip.IsEmpty())
	{
		Spec.Tooltip = Template->GetTooltipText();
	}
	if (Spec.Keywords.IsEmpty())
	{
		Spec.Keywords = Template->GetKeywords();
	}
	return DefaultMenuSignature;
}

FBlueprintActionUiSpec UBlueprintNodeSpawner::GetUiSpec(const FBlueprintActionContext& Context, const FBindingSet& Bindings) const
{
	return PrimeDefaultUiSpec();
}
