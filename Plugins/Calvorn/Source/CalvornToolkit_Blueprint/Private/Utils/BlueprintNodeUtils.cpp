#include "BlueprintNodeUtils.h"

#include "Components/ActorComponent.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraphSchema_K2.h"
#include "EdGraphSchema_K2_Actions.h"
#include "Engine/Blueprint.h"
#include "Engine/SCS_Node.h"
#include "Engine/SimpleConstructionScript.h"
#include "GameFramework/Actor.h"
#include "K2Node_VariableGet.h"
#include "K2Node_VariableSet.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "UObject/FieldIterator.h"
#include "UObject/UnrealType.h"

namespace
{
	/** How a variable node should name its variable, decided before the node exists (its pins are made from it). */
	struct FVariableBinding
	{
		enum class EKind : uint8
		{
			/** The Blueprint has nothing by that name that could be bound; no node is made. */
			None,
			/** A property of the generated class (or a component), referenced from the property itself. */
			Property,
			/** A component of the construction script, referenced by name and the node's variable guid. */
			ConstructionScript,
			/** Only the name is known; the node resolves it against the skeleton class when it makes its pins. */
			NameOnly,
		};

		EKind Kind = EKind::None;
		const FProperty* Property = nullptr;
		FGuid Guid;
	};

	/** Whether a class was made by a Blueprint rather than compiled in. */
	bool IsBlueprintGeneratedClass(const UClass* Class)
	{
		return Class && Class->ClassGeneratedBy != nullptr;
	}

	/** A component property of the class (own or inherited) named VariableName, or shown under that name. */
	const FObjectProperty* FindComponentPropertyByName(const UClass* Class, const FName VariableName)
	{
		for (TFieldIterator<FObjectProperty> It(Class, EFieldIteratorFlags::IncludeSuper); It; ++It)
		{
			const FObjectProperty* Property = *It;
			if (!Property->PropertyClass || !Property->PropertyClass->IsChildOf(UActorComponent::StaticClass()))
			{
				continue;
			}
			if (Property->GetFName() == VariableName)
			{
				return Property;
			}
			if (Property->HasMetaData(TEXT("DisplayName")) && FName(*Property->GetMetaData(TEXT("DisplayName"))) == VariableName)
			{
				return Property;
			}
		}
		return nullptr;
	}

	/**
	 * A component the class default actor owns under that object name, and the property that holds it: a component
	 * created by a native constructor may be known to the user by its object name only.
	 */
	const FObjectProperty* FindPropertyOfDefaultComponent(const UClass* Class, const FName VariableName)
	{
		const AActor* DefaultActor = Cast<AActor>(Class->GetDefaultObject(false));
		if (!DefaultActor)
		{
			return nullptr;
		}
		TArray<UActorComponent*> Components;
		DefaultActor->GetComponents(Components);
		const UActorComponent* Named = nullptr;
		for (const UActorComponent* Component : Components)
		{
			if (Component && Component->GetFName() == VariableName)
			{
				Named = Component;
				break;
			}
		}
		if (!Named)
		{
			return nullptr;
		}
		for (TFieldIterator<FObjectProperty> It(Class, EFieldIteratorFlags::IncludeSuper); It; ++It)
		{
			if (It->GetObjectPropertyValue_InContainer(DefaultActor) == Named)
			{
				return *It;
			}
		}
		return nullptr;
	}

