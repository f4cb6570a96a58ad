#include "Components/ActorComponent.h"
#include "Components/SceneComponent.h"
#include "GameFramework/Actor.h"
#include "UObject/UnrealType.h"
#include "EngineReflection.h"

using namespace UE::Engine::Private;

IMPLEMENT_CLASS(UActorComponent)

UActorComponent::UActorComponent() = default;

AActor* UActorComponent::GetOwner() const
{
	return GetTypedOuter<AActor>();
}

IMPLEMENT_CLASS(USceneComponent,
	UE_NATIVE_PROPERTY(FStructProperty, RelativeLocation, CPF_Edit | CPF_BlueprintVisible, TBaseStructure<FVector>::Get());
	UE_NATIVE_PROPERTY(FStructProperty, RelativeRotation, CPF_Edit | CPF_BlueprintVisible, TBaseStructure<FRotator>::Get());
	UE_NATIVE_PROPERTY(FStructProperty, RelativeScale3D, CPF_Edit | CPF_BlueprintVisible, TBaseStructure<FVector>::Get());
	UE_NATIVE_PROPERTY(FBoolProperty, bVisible, CPF_Edit | CPF_BlueprintVisible, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bHiddenInGame, CPF_Edit | CPF_BlueprintVisible, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FObjectProperty, AttachParent, CPF_TObjectPtr, USceneComponent::StaticClass());
	UE_NATIVE_PROPERTY(FNameProperty, AttachSocketName, CPF_None);
	WithObjectElements(UE_NATIVE_PROPERTY(FArrayProperty, AttachChildren, CPF_Transient), USceneComponent::StaticClass());
)

USceneComponent::USceneComponent() = default;

void USceneComponent::SetRelativeLocation(FVector NewLocation)
{
	RelativeLocation = NewLocation;
}

void USceneComponent::SetRelativeRotation(FRotator NewRotation)
{
	RelativeRotation = NewRotation;
}

void USceneComponent::SetRelativeLocationAndRotation(FVector NewLocation, FRotator NewRotation)
{
	RelativeLocation = NewLocation;
	RelativeRotation = NewRotation;
}

void USceneComponent::SetRelativeScale3D(FVector NewScale3D)
{
	RelativeScale3D = NewScale3D;
}

void USceneComponent::SetupAttachment(USceneComponent* InParent, FName InSocketName)
{
	// A component cannot hang under itself or under one of its own children.
	for (USceneComponent* Ancestor = InParent; Ancestor; Ancestor = Ancestor->AttachParent)
	{
		if (Ancestor == this)
		{
			ensureMsgf(false, TEXT("SetupAttachment would make %s its own ancestor"), *GetName());
			return;
		}
	}
	if (AttachParent)
	{
		AttachParent->AttachChildren.Remove(this);
	}
	AttachParent = InParent;
	AttachSocketName = InSocketName;
	if (InParent)
	{
		InParent->AttachChildren.AddUnique(this);
	}
}
