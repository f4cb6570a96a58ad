#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"
#include "UObject/ObjectPtr.h"

class AActor;

/** A reusable piece of behaviour added to an actor. The catalogue adds the engine's functions and properties. */
class UActorComponent : public UObject
{
	DECLARE_CLASS(UActorComponent, UObject, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/Engine"), ENGINE_API)

public:
	ENGINE_API UActorComponent();

	/** The actor this component belongs to: the first actor among its outers. */
	ENGINE_API AActor* GetOwner() const;

	/** Whether the component is running; templates and default objects never are. */
	bool IsActive() const { return bIsActive; }
	void SetActiveFlag(const bool bNewIsActive) { bIsActive = bNewIsActive; }

private:
	bool bIsActive = false;
};
