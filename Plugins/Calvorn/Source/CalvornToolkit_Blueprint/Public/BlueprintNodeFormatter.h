#pragma once

#include "CoreMinimal.h"
#include "Containers/Array.h"
#include "Containers/Set.h"
#include "Templates/Function.h"

class UEdGraph;
class UEdGraphNode;

/**
 * Lays out the nodes a tool has just created or changed, so that an agent's graph reads like one a person drew.
 *
 * The formatter never rearranges a whole graph. It moves only the nodes of an allow list (the nodes a call touched
 * and their direct neighbours); every other node stays where it is and serves as an anchor whose coordinates attract
 * and whose box repels, as do comment boxes. Exec flow runs left to right in rows, branches stack downward, pure data
 * nodes hang up and to the left of their consumer, and what no exec root reaches goes into columns below the rest.
 *
 * Static functions only: nothing is kept between calls, and the result depends on the graph alone (node order, pins,
 * links, positions), never on pointer values, hash order or time.
 */
class CALVORNTOOLKIT_BLUEPRINT_API FBlueprintNodeFormatter
{
public:
	/**
	 * The nodes one link away from any node of Nodes, over every pin (exec and data, input and output), except those
	 * in ExcludedNodes. A node of Nodes that is linked to another node of Nodes is part of the answer too.
	 */
	static TSet<UEdGraphNode*> CollectNeighborNodes(const TArray<UEdGraphNode*>& Nodes, const TSet<UEdGraphNode*>& ExcludedNodes);

	/**
	 * Moves the nodes of AllowList that are in Graph, measuring each node's height with the K2 schema's estimate.
	 * A null graph, or an allow list with no node, changes nothing and notifies nobody.
	 */
	static void FormatNodes(UEdGraph* Graph, const TArray<UEdGraphNode*>& AllowList);

	/**
	 * The same layout with node heights from the caller's measure, for graphs whose nodes the K2 estimate does not
	 * describe and for checking the layout against heights chosen by hand. A height not above zero counts as 100.
	 */
	static void FormatNodes(UEdGraph* Graph, const TArray<UEdGraphNode*>& AllowList, TFunctionRef<float(UEdGraphNode*)> EstimateNodeHeight);

	/**
	 * What both editing paths hand to FormatNodes: the non-null touched nodes plus their direct neighbours, without
	 * duplicates, touched nodes first in their order. OutNeighborCount receives the size of the neighbour set, which
	 * counts touched nodes linked to each other as well.
	 */
	static TArray<UEdGraphNode*> BuildAllowList(const TArray<UEdGraphNode*>& TouchedNodes, int32& OutNeighborCount);
};
