#include "BlueprintEditorUtilsNodes.h"

#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/TimelineTemplate.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Kismet2/Kismet2NameValidators.h"
#include "UObject/Class.h"
#include "UObject/UnrealType.h"

// Node kinds arrive one by one; each part below works with the kinds that exist.
#if __has_include("K2Node_FunctionEntry.h") && __has_include("K2Node_FunctionResult.h")
#include "K2Node_FunctionEntry.h"
#include "K2Node_FunctionResult.h"
#define CALVORN_HAS_FUNCTION_TERMINATORS 1
#else
#define CALVORN_HAS_FUNCTION_TERMINATORS 0
#endif

#if __has_include("K2Node_Event.h")
#include "K2Node_Event.h"
#define CALVORN_HAS_EVENT_NODE 1
#else
#define CALVORN_HAS_EVENT_NODE 0
#endif

#if __has_include("K2Node_Variable.h")
#include "K2Node_Variable.h"
#define CALVORN_HAS_VARIABLE_NODE 1
#else
#define CALVORN_HAS_VARIABLE_NODE 0
#endif

#if __has_include("K2Node_Timeline.h")
#include "K2Node_Timeline.h"
#define CALVORN_HAS_TIMELINE_NODE 1
#else
#define CALVORN_HAS_TIMELINE_NODE 0
#endif

#if __has_include("K2Node_Tunnel.h") && __has_include("K2Node_MacroInstance.h")
#include "K2Node_MacroInstance.h"
#include "K2Node_Tunnel.h"
#define CALVORN_HAS_TUNNEL_NODE 1
#else
#define CALVORN_HAS_TUNNEL_NODE 0
#endif

namespace UE::UnrealEd::Private
{
	namespace
	{
		[[maybe_unused]] void ForEachGraph(const UBlueprint* Blueprint, UEdGraph* OnlyGraph, TFunctionRef<void(UEdGraph&)> Visit)
		{
			if (OnlyGraph)
			{
				Visit(*OnlyGraph);
				return;
			}
			if (!Blueprint)
			{
				return;
			}
			TArray<UEdGraph*> Graphs;
			Blueprint->GetAllGraphs(Graphs);
			for (UEdGraph* Graph : Graphs)
			{
				if (Graph)
				{
					Visit(*Graph);
				}
			}
		}

#if CALVORN_HAS_FUNCTION_TERMINATORS
		[[maybe_unused]] UK2Node_FunctionEntry* FindEntry(const UEdGraph* Graph)
		{
			if (!Graph)
			{
				return nullptr;
			}
			for (UEdGraphNode* Node : Graph->Nodes)
			{
				if (UK2Node_FunctionEntry* Entry = Cast<UK2Node_FunctionEntry>(Node))
				{
					return Entry;
				}
			}
			return nullptr;
		}
#endif
	}

	void CreateFunctionGraphTerminators(UEdGraph& Graph, UClass* SignatureClass, UFunction* SignatureFunction)
	{
#if CALVORN_HAS_FUNCTION_TERMINATORS
		if (FindEntry(&Graph))
		{
			return;
		}
		const FName GraphName = Graph.GetFName();
		FGraphNodeCreator<UK2Node_FunctionEntry> EntryCreator(Graph);
		UK2Node_FunctionEntry* Entry = EntryCreator.CreateNode();
		UFunction* Signature = SignatureFunction;
		if (SignatureFunction)
		{
			Entry->FunctionReference.SetExternalMember(SignatureFunction->GetFName(), SignatureFunction->GetOwnerClass());
		}
		else if (SignatureClass)
		{
			Entry->FunctionReference.SetExternalMember(GraphName, SignatureClass);
			Signature = SignatureClass->FindFunctionByName(GraphName);
		}
		else
		{
			// A function of the Blueprint's own: its signature comes from the entry's user pins only.
			Entry->FunctionReference.SetExternalMember(GraphName, nullptr);
		}
		EntryCreator.Finalize();

		// A signature with outputs needs its result node, wired to the entry so the signature is whole.
		if (Signature)
		{
			Entry->AddExtraFlags(int32(Signature->FunctionFlags & (FUNC_Const | FUNC_Static | FUNC_BlueprintPure)));
			if (UEdGraphSchema_K2::HasFunctionAnyOutputParameter(Signature))
			{
				FGraphNodeCreator<UK2Node_FunctionResult> ResultCreator(Graph);
				UK2Node_FunctionResult* Result = ResultCreator.CreateNode();
				Result->FunctionReference = Entry->FunctionReference;
				Result->NodePosX = Entry->NodePosX + Entry->NodeWidth + 256;
				Result->NodePosY = Entry->NodePosY;
				ResultCreator.Finalize();
				UEdGraphPin* Then = Entry->FindPin(UEdGraphSchema_K2::PN_Then, EGPD_Output);
				UEdGraphPin* Execute = Result->FindPin(UEdGraphSchema_K2::PN_Execute, EGPD_Input);
				if (Then && Execute)
				{
					GetDefault<UEdGraphSchema_K2>()->TryCreateConnection(Then, Execute);
				}
			}
		}
#endif
	}

