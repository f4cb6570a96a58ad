// Scanning a project of 5,000 package files with the asset registry: the target is under 1 ms per
// asset. The project is generated once in the system's temporary folder and deleted at exit.

#include "AssetRegistry/IAssetRegistry.h"
#include "Headless/HeadlessProject.h"
#include "Misc/FileHelper.h"
#include "Misc/Paths.h"
#include "Serialization/PackageFileHeader.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace
{
	constexpr int32 NumFolders = 50;
	constexpr int32 AssetsPerFolder = 100;

	/** A generated project, made on first use. */
	class FGeneratedProject
	{
	public:
		static FGeneratedProject& Get()
		{
			static FGeneratedProject Project;
			return Project;
		}

		bool IsOpen() const { return bOpen; }
		const FString& GetError() const { return Error; }

		~FGeneratedProject()
		{
			UE::Headless::CloseProject();
			std::error_code Ignored;
			std::filesystem::remove_all(Root, Ignored);
		}

	private:
		FGeneratedProject()
		{
			std::string Template = (std::filesystem::temp_directory_path() / "calvorn-bench-XXXXXX").string();
			if (!::mkdtemp(Template.data()))
			{
				Error = TEXT("cannot make a temporary folder");
				return;
			}
			Root = Template;
			const FString RootDir(UTF8_TO_TCHAR(Template.c_str()));
			FFileHelper::SaveStringToFile(TEXT("{\"FileVersion\": 3}\n"), *(RootDir / TEXT("Bench.uproject")));
			// Bodies of realistic size: the scan must not pay for them.
			FString Body = TEXT("\t\"objects\": [\n");
			for (int32 Index = 0; Index < 40; ++Index)
			{
				Body += FString::Printf(TEXT("\t\t{\n\t\t\t\"name\": \"K2Node_CallFunction_%d\",\n\t\t\t\"class\": \"/Script/BlueprintGraph.K2Node_CallFunction\",\n\t\t\t\"outer\": \"Asset:EventGraph\",\n\t\t\t\"flags\": \"RF_Transactional\",\n\t\t\t\"properties\":\n\t\t\t{\n\t\t\t\t\"NodePosX\": \"%d\"\n\t\t\t}\n\t\t},\n"), Index, Index * 16);
			}
			Body += TEXT("\t]\n}\n");
			for (int32 Folder = 0; Folder < NumFolders; ++Folder)
			{
				for (int32 Asset = 0; Asset < AssetsPerFolder; ++Asset)
				{
					const FString PackageName = FString::Printf(TEXT("/Game/Folder%02d/BP_Asset%03d"), Folder, Asset);
					UE::Headless::FPackageFileHeader Header;
					Header.PackageName = PackageName;
					UE::Headless::FPackageFileAssetEntry Entry;
					Entry.ObjectName = FName(FString::Printf(TEXT("BP_Asset%03d"), Asset));
					Entry.ClassPath = TEXT("/Script/Engine.Blueprint");
					Entry.Tags.Emplace(TEXT("ParentClass"), TEXT("/Script/CoreUObject.Class'/Script/Engine.Actor'"));
					Entry.Tags.Emplace(TEXT("BlueprintType"), TEXT("BPTYPE_Normal"));
					Header.Assets.Add(Entry);
					if (Asset > 0)
					{
						Header.Dependencies.Add(FName(FString::Printf(TEXT("/Game/Folder%02d/BP_Asset%03d"), Folder, Asset - 1)));
					}
					const FString Filename = RootDir / FString::Printf(TEXT("Content/Folder%02d/BP_Asset%03d.uasset"), Folder, Asset);
					FFileHelper::SaveStringToFile(Header.ToHeaderLine() + TEXT("\n") + Body, *Filename, FFileHelper::EEncodingOptions::ForceUTF8WithoutBOM);
				}
			}
			bOpen = UE::Headless::OpenProject(RootDir / TEXT("Bench.uproject"), Error);
		}

		std::filesystem::path Root;
		FString Error;
		bool bOpen = false;
	};

	void BM_AssetRegistryScan(benchmark::State& State)
	{
		FGeneratedProject& Project = FGeneratedProject::Get();
		if (!Project.IsOpen())
		{
			State.SkipWithError(TCHAR_TO_UTF8(*Project.GetError()));
			return;
		}
		IAssetRegistry& Registry = IAssetRegistry::GetChecked();
		int32 Found = 0;
		for (auto _ : State)
		{
			UE::Headless::ResetAssetRegistry();
			Registry.SearchAllAssets(true);
			TArray<FAssetData> Assets;
			Registry.GetAllAssets(Assets);
			Found = Assets.Num();
			benchmark::DoNotOptimize(Found);
		}
		if (Found != NumFolders * AssetsPerFolder)
		{
			const TArray<FString> Errors = UE::Headless::TakeAssetRegistryScanErrors();
			State.SkipWithError(TCHAR_TO_UTF8(*FString::Printf(TEXT("the scan found %d of %d assets (%s)"), Found, NumFolders * AssetsPerFolder, Errors.Num() ? *Errors[0] : TEXT("no error"))));
			return;
		}
		State.counters["assets"] = Found;
		// Seconds per asset (printed with an SI prefix, e.g. "40us").
		State.counters["time_per_asset"] = benchmark::Counter(double(Found), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
	}
	BENCHMARK(BM_AssetRegistryScan)->Unit(benchmark::kMillisecond);

	void BM_AssetRegistryClassQuery(benchmark::State& State)
	{
		FGeneratedProject& Project = FGeneratedProject::Get();
		if (!Project.IsOpen())
		{
			State.SkipWithError(TCHAR_TO_UTF8(*Project.GetError()));
			return;
		}
		IAssetRegistry& Registry = IAssetRegistry::GetChecked();
		UE::Headless::ResetAssetRegistry();
		Registry.SearchAllAssets(true);
		for (auto _ : State)
		{
			TArray<FAssetData> Assets;
			FARFilter Filter;
			Filter.ClassPaths.Add(FTopLevelAssetPath(TEXT("/Script/Engine.Blueprint")));
			Filter.PackagePaths.Add(TEXT("/Game/Folder07"));
			Registry.GetAssets(Filter, Assets);
			benchmark::DoNotOptimize(Assets.Num());
		}
	}
	BENCHMARK(BM_AssetRegistryClassQuery)->Unit(benchmark::kMicrosecond);
}

BENCHMARK_MAIN();
