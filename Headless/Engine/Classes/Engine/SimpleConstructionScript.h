#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"
#include "UObject/ObjectPtr.h"
#include "Templates/SubclassOf.h"

class UActorComponent;
class UBlueprint;
class UBlueprintGeneratedClass;
class USCS_Node;

/** The tree of components a Blueprint adds to its actors. */
class USimpleConstructionScript : public UObject
{
	DECLARE_CLASS(USimpleConstructionScript, UObject, CLASS_None, CASTCLASS_None, TEXT("/Script/Engine"), ENGINE_API)

public:
	ENGINE_API USimpleConstructionScript();

	const TArray<USCS_Node*>& GetRootNodes() const { return reinterpret_cast<const TArray<USCS_Node*>&>(RootNodes); }
	/** Every node of the tree, depth first from each root in order. */
	ENGINE_API const TArray<USCS_Node*>& GetAllNodes() const { return reinterpret_cast<const TArray<USCS_Node*>&>(AllNodes); }

	/** Adds a node as a new root. */
	ENGINE_API void AddNode(USCS_Node* Node);
	/** Takes a node out of the tree (roots and children); its own children go with it. */
	ENGINE_API void RemoveNode(USCS_Node* Node, bool bValidateSceneRootNodes = true);
	/** Removes a node and re-parents its children to its parent, or promotes them to roots. */
	ENGINE_API void RemoveNodeAndPromoteChildren(USCS_Node* Node);

	/** A node of the class with a template named after NewComponentVariableName (or a unique name from the class). Not yet in the tree. */
	ENGINE_API USCS_Node* CreateNode(UClass* NewComponentClass, FName NewComponentVariableName = NAME_None);

	ENGINE_API USCS_Node* FindSCSNode(const FName InName) const;
	ENGINE_API USCS_Node* FindSCSNodeByGuid(const FGuid Guid) const;
	ENGINE_API USCS_Node* FindParentNode(USCS_Node* InNode) const;

	/** The root scene component node, if the first root is one. */
	ENGINE_API USCS_Node* GetDefaultSceneRootNode() const;

	ENGINE_API UBlueprint* GetBlueprint() const;
	ENGINE_API UClass* GetOwnerClass() const;

	/** Rebuilds AllNodes from the tree. */
	ENGINE_API void ValidateNodeTree();

	/** A variable name for a new component of the class that no node uses yet ("StaticMeshComponent", "StaticMeshComponent1"...). */
	ENGINE_API FName GenerateNewComponentName(const UClass* ComponentClass, FName DesiredName = NAME_None) const;

	TArray<TObjectPtr<USCS_Node>> RootNodes;
	TArray<TObjectPtr<USCS_Node>> AllNodes;
	TObjectPtr<USCS_Node> DefaultSceneRootNode;
};
