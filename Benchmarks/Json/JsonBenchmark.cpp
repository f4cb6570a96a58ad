// Parse and print a 1 MiB graph read through our Json module, and the same bytes through bare
// RapidJSON, then report how much our layer costs on top of the library it sits on.
//
//   JsonBenchmark [--summary-only] [--rounds=N] [google-benchmark flags]
//   JsonBenchmark --count=ours|bare|bare16 [--rounds=N]
//
// The figure that matters is printed last: "ratio parse+serialise", our FJsonObject round trip
// (UTF-16 FString in, FString out) over RapidJSON's own Document round trip (parse, then Writer into
// a StringBuffer) on the same text in UTF-8.
//
// The machine this runs on is shared, so time is noisy in one direction only: other work can make a
// round trip slower, never faster. The summary therefore times N single round trips of each side
// (100 by default) in short back-to-back blocks, alternating between the sides, and compares the
// fastest round trip of each: the minimum wall time is the best estimate of the undisturbed cost
// (the 10th percentile and the median are printed beside it). The Google Benchmark table before
// it breaks the cost down (parse alone, serialise alone) and adds a "min" row to its repetitions.
//
// For a figure that does not depend on load at all, count instructions with callgrind. --count runs
// one side's round trip N times (3 by default) without any timing, after one warm-up round trip that
// fills the per-thread pools; RunCountedRoundTrips is the only function to collect:
//
//   valgrind --tool=callgrind --collect-atstart=no --toggle-collect='*RunCountedRoundTrips*'
//            --callgrind-out-file=ours.cg JsonBenchmark --count=ours
//   (the same with --callgrind-out-file=bare.cg and --count=bare)
//
// and divide the "totals:" lines of the two files (Benchmarks/Json/callgrind_ratio.sh does all of
// this). Instructions are not time: a cache miss or a mispredicted branch costs many cycles, and our
// tree of separately allocated nodes misses the caches more than RapidJSON's pooled document, so the
// ratio in time runs a little above the ratio in instructions. Under valgrind the heap cannot grow
// with brk past a few MiB and glibc's allocator falls back to mapping memory, so malloc and free
// count slightly differently than natively. Still, a change that lowers our count against
// RapidJSON's almost always lowers the ratio in time too.

#include "CoreMinimal.h"
#include "Containers/StringConv.h"
#include "Containers/UnrealString.h"
#include "Dom/JsonObject.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"
#include "Serialization/JsonWriter.h"

#include <benchmark/benchmark.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>

namespace
{
	// A deterministic stand-in for what read_blueprint_graph returns: graphs of nodes, each with a
	// position, flags and an array of pins carrying types, defaults and links.
	class FGraphReadGenerator
	{
	public:
		std::string Generate(size_t TargetBytes)
		{
			Out.reserve(TargetBytes + 4096);
			Out += R"({"blueprint":"/Game/Blueprints/BP_Hero.BP_Hero","parentClass":"/Script/Engine.Character","status":"UpToDate","graphs":[)";
			int GraphIndex = 0;
			while (Out.size() < TargetBytes)
			{
				if (GraphIndex > 0)
				{
					Out += ',';
				}
				WriteGraph(GraphIndex++, TargetBytes);
			}
			Out += R"(],"warnings":[],"truncated":false})";
			return Out;
		}

	private:
		uint64_t Next()
		{
			State = State * 6364136223846793005ull + 1442695040888963407ull;
			return State >> 17;
		}

		std::string Guid()
		{
			char Buffer[40];
			std::snprintf(Buffer, sizeof(Buffer), "%08X%08X%08X%08X", unsigned(Next()), unsigned(Next()), unsigned(Next()), unsigned(Next()));
			return Buffer;
		}

		void WriteGraph(int GraphIndex, size_t TargetBytes)
		{
			static const char* GraphNames[] = {"EventGraph", "UserConstructionScript", "ApplyDamage", "Ragdoll"};
			Out += R"({"name":")";
			Out += GraphNames[GraphIndex % 4];
			Out += R"(","graphType":"ubergraph","schema":"EdGraphSchema_K2","nodes":[)";
			for (int NodeIndex = 0; NodeIndex < 60 && Out.size() < TargetBytes; ++NodeIndex)
			{
				if (NodeIndex > 0)
				{
					Out += ',';
				}
				WriteNode(NodeIndex);
			}
			Out += "]}";
		}

