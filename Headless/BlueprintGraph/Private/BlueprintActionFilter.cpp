#include "BlueprintActionFilter.h"
#include "BlueprintBoundEventNodeSpawner.h"
#include "BlueprintDelegateNodeSpawner.h"
#include "BlueprintEventNodeSpawner.h"
#include "BlueprintFieldNodeSpawner.h"
#include "BlueprintFunctionNodeSpawner.h"
#include "BlueprintNodeSpawner.h"
#include "BlueprintNodeStatics.h"
#include "BlueprintVariableNodeSpawner.h"
#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "K2Node.h"
#include "K2Node_CallFunction.h"
#include "K2Node_Event.h"
#include "K2Node_FunctionEntry.h"
#include "UObject/UnrealType.h"

namespace
{
	using namespace UE::BlueprintGraph::Private;

	enum class EGraphKind : uint8
	{
		Ubergraph,
		Function,
		Macro,
		Other,
	};

	/** What kind of Blueprint graph this is, from where its Blueprint files it (a nested graph takes its parent's kind). */
	EGraphKind GetGraphKind(const UEdGraph* Graph)
	{
		if (!Graph)
		{
			return EGraphKind::Other;
		}
		const UEdGraph* TopGraph = Graph;
		for (const UObject* Outer = Graph->GetOuter(); Outer; Outer = Outer->GetOuter())
		{
			if (const UEdGraph* OuterGraph = Cast<UEdGraph>(Outer))
			{
				TopGraph = OuterGraph;
			}
		}
		if (const UBlueprint* Blueprint = FindBlueprintFor(Graph))
		{
			if (Blueprint->UbergraphPages.Contains(TopGraph))
			{
				return EGraphKind::Ubergraph;
			}
			if (Blueprint->MacroGraphs.Contains(TopGraph))
			{
				return EGraphKind::Macro;
			}
			if (Blueprint->FunctionGraphs.Contains(TopGraph) || Blueprint->DelegateSignatureGraphs.Contains(TopGraph))
			{
				return EGraphKind::Function;
			}
			for (const FBPInterfaceDescription& Interface : Blueprint->ImplementedInterfaces)
			{
				if (Interface.Graphs.Contains(TopGraph))
				{
					return EGraphKind::Function;
				}
			}
		}
		// A graph no Blueprint files: an entry node makes it a function.
		for (const UEdGraphNode* Node : TopGraph->Nodes)
		{
			if (Cast<UK2Node_FunctionEntry>(Node))
			{
				return EGraphKind::Function;
			}
		}
		if (const UEdGraphSchema* Schema = Graph->GetSchema())
		{
			switch (Schema->GetGraphType(Graph))
			{
			case GT_Ubergraph:
				return EGraphKind::Ubergraph;
			case GT_Macro:
				return EGraphKind::Macro;
			case GT_Function:
				return EGraphKind::Function;
			default:
				return EGraphKind::Other;
			}
		}
		return EGraphKind::Other;
	}

	/** Whether the graph may run nodes with exec pins: not an animation graph, nor the body of a pure function. */
	bool DoesGraphSupportImpureFunctions(const UEdGraph* Graph)
	{
		const UEdGraphSchema* Schema = Graph ? Graph->GetSchema() : nullptr;
		if (Schema && Schema->GetGraphType(Graph) == GT_Animation)
		{
			return false;
		}
		if (Graph)
		{
			for (const UEdGraphNode* Node : Graph->Nodes)
			{
				if (const UK2Node_FunctionEntry* Entry = Cast<UK2Node_FunctionEntry>(Node))
				{
					return !Entry->HasAnyExtraFlags(FUNC_BlueprintPure);
				}
			}
		}
		return true;
	}

	/** Whether the node the action places runs from an exec pin. */
	bool IsImpureAction(const UBlueprintNodeSpawner* Spawner, const UFunction* Function)
	{
		if (Cast<UBlueprintFunctionNodeSpawner>(Spawner))
		{
			return Function && !Function->HasAnyFunctionFlags(FUNC_BlueprintPure);
		}
		if (const UBlueprintVariableNodeSpawner* VarSpawner = Cast<UBlueprintVariableNodeSpawner>(Spawner))
		{
			return VarSpawner->IsSetter();
		}
		if (Cast<UBlueprintDelegateNodeSpawner>(Spawner) || Cast<UBlueprintEventNodeSpawner>(Spawner))
		{
			return true;
		}
		const UK2Node* Template = Cast<UK2Node>(Spawner->GetTemplateNode());
		return Template && !Template->IsNodePure();
	}

	bool IsConstructionScript(const UEdGraph* Graph)
	{
		return Graph && Graph->GetFName() == UEdGraphSchema_K2::FN_UserConstructionScript;
	}

