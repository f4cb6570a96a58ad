#include "KismetCompiler.h"

#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "Engine/SCS_Node.h"
#include "Engine/SimpleConstructionScript.h"
#include "Engine/TimelineTemplate.h"
#include "K2Node.h"
#include "K2Node_CallFunction.h"
#include "K2Node_CustomEvent.h"
#include "K2Node_EditablePinBase.h"
#include "K2Node_Event.h"
#include "K2Node_FunctionEntry.h"
#include "K2Node_FunctionResult.h"
#include "K2Node_Variable.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Kismet2/CompilerResultsLog.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"
#include "UObject/UnrealType.h"
#include "UObject/Script.h"
#include "UObject/UObjectIterator.h"

namespace
{
	/**
	 * Properties and objects of a class's previous layout. A rebuilt class keeps its identity, so nodes,
	 * pins and other Blueprints that point at it stay valid; what it held before is parked here instead of
	 * freed, because objects laid out by it (an old default object) must never be read with the new layout.
	 */
	TArray<FField*>& GetRetiredFields()
	{
		static TArray<FField*> Fields;
		return Fields;
	}

	const FString DelegateSignatureSuffix(TEXT("__DelegateSignature"));

	FString Fmt(const TCHAR* Format, const FString& A)
	{
		FString Result(Format);
		Result.ReplaceInline(TEXT("{0}"), *A);
		return Result;
	}

	FString Fmt(const TCHAR* Format, const FString& A, const FString& B)
	{
		FString Result = Fmt(Format, A);
		Result.ReplaceInline(TEXT("{1}"), *B);
		return Result;
	}

	template <typename NodeType>
	NodeType* FindFirstNode(const UEdGraph* Graph)
	{
		if (Graph)
		{
			for (UEdGraphNode* Node : Graph->Nodes)
			{
				if (NodeType* Typed = Cast<NodeType>(Node))
				{
					return Typed;
				}
			}
		}
		return nullptr;
	}

	bool IsParameterPin(const UEdGraphPin* Pin)
	{
		return Pin && !Pin->bOrphanedPin && Pin->PinType.PinCategory != UEdGraphSchema_K2::PC_Exec && !Pin->ParentPin;
	}

	/** Objects laid out by the class that is about to change: hidden from lookups and kept, never freed. */
	void RetireObject(UObject* Object)
	{
		if (Object && !Object->IsRooted())
		{
			Object->AddToRoot();
		}
	}
}

struct FKismetCompilerContext::FFunctionToBuild
{
	FName Name;
	/** The node that defines the function (entry or event), for messages. */
	const UEdGraphNode* SourceNode = nullptr;
	EFunctionFlags Flags = FUNC_None;
	UFunction* OverriddenFunction = nullptr;
	bool bIsDelegateSignature = false;
	struct FParam
	{
		FName Name;
		FEdGraphPinType Type;
		EPropertyFlags Flags = CPF_None;
		FString DefaultValue;
	};
	TArray<FParam> Params;
	TArray<FBPVariableDescription> Locals;
	TMap<FName, FString> MetaData;
};

FKismetCompilerContext::FKismetCompilerContext(UBlueprint* SourceSketch, FCompilerResultsLog& InMessageLog, const FKismetCompilerOptions& InCompilerOptions)
	: Blueprint(SourceSketch)
	, MessageLog(InMessageLog)
	, CompileOptions(InCompilerOptions)
	, Schema(GetDefault<UEdGraphSchema_K2>())
{
}

FKismetCompilerContext::~FKismetCompilerContext() = default;

namespace
{
	struct FRegisteredCompilerContext
	{
		UClass* BlueprintClass = nullptr;
		FKismetCompilerContext::CompilerContextFactoryFunction Factory;
	};

	TArray<FRegisteredCompilerContext>& GetRegisteredCompilerContexts()
	{
		static TArray<FRegisteredCompilerContext> Contexts;
		return Contexts;
	}
}

void FKismetCompilerContext::RegisterCompilerForBP(UClass* BPClass, CompilerContextFactoryFunction FactoryFunction)
{
	if (!BPClass || !FactoryFunction)
	{
		return;
	}
	for (FRegisteredCompilerContext& Registered : GetRegisteredCompilerContexts())
	{
		if (Registered.BlueprintClass == BPClass)
		{
			Registered.Factory = MoveTemp(FactoryFunction);
			return;
		}
	}
	GetRegisteredCompilerContexts().Add({BPClass, MoveTemp(FactoryFunction)});
}

TSharedPtr<FKismetCompilerContext> FKismetCompilerContext::GetCompilerForBP(UBlueprint* BP, FCompilerResultsLog& InMessageLog, const FKismetCompilerOptions& InCompileOptions)
{
	// The Blueprint's own class first, then its super classes, so a kind's subclasses share its context.
	for (const UClass* Class = BP ? BP->GetClass() : nullptr; Class; Class = Class->GetSuperClass())
	{
		for (const FRegisteredCompilerContext& Registered : GetRegisteredCompilerContexts())
		{
			if (Registered.BlueprintClass == Class)
			{
				if (TSharedPtr<FKismetCompilerContext> Context = Registered.Factory(BP, InMessageLog, InCompileOptions))
				{
					return Context;
				}
			}
		}
	}
	return MakeShared<FKismetCompilerContext>(BP, InMessageLog, InCompileOptions);
}

