#include "Kismet2/BlueprintEditorUtils.h"

#include "Components/ActorComponent.h"
#include "EdGraphSchema_K2.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "Engine/SCS_Node.h"
#include "Engine/SimpleConstructionScript.h"
#include "Engine/TimelineTemplate.h"
#include "GameFramework/Actor.h"
#include "K2Node.h"
#include "Kismet2/CompilerResultsLog.h"
#include "Kismet2/Kismet2NameValidators.h"
#include "KismetCompilerModule.h"
#include "UObject/Class.h"
#include "UObject/Interface.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectIterator.h"
#include "UObject/UnrealType.h"
#include "BlueprintEditorUtilsNodes.h"

namespace
{
	/** Every Blueprint whose class derives from Blueprint's generated class (not Blueprint itself). */
	TArray<UBlueprint*> FindChildBlueprints(const UBlueprint* Blueprint)
	{
		TArray<UBlueprint*> Children;
		const UClass* Generated = Blueprint ? Blueprint->GeneratedClass.Get() : nullptr;
		if (!Generated)
		{
			return Children;
		}
		for (TObjectIterator<UBlueprint> It; It; ++It)
		{
			UBlueprint* Other = *It;
			if (Other != Blueprint && Other->ParentClass && Other->ParentClass->IsChildOf(Generated))
			{
				Children.Add(Other);
			}
		}
		return Children;
	}

	bool IsInterfaceFunctionToImplementAsGraph(const UFunction* Function)
	{
		return Function && UEdGraphSchema_K2::CanKismetOverrideFunction(Function)
			&& !UEdGraphSchema_K2::FunctionCanBePlacedAsEvent(Function)
			&& Function->GetFName() != UEdGraphSchema_K2::FN_ExecuteUbergraphBase;
	}

	/** Makes a graph for an interface function inside Blueprint (an existing object of that name gets a suffix). */
	UEdGraph* MakeInterfaceGraph(UBlueprint* Blueprint, UClass* InterfaceClass, const UFunction* Function)
	{
		UEdGraph* Graph = FBlueprintEditorUtils::CreateNewGraph(Blueprint, Function->GetFName(), UEdGraph::StaticClass(), UEdGraphSchema_K2::StaticClass());
		Graph->bAllowDeletion = false;
		FBlueprintEditorUtils::AddInterfaceGraph(Blueprint, Graph, InterfaceClass);
		return Graph;
	}

	FBPVariableDescription* FindVariable(UBlueprint* Blueprint, const FName& VarName)
	{
		const int32 Index = FBlueprintEditorUtils::FindNewVariableIndex(Blueprint, VarName);
		return Index == INDEX_NONE ? nullptr : &Blueprint->NewVariables[Index];
	}

	void SetOrClearFlag(UBlueprint* Blueprint, const FName& VarName, EPropertyFlags Flag, bool bSet)
	{
		if (FBPVariableDescription* Variable = FindVariable(Blueprint, VarName))
		{
			if (bSet)
			{
				Variable->PropertyFlags |= uint64(Flag);
			}
			else
			{
				Variable->PropertyFlags &= ~uint64(Flag);
			}
			FBlueprintEditorUtils::MarkBlueprintAsStructurallyModified(Blueprint);
		}
	}
}

// Modification

void FBlueprintEditorUtils::MarkBlueprintAsModified(UBlueprint* Blueprint)
{
	if (!Blueprint)
	{
		return;
	}
	if (Blueprint->Status != BS_BeingCreated)
	{
		Blueprint->Status = BS_Dirty;
	}
	Blueprint->MarkPackageDirty();
}

void FBlueprintEditorUtils::MarkBlueprintAsStructurallyModified(UBlueprint* Blueprint)
{
	if (!Blueprint)
	{
		return;
	}
	// While CreateBlueprint builds the Blueprint, the first full compile makes its classes.
	if (Blueprint->Status != BS_BeingCreated)
	{
		if (IKismetCompilerInterface* Compiler = IKismetCompilerInterface::GetPtr())
		{
			FKismetCompilerOptions Options;
			Options.CompileType = EKismetCompileType::SkeletonOnly;
			FCompilerResultsLog Log;
			Log.bSilentMode = true;
			Log.bAnnotateMentionedNodes = false;
			Compiler->CompileBlueprint(Blueprint, Options, Log);
		}
	}
	MarkBlueprintAsModified(Blueprint);
}

// Kinds of Blueprint

bool FBlueprintEditorUtils::IsEditorUtilityBlueprint(const UBlueprint* Blueprint)
{
	for (const UClass* Class = Blueprint ? Blueprint->GetClass() : nullptr; Class; Class = Class->GetSuperClass())
	{
		const FString Name = Class->GetName();
		if (Name == TEXT("EditorUtilityBlueprint") || Name == TEXT("EditorUtilityWidgetBlueprint"))
		{
			return true;
		}
	}
	return false;
}

bool FBlueprintEditorUtils::IsActorBased(const UBlueprint* Blueprint)
{
	return Blueprint && Blueprint->ParentClass && Blueprint->ParentClass->IsChildOf(AActor::StaticClass());
}

bool FBlueprintEditorUtils::IsComponentBased(const UBlueprint* Blueprint)
{
	return Blueprint && Blueprint->ParentClass && Blueprint->ParentClass->IsChildOf(UActorComponent::StaticClass());
}

bool FBlueprintEditorUtils::IsInterfaceBlueprint(const UBlueprint* Blueprint)
{
	return Blueprint && Blueprint->BlueprintType == BPTYPE_Interface;
}

bool FBlueprintEditorUtils::IsLevelScriptBlueprint(const UBlueprint* Blueprint)
{
	return Blueprint && Blueprint->BlueprintType == BPTYPE_LevelScript;
}

bool FBlueprintEditorUtils::IsDataOnlyBlueprint(const UBlueprint* Blueprint)
{
	if (!Blueprint || Blueprint->BlueprintType != BPTYPE_Normal || Blueprint->AlwaysCompileOnLoad())
	{
		return false;
	}
	if (Blueprint->NewVariables.Num() > 0 || Blueprint->MacroGraphs.Num() > 0 || Blueprint->DelegateSignatureGraphs.Num() > 0
		|| Blueprint->ImplementedInterfaces.Num() > 0 || Blueprint->Timelines.Num() > 0)
	{
		return false;
	}
	if (Blueprint->SimpleConstructionScript && Blueprint->SimpleConstructionScript->GetAllNodes().Num() > 0)
	{
		return false;
	}
	// The construction script counts only when something follows its entry.
	for (const UEdGraph* Graph : Blueprint->FunctionGraphs)
	{
		if (!Graph || Graph->GetFName() != UEdGraphSchema_K2::FN_UserConstructionScript || Graph->Nodes.Num() > 1)
		{
			return false;
		}
	}
	// Event graphs may only hold the disabled nodes placed at creation.
	for (const UEdGraph* Graph : Blueprint->UbergraphPages)
	{
		for (const UEdGraphNode* Node : Graph ? Graph->Nodes : TArray<TObjectPtr<UEdGraphNode>>())
		{
			if (Node && (Node->EnabledState != ENodeEnabledState::Disabled || Node->bUserSetEnabledState))
			{
				return false;
			}
		}
	}
	return true;
}