	/** What a self variable node of VariableName should refer to in Blueprint, or None when it cannot be bound. */
	FVariableBinding DecideSelfBinding(UBlueprint* Blueprint, const FName VariableName)
	{
		FVariableBinding Binding;

		// Components of the construction script first: they are variables of the Blueprint although they are
		// declared by its construction script rather than in its variable list.
		if (const USimpleConstructionScript* ConstructionScript = Blueprint->SimpleConstructionScript)
		{
			for (const USCS_Node* ScriptNode : ConstructionScript->GetAllNodes())
			{
				if (!ScriptNode || ScriptNode->GetVariableName() != VariableName)
				{
					continue;
				}
				if (!ScriptNode->VariableGuid.IsValid())
				{
					Binding.Kind = FVariableBinding::EKind::NameOnly;
					return Binding;
				}
				const FProperty* Property = Blueprint->GeneratedClass ? Blueprint->GeneratedClass->FindPropertyByName(VariableName) : nullptr;
				if (!Property)
				{
					return Binding;
				}
				Binding.Kind = FVariableBinding::EKind::ConstructionScript;
				Binding.Property = Property;
				Binding.Guid = ScriptNode->VariableGuid;
				return Binding;
			}
		}

		UClass* GeneratedClass = Blueprint->GeneratedClass;
		if (!GeneratedClass)
		{
			return Binding;
		}

		const FProperty* Property = GeneratedClass->FindPropertyByName(VariableName);
		bool bIsComponent = false;
		if (!Property)
		{
			Property = FindComponentPropertyByName(GeneratedClass, VariableName);
			if (!Property)
			{
				Property = FindPropertyOfDefaultComponent(GeneratedClass, VariableName);
			}
			bIsComponent = Property != nullptr;
		}
		else if (const FObjectProperty* ObjectProperty = CastField<FObjectProperty>(Property))
		{
			bIsComponent = ObjectProperty->PropertyClass && ObjectProperty->PropertyClass->IsChildOf(UActorComponent::StaticClass());
		}

		if (!Property)
		{
			Binding.Kind = FVariableBinding::EKind::NameOnly;
			return Binding;
		}
		if (!bIsComponent)
		{
			// A variable inherited from another Blueprint must still be declared there; a stale property of an
			// outdated class would otherwise bind to a member that no longer exists.
			UClass* OwnerClass = Property->GetOwnerClass();
			if (OwnerClass && OwnerClass != GeneratedClass && IsBlueprintGeneratedClass(OwnerClass))
			{
				UBlueprint* OwnerBlueprint = UBlueprint::GetBlueprintFromClass(OwnerClass);
				if (!OwnerBlueprint || !FBlueprintEditorUtils::FindMemberVariableGuidByName(OwnerBlueprint, Property->GetFName()).IsValid())
				{
					Binding.Kind = FVariableBinding::EKind::NameOnly;
					return Binding;
				}
			}
		}
		Binding.Kind = FVariableBinding::EKind::Property;
		Binding.Property = Property;
		return Binding;
	}

	/** Removes a node that was placed but cannot stand, leaving nothing of it behind in the graph or its package. */
	void DiscardNode(UEdGraph* Graph, UEdGraphNode* Node)
	{
		Graph->RemoveNode(Node, true);
		Node->DestroyNode();
	}

	template <typename NodeType>
	NodeType* CreateSelfVariableNode(UEdGraph* Graph, const FString& VariableName, const FVector2D& Position)
	{
		if (!Graph || VariableName.IsEmpty())
		{
			return nullptr;
		}
		UBlueprint* Blueprint = FBlueprintEditorUtils::FindBlueprintForGraph(Graph);
		if (!Blueprint)
		{
			return nullptr;
		}
		const FName Name(*VariableName);
		const FVariableBinding Binding = DecideSelfBinding(Blueprint, Name);
		if (Binding.Kind == FVariableBinding::EKind::None)
		{
			return nullptr;
		}

		Graph->Modify();
		NodeType* Node = FEdGraphSchemaAction_K2NewNode::SpawnNode<NodeType>(Graph, Position, EK2NewNodeFlags::None,
			[&Binding, Name](NodeType* NewNode)
			{
				switch (Binding.Kind)
				{
				case FVariableBinding::EKind::Property:
					NewNode->VariableReference.template SetFromField<FProperty>(Binding.Property, true);
					break;
				case FVariableBinding::EKind::ConstructionScript:
				{
					NewNode->VariableReference.template SetFromField<FProperty>(Binding.Property, true);
					FGuid Guid = Binding.Guid;
					NewNode->VariableReference.SetSelfMember(Name, Guid);
					break;
				}
				default:
					NewNode->VariableReference.SetSelfMember(Name);
					break;
				}
			});
		if (!Node)
		{
			return nullptr;
		}
		// A name that resolved to nothing the Blueprint declares leaves the reference without a guid: such a node
		// would only compile into an error, so it is not kept.
		if (Binding.Kind == FVariableBinding::EKind::NameOnly && !Node->VariableReference.GetMemberGuid().IsValid())
		{
			DiscardNode(Graph, Node);
			return nullptr;
		}
		return Node;
	}