void FKismetCompilerContext::Compile()
{
	if (!Blueprint)
	{
		return;
	}
	const bool bFullCompile = CompileOptions.CompileType != EKismetCompileType::SkeletonOnly;
	const int32 ErrorsBefore = MessageLog.NumErrors;
	const int32 WarningsBefore = MessageLog.NumWarnings;
	if (bFullCompile)
	{
		MessageLog.SetSourcePath(Blueprint->GetPathName());
		// Marks from the previous compile are cleared so each node shows only what this one found.
		TArray<UEdGraph*> Graphs;
		Blueprint->GetAllGraphs(Graphs);
		for (UEdGraph* Graph : Graphs)
		{
			for (UEdGraphNode* Node : Graph ? Graph->Nodes : TArray<TObjectPtr<UEdGraphNode>>())
			{
				if (Node)
				{
					Node->bHasCompilerMessage = false;
					Node->ErrorMsg.Empty();
					Node->ErrorType = EMessageSeverity::Info + 1;
				}
			}
		}
	}

	if (!Blueprint->ParentClass)
	{
		MessageLog.Error(TEXT("Blueprint @@ has a malformed parent class. Parent class may have been deleted."), Blueprint);
	}
	else
	{
		bBuildingSkeleton = true;
		BuildClass(FindOrMakeClass(true), true);
		bBuildingSkeleton = false;
		if (bFullCompile)
		{
			ReconstructAllNodes();
			BuildClass(FindOrMakeClass(false), false);
			SetDefaultsOnClassObject();
			ValidateGraphs();
		}
	}

	if (bFullCompile)
	{
		const int32 NewErrors = MessageLog.NumErrors - ErrorsBefore;
		const int32 NewWarnings = MessageLog.NumWarnings - WarningsBefore;
		Blueprint->Status = NewErrors > 0 ? BS_Error : (NewWarnings > 0 ? BS_UpToDateWithWarnings : BS_UpToDate);
		Blueprint->bIsNewlyCreated = false;

		// Blueprints deriving from this one depend on its layout: they are compiled again.
		if (UClass* Generated = Blueprint->GeneratedClass)
		{
			TArray<UBlueprint*> Children;
			for (TObjectIterator<UBlueprint> It; It; ++It)
			{
				if (*It != Blueprint && It->ParentClass.Get() == Generated)
				{
					Children.Add(*It);
				}
			}
			for (UBlueprint* Child : Children)
			{
				FCompilerResultsLog ChildLog;
				ChildLog.bAnnotateMentionedNodes = true;
				FKismetCompilerContext ChildCompiler(Child, ChildLog, CompileOptions);
				ChildCompiler.Compile();
			}
		}
	}
	else if (Blueprint->Status != BS_BeingCreated && Blueprint->Status != BS_Error)
	{
		Blueprint->Status = BS_Dirty;
	}
}

UBlueprintGeneratedClass* FKismetCompilerContext::FindOrMakeClass(bool bSkeleton)
{
	UClass* Existing = bSkeleton ? Blueprint->SkeletonGeneratedClass.Get() : Blueprint->GeneratedClass.Get();
	if (UBlueprintGeneratedClass* AsGenerated = Cast<UBlueprintGeneratedClass>(Existing))
	{
		return AsGenerated;
	}
	const FString BaseName = Blueprint->GetName() + TEXT("_C");
	const FString Name = bSkeleton ? TEXT("SKEL_") + BaseName : BaseName;
	UPackage* Package = Blueprint->GetOutermost();
	UBlueprintGeneratedClass* Class = FindObject<UBlueprintGeneratedClass>(Package, *Name);
	if (!Class)
	{
		UClass* Kind = UBlueprintGeneratedClass::StaticClass();
		if (!bSkeleton && Existing)
		{
			Kind = Existing->GetClass();
		}
		Class = NewObject<UBlueprintGeneratedClass>(Package, Kind, FName(*Name), RF_Public | RF_Transactional);
	}
	// A class must know its parent before a TSubclassOf will hold it.
	if (Blueprint->ParentClass && Class->GetSuperClass() != Blueprint->ParentClass.Get())
	{
		Class->SetSuperStruct(Blueprint->ParentClass);
	}
	if (bSkeleton)
	{
		Blueprint->SkeletonGeneratedClass = Class;
	}
	else
	{
		Blueprint->GeneratedClass = Class;
	}
	return Class;
}

void FKismetCompilerContext::CleanAndSanitizeClass(UBlueprintGeneratedClass* ClassToClean)
{
	// Objects laid out by the old layout (the default object, instances, and those of derived classes).
	TArray<UObject*> Instances;
	GetObjectsOfClass(ClassToClean, Instances, true);
	for (UObject* Instance : Instances)
	{
		if (!Instance->HasAnyFlags(RF_ClassDefaultObject))
		{
			Instance->MarkAsGarbage();
			RetireObject(Instance);
		}
	}
	TArray<UClass*> Derived;
	GetDerivedClasses(ClassToClean, Derived, true);
	Derived.Add(ClassToClean);
	for (UClass* Class : Derived)
	{
		if (UObject* CDO = Class->GetDefaultObject(false))
		{
			Class->PurgeClassDefaultObject();
			RetireObject(CDO);
		}
	}

	if (ClassToClean->ChildProperties)
	{
		GetRetiredFields().Add(ClassToClean->ChildProperties);
		ClassToClean->ChildProperties = nullptr;
	}
	OldFunctions.Reset();
	for (UField* Field = ClassToClean->Children; Field;)
	{
		UField* Next = Field->Next;
		if (UFunction* Function = Cast<UFunction>(Field))
		{
			OldFunctions.Add(Function->GetFName(), Function);
		}
		Field->Next = nullptr;
		Field = Next;
	}
	ClassToClean->Children = nullptr;
	TArray<UFunction*> Mapped;
	for (const TPair<FName, UFunction*>& Pair : ClassToClean->GetFunctionMap())
	{
		Mapped.Add(Pair.Value);
		OldFunctions.Add(Pair.Key, Pair.Value);
	}
	for (UFunction* Function : Mapped)
	{
		ClassToClean->RemoveFunctionFromFunctionMap(Function);
	}
	ClassToClean->Interfaces.Reset();
}

