#include "Engine/BlueprintGeneratedClass.h"
#include "Engine/SimpleConstructionScript.h"
#include "Engine/TimelineTemplate.h"
#include "UObject/UnrealType.h"
#include "Templates/Casts.h"
#include "EngineReflection.h"

using namespace UE::Engine::Private;

IMPLEMENT_CLASS(UBlueprintGeneratedClass,
	UE_NATIVE_PROPERTY(FObjectProperty, ClassGeneratedBy, CPF_TObjectPtr, UObject::StaticClass());
	UE_NATIVE_PROPERTY(FObjectProperty, SimpleConstructionScript, CPF_TObjectPtr, USimpleConstructionScript::StaticClass());
	WithObjectElements(UE_NATIVE_PROPERTY(FArrayProperty, Timelines, CPF_None), UTimelineTemplate::StaticClass());
	UE_NATIVE_PROPERTY(FIntProperty, NumReplicatedProperties, CPF_None);
)

UBlueprintGeneratedClass::UBlueprintGeneratedClass() = default;

bool UBlueprintGeneratedClass::GetGeneratedClassesHierarchy(const UClass* InClass, TArray<const UBlueprintGeneratedClass*>& OutBPGClasses)
{
	OutBPGClasses.Empty();
	for (const UClass* Class = InClass; Class; Class = Class->GetSuperClass())
	{
		const UBlueprintGeneratedClass* Generated = Cast<UBlueprintGeneratedClass>(Class);
		if (!Generated)
		{
			return false;
		}
		OutBPGClasses.Add(Generated);
	}
	return true;
}
