#pragma once

#include "CoreMinimal.h"
#include "BlueprintActionFilter.h"
#include "EdGraph/EdGraphSchema.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/** Builds a Blueprint action menu from the action database, one section per filter. */
struct FBlueprintActionMenuBuilder : public FGraphActionListBuilderBase
{
	enum EConfigFlags : uint32
	{
		DefaultConfig = 0x00,
		/** Put every entry of the section straight under its heading, without the actions' own categories. */
		FlattenCategoryHierarcy = 0x01,
		/** Merge a variable's get and set into one entry (the drag-and-drop form). */
		ConsolidatePropertyActions = 0x02,
	};

	UE_API FBlueprintActionMenuBuilder();
	UE_API virtual ~FBlueprintActionMenuBuilder() override;

	/** Forgets the sections and the entries. */
	UE_API virtual void Empty() override;

	/**
	 * Adds a section: the actions Filter lets through, filed under Heading, ordered by MenuOrder (higher first). An
	 * action that binds its node to an object (a component's event) gets one entry per object of the filter's
	 * selection it can take, and none without one.
	 */
	UE_API void AddMenuSection(const FBlueprintActionFilter& Filter, const FText& Heading = FText(), int32 MenuOrder = 0, uint32 Flags = 0);

	/** Rebuilds the entries from the database through every section. */
	UE_API void RebuildActionList();

private:
	struct FMenuSection
	{
		FBlueprintActionFilter Filter;
		FText Heading;
		int32 MenuOrder = 0;
		uint32 Flags = 0;
	};
	TArray<FMenuSection> MenuSections;
};

#undef UE_API