FProperty* FKismetCompilerContext::CreateVariable(const FName VarName, const FEdGraphPinType& VarType)
{
	if (Blueprint->BlueprintType == BPTYPE_FunctionLibrary)
	{
		MessageLog.Error(*Fmt(TEXT("The variable {0} cannot be declared in FunctionLibrary @@"), VarName.ToString()), Blueprint);
	}
	FProperty* Property = nullptr;
	if (VarType.PinCategory == UEdGraphSchema_K2::PC_MCDelegate && !VarType.IsContainer())
	{
		// An event dispatcher's signature is the function this compile made from its graph.
		UFunction* Signature = nullptr;
		for (UField* Field = NewClass->Children; Field; Field = Field->Next)
		{
			if (Field->GetFName() == FName(*(VarName.ToString() + DelegateSignatureSuffix)))
			{
				Signature = Cast<UFunction>(Field);
			}
		}
		if (Signature)
		{
			FMulticastInlineDelegateProperty* Delegate = new FMulticastInlineDelegateProperty(NewClass, VarName, RF_Public | RF_Transient);
			Delegate->SignatureFunction = Signature;
			Property = Delegate;
		}
	}
	if (!Property)
	{
		Property = UEdGraphSchema_K2::CreatePropertyForPinType(NewClass, VarName, VarType, CPF_None);
	}
	if (!Property)
	{
		MessageLog.Error(*Fmt(TEXT("The variable {0} declared in @@ has an invalid type {1}"), VarName.ToString(), UEdGraphSchema_K2::TypeToText(VarType).ToString()), Blueprint);
	}
	return Property;
}

void FKismetCompilerContext::CreateClassVariablesFromBlueprint(TArray<FProperty*>& OutProperties)
{
	NewClass->NumReplicatedProperties = 0;
	TSet<FName> Seen;
	for (FBPVariableDescription& Variable : Blueprint->NewVariables)
	{
		if (Seen.Contains(Variable.VarName))
		{
			MessageLog.Error(*Fmt(TEXT("Found more than one member variable named {0} in @@"), Variable.VarName.ToString()), Blueprint);
			continue;
		}
		Seen.Add(Variable.VarName);
		FProperty* Property = CreateVariable(Variable.VarName, Variable.VarType);
		if (!Property)
		{
			continue;
		}
		Property->SetPropertyFlags((EPropertyFlags)Variable.PropertyFlags);
		Property->SetMetaData(TEXT("DisplayName"), *Variable.FriendlyName);
		Property->SetMetaData(TEXT("Category"), *Variable.Category.ToString());
		Property->RepNotifyFunc = Variable.RepNotifyFunc;
		if (Property->HasAnyPropertyFlags(CPF_Net))
		{
			NewClass->NumReplicatedProperties++;
		}
		for (const FBPVariableMetaDataEntry& Entry : Variable.MetaDataArray)
		{
			Property->SetMetaData(Entry.DataKey, *Entry.DataValue);
			if (Entry.DataKey == FBlueprintMetadata::MD_ExposeOnSpawn)
			{
				Property->SetPropertyFlags(CPF_ExposeOnSpawn);
				if (Property->HasAnyPropertyFlags(CPF_DisableEditOnInstance) && bBuildingSkeleton)
				{
					MessageLog.Warning(*Fmt(TEXT("Variable {0} is marked as 'Expose on Spawn' but not marked as 'Instance Editable'; please make it 'Instance Editable'"), Property->GetName()));
				}
			}
		}
		OutProperties.Add(Property);
	}

	for (UTimelineTemplate* Timeline : Blueprint->Timelines)
	{
		if (!Timeline)
		{
			continue;
		}
		if (UClass* TimelineComponent = FindObject<UClass>(FTopLevelAssetPath(TEXT("/Script/Engine.TimelineComponent"))))
		{
			FEdGraphPinType Type;
			Type.PinCategory = UEdGraphSchema_K2::PC_Object;
			Type.PinSubCategoryObject = TimelineComponent;
			if (FProperty* Property = CreateVariable(Timeline->GetVariableName(), Type))
			{
				Property->SetMetaData(TEXT("Category"), *Blueprint->GetName());
				Property->SetPropertyFlags(CPF_BlueprintVisible);
				OutProperties.Add(Property);
			}
		}
		FEdGraphPinType DirectionType;
		DirectionType.PinCategory = UEdGraphSchema_K2::PC_Byte;
		DirectionType.PinSubCategoryObject = FindObject<UEnum>(FTopLevelAssetPath(TEXT("/Script/Engine.ETimelineDirection")));
		if (FProperty* Direction = CreateVariable(Timeline->GetDirectionPropertyName(), DirectionType))
		{
			OutProperties.Add(Direction);
		}
	}

	if (Blueprint->SimpleConstructionScript)
	{
		for (USCS_Node* Node : Blueprint->SimpleConstructionScript->GetAllNodes())
		{
			if (!Node || Node->GetVariableName() == NAME_None || !Node->ComponentClass)
			{
				continue;
			}
			FEdGraphPinType Type;
			Type.PinCategory = UEdGraphSchema_K2::PC_Object;
			Type.PinSubCategoryObject = Node->ComponentClass.Get();
			if (FProperty* Property = CreateVariable(Node->GetVariableName(), Type))
			{
				Property->SetMetaData(TEXT("Category"), *Blueprint->GetName());
				Property->SetPropertyFlags(CPF_BlueprintVisible | CPF_NonTransactional);
				OutProperties.Add(Property);
			}
		}
	}
}

