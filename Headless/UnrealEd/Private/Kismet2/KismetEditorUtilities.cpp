#include "Kismet2/KismetEditorUtilities.h"

#include "Animation/AnimBlueprint.h"
#include "Components/ActorComponent.h"
#include "Components/SceneComponent.h"
#include "EdGraphSchema_K2.h"
#include "Engine/SimpleConstructionScript.h"
#include "GameFramework/Actor.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Kismet2/CompilerResultsLog.h"
#include "KismetCompilerModule.h"
#include "UObject/Class.h"
#include "UObject/Interface.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "BlueprintEditorUtilsNodes.h"

namespace
{
	struct FDefaultEventRegistration
	{
		void* Owner = nullptr;
		/** The class, or its short name until it is first resolved. */
		UClass* TargetClass = nullptr;
		FString TargetClassName;
		FName EventName;
	};

	TArray<FDefaultEventRegistration>& GetDefaultEventRegistrations()
	{
		static TArray<FDefaultEventRegistration> Registrations = []
		{
			// The editor's shipped list of events placed in a new Blueprint, by the class they belong to.
			static const TCHAR* const Defaults[][2] = {
				{ TEXT("Actor"), TEXT("ReceiveBeginPlay") },
				{ TEXT("Actor"), TEXT("ReceiveActorBeginOverlap") },
				{ TEXT("Actor"), TEXT("ReceiveTick") },
				{ TEXT("ActorComponent"), TEXT("ReceiveBeginPlay") },
				{ TEXT("ActorComponent"), TEXT("ReceiveTick") },
				{ TEXT("GameplayAbility"), TEXT("K2_ActivateAbility") },
				{ TEXT("GameplayAbility"), TEXT("K2_OnEndAbility") },
				{ TEXT("UserWidget"), TEXT("PreConstruct") },
				{ TEXT("UserWidget"), TEXT("Construct") },
				{ TEXT("UserWidget"), TEXT("Tick") },
				{ TEXT("AnimInstance"), TEXT("BlueprintUpdateAnimation") },
			};
			TArray<FDefaultEventRegistration> Result;
			for (const auto& Entry : Defaults)
			{
				FDefaultEventRegistration Registration;
				Registration.TargetClassName = Entry[0];
				Registration.EventName = FName(Entry[1]);
				Result.Add(Registration);
			}
			return Result;
		}();
		return Registrations;
	}

	TArray<TWeakObjectPtr<const UObject>>& GetFocusRequests()
	{
		static TArray<TWeakObjectPtr<const UObject>> Requests;
		return Requests;
	}

	bool IsSkeletonClassName(const FString& Name)
	{
		return Name.StartsWith(TEXT("SKEL_"));
	}
}

bool FKismetEditorUtilities::CanCreateBlueprintOfClass(const UClass* Class)
{
	if (!Class || Class->HasAnyClassFlags(CLASS_Deprecated | CLASS_NewerVersionExists) || IsClassABlueprintSkeleton(Class))
	{
		return false;
	}
	const bool bIsBlueprintClass = Cast<UBlueprintGeneratedClass>(Class) != nullptr;
	// IsBlueprintBase is inherited: the nearest class that says anything decides.
	bool bIsBlueprintBase = false;
	for (const UClass* Walk = Class; Walk; Walk = Walk->GetSuperClass())
	{
		if (const FString* Value = Walk->FindMetaData(FBlueprintMetadata::MD_IsBlueprintBase))
		{
			bIsBlueprintBase = Value->Equals(TEXT("true"), ESearchCase::IgnoreCase);
			break;
		}
	}
	return bIsBlueprintBase || bIsBlueprintClass || Class == UObject::StaticClass() || Class == USceneComponent::StaticClass()
		|| Class == UActorComponent::StaticClass();
}

bool FKismetEditorUtilities::IsClassABlueprintSkeleton(const UClass* Class)
{
	if (!Class)
	{
		return false;
	}
	if (const UBlueprint* Blueprint = Cast<UBlueprint>(Class->ClassGeneratedBy))
	{
		return Blueprint->SkeletonGeneratedClass == Class;
	}
	return Class->HasAnyClassFlags(CLASS_CompiledFromBlueprint) && IsSkeletonClassName(Class->GetName());
}

