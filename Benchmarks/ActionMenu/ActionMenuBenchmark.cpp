// The action menu of an Actor Blueprint's event graph over the whole catalogue, as the populate tool builds it:
// not context sensitive, every class target. The first run reports the one-time database build and the first
// menu separately ("database_build_ms", "first_menu_ms"); the timed loop is a menu built again on the same
// database. "actions" is the menu's entry count. The project lives in a temporary folder removed at exit.

#include "BlueprintActionDatabase.h"
#include "BlueprintActionFilter.h"
#include "BlueprintActionMenuBuilder.h"
#include "BlueprintActionMenuUtils.h"
#include "Engine/Blueprint.h"
#include "GameFramework/Actor.h"
#include "HAL/PlatformTime.h"
#include "Headless/HeadlessProject.h"
#include "Kismet2/KismetEditorUtilities.h"
#include "Misc/FileHelper.h"
#include "Misc/Paths.h"
#include "Modules/ModuleManager.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace
{
	class FBenchProject
	{
	public:
		static FBenchProject& Get()
		{
			static FBenchProject Project;
			return Project;
		}

		UBlueprint* GetBlueprint() const { return Blueprint; }
		const FString& GetError() const { return Error; }

		~FBenchProject()
		{
			UE::Headless::CloseProject();
			std::error_code Ignored;
			std::filesystem::remove_all(Root, Ignored);
		}

	private:
		FBenchProject()
		{
			std::string Template = (std::filesystem::temp_directory_path() / "calvorn-menu-bench-XXXXXX").string();
			if (!::mkdtemp(Template.data()))
			{
				Error = TEXT("cannot make a temporary folder");
				return;
			}
			Root = Template;
			const FString RootDir(UTF8_TO_TCHAR(Template.c_str()));
			FFileHelper::SaveStringToFile(TEXT("{\"FileVersion\": 3}\n"), *(RootDir / TEXT("Bench.uproject")));
			if (!UE::Headless::OpenProject(RootDir / TEXT("Bench.uproject"), Error))
			{
				return;
			}
			FModuleManager::Get().LoadModuleChecked(TEXT("Catalogue"));
			UPackage* Package = CreatePackage(TEXT("/Game/Bench/BP_MenuBench"));
			Blueprint = FKismetEditorUtilities::CreateBlueprint(AActor::StaticClass(), Package, FName(TEXT("BP_MenuBench")), BPTYPE_Normal,
				UBlueprint::StaticClass(), UBlueprintGeneratedClass::StaticClass());
			if (!Blueprint || Blueprint->UbergraphPages.Num() == 0)
			{
				Error = TEXT("cannot create the Actor Blueprint");
				Blueprint = nullptr;
			}
		}

		std::string Root;
		FString Error;
		UBlueprint* Blueprint = nullptr;
	};

	int32 BuildMenu(UBlueprint* Blueprint)
	{
		FBlueprintActionContext Context;
		Context.Blueprints.Add(Blueprint);
		Context.Graphs.Add(Blueprint->UbergraphPages[0]);
		FBlueprintActionMenuBuilder Menu;
		FBlueprintActionMenuUtils::MakeContextMenu(Context, false, EContextTargetFlags::ContextTargetFlags_MAX - 1, Menu);
		return Menu.GetNumActions();
	}

	void BM_ActionMenu(benchmark::State& State)
	{
		FBenchProject& Project = FBenchProject::Get();
		if (!Project.GetBlueprint())
		{
			State.SkipWithError(TCHAR_TO_UTF8(*Project.GetError()));
			return;
		}
		static double DatabaseBuildMs = -1.0;
		static double FirstMenuMs = -1.0;
		if (DatabaseBuildMs < 0.0)
		{
			const double Start = FPlatformTime::Seconds();
			FBlueprintActionDatabase::Get();
			const double Built = FPlatformTime::Seconds();
			BuildMenu(Project.GetBlueprint());
			DatabaseBuildMs = (Built - Start) * 1000.0;
			FirstMenuMs = (FPlatformTime::Seconds() - Built) * 1000.0;
		}

		int32 Actions = 0;
		for (auto _ : State)
		{
			Actions = BuildMenu(Project.GetBlueprint());
			benchmark::DoNotOptimize(Actions);
		}
		State.counters["actions"] = Actions;
		State.counters["database_actions"] = FBlueprintActionDatabase::Get().GetNumActions();
		State.counters["database_build_ms"] = DatabaseBuildMs;
		State.counters["first_menu_ms"] = FirstMenuMs;
	}
	BENCHMARK(BM_ActionMenu)->Unit(benchmark::kMillisecond);
}

BENCHMARK_MAIN();
