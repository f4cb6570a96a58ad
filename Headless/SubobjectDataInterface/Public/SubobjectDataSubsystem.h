#pragma once

#include "CoreMinimal.h"
#include "SubobjectData.h"
#include "SubobjectDataHandle.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

class AActor;
class UBlueprint;

/** Where a reparent moves handles to. */
struct FReparentSubobjectParams
{
	FSubobjectDataHandle NewParentHandle;
	UBlueprint* BlueprintContext = nullptr;
	AActor* ActorPreviewContext = nullptr;
};

/** What AddNewSubobject makes. */
struct FAddNewSubobjectParams
{
	/** The parent; the actor's root component when this is the actor's handle. */
	FSubobjectDataHandle ParentHandle;
	UClass* NewClass = nullptr;
	UObject* AssetOverride = nullptr;
	UBlueprint* BlueprintContext = nullptr;
	bool bSkipMarkBlueprintModified = false;
	bool bConformTransformToParent = true;
};

/**
 * The components panel's model of an actor Blueprint: gathers the actor, its parent class's native components and
 * its construction script nodes into one tree, and adds, removes, renames and reparents components through it.
 */
class USubobjectDataSubsystem : public UObject
{
	DECLARE_CLASS(USubobjectDataSubsystem, UObject, CLASS_None, CASTCLASS_None, TEXT("/Script/SubobjectDataInterface"), SUBOBJECTDATAINTERFACE_API)

public:
	/** The editor's single instance. */
	SUBOBJECTDATAINTERFACE_API static USubobjectDataSubsystem* Get();

	/** Handles of the actor (first) and every component of the Blueprint, parents before children. */
	SUBOBJECTDATAINTERFACE_API void K2_GatherSubobjectDataForBlueprint(UBlueprint* Context, TArray<FSubobjectDataHandle>& OutDataHandles);
	SUBOBJECTDATAINTERFACE_API void GatherSubobjectData(UObject* Context, TArray<FSubobjectDataHandle>& OutArray);

	/** The handle under Context's hierarchy whose object is ObjectToFind; invalid when none. */
	SUBOBJECTDATAINTERFACE_API FSubobjectDataHandle FindHandleForObject(const FSubobjectDataHandle& Context, const UObject* ObjectToFind, UBlueprint* BPContext = nullptr) const;
	SUBOBJECTDATAINTERFACE_API static bool K2_FindSubobjectDataFromHandle(const FSubobjectDataHandle& Handle, FSubobjectData& OutData);

	/** Moves the handles under the new parent; false when any of them cannot go there (nothing moves then). */
	SUBOBJECTDATAINTERFACE_API bool ReparentSubobjects(const FReparentSubobjectParams& Params, const TArray<FSubobjectDataHandle>& HandlesToMove);
	SUBOBJECTDATAINTERFACE_API FSubobjectDataHandle AddNewSubobject(const FAddNewSubobjectParams& Params, FText& FailReason);
	/** Removes the components (their children move up to the removed node's parent); returns how many went. */
	SUBOBJECTDATAINTERFACE_API int32 DeleteSubobjects(const FSubobjectDataHandle& ContextHandle, const TArray<FSubobjectDataHandle>& SubobjectsToDelete, UBlueprint* BPContext = nullptr);
	SUBOBJECTDATAINTERFACE_API bool RenameSubobject(const FSubobjectDataHandle& Handle, const FText& InNewName);

private:
	FSubobjectDataHandle MakeHandle(const FSubobjectDataHandle& Parent, UObject* Object);
	void GatherNodes(const FSubobjectDataHandle& Parent, const TArray<class USCS_Node*>& Nodes, UBlueprint* Blueprint, TArray<FSubobjectDataHandle>& Out);
	bool IsAncestorOf(const FSubobjectDataHandle& Ancestor, const FSubobjectDataHandle& Handle) const;
};
