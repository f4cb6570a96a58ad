#pragma once

#include "CoreMinimal.h"

#ifndef KISMET_API
#define KISMET_API
#endif

struct FBlueprintActionContext;
struct FBlueprintActionMenuBuilder;

/** Which classes a context-sensitive menu offers the members of. */
namespace EContextTargetFlags
{
	enum Type
	{
		/** The Blueprint's own class. */
		TARGET_Blueprint = (1 << 0),
		/** The classes of the Blueprint's components. */
		TARGET_SubComponents = (1 << 1),
		/** The class of the node the dragged pin belongs to. */
		TARGET_NodeTarget = (1 << 2),
		/** The class of the object the dragged pin carries. */
		TARGET_PinObject = (1 << 3),
		/** The classes of the other outputs of the dragged pin's node. */
		TARGET_SiblingPinObjects = (1 << 4),
		/** Function libraries. */
		TARGET_BlueprintLibraries = (1 << 5),
		/** Types whose modules the Blueprint does not import. */
		TARGET_NonImportedTypes = (1 << 6),
		ContextTargetFlags_MAX = (1 << 7),
	};
}

/** Builds the Blueprint editor's menus from the action database. */
struct FBlueprintActionMenuUtils
{
	/**
	 * Fills MenuOut with what the graph's right-click menu offers for Context: every action the database holds that
	 * suits the Blueprints and graphs ("Add Comment..." among them), then "Add Timeline..." where timelines may go.
	 * Without context sensitivity the dragged pins play no part and ClassTargetMask has no effect.
	 */
	static KISMET_API void MakeContextMenu(const FBlueprintActionContext& Context, bool bIsContextSensitive, uint32 ClassTargetMask, FBlueprintActionMenuBuilder& MenuOut);
};
