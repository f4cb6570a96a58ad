#pragma once

#include "CoreMinimal.h"
#include "K2Node_ConstructObjectFromClass.h"

#define UE_API BLUEPRINTGRAPH_API

/** "Spawn Actor from Class" / "SpawnActor <Class>": spawns an actor at a transform. */
class UK2Node_SpawnActorFromClass : public UK2Node_ConstructObjectFromClass
{
	DECLARE_CLASS(UK2Node_SpawnActorFromClass, UK2Node_ConstructObjectFromClass, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_SpawnActorFromClass();

	UE_API virtual void AllocateDefaultPins() override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual void PostPlacedNewNode() override;
	UE_API virtual bool IsSpawnVarPin(UEdGraphPin* Pin) const override;

	UE_API UEdGraphPin* GetSpawnTransformPin() const;
	UE_API UEdGraphPin* GetCollisionHandlingOverridePin() const;
	UE_API UEdGraphPin* GetScaleMethodPin() const;
	UE_API UEdGraphPin* GetOwnerPin() const;

protected:
	UE_API virtual UClass* GetClassPinBaseClass() const override;
};

#undef UE_API