UBlueprint* FKismetEditorUtilities::CreateBlueprint(UClass* ParentClass, UObject* Outer, const FName NewBPName, EBlueprintType BlueprintType,
	TSubclassOf<UBlueprint> BlueprintClassType, TSubclassOf<UBlueprintGeneratedClass> BlueprintGeneratedClassType, FName CallingContext)
{
	if (!ParentClass || !Outer || NewBPName == NAME_None)
	{
		return nullptr;
	}
	// Libraries, interfaces and macro libraries get their fixed parent from their factories, which the
	// Blueprintable rule does not cover; an ordinary Blueprint must have a parent Blueprints may derive from.
	const bool bSpecialKind = BlueprintType == BPTYPE_Interface || BlueprintType == BPTYPE_FunctionLibrary || BlueprintType == BPTYPE_MacroLibrary
		|| BlueprintType == BPTYPE_LevelScript;
	if (!bSpecialKind && !CanCreateBlueprintOfClass(ParentClass))
	{
		return nullptr;
	}
	const FString GeneratedName = NewBPName.ToString() + TEXT("_C");
	UPackage* Package = Outer->GetOutermost();
	if (StaticFindObject(nullptr, Outer, *NewBPName.ToString()) || StaticFindObject(nullptr, Package, *GeneratedName)
		|| StaticFindObject(nullptr, Package, *(TEXT("SKEL_") + GeneratedName)))
	{
		return nullptr;
	}

	// A generic request takes the kind the compiler knows for the parent (Widget Blueprints for widgets...).
	UClass* BlueprintClass = BlueprintClassType ? BlueprintClassType.Get() : UBlueprint::StaticClass();
	UClass* GeneratedClassKind = BlueprintGeneratedClassType ? BlueprintGeneratedClassType.Get() : UBlueprintGeneratedClass::StaticClass();
	if (BlueprintClass == UBlueprint::StaticClass())
	{
		for (IBlueprintCompiler* Kind : UE::Kismet::GetRegisteredBlueprintCompilers())
		{
			UClass* SpecificBlueprint = nullptr;
			UClass* SpecificGenerated = nullptr;
			if (Kind && Kind->GetBlueprintTypesForClass(ParentClass, SpecificBlueprint, SpecificGenerated))
			{
				BlueprintClass = SpecificBlueprint ? SpecificBlueprint : BlueprintClass;
				if (SpecificGenerated && GeneratedClassKind == UBlueprintGeneratedClass::StaticClass())
				{
					GeneratedClassKind = SpecificGenerated;
				}
				break;
			}
		}
	}

	// The classes come first in the package: a saved Blueprint refers to them, and a package is read in
	// the order its objects were made.
	UBlueprintGeneratedClass* NewClass = NewObject<UBlueprintGeneratedClass>(Package, GeneratedClassKind, FName(*GeneratedName), RF_Public | RF_Transactional);
	NewClass->SetSuperStruct(ParentClass);
	NewClass->ClassFlags |= CLASS_CompiledFromBlueprint;
	UBlueprintGeneratedClass* SkeletonClass = NewObject<UBlueprintGeneratedClass>(Package, UBlueprintGeneratedClass::StaticClass(),
		FName(*(TEXT("SKEL_") + GeneratedName)), RF_Public | RF_Transactional);
	SkeletonClass->SetSuperStruct(ParentClass);
	SkeletonClass->ClassFlags |= CLASS_CompiledFromBlueprint;
	// Usable (with the parent's members only) before the first compile.
	for (UClass* Class : { (UClass*)NewClass, (UClass*)SkeletonClass })
	{
		Class->Bind();
		Class->StaticLink(true);
	}

	UBlueprint* Blueprint = NewObject<UBlueprint>(Outer, BlueprintClass, NewBPName, RF_Public | RF_Standalone | RF_Transactional);
	Blueprint->Status = BS_BeingCreated;
	Blueprint->BlueprintType = BlueprintType;
	Blueprint->ParentClass = ParentClass;
	Blueprint->bIsNewlyCreated = true;
	Blueprint->bLegacyNeedToPurgeSkelRefs = false;
	Blueprint->GenerateDeterministicGuid();

	NewClass->ClassGeneratedBy = Blueprint;
	((UClass*)NewClass)->ClassGeneratedBy = Blueprint;
	Blueprint->GeneratedClass = NewClass;
	SkeletonClass->ClassGeneratedBy = Blueprint;
	((UClass*)SkeletonClass)->ClassGeneratedBy = Blueprint;
	Blueprint->SkeletonGeneratedClass = SkeletonClass;

	if (FBlueprintEditorUtils::SupportsConstructionScript(Blueprint))
	{
		USimpleConstructionScript* SCS = NewObject<USimpleConstructionScript>(NewClass, NAME_None, RF_Transactional);
		Blueprint->SimpleConstructionScript = SCS;
		NewClass->SimpleConstructionScript = SCS;

		UEdGraph* ConstructionGraph = FBlueprintEditorUtils::CreateNewGraph(Blueprint, UEdGraphSchema_K2::FN_UserConstructionScript, UEdGraph::StaticClass(), UEdGraphSchema_K2::StaticClass());
		FBlueprintEditorUtils::AddFunctionGraph(Blueprint, ConstructionGraph, false, AActor::StaticClass());
		ConstructionGraph->bAllowDeletion = false;
	}

	if (FBlueprintEditorUtils::DoesSupportEventGraphs(Blueprint))
	{
		UEdGraph* EventGraph = FBlueprintEditorUtils::CreateNewGraph(Blueprint, UEdGraphSchema_K2::GN_EventGraph, UEdGraph::StaticClass(), UEdGraphSchema_K2::StaticClass());
		FBlueprintEditorUtils::AddUbergraphPage(Blueprint, EventGraph);
		EventGraph->bAllowDeletion = false;
		if (const UEdGraphSchema* Schema = EventGraph->GetSchema())
		{
			Schema->CreateDefaultNodesForGraph(*EventGraph);
		}
		if (BlueprintType == BPTYPE_Normal)
		{
			int32 NodePositionY = 0;
			for (FDefaultEventRegistration& Registration : GetDefaultEventRegistrations())
			{
				if (!Registration.TargetClass && !Registration.TargetClassName.IsEmpty())
				{
					Registration.TargetClass = UClass::TryFindTypeSlow<UClass>(Registration.TargetClassName);
				}
				if (Registration.TargetClass && ParentClass->IsChildOf(Registration.TargetClass))
				{
					AddDefaultEventNode(Blueprint, EventGraph, Registration.EventName, Registration.TargetClass, NodePositionY);
				}
			}
		}
	}

	// An Animation Blueprint whose parents have no anim graph gets one, ending in its output pose. The graph classes
	// belong to the animation editor module, which sits above this one: they are found by path when it is linked.
	if (Blueprint->IsA<UAnimBlueprint>() && !Cast<UBlueprint>(ParentClass->ClassGeneratedBy))
	{
		UClass* AnimGraphClass = FindObject<UClass>(nullptr, TEXT("/Script/AnimGraph.AnimationGraph"));
		UClass* AnimSchemaClass = FindObject<UClass>(nullptr, TEXT("/Script/AnimGraph.AnimationGraphSchema"));
		if (AnimGraphClass && AnimSchemaClass)
		{
			UEdGraph* AnimGraph = FBlueprintEditorUtils::CreateNewGraph(Blueprint, UEdGraphSchema_K2::GN_AnimGraph, AnimGraphClass, AnimSchemaClass);
			Blueprint->FunctionGraphs.Add(AnimGraph);
			AnimGraph->bAllowDeletion = false;
			AnimGraph->GetSchema()->CreateDefaultNodesForGraph(*AnimGraph);
		}
	}

	// The first compile gives the Blueprint its classes and its verdict.
	CompileBlueprint(Blueprint, EBlueprintCompileOptions::SkipGarbageCollection);
	Blueprint->MarkPackageDirty();
	return Blueprint;
}

