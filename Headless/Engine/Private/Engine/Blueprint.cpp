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
#include "UObject/EnumProperty.h"
#include "UObject/TextProperty.h"
#include "UObject/AssetRegistryTagsContext.h"
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

IMPLEMENT_NATIVE_ENUM(EBlueprintType, TEXT("/Script/Engine"),
	TArray<TPair<FName, int64>> Entries;
	Entries.Emplace(TEXT("BPTYPE_Normal"), BPTYPE_Normal);
	Entries.Emplace(TEXT("BPTYPE_Const"), BPTYPE_Const);
	Entries.Emplace(TEXT("BPTYPE_MacroLibrary"), BPTYPE_MacroLibrary);
	Entries.Emplace(TEXT("BPTYPE_Interface"), BPTYPE_Interface);
	Entries.Emplace(TEXT("BPTYPE_LevelScript"), BPTYPE_LevelScript);
	Entries.Emplace(TEXT("BPTYPE_FunctionLibrary"), BPTYPE_FunctionLibrary);
	Entries.Emplace(TEXT("BPTYPE_MAX"), BPTYPE_MAX);
	Enum->SetEnums(Entries, UEnum::ECppForm::Regular, EEnumFlags::None, false);
)

// The engine declares ELifetimeCondition with CoreUObject's networking types.
IMPLEMENT_NATIVE_ENUM(ELifetimeCondition, TEXT("/Script/CoreUObject"),
	static const TCHAR* const Names[] = {TEXT("COND_None"), TEXT("COND_InitialOnly"), TEXT("COND_OwnerOnly"), TEXT("COND_SkipOwner"),
		TEXT("COND_SimulatedOnly"), TEXT("COND_AutonomousOnly"), TEXT("COND_SimulatedOrPhysics"), TEXT("COND_InitialOrOwner"), TEXT("COND_Custom"),
		TEXT("COND_ReplayOrOwner"), TEXT("COND_ReplayOnly"), TEXT("COND_SimulatedOnlyNoReplay"), TEXT("COND_SimulatedOrPhysicsNoReplay"),
		TEXT("COND_SkipReplay"), TEXT("COND_Dynamic"), TEXT("COND_Never"), TEXT("COND_NetGroup"), TEXT("COND_Max")};
	TArray<TPair<FName, int64>> Entries;
	for (int64 Value = 0; Value < int64(UE_ARRAY_COUNT(Names)); ++Value)
	{
		Entries.Emplace(Names[Value], Value);
	}
	Enum->SetEnums(Entries, UEnum::ECppForm::Regular, EEnumFlags::None, false);
)

IMPLEMENT_SCRIPT_STRUCT(FBPVariableMetaDataEntry, TEXT("/Script/Engine"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FNameProperty, DataKey, CPF_Edit);
	UE_NATIVE_PROPERTY(FStrProperty, DataValue, CPF_Edit);
)

IMPLEMENT_SCRIPT_STRUCT(FBPVariableDescription, TEXT("/Script/Engine"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FNameProperty, VarName, CPF_Edit);
	UE_NATIVE_PROPERTY(FStructProperty, VarGuid, CPF_Edit, TBaseStructure<FGuid>::Get());
	UE_NATIVE_PROPERTY(FStructProperty, VarType, CPF_Edit, FEdGraphPinType::StaticStruct());
	UE_NATIVE_PROPERTY(FStrProperty, FriendlyName, CPF_Edit);
	UE_NATIVE_PROPERTY(FTextProperty, Category, CPF_Edit);
	UE_NATIVE_PROPERTY(FUInt64Property, PropertyFlags, CPF_Edit);
	UE_NATIVE_PROPERTY(FNameProperty, RepNotifyFunc, CPF_Edit);
	WithEnumUnderlyingInt(UE_NATIVE_PROPERTY(FEnumProperty, ReplicationCondition, CPF_Edit, StaticEnum<ELifetimeCondition>()));
	{
		FArrayProperty* MetaData = UE_NATIVE_PROPERTY(FArrayProperty, MetaDataArray, CPF_Edit);
		MetaData->AddCppProperty(new FStructProperty(MetaData, MetaData->GetFName(), RF_Public | RF_MarkAsNative | RF_Transient, 0, CPF_None,
			FBPVariableMetaDataEntry::StaticStruct()));
	}
	UE_NATIVE_PROPERTY(FStrProperty, DefaultValue, CPF_Edit);
)

IMPLEMENT_SCRIPT_STRUCT(FBPInterfaceDescription, TEXT("/Script/Engine"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FClassProperty, Interface, CPF_None, UInterface::StaticClass());
	WithObjectElements(UE_NATIVE_PROPERTY(FArrayProperty, Graphs, CPF_None), UEdGraph::StaticClass());
)

