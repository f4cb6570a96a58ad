#pragma once

#include "CoreMinimal.h"
#include "UObject/Class.h"
#include "UObject/ObjectMacros.h"
#include "UObject/ObjectPtr.h"

class USimpleConstructionScript;
class UTimelineTemplate;

/** The class a Blueprint compiles into. */
class UBlueprintGeneratedClass : public UClass
{
	DECLARE_CLASS(UBlueprintGeneratedClass, UClass, CLASS_None, CASTCLASS_None, TEXT("/Script/Engine"), ENGINE_API)

public:
	ENGINE_API UBlueprintGeneratedClass();

	/** The Blueprint this class was compiled from. */
	TObjectPtr<UObject> ClassGeneratedBy;
	TObjectPtr<USimpleConstructionScript> SimpleConstructionScript;
	TArray<TObjectPtr<UTimelineTemplate>> Timelines;
	int32 NumReplicatedProperties = 0;
	bool bHasNativizedParent = false;

	/** The Blueprint-generated classes from this one up to the first native class, this one first. True when all were generated from Blueprints. */
	ENGINE_API static bool GetGeneratedClassesHierarchy(const UClass* InClass, TArray<const UBlueprintGeneratedClass*>& OutBPGClasses);
};
