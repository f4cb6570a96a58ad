#pragma once

#include "CoreTypes.h"
#include "Containers/Array.h"
#include "Containers/UnrealString.h"
#include "Delegates/Delegate.h"
#include "Modules/ModuleInterface.h"
#include "UObject/NameTypes.h"

/** Why the set of modules changed, as FModuleManager::OnModulesChanged reports it. */
enum class EModuleChangeReason
{
	ModuleLoaded,
	ModuleUnloaded,
	PluginDirectoryChanged,
};

/** Outcome of FModuleManager::LoadModuleWithFailureReason. */
enum class EModuleLoadResult
{
	Success,
	FileNotFound,
	FileIncompatible,
	CouldNotBeLoadedByOS,
	FailedToInitialize,
	NotLoadedByGameThread,
};

/** Options of FModuleManager::LoadModule. */
enum class ELoadModuleFlags
{
	None = 0x0,
	LogFailures = 1 << 0,
};

/**
 * Loads and keeps the program's modules. Every headless module is linked into the executable, so a
 * module is "found" when its IMPLEMENT_MODULE registrant has registered a factory for its name;
 * loading creates the instance and starts it up. Module names compare without case, as FName does.
 *
 * Modules are shut down in the reverse of the order they were loaded in, so one started on top of
 * another is stopped first.
 */
class FModuleManager
{
public:
	using FInitializeStaticallyLinkedModule = TDelegate<IModuleInterface*()>;

	DECLARE_MULTICAST_DELEGATE_TwoParams(FModulesChangedEvent, FName, EModuleChangeReason);

	CORE_API ~FModuleManager();

	/** The process-wide module manager. */
	[[nodiscard]] static CORE_API FModuleManager& Get();

	/**
	 * Loads the module if it is not loaded yet and returns it, or null when no module of that name
	 * is registered or its instance could not be created.
	 */
	CORE_API IModuleInterface* LoadModule(const FName InModuleName, ELoadModuleFlags InLoadModuleFlags = ELoadModuleFlags::None);

	/** As LoadModule, and says why it failed. */
	CORE_API IModuleInterface* LoadModuleWithFailureReason(const FName InModuleName, EModuleLoadResult& OutFailureReason, ELoadModuleFlags InLoadModuleFlags = ELoadModuleFlags::None);

	/** Loads the module; stops the program with a message naming the module when it cannot. */
	CORE_API IModuleInterface& LoadModuleChecked(const FName InModuleName);

	/** Whether a module of that name is linked in (loaded or not). */
	[[nodiscard]] CORE_API bool ModuleExists(const TCHAR* ModuleName) const;

	[[nodiscard]] CORE_API bool IsModuleLoaded(const FName InModuleName) const;

	/** The loaded module, or null; never loads it. */
	[[nodiscard]] CORE_API IModuleInterface* GetModule(const FName InModuleName);

	/**
	 * Shuts the module down and destroys it. Returns false when it was not loaded. With bIsShutdown
	 * the module's PreUnloadCallback is skipped, as at the end of the program.
	 */
	CORE_API bool UnloadModule(const FName InModuleName, bool bIsShutdown = false, bool bAllowUnloadCode = true);

	/** Shuts down every loaded module that supports automatic shutdown, newest first. */
	CORE_API void UnloadModulesAtShutdown();

	/** How many modules are known (registered), loaded or not. */
	[[nodiscard]] CORE_API int32 GetModuleCount() const;

	/** Names of the known modules matching a wildcard ('*', '?', case-insensitive), sorted by name. */
	CORE_API void FindModules(const TCHAR* WildcardWithoutExtension, TArray<FName>& OutModules) const;

	/** Names of the loaded modules, in load order. */
	[[nodiscard]] CORE_API TArray<FName> GetLoadedModuleNames() const;

	/** Registers the factory of a linked-in module; IMPLEMENT_MODULE does it at start-up. A second registration of a name replaces the first. */
	CORE_API void RegisterStaticallyLinkedModule(const FName InModuleName, const FInitializeStaticallyLinkedModule& InInitializerDelegate);

	/** Broadcast after a module is loaded or unloaded. */
	FModulesChangedEvent& OnModulesChanged() { return ModulesChangedEvent; }

	/** Loads the module and returns it as its interface type; the module must exist. */
	template <typename TModuleInterface>
	static TModuleInterface& LoadModuleChecked(const FName InModuleName)
	{
		return static_cast<TModuleInterface&>(Get().LoadModuleChecked(InModuleName));
	}

	/** Loads the module and returns it as its interface type, or null when it cannot be loaded. */
	template <typename TModuleInterface>
	static TModuleInterface* LoadModulePtr(const FName InModuleName)
	{
		return static_cast<TModuleInterface*>(Get().LoadModule(InModuleName));
	}

	/** The loaded module as its interface type; the module must be loaded. */
	template <typename TModuleInterface>
	static TModuleInterface& GetModuleChecked(const FName InModuleName)
	{
		IModuleInterface* Module = Get().GetModule(InModuleName);
		CheckModuleLoaded(InModuleName, Module);
		return static_cast<TModuleInterface&>(*Module);
	}

	/** The loaded module as its interface type, or null when it is not loaded. */
	template <typename TModuleInterface>
	static TModuleInterface* GetModulePtr(const FName InModuleName)
	{
		return static_cast<TModuleInterface*>(Get().GetModule(InModuleName));
	}

	FModuleManager(const FModuleManager&) = delete;
	FModuleManager& operator=(const FModuleManager&) = delete;

private:
	FModuleManager() = default;

	static CORE_API void CheckModuleLoaded(const FName InModuleName, const IModuleInterface* Module);

	struct FModuleEntry
	{
		FName Name;
		FInitializeStaticallyLinkedModule Initializer;
		IModuleInterface* Instance = nullptr;
		/** Position in the load order while loaded; larger is newer. */
		uint64 LoadOrder = 0;
	};

	FModuleEntry* FindEntry(const FName InModuleName);
	const FModuleEntry* FindEntry(const FName InModuleName) const;

	TArray<FModuleEntry> Entries;
	uint64 NextLoadOrder = 1;
	FModulesChangedEvent ModulesChangedEvent;
};

/** Registers a linked-in module's factory when the program starts; IMPLEMENT_MODULE declares one. */
template <class ModuleClass>
class FStaticallyLinkedModuleRegistrant
{
public:
	explicit FStaticallyLinkedModuleRegistrant(const TCHAR* InModuleName)
	{
		FModuleManager::Get().RegisterStaticallyLinkedModule(FName(InModuleName),
			FModuleManager::FInitializeStaticallyLinkedModule::CreateStatic(&FStaticallyLinkedModuleRegistrant::InitializeModule));
	}

	static IModuleInterface* InitializeModule()
	{
		return new ModuleClass();
	}
};

/**
 * Declares the module class of a module. Headless modules are linked whole into the program, so
 * this registers the module's factory with the module manager from a static initialiser.
 */
#define IMPLEMENT_MODULE(ModuleImplClass, ModuleName) \
	static FStaticallyLinkedModuleRegistrant<ModuleImplClass> ModuleRegistrant##ModuleName(TEXT(#ModuleName));

#define IMPLEMENT_GAME_MODULE(ModuleImplClass, ModuleName) IMPLEMENT_MODULE(ModuleImplClass, ModuleName)
