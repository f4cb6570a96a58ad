#pragma once

#include "CoreMinimal.h"
#include "PluginReferenceDescriptor.h"
#include "ProjectsGlobals.h"

class FJsonObject;

/** The contents of a .uproject file (the part the headless editor uses). */
struct FProjectDescriptor
{
	int32 FileVersion = 3;
	FString EngineAssociation;
	FString Category;
	FString Description;

	/** Plug-ins the project turns on or off explicitly, in file order. */
	TArray<FPluginReferenceDescriptor> Plugins;

	/** Folders outside Plugins/ that the engine would search; recorded only, never searched here. */
	TArray<FString> AdditionalPluginDirectories;

	bool bDisableEnginePluginsByDefault = false;

	/** Reads a .uproject file. OutFailReason names the file and says what was wrong with it. */
	PROJECTS_API bool Load(const FString& FileName, FText& OutFailReason);

	/** Reads .uproject text. */
	PROJECTS_API bool Read(const FString& Text, FText& OutFailReason);

	/** Reads a parsed .uproject object. */
	PROJECTS_API bool Read(const FJsonObject& Object, FText& OutFailReason);

	/** The reference to a plug-in by name (without case), or null. */
	[[nodiscard]] PROJECTS_API const FPluginReferenceDescriptor* FindPluginReference(const FString& PluginName) const;
};
