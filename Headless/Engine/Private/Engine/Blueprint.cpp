#include "Engine/Blueprint.h"
#include "Engine/BlueprintCore.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "Engine/SimpleConstructionScript.h"
#include "Engine/TimelineTemplate.h"
#include "EdGraph/EdGraph.h"
#include "UObject/Interface.h"
#include "UObject/Package.h"
#include "UObject/UnrealType.h"
#include "Templates/Casts.h"
#include "EngineReflection.h"

using namespace UE::Engine::Private;

IMPLEMENT_CLASS(UBlueprintCore,
	UE_NATIVE_PROPERTY(FClassProperty, SkeletonGeneratedClass, CPF_None, UObject::StaticClass());
	UE_NATIVE_PROPERTY(FClassProperty, GeneratedClass, CPF_None, UObject::StaticClass());
	UE_NATIVE_PROPERTY(FBoolProperty, bLegacyNeedToPurgeSkelRefs, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FStructProperty, BlueprintGuid, CPF_None, TBaseStructure<FGuid>::Get());
)

void UBlueprintCore::GenerateDeterministicGuid()
{
	// Derived from the path so that the same asset gets the same guid in every run.
	const FString Path = GetPathName();
	uint32 Hashes[4] = {0x811C9DC5u, 0x01000193u, 0x9E3779B9u, 0x85EBCA6Bu};
	for (int32 Index = 0; Index < Path.Len(); ++Index)
	{
		const uint32 Char = uint32(Path[Index]);
		for (int32 Lane = 0; Lane < 4; ++Lane)
		{
			Hashes[Lane] = (Hashes[Lane] ^ (Char + uint32(Lane))) * 0x01000193u;
		}
	}
	BlueprintGuid = FGuid(Hashes[0], Hashes[1], Hashes[2], Hashes[3]);
}

IMPLEMENT_CLASS(UBlueprint,
	UE_NATIVE_PROPERTY(FClassProperty, ParentClass, CPF_None, UObject::StaticClass());
	UE_NATIVE_PROPERTY(FIntProperty, BlueprintType, CPF_None);
	UE_NATIVE_PROPERTY(FBoolProperty, bRecompileOnLoad, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bGenerateConstClass, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bGenerateAbstractClass, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bDeprecate, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FStrProperty, BlueprintDisplayName, CPF_None);
	UE_NATIVE_PROPERTY(FStrProperty, BlueprintDescription, CPF_None);
	UE_NATIVE_PROPERTY(FStrProperty, BlueprintNamespace, CPF_None);
	UE_NATIVE_PROPERTY(FStrProperty, BlueprintCategory, CPF_None);
	WithStringElements(UE_NATIVE_PROPERTY(FArrayProperty, HideCategories, CPF_None));
	UE_NATIVE_PROPERTY(FObjectProperty, SimpleConstructionScript, CPF_TObjectPtr, USimpleConstructionScript::StaticClass());
	WithObjectElements(UE_NATIVE_PROPERTY(FArrayProperty, UbergraphPages, CPF_None), UEdGraph::StaticClass());
	WithObjectElements(UE_NATIVE_PROPERTY(FArrayProperty, FunctionGraphs, CPF_None), UEdGraph::StaticClass());
	WithObjectElements(UE_NATIVE_PROPERTY(FArrayProperty, DelegateSignatureGraphs, CPF_None), UEdGraph::StaticClass());
	WithObjectElements(UE_NATIVE_PROPERTY(FArrayProperty, MacroGraphs, CPF_None), UEdGraph::StaticClass());
	WithObjectElements(UE_NATIVE_PROPERTY(FArrayProperty, IntermediateGeneratedGraphs, CPF_Transient), UEdGraph::StaticClass());
	WithObjectElements(UE_NATIVE_PROPERTY(FArrayProperty, Timelines, CPF_None), UTimelineTemplate::StaticClass());
)

void FBPVariableDescription::SetMetaData(FName Key, FString Value)
{
	const int32 Index = FindMetaDataEntryIndexForKey(Key);
	if (Index != INDEX_NONE)
	{
		MetaDataArray[Index].DataValue = MoveTemp(Value);
	}
	else
	{
		MetaDataArray.Emplace(Key, MoveTemp(Value));
	}
}

FString FBPVariableDescription::GetMetaData(FName Key) const
{
	const int32 Index = FindMetaDataEntryIndexForKey(Key);
	return Index != INDEX_NONE ? MetaDataArray[Index].DataValue : FString();
}

void FBPVariableDescription::RemoveMetaData(FName Key)
{
	const int32 Index = FindMetaDataEntryIndexForKey(Key);
	if (Index != INDEX_NONE)
	{
		MetaDataArray.RemoveAt(Index);
	}
}

int32 FBPVariableDescription::FindMetaDataEntryIndexForKey(FName Key) const
{
	for (int32 Index = 0; Index < MetaDataArray.Num(); ++Index)
	{
		if (MetaDataArray[Index].DataKey == Key)
		{
			return Index;
		}
	}
	return INDEX_NONE;
}

UBlueprint::UBlueprint() = default;

void UBlueprint::GetAllGraphs(TArray<UEdGraph*>& Graphs) const
{
	auto AddWithChildren = [&Graphs](UEdGraph* Graph)
	{
		if (Graph)
		{
			Graphs.Add(Graph);
			Graph->GetAllChildrenGraphs(Graphs);
		}
	};
	for (UEdGraph* Graph : FunctionGraphs)
	{
		AddWithChildren(Graph);
	}
	for (UEdGraph* Graph : MacroGraphs)
	{
		AddWithChildren(Graph);
	}
	for (UEdGraph* Graph : UbergraphPages)
	{
		AddWithChildren(Graph);
	}
	for (UEdGraph* Graph : DelegateSignatureGraphs)
	{
		AddWithChildren(Graph);
	}
	for (const FBPInterfaceDescription& Interface : ImplementedInterfaces)
	{
		for (UEdGraph* Graph : Interface.Graphs)
		{
			AddWithChildren(Graph);
		}
	}
}

UBlueprint* UBlueprint::GetBlueprintFromClass(const UClass* InClass)
{
	if (!InClass)
	{
		return nullptr;
	}
	if (const UBlueprintGeneratedClass* Generated = Cast<UBlueprintGeneratedClass>(InClass))
	{
		return Cast<UBlueprint>(Generated->ClassGeneratedBy);
	}
	return nullptr;
}

bool UBlueprint::GetBlueprintHierarchyFromClass(const UClass* InClass, TArray<UBlueprint*>& OutBlueprintParents)
{
	OutBlueprintParents.Empty();
	bool bNoErrors = true;
	for (const UClass* Class = InClass; Class; Class = Class->GetSuperClass())
	{
		UBlueprint* Blueprint = GetBlueprintFromClass(Class);
		if (!Blueprint)
		{
			break;
		}
		OutBlueprintParents.Add(Blueprint);
		bNoErrors &= Blueprint->Status != BS_Error;
	}
	return bNoErrors;
}

bool UBlueprint::IsAsset() const
{
	return Super::IsAsset() && !HasAnyFlags(RF_ClassDefaultObject);
}

UClass* UBlueprint::GetBlueprintClass() const
{
	return UBlueprintGeneratedClass::StaticClass();
}
