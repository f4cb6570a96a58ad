// Utility actions: self, custom events, create event, arrays and reroute nodes.

#include "BlueprintActionDatabaseFamilies.h"
#include "BlueprintActionDatabaseRegistrar.h"
#include "BlueprintEventNodeSpawner.h"
#include "BlueprintNodeSpawner.h"
#include "K2Node_CreateDelegate.h"
#include "K2Node_CustomEvent.h"
#include "K2Node_GetArrayItem.h"
#include "K2Node_Knot.h"
#include "K2Node_MakeArray.h"
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
	}
}