	UClass* Authoritative(UClass* Class)
	{
		return Class ? GetAuthoritativeClass(Class) : nullptr;
	}

	/** Whether ContextClass (a Blueprint's skeleton or generated class) is OwnerClass or derives from it. */
	bool IsInHierarchy(UClass* ContextClass, UClass* OwnerClass)
	{
		if (!ContextClass || !OwnerClass)
		{
			return false;
		}
		UClass* OwnerAuth = Authoritative(OwnerClass);
		return ContextClass->IsChildOf(OwnerClass) || Authoritative(ContextClass)->IsChildOf(OwnerAuth) || ContextClass->ImplementsInterface(OwnerAuth);
	}

	/** Whether the Blueprint declares that it implements the interface, compiled or not. */
	bool DeclaresInterface(const UBlueprint* Blueprint, UClass* Interface)
	{
		for (const FBPInterfaceDescription& Description : Blueprint->ImplementedInterfaces)
		{
			if (Description.Interface.Get() && Interface && Description.Interface->IsChildOf(Interface))
			{
				return true;
			}
		}
		return false;
	}
}

//------------------------------------------------------------------------------ FBlueprintActionInfo

FBlueprintActionInfo::FBlueprintActionInfo(const UObject* InActionOwner, const UBlueprintNodeSpawner* Action)
	: NodeSpawner(Action)
	, ActionOwner(InActionOwner)
{
}

FBlueprintActionInfo::FBlueprintActionInfo(const FBlueprintActionInfo& Other, const IBlueprintNodeBinder::FBindingSet& InBindings)
	: NodeSpawner(Other.NodeSpawner)
	, Bindings(InBindings)
	, ActionOwner(Other.ActionOwner)
{
}

UClass* FBlueprintActionInfo::GetOwnerClass() const
{
	if (const UBlueprintFieldNodeSpawner* FieldSpawner = Cast<UBlueprintFieldNodeSpawner>(NodeSpawner))
	{
		return FieldSpawner->GetOwnerClass();
	}
	if (const UBlueprintEventNodeSpawner* EventSpawner = Cast<UBlueprintEventNodeSpawner>(NodeSpawner))
	{
		const UFunction* Function = EventSpawner->GetEventFunction();
		return Function ? Authoritative(Function->GetOwnerClass()) : nullptr;
	}
	return nullptr;
}

UClass* FBlueprintActionInfo::GetNodeClass() const
{
	return NodeSpawner ? NodeSpawner->NodeClass.Get() : nullptr;
}

const UFunction* FBlueprintActionInfo::GetAssociatedFunction() const
{
	if (const UBlueprintFunctionNodeSpawner* FunctionSpawner = Cast<UBlueprintFunctionNodeSpawner>(NodeSpawner))
	{
		return FunctionSpawner->GetFunction();
	}
	if (const UBlueprintEventNodeSpawner* EventSpawner = Cast<UBlueprintEventNodeSpawner>(NodeSpawner))
	{
		return EventSpawner->GetEventFunction();
	}
	return nullptr;
}

const FProperty* FBlueprintActionInfo::GetAssociatedProperty() const
{
	if (const UBlueprintVariableNodeSpawner* VarSpawner = Cast<UBlueprintVariableNodeSpawner>(NodeSpawner))
	{
		return VarSpawner->GetVarProperty();
	}
	if (const UBlueprintDelegateNodeSpawner* DelegateSpawner = Cast<UBlueprintDelegateNodeSpawner>(NodeSpawner))
	{
		return DelegateSpawner->GetDelegateProperty();
	}
	return nullptr;
}

//------------------------------------------------------------------------------ FBlueprintActionFilter

FBlueprintActionFilter::FBlueprintActionFilter(uint32 Flags)
	: FilterFlags(Flags)
{
}

void FBlueprintActionFilter::AddUnique(TArray<FTargetClassFilterData>& ToArray, UClass* Class)
{
	if (!Class)
	{
		return;
	}
	for (const FTargetClassFilterData& Existing : ToArray)
	{
		if (Existing.TargetClass == Class)
		{
			return;
		}
	}
	Add(ToArray, Class);
}

void FBlueprintActionFilter::Add(TArray<FTargetClassFilterData>& ToArray, UClass* Class)
{
	if (Class)
	{
		FTargetClassFilterData Data;
		Data.TargetClass = Class;
		ToArray.Add(Data);
	}
}

void FBlueprintActionFilter::AddRejectionTest(FRejectionTestDelegate RejectionTestDelegate)
{
	if (RejectionTestDelegate.IsBound())
	{
		FilterTests.Add(MoveTemp(RejectionTestDelegate));
	}
}