	void MakeUserFunctionEntry(UBlueprint* Blueprint, UEdGraph& Graph)
	{
#if CALVORN_HAS_FUNCTION_TERMINATORS
		UK2Node_FunctionEntry* Entry = FindEntry(&Graph);
		if (!Entry)
		{
			return;
		}
		int32 Flags = int32(FUNC_BlueprintCallable | FUNC_BlueprintEvent | FUNC_Public);
		if (Blueprint && Blueprint->BlueprintType == BPTYPE_FunctionLibrary)
		{
			Flags |= int32(FUNC_Static);
		}
		Entry->bIsEditable = true;
		if (FBlueprintEditorUtils::IsEditorUtilityBlueprint(Blueprint))
		{
			Entry->MetaData.bCallInEditor = true;
		}
		Entry->AddExtraFlags(Flags);
#endif
	}

	void CreateMacroTunnels(UEdGraph& Graph, bool bIsUserCreated)
	{
#if CALVORN_HAS_TUNNEL_NODE
		for (UEdGraphNode* Node : Graph.Nodes)
		{
			if (Cast<UK2Node_Tunnel>(Node))
			{
				return;
			}
		}
		FGraphNodeCreator<UK2Node_Tunnel> EntryCreator(Graph);
		UK2Node_Tunnel* Entry = EntryCreator.CreateNode();
		Entry->bCanHaveOutputs = true;
		Entry->bIsEditable = bIsUserCreated;
		EntryCreator.Finalize();

		FGraphNodeCreator<UK2Node_Tunnel> ExitCreator(Graph);
		UK2Node_Tunnel* Exit = ExitCreator.CreateNode();
		Exit->bCanHaveInputs = true;
		Exit->bIsEditable = bIsUserCreated;
		Exit->NodePosX = 240;
		ExitCreator.Finalize();
#endif
	}

	FKismetUserDeclaredFunctionMetadata* GetFunctionMetaData(const UEdGraph* Graph)
	{
#if CALVORN_HAS_FUNCTION_TERMINATORS
		if (UK2Node_FunctionEntry* Entry = FindEntry(Graph))
		{
			return &Entry->MetaData;
		}
#endif
		return nullptr;
	}

	UK2Node_FunctionResult* FindOrCreateResultNode(UK2Node_EditablePinBase* EntryNode)
	{
#if CALVORN_HAS_FUNCTION_TERMINATORS
		UEdGraph* Graph = EntryNode ? EntryNode->GetGraph() : nullptr;
		if (!Graph)
		{
			return nullptr;
		}
		for (UEdGraphNode* Node : Graph->Nodes)
		{
			if (UK2Node_FunctionResult* Result = Cast<UK2Node_FunctionResult>(Node))
			{
				return Result;
			}
		}
		// Only a function has a result; events and tunnels do not.
		UK2Node_FunctionEntry* Entry = Cast<UK2Node_FunctionEntry>(EntryNode);
		if (!Entry)
		{
			return nullptr;
		}
		FGraphNodeCreator<UK2Node_FunctionResult> Creator(*Graph);
		UK2Node_FunctionResult* Result = Creator.CreateNode();
		Result->FunctionReference = Entry->FunctionReference;
		Result->NodePosX = Entry->NodePosX + Entry->NodeWidth + 256;
		Result->NodePosY = Entry->NodePosY;
		// A function whose signature the user edits has an editable result too.
		Result->bIsEditable = Entry->bIsEditable;
		Creator.Finalize();
		return Result;
#else
		return nullptr;
#endif
	}