void FKismetCompilerContext::AddParametersFromPins(FFunctionToBuild& Description, const UEdGraphNode* Node, EEdGraphPinDirection Direction, bool bResults) const
{
	if (!Node)
	{
		return;
	}
	const UK2Node_EditablePinBase* Editable = Cast<UK2Node_EditablePinBase>(Node);
	for (const UEdGraphPin* Pin : Node->Pins)
	{
		if (!IsParameterPin(Pin) || Pin->Direction != Direction)
		{
			continue;
		}
		// An event's own delegate output is not a parameter.
		if (Pin->PinType.PinCategory == UEdGraphSchema_K2::PC_Delegate && Pin->PinName == FName(TEXT("OutputDelegate")))
		{
			continue;
		}
		FFunctionToBuild::FParam Param;
		Param.Name = Pin->PinName;
		Param.Type = Pin->PinType;
		if (bResults)
		{
			Param.Flags = CPF_Parm | CPF_OutParm;
		}
		else
		{
			Param.Flags = CPF_Parm | CPF_BlueprintVisible | CPF_BlueprintReadOnly;
			if (Pin->PinType.bIsReference || Pin->PinType.IsArray())
			{
				Param.Flags |= CPF_OutParm | CPF_ReferenceParm;
			}
			if (Editable)
			{
				for (const TSharedPtr<FUserPinInfo>& Info : Editable->UserDefinedPins)
				{
					if (Info.IsValid() && Info->PinName == Pin->PinName)
					{
						Param.DefaultValue = Info->PinDefaultValue;
					}
				}
			}
		}
		if (Pin->PinType.bIsConst)
		{
			Param.Flags |= CPF_ConstParm;
		}
		Description.Params.Add(Param);
	}
}

void FKismetCompilerContext::GatherFunctions(TArray<FFunctionToBuild>& OutFunctions)
{
	auto FindInherited = [this](FName Name) -> UFunction*
	{
		if (UFunction* Found = Blueprint->ParentClass ? Blueprint->ParentClass->FindFunctionByName(Name) : nullptr)
		{
			return Found;
		}
		for (const FBPInterfaceDescription& Description : Blueprint->ImplementedInterfaces)
		{
			if (Description.Interface)
			{
				if (UFunction* Found = Description.Interface->FindFunctionByName(Name))
				{
					return Found;
				}
			}
		}
		return nullptr;
	};

	// Event dispatcher signatures first: the dispatcher variables refer to them.
	for (UEdGraph* Graph : Blueprint->DelegateSignatureGraphs)
	{
		if (!Graph)
		{
			continue;
		}
		FFunctionToBuild Description;
		Description.Name = FName(*(Graph->GetName() + DelegateSignatureSuffix));
		Description.bIsDelegateSignature = true;
		Description.Flags = FUNC_Public | FUNC_Delegate | FUNC_MulticastDelegate;
		const UK2Node_FunctionEntry* Entry = FindFirstNode<UK2Node_FunctionEntry>(Graph);
		Description.SourceNode = Entry;
		AddParametersFromPins(Description, Entry, EGPD_Output, false);
		OutFunctions.Add(MoveTemp(Description));
	}

	TArray<UEdGraph*> FunctionGraphs;
	for (UEdGraph* Graph : Blueprint->FunctionGraphs)
	{
		FunctionGraphs.Add(Graph);
	}
	for (const FBPInterfaceDescription& Interface : Blueprint->ImplementedInterfaces)
	{
		for (UEdGraph* Graph : Interface.Graphs)
		{
			FunctionGraphs.Add(Graph);
		}
	}
	for (UEdGraph* Graph : FunctionGraphs)
	{
		const UK2Node_FunctionEntry* Entry = FindFirstNode<UK2Node_FunctionEntry>(Graph);
		if (!Entry)
		{
			continue;
		}
		FFunctionToBuild Description;
		Description.Name = Graph->GetFName();
		Description.SourceNode = Entry;
		Description.Flags = EFunctionFlags(Entry->GetFunctionFlags());
		Description.OverriddenFunction = FindInherited(Description.Name);
		AddParametersFromPins(Description, Entry, EGPD_Output, false);
		AddParametersFromPins(Description, FindFirstNode<UK2Node_FunctionResult>(Graph), EGPD_Input, true);
		Description.Locals = Entry->LocalVariables;
		const FKismetUserDeclaredFunctionMetadata& Meta = Entry->MetaData;
		if (!Meta.ToolTip.IsEmpty()) { Description.MetaData.Add(TEXT("ToolTip"), Meta.ToolTip.ToString()); }
		if (!Meta.Category.IsEmpty()) { Description.MetaData.Add(TEXT("Category"), Meta.Category.ToString()); }
		if (!Meta.Keywords.IsEmpty()) { Description.MetaData.Add(TEXT("Keywords"), Meta.Keywords.ToString()); }
		if (!Meta.CompactNodeTitle.IsEmpty()) { Description.MetaData.Add(TEXT("CompactNodeTitle"), Meta.CompactNodeTitle.ToString()); }
		if (Meta.bCallInEditor) { Description.MetaData.Add(TEXT("CallInEditor"), TEXT("true")); }
		if (Meta.bIsDeprecated)
		{
			Description.MetaData.Add(TEXT("DeprecatedFunction"), TEXT("true"));
			Description.MetaData.Add(TEXT("DeprecationMessage"), Meta.DeprecationMessage);
		}
		for (const TPair<FName, FString>& Pair : Meta.GetMetaDataMap())
		{
			Description.MetaData.Add(Pair.Key, Pair.Value);
		}
		OutFunctions.Add(MoveTemp(Description));
	}

	// Events: custom ones declare functions; overrides implement the parent's.
	for (UEdGraph* Graph : Blueprint->UbergraphPages)
	{
		TArray<UK2Node_Event*> Events;
		if (Graph)
		{
			Graph->GetNodesOfClass(Events);
		}
		for (const UK2Node_Event* Event : Events)
		{
			if (CanIgnoreNode(Event))
			{
				continue;
			}
			FFunctionToBuild Description;
			Description.SourceNode = Event;
			if (const UK2Node_CustomEvent* Custom = Cast<UK2Node_CustomEvent>(Event))
			{
				Description.Name = Custom->CustomFunctionName;
				Description.Flags = EFunctionFlags(FUNC_BlueprintCallable | FUNC_BlueprintEvent | FUNC_Event | FUNC_Public | Custom->FunctionFlags);
			}
			else if (Event->bOverrideFunction)
			{
				Description.Name = Event->EventReference.GetMemberName();
				Description.OverriddenFunction = FindInherited(Description.Name);
				Description.Flags = EFunctionFlags(FUNC_Event | FUNC_BlueprintEvent);
			}
			else
			{
				continue;
			}
			if (Description.Name == NAME_None)
			{
				continue;
			}
			AddParametersFromPins(Description, Event, EGPD_Output, false);
			OutFunctions.Add(MoveTemp(Description));
		}
	}
}

