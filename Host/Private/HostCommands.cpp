#include "HostCommands.h"

#include "Demo.h"
#include "HostLog.h"
#include "HostSession.h"
#include "IToolExecutor.h"
#include "JsonRpc.h"
#include "SampleProject.h"
#include "ToolCommand.h"
#include "ToolResult.h"

#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Misc/Paths.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"
#include "Serialization/JsonWriter.h"

#include <csignal>
#include <cstdio>
#include <unistd.h>

namespace Calvorn::Host
{
	namespace
	{
		void PrintToStdout(const FString& Text)
		{
			const std::string Bytes = FStringToUTF8(Text);
			std::fwrite(Bytes.data(), 1, Bytes.size(), stdout);
			std::fflush(stdout);
		}

		FString ToPrettyJson(const TSharedRef<FJsonObject>& Object)
		{
			FString Text;
			FJsonSerializer::Serialize(Object, TJsonWriterFactory<>::Create(&Text));
			return Text;
		}

		FString ToPrettyJson(const TArray<TSharedPtr<FJsonValue>>& Array)
		{
			FString Text;
			FJsonSerializer::Serialize(Array, TJsonWriterFactory<>::Create(&Text));
			return Text;
		}

		bool ReadAllStdin(FString& OutText)
		{
			std::string Bytes;
			char Buffer[64 * 1024];
			FFileDescriptorSource Input(STDIN_FILENO);
			for (;;)
			{
				const int64 Count = Input.Read(Buffer, sizeof(Buffer));
				if (Count < 0)
				{
					return false;
				}
				if (Count == 0)
				{
					break;
				}
				Bytes.append(Buffer, static_cast<size_t>(Count));
			}
			OutText = UTF8ToFString(Bytes);
			return true;
		}

		int32 RunInitSample(const FHostCommandLine& CommandLine)
		{
			FString ProjectFile;
			FString Error;
			if (!WriteSampleProject(CommandLine.SampleDirectory, ProjectFile, Error))
			{
				HostLogError(Error);
				return HostExitCode::Failure;
			}
			PrintToStdout(ProjectFile + TEXT("\n"));
			return HostExitCode::Success;
		}

		int32 RunCall(FHostSession& Session, const FHostCommandLine& CommandLine)
		{
			FString Arguments = CommandLine.ToolArguments;
			if (Arguments.Equals(TEXT("-"), ESearchCase::CaseSensitive) && !ReadAllStdin(Arguments))
			{
				HostLogError(TEXT("could not read the tool's parameters from standard input"));
				return HostExitCode::Failure;
			}
			const FToolResult Result = Session.GetExecutor()->ExecuteCommand(FToolCommand(TEXT("cli"), CommandLine.ToolName, Arguments));
			const TSharedRef<FJsonObject> Json = Result.ToJson();
			PrintToStdout(ToPrettyJson(Json) + TEXT("\n"));
			bool bSuccess = false;
			Json->TryGetBoolField(TEXT("success"), bSuccess);
			return bSuccess ? HostExitCode::Success : HostExitCode::Failure;
		}

		int32 RunTools(FHostSession& Session, const FHostCommandLine& CommandLine)
		{
			const TArray<FToolDescriptor> Tools = Session.GetExecutor()->ListTools();
			if (CommandLine.bJson)
			{
				TArray<TSharedPtr<FJsonValue>> Array;
				for (const FToolDescriptor& Tool : Tools)
				{
					TSharedRef<FJsonObject> Entry = MakeShared<FJsonObject>();
					Entry->SetStringField(TEXT("name"), Tool.Name);
					Entry->SetStringField(TEXT("description"), Tool.Description);
					Entry->SetStringField(TEXT("category"), Tool.Category);
					// The schema exactly as MCP clients are given it.
					Entry->SetObjectField(TEXT("inputSchema"), FMcpServer::MakeToolInputSchema(Tool));
					TSharedPtr<FJsonObject> Metadata;
					if (!FJsonSerializer::Deserialize(TJsonReaderFactory<TCHAR>::Create(Tool.MetadataJson), Metadata) || !Metadata.IsValid())
					{
						Metadata = MakeShared<FJsonObject>();
					}
					Entry->SetObjectField(TEXT("metadata"), Metadata);
					Array.Add(MakeShared<FJsonValueObject>(Entry));
				}
				PrintToStdout(ToPrettyJson(Array) + TEXT("\n"));
				return HostExitCode::Success;
			}
			if (Tools.Num() == 0)
			{
				HostLogDisplay(TEXT("no tool is registered in this build yet: the Blueprint tools join as their operations are implemented"));
				return HostExitCode::Success;
			}
			FString Text;
			for (const FToolDescriptor& Tool : Tools)
			{
				Text += FString::Printf(TEXT("%s\n    %s\n"), *Tool.Name, *Tool.Description);
			}
			PrintToStdout(Text);
			return HostExitCode::Success;
		}

		/** The signal that asked the server to stop, or 0. */
		volatile std::sig_atomic_t GStopSignal = 0;

		void RequestStop(int Signal)
		{
			GStopSignal = Signal;
		}

		/**
		 * Ctrl-C or a client's SIGTERM ends the server the same way as closing its input: the read it
		 * waits in is interrupted (no SA_RESTART), the session closes, the lock is released and a
		 * temporary sample project is removed.
		 */
		void InstallStopHandlers()
		{
			struct sigaction Action = {};
			Action.sa_handler = &RequestStop;
			sigemptyset(&Action.sa_mask);
			Action.sa_flags = 0;
			::sigaction(SIGINT, &Action, nullptr);
			::sigaction(SIGTERM, &Action, nullptr);
		}

