#include "BlueprintActionDatabase.h"
#include "BlueprintActionDatabaseFamilies.h"
#include "BlueprintActionDatabaseRegistrar.h"
#include "BlueprintNodeSpawner.h"
#include "EdGraph/EdGraphNode.h"
#include "Engine/Blueprint.h"
#include "K2Node.h"
#include "Engine/SCS_Node.h"
#include "Engine/SimpleConstructionScript.h"
#include "UObject/FieldIterator.h"
#include "UObject/UnrealType.h"
#include "HAL/PlatformTime.h"
#include "Modules/ModuleManager.h"
#include "UObject/Class.h"
#include "UObject/UObjectArray.h"
#include "UObject/UObjectIterator.h"

bool FBlueprintActionDatabaseRegistrar::AddBlueprintAction(const UObject* ActionKey, UBlueprintNodeSpawner* Action)
{
	if (!Action || !ActionKey || !Database || !IsOpenForRegistration(ActionKey))
	{
		return false;
	}
	Database->AddAction(ActionKey, Action);
	++NumAdded;
	return true;
}

bool FBlueprintActionDatabaseRegistrar::AddBlueprintAction(UBlueprintNodeSpawner* Action)
{
	return Action && AddBlueprintAction(Action->NodeClass.Get(), Action);
}

bool FBlueprintActionDatabaseRegistrar::IsOpenForRegistration(const UObject* ActionKey) const
{
	return ActionKey && (OnlyKey == nullptr || OnlyKey == ActionKey);
}

FBlueprintActionDatabase& FBlueprintActionDatabase::GetUnbuilt()
{
	static FBlueprintActionDatabase Database;
	return Database;
}

FBlueprintActionDatabase& FBlueprintActionDatabase::Get()
{
	FBlueprintActionDatabase& Database = GetUnbuilt();
	Database.EnsureBuilt();
	return Database;
}

void FBlueprintActionDatabase::RegisterNodeSpecificActions(TSubclassOf<UEdGraphNode> NodeClass, FMakeNodeSpecificActions MakeActions)
{
	UClass* Class = NodeClass.Get();
	if (!Class || !MakeActions.IsBound())
	{
		return;
	}
	FBlueprintActionDatabase& Database = GetUnbuilt();
	bool bReplaced = false;
	for (TPair<TWeakObjectPtr<UClass>, FMakeNodeSpecificActions>& Existing : Database.HandedInNodeActions)
	{
		if (Existing.Key.Get() == Class)
		{
			Existing.Value = MakeActions;
			bReplaced = true;
		}
	}
	if (!bReplaced)
	{
		Database.HandedInNodeActions.Add(TPair<TWeakObjectPtr<UClass>, FMakeNodeSpecificActions>(TWeakObjectPtr<UClass>(Class), MakeActions));
	}
	// Not built yet: the first build takes them with everything else.
	if (Database.bBuilt)
	{
		if (FActionList* Existing = Database.ActionRegistry.Find(Class))
		{
			Database.ReleaseActions(*Existing);
		}
		FBlueprintActionDatabaseRegistrar Registrar;
		Registrar.Database = &Database;
		Registrar.OnlyKey = Class;
		Database.RegisterNodeSpecificActions(Class, Registrar);
	}
}

void FBlueprintActionDatabase::EnsureBuilt()
{
	if (!bBuilt)
	{
		RefreshAll();
	}
}

void FBlueprintActionDatabase::AddAction(const UObject* Key, UBlueprintNodeSpawner* Action)
{
	// Shared spawners (one per promotable operator) are filed once.
	if (Registered.Contains(Action))
	{
		return;
	}
	FActionList& List = ActionRegistry.FindOrAdd(Key);
	if (!KeyWatch.Contains(Key))
	{
		KeyWatch.Add(Key, TWeakObjectPtr<UObject>(const_cast<UObject*>(Key)));
	}
	Registered.Add(Action);
	// The database owns its spawners for the whole process; the collector must not take them.
	Action->AddToRoot();
	List.Add(Action);
}

