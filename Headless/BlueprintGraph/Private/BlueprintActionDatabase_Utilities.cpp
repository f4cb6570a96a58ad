// Utility actions: self, custom events, create event, arrays, reroute nodes and math expressions.

#include "BlueprintActionDatabaseFamilies.h"
#include "BlueprintActionDatabaseRegistrar.h"
#include "BlueprintEventNodeSpawner.h"
#include "BlueprintNodeSpawner.h"
#include "K2Node_CreateDelegate.h"
#include "K2Node_CustomEvent.h"
#include "K2Node_GetArrayItem.h"
#include "K2Node_Knot.h"
#include "K2Node_MakeArray.h"
#include "K2Node_MathExpression.h"
#include "K2Node_Self.h"

namespace UE::BlueprintGraph::ActionDatabase
{
	void RegisterUtilityActions(FBlueprintActionDatabaseRegistrar& Registrar)
	{
		Registrar.AddBlueprintAction(UK2Node_Self::StaticClass(), UBlueprintNodeSpawner::Create<UK2Node_Self>());
		Registrar.AddBlueprintAction(UK2Node_CustomEvent::StaticClass(), UBlueprintEventNodeSpawner::Create(UK2Node_CustomEvent::StaticClass(), NAME_None));
		Registrar.AddBlueprintAction(UK2Node_CreateDelegate::StaticClass(), UBlueprintNodeSpawner::Create<UK2Node_CreateDelegate>());
		Registrar.AddBlueprintAction(UK2Node_MakeArray::StaticClass(), UBlueprintNodeSpawner::Create<UK2Node_MakeArray>());
		Registrar.AddBlueprintAction(UK2Node_GetArrayItem::StaticClass(), UBlueprintNodeSpawner::Create<UK2Node_GetArrayItem>());
		Registrar.AddBlueprintAction(UK2Node_Knot::StaticClass(), UBlueprintNodeSpawner::Create<UK2Node_Knot>());
		// "Add Math Expression...": titled, filed and searched by what the node says of itself before it has a formula.
		Registrar.AddBlueprintAction(UK2Node_MathExpression::StaticClass(), UBlueprintNodeSpawner::Create<UK2Node_MathExpression>());
	}
}
