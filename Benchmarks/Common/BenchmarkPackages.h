#pragma once

// What the save and load benchmarks share: a package's file, forgetting a package (its objects collected, its file
// deleted), saving an asset, and timing loads of a saved package.

#include "CoreMinimal.h"
#include "HAL/FileManager.h"
#include "Headless/HeadlessProject.h"
#include "Misc/PackageName.h"
#include "UObject/Package.h"
#include "UObject/SavePackage.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"

#include <benchmark/benchmark.h>

namespace UE::Benchmarks
{
	inline FString PackageFile(const TCHAR* PackageName)
	{
		return FPackageName::LongPackageNameToFilename(PackageName, TEXT(".uasset"));
	}

	/** Collects the package and everything in it, as the editor does when an asset is closed. */
	inline void UnloadPackage(UPackage* Package)
	{
		TArray<UObject*> Inner;
		GetObjectsWithOuter(Package, Inner, true);
		for (UObject* Object : Inner)
		{
			Object->ClearFlags(RF_Standalone);
			Object->MarkAsGarbage();
		}
		Package->MarkAsGarbage();
		CollectGarbage(RF_NoFlags);
	}

	/** The package unloaded, if in memory, and its file gone, so a benchmark starts from nothing. */
	inline void ForgetPackage(const TCHAR* PackageName)
	{
		if (UPackage* Package = FindObject<UPackage>(nullptr, PackageName))
		{
			UnloadPackage(Package);
		}
		IFileManager::Get().Delete(*PackageFile(PackageName));
	}

	/** Saves the asset's package to its file; false after telling the benchmark why not. */
	inline bool SaveAssetPackage(benchmark::State& State, UObject* Asset)
	{
		UPackage* Package = Asset->GetPackage();
		if (!UPackage::Save(Package, Asset, *PackageFile(*Package->GetName()), FSavePackageArgs()).IsSuccessful())
		{
			State.SkipWithError(TCHAR_TO_UTF8(*UE::Headless::GetLastPackageError()));
			return false;
		}
		return true;
	}

	/**
	 * Times loading the saved package again and again, unloading it untimed before each load. Measure(Package) runs
	 * untimed after each load and gives what the benchmark checks; the last answer is returned, -1 after a failed load.
	 */
	template <typename MeasureType>
	int32 TimePackageLoads(benchmark::State& State, const TCHAR* PackageName, MeasureType&& Measure)
	{
		int32 Measured = -1;
		for (auto _ : State)
		{
			State.PauseTiming();
			if (UPackage* Loaded = FindObject<UPackage>(nullptr, PackageName))
			{
				UnloadPackage(Loaded);
			}
			State.ResumeTiming();
			UPackage* Package = LoadPackage(nullptr, PackageName, LOAD_None);
			if (!Package)
			{
				State.SkipWithError(TCHAR_TO_UTF8(*UE::Headless::GetLastPackageError()));
				return -1;
			}
			State.PauseTiming();
			Measured = Measure(Package);
			State.ResumeTiming();
		}
		return Measured;
	}
}
