#pragma once

#include "CoreMinimal.h"
#include "Containers/Set.h"
#include "Misc/Guid.h"

class FJsonObject;
class UBlueprint;
class UEdGraph;
class UEdGraphNode;
class UEdGraphPin;
class UPanelSlot;
class UWidget;
class UWidgetBlueprint;

namespace Calvorn
{
	class FToolResult;
}

/**
 * The one reader of Blueprints. Every read tool, and every read-back after a change, goes through
 * ReadBlueprint; the graph, node, pin and event flow readers below are the only writers of those JSON
 * shapes, so a client sees one format wherever a node or pin turns up.
 *
 * What a read holds is chosen by the request's read tool field: a schema read names things, the item
 * tools describe their items in depth. A nested graph that cannot be read is data (an "error" key in its
 * place); only a failure of the request itself goes to the result, and the text is then "{}".
 */
class CALVORNTOOLKIT_BLUEPRINT_API FBlueprintReadUtils
{
public:
	/** The deepest graph nesting that is read; a graph reached at a deeper level stands as an error object. */
	static constexpr int32 MaxGraphReadDepth = 10;

	/** Name of the flow that gathers the nodes no event reaches; always the last flow of an event graph. */
	static const TCHAR* const UnattachedFlowName;

	// ---- Blueprint -------------------------------------------------------------------------------

	/**
	 * Reads the Blueprint at the request's "path" as a JSON document, whose sections depend on the
	 * request's read tool. Items asked for by name that are missing come back as status entries
	 * ("not_found", or "deleted" when the request is a read-back of a change). Returns "{}" with an
	 * error in Result when the request or the asset is unusable.
	 */
	static FString ReadBlueprint(TSharedPtr<FJsonObject> Options, Calvorn::FToolResult& Result);

	// ---- Graphs, nodes and pins ------------------------------------------------------------------

	/** Reads a graph from the top: depth 0, nothing visited yet. */
	static TSharedPtr<FJsonObject> ReadEdGraph(const UEdGraph* Graph, TSharedPtr<FJsonObject> Options);

	/**
	 * Reads a graph at a nesting depth. VisitedGraphs holds the graphs on the path from the root to this
	 * call, so a graph that contains itself is refused where it recurs while a graph bound in two places
	 * is read in both. Never null: refusals are error objects.
	 */
	static TSharedPtr<FJsonObject> ReadEdGraph(const UEdGraph* Graph, TSharedPtr<FJsonObject> Options, int32 Depth, TSet<const UEdGraph*>& VisitedGraphs);

	/** The node object without its "pins" (the callers add them); null for a null node. Graphs the node owns are read at Depth + 1. */
	static TSharedPtr<FJsonObject> ReadNodeInfo(const UEdGraphNode* Node, TSharedPtr<FJsonObject> Options, int32 Depth, TSet<const UEdGraph*>& VisitedGraphs);

	/** The pin object; null for a null pin. Nodes is accepted for the event flow reader's sake and does not change the result. */
	static TSharedPtr<FJsonObject> ReadPinInfo(const UEdGraphPin* Pin, const TSet<const UEdGraphNode*>* Nodes);

	/** Everything after the first "Target is " in Title (ignoring case), or empty when the phrase is absent. */
	static void ExtractTitleTargetClass(const FString& Title, FString& OutClass);

	/** The first 7 digits of a guid's 32-digit form: how every node is named in read JSON and addressed by edits. */
	static FString GetShortGuid(const FGuid& Guid);

	// ---- Event flows -----------------------------------------------------------------------------

	/**
	 * Reads an event graph as the flows that start at its events, followed by the nodes no event reaches.
	 * With bFilterByNodes, only flows holding a node whose short guid is in NodeGuids are written.
	 */
	static TSharedPtr<FJsonObject> ReadEventGraph(const UEdGraph* Graph, TSharedPtr<FJsonObject> Options, bool bFilterByNodes, const TSet<FString>& NodeGuids);

	/**
	 * The event nodes of the node's graph whose flow (as ReadEventGraph walks it) takes in the node, in graph
	 * order; an event node itself is reached by its own flow. Empty for a node no event reaches.
	 */
	static TArray<const UEdGraphNode*> FindEventsReachingNode(const UEdGraphNode* Node);

	// ---- Widget trees ----------------------------------------------------------------------------

	/** {"root_widget": <node>} for the Blueprint's widget tree, the key left out when the tree has no root; null without a tree. */
	static TSharedPtr<FJsonObject> SerializeWidgetHierarchy(UWidgetBlueprint* WidgetBlueprint);

	/** "name", "class", "is_variable", and for a panel with children "children" in child order. Null for a null widget. */
	static TSharedPtr<FJsonObject> SerializeWidgetHierarchyNode(UWidget* Widget, UWidgetBlueprint* WidgetBlueprint);

	/** "name", "class", "is_variable", "parent", "slot", "properties" of one widget. Null for a null widget. */
	static TSharedPtr<FJsonObject> SerializeWidgetDetails(UWidget* Widget, UWidgetBlueprint* WidgetBlueprint);

	/** The slot's own reflected properties as text, by name; an empty object for a null slot. */
	static TSharedPtr<FJsonObject> SerializeSlotProperties(UPanelSlot* Slot);

	/** The widget's reflected properties as text, by name; an empty object for a null widget. */
	static TSharedPtr<FJsonObject> SerializeWidgetProperties(UWidget* Widget);
};
