#include "Engine/SimpleConstructionScript.h"
#include "Engine/SCS_Node.h"
#include "Engine/Blueprint.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "Components/ActorComponent.h"
#include "Components/SceneComponent.h"
#include "UObject/UnrealType.h"
#include "UObject/TextProperty.h"
#include "Templates/Casts.h"
#include "EngineReflection.h"

using namespace UE::Engine::Private;

IMPLEMENT_CLASS(USCS_Node,
	UE_NATIVE_PROPERTY(FClassProperty, ComponentClass, CPF_None, UActorComponent::StaticClass());
	UE_NATIVE_PROPERTY(FObjectProperty, ComponentTemplate, CPF_TObjectPtr, UActorComponent::StaticClass());
	UE_NATIVE_PROPERTY(FNameProperty, AttachToName, CPF_None);
	UE_NATIVE_PROPERTY(FNameProperty, ParentComponentOrVariableName, CPF_None);
	UE_NATIVE_PROPERTY(FNameProperty, ParentComponentOwnerClassName, CPF_None);
	UE_NATIVE_PROPERTY(FBoolProperty, bIsParentComponentNative, CPF_None, 0, (uint32)sizeof(bool), true);
	WithObjectElements(UE_NATIVE_PROPERTY(FArrayProperty, ChildNodes, CPF_None), USCS_Node::StaticClass());
	UE_NATIVE_PROPERTY(FStructProperty, VariableGuid, CPF_None, TBaseStructure<FGuid>::Get());
	UE_NATIVE_PROPERTY(FTextProperty, CategoryName, CPF_None);
	UE_NATIVE_PROPERTY(FNameProperty, InternalVariableName, CPF_None);
)

IMPLEMENT_CLASS(USimpleConstructionScript,
	WithObjectElements(UE_NATIVE_PROPERTY(FArrayProperty, RootNodes, CPF_None), USCS_Node::StaticClass());
	WithObjectElements(UE_NATIVE_PROPERTY(FArrayProperty, AllNodes, CPF_None), USCS_Node::StaticClass());
	UE_NATIVE_PROPERTY(FObjectProperty, DefaultSceneRootNode, CPF_TObjectPtr, USCS_Node::StaticClass());
)

USCS_Node::USCS_Node() = default;

void USCS_Node::SetVariableName(FName NewName)
{
	InternalVariableName = NewName;
}

void USCS_Node::AddChildNode(USCS_Node* InNode, bool bAddToAllNodes)
{
	if (!InNode || InNode == this || ChildNodes.Contains(InNode))
	{
		return;
	}
	Modify();
	ChildNodes.Add(InNode);
	InNode->ParentComponentOrVariableName = NAME_None;
	InNode->ParentComponentOwnerClassName = NAME_None;
	InNode->bIsParentComponentNative = false;
	if (bAddToAllNodes)
	{
		if (USimpleConstructionScript* SCS = GetSCS())
		{
			SCS->ValidateNodeTree();
		}
	}
}

void USCS_Node::RemoveChildNode(USCS_Node* InNode, bool bRemoveFromAllNodes)
{
	if (ChildNodes.Remove(InNode) > 0 && bRemoveFromAllNodes)
	{
		if (USimpleConstructionScript* SCS = GetSCS())
		{
			SCS->ValidateNodeTree();
		}
	}
}

void USCS_Node::RemoveChildNodeAt(int32 ChildIndex, bool bRemoveFromAllNodes)
{
	if (ChildNodes.IsValidIndex(ChildIndex))
	{
		RemoveChildNode(ChildNodes[ChildIndex], bRemoveFromAllNodes);
	}
}

TArray<USCS_Node*> USCS_Node::GetAllNodes()
{
	TArray<USCS_Node*> Result;
	Result.Add(this);
	for (USCS_Node* Child : ChildNodes)
	{
		if (Child)
		{
			Result.Append(Child->GetAllNodes());
		}
	}
	return Result;
}

bool USCS_Node::IsChildOf(USCS_Node* TestParent) const
{
	if (!TestParent)
	{
		return false;
	}
	for (USCS_Node* Child : TestParent->ChildNodes)
	{
		if (Child == this || IsChildOf(Child))
		{
			return true;
		}
	}
	return false;
}

UActorComponent* USCS_Node::GetActualComponentTemplate(UBlueprintGeneratedClass* ActualBPGC) const
{
	return ComponentTemplate;
}

USimpleConstructionScript* USCS_Node::GetSCS() const
{
	return Cast<USimpleConstructionScript>(GetOuter());
}

void USCS_Node::SetParent(const FName& InParentName, const FName& InParentOwnerClassName, bool bInIsParentNative)
{
	ParentComponentOrVariableName = InParentName;
	ParentComponentOwnerClassName = InParentOwnerClassName;
	bIsParentComponentNative = bInIsParentNative;
}

USimpleConstructionScript::USimpleConstructionScript() = default;

void USimpleConstructionScript::AddNode(USCS_Node* Node)
{
	if (!Node || RootNodes.Contains(Node))
	{
		return;
	}
	Modify();
	RootNodes.Add(Node);
	ValidateNodeTree();
}

