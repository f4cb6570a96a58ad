#include "GameFramework/Actor.h"
#include "Components/SceneComponent.h"
#include "UObject/UnrealType.h"

IMPLEMENT_CLASS(AActor,
	UE_NATIVE_PROPERTY(FObjectProperty, RootComponent, CPF_TObjectPtr, USceneComponent::StaticClass());
)

AActor::AActor() = default;

bool AActor::SetRootComponent(USceneComponent* NewRootComponent)
{
	// Only a component of this actor can be its root.
	if (NewRootComponent && NewRootComponent->GetOwner() != this)
	{
		return false;
	}
	RootComponent = NewRootComponent;
	return true;
}