UFunction* FKismetCompilerContext::BuildFunction(const FFunctionToBuild& Description)
{
	// The class's function of that name is reused when it is of the right kind (a loaded class holds its
	// functions without their parameters); anything else of that name gives way.
	UClass* Kind = Description.bIsDelegateSignature ? UDelegateFunction::StaticClass() : UFunction::StaticClass();
	UFunction* Function = nullptr;
	if (UObject* Existing = StaticFindObject(nullptr, NewClass, *Description.Name.ToString(), true))
	{
		if (Existing->GetClass() == Kind)
		{
			Function = static_cast<UFunction*>(Existing);
			if (Function->ChildProperties)
			{
				GetRetiredFields().Add(Function->ChildProperties);
				Function->ChildProperties = nullptr;
			}
			Function->SetSuperStruct(nullptr);
			Function->Next = nullptr;
		}
		else
		{
			Existing->Rename(nullptr, GetTransientPackage(), REN_DontCreateRedirectors);
			Existing->MarkAsGarbage();
		}
	}
	OldFunctions.Remove(Description.Name);
	if (!Function)
	{
		Function = NewObject<UFunction>(NewClass, Kind, Description.Name, RF_Public | RF_Transient);
	}

	EFunctionFlags Flags = Description.Flags;
	if (Description.OverriddenFunction && !Description.bIsDelegateSignature)
	{
		Function->SetSuperStruct(Description.OverriddenFunction);
		Flags |= EFunctionFlags(Description.OverriddenFunction->FunctionFlags & FUNC_FuncInherit);
	}
	if (!(Flags & FUNC_AccessSpecifiers))
	{
		Flags |= FUNC_Public;
	}
	bool bHasOutParms = false;
	for (const FFunctionToBuild::FParam& Param : Description.Params)
	{
		bHasOutParms |= (Param.Flags & CPF_OutParm) != 0;
	}
	if (bHasOutParms)
	{
		Flags |= FUNC_HasOutParms;
	}
	Function->FunctionFlags = Flags;

	// Parameters then locals, in order; AddCppProperty puts each in front, so they go in backwards.
	TArray<FProperty*> Properties;
	for (const FFunctionToBuild::FParam& Param : Description.Params)
	{
		FProperty* Property = UEdGraphSchema_K2::CreatePropertyForPinType(Function, Param.Name, Param.Type, CPF_None);
		if (!Property)
		{
			MessageLog.Error(*Fmt(TEXT("Failed to create property {0} from @@ due to a bad or unknown type ({1})"), Param.Name.ToString(), UEdGraphSchema_K2::TypeToText(Param.Type).ToString()), Description.SourceNode);
			continue;
		}
		Property->SetPropertyFlags(Param.Flags);
		if (!Param.DefaultValue.IsEmpty())
		{
			Function->SetMetaData(Param.Name, *Param.DefaultValue);
		}
		Properties.Add(Property);
	}
	for (const FBPVariableDescription& Local : Description.Locals)
	{
		FProperty* Property = UEdGraphSchema_K2::CreatePropertyForPinType(Function, Local.VarName, Local.VarType, CPF_None);
		if (!Property)
		{
			MessageLog.Error(*Fmt(TEXT("Failed to create property {0} from @@ due to a bad or unknown type ({1})"), Local.VarName.ToString(), UEdGraphSchema_K2::TypeToText(Local.VarType).ToString()), Description.SourceNode);
			continue;
		}
		Property->SetPropertyFlags((EPropertyFlags)Local.PropertyFlags);
		Properties.Add(Property);
	}
	for (int32 Index = Properties.Num() - 1; Index >= 0; --Index)
	{
		Function->AddCppProperty(Properties[Index]);
	}
	for (const TPair<FName, FString>& Pair : Description.MetaData)
	{
		Function->SetMetaData(Pair.Key, *Pair.Value);
	}
	Function->Bind();
	Function->StaticLink(true);
	return Function;
}

