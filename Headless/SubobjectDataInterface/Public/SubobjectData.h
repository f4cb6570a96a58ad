#pragma once

#include "CoreMinimal.h"
#include "SubobjectDataHandle.h"
#include "UObject/WeakObjectPtr.h"

class UBlueprint;
class USCS_Node;
class UActorComponent;

/**
 * What the components panel knows of one subobject: the object, where it comes from (the actor itself, a native
 * component of the parent class, or a node of the Blueprint's construction script) and its place in the tree.
 */
struct FSubobjectData
{
	SUBOBJECTDATAINTERFACE_API FSubobjectData();

	SUBOBJECTDATAINTERFACE_API const UObject* GetObject() const;
	template <typename T>
	const T* GetObject() const { return Cast<T>(GetObject()); }
	/** The component template (or the actor default object for the root). */
	SUBOBJECTDATAINTERFACE_API UObject* GetMutableObject() const;

	/** The variable the component is known by; None for the actor. */
	SUBOBJECTDATAINTERFACE_API FName GetVariableName() const;
	SUBOBJECTDATAINTERFACE_API FText GetDisplayName() const;

	const FSubobjectDataHandle& GetHandle() const { return Handle; }
	const FSubobjectDataHandle& GetParentHandle() const { return ParentHandle; }
	const TArray<FSubobjectDataHandle>& GetChildrenHandles() const { return ChildrenHandles; }
	bool HasParent() const { return ParentHandle.IsValid(); }

	USCS_Node* GetSCSNode() const { return SCSNode.Get(); }
	UBlueprint* GetBlueprint() const { return Blueprint.Get(); }

	bool IsActor() const { return bIsActor; }
	SUBOBJECTDATAINTERFACE_API bool IsComponent() const;
	SUBOBJECTDATAINTERFACE_API bool IsSceneComponent() const;
	/** The first scene component under the actor. */
	bool IsRootComponent() const { return bIsRootComponent; }
	/** A component the parent class makes in C++. */
	bool IsNativeComponent() const { return bIsNative; }
	/** A component that comes from a parent class rather than this Blueprint. */
	bool IsInheritedComponent() const { return bIsNative; }
	bool CanReparent() const { return IsSceneComponent() && !IsInheritedComponent() && SCSNode.IsValid(); }
	bool CanDelete() const { return !bIsActor && !IsInheritedComponent() && SCSNode.IsValid(); }
	bool CanRename() const { return CanDelete(); }

private:
	friend class USubobjectDataSubsystem;

	FSubobjectDataHandle Handle;
	FSubobjectDataHandle ParentHandle;
	TArray<FSubobjectDataHandle> ChildrenHandles;
	TWeakObjectPtr<UObject> Object;
	TWeakObjectPtr<USCS_Node> SCSNode;
	TWeakObjectPtr<UBlueprint> Blueprint;
	FName NativeVariableName;
	bool bIsActor = false;
	bool bIsRootComponent = false;
	bool bIsNative = false;
};
