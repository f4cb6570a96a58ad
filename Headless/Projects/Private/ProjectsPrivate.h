#pragma once

#include "CoreMinimal.h"

#include <filesystem>

/** What the Projects module's files share among themselves. */
namespace UE::Projects::Private
{
	/** Mounts or unmounts content through the plug-in manager's mount-point delegates (no-ops while unbound). */
	void RegisterMountPoint(const FString& RootPath, const FString& ContentPath);
	void UnRegisterMountPoint(const FString& RootPath, const FString& ContentPath);

	/** Unmounts every plug-in and forgets them all, as when the project closes. */
	void ForgetAllPlugins();

	/** Problems met by the last plug-in search, one sentence each; cleared by the call. */
	TArray<FString> TakePluginWarnings();

	/** An engine path as a file-system path. */
	std::filesystem::path ToFileSystemPath(const FString& Path);
}
