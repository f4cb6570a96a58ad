// Parse and print a 1 MiB graph read through our Json module, and the same bytes through bare
// RapidJSON, then report how much our layer costs on top of the library it sits on.
//
//   JsonBenchmark [google-benchmark flags]
//
// The figure that matters is printed last: "ratio parse+serialise", our FJsonObject round trip
// (UTF-16 FString in, FString out) over RapidJSON's own Document round trip on the UTF-8 bytes.

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

#include <cstdio>
#include <map>
#include <string>

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
			benchmark::DoNotOptimize(SerializeOurs(ParseOurs(DocumentUtf16())));
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
			rapidjson::Document Doc;
			Doc.Parse(Document().data(), Document().size());
			rapidjson::StringBuffer Buffer;
			rapidjson::Writer<rapidjson::StringBuffer> Writer(Buffer);
			Doc.Accept(Writer);
			benchmark::DoNotOptimize(Buffer.GetSize());
		}
		SetBytes(State);
	}

	// The same round trip with RapidJSON reading and writing UTF-16, as our layer does.
	void RapidJson_ParseSerializeUtf16(benchmark::State& State)
	{
		using FDoc = rapidjson::GenericDocument<rapidjson::UTF16<char16_t>>;
		using FBuffer = rapidjson::GenericStringBuffer<rapidjson::UTF16<char16_t>>;
		const FString& Text = DocumentUtf16();
		for (auto _ : State)
		{
			FDoc Doc;
			Doc.Parse(*Text);
			FBuffer Buffer;
			rapidjson::Writer<FBuffer, rapidjson::UTF16<char16_t>, rapidjson::UTF16<char16_t>> Writer(Buffer);
			Doc.Accept(Writer);
			benchmark::DoNotOptimize(Buffer.GetSize());
		}
		SetBytes(State);
	}

	/** Shows the usual table and keeps each run's time per iteration for the summary. */
	class FRecordingReporter : public benchmark::ConsoleReporter
	{
	public:
		void ReportRuns(const std::vector<Run>& Runs) override
		{
			for (const Run& Result : Runs)
			{
				// The median of the repetitions, in CPU time: the machine is shared, and these runs are
				// single-threaded, so other load shows in wall time but hardly in CPU time.
				if (!Result.error_occurred && Result.run_type == Run::RT_Aggregate && Result.aggregate_name == "median")
				{
					Times[Result.run_name.function_name] = Result.GetAdjustedCPUTime();
				}
			}
			ConsoleReporter::ReportRuns(Runs);
		}

		std::map<std::string, double> Times;
	};
}

#define JSON_BENCHMARK(Function) BENCHMARK(Function)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true)
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
	std::printf("document: %zu bytes of UTF-8, %d UTF-16 code units\n", Document().size(), DocumentUtf16().Len());

	FRecordingReporter Reporter;
	benchmark::RunSpecifiedBenchmarks(&Reporter);
	benchmark::Shutdown();

	auto Time = [&Reporter](const char* Name) -> double
	{
		const auto Found = Reporter.Times.find(Name);
		return Found != Reporter.Times.end() ? Found->second : 0.0;
	};
	const double Ours = Time("Ours_ParseSerialize");
	const double Bare = Time("RapidJson_ParseSerialize");
	const double BareUtf16 = Time("RapidJson_ParseSerializeUtf16");
	if (Ours > 0 && Bare > 0)
	{
		std::printf("\nCPU time per round trip of the document (median of 5 runs):\n");
		std::printf("our layer, parse+serialise:      %8.3f ms\n", Ours);
		std::printf("bare RapidJSON, parse+serialise: %8.3f ms (UTF-8)\n", Bare);
		if (BareUtf16 > 0)
		{
			std::printf("bare RapidJSON, parse+serialise: %8.3f ms (UTF-16, as our layer reads and writes)\n", BareUtf16);
			std::printf("ratio against UTF-16 RapidJSON:  %.2f\n", Ours / BareUtf16);
		}
		std::printf("ratio parse+serialise: %.2f\n", Ours / Bare);
	}
	return 0;
}
