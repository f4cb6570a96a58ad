#include "CalvornToolkitBlueprintModule.h"

#include "BlueprintReadUtils.h"
#include "CalvornToolkitModule.h"
#include "Dom/JsonObject.h"
#include "IToolExecutor.h"
#include "ModificationReadRegistry.h"
#include "Modules/ModuleManager.h"
#include "OperationToolCommand.h"
#include "ToolInfo.h"
#include "ToolResult.h"

#include "Operations/BlueprintCompileOperation.h"
#include "Operations/BlueprintCreateOperation.h"
#include "Operations/BlueprintGraphCreateOperation.h"
#include "Operations/BlueprintGraphModifyOperation.h"
#include "Operations/BlueprintReadOperation.h"
#include "Operations/BlueprintRemoveOperation.h"

namespace
{
	using namespace Calvorn;

	/** What a read tool's read-back callback hands the request to, once it has named the tool in it. */
	using FReadEntry = FString (*)(TSharedPtr<FJsonObject>, FToolResult&);

	/** One tool of the catalogue. */
	struct FToolRow
	{
		const TCHAR* Name = nullptr;
		/** "read", "modify", "create", "delete" or "compile": the metadata's operation_type. */
		const TCHAR* OperationType = nullptr;
		/** The metadata's sub_operation; read tools only. */
		const TCHAR* SubOperation = nullptr;
		const TCHAR* Description = nullptr;
		TSharedPtr<ITool> (*MakeAdapter)(FString Schema, FString Description, FString Metadata) = nullptr;
		/** Read tools: the reader behind the read-back callback. Null for the others. */
		FReadEntry ReadEntry = nullptr;

		bool IsReadTool() const { return SubOperation != nullptr; }
	};

	template <typename OperationType>
	TSharedPtr<ITool> MakeOperationAdapter(FString Schema, FString Description, FString Metadata)
	{
		return MakeShared<TOperationToolCommand<OperationType>>(MoveTemp(Schema), MoveTemp(Description), MoveTemp(Metadata));
	}

	/** A read tool: its operation answers calls, and Reader answers read-backs of other tools' changes. */
	template <typename OperationType>
	FToolRow ReadRow(const TCHAR* Name, const TCHAR* SubOperation, const TCHAR* Description, FReadEntry Reader)
	{
		return FToolRow{Name, TEXT("read"), SubOperation, Description, &MakeOperationAdapter<OperationType>, Reader};
	}

	/** A tool that changes assets; OperationType is the metadata's word for what it does. */
	template <typename OperationType>
	FToolRow ChangeRow(const TCHAR* Name, const TCHAR* MetadataOperationType, const TCHAR* Description)
	{
		return FToolRow{Name, MetadataOperationType, nullptr, Description, &MakeOperationAdapter<OperationType>, nullptr};
	}

