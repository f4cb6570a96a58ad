#include "ExternalProcess.h"

#include "HAL/PlatformTime.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace Calvorn::Private
{
	namespace
	{
		constexpr size_t MaxKeptOutput = 64 * 1024;

		std::string ToUtf8(const FString& Text)
		{
			return std::string(TCHAR_TO_UTF8(*Text));
		}

		FString ErrnoText(int Error)
		{
			return UTF8_TO_TCHAR(std::strerror(Error));
		}
	}

	FProcessOutcome RunProcess(const FString& Program, const TArray<FString>& Arguments, const FString& WorkingDirectory, double TimeoutSeconds)
	{
		FProcessOutcome Outcome;

		std::vector<std::string> Storage;
		Storage.push_back(ToUtf8(Program));
		for (const FString& Argument : Arguments)
		{
			Storage.push_back(ToUtf8(Argument));
		}
		std::vector<char*> Argv;
		for (std::string& Arg : Storage)
		{
			Argv.push_back(Arg.data());
		}
		Argv.push_back(nullptr);

		int Pipe[2];
		if (pipe2(Pipe, O_CLOEXEC) != 0)
		{
			Outcome.StartError = FString::Printf(TEXT("cannot make a pipe: %s"), *ErrnoText(errno));
			return Outcome;
		}

		posix_spawn_file_actions_t Actions;
		posix_spawn_file_actions_init(&Actions);
		posix_spawn_file_actions_addopen(&Actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
		posix_spawn_file_actions_adddup2(&Actions, Pipe[1], STDOUT_FILENO);
		posix_spawn_file_actions_adddup2(&Actions, Pipe[1], STDERR_FILENO);
		const std::string Directory = ToUtf8(WorkingDirectory);
		if (!Directory.empty())
		{
			posix_spawn_file_actions_addchdir_np(&Actions, Directory.c_str());
		}

		pid_t Pid = 0;
		const int SpawnError = posix_spawnp(&Pid, Argv[0], &Actions, nullptr, Argv.data(), environ);
		posix_spawn_file_actions_destroy(&Actions);
		close(Pipe[1]);
		if (SpawnError != 0)
		{
			close(Pipe[0]);
			Outcome.StartError = FString::Printf(TEXT("cannot run %s: %s"), *Program, *ErrnoText(SpawnError));
			return Outcome;
		}
		Outcome.bStarted = true;

		std::string Output;
		const double Deadline = FPlatformTime::Seconds() + TimeoutSeconds;
		bool bOpen = true;
		while (bOpen)
		{
			const double Remaining = Deadline - FPlatformTime::Seconds();
			if (Remaining <= 0.0)
			{
				Outcome.bTimedOut = true;
				break;
			}
			pollfd Poll{Pipe[0], POLLIN, 0};
			const int Ready = poll(&Poll, 1, static_cast<int>(FMath::Min(Remaining * 1000.0, 1000.0)) + 1);
			if (Ready < 0 && errno != EINTR)
			{
				break;
			}
			if (Ready <= 0)
			{
				continue;
			}
			char Buffer[4096];
			const ssize_t Count = read(Pipe[0], Buffer, sizeof(Buffer));
			if (Count > 0)
			{
				if (Output.size() < MaxKeptOutput)
				{
					Output.append(Buffer, static_cast<size_t>(Count));
				}
			}
			else if (Count == 0 || errno != EINTR)
			{
				bOpen = false;
			}
		}
		close(Pipe[0]);

		// The output can end before the program does (it may close its streams and go on): the time
		// limit holds for the exit as well.
		int Status = 0;
		for (;;)
		{
			if (Outcome.bTimedOut)
			{
				kill(Pid, SIGKILL);
				while (waitpid(Pid, &Status, 0) < 0 && errno == EINTR)
				{
				}
				break;
			}
			const pid_t Waited = waitpid(Pid, &Status, WNOHANG);
			if (Waited == Pid || (Waited < 0 && errno != EINTR))
			{
				break;
			}
			if (FPlatformTime::Seconds() >= Deadline)
			{
				Outcome.bTimedOut = true;
				continue;
			}
			usleep(2000);
		}
		if (WIFEXITED(Status))
		{
			Outcome.ExitCode = WEXITSTATUS(Status);
		}
		Outcome.Output = UTF8_TO_TCHAR(Output.c_str());
		Outcome.Output.TrimStartAndEndInline();
		return Outcome;
	}
}