bool FBlueprintEditorUtils::DoesSupportEventGraphs(const UBlueprint* Blueprint)
{
	return Blueprint && (Blueprint->BlueprintType == BPTYPE_Normal || Blueprint->BlueprintType == BPTYPE_LevelScript);
}

bool FBlueprintEditorUtils::DoesSupportTimelines(const UBlueprint* Blueprint)
{
	return DoesSupportEventGraphs(Blueprint) && IsActorBased(Blueprint);
}

bool FBlueprintEditorUtils::DoesSupportOverridingFunctions(const UBlueprint* Blueprint)
{
	return Blueprint && Blueprint->BlueprintType != BPTYPE_MacroLibrary && Blueprint->BlueprintType != BPTYPE_Interface
		&& Blueprint->BlueprintType != BPTYPE_FunctionLibrary;
}

bool FBlueprintEditorUtils::SupportsConstructionScript(const UBlueprint* Blueprint)
{
	return Blueprint && !IsInterfaceBlueprint(Blueprint) && !IsLevelScriptBlueprint(Blueprint)
		&& Blueprint->BlueprintType != BPTYPE_MacroLibrary && Blueprint->BlueprintType != BPTYPE_FunctionLibrary && IsActorBased(Blueprint);
}

// Finding

UBlueprint* FBlueprintEditorUtils::FindBlueprintForGraph(const UEdGraph* Graph)
{
	for (UObject* Outer = Graph ? Graph->GetOuter() : nullptr; Outer; Outer = Outer->GetOuter())
	{
		if (UBlueprint* Blueprint = Cast<UBlueprint>(Outer))
		{
			return Blueprint;
		}
	}
	return nullptr;
}

UBlueprint* FBlueprintEditorUtils::FindBlueprintForGraphChecked(const UEdGraph* Graph)
{
	UBlueprint* Blueprint = FindBlueprintForGraph(Graph);
	checkf(Blueprint, TEXT("Graph %s is not inside a Blueprint"), Graph ? *Graph->GetPathName() : TEXT("(null)"));
	return Blueprint;
}

UBlueprint* FBlueprintEditorUtils::FindBlueprintForNode(const UEdGraphNode* Node)
{
	for (UObject* Outer = Node ? Node->GetOuter() : nullptr; Outer; Outer = Outer->GetOuter())
	{
		if (UBlueprint* Blueprint = Cast<UBlueprint>(Outer))
		{
			return Blueprint;
		}
	}
	return nullptr;
}

UBlueprint* FBlueprintEditorUtils::FindBlueprintForNodeChecked(const UEdGraphNode* Node)
{
	UBlueprint* Blueprint = FindBlueprintForNode(Node);
	checkf(Blueprint, TEXT("Node %s is not inside a Blueprint"), Node ? *Node->GetPathName() : TEXT("(null)"));
	return Blueprint;
}

UEdGraph* FBlueprintEditorUtils::FindEventGraph(const UBlueprint* Blueprint)
{
	if (!Blueprint)
	{
		return nullptr;
	}
	for (UEdGraph* Graph : Blueprint->UbergraphPages)
	{
		if (Graph && Graph->GetFName() == UEdGraphSchema_K2::GN_EventGraph)
		{
			return Graph;
		}
	}
	return nullptr;
}

bool FBlueprintEditorUtils::IsEventGraph(const UEdGraph* InGraph)
{
	const UBlueprint* Blueprint = FindBlueprintForGraph(InGraph);
	return Blueprint && Blueprint->UbergraphPages.Contains(InGraph);
}

void FBlueprintEditorUtils::GetAllGraphNames(const UBlueprint* Blueprint, TSet<FName>& GraphNames)
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
			GraphNames.Add(Graph->GetFName());
		}
	}
}

void FBlueprintEditorUtils::GetClassVariableList(const UBlueprint* Blueprint, TSet<FName>& VisibleVariables, bool bIncludePrivateVars)
{
	if (!Blueprint)
	{
		return;
	}
	// The skeleton holds this Blueprint's members once compiled; the parent class covers a Blueprint not compiled yet.
	const UClass* Class = Blueprint->SkeletonGeneratedClass ? Blueprint->SkeletonGeneratedClass.Get() : Blueprint->ParentClass.Get();
	for (const UStruct* Struct = Class; Struct; Struct = Struct->GetSuperStruct())
	{
		for (FField* Field = Struct->ChildProperties; Field; Field = Field->Next)
		{
			const FProperty* Property = CastField<FProperty>(Field);
			if (Property && !Property->HasAnyPropertyFlags(CPF_Parm) && (bIncludePrivateVars || Property->HasAllPropertyFlags(CPF_BlueprintVisible)))
			{
				VisibleVariables.Add(Property->GetFName());
			}
		}
	}
	for (const FBPVariableDescription& Variable : Blueprint->NewVariables)
	{
		VisibleVariables.Add(Variable.VarName);
	}
	for (const UTimelineTemplate* Timeline : Blueprint->Timelines)
	{
		if (Timeline)
		{
			VisibleVariables.Add(Timeline->GetVariableName());
		}
	}
	GetSCSVariableNameList(Blueprint, VisibleVariables);
}

void FBlueprintEditorUtils::GetFunctionNameList(const UBlueprint* Blueprint, TSet<FName>& FunctionNames)
{
	if (!Blueprint)
	{
		return;
	}
	const UClass* Class = Blueprint->SkeletonGeneratedClass ? Blueprint->SkeletonGeneratedClass.Get() : Blueprint->ParentClass.Get();
	for (const UClass* Walk = Class; Walk; Walk = Walk->GetSuperClass())
	{
		for (UField* Field = Walk->Children; Field; Field = Field->Next)
		{
			if (Cast<UFunction>(Field))
			{
				FunctionNames.Add(Field->GetFName());
			}
		}
		for (const TPair<FName, UFunction*>& Pair : Walk->GetFunctionMap())
		{
			FunctionNames.Add(Pair.Key);
		}
	}
	for (const UEdGraph* Graph : Blueprint->FunctionGraphs)
	{
		if (Graph)
		{
			FunctionNames.Add(Graph->GetFName());
		}
	}
}