void FKismetEditorUtilities::CompileBlueprint(UBlueprint* BlueprintObj, EBlueprintCompileOptions CompileFlags, FCompilerResultsLog* pResults)
{
	if (!BlueprintObj)
	{
		return;
	}
	IKismetCompilerInterface* Compiler = IKismetCompilerInterface::GetPtr();
	if (!Compiler)
	{
		// Nothing can compile it: the Blueprint stays as it was, marked as not compiled.
		BlueprintObj->Status = BS_Unknown;
		return;
	}
	FCompilerResultsLog LocalLog;
	FCompilerResultsLog& Results = pResults ? *pResults : LocalLog;
	Results.SetSourcePath(BlueprintObj->GetPathName());
	FKismetCompilerOptions Options;
	Options.CompileType = EKismetCompileType::Full;
	Options.bSaveIntermediateProducts = EnumHasAnyFlags(CompileFlags, EBlueprintCompileOptions::SaveIntermediateProducts);
	Options.bSkipDefaultObjectValidation = EnumHasAnyFlags(CompileFlags, EBlueprintCompileOptions::SkipDefaultObjectValidation);
	Compiler->CompileBlueprint(BlueprintObj, Options, Results);
}

void FKismetEditorUtilities::GenerateBlueprintSkeleton(UBlueprint* BlueprintObj, bool bForceRegeneration)
{
	if (!BlueprintObj)
	{
		return;
	}
	if (!bForceRegeneration && BlueprintObj->SkeletonGeneratedClass)
	{
		return;
	}
	if (IKismetCompilerInterface* Compiler = IKismetCompilerInterface::GetPtr())
	{
		FKismetCompilerOptions Options;
		Options.CompileType = EKismetCompileType::SkeletonOnly;
		FCompilerResultsLog Log;
		Log.bSilentMode = true;
		Log.bAnnotateMentionedNodes = false;
		Compiler->CompileBlueprint(BlueprintObj, Options, Log);
	}
}

