#pragma once

#include "CoreMinimal.h"

namespace Calvorn
{
	class IToolExecutor;
}

namespace Calvorn::Host
{
	/**
	 * What a run of the program works in: the open project and the started tool modules, as the
	 * editor has them after start-up. Opening takes the project's write lock; closing shuts the
	 * modules down, releases the lock and, for a temporary sample project, removes its folder.
	 * The module manager and the open project are process-wide, so one session is open at a time.
	 */
	class FHostSession
	{
	public:
		FHostSession() = default;
		~FHostSession();

		FHostSession(const FHostSession&) = delete;
		FHostSession& operator=(const FHostSession&) = delete;

		/**
		 * Opens ProjectPath (a .uproject file, or a folder holding exactly one) and starts the tool
		 * modules. An empty path writes the sample project into a new temporary folder and opens it.
		 * Warnings about the project (a plug-in that was skipped) go to the log.
		 */
		bool Open(const FString& ProjectPath, FString& OutError);

		void Close();

		/** The executor the started modules registered their tools with; null while closed. */
		[[nodiscard]] const TSharedPtr<IToolExecutor>& GetExecutor() const { return Executor; }

		/** The absolute path of the open .uproject file. */
		[[nodiscard]] const FString& GetProjectFile() const { return ProjectFile; }

		/** Whether the project is a sample written for this run, removed when the session closes. */
		[[nodiscard]] bool IsTemporarySample() const { return !TemporaryFolder.IsEmpty(); }

		/** The modules the host starts when they are linked in, in start order; the first is required. */
		[[nodiscard]] static const TArray<const TCHAR*>& GetToolModuleNames();

	private:
		bool CreateTemporarySample(FString& OutProjectFile, FString& OutError);
		void RemoveTemporarySample();

		TSharedPtr<IToolExecutor> Executor;
		FString ProjectFile;
		FString TemporaryFolder;
		TArray<FName> StartedModules;
		bool bProjectOpen = false;
	};

	/**
	 * The .uproject file a command-line path names: the file itself, or the only .uproject file in
	 * the folder. Fails with a message that says what to do when there is none or more than one.
	 */
	bool ResolveProjectFile(const FString& Path, FString& OutProjectFile, FString& OutError);
}
