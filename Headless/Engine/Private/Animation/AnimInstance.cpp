#include "Animation/AnimInstance.h"
#include "Animation/AnimBlueprint.h"
#include "Kismet/BlueprintFunctionLibrary.h"
#include "UObject/UnrealType.h"

IMPLEMENT_CLASS(UAnimInstance)

UAnimInstance::UAnimInstance() = default;

IMPLEMENT_CLASS(UAnimBlueprint,
	UE_NATIVE_PROPERTY(FBoolProperty, bIsTemplate, CPF_None, 0, (uint32)sizeof(bool), true);
)

UAnimBlueprint::UAnimBlueprint() = default;

IMPLEMENT_CLASS(UBlueprintFunctionLibrary)