void FKismetCompilerContext::BuildClass(UBlueprintGeneratedClass* Class, bool bSkeleton)
{
	NewClass = Class;
	CleanAndSanitizeClass(Class);

	UClass* ParentClass = Blueprint->ParentClass;
	Class->SetSuperStruct(ParentClass);
	EClassFlags Flags = EClassFlags((ParentClass->ClassFlags & CLASS_ScriptInherit) | CLASS_CompiledFromBlueprint);
	if (Blueprint->BlueprintType == BPTYPE_Interface)
	{
		Flags |= CLASS_Interface | CLASS_Abstract;
	}
	if (Blueprint->bGenerateConstClass || Blueprint->BlueprintType == BPTYPE_Const)
	{
		Flags |= CLASS_Const;
	}
	if (Blueprint->bGenerateAbstractClass)
	{
		Flags |= CLASS_Abstract;
	}
	Class->ClassFlags = Flags;
	Class->ClassCastFlags = ParentClass->ClassCastFlags;
	Class->ClassWithin = ParentClass->ClassWithin;
	Class->ClassConfigName = ParentClass->ClassConfigName;
	((UClass*)Class)->ClassGeneratedBy = Blueprint;
	Class->ClassGeneratedBy = Blueprint;
	Class->SimpleConstructionScript = Blueprint->SimpleConstructionScript;
	Class->Timelines.Reset();
	for (UTimelineTemplate* Timeline : Blueprint->Timelines)
	{
		Class->Timelines.Add(Timeline);
	}
	for (const FBPInterfaceDescription& Interface : Blueprint->ImplementedInterfaces)
	{
		if (Interface.Interface)
		{
			Class->Interfaces.Add(FImplementedInterface(Interface.Interface, 0, true));
		}
	}

	TArray<FFunctionToBuild> Functions;
	GatherFunctions(Functions);

	// Dispatcher signatures exist before the variables that use them.
	TArray<UFunction*> Built;
	TSet<FName> FunctionNames;
	for (const FFunctionToBuild& Description : Functions)
	{
		if (!Description.bIsDelegateSignature)
		{
			continue;
		}
		UFunction* Function = BuildFunction(Description);
		Function->Next = Class->Children;
		Class->Children = Function;
		Class->AddFunctionToFunctionMap(Function, Function->GetFName());
		Built.Add(Function);
	}

	TArray<FProperty*> Properties;
	CreateClassVariablesFromBlueprint(Properties);
	for (int32 Index = Properties.Num() - 1; Index >= 0; --Index)
	{
		Class->AddCppProperty(Properties[Index]);
	}

	for (const FFunctionToBuild& Description : Functions)
	{
		if (Description.bIsDelegateSignature)
		{
			continue;
		}
		if (FunctionNames.Contains(Description.Name))
		{
			MessageLog.Error(*Fmt(TEXT("Found more than one function with the same name {0}; second occurrence at @@"), Description.Name.ToString()), Description.SourceNode);
			continue;
		}
		FunctionNames.Add(Description.Name);
		UFunction* Function = BuildFunction(Description);
		Function->Next = Class->Children;
		Class->Children = Function;
		Class->AddFunctionToFunctionMap(Function, Function->GetFName());
		Built.Add(Function);
	}

	// Functions that no longer exist leave the class.
	for (const TPair<FName, UFunction*>& Pair : OldFunctions)
	{
		if (Pair.Value && !Built.Contains(Pair.Value))
		{
			Pair.Value->Rename(nullptr, GetTransientPackage(), REN_DontCreateRedirectors);
			Pair.Value->MarkAsGarbage();
		}
	}
	OldFunctions.Reset();

	Class->Bind();
	Class->StaticLink(true);
	RelinkDerivedClasses(Class);
}

void FKismetCompilerContext::ReconstructAllNodes()
{
	// Nodes are rebuilt against the fresh skeleton, as the editor does before it compiles, so that nodes
	// placed before a member existed (or after it changed) show its current pins.
	TArray<UEdGraph*> Graphs;
	Blueprint->GetAllGraphs(Graphs);
	for (UEdGraph* Graph : Graphs)
	{
		if (!Graph)
		{
			continue;
		}
		const TArray<TObjectPtr<UEdGraphNode>> Nodes = Graph->Nodes;
		for (UEdGraphNode* Node : Nodes)
		{
			if (Cast<UK2Node>(Node))
			{
				Node->ReconstructNode();
			}
		}
	}
}

