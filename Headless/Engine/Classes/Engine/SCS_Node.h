#pragma once

#include "CoreMinimal.h"
#include "Misc/Guid.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"
#include "UObject/ObjectPtr.h"
#include "Templates/SubclassOf.h"

class UActorComponent;
class USimpleConstructionScript;

/** One component a Blueprint adds: its class, its template, and the components attached under it. */
class USCS_Node : public UObject
{
	DECLARE_CLASS(USCS_Node, UObject, CLASS_None, CASTCLASS_None, TEXT("/Script/Engine"), ENGINE_API)

public:
	ENGINE_API USCS_Node();

	TSubclassOf<UActorComponent> ComponentClass;
	/** The object the component is copied from when an instance is built. */
	TObjectPtr<UActorComponent> ComponentTemplate;
	/** The socket of the parent this component attaches to, if any. */
	FName AttachToName;
	/** The parent when it is a component the parent class declares (a C++ or inherited component). */
	FName ParentComponentOrVariableName;
	/** The class that owns ParentComponentOrVariableName. */
	FName ParentComponentOwnerClassName;
	bool bIsParentComponentNative = false;
	TArray<TObjectPtr<USCS_Node>> ChildNodes;
	FGuid VariableGuid;
	/** Category of the variable the component becomes. */
	FText CategoryName;

	/** The name of the member variable the compiler makes for the component. */
	FName GetVariableName() const { return InternalVariableName; }
	ENGINE_API void SetVariableName(FName NewName);

	ENGINE_API void AddChildNode(USCS_Node* InNode, bool bAddToAllNodes = true);
	ENGINE_API void RemoveChildNode(USCS_Node* InNode, bool bRemoveFromAllNodes = true);
	ENGINE_API void RemoveChildNodeAt(int32 ChildIndex, bool bRemoveFromAllNodes = true);
	const TArray<USCS_Node*>& GetChildNodes() const { return reinterpret_cast<const TArray<USCS_Node*>&>(ChildNodes); }
	/** This node and every node under it, depth first. */
	ENGINE_API TArray<USCS_Node*> GetAllNodes();
	ENGINE_API bool IsChildOf(USCS_Node* TestParent) const;

	/** The template, or null when none was made. Headless has no inherited-component overrides, so this is ComponentTemplate. */
	ENGINE_API UActorComponent* GetActualComponentTemplate(class UBlueprintGeneratedClass* ActualBPGC = nullptr) const;

	ENGINE_API USimpleConstructionScript* GetSCS() const;

	/** Sets the parent to a component declared by a class (not a node of this construction script). */
	ENGINE_API void SetParent(const FName& InParentName, const FName& InParentOwnerClassName, bool bInIsParentNative);

	FName InternalVariableName;
};
