#include "HostCommandLine.h"

namespace Calvorn::Host
{
	namespace
	{
		struct FCommandSpec
		{
			const TCHAR* Name;
			EHostCommand Command;
			/** Positional arguments the command takes, exactly. */
			int32 ArgumentCount;
			bool bTakesProject;
			bool bTakesJson;
		};

		const FCommandSpec CommandSpecs[] = {
			{TEXT("serve"), EHostCommand::Serve, 0, true, false},
			{TEXT("call"), EHostCommand::Call, 2, true, false},
			{TEXT("tools"), EHostCommand::Tools, 0, true, true},
			{TEXT("demo"), EHostCommand::Demo, 0, true, false},
			{TEXT("init-sample"), EHostCommand::InitSample, 1, false, false},
			{TEXT("help"), EHostCommand::Help, 0, false, false},
			{TEXT("version"), EHostCommand::Version, 0, false, false},
		};

		const FCommandSpec* FindCommand(const FString& Name)
		{
			for (const FCommandSpec& Spec : CommandSpecs)
			{
				if (Name.Equals(Spec.Name, ESearchCase::CaseSensitive))
				{
					return &Spec;
				}
			}
			return nullptr;
		}

		bool IsOption(const FString& Arg)
		{
			// A lone "-" is an argument: call reads its JSON from standard input then.
			return Arg.Len() > 1 && Arg[0] == TCHAR('-');
		}
	}

	bool ParseHostCommandLine(const TArray<FString>& Args, FHostCommandLine& OutCommandLine, FString& OutError)
	{
		OutCommandLine = FHostCommandLine();
		const FCommandSpec* Spec = nullptr;
		TArray<FString> Positional;
		bool bProjectGiven = false;
		bool bHelp = false;
		bool bVersion = false;
		bool bOptionsEnded = false;

		for (int32 Index = 0; Index < Args.Num(); ++Index)
		{
			const FString& Arg = Args[Index];
			if (!bOptionsEnded && IsOption(Arg))
			{
				if (Arg.Equals(TEXT("--"), ESearchCase::CaseSensitive))
				{
					bOptionsEnded = true;
				}
				else if (Arg.Equals(TEXT("--help"), ESearchCase::CaseSensitive) || Arg.Equals(TEXT("-h"), ESearchCase::CaseSensitive))
				{
					bHelp = true;
				}
				else if (Arg.Equals(TEXT("--version"), ESearchCase::CaseSensitive))
				{
					bVersion = true;
				}
				else if (Arg.Equals(TEXT("--json"), ESearchCase::CaseSensitive))
				{
					OutCommandLine.bJson = true;
				}
				else if (Arg.Equals(TEXT("--verbose"), ESearchCase::CaseSensitive) || Arg.Equals(TEXT("-v"), ESearchCase::CaseSensitive))
				{
					OutCommandLine.bVerbose = true;
				}
				else if (Arg.Equals(TEXT("--project"), ESearchCase::CaseSensitive) || Arg.StartsWith(TEXT("--project="), ESearchCase::CaseSensitive))
				{
					if (bProjectGiven)
					{
						OutError = TEXT("--project is given more than once");
						return false;
					}
					bProjectGiven = true;
					if (Arg.Len() > 9)
					{
						OutCommandLine.ProjectPath = Arg.RightChop(10);
					}
					else if (Index + 1 < Args.Num())
					{
						OutCommandLine.ProjectPath = Args[++Index];
					}
					if (OutCommandLine.ProjectPath.IsEmpty())
					{
						OutError = TEXT("--project needs a project folder or .uproject file");
						return false;
					}
				}
				else
				{
					OutError = FString::Printf(TEXT("unknown option '%s'"), *Arg);
					return false;
				}
				continue;
			}
			if (!Spec)
			{
				Spec = FindCommand(Arg);
				if (!Spec)
				{
					OutError = FString::Printf(TEXT("unknown command '%s'"), *Arg);
					return false;
				}
				continue;
			}
			Positional.Add(Arg);
		}

		if (bHelp || (!Spec && !bVersion))
		{
			// Plain "calvorn-bp" shows the usage too, but as a usage error: it did nothing.
			OutCommandLine.Command = EHostCommand::Help;
			if (!bHelp)
			{
				OutError = TEXT("no command given");
				return false;
			}
			return true;
		}
		if (bVersion && !Spec)
		{
			OutCommandLine.Command = EHostCommand::Version;
			return true;
		}

		OutCommandLine.Command = Spec->Command;
		if (bProjectGiven && !Spec->bTakesProject)
		{
			OutError = FString::Printf(TEXT("%s does not take --project"), Spec->Name);
			return false;
		}
		if (OutCommandLine.bJson && !Spec->bTakesJson)
		{
			OutError = FString::Printf(TEXT("%s does not take --json"), Spec->Name);
			return false;
		}
		if (Positional.Num() != Spec->ArgumentCount)
		{
			switch (Spec->Command)
			{
			case EHostCommand::Call:
				OutError = TEXT("call needs a tool name and its parameters as JSON text, e.g. call read_blueprint_schema '{\"path\":\"/Game/BP_Door\"}'");
				break;
			case EHostCommand::InitSample:
				OutError = TEXT("init-sample needs the folder to write the sample project into");
				break;
			default:
				OutError = FString::Printf(TEXT("%s takes no arguments, but got '%s'"), Spec->Name, *Positional[0]);
				break;
			}
			return false;
		}

		if (Spec->Command == EHostCommand::Call)
		{
			OutCommandLine.ToolName = Positional[0];
			OutCommandLine.ToolArguments = Positional[1];
		}
		else if (Spec->Command == EHostCommand::InitSample)
		{
			OutCommandLine.SampleDirectory = Positional[0];
		}
		return true;
	}

	FString GetHostUsage()
	{
		return TEXT(
			"calvorn-bp: Unreal Engine Blueprint tools for AI agents, without Unreal.\n"
			"\n"
			"Usage:\n"
			"  calvorn-bp serve [--project DIR]           MCP server on standard input and output\n"
			"  calvorn-bp call TOOL JSON [--project DIR]  run one tool; JSON '-' reads standard input\n"
			"  calvorn-bp tools [--json] [--project DIR]  list the tools (--json: with their schemas)\n"
			"  calvorn-bp demo [--project DIR]            a short scripted MCP session\n"
			"  calvorn-bp init-sample DIR                 write the sample project into DIR\n"
			"  calvorn-bp --help | --version\n"
			"\n"
			"Options:\n"
			"  --project DIR  a project folder (or its .uproject file); without it the sample project\n"
			"                 is written into a temporary folder, removed at exit\n"
			"  --verbose      log every message to standard error\n"
			"\n"
			"Exit status: 0 success, 1 the tool or command failed, 2 usage error.\n");
	}
}
