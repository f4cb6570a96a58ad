#pragma once

#include "CoreMinimal.h"

/**
 * The sample project the program carries: a Blueprint-only project laid out as the editor lays
 * one out (a .uproject, a Config folder, an empty Content folder), so that an agent can be pointed
 * at the tools without an Unreal project of its own. The files are fixed text: the same bytes on
 * every run and machine.
 */
namespace Calvorn::Host
{
	struct FSampleProjectFile
	{
		/** Relative to the project folder, with forward slashes. */
		const TCHAR* RelativePath;
		const TCHAR* Text;
	};

	/** The project's name, which is also its .uproject file's base name. */
	inline constexpr const TCHAR* SampleProjectName = TEXT("CalvornSample");

	/** The files of the sample project, in the order they are written. */
	[[nodiscard]] const TArray<FSampleProjectFile>& GetSampleProjectFiles();

	/** The folders the sample project has besides those that hold its files. */
	[[nodiscard]] const TArray<const TCHAR*>& GetSampleProjectFolders();

	/**
	 * Writes the sample project into Directory, creating it when needed. Refuses a directory that
	 * already holds anything, so an existing project is never overwritten. On success OutProjectFile
	 * is the absolute path of the .uproject file.
	 */
	bool WriteSampleProject(const FString& Directory, FString& OutProjectFile, FString& OutError);
}
