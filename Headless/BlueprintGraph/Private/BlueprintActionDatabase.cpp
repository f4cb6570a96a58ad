#include "BlueprintActionDatabase.h"
#include "BlueprintActionDatabaseFamilies.h"
#include "BlueprintActionDatabaseRegistrar.h"
#include "BlueprintNodeSpawner.h"
#include "Engine/Blueprint.h"
#include "Engine/SCS_Node.h"
#include "Engine/SimpleConstructionScript.h"
#include "UObject/FieldIterator.h"
#include "UObject/UnrealType.h"
#include "HAL/PlatformTime.h"
#include "Modules/ModuleManager.h"
#include "UObject/Class.h"
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

bool FBlueprintActionDatabaseRegistrar::IsOpenForRegistration(const UObject* ActionKey) const
{
	return ActionKey && (OnlyKey == nullptr || OnlyKey == ActionKey);
}

FBlueprintActionDatabase& FBlueprintActionDatabase::Get()
{
	static FBlueprintActionDatabase Database;
	Database.EnsureBuilt();
	return Database;
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
	LastBuildTimeMs = (FPlatformTime::Seconds() - StartSeconds) * 1000.0;
}

void FBlueprintActionDatabase::RegisterAllNodeFamilies(FBlueprintActionDatabaseRegistrar& Registrar)
{
	UE::BlueprintGraph::ActionDatabase::RegisterFlowControlActions(Registrar);
	UE::BlueprintGraph::ActionDatabase::RegisterTypeActions(Registrar);
	UE::BlueprintGraph::ActionDatabase::RegisterUtilityActions(Registrar);
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
