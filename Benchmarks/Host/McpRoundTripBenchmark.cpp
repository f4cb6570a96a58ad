// What the MCP server adds to a tool call: one request line in, one reply line out.
//
// The stdio cases run the real program (`calvorn-bp serve`) behind two pipes, as an agent's client
// does, so they include the pipes, the process switches, parsing, the executor and serialising the
// result. The in-process case drives the same server object without pipes, with a tool that does
// nothing, which isolates the server's own share. Each case reports the median and the 99th
// percentile of single round trips; the target is under 1 ms on top of the tool's own work.
//
// The program under test is the one built beside this benchmark; CALVORN_BP overrides it.

#include "CoreMinimal.h"
#include "CalvornToolkitModule.h"
#include "HostLog.h"
#include "IToolExecutor.h"
#include "ITool.h"
#include "McpServer.h"

#include "Modules/ModuleManager.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <signal.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace
{
	const char* ServerBinary()
	{
		const char* Override = std::getenv("CALVORN_BP");
		return Override && *Override ? Override : CALVORN_BP_PATH;
	}

	/** `calvorn-bp serve` as a child process with its standard input and output on pipes. */
	class FServerProcess
	{
	public:
		bool Start()
		{
			int ToChild[2];
			int FromChild[2];
			if (::pipe(ToChild) != 0 || ::pipe(FromChild) != 0)
			{
				return false;
			}
			Pid = ::fork();
			if (Pid == 0)
			{
				::dup2(ToChild[0], STDIN_FILENO);
				::dup2(FromChild[1], STDOUT_FILENO);
				const int Null = ::open("/dev/null", O_WRONLY);
				::dup2(Null, STDERR_FILENO);
				::close(ToChild[0]);
				::close(ToChild[1]);
				::close(FromChild[0]);
				::close(FromChild[1]);
				::execl(ServerBinary(), ServerBinary(), "serve", static_cast<char*>(nullptr));
				::_exit(127);
			}
			::close(ToChild[0]);
			::close(FromChild[1]);
			ToServer = ToChild[1];
			FromServer = FromChild[0];
			return Pid > 0;
		}

		~FServerProcess()
		{
			if (ToServer >= 0)
			{
				::close(ToServer);
			}
			if (FromServer >= 0)
			{
				::close(FromServer);
			}
			if (Pid > 0)
			{
				int Status = 0;
				::waitpid(Pid, &Status, 0);
			}
		}

		/** Sends one line and returns the reply line; empty when the server is gone. */
		std::string RoundTrip(const std::string& Line)
		{
			const std::string Message = Line + "\n";
			size_t Written = 0;
			while (Written < Message.size())
			{
				const ssize_t Count = ::write(ToServer, Message.data() + Written, Message.size() - Written);
				if (Count <= 0)
				{
					return std::string();
				}
				Written += static_cast<size_t>(Count);
			}
			for (;;)
			{
				const size_t Break = Pending.find('\n');
				if (Break != std::string::npos)
				{
					std::string Reply = Pending.substr(0, Break);
					Pending.erase(0, Break + 1);
					return Reply;
				}
				char Buffer[64 * 1024];
				const ssize_t Count = ::read(FromServer, Buffer, sizeof(Buffer));
				if (Count <= 0)
				{
					return std::string();
				}
				Pending.append(Buffer, static_cast<size_t>(Count));
			}
		}

	private:
		pid_t Pid = -1;
		int ToServer = -1;
		int FromServer = -1;
		std::string Pending;
	};

	/** One initialised server for all stdio cases: starting the program is not what is measured. */
	FServerProcess* GetServer()
	{
		static FServerProcess* Server = []() -> FServerProcess* {
			::signal(SIGPIPE, SIG_IGN);
			FServerProcess* Process = new FServerProcess();
			if (!Process->Start())
			{
				return nullptr;
			}
			const std::string Reply = Process->RoundTrip(R"({"jsonrpc":"2.0","id":0,"method":"initialize","params":{"protocolVersion":"2025-06-18","capabilities":{},"clientInfo":{"name":"bench","version":"1"}}})");
			if (Reply.find("\"protocolVersion\"") == std::string::npos)
			{
				return nullptr;
			}
			return Process;
		}();
		return Server;
	}

	void ReportLatencies(benchmark::State& State, std::vector<double>& Microseconds)
	{
		if (Microseconds.empty())
		{
			return;
		}
		std::sort(Microseconds.begin(), Microseconds.end());
		const auto At = [&Microseconds](double Fraction) {
			return Microseconds[std::min(Microseconds.size() - 1, static_cast<size_t>(Fraction * static_cast<double>(Microseconds.size())))];
		};
		State.counters["median_us"] = At(0.5);
		State.counters["p99_us"] = At(0.99);
	}

	template <typename FSend>
	void MeasureRoundTrips(benchmark::State& State, const char* ExpectedInReply, FSend&& Send)
	{
		std::vector<double> Microseconds;
		for (auto _ : State)
		{
			const auto Start = std::chrono::steady_clock::now();
			const std::string Reply = Send();
			const auto End = std::chrono::steady_clock::now();
			Microseconds.push_back(std::chrono::duration<double, std::micro>(End - Start).count());
			if (Reply.find(ExpectedInReply) == std::string::npos)
			{
				State.SkipWithError(("unexpected reply: " + Reply).c_str());
				return;
			}
		}
		ReportLatencies(State, Microseconds);
	}

	void BM_StdioPing(benchmark::State& State)
	{
		FServerProcess* Server = GetServer();
		if (!Server)
		{
			State.SkipWithError("calvorn-bp serve could not be started and initialised");
			return;
		}
		MeasureRoundTrips(State, R"("result":{})", [Server] { return Server->RoundTrip(R"({"jsonrpc":"2.0","id":1,"method":"ping"})"); });
	}
	BENCHMARK(BM_StdioPing)->Unit(benchmark::kMicrosecond);

	// The program registers no tool the benchmark could call for no work, so the call names none:
	// the executor still looks it up, builds an error result, and the server serialises it twice
	// (text and structured content) exactly as for a real tool.
	void BM_StdioToolsCall(benchmark::State& State)
	{
		FServerProcess* Server = GetServer();
		if (!Server)
		{
			State.SkipWithError("calvorn-bp serve could not be started and initialised");
			return;
		}
		MeasureRoundTrips(State, R"("isError":true)", [Server] {
			return Server->RoundTrip(R"({"jsonrpc":"2.0","id":2,"method":"tools/call","params":{"name":"no_such_tool","arguments":{"path":"/Game/Blueprints/BP_Door","graph_name":"EventGraph","nodes":[{"node_guid":"n1","class_name":"K2Node_CallFunction"}]}}})");
		});
	}
	BENCHMARK(BM_StdioToolsCall)->Unit(benchmark::kMicrosecond);

	/** A registered tool that does no work of its own, so what is measured is the server and executor. */
	class FNoWorkTool : public Calvorn::ITool
	{
	public:
		virtual FString GetSchema() const override { return TEXT("{}"); }
		virtual FString GetDescription() const override { return TEXT("Does nothing"); }
		virtual void ValidateCommand(const FString& ParametersJson, Calvorn::FToolResult& Result) const override {}
		virtual FString GetMetadata() override { return TEXT("{}"); }
		virtual void InvalidateMetadata() override {}

		virtual void Run(const Calvorn::FToolCommand& Command, TSharedPtr<Calvorn::FToolResult> Result, const Calvorn::FOnToolCompleted& OnCompleted) override
		{
			Result->AddSuccessMessage(TEXT("Done"));
			OnCompleted.ExecuteIfBound(*Result);
		}
	};

	void BM_InProcessToolsCall(benchmark::State& State)
	{
		if (!FModuleManager::Get().LoadModule(TEXT("CalvornToolkit")))
		{
			State.SkipWithError("the CalvornToolkit module could not be started");
			return;
		}
		const TSharedPtr<Calvorn::IToolExecutor> Executor = FCalvornToolkitModule::GetToolExecutor();
		Executor->RegisterTool(TEXT("no_work"), MakeShared<FNoWorkTool>());
		Calvorn::Host::SetHostLogVerbosity(Calvorn::Host::EHostLogVerbosity::Warning);
		Calvorn::Host::FMcpServer Server(Executor.ToSharedRef(), Calvorn::Host::FMcpServerInfo{TEXT("calvorn-bp"), FString(), TEXT("0"), FString()});
		Server.HandleMessage(R"({"jsonrpc":"2.0","id":0,"method":"initialize","params":{"protocolVersion":"2025-06-18"}})");
		MeasureRoundTrips(State, R"("isError":false)", [&Server] {
			return Server.HandleMessage(R"({"jsonrpc":"2.0","id":2,"method":"tools/call","params":{"name":"no_work","arguments":{"path":"/Game/Blueprints/BP_Door","graph_name":"EventGraph","nodes":[{"node_guid":"n1","class_name":"K2Node_CallFunction"}]}}})");
		});
		Executor->UnregisterTool(TEXT("no_work"));
		FModuleManager::Get().UnloadModule(TEXT("CalvornToolkit"));
	}
	BENCHMARK(BM_InProcessToolsCall)->Unit(benchmark::kMicrosecond);
}

BENCHMARK_MAIN();
