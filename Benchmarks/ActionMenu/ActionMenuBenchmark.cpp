// The action menu of an Actor Blueprint's event graph over the whole catalogue, as the populate tool builds it:
// not context sensitive, every class target. The Blueprint has two colliding components, so their bound events are
// part of the menu. The first run reports the one-time database build and the first menu separately
// ("database_build_ms", "first_menu_ms"); the timed loop is a menu built again on the same database. "actions" is
// the menu's entry count. Where the keyword primitives of the toolkit module are linked in, BM_ActionMenuScoring
// scores every entry of the menu against a request as the fuzzy search does. The project lives in a temporary
// folder removed at exit.

#include "BlueprintActionDatabase.h"
#include "BlueprintActionFilter.h"
#include "BlueprintActionMenuBuilder.h"
#include "BlueprintActionMenuItem.h"
#include "BlueprintActionMenuUtils.h"
#include "BlueprintNodeSpawner.h"
#include "Engine/SCS_Node.h"
#include "Engine/SimpleConstructionScript.h"
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

#if __has_include("AssetOperationBase.h")
#include "AssetOperationBase.h"
#define CALVORN_MENU_BENCH_SCORING 1
#else
#define CALVORN_MENU_BENCH_SCORING 0
#endif

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace
{
	const TCHAR* const ComponentSphere[] = {TEXT("/Script/Engine.SphereComponent"), TEXT("CollisionComp")};
	const TCHAR* const ComponentMesh[] = {TEXT("/Script/Engine.StaticMeshComponent"), TEXT("Mesh")};

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
			if (!Blueprint || Blueprint->UbergraphPages.Num() == 0 || !Blueprint->SimpleConstructionScript.Get())
			{
				Error = TEXT("cannot create the Actor Blueprint");
				Blueprint = nullptr;
				return;
			}
			for (const TCHAR* const* Component : {ComponentSphere, ComponentMesh})
			{
				UClass* Class = FindObject<UClass>(nullptr, Component[0]);
				USCS_Node* Node = Class ? Blueprint->SimpleConstructionScript->CreateNode(Class, FName(Component[1])) : nullptr;
				if (!Node)
				{
					Error = FString::Printf(TEXT("cannot add the component %s"), Component[1]);
					Blueprint = nullptr;
					return;
				}
				Blueprint->SimpleConstructionScript->AddNode(Node);
			}
			FKismetEditorUtilities::CompileBlueprint(Blueprint);
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

#if CALVORN_MENU_BENCH_SCORING
	/** The keywords of one entry as a fuzzy search reads it: its title, then its category, then its node class. */
	TArray<FString> EntryKeywords(const TSharedPtr<FEdGraphSchemaAction>& Action)
	{
		TArray<FString> Candidate = FAssetOperationBase::CreateKeywords(Action->GetMenuDescription().ToString());
		FAssetOperationBase::AppendKeywords(Action->GetCategory().ToString(), Candidate);
		if (Action->GetTypeId() == FBlueprintActionMenuItem::StaticGetTypeId())
		{
			const UBlueprintNodeSpawner* Spawner = static_cast<FBlueprintActionMenuItem*>(Action.Get())->GetRawAction();
			if (Spawner && Spawner->NodeClass.Get())
			{
				FAssetOperationBase::AppendKeywords(Spawner->NodeClass->GetName(), Candidate);
			}
		}
		return Candidate;
	}

	/**
	 * Every entry against one request. Arg 0: the entries' keywords are made once per menu and only the comparison
	 * is timed (what a request costs); arg 1: they are made again for every request, as a search that keeps nothing.
	 */
	void BM_ActionMenuScoring(benchmark::State& State)
	{
		FBenchProject& Project = FBenchProject::Get();
		if (!Project.GetBlueprint())
		{
			State.SkipWithError(TCHAR_TO_UTF8(*Project.GetError()));
			return;
		}
		const bool bSplitEveryTime = State.range(0) != 0;
		FBlueprintActionContext Context;
		Context.Blueprints.Add(Project.GetBlueprint());
		Context.Graphs.Add(Project.GetBlueprint()->UbergraphPages[0]);
		FBlueprintActionMenuBuilder Menu;
		FBlueprintActionMenuUtils::MakeContextMenu(Context, false, EContextTargetFlags::ContextTargetFlags_MAX - 1, Menu);
		const TArray<FString> Requested = FAssetOperationBase::CreateKeywords(TEXT("On Component Begin Overlap (CollisionComp)"));
		TArray<TArray<FString>> Prepared;
		for (int32 Index = 0; Index < Menu.GetNumActions(); ++Index)
		{
			Prepared.Add(EntryKeywords(Menu.GetSchemaAction(Index)));
		}

		int32 Best = 0;
		for (auto _ : State)
		{
			Best = 0;
			for (int32 Index = 0; Index < Menu.GetNumActions(); ++Index)
			{
				const FKeywordSimilarity Similarity = bSplitEveryTime
					? FAssetOperationBase::CalculateKeywordSimilarity(Requested, EntryKeywords(Menu.GetSchemaAction(Index)))
					: FAssetOperationBase::CalculateKeywordSimilarity(Requested, Prepared[Index]);
				Best = FMath::Max(Best, Similarity.CommonKeywords);
			}
			benchmark::DoNotOptimize(Best);
		}
		State.counters["actions"] = Menu.GetNumActions();
		State.counters["best_common_keywords"] = Best;
	}
	BENCHMARK(BM_ActionMenuScoring)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
#endif
}

BENCHMARK_MAIN();
