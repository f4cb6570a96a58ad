#pragma once

#include "CoreMinimal.h"

class FJsonObject;

namespace Calvorn
{
	class FToolResult;
}

/*
 * The ten read tools. Each takes the asset path and, for an item tool, the item's name; it asks
 * FBlueprintReadUtils::ReadBlueprint for the document, puts it under "content" and says in one message
 * whether the item was found. A missing item is a warning, not a failure: the document still says so.
 */

/** read_blueprint_schema: the whole Blueprint, named but not detailed. */
class FBlueprintReadSchemaOperation
{
public:
	static void Execute(const FJsonObject& Json, Calvorn::FToolResult& Result);
};

/** read_blueprint_variable: one variable with its default value, replication and flags. */
class FBlueprintVariableReadOperation
{
public:
	static void Execute(const FJsonObject& Json, Calvorn::FToolResult& Result);
};

/** read_blueprint_component: one component with its class and place in the attachment tree. */
class FBlueprintComponentReadOperation
{
public:
	static void Execute(const FJsonObject& Json, Calvorn::FToolResult& Result);
};

/** read_blueprint_function: one function with its signature and graph. */
class FBlueprintFunctionReadOperation
{
public:
	static void Execute(const FJsonObject& Json, Calvorn::FToolResult& Result);
};

/** read_blueprint_interface: one implemented interface with its graphs. */
class FBlueprintInterfaceReadOperation
{
public:
	static void Execute(const FJsonObject& Json, Calvorn::FToolResult& Result);
};

/** read_blueprint_event: the flow of one event of the event graph, node by node. */
class FBlueprintEventReadOperation
{
public:
	static void Execute(const FJsonObject& Json, Calvorn::FToolResult& Result);
};

/** read_blueprint_timeline: one timeline with its length and playback settings. */
class FBlueprintTimelineReadOperation
{
public:
	static void Execute(const FJsonObject& Json, Calvorn::FToolResult& Result);
};

/** read_blueprint_delegate: one delegate signature graph. */
class FBlueprintDelegateReadOperation
{
public:
	static void Execute(const FJsonObject& Json, Calvorn::FToolResult& Result);
};

/** read_blueprint_macro: one macro graph. */
class FBlueprintMacroReadOperation
{
public:
	static void Execute(const FJsonObject& Json, Calvorn::FToolResult& Result);
};

/** read_blueprint_widget_tree: the widget hierarchy of a Widget Blueprint, with details of named widgets. */
class FWidgetBlueprintWidgetTreeReadOperation
{
public:
	static void Execute(const FJsonObject& Json, Calvorn::FToolResult& Result);
};