void FBlueprintEditorUtils::GetSCSVariableNameList(const UBlueprint* Blueprint, TSet<FName>& VariableNames)
{
	// This Blueprint's components and those of the Blueprints it derives from.
	for (const UBlueprint* Walk = Blueprint; Walk; Walk = UBlueprint::GetBlueprintFromClass(Walk->ParentClass))
	{
		if (Walk->SimpleConstructionScript)
		{
			for (const USCS_Node* Node : Walk->SimpleConstructionScript->GetAllNodes())
			{
				if (Node && Node->GetVariableName() != NAME_None)
				{
					VariableNames.Add(Node->GetVariableName());
				}
			}
		}
	}
}

void FBlueprintEditorUtils::GetImplementingBlueprintsFunctionNameList(const UBlueprint* Blueprint, TSet<FName>& FunctionNames)
{
	if (!IsInterfaceBlueprint(Blueprint) || !Blueprint->GeneratedClass)
	{
		return;
	}
	for (TObjectIterator<UBlueprint> It; It; ++It)
	{
		const UBlueprint* Other = *It;
		for (const FBPInterfaceDescription& Description : Other->ImplementedInterfaces)
		{
			if (Description.Interface.Get() == Blueprint->GeneratedClass.Get())
			{
				for (const UEdGraph* Graph : Other->FunctionGraphs)
				{
					if (Graph)
					{
						FunctionNames.Add(Graph->GetFName());
					}
				}
			}
		}
	}
}

FName FBlueprintEditorUtils::FindUniqueKismetName(const UBlueprint* InBlueprint, const FString& InBaseName, UStruct* InScope)
{
	FKismetNameValidator Validator(InBlueprint, NAME_None, InScope);
	FString BaseName = InBaseName;
	// A name with a forbidden character would never become valid by numbering it.
	if (Validator.IsValid(BaseName) == EValidatorResult::ContainsInvalidCharacters)
	{
		const FString Invalid(UE_BLUEPRINT_INVALID_NAME_CHARACTERS);
		for (int32 Index = 0; Index < BaseName.Len(); ++Index)
		{
			int32 Found = INDEX_NONE;
			if (Invalid.FindChar(BaseName[Index], Found))
			{
				BaseName[Index] = TEXT('_');
			}
		}
	}
	if (BaseName.IsEmpty())
	{
		BaseName = TEXT("NewVar");
	}
	FString Candidate = BaseName;
	for (int32 Count = 0; Validator.IsValid(Candidate) != EValidatorResult::Ok; ++Count)
	{
		const FString Suffix = FString::Printf(TEXT("_%d"), Count);
		const int32 MaxBase = FKismetNameValidator::GetMaximumNameLength() - Suffix.Len();
		if (BaseName.Len() > MaxBase)
		{
			BaseName = BaseName.Left(MaxBase);
		}
		Candidate = BaseName + Suffix;
	}
	return FName(*Candidate);
}

FName FBlueprintEditorUtils::FindUniqueCustomEventName(const UBlueprint* Blueprint)
{
	return FindUniqueKismetName(Blueprint, TEXT("CustomEvent"));
}

FText FBlueprintEditorUtils::GetFriendlyClassDisplayName(const UClass* Class)
{
	if (!Class)
	{
		return FText::FromString(TEXT("None"));
	}
	if (const UBlueprint* Blueprint = UBlueprint::GetBlueprintFromClass(Class))
	{
		return FText::FromString(Blueprint->GetName());
	}
	return Class->GetDisplayNameText();
}

// Graphs

UEdGraph* FBlueprintEditorUtils::CreateNewGraph(UObject* ParentScope, const FName& GraphName, TSubclassOf<UEdGraph> GraphClass, TSubclassOf<UEdGraphSchema> SchemaClass)
{
	if (!ParentScope || !GraphClass)
	{
		return nullptr;
	}
	FName Name = GraphName;
	if (Name != NAME_None && StaticFindObject(nullptr, ParentScope, *Name.ToString()))
	{
		// The name is taken inside this scope: the new graph is numbered instead of replacing anything.
		Name = MakeUniqueObjectName(ParentScope, GraphClass, Name);
	}
	UEdGraph* Graph = NewObject<UEdGraph>(ParentScope, GraphClass, Name, RF_Transactional);
	Graph->Schema = SchemaClass;
	if (!Graph->GraphGuid.IsValid())
	{
		Graph->GraphGuid = FGuid::NewGuid();
	}
	return Graph;
}

void FBlueprintEditorUtils::AddUbergraphPage(UBlueprint* Blueprint, UEdGraph* Graph)
{
	if (Blueprint && Graph)
	{
		Blueprint->UbergraphPages.AddUnique(Graph);
	}
}

void FBlueprintEditorUtils::AddMacroGraph(UBlueprint* Blueprint, UEdGraph* Graph, bool bIsUserCreated, UClass* SignatureFromClass)
{
	if (!Blueprint || !Graph)
	{
		return;
	}
	if (const UEdGraphSchema* Schema = Graph->GetSchema())
	{
		Schema->CreateDefaultNodesForGraph(*Graph);
	}
	UE::UnrealEd::Private::CreateMacroTunnels(*Graph, bIsUserCreated);
	Blueprint->MacroGraphs.AddUnique(Graph);
	ValidateBlueprintChildVariables(Blueprint, Graph->GetFName());
	MarkBlueprintAsStructurallyModified(Blueprint);
}

void FBlueprintEditorUtils::AddInterfaceGraph(UBlueprint* Blueprint, UEdGraph* Graph, UClass* InterfaceClass)
{
	if (!Blueprint || !Graph)
	{
		return;
	}
	if (const UEdGraphSchema* Schema = Graph->GetSchema())
	{
		Schema->CreateDefaultNodesForGraph(*Graph);
	}
	UE::UnrealEd::Private::CreateFunctionGraphTerminators(*Graph, InterfaceClass, nullptr);
}