void USimpleConstructionScript::RemoveNode(USCS_Node* Node, bool bValidateSceneRootNodes)
{
	if (!Node)
	{
		return;
	}
	Modify();
	if (RootNodes.Remove(Node) == 0)
	{
		if (USCS_Node* Parent = FindParentNode(Node))
		{
			Parent->ChildNodes.Remove(Node);
		}
	}
	if (DefaultSceneRootNode.Get() == Node)
	{
		DefaultSceneRootNode = nullptr;
	}
	ValidateNodeTree();
}

void USimpleConstructionScript::RemoveNodeAndPromoteChildren(USCS_Node* Node)
{
	if (!Node)
	{
		return;
	}
	Modify();
	const TArray<TObjectPtr<USCS_Node>> Children = Node->ChildNodes;
	Node->ChildNodes.Reset();
	USCS_Node* Parent = FindParentNode(Node);
	if (Parent)
	{
		const int32 At = Parent->ChildNodes.Find(Node);
		Parent->ChildNodes.RemoveAt(At);
		Parent->ChildNodes.Insert(Children, At);
	}
	else
	{
		const int32 At = RootNodes.Find(Node);
		if (At != INDEX_NONE)
		{
			RootNodes.RemoveAt(At);
			RootNodes.Insert(Children, At);
		}
	}
	ValidateNodeTree();
}

FName USimpleConstructionScript::GenerateNewComponentName(const UClass* ComponentClass, FName DesiredName) const
{
	FString Base = DesiredName != NAME_None ? DesiredName.ToString() : (ComponentClass ? ComponentClass->GetName() : FString(TEXT("Component")));
	FName Candidate(*Base);
	for (int32 Suffix = 1; FindSCSNode(Candidate); ++Suffix)
	{
		Candidate = FName(*FString::Printf(TEXT("%s%d"), *Base, Suffix));
	}
	return Candidate;
}

USCS_Node* USimpleConstructionScript::CreateNode(UClass* NewComponentClass, FName NewComponentVariableName)
{
	if (!NewComponentClass || !NewComponentClass->IsChildOf(UActorComponent::StaticClass()))
	{
		return nullptr;
	}
	const FName VariableName = GenerateNewComponentName(NewComponentClass, NewComponentVariableName);
	USCS_Node* Node = NewObject<USCS_Node>(this, USCS_Node::StaticClass(), NAME_None, RF_Transactional);
	Node->ComponentClass = NewComponentClass;
	Node->SetVariableName(VariableName);
	Node->VariableGuid = FGuid::NewGuid();
	// The template lives beside the node, named as the engine names it: "<Variable>_GEN_VARIABLE".
	UObject* TemplateOuter = GetOwnerClass() ? static_cast<UObject*>(GetOwnerClass()) : static_cast<UObject*>(this);
	const FName TemplateName(*(VariableName.ToString() + TEXT("_GEN_VARIABLE")));
	Node->ComponentTemplate = NewObject<UActorComponent>(TemplateOuter, NewComponentClass, TemplateName, RF_ArchetypeObject | RF_Public | RF_Transactional);
	return Node;
}

USCS_Node* USimpleConstructionScript::FindSCSNode(const FName InName) const
{
	for (USCS_Node* Node : AllNodes)
	{
		if (Node && Node->GetVariableName() == InName)
		{
			return Node;
		}
	}
	return nullptr;
}

USCS_Node* USimpleConstructionScript::FindSCSNodeByGuid(const FGuid Guid) const
{
	for (USCS_Node* Node : AllNodes)
	{
		if (Node && Node->VariableGuid == Guid)
		{
			return Node;
		}
	}
	return nullptr;
}

USCS_Node* USimpleConstructionScript::FindParentNode(USCS_Node* InNode) const
{
	for (USCS_Node* Node : AllNodes)
	{
		if (Node && Node->ChildNodes.Contains(InNode))
		{
			return Node;
		}
	}
	return nullptr;
}

USCS_Node* USimpleConstructionScript::GetDefaultSceneRootNode() const
{
	return DefaultSceneRootNode;
}

UBlueprint* USimpleConstructionScript::GetBlueprint() const
{
	for (UObject* Outer = GetOuter(); Outer; Outer = Outer->GetOuter())
	{
		if (UBlueprint* Blueprint = Cast<UBlueprint>(Outer))
		{
			return Blueprint;
		}
		if (UBlueprintGeneratedClass* Generated = Cast<UBlueprintGeneratedClass>(Outer))
		{
			return Cast<UBlueprint>(Generated->ClassGeneratedBy);
		}
	}
	return nullptr;
}

UClass* USimpleConstructionScript::GetOwnerClass() const
{
	if (UBlueprintGeneratedClass* Generated = Cast<UBlueprintGeneratedClass>(GetOuter()))
	{
		return Generated;
	}
	if (UBlueprint* Blueprint = GetBlueprint())
	{
		return Blueprint->GeneratedClass;
	}
	return nullptr;
}

void USimpleConstructionScript::ValidateNodeTree()
{
	AllNodes.Reset();
	for (USCS_Node* Root : RootNodes)
	{
		if (Root)
		{
			for (USCS_Node* Node : Root->GetAllNodes())
			{
				AllNodes.AddUnique(Node);
			}
		}
	}
}
