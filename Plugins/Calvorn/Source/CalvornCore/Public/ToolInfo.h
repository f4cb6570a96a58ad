#pragma once

#include "CoreMinimal.h"

/**
 * Names shared by every module that speaks the tool protocol: the tools, their category and the JSON
 * keys that more than one tool reads or writes. One definition each, so a renamed key cannot drift
 * between the tool that writes it and the reader that expects it.
 */
namespace Calvorn::ToolInfo
{
	// ---- Tools, in the order the Blueprint module registers them --------------------------------

	extern CALVORNCORE_API const TCHAR* const ToolName_ReadBlueprintSchema;          // "read_blueprint_schema"
	extern CALVORNCORE_API const TCHAR* const ToolName_ReadBlueprintVariable;        // "read_blueprint_variable"
	extern CALVORNCORE_API const TCHAR* const ToolName_ReadBlueprintComponent;       // "read_blueprint_component"
	extern CALVORNCORE_API const TCHAR* const ToolName_ReadBlueprintFunction;        // "read_blueprint_function"
	extern CALVORNCORE_API const TCHAR* const ToolName_ReadBlueprintInterface;       // "read_blueprint_interface"
	extern CALVORNCORE_API const TCHAR* const ToolName_ReadBlueprintEvent;           // "read_blueprint_event"
	extern CALVORNCORE_API const TCHAR* const ToolName_ReadBlueprintTimeline;        // "read_blueprint_timeline"
	extern CALVORNCORE_API const TCHAR* const ToolName_ReadBlueprintDelegate;        // "read_blueprint_delegate"
	extern CALVORNCORE_API const TCHAR* const ToolName_ReadBlueprintMacro;           // "read_blueprint_macro"
	extern CALVORNCORE_API const TCHAR* const ToolName_ReadBlueprintWidgetTree;      // "read_blueprint_widget_tree"
	extern CALVORNCORE_API const TCHAR* const ToolName_ModifyBlueprintClassStructure; // "modify_blueprint_class_structure"
	extern CALVORNCORE_API const TCHAR* const ToolName_UIModifyWidgetBP;             // "ui_modify_widget_bp"
	extern CALVORNCORE_API const TCHAR* const ToolName_BPPopulateGraph;              // "bp_populate_graph"
	extern CALVORNCORE_API const TCHAR* const ToolName_BPCreateGraph;                // "bp_create_graph"
	extern CALVORNCORE_API const TCHAR* const ToolName_BPModifyGraphNodes;           // "bp_modify_graph_nodes"
	extern CALVORNCORE_API const TCHAR* const ToolName_BPRemoveGraphConnections;     // "bp_remove_graph_connections"
	extern CALVORNCORE_API const TCHAR* const ToolName_BPCreateAsset;                // "bp_create_asset"
	extern CALVORNCORE_API const TCHAR* const ToolName_DeleteBlueprint;              // "delete_blueprint"
	extern CALVORNCORE_API const TCHAR* const ToolName_CompileBlueprint;             // "compile_blueprint"

	/** Every tool name above, in registration order. */
	[[nodiscard]] CALVORNCORE_API TArray<FString> GetAllToolNames();

	// ---- Categories -----------------------------------------------------------------------------

	/** Category of every Blueprint tool; also the "data_type" word of their metadata. */
	extern CALVORNCORE_API const TCHAR* const CategoryName_Blueprint;                // "Blueprint"

	// ---- Request and read-back fields -----------------------------------------------------------

	extern CALVORNCORE_API const TCHAR* const FieldName_Path;                        // "path"
	extern CALVORNCORE_API const TCHAR* const FieldName_ReadTool;                    // "read_tool"
	extern CALVORNCORE_API const TCHAR* const FieldName_GraphName;                   // "graph_name"
	extern CALVORNCORE_API const TCHAR* const FieldName_EventName;                   // "event_name"
	extern CALVORNCORE_API const TCHAR* const FieldName_Events;                      // "events"
	extern CALVORNCORE_API const TCHAR* const FieldName_FloatingNodeName;            // "floating_node_name"
	extern CALVORNCORE_API const TCHAR* const FieldName_FunctionName;                // "function_name"
	extern CALVORNCORE_API const TCHAR* const FieldName_MacroName;                   // "macro_name"
	extern CALVORNCORE_API const TCHAR* const FieldName_VariableName;                // "variable_name"
	extern CALVORNCORE_API const TCHAR* const FieldName_ComponentName;               // "component_name"
	extern CALVORNCORE_API const TCHAR* const FieldName_Components;                  // "components"
	extern CALVORNCORE_API const TCHAR* const FieldName_InterfaceName;               // "interface_name"
	extern CALVORNCORE_API const TCHAR* const FieldName_Interfaces;                  // "interfaces"
	extern CALVORNCORE_API const TCHAR* const FieldName_DelegateName;                // "delegate_name"
	extern CALVORNCORE_API const TCHAR* const FieldName_Delegates;                   // "delegates"
	extern CALVORNCORE_API const TCHAR* const FieldName_TimelineName;                // "timeline_name"
	extern CALVORNCORE_API const TCHAR* const FieldName_Timelines;                   // "timelines"
	extern CALVORNCORE_API const TCHAR* const FieldName_WidgetName;                  // "widget_name"
}