void FBlueprintEditorUtils::AddFunctionGraphImpl(UBlueprint* Blueprint, UEdGraph* Graph, bool bIsUserCreated, UClass* SignatureClass)
{
	if (!Blueprint || !Graph)
	{
		return;
	}
	if (const UEdGraphSchema* Schema = Graph->GetSchema())
	{
		Schema->CreateDefaultNodesForGraph(*Graph);
	}
	UE::UnrealEd::Private::CreateFunctionGraphTerminators(*Graph, SignatureClass, nullptr);
	if (bIsUserCreated)
	{
		UE::UnrealEd::Private::MakeUserFunctionEntry(Blueprint, *Graph);
	}
	Blueprint->FunctionGraphs.AddUnique(Graph);
	ValidateBlueprintChildVariables(Blueprint, Graph->GetFName());
	MarkBlueprintAsStructurallyModified(Blueprint);
}

void FBlueprintEditorUtils::AddFunctionGraphImpl(UBlueprint* Blueprint, UEdGraph* Graph, bool bIsUserCreated, UFunction* SignatureFunction)
{
	if (!Blueprint || !Graph)
	{
		return;
	}
	if (const UEdGraphSchema* Schema = Graph->GetSchema())
	{
		Schema->CreateDefaultNodesForGraph(*Graph);
	}
	UE::UnrealEd::Private::CreateFunctionGraphTerminators(*Graph, nullptr, SignatureFunction);
	if (bIsUserCreated)
	{
		UE::UnrealEd::Private::MakeUserFunctionEntry(Blueprint, *Graph);
	}
	Blueprint->FunctionGraphs.AddUnique(Graph);
	ValidateBlueprintChildVariables(Blueprint, Graph->GetFName());
	MarkBlueprintAsStructurallyModified(Blueprint);
}

void FBlueprintEditorUtils::RemoveGraph(UBlueprint* Blueprint, UEdGraph* GraphToRemove, EGraphRemoveFlags::Type Flags)
{
	if (!Blueprint || !GraphToRemove)
	{
		return;
	}
	// The graphs nested in this one go first.
	const TArray<TObjectPtr<UEdGraph>> SubGraphs = GraphToRemove->SubGraphs;
	for (UEdGraph* SubGraph : SubGraphs)
	{
		RemoveGraph(Blueprint, SubGraph, EGraphRemoveFlags::None);
	}

	Blueprint->FunctionGraphs.Remove(GraphToRemove);
	Blueprint->UbergraphPages.Remove(GraphToRemove);
	Blueprint->DelegateSignatureGraphs.Remove(GraphToRemove);
	const bool bWasMacro = Blueprint->MacroGraphs.Remove(GraphToRemove) > 0;
	for (FBPInterfaceDescription& Description : Blueprint->ImplementedInterfaces)
	{
		Description.Graphs.Remove(GraphToRemove);
	}
	for (UObject* Outer = GraphToRemove->GetOuter(); Outer && Outer != Blueprint; Outer = Outer->GetOuter())
	{
		if (UEdGraph* OuterGraph = Cast<UEdGraph>(Outer))
		{
			OuterGraph->SubGraphs.Remove(GraphToRemove);
			break;
		}
	}

	// Timelines live as long as their node.
	UE::UnrealEd::Private::RemoveTimelinesOfGraph(Blueprint, GraphToRemove);
	if (bWasMacro)
	{
		UE::UnrealEd::Private::RemoveMacroInstances(Blueprint, GraphToRemove);
	}

	for (UEdGraphNode* Node : GraphToRemove->Nodes)
	{
		if (Node)
		{
			Node->BreakAllNodeLinks();
		}
	}
	if (Flags & EGraphRemoveFlags::MarkTransient)
	{
		GraphToRemove->SetFlags(RF_Transient);
	}
	// Out of the Blueprint, so its name is free again and nothing finds it inside the asset.
	GraphToRemove->Rename(nullptr, GetTransientPackage(), REN_DontCreateRedirectors);
	GraphToRemove->MarkAsGarbage();

	if (Flags & EGraphRemoveFlags::Recompile)
	{
		MarkBlueprintAsStructurallyModified(Blueprint);
	}
}

void FBlueprintEditorUtils::RemoveGraphs(UBlueprint* Blueprint, const TArray<UEdGraph*>& GraphsToRemove)
{
	for (UEdGraph* Graph : GraphsToRemove)
	{
		RemoveGraph(Blueprint, Graph, EGraphRemoveFlags::MarkTransient);
	}
	MarkBlueprintAsStructurallyModified(Blueprint);
}

void FBlueprintEditorUtils::RemoveNode(UBlueprint* Blueprint, UEdGraphNode* Node, bool bDontRecompile)
{
	if (!Node)
	{
		return;
	}
	bool bStructural = false;
	if (const UK2Node* K2Node = Cast<UK2Node>(Node))
	{
		bStructural = K2Node->NodeCausesStructuralBlueprintChange();
	}
	if (Blueprint)
	{
		if (UTimelineTemplate* Timeline = UE::UnrealEd::Private::FindTimelineOfNode(Blueprint, Node))
		{
			RemoveTimeline(Blueprint, Timeline, true);
			bStructural = true;
		}
	}
	if (const UEdGraphSchema* Schema = Node->GetSchema())
	{
		Schema->BreakNodeLinks(*Node);
	}
	else
	{
		Node->BreakAllNodeLinks();
	}
	if (UEdGraph* Graph = Node->GetGraph())
	{
		Graph->RemoveNode(Node, false);
	}
	Node->DestroyNode();
	if (!bDontRecompile && Blueprint)
	{
		if (bStructural)
		{
			MarkBlueprintAsStructurallyModified(Blueprint);
		}
		else
		{
			MarkBlueprintAsModified(Blueprint);
		}
	}
}

FKismetUserDeclaredFunctionMetadata* FBlueprintEditorUtils::GetGraphFunctionMetaData(const UEdGraph* InGraph)
{
	return UE::UnrealEd::Private::GetFunctionMetaData(InGraph);
}

UK2Node_FunctionResult* FBlueprintEditorUtils::FindOrCreateFunctionResultNode(UK2Node_EditablePinBase* InFunctionEntryNode)
{
	return UE::UnrealEd::Private::FindOrCreateResultNode(InFunctionEntryNode);
}

UK2Node_Event* FBlueprintEditorUtils::FindOverrideForFunction(const UBlueprint* Blueprint, const UClass* SignatureClass, FName SignatureName)
{
	return UE::UnrealEd::Private::FindOverrideEvent(Blueprint, SignatureClass, SignatureName);
}

