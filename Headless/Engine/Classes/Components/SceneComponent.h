#pragma once

#include "CoreMinimal.h"
#include "Math/Rotator.h"
#include "Math/Vector.h"
#include "Components/ActorComponent.h"

/** A component with a transform, attachable to another scene component. */
class USceneComponent : public UActorComponent
{
	DECLARE_CLASS(USceneComponent, UActorComponent, CLASS_None, CASTCLASS_None, TEXT("/Script/Engine"), ENGINE_API)

public:
	ENGINE_API USceneComponent();

	FVector RelativeLocation = FVector::ZeroVector;
	FRotator RelativeRotation = FRotator::ZeroRotator;
	FVector RelativeScale3D = FVector(1.0, 1.0, 1.0);
	bool bVisible = true;
	bool bHiddenInGame = false;

	const FVector& GetRelativeLocation() const { return RelativeLocation; }
	const FRotator& GetRelativeRotation() const { return RelativeRotation; }
	const FVector& GetRelativeScale3D() const { return RelativeScale3D; }
	ENGINE_API void SetRelativeLocation(FVector NewLocation);
	ENGINE_API void SetRelativeRotation(FRotator NewRotation);
	ENGINE_API void SetRelativeLocationAndRotation(FVector NewLocation, FRotator NewRotation);
	ENGINE_API void SetRelativeScale3D(FVector NewScale3D);

	/** Records the parent to attach to when the component is registered (a constructor-time attachment). */
	ENGINE_API void SetupAttachment(USceneComponent* InParent, FName InSocketName = NAME_None);
	USceneComponent* GetAttachParent() const { return AttachParent; }
	FName GetAttachSocketName() const { return AttachSocketName; }
	const TArray<TObjectPtr<USceneComponent>>& GetAttachChildren() const { return AttachChildren; }

	TObjectPtr<USceneComponent> AttachParent;
	FName AttachSocketName;
	TArray<TObjectPtr<USceneComponent>> AttachChildren;
};