void FKismetCompilerContext::RelinkDerivedClasses(UClass* Class)
{
	// Direct children first, so that each class links after its parent.
	TArray<UClass*> Derived;
	GetDerivedClasses(Class, Derived, false);
	for (UClass* Child : Derived)
	{
		Child->StaticLink(true);
		RelinkDerivedClasses(Child);
	}
}

void FKismetCompilerContext::SetDefaultsOnClassObject()
{
	UClass* Class = Blueprint->GeneratedClass;
	UObject* DefaultObject = Class ? Class->GetDefaultObject(true) : nullptr;
	if (!DefaultObject)
	{
		return;
	}
	// The defaults are kept in the variables' descriptions and set again by every compile, so the
	// default object is not written to the package (its layout only exists once the class is compiled).
	DefaultObject->SetFlags(RF_Transient);
	for (const FBPVariableDescription& Variable : Blueprint->NewVariables)
	{
		if (Variable.DefaultValue.IsEmpty())
		{
			continue;
		}
		FProperty* Property = Class->FindPropertyByName(Variable.VarName);
		if (!Property || Property->GetOwnerClass() != Class)
		{
			continue;
		}
		if (!Property->ImportText_InContainer(*Variable.DefaultValue, DefaultObject, DefaultObject, PPF_None))
		{
			MessageLog.Warning(*Fmt(TEXT("Can't parse default value '{0}' for @@. Property: {1}."), Variable.DefaultValue, Property->GetName()), Blueprint);
		}
	}
}

bool FKismetCompilerContext::CanIgnoreNode(const UEdGraphNode* Node) const
{
	return !Node || !Node->IsNodeEnabled();
}

void FKismetCompilerContext::ValidateLink(const UEdGraphPin* PinA, const UEdGraphPin* PinB) const
{
	const bool bDirectionsValid = (PinA->Direction == EGPD_Input && PinB->Direction == EGPD_Output) || (PinA->Direction == EGPD_Output && PinB->Direction == EGPD_Input);
	if (!bDirectionsValid)
	{
		MessageLog.Error(TEXT("Direction mismatch between pins @@ and @@"), PinA, PinB);
	}
	if (PinA->GetOwningNodeUnchecked() == PinB->GetOwningNodeUnchecked())
	{
		MessageLog.Error(TEXT("Pins @@ and @@ on the same node @@ are connected to each other, creating a loop."), PinA, PinB, PinA->GetOwningNodeUnchecked());
	}
	// Orphaned pins are reported by their node; judging their links as well would only repeat it.
	if (!PinA->bOrphanedPin && !PinB->bOrphanedPin)
	{
		const FPinConnectionResponse Response = Schema->CanCreateConnection(PinA, PinB);
		if (Response.Response == CONNECT_RESPONSE_DISALLOW || Response.Response == CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE)
		{
			MessageLog.Error(*Fmt(TEXT("Can't connect pins @@ and @@: {0}"), Response.Message.ToString()), PinA, PinB);
		}
	}
	if (PinA->Direction != PinB->Direction)
	{
		const UEdGraphPin* Input = PinA->Direction == EGPD_Input ? PinA : PinB;
		const UEdGraphPin* Output = PinA->Direction == EGPD_Output ? PinA : PinB;
		if (Output->PinType.PinCategory == UEdGraphSchema_K2::PC_Interface && Input->PinType.PinCategory == UEdGraphSchema_K2::PC_Object)
		{
			MessageLog.Error(TEXT("Can't connect pins @@ (Interface) and @@ (Object). Use an explicit cast node."), Output, Input);
		}
	}
}

void FKismetCompilerContext::ValidatePin(const UEdGraphPin* Pin) const
{
	const UEdGraphNode* Owner = Pin ? Pin->GetOwningNodeUnchecked() : nullptr;
	if (!Owner)
	{
		MessageLog.Error(TEXT("Blueprint is corrupted! A pin has no node."));
		return;
	}
	const int32 ErrorsBefore = MessageLog.NumErrors;
	// Each link is judged once, from its output end, so messages name the source pin first.
	for (const UEdGraphPin* Other : Pin->LinkedTo)
	{
		if (!Other)
		{
			MessageLog.Error(TEXT("Null or missing pin linked to @@"), Pin);
			continue;
		}
		if (ErrorsBefore != MessageLog.NumErrors)
		{
			break;
		}
		if (Pin->Direction == EGPD_Output || Other->Direction == Pin->Direction)
		{
			ValidateLink(Pin, Other);
		}
	}

	if (Pin->LinkedTo.Num() > 1)
	{
		if (Pin->Direction == EGPD_Output && UEdGraphSchema_K2::IsExecPin(*Pin))
		{
			MessageLog.Error(TEXT("Exec output pin @@ cannot have more than one connection"), Pin);
		}
		else if (Pin->Direction == EGPD_Input && !UEdGraphSchema_K2::IsExecPin(*Pin) && !Schema->IsSelfPin(*Pin))
		{
			MessageLog.Error(TEXT("Input pin @@ cannot have more than one connection"), Pin);
		}
	}

	if (Pin->Direction == EGPD_Input && Pin->LinkedTo.Num() == 0 && UEdGraphSchema_K2::IsExecPin(*Pin))
	{
		if (Cast<UK2Node_FunctionResult>(Owner) && Owner->Pins.Num() > 1)
		{
			MessageLog.Warning(TEXT("ReturnNode Exec pin has no connections on @@"), Pin);
		}
	}

	// A value typed into an unconnected input must suit the pin.
	if (Pin->Direction == EGPD_Input && Pin->LinkedTo.Num() == 0 && !Pin->bOrphanedPin && !Pin->bDefaultValueIsIgnored && !Pin->bHidden
		&& !UEdGraphSchema_K2::IsExecPin(*Pin) && !Pin->ParentPin && Pin->SubPins.Num() == 0 && !Schema->IsSelfPin(*Pin))
	{
		const FString Problem = Schema->IsPinDefaultValid(Pin, Pin->DefaultValue, Pin->DefaultObject, Pin->DefaultTextValue);
		if (!Problem.IsEmpty())
		{
			MessageLog.Error(*Fmt(TEXT("The current value of the ' @@ ' pin is invalid: {0}"), Problem), Pin);
		}
	}
}