void FBlueprintActionDatabase::ReleaseActions(FActionList& Actions)
{
	for (UBlueprintNodeSpawner* Action : Actions)
	{
		if (Action)
		{
			Action->RemoveFromRoot();
			Registered.Remove(Action);
		}
	}
	Actions.Empty();
}

void FBlueprintActionDatabase::RefreshAll()
{
	const double StartSeconds = FPlatformTime::Seconds();
	for (TPair<const UObject*, FActionList>& Pair : ActionRegistry)
	{
		ReleaseActions(Pair.Value);
	}
	ActionRegistry.Empty();
	KeyWatch.Empty();
	Registered.Empty();
	AssetSignatures.Empty();
	bBuilt = true;

	// The engine's reflected API is data that registers on the first lookup; make sure it is there.
	FModuleManager::Get().LoadModule(TEXT("Catalogue"));

	FBlueprintActionDatabaseRegistrar Registrar;
	Registrar.Database = this;

	// Members of the engine's classes first, in the order the classes were made (stable from run to run).
	TArray<UClass*> Classes;
	for (TObjectIterator<UClass> It; It; ++It)
	{
		if (!UE::BlueprintGraph::ActionDatabase::IsBlueprintMadeClass(*It))
		{
			Classes.Add(*It);
		}
	}
	for (UClass* Class : Classes)
	{
		UE::BlueprintGraph::ActionDatabase::RegisterClassMemberActions(Class, Registrar);
	}
	RegisterAllNodeFamilies(Registrar);

	// Blueprints already in memory add their own members.
	TArray<UBlueprint*> Blueprints;
	for (TObjectIterator<UBlueprint> It; It; ++It)
	{
		Blueprints.Add(*It);
	}
	for (UBlueprint* Blueprint : Blueprints)
	{
		UE::BlueprintGraph::ActionDatabase::RegisterBlueprintActions(Blueprint, Registrar);
		AssetSignatures.Add(Blueprint, MakeMemberSignature(Blueprint));
		if (!KeyWatch.Contains(Blueprint))
		{
			KeyWatch.Add(Blueprint, TWeakObjectPtr<UObject>(Blueprint));
		}
	}
	// Node classes the modules above handed in come last, where they land when handed in after a build.
	RegisterHandedInNodeActions(Registrar);
	LastBuildTimeMs = (FPlatformTime::Seconds() - StartSeconds) * 1000.0;
}

void FBlueprintActionDatabase::RegisterAllNodeFamilies(FBlueprintActionDatabaseRegistrar& Registrar)
{
	UE::BlueprintGraph::ActionDatabase::RegisterFlowControlActions(Registrar);
	UE::BlueprintGraph::ActionDatabase::RegisterTypeActions(Registrar);
	UE::BlueprintGraph::ActionDatabase::RegisterUtilityActions(Registrar);

	// Then every node class in the program speaks for itself, in the order the classes were made.
	TArray<UClass*> NodeClasses;
	for (TObjectIterator<UClass> It; It; ++It)
	{
		if (It->IsChildOf(UK2Node::StaticClass()) && !It->HasAnyClassFlags(CLASS_Abstract | CLASS_NewerVersionExists)
			&& !UE::BlueprintGraph::ActionDatabase::IsBlueprintMadeClass(*It))
		{
			NodeClasses.Add(*It);
		}
	}
	for (UClass* NodeClass : NodeClasses)
	{
		RegisterNodeSpecificActions(NodeClass, Registrar);
	}
}

void FBlueprintActionDatabase::RegisterNodeSpecificActions(UClass* NodeClass, FBlueprintActionDatabaseRegistrar& Registrar)
{
	if (!NodeClass || NodeClass->HasAnyClassFlags(CLASS_Abstract))
	{
		return;
	}
	if (NodeClass->IsChildOf(UK2Node::StaticClass()))
	{
		if (const UK2Node* NodeCDO = Cast<UK2Node>(NodeClass->GetDefaultObject()))
		{
			NodeCDO->GetMenuActions(Registrar);
		}
		return;
	}
	for (const TPair<TWeakObjectPtr<UClass>, FMakeNodeSpecificActions>& HandedIn : HandedInNodeActions)
	{
		if (HandedIn.Key.Get() == NodeClass)
		{
			HandedIn.Value.ExecuteIfBound(Registrar);
		}
	}
}