IMPLEMENT_CLASS(UBlueprint,
	UE_NATIVE_PROPERTY(FClassProperty, ParentClass, CPF_None, UObject::StaticClass());
	WithEnumUnderlyingInt(UE_NATIVE_PROPERTY(FEnumProperty, BlueprintType, CPF_AssetRegistrySearchable, StaticEnum<EBlueprintType>()));
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
	{
		FArrayProperty* Variables = UE_NATIVE_PROPERTY(FArrayProperty, NewVariables, CPF_None);
		Variables->AddCppProperty(new FStructProperty(Variables, Variables->GetFName(), RF_Public | RF_MarkAsNative | RF_Transient, 0, CPF_None,
			FBPVariableDescription::StaticStruct()));
		FArrayProperty* Interfaces = UE_NATIVE_PROPERTY(FArrayProperty, ImplementedInterfaces, CPF_None);
		Interfaces->AddCppProperty(new FStructProperty(Interfaces, Interfaces->GetFName(), RF_Public | RF_MarkAsNative | RF_Transient, 0, CPF_None,
			FBPInterfaceDescription::StaticStruct()));
	}
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

void UBlueprint::GetAssetRegistryTags(FAssetRegistryTagsContext Context) const
{
	Super::GetAssetRegistryTags(Context);

	// Class references are written as export paths, "/Script/CoreUObject.Class'/Script/Engine.Actor'", so a
	// filter can match them without loading anything.
	const FString GeneratedClassValue = GeneratedClass ? FObjectPropertyBase::GetExportPath(GeneratedClass) : FString(TEXT("None"));
	FString ParentClassValue = TEXT("None");
	FString NativeParentClassValue = TEXT("None");
	if (UClass* Parent = ParentClass)
	{
		ParentClassValue = FObjectPropertyBase::GetExportPath(Parent);
		UClass* NativeParent = Parent;
		while (NativeParent && Cast<UBlueprintGeneratedClass>(NativeParent))
		{
			NativeParent = NativeParent->GetSuperClass();
		}
		NativeParentClassValue = NativeParent ? FObjectPropertyBase::GetExportPath(NativeParent) : FString(TEXT("None"));
	}

	// BlueprintType is searchable in the engine, which lists it under the enum entry's name.
	Context.AddTag(FAssetRegistryTag(TEXT("BlueprintType"), StaticEnum<EBlueprintType>()->GetNameStringByValue(int64(BlueprintType)), FAssetRegistryTag::TT_Alphabetical));
	Context.AddTag(FAssetRegistryTag(TEXT("BlueprintPath"), GetPathName(GetOutermost()), FAssetRegistryTag::TT_Hidden));
	Context.AddTag(FAssetRegistryTag(TEXT("GeneratedClass"), GeneratedClassValue, FAssetRegistryTag::TT_Hidden));
	Context.AddTag(FAssetRegistryTag(TEXT("ParentClass"), ParentClassValue, FAssetRegistryTag::TT_Alphabetical));
	Context.AddTag(FAssetRegistryTag(TEXT("NativeParentClass"), NativeParentClassValue, FAssetRegistryTag::TT_Alphabetical));

	const UBlueprintGeneratedClass* SkeletonClass = Cast<UBlueprintGeneratedClass>(SkeletonGeneratedClass.Get());
	Context.AddTag(FAssetRegistryTag(TEXT("NumReplicatedProperties"), FString::FromInt(SkeletonClass ? SkeletonClass->NumReplicatedProperties : 0),
		FAssetRegistryTag::TT_Numerical));
	Context.AddTag(FAssetRegistryTag(TEXT("BlueprintDescription"), BlueprintDescription, FAssetRegistryTag::TT_Hidden));
	Context.AddTag(FAssetRegistryTag(TEXT("BlueprintCategory"), BlueprintCategory, FAssetRegistryTag::TT_Hidden));
	Context.AddTag(FAssetRegistryTag(TEXT("BlueprintDisplayName"), BlueprintDisplayName, FAssetRegistryTag::TT_Hidden));
	const uint32 ClassFlagsValue = SkeletonClass ? uint32(SkeletonClass->GetClassFlags()) : uint32(GetClass()->GetClassFlags());
	Context.AddTag(FAssetRegistryTag(TEXT("ClassFlags"), FString::Printf(TEXT("%u"), ClassFlagsValue), FAssetRegistryTag::TT_Hidden));

	if (GetClass() == UBlueprint::StaticClass())
	{
		// Components the construction scripts of this class and its Blueprint parents add.
		int32 NumAddedComponents = 0;
		for (const UBlueprintGeneratedClass* Class = SkeletonClass; Class; Class = Cast<UBlueprintGeneratedClass>(Class->GetSuperClass()))
		{
			const UBlueprint* Owner = Cast<UBlueprint>(Class->ClassGeneratedBy);
			if (Owner && Owner->SimpleConstructionScript)
			{
				NumAddedComponents += Owner->SimpleConstructionScript->GetAllNodes().Num();
			}
		}
		Context.AddTag(FAssetRegistryTag(TEXT("NumBlueprintComponents"), FString::FromInt(NumAddedComponents), FAssetRegistryTag::TT_Numerical));
	}
}