UClass* FBlueprintEditorUtils::GetOverrideFunctionClass(UBlueprint* Blueprint, const FName FuncName, UFunction** OutFunction)
{
	if (OutFunction)
	{
		*OutFunction = nullptr;
	}
	if (!Blueprint || FuncName == NAME_None)
	{
		return nullptr;
	}
	UFunction* Function = Blueprint->ParentClass ? Blueprint->ParentClass->FindFunctionByName(FuncName) : nullptr;
	UClass* OwnerClass = Function ? Function->GetOwnerClass() : nullptr;
	if (!Function)
	{
		for (const FBPInterfaceDescription& Description : Blueprint->ImplementedInterfaces)
		{
			if (Description.Interface)
			{
				if (UFunction* InterfaceFunction = Description.Interface->FindFunctionByName(FuncName))
				{
					Function = InterfaceFunction;
					OwnerClass = InterfaceFunction->GetOwnerClass();
					break;
				}
			}
		}
	}
	if (OutFunction)
	{
		*OutFunction = Function;
	}
	// A Blueprint class answers for its skeleton.
	if (OwnerClass)
	{
		if (const UBlueprint* OwnerBlueprint = UBlueprint::GetBlueprintFromClass(OwnerClass))
		{
			if (OwnerBlueprint->GeneratedClass)
			{
				OwnerClass = OwnerBlueprint->GeneratedClass;
			}
		}
	}
	return OwnerClass;
}

// Member variables

bool FBlueprintEditorUtils::AddMemberVariable(UBlueprint* Blueprint, const FName& NewVarName, const FEdGraphPinType& NewVarType, const FString& DefaultValue)
{
	if (!Blueprint || NewVarName == NAME_None)
	{
		return false;
	}
	TSet<FName> Existing;
	GetClassVariableList(Blueprint, Existing, true);
	if (Existing.Contains(NewVarName))
	{
		return false;
	}

	FBPVariableDescription Variable;
	Variable.VarName = NewVarName;
	Variable.VarGuid = FGuid::NewGuid();
	Variable.FriendlyName = FName::NameToDisplayString(NewVarName.ToString(), NewVarType.PinCategory == UEdGraphSchema_K2::PC_Boolean);
	Variable.VarType = NewVarType;
	// Readable and writable by graphs, edited on the class defaults only.
	Variable.PropertyFlags |= uint64(CPF_Edit | CPF_BlueprintVisible | CPF_DisableEditOnInstance);
	if (NewVarType.PinCategory == UEdGraphSchema_K2::PC_MCDelegate)
	{
		Variable.PropertyFlags |= uint64(CPF_BlueprintAssignable | CPF_BlueprintCallable);
	}
	else if (NewVarType.PinCategory == UEdGraphSchema_K2::PC_Object)
	{
		// An actor reference has no meaningful default in a class that spans levels.
		const UClass* ObjectClass = Cast<UClass>(NewVarType.PinSubCategoryObject.Get());
		if (ObjectClass && ObjectClass->IsChildOf(AActor::StaticClass()))
		{
			Variable.PropertyFlags |= uint64(CPF_DisableEditOnTemplate);
		}
	}
	Variable.ReplicationCondition = COND_None;
	Variable.Category = UEdGraphSchema_K2::VR_DefaultCategory;
	Variable.DefaultValue = DefaultValue;
	Variable.VarType.bIsConst = false;
	Variable.VarType.bIsWeakPointer = false;
	Variable.VarType.bIsReference = false;
	Variable.SetMetaData(TEXT("MultiLine"), TEXT("true"));

	Blueprint->NewVariables.Add(Variable);
	ValidateBlueprintChildVariables(Blueprint, NewVarName);
	MarkBlueprintAsStructurallyModified(Blueprint);
	return true;
}

void FBlueprintEditorUtils::RemoveMemberVariable(UBlueprint* Blueprint, const FName VarName)
{
	const int32 Index = FindNewVariableIndex(Blueprint, VarName);
	if (Index == INDEX_NONE)
	{
		return;
	}
	Blueprint->NewVariables.RemoveAt(Index);
	RemoveVariableNodes(Blueprint, VarName);
	MarkBlueprintAsStructurallyModified(Blueprint);
}

void FBlueprintEditorUtils::BulkRemoveMemberVariables(UBlueprint* Blueprint, const TArray<FName>& VarNames)
{
	bool bRemoved = false;
	for (const FName& Name : VarNames)
	{
		const int32 Index = FindNewVariableIndex(Blueprint, Name);
		if (Index != INDEX_NONE)
		{
			Blueprint->NewVariables.RemoveAt(Index);
			RemoveVariableNodes(Blueprint, Name);
			bRemoved = true;
		}
	}
	if (bRemoved)
	{
		MarkBlueprintAsStructurallyModified(Blueprint);
	}
}

void FBlueprintEditorUtils::RemoveVariableNodes(UBlueprint* Blueprint, const FName VarName, bool const bForSelfOnly, UEdGraph* LocalGraphScope)
{
	UE::UnrealEd::Private::RemoveVariableNodes(Blueprint, VarName, bForSelfOnly, LocalGraphScope);
}

void FBlueprintEditorUtils::RenameMemberVariable(UBlueprint* Blueprint, const FName OldName, const FName NewName)
{
	if (!Blueprint || OldName == NewName || NewName == NAME_None)
	{
		return;
	}
	if (FBPVariableDescription* Variable = FindVariable(Blueprint, OldName))
	{
		Variable->VarName = NewName;
		Variable->FriendlyName = FName::NameToDisplayString(NewName.ToString(), Variable->VarType.PinCategory == UEdGraphSchema_K2::PC_Boolean);
		UE::UnrealEd::Private::RenameVariableReferences(Blueprint, OldName, NewName);
		ValidateBlueprintChildVariables(Blueprint, NewName);
		MarkBlueprintAsStructurallyModified(Blueprint);
		return;
	}
	if (Blueprint->SimpleConstructionScript)
	{
		if (USCS_Node* Node = Blueprint->SimpleConstructionScript->FindSCSNode(OldName))
		{
			Node->SetVariableName(NewName);
			UE::UnrealEd::Private::RenameVariableReferences(Blueprint, OldName, NewName);
			ValidateBlueprintChildVariables(Blueprint, NewName);
			MarkBlueprintAsStructurallyModified(Blueprint);
		}
	}
}

bool FBlueprintEditorUtils::IsVariableUsed(const UBlueprint* Blueprint, const FName& Name, UEdGraph* LocalGraphScope)
{
	return UE::UnrealEd::Private::CountVariableNodes(Blueprint, Name, LocalGraphScope) > 0;
}

