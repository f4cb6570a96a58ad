#include "HostTestSupport.h"
#include "HostCommandLine.h"

#include <vector>

using namespace Calvorn::Host;
using namespace HostTests;

namespace
{
	TArray<FString> Args(const std::vector<const char*>& Items)
	{
		TArray<FString> Out;
		for (const char* Item : Items)
		{
			Out.Add(UTF8ToFString(Item));
		}
		return Out;
	}

	struct FAccepted
	{
		std::vector<const char*> Args;
		EHostCommand Command;
		std::string Project;
		std::string ToolName;
		std::string ToolArguments;
		std::string SampleDirectory;
		bool bJson;
		bool bVerbose;
	};

	TEST(HostCommandLine, ReadsEveryCommandWithItsOptions)
	{
		const FAccepted Cases[] = {
			{{"serve"}, EHostCommand::Serve, "", "", "", "", false, false},
			{{"serve", "--project", "Games/Shooter"}, EHostCommand::Serve, "Games/Shooter", "", "", "", false, false},
			{{"--project=/p/My Game.uproject", "serve", "-v"}, EHostCommand::Serve, "/p/My Game.uproject", "", "", "", false, true},
			{{"call", "read_blueprint_schema", R"({"path":"/Game/BP"})"}, EHostCommand::Call, "", "read_blueprint_schema", R"({"path":"/Game/BP"})", "", false, false},
			{{"call", "t", "-", "--project", "P"}, EHostCommand::Call, "P", "t", "-", "", false, false},
			{{"call", "--verbose", "t", "--", "-5"}, EHostCommand::Call, "", "t", "-5", "", false, true},
			{{"tools"}, EHostCommand::Tools, "", "", "", "", false, false},
			{{"tools", "--json", "--project", "P"}, EHostCommand::Tools, "P", "", "", "", true, false},
			{{"demo"}, EHostCommand::Demo, "", "", "", "", false, false},
			{{"init-sample", "out/Sample"}, EHostCommand::InitSample, "", "", "", "out/Sample", false, false},
			{{"--help"}, EHostCommand::Help, "", "", "", "", false, false},
			{{"serve", "-h"}, EHostCommand::Help, "", "", "", "", false, false},
			{{"help"}, EHostCommand::Help, "", "", "", "", false, false},
			{{"--version"}, EHostCommand::Version, "", "", "", "", false, false},
			{{"version"}, EHostCommand::Version, "", "", "", "", false, false},
		};
		for (const FAccepted& Case : Cases)
		{
			FHostCommandLine CommandLine;
			FString Error;
			const std::string Joined = [&Case] { std::string Text; for (const char* Arg : Case.Args) { Text += std::string(Arg) + " "; } return Text; }();
			ASSERT_TRUE(ParseHostCommandLine(Args(Case.Args), CommandLine, Error)) << Joined << ": " << U8(Error);
			EXPECT_EQ(CommandLine.Command, Case.Command) << Joined;
			EXPECT_EQ(U8(CommandLine.ProjectPath), Case.Project) << Joined;
			EXPECT_EQ(U8(CommandLine.ToolName), Case.ToolName) << Joined;
			EXPECT_EQ(U8(CommandLine.ToolArguments), Case.ToolArguments) << Joined;
			EXPECT_EQ(U8(CommandLine.SampleDirectory), Case.SampleDirectory) << Joined;
			EXPECT_EQ(CommandLine.bJson, Case.bJson) << Joined;
			EXPECT_EQ(CommandLine.bVerbose, Case.bVerbose) << Joined;
		}
	}

	TEST(HostCommandLine, RefusesUsageErrorsWithAReason)
	{
		const struct
		{
			std::vector<const char*> Args;
			std::string Error;
		} Cases[] = {
			{{}, "no command given"},
			{{"--verbose"}, "no command given"},
			{{"server"}, "unknown command 'server'"},
			{{"Serve"}, "unknown command 'Serve'"},
			{{"serve", "--port", "8"}, "unknown option '--port'"},
			{{"serve", "extra"}, "serve takes no arguments, but got 'extra'"},
			{{"serve", "--project"}, "--project needs a project folder or .uproject file"},
			{{"serve", "--project="}, "--project needs a project folder or .uproject file"},
			{{"serve", "--project", "A", "--project", "B"}, "--project is given more than once"},
			{{"serve", "--json"}, "serve does not take --json"},
			{{"init-sample", "D", "--project", "P"}, "init-sample does not take --project"},
			{{"init-sample"}, "init-sample needs the folder to write the sample project into"},
			{{"init-sample", "A", "B"}, "init-sample needs the folder to write the sample project into"},
			{{"call", "tool_only"}, "call needs a tool name and its parameters as JSON text"},
			{{"call", "t", "{}", "{}"}, "call needs a tool name and its parameters as JSON text"},
		};
		for (const auto& Case : Cases)
		{
			FHostCommandLine CommandLine;
			FString Error;
			EXPECT_FALSE(ParseHostCommandLine(Args(Case.Args), CommandLine, Error)) << Case.Error;
			EXPECT_EQ(U8(Error).substr(0, Case.Error.size()), Case.Error);
		}
	}

	TEST(HostCommandLine, UsageNamesEveryCommand)
	{
		const std::string Usage = U8(GetHostUsage());
		for (const char* Command : {"serve", "call TOOL JSON", "tools [--json]", "demo", "init-sample DIR", "--project DIR", "--verbose"})
		{
			EXPECT_NE(Usage.find(Command), std::string::npos) << Command;
		}
	}
}
