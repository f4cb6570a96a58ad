#pragma once

#include "CoreMinimal.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Templates/Function.h"

class UEdGraph;
class UEdGraphNode;
class UEdGraphPin;
class UClass;

namespace Calvorn
{
	class FToolResult;
}
struct FEdGraphPinType;

/** Helpers the reader files share; not part of the module's interface. */
namespace UE::CalvornBlueprint::ReadPrivate
{
	/**
	 * The document ReadBlueprint prints, as a tree; null after a failure, which is then in Result. For callers
	 * in this module that look into the document they also print, so that they need not parse it back.
	 */
	TSharedPtr<FJsonObject> ReadBlueprintDocument(const TSharedPtr<FJsonObject>& Options, Calvorn::FToolResult& Result);

	/** The request's read tool, or false when the field is missing or not a string. */
	bool TryGetReadTool(const TSharedPtr<FJsonObject>& Options, FString& OutReadTool);

	/** Whether the request's read tool is ToolName (ignoring case); false without a read tool. */
	bool IsReadTool(const TSharedPtr<FJsonObject>& Options, const TCHAR* ToolName);

	/** The request's "finalize_modifications", false when absent or not a bool. */
	bool IsFinalizeRead(const TSharedPtr<FJsonObject>& Options);

	/** The word a status entry carries for an item asked for and not found. */
	const TCHAR* GetMissingStatusWord(bool bFinalizeRead);

	/** "Missing required field '<Field>'". */
	FString MissingFieldMessage(const TCHAR* FieldName);

	/**
	 * The pin type in the shared pin type JSON of every tool. Inside an FDocumentScope, equal types share one
	 * object: a document names a handful of types across thousands of pins, and it is printed, not edited.
	 */
	TSharedPtr<FJsonObject> PinTypeToJson(const FEdGraphPinType& PinType);

	/** Marks the building of one document on this thread; what it computes is shared until it ends. Nests. */
	class FDocumentScope
	{
	public:
		FDocumentScope();
		~FDocumentScope();
		FDocumentScope(const FDocumentScope&) = delete;
		FDocumentScope& operator=(const FDocumentScope&) = delete;

	private:
		struct FDocumentCache* PreviousCache;
		struct FDocumentCache* OwnCache;
	};

	/**
	 * The values a document repeats, each made once per document: a read of a large graph names the same
	 * pin names, types, titles and guids tens of thousands of times. Without an FDocumentScope every call
	 * makes a fresh value, so callers need not care whether one is open.
	 */
	namespace DocumentValues
	{
		/** The pin type object, as a value. */
		TSharedPtr<FJsonValue> PinType(const FEdGraphPinType& PinType);

		/** The name's text. */
		TSharedPtr<FJsonValue> Name(FName Name);

		/** "Input" or "Output". */
		TSharedPtr<FJsonValue> Direction(bool bInput);

		/** The node's menu title. */
		TSharedPtr<FJsonValue> MenuTitle(const UEdGraphNode* Node);

		/** The node's seven-character guid. */
		TSharedPtr<FJsonValue> ShortGuid(const UEdGraphNode* Node);

		/** A text that nodes of one kind repeat, such as a title or a category; equal texts share a value. */
		TSharedPtr<FJsonValue> Text(FString&& Text);

		/** A text with no reuse to expect; the empty text is shared. */
		TSharedPtr<FJsonValue> String(const FString& Text);

		/**
		 * The "properties" of a call node, as Make writes them. Inside an FDocumentScope, calls that print the same
		 * function name, class name and purity share one entry: a graph calls a few functions many times over.
		 */
		TSharedPtr<FJsonValue> CallProperties(FName FunctionName, const UClass* FunctionClass, bool bPure, TFunctionRef<TSharedPtr<FJsonObject>()> Make);

		/**
		 * The pin as its "pins" entry. Inside an FDocumentScope, a pin without links shares its entry with every
		 * pin alike in name, value, direction and type, and a link's entry naming a pin is made once.
		 */
		TSharedPtr<FJsonValue> Pin(const UEdGraphPin& Pin);
	}

	/** The name of the graph's schema class, or "Unknown" when the graph has none. */
	FString GetSchemaClassName(const UEdGraph* Graph);

	/** The node's title of that kind, as text. */
	FString GetNodeTitleString(const UEdGraphNode* Node, int32 TitleType);

	/** The node's menu title; asked once per node inside an FDocumentScope, however many links name it. */
	FString GetMenuTitle(const UEdGraphNode* Node);

	/** Reads a node and appends its "pins", as both the graph and the event flow readers write nodes. */
	TSharedPtr<FJsonObject> ReadNodeWithPins(const UEdGraphNode* Node, const TSharedPtr<FJsonObject>& Options, int32 Depth, TSet<const UEdGraph*>& VisitedGraphs, const TSet<const UEdGraphNode*>* FlowNodes);

	/**
	 * The four keys of a graph a node owns ("bound_graph_name", "bound_graph_class", "bound_graph",
	 * "bound_graph_depth"), read one level below the node; nothing for a null graph.
	 */
	void WriteBoundGraphBlock(FJsonObject& Info, const UEdGraph* BoundGraph, const TSharedPtr<FJsonObject>& Options, int32 Depth, const TSet<const UEdGraph*>& VisitedGraphs);

	/** A read of a nested graph one level below Depth, with its own copy of the path. */
	TSharedPtr<FJsonObject> ReadNestedGraph(const UEdGraph* Graph, const TSharedPtr<FJsonObject>& Options, int32 Depth, const TSet<const UEdGraph*>& VisitedGraphs);

	/** The "properties" of state machines, states, conduits, aliases and transitions; false for any other node. */
	bool WriteAnimationNodeProperties(FJsonObject& Properties, const UEdGraphNode* Node, const TSharedPtr<FJsonObject>& Options, int32 Depth, TSet<const UEdGraph*>& VisitedGraphs);

	/** "state_machine_info" of a state machine graph; nothing for any other graph. */
	void WriteStateMachineGraphInfo(FJsonObject& GraphObject, const UEdGraph* Graph);

	inline TSharedPtr<FJsonValue> MakeValue(const TSharedPtr<FJsonObject>& Object)
	{
		return MakeShared<FJsonValueObject>(Object);
	}

	inline TSharedPtr<FJsonValue> MakeValue(const FString& Text)
	{
		return MakeShared<FJsonValueString>(Text);
	}
}
