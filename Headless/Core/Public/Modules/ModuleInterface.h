#pragma once

#include "CoreTypes.h"

/**
 * What every module implements. The module manager creates one instance per loaded module,
 * calls StartupModule once it exists and ShutdownModule before it is destroyed.
 */
class IModuleInterface
{
public:
	virtual ~IModuleInterface() = default;

	/** Called right after the module instance has been created and registered as loaded. */
	virtual void StartupModule() {}

	/** Called before the module is unloaded, while every other module is still available. */
	virtual void PreUnloadCallback() {}

	/** Called after a module has been reloaded. Headless modules are never reloaded. */
	virtual void PostLoadCallback() {}

	/** Called before the module instance is destroyed. */
	virtual void ShutdownModule() {}

	/** Whether the module may be unloaded and loaded again while the program runs. */
	virtual bool SupportsDynamicReloading() { return true; }

	/** Whether FModuleManager::UnloadModulesAtShutdown shuts this module down; false leaves it to the program. */
	virtual bool SupportsAutomaticShutdown() { return true; }

	/** True for a project's game module. */
	virtual bool IsGameModule() const { return false; }
};

/** A module with nothing to start or stop. */
class FDefaultModuleImpl : public IModuleInterface
{
};

/** A game module with nothing to start or stop. */
class FDefaultGameModuleImpl : public FDefaultModuleImpl
{
public:
	virtual bool IsGameModule() const override { return true; }
};
