#include "Headless/HeadlessProject.h"
#include "Misc/FileHelper.h"
#include "Misc/Paths.h"
#include "TempProjectFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
	/**
	 * A child process that opens the project and keeps it open until told to stop. The child
	 * leaves with _exit, skipping the exit handlers, as a crashed editor would: its lock file stays
	 * behind with its process id.
	 */
	class FLockHolder
	{
	public:
		explicit FLockHolder(const FString& ProjectFile)
		{
			int Ready[2];
			int Stop[2];
			EXPECT_EQ(::pipe(Ready), 0);
			EXPECT_EQ(::pipe(Stop), 0);
			Pid = ::fork();
			if (Pid == 0)
			{
				::close(Ready[0]);
				::close(Stop[1]);
				FString Error;
				const char Result = UE::Headless::OpenProject(ProjectFile, Error) ? 'y' : 'n';
				(void)!::write(Ready[1], &Result, 1);
				char Ignored;
				(void)!::read(Stop[0], &Ignored, 1);
				::_exit(0);
			}
			::close(Ready[1]);
			::close(Stop[0]);
			StopPipe = Stop[1];
			char Result = 'n';
			EXPECT_EQ(::read(Ready[0], &Result, 1), 1);
			::close(Ready[0]);
			bOpened = Result == 'y';
		}

		void StopAndWait()
		{
			if (StopPipe >= 0)
			{
				::close(StopPipe);
				StopPipe = -1;
				int Status = 0;
				::waitpid(Pid, &Status, 0);
			}
		}

		~FLockHolder() { StopAndWait(); }

		pid_t Pid = -1;
		bool bOpened = false;

	private:
		int StopPipe = -1;
	};
}

TEST(ProjectLock, ASecondProcessIsRefusedWithItsProcessIdAndTheLockFile)
{
	FTempProjectFolder Folder;
	ASSERT_FALSE(UE::Headless::IsProjectOpen()) << "the child must not inherit a lock";
	FLockHolder Holder(Folder.GetProjectFile());
	ASSERT_TRUE(Holder.bOpened);

	FString Error;
	EXPECT_FALSE(UE::Headless::OpenProject(Folder.GetProjectFile(), Error));
	EXPECT_EQ(U8(Error), "The project is already open for writing by process " + std::to_string(Holder.Pid) + " (lock file '"
		+ U8(Folder.Path(TEXT("Saved/.calvorn-lock"))) + "'). Close that process before opening the project again.");
	EXPECT_FALSE(UE::Headless::IsProjectOpen());

	// Once the holder is gone, its leftover lock file is taken over.
	Holder.StopAndWait();
	ASSERT_TRUE(FPaths::FileExists(Folder.Path(TEXT("Saved/.calvorn-lock"))));
	Folder.Open();
	FString Owner;
	ASSERT_TRUE(FFileHelper::LoadFileToString(Owner, *Folder.Path(TEXT("Saved/.calvorn-lock"))));
	EXPECT_EQ(U8(Owner), std::to_string(::getpid()) + "\n");
}

TEST(ProjectLock, AProjectLockedElsewhereLeavesTheOpenProjectOpen)
{
	FTempProjectFolder Locked(TEXT("Locked"));
	FTempProjectFolder Mine(TEXT("Mine"));
	FLockHolder Holder(Locked.GetProjectFile());
	ASSERT_TRUE(Holder.bOpened);
	Mine.Open();

	FString Error;
	EXPECT_FALSE(UE::Headless::OpenProject(Locked.GetProjectFile(), Error));
	EXPECT_TRUE(UE::Headless::IsProjectOpen());
	EXPECT_EQ(U8(FPaths::GetProjectFilePath()), U8(Mine.GetProjectFile()));
	EXPECT_TRUE(FPaths::FileExists(Mine.Path(TEXT("Saved/.calvorn-lock"))));
}

TEST(ProjectLock, AStaleLockFileFromADeadProcessIsTakenOver)
{
	FTempProjectFolder Folder;
	const pid_t Dead = ::fork();
	if (Dead == 0)
	{
		::_exit(0);
	}
	int Status = 0;
	::waitpid(Dead, &Status, 0);
	Folder.WriteFile(TEXT("Saved/.calvorn-lock"), FString::Printf(TEXT("%d\n"), int32(Dead)));

	Folder.Open();
	FString Owner;
	ASSERT_TRUE(FFileHelper::LoadFileToString(Owner, *Folder.Path(TEXT("Saved/.calvorn-lock"))));
	EXPECT_EQ(U8(Owner), std::to_string(::getpid()) + "\n");
}

TEST(ProjectLock, ALockIsRemovedWhenItsProcessExitsNormally)
{
	FTempProjectFolder Folder;
	ASSERT_FALSE(UE::Headless::IsProjectOpen());
	const pid_t Child = ::fork();
	if (Child == 0)
	{
		FString Error;
		// Runs the exit handlers, which release the lock.
		std::exit(UE::Headless::OpenProject(Folder.GetProjectFile(), Error) && FPaths::FileExists(Folder.Path(TEXT("Saved/.calvorn-lock"))) ? 0 : 1);
	}
	int Status = 0;
	::waitpid(Child, &Status, 0);
	ASSERT_TRUE(WIFEXITED(Status));
	EXPECT_EQ(WEXITSTATUS(Status), 0);
	EXPECT_FALSE(FPaths::FileExists(Folder.Path(TEXT("Saved/.calvorn-lock"))));
}
