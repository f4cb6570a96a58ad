#pragma once

#include "CoreMinimal.h"
#include "ProjectsGlobals.h"

class FJsonObject;

/** One entry of a .uproject's "Plugins" list: turns a plug-in on or off by name. */
struct FPluginReferenceDescriptor
{
	/** The plug-in's name, as its .uplugin file is named. Compared without case. */
	FString Name;

	/** Whether the project wants the plug-in on. */
	bool bEnabled = true;

	/** Whether a missing plug-in is acceptable. */
	bool bOptional = false;

	FString Description;
	FString MarketplaceURL;

	FPluginReferenceDescriptor() = default;
	FPluginReferenceDescriptor(const FString& InName, bool bInEnabled)
		: Name(InName)
		, bEnabled(bInEnabled)
	{
	}

	/** Reads one entry; "Name" is required. OutFailReason says what is wrong. */
	PROJECTS_API bool Read(const FJsonObject& Object, FText* OutFailReason = nullptr);
};