void FBlueprintActionDatabase::RegisterHandedInNodeActions(FBlueprintActionDatabaseRegistrar& Registrar)
{
	for (int32 Index = 0; Index < HandedInNodeActions.Num(); ++Index)
	{
		if (UClass* NodeClass = HandedInNodeActions[Index].Key.Get())
		{
			RegisterNodeSpecificActions(NodeClass, Registrar);
		}
	}
}

void FBlueprintActionDatabase::RefreshClassActions(UClass* Class)
{
	if (!Class)
	{
		return;
	}
	EnsureBuilt();
	if (FActionList* Existing = ActionRegistry.Find(Class))
	{
		ReleaseActions(*Existing);
	}
	FBlueprintActionDatabaseRegistrar Registrar;
	Registrar.Database = this;
	Registrar.OnlyKey = Class;
	UE::BlueprintGraph::ActionDatabase::RegisterClassMemberActions(Class, Registrar);
	// The families file entries under classes too (casts under their target, nodes under their class); with the
	// registrar open for this class alone, only those come back.
	RegisterAllNodeFamilies(Registrar);
	RegisterHandedInNodeActions(Registrar);
}

void FBlueprintActionDatabase::RefreshAssetActions(UObject* AssetObject)
{
	UBlueprint* Blueprint = Cast<UBlueprint>(AssetObject);
	if (!Blueprint)
	{
		return;
	}
	EnsureBuilt();
	ClearAssetActions(Blueprint);
	FBlueprintActionDatabaseRegistrar Registrar;
	Registrar.Database = this;
	Registrar.OnlyKey = Blueprint;
	UE::BlueprintGraph::ActionDatabase::RegisterBlueprintActions(Blueprint, Registrar);
	AssetSignatures.Add(Blueprint, MakeMemberSignature(Blueprint));
	// A Blueprint with no actions yet is still known, so it is not registered again until it changes.
	if (!KeyWatch.Contains(Blueprint))
	{
		KeyWatch.Add(Blueprint, TWeakObjectPtr<UObject>(Blueprint));
	}
}

FString FBlueprintActionDatabase::MakeMemberSignature(const UBlueprint* Blueprint)
{
	// Everything RegisterBlueprintActions reads, in a form that changes whenever it does.
	FString Signature;
	for (const FBPVariableDescription& Var : Blueprint->NewVariables)
	{
		Signature += FString::Printf(TEXT("v:%s:%s:%s:%llu:%s:%s:%s;"), *Var.VarName.ToString(), *Var.VarGuid.ToString(), *Var.FriendlyName,
			(unsigned long long)Var.PropertyFlags, *Var.Category.ToString(), *Var.VarType.PinCategory.ToString(), *Var.GetMetaData(TEXT("tooltip")));
	}
	if (const USimpleConstructionScript* SCS = Blueprint->SimpleConstructionScript.Get())
	{
		for (const USCS_Node* Node : SCS->GetAllNodes())
		{
			if (Node)
			{
				Signature += FString::Printf(TEXT("c:%s:%s;"), *Node->GetVariableName().ToString(), Node->ComponentClass.Get() ? *Node->ComponentClass->GetPathName() : TEXT(""));
			}
		}
	}
	if (const UClass* Skeleton = Blueprint->SkeletonGeneratedClass.Get())
	{
		Signature += FString::Printf(TEXT("s:%s;"), *Skeleton->GetPathName());
		for (TFieldIterator<UFunction> It(Skeleton, EFieldIteratorFlags::ExcludeSuper); It; ++It)
		{
			Signature += FString::Printf(TEXT("f:%s:%u;"), *It->GetName(), (uint32)It->FunctionFlags);
		}
		for (TFieldIterator<FProperty> It(Skeleton, EFieldIteratorFlags::ExcludeSuper); It; ++It)
		{
			Signature += FString::Printf(TEXT("p:%s;"), *It->GetName());
		}
	}
	if (const UClass* Generated = Blueprint->GeneratedClass.Get())
	{
		Signature += FString::Printf(TEXT("g:%s;"), *Generated->GetPathName());
	}
	Signature += FString::Printf(TEXT("t:%d"), (int32)Blueprint->BlueprintType);
	return Signature;
}