	/**
	 * The tools, in the order they register. A tool joins this table when its operation exists, and
	 * only then: a client never sees a tool that cannot do what it says.
	 */
	const TArray<FToolRow>& GetToolCatalogue()
	{
		static const TArray<FToolRow> Rows = {
			ReadRow<FBlueprintReadSchemaOperation>(ToolInfo::ToolName_ReadBlueprintSchema, TEXT("schema"),
				TEXT("Read comprehensive Blueprint schema including variables with types, components with classes, functions with signatures, interfaces with functions, event graphs with event nodes and signatures, timelines, delegates with parameters, and tags"), &FBlueprintReadUtils::ReadBlueprint),
			ReadRow<FBlueprintVariableReadOperation>(ToolInfo::ToolName_ReadBlueprintVariable, TEXT("variable"),
				TEXT("Read a specific Blueprint variable with full details including type, default value, category, replication settings, and metadata"), &FBlueprintReadUtils::ReadBlueprint),
			ReadRow<FBlueprintComponentReadOperation>(ToolInfo::ToolName_ReadBlueprintComponent, TEXT("component"),
				TEXT("Read a specific Blueprint component with full details including class, parent component, relative transform (location, rotation, scale), and hierarchy"), &FBlueprintReadUtils::ReadBlueprint),
			ReadRow<FBlueprintFunctionReadOperation>(ToolInfo::ToolName_ReadBlueprintFunction, TEXT("function"),
				TEXT("Read a specific Blueprint function with full details including inputs, outputs, category, access specifier, and metadata"), &FBlueprintReadUtils::ReadBlueprint),
			ReadRow<FBlueprintInterfaceReadOperation>(ToolInfo::ToolName_ReadBlueprintInterface, TEXT("interface"),
				TEXT("Read a specific Blueprint interface with full details including interface name, class path, and complete graph serialization with nodes and connections"), &FBlueprintReadUtils::ReadBlueprint),
			ReadRow<FBlueprintEventReadOperation>(ToolInfo::ToolName_ReadBlueprintEvent, TEXT("event"),
				TEXT("Read a specific Blueprint event from an event graph with full details including event node, inputs, outputs, and connections"), &FBlueprintReadUtils::ReadBlueprint),
			ReadRow<FBlueprintTimelineReadOperation>(ToolInfo::ToolName_ReadBlueprintTimeline, TEXT("timeline"),
				TEXT("Read a specific Blueprint timeline with comprehensive details including all track types (float, vector, event, color) with curve paths, external curve names, length mode, and playback settings"), &FBlueprintReadUtils::ReadBlueprint),
			ReadRow<FBlueprintDelegateReadOperation>(ToolInfo::ToolName_ReadBlueprintDelegate, TEXT("delegate"),
				TEXT("Read a specific Blueprint delegate graph with full details including delegate name and parameter signatures"), &FBlueprintReadUtils::ReadBlueprint),
			ReadRow<FBlueprintMacroReadOperation>(ToolInfo::ToolName_ReadBlueprintMacro, TEXT("macro"),
				TEXT("Read a specific Blueprint macro with full details including macro graph with nodes, connections, inputs, and outputs"), &FBlueprintReadUtils::ReadBlueprint),
			ReadRow<FWidgetBlueprintWidgetTreeReadOperation>(ToolInfo::ToolName_ReadBlueprintWidgetTree, TEXT("widget_tree"),
				TEXT("Read Widget Blueprint widget tree. Returns widget_hierarchy (lightweight skeleton with names, classes, is_variable, and children structure) and optionally widgets dict with full details (properties, slots) for specific widget(s) if name parameter is provided."), &FBlueprintReadUtils::ReadBlueprint),
			ChangeRow<FBlueprintGraphModifyOperation>(ToolInfo::ToolName_BPPopulateGraph, TEXT("modify"),
				TEXT("[INTERNAL TOOL] Create/modify Blueprint graph nodes with waterfall spawning (deterministic → CAM context → CAM global). For manual testing via console commands and automation tests. Supports target_class/target_function for exact node creation, class_name/menu_title/menu_category for CAM filtering.")),
			ChangeRow<FBlueprintGraphCreateOperation>(ToolInfo::ToolName_BPCreateGraph, TEXT("modify"),
				TEXT("[INTERNAL TOOL] Create or configure Blueprint functions and delegate signatures (no node operations). Accepts batched 'functions' array with optional parameters/return_type metadata. Use with bp_populate_graph for node/connection workflows to maintain separation of concerns.")),
			ChangeRow<FBlueprintCreateOperation>(ToolInfo::ToolName_BPCreateAsset, TEXT("create"),
				TEXT("Creates a new Unreal Engine Blueprint, Animation Blueprint, Widget Blueprint, or Behavior Tree Task asset at the specified path with the specified parent class")),
			ChangeRow<FBlueprintRemoveOperation>(ToolInfo::ToolName_DeleteBlueprint, TEXT("delete"),
				TEXT("Remove a Blueprint asset from the project")),
			ChangeRow<FBlueprintCompileOperation>(ToolInfo::ToolName_CompileBlueprint, TEXT("compile"),
				TEXT("Compile one or more Blueprint assets. Takes an array of Blueprint paths and compiles each Blueprint, reporting compilation results including errors and warnings.")),
		};
		return Rows;
	}