		void WriteNode(int NodeIndex)
		{
			static const char* Classes[] = {"K2Node_CallFunction", "K2Node_VariableGet", "K2Node_IfThenElse", "K2Node_Event", "K2Node_DynamicCast"};
			static const char* Titles[] = {"Print String", "Get Health", "Branch", "Event BeginPlay", "Cast To Character",
				"Set \\\"Speed\\\" (m/s)", "Café – Übergröße", "Line\\nBreak"};
			char Buffer[256];
			std::snprintf(Buffer, sizeof(Buffer), R"({"nodeId":"%s","nodeClass":"%s","title":"%s","position":{"x":%d,"y":%d},)",
				Guid().c_str(), Classes[NodeIndex % 5], Titles[Next() % 8], int(Next() % 4000) - 2000, int(Next() % 3000) - 1500);
			Out += Buffer;
			std::snprintf(Buffer, sizeof(Buffer), R"("comment":"","isPure":%s,"enabled":true,"advancedPinDisplay":"Hidden","scale":%.3g,"pins":[)",
				NodeIndex % 3 == 0 ? "true" : "false", 0.25 * double(1 + Next() % 8));
			Out += Buffer;
			const int PinCount = 3 + int(Next() % 6);
			for (int PinIndex = 0; PinIndex < PinCount; ++PinIndex)
			{
				if (PinIndex > 0)
				{
					Out += ',';
				}
				WritePin(PinIndex);
			}
			Out += "]}";
		}

		void WritePin(int PinIndex)
		{
			static const char* Names[] = {"execute", "then", "self", "InString", "ReturnValue", "Condition", "Duration", "Target"};
			static const char* Categories[] = {"exec", "bool", "real", "string", "object", "struct"};
			static const char* Defaults[] = {"", "true", "0.0", "Hello", "1.500000", "(X=0.000000,Y=0.000000,Z=1.000000)"};
			const int Kind = int(Next() % 6);
			char Buffer[512];
			std::snprintf(Buffer, sizeof(Buffer),
				R"({"pinId":"%s","name":"%s","friendlyName":"","direction":"%s","category":"%s","subCategory":"%s","subCategoryObject":%s,)"
				R"("isArray":%s,"isReference":false,"isConst":false,"defaultValue":"%s","hidden":false,"connected":%s,"linkedTo":[)",
				Guid().c_str(), Names[Next() % 8], PinIndex % 2 ? "output" : "input", Categories[Kind], Kind == 2 ? "double" : "",
				Kind == 4 ? R"("/Script/Engine.Actor")" : "null", Next() % 7 == 0 ? "true" : "false", Defaults[Kind], Next() % 2 ? "true" : "false");
			Out += Buffer;
			const int Links = int(Next() % 3);
			for (int Link = 0; Link < Links; ++Link)
			{
				if (Link > 0)
				{
					Out += ',';
				}
				Out += R"({"nodeId":")" + Guid() + R"(","pinId":")" + Guid() + R"("})";
			}
			Out += "]}";
		}

