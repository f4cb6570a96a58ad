#pragma once

#include "CoreMinimal.h"
#include "BlueprintNodeBinder.h"
#include "Delegates/Delegate.h"
#include "Templates/SubclassOf.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class FProperty;
class UBlueprint;
class UBlueprintNodeSpawner;
class UEdGraph;
class UEdGraphNode;
class UEdGraphPin;
class UFunction;
class UObject;

/** Where a menu is opened: the Blueprints and graphs it is for, the pins dragged from, the selection. */
struct FBlueprintActionContext
{
	TArray<UBlueprint*> Blueprints;
	TArray<UEdGraph*> Graphs;
	TArray<UEdGraphPin*> Pins;
	TArray<UObject*> SelectedObjects;
};

/** What a filter looks at for one database entry: the spawner, the object it was registered under, its bindings. */
struct FBlueprintActionInfo
{
	UE_API FBlueprintActionInfo(const UObject* ActionOwner, const UBlueprintNodeSpawner* Action);
	UE_API FBlueprintActionInfo(const FBlueprintActionInfo& Other, const IBlueprintNodeBinder::FBindingSet& InBindings);

	/** The class or asset the action was registered under. */
	const UObject* GetActionOwner() const { return ActionOwner; }
	/** The class whose member the action wraps, if any. */
	UE_API UClass* GetOwnerClass() const;
	UE_API UClass* GetNodeClass() const;
	/** The function the action calls or implements, if any. */
	UE_API const UFunction* GetAssociatedFunction() const;
	/** The variable or dispatcher the action works on, if any. */
	UE_API const FProperty* GetAssociatedProperty() const;

	const UBlueprintNodeSpawner* NodeSpawner;
	IBlueprintNodeBinder::FBindingSet Bindings;

private:
	const UObject* ActionOwner;
};

/** Chooses the database actions a menu offers for a context. */
class FBlueprintActionFilter
{
public:
	enum EFlags : uint32
	{
		BPFILTER_NoFlags = 0x00,
		/** Leave out free functions (static library calls) and other actions that belong to no class. */
		BPFILTER_RejectGlobalFields = 0x01,
		/** With PermittedNodeTypes, only the listed classes themselves pass, not their subclasses. */
		BPFILTER_RejectPermittedSubClasses = 0x02,
		/** Leave out members of classes that are not among TargetClasses. */
		BPFILTER_RejectNonTargetMembers = 0x04,
		/** Keep deprecated functions and variables. */
		BPFILTER_PermitDeprecated = 0x08,
	};

	/** A class whose members a context-sensitive menu targets. */
	struct FTargetClassFilterData
	{
		UClass* TargetClass = nullptr;
		bool operator==(const FTargetClassFilterData& Other) const { return TargetClass == Other.TargetClass; }
	};

	/** Returns true to reject the action. */
	DECLARE_DELEGATE_RetVal_TwoParams(bool, FRejectionTestDelegate, const FBlueprintActionFilter&, FBlueprintActionInfo&);

	UE_API explicit FBlueprintActionFilter(uint32 Flags = BPFILTER_NoFlags);

	static UE_API void AddUnique(TArray<FTargetClassFilterData>& ToArray, UClass* Class);
	static UE_API void Add(TArray<FTargetClassFilterData>& ToArray, UClass* Class);

	FBlueprintActionContext Context;
	/** When not empty, only nodes of these classes pass. */
	TArray<TSubclassOf<UEdGraphNode>> PermittedNodeTypes;
	/** Nodes of these classes (and subclasses) never pass. */
	TArray<TSubclassOf<UEdGraphNode>> RejectedNodeTypes;
	TArray<FTargetClassFilterData> TargetClasses;

	UE_API void AddRejectionTest(FRejectionTestDelegate RejectionTestDelegate);
	/** True when the action is not offered in this context. */
	UE_API bool IsFiltered(FBlueprintActionInfo& BlueprintAction);

	uint32 GetFilterFlags() const { return FilterFlags; }

	/** The class the Blueprint's members live in: its skeleton class, else its generated class, else its parent. */
	static UE_API UClass* GetBlueprintClass(const UBlueprint* Blueprint);

private:
	bool IsFilteredByThis(FBlueprintActionInfo& BlueprintAction) const;

	uint32 FilterFlags;
	TArray<FRejectionTestDelegate> FilterTests;
};

#undef UE_API
