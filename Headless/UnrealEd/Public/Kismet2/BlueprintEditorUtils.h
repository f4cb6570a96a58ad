#pragma once

#include "CoreMinimal.h"
#include "Containers/Array.h"
#include "Containers/Set.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraph/EdGraphSchema.h"
#include "Engine/Blueprint.h"
#include "Templates/SubclassOf.h"
#include "UObject/TopLevelAssetPath.h"

class UEdGraphNode;
class UFunction;
class UK2Node_EditablePinBase;
class UK2Node_Event;
class UK2Node_FunctionResult;
class UStruct;
class UTimelineTemplate;
struct FKismetUserDeclaredFunctionMetadata;

namespace EGraphRemoveFlags
{
	enum Type
	{
		None = 0,
		/** Recompile the Blueprint after the removal. */
		Recompile = 1 << 0,
		/** Mark the removed graph as transient. */
		MarkTransient = 1 << 1,
		Default = Recompile | MarkTransient,
	};
}

/** The editor's operations on Blueprints: graphs, variables, interfaces, timelines and their bookkeeping. */
class FBlueprintEditorUtils
{
public:
	// Modification

	/** Records a change that leaves the class layout alone (node positions, defaults): the Blueprint is dirty. */
	UNREALED_API static void MarkBlueprintAsModified(UBlueprint* Blueprint);
	/** Records a change of the class's members: regenerates the skeleton class so nodes see the new members. */
	UNREALED_API static void MarkBlueprintAsStructurallyModified(UBlueprint* Blueprint);

	// Kinds of Blueprint

	UNREALED_API static bool IsEditorUtilityBlueprint(const UBlueprint* Blueprint);
	UNREALED_API static bool IsActorBased(const UBlueprint* Blueprint);
	UNREALED_API static bool IsComponentBased(const UBlueprint* Blueprint);
	UNREALED_API static bool IsInterfaceBlueprint(const UBlueprint* Blueprint);
	UNREALED_API static bool IsLevelScriptBlueprint(const UBlueprint* Blueprint);
	UNREALED_API static bool IsDataOnlyBlueprint(const UBlueprint* Blueprint);
	UNREALED_API static bool DoesSupportEventGraphs(const UBlueprint* Blueprint);
	UNREALED_API static bool DoesSupportTimelines(const UBlueprint* Blueprint);
	UNREALED_API static bool DoesSupportOverridingFunctions(const UBlueprint* Blueprint);
	UNREALED_API static bool SupportsConstructionScript(const UBlueprint* Blueprint);

	// Finding

	UNREALED_API static UBlueprint* FindBlueprintForGraph(const UEdGraph* Graph);
	UNREALED_API static UBlueprint* FindBlueprintForGraphChecked(const UEdGraph* Graph);
	UNREALED_API static UBlueprint* FindBlueprintForNode(const UEdGraphNode* Node);
	UNREALED_API static UBlueprint* FindBlueprintForNodeChecked(const UEdGraphNode* Node);
	/** The ubergraph page named "EventGraph", or null. */
	UNREALED_API static UEdGraph* FindEventGraph(const UBlueprint* Blueprint);
	UNREALED_API static bool IsEventGraph(const UEdGraph* InGraph);
	UNREALED_API static void GetAllGraphNames(const UBlueprint* Blueprint, TSet<FName>& GraphNames);
	/** Member variables: this Blueprint's, its components' and timelines', and the visible properties of its classes. */
	UNREALED_API static void GetClassVariableList(const UBlueprint* Blueprint, TSet<FName>& VisibleVariables, bool bIncludePrivateVars = false);
	UNREALED_API static void GetFunctionNameList(const UBlueprint* Blueprint, TSet<FName>& FunctionNames);
	UNREALED_API static void GetSCSVariableNameList(const UBlueprint* Blueprint, TSet<FName>& VariableNames);
	/** The functions of Blueprints that implement this one (when it is an interface). */
	UNREALED_API static void GetImplementingBlueprintsFunctionNameList(const UBlueprint* Blueprint, TSet<FName>& FunctionNames);

	template <typename T>
	static void GetAllNodesOfClass(const UBlueprint* Blueprint, TArray<T*>& OutNodes)
	{
		if (!Blueprint)
		{
			return;
		}
		TArray<UEdGraph*> Graphs;
		Blueprint->GetAllGraphs(Graphs);
		for (const UEdGraph* Graph : Graphs)
		{
			if (Graph)
			{
				Graph->GetNodesOfClass<T>(OutNodes);
			}
		}
	}

	/** A name no member of the Blueprint has: the base name, else "<Base>_0", "<Base>_1"... */
	UNREALED_API static FName FindUniqueKismetName(const UBlueprint* InBlueprint, const FString& InBaseName, UStruct* InScope = nullptr);
	UNREALED_API static FName FindUniqueCustomEventName(const UBlueprint* Blueprint);
	/** The readable form of a class: a Blueprint's class by its Blueprint's name. */
	UNREALED_API static FText GetFriendlyClassDisplayName(const UClass* Class);

