#pragma once

#include "CoreMinimal.h"
#include "ProjectDescriptor.h"
#include "ProjectsGlobals.h"

/** Knows the project file the program works on. */
class IProjectManager
{
public:
	virtual ~IProjectManager() = default;

	/** The process-wide project manager. */
	[[nodiscard]] static PROJECTS_API IProjectManager& Get();

	/** The descriptor of the loaded project, or null when none is loaded. */
	virtual const FProjectDescriptor* GetCurrentProject() const = 0;

	/**
	 * Reads a .uproject file and makes it the current project. On failure the current project is
	 * unchanged and the reason (naming the file) is kept for GetLastLoadFailureReason.
	 */
	virtual bool LoadProjectFile(const FString& ProjectFile) = 0;

	/** Why the last LoadProjectFile call failed; empty after a success. */
	virtual const FText& GetLastLoadFailureReason() const = 0;

	/** Forgets the current project. */
	virtual void ClearCurrentProject() = 0;

	/** Whether the current project turns the plug-in on or off explicitly; OutEnabled says which. */
	virtual bool IsPluginReferenced(const FString& PluginName, bool& OutEnabled) const = 0;
};
