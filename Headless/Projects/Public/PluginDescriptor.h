#pragma once

#include "CoreMinimal.h"
#include "ProjectsGlobals.h"

class FJsonObject;

/** What a .uplugin says about being on when no project mentions it. */
enum class EPluginEnabledByDefault : uint8
{
	Unspecified,
	Enabled,
	Disabled,
};

/**
 * The contents of a .uplugin file (the part the headless editor uses). Unknown fields are
 * ignored, as the engine ignores them.
 */
struct FPluginDescriptor
{
	int32 FileVersion = 3;
	int32 Version = 0;
	FString VersionName;
	FString FriendlyName;
	FString Description;
	FString Category;
	FString CreatedBy;
	FString CreatedByURL;
	FString DocsURL;
	FString MarketplaceURL;
	FString SupportURL;
	FString EngineVersion;

	/** "EnabledByDefault": absent is Unspecified. */
	EPluginEnabledByDefault EnabledByDefault = EPluginEnabledByDefault::Unspecified;

	/** "CanContainContent": whether the plug-in's Content folder is mounted. */
	bool bCanContainContent = false;
	bool bIsBetaVersion = false;
	bool bIsExperimentalVersion = false;
	bool bInstalled = false;
	bool bIsHidden = false;
	bool bExplicitlyLoaded = false;

	/** Reads a .uplugin file. OutFailReason names the file and says what was wrong with it. */
	PROJECTS_API bool Load(const FString& FileName, FText* OutFailReason = nullptr);

	/** Reads .uplugin text. */
	PROJECTS_API bool Read(const FString& Text, FText* OutFailReason = nullptr);

	/** Reads a parsed .uplugin object. */
	PROJECTS_API bool Read(const FJsonObject& Object, FText* OutFailReason = nullptr);
};