		std::string Out;
		uint64_t State = 0x243F6A8885A308D3ull;
	};

	const std::string& Document()
	{
		static const std::string Text = FGraphReadGenerator().Generate(1 << 20);
		return Text;
	}

	const FString& DocumentUtf16()
	{
		static const FString Text = UTF8ToFString(Document());
		return Text;
	}

	using FCondensedFactory = TJsonWriterFactory<TCHAR, TCondensedJsonPrintPolicy<TCHAR>>;

	TSharedPtr<FJsonObject> ParseOurs(const FString& Text)
	{
		TSharedPtr<FJsonObject> Object;
		// The view reader parses the caller's string in place, as bare RapidJSON parses its buffer.
		if (!FJsonSerializer::Deserialize(TJsonReaderFactory<TCHAR>::CreateFromView(*Text, Text.Len()), Object))
		{
			std::fprintf(stderr, "our reader refused the benchmark document\n");
			std::abort();
		}
		return Object;
	}

	FString SerializeOurs(const TSharedPtr<FJsonObject>& Object)
	{
		FString Out;
		FJsonSerializer::Serialize(Object, FCondensedFactory::Create(&Out));
		return Out;
	}

	// One full round trip of each side; each returns the length of its output so that nothing can
	// be optimised away.

	size_t RoundTripOurs()
	{
		return static_cast<size_t>(SerializeOurs(ParseOurs(DocumentUtf16())).Len());
	}

	size_t RoundTripBare()
	{
		rapidjson::Document Doc;
		Doc.Parse(Document().data(), Document().size());
		rapidjson::StringBuffer Buffer;
		rapidjson::Writer<rapidjson::StringBuffer> Writer(Buffer);
		Doc.Accept(Writer);
		return Buffer.GetSize();
	}

	// The same round trip with RapidJSON reading and writing UTF-16, as our layer does.
	size_t RoundTripBareUtf16()
	{
		using FDoc = rapidjson::GenericDocument<rapidjson::UTF16<char16_t>>;
		using FBuffer = rapidjson::GenericStringBuffer<rapidjson::UTF16<char16_t>>;
		FDoc Doc;
		// RapidJSON 1.1's counted Parse does not compile for UTF-16; the text has no NUL inside.
		Doc.Parse(*DocumentUtf16());
		FBuffer Buffer;
		rapidjson::Writer<FBuffer, rapidjson::UTF16<char16_t>, rapidjson::UTF16<char16_t>> Writer(Buffer);
		Doc.Accept(Writer);
		return Buffer.GetSize();
	}

	void SetBytes(benchmark::State& State)
	{
		State.SetBytesProcessed(int64_t(State.iterations()) * int64_t(Document().size()));
	}

	// Ours -----------------------------------------------------------------------------------

	void Ours_Parse(benchmark::State& State)
	{
		for (auto _ : State)
		{
			benchmark::DoNotOptimize(ParseOurs(DocumentUtf16()));
		}
		SetBytes(State);
	}

	void Ours_ParseUtf8(benchmark::State& State)
	{
		const std::string& Bytes = Document();
		for (auto _ : State)
		{
			TSharedPtr<FJsonObject> Object;
			FJsonSerializer::Deserialize(TJsonReaderFactory<UTF8CHAR>::CreateFromView(Bytes.data(), int32(Bytes.size())), Object);
			benchmark::DoNotOptimize(Object);
		}
		SetBytes(State);
	}

	void Ours_Serialize(benchmark::State& State)
	{
		const TSharedPtr<FJsonObject> Object = ParseOurs(DocumentUtf16());
		for (auto _ : State)
		{
			benchmark::DoNotOptimize(SerializeOurs(Object));
		}
		SetBytes(State);
	}

	void Ours_ParseSerialize(benchmark::State& State)
	{
		for (auto _ : State)
		{
			benchmark::DoNotOptimize(RoundTripOurs());
		}
		SetBytes(State);
	}

	// Bare RapidJSON on the same text ----------------------------------------------------------

	void RapidJson_Parse(benchmark::State& State)
	{
		for (auto _ : State)
		{
			rapidjson::Document Doc;
			Doc.Parse(Document().data(), Document().size());
			benchmark::DoNotOptimize(Doc.HasParseError());
		}
		SetBytes(State);
	}

	void RapidJson_Serialize(benchmark::State& State)
	{
		rapidjson::Document Doc;
		Doc.Parse(Document().data(), Document().size());
		for (auto _ : State)
		{
			rapidjson::StringBuffer Buffer;
			rapidjson::Writer<rapidjson::StringBuffer> Writer(Buffer);
			Doc.Accept(Writer);
			benchmark::DoNotOptimize(Buffer.GetSize());
		}
		SetBytes(State);
	}

	void RapidJson_ParseSerialize(benchmark::State& State)
	{
		for (auto _ : State)
		{
			benchmark::DoNotOptimize(RoundTripBare());
		}
		SetBytes(State);
	}

	void RapidJson_ParseSerializeUtf16(benchmark::State& State)
	{
		for (auto _ : State)
		{
			benchmark::DoNotOptimize(RoundTripBareUtf16());
		}
		SetBytes(State);
	}

	double Minimum(const std::vector<double>& Values)
	{
		return Values.empty() ? 0.0 : *std::min_element(Values.begin(), Values.end());
	}

	// The summary ------------------------------------------------------------------------------

	struct FSide
	{
		const char* Name;
		size_t (*RoundTrip)();
		std::vector<double> WallMs;
		std::vector<double> CpuMs;
	};

	double ThreadCpuMs()
	{
		timespec Now{};
		clock_gettime(CLOCK_THREAD_CPUTIME_ID, &Now);
		return double(Now.tv_sec) * 1e3 + double(Now.tv_nsec) * 1e-6;
	}

	double Percentile(std::vector<double> Values, double Fraction)
	{
		std::sort(Values.begin(), Values.end());
		return Values[size_t(Fraction * double(Values.size() - 1))];
	}

	/**
	 * Times single round trips in blocks: each block runs one side BlockSize + 1 times back to back
	 * and keeps all but the first, and the blocks of the sides alternate so that all see the same
	 * load over the run. Back to back matters: a round trip leaves work for the allocator (freed
	 * memory that glibc merges at a later large allocation), and the first round trip of a block
	 * would otherwise pay for what the other side left, or leave its own debt to the other side.
	 */
	void RunSummary(int Rounds)
	{
		constexpr int BlockSize = 5;
		FSide Sides[] = {
			{"our layer", &RoundTripOurs, {}, {}},
			{"bare RapidJSON (UTF-8)", &RoundTripBare, {}, {}},
			{"bare RapidJSON (UTF-16)", &RoundTripBareUtf16, {}, {}},
		};
		const int NumBlocks = (Rounds + BlockSize - 1) / BlockSize;
		for (int Block = 0; Block < NumBlocks; ++Block)
		{
			for (FSide& Side : Sides)
			{
				benchmark::DoNotOptimize(Side.RoundTrip());
				for (int Trip = 0; Trip < BlockSize; ++Trip)
				{
					const double CpuStart = ThreadCpuMs();
					const auto WallStart = std::chrono::steady_clock::now();
					benchmark::DoNotOptimize(Side.RoundTrip());
					const auto WallEnd = std::chrono::steady_clock::now();
					Side.CpuMs.push_back(ThreadCpuMs() - CpuStart);
					Side.WallMs.push_back(std::chrono::duration<double, std::milli>(WallEnd - WallStart).count());
				}
			}
		}

		std::printf("\nOne round trip of the document (parse + serialise), %d timed per side:\n", NumBlocks * BlockSize);
		std::printf("%-26s %10s %10s %10s %12s\n", "", "wall min", "wall p10", "CPU min", "wall median");
		for (const FSide& Side : Sides)
		{
			std::printf("%-26s %7.3f ms %7.3f ms %7.3f ms %9.3f ms\n", Side.Name, Minimum(Side.WallMs), Percentile(Side.WallMs, 0.1),
				Minimum(Side.CpuMs), Percentile(Side.WallMs, 0.5));
		}
		const FSide& Ours = Sides[0];
		const FSide& Bare = Sides[1];
		std::printf("ratio against UTF-16 RapidJSON (wall min): %.2f\n", Minimum(Ours.WallMs) / Minimum(Sides[2].WallMs));
		std::printf("ratio parse+serialise, wall median: %.2f\n", Percentile(Ours.WallMs, 0.5) / Percentile(Bare.WallMs, 0.5));
		std::printf("ratio parse+serialise, wall p10:    %.2f\n", Percentile(Ours.WallMs, 0.1) / Percentile(Bare.WallMs, 0.1));
		std::printf("ratio parse+serialise, CPU min:     %.2f\n", Minimum(Ours.CpuMs) / Minimum(Bare.CpuMs));
		std::printf("ratio parse+serialise: %.2f\n", Minimum(Ours.WallMs) / Minimum(Bare.WallMs));
	}

	/** The only code callgrind is told to collect; kept out of line so that it has a name. */
	[[gnu::noinline]] size_t RunCountedRoundTrips(size_t (*RoundTrip)(), int Rounds)
	{
		size_t Total = 0;
		for (int Round = 0; Round < Rounds; ++Round)
		{
			Total += RoundTrip();
			benchmark::ClobberMemory();
		}
		return Total;
	}

	/** Takes --name=value out of the arguments (Google Benchmark refuses flags it does not know). */
	bool TakeFlag(int& Argc, char** Argv, const char* Name, std::string* OutValue)
	{
		const size_t NameLength = std::strlen(Name);
		for (int Index = 1; Index < Argc; ++Index)
		{
			const char* Arg = Argv[Index];
			const bool bBare = std::strcmp(Arg, Name) == 0;
			const bool bWithValue = std::strncmp(Arg, Name, NameLength) == 0 && Arg[NameLength] == '=';
			if (bBare || bWithValue)
			{
				if (OutValue)
				{
					*OutValue = bWithValue ? Arg + NameLength + 1 : "";
				}
				for (int Next = Index; Next + 1 < Argc; ++Next)
				{
					Argv[Next] = Argv[Next + 1];
				}
				--Argc;
				return true;
			}
		}
		return false;
	}
}