namespace
{
	/**
	 * Whether a variable node takes part in what the graph does. The editor's compiler drops nodes that nothing
	 * uses before it checks variable targets, so an unused read of another object's member raises nothing.
	 */
	bool IsVariableNodeUsed(const UK2Node_Variable& Node, const UEdGraphSchema_K2& Schema)
	{
		for (const UEdGraphPin* Pin : Node.Pins)
		{
			if (Pin && Pin->LinkedTo.Num() > 0 && !Schema.IsSelfPin(*Pin))
			{
				return true;
			}
		}
		return false;
	}
}

void FKismetCompilerContext::ValidateNode(const UEdGraphNode* Node) const
{
	if (Node->IsDeprecated())
	{
		MessageLog.Warning(TEXT("@@ is deprecated; please replace or remove it."), Node);
	}
	for (const UEdGraphPin* Pin : Node->Pins)
	{
		if (Pin && Pin->bOrphanedPin && Pin->LinkedTo.Num() > 0)
		{
			MessageLog.Error(TEXT("In use pin @@ no longer exists on node @@. Please refresh node or break links to remove pin."), Pin, Node);
		}
	}
	Node->ValidateNodeDuringCompilation(MessageLog);
	// Pins and links follow the K2 rules only in graphs that run as script; a state machine's states and transitions
	// are wired by their own schema (a state takes any number of incoming transitions) and checked by their nodes.
	const UEdGraph* Graph = Node->GetGraph();
	if (Graph && Graph->GetSchema() && !Graph->GetSchema()->IsA<UEdGraphSchema_K2>())
	{
		return;
	}
	for (const UEdGraphPin* Pin : Node->Pins)
	{
		ValidatePin(Pin);
	}

	// A read or write of another object's member needs that object.
	if (const UK2Node_Variable* VariableNode = Cast<UK2Node_Variable>(Node))
	{
		if (IsVariableNodeUsed(*VariableNode, *Schema))
		{
			const_cast<UK2Node_Variable*>(VariableNode)->CheckForErrors(Schema, MessageLog);
		}
	}

	// A member function called on nothing runs on the Blueprint itself, which must then be of the function's class.
	if (const UK2Node_CallFunction* Call = Cast<UK2Node_CallFunction>(Node))
	{
		const UFunction* Function = Call->GetTargetFunction();
		const UEdGraphPin* SelfPin = Schema->FindSelfPin(*Call, EGPD_Input);
		if (Function && !Function->HasAnyFunctionFlags(FUNC_Static) && SelfPin && SelfPin->LinkedTo.Num() == 0 && !SelfPin->DefaultObject)
		{
			UClass* TargetClass = Cast<UClass>(SelfPin->PinType.PinSubCategoryObject.Get());
			if (!TargetClass)
			{
				TargetClass = Function->GetOwnerClass();
			}
			const UClass* SelfClass = Blueprint->SkeletonGeneratedClass ? Blueprint->SkeletonGeneratedClass.Get() : Blueprint->ParentClass.Get();
			const bool bSelfFits = SelfPin->PinType.PinSubCategory == UEdGraphSchema_K2::PSC_Self || !TargetClass
				|| (SelfClass && (SelfClass->IsChildOf(TargetClass) || SelfClass->ImplementsInterface(TargetClass)));
			if (!bSelfFits)
			{
				MessageLog.Error(*Fmt(TEXT("This blueprint (self) is not a {0}, therefore ' @@ ' must have a connection."),
					FBlueprintEditorUtils::GetFriendlyClassDisplayName(TargetClass).ToString()), SelfPin);
			}
		}
	}
}

void FKismetCompilerContext::ValidateGraph(const UEdGraph* Graph)
{
	if (!Graph)
	{
		return;
	}
	for (const UEdGraphNode* Node : Graph->Nodes)
	{
		if (!CanIgnoreNode(Node))
		{
			ValidateNode(Node);
		}
	}
	for (const UEdGraph* SubGraph : Graph->SubGraphs)
	{
		ValidateGraph(SubGraph);
	}
}

void FKismetCompilerContext::ValidateGraphs()
{
	// Macros are checked where they are used, delegate signatures hold no logic.
	for (const UEdGraph* Graph : Blueprint->UbergraphPages)
	{
		ValidateGraph(Graph);
	}
	for (const UEdGraph* Graph : Blueprint->FunctionGraphs)
	{
		ValidateGraph(Graph);
	}
	for (const FBPInterfaceDescription& Interface : Blueprint->ImplementedInterfaces)
	{
		for (const UEdGraph* Graph : Interface.Graphs)
		{
			ValidateGraph(Graph);
		}
	}
}