	// Graphs

	/** A new graph named GraphName inside ParentScope (another name when that one is taken), ruled by SchemaClass. */
	UNREALED_API static UEdGraph* CreateNewGraph(UObject* ParentScope, const FName& GraphName, TSubclassOf<UEdGraph> GraphClass, TSubclassOf<UEdGraphSchema> SchemaClass);
	UNREALED_API static void AddUbergraphPage(UBlueprint* Blueprint, UEdGraph* Graph);
	/** Adds a function graph with its entry node; a user-created one is callable and editable. */
	template <typename SignatureType>
	static void AddFunctionGraph(UBlueprint* Blueprint, UEdGraph* Graph, bool bIsUserCreated, SignatureType* SignatureFromObject)
	{
		AddFunctionGraphImpl(Blueprint, Graph, bIsUserCreated, SignatureFromObject);
	}
	UNREALED_API static void AddMacroGraph(UBlueprint* Blueprint, UEdGraph* Graph, bool bIsUserCreated, UClass* SignatureFromClass);
	UNREALED_API static void AddInterfaceGraph(UBlueprint* Blueprint, UEdGraph* Graph, UClass* InterfaceClass);
	/** Takes a graph (and the graphs inside it) out of the Blueprint. */
	UNREALED_API static void RemoveGraph(UBlueprint* Blueprint, UEdGraph* GraphToRemove, EGraphRemoveFlags::Type Flags = EGraphRemoveFlags::Default);
	UNREALED_API static void RemoveGraphs(UBlueprint* Blueprint, const TArray<UEdGraph*>& GraphsToRemove);
	/** Removes a node from its graph, breaking its links; a timeline node takes its timeline along. */
	UNREALED_API static void RemoveNode(UBlueprint* Blueprint, UEdGraphNode* Node, bool bDontRecompile = false);
	/** The function graph's metadata (on its entry node), or null for other graphs. */
	UNREALED_API static FKismetUserDeclaredFunctionMetadata* GetGraphFunctionMetaData(const UEdGraph* InGraph);
	/** The graph's result node, made beside the entry node when it has none (function graphs only). */
	UNREALED_API static UK2Node_FunctionResult* FindOrCreateFunctionResultNode(UK2Node_EditablePinBase* InFunctionEntryNode);
	/** The event node that overrides the function SignatureName of SignatureClass, or null. */
	UNREALED_API static UK2Node_Event* FindOverrideForFunction(const UBlueprint* Blueprint, const UClass* SignatureClass, FName SignatureName);
	/** The class (parent or implemented interface) declaring FuncName, or null. */
	UNREALED_API static UClass* GetOverrideFunctionClass(UBlueprint* Blueprint, const FName FuncName, UFunction** OutFunction = nullptr);

	// Member variables

	/** Adds a variable with the editor's defaults; false for an empty name or one the class already has. */
	UNREALED_API static bool AddMemberVariable(UBlueprint* Blueprint, const FName& NewVarName, const FEdGraphPinType& NewVarType, const FString& DefaultValue = FString());
	/** Removes a variable declared by this Blueprint and the nodes that use it. */
	UNREALED_API static void RemoveMemberVariable(UBlueprint* Blueprint, const FName VarName);
	UNREALED_API static void BulkRemoveMemberVariables(UBlueprint* Blueprint, const TArray<FName>& VarNames);
	UNREALED_API static void RemoveVariableNodes(UBlueprint* Blueprint, const FName VarName, bool const bForSelfOnly = true, UEdGraph* LocalGraphScope = nullptr);
	UNREALED_API static void RenameMemberVariable(UBlueprint* Blueprint, const FName OldName, const FName NewName);
	UNREALED_API static bool IsVariableUsed(const UBlueprint* Blueprint, const FName& Name, UEdGraph* LocalGraphScope = nullptr);
	UNREALED_API static int32 FindNewVariableIndex(const UBlueprint* Blueprint, const FName& InName);
	/** The guid of a variable of this Blueprint or of a Blueprint it derives from; invalid when unknown. */
	UNREALED_API static FGuid FindMemberVariableGuidByName(UBlueprint* InBlueprint, const FName InVariableName);
	UNREALED_API static FName FindMemberVariableNameByGuid(UBlueprint* InBlueprint, const FGuid& InVariableGuid);
	/** Renames clashing variables, components and timelines of child Blueprints. */
	UNREALED_API static void ValidateBlueprintChildVariables(UBlueprint* InBlueprint, const FName InVariableName);

