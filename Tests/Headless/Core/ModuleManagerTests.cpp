#include "Modules/ModuleManager.h"

#include <gtest/gtest.h>

namespace
{
	// Records start-up and shut-down calls of the test modules in the order they happen.
	TArray<FString>& Journal()
	{
		static TArray<FString> Calls;
		return Calls;
	}

	template <int N>
	class TJournalModule : public IModuleInterface
	{
	public:
		virtual void StartupModule() override { Journal().Add(FString::Printf(TEXT("start %d"), N)); }
		virtual void PreUnloadCallback() override { Journal().Add(FString::Printf(TEXT("preunload %d"), N)); }
		virtual void ShutdownModule() override { Journal().Add(FString::Printf(TEXT("stop %d"), N)); }
		int32 Id() const { return N; }
	};

	class FStubbornModule : public IModuleInterface
	{
	public:
		virtual bool SupportsAutomaticShutdown() override { return false; }
		virtual void ShutdownModule() override { Journal().Add(TEXT("stop stubborn")); }
	};

	// A module that brings up another one while it starts, as modules with dependencies do.
	class FDependentModule : public IModuleInterface
	{
	public:
		virtual void StartupModule() override
		{
			FModuleManager::Get().LoadModuleChecked(TEXT("JournalTwo"));
			Journal().Add(TEXT("start dependent"));
		}
		virtual void ShutdownModule() override { Journal().Add(TEXT("stop dependent")); }
	};
}

IMPLEMENT_MODULE(TJournalModule<1>, JournalOne)
IMPLEMENT_MODULE(TJournalModule<2>, JournalTwo)
IMPLEMENT_MODULE(FStubbornModule, StubbornModule)
IMPLEMENT_MODULE(FDependentModule, DependentModule)
IMPLEMENT_MODULE(FDefaultModuleImpl, PlainModule)

class ModuleManagerTest : public ::testing::Test
{
protected:
	void SetUp() override
	{
		FModuleManager::Get().UnloadModulesAtShutdown();
		FModuleManager::Get().UnloadModule(TEXT("StubbornModule"));
		Journal().Reset();
	}
	void TearDown() override { SetUp(); }
};

TEST_F(ModuleManagerTest, LoadsOnceStartsOnceAndFindsByAnyCase)
{
	FModuleManager& Manager = FModuleManager::Get();
	EXPECT_TRUE(Manager.ModuleExists(TEXT("JournalOne")));
	EXPECT_FALSE(Manager.IsModuleLoaded(TEXT("JournalOne")));
	EXPECT_EQ(FModuleManager::GetModulePtr<TJournalModule<1>>(TEXT("JournalOne")), nullptr);

	TJournalModule<1>& Module = FModuleManager::LoadModuleChecked<TJournalModule<1>>(TEXT("JournalOne"));
	EXPECT_EQ(Module.Id(), 1);
	EXPECT_EQ(Manager.LoadModule(TEXT("journalone")), &Module);
	EXPECT_EQ(FModuleManager::GetModulePtr<TJournalModule<1>>(TEXT("JOURNALONE")), &Module);
	EXPECT_TRUE(Manager.IsModuleLoaded(TEXT("JournalOne")));
	EXPECT_EQ(Journal(), TArray<FString>({TEXT("start 1")}));
}

TEST_F(ModuleManagerTest, UnknownModulesAreReportedNotCreated)
{
	FModuleManager& Manager = FModuleManager::Get();
	EModuleLoadResult Reason = EModuleLoadResult::Success;
	EXPECT_EQ(Manager.LoadModuleWithFailureReason(TEXT("NoSuchModule"), Reason), nullptr);
	EXPECT_EQ(Reason, EModuleLoadResult::FileNotFound);
	EXPECT_FALSE(Manager.ModuleExists(TEXT("NoSuchModule")));
	EXPECT_FALSE(Manager.ModuleExists(TEXT("")));
	EXPECT_FALSE(Manager.IsModuleLoaded(TEXT("NoSuchModule")));
	EXPECT_FALSE(Manager.UnloadModule(TEXT("NoSuchModule")));
	EXPECT_DEATH(FModuleManager::LoadModuleChecked<IModuleInterface>(TEXT("NoSuchModule")), "NoSuchModule");
}

TEST_F(ModuleManagerTest, UnloadShutsDownAndAllowsReloading)
{
	FModuleManager& Manager = FModuleManager::Get();
	Manager.LoadModule(TEXT("JournalOne"));
	EXPECT_TRUE(Manager.UnloadModule(TEXT("JournalOne")));
	EXPECT_FALSE(Manager.IsModuleLoaded(TEXT("JournalOne")));
	EXPECT_FALSE(Manager.UnloadModule(TEXT("JournalOne")));
	Manager.LoadModule(TEXT("JournalOne"));
	EXPECT_EQ(Journal(), TArray<FString>({TEXT("start 1"), TEXT("preunload 1"), TEXT("stop 1"), TEXT("start 1")}));
}

TEST_F(ModuleManagerTest, ShutdownStopsNewestFirstAndSkipsModulesThatOptOut)
{
	FModuleManager& Manager = FModuleManager::Get();
	Manager.LoadModule(TEXT("StubbornModule"));
	Manager.LoadModule(TEXT("JournalOne"));
	Manager.LoadModule(TEXT("DependentModule")); // loads JournalTwo while starting
	EXPECT_EQ(Manager.GetLoadedModuleNames(), TArray<FName>({TEXT("StubbornModule"), TEXT("JournalOne"), TEXT("JournalTwo"), TEXT("DependentModule")}));

	Journal().Reset();
	Manager.UnloadModulesAtShutdown();
	// DependentModule may still use JournalTwo while it shuts down, so it goes first; shutdown skips
	// PreUnloadCallback.
	EXPECT_EQ(Journal(), TArray<FString>({TEXT("stop dependent"), TEXT("stop 2"), TEXT("stop 1")}));
	EXPECT_TRUE(Manager.IsModuleLoaded(TEXT("StubbornModule")));
}

TEST_F(ModuleManagerTest, FindModulesMatchesWildcardsInNameOrder)
{
	TArray<FName> Found;
	FModuleManager::Get().FindModules(TEXT("journal*"), Found);
	EXPECT_EQ(Found, TArray<FName>({TEXT("JournalOne"), TEXT("JournalTwo")}));
	Found.Reset();
	FModuleManager::Get().FindModules(TEXT("P?ainModule"), Found);
	EXPECT_EQ(Found, TArray<FName>({TEXT("PlainModule")}));
}