	UK2Node_Event* FindOverrideEvent(const UBlueprint* Blueprint, const UClass* SignatureClass, FName SignatureName)
	{
#if CALVORN_HAS_EVENT_NODE
		TArray<UK2Node_Event*> Events;
		FBlueprintEditorUtils::GetAllNodesOfClass(Blueprint, Events);
		for (UK2Node_Event* Event : Events)
		{
			if (!Event->bOverrideFunction || Event->EventReference.GetMemberName() != SignatureName)
			{
				continue;
			}
			const UClass* Parent = Event->EventReference.GetMemberParentClass(Event->GetBlueprintClassFromNode());
			if (!SignatureClass || (Parent && Parent->IsChildOf(SignatureClass)))
			{
				return Event;
			}
		}
#endif
		return nullptr;
	}

	UK2Node_Event* CreateDefaultEventNode(UBlueprint* Blueprint, UEdGraph* Graph, FName EventName, UClass* EventClass, int32& InOutNodePosY)
	{
#if CALVORN_HAS_EVENT_NODE
		if (!Graph || !EventClass || !EventClass->FindFunctionByName(EventName))
		{
			return nullptr;
		}
		UK2Node_Event* Event = NewObject<UK2Node_Event>(Graph);
		Event->EventReference.SetExternalMember(EventName, EventClass);
		Event->bOverrideFunction = true;
		Event->CreateNewGuid();
		Event->PostPlacedNewNode();
		Event->SetFlags(RF_Transactional);
		Event->AllocateDefaultPins();
		Event->bCommentBubblePinned = true;
		Event->bCommentBubbleVisible = true;
		Event->NodePosY = InOutNodePosY;
		InOutNodePosY = Event->NodePosY + Event->NodeHeight + 200;
		Graph->AddNode(Event, false, false);
		// Placed for the user, not by them: disabled until something is wired to it.
		Event->EnabledState = ENodeEnabledState::Disabled;
		Event->bUserSetEnabledState = false;
		Event->NodeComment = TEXT("This node is disabled and will not be called.\nDrag off pins to build functionality.");
		return Event;
#else
		return nullptr;
#endif
	}

	void RemoveVariableNodes(UBlueprint* Blueprint, FName VarName, bool bForSelfOnly, UEdGraph* LocalGraphScope)
	{
#if CALVORN_HAS_VARIABLE_NODE
		TArray<UK2Node_Variable*> ToRemove;
		UClass* SelfClass = Blueprint ? Blueprint->GeneratedClass.Get() : nullptr;
		ForEachGraph(Blueprint, LocalGraphScope, [&](UEdGraph& Graph)
		{
			TArray<UK2Node_Variable*> Nodes;
			Graph.GetNodesOfClass(Nodes);
			for (UK2Node_Variable* Node : Nodes)
			{
				if (Node->GetVarName() != VarName)
				{
					continue;
				}
				const UClass* Parent = Node->VariableReference.GetMemberParentClass(SelfClass);
				if (!bForSelfOnly || Node->VariableReference.IsSelfContext() || Node->VariableReference.IsLocalScope() || (SelfClass && Parent == SelfClass)
					|| (Blueprint && Parent && Parent == Blueprint->SkeletonGeneratedClass))
				{
					ToRemove.Add(Node);
				}
			}
		});
		for (UK2Node_Variable* Node : ToRemove)
		{
			Node->BreakAllNodeLinks();
			if (UEdGraph* Graph = Node->GetGraph())
			{
				Graph->RemoveNode(Node, false);
			}
			Node->DestroyNode();
		}
#endif
	}

