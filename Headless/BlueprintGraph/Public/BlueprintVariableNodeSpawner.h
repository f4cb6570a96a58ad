#pragma once

#include "CoreMinimal.h"
#include "BlueprintFieldNodeSpawner.h"
#include "EdGraph/EdGraphPin.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class FProperty;
class UBlueprint;
class UK2Node_Variable;
struct FBPVariableDescription;

/** Places a get or set node of one member variable. */
class UBlueprintVariableNodeSpawner : public UBlueprintFieldNodeSpawner
{
	DECLARE_CLASS(UBlueprintVariableNodeSpawner, UBlueprintFieldNodeSpawner, CLASS_Transient, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	/** A spawner for a variable of a class (native or compiled Blueprint); null without a property or owner. */
	static UE_API UBlueprintVariableNodeSpawner* CreateFromMemberOrParam(TSubclassOf<UK2Node_Variable> NodeClass, const FProperty* VarProperty, UEdGraph* VarContext = nullptr, UClass* OwnerClass = nullptr, UObject* Outer = nullptr);

	/**
	 * A spawner for a variable a Blueprint declares, usable before the Blueprint's class has the property: the
	 * node refers to the variable by name and guid, as the compiler will.
	 */
	static UE_API UBlueprintVariableNodeSpawner* CreateFromBlueprintVariable(TSubclassOf<UK2Node_Variable> NodeClass, UBlueprint* Blueprint, const FBPVariableDescription& VarDesc, UObject* Outer = nullptr);

	/** The property, when the owner class has it now. */
	UE_API FProperty* GetVarProperty() const;
	FName GetVarName() const { return VarName; }
	const FEdGraphPinType& GetVarType() const { return VarType; }
	/** The Blueprint that declares the variable, for variables made from a description. */
	UBlueprint* GetDeclaringBlueprint() const { return DeclaringBlueprint.Get(); }
	bool IsSetter() const;

	UE_API virtual UClass* GetOwnerClass() const override;
	UE_API virtual UEdGraphNode* Invoke(UEdGraph* ParentGraph, const FBindingSet& Bindings, const FVector2D Location) const override;

private:
	TWeakObjectPtr<UClass> VarOwnerClass;
	TWeakObjectPtr<UBlueprint> DeclaringBlueprint;
	FName VarName;
	FGuid VarGuid;
	FEdGraphPinType VarType;
};

#undef UE_API