UClass* FBlueprintActionFilter::GetBlueprintClass(const UBlueprint* Blueprint)
{
	if (!Blueprint)
	{
		return nullptr;
	}
	if (UClass* Skeleton = Blueprint->SkeletonGeneratedClass.Get())
	{
		return Skeleton;
	}
	if (UClass* Generated = Blueprint->GeneratedClass.Get())
	{
		return Generated;
	}
	return Blueprint->ParentClass.Get();
}

bool FBlueprintActionFilter::IsFiltered(FBlueprintActionInfo& BlueprintAction)
{
	if (IsFilteredByThis(BlueprintAction))
	{
		return true;
	}
	for (const FRejectionTestDelegate& Test : FilterTests)
	{
		if (Test.Execute(*this, BlueprintAction))
		{
			return true;
		}
	}
	return false;
}

bool FBlueprintActionFilter::IsFilteredByThis(FBlueprintActionInfo& BlueprintAction) const
{
	const UBlueprintNodeSpawner* Spawner = BlueprintAction.NodeSpawner;
	UClass* NodeClass = BlueprintAction.GetNodeClass();
	if (!Spawner || !NodeClass)
	{
		return true;
	}

	// Node types the section asks for, or refuses.
	if (PermittedNodeTypes.Num() > 0)
	{
		bool bPermitted = false;
		for (const TSubclassOf<UEdGraphNode>& Permitted : PermittedNodeTypes)
		{
			if (Permitted.Get() && ((FilterFlags & BPFILTER_RejectPermittedSubClasses) ? NodeClass == Permitted.Get() : NodeClass->IsChildOf(Permitted.Get())))
			{
				bPermitted = true;
				break;
			}
		}
		if (!bPermitted)
		{
			return true;
		}
	}
	for (const TSubclassOf<UEdGraphNode>& Rejected : RejectedNodeTypes)
	{
		if (Rejected.Get() && NodeClass->IsChildOf(Rejected.Get()))
		{
			return true;
		}
	}

	// An action that places a node bound to an object (a component's event) is offered only with that object.
	if (const UBlueprintBoundEventNodeSpawner* BoundSpawner = Cast<UBlueprintBoundEventNodeSpawner>(Spawner))
	{
		if (BlueprintAction.Bindings.Num() == 0)
		{
			return true;
		}
		for (UObject* Binding : BlueprintAction.Bindings)
		{
			if (!BoundSpawner->IsBindingCompatible(Binding))
			{
				return true;
			}
		}
	}

	// Actions a Blueprint contributes are offered in that Blueprint and in the Blueprints derived from it; an
	// interface's functions are for everyone to call.
	const UBlueprint* ContributingBlueprint = Cast<UBlueprint>(BlueprintAction.GetActionOwner());
	if (const UBlueprint* OwnerBlueprint = ContributingBlueprint && ContributingBlueprint->BlueprintType != BPTYPE_Interface ? ContributingBlueprint : nullptr)
	{
		UClass* OwnerClass = GetBlueprintClass(OwnerBlueprint);
		for (const UBlueprint* Blueprint : Context.Blueprints)
		{
			if (Blueprint != OwnerBlueprint && !IsInHierarchy(GetBlueprintClass(Blueprint), OwnerClass))
			{
				return true;
			}
		}
	}

	const UFunction* Function = BlueprintAction.GetAssociatedFunction();
	UClass* OwnerClass = BlueprintAction.GetOwnerClass();
	const UBlueprintVariableNodeSpawner* VarSpawner = Cast<UBlueprintVariableNodeSpawner>(Spawner);
	const UBlueprintDelegateNodeSpawner* DelegateSpawner = Cast<UBlueprintDelegateNodeSpawner>(Spawner);
	const UBlueprintEventNodeSpawner* EventSpawner = Cast<UBlueprintEventNodeSpawner>(Spawner);
	const UBlueprintFieldNodeSpawner* FieldSpawner = Cast<UBlueprintFieldNodeSpawner>(Spawner);
	const bool bIsEventNode = NodeClass->IsChildOf(UK2Node_Event::StaticClass());

	// A member whose class or Blueprint is gone offers nothing.
	const UBlueprintFunctionNodeSpawner* FunctionSpawner = Cast<UBlueprintFunctionNodeSpawner>(Spawner);
	if ((FunctionSpawner && !FunctionSpawner->GetFunction())
		|| (DelegateSpawner && !DelegateSpawner->GetDelegateProperty())
		|| (VarSpawner && !VarSpawner->GetVarProperty() && !VarSpawner->GetDeclaringBlueprint())
		|| (EventSpawner && !EventSpawner->IsForCustomEvent() && !EventSpawner->GetEventFunction()))
	{
		return true;
	}

	if ((FilterFlags & BPFILTER_RejectGlobalFields) && Function && Function->HasAnyFunctionFlags(FUNC_Static))
	{
		return true;
	}

	if (!(FilterFlags & BPFILTER_PermitDeprecated))
	{
		if (Function && Function->HasMetaData(FBlueprintMetadata::MD_DeprecatedFunction))
		{
			return true;
		}
		if (OwnerClass && OwnerClass->HasAnyClassFlags(CLASS_Deprecated | CLASS_NewerVersionExists))
		{
			return true;
		}
		if (const FProperty* Property = BlueprintAction.GetAssociatedProperty())
		{
			if (Property->HasAnyPropertyFlags(CPF_Deprecated))
			{
				return true;
			}
		}
	}

	for (const UEdGraph* Graph : Context.Graphs)
	{
		const UEdGraphSchema* Schema = Graph ? Graph->GetSchema() : nullptr;
		// The database serves Blueprint graphs; other schemas (state machines) offer their own actions, comments
		// included.
		if (!Schema || !Schema->IsA(UEdGraphSchema_K2::StaticClass()))
		{
			return true;
		}
		if (const UEdGraphNode* NodeCDO = Cast<UEdGraphNode>(NodeClass->GetDefaultObject()))
		{
			if (Schema && !NodeCDO->CanCreateUnderSpecifiedSchema(Schema))
			{
				return true;
			}
		}

		const EGraphKind Kind = GetGraphKind(Graph);
		// Events only exist in event graphs; a function or macro runs from its own entry.
		if (bIsEventNode && Kind != EGraphKind::Ubergraph)
		{
			return true;
		}
		if (Function && Kind == EGraphKind::Function && Function->HasMetaData(FBlueprintMetadata::MD_Latent))
		{
			return true;
		}
		if (Function && IsConstructionScript(Graph) && Function->HasMetaData(FBlueprintMetadata::MD_UnsafeForConstructionScripts))
		{
			return true;
		}
		if (!DoesGraphSupportImpureFunctions(Graph) && IsImpureAction(Spawner, Function))
		{
			return true;
		}
	}

	for (const UBlueprint* Blueprint : Context.Blueprints)
	{
		UClass* BlueprintClass = GetBlueprintClass(Blueprint);
		if (!BlueprintClass)
		{
			continue;
		}
		// Events, variables and dispatchers belong to the Blueprint's own class hierarchy.
		if (EventSpawner && !EventSpawner->IsForCustomEvent())
		{
			// The parent class's events, and those of the interfaces the Blueprint implements.
			if (!IsInHierarchy(BlueprintClass, OwnerClass) && !DeclaresInterface(Blueprint, OwnerClass))
			{
				return true;
			}
			if (Blueprint->BlueprintType == BPTYPE_FunctionLibrary || Blueprint->BlueprintType == BPTYPE_MacroLibrary || Blueprint->BlueprintType == BPTYPE_Interface)
			{
				return true;
			}
		}
		if ((VarSpawner && !VarSpawner->GetDeclaringBlueprint()) || DelegateSpawner)
		{
			if (!IsInHierarchy(BlueprintClass, OwnerClass))
			{
				return true;
			}
		}
		// Private members are for their own class, protected ones for it and its children.
		if (Function && OwnerClass && !Function->HasAnyFunctionFlags(FUNC_Static))
		{
			const bool bPrivate = Function->HasAnyFunctionFlags(FUNC_Private) || Function->HasMetaData(FBlueprintMetadata::MD_Private);
			const bool bProtected = Function->HasAnyFunctionFlags(FUNC_Protected) || Function->HasMetaData(FBlueprintMetadata::MD_Protected);
			if (bPrivate && Authoritative(BlueprintClass) != OwnerClass)
			{
				return true;
			}
			if (bProtected && !IsInHierarchy(BlueprintClass, OwnerClass))
			{
				return true;
			}
		}
		if (Function && Function->HasAnyFunctionFlags(FUNC_Static) && Function->HasMetaData(FBlueprintMetadata::MD_Protected) && !IsInHierarchy(BlueprintClass, OwnerClass))
		{
			return true;
		}
	}

	// A context-sensitive menu offers only the members of the classes it targets.
	if ((FilterFlags & BPFILTER_RejectNonTargetMembers) && OwnerClass && !(Function && Function->HasAnyFunctionFlags(FUNC_Static)))
	{
		bool bTargeted = false;
		for (const FTargetClassFilterData& Target : TargetClasses)
		{
			if (IsInHierarchy(Target.TargetClass, OwnerClass))
			{
				bTargeted = true;
				break;
			}
		}
		if (!bTargeted)
		{
			return true;
		}
	}

	// Generic node actions ask their node whether it fits the context.
	if (!FieldSpawner && !EventSpawner)
	{
		if (UK2Node* Template = Cast<UK2Node>(Spawner->GetTemplateNode()))
		{
			if (Template->IsActionFilteredOut(*this))
			{
				return true;
			}
		}
	}
	return false;
}