	void RenameVariableReferences(UBlueprint* Blueprint, FName OldName, FName NewName)
	{
#if CALVORN_HAS_VARIABLE_NODE
		ForEachGraph(Blueprint, nullptr, [&](UEdGraph& Graph)
		{
			TArray<UK2Node_Variable*> Nodes;
			Graph.GetNodesOfClass(Nodes);
			for (UK2Node_Variable* Node : Nodes)
			{
				if (Node->VariableReference.IsSelfContext() && Node->GetVarName() == OldName)
				{
					Node->VariableReference.SetSelfMember(NewName);
					if (UEdGraphPin* Pin = Node->FindPin(OldName))
					{
						Pin->PinName = NewName;
					}
				}
			}
		});
#endif
	}

	int32 CountVariableNodes(const UBlueprint* Blueprint, FName VarName, UEdGraph* LocalGraphScope)
	{
		int32 Count = 0;
#if CALVORN_HAS_VARIABLE_NODE
		ForEachGraph(Blueprint, LocalGraphScope, [&](UEdGraph& Graph)
		{
			TArray<UK2Node_Variable*> Nodes;
			Graph.GetNodesOfClass(Nodes);
			for (const UK2Node_Variable* Node : Nodes)
			{
				Count += Node->GetVarName() == VarName ? 1 : 0;
			}
		});
#endif
		return Count;
	}

	bool AddLocalVariable(UBlueprint* Blueprint, UEdGraph& Graph, FName VarName, const FEdGraphPinType& VarType, const FString& DefaultValue)
	{
#if CALVORN_HAS_FUNCTION_TERMINATORS
		UK2Node_FunctionEntry* Entry = FindEntry(&Graph);
		if (!Entry)
		{
			return false;
		}
		// The name must be free among the members and among this function's locals and parameters.
		FKismetNameValidator Validator(Blueprint);
		if (Validator.IsValid(VarName) != EValidatorResult::Ok || Entry->FindLocalVariable(VarName) || Entry->FindPin(VarName))
		{
			return false;
		}
		FBPVariableDescription Variable;
		Variable.VarName = VarName;
		Variable.VarGuid = FGuid::NewGuid();
		Variable.VarType = VarType;
		Variable.FriendlyName = FName::NameToDisplayString(VarName.ToString(), VarType.PinCategory == UEdGraphSchema_K2::PC_Boolean);
		Variable.Category = UEdGraphSchema_K2::VR_DefaultCategory;
		Variable.PropertyFlags |= uint64(CPF_BlueprintVisible);
		Variable.DefaultValue = DefaultValue;
		Entry->LocalVariables.Add(Variable);
		FBlueprintEditorUtils::MarkBlueprintAsStructurallyModified(Blueprint);
		return true;
#else
		return false;
#endif
	}

	FBPVariableDescription* FindLocalVariableInGraph(const UEdGraph* Graph, FName VarName)
	{
#if CALVORN_HAS_FUNCTION_TERMINATORS
		if (UK2Node_FunctionEntry* Entry = FindEntry(Graph))
		{
			return Entry->FindLocalVariable(VarName);
		}
#endif
		return nullptr;
	}

	FBPVariableDescription* FindLocalVariableInScope(UBlueprint* Blueprint, const UStruct* Scope, FName VarName)
	{
		if (!Blueprint || !Scope)
		{
			return nullptr;
		}
		// A function's scope is named like its graph.
		for (UEdGraph* Graph : Blueprint->FunctionGraphs)
		{
			if (Graph && Graph->GetFName() == Scope->GetFName())
			{
				return FindLocalVariableInGraph(Graph, VarName);
			}
		}
		return nullptr;
	}

