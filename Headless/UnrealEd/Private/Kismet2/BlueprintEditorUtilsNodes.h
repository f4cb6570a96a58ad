#pragma once

#include "CoreMinimal.h"
#include "Engine/Blueprint.h"

class UEdGraph;
class UEdGraphNode;
class UFunction;
class UK2Node_EditablePinBase;
class UK2Node_Event;
class UK2Node_FunctionResult;
class UStruct;
class UTimelineTemplate;
struct FKismetUserDeclaredFunctionMetadata;

/** The editor utilities' work on particular node kinds, kept apart from the bookkeeping on Blueprints. */
namespace UE::UnrealEd::Private
{
	/** Entry node (and result node where the signature has outputs) of a function graph. */
	void CreateFunctionGraphTerminators(UEdGraph& Graph, UClass* SignatureClass, UFunction* SignatureFunction);
	/** Makes a user function callable from graphs and its entry editable. */
	void MakeUserFunctionEntry(UBlueprint* Blueprint, UEdGraph& Graph);
	void CreateMacroTunnels(UEdGraph& Graph, bool bIsUserCreated);

	FKismetUserDeclaredFunctionMetadata* GetFunctionMetaData(const UEdGraph* Graph);
	UK2Node_FunctionResult* FindOrCreateResultNode(UK2Node_EditablePinBase* EntryNode);
	UK2Node_Event* FindOverrideEvent(const UBlueprint* Blueprint, const UClass* SignatureClass, FName SignatureName);
	UK2Node_Event* CreateDefaultEventNode(UBlueprint* Blueprint, UEdGraph* Graph, FName EventName, UClass* EventClass, int32& InOutNodePosY);

	void RemoveVariableNodes(UBlueprint* Blueprint, FName VarName, bool bForSelfOnly, UEdGraph* LocalGraphScope);
	void RenameVariableReferences(UBlueprint* Blueprint, FName OldName, FName NewName);
	int32 CountVariableNodes(const UBlueprint* Blueprint, FName VarName, UEdGraph* LocalGraphScope);

	bool AddLocalVariable(UBlueprint* Blueprint, UEdGraph& Graph, FName VarName, const FEdGraphPinType& VarType, const FString& DefaultValue);
	FBPVariableDescription* FindLocalVariableInGraph(const UEdGraph* Graph, FName VarName);
	FBPVariableDescription* FindLocalVariableInScope(UBlueprint* Blueprint, const UStruct* Scope, FName VarName);
	bool RemoveLocalVariable(const UEdGraph* Graph, FName VarName);

	UTimelineTemplate* FindTimelineOfNode(UBlueprint* Blueprint, UEdGraphNode* Node);
	void RemoveTimelinesOfGraph(UBlueprint* Blueprint, UEdGraph* Graph);
	void RenameTimelineNodes(UBlueprint* Blueprint, FName OldName, FName NewName);
	void RemoveMacroInstances(UBlueprint* Blueprint, UEdGraph* MacroGraph);

	void PromoteInterfaceGraphToFunction(UBlueprint* Blueprint, UEdGraph& Graph);
	void RemoveInterfaceEvents(UBlueprint* Blueprint, UClass* InterfaceClass, bool bPreserveFunctions);
}