void FBlueprintActionDatabase::RefreshAssetActionsIfChanged(UBlueprint* Blueprint)
{
	// The Blueprint and its Blueprint parents, each checked once.
	TArray<UBlueprint*> Chain;
	for (UBlueprint* Walk = Blueprint; Walk && !Chain.Contains(Walk); )
	{
		Chain.Add(Walk);
		UClass* Parent = Walk->ParentClass.Get();
		Walk = Parent ? UBlueprint::GetBlueprintFromClass(Parent) : nullptr;
	}
	// The interfaces it implements give it events and messages, so a function added to one must show.
	for (int32 Index = 0; Index < Chain.Num(); ++Index)
	{
		for (const FBPInterfaceDescription& Interface : Chain[Index]->ImplementedInterfaces)
		{
			UBlueprint* InterfaceBlueprint = Interface.Interface.Get() ? UBlueprint::GetBlueprintFromClass(Interface.Interface.Get()) : nullptr;
			if (InterfaceBlueprint && !Chain.Contains(InterfaceBlueprint))
			{
				Chain.Add(InterfaceBlueprint);
			}
		}
	}
	for (UBlueprint* Each : Chain)
	{
		const FString* Known = AssetSignatures.Find(Each);
		const bool bWatched = KeyWatch.Contains(Each) && KeyWatch[Each].IsValid();
		if (!Known || !bWatched || *Known != MakeMemberSignature(Each))
		{
			RefreshAssetActions(Each);
		}
	}
}

void FBlueprintActionDatabase::RegisterUnknownBlueprints()
{
	// Nothing announces a new Blueprint here (the editor hears of it from the asset registry), so each menu looks;
	// object slots are never reused, so no new object at all means no new Blueprint.
	const int32 NumObjects = GUObjectArray.GetObjectArrayNum();
	if (NumObjects == NumObjectsLastLooked)
	{
		return;
	}
	NumObjectsLastLooked = NumObjects;
	TArray<UBlueprint*> Unknown;
	for (TObjectIterator<UBlueprint> It; It; ++It)
	{
		// A Blueprint at the address of one that was collected is new too: its watch no longer leads to it.
		const TWeakObjectPtr<UObject>* Watch = KeyWatch.Find(*It);
		if (!AssetSignatures.Contains(*It) || !Watch || Watch->Get() != *It)
		{
			Unknown.Add(*It);
		}
	}
	for (UBlueprint* Blueprint : Unknown)
	{
		RefreshAssetActions(Blueprint);
	}
}

void FBlueprintActionDatabase::ClearAssetActions(UObject* AssetObject)
{
	if (FActionList* Existing = ActionRegistry.Find(AssetObject))
	{
		ReleaseActions(*Existing);
		ActionRegistry.Remove(AssetObject);
	}
	KeyWatch.Remove(AssetObject);
	AssetSignatures.Remove(AssetObject);
}

const FBlueprintActionDatabase::FActionRegistry& FBlueprintActionDatabase::GetAllActions()
{
	EnsureBuilt();
	// A Blueprint that was destroyed takes its actions with it.
	TArray<const UObject*> Stale;
	for (const TPair<const UObject*, TWeakObjectPtr<UObject>>& Pair : KeyWatch)
	{
		if (!Pair.Value.IsValid())
		{
			Stale.Add(Pair.Key);
		}
	}
	for (const UObject* Key : Stale)
	{
		if (FActionList* Actions = ActionRegistry.Find(Key))
		{
			ReleaseActions(*Actions);
		}
		ActionRegistry.Remove(Key);
		KeyWatch.Remove(Key);
		AssetSignatures.Remove(Key);
	}
	return ActionRegistry;
}

int32 FBlueprintActionDatabase::GetNumActions() const
{
	int32 Count = 0;
	for (const TPair<const UObject*, FActionList>& Pair : ActionRegistry)
	{
		Count += Pair.Value.Num();
	}
	return Count;
}
