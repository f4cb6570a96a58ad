#pragma once

#include "CoreMinimal.h"
#include "Math/Vector2D.h"

class UClass;
class UEdGraph;
class UEdGraphNode;
class UEdGraphPin;
class UK2Node_VariableGet;
class UK2Node_VariableSet;

/** Creating nodes that the tools need beyond the action menu. */
class CALVORNTOOLKIT_BLUEPRINT_API FBlueprintNodeUtils
{
public:
	/**
	 * A get node of the graph's Blueprint's variable: a component of the construction script, a property of
	 * the generated class (components also by display name), or a member by name. Null when the Blueprint
	 * has no such variable.
	 */
	static UK2Node_VariableGet* CreateVariableGetNode(UEdGraph* Graph, const FString& VariableName, const FVector2D& Position);
	static UK2Node_VariableSet* CreateVariableSetNode(UEdGraph* Graph, const FString& VariableName, const FVector2D& Position);

	/** A get node of another class's property, its target wired to OwnerPin. Null when any input is missing or the class lacks the property. */
	static UK2Node_VariableGet* CreateCrossObjectVariableGetNode(UEdGraph* Graph, const FString& VariableName, UClass* OwnerClass, UEdGraphPin* OwnerPin, const FVector2D& Position);
	static UK2Node_VariableSet* CreateCrossObjectVariableSetNode(UEdGraph* Graph, const FString& VariableName, UClass* OwnerClass, UEdGraphPin* OwnerPin, const FVector2D& Position);
};