		int32 RunServe(FHostSession& Session, int32 ProtocolOutput)
		{
			FMcpServer Server(Session.GetExecutor().ToSharedRef(), MakeServerInfo(Session.GetProjectFile()));
			HostLogDisplay(FString::Printf(TEXT("MCP server %s on %s with %d tool%s; reading requests from standard input"),
				HostVersion, *Session.GetProjectFile(), Session.GetExecutor()->GetToolNames().Num(), Session.GetExecutor()->GetToolNames().Num() == 1 ? TEXT("") : TEXT("s")));
			InstallStopHandlers();
			FFileDescriptorSource Input(STDIN_FILENO, &GStopSignal);
			FFileDescriptorSink Output(ProtocolOutput);
			Server.Serve(Input, Output);
			if (GStopSignal != 0)
			{
				HostLogDisplay(FString::Printf(TEXT("stopped by signal %d"), static_cast<int32>(GStopSignal)));
				// The shell's convention for a program ended by a signal.
				return 128 + static_cast<int32>(GStopSignal);
			}
			HostLogDisplay(TEXT("standard input closed; the server stops"));
			return HostExitCode::Success;
		}

		int32 RunDemo(FHostSession& Session)
		{
			FMcpServer Server(Session.GetExecutor().ToSharedRef(), MakeServerInfo(Session.GetProjectFile()));
			PrintToStdout(FString::Printf(TEXT("%s demo: a scripted MCP session with the server, in this process, on %s%s.\n"
												"Each request is shown as sent (>), then the essence of the server's answer (<).\n\n"),
				HostProgramName, *Session.GetProjectFile(), Session.IsTemporarySample() ? TEXT(" (the sample project)") : TEXT("")));
			const bool bAsExpected = RunDemoSession(Server, [](const FString& Line) { PrintToStdout(Line + TEXT("\n")); });
			PrintToStdout(FString::Printf(TEXT("\nConnect an agent: %s serve --project <folder> (see the README).\n"), HostProgramName));
			return bAsExpected ? HostExitCode::Success : HostExitCode::Failure;
		}

		/**
		 * From here on standard output belongs to the protocol: the messages go to a copy of it, and
		 * the descriptor itself is pointed at standard error, so that a stray print anywhere in the
		 * program can never corrupt the stream a client is parsing. Returns the protocol's descriptor.
		 */
		int32 ReserveStdoutForProtocol()
		{
			std::fflush(stdout);
			const int32 ProtocolOutput = ::dup(STDOUT_FILENO);
			if (ProtocolOutput < 0 || ::dup2(STDERR_FILENO, STDOUT_FILENO) < 0)
			{
				return STDOUT_FILENO;
			}
			return ProtocolOutput;
		}
	}

	FMcpServerInfo MakeServerInfo(const FString& ProjectFile)
	{
		FMcpServerInfo Info;
		Info.Name = HostProgramName;
		Info.Title = TEXT("Calvorn Blueprint tools");
		Info.Version = HostVersion;
		Info.Instructions = FString::Printf(
			TEXT("Tools that read and edit the Unreal Engine Blueprints of the project %s, in a headless editor that needs no Unreal installation. "
				 "Assets are named by package path (/Game/... for the project's Content folder). A call has failed when its result has errors or a warning containing [Failure]."),
			*FPaths::GetBaseFilename(ProjectFile));
		return Info;
	}

	int32 RunHostCommand(const FHostCommandLine& CommandLine)
	{
		if (CommandLine.bVerbose)
		{
			SetHostLogVerbosity(EHostLogVerbosity::Verbose);
		}
		switch (CommandLine.Command)
		{
		case EHostCommand::Help:
			PrintToStdout(GetHostUsage());
			return HostExitCode::Success;
		case EHostCommand::Version:
			PrintToStdout(FString::Printf(TEXT("%s %s\n"), HostProgramName, HostVersion));
			return HostExitCode::Success;
		case EHostCommand::InitSample:
			return RunInitSample(CommandLine);
		default:
			break;
		}

		// A client that goes away mid-answer must end the server through a failed write, not a signal.
		std::signal(SIGPIPE, SIG_IGN);
		const int32 ProtocolOutput = CommandLine.Command == EHostCommand::Serve ? ReserveStdoutForProtocol() : STDOUT_FILENO;

		FHostSession Session;
		FString Error;
		if (!Session.Open(CommandLine.ProjectPath, Error))
		{
			HostLogError(Error);
			return HostExitCode::Failure;
		}
		switch (CommandLine.Command)
		{
		case EHostCommand::Serve:
			return RunServe(Session, ProtocolOutput);
		case EHostCommand::Call:
			return RunCall(Session, CommandLine);
		case EHostCommand::Tools:
			return RunTools(Session, CommandLine);
		case EHostCommand::Demo:
			return RunDemo(Session);
		default:
			checkNoEntry();
			return HostExitCode::Failure;
		}
	}

	int32 RunHost(const TArray<FString>& Args)
	{
		FHostCommandLine CommandLine;
		FString Error;
		if (!ParseHostCommandLine(Args, CommandLine, Error))
		{
			HostLogError(Error);
			const std::string Usage = FStringToUTF8(GetHostUsage());
			std::fwrite(Usage.data(), 1, Usage.size(), stderr);
			return HostExitCode::Usage;
		}
		return RunHostCommand(CommandLine);
	}
}
