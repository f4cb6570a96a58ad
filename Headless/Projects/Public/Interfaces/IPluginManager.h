#pragma once

#include "CoreMinimal.h"
#include "PluginDescriptor.h"
#include "ProjectsGlobals.h"

/** Where a plug-in lives, which decides how it is treated by default. */
enum class EPluginType : uint8
{
	/** Shipped with the engine. */
	Engine,
	/** Shipped with the enterprise edition of the engine. */
	Enterprise,
	/** In the project's Plugins folder. */
	Project,
	/** In an additional plug-in folder. */
	External,
	/** A mod. */
	Mod,
};

/** Whether a plug-in was found under the engine or under the project. */
enum class EPluginLoadedFrom : uint8
{
	Engine,
	Project,
};

/** A plug-in found by the plug-in manager. */
class IPlugin : public TSharedFromThis<IPlugin>
{
public:
	virtual ~IPlugin() = default;

	/** The plug-in's name: its .uplugin file's base name. */
	virtual const FString& GetName() const = 0;

	/** The descriptor's FriendlyName, or the name when it has none. */
	virtual const FString& GetFriendlyName() const = 0;

	/** Full path of the .uplugin file. */
	virtual const FString& GetDescriptorFileName() const = 0;

	/** Full path of the folder holding the .uplugin file, without a trailing '/'. */
	virtual FString GetBaseDir() const = 0;

	/** Full path of the plug-in's Content folder, without a trailing '/'. */
	virtual FString GetContentDir() const = 0;

	/** The root its content is mounted at: "/<Name>/". */
	virtual FString GetMountedAssetPath() const = 0;

	virtual EPluginType GetType() const = 0;

	/** Whether the plug-in is on for the current project. */
	virtual bool IsEnabled() const = 0;

	/** Whether the plug-in is on when the project says nothing about it. */
	virtual bool IsEnabledByDefault(bool bAllowEnginePluginsEnabledByDefault) const = 0;

	/** Whether its content folder is mounted now. */
	virtual bool IsMounted() const = 0;

	/** Whether the descriptor says the plug-in has content to mount. */
	virtual bool CanContainContent() const = 0;

	virtual EPluginLoadedFrom GetLoadedFrom() const = 0;

	virtual const FPluginDescriptor& GetDescriptor() const = 0;
};

/**
 * Finds the plug-ins of the open project and mounts the content of the enabled ones. Plug-ins are
 * listed in name order (ignoring case) so every listing is stable. The headless editor has no
 * engine plug-ins: every plug-in comes from the project's Plugins folder.
 */
class IPluginManager
{
public:
	virtual ~IPluginManager() = default;

	/** The process-wide plug-in manager. */
	[[nodiscard]] static PROJECTS_API IPluginManager& Get();

	/** Searches the project's Plugins folder again and updates which plug-ins are enabled and mounted. */
	virtual void RefreshPluginsList() = 0;

	/** The plug-in of that name (without case), enabled or not, or null. */
	virtual TSharedPtr<IPlugin> FindPlugin(const FString& Name) = 0;

	/** The enabled plug-in whose content holds a package path such as "/MyPlugin/Folder/Asset", or null. */
	virtual TSharedPtr<IPlugin> FindPluginFromPath(const FString& PluginPath) = 0;

	virtual TArray<TSharedRef<IPlugin>> GetEnabledPlugins() = 0;

	/** Enabled plug-ins that can contain content: the ones whose content is mounted. */
	virtual TArray<TSharedRef<IPlugin>> GetEnabledPluginsWithContent() const = 0;

	/** Every plug-in found, enabled or not. */
	virtual TArray<TSharedRef<IPlugin>> GetDiscoveredPlugins() = 0;

	/** Finds a plug-in created after the project was opened, enables it and mounts its content. */
	virtual void MountNewlyCreatedPlugin(const FString& PluginName) = 0;

	/** Called with (root path such as "/MyPlugin/", content folder) whenever content is mounted or unmounted. */
	DECLARE_DELEGATE_TwoParams(FRegisterMountPointDelegate, const FString&, const FString&);
	virtual void SetRegisterMountPointDelegate(const FRegisterMountPointDelegate& Delegate) = 0;
	virtual void SetUnRegisterMountPointDelegate(const FRegisterMountPointDelegate& Delegate) = 0;

	/** Broadcast after a plug-in's content has been mounted. */
	DECLARE_MULTICAST_DELEGATE_OneParam(FNewPluginMountedEvent, IPlugin&);
	virtual FNewPluginMountedEvent& OnNewPluginContentMounted() = 0;

	/** Broadcast after a plug-in's content has been unmounted. */
	virtual FNewPluginMountedEvent& OnPluginUnmounted() = 0;
};