	UNREALED_API static void SetBlueprintOnlyEditableFlag(UBlueprint* Blueprint, const FName& VarName, const bool bNewBlueprintOnly);
	UNREALED_API static void SetBlueprintPropertyReadOnlyFlag(UBlueprint* Blueprint, const FName& VarName, const bool bVariableReadOnly);
	UNREALED_API static void SetVariableSaveGameFlag(UBlueprint* InBlueprint, const FName& InVarName, const bool bInIsVariableSaveGame);
	UNREALED_API static void SetVariableTransientFlag(UBlueprint* InBlueprint, const FName& InVarName, const bool bInIsTransient);
	UNREALED_API static void SetVariableAdvancedDisplayFlag(UBlueprint* InBlueprint, const FName& InVarName, const bool bInIsAdvancedDisplay);
	UNREALED_API static void SetBlueprintVariableCategory(UBlueprint* Blueprint, const FName& VarName, const UStruct* InLocalVarScope, const FText& NewCategory, bool bDontRecompile = false);
	UNREALED_API static void SetBlueprintVariableRepNotifyFunc(UBlueprint* Blueprint, const FName& VarName, const FName& RepNotifyFunc);
	/** Sets metadata on a member variable, or on a local variable of InLocalVarScope's function. */
	UNREALED_API static void SetBlueprintVariableMetaData(UBlueprint* Blueprint, const FName& VarName, const UStruct* InLocalVarScope, const FName& MetaDataKey, const FString& MetaDataValue);
	UNREALED_API static bool GetBlueprintVariableMetaData(const UBlueprint* Blueprint, const FName& VarName, const UStruct* InLocalVarScope, const FName& MetaDataKey, FString& OutMetaDataValue);
	UNREALED_API static void RemoveBlueprintVariableMetaData(UBlueprint* Blueprint, const FName& VarName, const UStruct* InLocalVarScope, const FName& MetaDataKey);

	// Local variables

	/** Adds a local variable to the function of TargetGraph; false when the graph has no function entry or the name is taken. */
	UNREALED_API static bool AddLocalVariable(UBlueprint* Blueprint, UEdGraph* TargetGraph, const FName InNewVarName, const FEdGraphPinType& InNewVarType, const FString& DefaultValue = FString());
	UNREALED_API static FBPVariableDescription* FindLocalVariable(const UBlueprint* InBlueprint, const UEdGraph* InScopeGraph, const FName InVariableName);
	UNREALED_API static void RemoveLocalVariable(UBlueprint* InBlueprint, const UEdGraph* InScopeGraph, const FName InVarName);

	// Timelines

	/** A new timeline "<Name>_Template" in the generated class; null when one of that name exists or the Blueprint cannot have timelines. */
	UNREALED_API static UTimelineTemplate* AddNewTimeline(UBlueprint* Blueprint, const FName& TimelineVarName);
	UNREALED_API static void RemoveTimeline(UBlueprint* Blueprint, UTimelineTemplate* Timeline, bool bDontRecompile = false);
	UNREALED_API static UTimelineTemplate* FindTimelineTemplateByVariableName(const UBlueprint* Blueprint, const FName& TimelineName);
	UNREALED_API static bool RenameTimeline(UBlueprint* Blueprint, const FName OldNameRef, const FName NewName);

	// Interfaces

	/** Adds an interface with a graph for each of its functions that cannot be an event. False when unknown or present. */
	UNREALED_API static bool ImplementNewInterface(UBlueprint* Blueprint, const FTopLevelAssetPath& InterfaceClassPathName);
	/** Removes an interface; its graphs are deleted, or kept as ordinary functions with bPreserveFunctions. */
	UNREALED_API static void RemoveInterface(UBlueprint* Blueprint, const FTopLevelAssetPath& InterfaceClassPathName, bool bPreserveFunctions = false);
	/** Brings the interface graphs in line with the interfaces: missing graphs are made, vanished interfaces dropped. */
	UNREALED_API static void ConformImplementedInterfaces(UBlueprint* Blueprint);
	UNREALED_API static void FindImplementedInterfaces(const UBlueprint* Blueprint, bool bGetAllInterfaces, TArray<UClass*>& ImplementedInterfaces);

private:
	UNREALED_API static void AddFunctionGraphImpl(UBlueprint* Blueprint, UEdGraph* Graph, bool bIsUserCreated, UClass* SignatureClass);
	UNREALED_API static void AddFunctionGraphImpl(UBlueprint* Blueprint, UEdGraph* Graph, bool bIsUserCreated, UFunction* SignatureFunction);
	static void AddFunctionGraphImpl(UBlueprint* Blueprint, UEdGraph* Graph, bool bIsUserCreated, std::nullptr_t)
	{
		AddFunctionGraphImpl(Blueprint, Graph, bIsUserCreated, static_cast<UClass*>(nullptr));
	}
};