	bool RemoveLocalVariable(const UEdGraph* Graph, FName VarName)
	{
#if CALVORN_HAS_FUNCTION_TERMINATORS
		if (UK2Node_FunctionEntry* Entry = FindEntry(Graph))
		{
			for (int32 Index = 0; Index < Entry->LocalVariables.Num(); ++Index)
			{
				if (Entry->LocalVariables[Index].VarName == VarName)
				{
					Entry->LocalVariables.RemoveAt(Index);
					return true;
				}
			}
		}
#endif
		return false;
	}

	UTimelineTemplate* FindTimelineOfNode(UBlueprint* Blueprint, UEdGraphNode* Node)
	{
#if CALVORN_HAS_TIMELINE_NODE
		if (const UK2Node_Timeline* Timeline = Cast<UK2Node_Timeline>(Node))
		{
			return FBlueprintEditorUtils::FindTimelineTemplateByVariableName(Blueprint, Timeline->TimelineName);
		}
#endif
		return nullptr;
	}

	void RemoveTimelinesOfGraph(UBlueprint* Blueprint, UEdGraph* Graph)
	{
		if (!Graph)
		{
			return;
		}
		for (UEdGraphNode* Node : Graph->Nodes)
		{
			if (UTimelineTemplate* Timeline = FindTimelineOfNode(Blueprint, Node))
			{
				FBlueprintEditorUtils::RemoveTimeline(Blueprint, Timeline, true);
			}
		}
	}

	void RenameTimelineNodes(UBlueprint* Blueprint, FName OldName, FName NewName)
	{
#if CALVORN_HAS_TIMELINE_NODE
		ForEachGraph(Blueprint, nullptr, [&](UEdGraph& Graph)
		{
			TArray<UK2Node_Timeline*> Nodes;
			Graph.GetNodesOfClass(Nodes);
			for (UK2Node_Timeline* Node : Nodes)
			{
				if (Node->TimelineName == OldName)
				{
					Node->TimelineName = NewName;
				}
			}
		});
#endif
	}

	void RemoveMacroInstances(UBlueprint* Blueprint, UEdGraph* MacroGraph)
	{
#if CALVORN_HAS_TUNNEL_NODE
		TArray<UK2Node_MacroInstance*> Instances;
		FBlueprintEditorUtils::GetAllNodesOfClass(Blueprint, Instances);
		for (UK2Node_MacroInstance* Instance : Instances)
		{
			if (Instance->GetMacroGraph() == MacroGraph)
			{
				FBlueprintEditorUtils::RemoveNode(Blueprint, Instance, true);
			}
		}
#endif
	}

	void PromoteInterfaceGraphToFunction(UBlueprint* Blueprint, UEdGraph& Graph)
	{
#if CALVORN_HAS_FUNCTION_TERMINATORS
		// The graph's terminators now name a function of this Blueprint.
		for (UEdGraphNode* Node : Graph.Nodes)
		{
			if (UK2Node_FunctionTerminator* Terminator = Cast<UK2Node_FunctionTerminator>(Node))
			{
				Terminator->FunctionReference.SetSelfMember(Graph.GetFName());
				if (UK2Node_FunctionEntry* Entry = Cast<UK2Node_FunctionEntry>(Terminator))
				{
					Entry->bIsEditable = true;
					Entry->AddExtraFlags(int32(FUNC_BlueprintCallable | FUNC_BlueprintEvent | FUNC_Public));
				}
			}
		}
#endif
	}

	void RemoveInterfaceEvents(UBlueprint* Blueprint, UClass* InterfaceClass, bool bPreserveFunctions)
	{
#if CALVORN_HAS_EVENT_NODE
		TArray<UK2Node_Event*> Events;
		FBlueprintEditorUtils::GetAllNodesOfClass(Blueprint, Events);
		for (UK2Node_Event* Event : Events)
		{
			if (!Event->bOverrideFunction)
			{
				continue;
			}
			const UClass* Parent = Event->EventReference.GetMemberParentClass(Event->GetBlueprintClassFromNode());
			if (Parent && Parent->IsChildOf(InterfaceClass))
			{
				FBlueprintEditorUtils::RemoveNode(Blueprint, Event, true);
			}
		}
#endif
	}
}