int32 FBlueprintEditorUtils::FindNewVariableIndex(const UBlueprint* Blueprint, const FName& InName)
{
	if (Blueprint && InName != NAME_None)
	{
		for (int32 Index = 0; Index < Blueprint->NewVariables.Num(); ++Index)
		{
			if (Blueprint->NewVariables[Index].VarName == InName)
			{
				return Index;
			}
		}
	}
	return INDEX_NONE;
}

FGuid FBlueprintEditorUtils::FindMemberVariableGuidByName(UBlueprint* InBlueprint, const FName InVariableName)
{
	for (const UBlueprint* Walk = InBlueprint; Walk; Walk = UBlueprint::GetBlueprintFromClass(Walk->ParentClass))
	{
		const int32 Index = FindNewVariableIndex(Walk, InVariableName);
		if (Index != INDEX_NONE)
		{
			return Walk->NewVariables[Index].VarGuid;
		}
	}
	return FGuid();
}

FName FBlueprintEditorUtils::FindMemberVariableNameByGuid(UBlueprint* InBlueprint, const FGuid& InVariableGuid)
{
	for (const UBlueprint* Walk = InBlueprint; Walk; Walk = UBlueprint::GetBlueprintFromClass(Walk->ParentClass))
	{
		for (const FBPVariableDescription& Variable : Walk->NewVariables)
		{
			if (Variable.VarGuid == InVariableGuid)
			{
				return Variable.VarName;
			}
		}
	}
	return NAME_None;
}

void FBlueprintEditorUtils::ValidateBlueprintChildVariables(UBlueprint* InBlueprint, const FName InVariableName)
{
	if (!InBlueprint || InVariableName == NAME_None)
	{
		return;
	}
	for (UBlueprint* Child : FindChildBlueprints(InBlueprint))
	{
		// A child member of the same name would hide the new one: the child's is renamed.
		if (FindNewVariableIndex(Child, InVariableName) != INDEX_NONE)
		{
			RenameMemberVariable(Child, InVariableName, FindUniqueKismetName(Child, InVariableName.ToString()));
		}
		else if (Child->SimpleConstructionScript && Child->SimpleConstructionScript->FindSCSNode(InVariableName))
		{
			RenameMemberVariable(Child, InVariableName, FindUniqueKismetName(Child, InVariableName.ToString()));
		}
		else if (FindTimelineTemplateByVariableName(Child, InVariableName))
		{
			RenameTimeline(Child, InVariableName, FindUniqueKismetName(Child, InVariableName.ToString()));
		}
	}
}

void FBlueprintEditorUtils::SetBlueprintOnlyEditableFlag(UBlueprint* Blueprint, const FName& VarName, const bool bNewBlueprintOnly)
{
	SetOrClearFlag(Blueprint, VarName, CPF_DisableEditOnInstance, bNewBlueprintOnly);
}

void FBlueprintEditorUtils::SetBlueprintPropertyReadOnlyFlag(UBlueprint* Blueprint, const FName& VarName, const bool bVariableReadOnly)
{
	SetOrClearFlag(Blueprint, VarName, CPF_BlueprintReadOnly, bVariableReadOnly);
}

void FBlueprintEditorUtils::SetVariableSaveGameFlag(UBlueprint* InBlueprint, const FName& InVarName, const bool bInIsVariableSaveGame)
{
	SetOrClearFlag(InBlueprint, InVarName, CPF_SaveGame, bInIsVariableSaveGame);
}

void FBlueprintEditorUtils::SetVariableTransientFlag(UBlueprint* InBlueprint, const FName& InVarName, const bool bInIsTransient)
{
	SetOrClearFlag(InBlueprint, InVarName, CPF_Transient, bInIsTransient);
}

void FBlueprintEditorUtils::SetVariableAdvancedDisplayFlag(UBlueprint* InBlueprint, const FName& InVarName, const bool bInIsAdvancedDisplay)
{
	SetOrClearFlag(InBlueprint, InVarName, CPF_AdvancedDisplay, bInIsAdvancedDisplay);
}

void FBlueprintEditorUtils::SetBlueprintVariableCategory(UBlueprint* Blueprint, const FName& VarName, const UStruct* InLocalVarScope, const FText& NewCategory, bool bDontRecompile)
{
	if (!Blueprint)
	{
		return;
	}
	FBPVariableDescription* Variable = InLocalVarScope ? UE::UnrealEd::Private::FindLocalVariableInScope(Blueprint, InLocalVarScope, VarName) : FindVariable(Blueprint, VarName);
	if (!Variable)
	{
		return;
	}
	// An empty category means the default one.
	Variable->Category = NewCategory.IsEmpty() ? UEdGraphSchema_K2::VR_DefaultCategory : NewCategory;
	if (!bDontRecompile)
	{
		MarkBlueprintAsStructurallyModified(Blueprint);
	}
}

void FBlueprintEditorUtils::SetBlueprintVariableRepNotifyFunc(UBlueprint* Blueprint, const FName& VarName, const FName& RepNotifyFunc)
{
	if (FBPVariableDescription* Variable = FindVariable(Blueprint, VarName))
	{
		Variable->RepNotifyFunc = RepNotifyFunc;
		MarkBlueprintAsStructurallyModified(Blueprint);
	}
}

void FBlueprintEditorUtils::SetBlueprintVariableMetaData(UBlueprint* Blueprint, const FName& VarName, const UStruct* InLocalVarScope, const FName& MetaDataKey, const FString& MetaDataValue)
{
	if (!Blueprint || MetaDataKey == NAME_None)
	{
		return;
	}
	FBPVariableDescription* Variable = InLocalVarScope ? UE::UnrealEd::Private::FindLocalVariableInScope(Blueprint, InLocalVarScope, VarName) : FindVariable(Blueprint, VarName);
	if (!Variable)
	{
		return;
	}
	Variable->SetMetaData(MetaDataKey, MetaDataValue);
	// The skeleton shows the change at once; the next compile carries it to the generated class.
	if (!InLocalVarScope && Blueprint->SkeletonGeneratedClass)
	{
		if (FProperty* Property = Blueprint->SkeletonGeneratedClass->FindPropertyByName(VarName))
		{
			Property->SetMetaData(MetaDataKey, *MetaDataValue);
		}
	}
	MarkBlueprintAsModified(Blueprint);
}