	template <typename NodeType>
	NodeType* CreateOtherObjectVariableNode(UEdGraph* Graph, const FString& VariableName, UClass* OwnerClass, UEdGraphPin* OwnerPin, const FVector2D& Position)
	{
		if (!Graph || VariableName.IsEmpty() || !OwnerClass || !OwnerPin)
		{
			return nullptr;
		}
		const FName Name(*VariableName);
		if (!OwnerClass->FindPropertyByName(Name))
		{
			return nullptr;
		}
		const bool bBlueprintClass = IsBlueprintGeneratedClass(OwnerClass);
		FGuid MemberGuid;
		if (bBlueprintClass)
		{
			if (UBlueprint* OwnerBlueprint = UBlueprint::GetBlueprintFromClass(OwnerClass))
			{
				MemberGuid = FBlueprintEditorUtils::FindMemberVariableGuidByName(OwnerBlueprint, Name);
			}
		}

		Graph->Modify();
		NodeType* Node = FEdGraphSchemaAction_K2NewNode::SpawnNode<NodeType>(Graph, Position, EK2NewNodeFlags::None,
			[Name, OwnerClass, &MemberGuid](NodeType* NewNode)
			{
				NewNode->VariableReference.SetExternalMember(Name, OwnerClass, MemberGuid);
			});
		if (!Node)
		{
			return nullptr;
		}
		if (bBlueprintClass && !Node->VariableReference.GetMemberGuid().IsValid())
		{
			DiscardNode(Graph, Node);
			return nullptr;
		}
		if (UEdGraphPin* SelfPin = Node->FindPin(UEdGraphSchema_K2::PN_Self))
		{
			SelfPin->MakeLinkTo(OwnerPin);
		}
		return Node;
	}
}

UK2Node_VariableGet* FBlueprintNodeUtils::CreateVariableGetNode(UEdGraph* Graph, const FString& VariableName, const FVector2D& Position)
{
	return CreateSelfVariableNode<UK2Node_VariableGet>(Graph, VariableName, Position);
}

UK2Node_VariableSet* FBlueprintNodeUtils::CreateVariableSetNode(UEdGraph* Graph, const FString& VariableName, const FVector2D& Position)
{
	return CreateSelfVariableNode<UK2Node_VariableSet>(Graph, VariableName, Position);
}

UK2Node_VariableGet* FBlueprintNodeUtils::CreateCrossObjectVariableGetNode(UEdGraph* Graph, const FString& VariableName, UClass* OwnerClass, UEdGraphPin* OwnerPin, const FVector2D& Position)
{
	return CreateOtherObjectVariableNode<UK2Node_VariableGet>(Graph, VariableName, OwnerClass, OwnerPin, Position);
}

UK2Node_VariableSet* FBlueprintNodeUtils::CreateCrossObjectVariableSetNode(UEdGraph* Graph, const FString& VariableName, UClass* OwnerClass, UEdGraphPin* OwnerPin, const FVector2D& Position)
{
	return CreateOtherObjectVariableNode<UK2Node_VariableSet>(Graph, VariableName, OwnerClass, OwnerPin, Position);
}