void FKismetEditorUtilities::BringKismetToFocusAttentionOnObject(const UObject* ObjectToFocusOn, bool bRequestRename)
{
	if (ObjectToFocusOn)
	{
		GetFocusRequests().Add(ObjectToFocusOn);
	}
}

const TArray<TWeakObjectPtr<const UObject>>& FKismetEditorUtilities::GetRecordedFocusRequests()
{
	return GetFocusRequests();
}

void FKismetEditorUtilities::ClearRecordedFocusRequests()
{
	GetFocusRequests().Reset();
}

UK2Node_Event* FKismetEditorUtilities::AddDefaultEventNode(UBlueprint* InBlueprint, UEdGraph* InGraph, FName InEventName, UClass* InEventClass, int32& InOutNodePosY)
{
	return UE::UnrealEd::Private::CreateDefaultEventNode(InBlueprint, InGraph, InEventName, InEventClass, InOutNodePosY);
}

void FKismetEditorUtilities::RegisterAutoGeneratedDefaultEvent(void* InOwner, UClass* InTargetClass, FName InEventName)
{
	if (!InTargetClass || InEventName == NAME_None)
	{
		return;
	}
	FDefaultEventRegistration Registration;
	Registration.Owner = InOwner;
	Registration.TargetClass = InTargetClass;
	Registration.EventName = InEventName;
	GetDefaultEventRegistrations().Add(Registration);
}

void FKismetEditorUtilities::UnregisterAutoBlueprintNodeCreation(void* InOwner)
{
	if (!InOwner)
	{
		return;
	}
	TArray<FDefaultEventRegistration>& Registrations = GetDefaultEventRegistrations();
	for (int32 Index = Registrations.Num() - 1; Index >= 0; --Index)
	{
		if (Registrations[Index].Owner == InOwner)
		{
			Registrations.RemoveAt(Index);
		}
	}
}