	/** The metadata text of a row, spaced exactly as clients of the protocol have always received it. */
	FString BuildMetadata(const FToolRow& Row)
	{
		if (Row.IsReadTool())
		{
			return FString::Printf(TEXT("{\"operation_type\": \"%s\",\"data_type\": \"%s\",\"sub_operation\": \"%s\"}"),
				Row.OperationType, ToolInfo::CategoryName_Blueprint, Row.SubOperation);
		}
		return FString::Printf(TEXT("{\"operation_type\": \"%s\",\"data_type\": \"%s\"}"), Row.OperationType, ToolInfo::CategoryName_Blueprint);
	}
}

void FCalvornToolkitBlueprintModule::StartupModule()
{
	const TSharedPtr<IToolExecutor> Executor = FCalvornToolkitModule::GetToolExecutor();
	if (!Executor.IsValid())
	{
		return;
	}

	const TArray<FToolRow>& Catalogue = GetToolCatalogue();
	for (const FToolRow& Row : Catalogue)
	{
		const TSharedPtr<ITool> Tool = Row.MakeAdapter(Row.IsReadTool() ? FString(TEXT("{}")) : FString(), Row.Description, BuildMetadata(Row));
		Tools.Add(Tool);
		ToolNames.Add(Row.Name);
		// A name the executor refuses (one another module holds already) is passed over without a word:
		// the executor keeps the tool it has, and this module must not unregister it later.
		if (Executor->RegisterTool(Row.Name, Tool))
		{
			RegisteredToolNames.Add(Row.Name);
		}
	}

	FModificationReadRegistry& ReadRegistry = FModificationReadRegistry::Get();
	for (const FToolRow& Row : Catalogue)
	{
		if (!Row.IsReadTool())
		{
			continue;
		}
		const FString ToolName = Row.Name;
		const FReadEntry Reader = Row.ReadEntry;
		ReadRegistry.RegisterReadTool(ToolName, ToolInfo::CategoryName_Blueprint,
			[ToolName, Reader](TSharedPtr<FJsonObject> Json, FToolResult& Result) -> FString
			{
				check(Json.IsValid());
				// The reader dispatches on this field, so it always names the tool that was asked for.
				Json->SetStringField(ToolInfo::FieldName_ReadTool, ToolName);
				return Reader(Json, Result);
			});
	}
}

void FCalvornToolkitBlueprintModule::ShutdownModule()
{
	const TSharedPtr<IToolExecutor> Executor = FCalvornToolkitModule::GetToolExecutor();
	if (!Executor.IsValid())
	{
		return;
	}
	for (const FString& Name : RegisteredToolNames)
	{
		Executor->UnregisterTool(Name);
	}
	FModificationReadRegistry& ReadRegistry = FModificationReadRegistry::Get();
	for (const FToolRow& Row : GetToolCatalogue())
	{
		if (Row.IsReadTool())
		{
			ReadRegistry.UnregisterReadTool(Row.Name);
		}
	}
	for (TSharedPtr<ITool>& Tool : Tools)
	{
		Tool.Reset();
	}
	Tools.Reset();
	ToolNames.Reset();
	RegisteredToolNames.Reset();
}

TSharedPtr<Calvorn::ITool> FCalvornToolkitBlueprintModule::FindToolAdapter(const FString& ToolName) const
{
	const int32 Index = ToolNames.IndexOfByKey(ToolName);
	return Tools.IsValidIndex(Index) ? Tools[Index] : TSharedPtr<Calvorn::ITool>();
}

TArray<FString> FCalvornToolkitBlueprintModule::GetProvidedToolNames()
{
	TArray<FString> Names;
	for (const FToolRow& Row : GetToolCatalogue())
	{
		Names.Add(Row.Name);
	}
	return Names;
}

TArray<FString> FCalvornToolkitBlueprintModule::GetProvidedReadToolNames()
{
	TArray<FString> Names;
	for (const FToolRow& Row : GetToolCatalogue())
	{
		if (Row.IsReadTool())
		{
			Names.Add(Row.Name);
		}
	}
	return Names;
}

IMPLEMENT_MODULE(FCalvornToolkitBlueprintModule, CalvornToolkit_Blueprint)
