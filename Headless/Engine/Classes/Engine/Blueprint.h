#pragma once

#include "CoreMinimal.h"
#include "Misc/Guid.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"
#include "UObject/ObjectPtr.h"
#include "Templates/SubclassOf.h"
#include "EdGraph/EdGraphPin.h"
#include "Engine/BlueprintCore.h"

class UEdGraph;
class USimpleConstructionScript;
class UTimelineTemplate;
class UInterface;
class UScriptStruct;
class FAssetRegistryTagsContext;

/** When a replicated variable is sent. The engine declares it with the networking types of CoreUObject. */
enum ELifetimeCondition : int
{
	COND_None = 0,
	COND_InitialOnly = 1,
	COND_OwnerOnly = 2,
	COND_SkipOwner = 3,
	COND_SimulatedOnly = 4,
	COND_AutonomousOnly = 5,
	COND_SimulatedOrPhysics = 6,
	COND_InitialOrOwner = 7,
	COND_Custom = 8,
	COND_ReplayOrOwner = 9,
	COND_ReplayOnly = 10,
	COND_SimulatedOnlyNoReplay = 11,
	COND_SimulatedOrPhysicsNoReplay = 12,
	COND_SkipReplay = 13,
	COND_Dynamic = 14,
	COND_Never = 15,
	COND_NetGroup = 16,
	COND_Max = 17,
};

/** What a Blueprint is for. */
enum EBlueprintType : int
{
	BPTYPE_Normal,
	BPTYPE_Const,
	BPTYPE_MacroLibrary,
	BPTYPE_Interface,
	BPTYPE_LevelScript,
	BPTYPE_FunctionLibrary,
	BPTYPE_MAX,
};

/** Where a Blueprint stands with the compiler. */
enum EBlueprintStatus : int
{
	BS_Unknown,
	BS_Dirty,
	BS_Error,
	BS_UpToDate,
	BS_BeingCreated,
	BS_UpToDateWithWarnings,
	BS_MAX,
};

struct FBPVariableMetaDataEntry
{
	FName DataKey;
	FString DataValue;

	ENGINE_API static UScriptStruct* StaticStruct();

	FBPVariableMetaDataEntry() = default;
	FBPVariableMetaDataEntry(const FName InKey, FString InValue)
		: DataKey(InKey)
		, DataValue(MoveTemp(InValue))
	{
	}
};

/** A member variable the user added to a Blueprint. */
struct FBPVariableDescription
{
	FName VarName;
	FGuid VarGuid;
	FEdGraphPinType VarType;
	FString FriendlyName;
	FText Category;
	/** EPropertyFlags of the property the compiler makes. */
	uint64 PropertyFlags = 0;
	FName RepNotifyFunc;
	ELifetimeCondition ReplicationCondition = COND_None;
	TArray<FBPVariableMetaDataEntry> MetaDataArray;
	/** The initial value, as the property's export text. */
	FString DefaultValue;

	ENGINE_API static UScriptStruct* StaticStruct();

	/** Sets (or replaces) a metadata value. */
	ENGINE_API void SetMetaData(FName Key, FString Value);
	/** The value for Key; empty when absent. */
	ENGINE_API FString GetMetaData(FName Key) const;
	ENGINE_API void RemoveMetaData(FName Key);
	ENGINE_API int32 FindMetaDataEntryIndexForKey(FName Key) const;
	bool HasMetaData(FName Key) const { return FindMetaDataEntryIndexForKey(Key) != INDEX_NONE; }
};

/** An interface a Blueprint implements, with the graphs of its functions. */
struct FBPInterfaceDescription
{
	TSubclassOf<UInterface> Interface;
	TArray<TObjectPtr<UEdGraph>> Graphs;

	ENGINE_API static UScriptStruct* StaticStruct();
};

/** Graphs, variables and components from which the compiler makes a class. */
class UBlueprint : public UBlueprintCore
{
	DECLARE_CLASS(UBlueprint, UBlueprintCore, CLASS_None, CASTCLASS_None, TEXT("/Script/Engine"), ENGINE_API)

public:
	ENGINE_API UBlueprint();

	TSubclassOf<UObject> ParentClass;
	EBlueprintType BlueprintType = BPTYPE_Normal;
	EBlueprintStatus Status = BS_Unknown;

	bool bRecompileOnLoad = true;
	bool bGenerateConstClass = false;
	bool bGenerateAbstractClass = false;
	bool bDeprecate = false;
	bool bIsNewlyCreated = false;

	FString BlueprintDisplayName;
	FString BlueprintDescription;
	FString BlueprintNamespace;
	FString BlueprintCategory;
	TArray<FString> HideCategories;

	TObjectPtr<USimpleConstructionScript> SimpleConstructionScript;

	TArray<TObjectPtr<UEdGraph>> UbergraphPages;
	TArray<TObjectPtr<UEdGraph>> FunctionGraphs;
	TArray<TObjectPtr<UEdGraph>> DelegateSignatureGraphs;
	TArray<TObjectPtr<UEdGraph>> MacroGraphs;
	/** Graphs made by the compiler while expanding nodes; never saved. */
	TArray<TObjectPtr<UEdGraph>> IntermediateGeneratedGraphs;

	TArray<FBPVariableDescription> NewVariables;
	TArray<TObjectPtr<UTimelineTemplate>> Timelines;
	TArray<FBPInterfaceDescription> ImplementedInterfaces;

	/** Every graph: pages, functions, macros, delegate signatures, interface graphs, and the graphs nested in them. */
	ENGINE_API void GetAllGraphs(TArray<UEdGraph*>& Graphs) const;

	/** The Blueprints a class comes from, the class's own first, up to the first native class. True when all are up to date. */
	ENGINE_API static bool GetBlueprintHierarchyFromClass(const UClass* InClass, TArray<UBlueprint*>& OutBlueprintParents);
	/** The Blueprint that generated the class, or null for a native class. */
	ENGINE_API static UBlueprint* GetBlueprintFromClass(const UClass* InClass);

	ENGINE_API virtual bool IsAsset() const override;
	/** ParentClass, NativeParentClass, GeneratedClass, BlueprintType and the other tags the content browser filters on. */
	ENGINE_API virtual void GetAssetRegistryTags(FAssetRegistryTagsContext Context) const override;
	ENGINE_API virtual UClass* GetBlueprintClass() const;
	bool IsUpToDate() const { return Status == BS_UpToDate || Status == BS_UpToDateWithWarnings; }
	bool IsPossiblyDirty() const { return Status == BS_Dirty || Status == BS_Unknown; }
	/** The class the Blueprint's instances are, or will be once compiled. */
	UClass* GetGeneratedClass() const { return GeneratedClass; }
	ENGINE_API virtual bool SupportedByDefaultBlueprintFactory() const { return true; }
	ENGINE_API virtual bool AlwaysCompileOnLoad() const { return false; }
};
