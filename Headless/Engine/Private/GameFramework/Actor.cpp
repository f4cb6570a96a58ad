#include "GameFramework/Actor.h"
#include "Components/SceneComponent.h"
#include "UObject/UnrealType.h"
#include "UObject/UObjectHash.h"
#include "Templates/Casts.h"

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

void AActor::GetComponents(TArray<UActorComponent*>& OutComponents, bool bIncludeFromChildActors) const
{
	OutComponents.Reset();
	TArray<UObject*> Inner;
	GetObjectsWithOuter(this, Inner, false);
	for (UObject* Object : Inner)
	{
		if (UActorComponent* Component = Cast<UActorComponent>(Object))
		{
			OutComponents.Add(Component);
		}
	}
}