bool FBlueprintEditorUtils::GetBlueprintVariableMetaData(const UBlueprint* Blueprint, const FName& VarName, const UStruct* InLocalVarScope, const FName& MetaDataKey, FString& OutMetaDataValue)
{
	UBlueprint* Mutable = const_cast<UBlueprint*>(Blueprint);
	const FBPVariableDescription* Variable = InLocalVarScope ? UE::UnrealEd::Private::FindLocalVariableInScope(Mutable, InLocalVarScope, VarName) : FindVariable(Mutable, VarName);
	if (!Variable || !Variable->HasMetaData(MetaDataKey))
	{
		OutMetaDataValue.Empty();
		return false;
	}
	OutMetaDataValue = Variable->GetMetaData(MetaDataKey);
	return true;
}

void FBlueprintEditorUtils::RemoveBlueprintVariableMetaData(UBlueprint* Blueprint, const FName& VarName, const UStruct* InLocalVarScope, const FName& MetaDataKey)
{
	FBPVariableDescription* Variable = InLocalVarScope ? UE::UnrealEd::Private::FindLocalVariableInScope(Blueprint, InLocalVarScope, VarName) : FindVariable(Blueprint, VarName);
	if (!Variable)
	{
		return;
	}
	Variable->RemoveMetaData(MetaDataKey);
	if (!InLocalVarScope && Blueprint->SkeletonGeneratedClass)
	{
		if (FProperty* Property = Blueprint->SkeletonGeneratedClass->FindPropertyByName(VarName))
		{
			Property->RemoveMetaData(MetaDataKey);
		}
	}
	MarkBlueprintAsModified(Blueprint);
}

// Local variables

bool FBlueprintEditorUtils::AddLocalVariable(UBlueprint* Blueprint, UEdGraph* TargetGraph, const FName InNewVarName, const FEdGraphPinType& InNewVarType, const FString& DefaultValue)
{
	if (!Blueprint || !TargetGraph || InNewVarName == NAME_None)
	{
		return false;
	}
	return UE::UnrealEd::Private::AddLocalVariable(Blueprint, *TargetGraph, InNewVarName, InNewVarType, DefaultValue);
}

FBPVariableDescription* FBlueprintEditorUtils::FindLocalVariable(const UBlueprint* InBlueprint, const UEdGraph* InScopeGraph, const FName InVariableName)
{
	return UE::UnrealEd::Private::FindLocalVariableInGraph(InScopeGraph, InVariableName);
}

void FBlueprintEditorUtils::RemoveLocalVariable(UBlueprint* InBlueprint, const UEdGraph* InScopeGraph, const FName InVarName)
{
	if (UE::UnrealEd::Private::RemoveLocalVariable(InScopeGraph, InVarName))
	{
		RemoveVariableNodes(InBlueprint, InVarName, true, const_cast<UEdGraph*>(InScopeGraph));
		MarkBlueprintAsStructurallyModified(InBlueprint);
	}
}

// Timelines

UTimelineTemplate* FBlueprintEditorUtils::AddNewTimeline(UBlueprint* Blueprint, const FName& TimelineVarName)
{
	if (!DoesSupportTimelines(Blueprint) || TimelineVarName == NAME_None || !Blueprint->GeneratedClass)
	{
		return nullptr;
	}
	if (FindTimelineTemplateByVariableName(Blueprint, TimelineVarName))
	{
		return nullptr;
	}
	const FName TemplateName(*UTimelineTemplate::TimelineVariableNameToTemplateName(TimelineVarName));
	if (StaticFindObject(nullptr, Blueprint->GeneratedClass, *TemplateName.ToString()))
	{
		return nullptr;
	}
	UTimelineTemplate* Timeline = NewObject<UTimelineTemplate>(Blueprint->GeneratedClass, TemplateName, RF_Transactional);
	Timeline->TimelineGuid = FGuid::NewGuid();
	Blueprint->Timelines.Add(Timeline);
	ValidateBlueprintChildVariables(Blueprint, TimelineVarName);
	MarkBlueprintAsStructurallyModified(Blueprint);
	return Timeline;
}

void FBlueprintEditorUtils::RemoveTimeline(UBlueprint* Blueprint, UTimelineTemplate* Timeline, bool bDontRecompile)
{
	if (!Blueprint || !Timeline)
	{
		return;
	}
	if (Blueprint->Timelines.Remove(Timeline) == 0)
	{
		return;
	}
	Timeline->Rename(nullptr, GetTransientPackage(), REN_DontCreateRedirectors);
	Timeline->MarkAsGarbage();
	if (!bDontRecompile)
	{
		MarkBlueprintAsStructurallyModified(Blueprint);
	}
}

UTimelineTemplate* FBlueprintEditorUtils::FindTimelineTemplateByVariableName(const UBlueprint* Blueprint, const FName& TimelineName)
{
	if (!Blueprint)
	{
		return nullptr;
	}
	for (UTimelineTemplate* Timeline : Blueprint->Timelines)
	{
		if (Timeline && Timeline->GetVariableName() == TimelineName)
		{
			return Timeline;
		}
	}
	return nullptr;
}

bool FBlueprintEditorUtils::RenameTimeline(UBlueprint* Blueprint, const FName OldNameRef, const FName NewName)
{
	UTimelineTemplate* Timeline = FindTimelineTemplateByVariableName(Blueprint, OldNameRef);
	if (!Timeline || NewName == NAME_None || FindTimelineTemplateByVariableName(Blueprint, NewName))
	{
		return false;
	}
	const FString NewTemplateName = UTimelineTemplate::TimelineVariableNameToTemplateName(NewName);
	if (StaticFindObject(nullptr, Timeline->GetOuter(), *NewTemplateName))
	{
		return false;
	}
	Timeline->Rename(*NewTemplateName, Timeline->GetOuter(), REN_DontCreateRedirectors);
	UE::UnrealEd::Private::RenameTimelineNodes(Blueprint, OldNameRef, NewName);
	MarkBlueprintAsStructurallyModified(Blueprint);
	return true;
}

// Interfaces

