#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"
#include "UObject/ObjectPtr.h"

class USceneComponent;
class UActorComponent;

/** An object that can be placed in a level. The catalogue adds the engine's functions and properties. */
class AActor : public UObject
{
	DECLARE_CLASS(AActor, UObject, CLASS_None, CASTCLASS_None, TEXT("/Script/Engine"), ENGINE_API)

public:
	ENGINE_API AActor();

	TObjectPtr<USceneComponent> RootComponent;

	USceneComponent* GetRootComponent() const { return RootComponent; }
	ENGINE_API bool SetRootComponent(USceneComponent* NewRootComponent);

	/**
	 * The components the actor owns, in the order they were made. Headless actors keep no component list: an actor's
	 * components are the components whose outer it is (its default subobjects, for a class default object).
	 */
	ENGINE_API void GetComponents(TArray<UActorComponent*>& OutComponents, bool bIncludeFromChildActors = false) const;
};
