#include "Modules/ModuleManager.h"

#include "Misc/AssertionMacros.h"

FModuleManager& FModuleManager::Get()
{
	// Never destroyed: registrants in other translation units may still reach it during static
	// destruction, and modules are shut down explicitly through UnloadModulesAtShutdown.
	static FModuleManager* Manager = new FModuleManager();
	return *Manager;
}

FModuleManager::~FModuleManager() = default;

FModuleManager::FModuleEntry* FModuleManager::FindEntry(const FName InModuleName)
{
	return Entries.FindByPredicate([&InModuleName](const FModuleEntry& Entry) { return Entry.Name == InModuleName; });
}

const FModuleManager::FModuleEntry* FModuleManager::FindEntry(const FName InModuleName) const
{
	return Entries.FindByPredicate([&InModuleName](const FModuleEntry& Entry) { return Entry.Name == InModuleName; });
}

void FModuleManager::RegisterStaticallyLinkedModule(const FName InModuleName, const FInitializeStaticallyLinkedModule& InInitializerDelegate)
{
	if (FModuleEntry* Existing = FindEntry(InModuleName))
	{
		Existing->Initializer = InInitializerDelegate;
		return;
	}
	FModuleEntry Entry;
	Entry.Name = InModuleName;
	Entry.Initializer = InInitializerDelegate;
	Entries.Add(MoveTemp(Entry));
}

IModuleInterface* FModuleManager::LoadModule(const FName InModuleName, ELoadModuleFlags InLoadModuleFlags)
{
	EModuleLoadResult Ignored = EModuleLoadResult::Success;
	return LoadModuleWithFailureReason(InModuleName, Ignored, InLoadModuleFlags);
}

IModuleInterface* FModuleManager::LoadModuleWithFailureReason(const FName InModuleName, EModuleLoadResult& OutFailureReason, ELoadModuleFlags InLoadModuleFlags)
{
	OutFailureReason = EModuleLoadResult::Success;
	FModuleEntry* Entry = FindEntry(InModuleName);
	if (!Entry || !Entry->Initializer.IsBound())
	{
		OutFailureReason = EModuleLoadResult::FileNotFound;
		return nullptr;
	}
	if (Entry->Instance)
	{
		return Entry->Instance;
	}

	IModuleInterface* Instance = Entry->Initializer.Execute();
	if (!Instance)
	{
		OutFailureReason = EModuleLoadResult::FailedToInitialize;
		return nullptr;
	}
	// The module counts as loaded while it starts, so asking for it from its own start-up finds it.
	// Its place in the load order is taken only afterwards: modules it loads while starting are then
	// older than it and shut down after it, since it may still need them while shutting down.
	Entry->Instance = Instance;
	Instance->StartupModule();
	Entry = FindEntry(InModuleName);
	Entry->LoadOrder = NextLoadOrder++;

	ModulesChangedEvent.Broadcast(InModuleName, EModuleChangeReason::ModuleLoaded);
	return Instance;
}

IModuleInterface& FModuleManager::LoadModuleChecked(const FName InModuleName)
{
	IModuleInterface* Module = LoadModule(InModuleName);
	CheckModuleLoaded(InModuleName, Module);
	return *Module;
}

void FModuleManager::CheckModuleLoaded(const FName InModuleName, const IModuleInterface* Module)
{
	checkf(Module != nullptr, TEXT("Module '%s' could not be loaded: no module of that name is linked into this program."), *InModuleName.ToString());
}

bool FModuleManager::ModuleExists(const TCHAR* ModuleName) const
{
	if (!ModuleName || !*ModuleName)
	{
		return false;
	}
	const FModuleEntry* Entry = FindEntry(FName(ModuleName, FNAME_Find));
	return Entry && Entry->Initializer.IsBound();
}

bool FModuleManager::IsModuleLoaded(const FName InModuleName) const
{
	const FModuleEntry* Entry = FindEntry(InModuleName);
	return Entry && Entry->Instance;
}

IModuleInterface* FModuleManager::GetModule(const FName InModuleName)
{
	FModuleEntry* Entry = FindEntry(InModuleName);
	return Entry ? Entry->Instance : nullptr;
}

bool FModuleManager::UnloadModule(const FName InModuleName, bool bIsShutdown, bool bAllowUnloadCode)
{
	FModuleEntry* Entry = FindEntry(InModuleName);
	if (!Entry || !Entry->Instance)
	{
		return false;
	}
	IModuleInterface* Instance = Entry->Instance;
	if (!bIsShutdown)
	{
		Instance->PreUnloadCallback();
	}
	Instance->ShutdownModule();

	// The entry may have moved if the module registered or loaded others while shutting down.
	Entry = FindEntry(InModuleName);
	check(Entry && Entry->Instance == Instance);
	Entry->Instance = nullptr;
	Entry->LoadOrder = 0;
	delete Instance;

	ModulesChangedEvent.Broadcast(InModuleName, EModuleChangeReason::ModuleUnloaded);
	return true;
}

void FModuleManager::UnloadModulesAtShutdown()
{
	// Newest first; a module that refuses automatic shutdown is left loaded and skipped.
	TArray<FName> Skipped;
	for (;;)
	{
		const FModuleEntry* Newest = nullptr;
		for (const FModuleEntry& Entry : Entries)
		{
			if (Entry.Instance && !Skipped.Contains(Entry.Name) && (!Newest || Entry.LoadOrder > Newest->LoadOrder))
			{
				Newest = &Entry;
			}
		}
		if (!Newest)
		{
			return;
		}
		const FName Name = Newest->Name;
		if (Newest->Instance->SupportsAutomaticShutdown())
		{
			UnloadModule(Name, true);
		}
		else
		{
			Skipped.Add(Name);
		}
	}
}

int32 FModuleManager::GetModuleCount() const
{
	return Entries.Num();
}

void FModuleManager::FindModules(const TCHAR* WildcardWithoutExtension, TArray<FName>& OutModules) const
{
	const FString Wildcard(WildcardWithoutExtension ? WildcardWithoutExtension : TEXT("*"));
	TArray<FName> Found;
	for (const FModuleEntry& Entry : Entries)
	{
		if (Entry.Name.ToString().MatchesWildcard(Wildcard))
		{
			Found.Add(Entry.Name);
		}
	}
	Found.Sort([](const FName& A, const FName& B) { return A.ToString().Compare(B.ToString(), ESearchCase::IgnoreCase) < 0; });
	OutModules.Append(Found);
}

TArray<FName> FModuleManager::GetLoadedModuleNames() const
{
	TArray<const FModuleEntry*> Loaded;
	for (const FModuleEntry& Entry : Entries)
	{
		if (Entry.Instance)
		{
			Loaded.Add(&Entry);
		}
	}
	Loaded.Sort([](const FModuleEntry* A, const FModuleEntry* B) { return A->LoadOrder < B->LoadOrder; });
	TArray<FName> Names;
	for (const FModuleEntry* Entry : Loaded)
	{
		Names.Add(Entry->Name);
	}
	return Names;
}