bool FBlueprintEditorUtils::ImplementNewInterface(UBlueprint* Blueprint, const FTopLevelAssetPath& InterfaceClassPathName)
{
	if (!Blueprint || !InterfaceClassPathName.IsValid())
	{
		return false;
	}
	UClass* InterfaceClass = FindObject<UClass>(InterfaceClassPathName);
	if (!InterfaceClass || !InterfaceClass->HasAnyClassFlags(CLASS_Interface))
	{
		return false;
	}
	if (InterfaceClass->HasMetaData(FBlueprintMetadata::MD_CannotImplementInterfaceInBlueprint))
	{
		return false;
	}
	for (const FBPInterfaceDescription& Description : Blueprint->ImplementedInterfaces)
	{
		if (Description.Interface.Get() == InterfaceClass)
		{
			return false;
		}
	}
	// A graph of the Blueprint already named like one of the interface's functions would clash.
	TSet<FName> GraphNames;
	GetAllGraphNames(Blueprint, GraphNames);
	for (UClass* Walk = InterfaceClass; Walk && Walk != UInterface::StaticClass(); Walk = Walk->GetSuperClass())
	{
		for (const TPair<FName, UFunction*>& Pair : Walk->GetFunctionMap())
		{
			if (IsInterfaceFunctionToImplementAsGraph(Pair.Value) && GraphNames.Contains(Pair.Key))
			{
				return false;
			}
		}
	}

	FBPInterfaceDescription Description;
	Description.Interface = InterfaceClass;
	for (UClass* Walk = InterfaceClass; Walk && Walk != UInterface::StaticClass(); Walk = Walk->GetSuperClass())
	{
		for (const TPair<FName, UFunction*>& Pair : Walk->GetFunctionMap())
		{
			if (IsInterfaceFunctionToImplementAsGraph(Pair.Value))
			{
				Description.Graphs.Add(MakeInterfaceGraph(Blueprint, InterfaceClass, Pair.Value));
			}
		}
	}
	Blueprint->ImplementedInterfaces.Add(Description);
	MarkBlueprintAsStructurallyModified(Blueprint);
	return true;
}

void FBlueprintEditorUtils::RemoveInterface(UBlueprint* Blueprint, const FTopLevelAssetPath& InterfaceClassPathName, bool bPreserveFunctions)
{
	if (!Blueprint)
	{
		return;
	}
	UClass* InterfaceClass = FindObject<UClass>(InterfaceClassPathName);
	int32 Found = INDEX_NONE;
	for (int32 Index = 0; Index < Blueprint->ImplementedInterfaces.Num(); ++Index)
	{
		const UClass* Implemented = Blueprint->ImplementedInterfaces[Index].Interface;
		if ((InterfaceClass && Implemented == InterfaceClass) || (Implemented && Implemented->GetStructPathName() == InterfaceClassPathName))
		{
			Found = Index;
			break;
		}
	}
	if (Found == INDEX_NONE)
	{
		return;
	}
	const FBPInterfaceDescription Description = Blueprint->ImplementedInterfaces[Found];
	Blueprint->ImplementedInterfaces.RemoveAt(Found);
	for (UEdGraph* Graph : Description.Graphs)
	{
		if (!Graph)
		{
			continue;
		}
		if (bPreserveFunctions)
		{
			// The graph becomes one of the Blueprint's own functions.
			Graph->bAllowDeletion = true;
			Graph->InterfaceGuid.Invalidate();
			Blueprint->FunctionGraphs.AddUnique(Graph);
			UE::UnrealEd::Private::PromoteInterfaceGraphToFunction(Blueprint, *Graph);
		}
		else
		{
			RemoveGraph(Blueprint, Graph, EGraphRemoveFlags::MarkTransient);
		}
	}
	// Events that implemented the interface go with it.
	if (Description.Interface)
	{
		UE::UnrealEd::Private::RemoveInterfaceEvents(Blueprint, Description.Interface, bPreserveFunctions);
	}
	MarkBlueprintAsStructurallyModified(Blueprint);
}

void FBlueprintEditorUtils::ConformImplementedInterfaces(UBlueprint* Blueprint)
{
	if (!Blueprint)
	{
		return;
	}
	bool bChanged = false;
	for (int32 Index = Blueprint->ImplementedInterfaces.Num() - 1; Index >= 0; --Index)
	{
		FBPInterfaceDescription& Description = Blueprint->ImplementedInterfaces[Index];
		UClass* InterfaceClass = Description.Interface;
		if (!InterfaceClass)
		{
			// The interface is gone: so are the graphs that implemented it.
			const TArray<TObjectPtr<UEdGraph>> Graphs = Description.Graphs;
			Blueprint->ImplementedInterfaces.RemoveAt(Index);
			for (UEdGraph* Graph : Graphs)
			{
				RemoveGraph(Blueprint, Graph, EGraphRemoveFlags::MarkTransient);
			}
			bChanged = true;
			continue;
		}
		for (UClass* Walk = InterfaceClass; Walk && Walk != UInterface::StaticClass(); Walk = Walk->GetSuperClass())
		{
			for (const TPair<FName, UFunction*>& Pair : Walk->GetFunctionMap())
			{
				if (!IsInterfaceFunctionToImplementAsGraph(Pair.Value))
				{
					continue;
				}
				bool bHasGraph = false;
				for (const UEdGraph* Graph : Description.Graphs)
				{
					bHasGraph |= Graph && Graph->GetFName() == Pair.Key;
				}
				if (bHasGraph)
				{
					continue;
				}
				// A function graph of that name already written by the user becomes the implementation.
				UEdGraph* Existing = nullptr;
				for (UEdGraph* Graph : Blueprint->FunctionGraphs)
				{
					if (Graph && Graph->GetFName() == Pair.Key)
					{
						Existing = Graph;
						break;
					}
				}
				if (Existing)
				{
					Blueprint->FunctionGraphs.Remove(Existing);
					Existing->bAllowDeletion = false;
					Blueprint->ImplementedInterfaces[Index].Graphs.Add(Existing);
				}
				else
				{
					UEdGraph* Graph = MakeInterfaceGraph(Blueprint, InterfaceClass, Pair.Value);
					Blueprint->ImplementedInterfaces[Index].Graphs.Add(Graph);
				}
				bChanged = true;
			}
		}
	}
	if (bChanged)
	{
		MarkBlueprintAsStructurallyModified(Blueprint);
	}
}

void FBlueprintEditorUtils::FindImplementedInterfaces(const UBlueprint* Blueprint, bool bGetAllInterfaces, TArray<UClass*>& ImplementedInterfaces)
{
	if (!Blueprint)
	{
		return;
	}
	for (const FBPInterfaceDescription& Description : Blueprint->ImplementedInterfaces)
	{
		if (Description.Interface)
		{
			ImplementedInterfaces.AddUnique(Description.Interface);
		}
	}
	if (bGetAllInterfaces)
	{
		for (const UClass* Class = Blueprint->ParentClass; Class; Class = Class->GetSuperClass())
		{
			for (const FImplementedInterface& Interface : Class->Interfaces)
			{
				if (Interface.Class)
				{
					ImplementedInterfaces.AddUnique(Interface.Class);
				}
			}
		}
	}
}