#define JSON_BENCHMARK(Function) \
	BENCHMARK(Function)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true)->ComputeStatistics("min", Minimum)
JSON_BENCHMARK(Ours_Parse);
JSON_BENCHMARK(Ours_ParseUtf8);
JSON_BENCHMARK(Ours_Serialize);
JSON_BENCHMARK(Ours_ParseSerialize);
JSON_BENCHMARK(RapidJson_Parse);
JSON_BENCHMARK(RapidJson_Serialize);
JSON_BENCHMARK(RapidJson_ParseSerialize);
JSON_BENCHMARK(RapidJson_ParseSerializeUtf16);

int main(int argc, char** argv)
{
	std::string CountSide;
	std::string RoundsText;
	const bool bCount = TakeFlag(argc, argv, "--count", &CountSide);
	const bool bRounds = TakeFlag(argc, argv, "--rounds", &RoundsText);
	const bool bSummaryOnly = TakeFlag(argc, argv, "--summary-only", nullptr);
	const int Rounds = bRounds ? std::atoi(RoundsText.c_str()) : (bCount ? 3 : 100);
	if (Rounds <= 0)
	{
		std::fprintf(stderr, "--rounds takes a positive number\n");
		return 1;
	}

	benchmark::Initialize(&argc, argv);
	if (benchmark::ReportUnrecognizedArguments(argc, argv))
	{
		return 1;
	}

	// The round trip must be lossless before its speed means anything.
	const FString Printed = SerializeOurs(ParseOurs(DocumentUtf16()));
	if (FStringToUTF8(Printed) != Document())
	{
		std::fprintf(stderr, "our round trip changed the document\n");
		return 1;
	}

	if (bCount)
	{
		size_t (*RoundTrip)() = CountSide == "ours" ? &RoundTripOurs
			: CountSide == "bare" ? &RoundTripBare
			: CountSide == "bare16" ? &RoundTripBareUtf16
			: nullptr;
		if (!RoundTrip)
		{
			std::fprintf(stderr, "--count takes ours, bare or bare16\n");
			return 1;
		}
		benchmark::DoNotOptimize(RoundTrip());
		const size_t Total = RunCountedRoundTrips(RoundTrip, Rounds);
		std::printf("%s: %d round trips, %zu characters printed\n", CountSide.c_str(), Rounds, Total);
		return 0;
	}

	std::printf("document: %zu bytes of UTF-8, %d UTF-16 code units\n", Document().size(), DocumentUtf16().Len());
	if (!bSummaryOnly)
	{
		benchmark::RunSpecifiedBenchmarks();
	}
	benchmark::Shutdown();
	RunSummary(Rounds);
	return 0;
}
