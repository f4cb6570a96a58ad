#pragma once

#include "CoreMinimal.h"
#include "ProjectsGlobals.h"

/**
 * Opening a project folder in the headless editor: what the engine does at start-up from its
 * command line, done by one call. Headless only; the plug-in never calls it.
 */
namespace UE::Headless
{
	/** Name of the lock file in the project's Saved folder. */
	PROJECTS_API const TCHAR* GetProjectLockFileName();

	/**
	 * Opens the project whose .uproject file is given: reads it, takes the project's write lock
	 * (Saved/.calvorn-lock holding this process's id), sets FPaths' project file, mounts Content/
	 * as /Game/ and the content of every enabled plug-in as /<Plugin>/.
	 *
	 * Fails with a message naming the file and the reason when the file cannot be read or is not
	 * a project, or when another live process holds the lock (the message names its process id
	 * and the lock file). A lock left by a process that no longer runs is taken over. Opening a
	 * second project closes the first one. Problems with single plug-ins do not fail the call;
	 * they are described in OutWarnings and the plug-in is skipped.
	 */
	PROJECTS_API bool OpenProject(const FString& UProjectPath, FString& OutError, TArray<FString>* OutWarnings = nullptr);

	/** Unmounts the project's content, clears the project file and releases the lock. */
	PROJECTS_API void CloseProject();

	/** Whether a project is open in this process. */
	[[nodiscard]] PROJECTS_API bool IsProjectOpen();
}
