#include "ToolInfo.h"

namespace Calvorn::ToolInfo
{
	const TCHAR* const ToolName_ReadBlueprintSchema = TEXT("read_blueprint_schema");
	const TCHAR* const ToolName_ReadBlueprintVariable = TEXT("read_blueprint_variable");
	const TCHAR* const ToolName_ReadBlueprintComponent = TEXT("read_blueprint_component");
	const TCHAR* const ToolName_ReadBlueprintFunction = TEXT("read_blueprint_function");
	const TCHAR* const ToolName_ReadBlueprintInterface = TEXT("read_blueprint_interface");
	const TCHAR* const ToolName_ReadBlueprintEvent = TEXT("read_blueprint_event");
	const TCHAR* const ToolName_ReadBlueprintTimeline = TEXT("read_blueprint_timeline");
	const TCHAR* const ToolName_ReadBlueprintDelegate = TEXT("read_blueprint_delegate");
	const TCHAR* const ToolName_ReadBlueprintMacro = TEXT("read_blueprint_macro");
	const TCHAR* const ToolName_ReadBlueprintWidgetTree = TEXT("read_blueprint_widget_tree");
	const TCHAR* const ToolName_ModifyBlueprintClassStructure = TEXT("modify_blueprint_class_structure");
	const TCHAR* const ToolName_UIModifyWidgetBP = TEXT("ui_modify_widget_bp");
	const TCHAR* const ToolName_BPPopulateGraph = TEXT("bp_populate_graph");
	const TCHAR* const ToolName_BPCreateGraph = TEXT("bp_create_graph");
	const TCHAR* const ToolName_BPModifyGraphNodes = TEXT("bp_modify_graph_nodes");
	const TCHAR* const ToolName_BPRemoveGraphConnections = TEXT("bp_remove_graph_connections");
	const TCHAR* const ToolName_BPCreateAsset = TEXT("bp_create_asset");
	const TCHAR* const ToolName_DeleteBlueprint = TEXT("delete_blueprint");
	const TCHAR* const ToolName_CompileBlueprint = TEXT("compile_blueprint");

	TArray<FString> GetAllToolNames()
	{
		return {
			ToolName_ReadBlueprintSchema,
			ToolName_ReadBlueprintVariable,
			ToolName_ReadBlueprintComponent,
			ToolName_ReadBlueprintFunction,
			ToolName_ReadBlueprintInterface,
			ToolName_ReadBlueprintEvent,
			ToolName_ReadBlueprintTimeline,
			ToolName_ReadBlueprintDelegate,
			ToolName_ReadBlueprintMacro,
			ToolName_ReadBlueprintWidgetTree,
			ToolName_ModifyBlueprintClassStructure,
			ToolName_UIModifyWidgetBP,
			ToolName_BPPopulateGraph,
			ToolName_BPCreateGraph,
			ToolName_BPModifyGraphNodes,
			ToolName_BPRemoveGraphConnections,
			ToolName_BPCreateAsset,
			ToolName_DeleteBlueprint,
			ToolName_CompileBlueprint,
		};
	}

	const TCHAR* const CategoryName_Blueprint = TEXT("Blueprint");

	const TCHAR* const FieldName_Path = TEXT("path");
	const TCHAR* const FieldName_ReadTool = TEXT("read_tool");
	const TCHAR* const FieldName_GraphName = TEXT("graph_name");
	const TCHAR* const FieldName_EventName = TEXT("event_name");
	const TCHAR* const FieldName_Events = TEXT("events");
	const TCHAR* const FieldName_FloatingNodeName = TEXT("floating_node_name");
	const TCHAR* const FieldName_FunctionName = TEXT("function_name");
	const TCHAR* const FieldName_MacroName = TEXT("macro_name");
	const TCHAR* const FieldName_VariableName = TEXT("variable_name");
	const TCHAR* const FieldName_ComponentName = TEXT("component_name");
	const TCHAR* const FieldName_Components = TEXT("components");
	const TCHAR* const FieldName_InterfaceName = TEXT("interface_name");
	const TCHAR* const FieldName_Interfaces = TEXT("interfaces");
	const TCHAR* const FieldName_DelegateName = TEXT("delegate_name");
	const TCHAR* const FieldName_Delegates = TEXT("delegates");
	const TCHAR* const FieldName_TimelineName = TEXT("timeline_name");
	const TCHAR* const FieldName_Timelines = TEXT("timelines");
	const TCHAR* const FieldName_WidgetName = TEXT("widget_name");
}
